#include "session/processos.h"

#include "platform/system/process.h"

#include <QEventLoop>
#include <QTimer>

#include <chrono>

using namespace std::chrono_literals;

// The screen stays alive meanwhile. There is no time limit.
void ExecutarEAguardar(const QString& comando, qint16 estiloJanela) {
    const sys::ProcessId processo = sys::Start(comando, estiloJanela);
    if (sys::ExitCode(processo) != sys::StillActive) {
        return;
    }
    QEventLoop espera;
    QTimer consulta;
    QObject::connect(&consulta, &QTimer::timeout, &espera, [&espera, processo] {
        if (sys::ExitCode(processo) != sys::StillActive) {
            espera.quit();
        }
    });
    consulta.start(20ms);
    espera.exec();
}
