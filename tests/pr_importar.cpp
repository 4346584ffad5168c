#include "support/PruebaPantalla.h"

#include <QProcess>
#include <QRegularExpression>

namespace
{

QByteArray Documento(const QByteArray &tipo, const QByteArray &contenido)
{
    return "<?xml version='1.0'?><PlanMantenimiento><TipoEquipo Id=\"" + tipo + "\">" + contenido
           + "</TipoEquipo></PlanMantenimiento>";
}

QByteArray Servicio(const QByteArray &paro, const QByteArray &lineas = "<ManoObra/><Refacciones/><Herramientas/>")
{
    const QByteArray servicio = R"(<TipoServicio Id="9001" UnidadLectura="HRS" FrecuenciaLectura="1250.50"
        FrecuenciaDias="030" RequiereParo="{}" Duracion="2.5" Precio="500" Prioridad="9001">)";
    return QByteArray(servicio).replace("{}", paro) + lineas + "</TipoServicio>";
}

const QByteArray Lineas =
    R"(<ManoObra><Servicio Id="9000000001" Cantidad="2"/><Servicio Id="P1" Cantidad="2"/></ManoObra>
    <Refacciones><Refaccion Id="9000000002" Cantidad="3" TipoGasto="9001"/></Refacciones>
    <Herramientas><Herramienta Id="9000000003" Cantidad="1"/><Herramienta Id="P2" Cantidad="1"/></Herramientas>)";
const QByteArray Parte = "<Parte Id=\"7\" Descripción=\"NUEVA\"/>";
const QString Pregunta = "36|Importar_xml()|KT580|ERR-ID:7500048|Se reemplazará el plan de mantenimiento actual del "
                         "tipo de equipo0900, ¿DESEA CONTINUAR?";
const QString Trampa = "16|Controles_B2Click()|KT580|ERR-ID:7500023|";

} // namespace

// The import, at the screen and from the command line: what it writes, asks and refuses, and that a failed one writes
// nothing.
class PrImportar : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void importado();
    void rechazos();
    void idaYVuelta();
    void linea();
    void interrumpido();

private:
    QProcessEnvironment Entorno() const;
    void Poner(const QString &nombre, const QByteArray &contenido) const;
    void Importar(const QByteArray &documento, int respuesta = 0);
    QByteArray Exportar();
};

void PrImportar::Poner(const QString &nombre, const QByteArray &contenido) const
{
    QFile archivo(escenario->Ruta(nombre));
    QVERIFY(archivo.open(QIODevice::WriteOnly) && archivo.write(contenido) == contenido.size());
}

void PrImportar::Importar(const QByteArray &documento, int respuesta)
{
    Poner("plan.xml", documento);
    escenario->Personas().DarArchivo(escenario->Ruta("plan.xml"));
    if (respuesta)
        escenario->Personas().Responder(7500048, respuesta);
    Mandar("B2");
}

QByteArray PrImportar::Exportar()
{
    escenario->Personas().DarArchivo(escenario->Ruta("exportado.xml"));
    Mandar("B1");
    Mensajes();
    QFile archivo(escenario->Ruta("exportado.xml"));
    return archivo.open(QIODevice::ReadOnly) ? archivo.readAll() : QByteArray();
}

