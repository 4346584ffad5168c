#pragma once

#include "data/ErrorEjecucion.h"
#include "plan/EsquemaServidor.h"

#include <memory>

struct Argumentos;

namespace qvx
{
class Conexion;
class Interaccion;
class Sesion;
} // namespace qvx

// The server that the command line names lets nobody in. Its own words, or the library's, are the details.
class SinAcceso : public qvx::ErrorEjecucion
{
public:
    SinAcceso(const QString &descripcion, QString detalles_)
        : ErrorEjecucion(qvx::errores::Datos, descripcion), detalles(std::move(detalles_))
    {
    }
    const QString &Detalles() const { return detalles; }

private:
    QString detalles;
};

// Raises an ErrorEjecucion when the command line names a file that is not there: opening would make it.
void ExigirBase(const Argumentos &argumentos);
// Opens the database that the command line names: a file, which is made when it is not there, or that of a server,
// whose password is not asked for. Raises an ErrorEjecucion in Spanish.
std::unique_ptr<qvx::Conexion> AbrirBase(const Argumentos &argumentos);
// Likewise for a window: the person is asked for the password. Nothing when he gave up.
std::unique_ptr<qvx::Conexion> AbrirBaseConVentana(const Argumentos &argumentos);

// Creates the schema on the server that the command line names, or brings it to this program's version.
qvx::CambioDeEsquema CambiarEsquema(const Argumentos &argumentos);

// Who signs the changes. Raises an ErrorEjecucion for a name that cannot.
QString OperadorDe(const Argumentos &argumentos, qvx::Conexion &conexion);
// Signs in: on a server its user is the operator, and its clock counts.
std::unique_ptr<qvx::Sesion> IniciarSesion(const Argumentos &argumentos, std::unique_ptr<qvx::Conexion> conexion,
                                           std::unique_ptr<qvx::Interaccion> interaccion);
