#include "platform/dao/connection.h"
#include "platform/forms/controls.h"
#include "platform/system/clock.h"
#include "platform/system/paths.h"
#include "platform/system/process.h"
#include "platform/system/proof.h"
#include "publicar/signing.h"
#include "session/arquivos.h"
#include "session/banco.h"
#include "session/global.h"
#include "support/cases.h"
#include "support/catalogo.h"
#include "support/peer.h"
#include "support/servers.h"
#include "support/windows.h"
#include "update/atualizando.h"
#include "update/prova.h"
#include "update/restos.h"
#include "update/semjanela.h"

#include <QTimer>

#include <optional>

using namespace std::chrono_literals;

namespace {

const QString Done = u"Atualização concluída com sucesso."_s;
const QString Cancelled = u"Atualização cancelada. O catálogo continua como estava."_s;
const QString Stopped =
    u"Atualização interrompida. Uma parte dela já está no catálogo; a próxima atualização recomeça "
    "do início."_s;
constexpr int Yes = 6;

// As State() tells it: version and the one before, rows of the script, two pictures, files on their
// way.
const QString Untouched = u"1/0 0 velha none 0"_s;
const QString Whole = u"3/1 1 nova outra 0"_s;

QString Insert(int code, const AnyText& name) {
    return u"E:INSERT INTO CLIENTECONCORRENTE VALUES (%1, '%2', 'C')"_s.arg(code).arg(name);
}

// A script in the place of the site's own.
QString Script(const AnyTexts& lines) {
    return u"dois.txt="_s + lines.join(u'\n');
}

// "p" is the publisher's key, any other letter another one; "P" is his for another site.
std::vector<publicar::Signer> Signers(const QString& letters) {
    std::vector<publicar::Signer> signers;
    for (const QChar letter : letters) {
        signers.push_back({letter.isUpper() ? u"outra loja"_s : u"loja"_s,
                           QByteArray(32, letter.toLower().toLatin1())});
    }
    return signers;
}

}  // namespace

// The window that updates, before a site of the versions 2 and 3: as published, with faults of its
// publisher, and as somebody between him and the customer can make it.
struct TestInstalacao : Fixture {
    WrongServer server_;
    std::unique_ptr<CatalogoDeTeste> catalogo_;
    std::unique_ptr<QTemporaryDir> outside_;
    std::optional<ProxySetting> proxy_;

    QString Path(const AnyText& name) const { return catalogo_->Pasta() + u'/' + name; }
    QByteArray Local(const AnyText& name) const {
        return QFileInfo(Path(name)).isFile() ? sys::ReadBytes(Path(name)) : QByteArray("none");
    }
    QString Site() const { return server_.Folder() + u"/base/"_s; }
    void Put(const AnyText& name, const QByteArray& content) const {
        server_.Put(u"base/"_s + name, content);
    }

    // "name=content" with line feeds for line ends, or a word and what it is about.
    void Apply(const QString& change) const {
        const QString word = change.section(u' ', 0, 0);
        const QString name = change.section(u' ', 1, 1);
        const qsizetype content = change.indexOf(u'=') + 1;
        if (word == "flip"_L1) {
            QByteArray bytes = sys::ReadBytes(Site() + name);
            const int at = change.section(u' ', 2).toInt();
            bytes[at] = char(bytes.at(at) ^ 1);
            Put(name, bytes);
        } else if (word == "remove"_L1) {
            QVERIFY(QFile::remove(Site() + name));
        } else if (word == "copy"_L1) {
            Put(change.section(u' ', 2), sys::ReadBytes(Site() + name));
        } else if (word == "sign"_L1) {
            publicar::SignAgain(Site(), Signers(name));
        } else if (word == "seal"_L1) {  // the lists as they are
            for (const int list : {2, 3}) {
                publicar::SignList(Site(), Signers(name), list);
            }
        } else if (word == "trust"_L1) {
            ChavesDaAtualizacao keys{u"loja"_s, {}};
            for (const auto& signer : Signers(name)) {
                keys.chaves += sys::OpenKeyOf(signer.key);
            }
            UsarChaves(keys);
        } else if (word == "folder"_L1) {
            QVERIFY(QDir().mkpath(Path(name)));
        } else {
            QVERIFY2(content > 0, qPrintable(change));
            Put(change.left(content - 1), change.mid(content).replace(u'\n', u"\r\n"_s).toUtf8());
        }
    }

