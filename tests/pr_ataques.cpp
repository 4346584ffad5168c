#include "component/Esquema.h"
#include "controls/Comunes.h"
#include "controls/DialogoCatalogo.h"
#include "data/Texto.h"
#include "session/UnidadC.h"
#include "support/PruebaEditor.h"
#include "xml/EsquemaXml.h"

#include <QClipboard>
#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMap>
#include <QMimeData>
#include <QRegularExpression>
#include <QSet>
#include <QSqlRecord>
#include <algorithm>

using comunesQVX::TreeView;

// Hostile texts in every field of every form: whatever is typed, nothing changes but the row that the form is for.
class PrAtaques : public PruebaEditor
{
    Q_OBJECT

private Q_SLOTS:
    void partes_data();
    void partes();
    void etiqueta();
    void tipoDeEquipo();
    void cajas_data();
    void cajas();
    void celdas_data();
    void celdas();
    void catalogo();
    void soltado();
    void documento_data();
    void documento();

private:
    using Foto = QMap<QString, QStringList>;

    void Empezar();
    void ConCadaTexto(const QStringList &textos, const std::function<void(const QString &)> &pasos);
    Foto Fotografiar();
    // Everything is as it was, but for rows that begin so, and the log of their change. What is seen becomes what was.
    void Revisar(const QString &texto, const QStringList &editadas);
    void Pegar(QLineEdit *linea, const QString &texto);
    void Pegar(QWidget &caja, const QString &texto) { Pegar(caja.findChild<QLineEdit *>(), texto); }
    void PegarEnCelda(SSOleDBGrid &grid, const QString &columna, const QString &texto);
    TreeView &Arbol() { return escenario->De<TreeView>("tvPartes"); }
    void GuardarSinMas();
    QString Leer(const QString &sql);

    std::unique_ptr<OtroPrograma> otro;
    Foto antes;
};

namespace
{

constexpr const char *Grids[] = {"ssManoObra", "ssRefacciones", "ssHerramientas"}; // of the pages 1 to 3
const QStringList Servicio{"Plan_Mantenimiento|0900|0002|000001|", "Plan_Mantenimiento_Detalle|0900|0002|000001|"};

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

QStringList Textos()
{
    static const QRegularExpression numero("\\\\u([0-9a-f]{4})");
    QStringList textos{QString(1 << 20, QLatin1Char('x')), QString(1 << 20, QLatin1Char('\'')),
                       "x'" + QString(1 << 20, QLatin1Char('y'))};
    for (QString texto : QString(Renglones).split(QRegularExpression("[¦\n]"), Qt::SkipEmptyParts)) {
        for (auto hallado = numero.match(texto); hallado.hasMatch(); hallado = numero.match(texto))
            texto.replace(hallado.capturedStart(), 6, QChar(hallado.captured(1).toUShort(nullptr, 16)));
        textos.append(texto);
    }
    return textos;
}

// For the many fields whose texts go the same way.
QStringList LaMitad()
{
    QStringList textos;
    const QStringList todos = Textos();
    for (int i = 0; i < todos.size(); i += 2)
        textos.append(todos.at(i));
    return textos;
}

// As it is stored: a doubled quote is one, as in every literal.
QString Guardado(QString texto)
{
    return texto.replace("''", "'");
}

// For messages of the tests.
QString Corto(const QString &texto)
{
    return texto.left(80).toUtf8().toPercentEncoding(" '|,=();");
}

} // namespace

void PrAtaques::Empezar()
{
    otro = escenario->Base().Otro();
    antes = Fotografiar();
}

void PrAtaques::ConCadaTexto(const QStringList &textos, const std::function<void(const QString &)> &pasos)
{
    Empezar();
    for (const QString &texto : textos) {
        pasos(texto);
        if (QTest::currentTestFailed())
            return;
    }
}

// The first column of the rows.
QString PrAtaques::Leer(const QString &sql)
{
    QStringList valores;
    for (QSqlQuery consulta = otro->Correr(sql); consulta.next();)
        valores.append(consulta.value(0).toString());
    return valores.join(QLatin1Char('\n'));
}

