#include "controls/Comunes.h"
#include "controls/Controles.h"
#include "controls/txtQVX.h"
#include "support/Averia.h"
#include "support/Plan.h"

#include <QRegularExpression>

using comunesQVX::TreeView;
using textoQVX::txtQVX;
using toolbarQVX::Controles;

namespace
{

constexpr int Pregunta = 7500048;

QByteArray Documento(const QByteArray &tipo, const QByteArray &contenido)
{
    return "<?xml version='1.0'?><PlanMantenimiento><TipoEquipo Id=\"" + tipo + "\">" + contenido
           + "</TipoEquipo></PlanMantenimiento>";
}

QByteArray Servicio(const QByteArray &paro, const QByteArray &lineas = "<ManoObra/><Refacciones/><Herramientas/>")
{
    return "<TipoServicio Id=\"9001\" UnidadLectura=\"HRS\" FrecuenciaLectura=\"1250.50\" FrecuenciaDias=\"030\" "
           "RequiereParo=\""
           + paro + "\" Duracion=\"2.5\" Precio=\"500\" Prioridad=\"9001\">" + lineas + "</TipoServicio>";
}

const QByteArray Lineas = "<ManoObra><Servicio Id=\"9000000001\" Cantidad=\"2\"/><Servicio Id=\"P1\" Cantidad=\"2\"/>"
                          "</ManoObra><Refacciones><Refaccion Id=\"9000000002\" Cantidad=\"3\" TipoGasto=\"9001\"/>"
                          "</Refacciones><Herramientas><Herramienta Id=\"9000000003\" Cantidad=\"1\"/>"
                          "<Herramienta Id=\"P2\" Cantidad=\"1\"/></Herramientas>";

} // namespace

// The import: what it writes, what it asks, what it refuses, and that a failed one writes nothing.
class PrImportar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void importado();
    void productosDesconocidos();
    void rechazos_data();
    void rechazos();
    void fallas_data();
    void fallas();
    void idaYVuelta_data();
    void idaYVuelta();

private:
    QStringList Mensajes() { return escenario->Personas().Tomar(); }
    QString Ruta(const QString &nombre) const { return carpeta->filePath(nombre); }
    void Importar(const QByteArray &documento, int respuesta = 0);
    QByteArray Exportar(const QString &tipo);
    void SembrarGenerado() const;

    std::unique_ptr<Escenario> escenario;
    std::unique_ptr<QTemporaryDir> carpeta;
};

void PrImportar::init()
{
    carpeta = std::make_unique<QTemporaryDir>();
    escenario = std::make_unique<Escenario>();
    SembrarPlan(*escenario);
}

void PrImportar::cleanup()
{
    QCOMPARE(Mensajes(), QStringList());
    escenario.reset();
}

void PrImportar::Importar(const QByteArray &documento, int respuesta)
{
    QFile archivo(Ruta("plan.xml"));
    QVERIFY(archivo.open(QIODevice::WriteOnly) && archivo.write(documento) == documento.size());
    archivo.close();
    escenario->Personas().DarArchivo(Ruta("plan.xml"));
    if (respuesta)
        escenario->Personas().Responder(Pregunta, respuesta);
    Pulsar(escenario->De<Controles>("Controles"), "B2");
}

QByteArray PrImportar::Exportar(const QString &tipo)
{
    Escribir(escenario->De<txtQVX>("txtTipoEquipo"), tipo);
    escenario->Personas().DarArchivo(Ruta("exportado.xml"));
    Pulsar(escenario->De<Controles>("Controles"), "B1");
    if (Mensajes().size() != 1)
        QTest::qFail("El plan no se exportó", __FILE__, __LINE__);
    QFile archivo(Ruta("exportado.xml"));
    return archivo.open(QIODevice::ReadOnly) ? archivo.readAll() : QByteArray();
}

