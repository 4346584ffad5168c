#pragma once

#include <QStringList>

class Escenario;

// What "quorvex" says without a display, behind its exit code.
QString Quorvex(const QStringList &argumentos);
// Says that this process is ready, by making the first file, and waits until there is the second.
void Encontrarse(const QString &listo, const QString &seguir);
// Runs so many processes of this program on the database of escenario, and gives what each printed. Their arguments are
// the order, the database, the process's number, and the files for Encontrarse, where all of them begin together.
QStringList CorrerJuntos(const Escenario &escenario, int cuantos, const QStringList &orden);
