#include "plan/DeshacerEnPlan.h"

#include "data/ErrorEjecucion.h"
#include "data/SinDisparadores.h"
#include "data/Texto.h"
#include "plan/Claves.h"
#include "plan/Historia.h"

#include <optional>

namespace qvx
{

QString DeshacerEnPlan::MismaClave(DelPlan clase, const QString &una, const QString &otra)
{
    QStringList iguales{una + ".Te_Cve_Tipo_Equipo = " + otra + ".Te_Cve_Tipo_Equipo"};
    for (const QString &columna : ClavesEnHistoria(clase))
        iguales.append(una + "." + columna + " = " + otra + "." + columna);
    return iguales.join(" AND ");
}

// A table of the connection's own: of each row that the operations changed the numbers of the image that comes back, if
// it was there before, and of the last one, whether the row is there since (Ultima) or not (Faltante); and the row of
// today that has its key.
namespace
{

const QString &Reunidas(DelPlan clase)
{
    static const QString partes = "Deshacer_Parte";
    static const QString servicios = "Deshacer_Servicio";
    static const QString lineas = "Deshacer_Linea";
    return clase == DelPlan::Parte ? partes : clase == DelPlan::Servicio ? servicios : lineas;
}

} // namespace

void DeshacerEnPlan::Reunir()
{
    // The side goes along in the number. "+" lets the index by operations be taken.
    const QString imagen = "(Hi_ID * 4 + CASE Hi_Lado WHEN 'A' THEN 1 WHEN 'D' THEN 2 ELSE 0 END)";
    for (const DelPlan clase : TodoElPlan) {
        if (!conexion.TablaPropia(Reunidas(clase), "Primera INTEGER, Ultima INTEGER, Faltante INTEGER, Fila INTEGER"))
            return;
        const QString claves = ClavesEnHistoria(clase).join(", ");
        conexion.Execute("INSERT INTO " + Reunidas(clase)
                             + " SELECT CASE Primera % 4 WHEN 1 THEN Primera / 4 END, CASE Ultima % 4 WHEN 2 THEN "
                               "Ultima / 4 END, CASE Ultima % 4 WHEN 1 THEN Ultima / 4 END, x.rowid FROM (SELECT min"
                             + imagen + " AS Primera, max" + imagen + " AS Ultima, Te_Cve_Tipo_Equipo, " + claves
                             + " FROM " + TablaDeHistoria(clase) + " WHERE +" + donde + " GROUP BY " + claves
                             + ") AS h LEFT JOIN " + TablaDe(clase).nombre + " AS x ON " + MismaClave(clase, "x", "h"),
                         valores);
    }
    reunidas = true;
}

QString DeshacerEnPlan::Imagenes(DelPlan clase, const QString &columna, const QString &cual, const QString &lado) const
{
    if (reunidas)
        return "Hi_ID IN (SELECT " + columna + " FROM " + Reunidas(clase) + ")";
    return "Hi_ID IN (SELECT " + cual + "(Hi_ID) FROM " + TablaDeHistoria(clase) + " WHERE " + donde + " GROUP BY "
           + ClavesEnHistoria(clase).join(", ") + ") AND Hi_Lado = '" + lado + "'";
}

QString DeshacerEnPlan::ConLasDeHoy(DelPlan clase, const QString &columna, const QString &imagenes) const
{
    if (reunidas)
        return Reunidas(clase) + " AS r CROSS JOIN " + TablaDeHistoria(clase) + " AS h ON h.Hi_ID = r." + columna
               + " LEFT JOIN " + TablaDe(clase).nombre + " AS x ON x.rowid = r.Fila";
    return "(SELECT * FROM " + TablaDeHistoria(clase) + " WHERE " + imagenes + ") AS h LEFT JOIN "
           + TablaDe(clase).nombre + " AS x ON " + MismaClave(clase, "x", "h");
}

// What the triggers would have noted of rows of today. How many.
int DeshacerEnPlan::Anotar(DelPlan clase, const QString &lado, const QString &cuales, const QVariantList &suyos) const
{
    QString columnas = TablaDe(clase).columnas.join(", ");
    if (TablaDe(clase).firma >= 0)
        columnas += ", Version, Version_Anterior, Oper_Anterior, Fecha_Anterior";
    return conexion
        .Execute("INSERT INTO " + TablaDeHistoria(clase) + " (Op_ID, Hi_Lado, " + columnas
                     + ") SELECT (SELECT Op_ID FROM Operacion_En_Curso), '" + lado + "', " + columnas + " FROM "
                     + TablaDe(clase).nombre + " WHERE " + cuales,
                 suyos)
        .Afectadas();
}

int DeshacerEnPlan::Borrar(DelPlan clase, bool conHistoria) const
{
    const QString claves = ClavesEnHistoria(clase).join(", ");
    const QString borrado = "DELETE FROM " + TablaDe(clase).nombre + " WHERE ";
    if (!reunidas)
        return conexion
            .Execute(borrado + "Te_Cve_Tipo_Equipo = ? AND (" + claves + ") IN (SELECT " + claves + " FROM "
                         + TablaDeHistoria(clase) + " WHERE " + Quedaron(clase) + ")",
                     QVariantList{tipo} + valores)
            .Afectadas();
    const QString cuales = "rowid IN (SELECT Fila FROM " + Reunidas(clase) + " WHERE Ultima IS NOT NULL)";
    if (conHistoria)
        Anotar(clase, "A", cuales, {});
    return conexion.Execute(borrado + cuales, {}).Afectadas();
}

// The columns of a table, with places for a new signature.
QStringList ConFirmaNueva(DelPlan clase)
{
    QStringList columnas = TablaDe(clase).columnas;
    if (const int firma = TablaDe(clase).firma; firma >= 0)
        columnas[firma] = columnas[firma + 1] = "?";
    return columnas;
}

int DeshacerEnPlan::Devolver(DelPlan clase, const QList<Obstaculo> &dadas, bool conHistoria) const
{
    QVariantList suyos = FirmaDe(clase) + ValoresDeImagen();
    QString salvo;
    for (const Obstaculo &dada : dadas) {
        // What hangs from a key that is another's now comes back with its row.
        const bool suya = dada.clase == DelPlan::Servicio ? clase != DelPlan::Parte : clase == DelPlan::Parte;
        if (!suya)
            continue;
        salvo += " AND " + ClavesEnHistoria(dada.clase).constFirst() + " <> ?";
        suyos.append(dada.clave);
    }
    // New rows get the next numbers of the engine.
    QVariantList ultimaFila;
    if (conHistoria)
        ultimaFila.append(
            conexion.Execute("SELECT coalesce(max(rowid), 0) AS Fila FROM " + TablaDe(clase).nombre, {}).Valor(0));
    const int devueltas =
        conexion
            .Execute("INSERT INTO " + TablaDe(clase).nombre + " (" + TablaDe(clase).columnas.join(", ") + ") SELECT "
                         + ConFirmaNueva(clase).join(", ") + " FROM " + TablaDeHistoria(clase) + " WHERE "
                         + Volveran(clase) + salvo + " ORDER BY Hi_ID",
                     suyos)
            .Afectadas();
    if (conHistoria && Anotar(clase, "D", "rowid > ?", ultimaFila) != devueltas)
        qvx::Rechazar("La historia de lo que se deshace no se pudo escribir entera. No se cambió nada. Revise la base "
                      "de datos (Herramientas → Revisar integridad).");
    return devueltas;
}

// Rows whose keys are others' now come back under the next free ones, and what came back with them hangs from these:
// parts first.
void DeshacerEnPlan::DevolverConOtraClave(Deshecho &deshecho, const QList<Obstaculo> &dadas) const
{
    QList<QPair<QString, QString>> partesNuevas;
    const auto colgar = [&](DelPlan clase, const QString &columna, const QString &condicion,
                            const QVariantList &suyos) {
        for (const auto &[vieja, nueva] : std::as_const(partesNuevas))
            conexion.Execute("UPDATE " + TablaDe(clase).nombre + " SET " + columna
                                 + " = ? WHERE Te_Cve_Tipo_Equipo = ? "
                                   "AND "
                                 + columna + " = ? AND " + condicion,
                             QVariantList{nueva, tipo, vieja} + suyos);
    };
    for (const DelPlan clase : {DelPlan::Parte, DelPlan::Servicio})
        for (const Obstaculo &dada : dadas) {
            if (dada.clase != clase)
                continue;
            const QString nueva = ClaveLibre(clase);
            deshecho.clavesNuevas.append((clase == DelPlan::Parte ? "Parte " : "Servicio ") + dada.clave + ": ahora "
                                         + nueva);
            if (clase == DelPlan::Parte) {
                deshecho.partes += Copiar(DelPlan::Parte, dada, nueva);
                partesNuevas.append({dada.clave, nueva});
                continue;
            }
            deshecho.servicios += Copiar(DelPlan::Servicio, dada, nueva);
            deshecho.lineas += Copiar(DelPlan::Linea, dada, nueva);
            colgar(DelPlan::Servicio, "Tep_ID", "Pm_ID = ?", {nueva});
            colgar(DelPlan::Linea, "Tep_ID", "Pm_ID = ?", {nueva});
        }
    // Only what came back just now under its own key: the rest hangs from the part that has the key.
    const auto devueltas = [&](DelPlan clase, DelPlan deQuien, const QString &columna) {
        const QString clave = ClavesEnHistoria(deQuien).constFirst();
        QString condicion =
            clave + " IN (SELECT " + clave + " FROM " + TablaDeHistoria(clase) + " WHERE " + Volveran(clase) + ")";
        QVariantList suyos = ValoresDeImagen();
        for (const Obstaculo &dada : dadas)
            if (dada.clase == deQuien) {
                condicion += " AND " + clave + " <> ?";
                suyos.append(dada.clave);
            }
        colgar(clase, columna, condicion, suyos);
    };
    devueltas(DelPlan::Parte, DelPlan::Parte, "Tep_Padre");
    devueltas(DelPlan::Servicio, DelPlan::Servicio, "Tep_ID");
    devueltas(DelPlan::Linea, DelPlan::Servicio, "Tep_ID");
}

QString DeshacerEnPlan::ClaveLibre(DelPlan clase) const
{
    const QString tabla = TablaDe(clase).nombre;
    const qint32 numero =
        claves::Siguiente(conexion, tabla, ClavesEnHistoria(clase).constFirst(), {"Te_Cve_Tipo_Equipo"}, {tipo});
    return ClaveConFormato(QString::number(numero), claves::Mascara(conexion, "FTO_" + tabla.toUpper(), claves::Raiz));
}

// Brings back the row, or the lines, of a key that is another's now, with a new key.
int DeshacerEnPlan::Copiar(DelPlan clase, const Obstaculo &dada, const QString &nueva) const
{
    const QString columna = ClavesEnHistoria(dada.clase).constFirst();
    QStringList de = ConFirmaNueva(clase);
    de[TablaDe(clase).columnas.indexOf(columna)] = "?"; // before the signature
    const QVariantList suyos = QVariantList{nueva} + FirmaDe(clase);
    return conexion
        .Execute("INSERT INTO " + TablaDe(clase).nombre + " (" + TablaDe(clase).columnas.join(", ") + ") SELECT "
                     + de.join(", ") + " FROM " + TablaDeHistoria(clase) + " WHERE " + Volveran(clase) + " AND "
                     + columna + " = ? ORDER BY Hi_ID",
                 suyos + ValoresDeImagen() + QVariantList{dada.clave})
        .Afectadas();
}

// A service whose lines alone changed is signed as well: whoever has it open is told when he saves.
void DeshacerEnPlan::FirmarServicios() const
{
    conexion.Execute(
        "UPDATE Plan_Mantenimiento SET Oper_Ult_Modif = ?, Fecha_Ult_Modif = ? WHERE Te_Cve_Tipo_Equipo = ? "
        "AND Pm_ID IN (SELECT Pm_ID FROM Historia_Linea WHERE "
            + donde + ") AND Pm_ID NOT IN (SELECT Pm_ID FROM Historia_Servicio WHERE " + donde + ")",
        QVariantList{firmante.operador, firmante.fecha(), tipo} + valores + valores);
}

// Every part and service that the operations changed is in the change log, as the screen writes it.
void DeshacerEnPlan::Registrar() const
{
    const QVariantList firma{firmante.operador, firmante.fecha()};
    const QString alta = "INSERT INTO Registro_Cambio (Rc_Tabla, Rc_Clave, Rc_Oper, Rc_Fecha) SELECT DISTINCT ";
    conexion.Execute(alta + "'Tipo_Equipo_Parte', rtrim(Tep_ID) || '|' || ?, ?, ? FROM Historia_Parte WHERE " + donde,
                     QVariantList{tipo} + firma + valores);
    conexion.Execute(alta
                         + "'Plan_Mantenimiento', ? || '|' || rtrim(Pm_ID) || '|' || rtrim(Tep_ID), ?, ? FROM "
                           "Historia_Servicio WHERE "
                         + donde,
                     QVariantList{tipo} + firma + valores);
}

void DeshacerEnPlan::Escribir(Deshecho &deshecho, const QList<Obstaculo> &dadas) const
{
    FirmarServicios(); // the first change: from here on the transaction has its operation
    {
        // Row by row the triggers would take longer than all the rest.
        std::optional<SinDisparadores> reposo;
        if (reunidas)
            reposo.emplace(conexion);
        const bool conHistoria = reposo && reposo->Reposan();
        const int lineas = Borrar(DelPlan::Linea, conHistoria);
        const int servicios = Borrar(DelPlan::Servicio, conHistoria);
        const int partes = Borrar(DelPlan::Parte, conHistoria);
        deshecho.partes += qMax(partes, Devolver(DelPlan::Parte, dadas, conHistoria));
        deshecho.servicios += qMax(servicios, Devolver(DelPlan::Servicio, dadas, conHistoria));
        deshecho.lineas += qMax(lineas, Devolver(DelPlan::Linea, dadas, conHistoria));
    }
    DevolverConOtraClave(deshecho, dadas);
}

} // namespace qvx
