#include "platform/dao/dao.h"
#include "platform/dao/errors.h"
#include "platform/dao/rowreader.h"
#include "platform/dao/rowstore.h"
#include "platform/dao/schema.h"
#include "platform/sql/dialect.h"

#include <chrono>
#include <limits>

using namespace std::chrono_literals;

namespace dao {

namespace {

// How long opening a result for a grid may look for its first row before the window must live on.
constexpr auto FirstLook = 2ms;

constexpr qint64 All = std::numeric_limits<qint64>::max();

quint64 NextIdentity() {
    static quint64 last = 0;
    return ++last;
}

}  // namespace

struct Recordset::Private {
    using Clock = RowReader::Clock;

    Private(std::shared_ptr<Connection> owner, const sql::Translation& query, RecordsetType kind)
        : connection(std::move(owner)), reader(connection, query, store), type(kind) {}

    std::shared_ptr<Connection> connection;
    RowStore store;
    RowReader reader;
    RecordsetType type;
    quint64 identity = NextIdentity();
    qint64 base = 0;       // rows that a forward-only result has dropped in front of the store
    qint64 current = 0;    // Rows(): behind the last
    qint64 announced = 0;  // rows told of by RowsRead
    bool closed = false;
    bool awaitsFirst = false;  // nobody has been told yet that there is a first row

    qint64 Rows() const { return base + store.Rows(); }
    bool OnRow() const { return current < Rows(); }

    void Usable() const {
        if (closed) {
            Throw(Failure::ObjectInvalid);
        }
    }

    void Movable() const {
        Usable();
        if (type == dbOpenForwardOnly) {
            Throw(Failure::InvalidOperation);
        }
    }

    qint64 Index(qint64 row, int column) const {
        if (row < base || row >= Rows() || column < 0 || column >= reader.Columns().size()) {
            throw Erro(Erro::SubscriptOutOfRange);
        }
        return row - base;
    }

    // Reads until there are `rows` rows, the result ends, or the time is over; whether there are.
    bool Have(qint64 rows, Clock::time_point deadline = Clock::time_point::max()) {
        if (Rows() < rows) {
            reader.Read(rows - Rows(), deadline);
        }
        return Rows() >= rows;
    }

