#pragma once

#include "dialogo.h"

#include <QMap>
#include <QTextDocument>

// What was printed on a recording device.
struct Folha {
    struct Texto {
        int pagina;
        QPointF lugar;
        QString texto;
        QString letra;  // size and "bi"
    };
    struct Figura {
        int pagina;
        QRectF lugar;
        QSize tamanho;
    };
    QList<Texto> textos;
    QList<Figura> figuras;
    QStringList passos;  // "paisagem", the font's name, "fim"
};

// A device that keeps what it is told. At 360 dots per inch a pixel is a page unit. A line is as
// high as the table says, five pixels a point where it says nothing; a letter is ten wide.
class Gravador final : public printer::Printer {
public:
    explicit Gravador(Folha& folha, int pontosPorPolegada = 360)
        : folha_(folha), pontos_(pontosPorPolegada) {}

    QMap<int, double> alturas;
    double altura = 1e6;  // of the printable area
    // Ahead of "letra", "comeco", "pagina" and "fim".
    std::function<void(const QString& passo)> antes = [](const QString&) {};
    void FalharAntesDe(const AnyText& este) {
        antes = [este](const QString& passo) {
            if (passo == este) {
                throw Erro(Erro::PrinterError);
            }
        };
    }

    void SetOrientation(int orientation) override {
        folha_.passos += orientation == printer::vbPRORLandscape ? u"paisagem"_s : u"retrato"_s;
    }
    float TwipsPerPixelX() const override { return 1440.0F / static_cast<float>(pontos_); }
    double PageHeight() const override { return altura; }
    void SetFontName(const QString& name) override {
        antes(u"letra"_s);
        folha_.passos += name;
    }

private:
    void Begin() override { antes(u"comeco"_s); }
    void DrawText(QPointF topLeft, const QString& text) override {
        const QString letra = QString::number(TextFont().points) +
                              (TextFont().bold ? u"b"_s : QString()) +
                              (TextFont().italic ? u"i"_s : QString());
        folha_.textos.append({Page(), topLeft, text, letra});
    }
    double TextWidth(const QString& text) const override {
        return 10.0 * static_cast<double>(text.size());
    }
    double LineHeight() const override {
        return alturas.value(static_cast<int>(TextFont().points), TextFont().points * 5);
    }
    void DrawPicture(const QRectF& place, const QPixmap& picture) override {
        folha_.figuras.append({Page(), place, picture.size()});
    }
    void DrawDocument(QTextDocument& document) override {
        folha_.textos.append({Page(), {}, document.toPlainText(), {}});
    }
    void NextPage() override { antes(u"pagina"_s); }
    void End() override {
        antes(u"fim"_s);
        folha_.passos += u"fim"_s;
    }

    Folha& folha_;
    int pontos_;
};

struct NoGravador : NoDialogo {
    Folha folha_;
    int pontos_ = 360;
    bool cancelar_ = false;
    std::function<void(Gravador&)> preparar_;

    std::unique_ptr<printer::Printer> Escolher() override {
        if (cancelar_) {
            return nullptr;
        }
        auto gravador = std::make_unique<Gravador>(folha_, pontos_);
        preparar_(*gravador);
        return gravador;
    }
    void init() override {
        folha_ = {};
        preparar_ = [](Gravador&) {};
        NoDialogo::init();
    }
};
