#include "look/imagens.h"

void ImagensSelecionadas::MostrarSelecionada(const QString& palavra) {
    static const QString nenhuma = QStringLiteral("FORM");
    if (palavra == mImagemAtual) {
        return;
    }
    if (palavra != nenhuma) {
        ImagemSelecionada(palavra)->setVisible(true);
    }
    if (mImagemAtual != nenhuma) {
        ImagemSelecionada(mImagemAtual)->setVisible(false);
    }
    mImagemAtual = palavra;
}
