#include "platform/dao/rowreader.h"

#include "platform/dao/errors.h"

#include <limits>

namespace dao {

RowReader::RowReader(std::shared_ptr<Connection> connection, const sql::Translation& query,
                     RowStore& store)
    : connection_(std::move(connection)), store_(store), resultColumns_(query.resultColumns) {
    // All are prepared now, so that an error in the last one comes up before the first row.
    for (const QByteArray& sql : query.statements) {
        statements_.push_back(std::make_unique<Statement>(*connection_, sql));
    }
    if (statements_.size() > 1) {
        anchor_ = std::make_unique<Statement>(*connection_, "SELECT 1 FROM sqlite_schema");
        anchor_->Step();
    }
    connection_->readers_.push_back(this);
}

RowReader::~RowReader() {
    LetGo();
}

void RowReader::LetGo() {
    std::erase(connection_->readers_, this);
    anchor_.reset();
    statements_.clear();
}

RowReader::Step RowReader::Next() {
    Statement& statement = *statements_[current_];
    const bool any = statement.Step();
    if (columns_.isEmpty()) {
        const int visible = resultColumns_ > 0 ? resultColumns_ : statement.ColumnCount();
        for (int column = 0; column < visible; ++column) {
            columns_.append(statement.ColumnName(column));
        }
    }
    if (!any) {
        statements_[current_].reset();
        return ++current_ == statements_.size() ? Step::End : Step::Nothing;
    }
    const int columns = static_cast<int>(columns_.size());
    if (resultColumns_ > 0 && statement.Int64(columns) == 0) {
        return Step::Nothing;
    }
    store_.Append(statement, columns);
    return Step::Row;
}

void RowReader::Read(qint64 rows, Clock::time_point deadline) {
    if (failure_) {
        throw Erro(*failure_);
    }
    if (Done()) {
        return;
    }
    struct DeadlineScope {
        Connection& connection;
        ~DeadlineScope() { connection.SetDeadline(Clock::time_point::max()); }
    };
    connection_->SetDeadline(deadline);
    const DeadlineScope scope{*connection_};
    const bool timed = deadline != Clock::time_point::max();
    // The clock costs as much as a column. A step that read no row may have been a long one.
    constexpr int RowsPerLook = 4;
    try {
        while (rows > 0) {
            const Step step = Next();
            if (step == Step::End) {
                LetGo();
                return;
            }
            rows -= step == Step::Row ? 1 : 0;
            const bool look = step != Step::Row || rows % RowsPerLook == 0;
            if (timed && look && Clock::now() >= deadline) {
                return;
            }
        }
    } catch (const Erro& erro) {
        // A result that broke off must not pass for a whole one: the failure stays.
        failure_ = erro;
        LetGo();
        throw;
    }
}

void RowReader::Finish() noexcept {
    try {
        Read(std::numeric_limits<qint64>::max());
    } catch (const Erro&) {
        // Kept in failure_, for the reader's own caller.
    }
}

}  // namespace dao
