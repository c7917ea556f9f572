#pragma once

#include "folder.h"

#include <QStringList>

#include <variant>

namespace demo {

struct ShowText {
    QString text;  // help or version
};
struct Complaint {
    QString text;  // what is wrong with the command line
};

// Reads the arguments behind the program's name.
std::variant<Order, ShowText, Complaint> ReadOptions(const QStringList& arguments);

}  // namespace demo
