#include "app/DialogoIntegridad.h"
#include "app/VentanaPrincipal.h"
#include "controls/InteraccionQt.h"
#include "data/Conexion.h"
#include "support/Procesos.h"
#include "support/PruebaPantalla.h"

#include <QAction>
#include <QComboBox>
#include <QEventLoop>
#include <QHash>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>

// The window around the screen: what it says beside the plan itself, "Revisar integridad", which puts back what the
// trees do not reach, and long jobs.
class PrVentanas : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void sugerencias();
    void teclas();
    void integridad();
    void corregidoPorOtro();
    void programa();
    void trabajo();

private:
    void Soltar();
    bool eventFilter(QObject *objeto, QEvent *evento) override;
    void HastaVerlo();
    bool EnReposo() const { return !QGuiApplication::overrideCursor() && avance->text().isEmpty(); }

    std::unique_ptr<VentanaPrincipal> ventana;
    QLabel *avance = nullptr;
    int vistas = 0; // how often that label said something
    QObject *linea = nullptr;
    QStringList sucesos; // delivered events of that box, and what the next key would have found
};

void PrVentanas::sugerencias()
{
    VentanaPrincipal principal(pantalla, "", "mlopez", "prueba");
    principal.show();
    auto &sugerencia = En<QLabel>(principal, "lblSugerencia");
    const auto probar = [&](const QString &clave, const QString &texto) {
        Escribir(Tipo(), clave);
        QTRY_COMPARE(sugerencia.text(), texto);
    };
    probar("", "Elija un tipo de equipo: escriba su clave o pulse F3.");
    probar("0903", "El tipo de equipo «0903» no existe o está dado de baja: corrija la clave o pulse F3.");
    probar("0901", "Este tipo de equipo no tiene plan todavía: elija RAIZ y pulse Nuevo, o pulse Importar XML.");
    probar("0900", "Elija una parte para ver sus servicios.");
    ElegirNodo(Arbol(), "N0002");
    QTRY_COMPARE(sugerencia.text(), "");
    QTest::keyClick(Tipo().findChild<QLineEdit *>(), Qt::Key_A);
    QCOMPARE(Arbol().Count() + Lista().Count(), 0); // emptied at once
    QVERIFY(Barras().startsWith("00000||Importar XML|"));
    QTRY_COMPARE(sugerencia.text(), "Pulse Entrar para ver el plan del tipo de equipo.");
}

// A key of the window that is one of the screen's too would do neither; and a page is left and found again as it was.
void PrVentanas::teclas()
{
    VentanaPrincipal principal(pantalla, "", "mlopez", "prueba");
    principal.show();
    QVERIFY(QTest::qWaitForWindowActive(&principal));
    QHash<QKeySequence, QString> duenos;
    for (const QAction *accion : principal.findChildren<QAction *>())
        for (const QKeySequence &tecla : accion->shortcuts()) {
            QVERIFY2(!duenos.contains(tecla), qPrintable(duenos.value(tecla) + " and " + accion->objectName()));
            duenos.insert(tecla, accion->objectName());
        }
    auto *clave = Tipo().findChild<QLineEdit *>();
    clave->setFocus();
    const auto &paginas = En<QTabWidget>(principal, "tabPaginas");
    QTest::keyClick(&principal, Qt::Key_F9);
    QCOMPARE(paginas.tabText(paginas.currentIndex()), "Catálogos");
    QCOMPARE(principal.focusWidget()->objectName(), "lstCatalogos");
    QTest::keyClick(&principal, Qt::Key_F7);
    QCOMPARE(paginas.tabText(paginas.currentIndex()), "Plan");
    QCOMPARE(principal.focusWidget(), clave);
}

