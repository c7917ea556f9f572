#pragma once

#include "importar/source.h"

namespace importar {

// A folder of CSV files, each with its headings in the first line. Below them may stand a line of
// explanation, whose first cell begins with "#".
class CsvSource : public Source {
public:
    explicit CsvSource(const QString& folder);  // Erro 53, 75, 5 with words

    const std::vector<SourceTable>& Tables() const override { return tables_; }
    void Read(std::size_t table, const Use& use) override;

private:
    std::vector<SourceTable> tables_;
    QStringList paths_;
};

}  // namespace importar
