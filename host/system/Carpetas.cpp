#include "system/Carpetas.h"

#include "data/ErrorEjecucion.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <dlfcn.h>
#include <filesystem>
#include <system_error>

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

QString HacerCarpeta(const QString &carpeta)
{
    std::error_code fallo; // the toolkit does not say which
    std::filesystem::create_directories(QFile::encodeName(carpeta).toStdString(), fallo);
    return fallo ? qt_error_string(fallo.value()) : QString();
}

} // namespace qvx
