#include "controls/Comunes.h"
#include "controls/Controles.h"
#include "controls/txtQVX.h"
#include "support/Averia.h"
#include "support/Plan.h"

#include <QLineEdit>

using comunesQVX::TreeView;
using textoQVX::txtQVX;
using toolbarQVX::Controles;

// Adding a part and changing one: the two commands of the screen and their dialog.
class PrPartes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void nuevo_data();
    void nuevo();
    void editar_data();
    void editar();
    void sinGuardar_data();
    void sinGuardar();
    void validaciones_data();
    void validaciones();
    void rechazos_data();
    void rechazos();
    void comilla();
    void sinParte_data();
    void sinParte();

private:
    TreeView &Arbol() { return escenario->De<TreeView>("tvPartes"); }
    Controles &Barra() { return escenario->De<Controles>("Controles"); }
    txtQVX &Caja(QWidget &dialogo, const QString &nombre) { return escenario->En<txtQVX>(dialogo, nombre); }
    QString Campos(QWidget &dialogo);
    void Aceptar(QWidget &dialogo) { Pulsar(escenario->En<Controles>(dialogo, "Controles"), "Aceptar"); }
    void Abrir(const QString &nodo, const QString &comando, const std::function<void(QWidget &)> &pasos);
    QStringList Mensajes() { return escenario->Personas().Tomar(); }
    QString Fila(const QString &parte);

    std::unique_ptr<Escenario> escenario;
    QWidget *pantalla = nullptr;
};

void PrPartes::init()
{
    escenario = std::make_unique<Escenario>();
    SembrarPlan(*escenario);
    pantalla = &escenario->Pantalla("0900");
}

void PrPartes::cleanup()
{
    QCOMPARE(Mensajes(), QStringList());
    escenario.reset();
}

// Runs a command on a node and the steps in the dialog that it opens.
void PrPartes::Abrir(const QString &nodo, const QString &comando, const std::function<void(QWidget &)> &pasos)
{
    ElegirNodo(Arbol(), nodo);
    bool abierto = false;
    EnElDialogo([&](QWidget &dialogo) {
        abierto = true;
        pasos(dialogo);
    });
    Pulsar(Barra(), comando);
    QVERIFY2(abierto, "No se abrió el diálogo");
}

QString PrPartes::Campos(QWidget &dialogo)
{
    QStringList textos;
    for (const char *nombre : {"txtTipoEquipo", "txtNTipoEquipo", "txtPadre", "txtNPadre", "txtClave", "txtTexto"})
        textos.append(Caja(dialogo, nombre).Text());
    return textos.join("|");
}

QString PrPartes::Fila(const QString &parte)
{
    return escenario
        ->Filas("SELECT Tep_Padre, Tep_Descripcion, Es_Cve_Estado, Oper_Alta, Fecha_Alta, Oper_Ult_Modif, "
                "Fecha_Ult_Modif, Oper_Baja FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' AND Tep_ID = '"
                + parte + "'")
        .join("\n");
}

void PrPartes::nuevo_data()
{
    QTest::addColumn<QString>("nodo");
    QTest::addColumn<QString>("ruta");
    QTest::addColumn<QString>("escrita"); // over the key proposed
    QTest::addColumn<QString>("clave");
    QTest::newRow("en la raíz") << "N0000"
                                << "RAIZ"
                                << ""
                                << "0007";
    QTest::newRow("bajo una parte") << "N0002"
                                    << "CUERPO / IMPULSOR"
                                    << ""
                                    << "0007";
    QTest::newRow("bajo una baja") << "N0004"
                                   << "CUERPO / SELLO / RESORTE"
                                   << ""
                                   << "0007";
    QTest::newRow("clave propia") << "N0005"
                                  << "MOTOR"
                                  << "12"
                                  << "0012";
}

