#pragma once

#include <QString>

// The engine under test, which QVX_PRUEBA_MOTOR names ("postgres"; the embedded one without it), and what it calls
// things.
namespace motor
{

bool EsPostgres();
// The first text on the embedded engine, the second on the server.
QString Segun(const QString &incrustado, const QString &servidor);
QString NoHayTabla(const QString &tabla);

} // namespace motor
