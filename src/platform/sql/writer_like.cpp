// LIKE: a range of the column's index where the pattern has a literal beginning, and the pattern.

#include "platform/sql/collation.h"
#include "platform/sql/likepattern.h"
#include "platform/sql/writer.h"

namespace sql {

void Writer::Like(const Expr& expr, bool met) {
    const Expr& value = *expr.args[0];
    const Expr& pattern = *expr.args[1];
    if (pattern.kind == Expr::Kind::Text) {
        const Pattern refusesBadOnes(ToQString(pattern.text));
        if (met && !expr.negated && pattern.text == "*") {
            Operand(value);
            Raw(" IS NOT NULL");
            return;
        }
        if (!expr.negated && value.kind == Expr::Kind::Column && BoundsARange(pattern.text) &&
            MayBeText(value)) {
            // The range lets the column's index be used, the pattern decides.
            LikePrefix(value, pattern.text);
            Raw(" AND ");
            LikeTest(expr);
            return;
        }
    }
    Raw(expr.negated ? "NOT " : "");
    LikeTest(expr);
}

void Writer::LikeTest(const Expr& expr) {
    FunctionOf(accents_ == Accents::AsTyped ? "dao_liketyped" : "dao_like", expr, true);
}

// The order puts base letters first, accents after them: what begins so in any accents is one
// range, and the accents typed are its lower end.
void Writer::LikePrefix(const Expr& column, std::string_view pattern) {
    const std::string begin(LiteralBeginning(pattern));
    Value(column);
    Raw(" >= ");
    Text(begin);
    Raw(collation::Clause);
    Raw(" AND ");
    Value(column);
    const bool whole = begin.size() == pattern.size() && accents_ == Accents::Minded;
    Raw(whole ? " <= " : " < ");
    Text(whole ? begin : begin + std::string(collation::Last));
    Raw(collation::Clause);
}

void Writer::Range(const Expr& term) {
    if (term.kind == Expr::Kind::Like) {
        LikePrefix(*term.args[0], term.args[1]->text);
    } else {
        Logical(term, true);
    }
}

void Writer::Test(const Expr& term) {
    if (term.kind == Expr::Kind::Like) {
        const Pattern refusesBadOnes(ToQString(term.args[1]->text));
        LikeTest(term);
    } else {
        Logical(term, true);
    }
}

}  // namespace sql