// Every statement as it is composed, and the screen afterwards. Another type's plan is on the screen before.
void PrImportar::importado()
{
    QWidget &pantalla = escenario->Pantalla("0902");
    ElegirNodo(escenario->De<TreeView>("tvPartes"), "N0000");
    escenario->Traza();
    Importar(Documento("0900", Servicio("NO") + "<!-- a note --><Parte Id=\"0001\" Descripción=\"EJE\">"
                                   + Servicio("SI", Lineas) + "<Parte Id=\"X\" Descripción=\"\"/></Parte>"),
             qvx::mensaje::Si);
    QCOMPARE(escenario->Personas().ventanas, (QList<WId>{pantalla.winId(), pantalla.winId()}));
    QCOMPARE(Mensajes(),
             (QStringList{"36|Importar_xml()|KT580|ERR-ID:7500048|Se reemplazará el plan de mantenimiento actual del "
                          "tipo de equipo0900, ¿DESEA CONTINUAR?",
                          "48|Importar XML|KT580|ERR-ID:7500024|Los productos:  ,P1 ,P2 no están registrados en la "
                          "base de datos, no se agregaron al servicio"}));
    QCOMPARE(escenario->Personas().dialogos, QStringList{"abrir|ABRIR XML|Archivo XML|*.xml||"});

    const QString firma = "'mlopez', '2026-03-14 09:26:53', 'mlopez', '2026-03-14 09:26:53' )";
    const QString servicio = "1\tINSERT INTO Plan_Mantenimiento (   Te_Cve_Tipo_Equipo,    Tep_ID ,   Pm_ID ,   "
                             "Ts_Cve_Tipo_Servicio ,   Pm_Frecuencia ,   Pm_Lectura ,    Pm_Unidad_Lectura ,   "
                             "Pm_Precio ,   Pm_Tiempo_Estimado ,   Pm_Prioridad ,   Pm_Requiere_Paro ,   "
                             "Pm_Tiempo_Paro ,   Oper_Alta ,   Fecha_Alta ,   Oper_Ult_Modif ,   Fecha_Ult_Modif ) "
                             "VALUES (   '0900',    '%1',    '%2',    '9001',    30,    1250.5,    'HRS',    500,    "
                             "2.5,    '9001',    '%3',    %4,    'mlopez',    '2026-03-14 09:26:53',    'mlopez',    "
                             "' 2026-03-14 09:26:53' )";
    const QString parte = "1\tINSERT INTO Tipo_Equipo_Parte (       Te_Cve_Tipo_Equipo,        Tep_ID,        "
                          "Tep_Descripcion,        Tep_Padre,        Oper_Alta,        Fecha_Alta,        "
                          "Oper_Ult_Modif,        Fecha_Ult_Modif ) VALUES ('0900', '%1', '%2', '%3', "
                          + firma;
    const QString producto = "%1\t SELECT Pr_Unidad_Control_1 AS Unidad, Pr_Costo_Estandar AS Costo FROM Producto "
                             "WHERE Pr_Cve_Producto = '%2' ";
    const QString linea = "1\tINSERT INTO Plan_Mantenimiento_Detalle (   Te_Cve_Tipo_Equipo ,   Tep_ID ,   Pm_ID ,   "
                          "Pmd_ID ,   Pmd_Tipo ,   Pr_Cve_Producto ,   Pmd_Cantidad ,   Pmd_Unidad ,   Pmd_Costo ,   "
                          "Pmd_Importe %1 ) VALUES (   '0900',    '0001',    '000002',    %2 ) ";
    const QStringList sentencias{
        motor::Inicio(),
        "1\t SELECT * FROM Tipo_Equipo WHERE Te_Cve_Tipo_Equipo = '0900' AND Es_Cve_Estado <> 'CA' ",
        "4\tDELETE FROM Plan_Mantenimiento_Detalle WHERE    Te_Cve_Tipo_Equipo = '0900' ",
        "3\tDELETE FROM Plan_Mantenimiento WHERE    Te_Cve_Tipo_Equipo = '0900' ",
        "6\tDELETE FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' ",
        servicio.arg("0900", "000001", "NO", "0"), // right under the type: the type's key
        parte.arg("0001", "EJE", "0000"),
        servicio.arg("0001", "000002", "SI", "2.5"),
        producto.arg("1", "9000000001"),
        linea.arg("", "'000001',    '01',    '9000000001',    2,    'HR',    150.25,    300.5 "),
        producto.arg("0", "P1"),
        producto.arg("1", "9000000002"),
        linea.arg("   , Pmd_Tipo_Gasto ",
                  "'000002',    '02',    '9000000002',    3,    'PZA',    80.1,    240.29999999999998  ,  '9001' "),
        producto.arg("1", "9000000003"),
        linea.arg("", "'000003',    '03',    '9000000003',    1,    'PZA',    5,    5 "),
        producto.arg("0", "P2"),
        parte.arg("X", "", "0001"),
        "-\tCOMMIT",
    };
    const QStringList traza = escenario->Traza();
    for (int i = 0; i < sentencias.size(); ++i)
        QCOMPARE(traza.value(i), sentencias.at(i));
    QCOMPARE(escenario->De<txtQVX>("txtTipoEquipo").Text(), "0900");
    QCOMPARE(escenario->De<txtQVX>("txtNTipoEquipo").Text(), "BOMBA DE PRUEBA");
    QCOMPARE(escenario->De<TreeView>("tvPartes").Count(), 3);
    const Controles &barra = escenario->De<Controles>("Controles");
    QCOMPARE(barra.Titulo1() + "|" + barra.Titulo2() + "|" + barra.Titulo3(), "Exportar XML|Importar XML|Copiar plan");
    QVERIFY(!barra.NuevoDisponible()); // the node that offered it is gone
    QCOMPARE(escenario->Filas("SELECT Es_Cve_Estado FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900'"),
             (QStringList{"AC", "AC"}));
    QCOMPARE(escenario->Motor("SELECT count(*) FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0902'").toInt(), 1);

    // The next dialog opens in the folder of the last, on what it last held.
    escenario->Personas().DarArchivo("");
    Pulsar(escenario->De<Controles>("Controles"), "B2");
    QCOMPARE(escenario->Personas().dialogos.constLast(),
             "abrir|ABRIR XML|Archivo XML|*.xml|" + Ruta("plan.xml") + "|" + carpeta->path());
}

