// What the opening of a catalogue, and a search with nothing in memory, read from a file far away.
//
//   tarvo-bench-cold <data folder>    prints a section of docs/benchmarks.md

#include "platform/dao/connection.h"
#include "platform/erro.h"
#include "screen.h"
#include "session/banco.h"
#include "session/global.h"
#include "session/travas.h"
#include "slowfile.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr std::array Delays = {0ms, 1ms, 5ms};

struct Cold {
    qint64 readsToFirst = 0;
    qint64 readsToScreen = 0;  // where a read takes no time, a whole screen is painted at once
    qint64 reads = 0;
    std::array<bench::Measured, Delays.size()> slow;
};

void ForgetPages() {
    for (dao::Connection* connection : dao::Connection::All()) {
        connection->Run("PRAGMA shrink_memory");
    }
    bench::TakeTraffic();
}

Cold Measure(bench::Screen& screen, const bench::Search& search, const bench::OrderBy& order) {
    Cold cold;
    for (std::size_t i = 0; i < Delays.size(); ++i) {
        qint64 first = 0;
        cold.slow.at(i) = screen.Run(search, order,
                                     {.beforeLastKey =
                                          [&] {
                                              ForgetPages();
                                              bench::SetReadDelay(Delays.at(i));
                                          },
                                      .painted = [&] { first = bench::TakeTraffic().reads; }});
        bench::SetReadDelay(0ms);
        (i == 0 ? cold.readsToScreen : cold.readsToFirst) = first;
        cold.reads = first + bench::TakeTraffic().reads;
    }
    return cold;
}

// The steps of a start that touch the file.
void TellOpening(const QString& folder) {
    using Act = void (*)();
    struct Step {
        const char* name;
        Act act;
    };
    static constexpr Step Steps[] = {
        {"ask whether locks hold", [] { FaltaDeTravas(gCaminho); }},
        {"open the catalogue", [] { AbrirBancoDados(gWS, u"gWS"_s, gDB, false); }},
        {"shadow the customer in force", [] { RenovarSessao(); }},
    };
    gCaminho = folder + u'\\';
    double load = 0;
    getloadavg(&load, 1);
    std::printf("Load average %.1f at the start; the reads hardly depend on it.\n\n", load);
    std::puts("| Step of the start | Reads | Locks | ms |\n|---|--:|--:|--:|");
    for (const Step& step : Steps) {
        bench::TakeTraffic();
        const auto start = bench::Clock::now();
        step.act();
        const double time = bench::MillisecondsSince(start);
        const bench::Traffic traffic = bench::TakeTraffic();
        std::printf("| %s | %lld | %lld | %.2f |\n", step.name, traffic.reads, traffic.locks, time);
    }
    FecharBancoDados(gWS, gDB);
}

void TellSearches(bench::Screen& screen) {
    std::puts(
        "\n| Search | Order | Rows | Reads: first rows | screen | whole | 1 ms: painted | whole"
        " | 5 ms: painted | whole |\n|---|---|--:|--:|--:|--:|--:|--:|--:|--:|");
    for (const bench::Search& search : bench::Searches) {
        for (const bench::OrderBy& order : bench::Orders) {
            const Cold cold = Measure(screen, search, order);
            std::printf("| %s | %s | %.0f | %lld | %lld | %lld |", search.name, order.columns,
                        cold.slow.front().rows, cold.readsToFirst, cold.readsToScreen, cold.reads);
            for (std::size_t i = 1; i < Delays.size(); ++i) {
                std::printf(" %.0f | %.0f |", cold.slow.at(i).firstMs, cold.slow.at(i).wholeMs);
            }
            std::puts("");
            std::fflush(stdout);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    bench::WatchfulApplication application(argc, argv, TituloCatalogo);
    if (argc != 2) {
        std::fputs("usage: tarvo-bench-cold <data folder>\n", stderr);
        return 2;
    }
    try {
        bench::PutSlowFilesUnderTheEngine();
        const QString folder = QString::fromLocal8Bit(argv[1]);
        TellOpening(folder);
        bench::Screen screen(application, folder);
        TellSearches(screen);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tarvo-bench-cold: %s\n", error.what());
        return 1;
    }
    return 0;
}
