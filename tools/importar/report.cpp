#include "verificar/report.h"

#include "importar/import.h"

using namespace Qt::StringLiterals;
using tabelas::Counted;

namespace importar {
namespace {

QString Rows(qint64 rows) {
    return rows == 1 ? u"1 linha"_s : Counted(rows) + u" linhas"_s;
}

QString TableLines(const std::vector<Loaded>& tables) {
    QString text;
    for (const Loaded& table : tables) {
        text += u"  %1 %2"_s.arg(table.table, -26).arg(Rows(table.rows), 16);
        if (table.refused > 0) {
            text += u", %1 recusada%2"_s.arg(Counted(table.refused),
                                             table.refused == 1 ? QString() : u"s"_s);
        }
        if (table.changed > 0) {
            text += u", %1 posta%2 na forma gravada"_s.arg(Counted(table.changed),
                                                           table.changed == 1 ? QString() : u"s"_s);
        }
        text += u'\n';
    }
    return text;
}

QString Lines(const QStringList& lines) {
    QString text;
    for (const QString& line : lines) {
        text += u"  "_s + line + u'\n';
    }
    return text;
}

QString RefusedLines(const Outcome& outcome) {
    if (outcome.refused == 0) {
        return {};
    }
    QString text =
        u"\nRecusadas: %1\n"_s.arg(Rows(outcome.refused)) + Lines(outcome.refusedExamples);
    if (const qint64 more = outcome.refused - outcome.refusedExamples.size(); more > 0) {
        text += u"  … e mais %1\n"_s.arg(Counted(more));
    }
    if (!outcome.refusedFile.isEmpty()) {
        text += u"  Todas, com o motivo: %1\n"_s.arg(outcome.refusedFile);
    }
    return text;
}

QString Conclusion(const Order& order, const Outcome& outcome) {
    if (order.check) {
        return u"Conferido; nada foi gravado.\n"_s;
    }
    return outcome.made ? u"Catálogo criado em \"%1\".\n"_s.arg(order.folder)
                        : u"Nada foi criado: há linhas recusadas, e foi pedido tudo ou nada.\n"_s;
}

}  // namespace

QString Report(const Order& order, const Outcome& outcome) {
    QString text = TableLines(outcome.loaded.tables);
    if (outcome.pictures > 0) {
        text += u"  %1 %2\n"_s.arg(u"figuras, fotos e ajuda"_s, -26)
                    .arg(Counted(outcome.pictures) + u" arquivos"_s, 16);
    }
    if (!outcome.remarks.isEmpty()) {
        text += u"\nObservações\n"_s + Lines(outcome.remarks);
    }
    text += RefusedLines(outcome);
    if (order.check || outcome.made) {
        text +=
            u'\n' + verificar::Report(order.check ? order.from : order.folder, outcome.findings);
    }
    return text + u'\n' + Conclusion(order, outcome);
}

}  // namespace importar
