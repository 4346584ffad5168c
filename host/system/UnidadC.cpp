#include "system/UnidadC.h"

#include <QCoreApplication>

namespace qvx
{

QString RutaEnUnidadC(const QString &ruta)
{
    if (!ruta.startsWith("C:\\", Qt::CaseInsensitive))
        return ruta;
    QString resto = ruta.mid(2);
    return QCoreApplication::applicationDirPath() + "/unidad_c" + resto.replace(QLatin1Char('\\'), QLatin1Char('/'));
}

} // namespace qvx
