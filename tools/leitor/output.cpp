#include "leitor/output.h"

#include <cstdlib>

Output::Output(std::FILE* stream) : stream_(stream) {
    std::fwrite(mdbprotocol::Mark, 1, mdbprotocol::MarkSize, stream_);
}

Output& Output::Begin(mdbprotocol::Frame frame) {
    frame_.assign(1, frame);
    return U32(0);  // the size, which Send puts in
}

Output& Output::Byte(char byte) {
    frame_ += byte;
    return *this;
}

Output& Output::U32(std::uint32_t number) {
    for (int shift = 0; shift < 32; shift += 8) {
        frame_ += static_cast<char>(number >> shift);
    }
    return *this;
}

Output& Output::U64(std::uint64_t number) {
    return U32(static_cast<std::uint32_t>(number)).U32(static_cast<std::uint32_t>(number >> 32));
}

Output& Output::Text(std::string_view utf8) {
    U32(static_cast<std::uint32_t>(utf8.size()));
    frame_ += utf8;
    return *this;
}

void Output::Send() {
    const std::size_t size = frame_.size() - mdbprotocol::HeadSize;
    for (int i = 0; i < 4; ++i) {
        frame_[static_cast<std::size_t>(i) + 1] = static_cast<char>(size >> (8 * i));
    }
    // Nobody listens any more.
    if (std::fwrite(frame_.data(), 1, frame_.size(), stream_) != frame_.size()) {
        std::exit(EXIT_FAILURE);
    }
    ++sent_;
}

void Output::End() {
    const std::uint32_t before = sent_;
    Begin(mdbprotocol::End).U32(before).Send();
    std::fflush(stream_);
}
