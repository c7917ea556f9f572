#include "platform/secret.h"

#include <atomic>

namespace {

template <typename Text>
void WipeContent(Text& text) noexcept {
    if (text.isDetached()) {
        // Up to the capacity: the text may have been longer before.
        secret::Wipe(text.data(), static_cast<std::size_t>(text.capacity()) * sizeof(*text.data()));
    }
    text = Text();
}

}  // namespace

void secret::Wipe(void* bytes, std::size_t count) noexcept {
    auto* byte = static_cast<volatile unsigned char*>(bytes);
    for (std::size_t i = 0; i < count; ++i) {
        byte[i] = 0;
    }
    std::atomic_signal_fence(std::memory_order_seq_cst);
}

void secret::Wipe(QString& text) noexcept {
    WipeContent(text);
}

void secret::Wipe(QByteArray& bytes) noexcept {
    WipeContent(bytes);
}
