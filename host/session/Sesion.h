#pragma once

#include "plan/Cambios.h"
#include "system/Exporta.h"

#include <QDateTime>
#include <QString>
#include <functional>
#include <memory>

namespace QVX_EXPORTA qvx
{

class Conexion;
class Interaccion;

// The signed-in session of the host application: connection, operator, people, clock. One per process while it lives;
// every component loaded into the process works with it.
class Sesion
{
public:
    using Reloj = std::function<QDateTime()>;

    // Becomes the process's session until it is destroyed. Raises ObjetoNoEstablecido when there is one already.
    Sesion(std::unique_ptr<qvx::Conexion> conexion, QString operador, std::unique_ptr<qvx::Interaccion> interaccion,
           Reloj reloj = &QDateTime::currentDateTime);
    ~Sesion();
    Sesion(const Sesion &) = delete;
    Sesion &operator=(const Sesion &) = delete;

    // The process's session; raises ObjetoNoEstablecido when nobody has signed in.
    static Sesion &Actual();
    static bool Abierta();

    qvx::Conexion &Conexion() { return *conexion; }
    qvx::Interaccion &Interaccion() { return *interaccion; }
    const QString &Operador() const { return operador; }
    QDateTime Ahora() const { return reloj(); }
    // The operator, signing by the session's clock.
    qvx::Firmante Firmante() const;

    // Text of the last failed data operation; shown as details of the next message when a change was not registered.
    QString ultimoErrorDatos;
    QString detallesPendientes;

private:
    std::unique_ptr<qvx::Conexion> conexion;
    QString operador;
    std::unique_ptr<qvx::Interaccion> interaccion;
    Reloj reloj;
};

} // namespace qvx
