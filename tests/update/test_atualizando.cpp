#include "platform/dao/connection.h"
#include "platform/forms/controls.h"
#include "platform/system/clock.h"
#include "platform/system/paths.h"
#include "platform/system/process.h"
#include "session/arquivos.h"
#include "session/banco.h"
#include "session/global.h"
#include "support/catalogo.h"
#include "support/peer.h"
#include "support/servers.h"
#include "support/test.h"
#include "support/windows.h"
#include "update/atualizando.h"
#include "update/internet.h"
#include "update/restos.h"

#include <QTimer>

#include <optional>

using namespace std::chrono_literals;

namespace {

const QString Done = u"Atualização concluída com sucesso."_s;

}  // namespace

class TestAtualizando : public QObject {
    Q_OBJECT

    std::unique_ptr<CatalogoDeTeste> catalogo_;
    std::unique_ptr<WrongServer> server_;
    std::optional<ProxySetting> proxy_;

    QString Path(const AnyText& name) const { return catalogo_->Pasta() + u'/' + name; }

    QByteArray Local(const AnyText& name) const {
        return QFile::exists(Path(name)) ? sys::ReadBytes(Path(name)) : QByteArray("none");
    }

    qsizetype TemporaryFiles() const { return catalogo_->Temporarios().size(); }

    // A list or script of these lines.
    void Serve(const AnyText& name, const AnyTexts& lines) const {
        server_->Put(u"base/"_s + name, lines.join(u"\r\n"_s).toUtf8());
    }

    // Runs the update and returns the boxes that were shown.
    QStringList Update(int from, int to, const QList<int>& answers = {}) const {
        BoxAnswers boxes(answers);
        ParametroFormulario = QString::number(from) + u'|' + QString::number(to);
        (new frmAtualizando)->ShowModal();
        Settle();
        return boxes.Texts();
    }

    static QString Versions() {
        return Valor("SELECT Versao & '/' & VersaoAnterior FROM UMREGISTRO");
    }
    static QString Fabricantes() { return Valor("SELECT Count(*) FROM CLIENTECONCORRENTE"); }

    static QString Insert(int code, const AnyText& name) {
        return u"E:INSERT INTO CLIENTECONCORRENTE VALUES (%1, '%2', 'C')"_s.arg(code).arg(name);
    }
    static forms::Form& Screen() { return *forms::Form::Find(frmAtualizando::Nome); }

    // Acts when the server has been asked so many times.
    void AtRequest(int count, const std::function<void()>& act) {
        auto* timer = new QTimer(this);
        connect(timer, &QTimer::timeout, this, [=, this] {
            if (server_->Requests().size() >= count) {
                delete timer;
                act();
            }
        });
        timer->start(10ms);
    }

private Q_SLOTS:
    void initTestCase() { server_ = std::make_unique<WrongServer>(); }
    void init() {
        server_->Clear();
        proxy_.emplace(server_->Port());
        catalogo_ = std::make_unique<CatalogoDeTeste>();
        catalogo_->Executar(
            {"UPDATE UMREGISTRO SET UrlAtualizacao = 'HTTP://atualiza.exemplo/base', Versao = 1, "
             "VersaoAnterior = 0, FlagErroUltimaVerificacao = 1"});
        Write(Path("FotoPeca/a.png"), "velha");
        ReiniciarPrograma = false;
    }
    void cleanup() {
        sys::SetStartHandler({});
        catalogo_.reset();
        proxy_.reset();
    }

