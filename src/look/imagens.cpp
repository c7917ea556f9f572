#include "look/imagens.h"

using namespace Qt::StringLiterals;

void ImagensSelecionadas::MostrarSelecionada(const QString& palavra) {
    static const QString nenhuma = u"FORM"_s;
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
