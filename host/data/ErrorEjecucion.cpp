#include "data/ErrorEjecucion.h"

#include <utility>

namespace qvx
{

namespace
{

thread_local const void *deQuien = nullptr;
thread_local std::function<void()> antesDelError;

} // namespace

void ErrorEjecucion::Antes(const void *quien, std::function<void()> averiguar)
{
    if (!averiguar && quien != deQuien)
        return;
    deQuien = quien;
    antesDelError = std::move(averiguar);
}

ErrorEjecucion::ErrorEjecucion(int numero_, QString descripcion_, QString sentencia_, QString codigoMotor_)
    : numero(numero_)
    , descripcion(std::move(descripcion_))
    , sentencia(std::move(sentencia_))
    , codigoMotor(std::move(codigoMotor_))
    , octetos(descripcion.toUtf8())
{
    if (const auto averiguar = std::exchange(antesDelError, {}))
        averiguar();
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