// Beside the plan's part 0006: a service dropped on the root, with its lines; one of another type whose part is gone; a
// ring of two parts, with one below, and a part below itself; and a service and a part whose keys differ only in
// blanks. The service of the other type has lines that name what no catalogue has; a retired product is one.
void PrVentanas::Soltar()
{
    const QString parte = "INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) "
                          "VALUES ('0900', ";
    Preparar("UPDATE Plan_Mantenimiento SET Tep_ID = 'RAIZ' WHERE Pm_ID = '000001';"
             "UPDATE Plan_Mantenimiento_Detalle SET Tep_ID = 'RAIZ' WHERE Pm_ID = '000001';"
             "UPDATE Plan_Mantenimiento SET Tep_ID = '0002 ' WHERE Pm_ID = '000002';"
             "INSERT INTO Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio) VALUES ('0902', "
             "'0009', '000001', '9999');"
             "INSERT INTO Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, "
             "Pr_Cve_Producto, Pmd_Tipo_Gasto) VALUES ('0902', '0009', '000001', '000001', '01', '8888888888', ''), "
             "('0902', '0009', '000001', '000002', '02', '9000000002', '7777'), "
             "('0902', '0009', '000001', '000003', '02', '9000000002', ''), "
             "('0902', '0009', '000001', '000004', '02', '9000000009', '');"
             + parte + "'0007', '0006', 'BAJO SUELTA');" + parte + "'0010', '0011', 'ANILLO 1');" + parte
             + "'0011', '0010 ', 'ANILLO 2');" + parte + "'0012', '0011', 'BAJO ANILLO');" + parte
             + "'0013', '0013', 'PROPIA');" + parte + "'0014  ', '0001 ', 'BLANCOS')");
}

// From the menu: parts to choose from, consent, a failure that changes nothing, and the screen's tree afterwards.
void PrVentanas::integridad()
{
    Soltar();
    VentanaPrincipal principal(pantalla, "", "mlopez", "prueba");
    principal.show();
    QVERIFY(QTest::qWaitForWindowActive(&principal));
    QCOMPARE(Arbol().Count(), 7);
    bool abierto = false;
    EnElDialogo([&](QWidget &dialogo) {
        abierto = true;
        auto &lista = En<QTreeWidget>(dialogo, "lvSueltos");
        auto &parte = En<QComboBox>(dialogo, "cboParte");
        auto &corregir = En<QPushButton>(dialogo, "cmdCorregir");
        auto &aviso = En<QLabel>(dialogo, "lblAviso");
        const auto renglones = [&] {
            QStringList textos;
            for (int fila = 0; fila < lista.topLevelItemCount(); ++fila) {
                QStringList celdas;
                for (int columna = 0; columna < lista.columnCount(); ++columna)
                    celdas.append(lista.topLevelItem(fila)->text(columna));
                textos.append(celdas.join('|'));
            }
            return textos;
        };
        const QString ajeno = "0902|Servicio|000001||Su parte «0009» no existe|(elija una parte)";
        const QStringList lineas{
            "0902|Servicio|000001||El producto «8888888888» de su renglón 000001 no está en el catálogo: corríjalo en "
            "el servicio, parte 0009|(en el servicio)",
            "0902|Servicio|000001||El tipo de gasto «7777» de su renglón 000002 no está en el catálogo: corríjalo en "
            "el servicio, parte 0009|(en el servicio)",
            "0902|Servicio|000001||Tiene 2 refacciones sin tipo de gasto: corríjalo en el servicio, parte 0009|(en el "
            "servicio)",
        };
        QCOMPARE(renglones(), (QStringList{
                                   "0900|Parte|0006|SUELTA|Su parte superior «7777» no existe|RAIZ",
                                   "0900|Parte|0010|ANILLO 1|Su parte superior «0011» cuelga a su vez de ella|RAIZ",
                                   "0900|Parte|0011|ANILLO 2|Su parte superior «0010» cuelga a su vez de ella|RAIZ",
                                   "0900|Parte|0013|PROPIA|Es su propia parte superior|RAIZ",
                                   "0900|Servicio|000001|REVISIÓN|Su parte «RAIZ» no existe|(elija una parte)",
                                   ajeno,
                               }
                               + lineas));
        lista.selectAll(); // services of two types
        QVERIFY(!corregir.isEnabled() && !parte.isEnabled());
        lista.topLevelItem(5)->setSelected(false);
        QVERIFY(!corregir.isEnabled() && parte.isEnabled());
        QTest::keyClicks(&parte, "0005");
        QVERIFY(renglones().at(4).endsWith("|0005 - MOTOR") && corregir.isEnabled());

        const QString pregunta =
            "292|Quorvex|QVX|ERR-ID:1000003|Se corregirán 4 partes y 1 servicio. ¿Desea continuar?";
        const QStringList antes = escenario->Tablas();
        Averia averia(*escenario, "INSERT ON Registro_Cambio");
        for (int respuesta : {qvx::mensaje::No, qvx::mensaje::Si}) {
            escenario->Personas().Responder(1000003, respuesta);
            QTest::mouseClick(&corregir, Qt::LeftButton);
            QCOMPARE(escenario->Tablas(), antes);
        }
        QCOMPARE(Mensajes(), (QStringList{pregunta, pregunta, "16|Quorvex|QVX|ERR-ID:1000004|falla"}));
        averia.Reparar();
        escenario->Personas().Responder(1000003, qvx::mensaje::Si);
        QTest::mouseClick(&corregir, Qt::LeftButton);
        QCOMPARE(Mensajes(), QStringList{pregunta});
        // One of the ring is enough.
        QCOMPARE(aviso.text(), "Se corrigió: 3 partes y 1 servicio. Se encontraron: 4 renglones.");
        QCOMPARE(renglones(), QStringList{ajeno} + lineas);
        QTest::mouseClick(&En<QPushButton>(dialogo, "cmdCerrar"), Qt::LeftButton);
    });
    principal.findChild<QAction *>("mnuRevisarIntegridad")->trigger();
    QVERIFY(abierto);
    QCOMPARE(Arbol().Count(), 13);
    const QString firma = "Oper_Ult_Modif = 'mlopez' AND Fecha_Ult_Modif = '2026-03-14 09:26:53'";
    QCOMPARE(Partes("Tep_ID || Tep_Padre", firma), "00060000 00100000 00130000");
    QCOMPARE(escenario->Filas("SELECT Tep_ID, Pm_ID, Pmd_ID FROM Plan_Mantenimiento JOIN Plan_Mantenimiento_Detalle "
                              "USING (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID) WHERE "
                              + firma + " ORDER BY Pmd_ID"),
             (QStringList{"0005|000001|000001", "0005|000001|000002", "0005|000001|000003"}));
    QCOMPARE(escenario->Filas("SELECT Rc_Tabla, Rc_Clave FROM Registro_Cambio ORDER BY Rc_ID"),
             (QStringList{"Tipo_Equipo_Parte|0006|0900", "Tipo_Equipo_Parte|0010|0900", "Tipo_Equipo_Parte|0013|0900",
                          "Plan_Mantenimiento|0900|000001"}));
}

