#include "importar/names.h"

#include <algorithm>

namespace importar {

QByteArrayView Names::TextOf(const Entry& entry) const {
    return QByteArrayView(texts_).sliced(entry.start, entry.size);
}

void Names::Add(const QString& name, int code) {
    const QByteArray text = name.toCaseFolded().toUtf8();
    entries_.push_back(
        {static_cast<quint32>(texts_.size()), static_cast<quint32>(text.size()), code});
    texts_ += text;
    sorted_ = false;
}

int Names::Find(const QString& name) {
    if (!sorted_) {
        std::sort(entries_.begin(), entries_.end(),
                  [this](const Entry& a, const Entry& b) { return TextOf(a) < TextOf(b); });
        sorted_ = true;
    }
    const QByteArray text = name.toCaseFolded().toUtf8();
    const auto first = std::lower_bound(
        entries_.begin(), entries_.end(), QByteArrayView(text),
        [this](const Entry& entry, QByteArrayView wanted) { return TextOf(entry) < wanted; });
    const auto last = std::find_if(first, entries_.end(),
                                   [&](const Entry& entry) { return TextOf(entry) != text; });
    if (first == last) {
        return None;
    }
    return std::all_of(first, last, [first](const Entry& each) { return each.code == first->code; })
               ? first->code
               : Several;
}

}  // namespace importar
