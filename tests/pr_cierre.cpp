#include "controls/InteraccionQt.h"
#include "support/PruebaPantalla.h"

#include <QMap>

// A host that closes or destroys the screen while it waits for the person: whichever goes first, the procedure that
// waited ends there, and nothing of what it had begun stays.
class PrCierre : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cierre_data();
    void cierre();

private:
    using Espera = std::function<void(PrCierre &, const Pasos &)>;
    static QMap<QString, Espera> Esperas();
    void Cerrar(const QString &como);
};

void PrCierre::init()
{
    PruebaPantalla::init();
    escenario->Personas().real = std::make_unique<qvx::InteraccionQt>();
}

// What the person does until something waits for him, which is given to the steps.
QMap<QString, PrCierre::Espera> PrCierre::Esperas()
{
    using P = PrCierre;
    const auto boton = [](const QString &nodo, const QString &nombre) {
        return [=](P &p, const Pasos &pasos) { p.EnLaParte(nodo, nombre, pasos); };
    };
    const auto alAceptar = [](const Pasos &pasos) {
        return [=](QWidget &forma) {
            EnElDialogo(pasos, &forma);
            Aceptar(forma);
        };
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
    const auto celda = [](const std::function<void(QWidget &, SSOleDBGrid &, QWidget *)> &dejar) {
        return [=](P &p, const Pasos &pasos) {
            p.EnElServicio("N0002", "", [=](QWidget &editor) {
                Fichas(editor).setTab(2);
                auto &grid = Grid(editor, "ssRefacciones");
                grid.setFocus();
                grid.setCurrentCell(0, grid.IndiceColumna("Gasto"));
                QTest::keyClick(&grid, Qt::Key_F2);
                QWidget *linea = QApplication::focusWidget();
                QTest::keyClicks(linea, "9'1");
                EnElDialogo(pasos, &editor);
                dejar(editor, grid, linea);
                QCoreApplication::processEvents();
            });
        };
    };
    return {
        {"parte nueva", boton("N0002", "Nuevo")},
        {"parte editada", boton("N0002", "Editar")},
        {"pregunta", boton("N0004", "B1")},
        {"información", boton("N0002", "Info")},
        {"servicio", [](P &p, const Pasos &pasos) { p.EnElServicio("N0002", "000001", pasos); }},
        {"servicio nuevo", [](P &p, const Pasos &pasos) { p.EnElServicio("N0002", "", pasos); }},
        {"aviso del servicio", [=](P &p, const Pasos &pasos) { p.EnElServicio("N0002", "", alAceptar(pasos)); }},
        {"aviso de la parte", [=](P &p, const Pasos &pasos) { p.EnLaParte("N0002", "Nuevo", alAceptar(pasos)); }},
        {"búsqueda en la rejilla",
         [](P &p, const Pasos &pasos) {
             p.EnElServicio("N0002", "", [=](QWidget &editor) {
                 EnElDialogo(pasos);
                 Q_EMIT Grid(editor, "ssManoObra").BtnClick(Grid(editor, "ssManoObra").IndiceColumna("Producto"));
             });
         }},
        {"búsqueda",
         [](P &p, const Pasos &pasos) {
             EnElDialogo(pasos);
             QTest::keyClick(p.Tipo().findChild<QLineEdit *>(), Qt::Key_F3);
         }},
        {"copia",
         [](P &p, const Pasos &pasos) {
             EnElDialogo(pasos);
             Pulsar(p.Barra(), "B3");
         }},
        {"archivo",
         [](P &p, const Pasos &pasos) {
             EnElDialogo(pasos);
             Pulsar(p.Barra(), "B1");
         }},
        {"pregunta de la lista",
         [](P &p, const Pasos &pasos) {
             p.ElegirServicio("N0002", "000001");
             EnElDialogo(pasos);
             QTest::keyClick(&p.Lista(), Qt::Key_Delete);
         }},
        {"tipo dejado por tecla", tipo([](P &, QWidget *linea) { QTest::keyClick(linea, Qt::Key_Tab); })},
        {"tipo dejado sin soltar la tecla", tipo([](P &, QWidget *linea) { QTest::keyPress(linea, Qt::Key_Tab); })},
        {"tipo dejado por clic",
         tipo([](P &p, QWidget *) { QTest::mousePress(p.Arbol().viewport(), Qt::LeftButton, {}, QPoint(5, 5)); })},
        {"celda dejada por tecla",
         celda([](QWidget &, SSOleDBGrid &, QWidget *linea) { QTest::keyClick(linea, Qt::Key_Tab); })},
        {"celda dejada por flecha",
         celda([](QWidget &, SSOleDBGrid &, QWidget *linea) { QTest::keyClick(linea, Qt::Key_Down); })},
        {"celda dejada por otra", celda([](QWidget &, SSOleDBGrid &grid, QWidget *) {
             QTest::mousePress(grid.viewport(), Qt::LeftButton, {},
                               grid.visualRect(grid.model()->index(0, 0)).center());
         })},
        {"celda dejada por caja", celda([](QWidget &editor, SSOleDBGrid &, QWidget *) {
             QTest::mousePress(Caja(editor, "txtDias").findChild<QLineEdit *>(), Qt::LeftButton);
         })},
        {"error de la etiqueta",
         [](P &p, const Pasos &pasos) {
             EnElDialogo(pasos);
             p.Rotular("N0002", "O'");
         }},
        {"error del árbol",
         [](P &p, const Pasos &pasos) {
             p.escenario->Correr("ALTER TABLE Tipo_Equipo_Parte RENAME TO Guardada");
             EnElDialogo(pasos);
             QTest::keyClick(&p.Arbol(), Qt::Key_F5);
             p.escenario->Correr("ALTER TABLE Guardada RENAME TO Tipo_Equipo_Parte");
         }},
    };
}

void PrCierre::Cerrar(const QString &como)
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

void PrCierre::cierre_data()
{
    const Tabla<QString, QString> fila("espera", "como");
    for (const QString &espera : Esperas().keys())
        for (const char *como : {"cerrada", "destruida", "con su ventana", "con todas"})
            fila(espera + ": " + como, espera, como);
}

void PrCierre::cierre()
{
    QFETCH(QString, espera);
    QFETCH(QString, como);
    const QStringList antes = escenario->Tablas();
    bool cerrada = false;
    Esperas()[espera](*this, [&](QWidget &) {
        cerrada = true;
        Cerrar(como);
    });
    QVERIFY(cerrada);
    QCoreApplication::processEvents();
    QVERIFY(!qvx::Sesion::Actual().Conexion().EnTransaccion());
    QCOMPARE(escenario->Tablas(), antes);
    Mensajes();
}

PRUEBA_MAIN(PrCierre)
#include "pr_cierre.moc"
