#include "session/arquivos.h"

#include "platform/erro.h"
#include "platform/system/clock.h"
#include "platform/system/paths.h"
#include "session/global.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace {

QString ComBarraFinal(const QString& pasta, bool barraFinal) {
    return barraFinal && !pasta.endsWith(u'\\') ? pasta + u'\\' : pasta;
}

// The program's own where nothing was set up for the machine.
QString PastaDaMaquina(bool barraFinal) {
    const QString pasta = sys::MachineFolder(NomeDoPrograma);
    return pasta.isEmpty() ? CaminhoPrograma(barraFinal) : ComBarraFinal(pasta, barraFinal);
}

}  // namespace

QString CaminhoPrograma(bool barraFinal) {
    return ComBarraFinal(sys::ProgramFolder(), barraFinal);
}

QString LocalizarDados() {
    const QString programa = CaminhoPrograma(true);
    const QString desvio = programa + u"Caminho.txt"_s;
    if (!ArquivoExiste(desvio)) {
        return programa;
    }
    // Not trimmed: the file holds the path and nothing else.
    return ComBarraFinal(LerArquivo(desvio), true);
}

bool ArquivoExiste(const QString& caminho) {
    return sys::CanRead(caminho);
}

QString LerArquivo(const QString& caminho) {
    return sys::ReadText(caminho);
}

void ExcluirArquivo(const QString& caminho) {
    if (ArquivoExiste(caminho)) {
        sys::Delete(caminho);
    }
}

bool DiretorioExiste(const QString& caminho) {
    return sys::Exists(caminho);
}

void CriarDiretorios(const QString& base, const QString& relativo, bool ultimoEhArquivo) {
    QStringList pedacos = relativo.split(u'\\');
    if (ultimoEhArquivo) {
        pedacos.removeLast();
    }
    QString pasta = base;
    for (const QString& pedaco : pedacos) {
        pasta += pedaco;
        if (!DiretorioExiste(pasta)) {
            sys::MakeDirectory(pasta);
        }
        pasta += u'\\';
    }
}

QString NomeArquivoTemporario() {
    const QString serial = SerialVolume(u"C:\\"_s);
    QString nome;
    do {
        const QString momento = sys::FromSerial(sys::Now()).toString(u"sshhyymmMMdd"_s);
        const int r = QRandomGenerator::global()->bounded(10000);
        nome = gCaminho + momento + serial + QString::number(r) + u".tmp"_s;
    } while (ArquivoExiste(nome));
    return nome;
}

QString SerialVolume(const QString& raiz) {
    return u"%1"_s.arg(sys::VolumeSerial(raiz), 8, 16, QLatin1Char('0')).toUpper();
}

QString PastaSistema(const QString& nome, bool barraFinal) {
    return nome.trimmed().toUpper() == "SYSTEM"_L1 ? PastaDaMaquina(barraFinal)
                                                   : CaminhoPrograma(barraFinal);
}

QString PastaDadosUsuario(bool barraFinal) {
    const QString base = sys::UserDataFolder();
    if (base.isEmpty()) {
        return PastaDaMaquina(barraFinal);
    }
    const QString raiz = ComBarraFinal(base, true);
    try {
        CriarDiretorios(raiz, u"Ordavia"_s, false);
    } catch (const Erro&) {
        // Whoever writes there meets the error again, with a file to name.
    }
    return ComBarraFinal(raiz + u"Ordavia"_s, barraFinal);
}
