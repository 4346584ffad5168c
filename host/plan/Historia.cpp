#include "plan/Historia.h"

#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "data/Momento.h"
#include "data/Texto.h"
#include "data/Transaccion.h"
#include "plan/OperacionEnCurso.h"

#include <QHash>
#include <QSet>

namespace qvx
{

namespace
{

// Who took back what: an operation stands while no operation that stands takes it back. Those that do are newer.
QHash<qint64, qint64> Deshechas(Conexion &conexion, QHash<qint64, QList<qint64>> &deshacen)
{
    QHash<qint64, qint64> por;
    for (auto filas = conexion.Execute("SELECT Op_ID, Od_Operacion FROM Operacion_Deshecha ORDER BY Op_ID DESC, "
                                       "Od_Operacion",
                                       {});
         !filas.Eof(); filas.MoveNext()) {
        const qint64 numero = filas.Valor(0).toLongLong();
        const qint64 deshecha = filas.Valor(1).toLongLong();
        deshacen[numero].append(deshecha);
        if (!por.contains(numero) && !por.contains(deshecha))
            por.insert(deshecha, numero);
    }
    return por;
}

// Parts of one condition, and their values.
struct Donde {
    QStringList condiciones;
    QVariantList valores;

    void Si(bool hay, const QString &condicion, const QVariantList &suyos)
    {
        if (!hay)
            return;
        condiciones.append(condicion);
        valores += suyos;
    }
};

Donde Condiciones(const FiltroDeHistoria &filtro)
{
    Donde donde;
    donde.Si(true, "Operacion.Op_ID < ?", {filtro.anteriorA});
    donde.Si(filtro.numero > 0, "Operacion.Op_ID = ?", {filtro.numero});
    donde.Si(!filtro.operador.isEmpty(), "Op_Oper = ?", {filtro.operador});
    donde.Si(filtro.desconocido, "Op_Oper = ?", {""});
    donde.Si(!filtro.desde.isEmpty(), "Op_Fecha >= ?", {filtro.desde});
    donde.Si(!filtro.hasta.isEmpty(), "Op_Fecha < ?", {filtro.hasta + QLatin1String(" 99")});
    donde.Si(!filtro.tipoEquipo.isEmpty(),
             "Operacion.Op_ID IN (SELECT Op_ID FROM Operacion_Plan WHERE Te_Cve_Tipo_Equipo = ?)", {filtro.tipoEquipo});
    donde.Si(!filtro.parte.isEmpty(),
             "Operacion.Op_ID IN (SELECT Op_ID FROM Historia_Parte WHERE Te_Cve_Tipo_Equipo = ? AND Tep_ID = ? UNION "
             "SELECT Op_ID FROM Historia_Servicio WHERE Te_Cve_Tipo_Equipo = ? AND Tep_ID = ?)",
             {filtro.tipoEquipo, filtro.parte, filtro.tipoEquipo, filtro.parte});
    donde.Si(!filtro.folio.isEmpty(),
             "Operacion.Op_ID IN (SELECT Op_ID FROM Historia_Servicio WHERE Te_Cve_Tipo_Equipo = ? AND Pm_ID = ?)",
             {filtro.tipoEquipo, filtro.folio});
    return donde;
}

QString Marcas(qsizetype cuantas)
{
    return QStringList(cuantas, "?").join(", ");
}

QVariantList Numeros(const QList<qint64> &operaciones)
{
    return {operaciones.begin(), operaciones.end()};
}

// The first image of each row, or the last one, of those that a condition chooses.
QString Extremos(DelPlan clase, const QString &cual, const QString &donde)
{
    return "SELECT " + cual + "(Hi_ID) FROM " + TablaDeHistoria(clase) + " WHERE Te_Cve_Tipo_Equipo = ? AND " + donde
           + " GROUP BY " + ClavesEnHistoria(clase).join(", ");
}

QString Identidad(DelPlan clase, const FilaDelPlan &fila)
{
    QStringList claves;
    for (const QString &columna : ClavesEnHistoria(clase))
        claves.append(ClaveDe(fila, static_cast<int>(TablaDe(clase).columnas.indexOf(columna))));
    return claves.join(QLatin1Char('|'));
}

QList<FilaDelPlan> Imagenes(Conexion &conexion, DelPlan clase, const QString &lado, const QString &extremos,
                            const QVariantList &valores)
{
    const QStringList &columnas = TablaDe(clase).columnas;
    QList<FilaDelPlan> filas;
    for (auto leidas =
             conexion.Execute("SELECT " + columnas.join(", ") + " FROM " + TablaDeHistoria(clase) + " WHERE Hi_ID IN ("
                                  + extremos + ") AND Hi_Lado = ? ORDER BY " + ClavesEnHistoria(clase).join(", "),
                              valores + QVariantList{lado});
         !leidas.Eof(); leidas.MoveNext())
        filas.append(FilaLeida(leidas, static_cast<int>(columnas.size())));
    return filas;
}

// Both sides without the rows that are the same.
void QuitarIguales(DelPlan clase, QList<FilaDelPlan> &antes, QList<FilaDelPlan> &despues)
{
    QHash<QString, const FilaDelPlan *> deAntes;
    for (const FilaDelPlan &fila : antes)
        deAntes.insert(Identidad(clase, fila), &fila);
    QSet<QString> iguales;
    for (const FilaDelPlan &fila : despues) {
        const FilaDelPlan *const otra = deAntes.value(Identidad(clase, fila));
        if (otra && SonIguales(TablaDe(clase), *otra, fila))
            iguales.insert(Identidad(clase, fila));
    }
    const auto quitar = [&](QList<FilaDelPlan> &filas) {
        filas.removeIf([&](const FilaDelPlan &fila) { return iguales.contains(Identidad(clase, fila)); });
    };
    quitar(antes);
    quitar(despues);
}

QList<FilaDelPlan> &De(FilasDelPlan &filas, DelPlan clase)
{
    return clase == DelPlan::Parte ? filas.partes : clase == DelPlan::Servicio ? filas.servicios : filas.lineas;
}

qint64 Ultima(Conexion &conexion, const QString &tipoEquipo, const QString &operador, bool rehacer)
{
    FiltroDeHistoria filtro;
    filtro.tipoEquipo = tipoEquipo;
    filtro.operador = operador;
    filtro.maximo = 100;
    while (true) {
        const QList<Operacion> operaciones = LeerOperaciones(conexion, filtro);
        for (const Operacion &operacion : operaciones) {
            const bool deshacer = operacion.clase == ClaseDeshacer;
            if (operacion.deshechaPor == 0 && (rehacer ? deshacer : operacion.deshace.isEmpty() && !deshacer))
                return operacion.numero;
        }
        if (operaciones.size() < filtro.maximo)
            return 0;
        filtro.anteriorA = operaciones.constLast().numero;
    }
}

} // namespace

const QString &TablaDeHistoria(DelPlan clase)
{
    static const QString partes = "Historia_Parte";
    static const QString servicios = "Historia_Servicio";
    static const QString lineas = "Historia_Linea";
    return clase == DelPlan::Parte ? partes : clase == DelPlan::Servicio ? servicios : lineas;
}

const QStringList &ClavesEnHistoria(DelPlan clase)
{
    static const QStringList partes{"Tep_ID"};
    static const QStringList servicios{"Pm_ID"};
    static const QStringList lineas{"Tep_ID", "Pm_ID", "Pmd_ID"};
    return clase == DelPlan::Parte ? partes : clase == DelPlan::Servicio ? servicios : lineas;
}

QList<Operacion> LeerOperaciones(Conexion &conexion, const FiltroDeHistoria &filtro)
{
    const Momento momento(conexion);
    QHash<qint64, QList<qint64>> deshacen;
    const QHash<qint64, qint64> deshechas = Deshechas(conexion, deshacen);
    const Donde donde = Condiciones(filtro);
    // What other programs did is counted here: nobody did it then.
    const QString cuenta = "coalesce(Ol_%1, (SELECT count(DISTINCT %2) FROM %3 WHERE %3.Op_ID = Operacion.Op_ID AND "
                           "%3.Te_Cve_Tipo_Equipo = Operacion_Plan.Te_Cve_Tipo_Equipo))";
    auto filas = conexion.Execute(
        "SELECT Operacion.Op_ID, Op_Oper, Op_Fecha, Op_Clase, Op_Detalle, Op_Programa, Te_Cve_Tipo_Equipo, "
            + cuenta.arg("Partes", "Tep_ID", "Historia_Parte") + ", "
            + cuenta.arg("Servicios", "Pm_ID", "Historia_Servicio") + ", "
            + cuenta.arg("Lineas", "Pm_ID || '|' || Pmd_ID", "Historia_Linea") + " FROM (SELECT * FROM Operacion WHERE "
            + donde.condiciones.join(" AND ")
            + " ORDER BY Op_ID DESC LIMIT ?) AS Operacion LEFT JOIN Operacion_Plan ON Operacion_Plan.Op_ID = "
              "Operacion.Op_ID ORDER BY Operacion.Op_ID DESC, Te_Cve_Tipo_Equipo",
        donde.valores + QVariantList{filtro.maximo});
    QList<Operacion> operaciones;
    for (; !filas.Eof(); filas.MoveNext()) {
        const qint64 numero = filas.Valor(0).toLongLong();
        if (operaciones.isEmpty() || operaciones.constLast().numero != numero) {
            Operacion nueva;
            nueva.numero = numero;
            nueva.operador = filas.Texto(1);
            nueva.fecha = filas.Texto(2);
            nueva.clase = filas.Texto(3);
            nueva.detalle = filas.Texto(4);
            nueva.programa = filas.Texto(5);
            nueva.deshace = deshacen.value(numero);
            nueva.deshechaPor = deshechas.value(numero);
            operaciones.append(nueva);
        }
        Operacion &operacion = operaciones.last();
        operacion.tipos.append(SinBlancosAlFinal(filas.Texto(6)));
        operacion.partes += filas.Valor(7).toInt();
        operacion.servicios += filas.Valor(8).toInt();
        operacion.lineas += filas.Valor(9).toInt();
    }
    return operaciones;
}

qint64 UltimaDeshacible(Conexion &conexion, const QString &tipoEquipo, const QString &operador)
{
    return Ultima(conexion, tipoEquipo, operador, false);
}

qint64 UltimaRehacible(Conexion &conexion, const QString &tipoEquipo, const QString &operador)
{
    return Ultima(conexion, tipoEquipo, operador, true);
}

CambioDelPlan CambioEnElPlan(Conexion &conexion, const QString &tipoEquipo, const QList<qint64> &operaciones)
{
    const Momento momento(conexion);
    const QString tipo = SinBlancosAlFinal(tipoEquipo);
    CambioDelPlan cambio{{tipo, {}, {}, {}}, {tipo, {}, {}, {}}};
    const QString donde = "Op_ID IN (" + Marcas(operaciones.size()) + ")";
    const QVariantList valores = QVariantList{tipo} + Numeros(operaciones);
    for (const DelPlan clase : TodoElPlan) {
        QList<FilaDelPlan> &antes = De(cambio.antes, clase);
        QList<FilaDelPlan> &despues = De(cambio.despues, clase);
        antes = Imagenes(conexion, clase, "A", Extremos(clase, "min", donde), valores);
        despues = Imagenes(conexion, clase, "D", Extremos(clase, "max", donde), valores);
        QuitarIguales(clase, antes, despues);
    }
    return cambio;
}

FilasDelPlan PlanAntesDe(Conexion &conexion, const QString &tipoEquipo, qint64 operacion)
{
    const Momento momento(conexion);
    const auto primera = conexion.Execute("SELECT min(Op_ID) AS Primera FROM Operacion", {});
    if (primera.Valor(0).isNull() || operacion < primera.Valor(0).toLongLong())
        qvx::Rechazar(
            QString("La historia no llega hasta la operación %1: fue depurada o nunca existió.").arg(operacion));
    FilasDelPlan plan = LeerFilas(conexion, tipoEquipo);
    for (const DelPlan clase : TodoElPlan) {
        QHash<QString, FilaDelPlan> porClave;
        for (const FilaDelPlan &fila : plan.De(clase))
            porClave.insert(Identidad(clase, fila), fila);
        const QString extremos = Extremos(clase, "min", "Op_ID >= ?");
        const QVariantList valores{tipoEquipo, operacion};
        for (const FilaDelPlan &fila : Imagenes(conexion, clase, "D", extremos, valores))
            porClave.remove(Identidad(clase, fila)); // it came later
        for (const FilaDelPlan &fila : Imagenes(conexion, clase, "A", extremos, valores))
            porClave.insert(Identidad(clase, fila), fila);
        De(plan, clase) = porClave.values();
    }
    OrdenarFilas(plan);
    return plan;
}

FilasDelPlan PlanAlFinDe(Conexion &conexion, const QString &tipoEquipo, const QString &dia)
{
    const Momento momento(conexion);
    const auto siguiente =
        conexion.Execute("SELECT min(Op_ID) AS Siguiente FROM Operacion WHERE Op_Fecha > ?", {dia + " 99"});
    if (siguiente.Valor(0).isNull())
        return LeerFilas(conexion, tipoEquipo);
    return PlanAntesDe(conexion, tipoEquipo, siguiente.Valor(0).toLongLong());
}

int DepurarHistoria(Conexion &conexion, const QString &antesDe)
{
    constexpr int Bloque = 100;
    int depuradas = 0;
    while (true) {
        Transaccion transaccion(conexion);
        QList<qint64> numeros;
        for (auto filas = conexion.Execute("SELECT Op_ID, Op_Fecha FROM Operacion ORDER BY Op_ID LIMIT ?", {Bloque});
             !filas.Eof() && filas.Texto(1) < antesDe; filas.MoveNext())
            numeros.append(filas.Valor(0).toLongLong());
        for (const qint64 numero : numeros)
            for (const char *borrado :
                 {"DELETE FROM Operacion WHERE Op_ID = ?", "DELETE FROM Operacion_Plan WHERE Op_ID = ?",
                  "DELETE FROM Operacion_Deshecha WHERE Op_ID = ?", "DELETE FROM Historia_Parte WHERE Op_ID = ?",
                  "DELETE FROM Historia_Servicio WHERE Op_ID = ?", "DELETE FROM Historia_Linea WHERE Op_ID = ?"})
                conexion.Execute(QLatin1String(borrado), {numero});
        transaccion.Confirmar();
        depuradas += static_cast<int>(numeros.size());
        if (numeros.size() < Bloque)
            return depuradas;
    }
}

} // namespace qvx
