#include "app/respaldo/OrdenesDeRespaldo.h"

#include "app/Acceso.h"
#include "app/Argumentos.h"
#include "app/InteraccionDeConsola.h"
#include "app/Reporte.h"
#include "app/respaldo/CopiaDelDia.h"
#include "app/respaldo/Textos.h"
#include "data/Conexion.h"
#include "data/Texto.h"
#include "plan/Claves.h"
#include "plan/Restauracion.h"
#include "plan/RestaurarPlan.h"
#include "session/Sesion.h"

#include <QFileInfo>

namespace
{

const QString FaltaSi = "No cambió nada: dé también --si para restaurarlo.";

std::unique_ptr<qvx::Sesion> EntrarEnArchivo(const Argumentos &argumentos)
{
    ExigirBase(argumentos);
    return IniciarSesion(argumentos, AbrirBase(argumentos), std::make_unique<InteraccionDeConsola>("", argumentos.si));
}

int RestaurarUno(qvx::Sesion &sesion, const Argumentos &argumentos)
{
    qvx::Conexion &base = sesion.Conexion();
    const QString clave =
        qvx::ClaveConFormato(argumentos.claves.constFirst(), qvx::claves::Mascara(base, "FTO_TIPO_EQUIPO", ""));
    const qvx::CopiaLista copia(argumentos.archivo, argumentos.baseDatos);
    const qvx::FilasDelPlan antes = qvx::LeerFilas(base, clave);
    const qvx::FilasDelPlan despues = qvx::LeerFilas(copia.Base(), clave);
    if (despues.Vacio())
        qvx::Rechazar("La copia no tiene un plan del tipo de equipo " + clave + ".");
    const qvx::FilasCambiadas cambios = qvx::Distintas(antes, despues);
    if (cambios.Ninguna()) {
        Escribir(stdout, "El plan del tipo de equipo " + clave + " ya es como en la copia.");
        return salida::Hecho;
    }
    if (!argumentos.si) {
        Escribir(stdout, "El plan del tipo de equipo " + clave + " cambiaría en " + respaldo::Texto(cambios) + ".");
        Escribir(stdout, FaltaSi);
        return salida::Hecho;
    }
    qvx::RestaurarPlan(base, sesion.Firmante(), antes, despues, respaldo::DeLaCopia(argumentos.archivo));
    Escribir(stdout, "Se restauró el plan del tipo de equipo " + clave + ": " + respaldo::Texto(cambios) + ".");
    return salida::Hecho;
}

int RestaurarTodos(std::unique_ptr<qvx::Sesion> sesion, const Argumentos &argumentos)
{
    qvx::CopiaLista copia(argumentos.archivo, argumentos.baseDatos);
    if (!argumentos.si) {
        Escribir(stdout, "La copia es del " + respaldo::Fecha(QFileInfo(argumentos.archivo).lastModified())
                             + " y tiene estos planes:");
        for (const qvx::PlanDeCopia &plan : qvx::PlanesDeCopia(argumentos.archivo, argumentos.baseDatos))
            Escribir(stdout, "  " + plan.clave + " " + plan.descripcion + ": " + respaldo::Texto(plan));
        Escribir(stdout, "Toda la base de datos quedaría como en la copia: planes, catálogos y registros.");
        Escribir(stdout, FaltaSi);
        return salida::Hecho;
    }
    const QString fecha = sesion->Firmante().fecha();
    const qvx::Firmante firmante{sesion->Operador(), [fecha] { return fecha; }};
    const QDateTime ahora = sesion->Ahora();
    sesion.reset(); // the file is in nobody's hands meanwhile
    const QString antes = copia.RestaurarTodo(respaldo::LugarDe(argumentos.baseDatos), firmante, ahora);
    Escribir(stdout, "Se restauró toda la base de datos. Como estaba antes quedó en «" + antes + "».");
    return salida::Hecho;
}

} // namespace

int RespaldarEnArchivo(const Argumentos &argumentos)
{
    ExigirBase(argumentos);
    qvx::Respaldar(argumentos.baseDatos, argumentos.archivo);
    Escribir(stdout, "Se hizo la copia «" + argumentos.archivo + "».");
    return salida::Hecho;
}

int RestaurarDeArchivo(const Argumentos &argumentos)
{
    auto sesion = EntrarEnArchivo(argumentos);
    return argumentos.claves.isEmpty() ? RestaurarTodos(std::move(sesion), argumentos)
                                       : RestaurarUno(*sesion, argumentos);
}