// A failure replaces the list of unknown products, and the next import begins with an empty one.
void PrImportar::productosDesconocidos()
{
    escenario->Pantalla("0900");
    const QStringList antes = escenario->Tablas();
    const QByteArray repetida = "<Parte Id=\"1\" Descripción=\"\"/>";
    Importar(Documento("0900", Servicio("NO", Lineas) + repetida + repetida), qvx::mensaje::Si);
    QCOMPARE(Mensajes().value(1), "16|Controles_B2Click()|KT580|ERR-ID:7500023|" + motor::ParteRepetida());
    QCOMPARE(escenario->Tablas(), antes);
    Importar(Documento("0900", Servicio("NO")), qvx::mensaje::Si);
    QCOMPARE(Mensajes().size(), 1); // the question only
    // A plan without parts: there is nothing to export.
    QCOMPARE(escenario->De<Controles>("Controles").Titulo1(), "");
}

void PrImportar::rechazos_data()
{
    QTest::addColumn<QByteArray>("documento");
    QTest::addColumn<int>("respuesta");
    QTest::addColumn<QString>("mensaje"); // the last
    QTest::addColumn<QString>("detalles");
    const QString formato = "El archivo xml que se cargo no cumple con el formato del mantenimiento";
    const QString sinTipo = "48|Quorvex|KT580|ERR-ID:7500027|No existe el tipo de equipo '%1' en la bas de datos";
    const QString comillas = "16|Controles_B2Click()|KT580|ERR-ID:7500023|";
    QTest::newRow("no es XML") << QByteArray("hola") << 0 << "48|Quorvex|KT580|ERR-ID:7500025|" + formato
                               << "Renglón 1: El documento no está bien formado: Start tag expected, '<' not found";
    QTest::newRow("otro orden") << Documento("0900", "\n<Parte Descripción=\"A\" Id=\"1\"/>") << 0
                                << "48|Quorvex|KT580|ERR-ID:7500025|" + formato
                                << "Renglón 2, Parte: los atributos deben ir en este orden: Id, Descripción";
    QTest::newRow("sin tipo") << QByteArray("<PlanMantenimiento/>") << 0 << "48|Quorvex|KT580|ERR-ID:7500026|" + formato
                              << "";
    QTest::newRow("tipo desconocido") << Documento("7777", "") << 0 << sinTipo.arg("7777") << "";
    QTest::newRow("tipo cancelado") << Documento("0903", "") << 0 << sinTipo.arg("0903") << "";
    QTest::newRow("No") << Documento("0900", "") << qvx::mensaje::No
                        << "36|Importar_xml()|KT580|ERR-ID:7500048|Se reemplazará el plan de mantenimiento actual del "
                           "tipo de equipo0900, ¿DESEA CONTINUAR?"
                        << "";
    QTest::newRow("comilla") << Documento("0900", "<Parte Id=\"1\" Descripción=\"D'ALEMBERT\"/>") << qvx::mensaje::Si
                             << comillas + motor::Sintaxis("ALEMBERT") << "";
    // Texts that would otherwise become part of the statement.
    QTest::newRow("cualquier tipo") << Documento("x' OR '1'='1", "") << 0
                                    << comillas + "Un valor del documento lleva comillas"
                                    << "";
    QTest::newRow("otra consulta") << Documento("0900", "<Parte Id=\"1' || '\" Descripción=\"A\"/>") << qvx::mensaje::Si
                                   << comillas + "Un valor del documento lleva comillas"
                                   << "";
    QTest::newRow("entre dos valores") << Documento(
        "0900", "<Parte Id=\"1'\" Descripción=\", '0000', 'o', 'f', 'o', 'f'), ('0902', '7\"/>")
                                       << qvx::mensaje::Si << comillas + "Un valor del documento lleva comillas"
                                       << "";
}

