#include "platform/sql/functiontable.h"

#include "platform/convert.h"

#include <algorithm>
#include <unordered_map>

namespace sql {

const Function* FindFunction(std::string_view upperName) {
    static const std::unordered_map<std::string_view, const Function*> functions = [] {
        std::unordered_map<std::string_view, const Function*> map;
        for (const auto table : {TextFunctions(), NumberFunctions(), DateFunctions()}) {
            for (const Function& function : table) {
                map.emplace(function.name, &function);
            }
        }
        return map;
    }();
    const auto found = functions.find(upperName);
    return found == functions.end() ? nullptr : found->second;
}

QVariant Evaluate(const Function& function, const QList<QVariant>& arguments) {
    if (!function.takesNull && std::any_of(arguments.begin(), arguments.end(), convert::IsNull)) {
        return {};
    }
    return function.evaluate(arguments);
}

}  // namespace sql
