#pragma once

#include "figure/figura_detalhada.h"
#include "look/paleta.h"
#include "platform/forms/font.h"
#include "support/janela.h"

inline const QString Figura = frmFiguraDetalhada::Nome;

// Part 1: item 2 at two places, 12a in kits 1 and 2, 100 in kit 2, 77 without a component. Part 2:
// items that are not laid out, one within another, and 10 without a number.
struct Mao : Janela {
    Mao() {
        Executar(List("UPDATE PECA SET CodigoFigura = CodigoPeca WHERE CodigoPeca < 3") +
                 Inserir("FIGURA", {"1, 'fig1.png'", "2, 'fig2.png'"}) +
                 Inserir("FIGURADETALHADA",
                         {"1, 1, '   1', 0, 0", "1, 2, '   2', 100, 50", "1, 3, '   2', 300, 60",
                          "1, 4, '  12a', 200, 100", "1, 7, ' 100', 400, 100",
                          "1, 9, '  77', 50, 300", "2, 1, '1', 10, 10", "2, 2, '11', 60, 10"}) +
                 Inserir("PECA_COMPONENTE",
                         {"2, '1', 2, NULL", "2, '11', 2, NULL", "2, '10', 2, NULL"}));
        GravarFigura(u"fig1.png"_s, {500, 340});
    }

    QString Arquivo(const AnyText& nome) const { return catalogo.Pasta() + u"/Figuras/"_s + nome; }
    void GravarFigura(const AnyText& nome, QSize tamanho) const {
        WritePicture(Arquivo(nome), tamanho, Qt::yellow);
    }
};

// The figure's screen over it, with a hand for it and for the ways there.
struct NaFigura : NaJanela<Mao> {
    static forms::Form& TelaDaFigura() { return *forms::Form::Find(Figura); }
    static ItemFigura* Item(int indice) {
        return Achar<ItemFigura>(Figura, u"lblItem(%1)"_s.arg(indice));
    }
    static QList<ItemFigura*> Itens() {
        auto itens = TelaDaFigura().findChildren<ItemFigura*>();
        itens.removeIf([](const ItemFigura* item) { return !item->isVisible(); });
        return itens;
    }
    static MarcadorItem* Marcador() { return Achar<MarcadorItem>(Figura, "shpSelecaoItem(1)"); }
    static bool Piscando() { return TelaDaFigura().findChild<QTimer*>(u"Timer1"_s)->isActive(); }

    static void PassarSobre(QPoint lugar) { MoveTo(TelaDaFigura(), lugar); }
    static void PassarSobreFundo() { PassarSobre({20, 300}); }
    static void Passar(int indice) { PassarSobre(Item(indice)->geometry().center()); }
    static void ClicarItem(int indice) { QTest::mouseClick(Item(indice), Qt::LeftButton); }

    // "caption:colour" of each number that is not at rest, the template included; "!" where it is
    // not bold.
    static QString Acesos() {
        QStringList acesos;
        for (const auto* item : TelaDaFigura().findChildren<ItemFigura*>()) {
            if (item->Negrito() || item->ForeColor() != Cor::Preto) {
                acesos += item->Caption().trimmed() + (item->Negrito() ? u":"_s : u"!"_s) +
                          QString::number(int(item->ForeColor()));
            }
        }
        acesos.sort();
        return acesos.join(u' ');
    }

    // What is told of the marked item, behind a "!" where it stands in the colour of the blinking.
    static QString Rotulos() {
        const QRect pisca = Shows(*Achar(Figura, "lblComponente"), CorDe(Cor::VermelhoClaro));
        return (pisca.isEmpty() ? QString() : u"!"_s) + Rotulo(Figura, "lblComponente") + u'|' +
               Rotulo(Figura, "lblNumeroTarvo") + u'|' + Rotulo(Figura, "lblObservacao");
    }

    static void IrNaLista(const AnyText& item) {
        dao::Recordset* lista = Linhas(Lista, "dtcListaPecas");
        lista->FindFirst(u"ItemComponente = '%1'"_s.arg(item));
        QVERIFY(!lista->NoMatch());
    }

    static void AbrirFigura() {
        Mao::AbrirDaBusca("Peças", "12002");
        Clicar(Resultado, "imgFiguraDetalhadaFundo");
        PassarSobreFundo();  // away from where the test before left the mouse
    }
    static void AbrirListaNoItem(const AnyText& item) {
        Mao::AbrirDaBusca("Peças", "12002");
        Clicar(Resultado, "imgListaComponentesFundo");
        IrNaLista(item);
    }
    static void AbrirFiguraDoItem(const AnyText& item) {
        AbrirListaNoItem(item);
        Clicar(Lista, "imgFiguraDetalhadaFundo");
    }
};
