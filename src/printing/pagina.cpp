// What all pages share: the head, the lines of a table, the rule for the bottom of the page.

#include "parts/titulo.h"
#include "platform/forms/application.h"
#include "printing/impressao.h"
#include "session/global.h"

using namespace Qt::StringLiterals;

namespace {

// Page units.
constexpr int AlturaDoCabecalho = 150;
constexpr int EspacoAntesDaTabela = 100;

}  // namespace

void frmImpressao::ImprimirCabecalho(const QString& Titulo) {
    forms::DoEvents();  // once a page: a long job must not look like a hung program
    if (mCabecalho.isEmpty()) {
        mCabecalho = LinhaDaPeca();
    } else {
        impressora_->NewPage();
    }
    const std::pair<int, QString> linhas[] = {
        {12, u"Catálogo TARVO-LINDEN     2.0     "_s + TextoEmissao},
        {10, Titulo},
        {10, mCabecalho},
        {7, u"Página: "_s + QString::number(impressora_->Page())},
    };
    impressora_->SetCurrentY(AlturaDoCabecalho * mEscala);
    for (const auto& [corpo, texto] : linhas) {
        impressora_->SetFontSize(corpo);
        impressora_->SetCurrentX(MargemEsquerda * mEscala);
        impressora_->PrintLine(texto);
    }
}

QString frmImpressao::LinhaDaPeca() const {
    const QString titulo = TituloDaPeca(15);
    return titulo.isEmpty() ? u"Peça:"_s : titulo;
}

void frmImpressao::Descer(int distancia) {
    impressora_->SetCurrentY(impressora_->CurrentY() + distancia * mEscala);
}

void frmImpressao::ImprimirTitulos(std::span<const Coluna> colunas) {
    impressora_->SetFontSize(10);
    Descer(EspacoAntesDaTabela);
    impressora_->SetFontBold(true);
    impressora_->SetFontItalic(true);
    QVariantList titulos;
    for (const Coluna& coluna : colunas) {
        titulos += QString::fromUtf16(coluna.titulo);
    }
    ImprimirLinha(colunas, titulos);
    impressora_->SetFontItalic(false);
    impressora_->SetFontBold(false);
}

// A text that is wider than its column runs on under the next one: nothing is cut on paper.
void frmImpressao::ImprimirLinha(std::span<const Coluna> colunas, const QVariantList& valores) {
    for (size_t i = 0; i < colunas.size(); ++i) {
        impressora_->SetCurrentX(colunas[i].esquerda * mEscala);
        const QVariant& valor = valores.at(static_cast<qsizetype>(i));
        if (i + 1 < colunas.size()) {
            impressora_->Print(valor);
        } else {
            impressora_->PrintLine(valor);
        }
    }
}

// In single precision, as the cursor is: a row that ends on the limit itself has not passed it.
bool frmImpressao::PassouDe(int limite) const {
    return impressora_->CurrentY() > static_cast<float>(limite * mEscala);
}
