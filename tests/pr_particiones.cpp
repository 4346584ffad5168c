// The plan's tables parted by their equipment type (schema/postgres/particiones.sql): the screen works on them as on
// whole ones, and each statement meets the partition of its type alone.

#include "plan/EsquemaServidor.h"
#include "plan/Integridad.h"
#include "support/Archivos.h"
#include "support/Cluster.h"
#include "support/Planificador.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>

namespace
{

// What the script ends with and says, "0" when it is done.
QString PartirTablas(const BaseDePrueba &base, int cuantas)
{
    QProcess psql;
    psql.setProcessChannelMode(QProcess::MergedChannels);
    psql.start("psql", {"-Xq", "-v", QString("particiones=%1").arg(cuantas), "-f",
                        QString(CARPETA_DATOS) + "/../../schema/postgres/particiones.sql",
                        cluster::Direccion("postgres", base.Archivo())});
    if (!psql.waitForFinished())
        qFatal("psql no termina");
    return QString::number(psql.exitCode()) + QString::fromUtf8(psql.readAll());
}

// All that the engine knows of the tables, but for whether they are parted; and their rows.
QStringList Definiciones(const OtroPrograma &otro)
{
    QStringList todo = otro.Filas(
        "WITH t AS (SELECT c.* FROM pg_class c WHERE relnamespace = 'dbo'::regnamespace AND relname IN "
        "('tipo_equipo_parte', 'plan_mantenimiento', 'plan_mantenimiento_detalle')) "
        "SELECT relname, pg_get_userbyid(relowner), relacl FROM t UNION ALL "
        "SELECT relname || '.' || attname, concat_ws(' ', attnum, format_type(atttypid, atttypmod), attcollation, "
        "attnotnull, attgenerated, pg_get_expr(adbin, adrelid)), attacl FROM t JOIN pg_attribute a ON attrelid = t.oid "
        "AND attnum > 0 LEFT JOIN pg_attrdef ON adrelid = t.oid AND adnum = attnum UNION ALL "
        "SELECT conname, pg_get_constraintdef(k.oid), NULL FROM t JOIN pg_constraint k ON conrelid = t.oid UNION ALL "
        "SELECT 'índice', replace(pg_get_indexdef(indexrelid), ' ON ONLY ', ' ON '), NULL FROM t JOIN pg_index ON "
        "indrelid = t.oid AND indisvalid UNION ALL "
        "SELECT 'disparador', pg_get_triggerdef(g.oid), NULL FROM t JOIN pg_trigger g ON tgrelid = t.oid");
    todo += otro.Filas("SELECT * FROM Tipo_Equipo_Parte") + otro.Filas("SELECT * FROM Plan_Mantenimiento")
            + otro.Filas("SELECT * FROM Plan_Mantenimiento_Detalle");
    todo.sort();
    return todo;
}

// A statement that the server ran, and the partitions that it looked into.
struct Corrida {
    QString sentencia;
    QSet<QString> particiones;
};

void Recoger(const QJsonObject &paso, QSet<QString> &particiones)
{
    static const QRegularExpression particion(
        "^(?:tipo_equipo_parte|plan_mantenimiento|plan_mantenimiento_detalle)(_p\\d+)?$");
    const auto tabla = particion.match(paso["Relation Name"].toString());
    if (tabla.hasMatch() && paso["Node Type"] != "ModifyTable" && paso["Actual Loops"].toInt() > 0)
        particiones.insert(tabla.captured(1));
    for (const auto &otro : paso["Plans"].toArray())
        Recoger(otro.toObject(), particiones);
}

// Those of the sessions that tell (ContarLoQueCorre), since a place of the server's log.
QList<Corrida> Corridas(qint64 desde)
{
    QList<Corrida> corridas;
    QByteArray documento;
    const QByteArray bitacora =
        Contenido(qEnvironmentVariable("QVX_PRUEBA_SERVIDOR") + "/servidor.log").mid(desde) + "\n";
    for (const QByteArray &renglon : bitacora.split('\n')) {
        if (renglon.startsWith('\t')) {
            documento += renglon;
            continue;
        }
        if (const auto json = QJsonDocument::fromJson(documento); json.isObject()) {
            Corrida corrida{json["Query Text"].toString(), {}};
            Recoger(json["Plan"].toObject(), corrida.particiones);
            corridas.append(corrida);
        }
        documento.clear();
    }
    return corridas;
}

// Makes a planner's sessions tell how each statement ran, those inside functions and triggers too.
void ContarLoQueCorre(const BaseDePrueba &base)
{
    for (const char *ajuste : {"session_preload_libraries = auto_explain", "auto_explain.log_min_duration = 0",
                               "auto_explain.log_analyze = on", "auto_explain.log_timing = off",
                               "auto_explain.log_nested_statements = on", "auto_explain.log_format = json"})
        cluster::Super("ALTER ROLE mlopez IN DATABASE " + base.Archivo() + " SET " + ajuste);
}

} // namespace

