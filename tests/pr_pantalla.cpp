#include "support/PruebaPantalla.h"

#include <QCheckBox>
#include <QClipboard>
#include <QCursor>
#include <QDragEnterEvent>
#include <QLabel>
#include <QMimeData>

// The screen: a plan that somebody else changes, services dropped on parts through the events that the view gets from
// the window system; and its editor: what the cells take, the checks, and a service that can only be looked at.
class PrPantalla : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void sinEditor();
    void largos();
    void soltar();
    void abrirArrastrando();
    void hondura();
    void bajaSoloSeMira();
    void celdas();
    void numeros();
    void validaciones();

private:
    bool Arrastrar(const QString &folio, const QPoint &punto, bool suelta);
    bool Soltar(const QString &folio, const QString &destino);
};

// Someone else has just deleted the service, and then its part; and without a part there is nothing to work on.
void PrPantalla::sinEditor()
{
    ElegirServicio("N0002", "000001");
    escenario->Correr("DELETE FROM Plan_Mantenimiento WHERE Pm_ID = '000001'");
    QTest::keyClick(&Lista(), Qt::Key_Return);
    QCOMPARE(Mensajes(), QStringList{"16|ERROR|KT580|ERR-ID:7500091|Editar_Servicios() - \r\nEl servicio 000001 ya no "
                                     "existe: otra persona lo eliminó o lo movió."});
    QCOMPARE(Lista().Count(), 1); // read again
    escenario->Correr("DELETE FROM Tipo_Equipo_Parte WHERE Tep_ID = '0002'");
    for (const auto &[comando, mensaje] : {qMakePair("Nuevo", "7500003"), {"Editar", "7500006"}, {"B2", "7500029"}}) {
        Pulsar(Barra(), comando);
        QCOMPARE(Mensajes().join('\n'),
                 QString("48|Quorvex|KT580|ERR-ID:%1|No se encontró la ruta de la parte").arg(mensaje));
    }
    Arbol().setSelectedItem(nullptr);
    QTest::keyClick(&Lista(), Qt::Key_Delete);
    Pulsar(Barra(), "B2");
    QCOMPARE(Mensajes(), (QStringList{"16|lvServicios_KeyDown|KT580|ERR-ID:7500037|No hay una parte seleccionada",
                                      "16|Controles_B2Click()|KT580|ERR-ID:7500022|No hay una parte seleccionada"}));
}

// Whether each of a drag's events was taken.
bool PrPantalla::Arrastrar(const QString &folio, const QPoint &punto, bool suelta)
{
    QMimeData datos;
    datos.setText(folio);
    QDragEnterEvent entra(punto, Qt::CopyAction, &datos, Qt::LeftButton, Qt::NoModifier);
    QDragMoveEvent pasa(punto, Qt::CopyAction, &datos, Qt::LeftButton, Qt::NoModifier);
    QDropEvent cae(punto, Qt::CopyAction, &datos, Qt::LeftButton, Qt::NoModifier);
    QList<QDropEvent *> eventos{&entra, &pasa};
    if (suelta)
        eventos.append(&cae);
    bool tomado = true;
    for (QDropEvent *evento : std::as_const(eventos)) {
        QCoreApplication::sendEvent(Arbol().viewport(), evento);
        tomado = tomado && evento->isAccepted();
    }
    QCoreApplication::processEvents();
    return tomado;
}

// On a part, or below the nodes without one.
bool PrPantalla::Soltar(const QString &folio, const QString &destino)
{
    Arbol().expandAll();
    const QPoint fuera = Arbol().viewport()->rect().bottomLeft() - QPoint(-5, 5);
    return Arrastrar(folio, destino.isEmpty() ? fuera : Arbol().visualItemRect(Arbol().Item(destino)).center(), true);
}

// A part below a closed node can be reached without letting go.
void PrPantalla::abrirArrastrando()
{
    auto *cerrado = Arbol().Item("N0001");
    cerrado->setExpanded(false);
    const QPoint punto = Arbol().visualItemRect(cerrado).center();
    QCursor::setPos(Arbol().viewport()->mapToGlobal(punto));
    QVERIFY(Arrastrar("000001", punto, false));
    QTRY_VERIFY(cerrado->isExpanded());
    QDragLeaveEvent sale;
    QCoreApplication::sendEvent(Arbol().viewport(), &sale);
}

