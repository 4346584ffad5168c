#pragma once

#include "app/reportes/Paginador.h"

class QPrinter;

namespace impreso
{

enum class Papel { Carta, A4 };

// How a report lies on its paper.
QPageLayout Disposicion(const Documento &documento, Papel papel);

// Writes it as PDF, whole or not at all; its letters are in it, and its text can be searched and copied. False when it
// was stopped: then the file is as it was. Raises a data error.
bool EscribirPdf(const QString &ruta, const Documento &documento, Papel papel, const Avance &avance);
bool EscribirPdf(const QString &ruta, const Documento &documento, const QPageLayout &disposicion, const Avance &avance);

// Sends it to a printer, or to the file that it stands for; its paper is what it was set to. False when it was stopped.
// Raises a data error for a printer that fails.
bool Imprimir(QPrinter &impresora, const Documento &documento, const Avance &avance);

} // namespace impreso
