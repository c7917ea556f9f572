#include "verificar/network.h"

#include "platform/dao/connection.h"
#include "platform/dao/dao.h"
#include "platform/dao/errors.h"
#include "platform/erro.h"
#include "platform/system/child.h"
#include "platform/system/filelocks.h"
#include "platform/system/paths.h"
#include "platform/system/usage.h"
#include "session/banco.h"
#include "session/travas.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QScopeGuard>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <chrono>
#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace verificar {
namespace {

// What the other side answers.
constexpr char Kept = 'n';     // the file is locked
constexpr char Granted = 's';  // it was changed
constexpr char Failed = 'e';

constexpr auto Connect = ";pwd=prova"_L1;
// More rows than are read at once, so that a reading side keeps its lock.
constexpr char TrialDefinition[] =
    "CREATE TABLE PROVA (a INTEGER);"
    "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) "
    "INSERT INTO PROVA SELECT i FROM n";
constexpr int Flushes = 9;
constexpr double FastestDisk =
    0.05;  // milliseconds; no flush to a disk or over a network is faster
constexpr int RowsOnScreen = 12;

double Milliseconds(const QElapsedTimer& since) {
    return double(since.nsecsElapsed()) / 1e6;
}

std::unique_ptr<dao::Database> OpenTrial(dao::Workspace& workspace, const QString& file) {
    return workspace.OpenDatabase(file, false, false, Connect);
}

char AskOther(const QString& program, const QString& file) {
    sys::Child other(program, {OtherSide, file}, 30s);
    char answer = Failed;
    return other.Read(&answer, 1) ? answer : Failed;
}

// The locks that an update relies on, taken by the engine itself: against another writer, and
// against a writer while this side reads.
void TryLocks(const QString& folder, const QString& program, Network& network) {
    const QTemporaryDir own(folder +
                            u"/tarvo-prova-XXXXXX"_s);  // the engine makes a companion file
    const QString file = own.filePath(u"prova.mdb"_s);
    try {
        dao::DBEngine::Instance().CreateDatabase(file, Connect, TrialDefinition);
    } catch (const Erro& erro) {
        if (erro.Number() == int(dao::Failure::Locked)) {
            network.faults +=
                u"Nem um arquivo novo, que ninguém mais usa, pode ser travado e gravado nesta "
                "pasta: nada poderá ser atualizado."_s;
            return;
        }
        network.hints +=
            u"Nada pode ser gravado na pasta (%1): as travas não foram postas à prova "
            "entre dois programas."_s.arg(erro.Description());
        return;
    }
    const auto workspace =
        dao::DBEngine::Instance().CreateWorkspace(u"prova"_s, u"admin"_s, QString(), dao::dbUseJet);
    const auto trial = OpenTrial(*workspace, file);
    workspace->BeginTrans();
    trial->Execute(u"UPDATE PROVA SET a = a"_s, dao::dbFailOnError);
    const char whileWriting = AskOther(program, file);
    workspace->Rollback();
    char whileReading = Failed;
    {
        const auto rows = trial->OpenRecordset(u"SELECT a FROM PROVA"_s, dao::dbOpenForwardOnly);
        whileReading = AskOther(program, file);
    }
    const char afterwards = AskOther(program, file);
    if (whileWriting == Granted) {
        network.faults +=
            u"Dois programas gravaram no mesmo arquivo ao mesmo tempo: a trava de "
            "gravação não vale nesta pasta."_s;
    }
    if (whileReading == Granted) {
        network.faults +=
            u"Um programa gravou enquanto outro lia o mesmo arquivo: a trava de "
            "leitura não vale nesta pasta."_s;
    }
    if (afterwards != Granted) {
        network.faults +=
            u"Um arquivo que ninguém mais usa continua travado ou não pode ser aberto "
            "por outro programa."_s;
    }
}

void TimeFlushes(const QString& folder, Network& network) {
    const QString file = folder + u"/tarvo-prova.tmp"_s;
    const auto cleanUp = qScopeGuard([&file] { QFile::remove(file); });
    std::array<double, Flushes> times{};
    try {
        for (double& time : times) {
            QElapsedTimer since;
            since.start();
            sys::WriteWhole(file, QByteArray(4096, 'x'));
            time = Milliseconds(since);
        }
    } catch (const Erro&) {
        return;  // the locks' trial has told that nobody may write
    }
    std::nth_element(times.begin(), times.begin() + Flushes / 2, times.end());
    network.flushMs = times[Flushes / 2];
    if (network.flushMs < FastestDisk) {
        network.hints +=
            u"Gravar com descarga leva só %1 ms: o que é dado por gravado pode ainda "
            "estar na memória do servidor, e uma queda de energia o perde."_s.arg(
                QLocale(QLocale::Portuguese).toString(network.flushMs, 'f', 3));
    }
}

void TimeFirstSearch(const QString& catalogue, Network& network) {
    QElapsedTimer since;
    since.start();
    const auto connection = std::make_shared<dao::Connection>(catalogue, SenhaBancoDados().toUtf8(),
                                                              dao::Connection::Mode::ReadOnly);
    network.openMs = Milliseconds(since);
    network.openPages = connection->PagesRead();
    since.restart();
    const auto rows = dao::OpenRecordset(connection,
                                         u"SELECT NumeroTarvoPeca, DescricaoPeca "
                                         "FROM PECA "
                                         "WHERE NumeroTarvoPeca LIKE '1*' "
                                         "ORDER BY NumeroTarvoPeca"_s,
                                         dao::dbOpenDynaset);
    rows->ReadUpTo(RowsOnScreen);
    network.searchMs = Milliseconds(since);
    network.searchPages = connection->PagesRead() - network.openPages;
}

}  // namespace

