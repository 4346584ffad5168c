#pragma once

#include "system/Exporta.h"

#include <QString>
#include <exception>
#include <functional>

namespace QVX_EXPORTA qvx
{

// Numbers of the run-time errors that the system raises itself.
namespace errores
{
constexpr int Desbordamiento = 6;
constexpr int TiposNoCoinciden = 13;
constexpr int ObjetoNoEstablecido = 91;
constexpr int SinRegistroActual = 3021;
constexpr int ElementoNoEncontrado = 3265;
constexpr int DialogoCancelado = 32755;
constexpr int NodoNoEncontrado = 35601;
constexpr int ClaveRepetida = 35602;
constexpr int Datos = -2147217900;
} // namespace errores

// The one run-time error of the system: number and description; a data error also carries the statement and the
// engine's own code.
class Q_DECL_EXPORT ErrorEjecucion : public std::exception
{
public:
    ErrorEjecucion(int numero, QString descripcion, QString sentencia = {}, QString codigoMotor = {});

    int Numero() const { return numero; }
    const QString &Descripcion() const { return descripcion; }
    const QString &Sentencia() const { return sentencia; }
    const QString &CodigoMotor() const { return codigoMotor; }
    // What an error of the engine means and what to do, in Spanish; "" when that is not known.
    const QString &Aclaracion() const { return aclaracion; }
    ErrorEjecucion Aclarado(const QString &que) const;
    const char *what() const noexcept override;

    // What is run before the next error is made on this thread, once: an error of something that was done before and is
    // not known yet takes the place of that one. Nothing for an empty one; quien: whose it is.
    static void Antes(const void *quien, std::function<void()> averiguar);

private:
    int numero;
    QString descripcion;
    QString sentencia;
    QString codigoMotor;
    QString aclaracion;
    QByteArray octetos;
};

// Raises a data error with a sentence for the operator.
[[noreturn]] inline void Rechazar(const QString &motivo)
{
    throw ErrorEjecucion(errores::Datos, motivo);
}

// A transaction could not begin, which came to light with its first statement.
class Q_DECL_EXPORT ErrorDeComienzo : public ErrorEjecucion
{
public:
    explicit ErrorDeComienzo(const ErrorEjecucion &causa) : ErrorEjecucion(causa) {}
};

} // namespace qvx
