#include "support/Manos.h"

#include "controls/ListView.h"
#include "controls/SSOleDBGrid.h"
#include "controls/TreeView.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <QToolBar>

void Escribir(QWidget &caja, const QString &texto)
{
    auto *linea = caja.findChild<QLineEdit *>();
    linea->setFocus();
    linea->selectAll();
    QTest::keyClick(linea, Qt::Key_Delete);
    QTest::keyClicks(linea, texto);
    QTest::keyClick(linea, Qt::Key_Tab);
}

void EscribirCelda(QWidget &grid, int fila, const QString &columna, const QString &texto)
{
    auto &tabla = dynamic_cast<SSDataWidgets_B_OLEDB::SSOleDBGrid &>(grid);
    tabla.setFocus();
    tabla.setCurrentCell(fila, tabla.IndiceColumna(columna));
    QTest::keyClick(&tabla, Qt::Key_F2);
    auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    QVERIFY2(editor, "La celda no se edita");
    editor->selectAll();
    if (texto.isEmpty())
        QTest::keyClick(editor, Qt::Key_Delete);
    QTest::keyClicks(editor, texto);
    QTest::keyClick(editor, Qt::Key_Tab);
    QCoreApplication::processEvents();
}

void Pulsar(QWidget &barra, const QString &comando)
{
    QCoreApplication::processEvents(); // the bar lays its buttons out
    auto *accion = barra.findChild<QAction *>(comando);
    auto *boton = dynamic_cast<QToolBar &>(barra).widgetForAction(accion);
    QVERIFY2(accion && boton, qPrintable(comando));
    QVERIFY2(accion->isEnabled() && boton->isVisible(), qPrintable("No se ofrece " + comando));
    QTest::mouseClick(boton, Qt::LeftButton);
}

void ElegirNodo(QWidget &arbol, const QString &clave)
{
    auto &tv = dynamic_cast<comunesQVX::TreeView &>(arbol);
    auto *nodo = tv.Item(clave);
    tv.EnsureVisible(nodo);
    tv.clearFocus(); // or a second click on it would begin to edit
    QTest::mouseClick(tv.viewport(), Qt::LeftButton, {}, tv.visualItemRect(nodo).center());
}

QTimer *EnElDialogo(const std::function<void(QWidget &)> &pasos, const QWidget *menos)
{
    auto *espera = new QTimer(qApp);
    QObject::connect(espera, &QTimer::timeout, espera, [espera, pasos, menos] {
        QWidget *dialogo = QApplication::activeModalWidget();
        if (!dialogo || dialogo == menos)
            return;
        if (!dialogo->isActiveWindow())
            return dialogo->activateWindow(); // as a window manager does
        espera->stop();
        espera->deleteLater();
        pasos(*dialogo);
        if (dialogo == QApplication::activeModalWidget()) // a failed test must not hang
            dialogo->close();
    });
    espera->start(1);
    return espera;
}
