#pragma once

#include "data/Transaccion.h"
#include "plan/Arbol.h"
#include "plan/Cambios.h"

#include <QSet>

namespace qvx
{

// A plan that one transaction keeps to itself while many of its services, or a part of it, are written: all of it or
// nothing. What was judged by what a page had read is judged again by what is there now. Every step raises an
// ErrorEjecucion in Spanish when something must not be, says who changed it where that is known, and data errors.
class PlanTomado
{
public:
    // Takes the plan, and raises an error for a type that is not on offer.
    PlanTomado(Conexion &conexion, const Firmante &firmante, const QString &tipoEquipo);

    Conexion &Base() const { return conexion; }
    // Who signs, with one time for all that is written.
    const Firmante &Quien() const { return firmante; }
    const QString &Tipo() const { return tipoEquipo; }
    const Arbol &Partes() const { return arbol; }

    // That services may be put under a part.
    void RevisarDestino(const QString &parte) const;
    // That a part may be put under another one; its version is the one that was read.
    void RevisarTraslado(const QString &parte, const QString &sello, const QString &nuevoPadre) const;
    // That a service may be changed, which is then signed.
    void Firmar(const ServicioLeido &servicio) const;
    // Likewise, of one that is only read.
    void Revisar(const ServicioLeido &servicio) const;
    // "la parte 0005 MOTOR", "la raíz".
    QString NombreDe(const QString &parte) const;
    // clase, detalle: what the history calls what was written.
    void Confirmar(const QString &clase, const QString &detalle);

private:
    [[noreturn]] void RechazarPorParte(const QString &parte, const QString &motivo) const;

    Conexion &conexion;
    const Firmante firmante;
    const QString tipoEquipo;
    Transaccion transaccion;
    Arbol arbol;
    QSet<QString> deBaja; // folios
};

// Raises an error unless a change met one row.
void RevisarEscrito(const Recordset &cambio, const ServicioLeido &servicio);

} // namespace qvx
