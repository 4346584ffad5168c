#include "data/ErrorEjecucion.h"
#include "data/Lexico.h"
#include "data/Texto.h"
#include "support/Averia.h"
#include "support/Plan.h"
#include "support/Tabla.h"

#include <QFile>

using qvx::ErrorEjecucion;

// The one way to the database: texts, statements, transactions.
class PrConexion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numeros();
    void formas();
    void rechazos_data();
    void rechazos();
    void campos();
    void condena();
    void abandonada();
    void bloqueada();
    void traza();
};

void PrConexion::numeros()
{
    QCOMPARE(qvx::NumeroATexto(0.1 + 0.2), "0.30000000000000004");
    QCOMPARE(qvx::NumeroATexto(1234.5), "1234.5");
    QCOMPARE(qvx::NumeroATexto(-0.0), "0");
    QCOMPARE(qvx::NumeroATexto(0.0000001), "0.0000001");
    QCOMPARE(qvx::TextoANumero(qvx::NumeroATexto(1.5e22)).value_or(-1), 1.5e22);
    QCOMPARE(qvx::TextoANumero("1,234.5").value_or(-1), 1234.5);
    QCOMPARE(qvx::TextoANumero(" .5 ").value_or(-1), 0.5);
    for (const char *texto : {"", "1.2.3", "1e5", "12a", "$5", "1.5,000", ",5", "."})
        QVERIFY2(!qvx::TextoANumero(texto), texto);
    QVERIFY_EXCEPTION_THROWN(qvx::TextoANumero(QString(400, QLatin1Char('9'))), ErrorEjecucion);

    QCOMPARE(qvx::NumeroConFormato(1.5, "#,##0.000######"), "1.500");
    QCOMPARE(qvx::NumeroConFormato(1234567.123456, "$#,##0.0000#####"), "$1,234,567.123456");
    QCOMPARE(qvx::NumeroConFormato(0.1 + 0.2, "$#,##0.00#######"), "$0.30");
    QCOMPARE(qvx::NumeroConFormato(-0.0000000001, "$#,##0.00#######"), "$0.00");
    QCOMPARE(qvx::NumeroConFormato(-1000, "#,##0.######"), "-1,000");
    QCOMPARE(qvx::ClaveConFormato(" 12 ", "0000"), "0012");
    QCOMPARE(qvx::ClaveConFormato("123456", "0000"), "123456");
    QCOMPARE(qvx::ClaveConFormato("HR", "0000"), "HR");
}

// A doubled quote is a text's own, so what a typed text can do is change the shape.
void PrConexion::formas()
{
    const auto permitida = [](const QString &sql) { return qvx::FormaPermitida(qvx::Analizar(sql).forma); };
    // As the system composes them.
    for (const char *sql :
         {"SELECT MAX(a) AS b FROM t WHERE c = 'x' OR d IN (SELECT e FROM u) ORDER BY 1",
          "INSERT INTO t (   a,    b ,   c ) VALUES(   '0900',    -3, 'x','y' )",
          "UPDATE t SET    a = '',    b= 'f'WHERE c = 'x' and d = '0900' ",
          "UPDATE t SET a = -1.5,   b = 1e3 WHERE    c = 'x'    AND d = 'y'    AND e = 'z' ",
          "DELETE FROM t WHERE    a = '0900' ", "DELETE t  WHERE a = '0900' AND b = '0002' AND c = '1'",
          "insert into t(a,b,c ) SELECT '0902',b,c FROM t  WHERE a = '0900'  ",
          "UPDATE t SET    Tep_Descripcion = 'x',    Oper_Ult_Modif = 'o',    Fecha_Ult_Modif = 'f'WHERE a = 'y'"})
        QVERIFY2(permitida(sql), sql);
    // What quotes that a planner types could make of them.
    for (const char *sql : {"UPDATE t SET Tep_Descripcion = 'x', Tep_Padre = 'y' WHERE a = 'z'",
                            "SELECT a FROM t WHERE b = 'x' AND pg_sleep(9) IS NULL",
                            "INSERT INTO t (a, b) VALUES ('x', 'y'), ('0902', '7')",
                            "INSERT INTO t (a, b) VALUES ('x', (SELECT b FROM t WHERE a = 'z'))",
                            "INSERT INTO t (a) VALUES ('x' || 'y')",
                            "INSERT INTO t (a) VALUES ('x') ON CONFLICT DO UPDATE SET a = 'y'",
                            "INSERT INTO t (a) VALUES ('x') RETURNING a",
                            "INSERT INTO t (a, b) SELECT 'x', b FROM t",
                            "INSERT INTO t (a) SELECT a FROM t WHERE a = 'x' UNION SELECT a FROM u WHERE a = 'y'",
                            "UPDATE t SET a = (SELECT b FROM u) WHERE c = 'x'",
                            "UPDATE t SET a = b WHERE c = 'x'",
                            "UPDATE t SET a = 'x'",
                            "UPDATE t SET a = 'x' WHERE c = 'y' OR '1' = '1'",
                            "UPDATE t SET a = 'x' WHERE c <> 'y'",
                            "UPDATE t SET a = 'x' WHERE '1' = '1'",
                            "UPDATE t SET a = 'x' WHERE c = lower('y')",
                            "DELETE FROM t",
                            "DELETE FROM t WHERE a IN (SELECT a FROM t)",
                            "DELETE FROM \"t\" WHERE a = 'x'",
                            "UPDATE t SET a = 'x' 'y' WHERE c = 'z'"})
        QVERIFY2(!permitida(sql), sql);
}

