#pragma once

#include "plan/RegistrosDeCatalogo.h"

#include <QPair>

// What the codes of catalogues are called to a person.
namespace nombres
{

// "MO" and "Mano de obra", and so on, in their order.
const QList<QPair<QString, QString>> &ClasesDeProducto();
// "Mano de obra" for "MO"; an unknown code as it is.
QString ClaseDeProducto(const QString &codigo);
// "Mano de obra", "Refacción", "Herramienta" for the kind of a line; an unknown code as it is.
QString ClaseDeRenglon(const QString &codigo);
// "Activo", "Dado de baja", "Cancelado"; an unknown code as it is.
QString Estado(const QString &codigo);
// The objectName of the field that a column is edited in: "txtCosto", "cboUnidad".
QString Control(const qvx::ColumnaDeCatalogo &columna);

} // namespace nombres
