#include "plan/OperacionEnCurso.h"

#include "data/Conexion.h"
#include "data/Lexico.h"
#include "plan/Formas.h"

#include <QCoreApplication>
#include <QRegularExpression>

namespace qvx
{

namespace
{

// In the order in which one stands for a transaction that does several.
namespace cambio
{
enum {
    Nada,
    Copia,
    Vaciado,
    ParteEliminada,
    Estado,
    ParteNueva,
    ParteMovida,
    ParteCambiada,
    ServicioNuevo,
    ServicioMovido,
    ServicioEliminado,
    ServicioCambiado,
    Lineas,
    Firma
};
}

bool EsAsi(const QString &forma, const char *patron)
{
    return QRegularExpression(QLatin1String("^\\s*") + QLatin1String(patron), QRegularExpression::CaseInsensitiveOption)
        .match(forma)
        .hasMatch();
}

int CambioDePartes(const QString &forma)
{
    if (EsAsi(forma, "INSERT\\s.*\\bSELECT\\b"))
        return cambio::Copia;
    if (EsAsi(forma, "INSERT\\b"))
        return cambio::ParteNueva;
    if (EsAsi(forma, "DELETE\\b"))
        return EsAsi(forma, ".*\\bTep_ID\\b") ? cambio::ParteEliminada : cambio::Vaciado;
    const QString asignaciones = forma.section(QRegularExpression("\\bWHERE\\b"), 0, 0);
    if (asignaciones.contains("Es_Cve_Estado"))
        return cambio::Estado;
    if (asignaciones.contains("Tep_Padre"))
        return cambio::ParteMovida;
    return asignaciones.contains("Tep_Descripcion") ? cambio::ParteCambiada : cambio::Firma;
}

int CambioDeServicios(const QString &forma)
{
    if (EsAsi(forma, "INSERT\\b"))
        return cambio::ServicioNuevo;
    if (EsAsi(forma, "DELETE\\b"))
        return cambio::ServicioEliminado;
    return EsAsi(forma, "UPDATE\\s.*\\bSET\\b.*\\bTep_ID\\s*=.*\\bWHERE\\b") ? cambio::ServicioMovido
                                                                             : cambio::ServicioCambiado;
}

// Where a shape gives a column to a new row, or chooses rows by it; -1 where it does neither.
int LugarDe(const QString &forma, const QString &columna)
{
    if (const int lugar = LiteralDelAlta(forma, columna); lugar >= 0)
        return lugar;
    const auto donde = forma.lastIndexOf(QRegularExpression("\\bWHERE\\b", QRegularExpression::CaseInsensitiveOption));
    const auto igualada = QRegularExpression("\\b" + columna + "\\s*=\\s*\\?").match(forma, qMax<qsizetype>(donde, 0));
    return igualada.hasMatch() ? LiteralEn(forma, igualada.capturedEnd() - 1) : -1;
}

const QString EnCurso = "(SELECT Op_ID FROM Operacion_En_Curso)";

} // namespace

int OperacionEnCurso::Cambio(const QString &forma)
{
    const QString nombre = TablaQueCambia(forma);
    if (nombre == "tipo_equipo_parte")
        return CambioDePartes(forma);
    if (nombre == "plan_mantenimiento")
        return CambioDeServicios(forma);
    return nombre == "plan_mantenimiento_detalle" ? cambio::Lineas : cambio::Nada;
}

QList<int> OperacionEnCurso::Claves(const QString &forma, int cambio)
{
    switch (cambio) {
    case cambio::Nada:
        return {};
    case cambio::Copia:
    case cambio::Vaciado:
        return {LugarDe(forma, "Te_Cve_Tipo_Equipo")};
    case cambio::ServicioNuevo:
    case cambio::ServicioMovido:
    case cambio::ServicioEliminado:
    case cambio::ServicioCambiado:
    case cambio::Lineas:
        return {LugarDe(forma, "Pm_ID"), LugarDe(forma, "Tep_ID")};
    default:
        return {LugarDe(forma, "Tep_ID"),
                forma.contains("Es_Cve_Estado") ? LugarDe(forma.section("WHERE", 0, 0), "Es_Cve_Estado") : -1};
    }
}

void OperacionEnCurso::Empezar()
{
    nombre = {};
    deshechas.clear();
    cambios.clear();
}

void OperacionEnCurso::Nombrar(const QString &clase, const QString &detalle, const QList<qint64> &deshechas_)
{
    nombre = {clase, detalle};
    deshechas = deshechas_;
}

void OperacionEnCurso::Anotar(const Conocida &conocida, const Sentencia &sentencia)
{
    if (cambios.contains(conocida.cambio))
        return;
    QStringList claves;
    for (const int lugar : conocida.claves)
        claves.append(lugar < 0 ? QString() : sentencia.valores.value(lugar).toString().trimmed());
    cambios.insert(conocida.cambio, claves);
}

bool OperacionEnCurso::Vaciado() const
{
    return cambios.contains(cambio::Vaciado);
}

OperacionEnCurso::Nombre OperacionEnCurso::Deducido() const
{
    QList<int> hechos = cambios.keys();
    std::sort(hechos.begin(), hechos.end());
    if (hechos.isEmpty())
        return {};
    const QStringList claves = cambios.value(hechos.constFirst());
    const QString parte = "Parte " + claves.value(0);
    const QString servicio =
        "Servicio " + claves.value(0) + (claves.value(1).isEmpty() ? QString() : " de la parte " + claves.value(1));
    switch (hechos.constFirst()) {
    case cambio::Copia:
        return {"Copia de plan", "Del tipo de equipo " + claves.value(0)};
    case cambio::Vaciado:
        return {"Importación", ""};
    case cambio::ParteEliminada:
        return {"Parte eliminada", parte};
    case cambio::Estado:
        return {claves.value(1) == "BA" ? "Baja" : "Reactivación", parte};
    case cambio::ParteNueva:
        return {"Parte nueva", parte};
    case cambio::ParteMovida:
        return {"Parte movida", parte};
    case cambio::ServicioNuevo:
        return {"Servicio nuevo", servicio};
    case cambio::ServicioMovido:
        return {"Servicio movido", servicio};
    case cambio::ServicioEliminado:
        return {"Servicio eliminado", servicio};
    case cambio::ServicioCambiado:
    case cambio::Lineas:
        return {"Servicio cambiado", servicio};
    default:
        return {"Parte cambiada", parte};
    }
}

QList<SentenciaConValores> OperacionEnCurso::Apertura() const
{
    if (motor == Motor::Servidor) // the database opens it by itself
        return {};
    return {{"INSERT INTO Operacion (Op_Oper, Op_Clase) VALUES (?, '')", {operador}},
            {"DELETE FROM Operacion_En_Curso", {}},
            {"INSERT INTO Operacion_En_Curso SELECT max(Op_ID), NULL FROM Operacion", {}}};
}

QList<SentenciaConValores> OperacionEnCurso::Cierre() const
{
    const Nombre como = nombre.clase.isEmpty() ? Deducido() : nombre;
    const QString programa =
        (QCoreApplication::applicationName() + QLatin1Char(' ') + QCoreApplication::applicationVersion()).trimmed();
    QStringList numeros;
    for (const qint64 deshecha : deshechas)
        numeros.append(QString::number(deshecha));
    if (motor == Motor::Servidor)
        return {{"SELECT Nombrar_Operacion(?, ?, ?, ?)",
                 {como.clase, como.detalle, programa, numeros.join(QLatin1Char(','))}}};
    QList<SentenciaConValores> ordenes{
        {"INSERT INTO Operacion_Plan (Te_Cve_Tipo_Equipo, Op_ID, Ol_Partes, Ol_Servicios, Ol_Lineas) "
         "SELECT Tipo, "
             + EnCurso
             + ", sum(Partes), sum(Servicios), sum(Lineas) FROM ("
               "SELECT Te_Cve_Tipo_Equipo AS Tipo, count(DISTINCT Tep_ID) AS Partes, 0 AS Servicios, 0 AS Lineas "
               "FROM Historia_Parte WHERE Op_ID = "
             + EnCurso
             + " GROUP BY Te_Cve_Tipo_Equipo UNION ALL "
               "SELECT Te_Cve_Tipo_Equipo, 0, count(DISTINCT Pm_ID), 0 FROM Historia_Servicio WHERE Op_ID = "
             + EnCurso
             + " GROUP BY Te_Cve_Tipo_Equipo UNION ALL "
               "SELECT Te_Cve_Tipo_Equipo, 0, 0, max(sum(Hi_Lado = 'A'), sum(Hi_Lado = 'D')) FROM Historia_Linea "
               "WHERE Op_ID = "
             + EnCurso + " GROUP BY Te_Cve_Tipo_Equipo) GROUP BY Tipo",
         {}},
        {"UPDATE Operacion SET Op_Clase = ?, Op_Detalle = ?, Op_Programa = ? WHERE Op_ID = " + EnCurso,
         {como.clase, como.detalle, programa}},
        // Statements that met no row.
        {"DELETE FROM Operacion WHERE Op_ID = " + EnCurso
             + " AND NOT EXISTS (SELECT 1 FROM Operacion_Plan WHERE Op_ID = " + EnCurso + ")",
         {}}};
    if (!numeros.isEmpty())
        ordenes.append(SentenciaConValores{
            "INSERT INTO Operacion_Deshecha (Op_ID, Od_Operacion) SELECT Operacion_En_Curso.Op_ID, value "
            "FROM Operacion_En_Curso JOIN Operacion USING (Op_ID), json_each(?)",
            {QLatin1Char('[') + numeros.join(QLatin1Char(',')) + QLatin1Char(']')}});
    ordenes.append(SentenciaConValores{"DELETE FROM Operacion_En_Curso", {}});
    return ordenes;
}

void NombrarOperacion(Conexion &conexion, const QString &clase, const QString &detalle, const QList<qint64> &deshechas)
{
    Formas::EnCurso(conexion).Nombrar(clase, detalle, deshechas);
}

void FirmarOperaciones(Conexion &conexion, const QString &operador)
{
    Formas::EnCurso(conexion).Firmar(operador);
}

} // namespace qvx
