#include "app/Reporte.h"

#include "controls/InteraccionQt.h"
#include "session/Interaccion.h"

#include <QGuiApplication>
#include <QTextStream>

void Escribir(FILE *archivo, const QString &texto)
{
    QTextStream(archivo) << texto << Qt::endl;
}

int Reportar(const QString &error, const QString &detalles)
{
    Escribir(stderr, detalles.isEmpty() ? error : error + '\n' + detalles);
    const auto *aplicacion = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    if (aplicacion && QGuiApplication::platformName() != "offscreen")
        qvx::InteraccionQt().Mensaje({error, qvx::mensaje::Critico, "Quorvex", 0, "QVX", "ERR-ID:1000002", detalles});
    return salida::Fallido;
}
