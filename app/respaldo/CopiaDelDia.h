#pragma once

#include "plan/Respaldo.h"

#include <functional>

class QWidget;

namespace qvx
{
class Sesion;
}

namespace respaldo
{

// Where the copies of a database's file go, and how many are kept: as the person has set it.
qvx::LugarDeCopias LugarDe(const QString &base);

// From now on the session makes a copy of its file before its first change of each day. One that fails stops no
// change: avisar is told why, at once and before the change, and it is tried again an hour later.
void CopiarCadaDia(qvx::Sesion &sesion, const QString &base, std::function<void(const QString &motivo)> avisar);

// Tells the person why there is no copy, once nothing else is open or being written.
void AvisarDespues(QWidget &ventana, const QString &motivo);

} // namespace respaldo
