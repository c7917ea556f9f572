#pragma once

#include <QElapsedTimer>
#include <QString>

#include <functional>

namespace tabelas {

// "1.234.567"
QString Counted(qint64 number);

// Tells how far long work is, a few times a second, and stops it when the user interrupts.
class Progress {
public:
    using Show = std::function<void(const QString& line)>;
    explicit Progress(Show show = {});

    // `total` in whatever unit the steps are counted in.
    void Start(qint64 total);
    void Stage(const QString& what);  // from here on what the line begins with
    // `done` of the total; `rows` of this stage. Cheap enough for every row.
    void Step(qint64 done, qint64 rows) {
        if ((++calls_ & CallsBetween) == 0) {
            Tell(done, rows);
        }
    }

private:
    static constexpr int CallsBetween = 0x3FF;
    void Tell(qint64 done, qint64 rows);

    Show show_;
    QElapsedTimer sinceStart_;
    QElapsedTimer sinceShown_;
    QString stage_;
    qint64 total_ = 0;
    int calls_ = 0;
};

// Lines on the standard error, each in the place of the one before; nothing where that is a file.
Progress::Show OnTerminal();

}  // namespace tabelas
