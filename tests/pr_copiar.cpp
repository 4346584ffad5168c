#include "controls/Comunes.h"
#include "controls/Controles.h"
#include "controls/txtQVX.h"
#include "data/Instalador.h"
#include "support/Averia.h"
#include "support/Plan.h"

#include <QFileInfo>
#include <QLineEdit>
#include <QProcess>
#include <QRegularExpression>

using comunesQVX::ListView;
using comunesQVX::TreeView;
using textoQVX::txtQVX;
using toolbarQVX::Controles;

// Copying the plan of the type on the screen, 0900, to another one.
class PrCopiar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void preguntas_data();
    void preguntas();
    void copia();
    void sinPartes();
    void fallas_data();
    void fallas();
    void muerte_data();
    void muerte();
    void grande();

private:
    TreeView &Arbol() { return escenario->De<TreeView>("tvPartes"); }
    Controles &Barra() { return escenario->De<Controles>("Controles"); }
    QString Tipo() { return escenario->De<txtQVX>("txtTipoEquipo").Text(); }
    QStringList Mensajes() { return escenario->Personas().Tomar(); }
    void Copiar(const QString &destino, const std::function<void()> &antes = {});
    QStringList Plan(const QString &tipo);

    std::unique_ptr<Escenario> escenario;
};

namespace
{

const QString Pregunta = "292|Quorvex|KT580|ERR-ID:7500049|El tipo de equipo seleccionado ya tiene un plan de de "
                         "mantenimiento, ¿Desea reemplazarlo?";
const QString ColumnasParte = "Tep_ID,Tep_Descripcion,Tep_Padre,Oper_Alta,Fecha_Alta,Oper_Baja,Fecha_Baja,"
                              "Oper_Ult_Modif,Fecha_Ult_Modif,Es_Cve_Estado ";
const QString ColumnasServicio =
    "Tep_ID,Pm_ID,Ts_Cve_Tipo_Servicio,Pm_Frecuencia,Pm_Lectura,Pm_Unidad_Lectura,Pm_Precio,Pm_Tiempo_Estimado,"
    "Pm_Prioridad,Pm_Requiere_Paro,Pm_Tiempo_Paro,Oper_Alta,Fecha_Alta,Oper_Baja,Fecha_Baja,Oper_Ult_Modif,"
    "Fecha_Ult_Modif,Es_Cve_Estado ";
const QString ColumnasLinea =
    "Tep_ID,Pm_ID,Pmd_ID,Pmd_Tipo,Pr_Cve_Producto,Pmd_Cantidad,Pmd_Unidad,Pmd_Costo,Pmd_Importe ";

// What the other process of the test does: one copy, from its own start to its end.
int CopiarEnEsteProceso(const QString &lugar, const QString &origen, const QString &destino)
{
    Escenario escenario(lugar);
    escenario.Pantalla(origen);
    escenario.Personas().Elegir("TIPO_EQUIPO", destino);
    escenario.Personas().Responder(7500049, qvx::mensaje::Si);
    Pulsar(escenario.De<Controles>("Controles"), "B3");
    return 0;
}

} // namespace

void PrCopiar::init()
{
    escenario = std::make_unique<Escenario>();
    SembrarPlan(*escenario);
    escenario->Motor("INSERT INTO Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio) VALUES "
                     "('0902', '0001', '000077', '9001')");
    escenario->Motor("INSERT INTO Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, "
                     "Pr_Cve_Producto) VALUES ('0902', '0001', '000077', '000077', '03', '9000000003')");
}

void PrCopiar::cleanup()
{
    QCOMPARE(Mensajes(), QStringList());
    escenario.reset();
}

// Presses "Copiar plan" and answers the question with Yes; antes runs while it is shown.
void PrCopiar::Copiar(const QString &destino, const std::function<void()> &antes)
{
    escenario->Personas().Elegir("TIPO_EQUIPO", destino);
    escenario->Personas().Responder(7500049, qvx::mensaje::Si, antes);
    Pulsar(Barra(), "B3");
}