void PrPartes::nuevo()
{
    QFETCH(QString, nodo);
    QFETCH(QString, ruta);
    QFETCH(QString, escrita);
    QFETCH(QString, clave);
    const QString padre = nodo.mid(1);
    Abrir(nodo, "Nuevo", [&](QWidget &dialogo) {
        QCOMPARE(Campos(dialogo), "0900|BOMBA DE PRUEBA|" + padre + "|" + ruta + "|0007|");
        QVERIFY(Caja(dialogo, "txtTexto").findChild<QLineEdit *>()->hasFocus());
        QCOMPARE(dialogo.parentWidget(), pantalla->window());
        if (!escrita.isEmpty())
            Escribir(Caja(dialogo, "txtClave"), escrita);
        Caja(dialogo, "txtTexto").setText("Válvula (alta)");
        escenario->Traza();
        QTest::keyClick(&dialogo, Qt::Key_F4);
    });
    const QStringList traza = escenario->Traza();
    QCOMPARE(traza.value(0), motor::Inicio());
    QCOMPARE(traza.value(1),
             "1\tINSERT INTO Tipo_Equipo_Parte (   Tep_Padre,    Tep_ID,    Te_Cve_Tipo_Equipo,    Tep_Descripcion,    "
             "Oper_Alta,   Fecha_Alta,   Oper_Ult_Modif,   Fecha_Ult_Modif) VALUES('"
                 + padre + "', '" + clave
                 + "', '0900', 'Válvula (alta)', 'mlopez','2026-03-14 09:26:53','mlopez','2026-03-14 09:26:53')");
    QCOMPARE(traza.value(4), "-\tCOMMIT");
    QCOMPARE(Fila(clave), padre + "|Válvula (alta)|AC|mlopez|2026-03-14 09:26:53|mlopez|2026-03-14 09:26:53|");
    QCOMPARE(escenario->Filas("SELECT Rc_Tabla, Rc_Clave, Rc_Oper FROM Registro_Cambio"),
             QStringList{"Tipo_Equipo_Parte|" + clave + "|0900|mlopez"});
    QCOMPARE(Arbol().Item("N" + clave)->Text(), clave + " - Válvula (alta)");
    QCOMPARE(Arbol().Item("N" + clave)->Parent()->Key(), nodo);
    QCOMPARE(Arbol().SelectedItem()->Key(), nodo);
    QVERIFY(!Arbol().visualItemRect(Arbol().Item("N" + clave)).isEmpty());
    QVERIFY(!QApplication::overrideCursor());
}

void PrPartes::editar_data()
{
    QTest::addColumn<QString>("nodo");
    QTest::addColumn<QString>("campos");
    QTest::addColumn<QString>("texto");
    QTest::newRow("de la raíz") << "N0005"
                                << "0000|RAIZ|0005|MOTOR"
                                << "Motor (nuevo)";
    QTest::newRow("de una parte") << "N0004"
                                  << "0003|CUERPO / SELLO / RESORTE|0004|RESORTE"
                                  << "Resorte - A";
    QTest::newRow("larga") << "N0002"
                           << "0001|CUERPO / IMPULSOR|0002|IMPULSOR" << QString(400, QLatin1Char('x'));
    QTest::newRow("clave de otro tipo") << "N0001"
                                        << "0000|RAIZ|0001|CUERPO"
                                        << "Otro cuerpo";
}

void PrPartes::editar()
{
    QFETCH(QString, nodo);
    QFETCH(QString, campos);
    QFETCH(QString, texto);
    const QString parte = nodo.mid(1);
    QString ajena = escenario->Tablas().filter("AJENA").join("\n");
    Abrir(nodo, "Editar", [&](QWidget &dialogo) {
        QCOMPARE(Campos(dialogo), "0900|BOMBA DE PRUEBA|" + campos);
        Escribir(Caja(dialogo, "txtClave"), "99"); // locked
        Escribir(Caja(dialogo, "txtTexto"), texto);
        escenario->Traza();
        Aceptar(dialogo);
    });
    const QStringList traza = escenario->Traza();
    QCOMPARE(traza.value(0), motor::Inicio());
    QCOMPARE(traza.value(1), "1\tUPDATE Tipo_Equipo_Parte SET    Tep_Descripcion = '" + texto
                                 + "',    Te_Cve_Tipo_Equipo = '0900',    Oper_Ult_Modif = 'mlopez',   "
                                   "Fecha_Ult_Modif= '2026-03-14 09:26:53'WHERE Tep_ID = '"
                                 + parte + "' and Te_Cve_Tipo_Equipo = '0900' ");
    QCOMPARE(traza.value(4), "-\tCOMMIT");
    QCOMPARE(Fila(parte), campos.left(4) + "|" + texto + "|AC|jcruz|2025-01-02 03:04:05|mlopez|2026-03-14 09:26:53|");
    QCOMPARE(escenario->Tablas().filter("AJENA").join("\n"), ajena);
    QCOMPARE(Arbol().SelectedItem()->Key(), nodo);
    QCOMPARE(Arbol().SelectedItem()->Text(), parte + " - " + texto);
    QCOMPARE(pantalla->window()->focusWidget(), &Arbol());
    // Opened again without a change, it keeps the whole text.
    Abrir(nodo, "Editar", [&](QWidget &dialogo) { Aceptar(dialogo); });
    QVERIFY(Fila(parte).contains("|" + texto + "|"));
}

