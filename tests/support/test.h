#pragma once

#include "platform/erro.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

#include <initializer_list>
#include <memory>

// What nearly every test needs. Its names are used without their namespace: everything that
// includes this is a test.
//
// A test class registers itself with TARVO_TEST(Class) after its definition; the main() of this
// library runs every registered class and fails if any of them does. A class can be named on the
// command line to run it alone; what follows it goes to Qt Test.
namespace testing_support {

// The variable of the environment that moves a user's data folder.
#ifdef Q_OS_WIN
inline constexpr char UserData[] = "LOCALAPPDATA";
#else
inline constexpr char UserData[] = "XDG_DATA_HOME";
#endif

bool RegisterTest(QObject* (*make)());
bool KeepFullKeys();

// Number of the Erro that `work` throws, 0 for none.
template <typename Work>
int ErrorOf(Work&& work) {
    try {
        work();
    } catch (const Erro& erro) {
        return erro.Number();
    }
    return 0;
}

// Paths are in the platform's form, and folders that are missing are made. What cannot be written
// ends the test program.
void Write(const QString& path, const QByteArray& content = "x");
void WritePicture(const QString& path, QSize size, const QColor& colour = Qt::gray,
                  const char* format = nullptr);  // by the name's ending, unless it is given

// What takes one of these takes a literal in UTF-8 as well.
struct AnyText : QString {
    AnyText() = default;
    AnyText(const QString& text) : QString(text) {}
    AnyText(const char* utf8) : QString(QString::fromUtf8(utf8)) {}
};
struct AnyTexts : QStringList {
    AnyTexts() = default;
    AnyTexts(const QStringList& texts) : QStringList(texts) {}
    AnyTexts(std::initializer_list<AnyText> texts) : QStringList(texts.begin(), texts.end()) {}
};
template <typename... Texts>
QStringList List(const Texts&... texts) {
    return AnyTexts{AnyText(texts)...};
}

// What a program prints; one that fails ends the test program.
QString OutputOf(const AnyText& program, const AnyTexts& arguments);

template <typename Column>
struct TableValue {
    using Type = Column;
};
template <>
struct TableValue<QString> {
    using Type = AnyText;
};
template <>
struct TableValue<QStringList> {
    using Type = AnyTexts;
};

// The data of a Qt Test case, for its _data():
//     const Table<QString, int> row("text", "length");
//     row("accents", "ação", 4);
template <typename... Columns>
class Table {
public:
    template <typename... Names>
    explicit Table(Names... names) {
        (QTest::addColumn<Columns>(names), ...);
    }
    void operator()(const QByteArray& name,
                    const typename TableValue<Columns>::Type&... values) const {
        QTestData& data = QTest::newRow(name.constData());
        ((data << static_cast<const Columns&>(values)), ...);
    }
};

}  // namespace testing_support

using namespace Qt::StringLiterals;
using namespace testing_support;

// For a program whose catalogues are opened by the programs that ship; see support/quickkeys.h.
#define TARVO_FULL_KEYS \
    [[maybe_unused]] static const bool full_keys = testing_support::KeepFullKeys()

#define TARVO_TEST(Class)                                   \
    [[maybe_unused]] static const bool registered_##Class = \
        testing_support::RegisterTest([]() -> QObject* { return new Class; })
