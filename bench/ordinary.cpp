// tarvo-bench-ordinary <plain file>: the same searches as an ordinary program would do them, with
// a QSqlQueryModel in a table view. A program of its own: Qt's SQL module brings another SQLite
// into the process, and two of them must never meet on one file.
#include "cases.h"
#include "report.h"

#include <QApplication>
#include <QHeaderView>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlQueryModel>
#include <QTableView>

#include <array>
#include <cstdio>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

struct Table {
    const char16_t* name;
    const char16_t* kind;
};
constexpr std::array<Table, 3> tables{
    {{u"Componente", u"Componente"}, {u"JogoReparo", u"Jogo de Reparo"}, {u"Peca", u"Peça"}}};

QString Conditions(const bench::Search& search, const QString& partyNumber, const QString& table) {
    QStringList conditions;
    if (!partyNumber.isEmpty()) {
        conditions << (search.party == bench::Party::Maker
                           ? u"r.NumeroClienteConcorrente LIKE '%1%'"_s.replace(u"%1"_s,
                                                                                partyNumber)
                           : u"r.NumeroClienteConcorrente = '%1'"_s.arg(partyNumber));
    }
    if (search.number[0] != 0) {
        conditions << u"t.NumeroTarvo"_s + table + u" LIKE '"_s +
                          QString::fromUtf16(search.number) + u"%'"_s;
    }
    if (search.description[0] != 0) {
        conditions << u"t.Descricao"_s + table + u" LIKE '"_s +
                          QString::fromUtf16(search.description).replace(u'*', u'%') + u"%'"_s;
    }
    return conditions.isEmpty() ? QString() : u" WHERE "_s + conditions.join(u" AND "_s);
}

QString SqlOf(const bench::Search& search, const bench::OrderBy& order,
              const QString& partyNumber) {
    QStringList selections;
    for (const Table& table : tables) {
        const QString name = QString::fromUtf16(table.name);
        QString join;
        QString theirs = u"''"_s;
        if (search.party != bench::Party::None) {
            const int code =
                search.party == bench::Party::Maker ? bench::MakerCode : bench::CompetitorCode;
            theirs = u"r.NumeroClienteConcorrente"_s;
            join = u" LEFT JOIN REFERENCIACRUZADA r ON r.CodigoClienteConcorrente = "_s +
                   QString::number(code) + u" AND r.NumeroTarvo = t.NumeroTarvo"_s + name;
        }
        selections << u"SELECT t.NumeroTarvo"_s + name + u", t.Descricao"_s + name + u", "_s +
                          theirs + u", '"_s + QString::fromUtf16(table.kind) + u"', t.Codigo"_s +
                          name + u" FROM "_s + name + u" t"_s + join +
                          Conditions(search, partyNumber, name);
    }
    return selections.join(u" UNION ALL "_s) + u" ORDER BY "_s + QString::fromUtf8(order.columns);
}

class View {
public:
    View() {
        view_.setModel(&model_);
        view_.horizontalHeader()->hide();
        view_.verticalHeader()->hide();
        view_.setFixedSize(711, 92);
        view_.show();
        QCoreApplication::processEvents();
    }

    bench::Measured Run(const QString& sql) {
        bench::Measured measured;
        const auto start = bench::Clock::now();
        model_.setQuery(sql);
        if (model_.lastError().isValid()) {
            throw std::runtime_error(model_.lastError().text().toStdString());
        }
        view_.viewport()->repaint();
        measured.firstMs = bench::MillisecondsSince(start);
        measured.stallMs = measured.firstMs;
        while (model_.canFetchMore()) {
            const auto more = bench::Clock::now();
            model_.fetchMore();
            measured.stallMs = std::max(measured.stallMs, bench::MillisecondsSince(more));
        }
        measured.wholeMs = bench::MillisecondsSince(start);
        measured.rows = model_.rowCount();
        return measured;
    }

private:
    QSqlQueryModel model_;
    QTableView view_;
};

QString CompetitorNumber() {
    QSqlQuery query(QString::fromUtf8(bench::CompetitorNumberSql));
    return query.next() ? query.value(0).toString() : QString();
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    const QApplication application(argc, argv);
    if (argc != 2) {
        std::fputs("usage: tarvo-bench-ordinary <plain file> [--benchmark_...]\n", stderr);
        return 2;
    }
    QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s);
    database.setDatabaseName(QString::fromLocal8Bit(argv[1]));
    if (!database.open()) {
        std::fprintf(stderr, "tarvo-bench-ordinary: %s\n", qPrintable(database.lastError().text()));
        return 1;
    }
    View view;
    const QString competitorNumber = CompetitorNumber();
    for (const bench::Search& search : bench::Searches) {
        for (const bench::OrderBy& order : bench::Orders) {
            const QString theirs = search.partyNumber == nullptr
                                       ? competitorNumber
                                       : QString::fromUtf16(search.partyNumber);
            const QString sql = SqlOf(search, order, theirs);
            bench::Register(bench::CaseName(u"ordinary"_s, search, order).toUtf8().constData(),
                            bench::Repetitions(), [&view, sql] { return view.Run(sql); });
        }
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
