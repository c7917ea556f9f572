#include "verificar/report.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace verificar {
namespace {

QString Number(qint64 number) {
    return QLocale(QLocale::Portuguese, QLocale::Brazil).toString(number);
}

QString Counted(qint64 number, const QString& one, const QString& several) {
    return Number(number) + u' ' + (number == 1 ? one : several);
}

QString Section(const QString& title, Weight weight, const QList<Finding>& findings) {
    QString text;
    for (const Finding& finding : findings) {
        if (finding.weight != weight) {
            continue;
        }
        text += u"  %1: %2\n"_s.arg(finding.what, Number(finding.count));
        for (const QString& example : finding.examples) {
            text += u"      %1\n"_s.arg(example);
        }
        if (const qint64 more = finding.count - finding.examples.size(); more > 0) {
            text += u"      … e mais %1\n"_s.arg(Number(more));
        }
    }
    return text.isEmpty() ? QString() : title + u'\n' + text + u'\n';
}

qint64 Total(Weight weight, const QList<Finding>& findings) {
    qint64 total = 0;
    for (const Finding& finding : findings) {
        total += finding.weight == weight ? finding.count : 0;
    }
    return total;
}

}  // namespace

QString Report(const QString& folder, const QList<Finding>& findings) {
    const qint64 faults = Total(Weight::Fault, findings);
    const qint64 hints = Total(Weight::Hint, findings);
    return u"Pasta dos dados: %1\n\n"_s.arg(folder) + Section(u"Erros"_s, Weight::Fault, findings) +
           Section(u"Avisos"_s, Weight::Hint, findings) +
           (faults == 0 ? u"Nenhum erro"_s : Counted(faults, u"erro"_s, u"erros"_s)) + u", "_s +
           (hints == 0 ? u"nenhum aviso"_s : Counted(hints, u"aviso"_s, u"avisos"_s)) + u".\n"_s;
}

}  // namespace verificar
