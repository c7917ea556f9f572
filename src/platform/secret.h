#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <cstddef>

// Passwords, keys and clear texts must not lie in memory longer than they are used: what is left
// there ends up in core dumps and swap files.
namespace secret {

// Overwrites in a way that the compiler may not leave out as a write that nobody reads.
void Wipe(void* bytes, std::size_t count) noexcept;

// Overwrites the content and empties the text. A content that somebody else shares stays as it is:
// the last owner wipes it.
void Wipe(QString& text) noexcept;
void Wipe(QByteArray& bytes) noexcept;
template <typename Value, std::size_t Count>
void Wipe(std::array<Value, Count>& values) noexcept {
    Wipe(values.data(), sizeof(values));
}

// Wipes a variable at the end of the block, on every way out; a member with its object, if it
// stands behind it.
template <typename Value>
class WipeAtEnd {
public:
    explicit WipeAtEnd(Value& value) : value_(value) {}
    ~WipeAtEnd() { Wipe(value_); }
    WipeAtEnd(const WipeAtEnd&) = delete;
    WipeAtEnd& operator=(const WipeAtEnd&) = delete;

private:
    Value& value_;
};

}  // namespace secret
