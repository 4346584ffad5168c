#include "data/ErrorEjecucion.h"
#include "data/Momento.h"
#include "data/Texto.h"
#include "support/Averia.h"
#include "support/Plan.h"
#include "support/Prueba.h"
#include "support/Tabla.h"

#include <QFile>
#include <QRegularExpression>
#include <QTimer>

using qvx::ErrorEjecucion;

// The one way to the database: texts, statements, transactions, and how the engine finds the rows.
class PrConexion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numeros();
    void rechazos_data();
    void dialecto();
    void rechazos();
    void condena();
    void abandonada();
    void comienzo();
    void instantanea();
    void indices();
};

namespace
{

void EnEvento(const std::function<void()> &pasos)
{
    QTimer::singleShot(0, pasos);
    QCoreApplication::processEvents();
}

} // namespace

void PrConexion::numeros()
{
    QCOMPARE(qvx::NumeroATexto(1.5 * 80.1), "120.15");
    QCOMPARE(qvx::NumeroATexto(-123456789012345678.0), "-123456789012346000");
    QCOMPARE(qvx::NumeroATexto(0.0000001), "0.0000001");
    QCOMPARE(qvx::TextoANumero(qvx::NumeroATexto(1.5e22)).value_or(-1), 1.5e22);
    QCOMPARE(qvx::TextoANumero(" 12,345,678.5 ").value_or(-1), 12345678.5);
    for (const char *texto : {"", "1.2.3", "1e5", "12a", "1.5,000", "12,5", "0,125", "1,234,50", "1234,567", "1,,000"})
        QVERIFY2(!qvx::TextoANumero(texto), texto);
    QVERIFY_THROWS_EXCEPTION(ErrorEjecucion, qvx::TextoANumero(QString(400, QLatin1Char('9'))));
    QCOMPARE(qvx::NumeroConFormato(1234567.123456, "$#,##0.0000#####"), "$1,234,567.123456");
    QCOMPARE(qvx::NumeroConFormato(123456789012.1, "$#,##0.00#######"), "$123,456,789,012.10");
    QCOMPARE(qvx::NumeroConFormato(-0.0000000001, "$#,##0.00#######"), "$0.00");
    QCOMPARE(qvx::ClaveConFormato("123456", "0000"), "123456");
}

void PrConexion::rechazos_data()
{
    const Tabla<QString> fila("motivo");
    fila("DELETE FROM Producto; DELETE FROM Tipo_Gasto", "más de una sentencia");
    fila("UPDATE Producto SET Pr_Descripcion = '' -- WHERE", "comentario");
    fila("DROP TABLE Producto", "no es una consulta");
    fila("UPDATE Producto SET Pr_Descripcion = 'O'Higgins'",
         motor::Segun("near \"Higgins\": syntax error", "syntax error at or near \"Higgins\""));
    fila("SELECT * FROM Producto WHERE Pr_Descripcion = 'x",
         motor::Segun("unrecognized token", "unterminated quoted string"));
    // A doubled quote is a text's own, so what quotes that a planner types can do is change the shape.
    for (const char *sql :
         {"UPDATE Unidad SET Un_Descripcion = 'x', Es_Cve_Estado = 'BA' WHERE Un_Cve_Unidad = 'HRS' OR '1' = '1'",
          "UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'x', Tep_Padre = 'y' WHERE Tep_ID = '0002'",
          "UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'x' WHERE Tep_ID = '' OR ''=''",
          "UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = Oper_Alta WHERE Tep_ID = '0002'",
          "UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'x' WHERE Tep_ID <> '0002'",
          "UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'x'", "DELETE FROM Tipo_Equipo_Parte",
          "DELETE FROM Tipo_Gasto WHERE Tg_Cve_Tipo_Gasto IN (SELECT Tg_Cve_Tipo_Gasto FROM Tipo_Gasto)",
          "INSERT INTO Bitacora (Bi_Tabla, Bi_Clave, Bi_Accion, Bi_Oper, Bi_Fecha) VALUES ('a', 'b', 'c', 'd', 'e'), "
          "('f', 'g', 'h', 'i', 'j')",
          "INSERT INTO Bitacora (Bi_Tabla, Bi_Clave, Bi_Accion, Bi_Oper, Bi_Fecha) VALUES ('a', 'b', 'c', 'd', (SELECT "
          "Un_Descripcion FROM Unidad WHERE Un_Cve_Unidad = 'HRS'))"})
        fila(sql, "carácter inesperado");
    fila("UPDATE Plan_Mantenimiento SET Te_Cve_Tipo_Equipo = '0902' WHERE Te_Cve_Tipo_Equipo = '0900'",
         "La sentencia cambiaría el tipo de equipo de un registro");
    // What a query could do beside reading, if it called more than the system's own functions.
    for (const char *sql :
         {"SELECT pg_catalog.pg_sleep (60)", "SELECT lo_create(0)", "SELECT load_extension('x')",
          "SELECT query_to_xml('DELETE FROM Producto', true, true, '')", "SELECT * INTO Copia FROM Producto",
          "SELECT 1 UNION SELECT * FROM (WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i FROM n) SELECT i FROM n)"})
        fila(sql, "");
}

