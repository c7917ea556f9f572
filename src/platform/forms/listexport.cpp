#include "platform/forms/listexport.h"

#include "platform/convert.h"
#include "platform/erro.h"
#include "platform/forms/application.h"
#include "platform/forms/boundgrid.h"
#include "platform/forms/gridmodel.h"
#include "platform/forms/msgbox.h"
#include "platform/forms/owner.h"
#include "platform/forms/progressbox.h"
#include "platform/system/csv_writer.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLocale>
#include <QMenu>
#include <QPointer>
#include <QStandardPaths>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace forms {
namespace {

// Between two looks at what the user wants.
constexpr auto Slice = 40ms;
constexpr qint64 RowsBetweenLooks = 512;
using Clock = std::chrono::steady_clock;

SavePathHandler& Handler() {
    static SavePathHandler handler;
    return handler;
}

QString AskForPath(const QString& suggested) {
    if (const SavePathHandler handler = Handler()) {
        return handler(suggested);
    }
    const AwaitingUser waiting;
    QFileDialog dialog(nullptr, u"Salvar lista"_s, suggested, u"Planilhas CSV (*.csv)"_s);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(u"csv"_s);
    PlaceOverActiveForm(dialog);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

QString SuggestedPath() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QFileInfo(folder).isDir() ? folder + u"/lista.csv"_s : u"lista.csv"_s;
}

// A name beside the file that nothing has yet.
QString Beside(const QString& path) {
    QString name = path + u".tmp"_s;
    for (int i = 1; QFileInfo::exists(name); ++i) {
        name = path + u".%1.tmp"_s.arg(i);
    }
    return name;
}

// What separates cells and rows does not stand in them.
QString OneLine(QString text) {
    return text.replace(u'\t', u' ').replace(u'\n', u' ').replace(u'\r', u' ');
}

QString Line(const QStringList& cells) {
    return cells.join(u'\t');
}

void Append(QString& text, const QStringList& cells) {
    text += Line(cells);
    text += u'\n';
}

QString Counted(qint64 rows) {
    return QLocale(QLocale::Portuguese, QLocale::Brazil).toString(rows);
}

// The list that is being taken gave way to another one.
Erro Replaced() {
    return {Erro::Cancelled, u"A lista mudou no meio do caminho."_s};
}

}  // namespace

ListExport::ListExport(BoundGrid* grid, GridModel* model)
    : QObject(grid), grid_(grid), model_(model) {
    grid->installEventFilter(this);
    grid->viewport()->installEventFilter(this);
}

bool ListExport::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ContextMenu) {
        const auto* menu = static_cast<QContextMenuEvent*>(event);
        ShowMenu(menu->reason() == QContextMenuEvent::Mouse ? menu->globalPos()
                                                            : PlaceOfCurrentRow());
        return true;
    }
    if (event->type() == QEvent::KeyPress && watched == grid_) {
        const auto* key = static_cast<QKeyEvent*>(event);
        return OnKey(key->key(), key->modifiers() & ~Qt::KeypadModifier);
    }
    return QObject::eventFilter(watched, event);
}

bool ListExport::OnKey(int key, Qt::KeyboardModifiers modifiers) {
    if (key == Qt::Key_C && modifiers == Qt::ControlModifier) {
        CopyRow();
    } else if (key == Qt::Key_C && modifiers == (Qt::ControlModifier | Qt::ShiftModifier)) {
        CopyList();
    } else if (key == Qt::Key_Menu || (key == Qt::Key_F10 && modifiers == Qt::ShiftModifier)) {
        ShowMenu(PlaceOfCurrentRow());
    } else {
        return false;
    }
    return true;
}

QPoint ListExport::PlaceOfCurrentRow() const {
    const QRect row = grid_->visualRect(grid_->currentIndex());
    const QRect seen = grid_->viewport()->rect();
    return grid_->viewport()->mapToGlobal(
        QPoint(seen.left(), std::clamp(row.bottom(), seen.top(), seen.bottom())));
}

void ListExport::ShowMenu(const QPoint& globalPlace) {
    auto* menu = new QMenu(grid_);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setObjectName(u"ListMenu"_s);
    // The keys are only shown: they are the grid's, not the menu's.
    const auto add = [&](const QString& text, auto slot) {
        QAction* action = menu->addAction(text);
        action->setEnabled(model_->rowCount() > 0);
        connect(action, &QAction::triggered, this, slot, Qt::QueuedConnection);
        return action;
    };
    add(u"&Copiar linha\tCtrl+C"_s, &ListExport::CopyRow)
        ->setEnabled(grid_->currentIndex().isValid());
    add(u"Copiar &lista\tCtrl+Shift+C"_s, &ListExport::CopyList);
    add(u"&Salvar lista…"_s, &ListExport::SaveList);
    menu->popup(globalPlace);
}

