#include "data/ErrorEjecucion.h"
#include "data/Instalador.h"
#include "support/Averia.h"
#include "support/Tabla.h"

#include <QDir>
#include <sys/stat.h>

// The database file: made on first use, refused when it is not ours or damaged.
class PrInstalador : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void creada();
    void ejemplos();
    void rechazada_data();
    void rechazada();
    void sinEspacio();
};

namespace
{

QByteArray Contenido(const QString &archivo)
{
    QFile entrada(archivo);
    return entrada.open(QIODevice::ReadOnly) ? entrada.readAll() : QByteArray();
}

void Poner(const QString &archivo, const QByteArray &contenido)
{
    QFile salida(archivo);
    QVERIFY(salida.open(QIODevice::WriteOnly) && salida.write(contenido) == contenido.size());
}

QString ErrorAlAbrir(const QString &archivo)
{
    try {
        qvx::AbrirBaseDeDatos(archivo, false);
        return "abrió";
    } catch (const qvx::ErrorEjecucion &error) {
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
          "Prioridad_Servicio) OR Pm_Tiempo_Paro > Pm_Tiempo_Estimado OR (Pm_Frecuencia = 0 AND Pm_Lectura = 0)"})
        QVERIFY2(escenario.Filas(sql).isEmpty(), sql);
}

void PrInstalador::rechazada_data()
{
    const Tabla<QString, QString> fila("orden", "motivo");
    fila("ajena", "PRAGMA application_id = 7", "no es de Quorvex");
    fila("más nueva", "PRAGMA user_version = 99", "versión más reciente");
    fila("más vieja", "PRAGMA user_version = 0", "ya no lee");
    fila("sin tabla", "DROP TABLE Formato_Clave", "no se puede abrir (no such table: Formato_Clave).");
    fila("otro archivo", "", "no es de Quorvex.");
    fila("cortada", "", "(database disk image is malformed)");
    fila("tubería", "", "no se puede leer: no es un archivo.");
    fila("ocupada", "", "está ocupada por otro programa (database is locked)");
    fila("diario de otro", "", "abrió");
}

void PrInstalador::rechazada()
{
    QFETCH(QString, orden);
    QFETCH(QString, motivo);
    const QString clase = QTest::currentDataTag();
    Escenario escenario;
    QTemporaryDir carpeta;
    const QString archivo = carpeta.filePath("x.db");
    if (!orden.isEmpty())
        escenario.Motor(orden);
    if (clase == "tubería")
        QCOMPARE(mkfifo(QFile::encodeName(archivo).constData(), 0600), 0);
    else if (clase == "otro archivo")
        Poner(archivo, "una carta cualquiera, larga como para tener una cabecera");
    else
        QVERIFY(QFile::copy(escenario.Archivo(), archivo));
    if (clase == "cortada")
        QVERIFY(QFile::resize(archivo, QFile(archivo).size() / 2));
    if (clase == "diario de otro")
        Poner(archivo + "-journal", QByteArray(4096, 'x'));
    const Averia averia(escenario, clase == "ocupada" ? clase : "");
    const QByteArray antes = clase == "tubería" ? QByteArray() : Contenido(archivo);
    const QString error = ErrorAlAbrir(clase == "ocupada" ? escenario.Archivo() : archivo);
    QVERIFY2(error.contains(motivo) && (motivo == "abrió" || error.startsWith("La base de datos «")),
             qPrintable(error));
    if (clase != "tubería")
        QCOMPARE(Contenido(archivo), antes);
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
