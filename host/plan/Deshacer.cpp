#include "plan/Deshacer.h"

#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "data/Transaccion.h"
#include "plan/Catalogos.h"
#include "plan/Claves.h"
#include "plan/Historia.h"
#include "plan/OperacionEnCurso.h"

#include <QSet>
#include <algorithm>

namespace qvx
{

namespace
{

constexpr int MaximoReparos = 50;
const QString NadaCambio = " No se cambió nada.";

// What stands in the way of one part or service.
struct Obstaculo {
    DelPlan clase = DelPlan::Parte;
    QString clave;
    bool claveDada = false; // its key was given again
    QString texto;

    bool operator==(const Obstaculo &otro) const { return clase == otro.clase && clave == otro.clave; }
};

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

// One plan, and the operations that are taken back in it. Inside a transaction.
class EnUnPlan
{
public:
    EnUnPlan(Conexion &conexion_, const Firmante &firmante_, const QString &tipo_, const QList<qint64> &operaciones)
        : conexion(conexion_)
        , firmante(firmante_)
        , tipo(tipo_)
        , primera(*std::min_element(operaciones.begin(), operaciones.end()))
        , donde("Te_Cve_Tipo_Equipo = ? AND Op_ID IN (" + QStringList(operaciones.size(), "?").join(", ") + ")")
    {
        valores = {tipo};
        for (const qint64 operacion : operaciones)
            valores.append(operacion);
    }

    // Rows that are not as the operations left them, and keys that were given again.
    QList<Obstaculo> Cambiadas() const;
    // Writes, and says how many rows it wrote. nuevas: the keys that rows get whose own were given again.
    void Escribir(Deshecho &deshecho, const QList<Obstaculo> &dadas) const;
    // What must not be now that it is written: something hangs from what went, or what came back lost its part.
    QList<Obstaculo> Sueltas() const;
    // Signs and logs what was written.
    void Firmar() const;
    // Later operations that changed these rows.
    QSet<qint64> Posteriores(const QList<Obstaculo> &reparos) const;

private:
    QString Imagenes(DelPlan clase, const QString &cual, const QString &lado) const
    {
        return "Hi_ID IN (SELECT " + cual + "(Hi_ID) FROM " + TablaDeHistoria(clase) + " WHERE " + donde + " GROUP BY "
               + ClavesEnHistoria(clase).join(", ") + ") AND Hi_Lado = '" + lado + "'";
    }
    QString Volveran(DelPlan clase) const { return Imagenes(clase, "min", "A"); }
    QString Quedaron(DelPlan clase) const { return Imagenes(clase, "max", "D"); }
    QString Faltaron(DelPlan clase) const { return Imagenes(clase, "max", "A"); }
    // Whether the rows of two tables are of one key.
    static QString MismaClave(DelPlan clase, const QString &una, const QString &otra);
    QString PartesQueSeVan() const;
    QString ServiciosQueSeVan() const;
    Obstaculo Cambiada(DelPlan clase, const QString &clave, const QString &que) const;
    int Borrar(DelPlan clase) const;
    int Devolver(DelPlan clase, const QList<Obstaculo> &dadas) const;
    void DevolverConOtraClave(Deshecho &deshecho, const QList<Obstaculo> &dadas) const;
    int Copiar(DelPlan clase, const Obstaculo &dada, const QString &nueva) const;
    QString ClaveLibre(DelPlan clase) const;
    QVariantList FirmaDe(DelPlan clase) const
    {
        return TablaDe(clase).firma < 0 ? QVariantList() : QVariantList{firmante.operador, firmante.fecha()};
    }
    QString DeDespues(DelPlan clase) const;

