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

// An equipment type and how much of a plan it has. What was not read yet is not there.
struct TipoDeEquipo {
    struct Cuenta {
        int activos = 0;
        int deBaja = 0;
        QString cambio; // when one of them was last changed and by whom, "2026-03-14 09:26:53|mlopez", "" for never

        bool operator==(const Cuenta &) const = default;
    };
    QString clave;
    QString descripcion;
    QString estado;
    Cuenta partes;
    std::optional<Cuenta> servicios;
    std::optional<CifrasDeTipo> cifras;

    // "2026-03-14 09:26 mlopez".
    QString UltimoCambio() const;
};

// By key, with their parts, in one statement. Raises data errors.
QList<TipoDeEquipo> LeerTiposDeEquipo(qvx::Conexion &conexion);
// Counts their services, in one statement; the figures of those whose services have changed are gone. Raises data
// errors.
void LeerServicios(qvx::Conexion &conexion, QList<TipoDeEquipo> &tipos);
// Reads the figures of the equipment types from one place to another, both included, in one statement. Raises data
// errors.
void LeerCifras(qvx::Conexion &conexion, QList<TipoDeEquipo> &tipos, int desde, int hasta);
// Takes over, of those whose parts have not changed, what was read before.
void Conservar(const QList<TipoDeEquipo> &antes, QList<TipoDeEquipo> &tipos);
