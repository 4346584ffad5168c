#include "component/Esquema.h"
#include "controls/DialogoCatalogo.h"
#include "data/Texto.h"
#include "session/UnidadC.h"
#include "support/PruebaPantalla.h"
#include "xml/EsquemaXml.h"

#include <QClipboard>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <algorithm>

// Hostile texts in every field of every form: whatever is typed, nothing changes but the row that the form is for.
class PrAtaques : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void partes_data();
    void partes();
    void etiqueta();
    void tipoDeEquipo();
    void editor_data();
    void editor();
    void catalogo();
    void documento_data();
    void documento();

private:
    using Foto = QMap<QString, QStringList>;

    Foto Fotografiar() const;
    // Everything is as it was, but for rows that begin so, and the log of their change. What is seen becomes what was.
    void Revisar(const QString &texto, const QStringList &editadas);
    static void Pegar(QLineEdit *linea, const QString &texto);
    static void Pegar(QWidget &caja, const QString &texto) { Pegar(caja.findChild<QLineEdit *>(), texto); }
    static void PegarEnCelda(SSOleDBGrid &grid, const QString &columna, const QString &texto);
    void Guardado(const QString &texto, const QString &valor, const QString &donde) const;
    void GuardarSinMas();

    Foto antes;
};

namespace
{

const QString LaParte = " FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' AND Tep_ID = ";

// One text between bars or line's ends, "\u" before a character's number. Those who wrote them know the statements.
const char *const Renglones = R"(
'¦''¦'''¦''''¦a'b¦a''b¦'a'¦''a''¦a'¦'a¦a'b'c¦a'''b'¦''a'¦ ' ' 
'; DROP TABLE Producto; --¦x'; DELETE FROM Producto; SELECT '¦x'); DELETE FROM Producto; --¦x';¦';;'
x'; COMMIT; DROP TABLE Unidad; BEGIN; --¦; DELETE FROM Tipo_Gasto
x' -- ¦x'--¦x' /*¦*/ x' /* ¦x' # ¦-- ¦/* */¦x' --\u000a, 'y¦x'/**/, 'y
x', 'y¦x', 'o', 'f', 'o', 'f') --¦x', 'o', 'f', 'o', 'f'), ('0000', '9998', '0902', 'OTRA
x', 'o', 'f', 'o', 'f'), ('0000', '9998', '0902', 'OTRA', 'o', 'f', 'o', 'f
x', 1, 'PZA', 1, 1), ('0902', '0001', '000009', '000009', '01', 'x¦x', 7, 'KG', 7, 'y'¦, '9001
x', Es_Cve_Estado = 'BA¦x', Te_Cve_Tipo_Equipo = '0902¦x', Tep_ID = '9998¦x', Tep_Padre = '0002
x', Oper_Alta = 'nadie¦x', Tep_Descripcion = 'y¦x' WHERE 'a' = 'a¦x' WHERE Tep_ID = '0001
x' OR 'a' = 'a¦x' OR '1'='1¦000001' OR Pm_ID = '000002¦000001' OR 'a'='a¦x' OR Pm_ID LIKE '%
000001' AND Tep_ID <> '¦x' AND 'a' = 'a¦000001' AND 'a' = 'b' OR Pm_ID = '000001
x'+(SELECT Te_Descripcion FROM Tipo_Equipo)+'¦x' AND EXISTS (SELECT 1 FROM Unidad) AND 'a'='a
x' UNION SELECT Fc_Codigo, Fc_Mascara FROM Formato_Clave WHERE 'a' = 'a
x' UNION SELECT rolname, rolpassword FROM pg_authid WHERE 'a' = 'a
x' UNION SELECT name, sql FROM sqlite_master WHERE 'a' = 'a¦SELECT * INTO Copia FROM Producto
x' UNION SELECT 1, 2 INTO Copia FROM Producto WHERE 'a' = 'a
$$x$$¦$a$x$a$; DROP TABLE Unidad¦$$'$$¦E'\'' OR 1=1¦x', E'\'¦U&'\0027'¦x', U&'\0027', '¦B'1'¦N'x'¦x'41'
\¦\'¦x\' OR 1=1¦\\'¦a\¦%27¦&#39;¦&apos;¦<x y="'"/>
x’ OR ’1’=’1¦‘x‘¦x＇ OR ＇1＇=＇1¦xʼ; DROP TABLE Unidad¦´x´`x`¦"x"¦" OR "1"="1¦"Producto"
\u000d\u000a'x¦a\u000d\u000ab¦a\u0009b¦{PARAMETROS}¦x' {PARAMETROS} '¦{1}¦%¦_¦%s%n¦?¦x ? y¦$1¦:a¦@p¦x', ?, '¦x' = ? OR '
1e999¦NaN¦-1¦0x10¦Infinity¦1,000.5.¦99999999999999999999¦1;2
x', pg_sleep(9), '¦x' AND pg_sleep(9) IS NULL AND 'a' = 'a¦x' AND lo_import('/etc/passwd') > 0 AND 'a'='a
x' AND set_config('lock_timeout', '0', false) <> '¦x' AND load_extension('x') = '
x' AND query_to_xml('DELETE FROM dbo.producto', true, true, '') IS NULL AND 'a' = 'a
x' AND pg_advisory_lock(580) IS NULL AND 'a' = 'a¦x' AND lo_create(0) > 0 AND 'a' = 'a
a\u0000b¦x\u0000' OR 'a'='a¦\u0001\u001b\u007f¦x\ud800¦\udc00x¦\u202ex\u200f¦x\ufeffy¦x\u2028'y
x' || (SELECT Te_Descripcion FROM Tipo_Equipo LIMIT 1) || '¦x' || ? || '¦x' || E'\'¦x' || pg_sleep(9) || '
)";

