#pragma once

#include "support/catalogo.h"
#include "support/servers.h"

// The shipped programs in a folder of their own, and a catalogue that their "Caminho.txt" names.
class Programs {
public:
    explicit Programs(const AnyTexts& names = {}) {
        for (const QString& name : names) {
            if (!QFile::copy(QStringLiteral(TARVO_PROGRAMS "/") + name, Path(name))) {
                qFatal("no %s", qPrintable(name));
            }
        }
    }

    QString Path(const AnyText& name) const { return folder_.filePath(name); }
    void Point(const QString& data) const { Write(Path("Caminho.txt"), data.toUtf8()); }

    // What it prints, and its exit code behind it.
    QString Run(const AnyText& program, const AnyTexts& arguments, bool display = false) const {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
            environment.remove(QLatin1String(variable));
        }
        if (display) {
            environment.insert(u"DISPLAY"_s, u":"_s);
            environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        }
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(Path(program), arguments);
        if (!process.waitForFinished(120000)) {
            process.kill();
            qFatal("%s did not end", qPrintable(program));
        }
        return QString::fromUtf8(process.readAll()) + u" ="_s + QString::number(process.exitCode());
    }

private:
    QTemporaryDir folder_;
};
