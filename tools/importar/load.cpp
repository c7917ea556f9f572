#include "importar/load.h"

#include "importar/figures.h"
#include "importar/links.h"
#include "platform/dao/connection.h"
#include "platform/dao/statement.h"

#include <memory>

using namespace Qt::StringLiterals;
using tabelas::Column;
using tabelas::Id;
using tabelas::Kind;
using tabelas::Table;

namespace importar {
namespace {

// Memory that the engine keeps of the file. What is larger is written and read again.
constexpr char CachePragma[] = "PRAGMA cache_size = -65536";

// Equal rows are found by the unique indexes. The others are faster made at the end, in one go.
QList<QByteArray> DropPlainIndexes(dao::Connection& catalogue) {
    QList<QByteArray> names;
    QList<QByteArray> definitions;
    {
        dao::Statement indexes(catalogue,
                               "SELECT name, sql FROM sqlite_schema WHERE type = 'index' AND "
                               "sql LIKE 'CREATE INDEX%' ORDER BY name");
        while (indexes.Step()) {
            names += indexes.Column(0).toByteArray();
            definitions += indexes.Column(1).toByteArray();
        }
    }
    for (const QByteArray& name : names) {
        catalogue.Run("DROP INDEX " + name);
    }
    return definitions;
}

QByteArray InsertInto(const Table& table) {
    const QStringList names = table.ColumnNames();
    return u"INSERT OR IGNORE INTO %1 (%2) VALUES (?%3)"_s
        .arg(table.name, names.join(u", "_s), u", ?"_s.repeated(names.size() - 1))
        .toUtf8();
}

QByteArray UpdateOf(const Table& table) {
    return u"UPDATE %1 SET %2 = ?"_s.arg(table.name, table.ColumnNames().join(u" = ?, "_s))
        .toUtf8();
}

class Loader {
public:
    Loader(dao::Connection& catalogue, Source& source, const Matches& matches, Refused& refused,
           tabelas::Progress& progress)
        : catalogue_(catalogue),
          source_(source),
          matches_(matches),
          refused_(refused),
          progress_(progress),
          links_(catalogue, matches) {}

    LoadResult Run() {
        qint64 total = 0;
        for (const Match& match : matches_.found) {
            total += SourceOf(match).size;
        }
        progress_.Start(total);
        for (const Match& match : matches_.found) {
            progress_.Stage(SourceOf(match).label);
            const qint64 refusedBefore = refused_.Count();
            now_ = {match.table->name};
            LoadTable(match);
            now_.refused = refused_.Count() - refusedBefore;
            result_.tables.push_back(now_);
            done_ += SourceOf(match).size;
        }
        return std::move(result_);
    }

private:
    const SourceTable& SourceOf(const Match& match) const { return source_.Tables()[match.source]; }

    void LoadTable(const Match& match) {
        switch (match.table->id) {
            case Id::Settings:
                return LoadSettings(match);
            case Id::Selection:
                return LoadSelection(match);
            case Id::Markers:
                if (match.ByPart()) {
                    return LoadMarkersByPart(match);
                }
                [[fallthrough]];
            default:
                return LoadRows(match);
        }
    }

    void Read(const Match& match, const std::function<void(const Row&)>& use) {
        qint64 rows = 0;
        source_.Read(match.source, [&](const Row& row, qint64 done) {
            progress_.Step(done_ + done, ++rows);
            use(row);
        });
    }

    // The row in the catalogue's form, into values_; false when it is refused.
    bool Take(const Match& match, const Row& row) {
        const SourceTable& from = SourceOf(match);
        if (!row.complaint.isEmpty()) {
            refused_.Add(from, row, row.complaint);
            return false;
        }
        values_.clear();
        bool changed = false;
        for (std::size_t i = 0; i < match.table->columns.size(); ++i) {
            const Column& column = match.table->columns[i];
            Cell cell;
            if (static_cast<int>(i) == match.table->givenOut && IsEmpty(match, i, row)) {
                // Given out when the row goes in.
            } else if (column.target && !IsDeferred(match, column)) {
                cell = links_.Resolve(match, i, row, from.pointDecimals);
            } else {
                static const Value nothing;
                const int at = match.columns[i];
                const Value& value = at < 0 ? nothing : row.values[static_cast<std::size_t>(at)];
                cell = Convert(column, value, from.pointDecimals);
                if (!cell.complaint.isEmpty()) {
                    cell.complaint = Complain(column.name, value, cell.complaint);
                }
            }
            if (!cell.complaint.isEmpty()) {
                refused_.Add(from, row, cell.complaint);
                return false;
            }
            changed = changed || cell.changed;
            values_.push_back(cell.value);
        }
        if (const QString complaint = BrokenRule(match.table->id); !complaint.isEmpty()) {
            refused_.Add(from, row, complaint);
            return false;
        }
        now_.changed += changed ? 1 : 0;
        return true;
    }

