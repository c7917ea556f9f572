#include "exportar/export.h"

#include "platform/dao/connection.h"
#include "platform/dao/statement.h"
#include "platform/erro.h"
#include "platform/secret.h"
#include "platform/system/csv_writer.h"
#include "platform/system/paths.h"
#include "session/banco.h"
#include "tabelas/dates.h"
#include "tabelas/newfolder.h"
#include "tabelas/tables.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;
using tabelas::Column;
using tabelas::Kind;
using tabelas::Table;

namespace exportar {
namespace {

std::shared_ptr<dao::Connection> Open(const QString& data) {
    const QString path = sys::ToNative(data + u"\\Tarvo.mdb"_s);
    if (!QFileInfo(path).isFile()) {
        throw Erro(Erro::FileNotFound, u"Não há catálogo em \"%1\"."_s.arg(path));
    }
    QByteArray password = SenhaBancoDados().toUtf8();
    const secret::WipeAtEnd withoutPassword(password);
    return std::make_shared<dao::Connection>(path, password, dao::Connection::Mode::ReadOnly);
}

QByteArray SelectFrom(const Table& table) {
    const QStringList names = table.ColumnNames();
    return u"SELECT %1 FROM %2 ORDER BY %3"_s
        .arg(names.join(u", "_s), table.name, names.first(table.key).join(u", "_s))
        .toUtf8();
}

// An item without the blanks that align it: spreadsheets drop them anyway, and they are put there
// again.
QString TextOf(const Column& column, const dao::Cell& cell) {
    switch (cell.type) {
        case dao::Cell::Type::Integer:
            return column.kind == Kind::Date
                       ? tabelas::FormatDate(static_cast<double>(cell.integer))
                       : QString::number(cell.integer);
        case dao::Cell::Type::Real:
            return column.kind == Kind::Date ? tabelas::FormatDate(cell.real)
                                             : sys::CsvNumber(cell.real);
        case dao::Cell::Type::Text: {
            const QString text = QString::fromUtf8(cell.utf8);
            return column.kind == Kind::Item ? text.trimmed() : text;
        }
        default:
            return {};
    }
}

qint64 WriteTable(dao::Connection& catalogue, const Table& table, const QString& path,
                  tabelas::Progress& progress) {
    sys::CsvWriter writer(path);
    writer.Row(table.ColumnNames());
    qint64 rows = 0;
    QStringList cells(static_cast<qsizetype>(table.columns.size()));
    for (dao::Statement select(catalogue, SelectFrom(table)); select.Step();) {
        for (qsizetype i = 0; i < cells.size(); ++i) {
            cells[i] = TextOf(table.columns[static_cast<std::size_t>(i)],
                              select.Read(static_cast<int>(i)));
        }
        writer.Row(cells);
        progress.Step(0, ++rows);
    }
    writer.Close();
    return rows;
}

}  // namespace

std::vector<Written> Export(const QString& data, const QString& folder,
                            tabelas::Progress& progress) {
    const auto catalogue = Open(data);
    tabelas::NewFolder files(folder);
    // One moment of the catalogue, whatever others write meanwhile.
    catalogue->Run("BEGIN");
    std::vector<Written> written;
    for (const Table& table : tabelas::All()) {
        const QString name = table.name + u".csv"_s;
        progress.Stage(name);
        try {
            written.push_back(
                {name, WriteTable(*catalogue, table, files.Path() + u'/' + name, progress)});
        } catch (const Erro& erro) {
            throw Erro(erro.Number(), u"%1: %2"_s.arg(name, erro.Description()));
        }
    }
    catalogue->Run("COMMIT");
    progress.Stage(u"Gravação"_s);
    files.Place();
    return written;
}

}  // namespace exportar
