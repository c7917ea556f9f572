#pragma once

#include "platform/sql/dialect.h"
#include "platform/sql/functiontable.h"
#include "platform/sql/likepattern.h"
#include "platform/sql/names.h"
#include "platform/sql/token.h"
#include "platform/sql/tree.h"

#include <QByteArray>

#include <string_view>
#include <utility>
#include <vector>

namespace sql {

// Writes trees as the engine's SQL. Appends to one text; throws Erro 3000, 3075, 3093, 3122 or 3464
// for what cannot be written.
class Writer {
public:
    explicit Writer(const Schema& schema, Accents accents = Accents::Minded)
        : names_(schema), accents_(accents) {}

    QByteArray Take() { return std::exchange(out_, {}); }
    const QStringList& Tables() const { return tables_; }
    void NoteTable(std::string_view name);
    // Who writes parts of a query brings their tables into sight by a Names::Scope.
    Names& KnownNames() { return names_; }

    void Raw(QByteArrayView sql) { out_ += sql; }
    void Name(QByteArrayView name);
    void Name(const QString& name) { Name(QByteArrayView(name.toUtf8())); }
    void TableName(std::string_view name);  // as the table is declared
    void Text(std::string_view text);

    // Naming: whether bare columns of the select list get their name as an alias, so that the
    // result is called as the text has it whatever the plan is.
    enum class Naming { AsTheyCome, Fixed };
    void WriteQuery(const Query& query, Naming naming = Naming::AsTheyCome);
    void WriteItem(const SelectItem& item, std::size_t place, Naming naming);
    void WriteSource(const Source& source);
    void WriteWhere(const ExprPtr& where);

    // From now on literals that are stored, or compared with a column of their kind, become
    // parameters.
    void Lift(std::vector<Parameter>& parameters) { lifted_ = &parameters; }
    // Writes a parameter in the place of a literal; false: it has to be written.
    bool WriteLifted(const Expr& literal, const std::optional<Target>& target = std::nullopt);

    // As a value of the dialect (conditions as -1 and 0).
    void Value(const Expr& expr);
    // As a value that becomes part of a text: a date as people read it.
    void TextValue(const Expr& expr);
    // As a condition. `met`: only whether it is met matters, Null being the same as false.
    void Condition(const Expr& expr, bool met);

    // For a plan, of a term column LIKE 'text' or column = value: what an index can serve of it,
    // and what decides. For LIKE the former is only needed, the latter alone is no use to an index.
    void Range(const Expr& term);
    void Test(const Expr& term);
    // The range of LIKE, of this column, which may be another one that is equal to the term's.
    void LikePrefix(const Expr& column, std::string_view pattern);

private:
    void Column(const Expr& expr);
    // Value, with the collation of texts where the expression has none of its own.
    void CollatedValue(const Expr& expr);
    void Operand(const Expr& expr);
    void ConditionOperand(const Expr& expr, bool met);
    void Binary(const Expr& expr);
    void Logical(const Expr& expr, bool met);
    void Comparison(const Expr& expr);
    void Comparand(const Expr& expr, Type against, bool ordered);
    void Truth(const Expr& expr);
    void Like(const Expr& expr, bool met);
    void LikeTest(const Expr& expr);
    void In(const Expr& expr);
    void Between(const Expr& expr);
    void Call(const Expr& expr);
    void Choice(const Expr& expr, Type type);
    void Cases(const Expr& expr, Type type);
    void FunctionOf(std::string_view name, const Expr& expr, bool texts = false);
    void CollationUnlessColumn(const Expr& expr);
    bool MayBeText(const Expr& expr);

    void WriteSelect(const Select& select, const std::vector<OrderTerm>& order, Naming naming);
    void WriteTop(const Select& select, const std::vector<OrderTerm>& order);
    void WriteFrom(const std::vector<SourcePtr>& sources);
    void WriteOrder(const std::vector<OrderTerm>& order);
    void Body(const Select& select);
    void DistinctRowGroups(const Select& select);
    const Expr& OrderKey(const Select& select, const OrderTerm& term) const;

    Names names_;
    Accents accents_;
    std::vector<Parameter>* lifted_ = nullptr;
    QByteArray out_;
    QStringList tables_;
};

// Throws Erro 3122 where a select list, HAVING or ORDER BY of a grouped query asks for a column
// that has not one value for each group, be it for a query in an expression. The tables of `select`
// are in sight.
void CheckGroups(const Select& select, const std::vector<OrderTerm>& order, Names& names);

// Writes any command; in writer_change.cpp and writer_definition.cpp.
Translation WriteCommand(const Command& command, const Schema& schema,
                         Accents accents = Accents::Minded, Literals literals = Literals::Written);
void WriteDefinition(const Command& command, const Schema& schema, Translation& translation);

// What dao_store is called with behind the value: its column's type, and its name for an error.
QByteArray StoreArguments(const ColumnType& type, const QString& table, const QString& column);

}  // namespace sql
