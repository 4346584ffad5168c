#include "data/BibliotecaAparte.h"

#include "data/ErrorEjecucion.h"

#include <QFile>
#include <QFileInfo>
#include <QLibrary>
#include <dlfcn.h>

namespace qvx
{

QFunctionPointer ResolverAparte(const QString &archivo, const char *entrada, const QString &falta)
{
    Dl_info propia{};
    if (!dladdr(reinterpret_cast<const void *>(&ResolverAparte), &propia))
        Rechazar("No se conoce la carpeta del programa.");
    QLibrary biblioteca(QFileInfo(QFile::decodeName(propia.dli_fname)).absolutePath() + "/" + archivo);
    const QFunctionPointer funcion = biblioteca.resolve(entrada);
    if (!funcion)
        Rechazar(falta + " (" + biblioteca.errorString() + ")");
    return funcion;
}

} // namespace qvx
