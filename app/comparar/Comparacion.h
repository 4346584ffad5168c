#pragma once

#include "plan/FilasDelPlan.h"

#include <QHash>
#include <array>
#include <vector>

namespace qvx
{
class Conexion;
}

// Two plans side by side, as values: what of one is not the same in the other. Parts are paired by key, services by
// part and type of service, lines by kind and product: an import and an editor's save number them anew.
namespace comparar
{

enum class Suerte { Igual, Cambia, Nueva, Quitada };

// A field by the caption of its form, and what it says: names of catalogues, no bare keys.
struct Campo {
    QString titulo;
    QString antes;
    QString despues;
};

// A part, a service or a line, with what hangs from it. Of a new one all fields are given, of a changed one those that
// differ.
struct Nodo {
    qvx::DelPlan clase = qvx::DelPlan::Parte;
    Suerte suerte = Suerte::Igual;
    bool difiere = false; // it, or something below it
    QString clave;        // of the part, the service's folio, the line's product
    QString nombre;
    QList<Campo> campos;
    std::vector<Nodo> hijos;
};

struct Cuenta {
    int iguales = 0;
    int cambian = 0;
    int nuevas = 0;
    int quitadas = 0;

    int Distintas() const { return cambian + nuevas + quitadas; }
};

struct Comparacion {
    std::vector<Nodo> partes;
    std::array<Cuenta, 3> cuentas; // of parts, services, lines
    int folios = 0;                // services that are paired under another folio

    const Cuenta &De(qvx::DelPlan clase) const { return cuentas.at(static_cast<std::size_t>(clase)); }
    bool SonIguales() const;
};

// What keys of catalogues are called, retired ones too.
struct NombresDeCatalogos {
    QHash<QString, QString> tiposDeServicio;
    QHash<QString, QString> prioridades;
    QHash<QString, QString> unidades;
    QHash<QString, QString> productos;
    QHash<QString, QString> gastos;
};
// Raises data errors.
NombresDeCatalogos LeerNombres(qvx::Conexion &conexion);

// porFolio: both are of one plan's history, in which a service is itself while it keeps its folio, also under another
// part or with another type. Keys, signatures and versions are no difference; numbers are compared as they are shown.
Comparacion Comparar(const qvx::FilasDelPlan &antes, const qvx::FilasDelPlan &despues,
                     const NombresDeCatalogos &nombres, bool porFolio);

} // namespace comparar