// The statements, the rows, and the screen, which had another type's plan before.
void PrImportar::importado()
{
    Escribir(Tipo(), "0902");
    ElegirNodo(Arbol(), "N0000");
    escenario->Traza();
    Importar(Documento("0900", Servicio("NO") + "<!-- a note --><Parte Id=\"0001\" Descripción=\"EJE\">"
                                   + Servicio("SI", Lineas) + "<Parte Id=\"X\" Descripción=\"\"/></Parte>"),
             qvx::mensaje::Si);
    QCOMPARE(Mensajes(),
             (QStringList{Pregunta, "48|Importar XML|KT580|ERR-ID:7500024|Los productos:  ,P1 ,P2 no están registrados "
                                    "en la base de datos, no se agregaron al servicio"}));
    QCOMPARE(escenario->Personas().dialogos, QStringList{"abrir|ABRIR XML|Archivo XML|*.xml||"});

    EnOrden(
        escenario->Traza(),
        {motor::Inicio(), "1\t SELECT * FROM Tipo_Equipo WHERE Te_Cve_Tipo_Equipo = '0900' AND Es_Cve_Estado <> 'CA' ",
         "4\tDELETE FROM Plan_Mantenimiento_Detalle WHERE    Te_Cve_Tipo_Equipo = '0900' ",
         "3\tDELETE FROM Plan_Mantenimiento WHERE    Te_Cve_Tipo_Equipo = '0900' ",
         "6\tDELETE FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' ",
         "1\tINSERT INTO Tipo_Equipo_Parte (       Te_Cve_Tipo_Equipo,        Tep_ID,        Tep_Descripcion,        "
         "Tep_Padre,        Oper_Alta,        Fecha_Alta,        Oper_Ult_Modif,        Fecha_Ult_Modif ) VALUES "
         "('0900', '0001', 'EJE', '0000', 'mlopez', '2026-03-14 09:26:53', 'mlopez', '2026-03-14 09:26:53' )",
         "1\tINSERT INTO Plan_Mantenimiento (   Te_Cve_Tipo_Equipo,    Tep_ID ,   Pm_ID ,   Ts_Cve_Tipo_Servicio ,   "
         "Pm_Frecuencia ,   Pm_Lectura ,    Pm_Unidad_Lectura ,   Pm_Precio ,   Pm_Tiempo_Estimado ,   Pm_Prioridad ,  "
         " Pm_Requiere_Paro ,   Pm_Tiempo_Paro ,   Oper_Alta ,   Fecha_Alta ,   Oper_Ult_Modif ,   Fecha_Ult_Modif ) "
         "VALUES (   '0900',    '0001',    '000002',    '9001',    30,    1250.5,    'HRS',    500,    2.5,    '9001', "
         "   'SI',    2.5,    'mlopez',    '2026-03-14 09:26:53',    'mlopez',    ' 2026-03-14 09:26:53' )",
         "1\t SELECT Pr_Unidad_Control_1 AS Unidad, Pr_Costo_Estandar AS Costo FROM Producto WHERE Pr_Cve_Producto = "
         "'9000000002' ",
         "1\tINSERT INTO Plan_Mantenimiento_Detalle (   Te_Cve_Tipo_Equipo ,   Tep_ID ,   Pm_ID ,   Pmd_ID ,   "
         "Pmd_Tipo ,   Pr_Cve_Producto ,   Pmd_Cantidad ,   Pmd_Unidad ,   Pmd_Costo ,   Pmd_Importe    , "
         "Pmd_Tipo_Gasto  ) VALUES (   '0900',    '0001',    '000002',    '000002',    '02',    '9000000002',    3,    "
         "'PZA',    80.1,    240.29999999999998  ,  '9001'  ) ",
         "-\tCOMMIT"});
    QCOMPARE(escenario->Filas("SELECT Tep_ID, Pm_ID, Pm_Requiere_Paro, Pm_Tiempo_Paro FROM Plan_Mantenimiento ORDER BY "
                              "Pm_ID"),
             (QStringList{"0900|000001|NO|0", "0001|000002|SI|2.5"})); // right under the type: the type's key
    QCOMPARE(escenario->Filas("SELECT Pmd_ID, Pmd_Tipo, Pr_Cve_Producto, Pmd_Costo, Pmd_Importe FROM "
                              "Plan_Mantenimiento_Detalle ORDER BY Pmd_ID"),
             (QStringList{"000001|01|9000000001|150.25|300.5", "000002|02|9000000002|80.1|240.29999999999998",
                          "000003|03|9000000003|5|5"}));
    QCOMPARE(Partes("Tep_ID || Tep_Padre || Es_Cve_Estado"), "00010000AC X0001AC");
    QCOMPARE(escenario->Tablas().filter("AJENA").size(), 2);

    // The screen shows what was imported; the node that offered more is gone.
    QCOMPARE(Tipo().Text() + escenario->De<txtQVX>("txtNTipoEquipo").Text(), "0900BOMBA DE PRUEBA");
    QCOMPARE(Arbol().Count(), 3);
    QCOMPARE(Barras(), "00000|Exportar XML|Importar XML|Copiar plan");

    // A failure replaces the list of unknown products, and the import after it begins with an empty one.
    Importar(Documento("0900", Servicio("NO", Lineas) + Parte + Parte), qvx::mensaje::Si);
    QCOMPARE(Mensajes(), (QStringList{Pregunta, Trampa + motor::ParteRepetida()}));
    QCOMPARE(Partes("Tep_ID"), "0001 X");
    Importar(Documento("0900", Servicio("NO")), qvx::mensaje::Si);
    QCOMPARE(Mensajes(), QStringList{Pregunta});
    QCOMPARE(Barra().Ofrecido().extras[0].titulo, ""); // without parts there is nothing to export
}

