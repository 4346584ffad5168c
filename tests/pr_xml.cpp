#include "component/Esquema.h"
#include "controls/Controles.h"
#include "controls/InteraccionQt.h"
#include "data/Texto.h"
#include "session/UnidadC.h"
#include "support/Plan.h"
#include "xml/EsquemaXml.h"

#include <QDialog>
#include <QDir>
#include <QLineEdit>
#include <QProcess>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <csignal>
#include <sys/resource.h>

using toolbarQVX::Controles;

namespace
{

const QByteArray Cabeza = "<?xml version='1.0'?>\n<PlanMantenimiento><TipoEquipo Id=\"0900\">";
const QByteArray Cola = "</TipoEquipo></PlanMantenimiento>\n";

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
class PrXml : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void exportado();
    void sinDocumento_data();
    void sinDocumento();
    void guardadoFallido();
    void dialogo_data();
    void dialogo();
    void esquema_data();
    void esquema();
    void hostiles_data();
    void hostiles();
    void mutaciones();

private:
    QStringList Mensajes() { return escenario->Personas().Tomar(); }
    void Exportar() { Pulsar(escenario->De<Controles>("Controles"), "B1"); }
    QString Ruta(const QString &nombre) const { return carpeta->filePath(nombre); }
    QByteArray Contenido(const QString &nombre) const;
    void Poner(const QString &nombre, const QByteArray &contenido) const;
    static QString RutaEsquema() { return qvx::RutaEnUnidadC(KT580::RutaEsquema); }
    QStringList Revisar(const QByteArray &documento) const;
    bool PreguntaAntes(const qvx::Documento &documento) const;

    std::unique_ptr<Escenario> escenario;
    std::unique_ptr<QTemporaryDir> carpeta;
};

void PrXml::init()
{
    carpeta = std::make_unique<QTemporaryDir>();
    escenario = std::make_unique<Escenario>();
    SembrarPlan(*escenario);
}

void PrXml::cleanup()
{
    QCOMPARE(Mensajes(), QStringList());
    escenario.reset();
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
    QWidget &pantalla = escenario->Pantalla("0900");
    const QStringList antes = escenario->Tablas();
    escenario->Traza();
    escenario->Personas().DarArchivo(Ruta("plan.xml"));
    Exportar();
    QCOMPARE(escenario->Personas().ventanas, QList<WId>{pantalla.winId()});
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

    const QString xmllint = QStandardPaths::findExecutable("xmllint");
    QVERIFY2(!xmllint.isEmpty(), "Falta xmllint");
    QCOMPARE(QProcess::execute(xmllint, {"--noout", "--nonet", "--schema", RutaEsquema(), Ruta("plan.xml")}), 0);
}

void PrXml::sinDocumento_data()
{
    QTest::addColumn<QString>("falla");
    QTest::addColumn<QString>("destino"); // "-": no dialog, "": cancelled
    QTest::addColumn<QString>("mensaje");
    const QString critico = "16|Controles_B1Click()|KT580|ERR-ID:7500017|";
    QTest::newRow("cancelado") << ""
                               << ""
                               << "";
    QTest::newRow("partes") << "ALTER TABLE Tipo_Equipo_Parte RENAME TO Guardada"
                            << "-" << critico + "no such table: Tipo_Equipo_Parte";
    QTest::newRow("líneas") << "ALTER TABLE Plan_Mantenimiento_Detalle RENAME TO Guardada"
                            << "-" << critico + "no such table: Plan_Mantenimiento_Detalle";
    QTest::newRow("carácter de control") << "UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'A' || char(27) || 'B' "
                                            "WHERE Tep_ID = '0004'"
                                         << "-"
                                         << critico
                                                + "Parte 0004: \"Descripción\" lleva un carácter que XML no admite "
                                                  "(U+001B)";
    QTest::newRow("parte bajo sí misma") << "UPDATE Tipo_Equipo_Parte SET Tep_ID = '0000' WHERE Tep_ID = '0005'"
                                         << "-" << critico + "El documento tendría más de 250 niveles";
    QTest::newRow("carpeta inexistente") << ""
                                         << "no/hay.xml" << critico + "No se pudo guardar el archivo ";
}

