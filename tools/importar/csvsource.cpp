#include "importar/csvsource.h"

#include "platform/erro.h"
#include "platform/system/csv_reader.h"
#include "platform/system/csv_writer.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace importar {
namespace {

const QString TooMany = u"mais campos do que títulos; um texto com o separador precisa de aspas"_s;
const QString BehindQuotes = u"texto depois das aspas que fecham um campo"_s;

// Cells beyond the headings are nothing as long as they are empty: spreadsheets leave them behind.
QString ComplaintOf(const sys::CsvReader& reader, const QStringList& cells, qsizetype columns) {
    if (reader.Malformed()) {
        return BehindQuotes;
    }
    for (qsizetype i = columns; i < cells.size(); ++i) {
        if (!cells.at(i).trimmed().isEmpty()) {
            return TooMany;
        }
    }
    return {};
}

Value ValueOf(const QString& cell) {
    Value value;
    if (!cell.isEmpty()) {
        value.type = Value::Type::Text;
        value.text = sys::FromHarmless(cell);
    }
    return value;
}

}  // namespace

CsvSource::CsvSource(const QString& folder) {
    const QDir directory(folder);
    const QStringList names = directory.entryList({u"*.csv"_s}, QDir::Files, QDir::Name);
    for (const QString& name : names) {
        const QString path = directory.filePath(name);
        sys::CsvReader reader(path);
        QStringList headings;
        reader.Next(headings);
        for (QString& heading : headings) {
            heading = heading.trimmed();
        }
        tables_.push_back({QFileInfo(name).completeBaseName(), name, headings, reader.Size(),
                           reader.Separator() == u','});
        paths_ += path;
    }
    if (tables_.empty()) {
        throw Erro(Erro::FileNotFound, u"Não há arquivos CSV em \"%1\"."_s.arg(folder));
    }
}

void CsvSource::Read(std::size_t table, const Use& use) {
    sys::CsvReader reader(paths_.at(static_cast<qsizetype>(table)));
    QStringList cells;
    reader.Next(cells);  // the headings
    const qsizetype columns = tables_.at(table).columns.size();
    Row row;
    for (bool first = true; reader.Next(cells); first = false) {
        if (first && cells.first().startsWith(u'#')) {
            continue;
        }
        row.line = reader.Line();
        row.complaint = ComplaintOf(reader, cells, columns);
        row.values.clear();
        for (const QString& cell : std::as_const(cells)) {
            row.values.push_back(ValueOf(cell));
        }
        row.values.resize(static_cast<std::size_t>(std::max(columns, cells.size())));
        use(row, reader.Position());
    }
}

}  // namespace importar
