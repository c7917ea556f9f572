#pragma once

#include "importar/mdbprotocol.h"

#include <cstdio>
#include <string>
#include <string_view>

// Frames of mdbprotocol, one after the other.
class Output {
public:
    explicit Output(std::FILE* stream);

    Output& Begin(mdbprotocol::Frame frame);
    Output& Byte(char byte);
    Output& U32(std::uint32_t number);
    Output& U64(std::uint64_t number);
    Output& Text(std::string_view utf8);
    void Send();  // what was begun
    void End();

private:
    std::FILE* stream_;
    std::string frame_;
    std::uint32_t sent_ = 0;
};
