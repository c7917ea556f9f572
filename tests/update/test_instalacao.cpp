#include "busca.h"
#include "instalacoes.h"
#include "look/paleta.h"
#include "session/arquivos.h"
#include "settings/arquivo.h"
#include "update/falhas.h"
#include "update/restos.h"

#include <filesystem>

struct TestInstalacao : Instalacoes {};

TEST(TestInstalacao, WholeUpdate) {
    Apply({"ListVersao2.txt=FOTO;FotoPeca\\a.png;4\n\nSDBX;scripts\\dois.txt;0\n  ",
           "ListVersao3.txt=FOTO; fotopeca\\A.PNG ;4\nsdb;nova pasta\\mais\\texto.txt;5\n"
           "SDB;scripts\\tres.txt;5\nEXE;apoio\\um.exe;1\nEXE;apoio\\dois.exe;1",
           "nova pasta/mais/texto.txt=texto", "apoio/um.exe=1", "apoio/dois.exe=2",
           "scripts/dois.txt=B:INSERT INTO CLIENTECONCORRENTE VALUES (1?, '2?', '3?')\n"
           "20<<;>>Bravil<<;>>I\n20<<;>>outra vez<<;>>I\nE:isto não é SQL\n"
           "21<<;>>Zenpar<<vbCrLf>>Sul<<;>>C",
           // The template lives on into the next file.
           "scripts/tres.txt=22<<;>>Norral<<;>>C\nR:\nS:true\n"
           "E:DELETE FROM CLIENTECONCORRENTE WHERE CodigoClienteConcorrente = 20"});
    QStringList started;
    sys::SetStartHandler([&](const QString& commandLine, int style) {
        const QString rows = Valor("SELECT Count(*) FROM CLIENTECONCORRENTE");
        started += u"%1 seen, %2 %3"_s.arg(rows, QString::number(style), commandLine);
        return sys::ProcessId(0);
    });
    QCOMPARE(Update(), List(Done));
    QCOMPARE(State(), u"3/1 2 nova none 0"_s);
    QCOMPARE(
        Valor("SELECT FlagErroUltimaVerificacao & DescricaoClienteConcorrente FROM UMREGISTRO, "
              "CLIENTECONCORRENTE WHERE DataUltimaVerificacao IS NOT NULL AND "
              "CodigoClienteConcorrente = 21"),
        u"0Zenpar\r\nSul"_s);
    QVERIFY(ReiniciarPrograma);
    QCOMPARE(Local("nova pasta/mais/texto.txt"), QByteArray("texto"));
    QCOMPARE(Local("scripts/dois.txt"), QByteArray("none"));
    QVERIFY(QFileInfo(Path("apoio/dois.exe")).isExecutable());
    QCOMPARE(started, List("3 seen, 1 true", u"2 seen, 1 \"%1apoio\\dois.exe\""_s.arg(gCaminho)));
    QString asked = server_.Requests().join(u' ').remove(u" HTTP/1.0"_s);
    QCOMPARE(asked.remove(u"GET http://atualiza.exemplo/base/"_s),
             u"ListVersao2.txt ListVersao3.txt FotoPeca/a.png scripts/dois.txt "
             "nova%20pasta/mais/texto.txt scripts/tres.txt apoio/um.exe apoio/dois.exe"_s);
}

TEST(TestInstalacao, Updates) {
    Cases row(TARVO_CASES "/updates.data");
    for (auto [one] : row) {
#ifdef Q_OS_WIN  // where the toolkit's links are shortcuts, which lead no program anywhere
        if (row.Name().startsWith("name fora\\")) {
            continue;
        }
#endif
        const QString box = one.Take(u'>').first();
        const QString state = one.Take(u'=').first();
        Apply(one.lines);
        sys::SetStartHandler([](const QString& program, int) {
            return program == "true"_L1 ? sys::ProcessId(0) : throw Erro(Erro::FileNotFound);
        });
        QCOMPARE(Like(Update().join(u" / "_s).replace(u'\n', u' '), box), box);
        QCOMPARE(State(), state);
        QVERIFY(!ReiniciarPrograma);
        QVERIFY(Fetch("ok").startsWith("-104 HttpOpenRequest:"_L1));  // nothing is left open
    }
}

// A moment, a disk and a number of four digits make the name: two may well come to the same.
TEST(TestInstalacao, NoTwoDownloadsShareAName) {
    sys::SetClock([] { return QDateTime(QDate(2026, 3, 5), QTime(9, 0), Qt::UTC); });
    const QString name = u"000926000305"_s + SerialVolume(u"C:\\"_s) + u"%1-recebido.tmp"_s;
    for (int number = 0; number < 10000; ++number) {
        if (number % 10 != 7) {
            Write(Path(name.arg(number)));
        }
    }
    for (int i = 0; i < 4; ++i) {
        Write(sys::ToNative(NomeDoRecebido(gCaminho)));
    }
    QCOMPARE(catalogo_->Temporarios().size(), 9004);
}