    void WholeUpdate() {
        Serve("ListVersao2.txt", {"FOTO;FotoPeca\\a.png;4", "", "SDBX;scripts\\dois.txt;0", "  "});
        Serve("ListVersao3.txt",
              {"FOTO; fotopeca\\A.PNG ;4", "sdb;nova pasta\\mais\\texto.txt;5",
               "SDB;scripts\\tres.txt;5", "EXE;apoio\\um.exe;1", "EXE;apoio\\dois.exe;1"});
        server_->Put("base/FotoPeca/a.png", "nova");
        server_->Put("base/nova pasta/mais/texto.txt", "texto");
        server_->Put("base/apoio/um.exe", "1");
        server_->Put("base/apoio/dois.exe", "2");
        Serve("scripts/dois.txt",
              {"B:INSERT INTO CLIENTECONCORRENTE VALUES (1?, '2?', '3?')", "20<<;>>Bravil<<;>>I",
               "20<<;>>outra vez<<;>>I", "E:isto não é SQL", "21<<;>>Zenpar<<vbCrLf>>Sul<<;>>C"});
        // The template lives on into the next file.
        Serve("scripts/tres.txt", {"22<<;>>Norral<<;>>C", "R:", "S:true",
                                   "E:DELETE FROM CLIENTECONCORRENTE WHERE "
                                   "CodigoClienteConcorrente = 20"});
        QStringList started;
        sys::SetStartHandler([&](const QString& commandLine, int) {
            started += commandLine;
            return sys::ProcessId(0);
        });

        QCOMPARE(Update(1, 3), List(Done));
        QCOMPARE(Versions(), u"3/1"_s);
        QCOMPARE(Valor("SELECT FlagErroUltimaVerificacao FROM UMREGISTRO"), u"0"_s);
        QVERIFY(!Valor("SELECT DataUltimaVerificacao FROM UMREGISTRO").isEmpty());
        QCOMPARE(Valor("SELECT DescricaoClienteConcorrente FROM CLIENTECONCORRENTE WHERE "
                       "CodigoClienteConcorrente = 21"),
                 u"Zenpar\r\nSul"_s);
        QCOMPARE(Fabricantes(), u"2"_s);
        QVERIFY(ReiniciarPrograma);
        QCOMPARE(Local("FotoPeca/a.png"), QByteArray("nova"));
        QCOMPARE(Local("nova pasta/mais/texto.txt"), QByteArray("texto"));
        QCOMPARE(Local("scripts/dois.txt"), QByteArray("none"));
        QVERIFY(QFileInfo(Path("apoio/dois.exe")).isExecutable());
        QCOMPARE(TemporaryFiles(), 0);
        QCOMPARE(started, List("true", u'"' + gCaminho + u"apoio\\dois.exe\""_s));
        QStringList asked;
        for (const QString& request : server_->Requests()) {
            asked += request.section(u'/', -2, -2).section(u' ', 0, 0);
        }
        QCOMPARE(asked, List("ListVersao2.txt", "ListVersao3.txt", "a.png", "dois.txt", "texto.txt",
                             "tres.txt", "um.exe", "dois.exe"));
    }

    void OnlyFiles() {
        Serve("ListVersao2.txt", {"FOTO;FotoPeca\\a.png;0"});
        server_->Put("base/FotoPeca/a.png", "nova");
        QCOMPARE(Update(1, 2), List(Done));
        QCOMPARE(Versions(), u"2/1"_s);
        QVERIFY(!ReiniciarPrograma);
    }

