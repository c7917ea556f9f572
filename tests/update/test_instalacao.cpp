#include "instalacoes.h"
#include "look/paleta.h"
#include "session/arquivos.h"
#include "update/restos.h"

struct TestInstalacao : Instalacoes {};

TEST(TestInstalacao, WholeUpdate) {
    for (const QString& change :
         List("ListVersao2.txt=FOTO;FotoPeca\\a.png;4\n\nSDBX;scripts\\dois.txt;0\n  ",
              "ListVersao3.txt=FOTO; fotopeca\\A.PNG ;4\nsdb;nova pasta\\mais\\texto.txt;5\n"
              "SDB;scripts\\tres.txt;5\nEXE;apoio\\um.exe;1\nEXE;apoio\\dois.exe;1",
              "nova pasta/mais/texto.txt=texto", "apoio/um.exe=1", "apoio/dois.exe=2",
              "scripts/dois.txt=B:INSERT INTO CLIENTECONCORRENTE VALUES (1?, '2?', '3?')\n"
              "20<<;>>Bravil<<;>>I\n20<<;>>outra vez<<;>>I\nE:isto não é SQL\n"
              "21<<;>>Zenpar<<vbCrLf>>Sul<<;>>C",
              // The template lives on into the next file.
              "scripts/tres.txt=22<<;>>Norral<<;>>C\nR:\nS:true\n"
              "E:DELETE FROM CLIENTECONCORRENTE WHERE CodigoClienteConcorrente = 20")) {
        Apply(change);
    }
    QStringList started;
    QString seen;  // by the program that the script starts
    sys::SetStartHandler([&](const QString& commandLine, int) {
        seen += Valor("SELECT Count(*) FROM CLIENTECONCORRENTE");
        started += commandLine;
        return sys::ProcessId(0);
    });
    QCOMPARE(Update(), List(Done));
    QCOMPARE(seen, u"32"_s);
    QCOMPARE(State(), u"3/1 2 nova none 0"_s);
    QCOMPARE(Valor("SELECT FlagErroUltimaVerificacao FROM UMREGISTRO WHERE "
                   "DataUltimaVerificacao IS NOT NULL"),
             u"0"_s);
    QCOMPARE(Valor("SELECT DescricaoClienteConcorrente FROM CLIENTECONCORRENTE WHERE "
                   "CodigoClienteConcorrente = 21"),
             u"Zenpar\r\nSul"_s);
    QVERIFY(ReiniciarPrograma);
    QCOMPARE(Local("nova pasta/mais/texto.txt"), QByteArray("texto"));
    QCOMPARE(Local("scripts/dois.txt"), QByteArray("none"));
    QVERIFY(QFileInfo(Path("apoio/dois.exe")).isExecutable());
    QCOMPARE(started, List("true", u'"' + gCaminho + u"apoio\\dois.exe\""_s));
    QStringList asked;
    for (const QString& request : server_.Requests()) {
        asked += request.section(u'/', -2, -2).section(u' ', 0, 0);
    }
    QCOMPARE(asked, List("ListVersao2.txt", "ListVersao3.txt", "a.png", "dois.txt", "texto.txt",
                         "tres.txt", "um.exe", "dois.exe"));
}

TEST(TestInstalacao, Updates) {
    Each<QStringList, QString, QString> row;
    for (Case& one : Cases(QStringLiteral(TARVO_CASES "/updates.data"))) {
        const QString box = one.Take(u'>').first();
        const QString state = one.Take(u'=').first();
        row(one.name, one.lines, box, state);
    }
    for (const auto& [changes, box, state] : row) {
#ifdef Q_OS_WIN  // where the toolkit's links are shortcuts, which lead no program anywhere
        if (row.Name().startsWith("name fora\\")) {
            continue;
        }
#endif
        for (const QString& change : changes) {
            Apply(change);
        }
        sys::SetStartHandler([](const QString& program, int) {
            return program == "true"_L1 ? sys::ProcessId(0) : throw Erro(Erro::FileNotFound);
        });
        QCOMPARE(Like(Update().join(u" / "_s).replace(u'\n', u' '), box), box);
        QCOMPARE(State(), state);
        QVERIFY(!ReiniciarPrograma);
    }
}

