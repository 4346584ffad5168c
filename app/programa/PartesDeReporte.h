#pragma once

#include "app/programa/Reportes.h"

#include <functional>

// What reports have in common.
namespace programa
{

impreso::Documento DocumentoDe(const PlanMedido &medido, const Encargo &encargo, const QString &titulo);
// The parts that the tree reaches, in its order, each with how deep it stands, from 0, and its key and path as a title:
// of a deep one its beginning and its end.
void RecorrerPartes(const qvx::Arbol &arbol,
                    const std::function<void(const qvx::Parte &, int nivel, const QString &titulo)> &ver);
QString ClaseDeLinea(lectura::Linea::Clase clase);
// In cents; and with all its digits, as what one costs.
QString Pesos(const Cantidad &importe);
QString PesosEnteros(const Cantidad &costo);

} // namespace programa
