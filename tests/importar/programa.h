#pragma once

#include "support/servers.h"

inline const QString Program = QStringLiteral(TARVO_TOOL);

// What a program says, behind its exit code and a blank.
inline QString SaidBy(const QString& program, const AnyTexts& arguments) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    process.waitForFinished(-1);
    return QString::number(process.exitCode()) + u' ' + QString::fromUtf8(process.readAll());
}

// The exit code of the room's program, a blank and what it says, "*" for anything.
inline void Ends(const AnyTexts& arguments, const AnyText& said) {
    QCOMPARE(Like(SaidBy(Program, arguments), said), said);
}

// Everything in a folder, hidden names too.
inline QStringList NamesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

// A shell that may mount disks ends with 2, says this and leaves nothing in the folder. Skips the
// test where the system lets nobody have disks of his own.
inline void FailsAlone(const QString& command, const QString& folder, const QString& told) {
    const QStringList alone = List("--user", "--map-root-user", "--mount");
    if (QProcess::execute(u"unshare"_s, alone + List("true")) != 0) {
        QSKIP("no disk of one's own to be had here");
    }
    const QString listing = u"; echo \" $?\"; ls -A '%1'"_s.arg(folder);
    const QString said = SaidBy(u"unshare"_s, alone + List("sh", "-c", command + listing));
    QVERIFY2(said.contains(told) && said.endsWith(u"\n 2\n"_s), qPrintable(said));
}

// With a folder of its own for each case.
struct InAFolder : Fixture {
    std::unique_ptr<QTemporaryDir> root_;

    QString In(const AnyText& name) const { return root_->filePath(name); }
    void init() override { root_ = std::make_unique<QTemporaryDir>(); }
};
