#pragma once

#include "printing/impressao.h"
#include "support/catalogo.h"
#include "support/windows.h"

// The dialog over a small catalogue, with a hand for its controls.
struct NoDialogo : Fixture {
    std::unique_ptr<CatalogoDeTeste> catalogo_;
    std::unique_ptr<BoxAnswers> caixas_;
    QPointer<frmImpressao> form_;
    int flags_ = 0;

    // The printer that is chosen; null for a cancelled choice.
    virtual std::unique_ptr<printer::Printer> Escolher() { return nullptr; }

    void init() override {
        printer::SetPrintDialogHandler([this](int flags) {
            flags_ = flags;
            return Escolher();
        });
        catalogo_ = std::make_unique<CatalogoDeTeste>();
        caixas_ = std::make_unique<BoxAnswers>();
        catalogo_->Executar(LinhasDePesquisa() + LinhasDePecas());
        TextoEmissao = u"05-MAR-2026"_s;
        gCodigoPeca = 1;
    }
    void cleanup() override {
        printer::SetPrintDialogHandler({});
        Fechar();
        caixas_.reset();
        catalogo_.reset();
    }

    void Abrir(const AnyText& parametro) {
        Fechar();
        ParametroFormulario = parametro;
        forms::SetMousePointer(forms::vbHourglass);
        (form_ = new frmImpressao)->Show();
    }
    void Fechar() {
        if (form_) {
            form_->Unload();
        }
        Settle();
    }
    // Gives part 1 the figure f.png, with numbers at their places (screen pixels); its file may
    // have another case.
    void DarFigura(const QList<std::pair<QString, QPoint>>& numeros,
                   const AnyText& arquivo = "f.png") {
        WritePicture(ArquivoDaFigura(arquivo), {582, 343});
        QStringList linhas;
        for (const auto& [item, lugar] : numeros) {
            linhas += QString::asprintf("1, %d, '%s', %d, %d", int(linhas.size()) + 1,
                                        qPrintable(item), lugar.x(), lugar.y());
        }
        catalogo_->Executar(List("UPDATE PECA SET CodigoFigura = 1 WHERE CodigoPeca = 1") +
                            Inserir("FIGURA", {"1, 'f.png'"}) + Inserir("FIGURADETALHADA", linhas));
    }
    QString ArquivoDaFigura(const AnyText& nome) const {
        return catalogo_->Pasta() + u"/Figuras/"_s + nome;
    }

    // Opens it with these ticks and presses OK.
    void Imprimir(const AnyText& parametro) {
        Abrir(parametro);
        Clicar("imgOk");
    }
    void Clicar(const AnyText& nome) const {
        QTest::mouseClick(&Find<QWidget>(*form_, nome), Qt::LeftButton);
    }
    bool Aberto() const { return form_ && form_->IsLoaded(); }

    // Both ticks, as "01"; what is seen and what is kept must agree.
    QString Marcas() const {
        QString marcas;
        for (const QString& nome : {u"imgFiguraDetalhada"_s, u"imgListaComponentes"_s}) {
            const auto& zona = Find<forms::ClickZone>(*form_, nome);
            const bool visivel = Find<QWidget>(*form_, nome + u"Selecionada"_s).isVisible();
            marcas += visivel == (zona.Tag != u"0"_s) ? zona.Tag : u"?"_s;
        }
        return marcas;
    }

    // Flags and text of each message box, in order.
    QStringList Caixas() const { return caixas_->FlagsAndTexts(); }
};
