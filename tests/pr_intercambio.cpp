#include "component/Esquema.h"
#include "support/Archivos.h"
#include "support/Procesos.h"
#include "support/PruebaPantalla.h"
#include "system/UnidadC.h"
#include "xml/EsquemaXml.h"

#include <QDir>
#include <sys/stat.h>

#include <QProcess>
#include <QRegularExpression>

namespace
{

const QByteArray UnServicio =
    R"(<TipoServicio Id="9001" UnidadLectura="HRS" FrecuenciaLectura="1250.5" FrecuenciaDias="0")"
    R"( RequiereParo="NO" Duracion="2" Precio="500" Prioridad="9001">)"
    "<ManoObra/><Refacciones/><Herramientas/></TipoServicio>";
const QByteArray UnaParte = R"(<Parte Id="1" Descripción=""/>)";
QByteArray Envuelto(const QByteArray &tipo, const QByteArray &contenido)
{
    return "<?xml version='1.0'?>\n<PlanMantenimiento><TipoEquipo Id=\"" + tipo + "\">" + contenido
           + "</TipoEquipo></PlanMantenimiento>\n";
}

} // namespace

// The exchange document: what cannot be written, what of a stranger's is taken, at the screen and from the command
// line; and that an import which ends badly writes nothing.
class PrIntercambio : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void sinDocumento();
    void sinArchivo();
    void lugar();
    void revisado();
    void rechazos();
    void linea();
    void momento();
    void interrumpido();

private:
    QStringList Revisar(const QByteArray &documento) const;
};

// What the schema says of a document, line by line.
QStringList PrIntercambio::Revisar(const QByteArray &documento) const
{
    const qvx::EsquemaXml esquema(qvx::RutaEnUnidadC(KT580::RutaEsquema));
    qvx::Documento leido;
    QStringList dichos;
    if (!leido.Cargar(Poner(escenario->Ruta("revisado.xml"), documento), esquema))
        for (const qvx::ErrorXml &error : leido.Errores())
            dichos.append(error.Texto());
    return dichos;
}

// What cannot be written as a document is told before anybody is asked for a file.
void PrIntercambio::sinDocumento()
{
    const auto probar = [&](const QString &falla, const QString &mensaje) {
        escenario->Correr(falla);
        Mandar("N0000", "B1");
        QCOMPARE(Mensajes().join('\n'), "16|Controles_B1Click()|KT580|ERR-ID:7500017|" + mensaje);
    };
    // An older version may have left such a part, below itself.
    escenario->Correr(motor::Segun("DROP TRIGGER Tep_Raiz_Cambio", "DROP TRIGGER Tep_Raiz ON Tipo_Equipo_Parte"));
    probar("UPDATE Tipo_Equipo_Parte SET Tep_ID = '0000' WHERE Tep_ID = '0005'",
           "El documento tendría más de 250 niveles");
    probar("UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'A' || " + motor::Segun("char", "chr")
               + "(27) || 'B' WHERE Tep_ID = '0004'",
           "Parte 0004: \"Descripción\" lleva un carácter que XML no admite (U+001B)");
    probar("ALTER TABLE Plan_Mantenimiento_Detalle RENAME TO Guardada",
           motor::NoHayTabla("Plan_Mantenimiento_Detalle"));
}

// When the disk fills up, the file that was there is still whole.
void PrIntercambio::sinArchivo()
{
    escenario->Correr("UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = '" + QString(2000, QLatin1Char('x')) + "'");
    const QString ruta = Poner(escenario->Ruta("plan.xml"), "anterior");
    qunsetenv("QVX_TRAZA");
    {
        const DiscoLleno disco;
        Exportar(ruta);
    }
    QVERIFY(
        Mensajes().join("").startsWith("16|Controles_B1Click()|KT580|ERR-ID:7500017|No se pudo guardar el archivo "));
    QCOMPARE(Contenido(escenario->Ruta("plan.xml")), "anterior");
    QCOMPARE(QDir(escenario->Ruta("")).entryList({"plan.xml*"}), QStringList{"plan.xml"});
}

// A new document is as open as the person has it, one that replaces another as that was. What is no file is neither
// replaced nor followed.
void PrIntercambio::lugar()
{
    const QString ruta = escenario->Ruta("plan.xml");
    const auto modo = [&] {
        struct stat hallado {
        };
        stat(QFile::encodeName(ruta).constData(), &hallado);
        return hallado.st_mode & ACCESSPERMS;
    };
    const mode_t anterior = umask(S_IWGRP | S_IRWXO);
    Exportar(ruta);
    umask(anterior);
    QCOMPARE(modo(), 0640u);
    chmod(QFile::encodeName(ruta).constData(), S_IRUSR | S_IWUSR | S_IROTH);
    Exportar(ruta);
    QCOMPARE(modo(), 0604u);
    Mensajes();

    QCOMPARE(mkfifo(QFile::encodeName(escenario->Ruta("tubo")).constData(), S_IRWXU), 0);
    QVERIFY(QFile::link("plan.xml", escenario->Ruta("enlace")) && QFile::link("nada", escenario->Ruta("suelto")));
    const QByteArray antes = Contenido(escenario->Ruta("plan.xml"));
    escenario->Correr("UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'OTRA'");
    for (const QString nombre : {"tubo", "enlace", "suelto"}) {
        const QFileInfo lugar(escenario->Ruta(nombre));
        Exportar(lugar.filePath());
        QVERIFY(Mensajes().join("").contains("ERR-ID:7500017|No se pudo guardar el archivo " + lugar.filePath()));
        QVERIFY(!lugar.isFile() || lugar.isSymLink());
    }
    QCOMPARE(Contenido(escenario->Ruta("plan.xml")), antes);
    QVERIFY(!QFileInfo::exists(escenario->Ruta("nada")));
}

