#pragma once

#include <QList>
#include <QString>
#include <optional>

namespace qvx
{
class Conexion;
}

// What a plan's services are, and cost, in a year of 365 days: of the active services of active parts that the tree
// reaches, which are those that are carried out.
struct CifrasDeTipo {
    int sinFecha = 0;   // neither days nor a reading say when they are due
    int conPerdida = 0; // cost more than their price
    int porLectura = 0; // by reading alone: when they come depends on a usage that is not known, and so does their cost
    double costoAnual = 0;
    double horasAnuales = 0;

    bool operator==(const CifrasDeTipo &) const = default;
};

// An equipment type and how much of a plan it has.
struct TipoDeEquipo {
    struct Cuenta {
        int activos = 0;
        int deBaja = 0;

        bool operator==(const Cuenta &) const = default;
    };
    QString clave;
    QString descripcion;
    QString estado;
    Cuenta partes;
    Cuenta servicios;
    QString cambiado; // when a part or a service was last changed, "" for never; and by whom
    QString operador;
    std::optional<CifrasDeTipo> cifras; // while they are not read there are none

    bool operator==(const TipoDeEquipo &) const = default;
};

// By key, without their figures, in two statements. Raises data errors.
QList<TipoDeEquipo> LeerTiposDeEquipo(qvx::Conexion &conexion);
// Reads the figures of the equipment types from one place to another, both included, in one statement. Raises data
// errors.
void LeerCifras(qvx::Conexion &conexion, QList<TipoDeEquipo> &tipos, int desde, int hasta);
