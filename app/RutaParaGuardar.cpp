#include "app/RutaParaGuardar.h"

#include "session/Interaccion.h"
#include "session/Sesion.h"
#include "session/Sistema.h"

#include <QFileInfo>
#include <QWidget>

QString RutaParaGuardar(const QWidget &duena, const QString &titulo, const QString &filtro, const QString &nombre)
{
    const QString terminacion = filtro.mid(filtro.lastIndexOf(QLatin1Char('.')));
    QString ruta = qvx::Sesion::Actual().Interaccion().ElegirArchivo({titulo, filtro, nombre + terminacion, "", true},
                                                                     duena.window());
    if (ruta.isEmpty() || ruta.endsWith(terminacion, Qt::CaseInsensitive))
        return ruta;
    ruta += terminacion;
    // The file dialog asked about the name without it.
    if (QFileInfo::exists(ruta)
        && qvx::Sistema().Mensaje(ruta + " ya existe. ¿Desea reemplazarlo?",
                                  qvx::mensaje::SiNo + qvx::mensaje::Pregunta + qvx::mensaje::SegundoBoton, "Quorvex",
                                  duena.window()->winId(), "QVX", "ERR-ID:1000036")
               != qvx::mensaje::Si)
        return {};
    return ruta;
}
