#pragma once

#include "importar/source.h"
#include "platform/system/csv_writer.h"

#include <memory>

namespace importar {

// Rows that do not go in: file, line and reason, and the row as it stood.
class Refused {
public:
    // With an empty path they are only counted.
    Refused(QString path, int examples) : path_(std::move(path)), most_(examples) {}

    void Add(const SourceTable& table, const Row& row, const QString& reason);  // Erro 61, 75
    void Close();                                                               // Erro 61, 75

    qint64 Count() const { return count_; }
    const QStringList& Examples() const { return examples_; }

private:
    QString path_;
    int most_;
    qint64 count_ = 0;
    QStringList examples_;
    std::unique_ptr<sys::CsvWriter> file_;
};

}  // namespace importar