// What was put right after the search is not touched.
void PrVentanas::corregidoPorOtro()
{
    Soltar();
    QList<qvx::Correccion> todos;
    for (const qvx::Suelto &suelto : qvx::BuscarSueltos(qvx::Sesion::Actual().Conexion()))
        todos.append({suelto, suelto.clase == qvx::Suelto::Clase::Servicio ? "0005" : ""});
    QCOMPARE(todos.size(), 9);
    Preparar("INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) VALUES ('0900', "
             "'7777', '0000', 'VUELTA'), ('0900', 'RAIZ', '0000', 'VUELTA');"
             "UPDATE Tipo_Equipo_Parte SET Tep_Padre = '0005' WHERE Tep_ID IN ('0011', '0013');"
             "DELETE FROM Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = '0902'");
    const QStringList antes = escenario->Tablas();
    const auto corregidos =
        qvx::CorregirSueltos(qvx::Sesion::Actual().Conexion(), qvx::Sesion::Actual().Firmante(), todos);
    QCOMPARE(corregidos.partes + corregidos.servicios, 0);
    QCOMPARE(escenario->Tablas(), antes);
}

// It changes nothing.
void PrVentanas::programa()
{
    const QStringList antes = escenario->Tablas();
    const QString dicho = Quorvex(QStringList{"--revisar"} + escenario->Base().Argumentos());
    QVERIFY2(dicho.startsWith("1Tipo de equipo 0900, parte 0006 SUELTA: Su parte superior «7777» no existe.\n"),
             qPrintable(dicho));
    QCOMPARE(escenario->Tablas(), antes);
    QCOMPARE(Quorvex({"--revisar", "--base-datos", "no/existe.db"}), "1La base de datos «no/existe.db» no existe.\n");
}

