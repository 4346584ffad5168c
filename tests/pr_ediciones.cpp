#include "controls/Comunes.h"
#include "support/PruebaEditor.h"

// Two planners on one plan: what the second one saves never covers the first one's work without a word, and nobody
// loses what was typed.
class PrEdiciones : public PruebaEditor
{
    Q_OBJECT

private:
    // What another planner does meanwhile, with that planner's signature.
    void Ajeno(const QString &cambio) const;
    // Why the editor's save was refused: the message is only "ERROR", its details say more.
    QString Rechazo();

private Q_SLOTS:
    void servicio_data();
    void servicio();
    void parte_data();
    void parte();
    void mando_data();
    void mando();
    void propia();
    void claveTomada();
    void parteBorrada();
    void relectura();
};

namespace
{

const QString Firma = ", Oper_Ult_Modif = 'jcruz', Fecha_Ult_Modif = '2026-03-14 09:20:00' ";
const QString Motivo =
    "jcruz cambió este registro el 2026-03-14 09:20:00, después de que esta pantalla lo leyó. No se "
    "guardó nada, y lo escrito sigue en la pantalla. Para ver cómo quedó, ábralo de nuevo o actualice "
    "el árbol con F5.";
const QString YaNoEsta = "El registro ya no existe: otra persona lo eliminó o lo cambió de lugar.";

} // namespace

void PrEdiciones::Ajeno(const QString &cambio) const
{
    for (const QString &sentencia : cambio.split(QLatin1Char(';')))
        escenario->Motor(QString(sentencia).replace("{FIRMA}", Firma));
}

QString PrEdiciones::Rechazo()
{
    const QString motivo = escenario->Personas().detalles.join(QString());
    const QString mensaje = Mensajes().join(QLatin1Char('\n'));
    return mensaje == "16|ERROR|KT580|ERR-ID:7500080|ERROR" ? motivo : mensaje;
}

void PrEdiciones::servicio_data()
{
    QTest::addColumn<QString>("ajeno");
    QTest::addColumn<QString>("motivo");
    const QString cual = "WHERE Te_Cve_Tipo_Equipo = '0900' AND Pm_ID = '000001'";
    QTest::newRow("cambiado") << "UPDATE Plan_Mantenimiento SET Pm_Precio = 7{FIRMA}" + cual << Motivo;
    QTest::newRow("cambiado dos veces") << "UPDATE Plan_Mantenimiento SET Pm_Precio = 7{FIRMA}" + cual
                                               + ";UPDATE Plan_Mantenimiento SET Pm_Precio = 1000 " + cual
                                        << Motivo;
    // An import or a copy of a plan writes every row anew.
    QTest::newRow("escrito de nuevo")
        << "DELETE FROM Plan_Mantenimiento " + cual
               + ";INSERT INTO Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio, "
                 "Oper_Ult_Modif, Fecha_Ult_Modif) VALUES ('0900', '0002', '000001', '9001', 'jcruz', "
                 "'2026-03-14 09:20:00')"
        << Motivo;
    QTest::newRow("movido") << "UPDATE Plan_Mantenimiento SET Tep_ID = '0005'{FIRMA}" + cual << YaNoEsta;
    QTest::newRow("borrado") << "DELETE FROM Plan_Mantenimiento " + cual << YaNoEsta;
    QTest::newRow("sin su parte") << "DELETE FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' AND Tep_ID = "
                                     "'0002'"
                                  << "La parte del servicio ya no existe: otra persona la eliminó.";
}

void PrEdiciones::servicio()
{
    QFETCH(QString, ajeno);
    QFETCH(QString, motivo);
    Abrir(0, [&](QWidget &editor) {
        Escribir(Caja(editor, "txtPrecio"), "1234.5");
        Ajeno(ajeno);
        const QStringList antes = escenario->Tablas();
        for (int vez = 0; vez < 2; ++vez) { // insisting does not help
            Aceptar(editor);
            QCOMPARE(Rechazo(), motivo);
            QCOMPARE(escenario->Tablas(), antes);
        }
        QVERIFY(editor.isVisible());
        QCOMPARE(Caja(editor, "txtPrecio").Numero(), 1234.5);
        QCOMPARE(Grid(editor, "ssManoObra").Celda(0, "Cantidad"), "2");
    });
}

