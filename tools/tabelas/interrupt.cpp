#include "tabelas/interrupt.h"

#include "platform/erro.h"

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

volatile std::sig_atomic_t interrupted = 0;

extern "C" void OnInterrupt(int) {
    interrupted = 1;
}

}  // namespace

void tabelas::WatchForInterrupt() {
    std::signal(SIGINT, OnInterrupt);
    std::signal(SIGTERM, OnInterrupt);
}

void tabelas::StopIfInterrupted() {
    if (interrupted != 0) {
        throw Erro(Erro::Cancelled, u"Interrompido; nada foi criado."_s);
    }
}
