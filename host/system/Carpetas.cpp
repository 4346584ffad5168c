#include "system/Carpetas.h"

#include "data/ErrorEjecucion.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <dlfcn.h>

namespace qvx
{

namespace
{

// Without links: the loader may know the library's folder by another name, from which its neighbours are not found.
const QString &CarpetaPropia()
{
    static const QString carpeta = [] {
        Dl_info propia{};
        if (!dladdr(reinterpret_cast<const void *>(&Instalado), &propia))
            Rechazar("No se conoce la carpeta del programa.");
        return QFileInfo(QFile::decodeName(propia.dli_fname)).canonicalPath();
    }();
    return carpeta;
}

} // namespace

bool Instalado()
{
    return QFileInfo(CarpetaPropia() + "/" QVX_COMPONENTES).isDir();
}

QString CarpetaDeComponentes()
{
    return Instalado() ? CarpetaPropia() + "/" QVX_COMPONENTES : CarpetaPropia();
}

QString CarpetaDeDatos()
{
    return Instalado() ? QDir::cleanPath(CarpetaPropia() + "/" QVX_DATOS) : QString();
}

} // namespace qvx
