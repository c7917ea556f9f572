#pragma once

#include "support/test.h"

// A table in a text file beside its test, a case a line, its cells with tabs between them.
struct Lines : Each<QStringList> {
    explicit Lines(const AnyText& path) {
        for (const QString& line : sys::ReadText(path).split(u'\n', Qt::SkipEmptyParts)) {
            (*this)(line.toUtf8(), line.split(u'\t'));
        }
    }
};

struct Case {
    QStringList lines;

    // Takes out the lines that begin with this mark, and gives back what is behind it and a blank.
    QStringList Take(QChar mark) {
        QStringList taken;
        for (const QString& line : std::as_const(lines)) {
            if (line.startsWith(mark)) {
                taken += line.mid(2);
            }
        }
        lines.removeIf([mark](const QString& line) { return line.startsWith(mark); });
        return taken;
    }
};

// One whose cases have lines of their own. "== name" begins a case; a line that begins
// with a bar goes on with the one before it; what begins with "#" or stands ahead of the first case
// is for whoever reads the file.
//     for (auto [one] : Cases(TARVO_CASES "/lines.data")) {
struct Cases : Each<Case> {
    explicit Cases(const AnyText& path) {
        for (const QString& text : (u'\n' + sys::ReadText(path)).split("\n== "_L1).mid(1)) {
            QStringList given = text.split(u'\n');
            const QByteArray name = given.takeFirst().toUtf8();
            QStringList lines;
            for (const QString& line : std::as_const(given)) {
                if (line.startsWith(u'|')) {
                    lines.last() += u'\n' + line.mid(2);
                } else if (!line.isEmpty() && !line.startsWith(u'#')) {
                    lines += line;
                }
            }
            (*this)(name, Case{lines});
        }
    }
};
