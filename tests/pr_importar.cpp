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
    return "<TipoServicio Id=\"9001\" UnidadLectura=\"HRS\" FrecuenciaLectura=\"1250.50\" FrecuenciaDias=\"030\" "
           "RequiereParo=\""
           + paro + "\" Duracion=\"2.5\" Precio=\"500\" Prioridad=\"9001\">" + lineas + "</TipoServicio>";
}

const QByteArray Lineas = "<ManoObra><Servicio Id=\"9000000001\" Cantidad=\"2\"/><Servicio Id=\"P1\" Cantidad=\"2\"/>"
                          "</ManoObra><Refacciones><Refaccion Id=\"9000000002\" Cantidad=\"3\" TipoGasto=\"9001\"/>"
                          "</Refacciones><Herramientas><Herramienta Id=\"9000000003\" Cantidad=\"1\"/>"
                          "<Herramienta Id=\"P2\" Cantidad=\"1\"/></Herramientas>";
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
    void rechazos_data();
    void rechazos();
    void idaYVuelta();
    void linea_data();
    void linea();
    void interrumpido();

private:
    void Poner(const QString &nombre, const QByteArray &contenido) const;
    void Importar(const QByteArray &documento, int respuesta = 0);
    QByteArray Exportar(const QString &tipo);
    void SembrarGenerado() const;
    void Preparar(QProcess &programa) const;
};

// In the folder of the test's database.
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

QByteArray PrImportar::Exportar(const QString &tipo)
{
    Escribir(Tipo(), tipo);
    escenario->Personas().DarArchivo(escenario->Ruta("exportado.xml"));
    Mandar("B1");
    if (Mensajes().size() != 1)
        QTest::qFail("El plan no se exportó", __FILE__, __LINE__);
    QFile archivo(escenario->Ruta("exportado.xml"));
    return archivo.open(QIODevice::ReadOnly) ? archivo.readAll() : QByteArray();
}

// Every statement as it is composed, and the screen afterwards. Another type's plan is on the screen before.
void PrImportar::importado()
{
    Escribir(Tipo(), "0902");
    ElegirNodo(Arbol(), "N0000");
    escenario->Traza();
    Importar(Documento("0900", Servicio("NO") + "<!-- a note --><Parte Id=\"0001\" Descripción=\"EJE\">"
                                   + Servicio("SI", Lineas) + "<Parte Id=\"X\" Descripción=\"\"/></Parte>"),
             qvx::mensaje::Si);
    QCOMPARE(escenario->Personas().ventanas, (QList<WId>{pantalla->winId(), pantalla->winId()}));
    QCOMPARE(Mensajes(),
             (QStringList{Pregunta, "48|Importar XML|KT580|ERR-ID:7500024|Los productos:  ,P1 ,P2 no están registrados "
                                    "en la base de datos, no se agregaron al servicio"}));
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
    QCOMPARE(escenario->Traza().mid(0, sentencias.size()), sentencias);
    QCOMPARE(Tipo().Text() + escenario->De<txtQVX>("txtNTipoEquipo").Text(), "0900BOMBA DE PRUEBA");
    QCOMPARE(Arbol().Count(), 3);
    QCOMPARE(Barras(), "00000|Exportar XML|Importar XML|Copiar plan"); // the node that offered more is gone
    QCOMPARE(Partes("Es_Cve_Estado"), "AC AC");
    QCOMPARE(escenario->Tablas().filter("AJENA").size(), 2);

    // The next dialog opens in the folder of the last, on what it last held.
    escenario->Personas().DarArchivo("");
    Mandar("B2");
    const QString ruta = escenario->Ruta("plan.xml");
    QCOMPARE(escenario->Personas().dialogos.constLast(),
             "abrir|ABRIR XML|Archivo XML|*.xml|" + ruta + "|" + ruta.section('/', 0, -2));

    // A failure replaces the list of unknown products, and the next import begins with an empty one.
    Importar(Documento("0900", Servicio("NO", Lineas) + Parte + Parte), qvx::mensaje::Si);
    QCOMPARE(Mensajes(), (QStringList{Pregunta, Trampa + motor::ParteRepetida()}));
    QCOMPARE(Partes("Tep_ID"), "0001 X");
    Importar(Documento("0900", Servicio("NO")), qvx::mensaje::Si);
    QCOMPARE(Mensajes(), QStringList{Pregunta});
    QCOMPARE(Barra().Titulo1(), ""); // without parts there is nothing to export
}

