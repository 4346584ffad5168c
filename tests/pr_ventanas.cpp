#include "app/VentanaPrincipal.h"
#include "controls/InteraccionQt.h"
#include "support/PruebaPantalla.h"

#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QTreeView>

// What a window shows and says beside the plan itself.
class PrVentanas : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void catalogo();
    void sugerencias();
    void aclaraciones();
    void fichas();
    void cabida();
    void oscuro();
};

void PrVentanas::catalogo()
{
    escenario->Correr(
        "INSERT INTO Tipo_Equipo VALUES ('0910', 'GRÚA DE TORRE', 'AC'), ('0911', 'Grua de brazo', 'AC')");
    const auto buscar = [&](const QString &codigo, int maximo, QWidget *duena, const Pasos &pasos) {
        EnElDialogo([=](QWidget &dialogo) {
            pasos(dialogo);
            QTest::keyClick(&dialogo, Qt::Key_Return);
        });
        return qvx::InteraccionQt().BuscarEnCatalogo(codigo, maximo, "", QFont(), duena);
    };
    const auto columna = [&](QWidget &dialogo, int cual) {
        const QAbstractItemModel &modelo = *En<QTreeView>(dialogo, "lvEntradas").model();
        QStringList textos;
        for (int fila = 0; fila < modelo.rowCount(); ++fila)
            textos.append(modelo.index(fila, cual).data().toString());
        return textos.join(' ');
    };
    QCOMPARE(
        buscar("TIPO_EQUIPO", 3, pantalla,
               [&](QWidget &dialogo) {
                   auto &texto = En<QLineEdit>(dialogo, "txtBuscar");
                   auto &aviso = En<QLabel>(dialogo, "lblAviso");
                   QCOMPARE(columna(dialogo, 0).split(' ').size(), 3);
                   QCOMPARE(aviso.text(), "Se muestran las primeras 3; escriba para acotar");
                   for (const auto &[busqueda, claves] : QList<QPair<QString, QString>>{
                            {"grua", "0009 0910 0911"}, {"brazo GRÚA", "0911"}, {"911 gru", "0911"}, {"gruas", ""}}) {
                       texto.setText(busqueda);
                       QCOMPARE(columna(dialogo, 0), claves);
                   }
                   QCOMPARE(aviso.text(), "Ninguna entrada coincide");
                   texto.setText("torre");
               }),
        "0910");
    QCOMPARE(buscar("TIPO_EQUIPO", 0, pantalla, [](QWidget &) {}), ""); // a careless Enter
    QCOMPARE(buscar("TIPO_EQUIPO", 0, &Tipo(), [](QWidget &) {}), "0900");
    buscar("PRODUCTO_REFACCION", 0, pantalla, [&](QWidget &dialogo) {
        En<QLineEdit>(dialogo, "txtBuscar").setText("900000000");
        En<QTreeView>(dialogo, "lvEntradas").sortByColumn(3, Qt::AscendingOrder);
        QCOMPARE(columna(dialogo, 3) + " " + columna(dialogo, 0), "$10.00 $80.10 9000000004 9000000002");
    });
}

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
    QTRY_COMPARE(sugerencia.text(), "Pulse Entrar para ver el plan del tipo de equipo.");
}

// The engine's text stays the message; what it means is below.
void PrVentanas::aclaraciones()
{
    EnLaParte("N0001", "Nuevo", [&](QWidget &forma) {
        for (const auto &[clave, texto, aclaracion] :
             QList<std::array<QString, 3>>{{"0002", "OTRA", "Ya hay un registro con esa clave"},
                                           {"0050", "D'ARCY", "apóstrofo ('), que no se"}}) {
            Escribir(Caja(forma, "txtClave"), clave);
            Escribir(Caja(forma, "txtTexto"), texto);
            Aceptar(forma);
            const QString detalles = escenario->Personas().detalles.join("|");
            QVERIFY2(detalles.contains(aclaracion), qPrintable(detalles));
            QVERIFY(!Mensajes().constLast().contains(aclaracion));
        }
    });
}

// What is typed after the key of a page goes into the page; a key that the catalogue has not is seen at once.
void PrVentanas::fichas()
{
    EnElServicio("N0002", "000001", [&](QWidget &editor) {
        auto &grid = Grid(editor, "ssManoObra");
        const auto escribir = [&](const QString &clave) {
            QTest::keyClick(&editor, Qt::Key_2, Qt::AltModifier);
            for (const QChar cifra : clave) // the first opens the cell's editor
                QTest::keyClick(QApplication::focusWidget(), cifra.toLatin1());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            return grid.item(0, 0)->text() + (grid.item(0, 0)->toolTip().isEmpty() ? "" : "?");
        };
        QCOMPARE(grid.item(0, 0)->toolTip(), "");
        QCOMPARE(escribir("77777"), "77777?"); // the description is still the old product's
        QVERIFY(!grid.item(0, 0)->data(Qt::DecorationRole).isNull());
        grid.setCurrentCell(0, 0);
        QCOMPARE(escribir("9000000001"), "9000000001");
        QTest::keyClick(&editor, Qt::Key_1, Qt::AltModifier);
        QCOMPARE(QApplication::focusWidget()->parentWidget(), &Caja(editor, "txtTipoServicio"));
    });
}

// On a small screen every field can be reached, and no title is cut off before there is anything below it.
void PrVentanas::cabida()
{
    QVERIFY(Lista().Count() == 0 && Lista().columnCount() > 0);
    for (int columna = 0; columna < Lista().columnCount(); ++columna)
        QVERIFY(Lista().columnWidth(columna) >= Lista().header()->sectionSizeHint(columna));
    EnElServicio("N0002", "000001", [&](QWidget &editor) {
        const QSize pantallaLibre = editor.screen()->availableSize();
        QVERIFY(editor.width() < pantallaLibre.width() && editor.height() < pantallaLibre.height());
        editor.resize(editor.width(), 300);
        QTest::keyClick(&editor, Qt::Key_1, Qt::AltModifier);
        auto *precio = Caja(editor, "txtPrecio").findChild<QLineEdit *>();
        for (int i = 0; i < 12 && QApplication::focusWidget() != precio; ++i)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), precio);
        QCOMPARE(precio->visibleRegion().boundingRect(), precio->rect());
    });
}

// One look for all of the window, that of the desktop.
void PrVentanas::oscuro()
{
    const QPalette antes = QApplication::palette();
    VentanaPrincipal principal(pantalla, "", "mlopez", "prueba");
    principal.show();
    const auto tonos = [&] {               // of the window, the menu, the screen and a list on it
        QCoreApplication::processEvents(); // the change of the desktop arrives
        const QImage vista = principal.grab().toImage();
        QString oscuros;
        for (const QWidget *control :
             std::initializer_list<const QWidget *>{&principal, principal.menuBar(), pantalla, &Lista()}) {
            const QPoint lugar = control->mapTo(&principal, control->rect().bottomRight() - QPoint(6, 6));
            oscuros += vista.pixelColor(lugar).lightness() < 128 ? "O" : "C";
        }
        return oscuros;
    };
    QApplication::setPalette(QPalette(QColor("#353535"), QColor("#2b2b2b")));
    const QString deNoche = tonos();
    QApplication::setPalette(antes);
    QCOMPARE(deNoche + tonos(), "OOOOCCCC");
}

PRUEBA_MAIN(PrVentanas)
#include "pr_ventanas.moc"
