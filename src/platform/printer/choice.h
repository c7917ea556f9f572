#pragma once

class QPrinter;

namespace printer {

// Lets the user choose in the system's own way, with the flags of printdialog.h, and sets `printer`
// accordingly: a printer, or a PDF file. False for a cancel. choice_cups.cpp, choice_windows.cpp.
bool Choose(QPrinter& printer, int flags);

}  // namespace printer
