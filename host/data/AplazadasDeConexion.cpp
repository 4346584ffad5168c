// Changes that a connection does not wait for, and how their errors come to be told in their order.

#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"

#include <QSqlError>
#include <utility>

namespace qvx
{

// What the change of one row answers, if it does not fail.
Recordset Conexion::UnRenglon()
{
    Recordset uno;
    uno.afectadas = 1;
    return uno;
}

bool Conexion::Aplazar(const Preparada &preparada, const Sentencia &sentencia, const QString &sql)
{
    if (!numeracion || estado != Estado::Abierta || sola || !reglas->PuedeAplazar(preparada.conocida))
        return false;
    QList<int> afectadas;
    const bool aplazada = dialecto->Aplazar(preparada.consulta, sentencia.valores, afectadas);
    if (aplazada)
        porSaber.push_back({{}, sql});
    AnotarContestadas(afectadas);
    if (!porSaber.empty())
        ErrorEjecucion::Antes(this, [this] { Asentar(); });
    return aplazada;
}

// The trace is written as if each one had been waited for.
void Conexion::AnotarContestadas(const QList<int> &afectadas)
{
    auto cuantas = afectadas.constBegin();
    while (!porSaber.empty() && (!porSaber.front().marca.isEmpty() || cuantas != afectadas.constEnd())) {
        const PorSaber una = porSaber.front();
        porSaber.pop_front();
        const QString marca = una.marca.isEmpty() ? QString::number(*cuantas++) : una.marca;
        if (traza)
            traza->Anotar(marca, una.sql);
    }
}

void Conexion::Asentar()
{
    if (porSaber.empty())
        return;
    ErrorEjecucion::Antes(this, {});
    QList<int> afectadas;
    const QSqlError error = dialecto->Asentar(base, afectadas);
    AnotarContestadas(afectadas);
    const std::deque<PorSaber> pendientes = std::exchange(porSaber, {});
    if (pendientes.empty())
        return;
    const QString sql = pendientes.front().sql;
    try {
        Rechazar(error, sql);
    } catch (const ErrorEjecucion &deAntes) {
        Anotar("!", sql + "  <" + deAntes.Descripcion() + ">");
        Condenar(deAntes);
        throw;
    }
}

} // namespace qvx
