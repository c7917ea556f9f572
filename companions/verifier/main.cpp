#include "programa.h"

int main(int argc, char** argv) {
    return ExecutarVerificador(argc, argv);
}
