#include "session/Sistema.h"

#include "data/Conexion.h"
#include "plan/Claves.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"

#include <utility>

namespace qvx
{

namespace
{

// What an error of the engine means that a message repeats.
QString Aclaracion(const QString &mensaje)
{
    const Conexion::Fallo &fallo = Sesion::Actual().Conexion().UltimoFallo();
    return !fallo.texto.isEmpty() && mensaje.contains(fallo.texto) ? fallo.aclaracion : QString();
}

} // namespace

qvx::Conexion &Sistema::Conexion() const
{
    return Sesion::Actual().Conexion();
}

int Sistema::Mensaje(const QString &texto, int estilo, const QString &titulo, WId ventana, const QString &modulo,
                     const QString &identificador) const
{
    Sesion &sesion = Sesion::Actual();
    sesion.Conexion().Asentar();
    QString detalles = std::exchange(sesion.detallesPendientes, {});
    if (detalles == texto)
        detalles.clear();
    const QString aclaracion = Aclaracion(texto + detalles);
    if (!aclaracion.isEmpty())
        detalles += (detalles.isEmpty() ? "" : "\n\n") + aclaracion;
    return sesion.Interaccion().Mensaje({texto, estilo, titulo, ventana, modulo, identificador, detalles});
}

void Sistema::Detallar(const QString &detalles) const
{
    Sesion::Actual().detallesPendientes = detalles;
}

QString Sistema::UsuarioActual() const
{
    return Sesion::Actual().Operador();
}

QString Sistema::FormatoClave(const QString &codigo, const QString & /*opcional*/, const QString & /*tipo*/,
                              const QString &predeterminada) const
{
    return claves::Mascara(Conexion(), codigo, predeterminada);
}

} // namespace qvx
