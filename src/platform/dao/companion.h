#pragma once

#include <QString>

// The file beside a catalogue in which the tables stand that are kept apart from it.
namespace dao {

class Connection;

// Its name as a database of the connection.
inline constexpr char CompanionSchema[] = "companion";

// Whether the table of this name is kept there.
bool IsCompanionTable(const QString& name);

bool HasCompanion(Connection& connection);  // attached

// Attaches the companion file of a catalogue, and makes it where it is missing.
void AttachCompanion(Connection& connection);

}  // namespace dao