class PrParticiones : public QObject, private Planificador
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("QVX_PRUEBA_MOTOR", "postgres"); }
    void guion();
    void dia();

private:
    QStringList Trabajar(const BaseDePrueba &base);
};

// It leaves what was there, and can be run again; so can what the owner runs with a new program.
void PrParticiones::guion()
{
    const BaseDePrueba base(true);
    const auto otro = base.Otro();
    otro->Correr("GRANT SELECT (Pm_ID) ON Plan_Mantenimiento TO mlopez WITH GRANT OPTION");
    otro->Correr("INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) VALUES "
                 "('K ', '1', '0000', 'CON BLANCO'), ('K', '2', '0000', 'SIN BLANCO')");
    const QStringList antes = Definiciones(*otro);
    const auto particiones = [&] {
        return otro
            ->Filas("SELECT inhparent::regclass, count(*) FROM pg_inherits JOIN pg_class ON oid = inhparent WHERE "
                    "relkind = 'p' GROUP BY 1 ORDER BY inhparent::regclass::text")
            .join(' ');
    };
    otro->Correr("CREATE VIEW De_Alguien AS SELECT * FROM Plan_Mantenimiento_Detalle");
    QVERIFY(PartirTablas(base, 16).contains("de_alguien"));
    QCOMPARE(particiones(), "");
    QCOMPARE(Definiciones(*otro), antes);
    otro->Correr("DROP VIEW De_Alguien");
    for (const int cuantas : {16, 3, 0, 16}) {
        QCOMPARE(PartirTablas(base, cuantas), "0");
        QCOMPARE(particiones(), cuantas == 0 ? QString()
                                             : QString("plan_mantenimiento|%1 plan_mantenimiento_detalle|%1 "
                                                       "tipo_equipo_parte|%1")
                                                   .arg(cuantas));
        QCOMPARE(Definiciones(*otro), antes);
    }
    QCOMPARE(otro->Filas("SELECT count(DISTINCT tableoid), count(*) FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = "
                         "'K  '"),
             QStringList("1|2"));
    otro->Correr("REVOKE SELECT (Pm_ID) ON Plan_Mantenimiento FROM mlopez");
    const QStringList partida = Definiciones(*otro);
    qvx::ActualizarEsquema(qvx::Servidor(cluster::Direccion("postgres", base.Archivo())));
    QCOMPARE(Definiciones(*otro), partida);
    for (const char *sentencia : {"SELECT * FROM dbo.Tipo_Equipo_Parte_p0", "DELETE FROM dbo.Plan_Mantenimiento_p0"})
        QCOMPARE(cluster::Codigo("mlopez", base.Archivo(), sentencia), "42501");
    QCOMPARE(cluster::Codigo("postgres", base.Archivo(), "TRUNCATE dbo.Plan_Mantenimiento"), "55000");
}