void PrIntercambio::revisado()
{
    const auto probar = [&](const QByteArray &contenido, const QString &dicho) {
        QCOMPARE(Revisar(Envuelto("0900", contenido)).join('\n'), dicho);
    };
    const auto cambiado = [](const QByteArray &antes, const QByteArray &despues) {
        return QByteArray(UnServicio).replace(antes, despues);
    };
    const QString servicio = "Renglón 2, TipoServicio: ";
    probar(cambiado("500", "-0.00000000000012345678901234567"), "");
    for (const char *valor : {"5e2", "5&#10;e2"})
        probar(cambiado("500", valor), servicio + "el valor \"" + QString(valor).replace("&#10;", "\n")
                                           + "\" no es válido para el atributo \"Precio\"");
    probar(cambiado("Duracion=\"2\" Precio=\"500\"", "Precio=\"500\" Duracion=\"2\""),
           servicio
               + "los atributos deben ir en este orden: Id, UnidadLectura, FrecuenciaLectura, FrecuenciaDias, "
                 "RequiereParo, Duracion, Precio, Prioridad");
    probar(QByteArray(UnaParte).replace("1", "0000  "), // the root's
           "Renglón 2, Parte: el valor \"0000  \" no es válido para el atributo \"Id\"");
    probar((UnaParte + "\n").repeated(70000) + "<Otra/>", // past the lines that the parser counts
           "Renglón 70002, Otra: el elemento no va en este lugar; aquí se espera: Parte");
    probar(QByteArray(UnaParte).replace("/", "").repeated(2000), "Renglón 2: El documento tiene más de 256 niveles");

    const auto conAtributos = [](int cuantos) {
        QByteArray atributos;
        for (int i = 0; i < cuantos; ++i)
            atributos += " a" + QByteArray::number(i) + "=\"\"";
        return "\n<Parte" + atributos + "/>";
    };
    probar(conAtributos(65), "Renglón 3, Parte: lleva más de 64 atributos");
    probar(conAtributos(80000), "Un elemento ocupa más de 256 KB");
    probar(conAtributos(64).repeated(61600), "El documento tiene más de 4 millones de elementos y atributos");

    // No file of the planner's is at a stranger's disposal.
    Poner(escenario->Ruta("secreto"), "<Parte/>");
    probar("<xi:include xmlns:xi=\"http://www.w3.org/2001/XInclude\" href=\"secreto\" parse=\"text\"/>",
           "Renglón 2, include: el elemento no va en este lugar; aquí se espera: TipoServicio, Parte");
    QCOMPARE(Revisar("<!DOCTYPE a [<!ENTITY x SYSTEM \"secreto\">]><PlanMantenimiento>&x;</PlanMantenimiento>"),
             QStringList{"El documento trae una declaración DOCTYPE, que este formato no admite"});
}