void PrConexion::rechazos_data()
{
    const Tabla<QString, QString> fila("sql", "motivo");
    fila("segunda sentencia", "DELETE FROM Producto; DELETE FROM Tipo_Gasto", "más de una sentencia");
    fila("comentario", "UPDATE Producto SET Pr_Descripcion = '' -- WHERE", "comentario");
    fila("comentario de bloque", "UPDATE Producto SET Pr_Descripcion = '' /* ", "comentario");
    fila("otro verbo", "DROP TABLE Producto", "no es una consulta");
    fila("nulo", QString("SELECT 'a") + QChar(0) + "'", "nulo");
    fila("comilla suelta", "UPDATE Producto SET Pr_Descripcion = 'O'Higgins'", motor::Sintaxis("Higgins"));
    fila("sin cerrar", "SELECT * FROM Producto WHERE Pr_Descripcion = 'x",
         motor::Segun("unrecognized token", "unterminated quoted string"));
    fila("otra forma", "UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'x' WHERE Tep_ID = '' OR ''=''",
         "carácter inesperado");
    fila("otro tipo de equipo",
         "UPDATE Plan_Mantenimiento SET Te_Cve_Tipo_Equipo = '0902' WHERE Te_Cve_Tipo_Equipo = '0900'", "");
    fila("tabla", "SELECT * FROM Nada", motor::NoHayTabla("Nada"));
    // What a query could do beside reading, if it called more than the system's own functions.
    for (const char *sql :
         {"SELECT \"pg_sleep\"(60)", "SELECT pg_catalog.pg_sleep (60)", "SELECT * FROM pg_sleep(60)",
          "SELECT query_to_xml('DELETE FROM Producto', true, true, '')", "SELECT lo_create(0)",
          "SELECT hex(zeroblob(900000000))", "SELECT load_extension('x')", "SELECT * INTO Copia FROM Producto",
          "SELECT 1 UNION SELECT * FROM (WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i FROM n) SELECT i FROM n)"})
        fila(sql, sql, "");
}

void PrConexion::rechazos()
{
    QFETCH(QString, sql);
    QFETCH(QString, motivo);
    Escenario escenario;
    SembrarPlan(escenario);
    const QStringList antes = escenario.Tablas();
    try {
        qvx::Sesion::Actual().Conexion().Execute(sql);
        QFAIL("No falló");
    } catch (const ErrorEjecucion &error) {
        QVERIFY2(error.Descripcion().contains(motivo), qPrintable(error.Descripcion()));
        QCOMPARE(error.Sentencia(), sql);
    }
    QCOMPARE(escenario.Tablas(), antes);
}

void PrConexion::campos()
{
    Escenario escenario;
    auto &base = qvx::Sesion::Actual().Conexion();
    base.Execute("INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) VALUES ('T', "
                 "'0001', '0000', 'ÑANDÚ')");
    auto fila = base.Execute("SELECT * FROM Tipo_Equipo_Parte WHERE Tep_ID = '0001  ' AND Te_Cve_Tipo_Equipo = 'T '");
    QVERIFY2(!fila.Eof(), "Los blancos finales no cuentan en las claves");
    QCOMPARE(fila["TEP_DESCRIPCION"], "ÑANDÚ");
    QCOMPARE(fila["es_cve_estado"], "AC"); // the default of a row inserted without a state
    QCOMPARE(fila["Oper_Alta"], "");
    QVERIFY_EXCEPTION_THROWN(fila["Otro"], ErrorEjecucion);
    QVERIFY_EXCEPTION_THROWN(fila.Numero("Tep_Descripcion"), ErrorEjecucion);
    fila.MoveNext();
    QVERIFY(fila.Eof());
    QVERIFY_EXCEPTION_THROWN(fila["Tep_ID"], ErrorEjecucion);
    QVERIFY_EXCEPTION_THROWN(fila.MoveNext(), ErrorEjecucion);
}