void PrImportar::rechazos_data()
{
    // mensaje, detalles: of the last message
    const Tabla<QByteArray, int, QString, QString> fila("documento", "respuesta", "mensaje", "detalles");
    const QString formato = "El archivo xml que se cargo no cumple con el formato del mantenimiento";
    const QString aviso = "48|Quorvex|KT580|ERR-ID:75000";
    const QString conComillas = Trampa + "Un valor del documento lleva comillas";
    fila("no es XML", "hola", 0, aviso + "25|" + formato,
         "Renglón 1: El documento no está bien formado: Start tag expected, '<' not found");
    fila("otro orden", Documento("0900", "\n<Parte Descripción=\"A\" Id=\"1\"/>"), 0, aviso + "25|" + formato,
         "Renglón 2, Parte: los atributos deben ir en este orden: Id, Descripción");
    fila("sin tipo", "<PlanMantenimiento/>", 0, aviso + "26|" + formato, "");
    fila("tipo cancelado", Documento("0903", ""), 0, aviso + "27|No existe el tipo de equipo '0903' en la bas de datos",
         "");
    fila("No", Documento("0900", ""), qvx::mensaje::No, Pregunta, "");
    fila("comilla", Documento("0900", "<Parte Id=\"1\" Descripción=\"D'ALEMBERT\"/>"), qvx::mensaje::Si,
         Trampa + motor::Sintaxis("ALEMBERT"), "");
    // Texts that would otherwise become part of the statement.
    fila("cualquier tipo", Documento("x' OR '1'='1", ""), 0, conComillas, "");
    fila("entre dos valores",
         Documento("0900", "<Parte Id=\"1'\" Descripción=\", '0000', 'o', 'f', 'o', 'f'), ('0902', '7\"/>"),
         qvx::mensaje::Si, conComillas, "");
}

void PrImportar::rechazos()
{
    QFETCH(QByteArray, documento);
    QFETCH(int, respuesta);
    Escribir(Tipo(), "0902");
    const QStringList antes = escenario->Tablas();
    Importar(documento, respuesta);
    QTEST(escenario->Personas().detalles.constLast(), "detalles");
    QTEST(Mensajes().constLast(), "mensaje");
    QCOMPARE(escenario->Tablas(), antes);
    QCOMPARE(Tipo().Text(), "0902");
    QVERIFY(!QApplication::overrideCursor());
    // The transaction is over: another program gets at the database at once.
    escenario->Motor("UPDATE Tipo_Gasto SET Tg_Descripcion = 'OTRA'");
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
    const auto nuevo = [&](bool conEjemplos) {
        escenario.reset();
        escenario = std::make_unique<Escenario>(conEjemplos);
        if (conEjemplos)
            SembrarGenerado();
        escenario->Pantalla();
    };
    nuevo(true);
    const QStringList tipos{"0001", "0002", "0003", "0004", "0005", "0006"};
    QByteArrayList documentos;
    for (const QString &tipo : tipos)
        documentos.append(Exportar(tipo));
    QVERIFY(documentos.constFirst().count("<Parte ") >= 10 && documentos.constLast().count("<Parte ") == 2000);
    nuevo(false);
    for (int i = 0; i < tipos.size(); ++i) {
        Importar(documentos.at(i), qvx::mensaje::Si);
        QCOMPARE(Mensajes().size(), 1);
        QVERIFY2(Exportar(tipos.at(i)) == documentos.at(i), qPrintable(tipos.at(i)));
    }
}

