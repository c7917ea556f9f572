#include "demo/options.h"
#include "platform/dao/sqlite.h"
#include "platform/erro.h"
#include "session/banco.h"
#include "session/global.h"
#include "support/testmain.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

demo::Order SmallOrder(const QString& folder, quint64 seed = 1) {
    demo::Order order;
    order.folder = folder;
    order.seed = seed;
    order.sizes = {30, 60, 8, 24, 100};
    order.pictures = demo::Pictures::None;
    return order;
}

QByteArray Contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString FailureOf(const demo::Order& order) {
    try {
        demo::MakeDataFolder(order);
    } catch (const Erro& erro) {
        return erro.Description();
    }
    return {};
}

}  // namespace

class DemoFolder : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // As the catalogue's own program opens it.
    void IsADataFolder() {
        const QTemporaryDir folder;
        demo::MakeDataFolder(SmallOrder(folder.filePath(u"novo/dados"_s)));
        const QDir data(folder.filePath(u"novo/dados"_s));
        const QStringList names = data.entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
        for (const QString& name :
             {u"Tarvo.mdb"_s, u"FotoPeca"_s, u"Figuras"_s, u"Ajuda_Catalogo_TARVO-LINDEN.hlp"_s}) {
            QVERIFY2(names.contains(name), qPrintable(name));
        }
        QVERIFY(QDir(data).entryList({u"tarvo-demo-*"_s}, QDir::AllEntries).isEmpty());
        const QByteArray help = Contents(data.filePath(u"Ajuda_Catalogo_TARVO-LINDEN.hlp"_s));
        // The help and its pictures, each of which lies where the page looks for it.
        static const QRegularExpression picture(u"<img src=\"([^\"]+)\""_s);
        int pictures = 0;
        for (auto found = picture.globalMatch(QString::fromUtf8(help)); found.hasNext();) {
            const QString name = found.next().captured(1);
            QVERIFY2(!QImage(data.filePath(name)).isNull(), qPrintable(name));
            ++pictures;
        }
        QVERIFY(pictures > 0);
        QCOMPARE(QDir(data.filePath(u"Ajuda"_s)).entryList(QDir::Files).size(), pictures);

        gCaminho = data.path() + u'\\';
        std::unique_ptr<dao::Workspace> workspace;
        std::unique_ptr<dao::Database> database;
        AbrirBancoDados(workspace, u"gWS"_s, database, false);
        const auto parts = database->OpenRecordset(u"SELECT Count(*) AS n FROM PECA"_s);
        QCOMPARE(parts->Fields(u"n"_s).Value().toInt(), 30);
    }

    void KeepsWhatIsThere() {
        const QTemporaryDir folder;
        demo::MakeDataFolder(SmallOrder(folder.path()));
        const QByteArray before = Contents(folder.filePath(u"Tarvo.mdb"_s));
        QVERIFY(FailureOf(SmallOrder(folder.path(), 2)).contains(u"--overwrite"_s));
        QCOMPARE(Contents(folder.filePath(u"Tarvo.mdb"_s)), before);
    }

    // The journal of an old, interrupted write must not be applied to the new file.
    void ReplacesOnDemand() {
        const QTemporaryDir folder;
        demo::MakeDataFolder(SmallOrder(folder.path()));
        const QByteArray before = Contents(folder.filePath(u"Tarvo.mdb"_s));
        QFile journal(folder.filePath(u"Tarvo.mdb-journal"_s));
        QVERIFY(journal.open(QIODevice::WriteOnly));
        journal.write("resto");
        journal.close();
        demo::Order order = SmallOrder(folder.path(), 2);
        order.overwrite = true;
        demo::MakeDataFolder(order);
        QVERIFY(Contents(folder.filePath(u"Tarvo.mdb"_s)) != before);
        QVERIFY(!journal.exists());
    }

    void TellsWhatItCannotWrite() {
        const QTemporaryDir folder;
        QFile file(folder.filePath(u"arquivo"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        const QString text = FailureOf(SmallOrder(folder.filePath(u"arquivo/dados"_s)));
        QVERIFY2(text.startsWith(u"Não foi possível criar a pasta"_s), qPrintable(text));
    }

    void Options_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("complaint");
        const auto row = [](const char* arguments, const QString& complaint = {}) {
            const QString text = QString::fromUtf8(arguments);
            QTest::newRow(arguments) << text.split(u' ', Qt::SkipEmptyParts) << complaint;
        };
        row("dados");
        row("dados --pictures small");
        row("--seed 18446744073709551615 dados --overwrite");
        row("dados --components 999999 --kits 0 --vehicles 0");
        row("dados --parts 10 --components 10 --kits 0");
        row("", u"Informe a pasta de dados."_s);
        row("a b", u"Informe uma só pasta."_s);
        row("a --peças 1", u"Opção desconhecida: --peças."_s);
        row("a --pictures b", u"A opção --pictures precisa de all, small ou none."_s);
        row("a --seed",
            u"A opção --seed precisa de um número inteiro de 0 a"
            " 18446744073709551615."_s);
        row("a --parts -1", u"A opção --parts precisa de um número inteiro de 1 a 999999."_s);
        row("a --components 1000000",
            u"A opção --components precisa de um número inteiro de 1 a 999999."_s);
        row("a --parts 10 --components 10 --kits 0 --crossrefs 541",
            u"Com essas quantidades cabem no máximo 540 referências cruzadas."_s);
    }
    void Options() {
        QFETCH(QStringList, arguments);
        QFETCH(QString, complaint);
        const auto read = demo::ReadOptions(arguments);
        const auto* wrong = std::get_if<demo::Complaint>(&read);
        QCOMPARE(wrong == nullptr ? QString() : wrong->text, complaint);
        QCOMPARE(std::holds_alternative<demo::Order>(read), complaint.isEmpty());
    }

    // The smallest and the fullest that the options allow.
    void ExtremesAreMade_data() {
        QTest::addColumn<demo::Sizes>("sizes");
        QTest::newRow("one of each") << demo::Sizes{1, 1, 1, 1, 1};
        QTest::newRow("no kits, no vehicles") << demo::Sizes{1, 1, 0, 0, 54};
        QTest::newRow("every slot taken") << demo::Sizes{20, 30, 10, 5, 1620};
        QTest::newRow("more kits than parts") << demo::Sizes{5, 50, 200, 40, 10};
    }
    void ExtremesAreMade() {
        QFETCH(demo::Sizes, sizes);
        const QTemporaryDir folder;
        demo::Order order = SmallOrder(folder.path());
        order.sizes = sizes;
        demo::MakeDataFolder(order);
        dao::Connection connection(folder.filePath(u"Tarvo.mdb"_s), SenhaBancoDados().toUtf8(),
                                   dao::Connection::Mode::ReadOnly);
        const QVariant references = connection.Value("SELECT count(*) FROM REFERENCIACRUZADA");
        QCOMPARE(references.toUInt(), sizes.crossReferences);
    }
};

TARVO_TEST(DemoFolder);
#include "test_folder.moc"
