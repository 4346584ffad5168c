#pragma once

#include "system/Exporta.h"

#include <QString>

namespace QVX_EXPORTA qvx
{

// The version of the schema that this program writes and reads, and the oldest that it brings up to it.
constexpr int VersionEsquema = 7;
constexpr int VersionMasVieja = 2;

enum class Motor { Incrustado, Servidor };

// The text of a script of the schema, as an engine takes it. Marks in it: "{sqlite:A|postgres:B}" is A or B,
// "{version}" the version of the schema, and "{guion:NAME}" the text of another script, whose arguments "{1}", "{2}"
// are a function's.
QString Guion(const QString &nombre, Motor motor);

// The scripts that make a database of the newest version out of one of the given version, in their order; out of
// nothing for 0. What is new and what is old have the same steps behind them, and so are the same.
QStringList GuionesDesde(int version, Motor motor);

} // namespace qvx
