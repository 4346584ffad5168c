#include "system/UnidadC.h"

#include "system/Carpetas.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace qvx
{

QString RutaEnUnidadC(const QString &ruta)
{
    if (!ruta.startsWith("C:\\", Qt::CaseInsensitive))
        return ruta;
    QString unidad = QCoreApplication::applicationDirPath() + "/unidad_c";
    if (Instalado() && !QFileInfo(unidad).isDir())
        unidad = CarpetaDeDatos() + "/unidad_c";
    QString resto = ruta.mid(2);
    return unidad + resto.replace(QLatin1Char('\\'), QLatin1Char('/'));
}

} // namespace qvx
