#include "support/PruebaPantalla.h"

#include <QDragEnterEvent>
#include <QMimeData>

// The main screen: choice of the equipment type, a plan that somebody else changes, and services dropped on parts,
// through the events that the view gets from the window system.
class PrPantalla : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void reactivacion();
    void sinEditor();
    void sinParte();
    void largos();
    void soltar();
    void hondura();

private:
    bool Soltar(const QString &folio, const QString &destino);
};

// Coming back to the screen keeps the planner's choice; showing it again applies the host's.
void PrPantalla::reactivacion()
{
    Escribir(Tipo(), "0902");
    QEvent activada(QEvent::WindowActivate);
    QCoreApplication::sendEvent(pantalla, &activada);
    QCOMPARE(Tipo().Text(), "0902");
    pantalla->hide();
    pantalla->show();
    QCOMPARE(Tipo().Text(), "0900");
}

// Someone else has just deleted the service, and then its part.
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
}

// On a part, or below the nodes without one. Whether each of the drag's events was taken.
bool PrPantalla::Soltar(const QString &folio, const QString &destino)
{
    Arbol().expandAll();
    const QPoint fuera = Arbol().viewport()->rect().bottomLeft() - QPoint(-5, 5);
    const QPoint punto = destino.isEmpty() ? fuera : Arbol().visualItemRect(Arbol().Item(destino)).center();
    QMimeData datos;
    datos.setText(folio);
    QDragEnterEvent entra(punto, Qt::CopyAction, &datos, Qt::LeftButton, Qt::NoModifier);
    QDragMoveEvent pasa(punto, Qt::CopyAction, &datos, Qt::LeftButton, Qt::NoModifier);
    QDropEvent cae(punto, Qt::CopyAction, &datos, Qt::LeftButton, Qt::NoModifier);
    bool tomado = true;
    for (QDropEvent *evento : std::initializer_list<QDropEvent *>{&entra, &pasa, &cae}) {
        QCoreApplication::sendEvent(Arbol().viewport(), evento);
        tomado = tomado && evento->isAccepted();
    }
    QCoreApplication::processEvents();
    return tomado;
}

// Without a part there is nothing to work on.
void PrPantalla::sinParte()
{
    QVERIFY(ElegirServicio("N0002", "000001"));
    Arbol().setSelectedItem(nullptr);
    QTest::keyClick(&Lista(), Qt::Key_Delete);
    Pulsar(Barra(), "B2");
    QCOMPARE(Mensajes(), (QStringList{"16|lvServicios_KeyDown|KT580|ERR-ID:7500037|No hay una parte seleccionada",
                                      "16|Controles_B2Click()|KT580|ERR-ID:7500022|No hay una parte seleccionada"}));
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
    QCOMPARE(Mensajes(), QStringList{"48|Quorvex|KT580|ERR-ID:7500009|Error al dar de baja la parte del equipo"});
    QCOMPARE(escenario->Tablas(), antes);
}

PRUEBA_MAIN(PrPantalla)
#include "pr_pantalla.moc"
