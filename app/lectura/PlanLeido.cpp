#include "app/lectura/PlanLeido.h"

#include "data/Conexion.h"
#include "data/Momento.h"
#include "data/Texto.h"
#include "plan/Claves.h"
#include "plan/Costos.h"
#include "plan/RegistrosDeCatalogo.h"
#include "plan/Rutas.h"

using qvx::SinBlancosAlFinal;

namespace lectura
{

namespace
{

// What the lines of a service add up to, by kind.
struct LineasDeServicio {
    double manoObra = 0;
    double refacciones = 0;
    double herramientas = 0;
};

using ClaveDeServicio = std::pair<QString, QString>; // part and folio
using LineasPorServicio = QHash<ClaveDeServicio, LineasDeServicio>;

void LeerTipo(qvx::Conexion &conexion, Plan &plan)
{
    const auto fila = conexion.Execute(
        "SELECT Te_Descripcion, Es_Cve_Estado FROM Tipo_Equipo WHERE Te_Cve_Tipo_Equipo = ?", {plan.tipoEquipo});
    if (fila.Eof())
        return;
    plan.nombreTipo = fila.Texto(0);
    const QString estado = SinBlancosAlFinal(fila.Texto(1));
    plan.tipoActivo = estado != qvx::estado::Baja && estado != qvx::estado::Cancelado;
}

LineasPorServicio LeerLineas(qvx::Conexion &conexion, const QString &tipoEquipo)
{
    LineasPorServicio lineas;
    for (auto filas =
             conexion.Execute("SELECT Tep_ID, Pm_ID, SUM(CASE WHEN Pmd_Tipo = '01' THEN Pmd_Importe ELSE 0 END), "
                              "SUM(CASE WHEN Pmd_Tipo = '02' THEN Pmd_Importe ELSE 0 END), "
                              "SUM(CASE WHEN Pmd_Tipo = '03' THEN Pmd_Importe ELSE 0 END) "
                              "FROM Plan_Mantenimiento_Detalle WHERE Te_Cve_Tipo_Equipo = ? GROUP BY Tep_ID, Pm_ID",
                              {tipoEquipo});
         !filas.Eof(); filas.MoveNext())
        lineas.insert(
            {SinBlancosAlFinal(filas.Texto(0)), SinBlancosAlFinal(filas.Texto(1))},
            {qvx::Redondeado(filas.Numero(2)), qvx::Redondeado(filas.Numero(3)), qvx::Redondeado(filas.Numero(4))});
    return lineas;
}

// The descriptions of a catalogue by key: joined to twenty thousand rows, each would be a text of its own.
QHash<QString, QString> LeerNombres(qvx::Conexion &conexion, const QString &sql)
{
    QHash<QString, QString> nombres;
    for (auto filas = conexion.Execute(sql, {}); !filas.Eof(); filas.MoveNext())
        nombres.insert(SinBlancosAlFinal(filas.Texto(0)), filas.Texto(1));
    return nombres;
}

Situacion SituacionDe(const qvx::Parte *parte, const QString &estado)
{
    if (!parte)
        return Situacion::SinParte;
    if (parte->alcance != qvx::Parte::Alcance::Llega)
        return Situacion::FueraDelArbol;
    if (!parte->activa)
        return Situacion::ParteDeBaja;
    return estado == qvx::estado::Activo ? Situacion::Activo : Situacion::ServicioDeBaja;
}

// Parts as their services need them, each looked for once.
class PartesVistas
{
public:
    struct Vista {
        const qvx::Parte *parte = nullptr;
        QString ruta;
    };
    explicit PartesVistas(const qvx::Arbol &arbol_) : arbol(arbol_) {}

    Vista De(const QString &clave)
    {
        const auto vista = vistas.constFind(clave);
        if (vista != vistas.constEnd())
            return *vista;
        Vista nueva{arbol.Buscar(clave), {}};
        // The path of what stands above is known to most; a ring's is not built up.
        if (!nueva.parte || nueva.parte->alcance != qvx::Parte::Alcance::Llega || EsHonda(*nueva.parte))
            nueva.ruta = arbol.Ruta(clave);
        else if (qvx::claves::EsRaiz(nueva.parte->padre))
            nueva.ruta = nueva.parte->descripcion;
        else
            nueva.ruta = De(nueva.parte->padre).ruta + " / " + nueva.parte->descripcion;
        return *vistas.insert(clave, nueva);
    }

private:
    // Deeper than a path goes: to build it on those of all above would take the square of the depth in memory.
    bool EsHonda(const qvx::Parte &parte) const
    {
        const qvx::Parte *arriba = &parte;
        for (int nivel = 1; nivel <= qvx::MaximoNiveles; ++nivel)
            if (arriba = arbol.Buscar(arriba->padre); !arriba)
                return false;
        return true;
    }

