#include "component/Esquema.h"
#include "controls/InteraccionQt.h"
#include "session/UnidadC.h"
#include "support/PruebaPantalla.h"
#include "xml/EsquemaXml.h"

#include <QDir>
#include <QProcess>

namespace
{

const QByteArray Cabeza = "<?xml version='1.0'?>\n<PlanMantenimiento><TipoEquipo Id=\"0900\">";
const QByteArray Cola = "</TipoEquipo></PlanMantenimiento>\n";
const QString SinGuardar = "16|Controles_B1Click()|KT580|ERR-ID:7500017|";

// A service as the document has it, with these lines in it.
QByteArray Servicio(const QByteArray &atributos, const QByteArray &manoObra = {}, const QByteArray &refacciones = {},
                    const QByteArray &herramientas = {})
{
    const auto grupo = [](const QByteArray &nombre, const QByteArray &lineas) {
        return lineas.isEmpty() ? "<" + nombre + "/>" : "<" + nombre + ">" + lineas + "</" + nombre + ">";
    };
    return "<TipoServicio " + atributos + ">" + grupo("ManoObra", manoObra) + grupo("Refacciones", refacciones)
           + grupo("Herramientas", herramientas) + "</TipoServicio>";
}

const QByteArray Atributos = "Id=\"9001\" UnidadLectura=\"HRS\" FrecuenciaLectura=\"1250.5\" FrecuenciaDias=\"0\" "
                             "RequiereParo=\"NO\" Duracion=\"2\" Precio=\"500\" Prioridad=\"9001\"";

} // namespace

// The exchange document: writing a plan's, and what of a stranger's is taken.
class PrXml : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void exportado();
    void sinDocumento_data();
    void sinDocumento();
    void discoLleno();
    void dialogo();
    void esquema_data();
    void esquema();
    void hostiles_data();
    void hostiles();

private:
    void Exportar(const QString &destino);
    QString Ruta(const QString &nombre) const { return escenario->Ruta(nombre); }
    QByteArray Contenido(const QString &nombre) const;
    void Poner(const QString &nombre, const QByteArray &contenido) const;
    static QString RutaEsquema() { return qvx::RutaEnUnidadC(KT580::RutaEsquema); }
    QStringList Revisar(const QByteArray &documento) const;
};

void PrXml::Exportar(const QString &destino)
{
    escenario->Personas().DarArchivo(destino);
    Mandar("B1");
}

QByteArray PrXml::Contenido(const QString &nombre) const
{
    QFile archivo(Ruta(nombre));
    return archivo.open(QIODevice::ReadOnly) ? archivo.readAll() : QByteArray();
}

void PrXml::Poner(const QString &nombre, const QByteArray &contenido) const
{
    QFile archivo(Ruta(nombre));
    archivo.remove(); // a file that is cut short waits for the disk
    QVERIFY(archivo.open(QIODevice::WriteOnly) && archivo.write(contenido) == contenido.size());
}

// What the schema says of a document, line by line.
QStringList PrXml::Revisar(const QByteArray &documento) const
{
    Poner("revisado.xml", documento);
    const qvx::EsquemaXml esquema(RutaEsquema());
    qvx::Documento leido;
    QStringList dichos;
    if (!leido.Cargar(Ruta("revisado.xml"), esquema))
        for (const qvx::ErrorXml &error : leido.Errores())
            dichos.append(error.Texto());
    return dichos;
}

