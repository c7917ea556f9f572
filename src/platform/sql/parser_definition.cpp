#include "platform/sql/errors.h"
#include "platform/sql/parser.h"

#include <QString>

namespace sql {

Statement Parser::ParseCreate() {
    Statement statement;
    if (TakeWord("TABLE")) {
        statement.body = ParseCreateTable();
    } else if (TakeWord("INDEX")) {
        statement.body = ParseCreateIndex(false);
    } else if (TakeWord("UNIQUE")) {
        ExpectWord("INDEX");
        statement.body = ParseCreateIndex(true);
    } else if (TakeWord("VIEW")) {
        statement.body = ParseCreateView();
    } else {
        Fail();
    }
    return statement;
}

Statement Parser::ParseDrop() {
    Statement statement;
    if (TakeAnyWord({"TABLE", "VIEW"})) {
        statement.body = DropTable{TakeName()};
    } else if (TakeWord("INDEX")) {
        DropIndex drop;
        drop.index = TakeName();
        ExpectWord("ON");
        drop.table = TakeName();
        statement.body = drop;
    } else {
        Fail();
    }
    return statement;
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

ColumnType Parser::ParseColumnType() {
    ColumnType type;
    if (Peek().kind != Token::Kind::Word) {
        Fail();
    }
    type.name = ToQString(tokens_[at_++].text).toUpper().toStdString();
    // Types of two words.
    if (TakeAnyWord({"PRECISION", "VARYING"}) || (type.name == "NATIONAL" && TakeWord("CHAR"))) {
        TakeWord("VARYING");
        type.name = type.name == "NATIONAL" ? "CHAR" : type.name;
    }
    if (TakeSign("(")) {
        do {
            type.sizes.push_back(TakeNumber());
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
    if (TakeWord("NULL") || TakeAnyWord({"COMPRESSION", "COMP"})) {
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
        ParseReferences(constraint);
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
        ExpectWord("FOREIGN");
        ExpectWord("KEY");
        if (TakeWord("NO")) {
            ExpectWord("INDEX");
        }
        constraint.columns = TakeNameList();
        ParseReferences(constraint);
    }
    return constraint;
}

void Parser::ParseReferences(ConstraintDefinition& constraint) {
    ExpectWord("REFERENCES");
    constraint.kind = ConstraintDefinition::Kind::ForeignKey;
    constraint.foreignTable = TakeName();
    if (IsSign("(")) {
        constraint.foreignColumns = TakeNameList();
    }
    while (TakeWord("ON")) {
        const bool update = TakeWord("UPDATE");
        if (!update) {
            ExpectWord("DELETE");
        }
        if (TakeWord("SET")) {
            Throw(Failure::NotSupported, QStringLiteral("SET NULL"));
        }
        ExpectWord("CASCADE");
        (update ? constraint.cascadeUpdate : constraint.cascadeDelete) = true;
    }
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
        TakeWord("COLUMN");
        alter.column = ParseColumnDefinition();
    } else if (TakeWord("ALTER")) {
        alter.action = AlterTable::Action::AlterColumn;
        TakeWord("COLUMN");
        alter.column = ParseColumnDefinition();
    } else {
        ExpectWord("DROP");
        const bool constraint = IsWord("CONSTRAINT") && IsName(1);
        alter.action =
            constraint ? AlterTable::Action::DropConstraint : AlterTable::Action::DropColumn;
        TakeAnyWord({"CONSTRAINT", "COLUMN"});
        alter.dropped = TakeName();
    }
    return alter;
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
