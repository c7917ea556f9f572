#include "look/paleta.h"

#include "platform/erro.h"
#include "platform/forms/artworkstyle.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

class Folha {
public:
    Folha() {
        QFile arquivo(u":/artwork/estilo.css"_s);
        if (!arquivo.open(QIODevice::ReadOnly)) {
            throw Erro(Erro::FileNotFound);
        }
        valores_ = forms::StyleVariables(QString::fromUtf8(arquivo.readAll()));
    }

    QString Texto(const QString& nome) const {
        const auto valor = valores_.constFind(u"--"_s + nome);
        if (valor == valores_.constEnd()) {
            throw Erro(Erro::InvalidPicture, nome);
        }
        return *valor;
    }

    QColor Cor(const QString& nome) const {
        const QColor cor(Texto(nome));
        if (!cor.isValid()) {
            throw Erro(Erro::InvalidPicture, nome);
        }
        return cor;
    }

    int Pixels(const QString& nome) const {
        bool numero = false;
        const int pixels = Texto(nome).remove(u"px"_s).toInt(&numero);
        if (!numero) {
            throw Erro(Erro::InvalidPicture, nome);
        }
        return pixels;
    }

private:
    QMap<QString, QString> valores_;
};

Paleta Ler() {
    const Folha folha;
    return {
        .papel = folha.Cor(u"papel"_s),
        .branco = folha.Cor(u"branco"_s),
        .gaveta = folha.Cor(u"gaveta"_s),
        .cabecaGrade = folha.Cor(u"cabeca-grade"_s),
        .petroleo = folha.Cor(u"petroleo"_s),
        .petroleoFundo = folha.Cor(u"petroleo-fundo"_s),
        .petroleoVivo = folha.Cor(u"petroleo-vivo"_s),
        .tinta = folha.Cor(u"tinta"_s),
        .tintaSuave = folha.Cor(u"tinta-suave"_s),
        .gelo = folha.Cor(u"gelo"_s),
        .nevoa = folha.Cor(u"nevoa"_s),
        .linha = folha.Cor(u"linha"_s),
        .contorno = folha.Cor(u"contorno"_s),
        .acento = folha.Cor(u"acento"_s),
        .acentoPalido = folha.Cor(u"acento-palido"_s),
        .acentoTraco = folha.Cor(u"acento-traco"_s),
        .alerta = folha.Cor(u"alerta"_s),
        .itemFundo = folha.Cor(u"item-fundo"_s),
        .itemBorda = folha.Cor(u"item-borda"_s),
        .itemMesmo = folha.Cor(u"item-mesmo"_s),
        .itemJogo = folha.Cor(u"item-jogo"_s),
        .letra = folha.Texto(u"letra"_s),
        .corpoTexto = folha.Pixels(u"corpo-texto"_s),
        .corpoRotulo = folha.Pixels(u"corpo-rotulo"_s),
    };
}

}  // namespace

const Paleta& Paleta::Atual() {
    static const Paleta paleta = Ler();
    return paleta;
}
