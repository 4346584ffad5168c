#include "controls/InteraccionQt.h"
#include "support/PruebaPantalla.h"

#include <QLabel>
#include <QMap>

// The host's real boxes and dialogs, as a person meets them: with keys, over the real screen, which a host may take
// away meanwhile.
class PrDialogos : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void preguntas();
    void entradas();
    void porTeclado();
    void cierre_data();
    void cierre();

private:
    using Espera = std::function<void(PrDialogos &, const Pasos &)>;
    static QMap<QString, Espera> Esperas();
    void Cerrar(const QString &como);
    void Responder(const QString &nodo, const QString &boton, Qt::Key tecla);
};

namespace
{

// Keys go to whatever has the focus, as from a keyboard.
void Tecla(Qt::Key tecla, Qt::KeyboardModifiers con = Qt::NoModifier)
{
    QTest::keyClick(QApplication::focusWidget(), tecla, con);
    QCoreApplication::processEvents();
}

// "|" is a Tab, "¶" the keypad's Enter.
void Teclear(const QString &texto)
{
    for (const QChar letra : texto) {
        if (letra == QChar(u'¶'))
            Tecla(Qt::Key_Enter, Qt::KeypadModifier);
        else
            QTest::keyClicks(QApplication::focusWidget(), letra == '|' ? QChar('\t') : letra);
        QCoreApplication::processEvents();
    }
}

void TabularHasta(const QWidget &control)
{
    for (int i = 0; i < 50 && !control.hasFocus() && !control.isAncestorOf(QApplication::focusWidget()); ++i)
        Tecla(Qt::Key_Tab);
    QVERIFY2(control.hasFocus() || control.isAncestorOf(QApplication::focusWidget()), qPrintable(control.objectName()));
}

} // namespace

void PrDialogos::init()
{
    PruebaPantalla::init();
    escenario->Personas().real = std::make_unique<qvx::InteraccionQt>();
}

void PrDialogos::Responder(const QString &nodo, const QString &boton, Qt::Key tecla)
{
    EnLaParte(nodo, boton, [&](QWidget &caja) {
        Tecla(tecla, tecla < Qt::Key_Escape ? Qt::AltModifier : Qt::NoModifier);
        QTRY_VERIFY(!caja.isVisible());
    });
    Mensajes();
}

// Who hits a key without reading loses nothing.
void PrDialogos::preguntas()
{
    Mandar("N0001", "Eliminar");
    Responder("N0002", "Reactivar", Qt::Key_Escape); // without the part above
    QCOMPARE(Partes("Tep_ID", "Es_Cve_Estado = 'AC'"), "0002 0005 0006");
    const QStringList antes = escenario->Plan();
    for (const Qt::Key tecla : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_N}) {
        Responder("N0005", "B1", tecla);
        QCOMPARE(escenario->Plan(), antes);
    }
    Responder("N0005", "B1", Qt::Key_S);
    QCOMPARE(escenario->Plan().size(), antes.size() - 1);
    EnLaParte("N0002", "Info", [](QWidget &dialogo) {
        QStringList textos;
        for (const auto *rotulo : dialogo.findChildren<QLabel *>())
            textos.append(rotulo->text());
        QVERIFY2(textos.contains("jcruz") && textos.contains("mlopez"), qPrintable(textos.join('|')));
        Tecla(Qt::Key_Escape);
    });
}

