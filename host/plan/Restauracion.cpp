#include "plan/Restauracion.h"

#include "data/Conexion.h"
#include "plan/Instalador.h"

#include <QFileInfo>

namespace qvx
{

namespace
{

BaseAbierta AbrirLaCopia(const QString &copia, const QString &base)
{
    const QString sujeto = archivo::LaCopia(copia);
    if (archivo::EsElMismo(copia, base)) // before it is opened: closing it would end the engine's locks
        archivo::Rechazar(sujeto, "es la base de datos que está abierta");
    archivo::RevisarCabecera(copia, sujeto);
    return archivo::Abrir(copia, sujeto, true);
}

} // namespace

QList<PlanDeCopia> PlanesDeCopia(const QString &copia, const QString &base)
{
    BaseAbierta abierta = AbrirLaCopia(copia, base);
    archivo::RevisarVersion(abierta, archivo::LaCopia(copia));
    QList<PlanDeCopia> planes;
    for (const QVariantList &fila : abierta.Filas(
             "SELECT k.Te_Cve_Tipo_Equipo, t.Te_Descripcion, "
             "(SELECT count(*) FROM Tipo_Equipo_Parte p WHERE p.Te_Cve_Tipo_Equipo = k.Te_Cve_Tipo_Equipo), "
             "(SELECT count(*) FROM Plan_Mantenimiento s WHERE s.Te_Cve_Tipo_Equipo = k.Te_Cve_Tipo_Equipo) "
             "FROM (SELECT Te_Cve_Tipo_Equipo FROM Tipo_Equipo_Parte UNION SELECT Te_Cve_Tipo_Equipo FROM "
             "Plan_Mantenimiento) k LEFT JOIN Tipo_Equipo t ON t.Te_Cve_Tipo_Equipo = k.Te_Cve_Tipo_Equipo ORDER BY 1"))
        planes.append({fila.at(0).toString(), fila.at(1).toString(), fila.at(2).toInt(), fila.at(3).toInt()});
    return planes;
}

CopiaLista::CopiaLista(const QString &copia_, const QString &base)
    : copia(copia_), provisional(base, archivo::LaCopia(copia_))
{
    const QString sujeto = archivo::LaCopia(copia);
    {
        BaseAbierta abierta = AbrirLaCopia(copia, base);
        archivo::RevisarVersion(abierta, sujeto);
        archivo::Copiar(abierta, provisional, sujeto);
    }
    conexion = AbrirProvisional(provisional.Ruta(), sujeto);
}

CopiaLista::~CopiaLista() = default;

QString CopiaLista::RestaurarTodo(const LugarDeCopias &lugar, const Firmante &firmante, const QDateTime &ahora)
{
    AnotarEstado(*conexion, firmante, "Base de datos", QFileInfo(copia).fileName(), "Restauración");
    conexion.reset();
    BaseAbierta origen = archivo::Abrir(provisional.Ruta(), archivo::LaCopia(copia), true);
    BaseAbierta base = archivo::Abrir(lugar.base, archivo::BaseDeDatos(lugar.base));
    base.Ejecutar("PRAGMA locking_mode = EXCLUSIVE"); // what is copied is what is replaced
    base.Ejecutar("BEGIN EXCLUSIVE");
    base.Ejecutar("COMMIT");
    const QString antes = RespaldarAntes(base, lugar, ahora, copia);
    base.ReemplazarPor(origen);
    return antes;
}

} // namespace qvx
