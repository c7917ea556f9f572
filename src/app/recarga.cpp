#include "platform/forms/application.h"
#include "platform/forms/form.h"
#include "platform/forms/msgbox.h"
#include "session/banco.h"
#include "session/global.h"
#include "session/passagens.h"

#include <QPointer>

// The forms are marked before the new search screen comes and unloaded after it stands, so that the
// program is never without a window.
void RecarregarFormularios(const QString& mensagem) {
    {
        const forms::Busy ocupado;
        forms::DoEvents();
        for (forms::Form* formulario : forms::Form::Loaded()) {
            formulario->Tag = Recarregando;
        }

        RenovarSessao();
        AbrirPesquisa();

        // An unload activates another form, which lets events through: the next one may be gone.
        const QList<forms::Form*> abertos = forms::Form::Loaded();
        for (const QPointer<forms::Form>& formulario :
             QList<QPointer<forms::Form>>(abertos.begin(), abertos.end())) {
            if (formulario && formulario->Tag == Recarregando) {
                formulario->Unload();
            }
        }
        forms::DoEvents();
    }
    if (!mensagem.isEmpty()) {
        forms::MsgBox(mensagem, forms::vbInformation, TituloCatalogo);
    }
}
