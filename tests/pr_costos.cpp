#include "app/VentanaPrincipal.h"
#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "plan/Costos.h"
#include "plan/Gastos.h"
#include "support/Procesos.h"
#include "support/PruebaPantalla.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>

using qvx::Sesion;

// Plans brought to the catalogue's costs and expense types, from the window and by the command.
class PrCostos : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void ejemplos();
    void reparos_data();
    void reparos();
    void entretanto_data();
    void entretanto();
    void averias_data();
    void averias();
    void propuestas();
    void ventanas();

private:
    static qvx::Conexion &Base() { return Sesion::Actual().Conexion(); }
    static qvx::CostosEscritos Actualizar(const qvx::DiferenciasDeCostos &vistas)
    {
        return qvx::ActualizarCostos(Base(), Sesion::Actual().Firmante(), vistas, vistas.MarcadasDeInicio());
    }
    // Completes what LeerSinGasto proposed; what it refused.
    static QString Completar(const qvx::RefaccionesSinGasto &vistas)
    {
        try {
            qvx::CompletarGastos(Base(), Sesion::Actual().Firmante(), vistas, vistas.Propuestos());
            return {};
        } catch (const qvx::ErrorEjecucion &error) {
            return error.Descripcion();
        }
    }
    // Of the lines: key, cost, amount and expense type.
    QStringList Lineas(const QString &condicion = "1 = 1") const
    {
        return escenario->Filas("SELECT Pmd_ID, CAST(Pmd_Costo AS float), CAST(Pmd_Importe AS float), Pmd_Tipo_Gasto "
                                "FROM Plan_Mantenimiento_Detalle WHERE "
                                + condicion + " ORDER BY Te_Cve_Tipo_Equipo, Pmd_ID");
    }
    void Sembrar();
};

// The costs of 0900: labour rises by a tenth, a seal by a little; of 0902 a new line of the seal at another cost. Their
// spare parts: 000002 and 000005 lose their expense types, two lines of 0902 have the seal's.
void PrCostos::Sembrar()
{
    Preparar("UPDATE Producto SET Pr_Costo_Estandar = 165.275 WHERE Pr_Cve_Producto = '9000000001';"
             "UPDATE Producto SET Pr_Costo_Estandar = 80.2 WHERE Pr_Cve_Producto = '9000000002';"
             "INSERT INTO Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, "
             "Pr_Cve_Producto, Pmd_Cantidad, Pmd_Unidad, Pmd_Costo, Pmd_Importe, Pmd_Tipo_Gasto) VALUES "
             "('0902', '0001', '000077', '000078', '02', '9000000002', 3, 'PZA', 80.1, 240.3, '9001'), "
             "('0902', '0001', '000077', '000079', '03', '9000000003', 1, 'PZA', 4, 4, '');"
             "UPDATE Plan_Mantenimiento_Detalle SET Pmd_Tipo_Gasto = '' WHERE Pmd_ID = '000002';"
             "INSERT INTO Tipo_Gasto VALUES ('9002', 'OTRO', 'AC')");
}

// All that there is to change in the example plans, by the command, which first only tells.
void PrCostos::ejemplos()
{
    const BaseDePrueba ejemplos(true);
    const auto otro = ejemplos.Otro();
    const auto importes = [&] {
        return otro->Filas("SELECT SUM(CAST(Pmd_Importe AS float)) FROM Plan_Mantenimiento_Detalle").at(0).toDouble();
    };
    const auto quorvex = [&](const QStringList &orden) { return Quorvex(orden + ejemplos.Argumentos()); };
    const double antes = importes();
    const QString dicho = quorvex({"--actualizar-costos"});
    QVERIFY2(dicho.startsWith("0") && dicho.count('\n') == 7, qPrintable(dicho));
    QVERIFY(dicho.endsWith("Con --si cambian 6 renglones de 6 servicios, por +$339.995 en total.\n"));
    QCOMPARE(importes(), antes);
    QCOMPARE(quorvex({"--actualizar-costos", "4", "0006"}).count('\n'), 2);
    QVERIFY(quorvex({"--actualizar-costos", "--si"}).startsWith("0"));
    QCOMPARE(qRound64((importes() - antes) * 1000), 339995);
    QCOMPARE(quorvex({"--actualizar-costos", "--si"}), "0Todos los costos están al día.\n");
    QCOMPARE(otro->Filas("SELECT COUNT(*) FROM Registro_Cambio"), QStringList{"6"});
    QVERIFY(quorvex({"--completar-gastos"}).startsWith("1Tipo de equipo 0001,")); // no other line has the product's
    QCOMPARE(quorvex({"--completar-gastos", "0002"}), "0Todas las refacciones tienen tipo de gasto.\n");
    QCOMPARE(quorvex({"--actualizar-costos", "0008"}), "1El tipo de equipo 0008 no existe o está dado de baja.\n");
    QVERIFY(quorvex({"--actualizar-costos", "--completar-gastos"}).startsWith("2"));
    otro->Correr("UPDATE Producto SET Pr_Costo_Estandar = 0 WHERE Pr_Cve_Producto = '0000001041'");
    QVERIFY(quorvex({"--actualizar-costos", "--si"}).startsWith("1"));
}

