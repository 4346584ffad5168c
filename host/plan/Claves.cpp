#include "plan/Claves.h"

#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"

#include <QRegularExpression>
#include <limits>

namespace qvx::claves
{

bool EsRaiz(const QString &parte)
{
    return parte.trimmed() == Raiz;
}

// The engines read a key's number up to its first other character.
bool DejaSiguiente(const QString &clave)
{
    static const QRegularExpression cifras("^\\s*\\+?0*([0-9]*)");
    const QString numero = cifras.match(clave).captured(1);
    return numero.size() <= 10 && numero.toLongLong() < std::numeric_limits<qint32>::max();
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
