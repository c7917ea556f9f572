#pragma once

#include "platform/system/process.h"
#include "support/test.h"
#include "update/conversa.h"

#include <QTimer>

// Plays the verifying process: leaves these results, one for each start, once somebody waits for
// them, and ends. An empty result leaves no file, "!" is a process that cannot be started, "..."
// one that does not end.
class Verifier {
public:
    explicit Verifier(const AnyTexts& results) {
        sys::SetStartHandler([this, results](const QString& commandLine, int) -> sys::ProcessId {
            started += commandLine;
            const QString result = results.value(started.size() - 1);
            conversation = Conversa::Atender();
            if (conversation) {  // it had to ask, and nobody shall be asked again
                conversation->GuardarAcesso(u"maria"_s, u"s3nha"_s);
            }
            if (result == u'!') {
                throw Erro(Erro::FileNotFound);
            }
            if (!result.isEmpty()) {
                QTimer::singleShot(0, qApp, [commandLine, result] {
                    Write(commandLine.section(u'|', 1).replace(u'\\', u'/'), result.toUtf8());
                });
            }
            return result == u"..."_s ? sys::OwnProcessId() : 0;
        });
    }

    QStringList started;
    std::unique_ptr<Conversa> conversation;
};
