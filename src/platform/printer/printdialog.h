#pragma once

#include "platform/printer/printer.h"

#include <functional>
#include <memory>

namespace printer {

// Flag numbers of the dialog.
inline constexpr int cdlPDNoSelection = 0x4;
inline constexpr int cdlPDNoPageNums = 0x8;
inline constexpr int cdlPDUseDevModeCopies = 0x40000;  // the printer makes and collates copies
inline constexpr int cdlPDHidePrintToFile = 0x100000;

// The system's printer dialog: the user chooses the printer and the number of copies, or a PDF
// file, which stands among the printers and so is there whatever cdlPDHidePrintToFile says.
class PrintDialog {
public:
    void SetFlags(int flags) { flags_ = flags; }

    // The printer that was chosen. Throws Erro 32755 when the user cancels.
    std::unique_ptr<Printer> ShowPrinter() const;

private:
    int flags_ = 0;
};

// Puts something in place of the dialog (tests): what it returns is the printer that was chosen,
// null for a cancel. An empty function restores the real one.
using PrintDialogHandler = std::function<std::unique_ptr<Printer>(int flags)>;
void SetPrintDialogHandler(PrintDialogHandler handler);

}  // namespace printer
