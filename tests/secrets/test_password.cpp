#include "secrets/segredo.h"
#include "session/banco.h"
#include "session/esquema.h"
#include "support/testmain.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "peer.h"

using namespace Qt::StringLiterals;

namespace {

QByteArray Utf16(const QString& text, bool bigEndian) {
    QByteArray bytes;
    for (const QChar c : text) {
        const char high = char(c.unicode() >> 8);
        const char low = char(c.unicode() & 0xFF);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

// The files in which the text stands as a whole, in any of its forms.
QStringList FilesWith(const QString& text, QDirIterator& files) {
    const QByteArray forms[] = {text.toUtf8(), Utf16(text, false), Utf16(text, true)};
    QStringList found;
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly)) {
            continue;
        }
        const QByteArray bytes = file.readAll();
        for (const QByteArray& form : forms) {
            if (bytes.contains(form)) {
                found += files.fileName();
            }
        }
    }
    return found;
}

QStringList ProgramsWith(const QString& text) {
    QDirIterator files(QCoreApplication::applicationDirPath(), QDir::Files);
    return FilesWith(text, files);
}

QStringList SourcesWith(const QString& text) {
    QStringList found;
    for (const QString& folder : {u"src"_s, u"companions"_s, u"demo"_s, u"tests"_s, u"docs"_s}) {
        QDirIterator files(QStringLiteral(TARVO_SOURCES "/") + folder, QDir::Files,
                           QDirIterator::Subdirectories);
        found += FilesWith(text, files);
    }
    return found;
}

}  // namespace

// The catalogue's password and the pass phrase stand nowhere as a whole.
class TestPassword : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void NotInAnyProgramNorSource() {
        // What must be found, so that the search is one.
        QVERIFY(ProgramsWith(u"SELECT CodigoFigura FROM PECA"_s).size() > 1);
        QVERIFY(SourcesWith(u"SenhaBancoDados"_s).size() > 1);
        for (const QString& secret : {SenhaBancoDados(), FraseCifra()}) {
            QCOMPARE(ProgramsWith(secret), QStringList());
            QCOMPARE(SourcesWith(secret), QStringList());
        }
    }

    void NotInMemoryAfterUse() {
#if !defined(Q_OS_LINUX) || defined(__SANITIZE_ADDRESS__)
        QSKIP("reads the memory through /proc, without a sanitizer's shadow of it");
#endif
        const QTemporaryDir folder;
        CriarCatalogo(folder.filePath(u"Tarvo.mdb"_s), SenhaBancoDados());
        const QStringList lines =
            RunPeer({u"remains"_s, folder.path()}).split(u'\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 5);
        QCOMPARE(lines.at(0), u"same 1"_s);
        QVERIFY2(lines.at(1).startsWith("planted "_L1) && lines.at(1) != "planted 0"_L1,
                 qPrintable(lines.at(1)));
        QCOMPARE(lines.mid(2), (QStringList{u"proxy 0"_s, u"password 0"_s, u"phrase 0"_s}));
    }
};

TARVO_TEST(TestPassword);
#include "test_password.moc"
