// tarvo-bench-update <folder> [options of the benchmark library]: what an update costs beside the
// bare tools. A script of lines of data beside the same statements through the engine's C API, in
// groups of the same length, and beside a commit a line; a large download beside the curl program.
// Both sides take turns, so that whatever else the machine does hits both. What a commit costs is
// the disk's affair: the folder should lie on one.
#include "platform/dao/connection.h"
#include "platform/erro.h"
#include "platform/forms/application.h"
#include "platform/system/paths.h"
#include "session/banco.h"
#include "session/esquema.h"
#include "session/global.h"
#include "update/internet.h"
#include "update/scripts.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QThread>

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <optional>
#include <sqlite3.h>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int Block = 10'000;  // lines between two turns
constexpr int Singles = 300;   // lines that are committed each by itself
constexpr auto Group = std::chrono::milliseconds(250);
constexpr qint64 Megabytes = 200;
constexpr int Downloads = 5;

double SecondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

int Lines() {
    bool given = false;
    const int lines = qEnvironmentVariableIntValue("BENCH_LINES", &given);
    return given && lines > 0 ? lines : 100'000;
}

QString NewCatalogue(const QString& folder, const QString& name) {
    const QString path = folder + u'/' + name;
    QDir(path).removeRecursively();
    QDir().mkpath(path);
    CriarCatalogo(path + "/Tarvo.mdb"_L1, SenhaBancoDados());
    return path;
}

QString LineOf(int number) {
    return u"%1<<;>>K%1<<;>>Anel de vedação %1"_s.arg(number);
}

// The lines as the update's fourth step runs them, events included.
class Script {
public:
    explicit Script(const QString& folder) {
        gCaminho = NewCatalogue(folder, u"script"_s) + u'\\';
        scripts_.emplace([] {
            forms::DoEventsInTime();
            return true;
        });
        scripts_->ExecutarComandoAtualizacao(
            u"B:INSERT INTO COMPONENTE (CodigoComponente, NumeroTarvoComponente, "
            "DescricaoComponente) VALUES (1?, '2?', '3?')"_s);
    }

    void Run(int first, int end) {
        for (int line = first; line < end; ++line) {
            scripts_->ExecutarComandoAtualizacao(LineOf(line));
            forms::DoEventsInTime();
        }
        scripts_->FecharGrupo();
    }

private:
    std::optional<ScriptsDaAtualizacao> scripts_;
};

// The same statements through the engine's C API, in groups of the same length or each by itself.
class BareStatements {
public:
    enum class Commit { Groups, Lines };

    BareStatements(const QString& folder, const QString& name, Commit commit)
        : commit_(commit),
          connection_(NewCatalogue(folder, name) + "/Tarvo.mdb"_L1, SenhaBancoDados().toUtf8(),
                      dao::Connection::Mode::ReadWrite) {}

    void Run(int first, int end) {
        Clock::time_point begin;
        bool open = false;
        for (int line = first; line < end; ++line) {
            if (commit_ == Commit::Groups && !open) {
                Execute("BEGIN");
                open = true;
                begin = Clock::now();
            }
            const QByteArray number = QByteArray::number(line);
            Execute(
                "INSERT INTO COMPONENTE (CodigoComponente, NumeroTarvoComponente, "
                "DescricaoComponente) VALUES (" +
                number + ", 'K" + number + "', 'Anel de vedação " + number + "')");
            if (open && Clock::now() - begin >= Group) {
                Execute("COMMIT");
                open = false;
            }
        }
        if (open) {
            Execute("COMMIT");
        }
    }

private:
    void Execute(const QByteArray& sql) {
        if (sqlite3_exec(connection_.Handle(), sql.constData(), nullptr, nullptr, nullptr) !=
            SQLITE_OK) {
            throw std::runtime_error(sqlite3_errmsg(connection_.Handle()));
        }
    }

    Commit commit_;
    dao::Connection connection_;
};

template <typename Side>
double Seconds(Side& side, int first, int end) {
    const Clock::time_point start = Clock::now();
    side.Run(first, end);
    return SecondsSince(start);
}

