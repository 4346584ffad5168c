#include "plan/RestaurarPlan.h"

#include "data/ErrorEjecucion.h"
#include "plan/PlanTomado.h"

#include <QHash>
#include <QSet>

namespace qvx
{

namespace
{

// By which of its keys a row is told from the others of its plan. A service keeps its row under another part; a line
// goes with its part.
QString SenaDeFila(DelPlan clase, const FilaDelPlan &fila)
{
    switch (clase) {
    case DelPlan::Parte:
        return ClaveDe(fila, parte::Clave);
    case DelPlan::Servicio:
        return ClaveDe(fila, servicio::Folio);
    default:
        return ClaveDe(fila, linea::Parte) + '|' + ClaveDe(fila, linea::Folio) + '|' + ClaveDe(fila, linea::Clave);
    }
}

// The rows of one table that differ.
struct Diferencia {
    QList<FilaDelPlan> sobran;
    QList<FilaDelPlan> faltan;
    QList<QPair<FilaDelPlan, FilaDelPlan>> cambian;

    int Cuantas() const { return static_cast<int>(sobran.size() + faltan.size() + cambian.size()); }
};

Diferencia Comparar(DelPlan clase, const FilasDelPlan &antes, const FilasDelPlan &despues)
{
    QHash<QString, const FilaDelPlan *> estaban;
    for (const FilaDelPlan &fila : antes.De(clase))
        estaban.insert(SenaDeFila(clase, fila), &fila);
    Diferencia diferencia;
    for (const FilaDelPlan &fila : despues.De(clase)) {
        const FilaDelPlan *anterior = estaban.take(SenaDeFila(clase, fila));
        if (!anterior)
            diferencia.faltan.append(fila);
        else if (!SonIguales(TablaDe(clase), *anterior, fila))
            diferencia.cambian.append({*anterior, fila});
    }
    for (const FilaDelPlan &fila : antes.De(clase)) // in their order
        if (estaban.contains(SenaDeFila(clase, fila)))
            diferencia.sobran.append(fila);
    return diferencia;
}

// The writing of one plan.
class Restauracion
{
public:
    Restauracion(const PlanTomado &plan_, const FilasDelPlan &antes, const FilasDelPlan &despues)
        : plan(plan_)
        , partes(Comparar(DelPlan::Parte, antes, despues))
        , servicios(Comparar(DelPlan::Servicio, antes, despues))
        , lineas(Comparar(DelPlan::Linea, antes, despues))
    {
        for (const FilaDelPlan &fila : lineas.sobran + lineas.faltan)
            conLineas.insert(ClaveDe(fila, linea::Folio));
        for (const auto &[anterior, fila] : lineas.cambian)
            conLineas.insert(ClaveDe(fila, linea::Folio));
    }

    // What hangs from a row goes before it, and comes after it.
    FilasCambiadas Escribir(const FilasDelPlan &despues)
    {
        for (const FilaDelPlan &fila : lineas.sobran)
            Quitar(DelPlan::Linea, fila, {linea::Parte, linea::Folio, linea::Clave});
        for (const FilaDelPlan &fila : servicios.sobran) {
            Quitar(DelPlan::Servicio, fila, {servicio::Parte, servicio::Folio});
            AnotarServicio(fila);
        }
        for (const FilaDelPlan &fila : partes.sobran) {
            Quitar(DelPlan::Parte, fila, {parte::Clave});
            AnotarParte(fila);
        }
        for (const auto &[anterior, fila] : partes.cambian) {
            Cambiar(DelPlan::Parte, anterior, fila, {parte::Clave});
            AnotarParte(fila);
        }
        for (const FilaDelPlan &fila : partes.faltan) {
            Poner(DelPlan::Parte, fila);
            AnotarParte(fila);
        }
        for (const auto &[anterior, fila] : servicios.cambian) {
            Cambiar(DelPlan::Servicio, anterior, fila, {servicio::Parte, servicio::Folio});
            AnotarServicio(fila);
        }
        for (const FilaDelPlan &fila : servicios.faltan) {
            Poner(DelPlan::Servicio, fila);
            AnotarServicio(fila);
        }
        FirmarLosDeLineas(despues);
        for (const auto &[anterior, fila] : lineas.cambian)
            Cambiar(DelPlan::Linea, anterior, fila, {linea::Parte, linea::Folio, linea::Clave});
        for (const FilaDelPlan &fila : lineas.faltan)
            Poner(DelPlan::Linea, fila);
        return {partes.Cuantas(), servicios.Cuantas(), lineas.Cuantas()};
    }

private:
    // An editor that is open on such a service elsewhere is refused.
    void FirmarLosDeLineas(const FilasDelPlan &despues)
    {
        for (const FilaDelPlan &fila : despues.servicios) {
            if (escritos.contains(ClaveDe(fila, servicio::Folio))
                || !conLineas.contains(ClaveDe(fila, servicio::Folio)))
                continue;
            Cambiar(DelPlan::Servicio, fila, fila, {servicio::Parte, servicio::Folio});
            AnotarServicio(fila);
        }
    }

