#include "app/Ordenes.h"

#include "app/Acceso.h"
#include "app/Argumentos.h"
#include "app/Escritorio.h"
#include "app/InteraccionDelEscritorio.h"
#include "app/Reporte.h"
#include "data/Momento.h"
#include "plan/Guion.h"
#include "plan/Integridad.h"

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

QString LoHecho(const qvx::CambioDeEsquema &cambio, const Argumentos &argumentos)
{
    const QString nombre = argumentos.servidor->Nombre();
    if (cambio.antes == 0)
        return "Se creó el esquema de Quorvex en la base de datos " + nombre
               + ", con los roles quorvex_planificadores, quorvex_catalogos y quorvex_lectores.";
    if (cambio.antes < qvx::VersionEsquema)
        return QString("Se actualizó el esquema de Quorvex en la base de datos %1, de la versión %2 a la %3.")
            .arg(nombre, QString::number(cambio.antes), QString::number(qvx::VersionEsquema));
    return argumentos.actualizarEsquema ? QString("El esquema ya está al día. Se repusieron los permisos de los roles.")
                                        : QString("El esquema ya está al día.");
}

// On the first start by hand. Whoever names a file, a server or an equipment type knows what he wants.
bool QuiereEjemplos(const Argumentos &argumentos, qvx::Interaccion &personas)
{
    if (argumentos.servidor || argumentos.baseDada || argumentos.sinEjemplos || !argumentos.tipoEquipo.isEmpty()
        || QFileInfo::exists(argumentos.baseDatos))
        return !argumentos.sinEjemplos;
    return personas.Mensaje(
               {"Todavía no hay una base de datos. ¿Quiere empezar con planes y catálogos de ejemplo, para "
                "probar? Con «No» empieza vacía: lo primero son sus catálogos, que se escriben o se pegan "
                "de una hoja de cálculo.",
                qvx::mensaje::SiNo + qvx::mensaje::Pregunta,
                "Quorvex",
                0,
                "QVX",
                "ERR-ID:1000013",
                {}})
           == qvx::mensaje::Si;
}

} // namespace

int Mostrar(const Argumentos &dados)
{
    auto personas = std::make_unique<InteraccionDelEscritorio>();
    Argumentos argumentos = dados;
    argumentos.sinEjemplos = !QuiereEjemplos(dados, *personas);
    auto conexion = AbrirBaseConVentana(argumentos);
    if (!conexion)
        return salida::Fallido;
    Escritorio escritorio;
    escritorio.Empezar(argumentos, std::move(conexion), std::move(personas));
    return QApplication::exec();
}

int Revisar(const Argumentos &argumentos)
{
    ExigirBase(argumentos);
    const auto conexion = AbrirBase(argumentos);
    const qvx::Momento momento(*conexion);
    const auto sueltos = qvx::BuscarSueltos(*conexion);
    for (const qvx::Suelto &suelto : sueltos)
        Escribir(stdout, EnUnRenglon(suelto));
    if (sueltos.isEmpty())
        Escribir(stdout, "No se encontró nada que corregir.");
    return sueltos.isEmpty() ? salida::Hecho : salida::Fallido;
}

int CambiarElEsquema(const Argumentos &argumentos)
{
    const qvx::CambioDeEsquema cambio = CambiarEsquema(argumentos);
    Escribir(stdout, LoHecho(cambio, argumentos));
    if (cambio.faltaSuperusuario)
        Escribir(stdout,
                 "Quien puede entrar a la base de datos puede llenar el disco o detener el servidor, aunque solo "
                 "pueda mirar; lo impide un superusuario del servidor con --actualizar-esquema.");
    return salida::Hecho;
}
