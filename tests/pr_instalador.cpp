#include "data/ErrorEjecucion.h"
#include "data/Instalador.h"
#include "support/Escenario.h"

#include <QCryptographicHash>
#include <QDir>
#include <QProcess>

using qvx::ErrorEjecucion;

// The database file: made on first use, refused when it is not ours.
class PrInstalador : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void creada();
    void ejemplos();
    void rechazada_data();
    void rechazada();
    void ocupada();
    void sinEspacio();
};

namespace
{

QByteArray Contenido(const QString &archivo)
{
    QFile entrada(archivo);
    return entrada.open(QIODevice::ReadOnly) ? entrada.readAll() : QByteArray();
}

QString ErrorAlAbrir(const QString &archivo)
{
    try {
        qvx::AbrirBaseDeDatos(archivo, false);
        return "abrió";
    } catch (const ErrorEjecucion &error) {
        return error.Descripcion();
    }
}

} // namespace

void PrInstalador::creada()
{
    QTemporaryDir carpeta;
    const QString archivo = carpeta.filePath("una/nueva.db");
    qvx::AbrirBaseDeDatos(archivo, false);
    QCOMPARE(QFile::permissions(archivo) & 0x0077, QFile::Permissions()); // 0600
    QCOMPARE(QDir(carpeta.filePath("una")).entryList(QDir::Files), QStringList{"nueva.db"});
    const QByteArray antes = Contenido(archivo);
    auto base = qvx::AbrirBaseDeDatos(archivo, true); // it is there: no examples come into it
    QVERIFY(base->Execute("SELECT * FROM Tipo_Equipo_Parte").Eof());
    QVERIFY(!base->Execute("SELECT * FROM Tipo_Equipo").Eof());
    QCOMPARE(Contenido(archivo), antes);
}

// The example plans are what a planner would recognise: every reference resolves, every amount is its product.
void PrInstalador::ejemplos()
{
    Escenario escenario(true);
    QVERIFY(escenario.Motor("SELECT count(DISTINCT Te_Cve_Tipo_Equipo) FROM Plan_Mantenimiento").toInt() >= 4);
    QVERIFY(escenario.Motor("SELECT count(*) FROM Tipo_Equipo_Parte").toInt() >= 60);
    QVERIFY(escenario.Motor("SELECT count(*) FROM Plan_Mantenimiento").toInt() >= 80);
    QVERIFY(escenario.Motor("SELECT count(*) FROM Plan_Mantenimiento_Detalle").toInt() >= 300);
    for (const char *sql :
         {"SELECT * FROM Tipo_Equipo_Parte p WHERE Tep_Padre <> '0000' AND NOT EXISTS (SELECT 1 FROM Tipo_Equipo_Parte "
          "q WHERE q.Te_Cve_Tipo_Equipo = p.Te_Cve_Tipo_Equipo AND q.Tep_ID = p.Tep_Padre)",
          "SELECT * FROM Plan_Mantenimiento s WHERE NOT EXISTS (SELECT 1 FROM Tipo_Equipo_Parte p WHERE "
          "p.Te_Cve_Tipo_Equipo = s.Te_Cve_Tipo_Equipo AND p.Tep_ID = s.Tep_ID)",
          "SELECT * FROM Plan_Mantenimiento_Detalle d WHERE NOT EXISTS (SELECT 1 FROM Plan_Mantenimiento s WHERE "
          "s.Te_Cve_Tipo_Equipo = d.Te_Cve_Tipo_Equipo AND s.Tep_ID = d.Tep_ID AND s.Pm_ID = d.Pm_ID)",
          "SELECT * FROM Plan_Mantenimiento_Detalle d LEFT JOIN Producto USING (Pr_Cve_Producto) WHERE Pr_Clase IS "
          "NULL OR Pr_Clase <> CASE Pmd_Tipo WHEN '01' THEN 'MO' WHEN '02' THEN 'RE' ELSE 'HE' END",
          "SELECT * FROM Plan_Mantenimiento_Detalle WHERE abs(Pmd_Importe - Pmd_Cantidad * Pmd_Costo) > 1e-9",
          "SELECT * FROM Plan_Mantenimiento_Detalle WHERE Pmd_Tipo = '02' AND Pmd_Tipo_Gasto NOT IN (SELECT "
          "Tg_Cve_Tipo_Gasto FROM Tipo_Gasto)",
          "SELECT * FROM Plan_Mantenimiento WHERE Ts_Cve_Tipo_Servicio NOT IN (SELECT Ts_Cve_Tipo_Servicio FROM "
          "Tipo_Servicio WHERE Es_Cve_Estado = 'AC') OR Pm_Prioridad NOT IN (SELECT Ps_Cve_Prioridad FROM "
          "Prioridad_Servicio)",
          "SELECT * FROM Plan_Mantenimiento WHERE Pm_Tiempo_Paro > Pm_Tiempo_Estimado OR (Pm_Requiere_Paro = 'NO' AND "
          "Pm_Tiempo_Paro <> 0) OR (Pm_Frecuencia = 0 AND Pm_Lectura = 0) OR (Pm_Lectura > 0 AND Pm_Unidad_Lectura = "
          "'')"})
        QVERIFY2(escenario.Filas(sql).isEmpty(), sql);
    for (const char *sql :
         {"SELECT 1 FROM Tipo_Equipo_Parte p JOIN Tipo_Equipo_Parte h ON h.Te_Cve_Tipo_Equipo = p.Te_Cve_Tipo_Equipo "
          "AND h.Tep_Padre = p.Tep_ID WHERE p.Es_Cve_Estado = 'BA'",
          "SELECT 1 FROM Producto WHERE Es_Cve_Estado = 'BA'", "SELECT 1 FROM Tipo_Gasto WHERE Es_Cve_Estado = 'BA'",
          "SELECT 1 FROM Tipo_Equipo WHERE Es_Cve_Estado = 'CA'"})
        QVERIFY2(!escenario.Filas(sql).isEmpty(), sql);
}