// What stands for an alias in a select list is a comparison behind WHERE.
void PrConexion::dialecto()
{
    QCOMPARE(qvx::ReescribirComun("SELECT a, b = (SELECT f(c) FROM t) FROM u WHERE x = (SELECT 1)"),
             "SELECT a, (SELECT f(c) FROM t) AS b FROM u WHERE x = (SELECT 1)");
}

void PrConexion::rechazos()
{
    QFETCH(QString, motivo);
    const Escenario escenario;
    SembrarPlan(escenario);
    const QStringList antes = escenario.Tablas();
    const QString sql = QTest::currentDataTag();
    try {
        qvx::Sesion::Actual().Conexion().Execute(sql);
        QFAIL("No falló");
    } catch (const ErrorEjecucion &error) {
        QVERIFY2(error.Descripcion().contains(motivo), qPrintable(error.Descripcion()));
        QCOMPARE(error.Sentencia(), sql);
    }
    QCOMPARE(escenario.Tablas(), antes);
}

// After a failed statement, nothing of the transaction may come to be.
void PrConexion::condena()
{
    const Escenario escenario;
    SembrarPlan(escenario);
    auto &base = qvx::Sesion::Actual().Conexion();
    const QString cambio = "UPDATE Tipo_Equipo_Parte SET Oper_Baja = 'otro' WHERE Tep_ID = '0005'";
    base.BeginTrans();
    base.Execute(cambio);
    QVERIFY_THROWS_EXCEPTION(ErrorEjecucion, base.Execute("SELECT * FROM Nada"));
    QVERIFY_THROWS_EXCEPTION(ErrorEjecucion, base.Execute("SELECT * FROM Producto"));
    QVERIFY_THROWS_EXCEPTION(ErrorEjecucion, base.CommitTrans());
    QVERIFY(escenario.Correr(cambio).isNull()); // its locks are gone already
    base.RollbackTrans();
    QVERIFY(!base.Execute("SELECT * FROM Producto").Eof());
}

// A transaction that its event leaves open is taken back when the event ends; one that an outer event opened is not.
void PrConexion::abandonada()
{
    Escenario escenario;
    SembrarPlan(escenario);
    auto &base = qvx::Sesion::Actual().Conexion();
    const QStringList antes = escenario.Tablas();
    EnEvento([&] {
        base.BeginTrans();
        base.Execute("DELETE Plan_Mantenimiento WHERE Pm_ID = '000001'");
        EnEvento([&] { base.Execute("DELETE Tipo_Equipo_Parte WHERE Tep_ID = '0001'"); });
        QVERIFY(base.EnTransaccion());
    });
    QVERIFY(!base.EnTransaccion());
    QCOMPARE(escenario.Tablas(), antes);

    // The trace tells it, to its planner alone.
    const auto permisos = QFile::permissions(qEnvironmentVariable("QVX_TRAZA"));
    QVERIFY(!permisos.testAnyFlags(QFile::ReadGroup | QFile::ReadOther));
    QVERIFY(escenario.Traza().contains("-\tABANDONADA"));
    EnEvento([&] { base.Execute("SELECT * FROM Nada"); });
    QCOMPARE(escenario.Personas().Tomar(), QStringList{"16|Quorvex|QVX|ERR-ID:1000000|" + motor::NoHayTabla("Nada")});
}

// What an event reads is of one moment, or an export would be of a plan that never was. On the embedded engine nobody
// writes meanwhile.
void PrConexion::instantanea()
{
    if (!motor::EsPostgres())
        return;
    const Escenario escenario;
    SembrarPlan(escenario);
    const auto hay = [] {
        return !qvx::Sesion::Actual()
                    .Conexion()
                    .Execute("SELECT * FROM Plan_Mantenimiento WHERE Pm_ID = '000001'")
                    .Eof();
    };
    EnEvento([&] {
        QVERIFY(hay());
        escenario.Correr("DELETE FROM Plan_Mantenimiento");
        QVERIFY(hay());
    });
    EnEvento([&] { QVERIFY(!hay()); });

    // Of a command, whatever events there are in it.
    escenario.Correr("INSERT INTO Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio) VALUES "
                     "('0900', '0', '000001', '9001')");
    const qvx::Momento momento(qvx::Sesion::Actual().Conexion());
    QVERIFY(hay());
    EnEvento([&] { QVERIFY(hay()); });
    escenario.Correr("DELETE FROM Plan_Mantenimiento");
    QVERIFY(hay());
}

