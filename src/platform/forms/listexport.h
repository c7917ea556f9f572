#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

namespace dao {
class Recordset;
}

namespace forms {

class BoundGrid;
class GridModel;

// How the rows of a grid leave it: the current one (Ctrl+C) and all of them with their headings
// (Ctrl+Shift+C) to the clipboard, cells with a tab between them; all of them to a CSV file for
// spreadsheets. Its menu opens by the right mouse button, the menu key and Shift+F10.
//
// What takes long shows how far it is and can be cancelled, which leaves everything as it was.
class ListExport : public QObject {
    Q_OBJECT

public:
    ListExport(BoundGrid* grid, GridModel* model);

    // `note` is asked at the time: what shortens the list, for the line above the headings; empty
    // where nothing does.
    void SetNote(std::function<QString()> note) { note_ = std::move(note); }

    void CopyRow() const;
    void CopyList();
    // Asks for the file's name. Tells in a box what failed; the file is then as it was.
    void SaveList();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Outcome { Done, Cancelled };
    using Use = std::function<void(const QStringList& cells)>;

    void ShowMenu(const QPoint& globalPlace);
    QPoint PlaceOfCurrentRow() const;
    bool OnKey(int key, Qt::KeyboardModifiers modifiers);
    Outcome ForEachRow(const QString& what, bool forSpreadsheet, const Use& use);
    QStringList Cells(qint64 row, bool forSpreadsheet) const;
    QStringList Headings() const;
    QString Note() const { return note_ ? note_() : QString(); }
    void WriteFile(const QString& path);
    void Tell(const QString& text) const;

    BoundGrid* grid_;
    GridModel* model_;
    std::function<QString()> note_;
};

// Puts something in place of the dialog that asks where to save (tests): an empty path cancels. An
// empty function restores it.
using SavePathHandler = std::function<QString(const QString& suggested)>;
void SetSavePathHandler(SavePathHandler handler);

}  // namespace forms