void PrXml::sinDocumento()
{
    QFETCH(QString, falla);
    QFETCH(QString, destino);
    QFETCH(QString, mensaje);
    escenario->Pantalla("0900");
    if (!falla.isEmpty())
        escenario->Motor(falla);
    if (destino != "-")
        escenario->Personas().DarArchivo(destino.isEmpty() ? "" : Ruta(destino));
    Exportar();
    const QString dicho = Mensajes().join("");
    QVERIFY2(mensaje.isEmpty() ? dicho.isEmpty() : dicho.startsWith(mensaje), qPrintable(dicho));
    QVERIFY(QDir(carpeta->path()).isEmpty());
}

// The disk fills up while the file is written: the one that was there is still whole.
void PrXml::guardadoFallido()
{
    Poner("plan.xml", "anterior");
    escenario->Pantalla("0900");
    escenario->Personas().DarArchivo(Ruta("plan.xml"));
    rlimit antes{};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &antes), 0);
    const rlimit poco{100, antes.rlim_max};
    const auto senal = std::signal(SIGXFSZ, SIG_IGN);
    qunsetenv("QVX_TRAZA");
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &poco), 0);
    Exportar();
    setrlimit(RLIMIT_FSIZE, &antes);
    std::signal(SIGXFSZ, senal);
    const QString dicho = Mensajes().join("");
    QVERIFY2(dicho.startsWith("16|Controles_B1Click()|KT580|ERR-ID:7500017|No se pudo guardar el archivo "
                              + Ruta("plan.xml")),
             qPrintable(dicho));
    QCOMPARE(Contenido("plan.xml"), "anterior");
    QCOMPARE(QDir(carpeta->path()).entryList(QDir::Files), QStringList{"plan.xml"});
}

void PrXml::dialogo_data()
{
    QTest::addColumn<bool>("paraGuardar");
    QTest::addColumn<QString>("escrito"); // "" : Esc
    QTest::addColumn<QString>("elegido");
    QTest::newRow("guardar sin extensión") << true << "otro"
                                           << "otro";
    QTest::newRow("guardar como se propuso") << true << "propuesto"
                                             << "propuesto";
    QTest::newRow("abrir") << false << "plan.xml"
                           << "plan.xml";
    QTest::newRow("cancelar") << true << ""
                              << "";
}

// The toolkit's own dialog.
void PrXml::dialogo()
{
    QFETCH(QString, escrito);
    QFETCH(QString, elegido);
    QFETCH(bool, paraGuardar);
    Poner("plan.xml", "x");
    qvx::InteraccionQt personas;
    QString titulo;
    QString propuesto;
    EnElDialogo([&](QWidget &dialogo) {
        titulo = dialogo.windowTitle();
        auto *nombre = dialogo.findChild<QLineEdit *>("fileNameEdit");
        QVERIFY(nombre);
        propuesto = nombre->text();
        if (escrito.isEmpty())
            return QTest::keyClick(&dialogo, Qt::Key_Escape);
        nombre->setText(escrito);
        QTest::keyClick(nombre, Qt::Key_Return);
    });
    const QString dado = personas.ElegirArchivo(
        {"TÍTULO", "Archivo XML|*.xml", paraGuardar ? "propuesto" : "", carpeta->path(), paraGuardar}, nullptr);
    QCOMPARE(dado, elegido.isEmpty() ? "" : Ruta(elegido));
    QCOMPARE(titulo, "TÍTULO");
    QCOMPARE(propuesto, paraGuardar ? "propuesto" : "");
}