// While a catalogue alone was read, as before the import's question, another program saves. The trace shows the
// transaction as if it had begun.
void PrConexion::comienzo()
{
    Escenario escenario;
    auto &base = qvx::Sesion::Actual().Conexion();
    const QString consulta = "SELECT * FROM Tipo_Equipo WHERE Te_Cve_Tipo_Equipo = '0001'";
    base.BeginTrans();
    base.Execute(consulta);
    const QVariant libre = escenario.Correr(motor::Segun("UPDATE Producto SET Pr_Descripcion = 'OTRA' RETURNING true",
                                                         "SELECT Reservar_Plan('0001', false)"));
    QVERIFY(libre.toBool());
    QVERIFY_THROWS_EXCEPTION(ErrorEjecucion, base.Execute("SELECT * FROM NoHay"));
    QVERIFY_THROWS_EXCEPTION(ErrorEjecucion, base.Execute(consulta)); // doomed all the same
    base.RollbackTrans();
    const QStringList traza = escenario.Traza();
    QCOMPARE(traza.mid(0, 2), (QStringList{"-\t" + motor::Segun("BEGIN IMMEDIATE", "BEGIN"), "1\t" + consulta}));
    QCOMPARE(traza.constLast(), "-\tROLLBACK");
    if (motor::EsPostgres())
        return;
    const auto otro = escenario.Base().Otro();
    otro->Correr("BEGIN IMMEDIATE");
    EnEvento([&] {
        base.BeginTrans();
        QVERIFY_THROWS_EXCEPTION(qvx::ErrorDeComienzo, base.Execute("SELECT * FROM Plan_Mantenimiento"));
        otro->Correr("ROLLBACK");
        // Who goes on all the same changes nothing outside it.
        QVERIFY_THROWS_EXCEPTION(ErrorEjecucion, base.Execute("DELETE Producto WHERE Pr_Cve_Producto = '1'"));
    });
    QCOMPARE(escenario.Traza(), QStringList{"!\tBEGIN IMMEDIATE  <database is locked>"});
}

// Each statement of the screen is answered from an index, on the embedded engine without statistics: none walks a table
// or sorts the tree.
void PrConexion::indices()
{
    Escenario escenario;
    const bool postgres = motor::EsPostgres();
    for (const char *tipo : {"0904", "0905", "0906"}) // the server chooses among indexes by its statistics
        if (postgres)
            SembrarGrande(escenario, tipo, 1000);
    const auto otro = escenario.Base().Otro();
    if (postgres)
        otro->Correr("ANALYZE");
    if (postgres)
        otro->Correr("SET enable_seqscan = off");
    for (const auto &[sentencia, indice] : QList<QPair<QString, QString>>{
             {"* FROM Tipo_Equipo_Parte WHERE Tep_Padre = '00900' and {T} ORDER BY Te_Cve_Tipo_Equipo, Tep_ID ASC",
              "Tep_Por_Padre"},
             {"* FROM Plan_Mantenimiento WHERE Plan_Mantenimiento.{T} AND Plan_Mantenimiento.Tep_ID = '00900' ORDER BY "
              "Pm_ID ASC",
              "Plan_Mantenimiento_"},
             {"Te_Cve_Tipo_Equipo, Version_Anterior FROM Plan_Mantenimiento WHERE {T} AND Pm_ID = '001800'",
              "Pm_Por_Folio"},
             {"* FROM Plan_Mantenimiento_Detalle WHERE {T} AND Tep_ID = '00900' AND Pm_ID = '001800'",
              "Plan_Mantenimiento_Detalle_"},
             {"MAX(Tep_Numero) AS Ultimo FROM Tipo_Equipo_Parte WHERE {T}", "Tep_Por_Numero"},
             {"MAX(Pm_Numero) AS Ultimo FROM Plan_Mantenimiento WHERE {T}", "Pm_Por_Numero"},
             {"MAX(Pmd_Numero) AS Ultimo FROM Plan_Mantenimiento_Detalle WHERE {T}", "Pmd_Por_Numero"},
             {"MAX(Pmd_Numero) AS Ultimo FROM Plan_Mantenimiento_Detalle WHERE {T} AND Pm_ID = '001800'",
              "Pmd_Por_Servicio"}}) {
        const QString plan = otro->Filas((postgres ? "EXPLAIN (COSTS OFF) SELECT " : "EXPLAIN QUERY PLAN SELECT ")
                                         + QString(sentencia).replace("{T}", "Te_Cve_Tipo_Equipo = '0904'"))
                                 .join('\n');
        static const QRegularExpression lento("Seq Scan|Sort|SCAN|TEMP B-TREE");
        QVERIFY2(plan.contains(indice, Qt::CaseInsensitive) && !plan.contains(lento),
                 qPrintable(sentencia + "\n" + plan));
    }
}

PRUEBA(PrConexion)
#include "pr_conexion.moc"
