#include "importar/figures.h"

#include "importar/links.h"
#include "tabelas/progress.h"

#include <QSet>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;
using tabelas::Column;
using tabelas::Id;
using tabelas::Kind;

namespace importar {
namespace {

enum Place { Code, PartCode, File, Item, Left, Top };

// In a table by part the codes count through the whole catalogue.
const Column Columns[] = {
    {u"CodigoFiguraDetalhada"_s, Kind::Code, false, {}, std::numeric_limits<qint32>::max()},
    {u"CodigoPeca"_s, Kind::Code, false, {}, std::numeric_limits<qint32>::max()},
    {u"ArquivoFigura"_s, Kind::FileName},
    {u"ItemComponente"_s, Kind::Item},
    {u"LLeft"_s, Kind::Number},
    {u"TTop"_s, Kind::Number},
};

}  // namespace

FiguresByPart::FiguresByPart(dao::Connection& catalogue, const Match& match,
                             const SourceTable& source, Refused& refused)
    : catalogue_(catalogue),
      match_(match),
      source_(source),
      refused_(refused),
      find_(catalogue, "SELECT CodigoFigura FROM PECA WHERE CodigoPeca = ?1") {}

FiguresByPart::Part* FiguresByPart::Find(qint64 code) {
    if (const auto known = parts_.find(code); known != parts_.end()) {
        return &*known;
    }
    find_.Bind(1, code);
    const bool there = find_.Step();
    const qint64 figure = there ? find_.Int64(0) : 0;
    find_.Reset();
    return there ? &*parts_.insert(code, Part{figure, {}, {}}) : nullptr;
}

// Why the row cannot go in; empty: it has been taken.
QString FiguresByPart::Take(const Row& row) {
    const auto& table = *match_.table;
    const auto from = [&](const QString& column) {
        return match_.columns[static_cast<std::size_t>(table.IndexOf(column))];
    };
    const int places[] = {from(Columns[Code].name),
                          match_.part,
                          match_.file,
                          from(Columns[Item].name),
                          from(Columns[Left].name),
                          from(Columns[Top].name)};
    QVariant values[std::size(Columns)];
    for (std::size_t i = 0; i < std::size(Columns); ++i) {
        if (i == Code && places[i] < 0) {
            continue;
        }
        const Value& value = row.values[static_cast<std::size_t>(places[i])];
        const Cell cell = Convert(Columns[i], value, source_.pointDecimals);
        if (!cell.complaint.isEmpty()) {
            return Complain(Columns[i].name, value, cell.complaint);
        }
        values[i] = cell.value;
    }
    Part* part = Find(values[PartCode].toLongLong());
    if (!part) {
        return u"CodigoPeca: %1 não existe em PECA"_s.arg(values[PartCode].toLongLong());
    }
    if (part->figure == 0) {
        return u"a peça %1 não tem figura (CodigoFigura vazio)"_s.arg(
            values[PartCode].toLongLong());
    }
    const QString file = values[File].toString();
    if (!part->markers.empty() && part->file.compare(file, Qt::CaseInsensitive) != 0) {
        return u"ArquivoFigura: \"%1\", mas outra linha da peça tem \"%2\""_s.arg(file, part->file);
    }
    part->file = file;
    part->markers.push_back({values[Code].toLongLong(), values[Item].toString(),
                             values[Left].toDouble(), values[Top].toDouble()});
    return {};
}

void FiguresByPart::Add(const Row& row) {
    const QString complaint = row.complaint.isEmpty() ? Take(row) : row.complaint;
    if (!complaint.isEmpty()) {
        refused_.Add(source_, row, complaint);
        return;
    }
    ++rows_;
}

bool FiguresByPart::Alike(const Part& a, const Part& b) {
    return a.file.compare(b.file, Qt::CaseInsensitive) == 0 &&
           std::equal(a.markers.begin(), a.markers.end(), b.markers.begin(), b.markers.end(),
                      [](const Marker& x, const Marker& y) {
                          return x.item == y.item && x.left == y.left && x.top == y.top;
                      });
}

// The codes stay where they are the figure's own; otherwise they are the order.
void FiguresByPart::StoreFigure(qint64 code, const Part& part) {
    dao::Statement figure(catalogue_,
                          "INSERT OR IGNORE INTO FIGURA (CodigoFigura, ArquivoFigura) "
                          "VALUES (?1, ?2)");
    figure.Bind(1, code);
    figure.Bind(2, part.file);
    figure.Step();
    const qint64 largest =
        match_.table->columns[static_cast<std::size_t>(match_.table->givenOut)].largest;
    QSet<qint64> codes;
    const bool own =
        std::all_of(part.markers.begin(), part.markers.end(), [&](const Marker& marker) {
            const qsizetype before = codes.size();
            codes.insert(marker.code);
            return marker.code >= 1 && marker.code <= largest && codes.size() > before;
        });
    dao::Statement insert(catalogue_,
                          "INSERT INTO FIGURADETALHADA (CodigoFigura, CodigoFiguraDetalhada, "
                          "ItemComponente, LLeft, TTop) VALUES (?1, ?2, ?3, ?4, ?5)");
    qint64 order = 0;
    for (const Marker& marker : part.markers) {
        ++order;
        insert.Bind(1, code);
        insert.Bind(2, own ? marker.code : order);
        insert.Bind(3, marker.item);
        insert.Bind(4, marker.left);
        insert.Bind(5, marker.top);
        insert.Step();
        insert.Reset();
    }
}

void FiguresByPart::Store() {
    QList<qint64> codes = parts_.keys();
    std::sort(codes.begin(), codes.end());
    qint64 newest = std::max(catalogue_.Value("SELECT max(CodigoFigura) FROM PECA").toLongLong(),
                             catalogue_.Value("SELECT max(CodigoFigura) FROM FIGURA").toLongLong());
    QHash<qint64, QList<std::pair<qint64, const Part*>>> stored;  // by the code that the parts name
    dao::Statement change(catalogue_, "UPDATE PECA SET CodigoFigura = ?1 WHERE CodigoPeca = ?2");
    qint64 apart = 0;
    for (const qint64 code : std::as_const(codes)) {
        Part& part = parts_[code];
        if (part.markers.empty()) {
            continue;
        }
        std::stable_sort(part.markers.begin(), part.markers.end(),
                         [](const Marker& a, const Marker& b) { return a.code < b.code; });
        auto& kinds = stored[part.figure];
        auto kind = std::find_if(kinds.begin(), kinds.end(),
                                 [&](const auto& each) { return Alike(*each.second, part); });
        if (kind == kinds.end()) {
            const qint64 figure = kinds.isEmpty() ? part.figure : ++newest;
            StoreFigure(figure, part);
            kind = kinds.insert(kinds.end(), {figure, &part});
        }
        if (kind->first != part.figure) {
            change.Bind(1, kind->first);
            change.Bind(2, code);
            change.Step();
            change.Reset();
            ++apart;
        }
    }
    if (apart > 0) {
        remarks_ +=
            u"%1: peças com a mesma figura e números diferentes ganharam figura própria: %2."_s.arg(
                source_.label, tabelas::Counted(apart));
    }
    LeaveFiguresWithoutNumbers();
}

// A part whose figure no row tells the file of.
void FiguresByPart::LeaveFiguresWithoutNumbers() {
    catalogue_.Run(
        "UPDATE PECA SET CodigoFigura = NULL WHERE CodigoFigura IS NOT NULL AND "
        "CodigoFigura NOT IN (SELECT CodigoFigura FROM FIGURA)");
    if (const qint64 parts = catalogue_.Changes(); parts > 0) {
        remarks_ +=
            u"Peças cuja figura não tem nenhuma linha em %1, e que ficam sem figura: %2."_s.arg(
                source_.label, tabelas::Counted(parts));
    }
}

}  // namespace importar
