#include "controls/InteraccionQt.h"
#include "support/PruebaPantalla.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

// The host's real boxes and dialogs, as a person meets them: with keys, over the real screen.
class PrDialogos : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void botones_data();
    void botones();
    void procedencia();
    void preguntas();
    void catalogo();
    void catalogoCortado();
    void archivos();
    void porTeclado();

private:
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

void PrDialogos::botones_data()
{
    const Tabla<int, QString, int, int, int> fila("estilo", "botones", "enter", "escape", "primera");
    fila("aviso", 48, "&Aceptar", 1, 1, 1);
    fila("aceptar o cancelar", 33, "&Aceptar &Cancelar", 1, 2, 1);
    fila("aceptar o cancelar, el segundo", 321, "&Aceptar &Cancelar", 2, 2, 1);
    fila("anular, reintentar, omitir", 18, "&Anular &Reintentar &Omitir", 3, 3, 3);
    fila("sí, no o cancelar", 35, "&Sí &No &Cancelar", 6, 2, 6);
    fila("sí o no", 36, "&Sí &No", 6, 7, 6);
    fila("sí o no, el segundo", 292, "&Sí &No", 7, 7, 6);
    fila("reintentar o cancelar", 53, "&Reintentar &Cancelar", 4, 2, 4);
}

// What Enter, Esc and the letter of the first button answer.
void PrDialogos::botones()
{
    QFETCH(int, estilo);
    QFETCH(QString, botones);
    QFETCH(int, enter);
    QFETCH(int, escape);
    QFETCH(int, primera);
    const auto contestar = [&](const std::function<void(QWidget &)> &pasos) {
        EnElDialogo(pasos);
        return qvx::InteraccionQt().Mensaje({"¿<b>Sigo</b>?", estilo, "Quorvex", pantalla->winId(), "KT580", "", {}});
    };
    QCOMPARE(contestar([](QWidget &) { Tecla(Qt::Key_Return); }), enter);
    QCOMPARE(contestar([](QWidget &) { Tecla(Qt::Key_Escape); }), escape);
    QCOMPARE(contestar([](QWidget &caja) { caja.close(); }), escape);
    const int letra = contestar([&](QWidget &caja) {
        QStringList textos;
        for (const QString &texto : botones.split(' '))
            for (const auto *boton : caja.findChildren<QPushButton *>())
                if (boton->text() == texto)
                    textos.append(texto);
        QCOMPARE(textos.join(' '), botones);
        QCOMPARE(caja.findChildren<QPushButton *>().size(), textos.size());
        QCOMPARE(En<QLabel>(caja, "qt_msgbox_label").textFormat(), Qt::PlainText);
        Tecla(static_cast<Qt::Key>(botones.at(1).toUpper().unicode()), Qt::AltModifier);
        QTRY_VERIFY(!caja.isVisible()); // the button is seen to be pressed
    });
    QCOMPARE(letra, primera);
}

// Who speaks, and details that can be opened.
void PrDialogos::procedencia()
{
    EnElDialogo([&](QWidget &caja) {
        QCOMPARE(En<QLabel>(caja, "qt_msgbox_informativelabel").text(), "KT580 · ERR-ID:7500080");
        QCOMPARE(caja.windowTitle(), "ERROR");
        auto &detalles = *dynamic_cast<QMessageBox &>(caja).buttons().constLast();
        QCOMPARE(detalles.text(), "&Detalles");
        detalles.click();
        QCoreApplication::processEvents();
        QCOMPARE(detalles.text(), "&Detalles");
        QCOMPARE(dynamic_cast<QMessageBox &>(caja).detailedText(), "jcruz cambió este registro");
    });
    qvx::InteraccionQt().Mensaje(
        {"ERROR", 16, "ERROR", pantalla->winId(), "KT580", "ERR-ID:7500080", "jcruz cambió este registro"});
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

void PrDialogos::catalogo()
{
    Tipo().findChild<QLineEdit *>()->setFocus();
    const auto buscar = [&](const std::function<void(QWidget &)> &pasos) {
        EnElDialogo(pasos);
        QTest::keyClick(Tipo().findChild<QLineEdit *>(), Qt::Key_F3);
        return Tipo().Text();
    };
    QCOMPARE(buscar([](QWidget &dialogo) {
                 const QAbstractItemModel &lista = *En<QTreeView>(dialogo, "lvEntradas").model();
                 const auto &aviso = En<QLabel>(dialogo, "lblAviso");
                 QVERIFY(lista.match(lista.index(0, 0), Qt::DisplayRole, "0903").isEmpty()); // cancelled
                 Teclear("nada de esto");
                 QCOMPARE(aviso.text() + QString::number(lista.rowCount()), "Ninguna entrada coincide0");
                 Tecla(Qt::Key_Return);
                 QVERIFY(dialogo.isVisible());
                 Tecla(Qt::Key_A, Qt::ControlModifier);
                 Teclear("prueba");
                 QCOMPARE(aviso.text(), " ");
                 Tecla(Qt::Key_Escape);
             }),
             "0900");
    QCOMPARE(buscar([](QWidget &) { Teclear("AJENA¶"); }), "0902");
    QCOMPARE(buscar([](QWidget &) {
                 Teclear("090");
                 Tecla(Qt::Key_Down);
                 Tecla(Qt::Key_Return);
             }),
             "0901");
}

// Who is shown a part of a catalogue is told so.
void PrDialogos::catalogoCortado()
{
    const auto aviso = [&](int maximo) {
        QString texto;
        EnElDialogo([&](QWidget &dialogo) {
            texto = En<QLabel>(dialogo, "lblAviso").text()
                    + QString::number(En<QTreeView>(dialogo, "lvEntradas").model()->rowCount());
        });
        qvx::InteraccionQt().BuscarEnCatalogo("TIPO_EQUIPO", maximo, "Te_Descripcion <> 'AJENA'", QFont(), pantalla);
        return texto;
    };
    const int todas =
        escenario->Correr("SELECT count(*) FROM Tipo_Equipo WHERE Es_Cve_Estado = 'AC' AND Te_Descripcion <> 'AJENA'")
            .toInt();
    QCOMPARE(aviso(1), "Se muestran las primeras 1; escriba para acotar1");
    QCOMPARE(aviso(todas), " " + QString::number(todas));
    QCOMPARE(aviso(0), " " + QString::number(todas));
}

// A name is taken as it was left, and a cancelled export writes nothing and says nothing.
void PrDialogos::archivos()
{
    const QString ruta = escenario->Ruta("plan");
    for (const bool acepta : {false, true}) {
        EnLaParte("N0000", "B1", [&](QWidget &dialogo) {
            auto &archivo = dynamic_cast<QFileDialog &>(dialogo);
            QCOMPARE(archivo.windowTitle() + archivo.nameFilters().join(','), "GUARDAR XMLArchivo XML (*.xml)");
            auto &nombre = En<QLineEdit>(dialogo, "fileNameEdit");
            QCOMPARE(nombre.text(), "PlanMantenimiento_0900");
            nombre.setText(ruta);
            QTest::keyClick(&nombre, acepta ? Qt::Key_Return : Qt::Key_Escape);
            QTRY_VERIFY(!dialogo.isVisible());
            if (acepta)
                EnElDialogo([](QWidget &) { Tecla(Qt::Key_Return); });
        });
        QCOMPARE(QFile::exists(ruta), acepta);
        QCOMPARE(Mensajes().size(), acepta ? 1 : 0);
    }
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

PRUEBA_MAIN(PrDialogos)
#include "pr_dialogos.moc"