// A day at the screen, and all of it that is to be the same on each database.
QStringList PrParticiones::Trabajar(const BaseDePrueba &base)
{
    const auto propio = std::make_unique<Escenario>(base.Archivo());
    escenario = propio.get();
    SembrarPlan(*escenario);
    escenario->Pantalla("0900");
    const QString ruta = escenario->Ruta("plan.xml");
    GuardarParte("N0005", "Nuevo", "FLECHA");
    GuardarParte("N0007", "Nuevo", "CUÑA");
    GuardarParte("N0007", "Editar", "FLECHA MOTRIZ");
    Rotular("N0008", "0008 - cuña plana");
    Mandar("N0001", "Info");
    Mandar("N0001", "Eliminar");
    Mandar("N0002", "Reactivar", 7500045, qvx::mensaje::Aceptar);
    Mandar("N0003", "Reactivar");
    Mandar("N0007", "B1", 7500046);
    NuevoServicio("N0002", "1234.5678");
    CambiarServicio("N0002", "000004", "99.95");
    Mover("N0002", "000004", "N0005");
    EliminarServicio("N0005", "000004");
    Exportar(ruta);
    QByteArray documentos = Contenido(ruta);
    Copiar("0901");
    Importar(Poner(ruta, QByteArray(documentos).replace("\"0900\"", "\"0902\"")));
    for (const char *tipo : {"0902", "0001"}) {
        ElegirTipo(tipo);
        Exportar(ruta);
        documentos += Contenido(ruta);
    }
    QTest::keyClick(&Arbol(), Qt::Key_F5);
    QStringList todo = escenario->Personas().Tomar() + escenario->Traza(true);
    todo += escenario->Plan();
    todo.append(QString::fromUtf8(documentos));
    for (const auto &suelto : qvx::BuscarSueltos(qvx::Sesion::Actual().Conexion()))
        todo.append(suelto.tipoEquipo + suelto.clave + suelto.motivo);
    for (const char *claves : {"Parte", "Servicio", "Linea"}) {
        QStringList filas =
            escenario->Filas(QString("SELECT to_jsonb(h) - 'hi_id' - 'version' - 'version_anterior' FROM "
                                     "Historia_%1 h")
                                 .arg(claves));
        filas.sort();
        todo += filas;
    }
    return todo.replaceInStrings(escenario->Ruta(""), "");
}

// Once with families read ahead, and once with each statement as the trace has it.
void PrParticiones::dia()
{
    const BaseDePrueba entera(true);
    const QStringList esperado = Trabajar(entera);
    // "Revisar integridad" looks into the plans of all types. A part's path takes its type from row to row, so that the
    // server leaves the other partitions out as it goes, or reads them where they hold next to nothing.
    static const QRegularExpression deTodos(
        "(SELECT DISTINCT Te_Cve_Tipo_Equipo|NOT EXISTS \\(SELECT 1 FROM Tipo_Equipo_Parte|Detalle d LEFT JOIN)");
    static const QString ruta = "WITH RECURSIVE argumentos";
    for (const bool adelantado : {true, false}) {
        const BaseDePrueba base(true);
        QCOMPARE(PartirTablas(base, 16), "0");
        ContarLoQueCorre(base);
        const qint64 desde = Contenido(qEnvironmentVariable("QVX_PRUEBA_SERVIDOR") + "/servidor.log").size();
        if (!adelantado)
            qputenv("QVX_SIN_ADELANTO", "1");
        const QStringList visto = Trabajar(base);
        qunsetenv("QVX_SIN_ADELANTO");
        for (int i = 0; i < visto.size(); ++i)
            QCOMPARE(visto.value(i), esperado.value(i));
        QCOMPARE(visto.size(), esperado.size());
        static const QRegularExpression delPlan("Tipo_Equipo_Parte|Plan_Mantenimiento( |_Detalle)");
        QStringList otras;
        int vistas = 0;
        for (const auto &[sentencia, particiones] : Corridas(desde)) {
            const auto cuantas = particiones.contains("") ? 0 : particiones.size();
            if (sentencia.contains(deTodos) ? cuantas < 2
                                            : cuantas != 1 && !particiones.isEmpty() && !sentencia.contains(ruta))
                otras.append(QString::number(cuantas) + " " + sentencia);
            vistas += sentencia.contains(delPlan) ? 1 : 0;
        }
        QVERIFY2(otras.isEmpty(), qPrintable(otras.join('\n')));
        QVERIFY2(vistas >= (adelantado ? 100 : esperado.filter(QRegularExpression("^\\d+\t")).filter(delPlan).size()),
                 qPrintable(QString::number(vistas)));
    }
}

PRUEBA(PrParticiones)
#include "pr_particiones.moc"
