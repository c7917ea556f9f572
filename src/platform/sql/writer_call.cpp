#include "platform/sql/errors.h"
#include "platform/sql/writer.h"

#include <string>

namespace sql {

using Form = Function::Form;

void Writer::Call(const Expr& expr) {
    const Function& function = *expr.function;
    switch (function.form) {
        case Form::Evaluated: {
            // Format alone writes a date as text, with a pattern as the pattern says.
            const bool texts = function.dates == Function::Dates::AsText ||
                               (function.name == "FORMAT" && expr.args.size() == 1);
            Raw("dao_");
            FunctionOf(function.name, expr, texts);
            return;
        }
        case Form::Aggregate:
            Raw(function.name);
            Raw("(");
            CollatedValue(*expr.args[0]);  // Min and Max compare texts
            Raw(")");
            return;
        case Form::First:
        case Form::Last:
            Raw("dao_");
            FunctionOf(function.name, expr);
            return;
        case Form::Nz:
            Raw("ifnull(");
            Choice(*expr.args[0], names_.TypeOf(expr));
            Raw(", ");
            if (expr.args.size() == 2) {
                Choice(*expr.args[1], names_.TypeOf(expr));
            } else {
                Raw("''");
            }
            Raw(")");
            return;
        case Form::IsNull:  // a condition, see Logical
        case Form::Iif:
        case Form::Switch:
        case Form::Choose:
            Cases(expr, names_.TypeOf(expr));
    }
}

// One of several values: where some are texts, a date becomes one too.
void Writer::Choice(const Expr& expr, Type type) {
    if (type == Type::Text) {
        TextValue(expr);
    } else {
        Value(expr);
    }
}

void Writer::Cases(const Expr& expr, Type type) {
    const auto& args = expr.args;
    Raw("CASE");
    if (expr.function->form == Form::Choose) {
        Raw(" dao_clng(");
        Value(*args[0]);
        Raw(")");
        for (std::size_t i = 1; i < args.size(); ++i) {
            Raw(" WHEN ");
            Raw(std::to_string(i));
            Raw(" THEN ");
            Choice(*args[i], type);
        }
    } else {  // condition, value, ... and for IIf the other value
        std::size_t i = 0;
        for (; i + 1 < args.size(); i += 2) {
            Raw(" WHEN ");
            Condition(*args[i], true);
            Raw(" THEN ");
            Choice(*args[i + 1], type);
        }
        if (i < args.size()) {
            Raw(" ELSE ");
            Choice(*args[i], type);
        }
    }
    Raw(" END");
}

}  // namespace sql
