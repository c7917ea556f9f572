#pragma once

#include "support/test.h"

#include <cups/cups.h>

// A print system of the test's own: scheduler, configuration, socket and queues in a temporary
// folder. Nothing of the machine's is asked or touched.
class PrintSystem {
public:
    PrintSystem() {
        for (const QString& name : {u"cupsd.conf"_s, u"cups-files.conf"_s}) {
            const QString text = sys::ReadText(QStringLiteral(TARVO_CASES "/") + name);
            Write(Path(name), text.arg(folder_.path()).toUtf8());
        }
        for (const QString& name : {u"root"_s, u"cache"_s, u"state"_s, u"spool"_s}) {
            QDir(folder_.path()).mkdir(name);
        }
        cupsSetServer(qPrintable(Path(u"socket"_s)));
        scheduler_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    }
    ~PrintSystem() {
        Stop();
        cupsSetServer(nullptr);
    }

    bool Start() {
        scheduler_.start(Program(u"cupsd"_s), {u"-f"_s, u"-c"_s, Path(u"cupsd.conf"_s), u"-s"_s,
                                               Path(u"cups-files.conf"_s)});
        const auto answers = [this] {
            http_t* http = httpConnect2(qPrintable(Path(u"socket"_s)), 0, nullptr, AF_UNSPEC,
                                        HTTP_ENCRYPTION_NEVER, 1, PatienceMs, nullptr);
            httpClose(http);
            return http != nullptr;
        };
        // The scheduler may answer before the toolkit has noticed that it runs.
        return scheduler_.waitForStarted(PatienceMs) &&
               QTest::qWaitFor(
                   [&] { return scheduler_.state() == QProcess::NotRunning || answers(); },
                   PatienceMs) &&
               scheduler_.state() == QProcess::Running;
    }
    bool Stop() {
        scheduler_.terminate();
        return scheduler_.waitForFinished(PatienceMs);
    }

    // An administrator's command: "cupsreject balcao".
    bool Run(const QString& command) const {
        QStringList words = command.split(u' ');
        words.insert(1, u"-h"_s + Path(u"socket"_s));
        return QProcess::execute(Program(words.takeFirst()), words) == 0;
    }

    // Of what has arrived: "d*" its documents, "c*" its attributes.
    QString Newest(const QString& pattern) const {
        const QDir spool(Path(u"spool"_s), pattern);
        return spool.isEmpty() ? QString() : spool.filePath(spool.entryList().last());
    }

private:
    static constexpr int PatienceMs = 60000;  // of a machine that has other work

    static QString Program(const QString& name) { return u"/usr/sbin/"_s + name; }
    QString Path(const QString& name) const { return folder_.filePath(name); }

    QTemporaryDir folder_;
    QProcess scheduler_;
};
