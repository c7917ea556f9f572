#include "platform/forms/boundgrid.h"

#include "platform/forms/griddelegate.h"
#include "platform/forms/gridmodel.h"
#include "platform/forms/listexport.h"
#include "platform/forms/theme.h"

#include <QHeaderView>
#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <limits>

using namespace Qt::StringLiterals;

namespace forms {
namespace {

QLocale Brazilian() {
    return {QLocale::Portuguese, QLocale::Brazil};
}

}  // namespace

BoundGrid::BoundGrid(const QString& name, const QString& accessibleName, QWidget* parent)
    : QTableView(parent), model_(new GridModel(this)) {
    setObjectName(name);
    setAccessibleName(accessibleName);
    setAttribute(Qt::WA_NoMousePropagation);
    viewport()->setMouseTracking(true);
    setModel(model_);
    setItemDelegate(new GridDelegate(this));
    export_ = new ListExport(this, model_);

    setShowGrid(false);
    setTabKeyNavigation(false);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);

    horizontalHeader()->hide();
    horizontalHeader()->setMinimumSectionSize(1);
    horizontalHeader()->setStretchLastSection(true);  // lines and highlight go to the edge
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(CurrentTheme().rowPixels);
}

BoundGrid::~BoundGrid() = default;

void BoundGrid::AddColumn(const QString& field, const QString& title, double width,
                          Qt::Alignment alignment) {
    const int left = qRound(columnEdge_);
    columnEdge_ += width;
    model_->AddColumn(field, title, alignment);
    setColumnWidth(model_->columnCount() - 1, qRound(columnEdge_) - left);
}

void BoundGrid::SetDataSource(DataSource* source) {
    source_ = source;
    TellSource();
    connect(source, &DataSource::Rebound, this, &BoundGrid::Bind);
    connect(source, &DataSource::Completed, this, &BoundGrid::Count);
    if (source->GetRecordset()) {
        Bind();
    }
}

void BoundGrid::SetEmptyText(const QString& text) {
    emptyText_ = text;
    viewport()->update();
}

void BoundGrid::Count() {
    model_->Grow(true);
    const int rows = model_->rowCount();
    setAccessibleDescription(rows == 0   ? emptyText_
                             : rows == 1 ? u"1 linha"_s
                                         : Brazilian().toString(rows) + u" linhas"_s);
    viewport()->update();
    Q_EMIT Counted(accessibleDescription());
}

// Before the screen shows, the view has no layout yet; its own size is what it will have.
void BoundGrid::TellSource() {
    if (source_) {
        source_->SetFirstRows(height() / CurrentTheme().rowPixels + 2);
    }
}

dao::Recordset* BoundGrid::Records() const {
    return source_ ? source_->GetRecordset() : nullptr;
}

void BoundGrid::Bind() {
    dao::Recordset* records = Records();
    connect(records, &dao::Recordset::RowsRead, model_, [this] { model_->Grow(false); });
    connect(records, &dao::Recordset::CurrentChanged, this, &BoundGrid::FollowRecordset);
    const dao::Bookmark last = bookmark_;
    const int lastColumn = column_;
    ReBind();
    Q_EMIT RowColChange(last, lastColumn);
}

void BoundGrid::ReBind() {
    dao::Recordset* records = Records();
    if (!records) {
        return;
    }
    const QScopedValueRollback guard(binding_, true);
    model_->SetRecordset(records);
    doItemsLayout();
    FollowRecordset();
    bookmark_ = CurrentBookmark();
    column_ = currentIndex().column();
}

void BoundGrid::FollowRecordset() {
    const qint64 row = Records()->AbsolutePosition();
    if (row == currentIndex().row()) {
        return;
    }
    if (row >= model_->rowCount()) {
        model_->Grow(true);
    }
    const QModelIndex index = model_->index(static_cast<int>(row), std::max(column_, 0));
    if (!index.isValid()) {
        clearSelection();
    }
    const bool far = index.isValid() && !viewport()->rect().intersects(visualRect(index));
    setCurrentIndex(index);
    if (far && index == currentIndex()) {
        scrollTo(index, PositionAtCenter);  // with what stands around it
    }
}

void BoundGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    dao::Recordset* records = Records();
    if (binding_ || !records) {
        return;
    }
    if (current.isValid() && current.row() != records->AbsolutePosition()) {
        records->SetAbsolutePosition(current.row());
    }
    const dao::Bookmark last = std::exchange(bookmark_, CurrentBookmark());
    const int lastColumn = std::exchange(column_, current.column());
    Q_EMIT RowColChange(last, lastColumn);
}

// The current row stays highlighted whatever is clicked with whatever key held.
QItemSelectionModel::SelectionFlags BoundGrid::selectionCommand(const QModelIndex& index,
                                                                const QEvent*) const {
    return index.isValid() ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                           : QItemSelectionModel::NoUpdate;
}

dao::Bookmark BoundGrid::CurrentBookmark() const {
    const dao::Recordset* records = Records();
    return records && records->AbsolutePosition() >= 0 ? records->CurrentBookmark()
                                                       : dao::Bookmark();
}

int BoundGrid::VisibleRows() const {
    const int first = rowAt(0);
    if (first < 0) {
        return 0;
    }
    const int last = rowAt(viewport()->height() - 1);
    return (last < 0 ? model_->rowCount() - 1 : last) - first + 1;
}

void BoundGrid::Scroll(int columns, qint64 rows) {
    executeDelayedItemsLayout();
    const auto move = [](QScrollBar* bar, qint64 steps) {
        bar->setValue(static_cast<int>(
            std::clamp<qint64>(bar->value() + steps, bar->minimum(), bar->maximum())));
    };
    move(horizontalScrollBar(), columns);
    move(verticalScrollBar(), rows);
}

// Has the rows up to `rows` read and announced, where the user goes there before idle time did.
void BoundGrid::ReadAhead(qint64 rows) {
    if (dao::Recordset* records = Records(); records && rows > model_->rowCount()) {
        records->ReadUpTo(rows);
        model_->Grow(true);
    }
}

QModelIndex BoundGrid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const int column = std::max(currentIndex().column(), 0);
    switch (action) {
        case MoveHome:
            return model_->index(0, column);
        case MoveEnd:
            ReadAhead(std::numeric_limits<int>::max());
            return model_->index(model_->rowCount() - 1, column);
        case MoveDown:
        case MovePageDown:
            ReadAhead(currentIndex().row() + VisibleRows() + 1);
            break;
        default:
            break;
    }
    return QTableView::moveCursor(action, modifiers);
}

void BoundGrid::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    const dao::Recordset* records = Records();
    if (!records || model_->rowCount() > 0 || !records->IsComplete()) {
        return;
    }
    constexpr int Margin = 12;
    QPainter painter(viewport());
    painter.setPen(CurrentTheme().disabledText);
    painter.drawText(viewport()->rect().adjusted(Margin, 0, -Margin, 0),
                     Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
}

void BoundGrid::mousePressEvent(QMouseEvent* event) {
    pressedBefore_ = true;
    QTableView::mousePressEvent(event);
}

void BoundGrid::mouseMoveEvent(QMouseEvent* event) {
    QTableView::mouseMoveEvent(event);
    Q_EMIT MouseMove();
}

void BoundGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    // Without a press before it, its first half went to another screen that stood here.
    if (event->button() == Qt::LeftButton && pressedBefore_ &&
        (model_->rowCount() == 0 || indexAt(event->position().toPoint()).isValid())) {
        Q_EMIT DblClick();
    }
}

void BoundGrid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    TellSource();
}

void BoundGrid::hideEvent(QHideEvent*) {
    pressedBefore_ = false;
}

}  // namespace forms
