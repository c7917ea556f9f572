#include "look/tooltip.h"

#include "platform/forms/font.h"
#include "platform/forms/theme.h"

#include <QCursor>
#include <QEvent>
#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <QScreen>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Design pixels.
constexpr int Margem = 9;
constexpr int LadoDoSinal = 16;
constexpr int LetraDoSinal = 12;
constexpr int EntreTituloETexto = 4;
constexpr int Canto = 5;
constexpr int AlturaDaPonta = 13;
constexpr int LarguraDaPonta = 14;
constexpr int PontaDoLado = 26;       // from the side of a balloon to its point
constexpr int AlturaDoPonteiro = 20;  // of the mouse pointer's picture, below the place it shows

QColor CorDoSistema(qint32 indice) {
    const forms::Theme& tema = forms::CurrentTheme();
    switch (indice) {
        case 5:  // window
            return tema.base;
        case 8:   // text of a window
        case 18:  // text of a button
        case 23:  // text of a tip
            return tema.text;
        case 13:  // chosen row
            return tema.selection;
        case 14:
            return tema.selectionText;
        case 15:  // face of a button
            return tema.button;
        case 17:
            return tema.disabledText;
        case 24:  // ground of a tip
            return tema.tip;
        default:
            return Qt::black;
    }
}

qint32 Numero(const QColor& cor) {
    return cor.red() | cor.green() << 8 | cor.blue() << 16;
}

qint32 Resolver(qint32 cor) {
    return cor < 0 ? Numero(CorDoSistema(cor & 0x7fffffff)) : cor;
}

QColor Cor(qint32 numero) {
    const qint32 cor = Resolver(numero);
    return {cor & 0xff, cor >> 8 & 0xff, cor >> 16 & 0xff};
}

}  // namespace

// The window of a tip. It watches its control for the mouse.
class cToolTip::Janela : public QWidget {
public:
    Janela(const cToolTip& dica, QWidget* controle)
        : QWidget(nullptr, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                               Qt::WindowDoesNotAcceptFocus),
          dica_(dica),
          controle_(controle) {
        setObjectName(u"cToolTip"_s);
        setAccessibleName(dica.title_);
        setAccessibleDescription(dica.text_);
        setAttribute(Qt::WA_ShowWithoutActivating);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        espera_.setSingleShot(true);
        vida_.setSingleShot(true);
        connect(&espera_, &QTimer::timeout, this, [this] { Aparecer(); });
        connect(&vida_, &QTimer::timeout, this, [this] { hide(); });
        controle->installEventFilter(this);
        if (MouseSobreOControle()) {
            espera_.start(dica.hoverTime_);  // it is made when the mouse is already there
        }
    }

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override {
        if (objeto == controle_) {
            switch (evento->type()) {
                case QEvent::MouseMove:
                    if (!jaVeio_) {
                        espera_.start(dica_.hoverTime_);
                    }
                    break;
                case QEvent::Leave:
                    jaVeio_ = false;
                    Sumir();
                    break;
                case QEvent::MouseButtonPress:
                case QEvent::Hide:
                    Sumir();
                    break;
                default:
                    break;
            }
        }
        return QWidget::eventFilter(objeto, evento);
    }