void PrCostos::reparos_data()
{
    const Tabla<QString, QString> fila("cambio", "reparo");
    const QString costo = "UPDATE Producto SET Pr_Costo_Estandar = ";
    const QString grande = "el costo cambia más de 25 %";
    fila("igual", costo + "80.1", "(no sale)");
    fila("lo que deja el binario", costo + "80.10000000000001", "(no sale)");
    fila("un cuarto más", costo + "100.125", "");
    fila("más de un cuarto", costo + "100.13", grande);
    fila("un cuarto menos", costo + "60.075", "");
    fila("menos de tres cuartos", costo + "60.07", grande);
    fila("cero", costo + "0", "el costo nuevo es 0; " + grande);
    fila("producto de baja", costo + "81, Es_Cve_Estado = 'BA'", "el producto está dado de baja");
    fila("otra unidad", costo + "81, Pr_Unidad_Control_1 = 'JGO'",
         "la unidad del renglón es PZA y la del producto JGO");
    fila("herramienta", "UPDATE Plan_Mantenimiento_Detalle SET Pmd_Tipo = '03'; " + costo + "81", "(no sale)");
    fila("parte de baja", "UPDATE Tipo_Equipo_Parte SET Es_Cve_Estado = 'BA'; " + costo + "81", "(aparte)");
    fila("fuera del árbol", "UPDATE Tipo_Equipo_Parte SET Tep_Padre = '7777'; " + costo + "81", "(aparte)");
    fila("servicio de baja", "UPDATE Plan_Mantenimiento SET Es_Cve_Estado = 'BA'; " + costo + "81", "(aparte)");
    fila("tipo de baja", "UPDATE Tipo_Equipo SET Es_Cve_Estado = 'CA'; " + costo + "81", "(aparte)");
}

// Of the seal's line, which costs 80.1 and is the only one of its product.
void PrCostos::reparos()
{
    QFETCH(const QString, cambio);
    QFETCH(const QString, reparo);
    for (const QString &sentencia : cambio.split("; ")) {
        const QString tabla = sentencia.section(' ', 1, 1);
        escenario->Correr(sentencia
                          + (tabla == "Producto"             ? " WHERE Pr_Cve_Producto = '9000000002'"
                             : tabla == "Tipo_Equipo_Parte"  ? " WHERE Tep_ID = '0002'"
                             : tabla == "Plan_Mantenimiento" ? " WHERE Pm_ID = '000001'"
                             : tabla == "Tipo_Equipo"        ? " WHERE Te_Cve_Tipo_Equipo = '0900'"
                                                             : " WHERE Pmd_ID = '000002'"));
    }
    const auto diferencias = qvx::LeerDiferencias(Base(), {});
    QCOMPARE(diferencias.aparte, reparo == "(aparte)" ? 1 : 0);
    QCOMPARE(diferencias.lineas.size(), reparo.startsWith('(') ? 0 : 1);
    if (diferencias.lineas.isEmpty())
        return;
    const auto &linea = diferencias.lineas.constFirst();
    QCOMPARE(linea.reparo, reparo);
    QCOMPARE(diferencias.MarcadasDeInicio(), QList<bool>{reparo.isEmpty()});
    const int servicio = linea.servicio; // 1000, less 300.5 of labour and 120.15
    QCOMPARE(qvx::NumeroATexto(diferencias.Antes(servicio).utilidad), "579.35");
    QCOMPARE(qvx::NumeroATexto(diferencias.Despues(servicio, {true}).utilidad),
             qvx::NumeroATexto(699.5 - 1.5 * linea.costoNuevo));
}

