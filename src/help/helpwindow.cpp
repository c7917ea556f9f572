#include "help/helpwindow.h"

#include "platform/erro.h"
#include "platform/forms/application.h"
#include "platform/forms/form.h"
#include "platform/forms/msgbox.h"
#include "platform/forms/theme.h"
#include "platform/printer/printdialog.h"
#include "platform/system/paths.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSplitter>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeWidget>
#include <QUrl>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace help {
namespace {

// Design pixels.
constexpr QSize WindowSize(788, 552);
constexpr int ContentsWidth = 208;
constexpr int FindWidth = 180;

// One letter for one letter, so that places in the folded text are places in the text.
QString Folded(const QString& text) {
    QString folded = text;
    for (QChar& c : folded) {
        const QString parts = c.decomposition();
        c = (parts.isEmpty() ? c : parts.at(0)).toCaseFolded();
    }
    return folded;
}

// A picture of this name has two of its pixels to one of the page.
constexpr auto DenseEnding = "-2x"_L1;

QPointer<HelpWindow>& Opened() {
    static QPointer<HelpWindow> window;
    return window;
}

}  // namespace

// Reads pictures of the page's folder. The page may name anything; what lies elsewhere, on a
// network too, is not there.
class HelpWindow::Page : public QTextBrowser {
public:
    Page(const QString& folder, QWidget* parent) : QTextBrowser(parent), folder_(folder) {
        setOpenLinks(false);
        setFrameShape(QFrame::NoFrame);
    }

    QVariant loadResource(int type, const QUrl& name) override {
        const QString file = name.path();
        const bool inside = name.isRelative() && name.host().isEmpty() && !file.startsWith(u'/') &&
                            !file.split(u'/').contains(u".."_s);
        if (type != QTextDocument::ImageResource || !inside) {
            return {};
        }
        return AsSeen(QImage(sys::ToNative(folder_ + QString(file).replace(u'/', u'\\'))),
                      QFileInfo(file).completeBaseName().endsWith(DenseEnding) ? 2 : 1);
    }

    void PrintOn(printer::Printer& paper) {
        const QScopedValueRollback full(forPaper_, true);
        // Of the same owner, which reads its pictures.
        const std::unique_ptr<QTextDocument> copy(document()->clone(document()->parent()));
        paper.PrintDocument(*copy);
    }

private:
    // Scaled once to the screen's pixels: the toolkit's scaling while painting makes small print
    // unreadable. Paper shows every pixel.
    QImage AsSeen(QImage picture, int density) const {
        const qreal shown = forPaper_ ? density : std::min<qreal>(density, devicePixelRatioF());
        if (shown < density) {
            const QSize size = (QSizeF(picture.size()) * shown / density).toSize();
            picture = picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        }
        picture.setDevicePixelRatio(shown);
        return picture;
    }

    QString folder_;
    bool forPaper_ = false;
};

void HelpWindow::Open(const QString& path, const QString& caption) {
    const QString html = sys::ReadText(path);
    QPointer<HelpWindow>& window = Opened();
    if (window && window->path_ != path) {
        delete window;
    }
    if (!window) {
        window = new HelpWindow(path, html, caption);
        if (const forms::Form* form = forms::Form::Active()) {
            window->move(form->geometry().center() - window->rect().center());
        }
    }
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->show();
    window->raise();
    window->activateWindow();
}