// Or one of each so many of them, others each time: the many fields whose texts go the same way share them.
QStringList Textos(int cada = 1)
{
    static const QRegularExpression numero("\\\\u([0-9a-f]{4})");
    QStringList textos{QString(1 << 20, QLatin1Char('x')), QString(1 << 20, QLatin1Char('\'')),
                       "x'" + QString(1 << 20, QLatin1Char('y'))};
    for (QString texto : QString(Renglones).split(QRegularExpression("[¦\n]"), Qt::SkipEmptyParts)) {
        for (auto hallado = numero.match(texto); hallado.hasMatch(); hallado = numero.match(texto))
            texto.replace(hallado.capturedStart(), 6, QChar(hallado.captured(1).toUShort(nullptr, 16)));
        textos.append(texto);
    }
    static int vez = 0;
    textos.removeIf([cada, i = vez++](const QString &) mutable { return i++ % cada != 0; });
    return textos;
}

// For messages of the tests.
QByteArray Corto(const QString &texto)
{
    return texto.left(80).toUtf8().toPercentEncoding(" '|,=();");
}

} // namespace

PrAtaques::Foto PrAtaques::Fotografiar() const
{
    const auto otro = escenario->Base().Otro();
    const auto leer = [&](const QString &sql) {
        QStringList filas = otro->Filas(sql);
        filas.sort();
        return filas;
    };
    Foto foto;
    for (const QString &tabla : leer(motor::Segun(
             "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite_%'",
             "SELECT tablename FROM pg_tables WHERE schemaname NOT IN ('pg_catalog', 'information_schema') UNION ALL "
             "SELECT 'pg_largeobject_metadata'")))
        foto.insert(tabla.toLower(), leer("SELECT * FROM " + tabla));
    if (motor::EsPostgres()) // other tests have databases of their own on the server
        foto.insert("abierto",
                    leer("SELECT pid FROM pg_stat_activity WHERE datname = current_database() AND (state LIKE 'idle "
                         "in%' OR pid IN (SELECT pid FROM pg_locks WHERE locktype = 'advisory'))"));
    else
        escenario->Motor("BEGIN IMMEDIATE"); // nobody holds the file
    return foto;
}