// Everything of a type's plan but the type's key and the expense types.
QStringList PrCopiar::Plan(const QString &tipo)
{
    QStringList filas;
    for (const QString &consulta :
         {ColumnasParte + "FROM Tipo_Equipo_Parte", ColumnasServicio + "FROM Plan_Mantenimiento",
          ColumnasLinea + "FROM Plan_Mantenimiento_Detalle"})
        filas += escenario->Filas("SELECT " + consulta + " WHERE Te_Cve_Tipo_Equipo = '" + tipo + "' ORDER BY 1, 2, 3");
    return filas;
}

void PrCopiar::preguntas_data()
{
    QTest::addColumn<QString>("origen");
    QTest::addColumn<QString>("destino");
    QTest::addColumn<QString>("mensaje");
    const auto fila = [](const char *nombre, const QString &origen, const QString &destino, const QString &mensaje) {
        QTest::newRow(nombre) << origen << destino << mensaje;
    };
    const QString igual = "48|Quorvex|KT580|ERR-ID:7500033|El tipo de equipo seleccionado es igual al actual";
    fila("sin tipo", "", "no se busca",
         "48|Quorvex|KT580|ERR-ID:7500032|Seleccione un tipo de equipo para copiar el plan de mantenimiento");
    fila("el mismo", "0900", "0900", igual);
    fila("el mismo con blanco", "0900", "0900 ", igual);
    fila("sin elegir", "0900", "", "");
    fila("no", "0900", "0902", Pregunta);
    fila("no, sin plan que reemplazar", "0900", "0901", Pregunta);
    fila("no, sin plan que copiar", "0901", "0902", Pregunta);
}

// What ends the command before it changes anything.
void PrCopiar::preguntas()
{
    QFETCH(QString, origen);
    QFETCH(QString, destino);
    QFETCH(QString, mensaje);
    const QWidget &pantalla = escenario->Pantalla(origen);
    const QStringList antes = escenario->Tablas();
    escenario->Traza();
    if (!origen.isEmpty())
        escenario->Personas().Elegir("TIPO_EQUIPO", destino);
    if (mensaje == Pregunta)
        escenario->Personas().Responder(7500049, qvx::mensaje::No);
    Q_EMIT Barra().B3Click(); // without a type the button is hidden
    QCOMPARE(escenario->Personas().ventanas, QList<WId>(mensaje.isEmpty() ? 0 : 1, pantalla.winId()));
    QCOMPARE(Mensajes().join('\n'), mensaje);
    const QStringList traza = escenario->Traza();
    QCOMPARE(traza.size(), mensaje == Pregunta ? 1 : 0);
    if (mensaje == Pregunta)
        QVERIFY(traza.constFirst().endsWith(
            "\tSELECT Te_Cve_Tipo_Equipo FROM Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = '" + destino + "' "));
    QCOMPARE(escenario->Tablas(), antes);
    QCOMPARE(Tipo(), origen);
}

void PrCopiar::copia()
{
    escenario->Pantalla("0900");
    ElegirNodo(Arbol(), "N0005");
    escenario->Traza();
    Copiar("0902");
    QCOMPARE(Mensajes(), QStringList{Pregunta});
    const auto borrar = [](const QString &filas, const QString &tabla) {
        return QString("%1\tDELETE FROM %2 WHERE Te_Cve_Tipo_Equipo = '0902' ").arg(filas, tabla);
    };
    const auto copiar = [](const QString &filas, const QString &tabla, const QString &columnas, const QString &desde) {
        return QString("%1\tinsert into %2(Te_Cve_Tipo_Equipo,%3) SELECT '0902',%3%4WHERE Te_Cve_Tipo_Equipo = "
                       "'0900'  ")
            .arg(filas, tabla, columnas, desde);
    };
    QCOMPARE(escenario->Traza().mid(1, 8),
             (QStringList{motor::Inicio(), borrar("1", "Plan_Mantenimiento_Detalle"), borrar("1", "Plan_Mantenimiento"),
                          borrar("1", "Tipo_Equipo_Parte"),
                          copiar("6", "Tipo_Equipo_Parte", ColumnasParte, "from Tipo_Equipo_Parte "),
                          copiar("3", "Plan_Mantenimiento", ColumnasServicio, "FROM Plan_Mantenimiento  "),
                          copiar("4", "Plan_Mantenimiento_Detalle", ColumnasLinea, "FROM Plan_Mantenimiento_Detalle "),
                          "-\tCOMMIT"}));
    const QStringList plan = Plan("0900");
    QCOMPARE(plan.size(), 13);
    QCOMPARE(Plan("0902"), plan);
    QCOMPARE(escenario->Filas("SELECT DISTINCT Te_Cve_Tipo_Equipo, Pmd_Tipo_Gasto FROM Plan_Mantenimiento_Detalle "
                              "WHERE Pmd_Tipo = '02' ORDER BY 1"),
             (QStringList{"0900|9001", "0902|"}));

    // The screen shows the target.
    QCOMPARE(Tipo(), "0902");
    QCOMPARE(escenario->De<txtQVX>("txtNTipoEquipo").Text(), "AJENA");
    QVERIFY(escenario->De<txtQVX>("txtTipoEquipo").findChild<QLineEdit *>()->hasFocus());
    QCOMPARE(Arbol().Count(), 6);
    QCOMPARE(Arbol().Item("N0003")->Image(), 3);
    QCOMPARE(escenario->De<ListView>("lvServicios").Count(), 0);
    QCOMPARE(Barra().Titulo3(), "Copiar plan");
}

