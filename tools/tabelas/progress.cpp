#include "tabelas/progress.h"

#include "platform/system/usage.h"
#include "tabelas/interrupt.h"

#include <QLocale>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace tabelas {
namespace {

constexpr qint64 BetweenLines = 250;  // milliseconds
constexpr qint64 Second = 1000;
constexpr qint64 Minute = 60;
constexpr qint64 FirstGuess = 2 * Second;
constexpr int LineWidth = 78;

QString TimeLeft(qint64 milliseconds) {
    const qint64 seconds = std::max<qint64>(1, milliseconds / Second);
    return seconds < Minute ? u"%1 s"_s.arg(seconds)
                            : u"%1 min %2 s"_s.arg(seconds / Minute).arg(seconds % Minute);
}

}  // namespace

QString Counted(qint64 number) {
    return QLocale(QLocale::Portuguese, QLocale::Brazil).toString(number);
}

Progress::Progress(Show show) : show_(std::move(show)) {
    sinceStart_.start();
    sinceShown_.start();
}

void Progress::Start(qint64 total) {
    total_ = total;
    sinceStart_.start();
}

void Progress::Stage(const QString& what) {
    StopIfInterrupted();
    stage_ = what;
    if (show_) {
        show_(stage_);
        sinceShown_.start();
    }
}

void Progress::Tell(qint64 done, qint64 rows) {
    StopIfInterrupted();
    if (!show_ || sinceShown_.elapsed() < BetweenLines) {
        return;
    }
    QString line = u"%1: %2 linhas"_s.arg(stage_, Counted(rows));
    const qint64 elapsed = sinceStart_.elapsed();
    if (total_ > 0 && done > 0 && elapsed >= FirstGuess) {
        line += u", %1 %, faltam %2"_s.arg(std::min<qint64>(100, done * 100 / total_))
                    .arg(TimeLeft(elapsed * std::max<qint64>(0, total_ - done) / done));
    }
    show_(line);
    sinceShown_.start();
}

Progress::Show OnTerminal() {
    if (!sys::IsTerminal(stderr)) {
        return {};
    }
    return [](const QString& line) {
        // The blanks cover what a longer line left behind.
        sys::Print(stderr, u'\r' + line.leftJustified(LineWidth));
        if (line.isEmpty()) {
            sys::Print(stderr, u"\r"_s);
        }
    };
}

}  // namespace tabelas