void PrEdiciones::parte_data()
{
    QTest::addColumn<QString>("ajeno");
    QTest::addColumn<QString>("motivo");
    const QString cual = "WHERE Te_Cve_Tipo_Equipo = '0900' AND Tep_ID = '0002'";
    QTest::newRow("cambiada") << "UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'AJENA'{FIRMA}" + cual << Motivo;
    QTest::newRow("dada de baja") << "UPDATE Tipo_Equipo_Parte SET Es_Cve_Estado = 'BA'{FIRMA}" + cual << Motivo;
    QTest::newRow("eliminada") << "DELETE FROM Tipo_Equipo_Parte " + cual << YaNoEsta;
}

void PrEdiciones::parte()
{
    QFETCH(QString, ajeno);
    QFETCH(QString, motivo);
    EnLaParte("Editar", "N0002", [&](QWidget &dialogo) {
        Escribir(Caja(dialogo, "txtTexto"), "IMPULSOR ABIERTO");
        Ajeno(ajeno);
        const QStringList antes = escenario->Tablas();
        Pulsar(escenario->En<QWidget>(dialogo, "Controles"), "Aceptar");
        QCOMPARE(Mensajes(), QStringList("48|Quorvex|KT580|ERR-ID:7500096|" + motivo));
        QCOMPARE(escenario->Tablas(), antes);
        QVERIFY(dialogo.isVisible());
        QCOMPARE(Caja(dialogo, "txtTexto").Text(), "IMPULSOR ABIERTO");
    });
}

// Retiring and bringing back write the row that the tree was read from.
void PrEdiciones::mando_data()
{
    QTest::addColumn<QString>("comando");
    QTest::addColumn<QString>("nodo");
    QTest::newRow("baja") << "Eliminar"
                          << "N0005";
    QTest::newRow("reactivación") << "Reactivar"
                                  << "N0003";
}

void PrEdiciones::mando()
{
    QFETCH(QString, comando);
    QFETCH(QString, nodo);
    ElegirNodo(escenario->De<QWidget>("tvPartes"), nodo);
    Ajeno(
        "UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'AJENA'{FIRMA}WHERE Te_Cve_Tipo_Equipo = '0900' AND Tep_ID = '"
        + nodo.mid(1) + "'");
    const QStringList antes = escenario->Tablas();
    Pulsar(escenario->De<QWidget>("Controles"), comando);
    const QStringList mensajes = Mensajes();
    QCOMPARE(mensajes.size(), 1);
    QVERIFY2(mensajes.constFirst().contains(Motivo), qPrintable(mensajes.constFirst()));
    QCOMPARE(escenario->Tablas(), antes);

    QTest::keyClick(&escenario->De<QWidget>("tvPartes"), Qt::Key_F5); // seen, it may be done
    ElegirNodo(escenario->De<QWidget>("tvPartes"), nodo);
    Pulsar(escenario->De<QWidget>("Controles"), comando);
    QCOMPARE(Mensajes(), QStringList());
    QVERIFY(escenario->Tablas() != antes);
}

// The same planner's second window, or a save that was made although its answer was lost.
void PrEdiciones::propia()
{
    Abrir(0, [&](QWidget &editor) {
        escenario->Motor("UPDATE Plan_Mantenimiento SET Pm_Precio = 7, Oper_Ult_Modif = 'mlopez', Fecha_Ult_Modif = "
                         "'2026-03-14 09:20:00' WHERE Te_Cve_Tipo_Equipo = '0900' AND Pm_ID = '000001'");
        Aceptar(editor);
        QVERIFY(Rechazo().startsWith("Usted mismo (mlopez) cambió este registro el 2026-03-14 09:20:00, "));
    });
    for (int vez = 0; vez < 2; ++vez) // read anew each time, one's own changes are no obstacle
        Abrir(0, [&](QWidget &editor) {
            Escribir(Caja(editor, "txtPrecio"), QString::number(2000 + vez));
            Aceptar(editor);
            QVERIFY(!editor.isVisible());
        });
    QCOMPARE(escenario
                 ->Motor("SELECT Pm_Precio FROM Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = '0900' AND Pm_ID = "
                         "'000001'")
                 .toDouble(),
             2001.0);
}

