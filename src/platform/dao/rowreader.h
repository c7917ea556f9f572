#pragma once

#include "platform/dao/connection.h"
#include "platform/dao/rowstore.h"
#include "platform/dao/statement.h"
#include "platform/erro.h"
#include "platform/sql/dialect.h"

#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace dao {

// Reads the rows of a translated query into a store, as far as it is asked to. While it is not
// done it holds the read lock of the file, so nobody else can commit a change.
class RowReader {
public:
    using Clock = Connection::Clock;

    RowReader(std::shared_ptr<Connection> connection, const sql::Translation& query,
              RowStore& store);
    ~RowReader();
    RowReader(const RowReader&) = delete;
    RowReader& operator=(const RowReader&) = delete;

    // What is still to come is no longer open to changes of its own connection: a search whose last
    // statement has begun, and has looked up by then what its rows depend on. Other results have
    // parts that begin later.
    bool IsSettled() const { return resultColumns_ > 0 && current_ + 1 >= statements_.size(); }

    // Everything is in the store and the lock is gone.
    bool Done() const { return statements_.empty() && !failure_; }

    // Reads until `rows` more rows are there, the end is reached, or `deadline` is over. Throws
    // the errors of the engine; 3420 when the database was closed meanwhile.
    void Read(qint64 rows, Clock::time_point deadline = Clock::time_point::max());

    // Reads the rest because somebody else needs the lock gone. A failure is kept for the next
    // Read.
    void Finish() noexcept;

    void Drop() { LetGo(); }  // what has not been read is not wanted any more

    const QStringList& Columns() const { return columns_; }  // valid after the first Read

private:
    enum class Step { Row, Nothing, End };
    Step Next();
    void LetGo();

    std::shared_ptr<Connection> connection_;
    RowStore& store_;
    std::vector<std::unique_ptr<Statement>> statements_;
    std::size_t current_ = 0;
    // Keeps the read lock from one statement to the next, so that all see the same data.
    std::unique_ptr<Statement> anchor_;
    QStringList columns_;
    int resultColumns_;  // as in Translation
    std::optional<Erro> failure_;
};

}  // namespace dao
