#include "session/Sesion.h"

#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "plan/OperacionEnCurso.h"
#include "session/Interaccion.h"
#include "session/Trabajo.h"

namespace qvx
{

namespace
{

Sesion *actual = nullptr;

}

Sesion::Sesion(std::unique_ptr<qvx::Conexion> conexion_, QString operador_,
               std::unique_ptr<qvx::Interaccion> interaccion_, Reloj reloj_)
    : conexion(std::move(conexion_))
    , operador(std::move(operador_))
    , interaccion(std::move(interaccion_))
    , reloj(std::move(reloj_))
{
    if (actual)
        throw ErrorEjecucion(errores::ObjetoNoEstablecido, "Ya hay una sesión abierta");
    actual = this;
    FirmarOperaciones(*conexion, operador);
    conexion->AlEjecutar(&Trabajo::AntesDeSentencia);
}

Sesion::~Sesion()
{
    actual = nullptr;
}

qvx::Firmante Sesion::Firmante() const
{
    return {operador, [this] { return TextoFecha(Ahora()); }};
}

Sesion &Sesion::Actual()
{
    if (!actual)
        throw ErrorEjecucion(errores::ObjetoNoEstablecido, "No hay una sesión abierta");
    return *actual;
}

bool Sesion::Abierta()
{
    return actual != nullptr;
}

} // namespace qvx
