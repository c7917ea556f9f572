#include "support/quickkeys.h"

#include "platform/dao/connection.h"

void UseQuickKeys() {
    using dao::Connection;
    // For every connection of the process.
    Connection(QStringLiteral(":memory:"), QByteArray(), Connection::Mode::ReadWrite)
        .Run("PRAGMA cipher_default_kdf_iter = 1000");
}
