#include "plan/FilasDelPlan.h"

#include "data/Conexion.h"
#include "data/Momento.h"
#include "data/Texto.h"

#include <algorithm>

namespace qvx
{

namespace
{

const QStringList Firmas{"Oper_Alta", "Fecha_Alta", "Oper_Ult_Modif", "Fecha_Ult_Modif", "Oper_Baja", "Fecha_Baja"};

QList<FilaDelPlan> Leer(Conexion &conexion, DelPlan clase, const QString &orden, const QString &tipoEquipo)
{
    const TablaDelPlan &tabla = TablaDe(clase);
    QList<FilaDelPlan> filas;
    for (auto leidas = conexion.Execute("SELECT " + tabla.columnas.join(", ") + " FROM " + tabla.nombre
                                            + " WHERE Te_Cve_Tipo_Equipo = ? ORDER BY " + orden,
                                        {tipoEquipo});
         !leidas.Eof(); leidas.MoveNext())
        filas.append(FilaLeida(leidas, static_cast<int>(tabla.columnas.size())));
    return filas;
}

} // namespace

const TablaDelPlan &TablaDe(DelPlan clase)
{
    static const TablaDelPlan partes{
        "Tipo_Equipo_Parte",
        QStringList{"Te_Cve_Tipo_Equipo", "Tep_ID", "Tep_Padre", "Tep_Descripcion", "Es_Cve_Estado"} + Firmas,
        parte::OperModif};
    static const TablaDelPlan servicios{"Plan_Mantenimiento",
                                        QStringList{"Te_Cve_Tipo_Equipo", "Tep_ID", "Pm_ID", "Ts_Cve_Tipo_Servicio",
                                                    "Pm_Frecuencia", "Pm_Lectura", "Pm_Unidad_Lectura", "Pm_Precio",
                                                    "Pm_Tiempo_Estimado", "Pm_Prioridad", "Pm_Requiere_Paro",
                                                    "Pm_Tiempo_Paro", "Es_Cve_Estado"}
                                            + Firmas,
                                        servicio::OperModif};
    static const TablaDelPlan lineas{"Plan_Mantenimiento_Detalle",
                                     {"Te_Cve_Tipo_Equipo", "Tep_ID", "Pm_ID", "Pmd_ID", "Pmd_Tipo", "Pr_Cve_Producto",
                                      "Pmd_Cantidad", "Pmd_Unidad", "Pmd_Costo", "Pmd_Importe", "Pmd_Tipo_Gasto"},
                                     -1};
    return clase == DelPlan::Parte ? partes : clase == DelPlan::Servicio ? servicios : lineas;
}

FilasDelPlan LeerFilas(Conexion &conexion, const QString &tipoEquipo)
{
    const Momento momento(conexion);
    return {SinBlancosAlFinal(tipoEquipo), Leer(conexion, DelPlan::Parte, "Tep_ID", tipoEquipo),
            Leer(conexion, DelPlan::Servicio, "Pm_ID", tipoEquipo),
            Leer(conexion, DelPlan::Linea, "Pm_ID, Pmd_Numero, Pmd_ID", tipoEquipo)};
}

FilaDelPlan FilaLeida(const Recordset &fila, int columnas)
{
    FilaDelPlan leida;
    leida.reserve(columnas);
    for (int i = 0; i < columnas; ++i) // an absent text comes as a text
        leida.append(fila.Valor(i).isNull() ? QVariant() : fila.Valor(i));
    return leida;
}

void OrdenarFilas(FilasDelPlan &filas)
{
    const auto ordenar = [](QList<FilaDelPlan> &unas, const QList<int> &lugares) {
        std::stable_sort(unas.begin(), unas.end(), [&](const FilaDelPlan &una, const FilaDelPlan &otra) {
            for (const int lugar : lugares)
                if (const int orden = ClaveDe(una, lugar).compare(ClaveDe(otra, lugar)); orden != 0)
                    return orden < 0;
            return false;
        });
    };
    ordenar(filas.partes, {parte::Clave});
    ordenar(filas.servicios, {servicio::Folio});
    ordenar(filas.lineas, {linea::Folio, linea::Clave});
}

QString ClaveDe(const FilaDelPlan &fila, int lugar)
{
    return SinBlancosAlFinal(fila.at(lugar).toString());
}

bool SonIguales(const TablaDelPlan &tabla, const FilaDelPlan &una, const FilaDelPlan &otra)
{
    for (int i = 0; i < tabla.columnas.size(); ++i) {
        const bool firma = tabla.firma >= 0 && (i == tabla.firma || i == tabla.firma + 1);
        if (!firma && (una.at(i).isValid() != otra.at(i).isValid() || una.at(i) != otra.at(i)))
            return false;
    }
    return true;
}

} // namespace qvx
