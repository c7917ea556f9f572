#pragma once

#include "platform/sql/errors.h"

// The numbers of the errors that the operations of dao.h throw; the dialect, below, has the table.
namespace dao {

using sql::Failure;
using sql::Throw;

}  // namespace dao