// Long jobs: what shows that they run, and what waits for their end.

bool PrVentanas::eventFilter(QObject *objeto, QEvent *evento)
{
    if (objeto == linea && QList{QEvent::KeyPress, QEvent::FocusOut}.contains(evento->type()))
        sucesos.append(QVariant::fromValue(evento->type()).toString());
    if (objeto == ventana->windowHandle() && evento->type() == QEvent::KeyPress)
        sucesos += escenario->Filas("SELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Tep_Descripcion = 'PRIMERA'");
    return false;
}

// Reads the tree again until the job is a long one, on any machine.
void PrVentanas::HastaVerlo()
{
    vistas = 0;
    for (int i = 0; i < 200 && vistas < 3; ++i)
        Q_EMIT Arbol().KeyDown(116); // F5
    QVERIFY(vistas >= 3 && QGuiApplication::overrideCursor());
}

// One event of a loop. Keys wait; while a person is asked nothing works, and the time to think is no work.
void PrVentanas::trabajo()
{
    SembrarGrande(*escenario, "0904", 2000);
    Escribir(Tipo(), "0904");
    ventana = std::make_unique<VentanaPrincipal>(pantalla, "", "mlopez", "prueba");
    ventana->show();
    QVERIFY(QTest::qWaitForWindowActive(ventana.get()));
    QStringList rotulos;
    for (const auto *rotulo : ventana->statusBar()->findChildren<QLabel *>())
        rotulos.append(rotulo->text());
    QVERIFY2(rotulos.contains("Operador: mlopez") && rotulos.contains("prueba"), qPrintable(rotulos.join('|')));
    avance = &En<QLabel>(*ventana, "lblAvance");
    linea = Tipo().findChild<QLineEdit *>();
    qApp->installEventFilter(this);
    connect(static_cast<qvx::Aplicacion *>(qApp), &qvx::Aplicacion::Avance, avance, [this] {
        QVERIFY(avance->text().startsWith("Trabajando… "));
        ++vistas;
    });

    QEventLoop bucle;
    QTimer::singleShot(0, &Arbol(), [&] {
        const auto fin = qScopeGuard([&] { bucle.quit(); });
        QCoreApplication::postEvent(linea, new QKeyEvent(QEvent::KeyPress, Qt::Key_Home, Qt::NoModifier));
        QCoreApplication::postEvent(linea, new QFocusEvent(QEvent::FocusOut, Qt::OtherFocusReason));
        HastaVerlo();
        QCOMPARE(sucesos, QStringList());
        EnElDialogo([&](QWidget &) {
            QVERIFY(EnReposo());
            HastaVerlo(); // a job of its own
        });
        qvx::InteraccionQt().Mensaje({"¿Sigo?", qvx::mensaje::Pregunta, "Quorvex", ventana->winId(), "KT580", "", {}});
        qvx::Sesion::Actual().Conexion().Execute("SELECT * FROM Unidad");
        QVERIFY(EnReposo());
        HastaVerlo();
    });
    bucle.exec();
    ventana->activateWindow(); // as a window manager does
    QVERIFY(QTest::qWaitForWindowActive(ventana.get()) && EnReposo());
    QCOMPARE(std::exchange(sucesos, {}), (QStringList{"KeyPress", "FocusOut"}));

    // Keys that waited come at once: a label's end, which the toolkit calls later, is before the next command.
    Arbol().expandAll();
    ElegirNodo(Arbol(), "N00001");
    QTest::keyClick(&Arbol(), Qt::Key_F2);
    auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    QVERIFY(editor);
    editor->setText("PRIMERA");
    QTest::keyClick(editor, Qt::Key_Return);
    QTest::keyClick(ventana->windowHandle(), Qt::Key_Shift); // as it comes from outside
    QCOMPARE(sucesos, QStringList{"00001"});
    qApp->removeEventFilter(this);
    ventana.reset();
}

PRUEBA(PrVentanas)
#include "pr_ventanas.moc"