void PrPartes::sinGuardar_data()
{
    QTest::addColumn<QString>("modo");
    for (const char *modo : {"Cancelar", "Esc", "cerrar"})
        QTest::newRow(modo) << modo;
}

void PrPartes::sinGuardar()
{
    QFETCH(QString, modo);
    const QStringList antes = escenario->Tablas();
    for (const char *comando : {"Nuevo", "Editar"}) {
        Abrir("N0002", comando, [&](QWidget &dialogo) {
            Escribir(Caja(dialogo, "txtTexto"), "Nada");
            if (modo == "Cancelar")
                Pulsar(escenario->En<Controles>(dialogo, "Controles"), "Cancelar");
            else if (modo == "Esc")
                QTest::keyClick(&dialogo, Qt::Key_Escape);
            else
                dialogo.close();
            QVERIFY(!dialogo.isVisible());
        });
        QCOMPARE(escenario->Tablas(), antes);
        QCOMPARE(Arbol().SelectedItem()->Key(), "N0002");
        QVERIFY(Arbol().Item("N0001")->isExpanded()); // the tree was not read again
    }
}

void PrPartes::validaciones_data()
{
    QTest::addColumn<QString>("preparacion");
    QTest::addColumn<QString>("vacio");
    QTest::addColumn<QString>("mensaje");
    // A planner never meets it: without a description there is no tree to press the command in.
    QTest::newRow("tipo") << ""
                          << "txtNTipoEquipo"
                          << "48|Quorvex|KT580|ERR-ID:7500092|Se debe especificar un tipo de equipo válido";
    QTest::newRow("parte superior sin descripción")
        << "UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = '' WHERE Tep_ID = '0005'"
        << ""
        << "48|Quorvex|KT580|ERR-ID:7500093|Debe especificar una parte válida";
    QTest::newRow("clave") << ""
                           << "txtClave"
                           << "48|Quorvex|KT580|ERR-ID:7500094|Debe especificar una clave para el parte";
    QTest::newRow("descripción") << ""
                                 << "txtTexto"
                                 << "48|Quorvex|KT580|ERR-ID:7500095|Debe especificar una descripción";
}

void PrPartes::validaciones()
{
    QFETCH(QString, preparacion);
    QFETCH(QString, vacio);
    QFETCH(QString, mensaje);
    if (!preparacion.isEmpty())
        escenario->Motor(preparacion);
    const QStringList antes = escenario->Tablas();
    Abrir("N0005", "Nuevo", [&](QWidget &dialogo) {
        Escribir(Caja(dialogo, "txtTexto"), "BRIDA");
        if (!vacio.isEmpty())
            Caja(dialogo, vacio).setText("");
        const QString campos = Campos(dialogo);
        escenario->Traza();
        Aceptar(dialogo);
        QCOMPARE(escenario->Personas().ventanas, QList<WId>{dialogo.winId()});
        QCOMPARE(Mensajes(), QStringList{mensaje});
        QVERIFY(dialogo.isVisible());
        QCOMPARE(Campos(dialogo), campos);
        QCOMPARE(escenario->Traza(), QStringList());
        // The tests end at the first that fails, in the order of the fields.
        Caja(dialogo, "txtTexto").setText("");
        Aceptar(dialogo);
        QCOMPARE(Mensajes(), QStringList{mensaje});
    });
    QCOMPARE(escenario->Tablas(), antes);
}