// What is found, and that who is shown a part of a catalogue is told so.
void PrDialogos::entradas()
{
    escenario->Correr(
        "INSERT INTO Tipo_Equipo VALUES ('0910', 'GRÚA DE TORRE', 'AC'), ('0911', 'Grua de brazo', 'AC')");
    const auto buscar = [&](const QString &codigo, int maximo, QWidget *duena, const Pasos &pasos) {
        EnElDialogo([=](QWidget &dialogo) {
            pasos(dialogo);
            QTest::keyClick(&dialogo, Qt::Key_Return);
        });
        const QString filtro = codigo == "TIPO_EQUIPO" ? "Te_Descripcion <> 'AJENA'" : "";
        return qvx::InteraccionQt().BuscarEnCatalogo(codigo, maximo, filtro, QFont(), duena);
    };
    const auto columna = [&](QWidget &dialogo, int cual) {
        const QAbstractItemModel &modelo = *En<QTreeView>(dialogo, "lvEntradas").model();
        QStringList textos;
        for (int fila = 0; fila < modelo.rowCount(); ++fila)
            textos.append(modelo.index(fila, cual).data().toString());
        return textos.join(' ');
    };
    const auto elegir = [&](QWidget &dialogo) {
        auto &texto = En<QLineEdit>(dialogo, "txtBuscar");
        const auto &aviso = En<QLabel>(dialogo, "lblAviso");
        QCOMPARE(columna(dialogo, 0).split(' ').size(), 3);
        QCOMPARE(aviso.text(), "Se muestran las primeras 3; escriba para acotar");
        for (const auto &[busqueda, claves, dicho] :
             QList<std::array<QString, 3>>{{"grua", "0009 0910 0911", " "}, // as many as are shown
                                           {"brazo GRÚA", "0911", " "},
                                           {"911 gru", "0911", " "},
                                           {"0903", "", "Ninguna entrada coincide"}, // cancelled
                                           {"ajena", "", "Ninguna entrada coincide"}}) {
            texto.setText(busqueda);
            QCOMPARE(columna(dialogo, 0), claves);
            QCOMPARE(aviso.text(), dicho);
        }
        QTest::keyClick(&dialogo, Qt::Key_Return);
        QVERIFY(dialogo.isVisible());
        texto.setText("torre");
    };
    QCOMPARE(buscar("TIPO_EQUIPO", 3, pantalla, elegir), "0910");
    QCOMPARE(buscar("TIPO_EQUIPO", 0, pantalla, [](QWidget &) {}), ""); // a careless Enter
    QCOMPARE(buscar("TIPO_EQUIPO", 0, &Tipo(), [](QWidget &) {}), "0900");
    buscar("PRODUCTO_REFACCION", 0, pantalla, [&](QWidget &dialogo) {
        En<QLineEdit>(dialogo, "txtBuscar").setText("900000000");
        En<QTreeView>(dialogo, "lvEntradas").sortByColumn(3, Qt::AscendingOrder);
        QCOMPARE(columna(dialogo, 3) + " " + columna(dialogo, 0), "$10.00 $80.10 9000000004 9000000002");
    });
}

// From the choice of the type to a new service that is saved, and without a mouse.
void PrDialogos::porTeclado()
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
        Teclear("9000000001¶2.25¶9000000003|1");
        Tecla(Qt::Key_3, Qt::AltModifier);
        TabularHasta(Grid(editor, "ssRefacciones"));
        Teclear("9000000002|4|9001|");
        for (int i = 0; i < 50 && Grid(editor, "ssRefacciones").isAncestorOf(QApplication::focusWidget()); ++i)
            Tecla(Qt::Key_Tab);
        for (int i = 0; i < 50 && QApplication::focusWidget() == &Grid(editor, "ssRefacciones"); ++i)
            Tecla(Qt::Key_Tab);
        QVERIFY(QApplication::focusWidget() != &Grid(editor, "ssRefacciones")); // the last cell lets go
        Tecla(Qt::Key_4, Qt::AltModifier);
        TabularHasta(Grid(editor, "ssHerramientas"));
        Teclear("9000000003|1");
        Tecla(Qt::Key_F4);
        QVERIFY(!editor.isVisible());
    });
    Tecla(Qt::Key_2, Qt::ControlModifier);
    QCOMPARE(Lista().Count(), 3);
    QCOMPARE(escenario->Plan().filter("servicio|0900|0002|000004|").join('\n').section('|', 4, 12),
             "9001|45|250|HRS|2500|3.5|9001|SI|2");
    QCOMPARE(escenario->Filas("SELECT Pmd_Tipo, Pr_Cve_Producto, Pmd_Cantidad, Pmd_Importe, Pmd_Tipo_Gasto FROM "
                              "Plan_Mantenimiento_Detalle WHERE Pm_ID = '000004' ORDER BY Pmd_ID"),
             (QStringList{"01|9000000001|2.25|338.0625|", "01|9000000003|1|5|", "02|9000000002|4|320.4|9001",
                          "03|9000000003|1|0|"}));

    // The keypad's Enter opens the service of the list.
    ElegirServicio("N0002", "000004");
    bool abierto = false;
    EnElDialogo([&](QWidget &editor) {
        abierto = Caja(editor, "txtID").Text() == "000004";
        Tecla(Qt::Key_Escape);
    });
    QTest::keyClick(&Lista(), Qt::Key_Enter, Qt::KeypadModifier);
    QVERIFY(abierto);
}

