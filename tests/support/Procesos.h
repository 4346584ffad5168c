#pragma once

#include <QProcess>
#include <QStringList>

// What the tests of several processes have alike.

// Says that this process is ready, by making the first file, and waits until there is the second.
void Encontrarse(const QString &listo, const QString &seguir);
// False when the process has not ended some time later.
bool Termino(QProcess &proceso, int milisegundos = 60000);
// A line for the report that tools/fiabilidad makes; without it, nothing.
void AnotarResultado(const QStringList &campos);