    Conexion &conexion;
    const Firmante &firmante;
    const QString tipo;
    const qint64 primera;
    const QString donde;
    QVariantList valores;
};

QString EnUnPlan::MismaClave(DelPlan clase, const QString &una, const QString &otra)
{
    QStringList iguales{una + ".Te_Cve_Tipo_Equipo = " + otra + ".Te_Cve_Tipo_Equipo"};
    for (const QString &columna : ClavesEnHistoria(clase))
        iguales.append(una + "." + columna + " = " + otra + "." + columna);
    return iguales.join(" AND ");
}

// Who wrote it last, as the history has it.
Obstaculo EnUnPlan::Cambiada(DelPlan clase, const QString &clave, const QString &que) const
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

QList<Obstaculo> EnUnPlan::Cambiadas() const
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
        const QString tabla = TablaDe(clase).nombre;
        QStringList distintas;
        for (const QString &columna : ConSentido(clase))
            distintas.append("x." + columna + " IS DISTINCT FROM h." + columna);
        const QString historia = "(SELECT * FROM " + TablaDeHistoria(clase) + " WHERE %1) AS h";
        for (auto filas = conexion.Execute("SELECT DISTINCT " + clave + ", x.Te_Cve_Tipo_Equipo IS NULL FROM "
                                               + historia.arg(Quedaron(clase)) + " LEFT JOIN " + tabla + " AS x ON "
                                               + MismaClave(clase, "x", "h") + " WHERE x.Te_Cve_Tipo_Equipo IS NULL OR "
                                               + distintas.join(" OR "),
                                           valores);
             !filas.Eof(); filas.MoveNext())
            agregar(Cambiada(dicha, SinBlancosAlFinal(filas.Texto(0)),
                             clase != DelPlan::Linea && filas.Valor(1).toBool() ? "ya no existe" : "cambió después"));
        for (auto filas = conexion.Execute("SELECT DISTINCT " + clave + " FROM " + historia.arg(Faltaron(clase))
                                               + " JOIN " + tabla + " AS x ON " + MismaClave(clase, "x", "h"),
                                           valores);
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

int EnUnPlan::Borrar(DelPlan clase) const
{
    const QString claves = ClavesEnHistoria(clase).join(", ");
    return conexion
        .Execute("DELETE FROM " + TablaDe(clase).nombre + " WHERE Te_Cve_Tipo_Equipo = ? AND (" + claves
                     + ") IN (SELECT " + claves + " FROM " + TablaDeHistoria(clase) + " WHERE " + Quedaron(clase) + ")",
                 QVariantList{tipo} + valores)
        .Afectadas();
}

// The columns of a table, with places for a new signature.
QStringList ConFirmaNueva(DelPlan clase)
{
    QStringList columnas = TablaDe(clase).columnas;
    if (const int firma = TablaDe(clase).firma; firma >= 0)
        columnas[firma] = columnas[firma + 1] = "?";
    return columnas;
}

int EnUnPlan::Devolver(DelPlan clase, const QList<Obstaculo> &dadas) const
{
    QVariantList suyos = FirmaDe(clase) + valores;
    QString salvo;
    for (const Obstaculo &dada : dadas) {
        // What hangs from a key that is another's now comes back with its row.
        const bool suya = dada.clase == DelPlan::Servicio ? clase != DelPlan::Parte : clase == DelPlan::Parte;
        if (!suya)
            continue;
        salvo += " AND " + ClavesEnHistoria(dada.clase).constFirst() + " <> ?";
        suyos.append(dada.clave);
    }
    return conexion
        .Execute("INSERT INTO " + TablaDe(clase).nombre + " (" + TablaDe(clase).columnas.join(", ") + ") SELECT "
                     + ConFirmaNueva(clase).join(", ") + " FROM " + TablaDeHistoria(clase) + " WHERE " + Volveran(clase)
                     + salvo + " ORDER BY Hi_ID",
                 suyos)
        .Afectadas();
}

// Rows whose keys are others' now come back under the next free ones, and what came back with them hangs from these:
// parts first.
void EnUnPlan::DevolverConOtraClave(Deshecho &deshecho, const QList<Obstaculo> &dadas) const
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
        QVariantList suyos = valores;
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

QString EnUnPlan::ClaveLibre(DelPlan clase) const
{
    const QString tabla = TablaDe(clase).nombre;
    const qint32 numero =
        claves::Siguiente(conexion, tabla, ClavesEnHistoria(clase).constFirst(), {"Te_Cve_Tipo_Equipo"}, {tipo});
    return ClaveConFormato(QString::number(numero), claves::Mascara(conexion, "FTO_" + tabla.toUpper(), claves::Raiz));
}

// Brings back the row, or the lines, of a key that is another's now, with a new key.
int EnUnPlan::Copiar(DelPlan clase, const Obstaculo &dada, const QString &nueva) const
{
    const QString columna = ClavesEnHistoria(dada.clase).constFirst();
    QStringList de = ConFirmaNueva(clase);
    de[TablaDe(clase).columnas.indexOf(columna)] = "?"; // before the signature
    const QVariantList suyos = QVariantList{nueva} + FirmaDe(clase);
    return conexion
        .Execute("INSERT INTO " + TablaDe(clase).nombre + " (" + TablaDe(clase).columnas.join(", ") + ") SELECT "
                     + de.join(", ") + " FROM " + TablaDeHistoria(clase) + " WHERE " + Volveran(clase) + " AND "
                     + columna + " = ? ORDER BY Hi_ID",
                 suyos + valores + QVariantList{dada.clave})
        .Afectadas();
}

// A service whose lines alone changed is signed as well: whoever has it open is told when he saves. Every part and
// service that the operations changed is in the change log, as the screen writes it.
void EnUnPlan::Firmar() const
{
    const QVariantList firma{firmante.operador, firmante.fecha()};
    conexion.Execute(
        "UPDATE Plan_Mantenimiento SET Oper_Ult_Modif = ?, Fecha_Ult_Modif = ? WHERE Te_Cve_Tipo_Equipo = ? "
        "AND Pm_ID IN (SELECT Pm_ID FROM Historia_Linea WHERE "
            + donde + ") AND Pm_ID NOT IN (SELECT Pm_ID FROM Historia_Servicio WHERE " + donde + ")",
        firma + QVariantList{tipo} + valores + valores);
    const QString alta = "INSERT INTO Registro_Cambio (Rc_Tabla, Rc_Clave, Rc_Oper, Rc_Fecha) SELECT DISTINCT ";
    conexion.Execute(alta + "'Tipo_Equipo_Parte', rtrim(Tep_ID) || '|' || ?, ?, ? FROM Historia_Parte WHERE " + donde,
                     QVariantList{tipo} + firma + valores);
    conexion.Execute(alta
                         + "'Plan_Mantenimiento', ? || '|' || rtrim(Pm_ID) || '|' || rtrim(Tep_ID), ?, ? FROM "
                           "Historia_Servicio WHERE "
                         + donde,
                     QVariantList{tipo} + firma + valores);
}

void EnUnPlan::Escribir(Deshecho &deshecho, const QList<Obstaculo> &dadas) const
{
    const int lineas = Borrar(DelPlan::Linea);
    const int servicios = Borrar(DelPlan::Servicio);
    const int partes = Borrar(DelPlan::Parte);
    deshecho.partes += qMax(partes, Devolver(DelPlan::Parte, dadas));
    deshecho.servicios += qMax(servicios, Devolver(DelPlan::Servicio, dadas));
    deshecho.lineas += qMax(lineas, Devolver(DelPlan::Linea, dadas));
    DevolverConOtraClave(deshecho, dadas);
}

// Keys that the operations brought and that are gone again.
QString EnUnPlan::PartesQueSeVan() const
{
    return "SELECT Tep_ID FROM Historia_Parte WHERE " + Quedaron(DelPlan::Parte)
           + " AND NOT EXISTS (SELECT 1 FROM Tipo_Equipo_Parte AS p WHERE p.Te_Cve_Tipo_Equipo = "
             "Historia_Parte.Te_Cve_Tipo_Equipo AND p.Tep_ID = Historia_Parte.Tep_ID)";
}

QString EnUnPlan::ServiciosQueSeVan() const
{
    return "SELECT Pm_ID FROM Historia_Servicio WHERE " + Quedaron(DelPlan::Servicio)
           + " AND NOT EXISTS (SELECT 1 FROM Plan_Mantenimiento AS s WHERE s.Te_Cve_Tipo_Equipo = "
             "Historia_Servicio.Te_Cve_Tipo_Equipo AND s.Pm_ID = Historia_Servicio.Pm_ID)";
}

// That the rows x have come to hang where they do since: what did so already is left as the operations met it.
QString EnUnPlan::DeDespues(DelPlan clase) const
{
    const QString historia = " FROM " + TablaDeHistoria(clase) + " AS q WHERE " + MismaClave(clase, "q", "x");
    const QString cuelga = clase == DelPlan::Parte ? "Tep_Padre" : "Tep_ID";
    return " AND (SELECT CASE WHEN q.Hi_Lado = 'A' AND q." + cuelga + " = x." + cuelga + " THEN 0 ELSE 1 END" + historia
           + " AND q.Op_ID > ? ORDER BY q.Hi_ID LIMIT 1) = 1 AND NOT EXISTS (SELECT 1" + historia + " AND q."
           + QString(donde).replace(" AND ", " AND q.") + ")";
}

QList<Obstaculo> EnUnPlan::Sueltas() const
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
    const QVariantList enPlan = QVariantList{tipo} + valores + QVariantList{primera} + valores;
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
    const QVariantList suyos = valores + QVariantList{tipo, tipo, primera};
    leer("SELECT h.Tep_ID, h.Tep_Padre FROM Historia_Parte AS h WHERE " + Volveran(DelPlan::Parte)
             + falta.arg("Tep_Padre") + tenia.arg("Tep_Padre"),
         suyos, DelPlan::Parte, "colgaba de la parte %1, que ya no existe.");
    leer("SELECT h.Pm_ID, h.Tep_ID FROM Historia_Servicio AS h WHERE " + Volveran(DelPlan::Servicio)
             + falta.arg("Tep_ID") + tenia.arg("Tep_ID"),
         suyos, DelPlan::Servicio, "era de la parte %1, que ya no existe.");
    return reparos;
}

QSet<qint64> EnUnPlan::Posteriores(const QList<Obstaculo> &reparos) const
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

// The plans of operations, each held from here on, and on offer.
QStringList Tomar(Conexion &conexion, const QList<qint64> &operaciones, const QString &soloTipo)
{
    QStringList tipos;
    for (const qint64 operacion : operaciones)
        for (auto filas = conexion.Execute("SELECT Te_Cve_Tipo_Equipo FROM Operacion_Plan WHERE Op_ID = ? ORDER BY 1",
                                           {operacion});
             !filas.Eof(); filas.MoveNext())
            if (const QString tipo = SinBlancosAlFinal(filas.Texto(0)); !tipos.contains(tipo))
                tipos.append(tipo);
    if (!soloTipo.isEmpty())
        tipos = {soloTipo};
    std::sort(tipos.begin(), tipos.end()); // in one order for all, so that nobody waits crosswise
    if (tipos.isEmpty())
        qvx::Rechazar("No hay plan que cambiar." + NadaCambio);
    for (const QString &tipo : tipos) {
        conexion.Execute("SELECT 1 AS Hay FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = ? LIMIT 1", {tipo});
        if (DescripcionDeCatalogo(conexion, "TIPO_EQUIPO", tipo).isEmpty())
            qvx::Rechazar("El tipo de equipo " + tipo + " no existe o está dado de baja." + NadaCambio);
    }
    return tipos;
}

// For people: of many only the first.
QString Lista(const QList<qint64> &operaciones)
{
    constexpr int Dichas = 20;
    QStringList textos;
    for (const qint64 operacion : operaciones.mid(0, Dichas))
        textos.append(QString::number(operacion));
    return textos.join(", ") + (operaciones.size() > Dichas ? QString("…") : QString());
}

struct Peticion {
    QList<qint64> operaciones;
    QString soloTipo; // of the operations, only what they did to this plan
    QString clase;
    bool conOtraClave = false;
};

// Those of which nothing but what they did to the one plan is left to take back.
QList<qint64> DeEstePlan(Conexion &conexion, const Peticion &peticion)
{
    QList<qint64> enteras = peticion.operaciones;
    for (auto filas =
             conexion.Execute("SELECT DISTINCT Op_ID FROM Operacion_Plan WHERE Te_Cve_Tipo_Equipo <> ? AND Op_ID "
                              ">= ?",
                              {peticion.soloTipo, peticion.operaciones.constLast()});
         !filas.Eof(); filas.MoveNext())
        enteras.removeOne(filas.Valor(0).toLongLong());
    return enteras;
}

// One attempt, in a transaction of its own, which stays only when it is no rehearsal and nothing is in the way. What is
// in the way, by plan.
QList<QPair<QString, QList<Obstaculo>>> Intentar(Conexion &conexion, const Firmante &firmante, const Peticion &peticion,
                                                 bool ensayo, Deshecho &deshecho)
{
    Transaccion transaccion(conexion);
    const QStringList tipos = Tomar(conexion, peticion.operaciones, peticion.soloTipo);
    deshecho = {};
    deshecho.operaciones = peticion.operaciones;
    deshecho.tipos = tipos;
    QList<QPair<QString, QList<Obstaculo>>> reparos;
    bool impedido = false;
    for (const QString &tipo : tipos) {
        const EnUnPlan plan(conexion, firmante, tipo, peticion.operaciones);
        QList<Obstaculo> suyos = plan.Cambiadas();
        QList<Obstaculo> dadas;
        if (peticion.conOtraClave)
            for (const Obstaculo &reparo : std::as_const(suyos))
                if (reparo.claveDada)
                    dadas.append(reparo);
        for (const Obstaculo &dada : std::as_const(dadas))
            suyos.removeOne(dada);
        if (suyos.isEmpty() && !impedido) {
            plan.Escribir(deshecho, dadas);
            suyos = plan.Sueltas();
            plan.Firmar();
        }
        impedido = impedido || !suyos.isEmpty();
        reparos.append({tipo, suyos});
    }
    if (impedido || ensayo)
        return reparos;
    const QList<qint64> deshechas = peticion.soloTipo.isEmpty() ? peticion.operaciones : DeEstePlan(conexion, peticion);
    const bool varias = peticion.operaciones.size() > 1;
    QString detalle = (varias ? "Operaciones " : "Operación ") + Lista(peticion.operaciones);
    if (!peticion.soloTipo.isEmpty())
        detalle = QString("El plan como estaba antes de la operación %1").arg(peticion.operaciones.constLast());
    NombrarOperacion(conexion, peticion.clase, detalle, deshechas);
    transaccion.Confirmar();
    const auto ultima =
        deshechas.isEmpty()
            ? conexion.Execute("SELECT max(Op_ID) AS Numero FROM Operacion_Plan WHERE Te_Cve_Tipo_Equipo = ?",
                               {tipos.constFirst()})
            : conexion.Execute("SELECT max(Op_ID) AS Numero FROM Operacion_Deshecha WHERE Od_Operacion = ?",
                               {deshechas.constFirst()});
    deshecho.numero = ultima.Valor(0).toLongLong();
    return reparos;
}

QSet<qint64> Posteriores(Conexion &conexion, const Firmante &firmante, const QList<qint64> &operaciones,
                         const QList<QPair<QString, QList<Obstaculo>>> &reparos)
{
    QSet<qint64> posteriores;
    for (const auto &[tipo, suyos] : reparos)
        posteriores += EnUnPlan(conexion, firmante, tipo, operaciones).Posteriores(suyos);
    return posteriores;
}

QList<qint64> DeNuevasAViejas(const QSet<qint64> &numeros)
{
    QList<qint64> ordenados(numeros.begin(), numeros.end());
    std::sort(ordenados.begin(), ordenados.end(), std::greater<>());
    return ordenados;
}

Deshecho Resultado(Deshecho deshecho, const QList<QPair<QString, QList<Obstaculo>>> &reparos)
{
    bool soloClaves = true;
    int cuantos = 0;
    for (const auto &[tipo, suyos] : reparos)
        for (const Obstaculo &reparo : suyos) {
            soloClaves = soloClaves && reparo.claveDada;
            if (++cuantos <= MaximoReparos)
                deshecho.reparos.append(reparo.texto);
        }
    deshecho.masReparos = qMax(0, cuantos - MaximoReparos);
    deshecho.bastaConOtraClave = cuantos > 0 && soloClaves;
    return deshecho;
}

void RevisarQueEstan(Conexion &conexion, const QList<qint64> &operaciones)
{
    if (operaciones.isEmpty())
        qvx::Rechazar("No se dijo qué operación deshacer." + NadaCambio);
    for (const qint64 numero : operaciones) {
        FiltroDeHistoria filtro;
        filtro.numero = numero;
        const QList<Operacion> halladas = LeerOperaciones(conexion, filtro);
        if (halladas.isEmpty())
            qvx::Rechazar(QString("La operación %1 no existe, o su historia fue depurada.").arg(numero) + NadaCambio);
        // Together with what took it back it is taken back to what was before.
        if (const qint64 por = halladas.constFirst().deshechaPor; por != 0 && !operaciones.contains(por))
            qvx::Rechazar(QString("La operación %1 ya está deshecha por la operación %2.")
                              .arg(numero)
                              .arg(halladas.constFirst().deshechaPor)
                          + NadaCambio);
    }
}

// With the later operations that are in the way, until none is.
Deshecho ConPosteriores(Conexion &conexion, const Firmante &firmante, Peticion peticion, bool ensayo)
{
    Deshecho deshecho;
    while (true) {
        const auto reparos = Intentar(conexion, firmante, peticion, ensayo, deshecho);
        QSet<qint64> todas(peticion.operaciones.begin(), peticion.operaciones.end());
        const auto antes = todas.size();
        todas += Posteriores(conexion, firmante, peticion.operaciones, reparos);
        if (todas.size() == antes)
            return Resultado(deshecho, reparos);
        peticion.operaciones = DeNuevasAViejas(todas);
    }
}

} // namespace

Deshecho Deshacer(Conexion &conexion, const Firmante &firmante_, const QList<qint64> &operaciones, AlDeshacer modo,
                  bool ensayo)
{
    const Firmante firmante{firmante_.operador, [fecha = firmante_.fecha()] { return fecha; }};
    RevisarQueEstan(conexion, operaciones);
    const Peticion peticion{
        DeNuevasAViejas({operaciones.begin(), operaciones.end()}), {}, ClaseDeshacer, modo == AlDeshacer::ConOtraClave};
    if (modo == AlDeshacer::ConPosteriores)
        return ConPosteriores(conexion, firmante, peticion, ensayo);
    Deshecho deshecho;
    const auto reparos = Intentar(conexion, firmante, peticion, ensayo, deshecho);
    deshecho = Resultado(deshecho, reparos);
    if (!deshecho.SePuede())
        deshecho.bastaConPosteriores = ConPosteriores(conexion, firmante, peticion, true).SePuede();
    return deshecho;
}

Deshecho Rehacer(Conexion &conexion, const Firmante &firmante_, qint64 operacion, bool ensayo)
{
    const Firmante firmante{firmante_.operador, [fecha = firmante_.fecha()] { return fecha; }};
    RevisarQueEstan(conexion, {operacion});
    FiltroDeHistoria filtro;
    filtro.numero = operacion;
    if (LeerOperaciones(conexion, filtro).constFirst().deshace.isEmpty())
        qvx::Rechazar(QString("La operación %1 no deshizo ninguna otra: no hay nada que rehacer.").arg(operacion)
                      + NadaCambio);
    Deshecho deshecho;
    const auto reparos = Intentar(conexion, firmante, {{operacion}, {}, ClaseRehacer, false}, ensayo, deshecho);
    return Resultado(deshecho, reparos);
}

Deshecho DejarComoAntesDe(Conexion &conexion, const Firmante &firmante_, const QString &tipoEquipo, qint64 operacion,
                          bool ensayo)
{
    const Firmante firmante{firmante_.operador, [fecha = firmante_.fecha()] { return fecha; }};
    const QString tipo = SinBlancosAlFinal(tipoEquipo);
    QList<qint64> operaciones;
    for (auto filas = conexion.Execute("SELECT Op_ID FROM Operacion_Plan WHERE Te_Cve_Tipo_Equipo = ? AND Op_ID >= ? "
                                       "ORDER BY Op_ID DESC",
                                       {tipo, operacion});
         !filas.Eof(); filas.MoveNext())
        operaciones.append(filas.Valor(0).toLongLong());
    if (operaciones.isEmpty() || operaciones.constLast() != operacion)
        qvx::Rechazar(QString("La operación %1 no cambió el plan del tipo de equipo %2, o su historia fue depurada.")
                          .arg(QString::number(operacion), tipo)
                      + NadaCambio);
    Deshecho deshecho;
    const auto reparos = Intentar(conexion, firmante, {operaciones, tipo, ClaseDeshacer, false}, ensayo, deshecho);
    return Resultado(deshecho, reparos);
}

} // namespace qvx