HelpWindow::HelpWindow(const QString& path, const QString& html, const QString& caption)
    : path_(path) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(caption);
    resize(WindowSize);

    auto* bar = new QHBoxLayout;
    bar->setContentsMargins(6, 4, 6, 4);
    bar->setSpacing(6);
    auto* splitter = new QSplitter(this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(bar);
    layout->addWidget(splitter, 1);

    contents_ = new QTreeWidget(splitter);
    contents_->setAccessibleName(u"Conteúdo"_s);
    contents_->setHeaderHidden(true);
    contents_->setFrameShape(QFrame::NoFrame);
    contents_->setRootIsDecorated(false);
    contents_->setIndentation(14);
    page_ = new Page(path.left(path.lastIndexOf(u'\\') + 1), splitter);
    page_->setAccessibleName(u"Página da ajuda"_s);
    page_->document()->setDocumentMargin(16);
    page_->setHtml(html);
    folded_ = Folded(page_->document()->toPlainText());
    splitter->setSizes({ContentsWidth, WindowSize.width()});  // the page takes what is left
    splitter->setStretchFactor(1, 1);

    back_ = AddButton(u"←"_s, u"Voltar"_s, &HelpWindow::Back);
    forward_ = AddButton(u"→"_s, u"Avançar"_s, &HelpWindow::Forward);
    bar->addWidget(back_);
    bar->addWidget(forward_);
    bar->addWidget(AddButton(u"Início"_s, u"Início da página"_s, &HelpWindow::Home));
    bar->addWidget(AddButton(u"Imprimir"_s, u"Imprimir a ajuda (Ctrl+P)"_s, &HelpWindow::Print));
    bar->addStretch();
    count_ = new QLabel(this);
    bar->addWidget(count_);
    find_ = new QLineEdit(this);
    find_->setPlaceholderText(u"Localizar"_s);
    find_->setAccessibleName(u"Localizar"_s);
    find_->setClearButtonEnabled(true);
    find_->setFixedWidth(FindWidth);
    bar->addWidget(find_);
    bar->addWidget(
        AddButton(u"▲"_s, u"Localizar anterior (Shift+F3)"_s, &HelpWindow::FindPrevious));
    bar->addWidget(AddButton(u"▼"_s, u"Localizar próxima (F3)"_s, &HelpWindow::FindNext));

    MakeContents();
    Travel(0);
    connect(contents_, &QTreeWidget::itemClicked, this,
            [this](const QTreeWidgetItem* item) { GoTo(item->data(0, Qt::UserRole).toInt()); });
    connect(contents_, &QTreeWidget::itemActivated, this,
            [this](const QTreeWidgetItem* item) { GoTo(item->data(0, Qt::UserRole).toInt()); });
    connect(page_, &QTextBrowser::anchorClicked, this,
            [this](const QUrl& link) { FollowLink(link.fragment()); });
    connect(find_, &QLineEdit::textChanged, this, &HelpWindow::Search);
    connect(find_, &QLineEdit::returnPressed, this, &HelpWindow::FindNext);
    page_->setFocus();
}

QToolButton* HelpWindow::AddButton(const QString& text, const QString& tip,
                                   void (HelpWindow::*act)()) {
    auto* button = new QToolButton(this);
    button->setText(text);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    button->setAutoRaise(true);
    connect(button, &QToolButton::clicked, this, act);
    return button;
}

void HelpWindow::MakeContents() {
    // The latest entry of each level; a level that the page skips takes the one above.
    std::array<QTreeWidgetItem*, 4> latest{};
    for (QTextBlock block = page_->document()->begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        if (level < 1 || level > 3) {
            continue;
        }
        QTreeWidgetItem* parent = nullptr;
        for (int above = level - 1; above > 0 && !parent; --above) {
            parent = latest[static_cast<std::size_t>(above)];
        }
        auto* item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(contents_);
        item->setText(0, block.text());
        item->setToolTip(0, block.text());
        item->setData(0, Qt::UserRole, block.position());
        latest[static_cast<std::size_t>(level)] = item;
        std::fill(latest.begin() + level + 1, latest.end(), nullptr);
    }
    contents_->expandAll();
}

void HelpWindow::GoTo(int position) {
    visited_.resize(visit_ + 1);
    visited_.append(position);
    Travel(+1);
}

void HelpWindow::Travel(int steps) {
    visit_ = std::clamp<int>(visit_ + steps, 0, static_cast<int>(visited_.size()) - 1);
    back_->setEnabled(visit_ > 0);
    forward_->setEnabled(visit_ + 1 < visited_.size());
    QTextCursor cursor(page_->document());
    cursor.setPosition(visited_.at(visit_));
    page_->setTextCursor(cursor);
    QScrollBar* bar = page_->verticalScrollBar();
    bar->setValue(bar->value() + page_->cursorRect().top() - page_->fontMetrics().height());
}