    // What a list may not say. Each ends the update before anything but lists was fetched.
    void BadLists_data() {
        const Table<QString, int> row("line", "error");
        row("two fields", "FOTO;x.png", 9);
        row("one field", "FOTO", 9);
        row("no size", "FOTO;x.png;", 13);
        row("size in words", "FOTO;x.png;muito", 13);
        row("size too large", "FOTO;x.png;3000000000", 6);
        row("sum too large", "FOTO;x.png;2147483647", 6);
        for (const QByteArray name : {"..\\x",
                                      "FotoPeca\\..\\..\\x",
                                      "../x",
                                      "\\x",
                                      "/etc/x",
                                      "C:\\x",
                                      "c:x",
                                      "FotoPeca\\.. \\x",
                                      "...\\x",
                                      ".",
                                      "",
                                      "a\tb",
                                      "fora\\x",
                                      "fora\\novo\\x",
                                      "dentro\\..\\x",
                                      "Tarvo.mdb",
                                      "tarvo.MDB-journal",
                                      "TARVO.LDB",
                                      "Tarvo.mdb ",
                                      "FotoPeca\\nul.png",
                                      "CON",
                                      "aux \\x",
                                      "com1.tar.gz",
                                      "LPT\xC2\xB2",
                                      "conin$",
                                      "a?.png",
                                      "a|b"}) {
            row("name " + name, ("FOTO;" + name + ";1").constData(), 75);
        }
        row("script's name", "SDB;..\\x;1", 75);
    }
    void BadLists() {
        QFETCH(QString, line);
        QFETCH(int, error);
        const QTemporaryDir outside;
        QVERIFY(QFile::link(outside.path(), Path("fora")));
        QVERIFY(QFile::link(Path("FotoPeca"), Path("dentro")));
        Serve("ListVersao2.txt", {"FOTO;dentro\\a.png;1", line});
        const QStringList boxes = Update(1, 2);
        QCOMPARE(boxes.size(), 1);
        QVERIFY2(boxes.first().startsWith(u"Erro nº: %1\n"_s.arg(error)),
                 qPrintable(boxes.first()));
        QCOMPARE(server_->Requests().size(), 1);
        QCOMPARE(TemporaryFiles(), 0);
        QCOMPARE(QDir(outside.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList());
        QCOMPARE(Versions(), u"1/0"_s);
    }

    void FailureInEachStep() {
        Serve("ListVersao2.txt",
              {"FOTO;FotoPeca\\a.png;4", "FOTO;FotoPeca\\b.png;4", "SDB;dois.txt;1"});
        const auto failsWith = [&](const QString& text) {
            QCOMPARE(Update(1, 3), List(u"Erro nº: "_s + text));
            QCOMPARE(Versions(), u"1/0"_s);
        };

        failsWith(u"-104\nHttpQueryInfo:0;-103;Status=404 (ListVersao3.txt)"_s);
        QCOMPARE(TemporaryFiles(), 0);

        Serve("ListVersao3.txt", {});
        server_->Put("base/FotoPeca/a.png", "nova");
        failsWith(u"-104\nHttpQueryInfo:0;-103;Status=404 (FotoPeca\\b.png)"_s);
        QCOMPARE(TemporaryFiles(), 1);
        QCOMPARE(Local("FotoPeca/a.png"), QByteArray("velha"));

        server_->Put("base/FotoPeca/b.png", "b");
        Serve("dois.txt", {Insert(20, "Bravil"), "S:nao-existe-aqui", Insert(21, "Norral")});
        QVERIFY(QDir().mkpath(Path("FotoPeca/b.png")));
        // A folder in the file's place.
        failsWith(u"75\nErro de acesso ao caminho/arquivo (FotoPeca\\b.png)"_s);
        QCOMPARE(Local("FotoPeca/a.png"), QByteArray("nova"));
        QCOMPARE(Fabricantes(), u"0"_s);

        QVERIFY(QDir().rmdir(Path("FotoPeca/b.png")));
        failsWith(u"53\nArquivo não encontrado (dois.txt, linha 2)"_s);  // a program of the script
        QCOMPARE(Local("FotoPeca/b.png"), QByteArray("b"));
        QCOMPARE(Fabricantes(), u"1"_s);

        Serve("dois.txt", {Insert(20, "Bravil"), Insert(21, "Norral")});
        QCOMPARE(Update(1, 3), List(Done));
        QCOMPARE(Fabricantes(), u"2"_s);
        QCOMPARE(Versions(), u"3/1"_s);
    }

    // Somebody else's lock is no failure of a statement. It is waited for, the window says for
    // whom, others go on searching, and the user may give up.
    void WaitsForOthers_data() {
        const Table<bool, bool, QString> row("reads", "gaveUp", "whom");
        const QString reader = u"catalogue_peer (%1), que lê o catálogo neste computador"_s.arg(
            QFileInfo(u"/proc/self"_s).owner());
        row("a reader asleep", true, false, reader);
        row("a reader asleep, and no patience", true, true, reader);
        row("a writer", false, false, "outro computador, que está usando o catálogo");
    }
    void WaitsForOthers() {
        QFETCH(bool, reads);
        QFETCH(bool, gaveUp);
        QFETCH(QString, whom);
        gDB->GetConnection()->Run(
            "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2000) "
            "INSERT INTO VEICULO SELECT i, 'Caminhão ' || i, 1 FROM n");
        Serve("ListVersao2.txt", {"SDB;dois.txt;1"});
        Serve("dois.txt", {Insert(20, "Bravil")});
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
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] {
            auto* screen = forms::Form::Find(frmAtualizando::Nome);
            auto* label = screen ? screen->findChild<forms::Label*>(u"lblEspera"_s) : nullptr;
            if (!label || !label->isVisible() || !seen.isEmpty()) {
                return;
            }
            seen = label->Text();
            found = awake.Ask("value SELECT Count(*) FROM VEICULO");
            if (gaveUp) {
                screen->close();
            } else {
                asleep.Kill();
                reads ? void() : writer.sessao->Rollback();
            }
        });
        timer.start(50ms);
        const QStringList boxes = Update(1, 2, {6});
        QCOMPARE(seen, u"À espera de "_s + whom);
        QCOMPARE(found, u"2000"_s);
        QCOMPARE(boxes, gaveUp ? List(seen + u".\n\nDeseja interromper a atualização?"_s,
                                      "Atualização interrompida. Uma parte dela já está no "
                                      "catálogo; a próxima atualização recomeça do início.")
                               : List(Done));
        QCOMPARE(Versions(), gaveUp ? u"1/0"_s : u"2/1"_s);
        QCOMPARE(Fabricantes(), gaveUp ? u"0"_s : u"1"_s);
    }

    // Closing the window gives up while the catalogue is untouched, and is no way out later.
    void Cancelled() {
        Serve("ListVersao2.txt", {"FOTO;FotoPeca\\a.png;4", "FOTO;silent;4"});
        server_->Put("base/FotoPeca/a.png", "nova");
        AtRequest(3, [] { Screen().close(); });
        QCOMPARE(Update(1, 2, {6}),
                 List("Deseja cancelar a atualização?",
                      "Atualização cancelada. O catálogo continua como estava."));
        QCOMPARE(TemporaryFiles(), 0);
        QCOMPARE(Versions(), u"1/0"_s);

        Serve("ListVersao2.txt", {"SDB;dois.txt;1"});
        Serve("dois.txt", {"S:programa"});
        sys::SetStartHandler([](const QString&, int) {
            Screen().close();
            return sys::ProcessId(0);
        });
        QCOMPARE(Update(1, 2, {6}), List(Done));
    }

    // The answer comes while the last file is on its way.
    void CancelledInTheLastDownload() {
        Serve("ListVersao2.txt", {"FOTO;late;5"});
        AtRequest(2, [] { Screen().close(); });
        QCOMPARE(Update(1, 2, {6}).last(),
                 u"Atualização cancelada. O catálogo continua como estava."_s);
        QCOMPARE(Local("late"), QByteArray("none"));
        QCOMPARE(TemporaryFiles(), 0);
    }

    // A statement that never ends: the window lives, and the user may end it.
    void EndlessStatement() {
        Serve("ListVersao2.txt", {"SDB;dois.txt;1"});
        QStringList from;
        for (int i = 0; i < 9; ++i) {
            from += u"CLIENTECONCORRENTE AS C%1"_s.arg(i);
        }
        QStringList lines;
        for (int code = 20; code < 40; ++code) {
            lines += Insert(code, "Bravil");
        }
        lines +=
            u"E:UPDATE CLIENTECONCORRENTE SET DescricaoClienteConcorrente = (SELECT Count(*) FROM "_s +
            from.join(u", "_s) + u')';
        Serve("dois.txt", lines);
        int seen = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&seen] {
            ++seen;
            if (auto* screen = forms::Form::Find(frmAtualizando::Nome)) {
                screen->close();
            }
        });
        timer.start(100ms);
        const QStringList boxes = Update(1, 2, {6});
        QCOMPARE(boxes,
                 List("Um comando da atualização está demorando. Deseja interromper a "
                      "atualização?",
                      "Atualização interrompida. Uma parte dela já está no catálogo; a próxima "
                      "atualização recomeça do início."));
        QVERIFY(seen >= 15);
        Instalacao unattended(false);
        unattended.LimitarComandos(50ms);
        QCOMPARE(ErrorOf([&] { unattended.Atualizar(1, 2); }), 3059);
        QCOMPARE(Versions(), u"1/0"_s);
    }

    // No group ends while the catalogue has no version, whatever the script does meanwhile.
    void RecordOfTheVersion_data() {
        const Table<QStringList, QString, QString, QString> row("script", "box", "versions",
                                                                "rows");
        const QString away = u"E:DELETE FROM UMREGISTRO"_s;
        const QString back =
            u"E:INSERT INTO UMREGISTRO (DataEmissao, Versao, VersaoAnterior, UrlAtualizacao) "
            u"VALUES "
            "(DateSerial(2026,1,1), 1, 0, 'atualiza.exemplo/base')"_s;
        const QString lost = u"Erro nº: -112\nOs scripts da atualização apagaram ou"_s;
        row("put back", {away, Insert(20, "a"), "B:", back}, Done, "2/1", "1");
        row("gone for good", {Insert(20, "a"), away, Insert(21, "b")}, lost, "1/0", "0");
        row("gone before a program", {Insert(20, "a"), away, "S:true", back}, lost, "1/0", "0");
        row("the table gone", {"E:DROP TABLE UMREGISTRO"}, lost, "1/0", "0");
        const auto altered = [](const char* column, const char* set) {
            return QStringList{u"S:true"_s,
                               u"E:ALTER TABLE UMREGISTRO ALTER COLUMN "_s + QLatin1String(column),
                               u"E:UPDATE UMREGISTRO SET "_s + QLatin1String(set)};
        };
        row("a column gone", {"S:true", "E:ALTER TABLE UMREGISTRO DROP COLUMN VersaoAnterior"},
            lost, "1/0", "0");
        row("no date", altered("DataEmissao DATETIME NULL", "DataEmissao = Null"), lost, "1/0",
            "0");
        row("text for a date", altered("DataEmissao TEXT(20)", "DataEmissao = '1ª'"), lost, "1/0",
            "0");
        row("text for a check",
            altered("DataUltimaVerificacao TEXT(9)", "DataUltimaVerificacao='x'"), lost, "1/0",
            "0");
        row("text for a flag",
            altered("FlagErroUltimaVerificacao TEXT(9)", "FlagErroUltimaVerificacao = 'x'"), lost,
            "1/0", "0");
        row("Null for a date, refused", altered("DataEmissao DATETIME", "DataEmissao = Null"), Done,
            "2/1", "0");
        row("no newer version allowed",
            {"E:ALTER TABLE UMREGISTRO ADD CONSTRAINT C CHECK (Versao < 2)"},
            "Erro nº: -112\nOs scripts da atualização mudaram a tabela UMREGISTRO, e a versão 2",
            "1/0", "0");
    }
    void RecordOfTheVersion() {
        QFETCH(QStringList, script);
        QFETCH(QString, box);
        QFETCH(QString, versions);
        Serve("ListVersao2.txt", {"SDB;dois.txt;1"});
        Serve("dois.txt", script);
        sys::SetStartHandler([](const QString&, int) { return sys::ProcessId(0); });
        const QStringList boxes = Update(1, 2);
        QCOMPARE(boxes.size(), 1);
        QVERIFY2(boxes.first().startsWith(box), qPrintable(boxes.first()));
        QCOMPARE(Versions(), versions);
        QTEST(Fabricantes(), "rows");
    }

    // What ran before a failure is kept.
    void KeepsWhatRan() {
        Serve("ListVersao2.txt", {"SDB;dois.txt;1"});
        Serve("dois.txt", {Insert(20, "a"), "S:nao-existe-aqui", Insert(21, "b")});
        QCOMPARE(Update(1, 2).size(), 1);
        QCOMPARE(Fabricantes(), u"1"_s);
    }

    // The lines of its group go with it, so it must not be passed over.
    void NoMemoryForAStatement() {
        Serve("ListVersao2.txt", {"SDB;dois.txt;1"});
        QStringList script = {u"E:CREATE TABLE M (A LONG)"_s, u"E:INSERT INTO M VALUES (1)"_s};
        for (int rows = 1; rows < 512; rows *= 2) {
            script += u"E:INSERT INTO M (A) SELECT A + %1 AS X FROM M"_s.arg(rows);
        }
        Serve("dois.txt",
              script + List("E:SELECT DISTINCT String(500000, 'a') & A AS T INTO N FROM M"));
        QCOMPARE(Update(1, 2),
                 List("Erro nº: 3035\nO comando precisa de memória demais. (dois.txt, linha 12)"));
        QCOMPARE(Versions(), u"1/0"_s);
    }

    // A moment, a disk and a number of four digits make the name: two may well come to the same.
    void NoTwoDownloadsShareAName() {
        sys::SetClock([] { return QDateTime(QDate(2026, 3, 5), QTime(9, 0), Qt::UTC); });
        for (int number = 0; number < 10000; ++number) {
            const QString name =
                u"000900000305"_s + SerialVolume(u"C:\\"_s) + QString::number(number);
            if (number % 3000 != 7) {
                Write(Path(name + u"-recebido.tmp"_s));
            }
        }
        for (int i = 0; i < 4; ++i) {
            const QString name = sys::ToNative(NomeDoRecebido(gCaminho));
            QVERIFY2(!QFile::exists(name), qPrintable(name));
            Write(name);
        }
        QCOMPARE(catalogo_->Temporarios().size(), 10000);
        sys::SetClock({});
    }

    void RemovesWhatDeadUpdatesLeft() {
        const QString moment = u"012345678901ABCDEF0112"_s;
        Write(Path(moment + u"-recebido.tmp"_s));
        Write(Path(moment + u".tmp"_s));
        Write(Path("outro.tmp"));
        Write(Path("velho-recebido.tmp"));
        QFile old(Path(moment + u"9.tmp"_s));
        QVERIFY(old.open(QIODevice::WriteOnly));
        QVERIFY(old.setFileTime(QDateTime::currentDateTime().addDays(-2),
                                QFileDevice::FileModificationTime));
        old.close();
        Serve("ListVersao2.txt", {});
        QCOMPARE(Update(1, 2), List(Done));
        QStringList left = catalogo_->Temporarios();
        left.sort();
        QCOMPARE(left, List(moment + u".tmp"_s, "outro.tmp", "velho-recebido.tmp"));
    }

    // The administrator has put the pictures where there is room for them.
    void PicturesBehindALink() {
        const QTemporaryDir elsewhere;
        QDir(Path("FotoPeca")).removeRecursively();
        QVERIFY(QFile::link(elsewhere.path(), Path("FotoPeca")));
        Serve("ListVersao2.txt", {"FOTO;FotoPeca\\a.png;4", "FOTO;fotopeca\\novas\\b.png;4"});
        server_->Put("base/FotoPeca/a.png", "nova");
        server_->Put("base/fotopeca/novas/b.png", "b");
        QCOMPARE(Update(1, 2), List(Done));
        QCOMPARE(sys::ReadBytes(elsewhere.filePath(u"a.png"_s)), QByteArray("nova"));
        QCOMPARE(sys::ReadBytes(elsewhere.filePath(u"novas/b.png"_s)), QByteArray("b"));
        QCOMPARE(QDir(elsewhere.path()).entryList(QDir::Files), List("a.png"));

        // What leads out of there again is refused as ever.
        const QTemporaryDir outside;
        QVERIFY(QFile::link(outside.path(), elsewhere.filePath(u"fora"_s)));
        Serve("ListVersao3.txt", {"FOTO;FotoPeca\\fora\\x.png;1"});
        QVERIFY(Update(2, 3).first().startsWith(u"Erro nº: 75\n"_s));
    }

    void Bars_data() {
        const Table<qint64, qint64, int> row("maximum", "value", "width");
        row("nothing to do", 0, 0, 216);
        row("the only list", 2, 1, 108);
        row("rounded", 7, 2, 62);
        row("wrong sizes", 10, 5'000'000'000, 216);
        row("begun", 100'000, 1, 0);
    }
    void Bars() {
        QFETCH(qint64, maximum);
        QFETCH(qint64, value);
        QTEST(frmAtualizando::LarguraDaBarra(value, maximum), "width");
    }

    void MarksAndBarsDuringTheUpdate() {
        Serve("ListVersao2.txt", {"FOTO;FotoPeca\\a.png;1", "FOTO;late;3"});
        server_->Put("base/FotoPeca/a.png", "1");
        QStringList seen;
        int width = -1;
        AtRequest(3, [&] {
            for (const char* name :
                 {"imgPassoAtualAtualizacao(1)", "imgPassoConcluidoAtualizacao(1)",
                  "imgPassoAtualAtualizacao(2)", "imgBordaBarraAtualizacao(2)",
                  "imgPassoConcluidoAtualizacao(2)", "imgBarraAtualizacao(3)"}) {
                if (Find<forms::Panel>(Screen(), name).isVisible()) {
                    seen += QString::fromLatin1(name);
                }
            }
            width = Find<forms::Panel>(Screen(), "imgBarraAtualizacao(2)").width();
        });
        QCOMPARE(Update(1, 2), List(Done));
        QCOMPARE(seen, List("imgPassoConcluidoAtualizacao(1)", "imgPassoAtualAtualizacao(2)",
                            "imgBordaBarraAtualizacao(2)"));
        QCOMPARE(width, 54);
    }
};

TARVO_TEST(TestAtualizando);
#include "test_atualizando.moc"