    static bool IsEmpty(const Match& match, std::size_t column, const Row& row) {
        const int at = match.columns[column];
        return at < 0 || row.values[static_cast<std::size_t>(at)].Shown().trimmed().isEmpty();
    }

    // Where the numbers stand by part, the figures come with them, after the parts.
    bool IsDeferred(const Match& match, const Column& column) const {
        const Match* markers = matches_.Of(Id::Markers);
        return match.table->id == Id::Parts && column.target == Id::Figures && markers &&
               markers->ByPart() && !matches_.Of(Id::Figures);
    }

    // What hangs on several values of values_, or on other rows than those that it links to.
    QString BrokenRule(Id id) {
        switch (id) {
            case Id::Customers:
                return values_[2].toString().compare(tabelas::MakerLetter, Qt::CaseInsensitive) ==
                                   0 &&
                               values_[0].toLongLong() > tabelas::LargestMakerCode
                           ? u"CodigoClienteConcorrente: %1 é maior que %2, o maior de um "
                             "fabricante de veículos (tipo I)"_s.arg(values_[0].toLongLong())
                                 .arg(tabelas::LargestMakerCode)
                           : QString();
            case Id::Vehicles:
                return IsMaker(values_[2].toLongLong())
                           ? QString()
                           : u"CodigoClienteConcorrente: %1 não é um fabricante de veículos "
                             "(tipo I)"_s.arg(values_[2].toLongLong());
            case Id::KitItems:
                return IsItem(values_[0].toLongLong(), values_[1].toString())
                           ? QString()
                           : u"o item %1 da peça %2 não existe em PECA_COMPONENTE"_s
                                 .arg(values_[1].toString().trimmed())
                                 .arg(values_[0].toLongLong());
            case Id::CrossReferences:
                return links_.IsOwnNumber(values_[1].toString())
                           ? QString()
                           : u"NumeroTarvo: \"%1\" não é de nenhuma peça, componente ou jogo"_s.arg(
                                 values_[1].toString());
            default:
                return {};
        }
    }

    bool IsMaker(qint64 code) {
        if (!maker_) {
            maker_ = std::make_unique<dao::Statement>(
                catalogue_,
                "SELECT 1 FROM CLIENTECONCORRENTE WHERE CodigoClienteConcorrente = ?1 "
                "AND TipoClienteConcorrente = 'I'");
        }
        maker_->Bind(1, code);
        const bool is = maker_->Step();
        maker_->Reset();
        return is;
    }

    bool IsItem(qint64 part, const QString& item) {
        if (!item_) {
            item_ = std::make_unique<dao::Statement>(
                catalogue_,
                "SELECT 1 FROM PECA_COMPONENTE WHERE CodigoPeca = ?1 AND "
                "ItemComponente = ?2");
        }
        item_->Bind(1, part);
        item_->Bind(2, item);
        const bool is = item_->Step();
        item_->Reset();
        return is;
    }

    bool Insert(dao::Statement& insert) {
        for (std::size_t i = 0; i < values_.size(); ++i) {
            insert.Bind(static_cast<int>(i) + 1, values_[i]);
        }
        insert.Step();
        insert.Reset();
        return catalogue_.Changes() > 0;
    }

    // Rows that bring their code go in first, so that no code is given out that comes later.
    void LoadRows(const Match& match) {
        const Table& table = *match.table;
        dao::Statement insert(catalogue_, InsertInto(table));
        bool codesAreMissing = false;
        Read(match, [&](const Row& row) {
            if (row.complaint.isEmpty() && IsGivenOut(match, row)) {
                codesAreMissing = true;
            } else if (Take(match, row)) {
                Put(match, row, insert);
            }
        });
        if (!codesAreMissing) {
            return;
        }
        next_ = 0;
        figure_ = 0;
        Read(match, [&](const Row& row) {
            if (row.complaint.isEmpty() && IsGivenOut(match, row) && Take(match, row)) {
                PutWithCode(match, row, insert);
            }
        });
    }