void PrXml::exportado()
{
    escenario->Motor("INSERT INTO Plan_Mantenimiento_Detalle SELECT * FROM (SELECT Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, "
                     "'000009', '04', '1', 1, '', 0, 0, '' FROM Plan_Mantenimiento WHERE Pm_ID = '000001')");
    escenario->Motor("UPDATE Plan_Mantenimiento SET Tep_ID = '0000', Pm_Unidad_Lectura = ' \"<&>' || char(10) || 'ñ€ ' "
                     "WHERE Pm_ID = '000003'");
    escenario->Motor("UPDATE Plan_Mantenimiento_Detalle SET Tep_ID = '0000' WHERE Pm_ID = '000003'");
    const QStringList antes = escenario->Tablas();
    escenario->Traza();
    Exportar(Ruta("plan.xml"));
    QCOMPARE(escenario->Personas().ventanas, QList<WId>{pantalla->winId()});
    QCOMPARE(Mensajes(), QStringList{"64|Quorvex|KT580|ERR-ID:7500018|Se generó el archivo" + Ruta("plan.xml")});
    QCOMPARE(escenario->Personas().dialogos,
             QStringList{"guardar|GUARDAR XML|Archivo XML|*.xml|PlanMantenimiento_0900|"});
    QCOMPARE(Contenido("plan.xml"),
             Cabeza
                 + Servicio("Id=\"9001\" UnidadLectura=\" &quot;&lt;&amp;&gt;&#10;ñ€ \" FrecuenciaLectura=\"500\" "
                            "FrecuenciaDias=\"90\" RequiereParo=\"si\" Duracion=\"1\" Precio=\"100\" "
                            "Prioridad=\"9001\"",
                            "<Servicio Id=\"9000000001\" Cantidad=\"1\"/>")
                 + "<Parte Id=\"0001\" Descripción=\"CUERPO\"><Parte Id=\"0002\" Descripción=\"IMPULSOR\">"
                 + Servicio("Id=\"9001\" UnidadLectura=\"\" FrecuenciaLectura=\"0\" FrecuenciaDias=\"30\" "
                            "RequiereParo=\"SI\" Duracion=\"8.5\" Precio=\"1000\" Prioridad=\"9001\"",
                            "<Servicio Id=\"9000000001\" Cantidad=\"2\"/>",
                            "<Refaccion Id=\"9000000002\" Cantidad=\"1.5\" TipoGasto=\"\"/>",
                            "<Herramienta Id=\"9000000003\" Cantidad=\"1\"/>")
                 + Servicio(Atributos)
                 + "</Parte><Parte Id=\"0003\" Descripción=\"SELLO\"><Parte Id=\"0004\" Descripción=\"RESORTE\"/>"
                   "</Parte></Parte><Parte Id=\"0005\" Descripción=\"MOTOR\"/>"
                 + Cola);
    QCOMPARE(Revisar(Contenido("plan.xml")), QStringList());
    QCOMPARE(escenario->Tablas(), antes);
    QVERIFY(escenario->Traza().filter("-\t").isEmpty()); // no transaction
    QCOMPARE(QProcess::execute("xmllint", {"--noout", "--nonet", "--schema", RutaEsquema(), Ruta("plan.xml")}), 0);
}

void PrXml::sinDocumento_data()
{
    // "-": no dialog, "": cancelled
    const Tabla<QString, QString, QString> fila("falla", "destino", "mensaje");
    fila("cancelado", "", "", "");
    fila("líneas", "ALTER TABLE Plan_Mantenimiento_Detalle RENAME TO Guardada", "-",
         SinGuardar + "no such table: Plan_Mantenimiento_Detalle");
    fila("carácter de control",
         "UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'A' || char(27) || 'B' WHERE Tep_ID = '0004'", "-",
         SinGuardar + "Parte 0004: \"Descripción\" lleva un carácter que XML no admite (U+001B)");
    fila("parte bajo sí misma", "UPDATE Tipo_Equipo_Parte SET Tep_ID = '0000' WHERE Tep_ID = '0005'", "-",
         SinGuardar + "El documento tendría más de 250 niveles");
    fila("carpeta inexistente", "", "no/hay.xml", SinGuardar + "No se pudo guardar el archivo ");
}

void PrXml::sinDocumento()
{
    QFETCH(QString, falla);
    QFETCH(QString, destino);
    QFETCH(QString, mensaje);
    if (!falla.isEmpty())
        escenario->Motor(falla);
    if (destino == "-")
        Mandar("B1");
    else
        Exportar(destino.isEmpty() ? "" : Ruta(destino));
    const QString dicho = Mensajes().join("");
    QVERIFY2(mensaje.isEmpty() ? dicho.isEmpty() : dicho.startsWith(mensaje), qPrintable(dicho));
}

