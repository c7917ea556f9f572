#include "platform/sql/errors.h"
#include "platform/sql/writer.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sql {

namespace {

bool HasAggregate(const Expr& expr) {
    return (expr.kind == Expr::Kind::Call && expr.function->IsAggregate()) ||
           std::any_of(expr.args.begin(), expr.args.end(),
                       [](const ExprPtr& arg) { return HasAggregate(*arg); });
}

bool SameExpr(const Expr& a, const Expr& b) {
    if (a.kind == Expr::Kind::Column && b.kind == Expr::Kind::Column) {
        const bool anyTable = a.qualifier.empty() || b.qualifier.empty();
        return SameName(a.name, b.name) && (anyTable || SameName(a.qualifier, b.qualifier));
    }
    return a.kind == b.kind && a.op == b.op && a.negated == b.negated && a.text == b.text &&
           a.function == b.function && !a.query && !b.query &&
           std::equal(a.args.begin(), a.args.end(), b.args.begin(), b.args.end(),
                      [](const ExprPtr& x, const ExprPtr& y) { return SameExpr(*x, *y); });
}

class Checker {
public:
    explicit Checker(const Select& select) : select_(select) {}

    void Check(const Expr& expr) const {
        if (IsGrouped(expr) || (expr.kind == Expr::Kind::Call && expr.function->IsAggregate())) {
            return;
        }
        if (expr.kind == Expr::Kind::Column || expr.kind == Expr::Kind::Star) {
            Throw(Failure::NotGrouped, expr.name.empty() ? u"*"_s : ToQString(expr.name));
        }
        for (const ExprPtr& arg : expr.args) {
            Check(*arg);
        }
    }

    // An item of the select list by its name or place, which has been checked there.
    bool IsItem(const Expr& expr) const {
        return expr.kind == Expr::Kind::Number ||
               (expr.kind == Expr::Kind::Column && expr.qualifier.empty() &&
                std::any_of(
                    select_.items.begin(), select_.items.end(),
                    [&](const SelectItem& item) { return SameName(item.alias, expr.name); }));
    }

private:
    bool IsGrouped(const Expr& expr) const {
        for (const ExprPtr& group : select_.groupBy) {
            if (SameExpr(*group, expr)) {
                return true;
            }
            for (const SelectItem& item : select_.items) {
                if (item.expr.get() == &expr && group->kind == Expr::Kind::Column &&
                    SameName(item.alias, group->name)) {
                    return true;
                }
            }
        }
        return false;
    }

    const Select& select_;
};

}  // namespace

void CheckGroups(const Select& select, const std::vector<OrderTerm>& order) {
    const bool grouped =
        !select.groupBy.empty() || select.having ||
        std::any_of(select.items.begin(), select.items.end(),
                    [](const SelectItem& item) { return HasAggregate(*item.expr); });
    if (!grouped) {
        return;
    }
    const Checker checker(select);
    for (const SelectItem& item : select.items) {
        checker.Check(*item.expr);
    }
    if (select.having) {
        checker.Check(*select.having);
    }
    for (const OrderTerm& term : order) {
        if (!checker.IsItem(*term.expr)) {
            checker.Check(*term.expr);
        }
    }
}

}  // namespace sql