void PrAtaques::Revisar(const QString &texto, const QStringList &editadas)
{
    QVERIFY2(!qvx::Sesion::Actual().Conexion().EnTransaccion(), Corto(texto).constData());
    static const QRegularExpression registro(
        "^registro_cambio\\|\\d+\\|(Tipo_Equipo_Parte|Plan_Mantenimiento)\\|.*\\|mlopez\\|",
        QRegularExpression::DotMatchesEverythingOption);
    const Foto ahora = Fotografiar();
    QCOMPARE(ahora.keys(), antes.keys());
    for (auto tabla = ahora.begin(); tabla != ahora.end(); ++tabla) {
        const QStringList previas = antes.value(tabla.key());
        const QSet<QString> fueron(previas.begin(), previas.end());
        const QSet<QString> son(tabla->begin(), tabla->end());
        for (const QString &cambiada : (fueron - son) + (son - fueron)) {
            const QString fila = tabla.key() + "|" + cambiada;
            const bool suya = std::any_of(editadas.begin(), editadas.end(), [&](const QString &comienzo) {
                return fila.startsWith(comienzo, Qt::CaseInsensitive);
            });
            QVERIFY2(suya || (!editadas.isEmpty() && registro.match(fila).hasMatch()),
                     (Corto(texto) + " changed " + Corto(fila)).constData());
        }
    }
    antes = ahora;
}

// A real paste, which the box's own rules may refuse, and the box is left.
void PrAtaques::Pegar(QLineEdit *linea, const QString &texto)
{
    linea->setFocus();
    linea->selectAll();
    QTest::keyClick(linea, Qt::Key_Delete);
    QGuiApplication::clipboard()->setText(texto);
    linea->paste();
    QTest::keyClick(linea, Qt::Key_Tab);
}

void PrAtaques::PegarEnCelda(SSOleDBGrid &grid, const QString &columna, const QString &texto)
{
    grid.setFocus();
    grid.setCurrentCell(0, grid.IndiceColumna(columna));
    QTest::keyClick(&grid, Qt::Key_F2);
    Pegar(qobject_cast<QLineEdit *>(QApplication::focusWidget()), texto);
    QCoreApplication::processEvents();
}

// As it was typed: a doubled quote is one, as in every literal.
void PrAtaques::Guardado(const QString &texto, const QString &valor, const QString &donde) const
{
    const QString guardado = escenario->Motor("SELECT " + donde).toString();
    QVERIFY2(guardado == QString(valor).replace("''", "'"),
             (Corto(texto) + " is stored as " + Corto(guardado)).constData());
}

// After all of it, the screen still saves.
void PrAtaques::GuardarSinMas()
{
    EnLaParte("Editar", "N0005", [&](QWidget &dialogo) {
        Escribir(Caja(dialogo, "txtTexto"), "MOTOR NUEVO");
        Aceptar(dialogo);
        QVERIFY(!dialogo.isVisible());
    });
    QCOMPARE(Partes("Tep_Descripcion", "Tep_ID = '0005'"), "MOTOR NUEVO");
}

void PrAtaques::partes_data()
{
    const Tabla<QString, QString> fila("comando", "campo");
    fila("descripción nueva", "Nuevo", "txtTexto");
    fila("clave nueva", "Nuevo", "txtClave");
    fila("descripción", "Editar", "txtTexto");
}

// Refused with a word, or stored as it was typed in the one row that it was typed for.
void PrAtaques::partes()
{
    QFETCH(QString, comando);
    QFETCH(QString, campo);
    for (const QString &texto : Textos(campo == "txtTexto" && comando == "Nuevo" ? 1 : 3)) {
        antes = Fotografiar();
        QString clave;
        QString descripcion;
        bool guardada = false;
        EnLaParte(comando, "N0005", [&](QWidget &dialogo) {
            Pegar(Caja(dialogo, "txtTexto"), "BRIDA");
            Pegar(Caja(dialogo, campo), texto);
            clave = Caja(dialogo, "txtClave").Text();
            descripcion = Caja(dialogo, "txtTexto").Text();
            Aceptar(dialogo);
            guardada = !dialogo.isVisible();
        });
        QVERIFY2(guardada || !Mensajes().isEmpty(), Corto(texto).constData());
        Mensajes();
        Revisar(texto, guardada ? QStringList{"Tipo_Equipo_Parte|0900|" + clave + "|"} : QStringList());
        if (guardada)
            Guardado(texto, descripcion, "Tep_Descripcion" + LaParte + qvx::Literal(clave));
        if (QTest::currentTestFailed())
            return;
        escenario->Motor("DELETE FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' AND (Tep_ID < '0001' OR "
                         "Tep_ID > '0006')");
    }
    GuardarSinMas();
}