PrAtaques::Foto PrAtaques::Fotografiar()
{
    static const QString deSqlite = "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite_%'";
    static const QString dePostgres = "SELECT tablename FROM pg_tables WHERE schemaname NOT IN ('pg_catalog', "
                                      "'information_schema') UNION ALL SELECT 'pg_largeobject_metadata'";
    const auto leer = [&](const QString &sql) {
        QStringList filas;
        QSqlQuery consulta = otro->Correr(sql);
        const int columnas = consulta.record().count();
        while (consulta.next()) {
            QStringList valores;
            for (int i = 0; i < columnas; ++i)
                valores.append(consulta.value(i).toString());
            filas.append(valores.join(QLatin1Char('|')));
        }
        filas.sort();
        return filas;
    };
    Foto foto;
    for (const QString &tabla : leer(escenario->SegunMotor(deSqlite, dePostgres)))
        foto.insert(tabla.toLower(), leer("SELECT * FROM " + tabla));
    if (escenario->Base().EsPostgres()) {
        // Other tests have databases of their own on the server.
        foto.insert("locks",
                    leer("SELECT pid FROM pg_locks JOIN pg_stat_activity USING (pid) WHERE locktype = 'advisory' "
                         "AND datname = current_database()"));
        foto.insert("transactions", leer("SELECT pid FROM pg_stat_activity WHERE state LIKE 'idle in%' AND datname = "
                                         "current_database()"));
    } else {
        otro->Correr("BEGIN IMMEDIATE"); // nobody holds the file
        otro->Correr("ROLLBACK");
    }
    return foto;
}

void PrAtaques::Revisar(const QString &texto, const QStringList &editadas)
{
    QVERIFY2(!qvx::Sesion::Actual().Conexion().EnTransaccion(), qPrintable(Corto(texto)));
    const Foto ahora = Fotografiar();
    QCOMPARE(ahora.keys(), antes.keys());
    QSet<QString> distintas;
    for (auto tabla = ahora.begin(); tabla != ahora.end(); ++tabla) {
        const QStringList previas = antes.value(tabla.key());
        const QSet<QString> fueron(previas.begin(), previas.end());
        const QSet<QString> son(tabla->begin(), tabla->end());
        for (const QString &fila : (fueron - son) + (son - fueron))
            distintas.insert(tabla.key() + "|" + fila);
    }
    antes = ahora;
    const QRegularExpression registro(
        "^registro_cambio\\|\\d+\\|(Tipo_Equipo_Parte|Plan_Mantenimiento)\\|.*\\|mlopez\\|",
        QRegularExpression::DotMatchesEverythingOption);
    for (const QString &fila : std::as_const(distintas)) {
        const bool suya = std::any_of(editadas.begin(), editadas.end(), [&](const QString &comienzo) {
            return fila.startsWith(comienzo, Qt::CaseInsensitive);
        });
        QVERIFY2(suya || (!editadas.isEmpty() && registro.match(fila).hasMatch()),
                 qPrintable(Corto(texto) + " changed " + fila.left(300)));
    }
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
    auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    QVERIFY2(editor, "La celda no se edita");
    Pegar(editor, texto);
    QCoreApplication::processEvents();
}

// After all of it, the screen still saves.
void PrAtaques::GuardarSinMas()
{
    EnLaParte("Editar", "N0005", [&](QWidget &dialogo) {
        Pegar(escenario->En<txtQVX>(dialogo, "txtTexto"), "MOTOR NUEVO");
        Pulsar(escenario->En<QWidget>(dialogo, "Controles"), "Aceptar");
        QVERIFY(!dialogo.isVisible());
    });
    QCOMPARE(
        Leer("SELECT Tep_Descripcion FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' AND Tep_ID = '0005'"),
        "MOTOR NUEVO");
    QCOMPARE(Mensajes(), QStringList());
}

void PrAtaques::partes_data()
{
    QTest::addColumn<QString>("comando");
    QTest::addColumn<QString>("campo");
    for (const char *comando : {"Nuevo", "Editar"})
        for (const char *campo : {"txtTexto", "txtClave"})
            QTest::addRow("%s %s", comando, campo) << QString(comando) << QString(campo);
}

// Refused with a word, or stored as it was typed in the one row that it was typed for.
void PrAtaques::partes()
{
    QFETCH(QString, comando);
    QFETCH(QString, campo);
    const QString nuevas = "DELETE FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' AND (Tep_ID < '0001' OR "
                           "Tep_ID > '0006')";
    ConCadaTexto(Textos(), [&](const QString &texto) {
        QString clave;
        QString descripcion;
        bool guardada = false;
        EnLaParte(comando, "N0005", [&](QWidget &dialogo) {
            auto &texto1 = escenario->En<txtQVX>(dialogo, "txtTexto");
            Pegar(texto1, "BRIDA");
            Pegar(escenario->En<txtQVX>(dialogo, campo), texto);
            clave = escenario->En<txtQVX>(dialogo, "txtClave").Text();
            descripcion = texto1.Text();
            Pulsar(escenario->En<QWidget>(dialogo, "Controles"), "Aceptar");
            guardada = !dialogo.isVisible();
        });
        QVERIFY2(guardada || !Mensajes().isEmpty(), qPrintable(Corto(texto)));
        Mensajes();
        Revisar(texto, guardada ? QStringList{"Tipo_Equipo_Parte|0900|" + clave + "|"} : QStringList());
        if (!guardada)
            return;
        const QString guardado = Leer("SELECT Tep_Descripcion FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' "
                                      "AND Tep_ID = "
                                      + qvx::Literal(clave));
        QVERIFY2(guardado == Guardado(descripcion), qPrintable(Corto(texto) + " is stored as " + Corto(guardado)));
        otro->Correr(nuevas);
        antes = Fotografiar();
    });
    GuardarSinMas();
}

