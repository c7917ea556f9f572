#include "importar/import.h"
#include "platform/system/csv_writer.h"
#include "tabelas/newfolder.h"

using namespace Qt::StringLiterals;
using tabelas::Column;
using tabelas::Id;
using tabelas::Table;

namespace importar {
namespace {

// A link may also be told by the number or the name of what it leads to.
void WriteModel(const Table& table, const QString& path) {
    QStringList headings;
    QStringList explanations;
    for (const Column& column : table.columns) {
        headings += column.name;
        explanations += column.explanation;
        if (const Column* name = tabelas::NameInPlaceOf(column, table)) {
            headings += name->name;
            explanations += u"em vez de "_s + column.name;
        }
    }
    explanations.first().prepend(u"# "_s);
    sys::CsvWriter writer(path);
    writer.Row(headings);
    writer.Row(explanations);
    writer.Close();
}

}  // namespace

void WriteModels(const QString& folder) {
    tabelas::NewFolder models(folder);
    for (const Table& table : tabelas::All()) {
        if (table.id != Id::Selection) {
            WriteModel(table, models.Path() + u'/' + table.name + u".csv"_s);
        }
    }
    models.Place();
}

}  // namespace importar
