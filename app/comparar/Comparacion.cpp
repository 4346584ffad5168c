#include "app/comparar/Comparacion.h"

#include "app/comparar/Campos.h"
#include "app/comparar/Parejas.h"
#include "data/Conexion.h"
#include "data/Momento.h"
#include "data/Texto.h"

#include <QMap>
#include <algorithm>
#include <utility>

namespace comparar
{

namespace
{

using qvx::ClaveDe;
using qvx::DelPlan;
using qvx::FilaDelPlan;
using qvx::FilasDelPlan;
namespace parte = qvx::parte;
namespace servicio = qvx::servicio;
namespace linea = qvx::linea;

QHash<QString, QString> LeerCatalogo(qvx::Conexion &conexion, const QString &columnas, const QString &tabla)
{
    QHash<QString, QString> nombres;
    for (auto filas = conexion.Execute("SELECT " + columnas + " FROM " + tabla, {}); !filas.Eof(); filas.MoveNext())
        nombres.insert(qvx::SinBlancosAlFinal(filas.Texto(0)), filas.Texto(1));
    return nombres;
}

QString FolioConParte(const FilaDelPlan &fila, int deParte, int deFolio)
{
    return ClaveDe(fila, deParte) + QLatin1Char('|') + ClaveDe(fila, deFolio);
}

// The lines of one side by their service.
QHash<QString, QList<const FilaDelPlan *>> LineasPorServicio(const FilasDelPlan &plan)
{
    QHash<QString, QList<const FilaDelPlan *>> lineas;
    for (const FilaDelPlan &fila : plan.lineas)
        lineas[FolioConParte(fila, linea::Parte, linea::Folio)].append(&fila);
    return lineas;
}

QHash<QString, QString> NombresDePartes(const FilasDelPlan &antes, const FilasDelPlan &despues)
{
    QHash<QString, QString> partes{{"0000", "RAIZ"}};
    for (const FilasDelPlan *plan : {&antes, &despues})
        for (const FilaDelPlan &fila : plan->partes)
            partes.insert(ClaveDe(fila, parte::Clave), fila.at(parte::Descripcion).toString());
    return partes;
}

class Comparador
{
public:
    Comparador(const FilasDelPlan &antes_, const FilasDelPlan &despues_, const NombresDeCatalogos &nombres,
               bool porFolio_)
        : antes(antes_)
        , despues(despues_)
        , campos(nombres, NombresDePartes(antes, despues))
        , porFolio(porFolio_)
        , lineasAntes(LineasPorServicio(antes))
        , lineasDespues(LineasPorServicio(despues))
    {
    }

    Comparacion Hacer()
    {
        PonerPartes();
        for (const Pareja &pareja : ParejasDeServicios(antes.servicios, despues.servicios, porFolio))
            PonerServicio(pareja);
        PonerLineasSueltas();
        for (auto &[clave, nodo] : partes)
            resultado.partes.push_back(std::move(nodo));
        return std::move(resultado);
    }

private:
    void PonerPartes()
    {
        QHash<QString, const FilaDelPlan *> estaban;
        for (const FilaDelPlan &fila : antes.partes)
            estaban.insert(ClaveDe(fila, parte::Clave), &fila);
        for (const FilaDelPlan &fila : despues.partes)
            PonerParte({estaban.take(ClaveDe(fila, parte::Clave)), &fila});
        for (const FilaDelPlan *fila : std::as_const(estaban))
            PonerParte({fila, nullptr});
    }

    void PonerParte(const Pareja &pareja)
    {
        const QString clave = ClaveDe(pareja.Una(), parte::Clave);
        partes[clave] = Hecho(DelPlan::Parte, pareja, clave, pareja.Una().at(parte::Descripcion).toString());
    }

    // A part that has no row: the plan's root, or one that was deleted above its services.
    Nodo &ParteDe(const QString &clave)
    {
        const auto hallada = partes.find(clave);
        if (hallada != partes.end())
            return hallada->second;
        Nodo sinFila;
        sinFila.clave = clave;
        sinFila.nombre = "(no hay una parte con esta clave)";
        return partes[clave] = sinFila;
    }

