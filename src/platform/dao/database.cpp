#include "platform/dao/companion.h"
#include "platform/dao/connection.h"
#include "platform/dao/dao.h"
#include "platform/dao/errors.h"
#include "platform/dao/preparedchange.h"
#include "platform/dao/savepoint.h"
#include "platform/dao/schema.h"
#include "platform/dao/statement.h"
#include "platform/secret.h"
#include "platform/sql/token.h"
#include "platform/system/paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

// Results that other connections of this process are still reading hold the read lock of the file.
// One thread runs both: whoever waited for that lock here would wait for ever.
void FinishOtherReads(const Connection& writer) {
    for (Connection* other : Connection::All()) {
        if (other != &writer && other->Path() == writer.Path()) {
            other->FinishReads();
        }
    }
}

// The connect text is ";pwd=" and the password, which ends with the text. The caller wipes it.
QByteArray PasswordOf(const QString& connect) {
    const QLatin1String mark = ";pwd="_L1;
    const qsizetype at = connect.indexOf(mark, 0, Qt::CaseInsensitive);
    return at < 0 ? QByteArray() : QStringView(connect).sliced(at + mark.size()).toUtf8();
}

// Rows affected: none by a definition, whatever rows it moves.
qint64 RunAll(Connection& connection, const sql::Shape& shape,
              const sql::Translation& translation) {
    if (translation.kind == sql::Translation::Kind::Change && translation.statements.size() == 1) {
        const auto change = std::make_shared<PreparedChange>(connection, shape, translation);
        const qint64 changes = change->Run(shape);
        if (std::none_of(translation.tables.begin(), translation.tables.end(), IsCompanionTable)) {
            KeepChange(connection, shape, change);
        }
        return changes;
    }
    qint64 changes = 0;
    Savepoint savepoint(connection);
    for (const QByteArray& sql : translation.statements) {
        Statement statement(connection, sql);
        changes += RowsChangedBy(connection, statement);
    }
    savepoint.Release();
    return translation.kind == sql::Translation::Kind::Definition ? 0 : changes;
}

}  // namespace