TEST(TestInstalacao, RemovesWhatDeadUpdatesLeft) {
    const QString moment = u"012345678901ABCDEF0112"_s;
    const QStringList kept = List(moment + u".tmp"_s, "outro.tmp", "velho-recebido.tmp");
    for (const QString& name : kept + List(moment + u"-recebido.tmp"_s, moment + u"9.tmp"_s)) {
        Write(Path(name));
    }
    const QFileInfo old(Path(moment + u"9.tmp"_s));
    std::filesystem::last_write_time(old.filesystemFilePath(),
                                     std::filesystem::file_time_type::clock::now() - 30h);
    QCOMPARE(Update(), List(Done));
    QCOMPARE(catalogo_->Temporarios(), kept);
}

// The administrator has put the pictures where there is room for them.
TEST(TestInstalacao, PicturesBehindALink) {
    const QTemporaryDir elsewhere;
    QDir(Path("FotoPeca")).removeRecursively();
    QVERIFY(QFile::link(elsewhere.path(), Path("FotoPeca")));
    Apply({"ListVersao3.txt=FOTO;fotopeca\\novas\\b.png;4\n", "fotopeca/novas/b.png=b"});
    QCOMPARE(Update(), List(Done));
    QCOMPARE(sys::ReadBytes(elsewhere.filePath(u"a.png"_s)), QByteArray("nova"));
    QCOMPARE(sys::ReadBytes(elsewhere.filePath(u"novas/b.png"_s)), QByteArray("b"));
    QCOMPARE(QDir(elsewhere.path()).entryList(QDir::Files), List("a.png"));
    // What leads out of there again is refused as ever.
    QVERIFY(QFile::link(outside_->path(), elsewhere.filePath(u"fora"_s)));
    Apply({"ListVersao4.txt=FOTO;FotoPeca\\fora\\x.png;1"});
    QVERIFY(Update(3, 4).first().startsWith(u"Erro nº: 75\n"_s));
}

