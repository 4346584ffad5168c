#include "support/PruebaPantalla.h"

#include <QCheckBox>
#include <QClipboard>
#include <QLabel>

// The service editor: what its cells take, its checks, and a service that can only be looked at.
class PrServicio : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void bajaSoloSeMira();
    void celdas();
    void numeros();
    void validaciones();
};

// "si" is not "SI": the box is cleared. Nothing can be changed or accepted.
void PrServicio::bajaSoloSeMira()
{
    const auto mirar = [&](QWidget &editor) {
        QVERIFY(!En<QCheckBox>(editor, "chkRequiereParo").isChecked());
        QVERIFY(!Caja(editor, "txtPrecio").isEnabled() && !Grid(editor, "ssManoObra").isEnabled());
        QTest::keyClick(&editor, Qt::Key_F4);
        QVERIFY(editor.isVisible());
    };
    EnElServicio("N0003", "000003", mirar);
}

void PrServicio::celdas()
{
    EnElServicio("N0002", {}, [&](QWidget &editor) {
        auto &manoObra = Grid(editor, "ssManoObra");
        Fichas(editor).setTab(1);
        EscribirCelda(manoObra, 0, "Producto", "9000000001");
        EscribirCelda(manoObra, 0, "Cantidad", "1,000.5");
        EscribirCelda(manoObra, 0, "Producto", "9000000009"); // retired: the other cells stay
        QCOMPARE(Fila(manoObra, 0), "9000000009|MECÁNICO|1000.5|HR|150.25|150325.125");
        EscribirCelda(manoObra, 1, "Producto", "9999999"); // unknown; its quantity is left empty
        manoObra.ConfirmarEntrada();
        QCOMPARE(Fila(manoObra, 1), "9999999||0|||0");

        // Chosen in the catalogue; and another product brings its cost, and the amount of that cost.
        auto &refacciones = Grid(editor, "ssRefacciones");
        Fichas(editor).setTab(2);
        const auto buscar = [&](const char *columna, const char *catalogo, const char *clave) {
            refacciones.setFocus();
            refacciones.setCurrentCell(0, refacciones.IndiceColumna(columna));
            escenario->Personas().Elegir(catalogo, clave);
            QTest::keyClick(&refacciones, Qt::Key_F3);
        };
        buscar("Producto", "PRODUCTO_REFACCION", "9000000002");
        EscribirCelda(refacciones, 0, "Cantidad", "3");
        QCOMPARE(Fila(refacciones, 0), "9000000002|SELLO|3|PZA|80.1|240.3||");
        EscribirCelda(refacciones, 0, "Producto", "9000000004");
        buscar("Gasto", "TIPO_GASTO", "9001");
        QCOMPARE(Fila(refacciones, 0), "9000000004|JUNTA|3|PZA|10|30|9001|CONSUMO");
    });
}

// A text that is no number is neither left nor saved, and no other number stands for it.
void PrServicio::numeros()
{
    const QStringList antes = escenario->Tablas();
    EnElServicio("N0002", "000001", [&](QWidget &editor) {
        const auto rechaza = [&](QLineEdit &linea, int pagina) {
            for (const QString texto : {"12,5", "0,125", "1,234,50", "1e5", "-5", "1234567890123456", "."}) {
                linea.selectAll();
                QApplication::clipboard()->setText(texto);
                linea.paste();
                QTest::keyClick(&linea, Qt::Key_Tab);
                QCoreApplication::processEvents();
                const auto *aviso = editor.findChild<QLabel *>("avisoCampo");
                QVERIFY2(aviso && aviso->isVisible(), qPrintable(texto));
                QCOMPARE(linea.accessibleDescription(), aviso->text());
                Fichas(editor).setTab(3); // nor left behind on another page
                Aceptar(editor);
                QVERIFY(editor.isVisible());
                QCOMPARE(Fichas(editor).Tab(), pagina);
                QCOMPARE(QApplication::focusWidget(), &linea);
                QCOMPARE(linea.text(), texto);
            }
            QCOMPARE(escenario->Tablas(), antes);
            linea.selectAll();
            QTest::keyClicks(&linea, " 12,345.5 ");
            QTest::keyClick(&linea, Qt::Key_Tab);
            QCoreApplication::processEvents();
            QVERIFY(!editor.findChild<QLabel *>("avisoCampo") && linea.accessibleDescription().isEmpty());
        };
        auto *precio = Caja(editor, "txtPrecio").findChild<QLineEdit *>();
        precio->setFocus();
        rechaza(*precio, 0);
        auto &manoObra = Grid(editor, "ssManoObra");
        Fichas(editor).setTab(1);
        EscribirCelda(manoObra, 0, "Cantidad", "7,5");
        auto *celda = qobject_cast<QLineEdit *>(QApplication::focusWidget());
        QVERIFY(celda && manoObra.isAncestorOf(celda));
        QTest::keyClick(celda, Qt::Key_Down);
        QCOMPARE(manoObra.Row(), 0);
        rechaza(*celda, 1);
        Aceptar(editor);
        QVERIFY(!editor.isVisible());
    });
    QCOMPARE(
        escenario->Filas("SELECT Pm_Precio, Pmd_Cantidad FROM Plan_Mantenimiento s JOIN Plan_Mantenimiento_Detalle "
                         "d ON d.Pm_ID = s.Pm_ID WHERE s.Pm_ID = '000001' AND Pmd_Tipo = '01'"),
        QStringList{"12345.5|12345.5"});
}