Database::Database(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {}

Database::~Database() {
    Close();
}

std::unique_ptr<Recordset> OpenRecordset(const std::shared_ptr<Connection>& connection,
                                         const QString& sql, RecordsetType type, Accents accents) {
    return std::unique_ptr<Recordset>(new Recordset(connection, sql, type, accents));
}

std::unique_ptr<Recordset> Database::OpenRecordset(const QString& sql, RecordsetType type) {
    return dao::OpenRecordset(connection_, sql, type);
}

void Database::Execute(const QString& sql, int options) {
    using Kind = sql::Translation::Kind;
    if (!connection_->IsOpen()) {
        Throw(Failure::ObjectInvalid);
    }
    const QByteArray text = sql.toUtf8();
    const sql::Shape shape(text);
    const auto known = FindChange(*connection_, shape);
    sql::Translation translation;
    if (known) {
        translation.kind = Kind::Change;
    } else {
        translation = Prepare(*connection_, sql);
    }
    if (translation.kind == Kind::Query) {
        Throw(Failure::NotAnAction);
    }
    const auto run = [&] {
        affected_ = known ? known->Run(shape) : RunAll(*connection_, shape, translation);
    };
    FinishOtherReads(*connection_);
    const bool defines = translation.kind == Kind::Definition || !translation.defined.isEmpty();
    if (defines) {
        connection_->FinishReads();  // the engine changes no table that a statement is reading
    } else {
        connection_->FinishUnsettledReads();
    }
    const bool atOnce = (options & dbSeeChanges) != 0;
    if (atOnce) {
        connection_->SetBusyTimeout(std::chrono::milliseconds::zero());
    }
    const auto finish = qScopeGuard([&] {
        if (atOnce) {
            connection_->SetBusyTimeout(Connection::Patience);
        }
        if (defines) {
            ForgetTables(*connection_);
        }
    });
    connection_->BeginIfWanted();
    const bool within = connection_->InTransaction();
    try {
        run();
    } catch (const Erro& erro) {
        // A computer that is about to commit waits for the reads of this very connection, and the
        // engine then refuses at once instead of letting both wait. With the reads done, the
        // commit comes through and so does this statement.
        if (within && !connection_->InTransaction()) {
            ForgetTables(*connection_);  // the engine has rolled it back by itself
        }
        if (erro.Number() != static_cast<int>(Failure::Locked) || !connection_->HasPendingReads()) {
            throw;
        }
        connection_->FinishReads();
        run();
    }
}

void Database::Shadow(const QStringList& names) {
    connection_->FinishReads();  // the engine drops nothing that a statement of its own is reading
    for (const QString& name : names) {
        Connection& connection = *connection_;
        Statement find(connection,
                       "SELECT name, type, sql FROM main.sqlite_schema"
                       " WHERE name = ?1 COLLATE NOCASE AND type IN ('table', 'view')");
        find.Bind(1, name);
        if (!find.Step()) {
            continue;
        }
        const QByteArray own = '"' + find.Column(0).toString().toUtf8() + '"';
        const QByteArray kind = find.Column(1).toString().toUtf8().toUpper();
        const QByteArray definition = find.Column(2).toString().toUtf8();
        find.Reset();
        const std::string_view create = sql::Tokenize(definition).front().text;
        connection.Run("DROP " + kind + " IF EXISTS temp." + own);
        connection.Run("CREATE TEMP" +
                       definition.sliced(create.data() + create.size() - definition.constData()));
        if (kind == "TABLE") {
            connection.Run("INSERT INTO temp." + own + " SELECT * FROM main." + own);
        }
    }
}

qint64 Database::RecordsAffected() const {
    return affected_;
}

void Database::SetIdle(std::function<bool()> goOn) {
    connection_->SetIdle(std::move(goOn));
}

void Database::SetPatience(std::function<bool(std::chrono::milliseconds)> goOn) {
    connection_->SetPatience(std::move(goOn));
}

std::optional<sys::LockHolder> Database::Reader() const {
    return connection_->Reader();
}

void Database::Close() {
    connection_->Close();
}

Workspace::Workspace(QString name) : name_(std::move(name)) {}

Workspace::~Workspace() {
    Drop();
}

std::unique_ptr<Database> Workspace::OpenDatabase(const QString& path, bool options, bool readOnly,
                                                  const QString& connect) {
    Q_UNUSED(options);  // a catalogue is always shared
    if (closed_) {
        Throw(Failure::ObjectInvalid);
    }
    const QFileInfo file(sys::ToNative(path));
    if (!file.dir().exists()) {
        Throw(Failure::PathNotFound, sys::ToShown(path));
    }
    if (!file.isFile()) {
        Throw(Failure::FileNotFound, sys::ToShown(path));
    }
    if (file.size() == 0) {
        Throw(Failure::NotACatalogue,
              sys::ToShown(path));  // the engine would take it for a new database
    }
    QByteArray password = PasswordOf(connect);
    const secret::WipeAtEnd withoutPassword(password);
    auto connection = std::make_shared<Connection>(
        file.filePath(), password,
        readOnly ? Connection::Mode::ReadOnly : Connection::Mode::ReadWrite);
    connection->WantTransaction(inTransaction_);
    connections_.push_back(connection);
    return std::unique_ptr<Database>(new Database(std::move(connection)));
}

void Workspace::BeginTrans() {
    if (closed_) {
        Throw(Failure::ObjectInvalid);
    }
    if (inTransaction_) {
        Throw(Failure::InvalidOperation);
    }
    inTransaction_ = true;
    for (const auto& connection : Connections()) {
        connection->WantTransaction(true);
    }
}

void Workspace::CommitTrans(int options) {
    Q_UNUSED(options);  // every commit waits for the disk
    End(true);
}

void Workspace::Rollback() {
    End(false);
}

void Workspace::End(bool commit) {
    if (!inTransaction_) {
        Throw(Failure::NoTransaction);
    }
    for (const auto& connection : Connections()) {
        if (connection->InTransaction()) {
            // A commit waits for the readers of other connections, a roll-back breaks its own off.
            FinishOtherReads(*connection);
            connection->FinishReads();
            if (commit) {
                connection->Commit();
            } else {
                connection->Run("ROLLBACK");
                ForgetTables(*connection);
            }
        }
        connection->WantTransaction(false);
    }
    inTransaction_ = false;
}

void Workspace::Close() {
    if (closed_) {
        Throw(Failure::ObjectInvalid);
    }
    Drop();
}

// Closing a connection rolls its transaction back.
void Workspace::Drop() {
    for (const auto& connection : Connections()) {
        connection->Close();
    }
    inTransaction_ = false;
    closed_ = true;
}

std::vector<std::shared_ptr<Connection>> Workspace::Connections() const {
    std::vector<std::shared_ptr<Connection>> alive;
    for (const auto& weak : connections_) {
        if (auto connection = weak.lock()) {
            alive.push_back(std::move(connection));
        }
    }
    return alive;
}

DBEngine& DBEngine::Instance() {
    static DBEngine engine;
    return engine;
}

std::unique_ptr<Workspace> DBEngine::CreateWorkspace(const QString& name, const QString& user,
                                                     const QString& password, int useType) {
    Q_UNUSED(user);
    Q_UNUSED(password);  // of the workspace; the catalogue has its own
    if (useType != dbUseJet) {
        throw Erro(Erro::InvalidArgument);
    }
    return std::unique_ptr<Workspace>(new Workspace(name));
}

void DBEngine::CreateDatabase(const QString& path, const QString& connect,
                              const QByteArray& definition) {
    QByteArray password = PasswordOf(connect);
    const secret::WipeAtEnd withoutPassword(password);
    if (password.isEmpty()) {
        throw Erro(Erro::InvalidArgument);  // the file would not be enciphered
    }
    const QFileInfo file(sys::ToNative(path));
    if (!file.dir().exists()) {
        Throw(Failure::PathNotFound, sys::ToShown(path));
    }
    if (file.exists()) {
        Throw(Failure::ObjectExists, sys::ToShown(path));
    }
    try {
        Connection connection(file.filePath(), password, Connection::Mode::Create);
        Savepoint savepoint(connection);
        connection.Run(definition);
        savepoint.Release();
        AttachCompanion(connection);
    } catch (const Erro&) {
        QFile::remove(file.filePath());
        throw;
    }
}

void DBEngine::Idle(int action) {
    if (action != dbRefreshCache) {
        throw Erro(Erro::InvalidArgument);
    }
    // Nothing to refresh: each read that begins compares the file's change counter with its cache,
    // and a read that was going on was brought to its end before the write.
}

std::shared_ptr<Connection> DBEngine::SharedConnection(const QString& path) const {
    const QString file = QFileInfo(sys::ToNative(path)).canonicalFilePath();
    for (Connection* connection : Connection::All()) {
        if (connection->Path() == file) {
            return connection->weak_from_this().lock();
        }
    }
    return nullptr;
}

}  // namespace dao