void PrAtaques::etiqueta()
{
    for (const QString &texto : Textos(3)) {
        escenario->Motor("UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'MOTOR' WHERE Tep_ID = '0005'");
        antes = Fotografiar();
        Arbol().setSelectedItem(Arbol().Item("N0005"));
        Arbol().setFocus();
        QTest::keyClick(&Arbol(), Qt::Key_F2);
        auto *linea = qobject_cast<QLineEdit *>(QApplication::focusWidget());
        linea->selectAll();
        QGuiApplication::clipboard()->setText(texto);
        linea->paste();
        const QString escrito = linea->text().remove("0005").remove(QLatin1Char('-')).trimmed().toUpper();
        QTest::keyClick(linea, Qt::Key_Return);
        QCoreApplication::processEvents(); // the label's editor closes
        const bool guardada = Mensajes().isEmpty();
        Revisar(texto, {"Tipo_Equipo_Parte|0900|0005|"});
        if (guardada)
            Guardado(texto, escrito, "Tep_Descripcion" + LaParte + "'0005'");
        if (QTest::currentTestFailed())
            return;
    }
    GuardarSinMas();
}

void PrAtaques::tipoDeEquipo()
{
    antes = Fotografiar();
    for (const QString &texto : Textos(3)) {
        Pegar(Tipo(), texto);
        QCOMPARE(Arbol().Count(), 0);
        QCOMPARE(escenario->De<txtQVX>("txtNTipoEquipo").Text(), "");
        Mensajes();
        Revisar(texto, {});
    }
    Escribir(Tipo(), "900");
    GuardarSinMas();
}

void PrAtaques::editor_data()
{
    // valida: what is typed into a cell before, whose description stays when another text is typed over it
    const Tabla<int, QString, QString> fila("pagina", "campo", "valida");
    for (const char *caja : {"txtTipoServicio", "txtUnidad", "txtDias", "txtTiempoParo", "txtPrecio"})
        fila(caja, 0, caja, "");
    fila("mano de obra", 1, "Producto", "9000000001");
    fila("cantidad", 2, "Cantidad", "5");
    fila("gasto", 2, "Gasto", "9001");
    fila("herramienta", 3, "Producto", "9000000003");
}

// What the editor takes is saved as it was typed, in the one service that it is open on.
void PrAtaques::editor()
{
    QFETCH(int, pagina);
    QFETCH(QString, campo);
    QFETCH(QString, valida);
    const char *grids[] = {"", "ssManoObra", "ssRefacciones", "ssHerramientas"};
    const QStringList servicio{"Plan_Mantenimiento|0900|0002|000001|", "Plan_Mantenimiento_Detalle|0900|0002|000001|"};
    const QString donde = QString(campo == "Gasto" ? "Pmd_Tipo_Gasto" : "Pr_Cve_Producto")
                          + " FROM Plan_Mantenimiento_Detalle WHERE Pm_ID = '000001' AND Pmd_Tipo = '0"
                          + QString::number(pagina) + "'";
    antes = Fotografiar();
    QStringList textos = Textos(3);
    while (!textos.isEmpty() && !QTest::currentTestFailed()) {
        Abrir(0, [&](QWidget &forma) {
            while (!textos.isEmpty() && forma.isVisible() && !QTest::currentTestFailed()) {
                const QString texto = textos.takeFirst();
                Fichas(forma).setTab(pagina);
                if (pagina > 0) {
                    PegarEnCelda(Grid(forma, grids[pagina]), campo, valida);
                    PegarEnCelda(Grid(forma, grids[pagina]), campo, texto);
                } else {
                    Pegar(Caja(forma, campo), texto);
                }
                const QString celda = pagina > 0 ? Grid(forma, grids[pagina]).Celda(0, campo) : QString();
                Aceptar(forma);
                const bool guardada = !forma.isVisible();
                QVERIFY2(guardada || !Mensajes().isEmpty(), Corto(texto).constData());
                Mensajes();
                Revisar(texto, guardada ? servicio : QStringList());
                if (guardada && pagina > 0 && campo != "Cantidad")
                    Guardado(texto, celda, donde);
            }
        });
        Mensajes();
    }
    GuardarSinMas();
}