void PrCostos::entretanto_data()
{
    const Tabla<QString, QString, QString, QString> fila("cambio", "costos", "gastos", "hechos");
    const QString jcruz = ", Oper_Ult_Modif = 'jcruz', Fecha_Ult_Modif = '2026-03-14 08:00:00' WHERE ";
    const QString autor = "jcruz lo cambió el 2026-03-14 08:00:00, después de que esta lista lo leyó.";
    const QString servicio = "El servicio 000001 del tipo de equipo 0900";
    fila("servicio", "UPDATE Plan_Mantenimiento SET Pm_Precio = 7" + jcruz + "Pm_ID = '000001'",
         servicio + ": " + autor, servicio + ": " + autor, "");
    fila("servicio eliminado", "DELETE FROM Plan_Mantenimiento WHERE Pm_ID = '000001'", servicio + " ya no existe",
         servicio + " ya no existe", "");
    fila("del segundo plan", "UPDATE Plan_Mantenimiento SET Pm_Precio = 7" + jcruz + "Pm_ID = '000077'",
         "El servicio 000077 del tipo de equipo 0902: " + autor, "", "0900");
    fila("renglón",
         "UPDATE Plan_Mantenimiento_Detalle SET Pmd_Cantidad = 9, Pmd_Tipo_Gasto = '9002' WHERE Pmd_ID = "
         "'000002'",
         "El renglón 000002 del servicio 000001 ya no está como en la lista",
         "El renglón 000002 del servicio 000001 del tipo de equipo 0900 ya no está como en la lista", "");
    fila("parte de baja", "UPDATE Tipo_Equipo_Parte SET Es_Cve_Estado = 'BA' WHERE Tep_ID = '0002'",
         "El renglón 000001 del servicio 000001 ya no está",
         "El renglón 000002 del servicio 000001 del tipo de equipo 0900 ya no está", "");
    // A planner of a server writes the log, and does not read it.
    const QString alguien = motor::Segun("jcruz lo cambió el 2026-03-14 08:00:00", "Otra persona o programa lo cambió");
    fila("producto",
         "UPDATE Producto SET Pr_Costo_Estandar = 90 WHERE Pr_Cve_Producto = '9000000002'; INSERT INTO Registro_Cambio "
         "(Rc_Tabla, Rc_Clave, Rc_Oper, Rc_Fecha) VALUES ('Producto', '9000000002', 'jcruz', '2026-03-14 08:00:00')",
         "El producto 9000000002: " + alguien + ", después", "", "");
    fila("producto de baja", "UPDATE Producto SET Es_Cve_Estado = 'BA' WHERE Pr_Cve_Producto = '9000000002'",
         "El renglón 000002 del servicio 000001 ya no está", "", "");
    fila("tipo de gasto", "UPDATE Tipo_Gasto SET Es_Cve_Estado = 'BA' WHERE Tg_Cve_Tipo_Gasto = '9001'", "",
         "El tipo de gasto 9001: ", "");
}

// Another planner's work after the list was read is neither lost nor written over, and told.
void PrCostos::entretanto()
{
    QFETCH(const QString, cambio);
    QFETCH(const QString, costos);
    QFETCH(const QString, gastos);
    QFETCH(const QString, hechos);
    Sembrar();
    const auto diferencias = qvx::LeerDiferencias(Base(), {});
    const auto refacciones = qvx::LeerSinGasto(Base(), {});
    QCOMPARE(refacciones.Propuestos(), (QStringList{"9001", ""}));
    for (const QString &sentencia : cambio.split("; "))
        escenario->Correr(sentencia);
    const QStringList antes = escenario->Tablas();
    if (!costos.isEmpty()) {
        const QStringList primero = Lineas("Te_Cve_Tipo_Equipo = '0900'");
        const auto escritos = Actualizar(diferencias);
        QVERIFY2(escritos.motivo.startsWith(costos), qPrintable(escritos.motivo));
        QCOMPARE(escritos.hechos.join(' '), hechos);
        QCOMPARE(escritos.fallido + "/" + escritos.pendientes.join(' '), hechos.isEmpty() ? "0900/0902" : "0902/");
        QCOMPARE(Lineas("Te_Cve_Tipo_Equipo = '0900'") == primero, hechos.isEmpty());
    }
    if (!gastos.isEmpty()) {
        const QString negado = Completar(refacciones);
        QVERIFY2(negado.startsWith(gastos), qPrintable(negado));
    }
    QCOMPARE(escenario->Tablas() == antes, hechos.isEmpty());
}