    // Runs the update and returns the boxes that were shown.
    static QStringList Update(int from = 1, int to = 3, const QList<int>& answers = {}) {
        BoxAnswers boxes(answers);
        ParametroFormulario = u"%1|%2"_s.arg(from).arg(to);
        (new frmAtualizando)->ShowModal();
        Settle();
        return boxes.Texts();
    }

    QString State() const {
        return u"%1 %2 %3 %4 %5"_s
            .arg(Valor("SELECT Versao & '/' & VersaoAnterior FROM UMREGISTRO"),
                 Valor("SELECT Count(*) FROM CLIENTECONCORRENTE"),
                 QString::fromUtf8(Local("FotoPeca/a.png")),
                 QString::fromUtf8(Local("FotoPeca/b.png")))
            .arg(catalogo_->Temporarios().size());
    }

    static forms::Form* Screen() { return forms::Form::Find(frmAtualizando::Nome); }

    // Acts again and again from the time when the server has been asked so often.
    std::unique_ptr<QTimer> FromRequest(int count, const std::function<void()>& act) const {
        auto timer = std::make_unique<QTimer>();
        connect(timer.get(), &QTimer::timeout, this, [=, this] {
            if (Screen() && server_.Requests().size() >= count) {
                act();
            }
        });
        timer->start(20ms);
        return timer;
    }

