#pragma once

#include "xml/Documento.h"

#include <algorithm>
#include <iterator>

// How a plan stands in its document. Attributes are read by position: an element has them in the order given here.
namespace planXml
{

constexpr int Id = 0;
constexpr int Descripcion = 1; // of a part
constexpr int Cantidad = 1;    // of a line
constexpr int TipoGasto = 2;   // of a line that has one

struct Columna {
    const char *atributo;
    const char *campo;
};

// Key and downtime of a service are left out on purpose: the import gives new keys, and derives the downtime.
inline constexpr Columna ColumnasServicio[] = {
    {"Id", "Ts_Cve_Tipo_Servicio"},
    {"UnidadLectura", "Pm_Unidad_Lectura"},
    {"FrecuenciaLectura", "Pm_Lectura"},
    {"FrecuenciaDias", "Pm_Frecuencia"},
    {"RequiereParo", "Pm_Requiere_Paro"},
    {"Duracion", "Pm_Tiempo_Estimado"},
    {"Precio", "Pm_Precio"},
    {"Prioridad", "Pm_Prioridad"},
};

// What a service's element holds for a column of its table. Raises ElementoNoEncontrado.
inline QString Valor(const qvx::Elemento &servicio, const char *campo)
{
    const auto *columna = std::find_if(std::begin(ColumnasServicio), std::end(ColumnasServicio),
                                       [&](const Columna &otra) { return qstrcmp(otra.campo, campo) == 0; });
    return servicio.Atributo(static_cast<int>(columna - std::begin(ColumnasServicio)));
}

} // namespace planXml
