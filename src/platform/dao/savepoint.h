#pragma once

#include "platform/dao/connection.h"
#include "platform/erro.h"

namespace dao {

// Statements that take effect together or not at all, within a transaction or outside of one.
// Rolled back by the destructor unless released.
class Savepoint {
public:
    explicit Savepoint(Connection& connection) : connection_(connection) {
        connection_.Run("SAVEPOINT tarvo");
    }

    ~Savepoint() {
        if (!open_) {
            return;
        }
        try {
            connection_.Run("ROLLBACK TO tarvo; RELEASE tarvo");
        } catch (const Erro&) {
            // The engine has rolled the whole transaction back by itself, savepoint and all.
        }
    }

    Savepoint(const Savepoint&) = delete;
    Savepoint& operator=(const Savepoint&) = delete;

    void Release() {
        connection_.Run("RELEASE tarvo");
        open_ = false;
    }

private:
    Connection& connection_;
    bool open_ = true;
};

}  // namespace dao
