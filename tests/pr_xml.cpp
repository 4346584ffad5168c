#include "component/Esquema.h"
#include "support/PruebaPantalla.h"
#include "system/UnidadC.h"
#include "xml/EsquemaXml.h"

namespace
{

const QByteArray Cabeza = "<?xml version='1.0'?>\n<PlanMantenimiento><TipoEquipo Id=\"0900\">";
const QByteArray Cola = "</TipoEquipo></PlanMantenimiento>\n";
const QByteArray Servicio =
    R"(<TipoServicio Id="9001" UnidadLectura="HRS" FrecuenciaLectura="1250.5" FrecuenciaDias="0")"
    R"( RequiereParo="NO" Duracion="2" Precio="500" Prioridad="9001">)"
    "<ManoObra/><Refacciones/><Herramientas/></TipoServicio>";
const QByteArray Parte = R"(<Parte Id="1" Descripción=""/>)";

} // namespace

// The exchange document: writing a plan's, and what of a stranger's is taken.
class PrXml : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void exportado();
    void sinDocumento();
    void sinArchivo();
    void revisado();

private:
    void Exportar(const QString &destino);
    QString Ruta(const QString &nombre) const { return escenario->Ruta(nombre); }
    QByteArray Contenido(const QString &nombre) const;
    void Poner(const QString &nombre, const QByteArray &contenido) const;
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
    const qvx::EsquemaXml esquema(qvx::RutaEnUnidadC(KT580::RutaEsquema));
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
    QCOMPARE(Mensajes(), QStringList{"64|Quorvex|KT580|ERR-ID:7500018|Se generó el archivo" + Ruta("plan.xml")});
    QCOMPARE(escenario->Personas().dialogos,
             QStringList{"guardar|GUARDAR XML|Archivo XML|*.xml|PlanMantenimiento_0900|"});
    const QByteArray plan = Cabeza + R"(
<TipoServicio Id="9001" UnidadLectura=" &quot;&lt;&amp;&gt;&#10;ñ€ " FrecuenciaLectura="500" FrecuenciaDias="90"
 RequiereParo="si" Duracion="1" Precio="100" Prioridad="9001">
<ManoObra><Servicio Id="9000000001" Cantidad="1"/></ManoObra><Refacciones/><Herramientas/></TipoServicio>
<Parte Id="0001" Descripción="CUERPO"><Parte Id="0002" Descripción="IMPULSOR">
<TipoServicio Id="9001" UnidadLectura="" FrecuenciaLectura="0" FrecuenciaDias="30"
 RequiereParo="SI" Duracion="8.5" Precio="1000" Prioridad="9001">
<ManoObra><Servicio Id="9000000001" Cantidad="2"/></ManoObra>
<Refacciones><Refaccion Id="9000000002" Cantidad="1.5" TipoGasto=""/></Refacciones>
<Herramientas><Herramienta Id="9000000003" Cantidad="1"/></Herramientas></TipoServicio>
)" + Servicio + R"(
</Parte><Parte Id="0003" Descripción="SELLO"><Parte Id="0004" Descripción="RESORTE"/></Parte></Parte>
<Parte Id="0005" Descripción="MOTOR"/>
)" + Cola;
    QCOMPARE(Contenido("plan.xml").replace('\n', ""), QByteArray(plan).replace('\n', ""));
    QCOMPARE(Revisar(Contenido("plan.xml")), QStringList());
    QCOMPARE(escenario->Tablas(), antes);
    QVERIFY(escenario->Traza().filter("-\t").isEmpty()); // no transaction
}

// What cannot be written as a document is told before anybody is asked for a file.
void PrXml::sinDocumento()
{
    const auto probar = [&](const QString &falla, const QString &mensaje) {
        escenario->Motor(falla);
        Mandar("B1");
        QCOMPARE(Mensajes().join('\n'), "16|Controles_B1Click()|KT580|ERR-ID:7500017|" + mensaje);
    };
    escenario->Motor("DROP TRIGGER Tep_Raiz_Cambio"); // an older version may have left such a part, below itself
    probar("UPDATE Tipo_Equipo_Parte SET Tep_ID = '0000' WHERE Tep_ID = '0005'",
           "El documento tendría más de 250 niveles");
    probar("UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'A' || char(27) || 'B' WHERE Tep_ID = '0004'",
           "Parte 0004: \"Descripción\" lleva un carácter que XML no admite (U+001B)");
    probar("ALTER TABLE Plan_Mantenimiento_Detalle RENAME TO Guardada", "no such table: Plan_Mantenimiento_Detalle");
}

// Cancelled, it leaves no file. When the disk fills up, the one that was there is still whole.
void PrXml::sinArchivo()
{
    Exportar("");
    QCOMPARE(Mensajes(), QStringList());
    escenario->Motor("UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = '" + QString(2000, QLatin1Char('x')) + "'");
    Poner("plan.xml", "anterior");
    qunsetenv("QVX_TRAZA");
    {
        const DiscoLleno disco;
        Exportar(Ruta("plan.xml"));
    }
    QVERIFY(
        Mensajes().join("").startsWith("16|Controles_B1Click()|KT580|ERR-ID:7500017|No se pudo guardar el archivo "));
    QCOMPARE(Contenido("plan.xml"), "anterior");
}

void PrXml::revisado()
{
    const auto probar = [&](const QByteArray &contenido, const QString &dicho) {
        QCOMPARE(Revisar(Cabeza + contenido + Cola).join('\n'), dicho);
    };
    const auto cambiado = [](const QByteArray &antes, const QByteArray &despues) {
        return QByteArray(Servicio).replace(antes, despues);
    };
    const QString servicio = "Renglón 2, TipoServicio: ";
    probar(cambiado("500", "-0.00000000000012345678901234567"), "");
    probar(cambiado("500", "5e2"), servicio + "el valor \"5e2\" no es válido para el atributo \"Precio\"");
    probar(cambiado("Duracion=\"2\" Precio=\"500\"", "Precio=\"500\" Duracion=\"2\""),
           servicio
               + "los atributos deben ir en este orden: Id, UnidadLectura, FrecuenciaLectura, FrecuenciaDias, "
                 "RequiereParo, Duracion, Precio, Prioridad");
    probar(QByteArray(Parte).replace("1", "0000  "), // the root's
           "Renglón 2, Parte: el valor \"0000  \" no es válido para el atributo \"Id\"");
    probar((Parte + "\n").repeated(70000) + "<Otra/>", // past the lines that the parser counts
           "Renglón 70002, Otra: el elemento no va en este lugar; aquí se espera: Parte");
    probar(QByteArray(Parte).replace("/", "").repeated(2000),
           "Renglón 2: El documento no está bien formado: Excessive depth in document: 256 use XML_PARSE_HUGE option");

    // No file of the planner's is at a stranger's disposal.
    Poner("secreto", "<Parte/>");
    probar("<xi:include xmlns:xi=\"http://www.w3.org/2001/XInclude\" href=\"secreto\" parse=\"text\"/>",
           "Renglón 2, include: el elemento no va en este lugar; aquí se espera: TipoServicio, Parte");
    QCOMPARE(Revisar("<!DOCTYPE a [<!ENTITY x SYSTEM \"secreto\">]><PlanMantenimiento>&x;</PlanMantenimiento>"),
             QStringList{"El documento trae una declaración DOCTYPE, que este formato no admite"});
}

PRUEBA_MAIN(PrXml)
#include "pr_xml.moc"
