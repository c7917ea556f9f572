#include "importar/match.h"

#include "platform/erro.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;
using tabelas::Id;
using tabelas::Table;

namespace importar {
namespace {

// What has rows of no meaning, and is made with every catalogue.
const QString LockTable = u"CONTROLETRAN"_s;

int IndexOf(const SourceTable& source, const QString& column) {
    for (qsizetype i = 0; i < source.columns.size(); ++i) {
        if (source.columns.at(i).compare(column, Qt::CaseInsensitive) == 0) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

Match Bind(const Table& table, const SourceTable& source, std::size_t index) {
    Match match{&table, index, {}, {}};
    for (const tabelas::Column& column : table.columns) {
        match.columns.push_back(IndexOf(source, column.name));
        const tabelas::Column* name = tabelas::NameInPlaceOf(column, table);
        match.names.push_back(name ? IndexOf(source, name->name) : -1);
    }
    if (table.id == Id::Markers && match.columns.front() < 0) {
        match.part = IndexOf(source, u"CodigoPeca"_s);
        match.file = IndexOf(source, u"ArquivoFigura"_s);
        if (match.ByPart() && match.file >= 0) {
            match.names.front() = -1;
        } else {
            match.part = -1;
        }
    }
    return match;
}

QStringList Lacking(const Match& match) {
    QStringList lacking;
    const Table& table = *match.table;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const bool needed = !table.columns[i].mayBeEmpty && static_cast<int>(i) != table.givenOut;
        if (needed && match.columns[i] < 0 && match.names[i] < 0 && !(i == 0 && match.ByPart())) {
            lacking += table.columns[i].name;
        }
    }
    return lacking;
}

// Further names under which the base table of a view may stand.
QString OtherName(Id id) {
    switch (id) {
        case Id::CrossReferences:
            return u"REFERENCIACRUZADA1"_s;
        case Id::Markers:
            return u"FIGURADETALHADA1"_s;
        default:
            return {};
    }
}

class Matcher {
public:
    explicit Matcher(const std::vector<SourceTable>& tables)
        : tables_(tables), taken_(tables.size()) {}

    Matches Run() {
        for (const Table& table : tabelas::All()) {
            TakeByName(table);
        }
        for (const Id id : {Id::CrossReferences, Id::Markers}) {
            if (!result_.Of(id)) {
                TakeByShape(tabelas::Of(id));
            }
        }
        std::ranges::sort(result_.found, {}, &Match::table);
        for (const Table& table : tabelas::All()) {
            if (!result_.Of(table.id) && table.id != Id::Selection) {
                result_.missing += table.name;
            }
        }
        // Then the figures come with their numbers.
        if (const Match* markers = result_.Of(Id::Markers); markers && markers->ByPart()) {
            result_.missing.removeOne(tabelas::Of(Id::Figures).name);
        }
        if (!result_.Of(Id::Parts)) {
            throw Erro(Erro::InvalidArgument,
                       u"Não é um catálogo: falta a tabela PECA. Há: %1."_s.arg(Labels()));
        }
        for (const Match& match : result_.found) {
            TellOfColumns(match);
        }
        TellOfTables();
        return std::move(result_);
    }

private:
    void Take(const Match& match) {
        taken_[match.source] = true;
        result_.found.push_back(match);
    }

    void TakeByName(const Table& table) {
        for (const QString& name : {table.name, OtherName(table.id)}) {
            for (std::size_t i = 0; i < tables_.size(); ++i) {
                if (taken_[i] || tables_[i].name.compare(name, Qt::CaseInsensitive) != 0) {
                    continue;
                }
                const Match match = Bind(table, tables_[i], i);
                const QStringList lacking = Lacking(match);
                if (lacking.isEmpty()) {
                    Take(match);
                    return;
                }
                if (OtherName(table.id).isEmpty()) {
                    throw Erro(Erro::InvalidArgument, u"%1 não tem a coluna %2. Tem: %3."_s.arg(
                                                          tables_[i].label, lacking.join(u", "_s),
                                                          tables_[i].columns.join(u", "_s)));
                }
            }
        }
    }

    void TakeByShape(const Table& table) {
        std::vector<Match> fitting;
        for (std::size_t i = 0; i < tables_.size(); ++i) {
            const Match match = Bind(table, tables_[i], i);
            if (!taken_[i] && Lacking(match).isEmpty()) {
                fitting.push_back(match);
            }
        }
        if (fitting.size() > 1) {
            QStringList labels;
            for (const Match& match : fitting) {
                labels += tables_[match.source].label;
            }
            throw Erro(Erro::InvalidArgument,
                       u"Mais de uma tabela pode ser %1: %2. Dê a uma delas esse nome."_s.arg(
                           table.name, labels.join(u", "_s)));
        }
        if (!fitting.empty()) {
            Take(fitting.front());
            result_.remarks += u"%1 foi tomada como %2, pelas suas colunas."_s.arg(
                tables_[fitting.front().source].label, table.name);
        }
    }

    void TellOfColumns(const Match& match) {
        QStringList rest = tables_[match.source].columns;
        const auto used = [&](int column) {
            if (column >= 0) {
                rest.removeOne(tables_[match.source].columns.at(column));
            }
        };
        std::for_each(match.columns.begin(), match.columns.end(), used);
        std::for_each(match.names.begin(), match.names.end(), used);
        used(match.part);
        used(match.file);
        rest.removeAll(QString());
        if (!rest.isEmpty()) {
            result_.remarks += u"%1: sem uso no catálogo: %2."_s.arg(tables_[match.source].label,
                                                                     rest.join(u", "_s));
        }
    }

    void TellOfTables() {
        for (std::size_t i = 0; i < tables_.size(); ++i) {
            if (!taken_[i] && tables_[i].name.compare(LockTable, Qt::CaseInsensitive) != 0) {
                result_.remarks += u"%1 não é do catálogo e fica de fora."_s.arg(tables_[i].label);
            }
        }
    }

    QString Labels() const {
        QStringList labels;
        for (const SourceTable& table : tables_) {
            labels += table.label;
        }
        return labels.isEmpty() ? u"nenhuma"_s : labels.join(u", "_s);
    }

    const std::vector<SourceTable>& tables_;
    std::vector<bool> taken_;
    Matches result_;
};

}  // namespace

const Match* Matches::Of(Id id) const {
    const auto match = std::find_if(found.begin(), found.end(),
                                    [id](const Match& each) { return each.table->id == id; });
    return match == found.end() ? nullptr : &*match;
}

Matches MatchTables(const std::vector<SourceTable>& tables) {
    return Matcher(tables).Run();
}

}  // namespace importar