// The proposed keys of a part and of a service are taken while the planner types: the next ones are given without a
// word. A key that the planner chose is kept, and refused when it is taken.
void PrEdiciones::claveTomada()
{
    const QString columnas = "INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) ";
    EnLaParte("Nuevo", "N0001", [&](QWidget &dialogo) {
        QCOMPARE(Caja(dialogo, "txtClave").Text(), "0007");
        escenario->Motor(columnas + "VALUES ('0900', '0007', '0000', 'AJENA'), ('0900', '0008', '0000', 'AJENA')");
        Escribir(Caja(dialogo, "txtTexto"), "PROPIA");
        Pulsar(escenario->En<QWidget>(dialogo, "Controles"), "Aceptar");
        QVERIFY(!dialogo.isVisible());
    });
    QVERIFY(escenario->De<comunesQVX::TreeView>("tvPartes").Contains("N0009"));
    QCOMPARE(Mensajes(), QStringList());

    EnLaParte("Nuevo", "N0001", [&](QWidget &dialogo) {
        Escribir(Caja(dialogo, "txtClave"), "20");
        Escribir(Caja(dialogo, "txtTexto"), "ELEGIDA");
        escenario->Motor(columnas + "VALUES ('0900', '0020', '0000', 'AJENA')");
        Pulsar(escenario->En<QWidget>(dialogo, "Controles"), "Aceptar");
        QVERIFY(Mensajes().join(QString()).startsWith("16|cmdAceptar()|KT580|ERR-ID:7500097|"));
        QCOMPARE(Caja(dialogo, "txtTexto").Text(), "ELEGIDA");
        Escribir(Caja(dialogo, "txtClave"), "21");
        Pulsar(escenario->En<QWidget>(dialogo, "Controles"), "Aceptar");
        QVERIFY(!dialogo.isVisible());
    });
    QVERIFY(escenario->De<comunesQVX::TreeView>("tvPartes").Contains("N0021"));

    Abrir(-1, [&](QWidget &editor) {
        QCOMPARE(Caja(editor, "txtID").Text(), "000004");
        escenario->Motor(
            "INSERT INTO Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio) VALUES "
            "('0900', '0005', '000004', '9001')");
        LlenarNuevo(editor);
        Aceptar(editor);
        QVERIFY(!editor.isVisible());
    });
    QCOMPARE(
        escenario->Filas("SELECT Tep_ID, Pm_ID FROM Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = '0900' AND Pm_ID "
                         "> '000003' ORDER BY Pm_ID"),
        (QStringList{"0005|000004", "0002|000005"}));
}

void PrEdiciones::parteBorrada()
{
    const QString borrar = "DELETE FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' AND Tep_ID = '0005'";
    Abrir(
        -1,
        [&](QWidget &editor) {
            escenario->Motor(borrar);
            LlenarNuevo(editor);
            const QStringList antes = escenario->Tablas();
            Aceptar(editor);
            QCOMPARE(Rechazo(), "La parte del servicio ya no existe: otra persona la eliminó.");
            QCOMPARE(escenario->Tablas(), antes);
        },
        "N0005");
    QTest::keyClick(&escenario->De<QWidget>("tvPartes"), Qt::Key_F5);
    EnLaParte("Nuevo", "N0002", [&](QWidget &dialogo) {
        escenario->Motor("DELETE FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' AND Tep_ID = '0002'");
        Escribir(Caja(dialogo, "txtTexto"), "SIN PADRE");
        Pulsar(escenario->En<QWidget>(dialogo, "Controles"), "Aceptar");
        QCOMPARE(Mensajes(), QStringList("48|Quorvex|KT580|ERR-ID:7500096|La parte superior ya no existe: otra persona "
                                         "la eliminó."));
        QVERIFY(dialogo.isVisible());
    });
}

// A drag reads the service anew: somebody else's change of its price is no reason to refuse it, and stays.
void PrEdiciones::relectura()
{
    auto &arbol = escenario->De<comunesQVX::TreeView>("tvPartes");
    ElegirNodo(arbol, "N0002");
    Ajeno("UPDATE Plan_Mantenimiento SET Pm_Precio = 7{FIRMA}WHERE Te_Cve_Tipo_Equipo = '0900' AND Pm_ID = '000001'");
    arbol.setDropHighlight(arbol.Item("N0005"));
    Q_EMIT arbol.OLEDragDrop("000001");
    QCOMPARE(Mensajes(), QStringList());
    QCOMPARE(escenario->Filas("SELECT rtrim(Tep_ID), Pm_Precio, Oper_Ult_Modif FROM Plan_Mantenimiento WHERE "
                              "Te_Cve_Tipo_Equipo = '0900' AND Pm_ID = '000001'"),
             QStringList("0005|7|mlopez"));
}

PRUEBA_MAIN(PrEdiciones)
#include "pr_ediciones.moc"
