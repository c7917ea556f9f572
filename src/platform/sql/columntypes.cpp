#include "platform/sql/columntypes.h"

#include "platform/sql/errors.h"
#include "platform/sql/token.h"

namespace sql {

namespace {

// The engine derives how it keeps a column's values from the name of its type, so each of the
// dialect's types gets one of the fitting family. Whole numbers are INT, not INTEGER: as a key the
// latter would number a row that was given no value, instead of refusing it.
struct TypeEntry {
    const char* names;  // each with a blank before and behind
    const char* type;
};

constexpr TypeEntry Types[] = {
    {" TEXT CHAR VARCHAR CHARACTER STRING ALPHANUMERIC NCHAR NVARCHAR NATIONAL ", "TEXT"},
    {" MEMO LONGTEXT LONGCHAR NOTE NTEXT ", "LONGTEXT COLLATE TARVO"},
    {" GUID UNIQUEIDENTIFIER ", "TEXT(38) COLLATE TARVO"},
    {" BYTE TINYINT INTEGER1 ", "TINYINT"},
    {" SHORT SMALLINT INTEGER2 ", "SMALLINT"},
    {" LONG INTEGER INT INTEGER4 ", "INT"},
    {" COUNTER AUTOINCREMENT IDENTITY ", "INTEGER PRIMARY KEY AUTOINCREMENT"},
    {" SINGLE REAL FLOAT4 IEEESINGLE ", "REAL"},
    {" DOUBLE FLOAT FLOAT8 IEEEDOUBLE NUMBER ", "DOUBLE"},
    {" CURRENCY MONEY ", "DECIMAL(19,4)"},
    {" DECIMAL NUMERIC DEC ", "DECIMAL"},
    {" DATETIME DATE TIME TIMESTAMP ", "DATETIME"},
    {" BIT YESNO LOGICAL LOGICAL1 BOOLEAN ", "BIT"},
    {" BINARY VARBINARY OLEOBJECT LONGBINARY GENERAL IMAGE ", "BLOB"},
};

// What the engine would store as it stands and the dialect converts or refuses, by declared type.
struct Storing {
    const char* type;
    const char* function;
};
constexpr Storing Storings[] = {
    {"BIT", "dao_cbool"},      {"TINYINT", "dao_cbyte"},      {"SMALLINT", "dao_cint"},
    {"INTEGER", "dao_clng"},   {"INT", "dao_clng"},           {"DOUBLE", "dao_cdbl"},
    {"DATETIME", "dao_cdate"}, {"DECIMAL(19,4)", "dao_ccur"},
};

}  // namespace

QString EngineType(const ColumnType& type) {
    const QString word = u' ' + ToQString(type.name) + u' ';
    for (const TypeEntry& entry : Types) {
        if (QLatin1String(entry.names).contains(word)) {
            return QLatin1String(entry.type);
        }
    }
    Throw(Failure::SyntaxError, ToQString(type.name));
}

bool IsCounter(const ColumnDefinition& column) {
    return EngineType(column.type).endsWith(QLatin1String("AUTOINCREMENT"));
}

std::string_view StoringFunction(const QString& declaredType) {
    for (const Storing& storing : Storings) {
        if (declaredType.compare(QLatin1String(storing.type), Qt::CaseInsensitive) == 0) {
            return storing.function;
        }
    }
    return {};
}

}  // namespace sql
