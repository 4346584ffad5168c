#include "support/PruebaPantalla.h"

using comunesQVX::Nodo;

namespace
{

// Keys go to whatever has the focus, as from a keyboard.
void Tecla(Qt::Key tecla, Qt::KeyboardModifiers con = Qt::NoModifier)
{
    QTest::keyClick(QApplication::focusWidget(), tecla, con);
    QCoreApplication::processEvents();
}

// "|" is a Tab.
void Teclear(const QString &texto)
{
    for (const QChar letra : texto) {
        QTest::keyClicks(QApplication::focusWidget(), letra == '|' ? QChar('\t') : letra);
        QCoreApplication::processEvents();
    }
}

void TabularHasta(const QWidget &control)
{
    for (int i = 0; i < 50 && !control.hasFocus() && !control.isAncestorOf(QApplication::focusWidget()); ++i)
        Tecla(Qt::Key_Tab);
}

} // namespace

// The main screen: choice of equipment type, tree of parts, list of services; and the whole way by keyboard.
class PrPantalla : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void apertura();
    void tipos();
    void reactivacion();
    void nodos();
    void etiqueta();
    void eliminarServicio();
    void sinEditor();
    void porTeclado();

private:
    static QString Dibujo(const Nodo *nodo, int hondo = 0);
    void ElegirServicio(int fila)
    {
        QTest::mouseClick(Lista().viewport(), Qt::LeftButton, {},
                          Lista().visualItemRect(Lista().topLevelItem(fila)).center());
    }
};

// The tree as text: a line per node, its depth in dots, its picture's number.
QString PrPantalla::Dibujo(const Nodo *nodo, int hondo)
{
    QString dibujo = QString(hondo, QLatin1Char('.')) + nodo->Key() + " " + nodo->Text() + " "
                     + QString::number(nodo->Image()) + "\n";
    for (int i = 0; i < nodo->childCount(); ++i)
        dibujo += Dibujo(static_cast<Nodo *>(nodo->child(i)), hondo + 1);
    return dibujo;
}

void PrPantalla::apertura()
{
    QCOMPARE(escenario->De<txtQVX>("txtNTipoEquipo").Text(), "BOMBA DE PRUEBA");
    QCOMPARE(Dibujo(Arbol().Primero()), "N0000 RAIZ 1\n"
                                        ".N0001 0001 - CUERPO 1\n"
                                        "..N0002 0002 - IMPULSOR 1\n"
                                        "..N0003 0003 - SELLO 3\n"
                                        "...N0004 0004 - RESORTE 1\n"
                                        ".N0005 0005 - MOTOR 1\n");
    QVERIFY(Arbol().Primero()->isExpanded() && !Arbol().SelectedItem());
    QCOMPARE(Barras(), "00000|Exportar XML|Importar XML|Copiar plan");
    QVERIFY(escenario->Traza().contains("2\tSELECT * FROM Tipo_Equipo_Parte WHERE Tep_Padre = '0001' and "
                                        "Te_Cve_Tipo_Equipo = '0900' ORDER BY Te_Cve_Tipo_Equipo, Tep_ID ASC"));
}

// Nothing of the last type's plan or commands outlives the choice of another.
void PrPantalla::tipos()
{
    const auto probar = [&](const QString &clave, const QString &forma, int nodos, const QString &barras) {
        ElegirNodo(Arbol(), "N0002");
        QTest::keyClick(Tipo().findChild<QLineEdit *>(), Qt::Key_A);
        QCOMPARE(Arbol().Count() + Lista().Count(), 0); // emptied at once
        Escribir(Tipo(), clave);
        QCOMPARE(Tipo().Text() + " " + escenario->De<txtQVX>("txtNTipoEquipo").Text(), forma);
        QCOMPARE(Arbol().Count(), nodos);
        QCOMPARE(Barras(), barras);
        Escribir(Tipo(), "0900");
    };
    probar("902", "0902 AJENA", 2, "00000|Exportar XML|Importar XML|Copiar plan");
    probar("0901", "0901 SIN PLAN", 1, "00000||Importar XML|Copiar plan");
    probar("0903", "0903 ", 0, "00000||Importar XML|"); // cancelled
    probar("", " ", 0, "00000||Importar XML|");
}

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