void HelpWindow::FollowLink(const QString& anchor) {
    if (anchor.isEmpty()) {
        return;
    }
    for (QTextBlock block = page_->document()->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            if (it.fragment().charFormat().anchorNames().contains(anchor)) {
                GoTo(it.fragment().position());
                return;
            }
        }
    }
}

void HelpWindow::Print() {
    printer::PrintDialog dialog;
    dialog.SetFlags(printer::cdlPDNoSelection | printer::cdlPDNoPageNums |
                    printer::cdlPDUseDevModeCopies);
    try {
        const auto paper = dialog.ShowPrinter();
        const forms::Busy busy;
        paper->SetOrientation(printer::vbPRORPortrait);
        page_->PrintOn(*paper);
        paper->EndDoc();
    } catch (const Erro& erro) {
        if (erro.Number() != Erro::Cancelled) {
            forms::MsgBox(forms::ErrorText(QString::number(erro.Number()), erro.Description()),
                          forms::vbCritical, forms::ProgramTitle());
        }
    }
}

void HelpWindow::Search() {
    hits_.clear();
    hit_ = -1;
    const QString wanted = Folded(find_->text());
    for (qsizetype at = folded_.indexOf(wanted); !wanted.isEmpty() && at >= 0;
         at = folded_.indexOf(wanted, at + wanted.size())) {
        hits_.append(static_cast<int>(at));
    }
    if (!hits_.isEmpty()) {
        hit_ = 0;
    }
    ShowHit();
}

void HelpWindow::FindNext() {
    if (!hits_.isEmpty()) {
        hit_ = (hit_ + 1) % static_cast<int>(hits_.size());
        ShowHit();
    }
}

void HelpWindow::FindPrevious() {
    if (!hits_.isEmpty()) {
        const int size = static_cast<int>(hits_.size());
        hit_ = (hit_ + size - 1) % size;
        ShowHit();
    }
}

void HelpWindow::ShowHit() {
    const int length = static_cast<int>(find_->text().size());
    QList<QTextEdit::ExtraSelection> marks;
    QTextEdit::ExtraSelection mark;
    mark.format.setForeground(forms::CurrentTheme().text);
    mark.cursor = QTextCursor(page_->document());
    for (qsizetype i = 0; i < hits_.size(); ++i) {
        mark.format.setBackground(i == hit_ ? forms::CurrentTheme().lit
                                            : forms::CurrentTheme().selection);
        mark.cursor.setPosition(hits_.at(i));
        mark.cursor.setPosition(hits_.at(i) + length, QTextCursor::KeepAnchor);
        marks.append(mark);
    }
    page_->setExtraSelections(marks);
    if (hit_ < 0) {
        count_->setText(length == 0 ? QString() : u"Nenhuma ocorrência"_s);
        return;
    }
    QTextCursor cursor(page_->document());
    cursor.setPosition(hits_.at(hit_));
    page_->setTextCursor(cursor);
    count_->setText(u"%1 de %2"_s.arg(hit_ + 1).arg(hits_.size()));
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
    const auto is = [event](int key, Qt::KeyboardModifiers modifiers) {
        return event->key() == key && event->modifiers() == modifiers;
    };
    if (is(Qt::Key_Escape, Qt::NoModifier)) {
        close();
    } else if (is(Qt::Key_F, Qt::ControlModifier)) {
        find_->setFocus();
        find_->selectAll();
    } else if (is(Qt::Key_P, Qt::ControlModifier)) {
        Print();
    } else if (is(Qt::Key_F3, Qt::NoModifier)) {
        FindNext();
    } else if (is(Qt::Key_F3, Qt::ShiftModifier)) {
        FindPrevious();
    } else if (is(Qt::Key_Left, Qt::AltModifier)) {
        Back();
    } else if (is(Qt::Key_Right, Qt::AltModifier)) {
        Forward();
    } else {
        QWidget::keyPressEvent(event);
    }
}

}  // namespace help