void PrXml::esquema_data()
{
    QTest::addColumn<QByteArray>("contenido");
    QTest::addColumn<QStringList>("dichos");
    const auto fila = [](const QByteArray &nombre, const QByteArray &contenido, const QStringList &dichos) {
        QTest::newRow(nombre.constData()) << Cabeza + contenido + Cola << dichos;
    };
    const auto cambiado = [](const QByteArray &antes, const QByteArray &despues) {
        QByteArray atributos = Atributos;
        return "\n" + Servicio(atributos.replace(antes, despues));
    };
    fila("números largos", cambiado("\"500\"", "\"-0.00000000000012345678901234567\""), {});
    fila("con exponente", cambiado("\"500\"", "\"5e2\""),
         {"Renglón 3, TipoServicio: el valor \"5e2\" no es válido para el atributo \"Precio\""});
    fila("sin número", cambiado("\"500\"", "\"\""),
         {"Renglón 3, TipoServicio: el valor \"\" no es válido para el atributo \"Precio\""});
    fila("falta un atributo", cambiado("Precio=\"500\" ", ""),
         {"Renglón 3, TipoServicio: falta el atributo \"Precio\""});
    fila("atributo de más", cambiado("Precio=", "Costo=\"1\" Precio="),
         {"Renglón 3, TipoServicio: el atributo \"Costo\" no es del formato"});
    fila("otro orden", cambiado("Duracion=\"2\" Precio=\"500\"", "Precio=\"500\" Duracion=\"2\""),
         {"Renglón 3, TipoServicio: los atributos deben ir en este orden: Id, UnidadLectura, FrecuenciaLectura, "
          "FrecuenciaDias, RequiereParo, Duracion, Precio, Prioridad"});
    fila("otro orden en una línea", Servicio(Atributos, {}, "<Refaccion Cantidad=\"1\" Id=\"1\" TipoGasto=\"\"/>"),
         {"Renglón 2, Refaccion: los atributos deben ir en este orden: Id, Cantidad, TipoGasto"});
    fila("falta un grupo", "<TipoServicio " + Atributos + "><ManoObra/><Herramientas/></TipoServicio>",
         {"Renglón 2, Herramientas: el elemento no va en este lugar; aquí se espera: Refacciones"});
    fila("servicio tras una parte", "<Parte Id=\"1\" Descripción=\"\"/>" + Servicio(Atributos),
         {"Renglón 2, TipoServicio: el elemento no va en este lugar; aquí se espera: Parte"});
    fila("texto", "hola", {"Renglón 2, TipoEquipo: lleva texto, y solo puede llevar elementos"});
    for (const QByteArray &raiz : QByteArrayList{"0000", "0000  "})
        fila(raiz, "<Parte Id=\"" + raiz + "\" Descripción=\"\"/>",
             {"Renglón 2, Parte: el valor \"" + QString::fromUtf8(raiz) + "\" no es válido para el atributo \"Id\""});
    for (const QByteArray &clave : QByteArrayList{"00000", "000", "0001", "00A0", "A"})
        fila("clave " + clave, "<Parte Id=\"" + clave + "\" Descripción=\"\"/>", {});
    QTest::newRow("otra raíz") << QByteArray("<Plan/>")
                               << QStringList{"Renglón 1, Plan: no es la raíz de un plan de mantenimiento"};
    QTest::newRow("sin tipo") << QByteArray("<PlanMantenimiento/>") << QStringList{};
    QTest::newRow("más allá del renglón 65535")
        << Cabeza + QByteArray("<Parte Id=\"1\" Descripción=\"\"/>\n").repeated(70000) + "<Otra/>" + Cola
        << QStringList{"Renglón 70002, Otra: el elemento no va en este lugar; aquí se espera: Parte"};
    QTest::newRow("truncado") << Cabeza.left(60)
                              << QStringList{"Renglón 2: El documento no está bien formado: Premature end of data in "
                                             "tag PlanMantenimiento line 2"};
}

void PrXml::esquema()
{
    QFETCH(QByteArray, contenido);
    QTEST(Revisar(contenido), "dichos");
}

