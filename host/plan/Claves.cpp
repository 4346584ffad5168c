#include "plan/Claves.h"

#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"

#include <limits>

namespace qvx::claves
{

bool EsRaiz(const QString &parte)
{
    return parte.trimmed() == Raiz;
}

QString Mascara(Conexion &conexion, const QString &codigo, const QString &predeterminada)
{
    const auto filas = conexion.Execute("SELECT Fc_Mascara FROM Formato_Clave WHERE Fc_Codigo = " + Literal(codigo));
    return filas.Eof() ? predeterminada : filas["Fc_Mascara"];
}

// By the number column beside each key, which an index holds.
qint32 Siguiente(Conexion &conexion, const QString &tabla, const QString &columna, const QStringList &columnas,
                 const QStringList &valores)
{
    QString numero = columna;
    numero.replace("_ID", "_Numero");
    const auto filas = conexion.Execute("SELECT MAX(" + numero + ") AS Ultimo FROM " + tabla + " WHERE "
                                        + Condicion(columnas, valores));
    const double ultimo = filas.Numero("Ultimo");
    if (ultimo >= std::numeric_limits<qint32>::max())
        throw ErrorEjecucion(errores::Desbordamiento, "Desbordamiento");
    return static_cast<qint32>(ultimo) + 1;
}

} // namespace qvx::claves
