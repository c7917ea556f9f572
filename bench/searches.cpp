// searches DATA RUNS: runs a fixed list of searches in a data folder. Their rows go to the standard
// output, as they come, so that two systems can be compared; to the error output, for each search
// of each run, their number and the milliseconds until the first hundred rows and until the last
// one.
#include "platform/convert.h"
#include "platform/erro.h"
#include "session/banco.h"
#include "session/global.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 Screenful = 100;

// Orders by texts with accents, digits, blanks and both cases in them; patterns; joins.
constexpr const char16_t* Searches[] = {
    u"SELECT NumeroTarvoPeca, DescricaoPeca FROM PECA WHERE NumeroTarvoPeca LIKE '1*' "
    "ORDER BY NumeroTarvoPeca, DescricaoPeca",
    u"SELECT DescricaoComponente, NumeroTarvoComponente FROM COMPONENTE "
    "ORDER BY DescricaoComponente, NumeroTarvoComponente",
    u"SELECT DescricaoComponente, NumeroTarvoComponente FROM COMPONENTE "
    "WHERE DescricaoComponente LIKE '*anel*' ORDER BY DescricaoComponente DESC, "
    "NumeroTarvoComponente",
    u"SELECT DescricaoVeiculo FROM VEICULO ORDER BY DescricaoVeiculo",
    u"SELECT NumeroClienteConcorrente, NumeroTarvo FROM REFERENCIACRUZADA "
    "WHERE NumeroClienteConcorrente LIKE '*2?' ORDER BY NumeroClienteConcorrente, NumeroTarvo",
    u"SELECT DescricaoPeca, DescricaoVeiculo FROM (PECA INNER JOIN VEICULO_PECA "
    "ON PECA.CodigoPeca = VEICULO_PECA.CodigoPeca) INNER JOIN VEICULO "
    "ON VEICULO_PECA.CodigoVeiculo = VEICULO.CodigoVeiculo "
    "WHERE DescricaoPeca LIKE 'v?lvula*' ORDER BY DescricaoVeiculo, DescricaoPeca, PECA.CodigoPeca",
    u"SELECT Left(DescricaoPeca, 3), Count(*) FROM PECA GROUP BY Left(DescricaoPeca, 3) "
    "ORDER BY Left(DescricaoPeca, 3)",
};

void Print(const dao::Recordset& rows) {
    for (qint64 row = 0; row < rows.RecordCount(); ++row) {
        QStringList texts;
        for (int column = 0; column < rows.FieldCount(); ++column) {
            texts += rows.Text(row, column);
        }
        std::printf("%s\n", qUtf8Printable(texts.join(u" | "_s)));
    }
}

void Run(const QString& sql, bool print) {
    QElapsedTimer timer;
    timer.start();
    const auto rows = gDB->OpenRecordset(sql);
    rows->ReadUpTo(Screenful);
    const auto first = double(timer.nsecsElapsed()) / 1e6;
    while (!rows->ReadFor(std::chrono::milliseconds(50))) {
    }
    std::fprintf(stderr, "%lld %.1f %.1f\n", static_cast<long long>(rows->RecordCount()), first,
                 double(timer.nsecsElapsed()) / 1e6);
    if (print) {
        Print(*rows);
    }
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        return 2;
    }
    try {
        gCaminho = QString(arguments.at(1)).replace(u'/', u'\\') + u'\\';
        AbrirSessao();
        for (int run = 0; run < arguments.at(2).toInt(); ++run) {
            for (const char16_t* sql : Searches) {
                Run(QString::fromUtf16(sql), run == 0);
            }
        }
        FecharBancoDados(gWS, gDB);
    } catch (const Erro& erro) {
        std::fprintf(stderr, "%d: %s\n", erro.Number(), qUtf8Printable(erro.Description()));
        return 1;
    }
    return 0;
}
