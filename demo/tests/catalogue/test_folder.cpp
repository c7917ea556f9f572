#include "catalogue/options.h"
#include "orders.h"
#include "platform/system/paths.h"
#include "session/global.h"
#include "support/catalogo.h"
#include "support/test.h"

#include <QRegularExpression>

namespace {

demo::Order SmallOrder(const QString& folder) {
    return OrderOf(folder, {30, 60, 8, 24, 100});
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

struct DemoFolder : Fixture {};

// As the catalogue's own program opens it.
TEST(DemoFolder, IsADataFolder) {
    const QTemporaryDir folder;
    demo::MakeDataFolder(SmallOrder(folder.filePath(u"novo/dados"_s)));
    const QDir data(folder.filePath(u"novo/dados"_s));
    const QStringList names = data.entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    for (const QString& name :
         {u"Tarvo.mdb"_s, u"FotoPeca"_s, u"Figuras"_s, u"Ajuda_Catalogo_TARVO-LINDEN.hlp"_s}) {
        QVERIFY2(names.contains(name), qPrintable(name));
    }
    QVERIFY(QDir(data).entryList({u"tarvo-demo-*"_s}, QDir::AllEntries).isEmpty());
    const QByteArray help = sys::ReadBytes(data.filePath(u"Ajuda_Catalogo_TARVO-LINDEN.hlp"_s));
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
    const OutroComputador opened;
    QCOMPARE(opened.banco->OpenRecordset(u"SELECT * FROM PECA"_s)->ReadUpTo(99), 30);
}

TEST(DemoFolder, KeepsWhatIsThere) {
    const QTemporaryDir folder;
    demo::MakeDataFolder(SmallOrder(folder.path()));
    const QByteArray before = sys::ReadBytes(folder.filePath(u"Tarvo.mdb"_s));
    QVERIFY(FailureOf(SmallOrder(folder.path())).contains(u"--overwrite"_s));
    QCOMPARE(sys::ReadBytes(folder.filePath(u"Tarvo.mdb"_s)), before);
}

// The journal of an old, interrupted write must not be applied to the new file.
TEST(DemoFolder, ReplacesOnDemand) {
    const QTemporaryDir folder;
    demo::MakeDataFolder(SmallOrder(folder.path()));
    const QByteArray before = sys::ReadBytes(folder.filePath(u"Tarvo.mdb"_s));
    const QString journal = folder.filePath(u"Tarvo.mdb-journal"_s);
    Write(journal, "resto");
    demo::Order order = SmallOrder(folder.path());
    order.seed = 2;
    order.overwrite = true;
    demo::MakeDataFolder(order);
    QVERIFY(sys::ReadBytes(folder.filePath(u"Tarvo.mdb"_s)) != before);
    QVERIFY(!QFile::exists(journal));
}

TEST(DemoFolder, TellsWhatItCannotWrite) {
    const QTemporaryDir folder;
    Write(folder.filePath(u"arquivo"_s));
    const QString text = FailureOf(SmallOrder(folder.filePath(u"arquivo/dados"_s)));
    QVERIFY2(text.startsWith(u"Não foi possível criar a pasta"_s), qPrintable(text));
}

TEST(DemoFolder, Options) {
    Each<QStringList, QString> table;
    const auto row = [&table](const char* arguments, const AnyText& complaint = {}) {
        table(arguments, QString::fromUtf8(arguments).split(u' ', Qt::SkipEmptyParts), complaint);
    };
    row("dados");
    row("dados --pictures small");
    row("--seed 18446744073709551615 dados --overwrite");
    row("dados --components 999999 --kits 0 --vehicles 0");
    row("dados --parts 10 --components 10 --kits 0");
    row("", "Informe a pasta de dados.");
    row("a b", "Informe uma só pasta.");
    row("a --peças 1", "Opção desconhecida: --peças.");
    row("a --pictures b", "A opção --pictures precisa de all, small ou none.");
    row("a --seed", "A opção --seed precisa de um número inteiro de 0 a 18446744073709551615.");
    row("a --parts -1", "A opção --parts precisa de um número inteiro de 1 a 999999.");
    row("a --components 1000000",
        "A opção --components precisa de um número inteiro de 1 a 999999.");
    row("a --parts 10 --components 10 --kits 0 --crossrefs 541",
        "Com essas quantidades cabem no máximo 540 referências cruzadas.");
    for (const auto& [arguments, complaint] : table) {
        const auto read = demo::ReadOptions(arguments);
        const auto* wrong = std::get_if<demo::Complaint>(&read);
        QCOMPARE(wrong == nullptr ? QString() : wrong->text, complaint);
        QCOMPARE(std::holds_alternative<demo::Order>(read), complaint.isEmpty());
    }
}

// The smallest and the fullest that the options allow.
TEST(DemoFolder, ExtremesAreMade) {
    for (const auto& [sizes] : Each<demo::Sizes>{
             {"one of each", demo::Sizes{1, 1, 1, 1, 1}},
             {"no kits, no vehicles", demo::Sizes{1, 1, 0, 0, 54}},
             {"every slot taken", demo::Sizes{20, 30, 10, 5, 1620}},
             {"more kits than parts", demo::Sizes{5, 50, 200, 40, 10}},
         }) {
        const QTemporaryDir folder;
        demo::MakeDataFolder(OrderOf(folder.path(), sizes));
        QCOMPARE(quint32(Count(*Open(folder.path()), "SELECT * FROM REFERENCIACRUZADA")),
                 sizes.crossReferences);
    }
}
