#include "platform/sql/errors.h"
#include "platform/sql/parser.h"

#include <QString>

using namespace Qt::StringLiterals;

namespace sql {

Command Parser::ParseCreate() {
    Command command;
    if (TakeWord("TABLE")) {
        command.body = ParseCreateTable();
    } else if (TakeWord("INDEX")) {
        command.body = ParseCreateIndex(false);
    } else if (TakeWord("UNIQUE")) {
        ExpectWord("INDEX");
        command.body = ParseCreateIndex(true);
    } else if (TakeWord("VIEW")) {
        command.body = ParseCreateView();
    } else {
        Fail();
    }
    return command;
}

Command Parser::ParseDrop() {
    Command command;
    if (TakeAnyWord({"TABLE", "VIEW"})) {
        command.body = DropTable{TakeName()};
    } else if (TakeWord("INDEX")) {
        DropIndex drop;
        drop.index = TakeName();
        ExpectWord("ON");
        drop.table = TakeName();
        command.body = drop;
    } else {
        Fail();
    }
    return command;
}

CreateTable Parser::ParseCreateTable() {
    CreateTable create;
    create.table = TakeName();
    ExpectSign("(");
    do {
        if (BeginsConstraint()) {
            create.constraints.push_back(ParseTableConstraint());
        } else {
            create.columns.push_back(ParseColumnDefinition());
        }
    } while (TakeSign(","));
    ExpectSign(")");
    return create;
}

bool Parser::BeginsConstraint() const {
    return (IsWord("CONSTRAINT") && IsName(1)) || (IsWord("PRIMARY") && IsWord("KEY", 1)) ||
           (IsWord("FOREIGN") && IsWord("KEY", 1)) || (IsWord("UNIQUE") && IsSign("(", 1)) ||
           (IsWord("CHECK") && IsSign("(", 1));
}

ColumnDefinition Parser::ParseColumnDefinition() {
    ColumnDefinition column;
    column.name = TakeName();
    column.type = ParseColumnType();
    while (ParseColumnConstraint(column)) {
    }
    return column;
}

WrittenType Parser::ParseColumnType() {
    WrittenType type;
    if (Peek().kind != Token::Kind::Word) {
        Fail();
    }
    type.name = ToQString(tokens_[at_++].text).toUpper();
    // Types of two words.
    const bool national = type.name == "NATIONAL"_L1;
    if (TakeAnyWord({"PRECISION", "VARYING"}) || (national && TakeWord("CHAR"))) {
        TakeWord("VARYING");
        type.name = national ? u"CHAR"_s : type.name;
    }
    if (TakeSign("(")) {
        do {
            type.sizes.append(ToQString(TakeNumber()));
        } while (TakeSign(","));
        ExpectSign(")");
    }
    return type;
}

bool Parser::ParseColumnConstraint(ColumnDefinition& column) {
    if (TakeWord("NOT")) {
        ExpectWord("NULL");
        column.notNull = true;
        return true;
    }
    if (TakeWord("NULL")) {
        column.mayBeNull = true;
        return true;
    }
    if (TakeAnyWord({"COMPRESSION", "COMP"})) {
        return true;
    }
    if (IsWord("WITH") && (IsWord("COMPRESSION", 1) || IsWord("COMP", 1))) {
        at_ += 2;  // how the texts lie on disk
        return true;
    }
    if (TakeWord("DEFAULT")) {
        TakeSign("=");
        column.defaultValue = ParseExpr(ConcatLevel);
        return true;
    }
    ConstraintDefinition constraint;
    if (TakeWord("CONSTRAINT")) {
        constraint.name = TakeName();
    }
    constraint.columns = {column.name};
    if (TakeWord("PRIMARY")) {
        ExpectWord("KEY");
        constraint.kind = ConstraintDefinition::Kind::PrimaryKey;
    } else if (TakeWord("UNIQUE")) {
        constraint.kind = ConstraintDefinition::Kind::Unique;
    } else if (IsWord("REFERENCES")) {
        RefuseReferences();
    } else if (TakeWord("CHECK")) {
        constraint.kind = ConstraintDefinition::Kind::Check;
        ExpectSign("(");
        constraint.check = ParseExpr();
        ExpectSign(")");
    } else if (!constraint.name.empty() && TakeWord("NOT")) {
        ExpectWord("NULL");
        column.notNull = true;
        return true;
    } else if (constraint.name.empty()) {
        return false;
    } else {
        Fail();
    }
    column.constraints.push_back(std::move(constraint));
    return true;
}

ConstraintDefinition Parser::ParseTableConstraint() {
    ConstraintDefinition constraint;
    if (TakeWord("CONSTRAINT")) {
        constraint.name = TakeName();
    }
    if (TakeWord("PRIMARY")) {
        ExpectWord("KEY");
        constraint.kind = ConstraintDefinition::Kind::PrimaryKey;
        constraint.columns = TakeNameList();
    } else if (TakeWord("UNIQUE")) {
        constraint.kind = ConstraintDefinition::Kind::Unique;
        constraint.columns = TakeNameList();
    } else if (TakeWord("NOT")) {
        ExpectWord("NULL");
        constraint.kind = ConstraintDefinition::Kind::NotNull;
        constraint.columns = TakeNameList();
    } else if (TakeWord("CHECK")) {
        constraint.kind = ConstraintDefinition::Kind::Check;
        ExpectSign("(");
        constraint.check = ParseExpr();
        ExpectSign(")");
    } else {
        RefuseReferences();
    }
    return constraint;
}

// A link that nobody enforces would promise what is not kept, and scripts bring rows in any order.
void Parser::RefuseReferences() {
    while (!IsWord("REFERENCES") && Peek().kind != Token::Kind::End) {
        ++at_;
    }
    ExpectWord("REFERENCES");
    Throw(Failure::NotSupported, u"REFERENCES "_s + ToQString(TakeName()));
}

AlterTable Parser::ParseAlterTable() {
    AlterTable alter;
    ExpectWord("TABLE");
    alter.table = TakeName();
    if (TakeWord("ADD")) {
        if (BeginsConstraint()) {
            alter.action = AlterTable::Action::AddConstraint;
            alter.constraint = ParseTableConstraint();
            return alter;
        }
        const auto columns = [&] {
            do {
                TakeWord("COLUMN");
                alter.columns.push_back(ParseColumnDefinition());
            } while (TakeSign(","));
        };
        TakeWord("COLUMN");
        const bool bracketed = TakeSign("(");
        columns();
        if (bracketed) {
            ExpectSign(")");
        }
        return alter;
    }
    if (TakeWord("ALTER")) {
        TakeWord("COLUMN");
        ParseAlterColumn(alter);
        return alter;
    }
    ExpectWord("DROP");
    if (IsWord("CONSTRAINT") && IsName(1)) {
        ++at_;
        alter.action = AlterTable::Action::DropConstraint;
        alter.dropped.push_back(TakeName());
        return alter;
    }
    alter.action = AlterTable::Action::DropColumns;
    do {
        TakeWord("COLUMN");
        alter.dropped.push_back(TakeName());
    } while (TakeSign(","));
    return alter;
}

void Parser::ParseAlterColumn(AlterTable& alter) {
    const bool sets = IsWord("SET", 1) && IsWord("DEFAULT", 2);
    const bool drops = IsWord("DROP", 1) && IsWord("DEFAULT", 2);
    if (!sets && !drops) {
        alter.action = AlterTable::Action::AlterColumn;
        alter.columns.push_back(ParseColumnDefinition());
        return;
    }
    alter.action = AlterTable::Action::SetDefault;
    ColumnDefinition& column = alter.columns.emplace_back();
    column.name = TakeName();
    at_ += 2;
    if (sets) {
        TakeSign("=");
        column.defaultValue = ParseExpr(ConcatLevel);
    }
}

CreateIndex Parser::ParseCreateIndex(bool unique) {
    CreateIndex create;
    create.unique = unique;
    create.index = TakeName();
    ExpectWord("ON");
    create.table = TakeName();
    ExpectSign("(");
    do {
        const std::string_view column = TakeName();
        const bool descending = TakeWord("DESC");
        if (!descending) {
            TakeWord("ASC");
        }
        create.columns.emplace_back(column, descending);
    } while (TakeSign(","));
    ExpectSign(")");
    if (!TakeWord("WITH")) {
        return create;
    }
    if (TakeWord("PRIMARY")) {
        create.option = CreateIndex::Option::Primary;
    } else if (TakeAnyWord({"DISALLOW", "IGNORE"})) {
        create.option = EqualWords(tokens_[at_ - 1].text, "DISALLOW")
                            ? CreateIndex::Option::DisallowNull
                            : CreateIndex::Option::IgnoreNull;
        ExpectWord("NULL");
    } else {
        Fail();
    }
    return create;
}

CreateView Parser::ParseCreateView() {
    CreateView create;
    create.view = TakeName();
    if (IsSign("(")) {
        create.columns = TakeNameList();
    }
    ExpectWord("AS");
    create.query = ParseQuery();
    return create;
}

}  // namespace sql
