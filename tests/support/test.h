#pragma once

#include "platform/erro.h"
#include "platform/system/paths.h"
#include "support/each.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

// What nearly every test needs, headers of the project and of Qt included; the other headers of
// this folder bring along theirs. Its names are in no namespace: everything that includes this is a
// test.
//
//     struct TestPaths : Fixture {};
//     TEST(TestPaths, Joins) { QCOMPARE(...); }
//
// The main() of this library runs every test and fails if any of them does. A fixture can be named
// on the command line to run its tests alone, and after it some of them; what begins with a hyphen
// goes to Qt Test.
// The variable of the environment that moves a user's data folder.
#ifdef Q_OS_WIN
inline constexpr char UserData[] = "LOCALAPPDATA";
#else
inline constexpr char UserData[] = "XDG_DATA_HOME";
#endif

// What tests have in common. Each test has an object of its own; what shall last from a fixture's
// first test to its last is static, and is made and given back by its initTestCase() and
// cleanupTestCase(). A test whose init() failed does not run.
struct Fixture : QObject {
    static void initTestCase() {}
    static void cleanupTestCase() {}
    virtual void init() {}
    virtual void cleanup() {}
    virtual void TestBody() = 0;
};

struct RegisteredTest {
    const char* fixture;
    const char* name;
    std::unique_ptr<Fixture> (*make)();
    void (*initTestCase)();
    void (*cleanupTestCase)();
};
bool RegisterTest(const RegisteredTest& test);
bool KeepFullKeys();
// `test_x --play NAME ...`, or a copy of the test program that bears the name, is this program.
bool RegisterProgram(const char* name, int (*program)(int, char**));

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

template <typename... Texts>
QStringList List(const Texts&... texts) {
    return AnyTexts{AnyText(texts)...};
}

// What a program prints; one that fails ends the test program.
QString OutputOf(const AnyText& program, const AnyTexts& arguments);

using namespace Qt::StringLiterals;

// For a program whose catalogues are opened by the programs that ship; see support/quickkeys.h.
#define TARVO_FULL_KEYS [[maybe_unused]] static const bool full_keys = KeepFullKeys()

#define TARVO_PROGRAM(Name, Program) \
    [[maybe_unused]] static const bool program_of_a_copy = RegisterProgram(Name, Program)

#define TEST(Of, Name)                                                                     \
    struct Of##_##Name final : Of {                                                        \
        void TestBody() override;                                                          \
        [[maybe_unused]] static inline const bool registered = RegisterTest(               \
            {#Of, #Name,                                                                   \
             []() -> std::unique_ptr<Fixture> { return std::make_unique<Of##_##Name>(); }, \
             Of::initTestCase, Of::cleanupTestCase});                                      \
    };                                                                                     \
    void Of##_##Name::TestBody()
