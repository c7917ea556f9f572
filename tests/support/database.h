#pragma once

#include "platform/dao/connection.h"
#include "platform/dao/dao.h"
#include "support/test.h"

// A database in a folder of its own, both gone at the end of the test.
class TestDatabase {
public:
    explicit TestDatabase(const QByteArray& definition);

    QString Folder() const { return folder_.path(); }
    QString Path() const { return folder_.filePath(u"Tarvo.mdb"_s); }
    static QString Connect() { return u";pwd=segredo"_s; }

    // Another opening of the same file, in a workspace of its own.
    struct Session {
        std::unique_ptr<dao::Workspace> workspace;
        std::unique_ptr<dao::Database> database;

        void Execute(const AnyText& sql) const { database->Execute(sql, dao::dbFailOnError); }
        QString Value(const AnyText& sql) const {  // the first one; Null is an empty text
            return database->OpenRecordset(sql)->Fields(0).Value().toString();
        }
    };
    Session Open(bool readOnly = false) const;

private:
    QTemporaryDir folder_;
};

// Number and description of the Erro that `work` throws; empty when it does not.
QString SaidBy(const std::function<void()>& work);

// Appends the rows of a query to `rows` as they are read, cells with | between them.
void ReadRows(dao::Database& database, const AnyText& sql, QStringList& rows);