    void paintEvent(QPaintEvent*) override {
        QPainter pintor(this);
        pintor.setRenderHint(QPainter::Antialiasing);
        pintor.fillRect(rect(), Cor(dica_.backCol_));
        QPainterPath contorno = Contorno();
        pintor.setPen(QPen(forms::CurrentTheme().border, 2));  // half of it lies outside the mask
        pintor.drawPath(contorno);

        QPoint canto = corpo_.topLeft() + QPoint(Margem, Margem);
        pintor.setPen(Cor(dica_.foreCol_));
        if (!dica_.title_.isEmpty()) {
            const int altura = AlturaDoTitulo();
            int x = canto.x();
            if (dica_.icon_ != SemSinal) {
                PintarSinal(pintor, QRect(x, canto.y() + (altura - LadoDoSinal) / 2, LadoDoSinal,
                                          LadoDoSinal));
                x += LadoDoSinal + 6;
            }
            pintor.setFont(FonteDoTitulo());
            pintor.drawText(QRect(x, canto.y(), corpo_.width(), altura),
                            Qt::AlignLeft | Qt::AlignVCenter, dica_.title_);
            canto.ry() += altura + EntreTituloETexto;
        }
        pintor.setFont(forms::Font(forms::CurrentTheme().textPixels, false));
        pintor.drawText(QRect(canto, corpo_.size()), Qt::AlignLeft | Qt::AlignTop, Linhas());
    }

private:
    bool MouseSobreOControle() const {
        return controle_ && controle_->isVisible() &&
               controle_->rect().contains(controle_->mapFromGlobal(QCursor::pos()));
    }

    void Sumir() {
        espera_.stop();
        vida_.stop();
        hide();
    }

    // As often as the mouse comes back to the control, but once for each visit.
    void Aparecer() {
        const bool ativa =
            (dica_.style_ & SempreVisivel) || (controle_ && controle_->window()->isActiveWindow());
        if (!MouseSobreOControle() || !ativa) {
            return;
        }
        jaVeio_ = true;
        Colocar();
        show();
        vida_.start(dica_.popupTime_);
    }

    QString Linhas() const { return QString(dica_.text_).replace("\r\n"_L1, "\n"_L1); }

    static QFont FonteDoTitulo() { return forms::Font(forms::CurrentTheme().textPixels, true); }

    static int AlturaDoTitulo() {
        return std::max(QFontMetrics(FonteDoTitulo()).height(), LadoDoSinal);
    }

    QSize TamanhoDoCorpo() const {
        const QFontMetrics texto(forms::Font(forms::CurrentTheme().textPixels, false));
        const QFontMetrics titulo(FonteDoTitulo());
        // A blank is a text too, but a title needs no empty line under it.
        const bool somenteTitulo = !dica_.title_.isEmpty() && Linhas().trimmed().isEmpty();
        QSize tamanho = somenteTitulo ? QSize() : texto.size(0, Linhas());
        if (!dica_.title_.isEmpty()) {
            const int sinal = dica_.icon_ == SemSinal ? 0 : LadoDoSinal + 6;
            const int largura = titulo.size(0, dica_.title_).width() + sinal;
            const int abaixo = somenteTitulo ? 0 : tamanho.height() + EntreTituloETexto;
            tamanho = QSize(std::max(tamanho.width(), largura), AlturaDoTitulo() + abaixo);
        }
        return tamanho + QSize(2 * Margem, 2 * Margem);
    }

    // A balloon's point shows to the mouse or, centred, to the middle of the control; it opens
    // downwards where there is no room above.
    void Colocar() {
        const bool balao = dica_.style_ & Balao;
        const int ponta = balao ? AlturaDaPonta : 0;
        const QSize corpo = TamanhoDoCorpo();
        const QRect area = controle_->screen()->availableGeometry();
        const QRect controle(controle_->mapToGlobal(QPoint()), controle_->size());
        QPoint alvo = dica_.centered_ ? controle.center() : QCursor::pos();

        acima_ = balao && alvo.y() - corpo.height() - ponta >= area.top();
        if (!acima_) {
            alvo.setY(dica_.centered_ ? controle.bottom() + 1 : alvo.y() + AlturaDoPonteiro);
        }
        int esquerda = alvo.x() - (dica_.centered_ ? corpo.width() / 2 : balao ? PontaDoLado : 0);
        esquerda =
            std::clamp(esquerda, area.left(), std::max(area.left(), area.right() - corpo.width()));
        ponta_ = balao ? std::clamp(alvo.x() - esquerda, Canto + LarguraDaPonta,
                                    corpo.width() - Canto - LarguraDaPonta)
                       : 0;
        corpo_ = QRect(QPoint(0, acima_ ? 0 : ponta), corpo);
        setGeometry(esquerda, acima_ ? alvo.y() - corpo.height() - ponta : alvo.y(), corpo.width(),
                    corpo.height() + ponta);
        setMask(QRegion(Contorno().toFillPolygon().toPolygon()));
    }