// Accepted again and again, with one correction each time: every check, in their order. A header's box that is refused
// has the focus, and is corrected there.
void PrServicio::validaciones()
{
    const QStringList antes = escenario->Tablas();
    EnElServicio("N0002", {}, [&](QWidget &editor) {
        int pagina = 0;
        const auto rechazo = [&](const QString &mensaje) {
            Aceptar(editor);
            QCOMPARE(Mensajes().join('\n'), "48|Quorvex|KT580|ERR-ID:75000" + mensaje);
            QVERIFY(editor.isVisible());
            QCOMPARE(Fichas(editor).Tab(), pagina);
        };
        const auto caja = [&](const QString &mensaje, const QString &correccion) {
            Fichas(editor).setTab(3);
            rechazo(mensaje);
            Escribir(*QApplication::focusWidget()->parentWidget(), correccion);
        };
        Escribir(Caja(editor, "txtTipoServicio"), "9009"); // retired
        caja("54|El tipo de servicio no es válido", "9001");
        caja("55|No se ha especificado un tiempo", "8.5");
        En<QCheckBox>(editor, "chkRequiereParo").setChecked(true);
        QCOMPARE(Caja(editor, "txtTiempoParo").Text(), "8.5");
        Escribir(Caja(editor, "txtTiempoParo"), "");
        caja("56|Indiquie las horas para el tiempo de paro", "10"); // as a text, not greater than "8.5"
        caja("57|Las horas para el tiempo de paro no pueden ser mayor a las horas estimadas", "8.5");
        caja("58|No se ha especificado la prioridad", "9001");
        caja("59|Debe indicar un tipo de frecuencia", "30");
        Escribir(Caja(editor, "txtLectura"), "5");
        caja("60|Indique la unidad de medida de la lectura", "NADA");
        caja("61|Indique una unidad de medida válida", "hrs");

        SSOleDBGrid *grid = nullptr;
        const auto celda = [&](int fila, const char *columna, const char *texto, const QString &mensaje = {}) {
            EscribirCelda(*grid, fila, columna, texto);
            if (!mensaje.isEmpty())
                rechazo(mensaje);
        };
        pagina = 1;
        grid = &Grid(editor, "ssManoObra");
        rechazo("62|Debe especificar una mano de obra");
        celda(0, "Producto", "9999", "63|Debe especificar una mano de obra");
        celda(1, "Producto", "9000000001", "66|Debe especificar una mano de obra válida");
        celda(0, "Producto", "9000000001", "68|Debe especificar una cantidad para la mano de obra");
        celda(0, "Cantidad", "2", "69|La mano de obra MECÁNICO ya ha sido ingresada!");
        celda(1, "Producto", "9000000009",
              "67|La mano de onbra: MECÁNICO no se puede registrar porque está dada de baja");
        celda(1, "Producto", "");
        celda(0, "Producto", "", "69|La mano de obra  ya ha sido ingresada!"); // two rows of no product
        celda(0, "Producto", "9000000001");
        celda(1, "Producto", "9000000003");
        celda(1, "Cantidad", "1");

        Fichas(editor).setTab(pagina = 2);
        grid = &Grid(editor, "ssRefacciones");
        celda(0, "Producto", "9999", "70|Debe especificar una refacción válida");
        celda(0, "Producto", "9000000002", "73|Debe especificar un tipo de gasto válido");
        celda(0, "Gasto", "9001", "72|Debe especificar una cantidad para la refacción");
        celda(0, "Cantidad", "3");
        celda(0, "Gasto", "9009", "74|El tipo de gasto: ANTIGUO no se puede registrar porque está dado de baja");
        celda(0, "Gasto", "9001");
        celda(0, "Producto", "9000000009", "71|La refacción: SELLO no se puede registrar porque está dada de baja");
        celda(0, "Producto", "9000000002");
        celda(1, "Producto", "9000000002", "75|La refacción SELLO ya ha sido ingresada!");
        celda(1, "Producto", "9000000004");
        celda(1, "Gasto", "9001");
        celda(1, "Cantidad", "1");

        Fichas(editor).setTab(pagina = 3);
        grid = &Grid(editor, "ssHerramientas");
        celda(0, "Producto", "9999", "76|Debe especificar una herramienta válida");
        celda(0, "Producto", "9000000003", "78|Debe especificar una cantidad para la herramienta");
        celda(0, "Cantidad", "1");
        celda(0, "Producto", "9000000009", "77|La herramienta: LLAVE no se puede registrar porque está dada de baja");
        celda(0, "Producto", "9000000003");
        celda(1, "Producto", "9000000003", "79|La herramienta LLAVE ya ha sido ingresada!");
        celda(1, "Producto", "9000000001"); // labour too, which is no repetition
        celda(1, "Cantidad", "1");
        QCOMPARE(escenario->Tablas(), antes);
        Aceptar(editor);
        QVERIFY(!editor.isVisible());
    });
    QCOMPARE(escenario->Correr("SELECT count(*) FROM Plan_Mantenimiento_Detalle WHERE Pm_ID = '000004'").toInt(), 6);
}

PRUEBA_MAIN(PrServicio)
#include "pr_servicio.moc"
