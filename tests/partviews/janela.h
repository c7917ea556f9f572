#pragma once

#include "platform/forms/boundgrid.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "search/pesquisa.h"
#include "session/global.h"
#include "support/catalogo.h"
#include "support/windows.h"

#include <QApplication>
#include <QTest>

// The search screen over a small catalogue, and a hand for its controls and for those of the
// screens that open from it.
class Janela {
public:
    Janela() {
        catalogo.Executar(LinhasDePesquisa());
        catalogo.Executar(LinhasDePecas());
    }

    ~Janela() {
        for (forms::Form* form : forms::Form::Loaded()) {
            form->Tag = frmPesquisa::Recarregando;
            form->Unload();
        }
        testing_support::Settle();
    }

    void Abrir() {
        gFrmPesquisa = new frmPesquisa;
        gFrmPesquisa->Show();
        QVERIFY(QTest::qWaitForWindowExposed(gFrmPesquisa));
    }

    template <typename Controle = QWidget>
    static Controle* Achar(const QString& tela, const QString& nome) {
        forms::Form* form = forms::Form::Find(tela);
        if (!form) {
            qFatal("screen %s is not loaded", qPrintable(tela));
        }
        return &testing_support::Find<Controle>(*form, nome);
    }

    static void Clicar(const QString& tela, const QString& nome) {
        QTest::mouseClick(Achar(tela, nome), Qt::LeftButton);
    }

    static dao::Recordset* Linhas(const QString& tela, const QString& fonte) {
        return Achar<forms::DataSource>(tela, fonte)->GetRecordset();
    }

    static QStringList Coluna(const QString& tela, const QString& fonte, const QString& campo) {
        dao::Recordset* linhas = Linhas(tela, fonte);
        linhas->ReadUpTo(std::numeric_limits<qint64>::max());
        QStringList valores;
        for (qint64 i = 0; i < linhas->RecordCount(); ++i) {
            valores += linhas->Text(i, linhas->FieldIndex(campo));
        }
        return valores;
    }

    // Flags and text of each message box, in order.
    QStringList Caixas() const {
        QStringList caixas;
        for (const auto& caixa : respostas_.Boxes()) {
            caixas += QString::number(caixa.flags) + u' ' + caixa.text;
        }
        return caixas;
    }

    CatalogoDeTeste catalogo;

private:
    testing_support::BoxAnswers respostas_;
};
