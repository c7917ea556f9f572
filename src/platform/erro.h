#pragma once

#include <QString>

#include <exception>

// The one error type of the system: a number and a description in Brazilian Portuguese. Thrown by
// the platform and by conversions; a routine that traps catches it, anything else lets it rise to
// forms::Application, which shows the box, closes the catalogue and ends the program.
class Erro : public std::exception {
public:
    // Numbers of failures that do not come from the database engine. Those of the engine stand in
    // platform/dao/errors.h.
    enum Code : int {
        InvalidArgument = 5,
        Overflow = 6,
        SubscriptOutOfRange = 9,
        TypeMismatch = 13,
        InternalError = 51,
        FileNotFound = 53,
        DiskFull = 61,
        PermissionDenied = 70,
        PathFileAccess = 75,
        PathNotFound = 76,
        InvalidUseOfNull = 94,
        InvalidPicture = 481,
        PrinterError = 482,
        Cancelled = 32755,
    };

    // The description that belongs to one of the numbers above.
    explicit Erro(Code code);
    Erro(int number, QString description);

    int Number() const { return number_; }
    const QString& Description() const { return description_; }
    const char* what() const noexcept override { return utf8_.constData(); }

private:
    int number_;
    QString description_;
    QByteArray utf8_;
};
