#include "app/tipos/LecturaDeTipos.h"

#include "data/Conexion.h"
#include "data/Texto.h"

#include <QHash>
#include <algorithm>

namespace
{

// How many are active, and the last change with its operator behind it: dates compare as their texts do.
QString Cuentas(const QString &tabla)
{
    return "SELECT Te_Cve_Tipo_Equipo, COUNT(*) AS Todos, SUM(CASE WHEN Es_Cve_Estado = 'AC' THEN 1 ELSE 0 END) AS "
           "Activos, MAX(Fecha_Ult_Modif || '|' || Oper_Ult_Modif) AS Cambio FROM "
           + tabla + " GROUP BY Te_Cve_Tipo_Equipo";
}

const QString LosTipos =
    "SELECT t.Te_Cve_Tipo_Equipo, t.Te_Descripcion, t.Es_Cve_Estado, p.Todos, p.Activos, p.Cambio FROM Tipo_Equipo t "
    "LEFT JOIN ("
    + Cuentas("Tipo_Equipo_Parte") + ") p ON p.Te_Cve_Tipo_Equipo = t.Te_Cve_Tipo_Equipo ORDER BY t.Te_Cve_Tipo_Equipo";
const QString LosServicios = Cuentas("Plan_Mantenimiento");

// A part has one parent, so that from the root down each is met once; a row with the root's own key, which files of the
// oldest version may hold, would begin anew. The differences that binary fractions leave are no loss.
const QString LasCifras =
    "SELECT Tipo, Sin_Fecha, Con_Perdida, Por_Lectura, Costo, Horas FROM (WITH RECURSIVE llega (Tipo, Parte, Estado) "
    "AS (SELECT Te_Cve_Tipo_Equipo, Tep_ID, Es_Cve_Estado FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo >= ? AND "
    "Te_Cve_Tipo_Equipo <= ? AND Tep_Padre = '0000' AND Tep_ID <> '0000' UNION ALL SELECT h.Te_Cve_Tipo_Equipo, "
    "h.Tep_ID, h.Es_Cve_Estado FROM llega JOIN Tipo_Equipo_Parte h ON h.Te_Cve_Tipo_Equipo = llega.Tipo AND "
    "h.Tep_Padre = llega.Parte AND h.Tep_ID <> '0000'), "
    "lineas (Tipo, Parte, Folio, Costo) AS MATERIALIZED (SELECT Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, SUM(Pmd_Importe) "
    "FROM Plan_Mantenimiento_Detalle WHERE Te_Cve_Tipo_Equipo >= ? AND Te_Cve_Tipo_Equipo <= ? AND Pmd_Tipo IN ('01', "
    "'02') GROUP BY Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID), "
    "servicios (Tipo, Dias, Lectura, Precio, Horas, Costo) AS MATERIALIZED (SELECT s.Te_Cve_Tipo_Equipo, "
    "s.Pm_Frecuencia, s.Pm_Lectura, s.Pm_Precio, s.Pm_Tiempo_Estimado, COALESCE(lineas.Costo, 0) FROM llega JOIN "
    "Plan_Mantenimiento s ON s.Te_Cve_Tipo_Equipo = llega.Tipo AND s.Tep_ID = llega.Parte LEFT JOIN lineas ON "
    "lineas.Tipo = s.Te_Cve_Tipo_Equipo AND lineas.Parte = s.Tep_ID AND lineas.Folio = s.Pm_ID WHERE llega.Estado = "
    "'AC' AND s.Es_Cve_Estado = 'AC') "
    "SELECT Tipo, SUM(CASE WHEN Dias = 0 AND Lectura = 0 THEN 1 ELSE 0 END) AS Sin_Fecha, SUM(CASE WHEN Costo - Precio "
    "> 0.000000000001 * Costo THEN 1 ELSE 0 END) AS Con_Perdida, SUM(CASE WHEN Dias = 0 AND Lectura <> 0 THEN 1 ELSE 0 "
    "END) AS Por_Lectura, SUM(CASE WHEN Dias > 0 THEN 365.0 / Dias * Costo ELSE 0 END) AS Costo, SUM(CASE WHEN Dias > "
    "0 THEN 365.0 / Dias * Horas ELSE 0 END) AS Horas FROM servicios GROUP BY Tipo) cifras";

int Entero(const qvx::Recordset &fila, QAnyStringView campo)
{
    return static_cast<int>(fila.Numero(campo));
}

TipoDeEquipo::Cuenta Contar(const qvx::Recordset &fila)
{
    const int activos = Entero(fila, "Activos");
    return {activos, Entero(fila, "Todos") - activos, fila["Cambio"]};
}

} // namespace

