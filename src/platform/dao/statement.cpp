#include "platform/dao/statement.h"

#include "platform/dao/connection.h"
#include "platform/dao/enginefailure.h"
#include "platform/dao/errors.h"

#include <sqlite3.h>

namespace dao {

Statement::Statement(Connection& connection, const QByteArray& sql) : connection_(connection) {
    if (!connection.IsOpen()) {
        Throw(Failure::ObjectInvalid);
    }
    const int code = sqlite3_prepare_v2(connection.Handle(), sql.constData(),
                                        static_cast<int>(sql.size()), &handle_, nullptr);
    Check(connection.Handle(), code);
    if (handle_ == nullptr) {
        Throw(Failure::MissingExpression);
    }
    connection.statements_.push_back(this);
}

Statement::~Statement() {
    if (handle_ != nullptr) {
        sqlite3_finalize(handle_);
        std::erase(connection_.statements_, this);
    }
}

sqlite3_stmt* Statement::Live() const {
    if (handle_ == nullptr) {
        Throw(Failure::ObjectInvalid);
    }
    return handle_;
}

bool Statement::Step() {
    const int code = sqlite3_step(Live());
    if (code == SQLITE_ROW) {
        return true;
    }
    if (code != SQLITE_DONE) {
        // Resetting lets the locks go; it repeats the code and keeps the message.
        sqlite3_reset(handle_);
        Raise(connection_.Handle(), code);
    }
    return false;
}

void Statement::Reset() {
    sqlite3_reset(Live());  // repeats the error of the last Step, which was thrown there
}

void Statement::Bind(int index, const QVariant& value) {
    sqlite3_stmt* handle = Live();
    int code = SQLITE_OK;
    if (value.isNull()) {
        code = sqlite3_bind_null(handle, index);
    } else if (value.typeId() == QMetaType::QString || value.typeId() == QMetaType::QByteArray) {
        const QByteArray utf8 = value.toString().toUtf8();
        code = sqlite3_bind_text(handle, index, utf8.constData(), static_cast<int>(utf8.size()),
                                 SQLITE_TRANSIENT);
    } else if (value.typeId() == QMetaType::Double) {
        code = sqlite3_bind_double(handle, index, value.toDouble());
    } else {
        code = sqlite3_bind_int64(handle, index, value.toLongLong());
    }
    Check(connection_.Handle(), code);
}

int Statement::ColumnCount() const {
    return sqlite3_column_count(Live());
}

QString Statement::ColumnName(int column) const {
    return QString::fromUtf8(sqlite3_column_name(Live(), column));
}

qint64 Statement::Int64(int column) const {
    return sqlite3_column_int64(Live(), column);
}

Cell Statement::Read(int column) const {
    sqlite3_stmt* handle = Live();
    Cell cell;
    switch (sqlite3_column_type(handle, column)) {
        case SQLITE_NULL:
            break;
        case SQLITE_INTEGER:
            cell.type = Cell::Type::Integer;
            cell.integer = sqlite3_column_int64(handle, column);
            break;
        case SQLITE_FLOAT:
            cell.type = Cell::Type::Real;
            cell.real = sqlite3_column_double(handle, column);
            break;
        default: {
            cell.type = Cell::Type::Text;
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(handle, column));
            cell.utf8 = {text, sqlite3_column_bytes(handle, column)};
        }
    }
    return cell;
}

QVariant Statement::Column(int column) const {
    const Cell cell = Read(column);
    switch (cell.type) {
        case Cell::Type::Null:
            break;
        case Cell::Type::Integer:
            return static_cast<qlonglong>(cell.integer);
        case Cell::Type::Real:
            return cell.real;
        case Cell::Type::Text:
            return QString::fromUtf8(cell.utf8);
    }
    return {};
}

}  // namespace dao
