#include "app/programa/LecturaDePedido.h"

#include "app/Acceso.h"
#include "app/Argumentos.h"
#include "app/InteraccionDeConsola.h"
#include "data/ErrorEjecucion.h"
#include "data/Momento.h"
#include "data/Texto.h"
#include "plan/Catalogos.h"
#include "plan/Claves.h"

#include <QFileInfo>

LecturaDePedido::LecturaDePedido(const Argumentos &argumentos)
{
    ExigirBase(argumentos);
    sesion = IniciarSesion(argumentos, AbrirBase(argumentos), std::make_unique<InteraccionDeConsola>("", false));
    base = argumentos.servidor ? argumentos.servidor->Nombre() : QFileInfo(argumentos.baseDatos).absoluteFilePath();
    qvx::Conexion &conexion = sesion->Conexion();
    const qvx::Momento momento(conexion);
    const QString tipo =
        qvx::ClaveConFormato(argumentos.programa.clave, qvx::claves::Mascara(conexion, "FTO_TIPO_EQUIPO", ""));
    if (qvx::DescripcionDeCatalogo(conexion, "TIPO_EQUIPO", tipo).isEmpty())
        qvx::Rechazar("El tipo de equipo " + tipo + " no existe o está dado de baja.");
    const auto guardados = qvx::LeerDatosDePrograma(conexion, tipo);
    conFecha = guardados || argumentos.programa.desde;
    if (argumentos.programa.programa && !conFecha)
        qvx::Rechazar("Falta desde cuándo: escriba --desde AAAA-MM-DD, o guarde los datos del programa del tipo de "
                      "equipo "
                      + tipo + " en la ventana.");
    datos = argumentos.programa.Sobre(guardados.value_or(programa::DatosDeInicio(tipo, sesion->Ahora().date())));
    medido = programa::LeerPlanMedido(conexion, tipo);
}