void PrConexion::condena()
{
    Escenario escenario;
    SembrarPlan(escenario);
    auto &base = qvx::Sesion::Actual().Conexion();
    const QString cambio = "UPDATE Tipo_Equipo_Parte SET Oper_Baja = 'otro' WHERE Tep_ID = '0005'";
    base.BeginTrans();
    base.Execute(cambio);
    QVERIFY_EXCEPTION_THROWN(base.Execute("SELECT * FROM Nada"), ErrorEjecucion);
    QVERIFY(base.EnTransaccion());
    QVERIFY_EXCEPTION_THROWN(base.Execute("SELECT * FROM Producto"), ErrorEjecucion);
    QVERIFY_EXCEPTION_THROWN(base.CommitTrans(), ErrorEjecucion);
    QVERIFY(escenario.Motor(cambio).isNull()); // its locks are gone already
    base.RollbackTrans();
    QVERIFY(!base.Execute("SELECT * FROM Producto").Eof());
}

// A transaction that its event leaves open is taken back when the event ends; one that an outer event opened is not.
void PrConexion::abandonada()
{
    Escenario escenario;
    SembrarPlan(escenario);
    auto &base = qvx::Sesion::Actual().Conexion();
    struct Receptor : QObject {
        std::function<void()> pasos;
        bool event(QEvent *) override
        {
            pasos();
            return true;
        }
    } receptor;
    const auto enEvento = [&](const std::function<void()> &pasos) {
        receptor.pasos = pasos;
        QEvent evento(QEvent::User);
        QCoreApplication::sendEvent(&receptor, &evento);
    };
    const QStringList antes = escenario.Tablas();
    enEvento([&] {
        base.BeginTrans();
        base.Execute("DELETE Plan_Mantenimiento WHERE Pm_ID = '000001'");
        enEvento([&] { base.Execute("DELETE Tipo_Equipo_Parte WHERE Tep_ID = '0001'"); });
        QVERIFY(base.EnTransaccion());
    });
    QVERIFY(!base.EnTransaccion());
    QCOMPARE(escenario.Tablas(), antes);

    enEvento([&] { base.Execute("SELECT * FROM Nada"); });
    QCOMPARE(escenario.Personas().Tomar(), QStringList{"16|Quorvex|QVX|ERR-ID:1000000|" + motor::NoHayTabla("Nada")});
}

// The embedded engine holds the file from the start of a transaction, the server a plan from its first statement.
void PrConexion::bloqueada()
{
    Escenario escenario;
    SembrarPlan(escenario);
    auto &base = qvx::Sesion::Actual().Conexion();
    const Averia ocupada(escenario, "ocupada");
    QElapsedTimer espera;
    espera.start();
    try {
        base.BeginTrans();
        base.Execute("SELECT * FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900 '");
        QFAIL("No falló");
    } catch (const ErrorEjecucion &error) {
        QCOMPARE(error.Descripcion(), motor::Ocupada());
        QCOMPARE(error.CodigoMotor(), motor::Segun("5", "55P03"));
    }
    QVERIFY(espera.elapsed() >= 4000);
    QCOMPARE(base.EnTransaccion(), motor::EsPostgres()); // doomed
}

void PrConexion::traza()
{
    Escenario escenario;
    auto &base = qvx::Sesion::Actual().Conexion();
    escenario.Traza();
    base.BeginTrans();
    base.Execute("DELETE FROM Plan_Mantenimiento WHERE Pm_ID = 'a\nb'");
    base.RollbackTrans();
    base.RollbackTrans(); // without one: nothing
    QVERIFY_EXCEPTION_THROWN(base.Execute("SELECT 'x"), ErrorEjecucion);
    const QStringList renglones = escenario.Traza();
    QCOMPARE(renglones.mid(0, 3),
             (QStringList{motor::Inicio(), "0\tDELETE FROM Plan_Mantenimiento WHERE Pm_ID = 'a\\nb'", "-\tROLLBACK"}));
    QVERIFY(renglones.at(3).startsWith("!\tSELECT 'x"));
    const auto permisos = QFile::permissions(qEnvironmentVariable("QVX_TRAZA"));
    QVERIFY(!permisos.testAnyFlags(QFile::ReadGroup | QFile::ReadOther));
}

PRUEBA_MAIN(PrConexion)
#include "pr_conexion.moc"
