#pragma once

#include <QStringList>

// What "quorvex" says without a display, behind its exit code.
QString Quorvex(const QStringList &argumentos);
// Says that this process is ready, by making the first file, and waits until there is the second.
void Encontrarse(const QString &listo, const QString &seguir);
// A line for the report that tools/fiabilidad makes; without it, nothing.
void AnotarResultado(const QStringList &campos);
