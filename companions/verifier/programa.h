#pragma once

// The whole program: asks the update server for the newest version on behalf of the catalogue,
// which starts it and reads its answer out of a file once it has ended. Whatever happens, it ends:
// with an answer, with a failure for an answer, or, where not even a file can be written, with
// nothing.
int ExecutarVerificador(int argc, char** argv);
