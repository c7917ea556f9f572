#include "platform/convert.h"
#include "platform/erro.h"
#include "platform/forms/controls.h"
#include "platform/system/paths.h"
#include "platform/system/process.h"
#include "session/banco.h"
#include "session/global.h"
#include "support/catalogo.h"
#include "support/database.h"
#include "support/servers.h"
#include "support/testmain.h"
#include "support/windows.h"
#include "update/atualizando.h"
#include "update/internet.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <QTimer>

#include <memory>
#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using testing_support::BoxAnswers;
using testing_support::ProxySetting;
using testing_support::WrongServer;

class TestAtualizando : public QObject {
    Q_OBJECT

    std::unique_ptr<CatalogoDeTeste> catalogo_;
    std::unique_ptr<WrongServer> server_;
    std::optional<ProxySetting> proxy_;

    QString Path(const QString& name) const { return catalogo_->Pasta() + u'/' + name; }

    void PutLocal(const QString& name, const QByteArray& content) const {
        QDir().mkpath(QFileInfo(Path(name)).path());
        QFile file(Path(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }

    QByteArray Local(const QString& name) const {
        return QFile::exists(Path(name)) ? sys::ReadBytes(Path(name)) : QByteArray("none");
    }

    qsizetype TemporaryFiles() const {
        return QDir(catalogo_->Pasta()).entryList({u"*.tmp"_s}).size();
    }

    // A list or script of these lines.
    void Serve(const QString& name, const QStringList& lines) const {
        server_->Put(u"base/"_s + name, lines.join(u"\r\n"_s).toUtf8());
    }

    // Runs the update and returns the boxes that were shown.
    QStringList Update(int from, int to, const QList<int>& answers = {}) const {
        BoxAnswers boxes(answers);
        ParametroFormulario = QString::number(from) + u'|' + QString::number(to);
        (new frmAtualizando)->ShowModal();
        testing_support::Settle();
        QStringList texts;
        for (const auto& box : boxes.Boxes()) {
            texts += box.text;
        }
        return texts;
    }

    static QString Value(const QString& sql) {
        return convert::ToTextOrEmpty(gDB->OpenRecordset(sql)->Fields(0).Value());
    }
    static QString Versions() {
        return Value(u"SELECT Versao & '/' & VersaoAnterior FROM UMREGISTRO"_s);
    }
    static QString Fabricantes() { return Value(u"SELECT Count(*) FROM CLIENTECONCORRENTE"_s); }

    static QString Insert(int code, const QString& name) {
        return u"E:INSERT INTO CLIENTECONCORRENTE (CodigoClienteConcorrente, "
               "DescricaoClienteConcorrente, TipoClienteConcorrente) VALUES (%1, '%2', 'C')"_s.arg(
                   QString::number(code), name);
    }

    static const QString Done;

private Q_SLOTS:
    void initTestCase() { server_ = std::make_unique<WrongServer>(); }
    void init() {
        server_->Clear();
        proxy_.emplace(server_->Port());
        catalogo_ = std::make_unique<CatalogoDeTeste>();
        catalogo_->Executar(
            {u"UPDATE UMREGISTRO SET UrlAtualizacao = 'HTTP://atualiza.exemplo/base', "
             "Versao = 1, VersaoAnterior = 0, FlagErroUltimaVerificacao = 1"_s});
        PutLocal(u"FotoPeca/a.png"_s, "velha");
        ReiniciarPrograma = false;
    }
    void cleanup() {
        sys::SetStartHandler({});
        catalogo_.reset();
        proxy_.reset();
    }

    void WholeUpdate() {
        Serve(u"ListVersao2.txt"_s,
              {u"FOTO;FotoPeca\\a.png;4"_s, u""_s, u"SDBX;scripts\\dois.txt;0"_s, u"  "_s});
        Serve(u"ListVersao3.txt"_s,
              {u"FOTO; fotopeca\\A.PNG ;4"_s, u"sdb;nova pasta\\mais\\texto.txt;5"_s,
               u"SDB;scripts\\tres.txt;5"_s, u"EXE;apoio\\um.exe;1"_s, u"EXE;apoio\\dois.exe;1"_s});
        server_->Put(u"base/FotoPeca/a.png"_s, "nova");
        server_->Put(u"base/nova pasta/mais/texto.txt"_s, "texto");
        server_->Put(u"base/apoio/um.exe"_s, "1");
        server_->Put(u"base/apoio/dois.exe"_s, "2");
        Serve(u"scripts/dois.txt"_s,
              {u"B:INSERT INTO CLIENTECONCORRENTE (CodigoClienteConcorrente, "
               "DescricaoClienteConcorrente, TipoClienteConcorrente) VALUES (1?, '2?', '3?')"_s,
               u"20<<;>>Bravil<<;>>I"_s, u"20<<;>>outra vez<<;>>I"_s, u"E:isto não é SQL"_s,
               u"21<<;>>Zenpar<<vbCrLf>>Sul<<;>>C"_s});
        // The template lives on into the next file.
        Serve(u"scripts/tres.txt"_s, {u"22<<;>>Norral<<;>>C"_s, u"R:"_s, u"S:true"_s,
                                      u"E:DELETE FROM CLIENTECONCORRENTE WHERE "
                                      "CodigoClienteConcorrente = 20"_s});
        QStringList started;
        sys::SetStartHandler([&](const QString& commandLine, int) {
            started += commandLine;
            return sys::ProcessId(0);
        });

        QCOMPARE(Update(1, 3), QStringList{Done});
        QCOMPARE(Versions(), u"3/1"_s);
        QCOMPARE(Value(u"SELECT FlagErroUltimaVerificacao FROM UMREGISTRO"_s), u"0"_s);
        QVERIFY(!Value(u"SELECT DataUltimaVerificacao FROM UMREGISTRO"_s).isEmpty());
        QCOMPARE(Value(u"SELECT DescricaoClienteConcorrente FROM CLIENTECONCORRENTE "
                       "WHERE CodigoClienteConcorrente = 21"_s),
                 u"Zenpar\r\nSul"_s);
        QCOMPARE(Fabricantes(), u"2"_s);
        QVERIFY(ReiniciarPrograma);
        QCOMPARE(Local(u"FotoPeca/a.png"_s), QByteArray("nova"));
        QCOMPARE(Local(u"nova pasta/mais/texto.txt"_s), QByteArray("texto"));
        QCOMPARE(Local(u"scripts/dois.txt"_s), QByteArray("none"));
        QVERIFY(QFileInfo(Path(u"apoio/dois.exe"_s)).isExecutable());
        QCOMPARE(TemporaryFiles(), 0);
        QCOMPARE(started,
                 (QStringList{u"true"_s, u'"' + gCaminho + u"apoio\\dois.exe\""_s}));
        QStringList asked;
        for (const QString& request : server_->Requests()) {
            asked += request.section(u'/', -2, -2).section(u' ', 0, 0);
        }
        QCOMPARE(asked, (QStringList{u"ListVersao2.txt"_s, u"ListVersao3.txt"_s, u"a.png"_s,
                                     u"dois.txt"_s, u"texto.txt"_s, u"tres.txt"_s, u"um.exe"_s,
                                     u"dois.exe"_s}));
    }

    void OnlyFiles() {
        Serve(u"ListVersao2.txt"_s, {u"FOTO;FotoPeca\\a.png;0"_s});
        server_->Put(u"base/FotoPeca/a.png"_s, "nova");
        QCOMPARE(Update(1, 2), QStringList{Done});
        QCOMPARE(Versions(), u"2/1"_s);
        QVERIFY(!ReiniciarPrograma);
    }

    // What a list may not say. Each ends the update before anything but lists was fetched.
    void BadLists_data() {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("error");
        QTest::newRow("two fields") << u"FOTO;x.png"_s << 9;
        QTest::newRow("one field") << u"FOTO"_s << 9;
        QTest::newRow("no size") << u"FOTO;x.png;"_s << 13;
        QTest::newRow("size in words") << u"FOTO;x.png;muito"_s << 13;
        QTest::newRow("size too large") << u"FOTO;x.png;3000000000"_s << 6;
        QTest::newRow("sum too large") << u"FOTO;x.png;2147483647"_s << 6;
        for (const char16_t* name :
             {u"..\\x", u"FotoPeca\\..\\..\\x", u"../x", u"\\x", u"/etc/x", u"C:\\x", u"c:x",
              u"FotoPeca\\.. \\x", u"...\\x", u".", u"", u"a\tb", u"fora\\x", u"fora\\novo\\x",
              u"dentro\\..\\x", u"Tarvo.mdb", u"tarvo.MDB-journal", u"TARVO.LDB", u"Tarvo.mdb "}) {
            const QString text = QString::fromUtf16(name);
            QTest::newRow(qPrintable(u"name "_s + text)) << u"FOTO;%1;1"_s.arg(text) << 75;
        }
        QTest::newRow("script's name") << u"SDB;..\\x;1"_s << 75;
    }
    void BadLists() {
        QFETCH(QString, line);
        QFETCH(int, error);
        const QTemporaryDir outside;
        QVERIFY(QFile::link(outside.path(), Path(u"fora"_s)));
        QVERIFY(QFile::link(Path(u"FotoPeca"_s), Path(u"dentro"_s)));
        Serve(u"ListVersao2.txt"_s, {u"FOTO;dentro\\a.png;1"_s, line});
        const QStringList boxes = Update(1, 2);
        QCOMPARE(boxes.size(), 1);
        QVERIFY2(boxes.first().startsWith(u"Erro nº: %1\n"_s.arg(error)), qPrintable(boxes.first()));
        QCOMPARE(server_->Requests().size(), 1);
        QCOMPARE(TemporaryFiles(), 0);
        QCOMPARE(QDir(outside.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList());
        QCOMPARE(Versions(), u"1/0"_s);
    }

    void FailureInEachStep() {
        Serve(u"ListVersao2.txt"_s,
              {u"FOTO;FotoPeca\\a.png;4"_s, u"FOTO;FotoPeca\\b.png;4"_s, u"SDB;dois.txt;1"_s});
        const auto failsWith = [&](const QString& text) {
            QCOMPARE(Update(1, 3), QStringList{u"Erro nº: "_s + text});
            QCOMPARE(Versions(), u"1/0"_s);
        };

        failsWith(u"-104\nHttpQueryInfo:0;-103;Status=404"_s);  // the second list
        QCOMPARE(TemporaryFiles(), 0);

        Serve(u"ListVersao3.txt"_s, {});
        server_->Put(u"base/FotoPeca/a.png"_s, "nova");
        failsWith(u"-104\nHttpQueryInfo:0;-103;Status=404"_s);  // the second file
        QCOMPARE(TemporaryFiles(), 1);
        QCOMPARE(Local(u"FotoPeca/a.png"_s), QByteArray("velha"));

        server_->Put(u"base/FotoPeca/b.png"_s, "b");
        Serve(u"dois.txt"_s, {Insert(20, u"Bravil"_s), u"S:nao-existe-aqui"_s,
                              Insert(21, u"Norral"_s)});
        QVERIFY(QDir().mkpath(Path(u"FotoPeca/b.png"_s)));
        failsWith(u"75\nErro de acesso ao caminho/arquivo"_s);  // a folder in the file's place
        QCOMPARE(Local(u"FotoPeca/a.png"_s), QByteArray("nova"));
        QCOMPARE(Fabricantes(), u"0"_s);

        QVERIFY(QDir().rmdir(Path(u"FotoPeca/b.png"_s)));
        failsWith(u"53\nArquivo não encontrado"_s);  // a program of the script
        QCOMPARE(Local(u"FotoPeca/b.png"_s), QByteArray("b"));
        QCOMPARE(Fabricantes(), u"1"_s);

        Serve(u"dois.txt"_s, {Insert(20, u"Bravil"_s), Insert(21, u"Norral"_s)});
        QCOMPARE(Update(1, 3), QStringList{Done});
        QCOMPARE(Fabricantes(), u"2"_s);
        QCOMPARE(Versions(), u"3/1"_s);
    }

    // Passing over these would lose statements that are in order.
    void FailureOfTheFileIsNoFailureOfTheStatement() {
        Serve(u"ListVersao2.txt"_s, {u"SDB;dois.txt;1"_s});
        Serve(u"dois.txt"_s, {Insert(20, u"Bravil"_s)});
        std::unique_ptr<dao::Workspace> other;
        std::unique_ptr<dao::Database> same;
        AbrirBancoDados(other, u"outro"_s, same, false);
        other->BeginTrans();
        same->Execute(u"UPDATE UMREGISTRO SET VersaoAnterior = 5"_s);
        const QStringList boxes = Update(1, 2);
        QCOMPARE(boxes.size(), 1);
        QVERIFY2(boxes.first().startsWith(u"Erro nº: 3260\n"_s), qPrintable(boxes.first()));
        other->Rollback();
        QCOMPARE(Update(1, 2), QStringList{Done});
        QCOMPARE(Fabricantes(), u"1"_s);
    }

    // Closing the window gives up while the catalogue is untouched, and is no way out later.
    void Cancelled() {
        Serve(u"ListVersao2.txt"_s, {u"FOTO;FotoPeca\\a.png;4"_s, u"FOTO;silent;4"_s});
        server_->Put(u"base/FotoPeca/a.png"_s, "nova");
        QTimer::singleShot(500ms, this, [] { forms::Form::Find(frmAtualizando::Nome)->close(); });
        QCOMPARE(Update(1, 2, {6}),
                 (QStringList{u"Deseja cancelar a atualização?"_s,
                              u"Atualização cancelada. O catálogo continua como estava."_s}));
        QCOMPARE(TemporaryFiles(), 0);
        QCOMPARE(Versions(), u"1/0"_s);

        Serve(u"ListVersao2.txt"_s, {u"SDB;dois.txt;1"_s});
        Serve(u"dois.txt"_s, {u"S:sleep 1"_s});
        QTimer::singleShot(500ms, this, [] { forms::Form::Find(frmAtualizando::Nome)->close(); });
        QCOMPARE(Update(1, 2, {6}), QStringList{Done});
    }

    void Bars_data() {
        QTest::addColumn<QString>("maximum");
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("width");
        QTest::newRow("nothing to do") << u"0"_s << u"0"_s << 216;
        QTest::newRow("the only list") << u"2"_s << u"1"_s << 108;
        QTest::newRow("rounded") << u"7"_s << u"2"_s << 62;
        QTest::newRow("wrong sizes") << u"10"_s << u"5000000000"_s << 216;
        QTest::newRow("begun") << u"100000"_s << u"1"_s << 0;
    }
    void Bars() {
        QFETCH(QString, maximum);
        QFETCH(QString, value);
        frmAtualizando form;
        testing_support::Find<forms::Panel>(form, u"imgBordaBarraAtualizacao(3)"_s).Tag = maximum;
        auto& bar = testing_support::Find<forms::Panel>(form, u"imgBarraAtualizacao(3)"_s);
        bar.Tag = value;
        form.AtualizarProgressBar(3);
        QTEST(bar.width(), "width");
    }

    void MarksAndBarsDuringTheUpdate() {
        Serve(u"ListVersao2.txt"_s, {u"FOTO;FotoPeca\\a.png;1"_s, u"FOTO;late;3"_s});
        server_->Put(u"base/FotoPeca/a.png"_s, "1");
        QStringList seen;
        int width = -1;
        QTimer::singleShot(600ms, this, [&] {
            forms::Form& form = *forms::Form::Find(frmAtualizando::Nome);
            for (const char* name : {"imgPassoAtualAtualizacao(1)", "imgPassoConcluidoAtualizacao(1)",
                                     "imgPassoAtualAtualizacao(2)", "imgBordaBarraAtualizacao(2)",
                                     "imgPassoConcluidoAtualizacao(2)", "imgBarraAtualizacao(3)"}) {
                if (testing_support::Find<forms::Panel>(form, QString::fromLatin1(name)).isVisible()) {
                    seen += QString::fromLatin1(name);
                }
            }
            width = testing_support::Find<forms::Panel>(form, u"imgBarraAtualizacao(2)"_s).width();
        });
        QCOMPARE(Update(1, 2), QStringList{Done});
        QCOMPARE(seen, (QStringList{u"imgPassoConcluidoAtualizacao(1)"_s,
                                    u"imgPassoAtualAtualizacao(2)"_s,
                                    u"imgBordaBarraAtualizacao(2)"_s}));
        QCOMPARE(width, 54);
    }
};

const QString TestAtualizando::Done = u"Atualização concluída com sucesso."_s;

TARVO_TEST(TestAtualizando);
#include "test_atualizando.moc"
