#include "capi.h"

#include "platform/dao/schema.h"
#include "platform/system/paths.h"
#include "session/banco.h"
#include "session/global.h"

#include <sqlite3.h>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {
namespace {

constexpr int FirstRows = 100;

struct Finalizer {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

}  // namespace

BareApi::BareApi(const QString& folder)
    : connection_(std::make_shared<dao::Connection>(sys::ToNative(folder + u"\\Tarvo.mdb"_s),
                                                    SenhaBancoDados().toUtf8(),
                                                    dao::Connection::Mode::ReadOnly)) {
    const auto session = gDB->GetConnection();
    connection_->Run(
        "CREATE TEMP TABLE CODIGOCLIENTECONCORRENTE (CodigoClienteConcorrente INTEGER)");
    connection_->Run("CREATE TEMP VIEW REFERENCIACRUZADA1 AS " +
                     session
                         ->Value("SELECT substr(sql, instr(sql, 'SELECT')) FROM main.sqlite_schema "
                                 "WHERE name = 'REFERENCIACRUZADA1'")
                         .toByteArray());
}

// A result may be several statements, one behind the other.
Measured BareApi::Run(const QString& sql) {
    // The customer in force is the session's own choice.
    const QByteArray code =
        gDB->GetConnection()
            ->Value("SELECT CodigoClienteConcorrente FROM CODIGOCLIENTECONCORRENTE")
            .toByteArray();
    connection_->Run(
        "DELETE FROM temp.CODIGOCLIENTECONCORRENTE; INSERT INTO temp.CODIGOCLIENTECONCORRENTE "
        "VALUES (" +
        code + ")");
    const QList<QByteArray> texts = dao::Prepare(*connection_, sql).statements;

    Measured measured;
    const Clock::time_point start = Clock::now();
    qsizetype bytes = 0;
    qint64 rows = 0;
    for (const QByteArray& text : texts) {
        sqlite3_stmt* raw = nullptr;
        const int prepared = sqlite3_prepare_v2(connection_->Handle(), text.constData(),
                                                static_cast<int>(text.size()), &raw, nullptr);
        const std::unique_ptr<sqlite3_stmt, Finalizer> statement(raw);
        if (prepared != SQLITE_OK) {
            throw std::runtime_error(sqlite3_errmsg(connection_->Handle()));
        }
        while (sqlite3_step(raw) == SQLITE_ROW) {
            for (int column = 0; column < sqlite3_column_count(raw); ++column) {
                benchmark::DoNotOptimize(sqlite3_column_text(raw, column));
                bytes += sqlite3_column_bytes(raw, column);
            }
            if (++rows == FirstRows) {
                measured.firstMs = MillisecondsSince(start);
            }
        }
    }
    benchmark::DoNotOptimize(bytes);
    measured.wholeMs = MillisecondsSince(start);
    if (rows < FirstRows) {
        measured.firstMs = measured.wholeMs;
    }
    measured.rows = static_cast<double>(rows);
    return measured;
}

}  // namespace bench
