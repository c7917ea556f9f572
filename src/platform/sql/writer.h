#pragma once

#include "platform/sql/dialect.h"
#include "platform/sql/functiontable.h"
#include "platform/sql/likepattern.h"
#include "platform/sql/token.h"
#include "platform/sql/tree.h"

#include <QByteArray>

#include <string_view>
#include <utility>
#include <vector>

namespace sql {

// Whether the result is a condition that the engine computes as 1 and 0.
bool IsLogical(const Expr& expr);

// What is known of the value, as the dialect has it: never Logical.
Type TypeOf(const Expr& expr);

// Writes trees as the engine's SQL. Appends to one text; throws Erro 3000, 3075, 3085 or 3093 for
// what cannot be written.
class Writer {
public:
    explicit Writer(const Schema& schema, Accents accents = Accents::Minded)
        : schema_(schema), accents_(accents) {}

    QByteArray Take() { return std::exchange(out_, {}); }
    const QStringList& Tables() const { return tables_; }
    void NoteTable(std::string_view name);

    void Raw(std::string_view sql) { out_.append(sql.data(), static_cast<qsizetype>(sql.size())); }
    void Name(std::string_view name);
    void Text(std::string_view text);

    // Names: whether bare columns of the select list get their name as an alias, so that the result
    // is called as the text has it whatever the plan is.
    enum class Names { AsTheyCome, Fixed };
    void WriteQuery(const Query& query, Names names = Names::AsTheyCome);
    void WriteSelect(const Select& select, const std::vector<OrderTerm>& order, Names names);
    void WriteItem(const SelectItem& item, std::size_t place, Names names);
    void WriteOrder(const std::vector<OrderTerm>& order);
    void WriteFrom(const std::vector<SourcePtr>& sources);
    void WriteSource(const Source& source);
    void WriteWhere(const ExprPtr& where);

    // As a value of the dialect (conditions as -1 and 0).
    void Value(const Expr& expr);
    // Value, with the collation of texts where the expression has none of its own.
    void CollatedValue(const Expr& expr);
    // As a condition. `met`: only whether it is met matters, Null being the same as false.
    void Condition(const Expr& expr, bool met);

    // For a plan, of a term column LIKE 'text' or column = value: what an index can serve of it,
    // and what decides. For LIKE the former is only needed, the latter alone is no use to an index.
    void Range(const Expr& term);
    void Test(const Expr& term);

private:
    void Operand(const Expr& expr);
    void ConditionOperand(const Expr& expr, bool met);
    void Binary(const Expr& expr);
    void Logical(const Expr& expr, bool met);
    void Comparison(const Expr& expr, std::string_view sign);
    void Truth(const Expr& expr);
    void Like(const Expr& expr, bool met);
    void LikeTest(const Expr& expr);
    void LikePrefix(const Expr& column, std::string_view pattern);
    void In(const Expr& expr);
    void Between(const Expr& expr);
    void Call(const Expr& expr);
    void WrittenCall(const Expr& expr);
    void Arguments(const Expr& expr);
    void FunctionOf(std::string_view name, const Expr& expr);
    void CollationUnlessColumn(const Expr& expr);

    void Body(const Select& select);
    void TopLimit(const Select& select, const std::vector<OrderTerm>& order);
    void DistinctRowGroups(const Select& select);
    const Expr& OrderKey(const Select& select, const OrderTerm& term) const;

    const Schema& schema_;
    Accents accents_;
    QByteArray out_;
    QStringList tables_;
};

// Writes any statement; in writer_change.cpp and writer_definition.cpp.
Translation WriteStatement(const Statement& statement, const Schema& schema,
                           Accents accents = Accents::Minded);
void WriteDefinition(const Statement& statement, const Schema& schema, Translation& translation);

}  // namespace sql
