#pragma once

namespace tabelas {

// From here on the user's interruption (Ctrl+C, the end of the session) does not end the process at
// once: StopIfInterrupted, called within long work, throws Erro 32755, and what was half made goes.
void WatchForInterrupt();
void StopIfInterrupted();

}  // namespace tabelas
