#pragma once

#include <QString>
#include <QVariant>

#include <memory>
#include <vector>

namespace dao {

class Statement;

// The rows of a result, packed one behind the other into large blocks: no object per cell, texts
// as UTF-8 until somebody asks for one. Growing never moves what is there.
class RowStore {
public:
    void Append(const Statement& row, int columns);
    void Clear();

    qint64 Rows() const { return static_cast<qint64>(rows_.size()); }
    QVariant Value(qint64 row, int column) const;
    QString Text(qint64 row, int column) const;  // Null as the empty text

private:
    struct Stored;
    class Writer;
    const char* Find(qint64 row, int column) const;
    static Stored Decode(const char* at);
    void AddBlock(std::size_t bytes);

    std::vector<std::unique_ptr<char[]>> blocks_;
    std::vector<const char*> rows_;
    char* free_ = nullptr;
    char* end_ = nullptr;
};

}  // namespace dao
