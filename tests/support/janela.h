#pragma once

#include "platform/forms/listexport.h"
#include "search/pesquisa.h"
#include "session/passagens.h"
#include "support/catalogo.h"
#include "support/windows.h"

#include <QClipboard>
#include <QPainter>

// The search screen over a small catalogue, and a hand for its controls and for those of the
// screens that open from it, each named by its screen and its own name.

inline const QString Busca = u"frmPesquisa"_s;
inline const QString Resultado = u"frmResultadoPesquisa"_s;
inline const QString Lista = u"frmListaPecas"_s;

template <typename Controle = QWidget>
Controle* Achar(const AnyText& tela, const AnyText& nome) {
    forms::Form* form = forms::Form::Find(tela);
    if (!form) {
        qFatal("screen %s is not loaded", qPrintable(tela));
    }
    return &Find<Controle>(*form, nome);
}

inline bool Visivel(const AnyText& tela) {
    const forms::Form* form = forms::Form::Find(tela);
    return form && form->isVisible();
}

inline void Clicar(const AnyText& tela, const AnyText& nome) {
    QTest::mouseClick(Achar(tela, nome), Qt::LeftButton);
}

inline void Digitar(const AnyText& tela, const AnyText& caixa, const AnyText& texto) {
    Achar<QLineEdit>(tela, caixa)->setText(texto);
}

inline void Escolher(const AnyText& tela, const AnyText& combo, const AnyText& linha) {
    auto* lista = Achar<forms::ComboList>(tela, combo);
    lista->SetListIndex(lista->findText(linha));
}

inline QString Rotulo(const AnyText& tela, const AnyText& nome) {
    return Achar<forms::Label>(tela, nome)->Text();
}

inline dao::Recordset* Linhas(const AnyText& tela, const AnyText& fonte) {
    return Achar<forms::DataSource>(tela, fonte)->GetRecordset();
}

// A column of all rows, those included that have not been read yet.
inline QStringList Coluna(const AnyText& tela, const AnyText& fonte, const AnyText& campo) {
    dao::Recordset* linhas = Linhas(tela, fonte);
    linhas->ReadUpTo(std::numeric_limits<qint64>::max());
    QStringList valores;
    for (qint64 i = 0; i < linhas->RecordCount(); ++i) {
        valores += linhas->Text(i, linhas->FieldIndex(campo));
    }
    return valores;
}

inline QStringList Pecas(const AnyText& campo = "NumeroTarvoPeca") {
    return Coluna(Resultado, "dtcResultadoPesquisaPeca", campo);
}
inline QStringList Itens(const AnyText& campo = "ItemComponente") {
    return Coluna(Lista, "dtcListaPecas", campo);
}

// What a grid shows, as whoever takes its list along gets it: titles and rows, "a|b / 1|2".
inline QString Copiada(const AnyText& tela, const AnyText& grade) {
    Achar<forms::BoundGrid>(tela, grade)->Export().CopyList();
    const QString lista = QGuiApplication::clipboard()->text().replace(u'\t', u'|');
    return lista.split(u'\n', Qt::SkipEmptyParts).join(u" / "_s);
}

// How far the edges of a grid's columns lie right of those of the boxes above them.
inline QString Desvios(const AnyText& tela, const AnyText& nome, const AnyTexts& caixas) {
    const auto* grade = Achar<forms::BoundGrid>(tela, nome);
    QStringList texto;
    for (const QString& caixa : caixas) {
        const QRect lugar = Achar(tela, caixa)->geometry();
        const int coluna = int(texto.size());
        const int esquerda = grade->x() + grade->columnViewportPosition(coluna);
        texto += u"%1,%2"_s.arg(esquerda - lugar.left())
                     .arg(esquerda + grade->columnWidth(coluna) - 1 - lugar.right());
    }
    return texto.join(u' ');
}

inline QString ItemAtualDaLista() {
    return Linhas(Lista, "dtcListaPecas")->Fields(u"ItemComponente"_s).Value().toString();
}

// What has the keyboard on the Tab key's way round, from this control on; "!" where the way does
// not come back to it.
inline QString Volta(const AnyText& tela, const AnyText& nome) {
    QWidget* inicio = Achar(tela, nome);
    inicio->setFocus();
    QStringList nomes;
    do {
        nomes += QApplication::focusWidget()->accessibleName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget() != inicio && nomes.size() < 30);
    return (QApplication::focusWidget() == inicio ? QString() : u"!"_s) + nomes.join(u", "_s);
}

inline void DuploCliqueEm(const AnyText& tela, const AnyText& grade, QPoint lugar = {30, 8}) {
    forms::Form& form = *forms::Form::Find(tela);
    DoubleClickAt(form, Achar(tela, grade)->mapTo(form.Picture(), lugar));
}

