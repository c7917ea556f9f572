#include "platform/sql/errors.h"
#include "platform/sql/parser.h"

#include <QString>

using namespace std::string_view_literals;

using namespace Qt::StringLiterals;

namespace sql {

namespace {

// Statements of the dialect that are known and not carried over.
constexpr std::string_view RefusedStatements[] = {
    "PARAMETERS"sv, "TRANSFORM"sv, "EXEC"sv,   "EXECUTE"sv,  "PROCEDURE"sv, "GRANT"sv,
    "REVOKE"sv,     "BEGIN"sv,     "COMMIT"sv, "ROLLBACK"sv, "ADD"sv,
};

// The engine joins up to 64 tables and 500 selects.
constexpr int MaxSources = 60;
constexpr std::size_t MaxArms = 400;

}  // namespace

Command Parser::ParseCommand(const QByteArray& source) {
    Command command;
    command.source = source;
    Parser parser(command.source);
    if (parser.IsWord("SELECT") || parser.IsSign("(")) {
        command.body = parser.ParseQuery();
    } else if (parser.TakeWord("INSERT")) {
        command.body = parser.ParseInsert();
    } else if (parser.TakeWord("UPDATE")) {
        command.body = parser.ParseUpdate();
    } else if (parser.TakeWord("DELETE")) {
        command.body = parser.ParseDelete();
    } else if (parser.TakeWord("CREATE")) {
        command.body = parser.ParseCreate().body;
    } else if (parser.TakeWord("DROP")) {
        command.body = parser.ParseDrop().body;
    } else if (parser.TakeWord("ALTER")) {
        command.body = parser.ParseAlterTable();
    } else {
        for (const std::string_view word : RefusedStatements) {
            if (parser.IsWord(word)) {
                Throw(Failure::NotSupported, ToQString(word));
            }
        }
        Throw(Failure::MissingExpression);
    }
    parser.ExpectEnd();
    return command;
}

QueryPtr Parser::ParseQuery() {
    const Nesting nesting(*this);
    auto query = std::make_unique<Query>();
    query->arms.push_back(ParseArm());
    while (TakeWord("UNION")) {
        if (query->arms.size() > MaxArms) {
            Fail();
        }
        const bool all = TakeWord("ALL");
        query->arms.push_back(ParseArm());
        query->arms.back().all = all;
    }
    if (TakeWord("ORDER")) {
        ExpectWord("BY");
        do {
            OrderTerm term;
            term.expr = ParseExpr();
            term.descending = TakeWord("DESC");
            if (!term.descending) {
                TakeWord("ASC");
            }
            query->order.push_back(std::move(term));
        } while (TakeSign(","));
    }
    return query;
}

Query::Arm Parser::ParseArm() {
    Query::Arm arm;
    if (TakeSign("(")) {
        arm.nested = ParseQuery();
        ExpectSign(")");
    } else {
        arm.select = ParseSelect();
    }
    return arm;
}

std::unique_ptr<Select> Parser::ParseSelect() {
    ExpectWord("SELECT");
    auto select = std::make_unique<Select>();
    for (;;) {
        if (TakeWord("DISTINCT")) {
            select->distinct = true;
        } else if (TakeWord("DISTINCTROW")) {
            select->distinctRow = true;
        } else if (IsWord("TOP") && Peek(1).kind == Token::Kind::Number) {
            ++at_;
            select->top = TakeNumber();
            select->topPercent = TakeWord("PERCENT");
        } else if (!TakeWord("ALL")) {
            break;
        }
    }
    ParseItems(*select);
    if (TakeWord("INTO")) {
        select->into = TakeName();
    }
    if (TakeWord("FROM")) {
        do {
            if (select->from.size() > MaxSources) {
                Fail();
            }
            select->from.push_back(ParseSource());
        } while (TakeSign(","));
    }
    select->where = ParseWhere();
    if (TakeWord("GROUP")) {
        ExpectWord("BY");
        do {
            select->groupBy.push_back(ParseExpr());
        } while (TakeSign(","));
    }
    if (TakeWord("HAVING")) {
        select->having = ParseExpr();
    }
    return select;
}

void Parser::ParseItems(Select& select) {
    do {
        SelectItem item;
        item.expr = TakeSign("*") ? Make(Expr::Kind::Star) : ParseExpr();
        if (TakeWord("AS")) {
            item.alias = TakeName();
        }
        select.items.push_back(std::move(item));
    } while (TakeSign(","));
}

ExprPtr Parser::ParseWhere() {
    return TakeWord("WHERE") ? ParseExpr() : nullptr;
}

SourcePtr Parser::ParseSource() {
    const Nesting nesting(*this);
    SourcePtr source = ParseSourcePrimary();
    for (int joined = 1;; ++joined) {
        Source::Join join = Source::Join::Inner;
        if (TakeWord("LEFT")) {
            join = Source::Join::Left;
            TakeWord("OUTER");
        } else if (TakeWord("RIGHT")) {
            join = Source::Join::Right;
            TakeWord("OUTER");
        } else if (!TakeWord("INNER") && !IsWord("JOIN")) {
            break;
        }
        ExpectWord("JOIN");
        if (joined > MaxSources) {
            Fail();
        }
        auto both = std::make_unique<Source>();
        both->kind = Source::Kind::Join;
        both->join = join;
        both->left = std::move(source);
        both->right = ParseSourcePrimary();
        ExpectWord("ON");
        both->on = ParseExpr();
        source = std::move(both);
    }
    return source;
}

SourcePtr Parser::ParseSourcePrimary() {
    SourcePtr source;
    if (TakeSign("(")) {
        if (IsWord("SELECT")) {
            source = std::make_unique<Source>();
            source->kind = Source::Kind::Derived;
            source->query = ParseQuery();
        } else {
            source = ParseSource();
        }
        ExpectSign(")");
        if (source->kind == Source::Kind::Join) {
            return source;
        }
    } else {
        source = std::make_unique<Source>();
        source->name = TakeName();
    }
    if (IsWord("IN")) {
        Throw(Failure::NotSupported, u"IN"_s);  // a table of another file
    }
    if (TakeWord("AS") || IsName()) {
        source->alias = TakeName();
    }
    return source;
}

// Tables with commas between them: every row of one with every row of the others.
SourcePtr Parser::ParseSourceList() {
    SourcePtr source = ParseSource();
    for (int joined = 1; TakeSign(","); ++joined) {
        if (joined > MaxSources) {
            Fail();
        }
        auto both = std::make_unique<Source>();
        both->kind = Source::Kind::Join;
        both->join = Source::Join::Cross;
        both->left = std::move(source);
        both->right = ParseSource();
        source = std::move(both);
    }
    return source;
}

Insert Parser::ParseInsert() {
    Insert insert;
    ExpectWord("INTO");
    insert.table = TakeName();
    if (IsSign("(") && !IsWord("SELECT", 1)) {
        insert.columns = TakeNameList();
    }
    if (TakeWord("VALUES")) {
        ExpectSign("(");
        do {
            insert.values.push_back(ParseExpr());
        } while (TakeSign(","));
        ExpectSign(")");
    } else {
        insert.query = ParseQuery();
    }
    return insert;
}

Update Parser::ParseUpdate() {
    Update update;
    TakeWord("DISTINCTROW");
    update.target = ParseSourceList();
    ExpectWord("SET");
    do {
        Assignment assignment;
        assignment.column = TakeName();
        while (TakeSign(".") || TakeSign("!")) {
            assignment.qualifier = assignment.column;
            assignment.column = TakeName();
        }
        ExpectSign("=");
        assignment.value = ParseExpr();
        update.assignments.push_back(std::move(assignment));
    } while (TakeSign(","));
    update.where = ParseWhere();
    return update;
}

Delete Parser::ParseDelete() {
    Delete deletion;
    TakeWord("DISTINCTROW");
    // Columns may be listed where the whole row goes; they only tell which table's.
    while (!IsWord("FROM")) {
        if (!TakeSign("*")) {
            const ExprPtr which = ParseColumn();
            if (which->qualifier.empty()) {
                deletion.columns.push_back(which->name);
            } else if (deletion.table.empty() || SameName(deletion.table, which->qualifier)) {
                deletion.table = which->qualifier;
            } else {
                Throw(Failure::NotSupported, ToQString(which->qualifier));
            }
        }
        if (!TakeSign(",")) {
            break;
        }
    }
    ExpectWord("FROM");
    deletion.from = ParseSourceList();
    deletion.where = ParseWhere();
    return deletion;
}

}  // namespace sql
