#pragma once

#include <QString>
#include <QStringList>

// Whether a data folder on a network can be shared: whether locks hold between two programs, what
// the first search costs, whether what is flushed has time to reach a disk.
namespace verificar {

struct Network {
    QString fileSystem;    // empty where the system does not tell
    QStringList faults;    // why the folder cannot be shared; empty: it can
    QStringList hints;     // what may be meant so, as far as it is not measured
    double openMs = 0;     // key derivation and first page
    qint64 openPages = 0;  // pages of the catalogue that were read, 4 KB each and each by itself
    double searchMs = 0;   // the first screen of a search by number, with nothing in memory
    qint64 searchPages = 0;
    double flushMs = 0;  // the median of a few small files, each written whole
};

// `program`: this very program, which plays the other computer (see PlayOther). Writes small files
// into the folder and takes them away again; where nobody may write, a hint says what could not be
// tried. Erro 53 without a catalogue, the engine's errors for one that cannot be opened.
Network CheckNetwork(const QString& folder, const QString& program);

// What a person reads of it.
QString Report(const QString& folder, const Network& network);

// The other side of the trial: tries to change the trial file at once, and says on standard output
// if it could. The option that asks for it stands in front of the file's path.
inline const QString OtherSide = QStringLiteral("--outro-lado");
void PlayOther(const QString& trialFile);

}  // namespace verificar