// Neither a key of ten digits nor a long text is cut on its way to a form or a label and back, nor is the key of a type
// that is out of the form of keys taken for another's.
void PrPantalla::largos()
{
    Preparar("UPDATE Tipo_Equipo_Parte SET Tep_ID = '2147483645', Tep_Descripcion = '" + QString(40000, 'X')
             + "' WHERE Te_Cve_Tipo_Equipo = '0900' AND Tep_ID = '0005';INSERT INTO Tipo_Equipo VALUES ('902', "
               "'CORTA', 'AC')");
    const QString largo = "length(Tep_Descripcion)";
    ElegirNodo(Arbol(), "N2147483645");
    QTest::keyClick(&Arbol(), Qt::Key_F2);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(Partes(largo, "Tep_ID = '2147483645'"), "40000");
    EnLaParte("N2147483645", "Editar", [](QWidget &dialogo) { Aceptar(dialogo); });
    QCOMPARE(Partes(largo, "Tep_ID = '2147483645'"), "40000");
    EnLaParte("N0001", "Nuevo", [](QWidget &dialogo) {
        Escribir(Caja(dialogo, "txtTexto"), "BRIDA");
        Aceptar(dialogo);
    });
    QCOMPARE(Partes("Tep_ID", "Tep_Descripcion = 'BRIDA'"), "2147483646");
    EnLaParte("N0001", "Nuevo", [&](QWidget &dialogo) {
        Escribir(Caja(dialogo, "txtClave"), "2147483647");
        Escribir(Caja(dialogo, "txtTexto"), "ÚLTIMA");
        Aceptar(dialogo);
        QCOMPARE(Mensajes(), QStringList{"48|Quorvex|KT580|ERR-ID:7500096|Después de la clave 2147483647 no queda "
                                         "número para otra parte: escriba una menor."});
    });
    Copiar("902");
    QCOMPARE(Dichos(), QStringList());
    QCOMPARE(Tipo().Text() + escenario->De<txtQVX>("txtNTipoEquipo").Text(), "902CORTA");
}

// A drop moves one service of the selected part or changes nothing, with the right words.
void PrPantalla::soltar()
{
    const auto probar = [&](const QString &folio, const QString &destino, const QString &mensaje) {
        const QStringList antes = escenario->Tablas();
        QVERIFY(Soltar(folio, destino));
        QVERIFY(!Arbol().DropHighlight());
        QCOMPARE(Mensajes().join('\n'), mensaje);
        QCOMPARE(escenario->Tablas(), antes);
        escenario->Correr("UPDATE Producto SET Pr_Descripcion = Pr_Descripcion"); // nothing is left open
    };
    probar("000001", "N0005", "16|tvPartes_OLEDragDrop|KT580|ERR-ID:7500040|No hay una parte seleccionada en el árbol");
    ElegirNodo(Arbol(), "N0003");
    probar("000003", "N0003",
           "48|Quorvex|KT580|ERR-ID:7500038|El servicio seleccionado es de una parte dada de baja, no se puede copiar");
    ElegirNodo(Arbol(), "N0002");
    probar("000001", "N0003",
           "48|Quorvex|KT580|ERR-ID:7500039|No se puede copiar el servicio, la parte está dada de baja");
    QString folios;
    Lista().selectAll();
    Q_EMIT Lista().OLEStartDrag(folios);
    QCOMPARE(folios, "000001\r\n000002");
    probar(folios, "N0005", "");   // two rows, which match no service
    probar("000001", "", "");      // below the nodes
    probar("000003", "N0005", ""); // of another part
    probar("x' OR '1'='1", "N0005",
           "16|Copiar_Servicio|KT580|ERR-ID:7500043|La sentencia contiene un carácter inesperado");
    QVERIFY(Soltar("000001", "N0005"));
    QCOMPARE(escenario->Plan().filter("0900|0005 |000001|").size(), 4); // with its lines
    QCOMPARE(Arbol().SelectedItem()->Key(), "N0002");
    QVERIFY(Arbol().hasFocus());
    QCOMPARE(Lista().Texto(0), "000002");
    ElegirNodo(Arbol(), "N0005"); // the blank does not count
    QCOMPARE(Lista().Texto(0), "000001");
}

// A plan deeper than the stack carries, which only another program can write, is told of once, and no part of it is
// retired alone.
void PrPantalla::hondura()
{
    const QString clave = "substr(CAST(100000 + %1 AS text), 2)";
    Preparar("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20000) INSERT INTO "
             "Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) SELECT '0900', "
             + clave.arg("i") + ", CASE WHEN i = 1 THEN '0005' ELSE " + clave.arg("(i - 1)") + " END, 'HONDA' FROM n");
    QCOMPARE(Mensajes(), QStringList{"16|AddSubParte()|KT580|ERR-ID:7500002|El plan tiene más de 500 niveles"});
    QVERIFY(Arbol().Contains("N00001") && Nodos(false).size() < 600);
    const QStringList antes = escenario->Tablas();
    Mandar("N0005", "Eliminar");
    QCOMPARE(escenario->Personas().detalles, QStringList{"El plan tiene más de 500 niveles"});
    QCOMPARE(Mensajes(), QStringList{"48|Quorvex|KT580|ERR-ID:7500009|Error al dar de baja la parte del equipo"});
    QCOMPARE(escenario->Tablas(), antes);
}

// "si" is not "SI": the box is cleared. Nothing can be changed or accepted.
void PrPantalla::bajaSoloSeMira()
{
    const auto mirar = [&](QWidget &editor) {
        QVERIFY(!En<QCheckBox>(editor, "chkRequiereParo").isChecked());
        QVERIFY(!Caja(editor, "txtPrecio").isEnabled() && !Grid(editor, "ssManoObra").isEnabled());
        QTest::keyClick(&editor, Qt::Key_F4);
        QVERIFY(editor.isVisible());
    };
    EnElServicio("N0003", "000003", mirar);
}

void PrPantalla::celdas()
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
void PrPantalla::numeros()
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
            QVERIFY(!editor.findChild<QLabel *>("avisoCampo"));
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
        QTest::keyClick(celda, Qt::Key_Enter, Qt::KeypadModifier);
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
void PrPantalla::validaciones()
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

PRUEBA(PrPantalla)
#include "pr_pantalla.moc"