    const qvx::Arbol &arbol;
    QHash<QString, Vista> vistas;
};

void Costear(Servicio &servicio, const LineasDeServicio &lineas)
{
    servicio.manoObra = lineas.manoObra;
    servicio.refacciones = lineas.refacciones;
    servicio.herramientas = lineas.herramientas;
    const qvx::Costeo costeo = qvx::Costear(servicio.precio, qvx::Redondeado(lineas.manoObra + lineas.refacciones));
    servicio.costo = costeo.costo;
    servicio.utilidad = costeo.utilidad;
    servicio.porcentaje = costeo.porcentaje;
}

Servicio Leer(const qvx::Recordset &fila, const QString &tipoEquipo)
{
    Servicio servicio;
    servicio.leido = {tipoEquipo, SinBlancosAlFinal(fila.Texto(0)), SinBlancosAlFinal(fila.Texto(1)), fila.Texto(2)};
    servicio.tipoServicio = SinBlancosAlFinal(fila.Texto(3));
    servicio.dias = fila.Numero(4);
    servicio.lectura = fila.Numero(5);
    servicio.unidad = SinBlancosAlFinal(fila.Texto(6));
    servicio.horas = fila.Numero(7);
    servicio.conParo = SinBlancosAlFinal(fila.Texto(8)) == "SI";
    servicio.horasParo = fila.Numero(9);
    servicio.prioridad = SinBlancosAlFinal(fila.Texto(10));
    servicio.precio = fila.Numero(11);
    servicio.estado = SinBlancosAlFinal(fila.Texto(12));
    return servicio;
}

} // namespace

Plan LeerPlan(qvx::Conexion &conexion, const QString &tipoEquipo)
{
    const qvx::Momento momento(conexion);
    Plan plan;
    plan.tipoEquipo = SinBlancosAlFinal(tipoEquipo);
    LeerTipo(conexion, plan);
    plan.arbol = qvx::ArbolDelPlan(conexion, plan.tipoEquipo);
    const LineasPorServicio lineas = LeerLineas(conexion, plan.tipoEquipo);
    const auto nombres =
        LeerNombres(conexion, "SELECT Ts_Cve_Tipo_Servicio, Ts_Descripcion AS Nombre FROM Tipo_Servicio");
    const auto prioridades =
        LeerNombres(conexion, "SELECT Ps_Cve_Prioridad, Ps_Descripcion AS Nombre FROM Prioridad_Servicio");
    PartesVistas partes(plan.arbol);
    for (auto filas = conexion.Execute(
             "SELECT Tep_ID, Pm_ID, Version AS Sello, Ts_Cve_Tipo_Servicio, Pm_Frecuencia, Pm_Lectura, "
             "Pm_Unidad_Lectura, Pm_Tiempo_Estimado, Pm_Requiere_Paro, Pm_Tiempo_Paro, Pm_Prioridad, Pm_Precio, "
             "Es_Cve_Estado FROM Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = ? ORDER BY Pm_ID",
             {plan.tipoEquipo});
         !filas.Eof(); filas.MoveNext()) {
        Servicio servicio = Leer(filas, plan.tipoEquipo);
        servicio.nombreServicio = nombres.value(servicio.tipoServicio);
        servicio.nombrePrioridad = prioridades.value(servicio.prioridad);
        const QString &parte = servicio.leido.parte;
        const PartesVistas::Vista vista = partes.De(parte);
        servicio.ruta = vista.ruta;
        servicio.situacion = SituacionDe(vista.parte, servicio.estado);
        Costear(servicio, lineas.value({parte, servicio.leido.folio}));
        plan.servicios.append(std::move(servicio));
    }
    return plan;
}

} // namespace lectura