QString TipoDeEquipo::UltimoCambio() const
{
    constexpr int HastaElMinuto = 16; // letters of the date
    const QString ultimo = servicios ? std::max(partes.cambio, servicios->cambio) : partes.cambio;
    return (ultimo.left(HastaElMinuto) + QLatin1Char(' ') + ultimo.section(QLatin1Char('|'), 1)).trimmed();
}

QList<TipoDeEquipo> LeerTiposDeEquipo(qvx::Conexion &conexion)
{
    QList<TipoDeEquipo> tipos;
    for (auto filas = conexion.Execute(LosTipos, {}); !filas.Eof(); filas.MoveNext())
        tipos.append({qvx::SinBlancosAlFinal(filas.Texto(0)), filas.Texto(1), qvx::SinBlancosAlFinal(filas.Texto(2)),
                      Contar(filas), std::nullopt, std::nullopt});
    return tipos;
}

void LeerServicios(qvx::Conexion &conexion, QList<TipoDeEquipo> &tipos)
{
    QHash<QString, TipoDeEquipo::Cuenta> cuentas;
    for (auto filas = conexion.Execute(LosServicios, {}); !filas.Eof(); filas.MoveNext())
        cuentas.insert(qvx::SinBlancosAlFinal(filas.Texto(0)), Contar(filas));
    for (TipoDeEquipo &tipo : tipos) {
        const TipoDeEquipo::Cuenta cuenta = cuentas.value(tipo.clave);
        if (tipo.servicios != cuenta)
            tipo.cifras.reset();
        tipo.servicios = cuenta;
    }
}

void Conservar(const QList<TipoDeEquipo> &antes, QList<TipoDeEquipo> &tipos)
{
    QHash<QString, const TipoDeEquipo *> porClave;
    for (const TipoDeEquipo &tipo : antes)
        porClave.insert(tipo.clave, &tipo);
    for (TipoDeEquipo &tipo : tipos) {
        const TipoDeEquipo *anterior = porClave.value(tipo.clave);
        if (!anterior || tipo.partes != anterior->partes)
            continue;
        tipo.servicios = anterior->servicios;
        tipo.cifras = anterior->cifras;
    }
}

void LeerCifras(qvx::Conexion &conexion, QList<TipoDeEquipo> &tipos, int desde, int hasta)
{
    QHash<QString, int> lugares;
    for (int lugar = desde; lugar <= hasta; ++lugar) {
        lugares.insert(tipos.at(lugar).clave, lugar);
        tipos[lugar].cifras = CifrasDeTipo();
    }
    const QString primera = tipos.at(desde).clave;
    const QString ultima = tipos.at(hasta).clave;
    for (auto filas = conexion.Execute(LasCifras, {primera, ultima, primera, ultima}); !filas.Eof(); filas.MoveNext()) {
        const int lugar = lugares.value(qvx::SinBlancosAlFinal(filas.Texto(0)), -1);
        if (lugar >= 0)
            tipos[lugar].cifras =
                CifrasDeTipo{Entero(filas, "Sin_Fecha"), Entero(filas, "Con_Perdida"), Entero(filas, "Por_Lectura"),
                             filas.Numero("Costo"), filas.Numero("Horas")};
    }
}