void PrXml::hostiles_data()
{
    QTest::addColumn<QByteArray>("documento");
    QTest::addColumn<QString>("motivo");
    const QByteArray parte = "<Parte Id=\"1\" Descripción=\"&x;\"/>";
    const QByteArray cuerpo = Cabeza.mid(Cabeza.indexOf("<Plan")) + parte + Cola;
    const QString tipo = "El documento trae una declaración DOCTYPE, que este formato no admite";
    QByteArray bomba = "<!DOCTYPE a [<!ENTITY x0 \"xxxxxxxxxx\">";
    for (int i = 1; i < 12; ++i)
        bomba += "<!ENTITY x" + QByteArray::number(i) + " \"" + ("&x" + QByteArray::number(i - 1) + ";").repeated(10)
                 + "\">";
    QTest::newRow("bomba") << bomba + "<!ENTITY x \"&x11;\">]>" + cuerpo << tipo;
    QTest::newRow("archivo local") << "<!DOCTYPE a [<!ENTITY x SYSTEM \"secreto\">]>" + cuerpo << tipo;
    QTest::newRow("DTD externo") << "<!DOCTYPE a SYSTEM \"secreto\">" + cuerpo << tipo;
    QTest::newRow("entidad de parámetro")
        << "<!DOCTYPE a [<!ENTITY % x SYSTEM \"http://127.0.0.1:1/\"> %x;]>" + cuerpo << tipo;
    QTest::newRow("atributos supuestos") << "<!DOCTYPE a [<!ATTLIST TipoEquipo Id CDATA \"0900\">]>" + cuerpo << tipo;
    QTest::newRow("entidad sin declarar") << cuerpo << "Renglón 1: El documento no está bien formado: Entity 'x' not";
    QTest::newRow("inclusión") << Cabeza
                                      + "<xi:include xmlns:xi=\"http://www.w3.org/2001/XInclude\" href=\"secreto\" "
                                        "parse=\"text\"/>"
                                      + Cola
                               << "Renglón 2, include: el elemento no va en este lugar";
    QTest::newRow("otro esquema")
        << QByteArray("<PlanMantenimiento xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
                      "xsi:noNamespaceSchemaLocation=\"secreto\"/>")
        << "Renglón 1, PlanMantenimiento: el atributo \"noNamespaceSchemaLocation\" no es del formato";
    QTest::newRow("otro tipo de elemento")
        << Cabeza
               + "<Parte Id=\"1\" Descripción=\"\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
                 "xsi:nil=\"true\"/>"
               + Cola
        << "Renglón 2, Parte: el atributo \"nil\" no es del formato";
    QTest::newRow("2000 niveles") << Cabeza + QByteArray("<Parte Id=\"1\" Descripción=\"\">").repeated(2000)
                                         + QByteArray("</Parte>").repeated(2000) + Cola
                                  << "Renglón 2: El documento no está bien formado: Excessive depth in document";
    QTest::newRow("otra codificación") << "<?xml version='1.0' encoding='utf-7'?>" + cuerpo << "";
    QTest::newRow("octeto nulo") << Cabeza + QByteArray(1, '\0') + Cola << "";
    QTest::newRow("vacío") << QByteArray() << "";
}

// None of them gets further than a reason, and none makes another file be read.
void PrXml::hostiles()
{
    QFETCH(QByteArray, documento);
    QFETCH(QString, motivo);
    Poner("secreto", "<Parte/>");
    QDir::setCurrent(carpeta->path());
    const QString dicho = Revisar(documento).value(0);
    QDir::setCurrent(QDir::rootPath());
    QVERIFY2(!dicho.isEmpty() && dicho.startsWith(motivo), qPrintable(dicho));
}

