#include "platform/sql/errors.h"
#include "platform/sql/functiontable.h"
#include "platform/sql/parser.h"
#include "platform/sql/serialdate.h"

#include <QString>

#include <algorithm>
#include <iterator>
#include <optional>

using namespace std::string_view_literals;

using namespace Qt::StringLiterals;

namespace sql {

namespace {

// The engine refuses expressions a thousand levels deep, and one level here may become three there.
constexpr int MaxDepth = 300;

}  // namespace

const Parser::Operator Parser::Operators[] = {
    {"=", Op::Equal, ComparisonLevel},
    {"AND", Op::And, AndLevel},
    {"OR", Op::Or, OrLevel},
    {"<>", Op::NotEqual, ComparisonLevel},
    {"<", Op::Less, ComparisonLevel},
    {"<=", Op::LessEqual, ComparisonLevel},
    {">", Op::Greater, ComparisonLevel},
    {">=", Op::GreaterEqual, ComparisonLevel},
    {"&", Op::Concat, ConcatLevel},
    {"+", Op::Add, AddLevel},
    {"-", Op::Subtract, AddLevel},
    {"*", Op::Multiply, MultiplyLevel},
    {"/", Op::Divide, MultiplyLevel},
    {"\\", Op::IntDivide, IntDivideLevel},
    {"MOD", Op::Mod, ModLevel},
    {"^", Op::Power, PowerLevel},
    {"XOR", Op::Xor, XorLevel},
    {"EQV", Op::Eqv, EqvLevel},
    {"IMP", Op::Imp, ImpLevel},
};

void Parser::Adopt(Expr& parent, ExprPtr child) const {
    if (child->depth >= MaxDepth) {
        Fail();
    }
    parent.depth = std::max(parent.depth, child->depth + 1);
    parent.args.push_back(std::move(child));
}

ExprPtr Parser::Make(Expr::Kind kind, ExprPtr first, ExprPtr second) const {
    auto expr = std::make_unique<Expr>();
    expr->kind = kind;
    for (ExprPtr* child : {&first, &second}) {
        if (*child) {
            Adopt(*expr, std::move(*child));
        }
    }
    return expr;
}

const Parser::Operator* Parser::PeekOperator() const {
    const Token& token = Peek();
    if (token.kind != Token::Kind::Sign && token.kind != Token::Kind::Word) {
        return nullptr;
    }
    for (const Operator& op : Operators) {
        if (EqualWords(op.text, token.text)) {
            return &op;
        }
    }
    return nullptr;
}

ExprPtr Parser::ParseExpr(Level least) {
    const Nesting nesting(*this);
    ExprPtr left = ParsePrefix();
    for (;;) {
        if (least <= ComparisonLevel) {
            bool found = false;
            left = ParsePredicate(std::move(left), found);
            if (found) {
                continue;
            }
        }
        const Operator* op = PeekOperator();
        if (!op || op->level < least) {
            return left;
        }
        ++at_;
        if (op->level == ComparisonLevel && (IsWord("ANY") || IsWord("SOME") || IsWord("ALL")) &&
            IsSign("(", 1)) {
            left = ParseQuantified(std::move(left), op->op);
            continue;
        }
        ExprPtr right = ParseExpr(static_cast<Level>(op->level + 1));
        left = Make(Expr::Kind::Binary, std::move(left), std::move(right));
        left->op = op->op;
    }
}

ExprPtr Parser::ParsePrefix() {
    if (TakeWord("NOT")) {
        ExprPtr expr = Make(Expr::Kind::Unary, ParseExpr(NotLevel));
        expr->op = Op::Not;
        return expr;
    }
    if (TakeSign("-")) {
        ExprPtr operand = ParseExpr(NegateLevel);
        if (operand->kind == Expr::Kind::Number) {
            const bool negative = operand->text.front() == '-';
            operand->text = negative ? operand->text.substr(1) : '-' + operand->text;
            operand->negated = !operand->negated;
            return operand;
        }
        ExprPtr expr = Make(Expr::Kind::Unary, std::move(operand));
        expr->op = Op::Negate;
        return expr;
    }
    if (TakeSign("+")) {
        return ParseExpr(NegateLevel);
    }
    return ParsePrimary();
}

// [NOT] LIKE, IN, BETWEEN and IS [NOT] NULL behind their first operand.
ExprPtr Parser::ParsePredicate(ExprPtr left, bool& found) {
    found = true;
    if (TakeWord("IS")) {
        const bool negated = TakeWord("NOT");
        ExpectWord("NULL");
        ExprPtr expr = Make(Expr::Kind::IsNull, std::move(left));
        expr->negated = negated;
        return expr;
    }
    const bool negated =
        IsWord("NOT") && (IsWord("LIKE", 1) || IsWord("IN", 1) || IsWord("BETWEEN", 1));
    at_ += negated ? 1 : 0;
    if (TakeWord("LIKE")) {
        ExprPtr expr = Make(Expr::Kind::Like, std::move(left), ParseExpr(ConcatLevel));
        expr->negated = negated;
        return expr;
    }
    if (TakeWord("BETWEEN")) {
        ExprPtr low = ParseExpr(ConcatLevel);
        ExpectWord("AND");
        ExprPtr expr = Make(Expr::Kind::Between, std::move(left), std::move(low));
        Adopt(*expr, ParseExpr(ConcatLevel));
        expr->negated = negated;
        return expr;
    }
    if (TakeWord("IN")) {
        return ParseIn(std::move(left), negated);
    }
    found = false;
    return left;
}

ExprPtr Parser::ParseIn(ExprPtr left, bool negated) {
    ExprPtr expr = Make(Expr::Kind::In, std::move(left));
    expr->negated = negated;
    ExpectSign("(");
    if (IsWord("SELECT")) {
        expr->query = ParseQuery();
    } else {
        do {
            Adopt(*expr, ParseExpr());
        } while (TakeSign(","));
    }
    ExpectSign(")");
    return expr;
}

ExprPtr Parser::ParseQuantified(ExprPtr left, Op op) {
    const bool all = IsWord("ALL");
    const bool carried = all ? op == Op::NotEqual : op == Op::Equal;
    if (!carried) {
        Throw(Failure::NotSupported, u"ANY, SOME, ALL"_s);
    }
    ++at_;
    return ParseIn(std::move(left), all);
}

ExprPtr Parser::ParsePrimary() {
    const Token& token = Peek();
    switch (token.kind) {
        case Token::Kind::Number: {
            ExprPtr expr = Make(Expr::Kind::Number);
            expr->token = static_cast<int>(at_);
            expr->text = TakeNumber();
            return expr;
        }
        case Token::Kind::Text: {
            ExprPtr expr = Make(Expr::Kind::Text);
            expr->token = static_cast<int>(at_);
            expr->text = Unquote(token);
            ++at_;
            return expr;
        }
        case Token::Kind::Date:
            return ParseDate();
        case Token::Kind::Name:
            return ParseColumn();
        case Token::Kind::Word:
            return ParseWord();
        default:
            break;
    }
    ExpectSign("(");
    if (IsWord("SELECT")) {
        --at_;
        return ParseSubquery(Expr::Kind::Subquery);
    }
    ExprPtr expr = ParseExpr();
    ExpectSign(")");
    return expr;
}

// Literals give the month first, wherever the program runs.
ExprPtr Parser::ParseDate() {
    const std::string_view text = Peek().text;
    const std::optional<double> serial =
        serialdate::Parse(ToQString(text), serialdate::Order::MonthFirst);
    if (!serial) {
        Fail();
    }
    ++at_;
    ExprPtr expr = Make(Expr::Kind::Date);
    expr->text = QByteArray::number(*serial, 'g', 17).toStdString();
    return expr;
}

ExprPtr Parser::ParseWord() {
    // Left and Right are joins and functions, told apart by the bracket.
    if (IsSign("(", 1) && (IsName() || IsWord("LEFT") || IsWord("RIGHT"))) {
        return ParseCall();
    }
    if (TakeWord("NULL")) {
        return Make(Expr::Kind::Null);
    }
    if (TakeWord("EXISTS")) {
        return ParseSubquery(Expr::Kind::Exists);
    }
    if (ExprPtr constant = ParseConstant()) {
        return constant;
    }
    return ParseColumn();
}

// A word for a number, or null.
ExprPtr Parser::ParseConstant() {
    constexpr std::string_view True[] = {"TRUE", "YES", "ON"};
    constexpr std::string_view False[] = {"FALSE", "NO", "OFF"};
    if (IsSign(".", 1) || IsSign("!", 1)) {
        return nullptr;
    }
    const auto isWord = [this](std::string_view word) { return IsWord(word); };
    const bool yes = std::any_of(std::begin(True), std::end(True), isWord);
    if (!yes && std::none_of(std::begin(False), std::end(False), isWord)) {
        return nullptr;
    }
    ++at_;
    ExprPtr expr = Make(Expr::Kind::Number);
    expr->text = yes ? "-1" : "0";
    return expr;
}

ExprPtr Parser::ParseCall() {
    ExprPtr expr = Make(Expr::Kind::Call);
    std::string name = UpperAscii(tokens_[at_++].text);
    if (name.back() == '$') {
        name.pop_back();
    }
    expr->function = FindFunction(name);
    if (!expr->function) {
        Throw(Failure::UnknownFunction, ToQString(name));
    }
    ExpectSign("(");
    if (!TakeSign(")")) {
        do {
            Adopt(*expr, TakeSign("*") ? Make(Expr::Kind::Star) : ParseExpr());
        } while (TakeSign(","));
        ExpectSign(")");
    }
    CheckCall(*expr);
    return expr;
}

void Parser::CheckCall(const Expr& call) const {
    const Function& function = *call.function;
    const auto count = static_cast<int>(call.args.size());
    const bool star = std::any_of(call.args.begin(), call.args.end(),
                                  [](const ExprPtr& arg) { return arg->kind == Expr::Kind::Star; });
    const bool halfPair = function.form == Function::Form::Switch && count % 2 != 0;
    if (count < function.least || count > function.most || halfPair ||
        (star && function.name != "COUNT")) {
        Throw(Failure::SyntaxError, ToQString(function.name));
    }
}

ExprPtr Parser::ParseColumn() {
    ExprPtr expr = Make(Expr::Kind::Column);
    expr->name = TakeName();
    while (IsSign(".") || IsSign("!")) {
        ++at_;
        expr->qualifier = expr->name;
        if (TakeSign("*")) {
            expr->kind = Expr::Kind::Star;
            expr->name = {};
            return expr;
        }
        // Behind a point every word is a name.
        if (Peek().kind != Token::Kind::Word && Peek().kind != Token::Kind::Name) {
            Fail();
        }
        expr->name = tokens_[at_++].text;
    }
    return expr;
}

ExprPtr Parser::ParseSubquery(Expr::Kind kind) {
    ExprPtr expr = Make(kind);
    ExpectSign("(");
    expr->query = ParseQuery();
    ExpectSign(")");
    return expr;
}

ExprPtr Parser::ParseCriterion(const QByteArray& source) {
    Parser parser(source);
    ExprPtr expr = parser.ParseExpr();
    parser.ExpectEnd();
    return expr;
}

}  // namespace sql
