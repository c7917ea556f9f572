#include "platform/secret.h"
#include "settings/arquivo.h"
#include "settings/textocifrado.h"
#include "support/catalogo.h"
#include "support/quickkeys.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QRegularExpression>
#include <QStringEncoder>

#include <algorithm>
#include <cstdio>

namespace {

// In any of its forms.
bool Holds(const QByteArray& bytes, const QString& text) {
    const QByteArray forms[] = {text.toUtf8(), QStringEncoder(QStringEncoder::Utf16LE)(text),
                                QStringEncoder(QStringEncoder::Utf16BE)(text)};
    return std::ranges::any_of(forms, [&](const auto& form) { return bytes.contains(form); });
}

// Sources, and programs but for the tests themselves, which are made of the same libraries.
QStringList FilesWith(const QString& text) {
    QStringList found;
    for (const QString& folder :
         List(TARVO_PROGRAMS, TARVO_SOURCES "/src", TARVO_SOURCES "/companions",
              TARVO_SOURCES "/demo", TARVO_SOURCES "/tests", TARVO_SOURCES "/docs")) {
        QDirIterator files(folder, {u"[!t]*"_s, u"tarvo-*"_s, u"*.*"_s}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (file.open(QIODevice::ReadOnly) && Holds(file.readAll(), text)) {
                found += files.fileName();
            }
        }
    }
    return found;
}

// A piece from the middle: the first bytes of memory that was given back are overwritten by chance.
bool MemoryHolds(qint64 process, const QString& text) {
    const QString piece = text.sliced(text.size() / 3, std::min<qsizetype>(text.size() / 2, 20));
    QFile maps(u"/proc/%1/maps"_s.arg(process));
    QFile memory(u"/proc/%1/mem"_s.arg(process));
    if (!maps.open(QIODevice::ReadOnly) ||
        !memory.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        qFatal("cannot read the memory");
    }
    static const QRegularExpression readable(u"^(\\w+)-(\\w+) r(?!.*\\[v)"_s,
                                             QRegularExpression::MultilineOption);
    const QString lines = QString::fromUtf8(maps.readAll());
    for (const auto& range : readable.globalMatch(lines)) {
        const qint64 from = range.captured(1).toLongLong(nullptr, 16);
        memory.seek(from);
        if (Holds(memory.read(range.captured(2).toLongLong(nullptr, 16) - from), piece)) {
            return true;
        }
    }
    return false;
}

// Longer than what memory that is in use all the time is given back as. Each process makes it
// anew: handed over, it would stay in what it was handed over by.
QString LongText(quint32 seed) {
    QRandomGenerator letters(seed);
    QString text(3000, u' ');
    std::ranges::generate(text, [&] { return QChar(letters.bounded(u'a', u'z' + 1)); });
    return text;
}

// Uses every secret once on the catalogue in a folder, and stays until it is told to go.
int UseSecrets(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    UseQuickKeys();
    const QString left = LongText(2);  // proves that the search finds what is there
    gCaminho = QCoreApplication::arguments().at(1) + u'\\';
    AbrirBancoDados(gWS, u"gWS"_s, gDB, false);
    GravarUltimaVerificacao(QString(), u"0"_s);

    QString proxyPassword = LongText(1);
    GravarConfiguracao(QString(), u"usuario"_s, proxyPassword, true);
    QString user;
    QString read;
    LerConfiguracao(u"USUARIO_SENHA"_s, user, read);
    const bool same = read == proxyPassword;
    secret::Wipe(read);
    secret::Wipe(proxyPassword);
    QTextStream(stdout) << (same ? "same" : "another");
    std::getchar();
    FecharBancoDados(gWS, gDB);
    return 0;
}
TARVO_PROGRAM("secrets", UseSecrets);

}  // namespace

// The catalogue's password and the pass phrase stand nowhere as a whole.
struct TestPassword : Fixture {};

TEST(TestPassword, NotInAnyProgramNorSource) {
    // What must be found, so that the search is one.
    const QStringList found = FilesWith(u"SELECT CodigoFigura FROM PECA"_s);
    QVERIFY(found.contains(u"test_password.cpp"_s) && !found.filter(u"CatalogoTarvo"_s).isEmpty());
    for (const QString& secret : {SenhaBancoDados(), FraseCifra()}) {
        QCOMPARE(FilesWith(secret), QStringList());
    }
}

TEST(TestPassword, NotInMemoryAfterUse) {
#if !defined(Q_OS_LINUX) || defined(__SANITIZE_ADDRESS__)
    QSKIP("reads the memory through /proc, without a sanitizer's shadow of it");
#endif
    const CatalogoDeTeste catalogue;
    QProcess program;
    program.start(QCoreApplication::applicationFilePath(),
                  List("--play", "secrets", catalogue.Pasta()));
    QVERIFY(program.waitForReadyRead(60000));
    QCOMPARE(program.readAll(), "same");
    if (!QFile(u"/proc/%1/mem"_s.arg(program.processId())).open(QIODevice::ReadOnly)) {
        QSKIP("this system keeps a program's memory from the one that started it");
    }
    QVERIFY(MemoryHolds(program.processId(), LongText(2)));
    for (const QString& secret : {LongText(1), SenhaBancoDados(), FraseCifra()}) {
        QVERIFY(!MemoryHolds(program.processId(), secret));
    }
    program.closeWriteChannel();
    QVERIFY(program.waitForFinished());
}
