#include "platform/dao/functions.h"

#include "platform/convert.h"
#include "platform/dao/connection.h"
#include "platform/dao/enginefailure.h"
#include "platform/dao/errors.h"
#include "platform/sql/collation.h"
#include "platform/sql/functiontable.h"
#include "platform/sql/likepattern.h"

#include <QString>

#include <algorithm>
#include <memory>
#include <new>
#include <sqlite3.h>
#include <string>
#include <string_view>

namespace dao {

namespace {

using sql::Function;

// Bytes of the longest value and of the longest text of SQL: far beyond what a catalogue holds, and
// little enough that no chain of texts joined to themselves fills the memory.
constexpr int LongestValue = 6'000'000;

std::string_view Utf8Of(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return {text, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

QString TextOf(sqlite3_value* value) {
    return QString::fromUtf8(Utf8Of(value));
}

QVariant VariantOf(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
        case SQLITE_NULL:
            return {};
        case SQLITE_INTEGER:
            return static_cast<qlonglong>(sqlite3_value_int64(value));
        case SQLITE_FLOAT:
            return sqlite3_value_double(value);
        default:
            return TextOf(value);
    }
}

void SetResult(sqlite3_context* context, const QVariant& result) {
    if (convert::IsNull(result)) {
        return;  // a function that gives nothing gives Null
    }
    if (result.typeId() == QMetaType::QString) {
        const QByteArray utf8 = result.toString().toUtf8();
        sqlite3_result_text64(context, utf8.constData(), static_cast<sqlite3_uint64>(utf8.size()),
                              SQLITE_TRANSIENT, SQLITE_UTF8);
    } else if (result.typeId() == QMetaType::Double) {
        sqlite3_result_double(context, result.toDouble());
    } else {
        sqlite3_result_int64(context, result.toLongLong());
    }
}

// No exception may cross the engine's frames; the number travels in front of the description.
template <typename Work>
void Guarded(sqlite3_context* context, Work work) {
    try {
        work();
    } catch (const Erro& erro) {
        const QByteArray text =
            "erro " + QByteArray::number(erro.Number()) + ": " + erro.Description().toUtf8();
        sqlite3_result_error(context, text.constData(), static_cast<int>(text.size()));
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    }
}

void CallFunction(sqlite3_context* context, int count, sqlite3_value** values) {
    Guarded(context, [&] {
        QList<QVariant> arguments(count);
        std::transform(values, values + count, arguments.begin(), VariantOf);
        const auto* function = static_cast<const Function*>(sqlite3_user_data(context));
        SetResult(context, sql::Evaluate(*function, arguments));
    });
}

using Operation = QVariant (*)(const QVariant&, const QVariant&);

template <Operation Operate>
void CallOperation(sqlite3_context* context, int, sqlite3_value** values) {
    Guarded(context,
            [&] { SetResult(context, Operate(VariantOf(values[0]), VariantOf(values[1]))); });
}

// Texts are joined for every row of a long result, so they are not converted on the way.
void CallConcat(sqlite3_context* context, int count, sqlite3_value** values) {
    if (sqlite3_value_type(values[0]) != SQLITE_TEXT ||
        sqlite3_value_type(values[1]) != SQLITE_TEXT) {
        CallOperation<sql::Concat>(context, count, values);
        return;
    }
    std::string joined(Utf8Of(values[0]));
    joined += Utf8Of(values[1]);
    sqlite3_result_text64(context, joined.data(), joined.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

// (value, three numbers of its column's type, name of the column): what the column keeps.
template <bool Required>
void CallStore(sqlite3_context* context, int, sqlite3_value** values) {
    Guarded(context, [&] {
        const auto type =
            sql::ColumnType::OfCode(sqlite3_value_int(values[1]), sqlite3_value_int(values[2]),
                                    sqlite3_value_int(values[3]));
        try {
            const QVariant kept = type.Store(VariantOf(values[0]));
            if (Required && convert::IsNull(kept)) {
                Throw(Failure::NotNull);
            }
            SetResult(context, kept);
        } catch (const Erro& erro) {
            throw Erro(erro.Number(), erro.Description() + u' ' + TextOf(values[4]));
        }
    });
}

void CallDateText(sqlite3_context* context, int, sqlite3_value** values) {
    Guarded(context, [&] {
        const QVariant value = VariantOf(values[0]);
        const bool date = !convert::IsNull(value) && !sql::IsText(value);
        SetResult(context, date ? QVariant(sql::DateText(value)) : value);
    });
}

void DeletePattern(void* pattern) {
    delete static_cast<sql::Pattern*>(pattern);
}

// The pattern is made ready once for a statement.
template <sql::Accents Accents>
void CallLike(sqlite3_context* context, int, sqlite3_value** values) {
    if (sqlite3_value_type(values[0]) == SQLITE_NULL ||
        sqlite3_value_type(values[1]) == SQLITE_NULL) {
        return;
    }
    constexpr int Place = 1;  // of the pattern among the arguments
    Guarded(context, [&] {
        const auto* pattern = static_cast<const sql::Pattern*>(sqlite3_get_auxdata(context, Place));
        std::unique_ptr<sql::Pattern> made;
        if (!pattern) {
            made = std::make_unique<sql::Pattern>(TextOf(values[Place]), Accents);
            pattern = made.get();
        }
        const bool matches = sqlite3_value_type(values[0]) == SQLITE_FLOAT
                                 ? pattern->Matches(convert::ToText(VariantOf(values[0])))
                                 : pattern->MatchesUtf8(Utf8Of(values[0]));
        sqlite3_result_int(context, matches);
        if (made) {
            // Last, as the engine may delete it at once.
            sqlite3_set_auxdata(context, Place, made.release(), DeletePattern);
        }
    });
}

// First and Last: the value of a row as it comes, Null included.
struct Kept {
    sqlite3_value* value;
    bool any;
};

Kept& KeptOf(sqlite3_context* context) {
    auto* kept = static_cast<Kept*>(sqlite3_aggregate_context(context, sizeof(Kept)));
    return kept ? *kept : throw std::bad_alloc();
}

template <bool First>
void KeepStep(sqlite3_context* context, int, sqlite3_value** values) {
    Guarded(context, [&] {
        Kept& kept = KeptOf(context);
        if (First && kept.any) {
            return;
        }
        sqlite3_value_free(kept.value);
        kept.value = sqlite3_value_dup(values[0]);
        kept.any = true;
    });
}

void KeepFinal(sqlite3_context* context) {
    Guarded(context, [&] {
        if (sqlite3_value* value = KeptOf(context).value) {
            sqlite3_result_value(context, value);
            sqlite3_value_free(value);
        }
    });
}

// 1 when the time of the present slice of reading is over. Called for every row that is passed by,
// so it looks at the clock only now and then.
void CallPulse(sqlite3_context* context, int, sqlite3_value**) {
    constexpr unsigned CallsPerLook = 16;
    static unsigned calls = 0;
    static bool over = false;
    if (over || ++calls % CallsPerLook == 0) {
        const Connection& connection = Connection::Of(sqlite3_context_db_handle(context));
        over = Connection::Clock::now() >= connection.Deadline();
    }
    sqlite3_result_int(context, over);
}

int CompareCallback(void*, int aLength, const void* a, int bLength, const void* b) {
    return sql::collation::CompareUtf8(static_cast<const char*>(a), aLength,
                                       static_cast<const char*>(b), bLength);
}

constexpr int Flags = SQLITE_UTF8 | SQLITE_INNOCUOUS;

void RegisterTable(sqlite3* handle, std::span<const Function> table) {
    for (const Function& function : table) {
        if (function.form != Function::Form::Evaluated) {
            continue;
        }
        const std::string name = "dao_" + std::string(function.name);
        const int flags = function.constant ? Flags | SQLITE_DETERMINISTIC : Flags;
        Check(handle, sqlite3_create_function_v2(handle, name.c_str(), -1, flags,
                                                 const_cast<Function*>(&function), CallFunction,
                                                 nullptr, nullptr, nullptr));
    }
}

}  // namespace

void RegisterFunctions(sqlite3* handle) {
    Check(handle, sqlite3_create_collation_v2(handle, sql::collation::Name, SQLITE_UTF8, nullptr,
                                              CompareCallback, nullptr));
    for (const auto table : {sql::TextFunctions(), sql::NumberFunctions(), sql::DateFunctions()}) {
        RegisterTable(handle, table);
    }

    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, LongestValue);

    struct Plain {
        const char* name;
        void (*call)(sqlite3_context*, int, sqlite3_value**);
        int arguments = 2;
    };
    constexpr Plain Operations[] = {
        {"dao_store", CallStore<false>, 5},
        {"dao_storekey", CallStore<true>, 5},
        {"dao_datetext", CallDateText, 1},
        {"dao_like", CallLike<sql::Accents::Minded>},
        {"dao_liketyped", CallLike<sql::Accents::AsTyped>},
        {"dao_concat", CallConcat},
        {"dao_add", CallOperation<sql::Add>},
        {"dao_subtract", CallOperation<sql::Subtract>},
        {"dao_multiply", CallOperation<sql::Multiply>},
        {"dao_divide", CallOperation<sql::Divide>},
        {"dao_idiv", CallOperation<sql::IntDivide>},
        {"dao_mod", CallOperation<sql::Modulo>},
        {"dao_pow", CallOperation<sql::Power>},
    };
    for (const Plain& operation : Operations) {
        Check(handle, sqlite3_create_function_v2(handle, operation.name, operation.arguments,
                                                 Flags | SQLITE_DETERMINISTIC, nullptr,
                                                 operation.call, nullptr, nullptr, nullptr));
    }
    // Not for what lies in the file (views, say): it belongs to one reading.
    Check(handle,
          sqlite3_create_function_v2(handle, "dao_pulse", 0, SQLITE_UTF8 | SQLITE_DIRECTONLY,
                                     nullptr, CallPulse, nullptr, nullptr, nullptr));
    Check(handle, sqlite3_create_function_v2(handle, "dao_first", 1, Flags, nullptr, nullptr,
                                             KeepStep<true>, KeepFinal, nullptr));
    Check(handle, sqlite3_create_function_v2(handle, "dao_last", 1, Flags, nullptr, nullptr,
                                             KeepStep<false>, KeepFinal, nullptr));
}

}  // namespace dao
