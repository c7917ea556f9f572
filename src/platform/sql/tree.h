#pragma once

#include <QByteArray>
#include <QStringList>

#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

// The syntax tree of a text of the dialect. Names point into Command::source.
namespace sql {

struct Query;
struct Expr;
struct Function;
using ExprPtr = std::unique_ptr<Expr>;
using QueryPtr = std::unique_ptr<Query>;

enum class Op {
    Imp,
    Eqv,
    Xor,
    Or,
    And,
    Not,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    Concat,
    Add,
    Subtract,
    Mod,
    IntDivide,
    Multiply,
    Divide,
    Negate,
    Power,
};

struct Expr {
    enum class Kind {
        Null,
        Number,    // text: as the engine writes it; True is -1
        Date,      // text: its serial number
        Text,      // text: without quotes
        Column,    // qualifier (or empty), name
        Star,      // qualifier (or empty)
        Unary,     // op, args: operand
        Binary,    // op, args: left, right
        Like,      // args: text, pattern
        In,        // args: value, list...; or value, and query
        Between,   // args: value, low, high
        IsNull,    // args: operand
        Call,      // function
        Subquery,  // query
        Exists,    // query
    };
    Kind kind = Kind::Null;
    Op op = Op::Not;
    bool negated = false;  // NOT LIKE, NOT IN, NOT BETWEEN, IS NOT NULL; a number with a minus sign
    int token = -1;        // of a Number or Text that is a literal of the text
    int depth = 1;
    const Function* function = nullptr;
    std::string text;
    std::string_view qualifier;
    std::string_view name;
    std::vector<ExprPtr> args;
    QueryPtr query;
};

struct Source {
    enum class Kind { Table, Derived, Join };
    enum class Join { Inner, Left, Right, Cross };  // Cross: without ON
    Kind kind = Kind::Table;
    Join join = Join::Inner;
    std::string_view name;
    std::string_view alias;
    QueryPtr query;
    std::unique_ptr<Source> left;
    std::unique_ptr<Source> right;
    ExprPtr on;

    // Under which name the columns are reached.
    std::string_view Alias() const { return alias.empty() ? name : alias; }
};
using SourcePtr = std::unique_ptr<Source>;

struct SelectItem {
    ExprPtr expr;
    std::string_view alias;
};

struct Select {
    bool distinct = false;
    bool distinctRow = false;
    std::string top;  // a number, or empty
    bool topPercent = false;
    std::vector<SelectItem> items;
    std::string_view into;
    std::vector<SourcePtr> from;
    ExprPtr where;
    std::vector<ExprPtr> groupBy;
    ExprPtr having;
};

struct OrderTerm {
    ExprPtr expr;
    bool descending = false;
};

// One select, or several joined by UNION.
struct Query {
    struct Arm {
        std::unique_ptr<Select> select;  // or
        QueryPtr nested;                 // a query in brackets
        bool all = false;                // joined to the arms before it by UNION ALL
    };
    std::vector<Arm> arms;
    std::vector<OrderTerm> order;
};

struct Insert {
    std::string_view table;
    std::vector<std::string_view> columns;
    std::vector<ExprPtr> values;  // or
    QueryPtr query;
};

struct Assignment {
    std::string_view qualifier;
    std::string_view column;
    ExprPtr value;
};

struct Update {
    SourcePtr target;
    std::vector<Assignment> assignments;
    ExprPtr where;
};

struct Delete {
    std::string_view table;                 // of "DELETE table.* FROM ...", or empty
    std::vector<std::string_view> columns;  // of "DELETE column FROM ...", which mean their table
    SourcePtr from;
    ExprPtr where;
};

struct WrittenType {
    QString name;       // upper case
    QStringList sizes;  // numbers in brackets behind it
};

struct ConstraintDefinition {
    enum class Kind { PrimaryKey, Unique, NotNull, Check };
    Kind kind = Kind::PrimaryKey;
    std::string_view name;  // or empty
    std::vector<std::string_view> columns;
    ExprPtr check;
};

struct ColumnDefinition {
    std::string_view name;
    WrittenType type;
    bool notNull = false;
    bool mayBeNull = false;  // as the text says, which does not say so of every column
    ExprPtr defaultValue;
    std::vector<ConstraintDefinition> constraints;
};

struct CreateTable {
    std::string_view table;
    std::vector<ColumnDefinition> columns;
    std::vector<ConstraintDefinition> constraints;
};

struct AlterTable {
    enum class Action {
        AddColumns,
        AlterColumn,
        SetDefault,  // of the one column; none drops it
        DropColumns,
        AddConstraint,
        DropConstraint,
    };
    Action action = Action::AddColumns;
    std::string_view table;
    std::vector<ColumnDefinition> columns;
    ConstraintDefinition constraint;
    std::vector<std::string_view> dropped;  // columns, or the constraint
};

struct CreateIndex {
    enum class Option { None, Primary, DisallowNull, IgnoreNull };
    bool unique = false;
    std::string_view index;
    std::string_view table;
    std::vector<std::pair<std::string_view, bool>> columns;  // name, descending
    Option option = Option::None;
};

struct DropIndex {
    std::string_view index;
    std::string_view table;
};

struct DropTable {
    std::string_view table;  // or view
};

struct CreateView {
    std::string_view view;
    std::vector<std::string_view> columns;
    QueryPtr query;
};

// Any statement of the dialect.
struct Command {
    QByteArray source;
    std::variant<QueryPtr, Insert, Update, Delete, CreateTable, AlterTable, CreateIndex, DropIndex,
                 DropTable, CreateView>
        body;
};

}  // namespace sql
