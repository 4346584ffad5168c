#include "plan/Consultas.h"

#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"

namespace qvx
{

QString ConsultaGuardada(Conexion &conexion, const QString &nombre)
{
    const auto fila = conexion.Execute("SELECT Co_Texto FROM Consulta WHERE Co_Nombre = " + Literal(nombre));
    if (fila.Eof())
        throw ErrorEjecucion(errores::ElementoNoEncontrado, "No existe la consulta " + nombre);
    return fila["Co_Texto"];
}

} // namespace qvx