    // A result for a grid comes back before it knows whether it has a row; who asks for the current
    // one makes it look.
    void Settle() { Have(1); }
};

QVariant Field::Value() const {
    Recordset::Private& d = *owner_->d_;
    d.Usable();
    d.Settle();
    if (!d.OnRow()) {
        Throw(Failure::NoCurrentRecord);
    }
    return d.store.Value(d.current - d.base, column_);
}

Recordset::Recordset(std::shared_ptr<Connection> connection, const QString& sql, RecordsetType type,
                     Accents accents) {
    const sql::Translation query = Prepare(*connection, sql, accents);
    if (query.kind != sql::Translation::Kind::Query) {
        Throw(Failure::InvalidOperation);
    }
    d_ = std::make_unique<Private>(std::move(connection), query, type);
    if (type != dbOpenDynaset) {
        d_->Have(1);
        return;
    }
    d_->Have(1, Private::Clock::now() + FirstLook);
    d_->awaitsFirst = d_->Rows() == 0;
}

Recordset::~Recordset() = default;

bool Recordset::Eof() const {
    d_->Usable();
    d_->Settle();
    return d_->current >= d_->Rows();
}

void Recordset::Announce() {
    const qint64 first = d_->announced;
    d_->announced = d_->Rows();
    if (d_->announced > first) {
        Q_EMIT RowsRead(first, d_->announced - 1);
    }
    if (d_->awaitsFirst && d_->announced > 0) {
        d_->awaitsFirst = false;
        Q_EMIT CurrentChanged();
    }
}

void Recordset::MoveTo(qint64 row) {
    const bool moved = row != d_->current;
    d_->current = row;
    Announce();
    if (moved) {
        Q_EMIT CurrentChanged();
    }
}

void Recordset::MoveNext() {
    d_->Usable();
    d_->Settle();
    if (d_->current >= d_->Rows()) {
        Throw(Failure::NoCurrentRecord);
    }
    const qint64 next = d_->current + 1;
    // Somebody may have had the rest read; otherwise the row just left is all there is.
    if (d_->type == dbOpenForwardOnly && next == d_->Rows()) {
        d_->base = next;
        d_->store.Clear();
    }
    d_->Have(next + 1);
    MoveTo(next);
}

void Recordset::MoveLast() {
    d_->Movable();
    d_->Have(All);
    if (d_->Rows() == 0) {
        Throw(Failure::NoCurrentRecord);
    }
    MoveTo(d_->Rows() - 1);
}

qint64 Recordset::RecordCount() const {
    d_->Usable();
    return d_->Rows();
}

qint64 Recordset::AbsolutePosition() const {
    d_->Usable();
    return d_->OnRow() ? d_->current : -1;
}

void Recordset::SetAbsolutePosition(qint64 position) {
    d_->Movable();
    if (position < 0 || !d_->Have(position + 1)) {
        Throw(Failure::NoCurrentRecord);
    }
    MoveTo(position);
}

Bookmark Recordset::CurrentBookmark() const {
    d_->Usable();
    d_->Settle();
    if (!d_->OnRow()) {
        Throw(Failure::NoCurrentRecord);
    }
    return {d_->identity, d_->current};
}

void Recordset::FindFirst(const QString& criteria) {
    d_->Movable();
    const sql::Criterion criterion(criteria, d_->reader.Columns());
    qint64 row = 0;
    const auto value = [this, &row](int column) { return d_->store.Value(row, column); };
    while (d_->Have(row + 1) && !criterion.Matches(value)) {
        ++row;
    }
    noMatch_ = row == d_->Rows();
    MoveTo(noMatch_ ? d_->current : row);
}

Field Recordset::Fields(const QString& name) const {
    d_->Usable();
    const int column = FieldIndex(name);
    if (column < 0) {
        Throw(Failure::ItemNotFound, name);
    }
    return Field(this, column);
}

Field Recordset::Fields(int index) const {
    d_->Usable();
    if (index < 0 || index >= FieldCount()) {
        Throw(Failure::ItemNotFound, QString::number(index));
    }
    return Field(this, index);
}

int Recordset::FieldCount() const {
    return static_cast<int>(d_->reader.Columns().size());
}

int Recordset::FieldIndex(const QString& name) const {
    const QStringList& names = d_->reader.Columns();
    for (qsizetype i = 0; i < names.size(); ++i) {
        if (names.at(i).compare(name, Qt::CaseInsensitive) == 0) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

void Recordset::Close() {
    d_->reader.Drop();
    d_->store.Clear();
    d_->closed = true;
}

bool Recordset::IsComplete() const {
    d_->Usable();
    return d_->reader.Done() || !d_->connection->IsOpen();
}

qint64 Recordset::ReadUpTo(qint64 rows, std::chrono::microseconds budget) {
    d_->Movable();
    d_->Have(rows, Private::Clock::now() + budget);
    Announce();
    return d_->Rows();
}

qint64 Recordset::ReadUpTo(qint64 rows) {
    d_->Movable();
    d_->Have(rows);
    Announce();
    return d_->Rows();
}

bool Recordset::ReadFor(std::chrono::microseconds budget) {
    d_->Movable();
    // Once the database is closed there is nothing to read on and nobody waits for it.
    if (d_->connection->IsOpen()) {
        d_->Have(All, Private::Clock::now() + budget);
    }
    Announce();
    return IsComplete();
}

QString Recordset::Text(qint64 row, int column) const {
    d_->Usable();
    return d_->store.Text(d_->Index(row, column), column);
}

QVariant Recordset::Value(qint64 row, int column) const {
    d_->Usable();
    return d_->store.Value(d_->Index(row, column), column);
}

}  // namespace dao
