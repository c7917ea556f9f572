#include "support/quickkeys.h"

#include <QtGlobal>

#include <sqlite3.h>

void testing_support::UseQuickKeys() {
    sqlite3* any = nullptr;
    if (sqlite3_open(":memory:", &any) != SQLITE_OK ||
        sqlite3_exec(any, "PRAGMA cipher_default_kdf_iter = 1000", nullptr, nullptr, nullptr) !=
            SQLITE_OK) {
        qFatal("%s", sqlite3_errmsg(any));
    }
    sqlite3_close(any);
}
