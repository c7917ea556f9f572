#pragma once

#include "platform/forms/application.h"
#include "platform/printer/printdialog.h"
#include "printing/impressao.h"
#include "session/global.h"
#include "support/catalogo.h"
#include "support/windows.h"

#include <QDir>
#include <QImage>
#include <QPointer>
#include <QTest>

// The dialog over a small catalogue, with a hand for its controls. The printer that is chosen in it
// comes from `escolher`.
class Dialogo {
public:
    explicit Dialogo(std::function<std::unique_ptr<printer::Printer>()> escolher) {
        printer::SetPrintDialogHandler([this, escolher](int f) {
            flags = f;
            return escolher();
        });
        catalogo.Executar(LinhasDePesquisa());
        catalogo.Executar(LinhasDePecas());
        TextoEmissao = QStringLiteral("05-MAR-2026");
        gCodigoPeca = 1;
    }
    ~Dialogo() {
        printer::SetPrintDialogHandler({});
        Fechar();
    }

    void Abrir(const QString& parametro) {
        Fechar();
        ParametroFormulario = parametro;
        forms::SetMousePointer(forms::vbHourglass);
        (form = new frmImpressao)->Show();
    }
    void Fechar() {
        if (form) {
            form->Unload();
        }
        testing_support::Settle();
    }
    // Gives part 1 a figure in a file of this name, with numbers at their places (screen pixels).
    void DarFigura(const QString& arquivo, const QList<std::pair<QString, QPoint>>& numeros) {
        QStringList linhas = {
            QStringLiteral("UPDATE PECA SET CodigoFigura = 1 WHERE CodigoPeca = 1"),
            QStringLiteral("INSERT INTO FIGURA (CodigoFigura, ArquivoFigura) VALUES (1, '%1')")
                .arg(arquivo)};
        for (const auto& [item, lugar] : numeros) {
            linhas += QStringLiteral(
                          "INSERT INTO FIGURADETALHADA (CodigoFigura, CodigoFiguraDetalhada, "
                          "ItemComponente, LLeft, TTop) VALUES (1, %1, '%2', %3, %4)")
                          .arg(linhas.size())
                          .arg(item)
                          .arg(lugar.x())
                          .arg(lugar.y());
        }
        catalogo.Executar(linhas);
    }
    void GuardarFigura(const QString& arquivo, const QImage& imagem) const {
        const QDir pasta(catalogo.Pasta());
        pasta.mkpath(QStringLiteral("Figuras"));
        QVERIFY(imagem.save(pasta.filePath(QStringLiteral("Figuras/") + arquivo)));
    }

    // Opens it with these ticks and presses OK.
    void Imprimir(const QString& parametro) {
        Abrir(parametro);
        Clicar(QStringLiteral("imgOk"));
    }
    void Clicar(const QString& nome) const {
        QTest::mouseClick(&testing_support::Find<QWidget>(*form, nome), Qt::LeftButton);
    }
    bool Aberto() const { return form && form->IsLoaded(); }

    // Both ticks, as "01"; what is seen and what is kept must agree.
    QString Marcas() const {
        QString marcas;
        for (const QString& nome :
             {QStringLiteral("imgFiguraDetalhada"), QStringLiteral("imgListaComponentes")}) {
            const auto& zona = testing_support::Find<forms::ClickZone>(*form, nome);
            const bool visivel =
                testing_support::Find<QWidget>(*form, nome + QStringLiteral("Selecionada"))
                    .isVisible();
            marcas += visivel == (zona.Tag != QStringLiteral("0")) ? zona.Tag : QStringLiteral("?");
        }
        return marcas;
    }

    // Flags and text of each message box, in order.
    QStringList Caixas() const {
        QStringList textos;
        for (const auto& caixa : caixas.Boxes()) {
            textos += QString::number(caixa.flags) + u' ' + caixa.text;
        }
        return textos;
    }

    CatalogoDeTeste catalogo;
    testing_support::BoxAnswers caixas;
    QPointer<frmImpressao> form;
    int flags = 0;
};