void MeasureScript(benchmark::State& state, const QString& folder) {
    using Commit = BareStatements::Commit;
    for ([[maybe_unused]] auto iteration : state) {
        Script script(folder);
        BareStatements bare(folder, u"bare"_s, Commit::Groups);
        double ours = 0;
        double theirs = 0;
        for (int line = 1; line <= Lines(); line += Block) {
            const int end = std::min(line + Block, Lines() + 1);
            ours += Seconds(script, line, end);
            theirs += Seconds(bare, line, end);
        }
        BareStatements single(folder, u"single"_s, Commit::Lines);
        const double each = Seconds(single, 1, Singles + 1) / Singles;
        state.SetIterationTime(ours);
        state.counters["lines"] = Lines();
        state.counters["c_api_s"] = theirs;
        state.counters["times_c_api"] = ours / theirs;
        state.counters["ms_a_line_each_committed"] = each * 1000;
        state.counters["times_faster_than_each_committed"] = each * Lines() / ours;
    }
}

// A web server of the distribution's, reached as the system's proxy: port 80 is not ours to take.
class WebServer {
public:
    explicit WebServer(const QString& folder) {
        const QString root = folder + "/www"_L1;
        QDir().mkpath(root);
        QFile large(root + "/large.bin"_L1);
        if (large.size() != Megabytes << 20) {
            Write(large, QByteArray(1 << 20, 'x'), Megabytes);
            large.close();
        }
        QFile configuration(folder + "/lighttpd.conf"_L1);
        Write(configuration,
              (u"server.document-root = \"%1\"\nserver.bind = \"127.0.0.1\"\n"
               "server.port = %2\n"_s.arg(root)
                   .arg(Port))
                  .toUtf8(),
              1);
        configuration.close();
        process_.start(u"/usr/sbin/lighttpd"_s, {u"-D"_s, u"-f"_s, configuration.fileName()});
        process_.waitForStarted();
        QThread::sleep(1);  // it says nowhere when it listens
        qputenv("http_proxy", "http://127.0.0.1:" + QByteArray::number(Port));
    }
    ~WebServer() {
        process_.terminate();
        process_.waitForFinished();
    }

private:
    static constexpr int Port = 38080;

    static void Write(QFile& file, const QByteArray& piece, qint64 times) {
        if (!file.open(QIODevice::WriteOnly)) {
            throw std::runtime_error("cannot write " + file.fileName().toStdString());
        }
        for (qint64 i = 0; i < times; ++i) {
            file.write(piece);
        }
    }

    QProcess process_;
};

void MeasureDownload(benchmark::State& state, const QString& folder) {
    const QString address = u"atualiza.exemplo"_s;
    for ([[maybe_unused]] auto iteration : state) {
        const WebServer server(folder);
        gCaminho = folder + u'\\';
        double ours = 1e9;
        double theirs = 1e9;
        for (int i = 0; i < Downloads; ++i) {
            Clock::time_point start = Clock::now();
            const QString file = folder + "/curl.bin"_L1;
            if (QProcess::execute(u"curl"_s, {u"-s"_s, u"-f"_s, u"-0"_s, u"-o"_s, file,
                                              u"http://"_s + address + "/large.bin"_L1}) != 0) {
                throw std::runtime_error("curl failed");
            }
            theirs = std::min(theirs, SecondsSince(start));
            start = Clock::now();
            HttpConectar(address);
            const QString got =
                HttpExecutar(u"D"_s, true, u"large.bin"_s, false, folder + "\\ours.bin"_L1,
                             QString(), QString(), QString(), QString());
            HttpDesconectar();
            ours = std::min(ours, SecondsSince(start));
            if (QFile(sys::ToNative(got)).size() != Megabytes << 20) {
                throw std::runtime_error("not the whole file came down");
            }
        }
        state.SetIterationTime(ours);
        state.counters["MB_per_s"] = Megabytes / ours;
        state.counters["curl_MB_per_s"] = Megabytes / theirs;
        state.counters["of_curl"] = theirs / ours;
    }
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    const forms::Application application(argc, argv, TituloCatalogo);
    if (argc != 2) {
        std::fputs("usage: tarvo-bench-update <folder> [--benchmark_...]\n", stderr);
        return 2;
    }
    const QString folder = QDir(QString::fromLocal8Bit(argv[1])).absolutePath();
    QDir().mkpath(folder);
    const auto add = [&](const char* name, void (*run)(benchmark::State&, const QString&)) {
        benchmark::RegisterBenchmark(name, [=](benchmark::State& state) { run(state, folder); })
            ->UseManualTime()
            ->Unit(benchmark::kSecond)
            ->Iterations(1);
    };
    add("script", MeasureScript);
    add("download", MeasureDownload);
    try {
        benchmark::RunSpecifiedBenchmarks();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tarvo-bench-update: %s\n", error.what());
        return 1;
    }
    return 0;
}