void PrPartes::rechazos_data()
{
    QTest::addColumn<QString>("comando");
    QTest::addColumn<QString>("falla"); // while the dialog is open
    QTest::addColumn<QString>("clave");
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QString>("mensaje");
    const QString trampa = "16|cmdAceptar()|KT580|ERR-ID:7500097|";
    const QString aviso = "48|Quorvex|KT580|ERR-ID:7500096|";
    const QString yaNoExiste = aviso + "El registro ya no existe: otra persona lo eliminó o lo cambió de lugar.";
    const QString repetida = trampa + motor::ParteRepetida();
    const auto fila = [](const char *nombre, const QString &comando, const QString &falla, const QString &clave,
                         const QString &texto, const QString &mensaje) {
        QTest::newRow(nombre) << comando << falla << clave << texto << mensaje;
    };
    fila("clave de otra parte", "Nuevo", "", "2", "BRIDA", repetida);
    fila("clave de la raíz", "Nuevo", "", "0", "BRIDA", aviso + "La clave 0000 está reservada para la raíz del árbol.");
    fila("comilla en la nueva", "Nuevo", "", "", "Toma d'aire", trampa + motor::Sintaxis("aire"));
    fila("comilla en la editada", "Editar", "", "", "Toma d'aire", trampa + motor::Sintaxis("aire"));
    fila("inserción", "Nuevo", "INSERT ON Tipo_Equipo_Parte", "", "BRIDA", trampa + "falla");
    fila("inserción sin efecto", "Nuevo", "sin efecto INSERT ON Tipo_Equipo_Parte", "", "BRIDA", yaNoExiste);
    fila("actualización", "Editar", "UPDATE ON Tipo_Equipo_Parte", "", "BRIDA", trampa + "falla");
    fila("registro de la nueva", "Nuevo", "INSERT ON Registro_Cambio", "", "BRIDA", aviso + "falla");
    fila("registro de la editada", "Editar", "INSERT ON Registro_Cambio", "", "BRIDA", aviso + "falla");
    fila("inicio", "Nuevo", "ocupada", "", "BRIDA", trampa + motor::Ocupada());
    fila("confirmación", "Editar", "confirmación", "", "BRIDA", trampa + motor::NoConfirma());
}

// Whatever refuses the row: the tables are as before, the dialog stays with what was typed, nothing is left locked, and
// the same accept succeeds as soon as the reason is gone.
void PrPartes::rechazos()
{
    QFETCH(QString, comando);
    QFETCH(QString, falla);
    QFETCH(QString, clave);
    QFETCH(QString, texto);
    QFETCH(QString, mensaje);
    QString guardada;
    Abrir("N0005", comando, [&](QWidget &dialogo) {
        Averia averia(*escenario, falla);
        if (!clave.isEmpty())
            Escribir(Caja(dialogo, "txtClave"), clave);
        Escribir(Caja(dialogo, "txtTexto"), texto);
        const QString campos = Campos(dialogo);
        escenario->Traza();
        Aceptar(dialogo);
        averia.Reparar();
        if (mensaje.startsWith("48")) // a refusal takes its transaction back by itself
            QVERIFY(!escenario->Traza().contains("-\tABANDONADA"));
        QCOMPARE(escenario->Personas().ventanas, QList<WId>{dialogo.winId()});
        QCOMPARE(Mensajes(), QStringList{mensaje});
        QVERIFY(dialogo.isVisible());
        QCOMPARE(Campos(dialogo), campos);
        QVERIFY(!Fila("0007").contains("BRIDA") && !Fila("0005").contains("BRIDA"));
        QCOMPARE(escenario->Motor("SELECT count(*) FROM Registro_Cambio").toInt(), 0);

        if (!clave.isEmpty())
            Escribir(Caja(dialogo, "txtClave"), "7");
        Escribir(Caja(dialogo, "txtTexto"), "BRIDA");
        guardada = Caja(dialogo, "txtClave").Text();
        Aceptar(dialogo);
        QVERIFY(!dialogo.isVisible());
    });
    QCOMPARE(guardada, comando == "Nuevo" ? "0007" : "0005");
    QCOMPARE(Arbol().Item("N" + guardada)->Text(), guardada + " - BRIDA");
    QCOMPARE(escenario->Motor("SELECT count(*) FROM Registro_Cambio").toInt(), 1);
}

