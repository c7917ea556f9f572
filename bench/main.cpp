#include "capi.h"
#include "platform/erro.h"
#include "screen.h"
#include "session/global.h"

#include <cstdio>
#include <exception>

using namespace Qt::StringLiterals;

namespace {

void RegisterAll(bench::Screen& screen, bench::BareApi& api) {
    for (const bench::Search& search : bench::Searches) {
        for (const bench::OrderBy& order : bench::Orders) {
            const auto name = [&](const QString& side) {
                return bench::CaseName(side, search, order).toUtf8();
            };
            bench::Register(name(u"screen"_s).constData(), bench::Repetitions(),
                            [&screen, &search, &order] { return screen.Run(search, order); });
            // The screen has just asked this, so the row of the party in force is the right one.
            bench::Register(name(u"C API"_s).constData(), bench::Repetitions(),
                            [&screen, &api] { return api.Run(screen.Sql()); });
        }
    }
}

}  // namespace

// tarvo-bench <data folder> [options of the benchmark library]
int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    bench::WatchfulApplication application(argc, argv, TituloCatalogo);
    if (argc != 2) {
        std::fputs("usage: tarvo-bench <data folder> [--benchmark_...]\n", stderr);
        return 2;
    }
    try {
        const QString folder = QString::fromLocal8Bit(argv[1]);
        bench::Screen screen(application, folder);
        bench::BareApi api(folder);
        RegisterAll(screen, api);
        benchmark::RunSpecifiedBenchmarks();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tarvo-bench: %s\n", error.what());
        return 1;
    }
    return 0;
}
