#include "platform/dao/dialect.h"

#include "platform/dao/parser.h"
#include "platform/dao/writer.h"

namespace dao::dialect {

Translation Translate(const QString& text, const Schema& schema) {
    return WriteStatement(Parser::ParseStatement(text.toUtf8()), schema);
}

}  // namespace dao::dialect