void PrImportar::rechazos()
{
    QFETCH(QByteArray, documento);
    QFETCH(int, respuesta);
    escenario->Pantalla("0902");
    const QStringList antes = escenario->Tablas();
    Importar(documento, respuesta);
    QTEST(escenario->Personas().detalles.value(respuesta == qvx::mensaje::Si), "detalles");
    QTEST(Mensajes().value(respuesta == qvx::mensaje::Si), "mensaje");
    QCOMPARE(escenario->Tablas(), antes);
    QCOMPARE(escenario->De<txtQVX>("txtTipoEquipo").Text(), "0902");
    QVERIFY(!QApplication::overrideCursor());
    // The transaction is over: another program gets at the database at once.
    escenario->Motor("UPDATE Tipo_Gasto SET Tg_Descripcion = 'OTRA'");
}

void PrImportar::fallas_data()
{
    QTest::addColumn<QString>("falla"); // a trigger's event, a statement, or ""
    QTest::addColumn<QString>("motivo");
    for (const char *tabla : {"Plan_Mantenimiento_Detalle", "Plan_Mantenimiento", "Tipo_Equipo_Parte"})
        for (const char *verbo : {"DELETE", "INSERT"})
            QTest::addRow("%s %s", verbo, tabla) << QString("%1 ON %2").arg(verbo, tabla) << "falla";
    QTest::newRow("producto") << "ALTER TABLE Producto RENAME TO Guardada" << motor::NoHayTabla("Producto");
    QTest::newRow("número de servicio") << "ALTER TABLE Plan_Mantenimiento RENAME COLUMN Pm_Numero TO Otro"
                                        << motor::NoHayColumna("Pm_Numero");
    QTest::newRow("número de línea") << "ALTER TABLE Plan_Mantenimiento_Detalle RENAME COLUMN Pmd_Numero TO Otro"
                                     << motor::NoHayColumna("Pmd_Numero");
    QTest::newRow("confirmación") << "confirmación" << motor::NoConfirma();
}

