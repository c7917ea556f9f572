#include "platform/sql/errors.h"
#include "platform/sql/writer.h"

#include <string>

namespace sql {

void Writer::Call(const Expr& expr) {
    const Function* function = FindFunction(expr.text);
    if (!function) {
        Throw(Failure::UnknownFunction, ToQString(expr.text));
    }
    const bool star = !expr.args.empty() && expr.args[0]->kind == Expr::Kind::Star;
    const auto count = static_cast<int>(expr.args.size());
    if (count < function->least || count > function->most || (star && expr.text != "COUNT")) {
        Throw(Failure::SyntaxError, ToQString(expr.text));
    }
    switch (function->form) {
        case Function::Form::Written:
            WrittenCall(expr);
            break;
        case Function::Form::Aggregate:
            Raw(function->name);
            Raw("(");
            // Min and Max compare texts.
            if (star) {
                Raw("*");
            } else {
                CollatedValue(*expr.args[0]);
            }
            Raw(")");
            break;
        default:
            Raw("dao_");
            FunctionOf(function->name, expr);
    }
}

void Writer::WrittenCall(const Expr& expr) {
    const auto& args = expr.args;
    if (expr.text == "NZ") {
        Raw("ifnull(");
        Value(*args[0]);
        Raw(", ");
        if (args.size() == 2) {
            Value(*args[1]);
        } else {
            Raw("''");
        }
        Raw(")");
        return;
    }
    Raw("CASE");
    if (expr.text == "CHOOSE") {
        Raw(" dao_clng(");
        Value(*args[0]);
        Raw(")");
        for (std::size_t i = 1; i < args.size(); ++i) {
            Raw(" WHEN ");
            Raw(std::to_string(i));
            Raw(" THEN ");
            Value(*args[i]);
        }
    } else {  // IIF and SWITCH: condition, value, ...
        std::size_t i = 0;
        for (; i + 1 < args.size(); i += 2) {
            Raw(" WHEN ");
            Condition(*args[i], true);
            Raw(" THEN ");
            Value(*args[i + 1]);
        }
        if (i < args.size()) {
            if (expr.text == "SWITCH") {
                Throw(Failure::SyntaxError, ToQString(expr.text));
            }
            Raw(" ELSE ");
            Value(*args[i]);
        }
    }
    Raw(" END");
}

}  // namespace sql