// Whether the import gets as far as its question: the equipment type is there, and its key breaks no statement.
bool PrXml::PreguntaAntes(const qvx::Documento &documento) const
{
    const auto tipo = documento.Buscar({"PlanMantenimiento", "TipoEquipo"});
    const QString clave = tipo ? tipo.Atributo(0) : QString("'");
    return !clave.contains(QLatin1Char('\''))
           && escenario
                      ->Motor("SELECT count(*) FROM Tipo_Equipo WHERE Es_Cve_Estado <> 'CA' AND Te_Cve_Tipo_Equipo = "
                              + qvx::Literal(clave))
                      .toInt()
                  > 0;
}

// 20,000 damaged documents, the same ones each time. The reader tells them apart; those it takes, and some that it
// does not, also go through the screen: rows change only when the import did not refuse.
void PrXml::mutaciones()
{
    escenario->Pantalla("0900");
    escenario->Personas().DarArchivo(Ruta("plan.xml"));
    Exportar();
    Mensajes();
    const QByteArray bueno = Contenido("plan.xml");
    const qvx::EsquemaXml esquema(RutaEsquema());
    qvx::Documento documento;
    QRandomGenerator azar(580);
    const auto octeto = [&] { return static_cast<char>(azar.bounded(2) ? azar.bounded(256) : azar.bounded(32, 127)); };
    const auto lugar = [&](const QByteArray &texto) { return azar.bounded(static_cast<int>(texto.size()) + 1); };
    const auto mutar = [&](QByteArray texto) {
        switch (azar.bounded(6)) {
        case 0:
            return texto.left(lugar(texto));
        case 1:
            return texto.insert(lugar(texto), octeto());
        case 2: // a piece to another place
        {
            const int desde = lugar(texto);
            const QByteArray pieza = texto.mid(desde, azar.bounded(200));
            texto.remove(desde, pieza.size());
            return texto.insert(lugar(texto), pieza);
        }
        case 3: // an element or an attribute gone
        {
            const auto desde = texto.indexOf(azar.bounded(2) ? ' ' : '<', lugar(texto));
            const auto hasta = texto.indexOf(azar.bounded(2) ? ' ' : '>', desde + 1);
            return desde < 0 || hasta < 0 ? texto.left(lugar(texto)) : texto.remove(desde, hasta - desde);
        }
        case 4: {
            static const QList<QByteArray> codificaciones{"UTF-16", "ISO-8859-1", "UCS-4", "EBCDIC-US", "nada"};
            return texto.replace("'1.0'", "'1.0' encoding='" + codificaciones.at(azar.bounded(5)) + "'");
        }
        default:
            for (int i = azar.bounded(1, 5); i > 0; --i)
                texto[azar.bounded(static_cast<int>(texto.size()))] = octeto();
            return texto;
        }
    };
    int aceptados = 0;
    int importados = 0;
    QStringList antes = escenario->Tablas();
    for (int i = 0; i < 20000; ++i) {
        const QByteArray texto = mutar(azar.bounded(4) ? bueno : mutar(bueno));
        Poner("mutado.xml", texto);
        const bool aceptado = documento.Cargar(Ruta("mutado.xml"), esquema);
        aceptados += aceptado;
        if (i % 100 != 0 && !aceptado)
            continue;
        escenario->Personas().DarArchivo(Ruta("mutado.xml"));
        if (aceptado && PreguntaAntes(documento))
            escenario->Personas().Responder(7500048, qvx::mensaje::Si);
        Pulsar(escenario->De<Controles>("Controles"), "B2");
        const QStringList dichos = Mensajes().filter(QRegularExpression("7500048|7500024"));
        const QStringList despues = escenario->Tablas();
        if (despues != antes) {
            QVERIFY2(aceptado && !dichos.isEmpty(), texto.constData());
            ++importados;
        }
        antes = despues;
    }
    QVERIFY2(aceptados > 200 && aceptados < 10000, qPrintable(QString::number(aceptados)));
    QVERIFY2(importados > 100, qPrintable(QString::number(importados)));
}

PRUEBA_MAIN(PrXml)
#include "pr_xml.moc"
