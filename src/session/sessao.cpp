#include "platform/forms/application.h"
#include "platform/forms/msgbox.h"
#include "search/pesquisa.h"
#include "session/global.h"
#include "session/modulo.h"

#include <QPointer>

using namespace Qt::StringLiterals;

// The forms are marked before the new search screen comes and unloaded after it stands, so that the
// program is never without a window.
void RecarregarFormularios(const QString& mensagem) {
    forms::SetMousePointer(forms::vbHourglass);
    forms::DoEvents();
    for (forms::Form* formulario : forms::Form::Loaded()) {
        formulario->Tag = frmPesquisa::Recarregando;
    }

    gFrmPesquisa = new frmPesquisa;
    gFrmPesquisa->Tag.clear();
    gFrmPesquisa->Show();

    // An unload activates another form, which lets events through: the next one may be gone.
    const QList<forms::Form*> abertos = forms::Form::Loaded();
    for (const QPointer<forms::Form>& formulario :
         QList<QPointer<forms::Form>>(abertos.begin(), abertos.end())) {
        if (formulario && formulario->Tag == frmPesquisa::Recarregando) {
            formulario->Unload();
        }
    }
    forms::DoEvents();
    forms::SetMousePointer(forms::vbDefault);

    if (!mensagem.isEmpty()) {
        forms::MsgBox(mensagem, forms::vbInformation, TituloCatalogo);
    }
}