    void Quitar(DelPlan clase, const FilaDelPlan &fila, const QList<int> &claves)
    {
        RevisarUna(
            plan.Base().Execute("DELETE FROM " + TablaDe(clase).nombre + Donde(clase, claves), Valores(fila, claves)),
            clase, fila);
    }

    void Cambiar(DelPlan clase, const FilaDelPlan &anterior, const FilaDelPlan &fila, const QList<int> &claves)
    {
        const QStringList columnas = TablaDe(clase).columnas.mid(1);
        RevisarUna(plan.Base().Execute("UPDATE " + TablaDe(clase).nombre + " SET " + columnas.join(" = ?, ") + " = ?"
                                           + Donde(clase, claves),
                                       Firmada(clase, fila).mid(1) + Valores(anterior, claves)),
                   clase, fila);
    }

    void Poner(DelPlan clase, const FilaDelPlan &fila)
    {
        const QStringList columnas = TablaDe(clase).columnas;
        RevisarUna(plan.Base().Execute("INSERT INTO " + TablaDe(clase).nombre + " (" + columnas.join(", ")
                                           + ") VALUES (" + QStringList(columnas.size(), "?").join(", ") + ")",
                                       Firmada(clase, fila)),
                   clase, fila);
    }

    static QString Donde(DelPlan clase, const QList<int> &claves)
    {
        QString condicion = " WHERE Te_Cve_Tipo_Equipo = ?";
        for (const int clave : claves)
            condicion += " AND " + TablaDe(clase).columnas.at(clave) + " = ?";
        return condicion;
    }

    QVariantList Valores(const FilaDelPlan &fila, const QList<int> &claves) const
    {
        QVariantList valores{plan.Tipo()};
        for (const int clave : claves)
            valores.append(fila.at(clave));
        return valores;
    }

    QVariantList Firmada(DelPlan clase, FilaDelPlan fila) const
    {
        if (const int firma = TablaDe(clase).firma; firma >= 0) {
            fila[firma] = plan.Quien().operador;
            fila[firma + 1] = plan.Quien().fecha();
        }
        return fila;
    }

    static void RevisarUna(const Recordset &cambio, DelPlan clase, const FilaDelPlan &fila)
    {
        if (cambio.Afectadas() != 1)
            qvx::Rechazar("El renglón " + SenaDeFila(clase, fila) + " de " + TablaDe(clase).nombre
                          + " no se pudo escribir. No se guardó nada.");
    }

    void AnotarParte(const FilaDelPlan &fila) const
    {
        AnotarCambio(plan.Base(), plan.Quien(), TablaDe(DelPlan::Parte).nombre,
                     ClaveDe(fila, parte::Clave) + "|" + plan.Tipo());
    }

    void AnotarServicio(const FilaDelPlan &fila)
    {
        escritos.insert(ClaveDe(fila, servicio::Folio));
        AnotarCambio(plan.Base(), plan.Quien(), TablaDe(DelPlan::Servicio).nombre,
                     plan.Tipo() + "|" + ClaveDe(fila, servicio::Folio) + "|" + ClaveDe(fila, servicio::Parte));
    }

    const PlanTomado &plan;
    const Diferencia partes;
    const Diferencia servicios;
    const Diferencia lineas;
    QSet<QString> conLineas; // folios of services whose lines differ
    QSet<QString> escritos;  // folios
};

} // namespace

FilasCambiadas Distintas(const FilasDelPlan &antes, const FilasDelPlan &despues)
{
    return {Comparar(DelPlan::Parte, antes, despues).Cuantas(), Comparar(DelPlan::Servicio, antes, despues).Cuantas(),
            Comparar(DelPlan::Linea, antes, despues).Cuantas()};
}

FilasCambiadas RestaurarPlan(Conexion &conexion, const Firmante &firmante, const FilasDelPlan &antes,
                             const FilasDelPlan &despues, const QString &deDonde)
{
    if (antes.tipoEquipo != despues.tipoEquipo)
        qvx::Rechazar("No son renglones de un mismo plan.");
    PlanTomado plan(conexion, firmante, antes.tipoEquipo);
    if (!(LeerFilas(conexion, plan.Tipo()) == antes))
        qvx::Rechazar("El plan del tipo de equipo " + plan.Tipo()
                      + " cambió después de que se leyó para restaurarlo. No se guardó nada: ábralo de nuevo.");
    const FilasCambiadas escritas = Restauracion(plan, antes, despues).Escribir(despues);
    plan.Confirmar("Plan restaurado", deDonde);
    return escritas;
}

} // namespace qvx