// The disk fills up while the file is written: the one that was there is still whole.
void PrXml::discoLleno()
{
    escenario->Motor("UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = '" + QString(2000, QLatin1Char('x')) + "'");
    Poner("plan.xml", "anterior");
    const QStringList archivos = QDir(Ruta("")).entryList(QDir::Files);
    qunsetenv("QVX_TRAZA");
    {
        const DiscoLleno disco;
        Exportar(Ruta("plan.xml"));
    }
    const QString dicho = Mensajes().join("");
    QVERIFY2(dicho.startsWith(SinGuardar + "No se pudo guardar el archivo " + Ruta("plan.xml")), qPrintable(dicho));
    QCOMPARE(Contenido("plan.xml"), "anterior");
    QCOMPARE(QDir(Ruta("")).entryList(QDir::Files), archivos);
}

// The toolkit's own dialog.
void PrXml::dialogo()
{
    qvx::InteraccionQt personas;
    const QString carpeta = QFileInfo(Ruta("plan.xml")).path();
    const auto pedir = [&](bool paraGuardar, const QString &escrito) {
        EnElDialogo([&](QWidget &dialogo) {
            QCOMPARE(dialogo.windowTitle(), "TÍTULO");
            auto *nombre = dialogo.findChild<QLineEdit *>("fileNameEdit");
            QCOMPARE(nombre->text(), paraGuardar ? "propuesto" : "");
            if (escrito.isEmpty())
                return QTest::keyClick(&dialogo, Qt::Key_Escape);
            nombre->setText(escrito);
            QTest::keyClick(nombre, Qt::Key_Return);
        });
        return personas.ElegirArchivo(
            {"TÍTULO", "Archivo XML|*.xml", paraGuardar ? "propuesto" : "", carpeta, paraGuardar}, nullptr);
    };
    Poner("plan.xml", "x");
    QCOMPARE(pedir(true, "otro"), carpeta + "/otro"); // no extension is added
    QCOMPARE(pedir(false, "plan.xml"), carpeta + "/plan.xml");
    QCOMPARE(pedir(true, ""), "");
}

void PrXml::esquema_data()
{
    const Tabla<QByteArray, QString> tabla("documento", "dicho");
    const auto fila = [&](const QString &nombre, const QByteArray &contenido, const QString &dicho) {
        tabla(nombre, Cabeza + contenido + Cola, dicho);
    };
    const auto cambiado = [](const QByteArray &antes, const QByteArray &despues) {
        return Servicio(QByteArray(Atributos).replace(antes, despues));
    };
    const QString servicio = "Renglón 2, TipoServicio: ";
    fila("números largos", cambiado("\"500\"", "\"-0.00000000000012345678901234567\""), "");
    fila("con exponente", cambiado("\"500\"", "\"5e2\""),
         servicio + "el valor \"5e2\" no es válido para el atributo \"Precio\"");
    fila("falta un atributo", cambiado("Precio=\"500\" ", ""), servicio + "falta el atributo \"Precio\"");
    fila("atributo de más", cambiado("Precio=", "Costo=\"1\" Precio="),
         servicio + "el atributo \"Costo\" no es del formato");
    fila("otro orden", cambiado("Duracion=\"2\" Precio=\"500\"", "Precio=\"500\" Duracion=\"2\""),
         servicio
             + "los atributos deben ir en este orden: Id, UnidadLectura, FrecuenciaLectura, FrecuenciaDias, "
               "RequiereParo, Duracion, Precio, Prioridad");
    fila("falta un grupo", "<TipoServicio " + Atributos + "><ManoObra/><Herramientas/></TipoServicio>",
         "Renglón 2, Herramientas: el elemento no va en este lugar; aquí se espera: Refacciones");
    fila("servicio tras una parte", "<Parte Id=\"1\" Descripción=\"\"/>" + Servicio(Atributos),
         servicio + "el elemento no va en este lugar; aquí se espera: Parte");
    fila("texto", "hola", "Renglón 2, TipoEquipo: lleva texto, y solo puede llevar elementos");
    fila("clave de la raíz", "<Parte Id=\"0000  \" Descripción=\"\"/>",
         "Renglón 2, Parte: el valor \"0000  \" no es válido para el atributo \"Id\"");
    fila("otras claves", "<Parte Id=\"00000\" Descripción=\"\"/><Parte Id=\"00A0\" Descripción=\"\"/>", "");
    fila("más allá del renglón 65535", QByteArray("<Parte Id=\"1\" Descripción=\"\"/>\n").repeated(70000) + "<Otra/>",
         "Renglón 70002, Otra: el elemento no va en este lugar; aquí se espera: Parte");
    tabla("otra raíz", "<Plan/>", "Renglón 1, Plan: no es la raíz de un plan de mantenimiento");
    tabla("sin tipo", "<PlanMantenimiento/>", "");
}

