#include "app/Ordenes.h"

#include "app/Acceso.h"
#include "app/Argumentos.h"
#include "app/Componente.h"
#include "app/Reporte.h"
#include "app/VentanaPrincipal.h"
#include "controls/InteraccionQt.h"
#include "data/Conexion.h"
#include "plan/Integridad.h"
#include "session/Sesion.h"

#include <QApplication>
#include <QFileInfo>

namespace
{

QString EnUnRenglon(const qvx::Suelto &suelto)
{
    const QString clase = suelto.clase == qvx::Suelto::Clase::Parte ? "parte" : "servicio";
    return ("Tipo de equipo " + suelto.tipoEquipo + ", " + clase + " " + suelto.clave + " " + suelto.descripcion)
               .simplified()
           + ": " + suelto.motivo + ".";
}

} // namespace

int Mostrar(const Argumentos &argumentos)
{
    auto conexion = AbrirBaseConVentana(argumentos);
    if (!conexion)
        return salida::Fallido;
    const auto sesion = IniciarSesion(argumentos, std::move(conexion), std::make_unique<qvx::InteraccionQt>());
    VentanaPrincipal ventana(CrearPantalla(), argumentos.tipoEquipo, sesion->Operador(),
                             argumentos.servidor ? argumentos.servidor->Nombre() : argumentos.baseDatos);
    // Served to a browser there is no window manager: the window takes the whole screen.
    if (qEnvironmentVariableIsSet("QVX_PANTALLA_COMPLETA"))
        ventana.showFullScreen();
    else
        ventana.show();
    return QApplication::exec();
}

int Revisar(const Argumentos &argumentos)
{
    if (!argumentos.servidor && !QFileInfo::exists(argumentos.baseDatos)) // opening would make it
        throw qvx::ErrorEjecucion(qvx::errores::Datos, "La base de datos «" + argumentos.baseDatos + "» no existe.");
    const auto conexion = AbrirBase(argumentos);
    const auto sueltos = qvx::BuscarSueltos(*conexion);
    for (const qvx::Suelto &suelto : sueltos)
        Escribir(stdout, EnUnRenglon(suelto));
    if (sueltos.isEmpty())
        Escribir(stdout, "No se encontró nada que corregir.");
    return sueltos.isEmpty() ? salida::Hecho : salida::Fallido;
}

int Crear(const Argumentos &argumentos)
{
    const QString nombre = argumentos.servidor->Nombre();
    Escribir(stdout, CrearEsquema(argumentos) ? "Se creó el esquema de Quorvex en la base de datos " + nombre
                                                    + ", con los roles quorvex_planificadores y quorvex_lectores."
                                              : QString("El esquema ya está al día."));
    return salida::Hecho;
}
