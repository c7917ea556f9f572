#pragma once

#include <QDialog>
#include <QElapsedTimer>

class QLabel;
class QProgressBar;

namespace forms {

// A modal box over long work: what is done, how far it is, and a button that cancels. It comes up
// when the work has taken a moment, and until then no event runs.
class ProgressBox : public QDialog {
    Q_OBJECT

public:
    ProgressBox();

    // Lets events run. `done` of `total`; a total of 0: nobody knows. False: the user has
    // cancelled.
    bool Look(const QString& what, qint64 done, qint64 total);

    // After how many milliseconds of work it comes up; returns what it was (tests).
    static int SetDelay(int milliseconds);

private:
    QElapsedTimer since_;
    QLabel* label_;
    QProgressBar* bar_;
    bool shown_ = false;
    bool cancelled_ = false;
};

}  // namespace forms