void PrPantalla::nodos()
{
    const auto probar = [&](const QString &nodo, const QString &barras, int servicios, const QString &ayuda) {
        ElegirNodo(Arbol(), nodo);
        QCOMPARE(Barras(), barras);
        QCOMPARE(Lista().Count(), servicios);
        QCOMPARE(Lista().toolTip(), ayuda);
    };
    probar("N0000", "10000|Exportar XML|Importar XML|Copiar plan", 0, "");
    probar("N0003", "00011|Exportar XML|Importar XML|Copiar plan", 1, "");
    probar("N0002", "11101|Eliminar parte|Agregar servicio|Copiar plan", 2, "Presione Supr para eliminar un servicio");
    QStringList renglones;
    for (int i = 0; i < Lista().columnCount(); ++i)
        renglones.append(Lista().headerItem()->text(i) + ": " + Lista().Texto(0, i) + ", " + Lista().Texto(1, i));
    QCOMPARE(renglones.join("; "),
             "Folio: 000001, 000002; Servicio: 9001, 9001; Descripción: REVISIÓN, REVISIÓN; Días: 30, ; Lectura: , "
             "1250.5 HRS; Tiempo estimado: 8.5, 2; Requiere paro: Sí, No; Prioridad: URGENTE DE PRUEBA, URGENTE DE "
             "PRUEBA");
}

void PrPantalla::etiqueta()
{
    const QStringList antes = escenario->Tablas();
    ElegirNodo(Arbol(), "N0002");
    ElegirNodo(Arbol(), "N0002"); // begins to edit, unless the person has gone on
    Lista().setFocus();
    QTest::qWait(QApplication::doubleClickInterval() + 100);
    QVERIFY(!Arbol().findChild<QLineEdit *>());
    Arbol().setFocus();
    const auto rotular = [&](const QString &texto) {
        QTest::keyClick(&Arbol(), Qt::Key_F2);
        auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
        QVERIFY(editor);
        editor->setText(texto);
        escenario->Traza();
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();
    };
    rotular("");
    QCOMPARE(escenario->Tablas(), antes);
    QCOMPARE(Arbol().SelectedItem()->Text(), "0002 - IMPULSOR");
    rotular("0002 - Motor-Eléctrico"); // the hyphens are lost
    QCOMPARE(escenario->Traza().constFirst(),
             "1\tUPDATE Tipo_Equipo_Parte SET    Tep_Descripcion = 'MOTORELÉCTRICO',    Oper_Ult_Modif = 'mlopez',    "
             "Fecha_Ult_Modif = '2026-03-14 09:26:53'WHERE Tep_ID = '0002' and Te_Cve_Tipo_Equipo = '0900'");
    QCOMPARE(Partes("Tep_Descripcion", "Tep_ID = '0002'"), "MOTORELÉCTRICO");
    QCOMPARE(Arbol().SelectedItem()->Text(), "0002 - MOTORELÉCTRICO");
}

void PrPantalla::eliminarServicio()
{
    const auto suprimir = [&](const QString &nodo) {
        ElegirNodo(Arbol(), nodo);
        ElegirServicio(0);
        QTest::keyClick(&Lista(), Qt::Key_Delete);
    };
    const QStringList antes = escenario->Tablas();
    suprimir("N0003"); // of a retired part: nothing, and nothing asked
    escenario->Personas().Responder(7500050, qvx::mensaje::No);
    suprimir("N0002");
    QCOMPARE(escenario->Tablas(), antes);
    QCOMPARE(Mensajes(), QStringList{"36|Quorvex|KT580|ERR-ID:7500050|¿Desea eliminar el servicio?"});

    escenario->Traza();
    escenario->Personas().Responder(7500050, qvx::mensaje::Si);
    suprimir("N0002");
    const QString donde = "WHERE Te_Cve_Tipo_Equipo = '0900' AND Tep_ID = '0002' AND Pm_ID = '000001'";
    EnOrden(escenario->Traza(), {motor::Inicio(), "3\tDELETE Plan_Mantenimiento_Detalle  " + donde,
                                 "1\tDELETE Plan_Mantenimiento  " + donde, "-\tCOMMIT"});
    QCOMPARE(escenario->Tablas().filter("Mantenimiento").size(), antes.filter("Mantenimiento").size() - 4);
    QCOMPARE(Lista().Count(), 1);
    QCOMPARE(Barras(), "00000||Importar XML|");
    Mensajes();
}

