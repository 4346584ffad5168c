#include "data/Dialecto.h"
#include "data/ErrorEjecucion.h"
#include "data/Lexico.h"
#include "data/Texto.h"
#include "support/Escenario.h"

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
    QTest::newRow("comilla suelta") << "UPDATE Producto SET Pr_Descripcion = 'O'Higgins'"
                                    << "near \"Higgins\"";
    QTest::newRow("sin cerrar") << "SELECT * FROM Producto WHERE Pr_Descripcion = 'x"
                                << "unrecognized token";
    QTest::newRow("parámetro") << "UPDATE Producto SET Pr_Descripcion = :a"
                               << "carácter inesperado";
    QTest::newRow("tabla") << "SELECT * FROM Nada"
                           << "no such table";
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
    auto &base = qvx::Sesion::Actual().Conexion();
    base.BeginTrans();
    base.Execute("DELETE FROM Producto");
    QVERIFY_EXCEPTION_THROWN(base.Execute("SELECT * FROM Nada"), ErrorEjecucion);
    QVERIFY(base.EnTransaccion());
    QVERIFY_EXCEPTION_THROWN(base.Execute("SELECT * FROM Producto"), ErrorEjecucion);
    QVERIFY_EXCEPTION_THROWN(base.CommitTrans(), ErrorEjecucion);
    QVERIFY(escenario.Motor("UPDATE Bitacora SET Bi_Oper = ''").isNull()); // its locks are gone already
    base.RollbackTrans();
    QVERIFY(!base.Execute("SELECT * FROM Producto").Eof());
}

// A transaction that its event leaves open is taken back when the event ends; one that an outer event opened is not.
void PrConexion::abandonada()
{
    Escenario escenario;
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
    enEvento([&] {
        base.BeginTrans();
        base.Execute("DELETE FROM Producto");
        enEvento([&] { base.Execute("DELETE FROM Tipo_Gasto"); });
        QVERIFY(base.EnTransaccion());
    });
    QVERIFY(!base.EnTransaccion());
    QVERIFY(escenario.Motor("SELECT count(*) FROM Tipo_Gasto").toInt() > 0);

    enEvento([&] { base.Execute("SELECT * FROM Nada"); });
    QCOMPARE(escenario.Personas().Tomar(), QStringList{"16|Quorvex|QVX|ERR-ID:1000000|no such table: Nada"});
}

void PrConexion::bloqueada()
{
    Escenario escenario;
    auto &base = qvx::Sesion::Actual().Conexion();
    const auto ocupada = escenario.Ocupar();
    QElapsedTimer espera;
    espera.start();
    try {
        base.BeginTrans();
        QFAIL("No falló");
    } catch (const ErrorEjecucion &error) {
        QCOMPARE(error.Descripcion(), "database is locked");
        QCOMPARE(error.CodigoMotor(), "5");
    }
    QVERIFY(espera.elapsed() >= 4000);
    QVERIFY(!base.EnTransaccion());
}

void PrConexion::traza()
{
    Escenario escenario;
    auto &base = qvx::Sesion::Actual().Conexion();
    escenario.Traza();
    base.BeginTrans();
    base.Execute("DELETE FROM Bitacora WHERE Bi_Clave = 'a\nb'");
    base.RollbackTrans();
    QVERIFY_EXCEPTION_THROWN(base.Execute("SELECT 'x"), ErrorEjecucion);
    const QStringList renglones = escenario.Traza();
    QCOMPARE(renglones.mid(0, 3),
             (QStringList{"-\tBEGIN IMMEDIATE", "0\tDELETE FROM Bitacora WHERE Bi_Clave = 'a\\nb'", "-\tROLLBACK"}));
    QVERIFY(renglones.at(3).startsWith("!\tSELECT 'x"));
    const auto permisos = QFile::permissions(qEnvironmentVariable("QVX_TRAZA"));
    QVERIFY(!permisos.testAnyFlags(QFile::ReadGroup | QFile::ReadOther));
}

PRUEBA_MAIN(PrConexion)
#include "pr_conexion.moc"