void PrCostos::averias_data()
{
    const Tabla<QString> fila("hechos"); // the row is the fault
    fila("ocupada", "");
    fila("UPDATE ON Plan_Mantenimiento WHEN NEW.Pm_ID = '000001'", "");
    fila("INSERT ON Registro_Cambio WHEN NEW.Rc_Clave LIKE '0900%'", "");
    fila("UPDATE ON Plan_Mantenimiento_Detalle WHEN NEW.Pmd_ID = '000001'", "");
    fila("UPDATE ON Plan_Mantenimiento_Detalle WHEN NEW.Pmd_ID = '000002'", "");
    fila("UPDATE ON Plan_Mantenimiento WHEN NEW.Pm_ID = '000077'", "0900");
    fila("INSERT ON Registro_Cambio WHEN NEW.Rc_Clave LIKE '0902%'", "0900");
    fila("UPDATE ON Plan_Mantenimiento_Detalle WHEN NEW.Pmd_ID = '000078'", "0900");
}

// Whatever statement fails, its plan is as it was, and those before it are written. Expense types are all or nothing.
void PrCostos::averias()
{
    QFETCH(const QString, hechos);
    Sembrar();
    escenario->Correr("UPDATE Plan_Mantenimiento_Detalle SET Pmd_Tipo_Gasto = '9009' WHERE Pmd_ID = '000078'");
    escenario->Correr("INSERT INTO Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, "
                      "Pr_Cve_Producto, Pmd_Cantidad, Pmd_Costo, Pmd_Tipo_Gasto) VALUES ('0902', '0001', '000077', "
                      "'000080', '02', '9000000002', 0, 80.2, '9001')");
    const auto diferencias = qvx::LeerDiferencias(Base(), {});
    const auto refacciones = qvx::LeerSinGasto(Base(), {});
    QCOMPARE(refacciones.Propuestos(), (QStringList{"9001", "", "9001"}));
    const QStringList antes = escenario->Tablas();
    const QStringList primero = Lineas("Te_Cve_Tipo_Equipo = '0900'");
    const QStringList segundo = Lineas("Te_Cve_Tipo_Equipo = '0902'");
    const bool soloCostos = QString(QTest::currentDataTag()).contains("Pmd_ID = '000001'"); // of labour
    if (!soloCostos) {
        Averia averia(*escenario, QTest::currentDataTag());
        QVERIFY(!Completar(refacciones).isEmpty());
        averia.Reparar();
        QCOMPARE(escenario->Tablas(), antes);
    }
    Averia averia(*escenario, QTest::currentDataTag());
    const auto escritos = Actualizar(diferencias);
    QCOMPARE(escritos.hechos.join(' '), hechos);
    QCOMPARE(escritos.fallido, hechos.isEmpty() ? "0900" : "0902");
    averia.Reparar();
    QCOMPARE(Lineas("Te_Cve_Tipo_Equipo = '0902'"), segundo);
    QCOMPARE(Lineas("Te_Cve_Tipo_Equipo = '0900'") == primero, hechos.isEmpty());
    if (hechos.isEmpty())
        QCOMPARE(escenario->Tablas(), antes);
}

