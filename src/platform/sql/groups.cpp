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

// An item of the select list by its name or place.
bool IsItem(const Select& select, const Expr& expr) {
    return expr.kind == Expr::Kind::Number ||
           (expr.kind == Expr::Kind::Column && expr.qualifier.empty() &&
            std::any_of(select.items.begin(), select.items.end(),
                        [&](const SelectItem& item) { return SameName(item.alias, expr.name); }));
}

class Checker {
public:
    // The tables of `select` are the innermost ones in sight.
    Checker(const Select& select, Names& names)
        : select_(select), names_(names), depth_(names.Depth()) {}

    void Check(const Expr& expr) const {
        const bool inside = names_.Depth() > depth_;  // of a query within an expression
        const bool total = expr.kind == Expr::Kind::Call && expr.function->IsAggregate();
        if (IsGrouped(expr) || (total && !inside)) {
            return;
        }
        const bool column = expr.kind == Expr::Kind::Column;
        const bool own = column ? names_.DepthOf(expr).value_or(inside ? 0 : depth_) == depth_
                                : expr.kind == Expr::Kind::Star && !inside;
        if (own) {
            Throw(Failure::NotGrouped, column ? ToQString(expr.name) : u"*"_s);
        }
        for (const ExprPtr& arg : expr.args) {
            Check(*arg);
        }
        if (expr.query) {
            Check(*expr.query);
        }
    }

    void Check(const ExprPtr& expr) const {
        if (expr) {
            Check(*expr);
        }
    }

    void Check(const Select& select, const std::vector<OrderTerm>& order) const {
        for (const SelectItem& item : select.items) {
            Check(item.expr);
        }
        Check(select.having);
        for (const OrderTerm& term : order) {
            if (!IsItem(select, *term.expr)) {
                Check(term.expr);
            }
        }
    }

private:
    void Check(const Query& query) const {
        for (const Query::Arm& arm : query.arms) {
            if (arm.nested) {
                Check(*arm.nested);
            } else {
                CheckInside(*arm.select, query.order);
            }
        }
    }

    void CheckInside(const Select& select, const std::vector<OrderTerm>& order) const {
        const Names::Scope scope(names_, select);
        Check(select, order);
        for (const SourcePtr& source : select.from) {
            Check(*source);
        }
        Check(select.where);
        for (const ExprPtr& group : select.groupBy) {
            Check(group);
        }
    }

    void Check(const Source& source) const {
        if (source.kind == Source::Kind::Join) {
            Check(*source.left);
            Check(*source.right);
            Check(source.on);
        } else if (source.kind == Source::Kind::Derived) {
            Check(*source.query);
        }
    }

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
    Names& names_;
    std::size_t depth_;
};

}  // namespace

void CheckGroups(const Select& select, const std::vector<OrderTerm>& order, Names& names) {
    const bool grouped =
        !select.groupBy.empty() || select.having ||
        std::any_of(select.items.begin(), select.items.end(),
                    [](const SelectItem& item) { return HasAggregate(*item.expr); });
    if (!grouped) {
        return;
    }
    Checker(select, names).Check(select, order);
}

}  // namespace sql
