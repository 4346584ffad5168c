#include "data/ErrorEjecucion.h"

namespace qvx
{

ErrorEjecucion::ErrorEjecucion(int numero_, QString descripcion_, QString sentencia_, QString codigoMotor_)
    : numero(numero_)
    , descripcion(std::move(descripcion_))
    , sentencia(std::move(sentencia_))
    , codigoMotor(std::move(codigoMotor_))
    , octetos(descripcion.toUtf8())
{
}

const char *ErrorEjecucion::what() const noexcept
{
    return octetos.constData();
}

ErrorEjecucion ErrorEjecucion::Aclarado(const QString &que) const
{
    ErrorEjecucion aclarado(*this);
    aclarado.aclaracion = que;
    return aclarado;
}

} // namespace qvx