void PrInstalador::rechazada_data()
{
    QTest::addColumn<QString>("orden");
    QTest::addColumn<QString>("motivo");
    QTest::newRow("ajena") << "PRAGMA application_id = 7"
                           << "no es de Quorvex";
    QTest::newRow("más nueva") << "PRAGMA user_version = 99"
                               << "versión más reciente";
    QTest::newRow("más vieja") << "PRAGMA user_version = 0"
                               << "ya no lee";
    QTest::newRow("otro archivo") << ""
                                  << "no es de Quorvex";
    QTest::newRow("dañada") << "cortada"
                            << "«";
}

void PrInstalador::rechazada()
{
    QFETCH(QString, orden);
    QFETCH(QString, motivo);
    QString archivo;
    QTemporaryDir carpeta;
    archivo = carpeta.filePath("x.db");
    if (orden.startsWith("PRAGMA")) {
        Escenario escenario;
        escenario.Motor(orden);
        QVERIFY(QFile::copy(escenario.Archivo(), archivo));
    } else {
        QFile otro(archivo);
        QVERIFY(otro.open(QIODevice::WriteOnly));
        otro.write(orden.isEmpty() ? QByteArray("una carta cualquiera, larga como para tener una cabecera")
                                   : QByteArray("SQLite format 3\0", 16) + QByteArray(50, 'x'));
    }
    const QByteArray antes = Contenido(archivo);
    const QString error = ErrorAlAbrir(archivo);
    QVERIFY2(error.startsWith("La base de datos «" + archivo + "» ") && error.contains(motivo), qPrintable(error));
    QCOMPARE(Contenido(archivo), antes);
    QCOMPARE(QDir(carpeta.path()).entryList(QDir::Files), QStringList{"x.db"});
    QVERIFY(ErrorAlAbrir(carpeta.path()).contains("no se puede leer"));
}

void PrInstalador::ocupada()
{
    Escenario escenario;
    const auto otro = escenario.Ocupar();
    const QString error = ErrorAlAbrir(escenario.Archivo());
    QVERIFY2(error.contains("está ocupada por otro programa (database is locked)"), qPrintable(error));
}

void PrInstalador::sinEspacio()
{
    QTemporaryDir carpeta;
    const QString entera = carpeta.filePath("entera.db");
    qvx::AbrirBaseDeDatos(entera, false);
    const QByteArray antes = Contenido(entera);

    auto disco = std::make_unique<DiscoLleno>();
    const QString alCrear = ErrorAlAbrir(carpeta.filePath("nueva.db"));
    const QString alAbrir = ErrorAlAbrir(entera);
    disco.reset();

    QVERIFY2(alCrear.contains("nueva.db»"), qPrintable(alCrear));
    QVERIFY2(alAbrir.contains("entera.db»"), qPrintable(alAbrir));
    QCOMPARE(Contenido(entera), antes);
    QCOMPARE(QDir(carpeta.path()).entryList(QDir::Files), QStringList{"entera.db"});
    QCOMPARE(ErrorAlAbrir(entera), "abrió");
}

PRUEBA_MAIN(PrInstalador)
#include "pr_instalador.moc"