void PrImportar::rechazos()
{
    Escribir(Tipo(), "0902");
    const QStringList antes = escenario->Tablas();
    const auto probar = [&](const QByteArray &documento, int respuesta, const QString &mensaje,
                            const QString &detalle = {}) {
        Importar(documento, respuesta);
        QCOMPARE(escenario->Personas().detalles.constLast(), detalle);
        QCOMPARE(Mensajes().constLast(), mensaje);
        QCOMPARE(escenario->Tablas(), antes);
        QCOMPARE(Tipo().Text(), "0902");
        QVERIFY(!QApplication::overrideCursor());
        escenario->Motor("UPDATE Producto SET Pr_Descripcion = Pr_Descripcion"); // nothing is left open
    };
    const QString formato = "|El archivo xml que se cargo no cumple con el formato del mantenimiento";
    const QString aviso = "48|Quorvex|KT580|ERR-ID:75000";
    probar("hola", 0, aviso + "25" + formato,
           "Renglón 1: El documento no está bien formado: Start tag expected, '<' not found");
    probar("<PlanMantenimiento/>", 0, aviso + "26" + formato);
    probar(Documento("0903", ""), 0, aviso + "27|No existe el tipo de equipo '0903' en la bas de datos"); // cancelled
    probar(Documento("0900", ""), qvx::mensaje::No, Pregunta);
    probar(Documento("0900", "<Parte Id=\"1'\" Descripción=\", '0000', 'o', 'f', 'o', 'f'), ('0902', '7\"/>"),
           qvx::mensaje::Si, Trampa + "Un valor del documento lleva comillas");
}

// A plan that was lost is put back from its document, whole.
void PrImportar::idaYVuelta()
{
    escenario->Motor("UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'PIEZA \"' || Tep_ID || '\" <Ñ>&'");
    const QByteArray documento = Exportar();
    for (const char *tabla : {"Plan_Mantenimiento_Detalle", "Plan_Mantenimiento", "Tipo_Equipo_Parte"})
        escenario->Motor(QString("DELETE FROM ") + tabla);
    QTest::keyClick(&Arbol(), Qt::Key_F5);
    Importar(documento, qvx::mensaje::Si);
    QCOMPARE(Mensajes(), QStringList{Pregunta});
    QCOMPARE(Exportar(), documento);
}

// Without a display.
QProcessEnvironment PrImportar::Entorno() const
{
    auto entorno = QProcessEnvironment::systemEnvironment();
    entorno.insert("XDG_CONFIG_HOME", escenario->Ruta("config"));
    entorno.insert("QVX_TRAZA", escenario->Ruta("traza_programa"));
    for (const char *variable : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
        entorno.remove(variable);
    return entorno;
}

// From the command line.
void PrImportar::linea()
{
    Poner("bueno.xml", Documento("0902", Parte));
    Poner("malo.xml", Documento("0902", "\n<Parte Id=\"1\"/>\n<Otra/>"));
    QStringList antes = escenario->Tablas();
    const auto probar = [&](const QString &orden, int salida, const QString &dicho, bool cambia) {
        QProcess programa;
        programa.setProcessEnvironment(Entorno());
        programa.setWorkingDirectory(escenario->Ruta(""));
        programa.start(PROGRAMA_QUORVEX, orden.split(' ') + escenario->Base().Argumentos());
        QVERIFY(programa.waitForFinished());
        const QString error = QString::fromUtf8(programa.readAllStandardError());
        QVERIFY2(QRegularExpression(dicho).match(error).hasMatch(), qPrintable(error));
        QCOMPARE(programa.exitCode(), salida);
        QCOMPARE(escenario->Tablas() != antes, cambia);
        antes = escenario->Tablas();
    };
    probar("--exportar 900 nuevo.xml", 0, "^Se generó el archivo/.*/nuevo.xml\n$", false);
    probar("--validar malo.xml", 1, "^malo.xml: Renglón 2, Parte: falta .*\nmalo.xml: Renglón 3, Otra: ", false);
    probar("--importar malo.xml --si", 1, "^El archivo xml que se cargo no cumple", false);
    probar("--importar bueno.xml", 1, "contesta que sí con --si", false);
    probar("--importar bueno.xml --si", 0, "^Se reemplazará el plan .* equipo0902, ¿DESEA CONTINUAR\\?\n$", true);
}

// Killed in the middle: the plan that was there is whole.
void PrImportar::interrumpido()
{
    QByteArray partes;
    for (int i = 0; i < 50000; ++i)
        partes += "<Parte Id=\"" + QByteArray::number(10000 + i) + "\" Descripción=\"PIEZA\"/>";
    Poner("grande.xml", Documento("0900", partes));
    const QStringList antes = escenario->Tablas();
    QProcess programa;
    programa.setProcessEnvironment(Entorno());
    programa.start(PROGRAMA_QUORVEX,
                   QStringList{"--importar", escenario->Ruta("grande.xml"), "--si"} + escenario->Base().Argumentos());
    const auto traza = [&] {
        QFile archivo(escenario->Ruta("traza_programa"));
        return archivo.open(QIODevice::ReadOnly) ? archivo.readAll() : QByteArray();
    };
    QTRY_VERIFY_WITH_TIMEOUT(traza().count("INSERT INTO") > 500, 60000);
    programa.kill();
    QVERIFY(programa.waitForFinished());
    QVERIFY(programa.exitStatus() == QProcess::CrashExit && !traza().contains("COMMIT"));
    QCOMPARE(escenario->Tablas(), antes);
}

PRUEBA_MAIN(PrImportar)
#include "pr_importar.moc"
