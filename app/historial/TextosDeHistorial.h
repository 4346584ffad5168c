#pragma once

#include "plan/Deshacer.h"
#include "plan/Historia.h"
#include "plan/TamanoDeHistoria.h"

// The history in words, for the page and for the command line.
namespace historial
{

// Whoever did it, "(desconocido)" where the database does not know.
QString Quien(const qvx::Operacion &operacion);
// What has become of it, and what it took back: "Deshecha por 15", "Deshace 12".
QString Estado(const qvx::Operacion &operacion);
// "operación 12, «Parte eliminada», Parte 0007, de mlopez, el 2026-03-14 09:26:53".
QString Nombre(const qvx::Operacion &operacion);
// "12, 14 y 15"; of many only the first.
QString Lista(const QList<qint64> &operaciones);
// What would be taken back, and where, as a sentence: "Cambia el plan del tipo de equipo 0900."
QString Resumen(const qvx::Deshecho &deshecho);
// What stands in the way, a line each, and how many more there are.
QStringList Reparos(const qvx::Deshecho &deshecho);
QString Tamano(const qvx::TamanoDeHistoria &tamano);

// Operations as rows of a table, with its titles.
QStringList Titulos();
QVariantList Fila(const qvx::Operacion &operacion);

// An operation by its number. Raises an ErrorEjecucion when it is not there, and data errors.
qvx::Operacion Buscar(qvx::Conexion &conexion, qint64 numero);

} // namespace historial
