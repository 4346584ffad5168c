#include "app/VentanaPrincipal.h"
#include "support/PruebaPantalla.h"

#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>

// What a window shows and says beside the plan itself.
class PrVentanas : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void sugerencias();
    void fichas();
    void cabida();
    void oscuro();
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
