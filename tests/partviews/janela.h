#pragma once

#include <QApplication>
#include <QTest>

#include "platform/forms/boundgrid.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/forms/msgbox.h"
#include "search/pesquisa.h"
#include "session/global.h"
#include "support/catalogo.h"

// The search screen over a small catalogue, and a hand for its controls and for those of the
// screens that open from it.
class Janela {
public:
    Janela() {
        catalogo.Executar(LinhasDePesquisa());
        catalogo.Executar(LinhasDePecas());
        forms::SetMsgBoxHandler([this](const QString& texto, int flags, const QString&) {
            caixas += QString::number(flags) + u' ' + texto;
            return forms::vbOK;
        });
    }

    ~Janela() {
        for (forms::Form* form : forms::Form::Loaded()) {
            form->Tag = frmPesquisa::Recarregando;
            form->Unload();
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        forms::SetMsgBoxHandler({});
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
        auto* controle = form->findChild<Controle*>(nome);
        if (!controle) {
            qFatal("no control %s", qPrintable(nome));
        }
        return controle;
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

    CatalogoDeTeste catalogo;
    QStringList caixas;  // flags and text of each message box, in order
};
