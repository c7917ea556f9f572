#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

// A print system of the test's own: scheduler, configuration, socket and queues in a temporary
// folder. Nothing of the machine's is asked or touched.
class PrintSystem {
public:
    PrintSystem();
    ~PrintSystem();

    // Empty when it runs; else why it cannot on this machine.
    const QString& Missing() const { return missing_; }

    // An administrator's command: lpadmin, cupsreject, cupsdisable ... False when it fails.
    bool Run(const QString& command, const QStringList& arguments) const;
    // Makes, or makes anew, a queue that takes everything and prints into the void.
    bool MakeQueue(const QString& name) const;
    void Stop();
    bool Start();

    // What arrived as the newest job: its file, and its attributes as they came.
    QString NewestDocument() const;
    QByteArray NewestAttributes() const;

private:
    QString Path(const QString& name) const { return folder_.filePath(name); }
    QString Newest(const QString& pattern) const;

    QTemporaryDir folder_;
    QProcess scheduler_;
    QString missing_;
};