    static bool IsGivenOut(const Match& match, const Row& row) {
        return match.table->givenOut >= 0 &&
               IsEmpty(match, static_cast<std::size_t>(match.table->givenOut), row);
    }

    void Put(const Match& match, const Row& row, dao::Statement& insert) {
        if (!Insert(insert)) {
            QStringList key;
            for (int i = 0; i < match.table->key; ++i) {
                key += match.table->columns[static_cast<std::size_t>(i)].name;
            }
            refused_.Add(SourceOf(match), row,
                         u"repetida: já há uma linha com o mesmo %1"_s.arg(key.join(u" e "_s)));
            return;
        }
        links_.Learn(*match.table, values_);
        ++now_.rows;
    }

    // The lowest code that is free, of a marker within its figure.
    void PutWithCode(const Match& match, const Row& row, dao::Statement& insert) {
        const auto at = static_cast<std::size_t>(match.table->givenOut);
        const Column& column = match.table->columns[at];
        if (at > 0 && figure_ != values_[0].toLongLong()) {
            figure_ = values_[0].toLongLong();
            next_ = 0;
        }
        do {
            values_[at] = ++next_;
        } while (next_ <= column.largest && !Insert(insert));
        if (next_ > column.largest) {
            refused_.Add(SourceOf(match), row,
                         u"%1: não há mais códigos livres"_s.arg(column.name));
            return;
        }
        links_.Learn(*match.table, values_);
        ++now_.rows;
    }

    void LoadSettings(const Match& match) {
        dao::Statement update(catalogue_, UpdateOf(*match.table));
        Read(match, [&](const Row& row) {
            if (now_.rows > 0) {
                refused_.Add(SourceOf(match), row, u"%1 só pode ter uma linha"_s.arg(now_.table));
            } else if (Take(match, row)) {
                QVariant& failed = values_[static_cast<std::size_t>(
                    match.table->IndexOf(u"FlagErroUltimaVerificacao"_s))];
                failed = failed.toInt();
                Insert(update);
                ++now_.rows;
            }
        });
        if (now_.rows == 0) {
            result_.remarks +=
                u"%1 não trouxe linha que sirva: a data é a de hoje, a versão é 1."_s.arg(
                    SourceOf(match).label);
        }
    }

    // Whom the last user of an old catalogue had chosen is no loss where he is gone.
    void LoadSelection(const Match& match) {
        dao::Statement update(catalogue_, UpdateOf(*match.table));
        Read(match, [&](const Row& row) {
            const bool taken = now_.rows == 0 && Take(match, row);
            if (taken && links_.Exists(Id::Customers, values_[0].toLongLong())) {
                Insert(update);
            }
            now_.rows += taken ? 1 : 0;
        });
    }

    void LoadMarkersByPart(const Match& match) {
        FiguresByPart figures(catalogue_, match, SourceOf(match), refused_);
        Read(match, [&](const Row& row) { figures.Add(row); });
        figures.Store();
        now_.rows = figures.Rows();
        result_.remarks += figures.Remarks();
    }

    dao::Connection& catalogue_;
    Source& source_;
    const Matches& matches_;
    Refused& refused_;
    tabelas::Progress& progress_;
    Links links_;
    LoadResult result_;
    Loaded now_;
    qint64 done_ = 0;
    std::vector<QVariant> values_;
    qint64 next_ = 0;
    qint64 figure_ = 0;
    std::unique_ptr<dao::Statement> maker_;
    std::unique_ptr<dao::Statement> item_;
};

}  // namespace

LoadResult Load(dao::Connection& catalogue, Source& source, const Matches& matches,
                Refused& refused, tabelas::Progress& progress) {
    // Half a catalogue is never kept, so nothing needs a way back, nor the disk before the end.
    catalogue.Run(
        "PRAGMA locking_mode = EXCLUSIVE; PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF");
    catalogue.Run(CachePragma);
    catalogue.Run("BEGIN");
    const QList<QByteArray> indexes = DropPlainIndexes(catalogue);
    LoadResult result = Loader(catalogue, source, matches, refused, progress).Run();
    progress.Stage(u"Índices"_s);
    for (const QByteArray& definition : indexes) {
        catalogue.Run(definition);
    }
    catalogue.Run("COMMIT; PRAGMA synchronous = FULL; PRAGMA journal_mode = DELETE");
    // The engine syncs the whole file with the first change that it makes in full earnest.
    catalogue.Run("UPDATE UMREGISTRO SET Versao = Versao");
    return result;
}

}  // namespace importar
