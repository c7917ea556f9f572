#pragma once

#include <QProcess>
#include <QStringList>

#include <chrono>

namespace sys {

// A program that works for this one and writes its result to its standard output, which is read
// here as it comes. What it says on its standard error is lost. Ends with the object.
class Child {
public:
    // Erro 53 when there is no such program, 70 when it may not be started.
    Child(const QString& program, const QStringList& arguments, std::chrono::milliseconds patience);
    ~Child();

    // True: so many bytes have come. False: the output ended before, or nothing came for longer
    // than the patience.
    bool Read(char* bytes, qsizetype size);

    // Read gave false because nothing came, and not because the output ended.
    bool IsSilent() const { return silent_; }

private:
    QProcess process_;
    std::chrono::milliseconds patience_;
    QByteArray block_;
    qsizetype at_ = 0;
    bool silent_ = false;
};

}  // namespace sys