// The trap undoes nothing: the host ends the transaction that it leaves behind, before the next event.
void PrPartes::comilla()
{
    const QStringList antes = escenario->Tablas();
    Abrir("N0005", "Nuevo", [&](QWidget &dialogo) {
        Escribir(Caja(dialogo, "txtTexto"), "Toma d'aire");
        escenario->Traza();
        Aceptar(dialogo);
        const QStringList traza = escenario->Traza();
        QCOMPARE(traza.size(), 4);
        QCOMPARE(traza.at(0), motor::Inicio());
        QVERIFY(traza.at(1).startsWith("!\tINSERT INTO Tipo_Equipo_Parte"));
        QCOMPARE(traza.mid(2), (QStringList{"-\tROLLBACK", "-\tABANDONADA"}));
        QCOMPARE(escenario->Tablas(), antes);
        escenario->Motor("UPDATE Unidad SET Un_Descripcion = 'OTRA' WHERE Un_Cve_Unidad = 'HRS'"); // nothing is locked
    });
    Mensajes();
    QTest::keyClick(&Arbol(), Qt::Key_F5);
    QCOMPARE(Arbol().Count(), 6);
    Abrir("N0000", "Nuevo", [&](QWidget &dialogo) {
        QCOMPARE(Caja(dialogo, "txtClave").Text(), "0007");
        Escribir(Caja(dialogo, "txtTexto"), "TOMA DE AIRE");
        Aceptar(dialogo);
    });
    QCOMPARE(Arbol().Item("N0007")->Text(), "0007 - TOMA DE AIRE");
}

void PrPartes::sinParte_data()
{
    QTest::addColumn<QString>("falla");
    QTest::addColumn<QString>("comando");
    QTest::addColumn<QString>("mensaje");
    const QString eliminar = "DELETE FROM Tipo_Equipo_Parte WHERE Tep_ID = '0002'";
    const QString renombrar = "ALTER TABLE Tipo_Equipo_Parte RENAME TO Guardada";
    const QString sinTabla = motor::NoHayTabla("Tipo_Equipo_Parte");
    QTest::newRow("nuevo, eliminada por otro") << eliminar << "Nuevo"
                                               << "48|Quorvex|KT580|ERR-ID:7500003|No se encontró la ruta de la parte";
    QTest::newRow("editar, eliminada por otro") << eliminar << "Editar"
                                                << "48|Quorvex|KT580|ERR-ID:7500006|No se encontró la ruta de la parte";
    QTest::newRow("editar, la raíz") << ""
                                     << "Editar"
                                     << "48|Quorvex|KT580|ERR-ID:7500005|La parte no es válido para esta operación!";
    QTest::newRow("nuevo, trampa") << renombrar << "Nuevo"
                                   << "16|Controles_Nuevo()|KT580|ERR-ID:7500004|" + sinTabla;
    QTest::newRow("editar, trampa") << renombrar << "Editar"
                                    << "16|Controles_Editar()|KT580|ERR-ID:7500007|" + sinTabla;
}

// The commands that open no dialog: QTest would hang in one.
void PrPartes::sinParte()
{
    QFETCH(QString, falla);
    QFETCH(QString, comando);
    ElegirNodo(Arbol(), "N0002");
    if (falla.isEmpty())
        Arbol().setSelectedItem(Arbol().Item("N0000")); // in code: the command stays on offer
    else
        escenario->Motor(falla);
    escenario->Traza();
    Pulsar(Barra(), comando);
    QCOMPARE(escenario->Personas().ventanas, QList<WId>{pantalla->winId()});
    QTEST(Mensajes().value(0), "mensaje");
    QVERIFY(escenario->Traza().filter("BEGIN").isEmpty());
    Arbol().setSelectedItem(nullptr); // without a node the command does nothing
    Pulsar(Barra(), comando);
}

PRUEBA_MAIN(PrPartes)
#include "pr_partes.moc"
