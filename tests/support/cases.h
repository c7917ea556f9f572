#pragma once

#include "support/test.h"

namespace testing_support {

// Cases that stand in a text file beside their test. "== name" begins one; a line that begins with
// a bar goes on with the one before it; what begins with "#" or stands ahead of the first case is
// for whoever reads the file.
struct Case {
    QByteArray name;
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

inline QList<Case> Cases(const QString& path) {
    QList<Case> cases;
    for (const QString& line : sys::ReadText(path).split(u'\n')) {
        if (line.startsWith("== "_L1)) {
            cases.append({line.mid(3).toUtf8(), {}});
        } else if (line.startsWith(u'|') && !cases.isEmpty()) {
            cases.last().lines.last() += u'\n' + line.mid(2);
        } else if (!line.isEmpty() && !line.startsWith(u'#') && !cases.isEmpty()) {
            cases.last().lines += line;
        }
    }
    return cases;
}

}  // namespace testing_support
