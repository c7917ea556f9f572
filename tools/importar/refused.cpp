#include "importar/refused.h"

using namespace Qt::StringLiterals;

namespace importar {

void Refused::Add(const SourceTable& table, const Row& row, const QString& reason) {
    if (count_++ < most_) {
        examples_ += u"%1, linha %2: %3"_s.arg(table.label).arg(row.line).arg(reason);
    }
    if (path_.isEmpty()) {
        return;
    }
    if (!file_) {
        file_ = std::make_unique<sys::CsvWriter>(path_);
        file_->Row({u"Arquivo"_s, u"Linha"_s, u"Motivo"_s, u"Campos"_s});
    }
    QStringList cells = {table.label, QString::number(row.line), reason};
    for (const Value& value : row.values) {
        cells += value.Shown();
    }
    file_->Row(cells);
}

void Refused::Close() {
    if (file_) {
        file_->Close();
    }
}

}  // namespace importar