// What the person does until something waits for him, which is given to the steps.
QMap<QString, PrDialogos::Espera> PrDialogos::Esperas()
{
    using P = PrDialogos;
    const auto boton = [](const QString &nodo, const QString &nombre) {
        return [=](P &p, const Pasos &pasos) { p.EnLaParte(nodo, nombre, pasos); };
    };
    const auto servicio = [](const QString &folio) {
        return [=](P &p, const Pasos &pasos) { p.EnElServicio("N0002", folio, pasos); };
    };
    const auto dentro = [](const Espera &forma, const Pasos &accion) {
        return [=](P &p, const Pasos &pasos) {
            forma(p, [=](QWidget &abierta) {
                EnElDialogo(pasos, &abierta);
                accion(abierta);
            });
        };
    };
    const auto tras = [](const std::function<void(P &)> &accion) {
        return [=](P &p, const Pasos &pasos) {
            EnElDialogo(pasos);
            accion(p);
        };
    };
    const auto buscarProducto = [](QWidget &editor) {
        auto &grid = Grid(editor, "ssManoObra");
        Q_EMIT grid.BtnClick(grid.IndiceColumna("Producto"));
    };
    const auto actualizarSinTabla = [](P &p) {
        p.escenario->Correr("ALTER TABLE Tipo_Equipo_Parte RENAME TO Guardada");
        QTest::keyClick(&p.Arbol(), Qt::Key_F5);
        p.escenario->Correr("ALTER TABLE Guardada RENAME TO Tipo_Equipo_Parte");
    };
    const auto eliminarServicio = [](P &p) {
        p.ElegirServicio("N0002", "000001");
        QTest::keyClick(&p.Lista(), Qt::Key_Delete);
    };
    // An entry that the engine refuses, and how it is left.
    const auto tipo = [](const std::function<void(P &, QWidget *)> &dejar) {
        return [=](P &p, const Pasos &pasos) {
            auto *linea = p.Tipo().findChild<QLineEdit *>();
            linea->setFocus();
            QTest::keyClicks(linea, "1");
            p.escenario->Correr("ALTER TABLE Tipo_Equipo RENAME TO Guardada");
            EnElDialogo(pasos);
            dejar(p, linea);
            QCoreApplication::processEvents();
            p.escenario->Correr("ALTER TABLE Guardada RENAME TO Tipo_Equipo");
        };
    };
    const auto celda = [dentro, servicio](const std::function<void(QWidget &, SSOleDBGrid &, QWidget *)> &dejar) {
        return dentro(servicio(""), [=](QWidget &editor) {
            Fichas(editor).setTab(2);
            auto &grid = Grid(editor, "ssRefacciones");
            grid.setFocus();
            grid.setCurrentCell(0, grid.IndiceColumna("Gasto"));
            QTest::keyClick(&grid, Qt::Key_F2);
            QWidget *linea = QApplication::focusWidget();
            QTest::keyClicks(linea, "9'1");
            dejar(editor, grid, linea);
            QCoreApplication::processEvents();
        });
    };
    return {
        {"parte nueva", boton("N0002", "Nuevo")},
        {"parte editada", boton("N0002", "Editar")},
        {"pregunta", boton("N0004", "B1")},
        {"información", boton("N0002", "Info")},
        {"servicio", servicio("000001")},
        {"servicio nuevo", servicio("")},
        {"aviso del servicio", dentro(servicio(""), Aceptar)},
        {"aviso de la parte", dentro(boton("N0002", "Nuevo"), Aceptar)},
        {"búsqueda en la rejilla", dentro(servicio(""), buscarProducto)},
        {"búsqueda", tras([](P &p) { QTest::keyClick(p.Tipo().findChild<QLineEdit *>(), Qt::Key_F3); })},
        {"copia", tras([](P &p) { Pulsar(p.Barra(), "B3"); })},
        {"archivo", tras([](P &p) { Pulsar(p.Barra(), "B1"); })},
        {"pregunta de la lista", tras(eliminarServicio)},
        {"error de la etiqueta", tras([](P &p) { p.Rotular("N0002", "O'"); })},
        {"error del árbol", tras(actualizarSinTabla)},
        {"tipo dejado por tecla", tipo([](P &, QWidget *linea) { QTest::keyClick(linea, Qt::Key_Tab); })},
        {"tipo dejado sin soltar la tecla", tipo([](P &, QWidget *linea) { QTest::keyPress(linea, Qt::Key_Tab); })},
        {"tipo dejado por clic",
         tipo([](P &p, QWidget *) { QTest::mousePress(p.Arbol().viewport(), Qt::LeftButton, {}, QPoint(5, 5)); })},
        {"celda dejada por tecla",
         celda([](QWidget &, SSOleDBGrid &, QWidget *linea) { QTest::keyClick(linea, Qt::Key_Tab); })},
        {"celda dejada al aceptar", celda([](QWidget &editor, SSOleDBGrid &, QWidget *) { Aceptar(editor); })},
        {"celda dejada por flecha",
         celda([](QWidget &, SSOleDBGrid &, QWidget *linea) { QTest::keyClick(linea, Qt::Key_Down); })},
        {"celda dejada por otra", celda([](QWidget &, SSOleDBGrid &grid, QWidget *) {
             QTest::mousePress(grid.viewport(), Qt::LeftButton, {},
                               grid.visualRect(grid.model()->index(0, 0)).center());
         })},
        {"celda dejada por caja", celda([](QWidget &editor, SSOleDBGrid &, QWidget *) {
             QTest::mousePress(Caja(editor, "txtDias").findChild<QLineEdit *>(), Qt::LeftButton);
         })},
    };
}