void PrAtaques::catalogo()
{
    antes = Fotografiar();
    EnElDialogo([&](QWidget &dialogo) {
        auto &buscar = escenario->En<QLineEdit>(dialogo, "txtBuscar");
        for (const QString &texto : Textos(3)) {
            buscar.setText("");
            QGuiApplication::clipboard()->setText(texto);
            buscar.paste();
            Revisar(texto, {});
        }
    });
    qvx::DialogoCatalogo::Elegir("TIPO_EQUIPO", 0, {}, QFont(), pantalla->window());
    GuardarSinMas();
}

void PrAtaques::documento_data()
{
    const Tabla<QString> fila("valor"); // the attribute of this value gets the texts
    for (const char *valor : {"0900", "P-CLAVE", "P-DESCRIPCION", "S-UNIDAD", "13", "9000000001", "L-GASTO"})
        fila(valor, valor);
}

// Values of an imported document: refused, or written in the plan alone that it is for.
void PrAtaques::documento()
{
    QFETCH(QString, valor);
    const QString entero = R"(<PlanMantenimiento><TipoEquipo Id="0900"><Parte Id="P-CLAVE" Descripción="P-DESCRIPCION">
        <TipoServicio Id="S-TIPO" UnidadLectura="S-UNIDAD" FrecuenciaLectura="11" FrecuenciaDias="12"
        RequiereParo="S-PARO" Duracion="13" Precio="14" Prioridad="S-PRIORIDAD"><ManoObra>
        <Servicio Id="9000000001" Cantidad="15"/></ManoObra><Refacciones><Refaccion Id="9000000002" Cantidad="1"
        TipoGasto="L-GASTO"/></Refacciones><Herramientas/></TipoServicio></Parte></TipoEquipo></PlanMantenimiento>)";
    const qvx::EsquemaXml esquema(qvx::RutaEnUnidadC(KT580::RutaEsquema));
    const QString ruta = escenario->Ruta("ataque.xml");
    const auto importar = [&](const QString &texto) {
        QFile archivo(ruta);
        QVERIFY(archivo.open(QIODevice::WriteOnly));
        archivo.write(QString(entero).replace("\"" + valor + "\"", "\"" + texto.toHtmlEscaped() + "\"").toUtf8());
        archivo.close();
        escenario->Personas().DarArchivo(ruta);
        if (qvx::Documento documento; documento.Cargar(ruta, esquema) && (valor != "0900" || texto == valor))
            escenario->Personas().Responder(7500048, qvx::mensaje::Si);
        Mandar("B2");
    };
    antes = Fotografiar();
    for (const QString &texto : Textos(3)) {
        importar(texto);
        QVERIFY2(!Mensajes().isEmpty(), Corto(texto).constData());
        Revisar(texto, valor == "0900" ? QStringList()
                                       : QStringList{"Tipo_Equipo_Parte|0900|", "Plan_Mantenimiento|0900|",
                                                     "Plan_Mantenimiento_Detalle|0900|"});
    }
    importar(valor); // as it is, it is good
    QCOMPARE(Mensajes().size(), 1);
    QCOMPARE(Partes("Tep_ID"), "P-CLAVE");
}

PRUEBA_MAIN(PrAtaques)
#include "pr_ataques.moc"