QStringList ListExport::Headings() const {
    QStringList headings;
    for (int i = 0; i < model_->columnCount(); ++i) {
        headings += model_->headerData(i, Qt::Horizontal).toString();
    }
    return headings;
}

QStringList ListExport::Cells(qint64 row, bool forSpreadsheet) const {
    QStringList cells;
    for (int i = 0; i < model_->columnCount(); ++i) {
        const QVariant value = model_->Value(row, i);
        // The blanks that align a number are none of its own.
        const QString text = convert::ToTextOrEmpty(value).trimmed();
        const bool decimal = value.typeId() == QMetaType::Double;
        cells += decimal ? sys::CsvNumber(value.toDouble()) : forSpreadsheet ? text : OneLine(text);
    }
    return cells;
}

void ListExport::CopyRow() const {
    if (const QModelIndex current = grid_->currentIndex(); current.isValid()) {
        QGuiApplication::clipboard()->setText(Line(Cells(current.row(), false)));
    }
}

ListExport::Outcome ListExport::ForEachRow(const QString& what, bool forSpreadsheet,
                                           const Use& use) {
    const QPointer<dao::Recordset> records = model_->Records();
    const QPointer<ListExport> self = this;
    ProgressBox progress;
    // Lets events run. False: the user has cancelled.
    const auto look = [&](const QString& text, qint64 done, qint64 total) {
        const bool on = progress.Look(text, done, total);
        if (!self || !records || records != model_->Records()) {
            throw Replaced();
        }
        return on;
    };
    while (records && !records->ReadFor(Slice)) {
        if (!look(u"Lendo a lista: %1 linhas"_s.arg(Counted(records->RecordCount())), 0, 0)) {
            return Outcome::Cancelled;
        }
    }
    const qint64 rows = records ? records->RecordCount() : 0;
    auto lastLook = Clock::now();
    for (qint64 row = 0; row < rows; ++row) {
        use(Cells(row, forSpreadsheet));
        if (row % RowsBetweenLooks == 0 && Clock::now() - lastLook > Slice) {
            if (!look(u"%1: %2 de %3 linhas"_s.arg(what, Counted(row), Counted(rows)), row, rows)) {
                return Outcome::Cancelled;
            }
            lastLook = Clock::now();
        }
    }
    return Outcome::Done;
}

void ListExport::CopyList() {
    if (model_->rowCount() == 0) {
        return;
    }
    QString text;
    if (const QString note = Note(); !note.isEmpty()) {
        Append(text, {note});
    }
    Append(text, Headings());
    try {
        if (ForEachRow(u"Copiando a lista"_s, false, [&text](const QStringList& cells) {
                Append(text, cells);
            }) == Outcome::Done) {
            QGuiApplication::clipboard()->setText(text);
        }
    } catch (const Erro& erro) {
        Tell(u"A lista não foi copiada.\n%1"_s.arg(erro.Description()));
    }
}

void ListExport::WriteFile(const QString& path) {
    const QString aside = Beside(path);
    try {
        sys::CsvWriter file(aside);
        if (const QString note = Note(); !note.isEmpty()) {
            file.Row({note});
        }
        file.Row(Headings());
        if (ForEachRow(u"Salvando a lista"_s, true, [&file](const QStringList& cells) {
                file.Row(cells);
            }) == Outcome::Cancelled) {
            file.Close();
            QFile::remove(aside);
            return;
        }
        file.Close();
        sys::Flush(aside);
        sys::Replace(aside, path);
    } catch (const Erro&) {
        QFile::remove(aside);
        throw;
    }
}

void ListExport::SaveList() {
    if (model_->rowCount() == 0) {
        return;
    }
    const QString path = AskForPath(SuggestedPath());
    if (path.isEmpty()) {
        return;
    }
    try {
        WriteFile(path);
    } catch (const Erro& erro) {
        Tell(u"A lista não foi salva em \"%1\".\n%2"_s.arg(path, erro.Description()));
    }
}

void ListExport::Tell(const QString& text) const {
    MsgBox(text, vbCritical, ProgramTitle());
}

void SetSavePathHandler(SavePathHandler handler) {
    Handler() = std::move(handler);
}

}  // namespace forms