void PrXml::esquema()
{
    QFETCH(QByteArray, documento);
    QTEST(Revisar(documento).join('\n'), "dicho");
}

void PrXml::hostiles_data()
{
    const Tabla<QByteArray, QString> fila("documento", "motivo");
    const QByteArray cuerpo = Cabeza.mid(Cabeza.indexOf("<Plan")) + "<Parte Id=\"1\" Descripción=\"&x;\"/>" + Cola;
    const QString tipo = "El documento trae una declaración DOCTYPE, que este formato no admite";
    QByteArray bomba = "<!DOCTYPE a [<!ENTITY x0 \"xxxxxxxxxx\">";
    for (char i = '1'; i <= '9'; ++i)
        bomba += QByteArray("<!ENTITY x") + i + " \"" + (QByteArray("&x") + static_cast<char>(i - 1) + ";").repeated(10)
                 + "\">";
    const QByteArray xsi = " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" ";
    fila("bomba", bomba + "<!ENTITY x \"&x9;\">]>" + cuerpo, tipo);
    fila("archivo local", "<!DOCTYPE a [<!ENTITY x SYSTEM \"secreto\">]>" + cuerpo, tipo);
    fila("DTD externo", "<!DOCTYPE a SYSTEM \"secreto\">" + cuerpo, tipo);
    fila("entidad sin declarar", cuerpo, "Renglón 1: El documento no está bien formado: Entity 'x' not");
    fila("inclusión",
         Cabeza + "<xi:include xmlns:xi=\"http://www.w3.org/2001/XInclude\" href=\"secreto\" parse=\"text\"/>" + Cola,
         "Renglón 2, include: el elemento no va en este lugar");
    fila("otro esquema", "<PlanMantenimiento" + xsi + "xsi:noNamespaceSchemaLocation=\"secreto\"/>",
         "Renglón 1, PlanMantenimiento: el atributo \"noNamespaceSchemaLocation\" no es del formato");
    fila("2000 niveles",
         Cabeza + QByteArray("<Parte Id=\"1\" Descripción=\"\">").repeated(2000) + QByteArray("</Parte>").repeated(2000)
             + Cola,
         "Renglón 2: El documento no está bien formado: Excessive depth in document");
    fila("otra codificación", "<?xml version='1.0' encoding='utf-7'?>" + cuerpo, "");
    fila("octeto nulo", Cabeza + QByteArray(1, '\0') + Cola, "");
    fila("truncado", Cabeza, "Renglón 2: El documento no está bien formado: Premature end of data");
}

// None of them gets further than a reason, and none makes another file be read.
void PrXml::hostiles()
{
    QFETCH(QByteArray, documento);
    QFETCH(QString, motivo);
    Poner("secreto", "<Parte/>");
    QDir::setCurrent(Ruta(""));
    const QString dicho = Revisar(documento).value(0);
    QDir::setCurrent(QDir::rootPath());
    QVERIFY2(!dicho.isEmpty() && dicho.startsWith(motivo), qPrintable(dicho));
}

PRUEBA_MAIN(PrXml)
#include "pr_xml.moc"
