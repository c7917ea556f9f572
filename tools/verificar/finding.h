#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <algorithm>

namespace verificar {

enum class Weight {
    Fault,  // something will not be found, not be shown, or stop the program
    Hint,   // allowed, but perhaps not meant
};

struct Finding {
    Weight weight;
    QString what;  // for the user, in Portuguese
    qint64 count;
    QStringList examples;  // the first ones
};

inline bool HasFault(const QList<Finding>& findings) {
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.weight == Weight::Fault; });
}

// Collects one finding: counts every case and keeps the first as examples.
class Cases {
public:
    Cases(Weight weight, const QString& what, int examples)
        : finding_{weight, what, 0, {}}, examples_(examples) {}

    void Add(const QString& example) {
        if (finding_.count++ < examples_) {
            finding_.examples += example;
        }
    }
    // Appends the finding if there was any case.
    void AppendTo(QList<Finding>& findings) const {
        if (finding_.count > 0) {
            findings += finding_;
        }
    }

private:
    Finding finding_;
    int examples_;
};

}  // namespace verificar
