#include "data/Dialecto.h"
#include "data/ErrorEjecucion.h"
#include "data/Lexico.h"
#include "data/Texto.h"
#include "support/Averia.h"
#include "support/Plan.h"

#include <QFile>

using qvx::ErrorEjecucion;

// The one way to the database: texts, statements, transactions.
class PrConexion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numeros();
    void formatos_data();
    void formatos();
    void claves();
    void lexico();
    void formas_data();
    void formas();
    void rechazos_data();
    void rechazos();
    void dialecto();
    void campos();
    void ruta();
    void transacciones();
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
}

void PrConexion::formatos_data()
{
    QTest::addColumn<double>("numero");
    QTest::addColumn<QString>("formato");
    QTest::addColumn<QString>("texto");
    QTest::newRow("cantidad") << 1.5 << "#,##0.000######"
                              << "1.500";
    QTest::newRow("costo") << 1234567.123456 << "$#,##0.0000#####"
                           << "$1,234,567.123456";
    QTest::newRow("ruido binario") << 0.1 + 0.2 << "$#,##0.00#######"
                                   << "$0.30";
    QTest::newRow("negativo") << -1234.5 << "$#,##0.00#######"
                              << "-$1,234.50";
    QTest::newRow("negativo que redondea a cero") << -0.0000000001 << "$#,##0.00#######"
                                                  << "$0.00";
    QTest::newRow("sin decimales") << 999999.0 << "#,##0.######"
                                   << "999,999";
    QTest::newRow("miles justos") << 1000.0 << "#,##0.######"
                                  << "1,000";
}

void PrConexion::formatos()
{
    QFETCH(double, numero);
    QFETCH(QString, formato);
    QTEST(qvx::NumeroConFormato(numero, formato), "texto");
}

void PrConexion::claves()
{
    QCOMPARE(qvx::ClaveConFormato(" 12 ", "0000"), "0012");
    QCOMPARE(qvx::ClaveConFormato("123456", "0000"), "123456");
    QCOMPARE(qvx::ClaveConFormato("HR", "0000"), "HR");
    QCOMPARE(qvx::ClaveConFormato("", "0000"), "");
    QCOMPARE(qvx::Literal("D'Arcy"), "'D''Arcy'");
}

void PrConexion::lexico()
{
    const auto cambio = qvx::Analizar("UPDATE t SET a = 'x''y -- ;', b = 12.50, c1 = -3, d = 1e3 WHERE e = ''");
    QCOMPARE(cambio.forma, "UPDATE t SET a =  ? , b =  ? , c1 = - ? , d =  ?  WHERE e =  ? ");
    QCOMPARE(cambio.valores, (QVariantList{"x'y -- ;", 12.5, 3LL, 1000.0, ""}));
    QVERIFY(!cambio.sinCerrar && !cambio.lectura);

    const auto consulta = qvx::Analizar("  select a FROM t ORDER BY 1;  ");
    QCOMPARE(consulta.forma, "SELECT a FROM t ORDER BY 1");
    QVERIFY(consulta.lectura);
    QVERIFY(qvx::Analizar("SELECT 'abierta").sinCerrar);
}