    void init() override {
        server_.Clear();
        proxy_.emplace(server_.Port());
        catalogo_ = std::make_unique<CatalogoDeTeste>();
        catalogo_->Executar(
            {"UPDATE UMREGISTRO SET UrlAtualizacao = 'HTTP://atualiza.exemplo/base', Versao = 1, "
             "VersaoAnterior = 0, FlagErroUltimaVerificacao = 7"});
        outside_ = std::make_unique<QTemporaryDir>();
        Write(Path("FotoPeca/a.png"), "velha");
        QVERIFY(QFile::link(outside_->path(), Path("fora")));
        QVERIFY(QFile::link(Path("FotoPeca"), Path("dentro")));
        for (const QString& file :
             List("FotoPeca/a.png=nova", "FotoPeca/b.png=outra", Script({Insert(20, "Bravil")}),
                  "ListVersao2.txt=FOTO;FotoPeca\\a.png;4\nSDB;dois.txt;1\n",
                  "ListVersao3.txt=FOTO;FotoPeca\\b.png;4\n", "Versao.txt=3\n")) {
            Apply(file);
        }
        ReiniciarPrograma = false;
    }
    void cleanup() override {
        QCOMPARE(QDir(outside_->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList());
        UsarChaves(std::nullopt);
        sys::SetStartHandler({});
        sys::SetClock({});
        catalogo_.reset();
        proxy_.reset();
    }
};

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

// Closing the window gives up while the catalogue is untouched, ends a statement that does not
// end by itself, and is no way out otherwise.
TEST(TestInstalacao, Closed) {
    Each<QStringList, int, QStringList, QString> row;
    const QString ask = u"Deseja cancelar a atualização?"_s;
    row("in a download", {"ListVersao3.txt=FOTO;silent;4"}, 2, {ask, Cancelled}, Untouched);
    row("in the last download", {"ListVersao3.txt=FOTO;late;5", "dois.txt="}, 2, {ask, Cancelled},
        Untouched);
    row("while a program of the script runs",
        {Script({Insert(20, "a"), "S:programa"}), "ListVersao3.txt="}, 4, {Done},
        "3/1 1 nova none 0");
    QStringList from;
    for (int i = 0; i < 9; ++i) {
        from += u"CLIENTECONCORRENTE AS C%1"_s.arg(i);
    }
    QStringList script;
    for (int code = 20; code < 40; ++code) {
        script += Insert(code, "Bravil");
    }
    script +=
        u"E:UPDATE CLIENTECONCORRENTE SET DescricaoClienteConcorrente = (SELECT Count(*) FROM "_s +
        from.join(u", "_s) + u')';
    row("in an endless statement", {Script(script)}, 4,
        {"Um comando da atualização está demorando. Deseja interromper a atualização?", Stopped},
        "1/0 * nova outra 0");  // the last group goes with it
    for (const auto& [changes, step, boxes, state] : row) {
        for (const QString& change : changes) {
            Apply(change);
        }
        sys::SetStartHandler([](const QString&, int) {
            Screen()->close();
            return sys::ProcessId(0);
        });
        const auto hand = FromRequest(step == 2 ? 5 : 4, [step] {
            if (Find<forms::Panel>(*Screen(), u"imgPassoAtualAtualizacao(%1)"_s.arg(step))
                    .isVisible()) {
                Screen()->close();
            }
        });
        QCOMPARE(Update(1, 3, {Yes}), boxes);
        if (state.contains(u'*')) {
            Instalacao unattended(false);
            unattended.LimitarComandos(50ms);
            QCOMPARE(ErrorOf([&] { unattended.Atualizar(1, 3); }), 3059);
        }
        QCOMPARE(Like(State(), state), state);
    }
}

// Somebody else's lock is no failure of a statement. It is waited for, the window says for
// whom, others go on searching, and the user may give up.
TEST(TestInstalacao, WaitsForOthers) {
    Each<bool, bool, QString> row;
    const QString somebody = u"outro computador, que está usando o catálogo"_s;
#ifdef Q_OS_WIN  // which tells of nobody's locks
    const QString reader = somebody;
#else
    const QString reader = u"catalogue_peer (%1), que lê o catálogo neste computador"_s.arg(
        QFileInfo(u"/proc/self"_s).owner());
#endif
    row("a reader asleep", true, false, reader);
    row("a reader asleep, and no patience", true, true, reader);
    row("a writer", false, false, somebody);
    for (const auto& [reads, gaveUp, whom] : row) {
        gDB->GetConnection()->Run(
            "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2000) "
            "INSERT INTO VEICULO SELECT i, 'Caminhão ' || i, 1 FROM n");
        Peer awake(catalogo_->Pasta());
        Peer asleep(catalogo_->Pasta());
        const OutroComputador writer;
        if (reads) {
            QCOMPARE(asleep.Ask("hold SELECT * FROM VEICULO"), u"0"_s);
            asleep.Stop();
        } else {
            writer.sessao->BeginTrans();
            writer.banco->Execute(u"UPDATE UMREGISTRO SET VersaoAnterior = 5"_s);
        }
        QString seen;
        QString found;
        const auto watch = FromRequest(0, [&] {
            const auto& label = Find<forms::Label>(*Screen(), "lblEspera");
            if (!label.isVisible() || !seen.isEmpty()) {
                return;
            }
            seen = label.Text();
            found = awake.Ask("value SELECT Count(*) FROM VEICULO");
            if (gaveUp) {
                Screen()->close();
            } else {
                asleep.Kill();
                reads ? void() : writer.sessao->Rollback();
            }
        });
        const QStringList boxes = Update(1, 3, {Yes});
        QCOMPARE(seen, u"À espera de "_s + whom);
        QCOMPARE(found, u"2000"_s);
        QCOMPARE(boxes, gaveUp ? List(seen + u".\n\nDeseja interromper a atualização?"_s, Stopped)
                               : List(Done));
        QCOMPARE(State(), gaveUp ? u"1/0 0 nova outra 0"_s : Whole);
    }
}

// What a scheduler is told. The verifier's answers are played; the real one is met elsewhere.
TEST(TestInstalacao, WithoutAWindow) {
    Each<QStringList, QStringList, QString, QString> row;
    for (Case& one : Cases(QStringLiteral(TARVO_CASES "/withoutwindow.data"))) {
        const QStringList answers = one.Take(u'<');
        const QString line = one.Take(u'>').first();
        const QString state = one.Take(u'=').first();
        row(one.name, one.lines, answers, line, state);
    }
    for (const auto& [changes, answers, line, state] : row) {
        const OutroComputador other;
        for (const QString& change : changes) {
            if (change.startsWith("other "_L1)) {
                other.sessao->BeginTrans();
                other.banco->Execute(change.mid(6));
            } else {
                Apply(change);
            }
        }
        QStringList started;
        sys::SetStartHandler([&](const QString& command, int) {
            if (started.size() < answers.size()) {
                Write(command.section(u"1|"_s, 1).replace(u'\\', u'/'),
                      answers.at(started.size()).toUtf8());
            }
            started += command;
            return sys::ProcessId(0);
        });
        const FimSemJanela end = AtualizarAberto(0min);
        QCOMPARE(Like(QString::number(int(end.desfecho)) + u' ' + end.linha, line), line);
        if (changes.value(0).startsWith("apoio"_L1)) {
            QCOMPARE(started.takeLast(), u'"' + gCaminho + u"apoio\\um.exe\""_s);
        }
        QCOMPARE(started.size(), answers.size());
        if (changes.value(0).startsWith("other"_L1)) {
            other.sessao->Rollback();
        }
        QCOMPARE(State() + u" flag "_s + Valor("SELECT FlagErroUltimaVerificacao FROM UMREGISTRO"),
                 state);
        QVERIFY(BloquearBancoDados(true));  // nobody holds it any more
        BloquearBancoDados(false);
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
