#pragma once

#include "platform/sql/columntypes.h"
#include "platform/sql/dialect.h"
#include "platform/sql/tree.h"

#include <optional>
#include <unordered_map>
#include <vector>

// What the names of a text mean where they stand, and of what type its expressions are.
namespace sql {

struct ResultColumn {
    QString name;
    Type type = Type::Unknown;
    QString declared;            // its type in the table that it comes from, or empty
    QString qualifier;           // of a column that a star stands for
    const Expr* expr = nullptr;  // null: a column that a star stands for
};

class Names {
public:
    explicit Names(const Schema& schema) : schema_(schema) {}

    // The tables of a FROM clause are in sight for as long as the scope lives, before those of the
    // scopes around it.
    class Scope {
    public:
        Scope(Names& names, const Select& select);
        Scope(Names& names, const Source& source);
        ~Scope() { names_.frames_.pop_back(); }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        Names& names_;
    };

    struct Meaning {
        QString qualifier;    // as the text or the table declares it
        ResultColumn column;  // its name as the table declares it
    };
    // Nothing for an unknown column, and for one of a table that is not known.
    std::optional<Meaning> Find(const Expr& column);
    // In which of the scopes in sight, 1 being the outermost, a table has it.
    std::optional<std::size_t> DepthOf(const Expr& column);
    std::size_t Depth() const { return frames_.size(); }

    Type TypeOf(const Expr& expr);
    std::optional<TableInfo> InfoOf(std::string_view table) const;

    // What a query gives; empty where that cannot be told before it has run.
    const std::vector<ResultColumn>& ColumnsOf(const Query& query);
    std::vector<ResultColumn> ColumnsOf(const Select& select);

private:
    struct Frame {
        std::vector<const Source*> tables;
        const Select* select = nullptr;
    };
    QString Qualifier(const Source& table) const;
    std::optional<ResultColumn> FindIn(const Source& table, std::string_view name);
    std::vector<ResultColumn> ColumnsOf(const Source& table);
    Type TypeOfCall(const Expr& call);
    Type Common(const std::vector<const Expr*>& values);

    const Schema& schema_;
    std::vector<Frame> frames_;
    bool amongAliases_ = false;
    // A query inside another one is asked for again and again.
    std::unordered_map<const Query*, std::vector<ResultColumn>> known_;
};

// The tables and derived tables of a FROM clause, in their order.
void CollectTables(const Source& source, std::vector<const Source*>& tables);

// The table of this name or alias among those of a FROM clause, or null.
const Source* TableNamed(const Source& source, std::string_view name);

// How the columns of a select list are called that have no name of their own.
QString ComputedName(std::size_t place);

// Whether the result is a condition, which the engine computes as 1 and 0.
bool IsLogical(const Expr& expr);

// The expressions that a call of IIf, Nz, Switch or Choose gives one of.
std::vector<const Expr*> Choices(const Expr& call);

}  // namespace sql
