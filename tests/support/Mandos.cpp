#include "support/Mandos.h"

#include <QFile>

namespace
{

const QString Host = "QVX|ERR-ID:1000000";

QString Documento(const Escenario &escenario)
{
    const QString ruta = escenario.Ruta("plan.xml");
    QFile archivo(ruta);
    const QByteArray texto =
        "<PlanMantenimiento><TipoEquipo Id=\"0902\"><Parte Id=\"0001\" Descripción=\"EJE\"><TipoServicio Id=\"9001\" "
        "UnidadLectura=\"HRS\" FrecuenciaLectura=\"1250.5\" FrecuenciaDias=\"30\" RequiereParo=\"SI\" Duracion=\"2.5\" "
        "Precio=\"500\" Prioridad=\"9001\"><ManoObra><Servicio Id=\"9000000001\" Cantidad=\"2\"/></ManoObra>"
        "<Refacciones/><Herramientas/></TipoServicio></Parte></TipoEquipo></PlanMantenimiento>";
    if (!archivo.open(QIODevice::WriteOnly) || archivo.write(texto) != texto.size())
        qFatal("%s", qPrintable(archivo.errorString()));
    return ruta;
}

} // namespace

const QList<Mando> &Mandos()
{
    const auto propio = [](int identificador) { return "KT580|ERR-ID:" + QString::number(identificador); };
    static const QList<Mando> mandos{
        {"parte nueva", [](Planificador &p, const Escenario &) { p.NuevaParte("N0005", "BRIDA"); },
         "INTO Registro_Cambio", propio(7500097), propio(7500096), propio(7500097), propio(7500002)},
        {"parte editada", [](Planificador &p, const Escenario &) { p.EditarParte("N0005", "BRIDA"); },
         "INTO Registro_Cambio", propio(7500097), propio(7500096), propio(7500097), propio(7500002)},
        {"etiqueta", [](Planificador &p, const Escenario &) { p.Rotular("N0005", "BRIDA"); }, "", Host, Host, Host,
         propio(7500002)},
        {"baja", [](Planificador &p, const Escenario &) { p.Retirar("N0001"); }, "INTO Registro_Cambio",
         propio(7500011), propio(7500010), propio(7500011), propio(7500002)},
        {"reactivación", [](Planificador &p, const Escenario &) { p.Reactivar("N0003"); }, "INTO Registro_Cambio",
         propio(7500015), propio(7500014), propio(7500015), propio(7500002)},
        {"parte eliminada", [](Planificador &p, const Escenario &) { p.EliminarParte("N0004"); },
         "UPDATE Tipo_Equipo_Parte", propio(7500016), propio(7500016), propio(7500016), propio(7500002)},
        {"servicio nuevo", [](Planificador &p, const Escenario &) { p.NuevoServicio("N0005", "70"); },
         "Pmd_Costo, Pmd_Cantidad", propio(7500084), propio(7500083), propio(7500084), propio(7500021)},
        {"servicio cambiado", [](Planificador &p, const Escenario &) { p.CambiarServicio("N0002", "000001", "70"); },
         "Pmd_Costo, Pmd_Cantidad", propio(7500084), propio(7500083), propio(7500084), propio(7500021)},
        {"servicio eliminado", [](Planificador &p, const Escenario &) { p.EliminarServicio("N0002", "000001"); },
         "DELETE FROM Plan_Mantenimiento  WHERE", propio(7500037), propio(7500036), propio(7500037), propio(7500021)},
        {"servicio arrastrado", [](Planificador &p, const Escenario &) { p.Mover("N0002", "000001", "N0005"); },
         "INTO Registro_Cambio", propio(7500043), propio(7500042), propio(7500043), propio(7500002)},
        {"plan copiado", [](Planificador &p, const Escenario &) { p.Copiar("0902"); },
         "into Plan_Mantenimiento_Detalle(", Host, propio(7500034), propio(7500034), "QVX|ERR-ID:1000001"},
        {"plan importado", [](Planificador &p, const Escenario &e) { p.Importar(Documento(e)); },
         "INTO Plan_Mantenimiento_Detalle", propio(7500023), propio(7500023), propio(7500023), "QVX|ERR-ID:1000001"},
    };
    return mandos;
}

const Mando &MandoDe(const QString &nombre)
{
    for (const Mando &mando : Mandos())
        if (nombre == QString::fromUtf8(mando.nombre))
            return mando;
    qFatal("Sin mando %s", qPrintable(nombre));
}