// Started among the test's files, with a registry of its own, and where no display is.
void PrImportar::Preparar(QProcess &programa) const
{
    auto entorno = QProcessEnvironment::systemEnvironment();
    entorno.insert("XDG_CONFIG_HOME", escenario->Ruta("config"));
    entorno.insert("QVX_TRAZA", escenario->Ruta("traza_programa"));
    for (const char *variable : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
        entorno.remove(variable);
    programa.setProcessEnvironment(entorno);
    programa.setWorkingDirectory(escenario->Ruta(""));
}

void PrImportar::linea_data()
{
    // dicho: on the standard error
    const Tabla<QString, int, QString, bool> fila("orden", "salida", "dicho", "cambia");
    fila("exportar", "--exportar 900 nuevo.xml", 0, "^Se generó el archivo/.*/nuevo.xml\n$", false);
    fila("exportar sin partes", "--exportar 0901 nuevo.xml", 1,
         "^El tipo de equipo 0901 no existe, o no tiene partes que exportar.\n$", false);
    fila("exportar donde no se puede", "--exportar 0900 no/hay.xml", 1,
         "^No se pudo guardar el archivo /.*/no/hay.xml: ", false);
    fila("importar", "--importar bueno.xml --si", 0, "^Se reemplazará el plan .* equipo0902, ¿DESEA CONTINUAR\\?\n$",
         true);
    fila("importar sin --si", "--importar bueno.xml", 1, "contesta que sí con --si", false);
    fila("importar otro formato", "--importar malo.xml --si", 1,
         "^El archivo xml que se cargo no cumple con el formato del mantenimiento\nRenglón 2, Parte: falta el atributo",
         false);
    fila("importar nada", "--importar nada.xml --si", 1, "No se pudo abrir", false);
    fila("con productos desconocidos", "--importar sinproducto.xml --si", 0, "Los productos:  ,P1 ,P2 no están", true);
    fila("validar bueno", "--validar bueno.xml", 0, "^$", false);
    fila("validar malo", "--validar malo.xml", 1,
         "^malo.xml: Renglón 2, Parte: falta .*\nmalo.xml: Renglón 3, Otra: ", false);
    fila("dos a la vez", "--validar a --importar b", 2, "no van juntos", false);
}

void PrImportar::linea()
{
    QFETCH(QString, orden);
    QFETCH(QString, dicho);
    QFETCH(bool, cambia);
    Poner("bueno.xml", Documento("0902", Parte));
    Poner("malo.xml", Documento("0900", "\n<Parte Id=\"1\"/>\n<Otra/>"));
    Poner("sinproducto.xml", Documento("0902", Servicio("NO", Lineas)));
    const QStringList antes = escenario->Tablas();
    QProcess programa;
    Preparar(programa);
    programa.start(PROGRAMA_QUORVEX, orden.split(' ') + escenario->Base().Argumentos());
    QVERIFY(programa.waitForFinished());
    QTEST(programa.exitCode(), "salida");
    const QString error = QString::fromUtf8(programa.readAllStandardError());
    QVERIFY2(QRegularExpression(dicho).match(error).hasMatch(), qPrintable(error));
    QCOMPARE(escenario->Tablas() != antes, cambia);
    QCOMPARE(QFile::exists(escenario->Ruta("nuevo.xml")), orden.contains("900 nuevo"));
}

// Killed in the middle of the import: the plan that was there is whole.
void PrImportar::interrumpido()
{
    QByteArray partes;
    for (int i = 0; i < 50000; ++i)
        partes += "<Parte Id=\"" + QByteArray::number(10000 + i) + "\" Descripción=\"PIEZA\"/>";
    Poner("grande.xml", Documento("0902", partes));
    const QStringList antes = escenario->Tablas();
    QProcess programa;
    Preparar(programa);
    programa.start(PROGRAMA_QUORVEX, QStringList{"--importar", "grande.xml", "--si"} + escenario->Base().Argumentos());
    const auto traza = [&] {
        QFile archivo(escenario->Ruta("traza_programa"));
        return archivo.open(QIODevice::ReadOnly) ? archivo.readAll() : QByteArray();
    };
    QTRY_VERIFY_WITH_TIMEOUT(traza().count("INSERT INTO") > 500, 60000);
    programa.kill();
    QVERIFY(programa.waitForFinished());
    QVERIFY(programa.exitStatus() == QProcess::CrashExit && !traza().contains("COMMIT"));
    QCOMPARE(escenario->Tablas(), antes);
    if (!motor::EsPostgres())
        QCOMPARE(escenario->Motor("PRAGMA integrity_check").toString(), "ok");
}

PRUEBA_MAIN(PrImportar)
#include "pr_importar.moc"