// Each statement of the import in its turn.
void PrImportar::fallas()
{
    QFETCH(QString, falla);
    escenario->Pantalla("0900");
    const QStringList antes = escenario->Tablas();
    Averia averia(*escenario, falla);
    Importar(Documento("0900", "<Parte Id=\"7\" Descripción=\"EJE\">" + Servicio("SI", Lineas) + "</Parte>"),
             qvx::mensaje::Si);
    QFETCH(QString, motivo);
    QCOMPARE(Mensajes().value(1), "16|Controles_B2Click()|KT580|ERR-ID:7500023|" + motivo);
    averia.Reparar();
    QCOMPARE(escenario->Tablas(), antes);
}

void PrImportar::idaYVuelta_data()
{
    QTest::addColumn<QString>("tipo");
    for (const char *tipo : {"0001", "0002", "0003", "0004", "0005"})
        QTest::newRow(tipo) << tipo;
    QTest::newRow("2,000 partes") << "0006";
}

// 2,000 parts, three levels and more, with services and lines of every kind.
void PrImportar::SembrarGenerado() const
{
    const QString contar = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2000) ";
    escenario->Motor("INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) " + contar
                     + "SELECT '0006', " + ClaveDe("i", 4) + ", " + ClaveDe("i / 7", 4)
                     + ", 'PIEZA \"' || (i * 7919 % 2003) || "
                       "'\" <Ñ>&' FROM n");
    escenario->Motor("INSERT INTO Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio, "
                     "Pm_Frecuencia, Pm_Lectura, Pm_Unidad_Lectura, Pm_Precio, Pm_Tiempo_Estimado, Pm_Prioridad, "
                     "Pm_Requiere_Paro) "
                     + contar + "SELECT '0006', " + ClaveDe("i", 4) + ", " + ClaveDe("i", 6)
                     + ", '0001', i % 365, i / 3.0, 'HR', i * 1.1, "
                       "i % 9 / 4.0, '0003', CASE i % 2 WHEN 0 THEN 'SI' ELSE 'NO' END FROM n WHERE i % 2 = 0");
    escenario->Motor("INSERT INTO Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, "
                     "Pr_Cve_Producto, Pmd_Cantidad) "
                     "SELECT '0006', Tep_ID, Pm_ID, "
                     + ClaveDe("k", 6) + ", " + ClaveDe("1 + k % 3", 2)
                     + ", Pr_Cve_Producto, "
                       "Pm_Numero / 8.0 FROM Plan_Mantenimiento, (SELECT Pr_Cve_Producto, row_number() OVER (ORDER BY "
                       "Pr_Cve_Producto) AS k FROM Producto LIMIT 3) p "
                       "WHERE Te_Cve_Tipo_Equipo = '0006'");
}

// Into a database whose plans are empty, and out again.
void PrImportar::idaYVuelta()
{
    QFETCH(QString, tipo);
    escenario.reset();
    escenario = std::make_unique<Escenario>(true);
    if (tipo == "0006")
        SembrarGenerado();
    escenario->Pantalla();
    const QByteArray primero = Exportar(tipo);
    escenario.reset();
    escenario = std::make_unique<Escenario>();
    escenario->Pantalla();
    Importar(primero, qvx::mensaje::Si);
    QCOMPARE(Mensajes().size(), 1);
    QVERIFY(primero == Exportar(tipo));
    QVERIFY(primero.count("<Parte ") >= (tipo == "0006" ? 2000 : 10));
}

PRUEBA_MAIN(PrImportar)
#include "pr_importar.moc"
