#include "session/Sistema.h"

#include "data/Conexion.h"
#include "plan/Claves.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"

#include <utility>

namespace qvx
{

qvx::Conexion &Sistema::Conexion() const
{
    return Sesion::Actual().Conexion();
}

int Sistema::Mensaje(const QString &texto, int estilo, const QString &titulo, WId ventana, const QString &modulo,
                     const QString &identificador) const
{
    Sesion &sesion = Sesion::Actual();
    const QString detalles = std::exchange(sesion.detallesPendientes, {});
    return sesion.Interaccion().Mensaje(
        {texto, estilo, titulo, ventana, modulo, identificador, detalles == texto ? QString() : detalles});
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
