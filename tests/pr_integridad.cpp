#include "app/DialogoIntegridad.h"
#include "app/VentanaPrincipal.h"
#include "support/Procesos.h"
#include "support/PruebaPantalla.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>

// "Revisar integridad": what the trees do not reach, found and put back, from the window and by the command.
class PrIntegridad : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void ventana();
    void corregidoPorOtro();
    void programa();

private:
    void Soltar();
};

// Beside the plan's part 0006: a service dropped on the root, with its lines; one of another type whose part is gone; a
// ring of two parts, with one below, and a part below itself; and a service and a part whose keys differ only in
// blanks. The service of the other type has lines that name what no catalogue has; a retired product is one.
void PrIntegridad::Soltar()
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
void PrIntegridad::ventana()
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
void PrIntegridad::corregidoPorOtro()
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
void PrIntegridad::programa()
{
    const QStringList revisar = QStringList{"--revisar"} + escenario->Base().Argumentos();
    const QStringList antes = escenario->Tablas();
    const QString dicho = Quorvex(revisar);
    QVERIFY2(dicho.startsWith("1Tipo de equipo 0900, parte 0006 SUELTA: Su parte superior «7777» no existe.\n"),
             qPrintable(dicho));
    QCOMPARE(escenario->Tablas(), antes);
    Preparar("DELETE FROM Tipo_Equipo_Parte WHERE Tep_ID = '0006'");
    QCOMPARE(Quorvex(revisar), "0No se encontró nada que corregir.\n");
    QCOMPARE(Quorvex({"--revisar", "--base-datos", "no/existe.db"}), "1La base de datos «no/existe.db» no existe.\n");
}

PRUEBA_MAIN(PrIntegridad)
#include "pr_integridad.moc"
