#include "settings/textocifrado.h"
#include "support/catalogo.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QStringEncoder>

namespace {

// The files in which the text stands as a whole, in any of its forms.
QStringList FilesWith(const QString& text, QDirIterator files) {
    const QByteArray forms[] = {text.toUtf8(), QStringEncoder(QStringEncoder::Utf16LE)(text),
                                QStringEncoder(QStringEncoder::Utf16BE)(text)};
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

// The tests themselves are made of the same libraries.
QStringList ProgramsWith(const QString& text) {
    return FilesWith(text, {QCoreApplication::applicationDirPath(),
                            {u"CatalogoTarvo"_s, u"*.exe"_s, u"tarvo-*"_s},
                            QDir::Files});
}

QStringList SourcesWith(const QString& text) {
    QStringList found;
    for (const QString& folder : {u"src"_s, u"companions"_s, u"demo"_s, u"tests"_s, u"docs"_s}) {
        found += FilesWith(text, {QStringLiteral(TARVO_SOURCES "/") + folder, QDir::Files,
                                  QDirIterator::Subdirectories});
    }
    return found;
}

}  // namespace

// The catalogue's password and the pass phrase stand nowhere as a whole.
struct TestPassword : Fixture {};

TEST(TestPassword, NotInAnyProgramNorSource) {
    // What must be found, so that the search is one.
    QVERIFY(!ProgramsWith(u"SELECT CodigoFigura FROM PECA"_s).isEmpty());
    QVERIFY(SourcesWith(u"SenhaBancoDados"_s).size() > 1);
    for (const QString& secret : {SenhaBancoDados(), FraseCifra()}) {
        QCOMPARE(ProgramsWith(secret), QStringList());
        QCOMPARE(SourcesWith(secret), QStringList());
    }
}

TEST(TestPassword, NotInMemoryAfterUse) {
#if !defined(Q_OS_LINUX) || defined(__SANITIZE_ADDRESS__)
    QSKIP("reads the memory through /proc, without a sanitizer's shadow of it");
#endif
    const CatalogoDeTeste catalogue;
    const QStringList lines = OutputOf(QCoreApplication::applicationFilePath(),
                                       {"--play", "vizinho", "remains", catalogue.Pasta()})
                                  .split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines.at(0), u"same 1"_s);
    QVERIFY2(lines.at(1).startsWith("planted "_L1) && lines.at(1) != "planted 0"_L1,
             qPrintable(lines.at(1)));
    QCOMPARE(lines.mid(2), List("proxy 0", "password 0", "phrase 0"));
}
