// Reads an old database file and writes what is in it to the standard output, in the form of
// importar/mdbprotocol.h. A program of its own, because the library under it has had faults in
// memory with damaged files: whatever happens here, the importer hears of it and goes on.

#include "leitor/reader.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

int main(int argc, char** argv) {
    const bool one = argc == 3;
    if (argc < 2 || argc > 3 || std::strcmp(argv[1], "--help") == 0) {
        std::puts(
            "Uso: tarvo-leitor-mdb <arquivo> [número da tabela]\n\n"
            "É iniciado pelo tarvo-importar.");
        return argc == 2 ? 0 : 2;
    }
    if (std::strcmp(argv[1], "--version") == 0) {
        std::puts("tarvo-leitor-mdb " TARVO_VERSION);
        return 0;
    }
    Output output(stdout);
    return Read(argv[1], one ? std::atoi(argv[2]) : -1, output) ? 0 : 1;
}
