#include "screen.h"

#include "platform/dao/connection.h"
#include "search/pesquisa.h"
#include "session/banco.h"
#include "session/global.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {
namespace {

template <typename Control>
Control* Find(QObject& screen, const QString& name) {
    auto* control = screen.findChild<Control*>(name);
    if (control == nullptr) {
        throw std::runtime_error("no control " + name.toStdString());
    }
    return control;
}

// The text as it stood one keystroke earlier.
QString BeforeLastKey(const QString& text) {
    return text.isEmpty() ? u"9"_s : text.chopped(1);
}

void Select(forms::ComboList& combo, auto&& matches) {
    for (int row = 0; row < combo.ListCount(); ++row) {
        if (matches(row)) {
            combo.SetListIndex(row);
            return;
        }
    }
    throw std::runtime_error("no such row in " + combo.objectName().toStdString());
}

void SelectKind(forms::ComboList& combo, QStringView text) {
    Select(combo, [&](int row) { return combo.itemText(row) == text; });
}

// A digit for the kind of party stands in front of its code.
qint32 ItemDataOf(Party party) {
    switch (party) {
        case Party::Maker:
            return QString(u"1%1"_s).arg(MakerCode).toInt();
        case Party::Competitor:
            return QString(u"2%1"_s).arg(CompetitorCode).toInt();
        case Party::None:
            break;
    }
    return -5;
}

}  // namespace

Screen::Screen(WatchfulApplication& application, const QString& folder)
    : application_(application) {
    gCaminho = folder;
    if (!gCaminho.endsWith(u'\\')) {
        gCaminho += u'\\';
    }
    AbrirSessao();
    competitorNumber_ = gDB->GetConnection()->Value(CompetitorNumberSql).toString();
    gFrmPesquisa = new frmPesquisa;
    gFrmPesquisa->Show();
    Find<forms::Panel>(*gFrmPesquisa, u"pctTelaPesquisa(0)"_s)->show();
    number_ = Find<forms::TextBox>(*gFrmPesquisa, u"txtNumeroTarvo"_s);
    description_ = Find<forms::TextBox>(*gFrmPesquisa, u"txtDescricao"_s);
    partyNumber_ = Find<forms::TextBox>(*gFrmPesquisa, u"txtNumeroClienteConcorrente"_s);
    party_ = Find<forms::ComboList>(*gFrmPesquisa, u"cboNumeroClienteConcorrente"_s);
    kind_ = Find<forms::ComboList>(*gFrmPesquisa, u"cboTipo"_s);
    grid_ = Find<forms::BoundGrid>(*gFrmPesquisa, u"grdPesquisa1"_s);
    source_ = Find<forms::DataSource>(*gFrmPesquisa, u"dtcPesquisa1"_s);
    Settle();
}

Screen::~Screen() {
    // Unloading would go on to the credits.
    delete gFrmPesquisa;
    FecharBancoDados(gWS, gDB);
}

void Screen::Settle() {
    for (int i = 0; i < 5; ++i) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
}

void Screen::Enter(const Search& search, Order last) {
    const auto text = [last](Order here, const QString& wanted) {
        return here == last ? BeforeLastKey(wanted) : wanted;
    };
    number_->setText(text(Order::Number, QString::fromUtf16(search.number)));
    description_->setText(text(Order::Description, QString::fromUtf16(search.description)));
    const qint32 itemData = ItemDataOf(search.party);
    Select(*party_, [&](int row) { return party_->ItemData(row) == itemData; });
    partyNumber_->setText(text(Order::PartyNumber, search.partyNumber == nullptr
                                                       ? competitorNumber_
                                                       : QString::fromUtf16(search.partyNumber)));
    SelectKind(*kind_, last == Order::Kind ? u"Componentes" : u"TODOS OS TIPOS");
}

void Screen::Change(const Search& search, Order last) {
    switch (last) {
        case Order::Number:
            number_->setText(QString::fromUtf16(search.number));
            break;
        case Order::Description:
            description_->setText(QString::fromUtf16(search.description));
            break;
        case Order::PartyNumber:
            partyNumber_->setText(search.partyNumber == nullptr
                                      ? competitorNumber_
                                      : QString::fromUtf16(search.partyNumber));
            break;
        case Order::Kind:
            SelectKind(*kind_, u"TODOS OS TIPOS");
            break;
    }
}

Measured Screen::Run(const Search& search, const OrderBy& order, const Moments& moments) {
    Enter(search, order.order);
    Settle();
    if (moments.beforeLastKey) {
        moments.beforeLastKey();
    }

    Measured measured;
    const Clock::time_point start = Clock::now();
    double handlerMs = 0;
    measured.firstMs = application_.TimeToPaint({grid_->objectName()}, [&] {
        Change(search, order.order);
        handlerMs = MillisecondsSince(start);
    });
    if (moments.painted) {
        moments.painted();
    }
    while (!source_->GetRecordset()->IsComplete()) {
        QCoreApplication::processEvents();
    }
    measured.wholeMs = MillisecondsSince(start);
    measured.stallMs = std::max(handlerMs, application_.LongestEventMs());
    measured.rows = static_cast<double>(source_->GetRecordset()->RecordCount());
    return measured;
}

}  // namespace bench
