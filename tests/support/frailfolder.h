#pragma once

#include "support/test.h"

#include <QStandardPaths>
#include <QStorageInfo>

// A folder seen through frailfs (frailfs.cpp tells what it can be told). Not there where the system
// mounts nothing for this user.
class FrailFolder {
public:
    explicit FrailFolder(const AnyTexts& options = {}) {
        process_.start(QStringLiteral(TARVO_FRAILFS),
                       QStringList{behind_.path(), seen_.path()} + options);
        there_ =
            process_.waitForStarted() && QTest::qWaitFor([this] { return IsMounted(); }, 10000);
    }
    ~FrailFolder() { Unmount(); }

    bool IsThere() const { return there_; }
    QString Seen() const { return seen_.path(); }      // through the file system
    QString Behind() const { return behind_.path(); }  // the folder itself

    // As when the server goes: what is open stays open and fails.
    void Unmount() {
        QProcess::execute(QStringLiteral("fusermount3"), {QStringLiteral("-uzq"), seen_.path()});
        process_.kill();
        process_.waitForFinished();
    }

private:
    bool IsMounted() const {
        return process_.state() != QProcess::Running ||
               QStorageInfo(seen_.path()).rootPath() == seen_.path();
    }

    QTemporaryDir behind_;
    QTemporaryDir seen_;
    QProcess process_;
    bool there_ = false;
};