void PrConexion::formas_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<bool>("permitida");
    const auto fila = [](const char *nombre, const QString &sql, bool permitida) {
        QTest::newRow(nombre) << sql << permitida;
    };
    // As the system composes them.
    fila("consulta", "SELECT MAX(a) AS b FROM t WHERE c = 'x' OR d IN (SELECT e FROM u) ORDER BY 1", true);
    fila("alta", "INSERT INTO t (   a,    b ,   c ) VALUES(   '0900',    -3, 'x','y' )", true);
    fila("cambio sin blanco", "UPDATE t SET    a = '',    b= 'f'WHERE c = 'x' and d = '0900' ", true);
    fila("cambio numérico", "UPDATE t SET a = -1.5,   b = 1e3 WHERE    c = 'x'    AND d = 'y'    AND e = 'z' ", true);
    fila("borrado", "DELETE FROM t WHERE    a = '0900' ", true);
    fila("borrado sin FROM", "DELETE t  WHERE a = '0900' AND b = '0002' AND c = '1'", true);
    fila("copia", "insert into t(a,b,c ) SELECT '0902',b,c FROM t  WHERE a = '0900'  ", true);
    fila("descripción",
         "UPDATE t SET    Tep_Descripcion = 'x',    Oper_Ult_Modif = 'o',    Fecha_Ult_Modif = 'f'WHERE a = 'y'", true);
    // What quotes that a planner types could make of them.
    fila("descripción y otra", "UPDATE t SET Tep_Descripcion = 'x', Tep_Padre = 'y' WHERE a = 'z'", false);
    fila("espera", "SELECT a FROM t WHERE b = 'x' AND pg_sleep(9) IS NULL", false);
    fila("dos renglones", "INSERT INTO t (a, b) VALUES ('x', 'y'), ('0902', '7')", false);
    fila("alta con consulta", "INSERT INTO t (a, b) VALUES ('x', (SELECT b FROM t WHERE a = 'z'))", false);
    fila("alta con expresión", "INSERT INTO t (a) VALUES ('x' || 'y')", false);
    fila("alta o cambio", "INSERT INTO t (a) VALUES ('x') ON CONFLICT DO UPDATE SET a = 'y'", false);
    fila("alta que contesta", "INSERT INTO t (a) VALUES ('x') RETURNING a", false);
    fila("copia sin filtro", "INSERT INTO t (a, b) SELECT 'x', b FROM t", false);
    fila("copia de dos", "INSERT INTO t (a) SELECT a FROM t WHERE a = 'x' UNION SELECT a FROM u WHERE a = 'y'", false);
    fila("cambio con consulta", "UPDATE t SET a = (SELECT b FROM u) WHERE c = 'x'", false);
    fila("cambio con expresión", "UPDATE t SET a = 'x' || b, c = 'y' WHERE d = 'z'", false);
    fila("cambio por otra columna", "UPDATE t SET a = b WHERE c = 'x'", false);
    fila("cambio sin filtro", "UPDATE t SET a = 'x'", false);
    fila("cambio de todos", "UPDATE t SET a = 'x' WHERE c = 'y' OR '1' = '1'", false);
    fila("cambio de lo distinto", "UPDATE t SET a = 'x' WHERE c <> 'y'", false);
    fila("siempre cierto", "UPDATE t SET a = 'x' WHERE '1' = '1'", false);
    fila("filtro con función", "UPDATE t SET a = 'x' WHERE c = lower('y')", false);
    fila("borrado sin filtro", "DELETE FROM t", false);
    fila("borrado de todos", "DELETE t WHERE a = 'x' OR a > ''", false);
    fila("borrado con consulta", "DELETE FROM t WHERE a IN (SELECT a FROM t)", false);
    fila("comillas dobles", "DELETE FROM \"t\" WHERE a = 'x'", false);
    fila("literal junto a literal", "UPDATE t SET a = 'x' 'y' WHERE c = 'z'", false);
}

// A doubled quote is a text's own, so what a typed text can do is change the shape.
void PrConexion::formas()
{
    QFETCH(QString, sql);
    QTEST(qvx::FormaPermitida(qvx::Analizar(sql).forma), "permitida");
}

void PrConexion::rechazos_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("motivo");
    QTest::newRow("segunda sentencia") << "DELETE FROM Producto; DELETE FROM Tipo_Gasto"
                                       << "más de una sentencia";
    QTest::newRow("comentario") << "UPDATE Producto SET Pr_Descripcion = '' -- WHERE"
                                << "comentario";
    QTest::newRow("comentario de bloque") << "UPDATE Producto SET Pr_Descripcion = '' /* "
                                          << "comentario";
    QTest::newRow("otro verbo") << "DROP TABLE Producto"
                                << "no es una consulta";
    QTest::newRow("con") << "WITH a AS (SELECT 1) DELETE FROM Producto"
                         << "no es una consulta";
    QTest::newRow("nulo") << QString("SELECT 'a") + QChar(0) + "'"
                          << "nulo";
    QTest::newRow("comilla suelta") << "UPDATE Producto SET Pr_Descripcion = 'O'Higgins'" << motor::Sintaxis("Higgins");
    QTest::newRow("sin cerrar") << "SELECT * FROM Producto WHERE Pr_Descripcion = 'x"
                                << motor::Segun("unrecognized token", "unterminated quoted string");
    QTest::newRow("parámetro") << "UPDATE Producto SET Pr_Descripcion = :a"
                               << motor::Segun("carácter inesperado", "syntax error at or near \":\"");
    QTest::newRow("otra forma") << "UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'x' WHERE Tep_ID = '' OR ''=''"
                                << "carácter inesperado";
    QTest::newRow("tabla") << "SELECT * FROM Nada" << motor::NoHayTabla("Nada");
}

