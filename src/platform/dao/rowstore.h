#pragma once

#include "platform/dao/memorylimit.h"

#include <QString>
#include <QVariant>

#include <deque>
#include <memory>
#include <vector>

namespace dao {

class Statement;

// The rows of a result, packed one behind the other into large blocks: no object per cell, texts
// as UTF-8 until somebody asks for one. Growing never moves what is there.
class RowStore {
public:
    void Append(const Statement& row, int columns);  // throws 3035 for more than a result may keep
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

    struct Block {
        std::unique_ptr<char[]> bytes;
        std::size_t size;
    };
    MemoryShare share_;
    std::vector<Block> blocks_;
    std::deque<const char*> rows_;
    char* free_ = nullptr;
    char* end_ = nullptr;
};

}  // namespace dao
