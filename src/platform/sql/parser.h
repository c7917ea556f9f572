#pragma once

#include "platform/sql/token.h"
#include "platform/sql/tree.h"

#include <QByteArray>

#include <initializer_list>
#include <string_view>
#include <vector>

namespace sql {

// Reads a text of the dialect into its tree. Throws Erro 3075 for a syntax error, 3129 when the
// text begins no statement, 3085 for an unknown function, 3000 for a part of the dialect that is
// not carried over.
class Parser {
public:
    explicit Parser(const QByteArray& source) : tokens_(Tokenize(source)) {}

    static Command ParseCommand(const QByteArray& source);

    // A condition alone; its names point into `source`.
    static ExprPtr ParseCriterion(const QByteArray& source);

private:
    // Binding strength, weakest first: what a call of ParseExpr reads at least.
    enum Level {
        AnyLevel,
        ImpLevel,
        EqvLevel,
        XorLevel,
        OrLevel,
        AndLevel,
        NotLevel,
        ComparisonLevel,
        ConcatLevel,
        AddLevel,
        ModLevel,
        IntDivideLevel,
        MultiplyLevel,
        NegateLevel,
        PowerLevel,
    };
    struct Operator {
        std::string_view text;
        Op op;
        Level level;
    };
    static const Operator Operators[];

    // Deeper texts are refused, so that no text can exhaust the stack.
    static constexpr int MaxNesting = 100;
    class Nesting {
    public:
        explicit Nesting(Parser& parser) : parser_(parser) {
            if (++parser_.nesting_ > MaxNesting) {
                parser_.Fail();
            }
        }
        ~Nesting() { --parser_.nesting_; }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;

    private:
        Parser& parser_;
    };

    // Tokens.
    const Token& Peek(std::size_t ahead = 0) const;
    bool IsWord(std::string_view word, std::size_t ahead = 0) const;
    bool IsSign(std::string_view sign, std::size_t ahead = 0) const;
    bool TakeWord(std::string_view word);
    bool TakeAnyWord(std::initializer_list<std::string_view> words);
    bool TakeSign(std::string_view sign);
    void ExpectWord(std::string_view word);
    void ExpectSign(std::string_view sign);
    void ExpectEnd();
    bool IsName(std::size_t ahead = 0) const;
    std::string_view TakeName();
    std::string TakeNumber();
    std::vector<std::string_view> TakeNameList();  // with its brackets
    [[noreturn]] void Fail() const;

    // Expressions.
    ExprPtr ParseExpr(Level least = AnyLevel);
    ExprPtr ParsePrefix();
    ExprPtr ParsePrimary();
    ExprPtr ParseDate();
    ExprPtr ParseWord();
    ExprPtr ParseCall();
    void CheckCall(const Expr& call) const;
    ExprPtr ParseConstant();
    ExprPtr ParseColumn();
    ExprPtr ParseSubquery(Expr::Kind kind);
    ExprPtr ParsePredicate(ExprPtr left, bool& found);
    ExprPtr ParseIn(ExprPtr left, bool negated);
    ExprPtr ParseQuantified(ExprPtr left, Op op);
    const Operator* PeekOperator() const;
    ExprPtr Make(Expr::Kind kind, ExprPtr first = {}, ExprPtr second = {}) const;
    void Adopt(Expr& parent, ExprPtr child) const;

    // Queries and changes.
    QueryPtr ParseQuery();
    Query::Arm ParseArm();
    std::unique_ptr<Select> ParseSelect();
    void ParseItems(Select& select);
    SourcePtr ParseSource();
    SourcePtr ParseSourcePrimary();
    SourcePtr ParseSourceList();
    ExprPtr ParseWhere();
    Insert ParseInsert();
    Update ParseUpdate();
    Delete ParseDelete();

    // Data definition.
    Command ParseCreate();
    Command ParseDrop();
    CreateTable ParseCreateTable();
    CreateIndex ParseCreateIndex(bool unique);
    CreateView ParseCreateView();
    AlterTable ParseAlterTable();
    void ParseAlterColumn(AlterTable& alter);
    ColumnDefinition ParseColumnDefinition();
    WrittenType ParseColumnType();
    bool ParseColumnConstraint(ColumnDefinition& column);
    ConstraintDefinition ParseTableConstraint();
    [[noreturn]] void RefuseReferences();
    bool BeginsConstraint() const;

    std::vector<Token> tokens_;
    std::size_t at_ = 0;
    int nesting_ = 0;
};

}  // namespace sql
