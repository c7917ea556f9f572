#include "importar/links.h"

using namespace Qt::StringLiterals;
using tabelas::Column;
using tabelas::Id;
using tabelas::Table;

namespace importar {
namespace {

constexpr Id Numbered[] = {Id::Parts, Id::Components, Id::Kits};

const Column& KeyOf(Id id) {
    return tabelas::Of(id).columns.front();
}

const Value& At(const Row& row, int column) {
    static const Value nothing;
    return column < 0 ? nothing : row.values[static_cast<std::size_t>(column)];
}

}  // namespace

QString Complain(const QString& column, const Value& value, const QString& complaint) {
    const QString shown = value.Shown();
    return shown.isEmpty() ? column + u' ' + complaint
                           : u"%1: \"%2\" %3"_s.arg(column, shown, complaint);
}

Links::Links(dao::Connection& catalogue, const Matches& matches)
    : catalogue_(catalogue), matches_(matches) {
    for (const Id id : Numbered) {
        names_[id];
    }
    for (const Match& match : matches.found) {
        for (std::size_t i = 0; i < match.names.size(); ++i) {
            if (match.names[i] >= 0) {
                names_[*match.table->columns[i].target];
            }
        }
    }
}

void Links::Learn(const Table& table, const std::vector<QVariant>& values) {
    if (const auto names = names_.find(table.id); names != names_.end()) {
        names->second.Add(values[static_cast<std::size_t>(table.byName)].toString(),
                          values.front().toInt());
    }
}

bool Links::IsOwnNumber(const QString& number) {
    return std::any_of(std::begin(Numbered), std::end(Numbered),
                       [&](Id id) { return names_[id].Find(number) != Names::None; });
}

bool Links::Exists(Id id, qint64 code) {
    Known& known = codes_[id];
    if (!known.statement) {
        known.statement = std::make_unique<dao::Statement>(
            catalogue_,
            u"SELECT 1 FROM %1 WHERE %2 = ?1"_s.arg(tabelas::Of(id).name, KeyOf(id).name).toUtf8());
    }
    // Rows that link to the same one often follow each other. A code that was missing may have
    // come.
    if (known.code != code || !known.exists) {
        known.statement->Bind(1, code);
        known.exists = known.statement->Step();
        known.statement->Reset();
        known.code = code;
    }
    return known.exists;
}

Cell Links::ByName(const Column& link, const Value& value, bool pointDecimals) {
    const Table& target = tabelas::Of(*link.target);
    const Column& name = *tabelas::NameColumnOf(link);
    Cell cell = Convert(name, value, pointDecimals);
    if (cell.complaint.isEmpty()) {
        const int code = names_[target.id].Find(cell.value.toString());
        cell.value = code;
        if (code == Names::None) {
            cell.complaint = u"não existe em %1"_s.arg(target.name);
        } else if (code == Names::Several) {
            cell.complaint =
                u"está em mais de uma linha de %1: use %2"_s.arg(target.name, link.name);
        }
    }
    if (!cell.complaint.isEmpty()) {
        cell.complaint = Complain(name.name, value, cell.complaint);
    }
    return cell;
}

Cell Links::Resolve(const Match& match, std::size_t column, const Row& row, bool pointDecimals) {
    const Column& link = match.table->columns[column];
    const Value& byCode = At(row, match.columns[column]);
    const Value& byName = At(row, match.names[column]);
    if (link.mayBeEmpty && !matches_.Of(*link.target)) {
        return {};
    }
    Column ofCode = link;
    ofCode.mayBeEmpty = link.mayBeEmpty || !byName.text.trimmed().isEmpty();
    Cell cell = Convert(ofCode, byCode, pointDecimals);
    if (cell.complaint.isEmpty() && !cell.value.isNull() &&
        !Exists(*link.target, cell.value.toLongLong())) {
        cell.complaint = u"não existe em %1"_s.arg(tabelas::Of(*link.target).name);
    }
    if (!cell.complaint.isEmpty()) {
        cell.complaint = Complain(link.name, byCode, cell.complaint);
        return cell;
    }
    if (byName.text.trimmed().isEmpty()) {
        return cell;
    }
    const Cell named = ByName(link, byName, pointDecimals);
    if (named.complaint.isEmpty() && !cell.value.isNull() && cell.value != named.value) {
        return {{},
                u"%1 e %2 não são da mesma linha de %3"_s.arg(
                    link.name, tabelas::NameColumnOf(link)->name, tabelas::Of(*link.target).name)};
    }
    return named;
}

}  // namespace importar