// What most lines of the product have, of what is on offer; nothing where two are first, or none is known.
void PrCostos::propuestas()
{
    Sembrar();
    const QString linea = "INSERT INTO Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, "
                          "Pmd_Tipo, Pr_Cve_Producto, Pmd_Tipo_Gasto) VALUES ('0902', '0001', '000077', '";
    const auto propuesto = [&] { return qvx::LeerSinGasto(Base(), {"0900"}).Propuestos().join('|'); };
    QCOMPARE(propuesto(), "9001|");
    for (const QString clave : {"000101", "000102"})
        escenario->Correr(linea + clave + "', '02', '9000000002', '9009')"); // retired
    QCOMPARE(propuesto(), "9001|");
    escenario->Correr(linea + "000103', '02', '9000000002', '9002')");
    QCOMPARE(propuesto(), "|");
    escenario->Correr(linea + "000104', '02', '9000000002', '9002')");
    QCOMPARE(propuesto(), "9002|");
    QCOMPARE(Completar(qvx::LeerSinGasto(Base(), {"0900"})), "");
    QCOMPARE(Lineas("Pmd_ID IN ('000002', '000005')"), (QStringList{"000002|80.1|120.15|9002", "000005|10|30|9009"}));
}

// From the menu, with keys: what is unticked stays as it is, and the screen's bar says what is left to do.
void PrCostos::ventanas()
{
    Sembrar();
    VentanaPrincipal principal(pantalla, "", "mlopez", "prueba");
    principal.show();
    QVERIFY(QTest::qWaitForWindowActive(&principal));
    auto &sugerencia = En<QLabel>(principal, "lblSugerencia");
    ElegirTipo("0900");
    QTRY_COMPARE(sugerencia.text(), "Hay 1 refacción sin tipo de gasto: Herramientas, Completar tipos de gasto…");
    escenario->Correr("UPDATE Plan_Mantenimiento SET Pm_Precio = 425 WHERE Pm_ID = '000001'"); // costs 420.65
    bool abierto = false;
    EnElDialogo([&](QWidget &dialogo) {
        abierto = true;
        auto &lista = En<QTreeView>(dialogo, "lvCostos");
        auto &total = En<QLabel>(dialogo, "lblTotal");
        QCOMPARE(lista.model()->rowCount(), 2);
        QVERIFY(total.text().contains("(+$30.20). PÉRDIDAS NUEVAS: 1 servicio."));
        lista.setCurrentIndex(lista.model()->index(0, 2));
        QTest::keyClick(&lista, Qt::Key_Space); // the labour
        QVERIFY(total.text().startsWith("Marcados: 1 renglón de 2, en 1 servicio. Importes: $120.15 → $120.30"));
        QVERIFY(!total.text().contains("PÉRDIDA"));
        En<QLineEdit>(dialogo, "txtBuscar").setText("mecanico");
        QVERIFY(total.text().endsWith("La búsqueda oculta 1 renglón."));
        QCOMPARE(lista.model()->rowCount(), 1);
        escenario->Personas().Responder(1000041, qvx::mensaje::Si);
        QTest::mouseClick(&En<QPushButton>(dialogo, "cmdActualizar"), Qt::LeftButton);
        QCOMPARE(Mensajes().size(), 1);
        QVERIFY(En<QLabel>(dialogo, "lblAviso").text().startsWith("Se actualizó 1 renglón del plan de: 0900."));
    });
    principal.findChild<QAction *>("mnuActualizarCostos")->trigger();
    QVERIFY(abierto);
    QCOMPARE(Lineas("Pm_ID = '000001'"), (QStringList{"000001|150.25|300.5|", "000002|80.2|120.3|", "000003|0|0|"}));
    EnElDialogo([&](QWidget &dialogo) {
        auto &lista = En<QTreeView>(dialogo, "lvGastos");
        QCOMPARE(lista.model()->rowCount(), 2);
        lista.setCurrentIndex(lista.model()->index(1, 0)); // nothing is proposed
        QTest::keyClicks(&En<QComboBox>(dialogo, "cboGasto"), "9002");
        escenario->Personas().Responder(1000044, qvx::mensaje::Si);
        QTest::mouseClick(&En<QPushButton>(dialogo, "cmdCompletar"), Qt::LeftButton);
        QCOMPARE(Mensajes().size(), 1);
        QCOMPARE(lista.model()->rowCount(), 0);
    });
    principal.findChild<QAction *>("mnuCompletarGastos")->trigger();
    QCOMPARE(Lineas("Pmd_ID IN ('000002', '000005')"), (QStringList{"000002|80.2|120.3|9001", "000005|10|30|9002"}));
    QTRY_COMPARE(sugerencia.text(), "Elija una parte para ver sus servicios.");
}

PRUEBA(PrCostos)
#include "pr_costos.moc"
