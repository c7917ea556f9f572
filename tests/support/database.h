#pragma once

#include "platform/dao/dao.h"
#include "platform/erro.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace testing_support {

// A database in a folder of its own, both gone at the end of the test.
class TestDatabase {
public:
    explicit TestDatabase(const QByteArray& definition);

    QString Folder() const { return folder_.path(); }
    QString Path() const { return folder_.filePath(QStringLiteral("Tarvo.mdb")); }
    static QString Connect() { return QStringLiteral(";pwd=segredo"); }

    // Another opening of the same file, in a workspace of its own.
    struct Session {
        std::unique_ptr<dao::Workspace> workspace;
        std::unique_ptr<dao::Database> database;
    };
    Session Open(bool readOnly = false) const;

private:
    QTemporaryDir folder_;
};

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

}  // namespace testing_support
