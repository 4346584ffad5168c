#include "data/BibliotecaAparte.h"

#include "data/ErrorEjecucion.h"
#include "system/Carpetas.h"

#include <QLibrary>

namespace qvx
{

QFunctionPointer ResolverAparte(const QString &archivo, const char *entrada, const QString &falta)
{
    QLibrary biblioteca(CarpetaDeComponentes() + "/" + archivo);
    const QFunctionPointer funcion = biblioteca.resolve(entrada);
    if (!funcion)
        Rechazar(falta + " (" + biblioteca.errorString() + ")");
    return funcion;
}

} // namespace qvx
