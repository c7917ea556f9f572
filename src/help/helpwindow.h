#pragma once

#include <QList>
#include <QString>
#include <QWidget>

class QLabel;
class QLineEdit;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace help {

// The help: one page of HTML with its headings as contents at the left, and a search that minds
// neither case nor accents. A window of its own beside the screens, not one of them; Esc closes it.
// Pictures are read from the page's folder and from nowhere else, at half their size where the name
// ends in "-2x"; links lead within the page. It can be printed.
class HelpWindow : public QWidget {
    Q_OBJECT

public:
    // Opens the window, or brings it to the front when it shows this page already. `path` in the
    // system's form. Throws Erro 53 or 75 when the page can't be read; then nothing is opened.
    static void Open(const QString& path, const QString& caption);

    // Scrolls to the next or the previous hit of what stands in the search box, around the end.
    void FindNext();
    void FindPrevious();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    class Page;

    HelpWindow(const QString& path, const QString& html, const QString& caption);
    void MakeContents();
    void GoTo(int position);
    void Travel(int steps);
    void FollowLink(const QString& anchor);
    void Search();
    void ShowHit();
    QToolButton* AddButton(const QString& text, const QString& tip, void (HelpWindow::*act)());
    void Back() { Travel(-1); }
    void Forward() { Travel(+1); }
    void Home() { GoTo(0); }
    void Print();

    QString path_;
    QTreeWidget* contents_ = nullptr;
    Page* page_ = nullptr;
    QLineEdit* find_ = nullptr;
    QLabel* count_ = nullptr;
    QToolButton* back_ = nullptr;
    QToolButton* forward_ = nullptr;
    QString folded_;         // the page's text without case and accents, letter for letter
    QList<int> hits_;        // places of the searched text
    int hit_ = -1;           // the one in view
    QList<int> visited_{0};  // places in the page, in the order of the visits
    int visit_ = 0;
};

}  // namespace help