// A moment, a disk and a number of four digits make the name: two may well come to the same.
TEST(TestInstalacao, NoTwoDownloadsShareAName) {
    sys::SetClock([] { return QDateTime(QDate(2026, 3, 5), QTime(9, 0), Qt::UTC); });
    const QString name = u"000900000305"_s + SerialVolume(u"C:\\"_s) + u"%1-recebido.tmp"_s;
    for (int number = 0; number < 10000; ++number) {
        if (number % 3000 != 7) {
            Write(Path(name.arg(number)));
        }
    }
    for (int i = 0; i < 4; ++i) {
        const QString free = sys::ToNative(NomeDoRecebido(gCaminho));
        QVERIFY2(!QFile::exists(free), qPrintable(free));
        Write(free);
    }
    QCOMPARE(catalogo_->Temporarios().size(), 10000);
}

TEST(TestInstalacao, RemovesWhatDeadUpdatesLeft) {
    const QString moment = u"012345678901ABCDEF0112"_s;
    const QStringList kept = List(moment + u".tmp"_s, "outro.tmp", "velho-recebido.tmp");
    for (const QString& name : kept + List(moment + u"-recebido.tmp"_s)) {
        Write(Path(name));
    }
    QFile old(Path(moment + u"9.tmp"_s));
    QVERIFY(old.open(QIODevice::WriteOnly));
    QVERIFY(old.setFileTime(QDateTime::currentDateTime().addDays(-2),
                            QFileDevice::FileModificationTime));
    old.close();
    QCOMPARE(Update(), List(Done));
    QStringList left = catalogo_->Temporarios();
    left.sort();
    QCOMPARE(left, kept);
}

// The administrator has put the pictures where there is room for them.
TEST(TestInstalacao, PicturesBehindALink) {
    const QTemporaryDir elsewhere;
    QDir(Path("FotoPeca")).removeRecursively();
    QVERIFY(QFile::link(elsewhere.path(), Path("FotoPeca")));
    Apply(u"ListVersao3.txt=FOTO;fotopeca\\novas\\b.png;4\n"_s);
    Apply(u"fotopeca/novas/b.png=b"_s);
    QCOMPARE(Update(), List(Done));
    QCOMPARE(sys::ReadBytes(elsewhere.filePath(u"a.png"_s)), QByteArray("nova"));
    QCOMPARE(sys::ReadBytes(elsewhere.filePath(u"novas/b.png"_s)), QByteArray("b"));
    QCOMPARE(QDir(elsewhere.path()).entryList(QDir::Files), List("a.png"));
    // What leads out of there again is refused as ever.
    QVERIFY(QFile::link(outside_->path(), elsewhere.filePath(u"fora"_s)));
    Apply(u"ListVersao4.txt=FOTO;FotoPeca\\fora\\x.png;1"_s);
    QVERIFY(Update(3, 4).first().startsWith(u"Erro nº: 75\n"_s));
}

