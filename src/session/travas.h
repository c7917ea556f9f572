#pragma once

#include "platform/system/filelocks.h"

#include <QString>

// Why locks in this data folder (with a final backslash) keep no other computer out, as a sentence
// for the user; empty where they do, as far as can be told from here. To be asked before the
// catalogue is open.
QString FaltaDeTravas(const QString& pasta);
QString FaltaDeTravas(const QString& pasta, const sys::Mount& volume);  // where it lies