// Someone else has just deleted the service, and then its part.
void PrPantalla::sinEditor()
{
    ElegirNodo(Arbol(), "N0002");
    ElegirServicio(0);
    escenario->Motor("DELETE FROM Plan_Mantenimiento WHERE Pm_ID = '000001'");
    QTest::keyClick(&Lista(), Qt::Key_Return);
    QCOMPARE(Mensajes(), QStringList{"16|ERROR|KT580|ERR-ID:7500091|Editar_Servicios() - \r\nEl servicio 000001 ya no "
                                     "existe: otra persona lo eliminó o lo movió."});
    QCOMPARE(Lista().Count(), 1); // read again
    escenario->Motor("DELETE FROM Tipo_Equipo_Parte WHERE Tep_ID = '0002'");
    for (const auto &[comando, mensaje] : {qMakePair("Nuevo", "7500003"), {"Editar", "7500006"}, {"B2", "7500029"}}) {
        Mandar(comando);
        QCOMPARE(Mensajes().join('\n'),
                 QString("48|Quorvex|KT580|ERR-ID:%1|No se encontró la ruta de la parte").arg(mensaje));
    }
}

// From the choice of the type to a new service that is saved, and without a mouse.
void PrPantalla::porTeclado()
{
    escenario->CerrarPantalla();
    escenario->Pantalla(); // without a type
    QCOMPARE(Barras(), "00000||Importar XML|");
    Teclear("900|");
    Arbol().expandAll();
    TabularHasta(Arbol());
    for (int i = 0; i < 3; ++i) // N0000, N0001, N0002
        Tecla(Qt::Key_Down);
    QCOMPARE(Lista().Count(), 2);
    EnElDialogo([&](QWidget &editor) {
        Teclear("9001|9001|45|250|hrs|3.5|");
        Tecla(Qt::Key_Space); // must be stopped
        Tecla(Qt::Key_Return);
        Teclear("2|2,500");
        Tecla(Qt::Key_2, Qt::AltModifier);
        TabularHasta(Grid(editor, "ssManoObra"));
        Teclear("9000000001|2.25");
        Tecla(Qt::Key_3, Qt::AltModifier);
        TabularHasta(Grid(editor, "ssRefacciones"));
        Teclear("9000000002|4|9001");
        Tecla(Qt::Key_4, Qt::AltModifier);
        TabularHasta(Grid(editor, "ssHerramientas"));
        Teclear("9000000003|1");
        Tecla(Qt::Key_F4);
        QVERIFY(!editor.isVisible());
    });
    Tecla(Qt::Key_2, Qt::ControlModifier);
    QCOMPARE(Lista().Count(), 3);
    QCOMPARE(escenario->Filas("SELECT Ts_Cve_Tipo_Servicio, Pm_Frecuencia, Pm_Lectura, Pm_Unidad_Lectura, Pm_Precio, "
                              "Pm_Tiempo_Estimado, Pm_Prioridad, Pm_Requiere_Paro, Pm_Tiempo_Paro FROM "
                              "Plan_Mantenimiento WHERE Pm_ID = '000004'"),
             QStringList{"9001|45|250|HRS|2500|3.5|9001|SI|2"});
    QCOMPARE(escenario->Filas("SELECT Pmd_Tipo, Pr_Cve_Producto, Pmd_Cantidad, Pmd_Importe, Pmd_Tipo_Gasto FROM "
                              "Plan_Mantenimiento_Detalle WHERE Pm_ID = '000004' ORDER BY Pmd_ID"),
             (QStringList{"01|9000000001|2.25|338.0625|", "02|9000000002|4|320.4|9001", "03|9000000003|1|0|"}));
}

PRUEBA_MAIN(PrPantalla)
#include "pr_pantalla.moc"
