#include "platform/sql/resultcolumns.h"

#include "platform/sql/collation.h"
#include "platform/sql/writer.h"

namespace sql {

const Source* FindTable(const Source& source, std::string_view name) {
    if (source.kind == Source::Kind::Join) {
        const Source* found = FindTable(*source.left, name);
        return found ? found : FindTable(*source.right, name);
    }
    const bool named = EqualWords(source.Alias(), name) || EqualWords(source.name, name);
    return source.kind == Source::Kind::Table && named ? &source : nullptr;
}

std::optional<TableInfo> InfoOf(const Schema& schema, std::string_view table) {
    return schema.table ? schema.table(ToQString(table)) : std::nullopt;
}

QStringList NamesOf(const Schema& schema, const Query& query) {
    const Query::Arm& arm = query.arms.front();
    if (arm.nested) {
        return NamesOf(schema, *arm.nested);
    }
    const Select& select = *arm.select;
    QStringList names;
    for (const SelectItem& item : select.items) {
        if (!item.alias.empty()) {
            names.append(ToQString(item.alias));
        } else if (item.expr->kind == Expr::Kind::Column) {
            names.append(ToQString(item.expr->name));
        } else if (item.expr->kind == Expr::Kind::Star && select.from.size() == 1) {
            const Source& from = *select.from.front();
            const Source* source = item.expr->qualifier.empty() && from.kind == Source::Kind::Table
                                       ? &from
                                       : FindTable(from, item.expr->qualifier);
            const auto info = source ? InfoOf(schema, source->name) : std::nullopt;
            if (!info) {
                return {};
            }
            for (const ColumnInfo& column : info->columns) {
                names.append(column.name);
            }
        } else {
            return {};
        }
    }
    return names;
}

QString DeclaredType(const Schema& schema, const Select& select, const Expr& expr) {
    const QString text = QStringLiteral("TEXT COLLATE TARVO");
    if (expr.kind != Expr::Kind::Column) {
        const Type type = TypeOf(expr);
        return type == Type::Number ? QStringLiteral("NUMERIC")
               : type == Type::Text ? text
                                    : QStringLiteral("COLLATE TARVO");
    }
    const std::function<QString(const Source&)> search = [&](const Source& source) -> QString {
        if (source.kind == Source::Kind::Join) {
            const QString found = search(*source.left);
            return found.isEmpty() ? search(*source.right) : found;
        }
        const bool meant = expr.qualifier.empty() || EqualWords(source.Alias(), expr.qualifier);
        const auto info = meant ? InfoOf(schema, source.name) : std::nullopt;
        const ColumnInfo* column = info ? info->Column(ToQString(expr.name)) : nullptr;
        return column ? column->declaredType : QString();
    };
    QString declared;
    for (const SourcePtr& source : select.from) {
        declared = declared.isEmpty() ? search(*source) : declared;
    }
    // Harmless on numbers, needed on texts.
    return declared + QStringLiteral(" COLLATE TARVO");
}

}  // namespace sql
