// What stands in the way of taking operations back in a plan, before it is written and after.

#include "data/Conexion.h"
#include "data/Texto.h"
#include "plan/DeshacerEnPlan.h"
#include "plan/Historia.h"

namespace qvx
{

namespace
{

// Columns whose values make a row what it is: neither who signed it nor its version.
QStringList ConSentido(DelPlan clase)
{
    QStringList columnas = TablaDe(clase).columnas;
    columnas.removeIf(
        [](const QString &columna) { return columna.startsWith("Oper_") || columna.startsWith("Fecha_"); });
    return columnas;
}

QString Nombre(DelPlan clase, const QString &clave)
{
    return (clase == DelPlan::Parte ? QString("La parte ") : QString("El servicio ")) + clave;
}

} // namespace

// Who wrote it last, as the history has it.
Obstaculo DeshacerEnPlan::Cambiada(DelPlan clase, const QString &clave, const QString &que) const
{
    const auto fila = conexion.Execute("SELECT Op_Oper, Op_Fecha, Op_Clase, Op_ID FROM Operacion WHERE Op_ID = (SELECT "
                                       "max(Op_ID) FROM "
                                           + TablaDeHistoria(clase) + " WHERE Te_Cve_Tipo_Equipo = ? AND "
                                           + ClavesEnHistoria(clase).constFirst() + " = ? AND Op_ID > ?)",
                                       {tipo, clave, primera});
    QString quien;
    if (!fila.Eof())
        quien = " " + (fila.Texto(0).isEmpty() ? "Otro programa" : fila.Texto(0)) + ", el " + fila.Texto(1) + ": «"
                + fila.Texto(2) + "» (operación " + fila.Texto(3) + ").";
    return {clase, clave, false, Nombre(clase, clave) + " del tipo de equipo " + tipo + " " + que + "." + quien};
}

QList<Obstaculo> DeshacerEnPlan::Cambiadas() const
{
    QList<Obstaculo> reparos;
    const auto agregar = [&](const Obstaculo &reparo) {
        if (!reparos.contains(reparo))
            reparos.append(reparo);
    };
    for (const DelPlan clase : TodoElPlan) {
        // A line is told of by its service.
        const DelPlan dicha = clase == DelPlan::Linea ? DelPlan::Servicio : clase;
        const QString clave = "h." + ClavesEnHistoria(dicha).constFirst();
        QStringList distintas;
        for (const QString &columna : ConSentido(clase))
            distintas.append("x." + columna + " IS DISTINCT FROM h." + columna);
        const QString hoy = "x.Te_Cve_Tipo_Equipo IS ";
        for (auto filas = conexion.Execute("SELECT DISTINCT " + clave + ", " + hoy + "NULL FROM "
                                               + ConLasDeHoy(clase, "Ultima", Quedaron(clase)) + " WHERE " + hoy
                                               + "NULL OR " + distintas.join(" OR "),
                                           ValoresDeImagen());
             !filas.Eof(); filas.MoveNext())
            agregar(Cambiada(dicha, SinBlancosAlFinal(filas.Texto(0)),
                             clase != DelPlan::Linea && filas.Valor(1).toBool() ? "ya no existe" : "cambió después"));
        for (auto filas =
                 conexion.Execute("SELECT DISTINCT " + clave + " FROM "
                                      + ConLasDeHoy(clase, "Faltante", Faltaron(clase)) + " WHERE " + hoy + "NOT NULL",
                                  ValoresDeImagen());
             !filas.Eof(); filas.MoveNext()) {
            Obstaculo reparo =
                Cambiada(dicha, SinBlancosAlFinal(filas.Texto(0)),
                         clase == DelPlan::Linea ? "cambió después" : "existe de nuevo, con la misma clave");
            reparo.claveDada = clase != DelPlan::Linea;
            agregar(reparo);
        }
    }
    // The lines of a service whose folio was given again are told of with it.
    return reparos;
}

// Keys that the operations brought and that are gone again.
QString DeshacerEnPlan::PartesQueSeVan() const
{
    return "SELECT Tep_ID FROM Historia_Parte WHERE " + Quedaron(DelPlan::Parte)
           + " AND NOT EXISTS (SELECT 1 FROM Tipo_Equipo_Parte AS p WHERE p.Te_Cve_Tipo_Equipo = "
             "Historia_Parte.Te_Cve_Tipo_Equipo AND p.Tep_ID = Historia_Parte.Tep_ID)";
}

QString DeshacerEnPlan::ServiciosQueSeVan() const
{
    return "SELECT Pm_ID FROM Historia_Servicio WHERE " + Quedaron(DelPlan::Servicio)
           + " AND NOT EXISTS (SELECT 1 FROM Plan_Mantenimiento AS s WHERE s.Te_Cve_Tipo_Equipo = "
             "Historia_Servicio.Te_Cve_Tipo_Equipo AND s.Pm_ID = Historia_Servicio.Pm_ID)";
}

// That the rows x have come to hang where they do since: what did so already is left as the operations met it.
QString DeshacerEnPlan::DeDespues(DelPlan clase) const
{
    const QString historia = " FROM " + TablaDeHistoria(clase) + " AS q WHERE " + MismaClave(clase, "q", "x");
    const QString cuelga = clase == DelPlan::Parte ? "Tep_Padre" : "Tep_ID";
    return " AND (SELECT CASE WHEN q.Hi_Lado = 'A' AND q." + cuelga + " = x." + cuelga + " THEN 0 ELSE 1 END" + historia
           + " AND q.Op_ID > ? ORDER BY q.Hi_ID LIMIT 1) = 1 AND NOT EXISTS (SELECT 1" + historia + " AND q."
           + QString(donde).replace(" AND ", " AND q.") + ")";
}

QList<Obstaculo> DeshacerEnPlan::Sueltas() const
{
    QList<Obstaculo> reparos;
    const auto leer = [&](const QString &sentencia, const QVariantList &suyos, DelPlan clase, const QString &texto) {
        for (auto filas = conexion.Execute(sentencia, suyos); !filas.Eof(); filas.MoveNext()) {
            const QString clave = SinBlancosAlFinal(filas.Texto(0));
            const Obstaculo reparo{clase, clave, false,
                                   Nombre(clase, clave) + " del tipo de equipo " + tipo + " "
                                       + texto.arg(SinBlancosAlFinal(filas.Texto(1)))};
            if (!reparos.contains(reparo))
                reparos.append(reparo);
        }
    };
    const QVariantList enPlan = QVariantList{tipo} + ValoresDeImagen() + QVariantList{primera} + valores;
    leer("SELECT x.Tep_ID, x.Tep_Padre FROM Tipo_Equipo_Parte AS x WHERE x.Te_Cve_Tipo_Equipo = ? AND x.Tep_Padre IN ("
             + PartesQueSeVan() + ")" + DeDespues(DelPlan::Parte),
         enPlan, DelPlan::Parte, "cuelga ahora de la parte %1, que se iría.");
    leer("SELECT x.Pm_ID, x.Tep_ID FROM Plan_Mantenimiento AS x WHERE x.Te_Cve_Tipo_Equipo = ? AND x.Tep_ID IN ("
             + PartesQueSeVan() + ")" + DeDespues(DelPlan::Servicio),
         enPlan, DelPlan::Servicio, "es ahora de la parte %1, que se iría.");
    leer("SELECT DISTINCT x.Pm_ID, x.Pm_ID FROM Plan_Mantenimiento_Detalle AS x WHERE x.Te_Cve_Tipo_Equipo = ? AND "
         "x.Pm_ID IN ("
             + ServiciosQueSeVan() + ")" + DeDespues(DelPlan::Linea),
         enPlan, DelPlan::Servicio, "tiene ahora líneas que quedarían sin él.");
    // What hung from no part that was there hangs from none again; what had one must find it.
    const QString tenia =
        " AND (SELECT q.Hi_Lado FROM Historia_Parte AS q WHERE q.Te_Cve_Tipo_Equipo = ? AND q.Tep_ID = "
        "h.%1 AND q.Op_ID >= ? ORDER BY q.Hi_ID LIMIT 1) = 'A'";
    const QString falta = " AND NOT EXISTS (SELECT 1 FROM Tipo_Equipo_Parte AS p WHERE p.Te_Cve_Tipo_Equipo = ? AND "
                          "p.Tep_ID = h.%1)";
    const QVariantList suyos = ValoresDeImagen() + QVariantList{tipo, tipo, primera};
    leer("SELECT h.Tep_ID, h.Tep_Padre FROM Historia_Parte AS h WHERE " + Volveran(DelPlan::Parte)
             + falta.arg("Tep_Padre") + tenia.arg("Tep_Padre"),
         suyos, DelPlan::Parte, "colgaba de la parte %1, que ya no existe.");
    leer("SELECT h.Pm_ID, h.Tep_ID FROM Historia_Servicio AS h WHERE " + Volveran(DelPlan::Servicio)
             + falta.arg("Tep_ID") + tenia.arg("Tep_ID"),
         suyos, DelPlan::Servicio, "era de la parte %1, que ya no existe.");
    return reparos;
}

QSet<qint64> DeshacerEnPlan::Posteriores(const QList<Obstaculo> &reparos) const
{
    QSet<qint64> posteriores;
    const auto leer = [&](const QString &sentencia, const QVariantList &suyos) {
        for (auto filas = conexion.Execute(sentencia, suyos); !filas.Eof(); filas.MoveNext())
            posteriores.insert(filas.Valor(0).toLongLong());
    };
    const QString historia = "SELECT DISTINCT Op_ID FROM %1 WHERE Te_Cve_Tipo_Equipo = ? AND %2 = ? AND Op_ID > ?";
    for (const Obstaculo &reparo : reparos) {
        const QVariantList suyos{tipo, reparo.clave, primera};
        if (reparo.clase == DelPlan::Parte) {
            leer(historia.arg("Historia_Parte", "Tep_ID"), suyos);
        } else {
            leer(historia.arg("Historia_Servicio", "Pm_ID"), suyos);
            leer(historia.arg("Historia_Linea", "Pm_ID"), suyos);
        }
        // The part that is missing was taken away later.
        leer("SELECT DISTINCT Op_ID FROM Historia_Parte WHERE Te_Cve_Tipo_Equipo = ? AND Op_ID > ? AND Tep_ID IN "
             "(SELECT "
                 + (reparo.clase == DelPlan::Parte
                        ? QString("Tep_Padre FROM Historia_Parte WHERE Te_Cve_Tipo_Equipo = ? AND "
                                  "Tep_ID = ?")
                        : QString("Tep_ID FROM Historia_Servicio WHERE Te_Cve_Tipo_Equipo = ? AND "
                                  "Pm_ID = ?"))
                 + ")",
             {tipo, primera, tipo, reparo.clave});
    }
    return posteriores;
}

} // namespace qvx
