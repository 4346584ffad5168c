#include "app/historial/CambioDeOperacion.h"

#include "app/historial/TextosDeHistorial.h"
#include "data/Conexion.h"
#include "data/Momento.h"

#include <QSet>
#include <utility>

namespace historial
{

namespace
{

using qvx::DelPlan;
using qvx::FilaDelPlan;
using qvx::FilasDelPlan;

// The keys of rows that others hang from and that did not change themselves.
class Faltantes
{
public:
    void Nombrar(const QList<FilaDelPlan> &filas, int lugar)
    {
        for (const FilaDelPlan &fila : filas)
            nombradas.insert(qvx::ClaveDe(fila, lugar));
    }
    void Estan(const QList<FilaDelPlan> &filas, int lugar)
    {
        for (const FilaDelPlan &fila : filas)
            presentes.insert(qvx::ClaveDe(fila, lugar));
    }
    QSet<QString> Claves() const { return nombradas - presentes; }

private:
    QSet<QString> nombradas;
    QSet<QString> presentes;
};

// Rows by their key: of the plan as it is, and those that are gone as they last were.
QList<FilaDelPlan> LeerContexto(qvx::Conexion &conexion, DelPlan clase, const QString &tipo, QSet<QString> claves)
{
    QList<FilaDelPlan> filas;
    if (claves.isEmpty())
        return filas;
    const auto columnas = qvx::TablaDe(clase).columnas;
    const QString &clave = qvx::ClavesEnHistoria(clase).constFirst();
    const int lugar = static_cast<int>(columnas.indexOf(clave));
    const auto leer = [&](const QString &de, const QVariantList &valores) {
        for (auto leidas = conexion.Execute("SELECT " + columnas.join(", ") + " FROM " + de, valores); !leidas.Eof();
             leidas.MoveNext()) {
            const FilaDelPlan fila = qvx::FilaLeida(leidas, static_cast<int>(columnas.size()));
            if (claves.remove(qvx::ClaveDe(fila, lugar)))
                filas.append(fila);
        }
    };
    constexpr int PocasClaves = 50; // of more the plan is read at one go
    const QString deLaClave = " WHERE Te_Cve_Tipo_Equipo = ? AND " + clave + " = ?";
    if (claves.size() > PocasClaves)
        leer(qvx::TablaDe(clase).nombre + " WHERE Te_Cve_Tipo_Equipo = ?", {tipo});
    else
        for (const QString &una : QSet<QString>(claves))
            leer(qvx::TablaDe(clase).nombre + deLaClave, {tipo, una});
    for (const QString &una : QSet<QString>(claves))
        leer(qvx::TablaDeHistoria(clase) + deLaClave + " ORDER BY Hi_ID DESC LIMIT 1", {tipo, una});
    return filas;
}

void PonerContexto(qvx::Conexion &conexion, qvx::CambioDelPlan &cambio)
{
    const QString &tipo = cambio.antes.tipoEquipo;
    Faltantes servicios;
    Faltantes partes;
    for (const FilasDelPlan *lado : {&cambio.antes, &cambio.despues}) {
        servicios.Nombrar(lado->lineas, qvx::linea::Folio);
        servicios.Estan(lado->servicios, qvx::servicio::Folio);
        partes.Nombrar(lado->lineas, qvx::linea::Parte);
        partes.Nombrar(lado->servicios, qvx::servicio::Parte);
        partes.Nombrar(lado->partes, qvx::parte::Padre);
        partes.Estan(lado->partes, qvx::parte::Clave);
    }
    const auto enAmbos = [&](QList<FilaDelPlan> FilasDelPlan::*filas, const QList<FilaDelPlan> &contexto) {
        cambio.antes.*filas += contexto;
        cambio.despues.*filas += contexto;
    };
    enAmbos(&FilasDelPlan::servicios, LeerContexto(conexion, DelPlan::Servicio, tipo, servicios.Claves()));
    enAmbos(&FilasDelPlan::partes, LeerContexto(conexion, DelPlan::Parte, tipo, partes.Claves()));
    qvx::OrdenarFilas(cambio.antes);
    qvx::OrdenarFilas(cambio.despues);
}

} // namespace

comparar::Comparados LoQueHicieron(qvx::Conexion &conexion, const QString &tipo, const QList<qint64> &operaciones)
{
    const qvx::Momento momento(conexion);
    auto cambio = qvx::CambioEnElPlan(conexion, tipo, operaciones);
    PonerContexto(conexion, cambio);
    const QString cuales = (operaciones.size() == 1 ? " la operación " : " las operaciones ") + Lista(operaciones);
    auto comparados =
        comparar::CompararFilas(conexion, std::move(cambio.antes), std::move(cambio.despues), "después de" + cuales);
    comparados.antes.titulo = comparados.antes.Titulo() + ", antes de" + cuales;
    return comparados;
}

comparar::Comparados LoQueVuelve(qvx::Conexion &conexion, const QString &tipo, const QList<qint64> &operaciones)
{
    const qvx::Momento momento(conexion);
    auto cambio = qvx::CambioEnElPlan(conexion, tipo, operaciones);
    PonerContexto(conexion, cambio);
    return comparar::CompararFilas(conexion, std::move(cambio.despues), std::move(cambio.antes), "como quedaría");
}

} // namespace historial
