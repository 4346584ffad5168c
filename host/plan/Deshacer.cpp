#include "plan/Deshacer.h"

#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "data/Transaccion.h"
#include "plan/Catalogos.h"
#include "plan/DeshacerEnPlan.h"
#include "plan/Historia.h"
#include "plan/OperacionEnCurso.h"

#include <algorithm>

namespace qvx
{

namespace
{

constexpr int MaximoReparos = 50;
const QString NadaCambio = " No se cambió nada.";

// The plans of operations, each held from here on, and on offer.
QStringList Tomar(Conexion &conexion, const QList<qint64> &operaciones, const QString &soloTipo)
{
    QStringList tipos;
    for (const qint64 operacion : operaciones)
        for (auto filas = conexion.Execute("SELECT Te_Cve_Tipo_Equipo FROM Operacion_Plan WHERE Op_ID = ? ORDER BY 1",
                                           {operacion});
             !filas.Eof(); filas.MoveNext())
            if (const QString tipo = SinBlancosAlFinal(filas.Texto(0)); !tipos.contains(tipo))
                tipos.append(tipo);
    if (!soloTipo.isEmpty())
        tipos = {soloTipo};
    std::sort(tipos.begin(), tipos.end()); // in one order for all, so that nobody waits crosswise
    if (tipos.isEmpty())
        qvx::Rechazar("No hay plan que cambiar." + NadaCambio);
    for (const QString &tipo : tipos) {
        conexion.Execute("SELECT 1 AS Hay FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = ? LIMIT 1", {tipo});
        if (DescripcionDeCatalogo(conexion, "TIPO_EQUIPO", tipo).isEmpty())
            qvx::Rechazar("El tipo de equipo " + tipo + " no existe o está dado de baja." + NadaCambio);
    }
    return tipos;
}

// For people: of many only the first.
QString Lista(const QList<qint64> &operaciones)
{
    constexpr int Dichas = 20;
    QStringList textos;
    for (const qint64 operacion : operaciones.mid(0, Dichas))
        textos.append(QString::number(operacion));
    return textos.join(", ") + (operaciones.size() > Dichas ? QString("…") : QString());
}

struct Peticion {
    QList<qint64> operaciones;
    QString soloTipo; // of the operations, only what they did to this plan
    QString clase;
    bool conOtraClave = false;
};

// Those of which nothing but what they did to the one plan is left to take back.
QList<qint64> DeEstePlan(Conexion &conexion, const Peticion &peticion)
{
    QList<qint64> enteras = peticion.operaciones;
    for (auto filas =
             conexion.Execute("SELECT DISTINCT Op_ID FROM Operacion_Plan WHERE Te_Cve_Tipo_Equipo <> ? AND Op_ID "
                              ">= ?",
                              {peticion.soloTipo, peticion.operaciones.constLast()});
         !filas.Eof(); filas.MoveNext())
        enteras.removeOne(filas.Valor(0).toLongLong());
    return enteras;
}

// One attempt, in a transaction of its own, which stays only when it is no rehearsal and nothing is in the way. What is
// in the way, by plan.
QList<QPair<QString, QList<Obstaculo>>> Intentar(Conexion &conexion, const Firmante &firmante, const Peticion &peticion,
                                                 bool ensayo, Deshecho &deshecho)
{
    Transaccion transaccion(conexion);
    const QStringList tipos = Tomar(conexion, peticion.operaciones, peticion.soloTipo);
    deshecho = {};
    deshecho.operaciones = peticion.operaciones;
    deshecho.tipos = tipos;
    QList<QPair<QString, QList<Obstaculo>>> reparos;
    bool impedido = false;
    for (const QString &tipo : tipos) {
        DeshacerEnPlan plan(conexion, firmante, tipo, peticion.operaciones);
        plan.Reunir();
        QList<Obstaculo> suyos = plan.Cambiadas();
        QList<Obstaculo> dadas;
        if (peticion.conOtraClave)
            for (const Obstaculo &reparo : std::as_const(suyos))
                if (reparo.claveDada)
                    dadas.append(reparo);
        for (const Obstaculo &dada : std::as_const(dadas))
            suyos.removeOne(dada);
        if (suyos.isEmpty() && !impedido) {
            plan.Escribir(deshecho, dadas);
            suyos = plan.Sueltas();
            plan.Registrar();
        }
        impedido = impedido || !suyos.isEmpty();
        reparos.append({tipo, suyos});
    }
    if (impedido || ensayo)
        return reparos;
    const QList<qint64> deshechas = peticion.soloTipo.isEmpty() ? peticion.operaciones : DeEstePlan(conexion, peticion);
    const bool varias = peticion.operaciones.size() > 1;
    QString detalle = (varias ? "Operaciones " : "Operación ") + Lista(peticion.operaciones);
    if (!peticion.soloTipo.isEmpty())
        detalle = QString("El plan como estaba antes de la operación %1").arg(peticion.operaciones.constLast());
    NombrarOperacion(conexion, peticion.clase, detalle, deshechas);
    transaccion.Confirmar();
    const auto ultima =
        deshechas.isEmpty()
            ? conexion.Execute("SELECT max(Op_ID) AS Numero FROM Operacion_Plan WHERE Te_Cve_Tipo_Equipo = ?",
                               {tipos.constFirst()})
            : conexion.Execute("SELECT max(Op_ID) AS Numero FROM Operacion_Deshecha WHERE Od_Operacion = ?",
                               {deshechas.constFirst()});
    deshecho.numero = ultima.Valor(0).toLongLong();
    return reparos;
}

QSet<qint64> Posteriores(Conexion &conexion, const Firmante &firmante, const QList<qint64> &operaciones,
                         const QList<QPair<QString, QList<Obstaculo>>> &reparos)
{
    QSet<qint64> posteriores;
    for (const auto &[tipo, suyos] : reparos)
        posteriores += DeshacerEnPlan(conexion, firmante, tipo, operaciones).Posteriores(suyos);
    return posteriores;
}

QList<qint64> DeNuevasAViejas(const QSet<qint64> &numeros)
{
    QList<qint64> ordenados(numeros.begin(), numeros.end());
    std::sort(ordenados.begin(), ordenados.end(), std::greater<>());
    return ordenados;
}

Deshecho Resultado(Deshecho deshecho, const QList<QPair<QString, QList<Obstaculo>>> &reparos)
{
    bool soloClaves = true;
    int cuantos = 0;
    for (const auto &[tipo, suyos] : reparos)
        for (const Obstaculo &reparo : suyos) {
            soloClaves = soloClaves && reparo.claveDada;
            if (++cuantos <= MaximoReparos)
                deshecho.reparos.append(reparo.texto);
        }
    deshecho.masReparos = qMax(0, cuantos - MaximoReparos);
    deshecho.bastaConOtraClave = cuantos > 0 && soloClaves;
    return deshecho;
}

void RevisarQueEstan(Conexion &conexion, const QList<qint64> &operaciones)
{
    if (operaciones.isEmpty())
        qvx::Rechazar("No se dijo qué operación deshacer." + NadaCambio);
    for (const qint64 numero : operaciones) {
        FiltroDeHistoria filtro;
        filtro.numero = numero;
        const QList<Operacion> halladas = LeerOperaciones(conexion, filtro);
        if (halladas.isEmpty())
            qvx::Rechazar(QString("La operación %1 no existe, o su historia fue depurada.").arg(numero) + NadaCambio);
        // Together with what took it back it is taken back to what was before.
        if (const qint64 por = halladas.constFirst().deshechaPor; por != 0 && !operaciones.contains(por))
            qvx::Rechazar(QString("La operación %1 ya está deshecha por la operación %2.")
                              .arg(numero)
                              .arg(halladas.constFirst().deshechaPor)
                          + NadaCambio);
    }
}

// With the later operations that are in the way, until none is.
Deshecho ConPosteriores(Conexion &conexion, const Firmante &firmante, Peticion peticion, bool ensayo)
{
    Deshecho deshecho;
    while (true) {
        const auto reparos = Intentar(conexion, firmante, peticion, ensayo, deshecho);
        QSet<qint64> todas(peticion.operaciones.begin(), peticion.operaciones.end());
        const auto antes = todas.size();
        todas += Posteriores(conexion, firmante, peticion.operaciones, reparos);
        if (todas.size() == antes)
            return Resultado(deshecho, reparos);
        peticion.operaciones = DeNuevasAViejas(todas);
    }
}

} // namespace

Deshecho Deshacer(Conexion &conexion, const Firmante &firmante_, const QList<qint64> &operaciones, AlDeshacer modo,
                  bool ensayo)
{
    const Firmante firmante{firmante_.operador, [fecha = firmante_.fecha()] { return fecha; }};
    RevisarQueEstan(conexion, operaciones);
    const Peticion peticion{
        DeNuevasAViejas({operaciones.begin(), operaciones.end()}), {}, ClaseDeshacer, modo == AlDeshacer::ConOtraClave};
    if (modo == AlDeshacer::ConPosteriores)
        return ConPosteriores(conexion, firmante, peticion, ensayo);
    Deshecho deshecho;
    const auto reparos = Intentar(conexion, firmante, peticion, ensayo, deshecho);
    deshecho = Resultado(deshecho, reparos);
    if (!deshecho.SePuede())
        deshecho.bastaConPosteriores = ConPosteriores(conexion, firmante, peticion, true).SePuede();
    return deshecho;
}

Deshecho Rehacer(Conexion &conexion, const Firmante &firmante_, qint64 operacion, bool ensayo)
{
    const Firmante firmante{firmante_.operador, [fecha = firmante_.fecha()] { return fecha; }};
    RevisarQueEstan(conexion, {operacion});
    FiltroDeHistoria filtro;
    filtro.numero = operacion;
    if (LeerOperaciones(conexion, filtro).constFirst().deshace.isEmpty())
        qvx::Rechazar(QString("La operación %1 no deshizo ninguna otra: no hay nada que rehacer.").arg(operacion)
                      + NadaCambio);
    Deshecho deshecho;
    const auto reparos = Intentar(conexion, firmante, {{operacion}, {}, ClaseRehacer, false}, ensayo, deshecho);
    return Resultado(deshecho, reparos);
}

Deshecho DejarComoAntesDe(Conexion &conexion, const Firmante &firmante_, const QString &tipoEquipo, qint64 operacion,
                          bool ensayo)
{
    const Firmante firmante{firmante_.operador, [fecha = firmante_.fecha()] { return fecha; }};
    const QString tipo = SinBlancosAlFinal(tipoEquipo);
    QList<qint64> operaciones;
    for (auto filas = conexion.Execute("SELECT Op_ID FROM Operacion_Plan WHERE Te_Cve_Tipo_Equipo = ? AND Op_ID >= ? "
                                       "ORDER BY Op_ID DESC",
                                       {tipo, operacion});
         !filas.Eof(); filas.MoveNext())
        operaciones.append(filas.Valor(0).toLongLong());
    if (operaciones.isEmpty() || operaciones.constLast() != operacion)
        qvx::Rechazar(QString("La operación %1 no cambió el plan del tipo de equipo %2, o su historia fue depurada.")
                          .arg(QString::number(operacion), tipo)
                      + NadaCambio);
    Deshecho deshecho;
    const auto reparos = Intentar(conexion, firmante, {operaciones, tipo, ClaseDeshacer, false}, ensayo, deshecho);
    return Resultado(deshecho, reparos);
}

} // namespace qvx