TEST(TestInstalacao, MarksAndBars) {
    QCOMPARE(frmAtualizando::LarguraDaBarra(0, 0), 216);
    QCOMPARE(frmAtualizando::LarguraDaBarra(1, 2), 108);
    QCOMPARE(frmAtualizando::LarguraDaBarra(2, 7), 62);
    QCOMPARE(frmAtualizando::LarguraDaBarra(5'000'000'000, 10), 216);
    QCOMPARE(frmAtualizando::LarguraDaBarra(1, 100'000), 0);

    Apply(u"ListVersao2.txt=FOTO;FotoPeca\\a.png;1\nFOTO;late;15\n"_s);
    Apply(u"ListVersao3.txt="_s);
    QStringList seen;
    const auto look = FromRequest(4, [&seen] {
        if (!seen.isEmpty()) {
            return;
        }
        // Each step in its row: a mark as large as its drawing, and a bar within its border.
        QStringList named;
        for (int step = 1; step <= 4; ++step) {
            const auto place = [step](const char* name) {
                return Find<forms::Panel>(*Screen(), AnyText(name) + u"Atualizacao(%1)"_s.arg(step))
                    .geometry();
            };
            const QRect now = place("imgPassoAtual");
            const QRect border = place("imgBordaBarra");
            QCOMPARE(now.size(), forms::Artwork::Load(u"atualizando-passo"_s)->Size());
            QCOMPARE(place("imgPassoConcluido").topLeft(), now.topLeft() - QPoint(3, 0));
            QCOMPARE(place("imgPassoConcluido").size(),
                     forms::Artwork::Load(u"atualizando-concluido"_s)->Size());
            QCOMPARE(border.size(), forms::Artwork::Load(u"atualizando-borda"_s)->Size());
            QCOMPARE(border.left() - now.left(), 47);
            QVERIFY(border.top() - now.bottom() == 4 || border.top() - now.bottom() == 5);
            QCOMPARE(place("imgBarra").topLeft(), border.topLeft() + QPoint(6, 4));
            QCOMPARE(place("imgBarra").height(), border.height() - 8);
            named += Find<QWidget>(*Screen(), u"imgPassoAtualAtualizacao(%1)"_s.arg(step))
                         .accessibleName();
        }
        QCOMPARE(named, List("Consultando as novas versões", "Baixando os arquivos",
                             "Instalando os arquivos", "Atualizando o catálogo"));
        auto& wait = Find<forms::Label>(*Screen(), "lblEspera");
        wait.SetText(u"espera"_s);
        const QImage image = wait.grab().toImage().convertToFormat(QImage::Format_RGB32);
        QCOMPARE(image.pixelColor(0, 0), Paleta::Atual().petroleoFundo);
        const auto* pixels = reinterpret_cast<const QRgb*>(image.constBits());
        QVERIFY(std::any_of(pixels, pixels + image.sizeInBytes() / 4,
                            [](QRgb pixel) { return qGray(pixel) > 160; }));  // pale on dark
        for (const auto* picture : Screen()->findChildren<forms::Panel*>()) {
            if (picture->isVisible() && picture->objectName().startsWith("img"_L1)) {
                seen += picture->objectName().mid(3).remove(u"Atualizacao"_s) +
                        (picture->objectName().startsWith("imgBarra"_L1)
                             ? u" %1"_s.arg(picture->width())
                             : QString());
            }
        }
    });
    QCOMPARE(Update(), List(Done));
    seen.sort();
    QCOMPARE(seen, List("Barra(1) 216", "Barra(2) 54", "BordaBarra(1)", "BordaBarra(2)",
                        "PassoAtual(2)", "PassoConcluido(1)"));
}

// Half a key file must not let everybody in.
TEST(TestInstalacao, KeyFiles) {
    Each<QString, int> row;
    const QString key = u"Chave: "_s + QString(64, u'a');
    row("one key", u"Site: loja\n"_s + key, 1);
    row("two keys, remarks", u"# a\r\n\r\nsite:loja\r\n%1\r\n%2 \r\n"_s.arg(key.toUpper(), key), 2);
    row("empty", {}, 0);
    row("no site", key, 0);
    row("no key", "Site: loja", 0);
    row("short key", u"Site: loja\nChave: ab\n"_s + key, 0);
    row("no hexadecimal key", u"Site: loja\n"_s + u"Chave: "_s + QString(64, u'g'), 0);
    row("something else", u"Site: loja\nOlá\n"_s + key, 0);
    row("two sites", u"Site: loja\nSite: outra\n"_s + key, 0);
    for (const auto& [text, keys] : row) {
        qsizetype read = 0;
        QCOMPARE(ErrorOf([&] { read = LerTextoDasChaves(text).chaves.size(); }), keys ? 0 : 75);
        QCOMPARE(read, keys);
    }
}
