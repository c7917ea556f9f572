#pragma once

#include "platform/dao/connection.h"
#include "report.h"

#include <QString>

#include <memory>

namespace bench {

// The same text through the engine's C API alone, on a connection of its own.
class BareApi {
public:
    explicit BareApi(const QString& folder);

    // To the first hundred rows and to the end, each column fetched and thrown away.
    Measured Run(const QString& sql);

private:
    std::shared_ptr<dao::Connection> connection_;
};

}  // namespace bench
