#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace importar {

// Texts and the codes that go with them, for links that are told by number or name. A million take
// some ten bytes each beyond their own: one piece of memory, sorted when it is first searched.
class Names {
public:
    static constexpr int None = 0;
    static constexpr int Several = -1;

    void Add(const QString& name, int code);
    // The code of a name, without regard to case; None, or Several when it stands for more than
    // one.
    int Find(const QString& name);

private:
    struct Entry {
        quint32 start;
        quint32 size;
        int code;
    };
    QByteArrayView TextOf(const Entry& entry) const;

    QByteArray texts_;
    std::vector<Entry> entries_;
    bool sorted_ = true;
};

}  // namespace importar
