#include "platform/dao/errors.h"
#include "platform/dao/writer.h"

namespace dao::dialect {

void WriteDefinition(const Statement&, const Schema&, Translation&) {
    Throw(Failure::NotSupported);
}

}  // namespace dao::dialect
