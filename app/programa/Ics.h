#pragma once

#include "app/programa/PlanMedido.h"

namespace programa
{

// A programme as a calendar: an event of a whole day for each service and date that counts. An event keeps its
// identifier as long as database, equipment type, folio, day zero and number do, so that a calendar that is read again
// moves its events in the place of repeating them. base: the name of the database; sello: when it is written, UTC.
QByteArray Ics(const PlanMedido &medido, const Programa &programa, const QString &base, const QDateTime &sello,
               const QList<int> &cuales);

// Writes it, whole or not at all. Raises a data error.
void EscribirIcs(const QString &ruta, const QByteArray &calendario);

// A content line as it is written: at most 75 octets, the rest on lines that begin with a blank; no character is split.
QByteArray Doblado(const QByteArray &linea);
// A text as the value of one.
QByteArray Escapado(const QString &texto);

} // namespace programa