void PrCopiar::sinPartes()
{
    escenario->Pantalla("0901");
    Copiar("0902");
    QCOMPARE(Mensajes(), QStringList{Pregunta});
    QCOMPARE(Plan("0902"), QStringList());
    QCOMPARE(Tipo(), "0902");
    QCOMPARE(Arbol().Count(), 1);
    QCOMPARE(Plan("0900").size(), 13);
}

void PrCopiar::fallas_data()
{
    QTest::addColumn<QString>("falla");
    QTest::addColumn<QString>("mensaje");
    const QString alCopiar = "16|Error al copiar|KT580|ERR-ID:7500034|";
    for (const char *suceso :
         {"DELETE ON Plan_Mantenimiento_Detalle", "DELETE ON Plan_Mantenimiento", "DELETE ON Tipo_Equipo_Parte",
          "INSERT ON Tipo_Equipo_Parte", "INSERT ON Plan_Mantenimiento", "INSERT ON Plan_Mantenimiento_Detalle"})
        QTest::newRow(suceso) << QString("AFTER ") + suceso << alCopiar + "falla";
    QTest::newRow("la edita otro") << "ocupada" << alCopiar + motor::Ocupada("0902");
    QTest::newRow("confirmación") << "confirmación" << alCopiar + motor::NoConfirma();
}

// Both plans stay as they were, whichever statement fails; the same command then succeeds.
void PrCopiar::fallas()
{
    QFETCH(QString, falla);
    escenario->Pantalla("0900");
    const QStringList antes = escenario->Tablas();
    std::unique_ptr<Averia> averia;
    Copiar("0902", [&] { averia = std::make_unique<Averia>(*escenario, falla); });
    QTEST(Mensajes().value(1), "mensaje");
    averia->Reparar();
    QCOMPARE(escenario->Tablas(), antes);
    QCOMPARE(Tipo(), "0900");
    QCOMPARE(Arbol().Count(), 6);

    Copiar("0902");
    QCOMPARE(Plan("0902"), Plan("0900"));
    QCOMPARE(Mensajes(), QStringList{Pregunta});
}

void PrCopiar::muerte_data()
{
    QTest::addColumn<QString>("dicho"); // the last statement that runs to its end
    QTest::addColumn<int>("sentencias");
    QTest::addColumn<QString>("detenido"); // and the one that is held up before its first row
    QTest::newRow("1-2") << "DELETE FROM Plan_Mantenimiento_Detalle " << 1 << "DELETE ON Plan_Mantenimiento";
    QTest::newRow("2-3") << "DELETE FROM Plan_Mantenimiento " << 2 << "DELETE ON Tipo_Equipo_Parte";
    QTest::newRow("3-4") << "DELETE FROM Tipo_Equipo_Parte " << 3 << "INSERT ON Tipo_Equipo_Parte";
    QTest::newRow("4-5") << "insert into Tipo_Equipo_Parte(" << 4 << "INSERT ON Plan_Mantenimiento";
    QTest::newRow("5-6") << "insert into Plan_Mantenimiento(" << 5 << "INSERT ON Plan_Mantenimiento_Detalle";
    if (!motor::EsPostgres()) // there the commit is the server's once it is asked for
        QTest::newRow("6-confirmación") << "insert into Plan_Mantenimiento_Detalle(" << 6 << "";
    QTest::newRow("confirmada") << "COMMIT" << 7 << "";
}