void PlayOther(const QString& trialFile) {
    char answer = Granted;
    try {
        const auto workspace = dao::DBEngine::Instance().CreateWorkspace(u"outro"_s, u"admin"_s,
                                                                         QString(), dao::dbUseJet);
        OpenTrial(*workspace, trialFile)
            ->Execute(u"UPDATE PROVA SET a = a"_s, dao::dbFailOnError + dao::dbSeeChanges);
    } catch (const Erro& erro) {
        answer = erro.Number() == int(dao::Failure::Locked) ? Kept : Failed;
    }
    sys::Print(stdout, QString(QLatin1Char(answer)));
}

Network CheckNetwork(const QString& folder, const QString& program) {
    const QString catalogue = folder + u"/Tarvo.mdb"_s;
    if (!QFileInfo::exists(catalogue)) {
        throw Erro(Erro::FileNotFound, u"Não há catálogo em \"%1\"."_s.arg(catalogue));
    }
    Network network;
    network.fileSystem = sys::MountOf(catalogue).type;
    if (const QString why = FaltaDeTravas(folder + u'\\'); !why.isEmpty()) {
        network.faults += why;
    }
    TryLocks(folder, program, network);
    TimeFlushes(folder, network);
    TimeFirstSearch(catalogue, network);
    return network;
}

QString Report(const QString& folder, const Network& network) {
    const QLocale pt(QLocale::Portuguese, QLocale::Brazil);
    const auto ms = [&pt](double value) { return pt.toString(value, 'f', 1) + u" ms"_s; };
    QString text = u"%1 (%2)\n\n"_s.arg(folder, network.fileSystem.isEmpty()
                                                    ? u"sistema de arquivos desconhecido"_s
                                                    : network.fileSystem);
    for (const QString& fault : network.faults) {
        text += u"ERRO   "_s + fault + u'\n';
    }
    for (const QString& hint : network.hints) {
        text += u"Aviso  "_s + hint + u'\n';
    }
    if (network.faults.isEmpty()) {
        text += u"As travas de arquivo valem nesta pasta, até onde se vê deste computador.\n"_s;
    }
    text += u"\nAbrir o catálogo:   %1, %2 páginas lidas\n"_s.arg(ms(network.openMs),
                                                                  pt.toString(network.openPages));
    text += u"Primeira pesquisa:  %1, %2 páginas lidas\n"_s.arg(ms(network.searchMs),
                                                                pt.toString(network.searchPages));
    if (network.flushMs > 0) {
        text += u"Gravar no disco:    %1\n"_s.arg(ms(network.flushMs));
    }
    return text;
}

}  // namespace verificar