void PrDialogos::Cerrar(const QString &como)
{
    if (como == "cerrada")
        pantalla->close();
    else if (como == "destruida")
        delete pantalla;
    else if (como == "con su ventana")
        escenario->DestruirVentana();
    else
        QApplication::closeAllWindows();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void PrDialogos::cierre_data()
{
    const Tabla<QString, QString> fila("espera", "como");
    for (const QString &espera : Esperas().keys())
        for (const char *como : {"cerrada", "destruida", "con su ventana", "con todas"})
            fila(espera + ": " + como, espera, como);
}

// A host closes or destroys the screen while it waits for the person: whichever goes first, the procedure that waited
// ends there, and nothing of what it had begun stays.
void PrDialogos::cierre()
{
    QFETCH(QString, espera);
    QFETCH(QString, como);
    const QStringList antes = escenario->Tablas();
    bool cerrada = false;
    Esperas()[espera](*this, [&](QWidget &) {
        cerrada = true;
        Cerrar(como);
        Mensajes();
    });
    QVERIFY(cerrada);
    QCoreApplication::processEvents();
    QVERIFY(!qvx::Sesion::Actual().Conexion().EnTransaccion());
    QCOMPARE(escenario->Tablas(), antes);
    QCOMPARE(Mensajes(), QStringList()); // none of a procedure that went on
}

PRUEBA(PrDialogos)
#include "pr_dialogos.moc"
