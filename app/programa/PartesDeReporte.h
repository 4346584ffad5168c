#pragma once

#include "app/programa/Reportes.h"

#include <functional>

// What reports have in common.
namespace programa
{

impreso::Documento DocumentoDe(const PlanMedido &medido, const Encargo &encargo, const QString &titulo);
// The parts that the tree reaches, in its order, each with how deep it stands, from 0.
void RecorrerPartes(const qvx::Arbol &arbol, const std::function<void(const qvx::Parte &, int)> &ver);
QString ClaseDeLinea(lectura::Linea::Clase clase);
// In cents; and with all its digits, as what one costs.
QString Pesos(const Cantidad &importe);
QString PesosEnteros(const Cantidad &costo);

} // namespace programa
