#pragma once

#include "app/reportes/Csv.h"
#include "plan/RegistrosDeCatalogo.h"

// Writes rows of a catalogue as a spreadsheet takes them, so that importing the file changes nothing: a workbook when
// its name ends in .xlsx, text in this format when it ends in .csv. Raises a data error, also for any other name; then
// the file is as it was.
void ExportarCatalogo(const qvx::TablaDeCatalogo &tabla, const QList<qvx::RegistroDeCatalogo> &registros,
                      const QString &ruta, const csv::Formato &formato);
// Whether a file of this name is a workbook.
bool EsLibro(const QString &ruta);
