#include "controls/Comunes.h"
#include "data/ErrorEjecucion.h"
#include "data/Instalador.h"
#include "support/Plan.h"

#include <QDir>
#include <QRandomGenerator>
#include <sys/stat.h>

using qvx::ErrorEjecucion;

// How far a hostile statement gets that reached the connection, and a hostile database file that is opened.
class PrAlcance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cambios_data();
    void cambios();
    void consultas_data();
    void consultas();
    void alcance();
    void archivos_data();
    void archivos();
    void paginas();

private:
    std::unique_ptr<Escenario> escenario;
};

void PrAlcance::init()
{
    escenario.reset();
    escenario = std::make_unique<Escenario>();
    SembrarPlan(*escenario);
}

void PrAlcance::cambios_data()
{
    QTest::addColumn<QString>("sql");
    const QString parte = "UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'x', ";
    const QString firma =
        "Oper_Ult_Modif = 'o', Fecha_Ult_Modif = 'f' WHERE Tep_ID = '0005' and Te_Cve_Tipo_Equipo = '0900'";
    const QString alta = "INSERT INTO Unidad (Un_Cve_Unidad, Un_Descripcion) VALUES ('X', 'x')";
    QTest::newRow("otra columna") << parte + "Es_Cve_Estado = 'BA', " + firma;
    QTest::newRow("otra clave") << parte + "Tep_ID = '9998', " + firma;
    QTest::newRow("otro tipo de equipo") << parte + "Te_Cve_Tipo_Equipo = '0902', " + firma;
    QTest::newRow("dos veces") << parte + "Tep_Descripcion = 'y', " + firma;
    QTest::newRow("todas") << parte + "Oper_Ult_Modif = 'o', Fecha_Ult_Modif = 'f'";
    QTest::newRow("o") << parte + firma + " OR 'a' = 'a'";
    QTest::newRow("distinto") << "DELETE FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo <> '0900'";
    QTest::newRow("consulta en un valor")
        << "UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = (SELECT 'x') WHERE Tep_ID = '0005'";
    QTest::newRow("dos renglones") << alta + ", ('Y', 'y')";
    QTest::newRow("con respuesta") << alta + " RETURNING Un_Cve_Unidad";
    QTest::newRow("en conflicto") << alta + " ON CONFLICT DO NOTHING";
    QTest::newRow("juntados") << "INSERT INTO Unidad (Un_Cve_Unidad, Un_Descripcion) VALUES ('X', 'x' || 'y')";
    QTest::newRow("de dos tablas")
        << "INSERT INTO Unidad (Un_Cve_Unidad, Un_Descripcion) SELECT 'X', Pr_Descripcion FROM "
           "Producto UNION SELECT 'Y', Tg_Descripcion FROM Tipo_Gasto WHERE 'a' = 'a'";
}

// Changes of other kinds than the system's own, which a typed text with quotes in it could make of one.
void PrAlcance::cambios()
{
    QFETCH(QString, sql);
    const QStringList antes = escenario->Tablas();
    QVERIFY_EXCEPTION_THROWN(qvx::Sesion::Actual().Conexion().Execute(sql), ErrorEjecucion);
    QCOMPARE(escenario->Tablas(), antes);
}

void PrAlcance::consultas_data()
{
    QTest::addColumn<QString>("sql");
    for (const char *sql :
         {"SELECT pg_sleep(60)",
          "SELECT \"pg_sleep\"(60)",
          "SELECT pg_catalog.pg_sleep (60)",
          "SELECT * FROM pg_sleep(60)",
          "SELECT set_config('lock_timeout', '0', false)",
          "SELECT pg_advisory_lock(580)",
          "SELECT lo_create(0)",
          "SELECT query_to_xml('DELETE FROM Producto', true, true, '')",
          "SELECT pg_read_file('/etc/hostname')",
          "SELECT pg_terminate_backend(1)",
          "SELECT nextval('registro_cambio_rc_id_seq')",
          "SELECT rolpassword FROM pg_authid",
          "SELECT load_extension('x')",
          "SELECT hex(zeroblob(900000000))",
          "SELECT * INTO Copia FROM Producto",
          "SELECT 1 UNION SELECT * FROM (WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i FROM n) SELECT i FROM n)",
          "COPY Producto TO '/tmp/x'",
          "VACUUM",
          "SET lock_timeout = 0",
          "ATTACH 'x' AS y",
          "PRAGMA writable_schema = 1"})
        QTest::newRow(sql) << sql;
}

// What a query could do beside reading, if it called more than the system's own functions.
void PrAlcance::consultas()
{
    QFETCH(QString, sql);
    const QStringList antes = escenario->Tablas();
    QVERIFY_EXCEPTION_THROWN(qvx::Sesion::Actual().Conexion().Execute(sql), ErrorEjecucion);
    QCOMPARE(escenario->Tablas(), antes);
    QVERIFY(!qvx::Sesion::Actual().Conexion().Execute("SELECT * FROM Producto").Eof());
}