    void PonerServicio(const Pareja &pareja)
    {
        Nodo nodo = Hecho(DelPlan::Servicio, pareja, ClaveDe(pareja.Una(), servicio::Folio),
                          campos.NombreDeServicio(pareja.Una()));
        if (pareja.antes && pareja.despues
            && ClaveDe(*pareja.antes, servicio::Folio) != ClaveDe(*pareja.despues, servicio::Folio))
            ++resultado.folios;
        const auto lineasDe = [](auto &lineas, const FilaDelPlan *fila) {
            return fila ? lineas.take(FolioConParte(*fila, servicio::Parte, servicio::Folio))
                        : QList<const FilaDelPlan *>();
        };
        PonerLineas(nodo, lineasDe(lineasAntes, pareja.antes), lineasDe(lineasDespues, pareja.despues));
        Colgar(ParteDe(ClaveDe(pareja.Una(), servicio::Parte)), std::move(nodo));
    }

    void PonerLineas(Nodo &padre, const QList<const FilaDelPlan *> &de, const QList<const FilaDelPlan *> &a)
    {
        for (const Pareja &pareja : ParejasDeLineas(de, a))
            Colgar(padre, Hecho(DelPlan::Linea, pareja, ClaveDe(pareja.Una(), linea::Producto),
                                campos.NombreDeLinea(pareja.Una())));
    }

    // Lines whose service is gone are rows of the plan too.
    void PonerLineasSueltas()
    {
        QMap<QString, int> claves;
        for (const QString &clave : lineasAntes.keys() + lineasDespues.keys())
            claves.insert(clave, 0);
        for (const QString &clave : claves.keys()) {
            Nodo nodo;
            nodo.clase = DelPlan::Servicio;
            nodo.clave = clave.section(QLatin1Char('|'), 1);
            nodo.nombre = "(no hay un servicio con este folio)";
            PonerLineas(nodo, lineasAntes.value(clave), lineasDespues.value(clave));
            Colgar(ParteDe(clave.section(QLatin1Char('|'), 0, 0)), std::move(nodo));
        }
    }

    static void Colgar(Nodo &padre, Nodo hijo)
    {
        padre.difiere = padre.difiere || hijo.difiere;
        padre.hijos.push_back(std::move(hijo));
    }

    Nodo Hecho(DelPlan clase, const Pareja &pareja, const QString &clave, const QString &nombre)
    {
        Nodo nodo;
        nodo.clase = clase;
        nodo.clave = clave;
        nodo.nombre = nombre;
        nodo.campos = campos.Distintos(clase, pareja);
        Cuenta &cuenta = resultado.cuentas.at(static_cast<std::size_t>(clase));
        if (!pareja.antes || !pareja.despues) {
            nodo.suerte = pareja.despues ? Suerte::Nueva : Suerte::Quitada;
            ++(pareja.despues ? cuenta.nuevas : cuenta.quitadas);
        } else {
            nodo.suerte = nodo.campos.isEmpty() ? Suerte::Igual : Suerte::Cambia;
            ++(nodo.campos.isEmpty() ? cuenta.iguales : cuenta.cambian);
        }
        nodo.difiere = nodo.suerte != Suerte::Igual;
        return nodo;
    }

    const FilasDelPlan &antes;
    const FilasDelPlan &despues;
    const Campos campos;
    const bool porFolio;
    QHash<QString, QList<const FilaDelPlan *>> lineasAntes; // of services that were not paired yet
    QHash<QString, QList<const FilaDelPlan *>> lineasDespues;
    std::map<QString, Nodo> partes; // by key
    Comparacion resultado;
};

} // namespace

bool Comparacion::SonIguales() const
{
    return std::all_of(cuentas.begin(), cuentas.end(), [](const Cuenta &cuenta) { return cuenta.Distintas() == 0; });
}

NombresDeCatalogos LeerNombres(qvx::Conexion &conexion)
{
    const qvx::Momento momento(conexion);
    return {LeerCatalogo(conexion, "Ts_Cve_Tipo_Servicio, Ts_Descripcion", "Tipo_Servicio"),
            LeerCatalogo(conexion, "Ps_Cve_Prioridad, Ps_Descripcion", "Prioridad_Servicio"),
            LeerCatalogo(conexion, "Un_Cve_Unidad, Un_Descripcion", "Unidad"),
            LeerCatalogo(conexion, "Pr_Cve_Producto, Pr_Descripcion", "Producto"),
            LeerCatalogo(conexion, "Tg_Cve_Tipo_Gasto, Tg_Descripcion", "Tipo_Gasto")};
}

Comparacion Comparar(const FilasDelPlan &antes, const FilasDelPlan &despues, const NombresDeCatalogos &nombres,
                     bool porFolio)
{
    return Comparador(antes, despues, nombres, porFolio).Hacer();
}

} // namespace comparar