TEST(TestInstalacao, MarksAndBars) {
    QCOMPARE(frmAtualizando::LarguraDaBarra(0, 0), 216);
    QCOMPARE(frmAtualizando::LarguraDaBarra(2, 7), 62);
    QCOMPARE(frmAtualizando::LarguraDaBarra(5'000'000'000, 10), 216);
    QCOMPARE(frmAtualizando::LarguraDaBarra(1, 100'000) + frmAtualizando::LarguraDaBarra(0, 1), 0);

    Apply({"ListVersao2.txt=FOTO;FotoPeca\\a.png;1\nFOTO;late;15\n", "ListVersao3.txt="});
    QStringList seen;
    const auto look = FromRequest(4, [&seen] {
        if (!seen.isEmpty()) {
            return;
        }
        // Each step in its row: a mark as large as its drawing, and a bar within its border.
        QStringList named;
        for (int step = 1; step <= 4; ++step) {
            const auto part = [step](const AnyText& name) -> QWidget& {
                return Find<QWidget>(*Screen(), name + u"Atualizacao(%1)"_s.arg(step));
            };
            const auto drawn = [](const AnyText& name) {
                return forms::Artwork::Load(u"atualizando-"_s + name)->Size();
            };
            const QRect now = part("imgPassoAtual").geometry();
            const QRect border = part("imgBordaBarra").geometry();
            const QRect bar = part("imgBarra").geometry();
            QCOMPARE(now.size(), drawn("passo"));
            QCOMPARE(part("imgPassoConcluido").geometry(),
                     QRect(now.topLeft() - QPoint(3, 0), drawn("concluido")));
            QCOMPARE(border, QRect(QPoint(now.left() + 47, border.top()), drawn("borda")));
            QVERIFY(border.top() - now.bottom() == 4 || border.top() - now.bottom() == 5);
            QCOMPARE(bar, QRect(border.topLeft() + QPoint(6, 4),
                                QSize(bar.width(), border.height() - 8)));
            named += part("imgPassoAtual").accessibleName();
        }
        QCOMPARE(Screen()->windowTitle(), TituloCatalogo);
        QCOMPARE(Screen()->Picture()->size(), forms::Artwork::Load(u"atualizando"_s)->Size());
        QCOMPARE(named, List("Consultando as novas versões", "Baixando os arquivos",
                             "Instalando os arquivos", "Atualizando o catálogo"));
        auto& wait = Find<forms::Label>(*Screen(), "lblEspera");
        QVERIFY(!wait.isVisible());
        wait.SetText(u"espera"_s);
        QCOMPARE(Shows(wait, Paleta::Atual().petroleoFundo), wait.rect());
        const QImage grey = wait.grab().toImage().convertToFormat(QImage::Format_Grayscale8);
        QVERIFY(std::ranges::max(std::span(grey.constBits(), grey.sizeInBytes())) > 160);
        // What the drawing says there does not shine through.
        wait.SetText(QString());
        wait.show();
        const QImage covered = Screen()->grab(wait.geometry()).toImage();
        QImage foot = covered;
        foot.fill(Paleta::Atual().petroleoFundo);
        QCOMPARE(covered, foot);
        wait.hide();
        for (const auto* picture : Screen()->findChildren<forms::Panel*>()) {
            const QString name = picture->objectName().remove(u"Atualizacao"_s);
            if (picture->isVisible() && name.startsWith("img"_L1)) {
                const bool bar = name.startsWith("imgBarra"_L1);
                seen += name.mid(3) + (bar ? u" %1"_s.arg(picture->width()) : QString());
            }
        }
    });
    QCOMPARE(Update(), List(Done));
    seen.sort();
    QCOMPARE(seen, List("Barra(1) 216", "Barra(2) 54", "BordaBarra(1)", "BordaBarra(2)",
                        "PassoAtual(2)", "PassoConcluido(1)"));
}

// What a window is told: each step with all that it has to do, the pieces, the end; whether it may
// be broken off; "~" where it hears of its events. Who breaks it off in a script all the same keeps
// the lines that ran.
TEST(TestInstalacao, Tells) {
    for (const auto& [brokenOffAt, failure, state] : Each<QString, QString, QString>{
             {"when all is done", "4. ", "", "3/1 2 nova outra 0"},
             {"before the first file", "2. ", "18 Interrompido pelo usuário", "1/0 0 velha none 0"},
             {"in the script", "4+1 ", "18 Interrompido pelo usuário (dois.txt, linha 2)",
              "1/0 2 nova outra 0"},
         }) {
        Apply({Script({Insert(20, "Bravil"), Insert(21, "Zenpar")})});
        Instalacao installation(false);
        QString told;
        const auto tell = [&, at = brokenOffAt](const QString& what) {
            told += what;
            if (what == at) {
                installation.Interromper();
            }
            QTest::qSleep(11);  // longer than events are let wait
            QTimer::singleShot(0, &installation, [&told] { told += u'~'; });
        };
        connect(&installation, &Instalacao::PassoAberto, this, [&](quint8 step, qint64 whole) {
            tell(u"%1/%2%3 "_s.arg(step).arg(whole).arg(installation.PodeInterromper() ? u"?"
                                                                                       : u""));
        });
        connect(&installation, &Instalacao::Avancou, this,
                [&](quint8 step, qint64 piece) { tell(u"%1+%2 "_s.arg(step).arg(piece)); });
        connect(&installation, &Instalacao::PassoConcluido, this,
                [&](quint8 step) { tell(u"%1. "_s.arg(step)); });
        QCOMPARE(SaidBy([&] { installation.Atualizar(1, 3); }), failure);
        const QString whole =
            u"1/3? ~1+1 ~1+1 ~1. 2/9? ~~2+4 ~2+120 ~2+5 ~2. 3/3 3+1 ~~~3+1 ~3+1 ~3. 4/3 4+1 "
            "~~~4+1 ~4. "_s;
        told.truncate(told.lastIndexOf(u' ') + 1);
        QCOMPARE(told, whole.first(whole.indexOf(brokenOffAt) + brokenOffAt.size()));
        QCOMPARE(State(), state);
    }
}

TEST(TestInstalacao, KeyFiles) {
    for (auto [one] : Cases(TARVO_CASES "/keys.data")) {
        const QString found = one.Take(u'>').first();
        QString keys;
        const QString refused = SaidBy([&] {
            keys = QString::number(LerTextoDasChaves(one.lines.join("\r\n"_L1)).chaves.size());
        });
        QCOMPARE(keys + refused,
                 !keys.isEmpty() ? found
                                 : u"75 O arquivo \"ChavesAtualizacao.txt\", ao lado do programa, "
                                   "não pode ser entendido: \"%1\"."_s.arg(found));
    }
    QCOMPARE(SaidBy([] {
                 ConferirVersao({u"loja"_s, {}}, "3;2026-03-05");
             }),
             u"-110 O número da versão mais nova não foi assinado por quem publica este "
             "catálogo."_s);
    Apply({"sign xpy"});
    for (const QString& letter : {u"x"_s, u"p"_s, u"y"_s}) {
        const ChavesDaAtualizacao one{u"loja"_s, {sys::OpenKeyOf(Signers(letter).front().key)}};
        QCOMPARE(ConferirVersao(one, sys::ReadBytes(Site() + u"Versao.sig"_s)).numero, 3);
    }
}

TEST(TestInstalacao, TheProxyGetsTheStoredPassword) {
    GravarConfiguracao(QString(), u"maria"_s, u"s3nha"_s, true);
    const auto forget = qScopeGuard([] { GravarConfiguracao({}, {}, {}, true); });
    const Logins nobody(AnyTexts{});
    Apply({"ListVersao3.txt=FOTO;password;1"});
    QCOMPARE(Update(), List(Done));
}

TEST(TestInstalacao, FailuresInWords) {
    for (auto [one] : Cases(TARVO_CASES "/failures.data")) {
        const QString words = one.Take(u'>').first();
        const Erro failure(-104, one.lines.first());
        QCOMPARE(QString::number(int(DesfechoDaFalha(failure))) + u' ' +
                     FalhaEmPalavras(failure, u"casa"_s),
                 words + (words.endsWith(u'.') ? u" ("_s + one.lines.first() + u')' : QString()));
    }
}
