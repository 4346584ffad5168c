#pragma once

#include <QString>

class QWidget;

// Where the person wants a file: its path with the ending, also when he left that out; "" when he gave up. A file that
// is there is only replaced when he says so. titulo and filtro: of the dialog, "Libro XLSX|*.xlsx"; nombre: proposed.
QString RutaParaGuardar(const QWidget &duena, const QString &titulo, const QString &filtro, const QString &nombre);
