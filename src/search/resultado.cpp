// From a row of any of the three searches to the part views.

#include "parts/tiposdelinha.h"
#include "platform/convert.h"
#include "platform/forms/msgbox.h"
#include "search/pesquisa.h"
#include "session/banco.h"
#include "session/global.h"
#include "session/passagens.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr int LarguraCodigo = 6;
const QString SeparadorTitulo(15, u' ');

QString Campo(dao::Recordset* linhas, const QString& nome) {
    return convert::ToTextOrEmpty(linhas->Fields(nome).Value());
}

bool SemLinha(dao::Recordset* linhas) {
    if (linhas && !linhas->Eof()) {
        return false;
    }
    forms::MsgBox(u"Nenhum item selecionado."_s, forms::vbCritical, TituloCatalogo);
    return true;
}

}  // namespace

// The reference to a row: its kind, its code in a field of exactly six characters (longer codes are
// cut, as the next screen reads six), and the next screen's title.
struct frmPesquisa::Referencia {
    QString tipo;
    QString codigo;
    QString titulo;

    void PorCodigo(const QString& texto) {
        codigo = texto.left(LarguraCodigo).leftJustified(LarguraCodigo);
    }
};

std::optional<frmPesquisa::Referencia> frmPesquisa::ReferenciaDaPeca() const {
    dao::Recordset* linhas = dtcPesquisa1->GetRecordset();
    if (SemLinha(linhas)) {
        return std::nullopt;
    }
    Referencia referencia;
    const QString tipo = Campo(linhas, u"Tipo"_s).trimmed().toUpper();
    QString prefixo;
    for (const TipoDeLinha& cada : TiposDeLinha) {
        const QString nome = QString::fromUtf16(cada.nome);
        if (tipo == nome.toUpper()) {
            referencia.tipo = QString::fromUtf16(cada.codigo);
            prefixo = nome + u": "_s;
        }
    }
    referencia.PorCodigo(Campo(linhas, u"Codigo"_s));
    referencia.titulo = prefixo + Campo(linhas, u"Descricao"_s) + SeparadorTitulo +
                        u"Nº Tarvo: "_s + Campo(linhas, u"NumeroTarvo"_s);
    return referencia;
}

std::optional<frmPesquisa::Referencia> frmPesquisa::ReferenciaDoVeiculo() const {
    dao::Recordset* linhas = dtcPesquisa2->GetRecordset();
    if (SemLinha(linhas)) {
        return std::nullopt;
    }
    Referencia referencia;
    referencia.tipo = u"VEI"_s;
    referencia.PorCodigo(Campo(linhas, u"Codigo"_s));
    referencia.titulo = u"Veículo: "_s + Campo(linhas, u"Veiculo"_s) + SeparadorTitulo +
                        u"Fabricante: "_s + Campo(linhas, u"Fabricante"_s);
    return referencia;
}

std::optional<frmPesquisa::Referencia> frmPesquisa::ReferenciaDaFigura() const {
    const Galeria::Figura& figura = galeria_->Selecionada();
    Referencia referencia;
    referencia.tipo = u"FPC"_s;
    referencia.PorCodigo(figura.codigo);
    referencia.titulo = u"Figura: "_s + figura.descricao;
    return referencia;
}

void frmPesquisa::AbrirResultado(int aba) {
    // Only vehicle makers, marked by the digit 1, travel to the part views.
    const qint32 dados = cboNumeroClienteConcorrente->SelectedItemData();
    gCodigoClienteConcorrente = QString::number(dados).startsWith(u'1') && dados >= 1
                                    ? CodigoClienteSelecionado()
                                    : SemCliente;

    static constexpr std::array leitores = {&frmPesquisa::ReferenciaDaPeca,
                                            &frmPesquisa::ReferenciaDoVeiculo,
                                            &frmPesquisa::ReferenciaDaFigura};
    const std::optional<Referencia> referencia = (this->*leitores.at(size_t(aba)))();
    if (!referencia) {
        return;
    }
    if (!CodigoEmUso(referencia->tipo, convert::ToInt32(referencia->codigo))) {
        forms::MsgBox(u"Nenhuma Peça faz referência ao item selecionado."_s, forms::vbInformation,
                      TituloCatalogo);
        return;
    }
    ::AbrirResultado(*this, referencia->tipo + referencia->codigo + referencia->titulo);
}