void PrAtaques::etiqueta()
{
    ConCadaTexto(Textos(), [&](const QString &texto) {
        Arbol().setSelectedItem(Arbol().Item("N0005"));
        Arbol().setFocus();
        QTest::keyClick(&Arbol(), Qt::Key_F2);
        auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
        QVERIFY2(editor, "La etiqueta no se edita");
        editor->selectAll();
        QGuiApplication::clipboard()->setText(texto);
        editor->paste();
        const QString escrito = editor->text().remove("0005").remove(QLatin1Char('-')).trimmed().toUpper();
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents(); // the label's editor closes
        const bool guardada = Mensajes().isEmpty();
        Revisar(texto, {"Tipo_Equipo_Parte|0900|0005|"});
        const QString guardado = Leer("SELECT Tep_Descripcion FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' "
                                      "AND Tep_ID = '0005'");
        QVERIFY2(!guardada || guardado == Guardado(escrito),
                 qPrintable(Corto(texto) + " is stored as " + Corto(guardado)));
        otro->Correr("UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'MOTOR' WHERE Tep_ID = '0005'");
        antes = Fotografiar();
    });
    GuardarSinMas();
}

void PrAtaques::tipoDeEquipo()
{
    auto &caja = escenario->De<txtQVX>("txtTipoEquipo");
    ConCadaTexto(Textos(), [&](const QString &texto) {
        Pegar(caja, texto);
        QCOMPARE(Arbol().Count(), 0);
        QCOMPARE(escenario->De<txtQVX>("txtNTipoEquipo").Text(), "");
        Mensajes();
        Revisar(texto, {});
    });
    Escribir(caja, "900");
    GuardarSinMas();
}

void PrAtaques::cajas_data()
{
    QTest::addColumn<QByteArray>("caja");
    for (const char *caja : {"txtTipoServicio", "txtPrioridad", "txtUnidad", "txtDias", "txtLectura",
                             "txtTiempoEstimado", "txtTiempoParo", "txtPrecio"})
        QTest::newRow(caja) << QByteArray(caja);
}

// A box of the editor takes the key of a catalogue or a number, and nothing else is saved.
void PrAtaques::cajas()
{
    QFETCH(QByteArray, caja);
    Empezar();
    QStringList textos = LaMitad();
    while (!textos.isEmpty() && !QTest::currentTestFailed()) {
        Abrir(0, [&](QWidget &editor) {
            while (!textos.isEmpty() && editor.isVisible() && !QTest::currentTestFailed()) {
                const QString texto = textos.takeFirst();
                Pegar(Caja(editor, caja.constData()), texto);
                Aceptar(editor);
                const bool guardada = !editor.isVisible();
                QVERIFY2(guardada || !Mensajes().isEmpty(), qPrintable(Corto(texto)));
                Revisar(texto, guardada ? Servicio : QStringList());
            }
        });
        Mensajes();
    }
    GuardarSinMas();
}

void PrAtaques::celdas_data()
{
    QTest::addColumn<int>("pagina");
    QTest::addColumn<QString>("columna");
    QTest::addColumn<QString>("valida"); // its description stays when another text is typed over it
    const auto fila = [](int pagina, const char *columna, const char *valida) {
        QTest::addRow("%d %s", pagina, columna) << pagina << QString(columna) << QString(valida);
    };
    fila(1, "Producto", "9000000001");
    fila(1, "Cantidad", "5");
    fila(2, "Producto", "9000000002");
    fila(2, "Cantidad", "5");
    fila(2, "Gasto", "9001");
    fila(3, "Producto", "9000000003");
    fila(3, "Cantidad", "5");
}

