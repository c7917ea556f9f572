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

// What the other side answers when it has changed the file.
constexpr char Granted = 's';

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

double Milliseconds(const auto& work) {
    QElapsedTimer since;
    since.start();
    work();
    return double(since.nsecsElapsed()) / 1e6;
}

std::unique_ptr<dao::Workspace> NewWorkspace() {
    return dao::DBEngine::Instance().CreateWorkspace(u"prova"_s, u"admin"_s, QString(),
                                                     dao::dbUseJet);
}

std::unique_ptr<dao::Database> OpenTrial(dao::Workspace& workspace, const QString& file) {
    return workspace.OpenDatabase(file, false, false, Connect);
}

bool MayOtherWrite(const QString& program, const QString& file) {
    sys::Child other(program, {OtherSide, file}, 30s);
    char answer = '\0';
    return other.Read(&answer, sizeof answer) && answer == Granted;
}

// The locks that an update relies on, taken by the engine itself: against another writer, and
// against a writer while this side reads. False where none can be had, so that nothing can be read.
bool TryLocks(const QString& folder, const QString& program, Network& network) {
    const QTemporaryDir own(folder +
                            u"/tarvo-prova-XXXXXX"_s);  // the engine makes a companion file
    const QString file = own.filePath(u"prova.mdb"_s);
    try {
        if (!own.isValid()) {
            throw Erro(Erro::PathFileAccess);
        }
        dao::DBEngine::Instance().CreateDatabase(file, Connect, TrialDefinition);
    } catch (const Erro& erro) {
        if (erro.Number() == int(dao::Failure::Locked)) {
            network.faults +=
                u"Nem um arquivo novo, que ninguém mais usa, pode ser travado e gravado nesta "
                "pasta: nada poderá ser atualizado."_s;
            return false;
        }
        network.hints +=
            u"Nada pode ser gravado na pasta (%1): as travas não foram postas à prova "
            "entre dois programas."_s.arg(erro.Description());
        return true;
    }
    const auto workspace = NewWorkspace();
    const auto trial = OpenTrial(*workspace, file);
    workspace->BeginTrans();
    trial->Execute(u"UPDATE PROVA SET a = a"_s, dao::dbFailOnError);
    const bool whileWriting = MayOtherWrite(program, file);
    workspace->Rollback();
    auto rows = trial->OpenRecordset(u"SELECT a FROM PROVA"_s, dao::dbOpenForwardOnly);
    const bool whileReading = MayOtherWrite(program, file);
    rows.reset();
    const bool afterwards = MayOtherWrite(program, file);
    if (whileWriting) {
        network.faults +=
            u"Dois programas gravaram no mesmo arquivo ao mesmo tempo: a trava de "
            "gravação não vale nesta pasta."_s;
    }
    if (whileReading) {
        network.faults +=
            u"Um programa gravou enquanto outro lia o mesmo arquivo: a trava de "
            "leitura não vale nesta pasta."_s;
    }
    if (!afterwards) {
        network.faults +=
            u"Um arquivo que ninguém mais usa continua travado ou não pode ser aberto "
            "por outro programa."_s;
    }
    return true;
}

void TimeFlushes(const QString& folder, Network& network) {
    const QString file = folder + u"/tarvo-prova.tmp"_s;
    const auto cleanUp = qScopeGuard([&file] { QFile::remove(file); });
    std::array<double, Flushes> times{};
    try {
        for (double& time : times) {
            time = Milliseconds([&file] { sys::WriteWhole(file, "x"); });
        }
    } catch (const Erro&) {
        return;  // the locks' trial has told that nobody may write
    }
    std::ranges::sort(times);
    network.flushMs = times[Flushes / 2];
}

void TimeFirstSearch(const QString& catalogue, Network& network) {
    std::shared_ptr<dao::Connection> connection;
    network.openMs = Milliseconds([&] {
        connection = std::make_shared<dao::Connection>(catalogue, SenhaBancoDados().toUtf8(),
                                                       dao::Connection::Mode::ReadOnly);
    });
    network.openPages = connection->PagesRead();
    network.searchMs = Milliseconds([&connection] {
        dao::OpenRecordset(connection,
                           u"SELECT NumeroTarvoPeca, DescricaoPeca "
                           "FROM PECA "
                           "WHERE NumeroTarvoPeca LIKE '1*' "
                           "ORDER BY NumeroTarvoPeca"_s,
                           dao::dbOpenDynaset)
            ->ReadUpTo(RowsOnScreen);
    });
    network.searchPages = connection->PagesRead() - network.openPages;
}

}  // namespace

void PlayOther(const QString& trialFile) {
    try {
        const auto workspace = NewWorkspace();
        OpenTrial(*workspace, trialFile)
            ->Execute(u"UPDATE PROVA SET a = a"_s, dao::dbFailOnError + dao::dbSeeChanges);
        sys::Print(stdout, QString(QLatin1Char(Granted)));
    } catch (const Erro&) {
        // That it says nothing is its answer.
    }
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
    if (TryLocks(folder, program, network)) {
        TimeFlushes(folder, network);
        TimeFirstSearch(catalogue, network);
    }
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
    QStringList hints = network.hints;
    if (network.flushMs > 0 && network.flushMs < FastestDisk) {
        hints +=
            u"Gravar com descarga leva só %1 ms: o que é dado por gravado pode ainda "
            "estar na memória do servidor, e uma queda de energia o perde."_s.arg(
                pt.toString(network.flushMs, 'f', 3));
    }
    for (const QString& hint : std::as_const(hints)) {
        text += u"Aviso  "_s + hint + u'\n';
    }
    if (network.faults.isEmpty()) {
        text += u"As travas de arquivo valem nesta pasta, até onde se vê deste computador.\n"_s;
    }
    if (network.openMs > 0) {
        text +=
            u"\nAbrir o catálogo:   %1, %2 páginas lidas\n"
            "Primeira pesquisa:  %3, %4 páginas lidas\n"_s.arg(
                ms(network.openMs), pt.toString(network.openPages), ms(network.searchMs),
                pt.toString(network.searchPages));
    }
    if (network.flushMs > 0) {
        text += u"Gravar no disco:    %1\n"_s.arg(ms(network.flushMs));
    }
    return text;
}

}  // namespace verificar
