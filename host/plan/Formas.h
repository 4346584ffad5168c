#pragma once

#include "data/Reglas.h"
#include "plan/OperacionEnCurso.h"
#include "plan/Versiones.h"
#include "system/Exporta.h"

namespace QVX_EXPORTA qvx
{

class Conexion;

// What the connection is told of the plan's statements. A shape is allowed that changes rows in the ways the system
// does: one row of values, a copy of rows, or columns set to values, and rows chosen by values of columns that all must
// match. A typed text with quotes in it, however they are balanced, makes another shape of a statement, and widens
// none; nor does a typed description bring other columns along. Queries change nothing, and are allowed as long as they
// call nothing but a few functions that only read. A transaction keeps the plans to itself that its statements name; a
// catalogue that is read names none.
class Formas : public Reglas
{
public:
    explicit Formas(Motor motor, std::optional<Reserva> reserva_ = {}, std::optional<Constancia> constancia_ = {})
        : reserva(std::move(reserva_)), constancia(std::move(constancia_)), enCurso(motor)
    {
    }

    Conocida Conocer(const QString &forma, const QStringList &funciones) const override;
    // No row is given to another equipment type: a change that names two of them was not composed by a screen.
    void RevisarIguales(const Conocida &conocida, const Sentencia &sentencia, const QString &texto) const override;
    // The rows of a document that takes a plan's place.
    bool PuedeAplazar(const Conocida &conocida) const override { return conocida.renglon && enCurso.Vaciado(); }
    std::optional<TablaConocida> Tabla(const QString &nombre) const override;
    void AlLeer(const Recordset &filas) override { leidas.Anotar(filas); }
    QString Ocupado(const QString &usuario, const QString &clave) const override;
    const std::optional<Reserva> &ComoReservar() const override { return reserva; }
    const std::optional<Constancia> &ComoConstar() const override { return constancia; }
    void AlEmpezar() override { enCurso.Empezar(); }
    void AlCambiar(const Conocida &conocida, const Sentencia &sentencia) override
    {
        enCurso.Anotar(conocida, sentencia);
    }
    QList<SentenciaConValores> Apertura() const override { return enCurso.Apertura(); }
    QList<SentenciaConValores> Cierre() const override { return enCurso.Cierre(); }

    // The versions that a connection has read last, which its changes are based on.
    static const Versiones &Leidas(const Conexion &conexion);
    // What a connection's transaction does.
    static OperacionEnCurso &EnCurso(Conexion &conexion);

private:
    const std::optional<Reserva> reserva;
    const std::optional<Constancia> constancia;
    Versiones leidas;
    OperacionEnCurso enCurso;
};

} // namespace qvx
