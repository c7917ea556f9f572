#pragma once

#include "importar/source.h"
#include "tabelas/tables.h"

#include <QVariant>

namespace importar {

// One value in the form in which the catalogue stores it, or why it has none.
struct Cell {
    QVariant value;        // Null: nothing there
    QString complaint;     // empty: it may go in
    bool changed = false;  // it stood there in another form
};

// A link's code is only looked at as a number here.
Cell Convert(const tabelas::Column& column, const Value& value, bool pointDecimals);

}  // namespace importar
