#pragma once

#include "verificar/finding.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace publicar {

using verificar::Finding;

// One of the publisher's keys.
struct Signer {
    QString site;    // the name of what he publishes
    QByteArray key;  // secret
};

struct Order {
    QString folder;        // what the new version brings, laid out as in the data folder
    QString catalogue;     // data folder to try the scripts on, of which a copy is made
    QString site;          // the server's base folder; empty: check only
    QString keep;          // where the tried catalogue goes, for the next version; empty: nowhere
    int release = 0;       // the new version
    QStringList programs;  // names of the files that are started after the update
    int examples = 20;     // of each finding
    bool replace = false;  // publish a version again
    std::vector<Signer> signers{};
    int patience = 60;  // seconds that a statement may take
};

// A file of the new version. Scripts end in ".sdb".
struct File {
    QString type;  // as in a list: "SDB", "EXE" or "ARQ"
    QString name;  // as in a list: folder levels are separated by a backslash
    QString path;  // where it lies now, in the platform's form
    qint64 size = 0;
    QByteArray sha256{};  // once it lies in the site

    bool IsScript() const;
};

// A version is published once and for ever, and its number is a signed 16-bit one.
inline constexpr int LastRelease = 32767;

QString ListName(int release);
inline const QString VersionName = QStringLiteral("Versao.txt");
inline const QString SignedVersionName = QStringLiteral("Versao.sig");

// The files of the folder in the order of their names, which is the one in which scripts run. What
// cannot be taken along goes to the findings. Throws Erro when there is no such folder.
std::vector<File> ReadFolder(const Order& order, QList<Finding>& findings);

// The text of the list.
QString ListOf(const std::vector<File>& files);

}  // namespace publicar