void PrIntercambio::rechazos()
{
    Escribir(Tipo(), "0902");
    const QStringList antes = escenario->Tablas();
    const auto probar = [&](const QByteArray &documento, const QString &mensaje, const QString &detalle = {}) {
        escenario->Personas().DarArchivo(Poner(escenario->Ruta("plan.xml"), documento));
        const QString ajeno =
            "UPDATE Producto SET Pr_Descripcion = Pr_Descripcion"; // nothing is held while it is asked
        escenario->Personas().Responder(7500048, qvx::mensaje::Si, [&] { escenario->Correr(ajeno); });
        Pulsar(Barra(), "B2");
        QVERIFY(!qvx::Sesion::Actual().Conexion().EnTransaccion());
        escenario->Personas().Descartar();
        QCOMPARE(escenario->Personas().detalles.constLast(), detalle);
        QCOMPARE(Mensajes().constLast(), mensaje);
        QCOMPARE(escenario->Tablas(), antes);
        QCOMPARE(Tipo().Text(), "0902");
        QVERIFY(!QApplication::overrideCursor());
        escenario->Correr(ajeno); // nor left open
    };
    const QString formato = "|El archivo xml que se cargo no cumple con el formato del mantenimiento";
    const QString aviso = "48|Quorvex|KT580|ERR-ID:75000";
    const QString trampa = "16|Controles_B2Click()|KT580|ERR-ID:7500023|";
    probar("hola", aviso + "25" + formato,
           "Renglón 1: El documento no está bien formado: está vacío o no empieza con un elemento (Start tag expected, "
           "'<' not found)");
    probar("<PlanMantenimiento/>", aviso + "26" + formato);
    probar(Envuelto("0903", ""), aviso + "27|No existe el tipo de equipo '0903' en la bas de datos"); // cancelled
    probar(Envuelto("0900", "<Parte Id=\"1'\" Descripción=\", '0000', 'o', 'f', 'o', 'f'), ('0902', '7\"/>"),
           trampa + "Un valor del documento lleva comillas");
    probar(
        Envuelto("0900", UnServicio + UnaParte + UnaParte),
        trampa
            + motor::Segun("UNIQUE constraint failed: Tipo_Equipo_Parte.Te_Cve_Tipo_Equipo, Tipo_Equipo_Parte.Tep_ID",
                           "duplicate key value violates unique constraint \"tipo_equipo_parte_pkey\""),
        "Ya hay un registro con esa clave; tal vez otra persona acaba de crearlo. Use otra clave.");
    for (const QByteArray clave : {"2147483647", "0012345678901B"})
        probar(Envuelto("0900", UnaParte + "<Parte Id=\"" + clave + "\" Descripción=\"\"/>"),
               trampa + "Después de la clave de la parte " + clave + " no queda número para otra parte");
}

// From the command line.
void PrIntercambio::linea()
{
    Poner(escenario->Ruta("bueno.xml"), Envuelto("0902", UnaParte));
    Poner(escenario->Ruta("malo.xml"), Envuelto("0902", "\n<Parte Id=\"1\"/>\n<Otra/>"));
    QStringList antes = escenario->Tablas();
    for (const auto &[orden, dicho, cambia] : QList<std::tuple<QString, QString, bool>>{
             {"--exportar 900 {}/nuevo.xml", "^0Se generó el archivo/.*/nuevo.xml\n$", false},
             {"--validar {}/malo.xml",
              "^1.*malo.xml: Renglón 3, Parte: falta .*\n.*malo.xml: Renglón 4, Otra: ", false},
             {"--importar {}/malo.xml --si", "^1El archivo xml que se cargo no cumple", false},
             {"--importar {}/bueno.xml", "^1[^$]*contesta que sí con --si", false},
             {"--importar {}/bueno.xml --si", "^0Se reemplazará el plan .* equipo0902, ¿DESEA CONTINUAR\\?\n$",
              true}}) {
        const QString respuesta =
            Quorvex(QString(orden).replace("{}", escenario->Ruta("")).split(' ') + escenario->Base().Argumentos());
        QVERIFY2(QRegularExpression(dicho).match(respuesta).hasMatch(), qPrintable(respuesta));
        QCOMPARE(escenario->Tablas() != antes, cambia);
        antes = escenario->Tablas();
    }
}

// While another planner changes all prices again and again, a document holds those of one moment.
void PrIntercambio::momento()
{
    SembrarGrande(*escenario, "9999", 100);
    QProcess programa;
    programa.start(PROGRAMA_QUORVEX,
                   QStringList{"--exportar", "9999", escenario->Ruta("nuevo.xml")} + escenario->Base().Argumentos());
    for (int precio = 1001; !programa.waitForFinished(1); ++precio)
        escenario->Correr("UPDATE Plan_Mantenimiento SET Pm_Precio = " + QString::number(precio));
    QCOMPARE(programa.exitCode(), 0);
    QSet<QString> precios;
    static const QRegularExpression precio("Precio=\"([^\"]*)\"");
    for (auto hallados = precio.globalMatch(QString::fromUtf8(Contenido(escenario->Ruta("nuevo.xml"))));
         hallados.hasNext();)
        precios.insert(hallados.next().captured(1));
    QCOMPARE(precios.size(), 1);
}

// Killed in the middle: the plan that was there is whole.
void PrIntercambio::interrumpido()
{
    QByteArray partes;
    for (int i = 0; i < 50000; ++i)
        partes += "<Parte Id=\"" + QByteArray::number(10000 + i) + "\" Descripción=\"PIEZA\"/>";
    const QString ruta = Poner(escenario->Ruta("grande.xml"), Envuelto("0900", partes));
    const QStringList antes = escenario->Tablas();
    QProcess programa;
    programa.start(PROGRAMA_QUORVEX, QStringList{"--importar", ruta, "--si"} + escenario->Base().Argumentos());
    QTRY_VERIFY_WITH_TIMEOUT(Contenido(escenario->Ruta("traza")).count("INSERT INTO") > 500, 60000);
    programa.kill();
    QVERIFY(programa.waitForFinished());
    QVERIFY(programa.exitStatus() == QProcess::CrashExit && !Contenido(escenario->Ruta("traza")).contains("COMMIT"));
    QCOMPARE(escenario->Tablas(), antes);
}

PRUEBA(PrIntercambio)
#include "pr_intercambio.moc"
