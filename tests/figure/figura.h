#pragma once

#include "figure/figura_detalhada.h"
#include "partviews/janela.h"

#include <QDir>
#include <QTimer>

// The figures of parts 1 and 2 of LinhasDePecas, and a hand for the screen that shows them.
//
// Part 1: item 2 at two places, 12a in kits 1 and 2, 100 in kit 2, 77 without a component. Part 2:
// items that are not laid out, one within another, and 10 without a number.
namespace figura {

inline QStringList LinhasDeFigura() {
    QStringList linhas = {
        QStringLiteral("INSERT INTO FIGURA (CodigoFigura, ArquivoFigura) VALUES (1, 'fig1.png')"),
        QStringLiteral("INSERT INTO FIGURA (CodigoFigura, ArquivoFigura) VALUES (2, 'fig2.png')"),
        QStringLiteral("UPDATE PECA SET CodigoFigura = CodigoPeca WHERE CodigoPeca < 3"),
    };
    const struct {
        int figura;
        int codigo;
        const char* item;
        int esquerda;
        int topo;
    } numeros[] = {
        {1, 1, "   1", 0, 0},      {1, 2, "   2", 100, 50},  {1, 3, "   2", 300, 60},
        {1, 4, "  12a", 200, 100}, {1, 7, " 100", 400, 100}, {1, 9, "  77", 50, 300},
        {2, 1, "1", 10, 10},       {2, 2, "11", 60, 10},
    };
    for (const auto& n : numeros) {
        linhas += QStringLiteral(
                      "INSERT INTO FIGURADETALHADA (CodigoFigura, CodigoFiguraDetalhada, "
                      "ItemComponente, LLeft, TTop) VALUES (%1, %2, '%3', %4, %5)")
                      .arg(n.figura)
                      .arg(n.codigo)
                      .arg(QLatin1String(n.item))
                      .arg(n.esquerda)
                      .arg(n.topo);
    }
    for (const char* item : {"1", "11", "10"}) {
        linhas += QStringLiteral(
                      "INSERT INTO PECA_COMPONENTE (CodigoPeca, ItemComponente, "
                      "CodigoComponente) VALUES (2, '%1', 2)")
                      .arg(QLatin1String(item));
    }
    return linhas;
}

inline const QString Tela = frmFiguraDetalhada::Nome;
inline const QString Lista = QStringLiteral("frmListaPecas");
inline const QString Resultado = QStringLiteral("frmResultadoPesquisa");
inline const QString Busca = QStringLiteral("frmPesquisa");

class Mao : public Janela {
public:
    Mao() {
        catalogo.Executar(LinhasDeFigura());
        QDir(catalogo.Pasta()).mkdir(QStringLiteral("Figuras"));
        GravarFigura(QStringLiteral("fig1.png"), {500, 340});
    }

    QString Arquivo(const QString& nome) const {
        return catalogo.Pasta() + QStringLiteral("/Figuras/") + nome;
    }

    void GravarFigura(const QString& nome, QSize tamanho) const {
        QImage figura(tamanho, QImage::Format_RGB32);
        figura.fill(Qt::yellow);
        QVERIFY(figura.save(Arquivo(nome)));
    }

    // Finds one row in the part search, by kind and number, and opens it.
    void AbrirResultado(const QString& tipo, const QString& numero) {
        Abrir();
        auto* combo = Achar<forms::ComboList>(Busca, QStringLiteral("cboTipo"));
        combo->SetListIndex(combo->findText(tipo));
        Achar<QLineEdit>(Busca, QStringLiteral("txtNumeroTarvo"))->setText(numero);
        Clicar(Busca, QStringLiteral("imgPesquisa1"));
        Clicar(Busca, QStringLiteral("pctResultadoPesquisaFundo(0)"));
    }

    void AbrirFigura(const QString& peca = QStringLiteral("12002")) {
        AbrirResultado(QStringLiteral("Peças"), peca);
        Clicar(Resultado, QStringLiteral("imgFiguraDetalhadaFundo"));
        PassarSobreFundo();  // away from where the test before left the mouse
    }

    void AbrirListaNoItem(const QString& peca, const QString& item) {
        AbrirResultado(QStringLiteral("Peças"), peca);
        Clicar(Resultado, QStringLiteral("imgListaComponentesFundo"));
        IrNaLista(item);
    }

    void AbrirFiguraDoItem(const QString& peca, const QString& item) {
        AbrirListaNoItem(peca, item);
        Clicar(Lista, QStringLiteral("imgFiguraDetalhadaFundo"));
    }

    static void IrNaLista(const QString& item) {
        dao::Recordset* lista = Linhas(Lista, QStringLiteral("dtcListaPecas"));
        lista->FindFirst(QStringLiteral("ItemComponente = '%1'").arg(item));
        QVERIFY(!lista->NoMatch());
    }

    static QString ItemDaLista() {
        return Linhas(Lista, QStringLiteral("dtcListaPecas"))
            ->Fields(QStringLiteral("ItemComponente"))
            .Value()
            .toString();
    }

    static ItemFigura* Item(int indice) {
        return Achar<ItemFigura>(Tela, QStringLiteral("lblItem(%1)").arg(indice));
    }
    static QList<ItemFigura*> Itens() {
        QList<ItemFigura*> itens;
        for (auto* item : forms::Form::Find(Tela)->findChildren<ItemFigura*>()) {
            if (item->isVisible()) {
                itens += item;
            }
        }
        return itens;
    }
    static MarcadorItem* Marcador() {
        return Achar<MarcadorItem>(Tela, QStringLiteral("shpSelecaoItem(1)"));
    }
    static QTimer* Relogio() {
        return forms::Form::Find(Tela)->findChild<QTimer*>(QStringLiteral("Timer1"));
    }

    static void PassarSobre(QPoint lugar) {
        testing_support::MoveTo(*forms::Form::Find(Tela), lugar);
    }
    static void PassarSobreFundo() { PassarSobre({20, 300}); }
    static void Passar(int indice) { PassarSobre(Item(indice)->geometry().center()); }
    static void ClicarItem(int indice) { QTest::mouseClick(Item(indice), Qt::LeftButton); }

    // "caption:colour" of each number that is not at rest, the template included.
    static QString Acesos() {
        QStringList acesos;
        for (const auto* item : forms::Form::Find(Tela)->findChildren<ItemFigura*>()) {
            if (item->Negrito() || item->ForeColor() != Cor::Preto) {
                acesos +=
                    item->Caption().trimmed() + u':' + QString::number(int(item->ForeColor()));
            }
        }
        acesos.sort();
        return acesos.join(u' ');
    }

    static QString Rotulos() {
        QStringList textos;
        for (const char* nome : {"lblComponente", "lblNumeroTarvo", "lblObservacao"}) {
            textos += Achar<forms::Label>(Tela, QLatin1String(nome))->Text();
        }
        return textos.join(u'|');
    }
};

}  // namespace figura