void PrAtaques::celdas()
{
    QFETCH(int, pagina);
    QFETCH(QString, columna);
    QFETCH(QString, valida);
    const QString guardados = "SELECT " + QString(columna == "Gasto" ? "Pmd_Tipo_Gasto" : "Pr_Cve_Producto")
                              + " FROM Plan_Mantenimiento_Detalle WHERE Pm_ID = '000001' AND Pmd_Tipo = '0"
                              + QString::number(pagina) + "'";
    Empezar();
    QStringList textos = columna == "Gasto" ? Textos() : LaMitad();
    while (!textos.isEmpty() && !QTest::currentTestFailed()) {
        Abrir(0, [&](QWidget &editor) {
            Fichas(editor).setTab(pagina);
            auto &tabla = Grid(editor, Grids[pagina - 1]);
            while (!textos.isEmpty() && editor.isVisible() && !QTest::currentTestFailed()) {
                const QString texto = textos.takeFirst();
                PegarEnCelda(tabla, columna, valida);
                PegarEnCelda(tabla, columna, texto);
                const QString celda = tabla.Celda(0, columna);
                Aceptar(editor);
                const bool guardada = !editor.isVisible();
                QVERIFY2(guardada || !Mensajes().isEmpty(), qPrintable(Corto(texto)));
                Mensajes();
                Revisar(texto, guardada ? Servicio : QStringList());
                if (guardada && columna != "Cantidad")
                    QVERIFY2(Leer(guardados) == Guardado(celda),
                             qPrintable(Corto(texto) + " is stored as " + Corto(Leer(guardados))));
                QCOMPARE(Leer("SELECT count(*) FROM Plan_Mantenimiento_Detalle WHERE Pm_ID = '000001'"), "3");
            }
        });
        Mensajes();
    }
    GuardarSinMas();
}

void PrAtaques::catalogo()
{
    Empezar();
    EnElDialogo([&](QWidget &dialogo) {
        for (const QString &texto : Textos()) {
            auto &buscar = escenario->En<QLineEdit>(dialogo, "txtBuscar");
            buscar.selectAll();
            QGuiApplication::clipboard()->setText(texto);
            buscar.paste();
            Revisar(texto, {});
        }
    });
    qvx::DialogoCatalogo::Elegir("TIPO_EQUIPO", 0, {}, QFont(), escenario->De<QWidget>("tvPartes").window());
    GuardarSinMas();
}

// A text from another program, dropped on a part.
void PrAtaques::soltado()
{
    Arbol().expandAll();
    const auto enviar = [&](auto &&evento) { QCoreApplication::sendEvent(Arbol().viewport(), &evento); };
    ConCadaTexto(Textos(), [&](const QString &texto) {
        Arbol().setSelectedItem(Arbol().Item("N0002"));
        const QPoint punto = Arbol().visualItemRect(Arbol().Item("N0005")).center();
        QMimeData datos;
        datos.setText(texto);
        enviar(QDragEnterEvent(punto, Qt::CopyAction, &datos, Qt::LeftButton, Qt::NoModifier));
        enviar(QDragMoveEvent(punto, Qt::CopyAction, &datos, Qt::LeftButton, Qt::NoModifier));
        enviar(QDropEvent(punto, Qt::CopyAction, &datos, Qt::LeftButton, Qt::NoModifier));
        QCoreApplication::processEvents();
        Mensajes();
        Revisar(texto, {});
    });
    GuardarSinMas();
}

void PrAtaques::documento_data()
{
    QTest::addColumn<QString>("valor"); // the attribute of this value gets the texts
    for (const char *valor : {"0900", "P-CLAVE", "P-DESCRIPCION", "S-TIPO", "S-UNIDAD", "11", "12", "S-PARO", "13",
                              "14", "S-PRIORIDAD", "9000000001", "15", "9000000002", "L-GASTO"})
        QTest::newRow(valor) << valor;
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
        Pulsar(escenario->De<QWidget>("Controles"), "B2");
    };
    ConCadaTexto(LaMitad(), [&](const QString &texto) {
        importar(texto);
        QVERIFY2(!Mensajes().isEmpty(), qPrintable(Corto(texto)));
        Revisar(texto, valor == "0900" ? QStringList()
                                       : QStringList{"Tipo_Equipo_Parte|0900|", "Plan_Mantenimiento|0900|",
                                                     "Plan_Mantenimiento_Detalle|0900|"});
    });
    importar(valor); // as it is, it is good
    QCOMPARE(Mensajes().size(), 1);
    QCOMPARE(Leer("SELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900'"), "P-CLAVE");
}

PRUEBA_MAIN(PrAtaques)
#include "pr_ataques.moc"