// A process that is killed between any two statements of the copy leaves the target's old plan whole, once the database
// is opened again. A trigger holds up the next statement, a reader the commit. The plans are so large that the engine
// has written some of the change to the file by then, except before the commit, which would have to wait to do that.
void PrCopiar::muerte()
{
    QFETCH(QString, dicho);
    QFETCH(int, sentencias);
    QFETCH(QString, detenido);
    const bool grandes = !detenido.isEmpty();
    const bool confirmada = dicho == "COMMIT";
    if (grandes) {
        SembrarGrande(*escenario, "0904", 1000);
        SembrarGrande(*escenario, "0905", 999);
    }
    const QStringList antes = escenario->Tablas();
    std::unique_ptr<QObject> freno;
    if (!confirmada)
        freno = grandes ? escenario->Detener(detenido) : escenario->Leyendo();
    escenario->Traza();

    QProcess hijo;
    auto entorno = QProcessEnvironment::systemEnvironment();
    entorno.insert("TMPDIR", QFileInfo(escenario->Ruta("traza")).path());
    hijo.setProcessEnvironment(entorno);
    hijo.start(QCoreApplication::applicationFilePath(),
               QStringList{"--copiar", escenario->Base().Lugar()}
                   + (grandes ? QStringList{"0904", "0905"} : QStringList{"0900", "0902"}));
    static const QRegularExpression sentencia("^\\d+\t(DELETE FROM|insert into)|^-\tCOMMIT");
    QStringList hechas;
    QTRY_VERIFY_WITH_TIMEOUT((hechas += escenario->Traza().filter(sentencia)).join('\n').contains(dicho)
                                 || hijo.state() == QProcess::NotRunning,
                             100000);
    hijo.kill();
    QVERIFY(hijo.state() == QProcess::NotRunning || hijo.waitForFinished());
    QCOMPARE(hechas.size(), sentencias);

    if (motor::EsPostgres()) {
        freno.reset();
        const QString sesiones = "SELECT count(*) FROM pg_stat_activity WHERE datname = current_database() AND "
                                 "usename = 'mlopez'";
        QTRY_COMPARE_WITH_TIMEOUT(escenario->Motor(sesiones).toInt(), 1, 20000); // the other's is gone
    } else {
        if (!confirmada)
            QVERIFY(QFileInfo(escenario->Archivo() + "-journal").size() > 0);
        qvx::AbrirBaseDeDatos(escenario->Archivo(), false);
        QCOMPARE(escenario->Motor("PRAGMA integrity_check").toString(), "ok");
    }
    if (confirmada)
        QCOMPARE(Plan("0902"), Plan("0900"));
    else
        QVERIFY(escenario->Tablas() == antes);
}

void PrCopiar::grande()
{
    SembrarGrande(*escenario, "0904", 10000);
    escenario->Pantalla("0904");
    Copiar("0902");
    QCOMPARE(Mensajes(), QStringList{Pregunta});
    const QString suma = "SELECT count(*), sum(Pmd_Importe), (SELECT count(*) FROM Plan_Mantenimiento WHERE "
                         "Te_Cve_Tipo_Equipo = '%1'), (SELECT count(*) FROM Tipo_Equipo_Parte WHERE "
                         "Te_Cve_Tipo_Equipo = '%1') FROM Plan_Mantenimiento_Detalle WHERE Te_Cve_Tipo_Equipo = '%1'";
    const QStringList copiado = escenario->Filas(suma.arg("0902"));
    QVERIFY(copiado.constFirst().startsWith("100000|") && copiado.constFirst().endsWith("|20000|10000"));
    QCOMPARE(copiado, escenario->Filas(suma.arg("0904")));
    QCOMPARE(Arbol().Count(), 10001);
}

int main(int argc, char **argv)
{
    qvx::Aplicacion aplicacion(argc, argv);
    if (argc == 5 && qstrcmp(argv[1], "--copiar") == 0)
        return CopiarEnEsteProceso(QFile::decodeName(argv[2]), argv[3], argv[4]);
    PrCopiar prueba;
    return QTest::qExec(&prueba, argc, argv);
}
#include "pr_copiar.moc"