// What lies around all in which two pictures differ.
inline QRect Mudado(const QImage& antes, const QImage& depois) {
    QRect limites;
    for (int y = 0; y < antes.height(); ++y) {
        for (int x = 0; x < antes.width(); ++x) {
            limites |= antes.pixel(x, y) == depois.pixel(x, y) ? QRect() : QRect(x, y, 1, 1);
        }
    }
    return limites;
}

// The words of these buttons, each lit under the mouse and out again beside it. What else changed
// in the lit drawing would never be seen.
inline QString Luzes(const AnyText& tela, QPoint aoLado, const AnyTexts& botoes) {
    forms::Form& form = *forms::Form::Find(tela);
    const auto& imagens = dynamic_cast<const ImagensSelecionadas&>(form);
    const auto semLuzes = [&form](forms::Artwork::State estado) {
        const QRect tudo({}, form.Background()->Size());
        QImage imagem(tudo.size() * 2, QImage::Format_RGB32);
        imagem.setDevicePixelRatio(2);
        imagem.fill(Qt::black);
        QPainter pintor(&imagem);
        form.Background()->Paint(pintor, tudo, tudo, estado);
        for (const auto* acesa : form.Picture()->findChildren<forms::LitPicture*>()) {
            pintor.fillRect(QRect(acesa->mapTo(form.Picture(), QPoint()), acesa->size()),
                            Qt::black);
        }
        return imagem;
    };
    QStringList palavras;
    if (form.Background() &&
        (form.Background()->Size() != form.Picture()->size() ||
         semLuzes(forms::Artwork::State::Lit) != semLuzes(forms::Artwork::State::Rest))) {
        palavras += u"!"_s;
    }
    MoveTo(form, aoLado);
    for (const QString& botao : botoes) {
        const QWidget* zona = Achar(tela, botao);
        const QWidget* acesa = Achar(
            tela, botao.contains("Fundo"_L1) ? QString(botao).replace(u"Fundo"_s, u"Selecionada"_s)
                                             : botao + u"Selecionada"_s);
        const QRect lugar(acesa->mapTo(form.Picture(), QPoint()), acesa->size());
        const QImage apagada = form.Picture()->grab(lugar).toImage();
        MoveTo(form, zona->mapTo(form.Picture(), zona->rect().center()));
        // Nearly to its edges.
        const QRect mudado = Mudado(apagada, form.Picture()->grab(lugar).toImage());
        const bool luz = acesa->isVisible() && mudado.width() > lugar.width() * 0.8 &&
                         mudado.height() > lugar.height() * 0.8;
        palavras += (luz ? QString() : u"!"_s) + imagens.ImagemAtual();
        MoveTo(form, aoLado);
        if (acesa->isVisible() || imagens.ImagemAtual() != u"FORM") {
            palavras += u"!"_s + imagens.ImagemAtual();
        }
    }
    return palavras.join(u' ');
}

inline QStringList TelasCarregadas() {
    QStringList nomes;
    for (const forms::Form* tela : forms::Form::Loaded()) {
        nomes += tela->Name();
    }
    return nomes;
}

class Janela {
public:
    Janela() { catalogo.Executar(LinhasDePesquisa() + LinhasDePecas()); }

    ~Janela() {
        for (forms::Form* form : forms::Form::Loaded()) {
            form->Tag = Recarregando;
            form->Unload();
        }
        Settle();
    }

    static void Abrir() {
        gFrmPesquisa = new frmPesquisa;
        gFrmPesquisa->Show();
        QVERIFY(QTest::qWaitForWindowExposed(gFrmPesquisa));
    }

    // Finds one row in the part search, by kind and number, and opens it.
    static void AbrirDaBusca(const AnyText& tipo, const AnyText& numero) {
        if (!gFrmPesquisa) {
            Abrir();
        }
        Escolher(Busca, "cboTipo", tipo);
        Digitar(Busca, "txtNumeroTarvo", numero);
        Clicar(Busca, "imgPesquisa1");
        Clicar(Busca, "pctResultadoPesquisaFundo(0)");
    }

    // Flags and text of each message box, in order.
    QStringList Caixas() const { return respostas_.FlagsAndTexts(); }

    CatalogoDeTeste catalogo;

private:
    BoxAnswers respostas_;
};

// Each case with a window of its own, or of what derives from it.
template <typename Aberta = Janela>
struct NaJanela : Fixture {
    std::unique_ptr<Aberta> janela_;

    void init() override { janela_ = std::make_unique<Aberta>(); }
    void cleanup() override { janela_.reset(); }
};