void PrConexion::rechazos()
{
    QFETCH(QString, sql);
    QFETCH(QString, motivo);
    Escenario escenario;
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

void PrConexion::dialecto()
{
    const auto dialecto = qvx::DialectoSqlite();
    QCOMPARE(dialecto->Reescribir("DELETE Plan_Mantenimiento  WHERE a =  ? "),
             "DELETE FROM Plan_Mantenimiento  WHERE a =  ? ");
    QCOMPARE(dialecto->Reescribir("DELETE FROM t WHERE a =  ? "), "DELETE FROM t WHERE a =  ? ");
    QCOMPARE(dialecto->Reescribir("SELECT Tep_Padre,    E = (SELECT E FROM t WHERE a =   ?  AND (b =  ? ) ) FROM t"),
             "SELECT Tep_Padre,    (SELECT E FROM t WHERE a =   ?  AND (b =  ? ) ) AS E FROM t");
    QCOMPARE(dialecto->Reescribir("SELECT a FROM t WHERE b = (SELECT c FROM u)"),
             "SELECT a FROM t WHERE b = (SELECT c FROM u)");
    QVERIFY(dialecto->Reescribir("SELECT dbo.Get_Ruta_Parte_Tipo_Equipo( ? , ? )AS Descripcion ")
                .startsWith("SELECT valor AS Descripcion FROM ("));
    QVERIFY_EXCEPTION_THROWN(dialecto->Reescribir("SELECT dbo.Otra( ? , ? )AS x"), ErrorEjecucion);

    // Where the server finds the equipment types that a transaction holds.
    const auto tipos = [servidor = qvx::DialectoPostgres()](const QString &sql) {
        return servidor->TiposDeEquipo(qvx::Analizar(sql).forma);
    };
    QCOMPARE(tipos("UPDATE t SET a = 'x', b = 2 WHERE Tep_ID = 'y' and te_cve_tipo_equipo='T'"), QList<int>{3});
    QCOMPARE(tipos("INSERT INTO t (a, Te_Cve_Tipo_Equipo , b) VALUES (-1.5, 'T', 'x')"), QList<int>{1});
    QCOMPARE(tipos("SELECT E = (SELECT E FROM t WHERE t.Te_Cve_Tipo_Equipo = 'T') FROM t WHERE a = 'x' AND "
                   "Te_Cve_Tipo_Equipo =  'U'"),
             (QList<int>{0, 2}));
    QCOMPARE(tipos("SELECT * FROM t WHERE a = 'Te_Cve_Tipo_Equipo = '"), QList<int>());
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

void PrConexion::ruta()
{
    Escenario escenario;
    escenario.Motor("INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) VALUES "
                    "('T', '0001', '0000', 'BOMBA'), ('T', '0002', '0001', 'MOTOR'), ('U', '0001', '0000', 'OTRA'),"
                    "('T', '0008', '0009', 'ANILLO'), ('T', '0009', '0008', 'ANILLO')");
    const auto ruta = [](const QString &parte) {
        const auto fila = qvx::Sesion::Actual().Conexion().Execute("SELECT dbo.Get_Ruta_Parte_Tipo_Equipo('T','" + parte
                                                                   + "')AS Descripcion ");
        return fila.Eof() ? QString("nada") : fila["Descripcion"];
    };
    QCOMPARE(ruta("0002"), "BOMBA / MOTOR");
    QCOMPARE(ruta("0001"), "BOMBA");
    QCOMPARE(ruta("0000"), "RAIZ");
    QCOMPARE(ruta("0003"), "nada");
    QVERIFY(ruta("0009").startsWith("ANILLO / ")); // ends
}

void PrConexion::transacciones()
{
    Escenario escenario;
    auto &base = qvx::Sesion::Actual().Conexion();
    const QString alta =
        "INSERT INTO Bitacora (Bi_Tabla, Bi_Clave, Bi_Accion, Bi_Oper, Bi_Fecha) VALUES ('t', 'c', 'a', 'o', 'f')";
    base.BeginTrans();
    QVERIFY_EXCEPTION_THROWN(base.BeginTrans(), ErrorEjecucion);
    base.Execute(alta);
    QCOMPARE(escenario.Motor("SELECT count(*) FROM Bitacora").toInt(), 0);
    base.RollbackTrans();
    base.RollbackTrans(); // without one: nothing
    QVERIFY_EXCEPTION_THROWN(base.CommitTrans(), ErrorEjecucion);
    base.BeginTrans();
    base.Execute(alta);
    base.CommitTrans();
    QCOMPARE(escenario.Motor("SELECT count(*) FROM Bitacora").toInt(), 1);
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
    const auto ocupada = escenario.Ocupar();
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
