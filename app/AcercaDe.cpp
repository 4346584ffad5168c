#include "app/AcercaDe.h"

#include "app/Trampas.h"
#include "app/reportes/LibroXlsx.h"
#include "data/ClienteServidor.h"
#include "data/Conexion.h"
#include "plan/Guion.h"
#include "session/Interaccion.h"
#include "session/Sistema.h"
#include "xml/Documento.h"

#include <fontconfig/fontconfig.h>

namespace
{

// "2.14.1".
QString VersionDeFuentes()
{
    const int version = FcGetVersion();
    return QString("%1.%2.%3").arg(version / 10000).arg(version / 100 % 100).arg(version % 100);
}

} // namespace

void MostrarAcercaDe(const QWidget &ventana, const QString &nombreDeBase, bool enServidor)
{
    ConTrampa(ventana, 1000063, [&] {
        const QString motor = Base().Execute(enServidor ? "SELECT current_setting('server_version') AS Version_Motor"
                                                        : "SELECT sqlite_version() AS Version_Motor",
                                             {})["Version_Motor"];
        QStringList bibliotecas{QString("Qt %1 (LGPL 3)").arg(qVersion()), "libxml2 " + qvx::VersionDeXml() + " (MIT)",
                                "libxlsxwriter " + VersionDeXlsx() + " (BSD)",
                                "fontconfig " + VersionDeFuentes() + " (MIT)"};
        if (enServidor)
            bibliotecas << "libpq " + qvx::Cliente().VersionDelCliente() + " y PostgreSQL " + motor
                               + " (licencia PostgreSQL)";
        else
            bibliotecas << "SQLite " + motor + " (dominio público)";
        qvx::Sistema().Mensaje("Quorvex " QVX_VERSION ", plan de mantenimiento por tipo de equipo.\n\nBase de datos: "
                                   + nombreDeBase + "\nVersión de su esquema: " + QString::number(qvx::VersionEsquema)
                                   + "\n\nFunciona con " + bibliotecas.join(", ")
                                   + ".\n\nSe puede usar, copiar y cambiar según la licencia MIT, © 2026 Quorvex.",
                               qvx::mensaje::Informacion, "Acerca de Quorvex", ventana.window()->winId(), "QVX",
                               "ERR-ID:1000064");
    });
}