// What the server itself lets a planner do, whatever reaches it.
void PrAlcance::alcance()
{
    if (!escenario->Base().EsPostgres())
        QSKIP("The embedded engine has no users");
    for (const char *derecho :
         {"has_table_privilege('mlopez', 'pg_authid', 'SELECT')",
          "pg_has_role('mlopez', 'pg_read_server_files', 'MEMBER')",
          "pg_has_role('mlopez', 'pg_execute_server_program', 'MEMBER')",
          "has_function_privilege('mlopez', 'pg_read_file(text)', 'EXECUTE')",
          "has_function_privilege('mlopez', 'lo_import(text)', 'EXECUTE')",
          "has_schema_privilege('mlopez', 'dbo', 'CREATE')", "has_schema_privilege('mlopez', 'public', 'CREATE')",
          "has_database_privilege('mlopez', current_database(), 'CREATE')",
          "has_database_privilege('mlopez', 'quorvex_vacia', 'TEMPORARY')",
          "has_table_privilege('mlopez', 'dbo.consulta', 'INSERT, UPDATE, DELETE, TRUNCATE')",
          "has_table_privilege('mlopez', 'dbo.bitacora', 'SELECT, UPDATE, DELETE, TRUNCATE')",
          "has_table_privilege('mlopez', 'dbo.producto', 'INSERT, UPDATE, DELETE, TRUNCATE, TRIGGER')",
          "has_table_privilege('mlopez', 'dbo.plan_mantenimiento', 'TRUNCATE, TRIGGER, REFERENCES')"})
        QCOMPARE(QByteArray(derecho) + (escenario->Motor(QString("SELECT ") + derecho).toBool() ? " has" : ""),
                 derecho);
}

namespace
{

QString ErrorAlAbrir(const QString &archivo)
{
    try {
        qvx::AbrirBaseDeDatos(archivo, false);
        return "abrió";
    } catch (const ErrorEjecucion &error) {
        return error.Descripcion();
    }
}

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

} // namespace

void PrAlcance::archivos_data()
{
    QTest::addColumn<QString>("clase");
    QTest::addColumn<QString>("motivo");
    const auto fila = [](const char *clase, const char *motivo) { QTest::newRow(clase) << clase << motivo; };
    fila("vacío", "» no es de Quorvex.");
    fila("cortado", "» ");
    fila("solo la cabecera", "» ");
    fila("tubería", "» no se puede leer: no es un archivo.");
    fila("carpeta", "» no se puede leer: no es un archivo.");
    fila("enlace", "abrió");
    fila("sin tabla", "» no se puede abrir (no such table: Formato_Clave).");
    fila("otra cosa por tabla", "» no se puede abrir (cannot modify Formato_Clave because it is a view).");
    fila("diario de otro", "abrió");
}

void PrAlcance::archivos()
{
    if (escenario->Base().EsPostgres())
        QSKIP("The shared server has no file");
    QFETCH(QString, clase);
    QFETCH(QString, motivo);
    const QString archivo = escenario->Ruta("ataque.db");
    const QByteArray bueno = Contenido(escenario->Archivo());
    if (clase == "tubería")
        QCOMPARE(mkfifo(QFile::encodeName(archivo).constData(), 0600), 0);
    else if (clase == "carpeta")
        QVERIFY(QDir().mkdir(archivo));
    else if (clase == "enlace")
        QVERIFY(QFile::link(escenario->Archivo(), archivo));
    else
        Poner(archivo, clase == "vacío" ? QByteArray() : bueno);
    if (clase == "diario de otro")
        Poner(archivo + "-journal", QByteArray(4096, 'x'));
    if (clase == "cortado" || clase == "solo la cabecera")
        QVERIFY(QFile::resize(archivo, clase == "cortado" ? bueno.size() / 2 : 100));
    if (clase == "sin tabla" || clase == "otra cosa por tabla") {
        escenario->Motor("ALTER TABLE Formato_Clave RENAME TO Guardada");
        if (clase == "otra cosa por tabla")
            escenario->Motor("CREATE VIEW Formato_Clave AS SELECT * FROM Guardada");
        Poner(archivo, Contenido(escenario->Archivo()));
    }
    const QString error = ErrorAlAbrir(archivo);
    QVERIFY2(error.contains(motivo) && (error == "abrió" || error.startsWith("La base de datos «" + archivo)),
             qPrintable(error));
}

// Bytes of a good file overwritten: it is refused with a word, or its plans are read as far as they can be.
void PrAlcance::paginas()
{
    if (escenario->Base().EsPostgres())
        QSKIP("The shared server has no file");
    QTemporaryDir carpeta;
    qvx::AbrirBaseDeDatos(carpeta.filePath("buena.db"), true);
    const QByteArray buena = Contenido(carpeta.filePath("buena.db"));
    int abiertas = 0;
    for (quint32 semilla = 1; semilla <= 40; ++semilla) {
        QRandomGenerator azar(semilla);
        QByteArray mala = buena;
        const int bytes = 1 << azar.bounded(12);
        for (int i = 0; i < bytes; ++i)
            mala[azar.bounded(semilla % 4 == 0 ? 8192 : static_cast<int>(mala.size()))] =
                static_cast<char>(azar.bounded(256));
        const QString archivo = carpeta.filePath(QString("%1.db").arg(semilla));
        Poner(archivo, mala);
        const QString error = ErrorAlAbrir(archivo);
        if (error != "abrió") {
            QVERIFY2(error.startsWith("La base de datos «" + archivo + "» ") && error.endsWith("."), qPrintable(error));
            continue;
        }
        ++abiertas;
        escenario.reset();
        escenario = std::make_unique<Escenario>(archivo);
        escenario->Pantalla();
        for (const char *tipo : {"1", "2", "3", "4"}) {
            Escribir(escenario->De<QWidget>("txtTipoEquipo"), tipo);
            auto &arbol = escenario->De<comunesQVX::TreeView>("tvPartes");
            arbol.expandAll();
            for (int i = 0; i < 8 && arbol.Count() > 0; ++i)
                QTest::keyClick(&arbol, Qt::Key_Down);
        }
        escenario->Personas().Tomar();
    }
    QVERIFY(abiertas > 5);
}

PRUEBA_MAIN(PrAlcance)
#include "pr_alcance.moc"
