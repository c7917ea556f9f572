#pragma once

#include "importar/source.h"

#include <chrono>

namespace importar {

// An old catalogue, read by a process of its own (tarvo-leitor-mdb) from a copy.
class MdbSource : public Source {
public:
    // The copy goes into `aside` and goes with the object. Throws Erro with words: of another kind,
    // of a newer format, enciphered, damaged, cut short, not to be read, no room for the copy.
    MdbSource(const QString& path, const QString& aside, std::chrono::milliseconds patience);
    ~MdbSource() override;

    const std::vector<SourceTable>& Tables() const override { return tables_; }
    // Throws Erro also when not as many rows come as the table declares.
    void Read(std::size_t table, const Use& use) override;
    QStringList Remarks() const override { return remarks_; }

private:
    QString path_;
    QString copy_;
    std::chrono::milliseconds patience_;
    std::vector<SourceTable> tables_;
    QStringList numbers_;  // of the tables, for the reader
    QStringList remarks_;
};

// Puts another program in the reader's place (tests). Empty: the real one.
void SetMdbReader(const QString& program);

}  // namespace importar
