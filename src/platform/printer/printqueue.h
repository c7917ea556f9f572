#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace printer {

// As the print system names it: "copies", "2".
struct JobOption {
    QByteArray name;
    QByteArray value;
};

// A document on its way to a queue of the print system.
struct Job {
    QString queue;
    QString title;
    QString file;  // a whole PDF
    QList<JobOption> options;
};

// Hands the job over, and comes back when the print system has it. A queue that stands still would
// take it and keep it: whoever waits at the printer must know, so that counts as a refusal, too.
// Throws Erro 482, with the reason, when the queue is gone, stopped or not accepting jobs, when the
// server does not answer, or when it refuses.
void Submit(const Job& job);

}  // namespace printer