    QPainterPath Contorno() const {
        QPainterPath caminho;
        if (!(dica_.style_ & Balao)) {
            caminho.addRect(corpo_);
            return caminho;
        }
        caminho.addRoundedRect(corpo_, Canto, Canto);
        // Its foot lies inside the body, so that no line is left between the two.
        constexpr int Dentro = 2;
        const int base = acima_ ? corpo_.bottom() - Dentro : corpo_.top() + Dentro;
        const int bico =
            acima_ ? corpo_.bottom() + AlturaDaPonta : corpo_.top() - AlturaDaPonta + 1;
        QPainterPath ponta;
        ponta.addPolygon(QPolygonF({QPointF(ponta_, base), QPointF(ponta_, bico),
                                    QPointF(ponta_ + LarguraDaPonta, base)}));
        return caminho.united(ponta);
    }

    void PintarSinal(QPainter& pintor, const QRect& lugar) const {
        const forms::Theme& tema = forms::CurrentTheme();
        struct Desenho {
            QColor fundo;
            QColor letra;
            QStringView texto;
        };
        const Desenho desenhos[] = {{tema.primary, tema.primaryText, u"i"},
                                    {tema.lit, tema.text, u"!"},
                                    {tema.alert, tema.primaryText, u"×"}};
        const Desenho& desenho = desenhos[dica_.icon_ - Informacao];
        pintor.save();
        pintor.setPen(Qt::NoPen);
        pintor.setBrush(desenho.fundo);
        pintor.drawEllipse(lugar);
        pintor.setPen(desenho.letra);
        pintor.setFont(forms::Font(LetraDoSinal, true));
        pintor.drawText(lugar, Qt::AlignCenter, desenho.texto.toString());
        pintor.restore();
    }

    const cToolTip& dica_;
    QPointer<QWidget> controle_;
    QTimer espera_;
    QTimer vida_;
    bool jaVeio_ = false;  // on this visit of the mouse
    bool acima_ = false;
    QRect corpo_;    // without the point
    int ponta_ = 0;  // where the point stands, from the left
};

cToolTip::cToolTip() = default;

cToolTip::~cToolTip() = default;

void cToolTip::Destruir() {
    janela_.reset();
    style_ = SemDica;
}

QWidget* cToolTip::Create(QWidget* Parent, const QString& Text, qint32 Style, bool Centered,
                          qint32 Icon, const QString& Title, qint32 ForeColor, qint32 BackColor,
                          qint32 HoverTime, qint32 PopupTime) {
    Destruir();
    const bool estiloConhecido = (Style & ~(SempreVisivel | Balao)) == 0;
    if (!Parent || !estiloConhecido || Icon < SemSinal || Icon > Falha) {
        return nullptr;
    }
    centered_ = Centered;
    title_ = Title;
    if (initialTitle_.isEmpty()) {
        initialTitle_ = title_;
    }
    text_ = QString(Text).replace(u'|', "\r\n"_L1);
    if (title_.isEmpty()) {
        text_.replace("\r\n"_L1, " "_L1);
    }
    if (initialText_.isEmpty()) {
        initialText_ = text_;
    }
    foreCol_ = Resolver(ForeColor);
    backCol_ = Resolver(BackColor);
    if (foreCol_ == backCol_) {
        // Nobody could read it.
        foreCol_ = TextoDeBotao;
        backCol_ = FundoDeDica;
    }
    style_ = Style;
    icon_ = Icon;
    hoverTime_ = HoverTime;
    popupTime_ = PopupTime;
    janela_ = std::make_unique<Janela>(*this, Parent);
    return janela_.get();
}
