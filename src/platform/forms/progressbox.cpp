#include "platform/forms/progressbox.h"

#include "platform/forms/application.h"
#include "platform/forms/owner.h"

#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace forms {
namespace {

constexpr int Steps = 1000;
constexpr int Width = 320;  // design pixels

int untilShown = 400;

}  // namespace

ProgressBox::ProgressBox() : label_(new QLabel(this)), bar_(new QProgressBar(this)) {
    setWindowTitle(ProgramTitle());
    setModal(true);
    setFixedWidth(Width);
    bar_->setTextVisible(false);
    auto* cancel = new QPushButton(u"Cancelar"_s, this);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(this, &QDialog::rejected, this, [this] { cancelled_ = true; });
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(18, 16, 18, 14);
    layout->setSpacing(12);
    layout->addWidget(label_);
    layout->addWidget(bar_);
    layout->addWidget(cancel, 0, Qt::AlignHCenter);
    since_.start();
}

int ProgressBox::SetDelay(int milliseconds) {
    return std::exchange(untilShown, milliseconds);
}

bool ProgressBox::Look(const QString& what, qint64 done, qint64 total) {
    if (since_.elapsed() < untilShown) {
        return true;
    }
    label_->setText(what);
    setAccessibleName(what);
    bar_->setMaximum(total > 0 ? Steps : 0);
    bar_->setValue(total > 0 ? static_cast<int>(done * Steps / total) : 0);
    if (!shown_) {
        shown_ = true;
        adjustSize();
        PlaceOverActiveForm(*this);
        show();
    }
    QCoreApplication::processEvents();
    return !cancelled_;
}

}  // namespace forms
