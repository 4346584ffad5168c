#include "app/Argumentos.h"
#include "app/VentanaPrincipal.h"
#include "app/comparar/TextoDeComparacion.h"
#include "app/historial/CambioDeOperacion.h"
#include "app/historial/DialogoDeshacer.h"
#include "app/historial/TextosDeHistorial.h"
#include "app/lectura/PlanLeido.h"
#include "plan/Costos.h"
#include "plan/Gastos.h"
#include "plan/Integridad.h"
#include "plan/LotesDeServicios.h"
#include "plan/MoverParte.h"
#include "plan/Usos.h"
#include "support/Cluster.h"
#include "support/Procesos.h"
#include "support/PruebaPantalla.h"

#include <QAction>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeView>

using qvx::Sesion;

// What the desk shows of the history, and takes back.
class PrHistorial : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void nombres();
    void contexto();
    void pagina();
    void deLoElegido();
    void teclas();
    void opciones();
    void entretanto();
    void lectores();
    void malUso_data();
    void malUso();
    void sinVentana();

private:
    static qvx::Conexion &Base() { return Sesion::Actual().Conexion(); }
    static qvx::Operacion Ultima() { return qvx::LeerOperaciones(Base(), {}).value(0); }
    static lectura::Plan Leer() { return lectura::LeerPlan(Base(), "0900"); }
    static QStringList Celdas(const QWidget &pagina, int columna);
    static QStringList Dicho(const QString &tipo, qint64 numero);
    std::unique_ptr<VentanaPrincipal> Abrir(const QString &orden = {});
    QString Descripcion(const QString &parte) const
    {
        return escenario
            ->Filas("SELECT Tep_Descripcion FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' AND "
                    "Tep_ID = '"
                    + parte + "'")
            .value(0);
    }
};

std::unique_ptr<VentanaPrincipal> PrHistorial::Abrir(const QString &orden)
{
    auto principal = std::make_unique<VentanaPrincipal>(pantalla, "", Sesion::Actual().Operador(), "prueba");
    principal->resize(1300, 740);
    principal->show();
    if (!QTest::qWaitForWindowActive(principal.get()))
        qFatal("La ventana no se activó");
    ElegirTipo("0900");
    if (!orden.isEmpty())
        En<QAction>(*principal, orden).trigger();
    return principal;
}

QStringList PrHistorial::Celdas(const QWidget &pagina, int columna)
{
    const auto &modelo = *En<QTreeView>(pagina, "lvOperaciones").model();
    QStringList celdas;
    for (int fila = 0; fila < modelo.rowCount(); ++fila)
        celdas.append(modelo.index(fila, columna).data().toString());
    return celdas;
}

QStringList PrHistorial::Dicho(const QString &tipo, qint64 numero)
{
    QStringList renglones = comparar::Renglones(historial::LoQueHicieron(Base(), tipo, {numero}).comparacion);
    for (QString &renglon : renglones)
        renglon = renglon.trimmed();
    return renglones;
}

// What the desk does to many rows at once bears the words that a planner knows it by.
void PrHistorial::nombres()
{
    const auto quien = Sesion::Actual().Firmante();
    const auto leido = [](int servicio) { return Leer().servicios.at(servicio).leido; };
    const auto dicha = [] { return Ultima().clase + ": " + Ultima().detalle; };
    qvx::MoverServicios(Base(), quien, {{leido(0), "0005"}, {leido(1), "0005"}});
    QCOMPARE(dicha(), "Servicios movidos: 2 servicios a la parte 0005 MOTOR");
    qvx::DuplicarServicios(Base(), quien, {{leido(0), "0002"}});
    QCOMPARE(dicha(), "Servicio duplicado: Servicio 000001, copiado al folio 000004");
    qvx::CambioDeServicio cambio{leido(0), {"9001", "9001", 30, 0, "", 1000}, {"9001", "9001", 60, 0, "", 1500}};
    qvx::CambiarServicios(Base(), quien, {cambio});
    QCOMPARE(dicha(), "Servicio cambiado: Servicio 000001: días, precio");
    qvx::EliminarServicios(Base(), quien, {leido(0), leido(1)});
    QCOMPARE(dicha(), "Servicios eliminados: 2 servicios de la parte 0005 MOTOR");
    qvx::MoverParte(Base(), quien, {"0900", "0002", Leer().arbol.Buscar("0002")->sello, "0000"});
    QCOMPARE(dicha(), "Parte movida: Parte 0002 a la raíz");
    qvx::CorregirSueltos(Base(), quien, {{{qvx::Suelto::Clase::Parte, "0900", "0006", {}, {}}, {}}});
    QCOMPARE(dicha(), "Integridad corregida: 1 parte");
    const auto *productos = qvx::TablaDeCatalogoPorNombre("Producto");
    const auto todos = qvx::LeerSituacion(Base(), *productos, {"9000000002", "9000000004"}).registros;
    qvx::Reemplazar(Base(), quien, *productos, todos.value("9000000002"), todos.value("9000000004"),
                    qvx::UsosDe(Base(), *productos, "9000000002"));
    QCOMPARE(dicha(), "Clave reemplazada: 9000000002 SELLO por 9000000004 JUNTA, en 1 uso");
    const auto costos = qvx::LeerDiferencias(Base(), {"0900"});
    QVERIFY(qvx::ActualizarCostos(Base(), quien, costos, QList<bool>(costos.lineas.size(), true)).fallido.isEmpty());
    QCOMPARE(dicha(), "Costos actualizados: 1 renglón");
    escenario->Correr("UPDATE Plan_Mantenimiento_Detalle SET Pmd_Tipo_Gasto = '' WHERE Te_Cve_Tipo_Equipo = '0900'");
    const auto gastos = qvx::LeerSinGasto(Base(), {"0900"});
    qvx::CompletarGastos(Base(), quien, gastos, QStringList(gastos.lineas.size(), "9001"));
    QCOMPARE(dicha(), "Tipos de gasto completados: 1 refacción");
}

// Of lines alone the service and the part that they are of are named, also when these are gone by now; a plan that was
// imported anew has other services under the old folios.
void PrHistorial::contexto()
{
    Base().Execute("UPDATE Plan_Mantenimiento_Detalle SET Pmd_Cantidad = ? WHERE Te_Cve_Tipo_Equipo = ? AND Pmd_ID = ?",
                   {7, "0900", "000001"});
    const qint64 cambio = Ultima().numero;
    const QStringList esperado{"Parte 0002 IMPULSOR", "Servicio 000001 REVISIÓN",
                               "Mano de obra MECÁNICO (9000000001): cambia", "Cantidad: «2» → «7»"};
    QCOMPARE(Dicho("0900", cambio), esperado);
    Exportar(escenario->Ruta("plan.xml"));
    EliminarServicio("N0002", "000001");
    EliminarServicio("N0002", "000002");
    Mandar("N0002", "B1", 7500047);
    QCOMPARE(Dicho("0900", cambio), esperado);
    NuevoServicio("N0005", "10"); // not of the document
    Importar(escenario->Ruta("plan.xml"));
    Mensajes();
    QCOMPARE(Ultima().clase, "Importación");
    for (const QString &renglon : Dicho("0900", Ultima().numero))
        QVERIFY2(!renglon.startsWith("Parte: «"), qPrintable(renglon)); // no service has moved
}

// Everything that was done, by whom, and what it changed; filters leave the rest out, and what is chosen stays.
void PrHistorial::pagina()
{
    GuardarParte("N0005", "Nuevo", "FLECHA");
    CambiarServicio("N0002", "000001", "1099.95");
    escenario->Correr("UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'OTRA' WHERE Te_Cve_Tipo_Equipo = '0902'");
    Mensajes();
    const auto principal = Abrir("mnuPaginaHistorial");
    const auto &pagina = En<QWidget>(*principal, "PaginaHistorial");
    auto &cuenta = En<QLabel>(pagina, "lblCuentaDeOperaciones");
    const auto clases = [&] { return Celdas(pagina, 3).mid(0, 3).join('|'); };
    const QString todas = "Fuera de Quorvex|Servicio cambiado|Parte nueva";
    QTRY_COMPARE(clases(), todas);
    const int cuantas = static_cast<int>(Celdas(pagina, 0).size());
    QCOMPARE(Celdas(pagina, 2).mid(0, 2),
             (QStringList{motor::Segun("(desconocido)", "postgres"), Sesion::Actual().Operador()}));
    QTRY_VERIFY(En<QLabel>(pagina, "lblTamanoDeHistoria").text().contains(" ocupa "));

    auto &lista = En<QTreeView>(pagina, "lvOperaciones");
    auto &detalle = *En<QTreeView>(pagina, "lvComparacion").model();
    lista.setCurrentIndex(lista.model()->index(1, 0));
    const auto abajo = [&](const QModelIndex &padre) { return detalle.index(0, 0, padre); };
    QTRY_COMPARE(abajo({}).data().toString(), "Parte 0002 IMPULSOR");
    const QModelIndex campo = abajo(abajo(abajo({})));
    QCOMPARE(campo.data().toString() + campo.siblingAtColumn(2).data().toString() + '>'
                 + campo.siblingAtColumn(3).data().toString(),
             "Precio1,000>1,099.95");

    QTest::keyClicks(&En<QLineEdit>(pagina, "txtBuscarOperaciones"), "cambiado 000001");
    QCOMPARE(clases(), "Servicio cambiado");
    QCOMPARE(cuenta.text(), QString("1 de %1").arg(cuantas));
    En<QLineEdit>(pagina, "txtBuscarOperaciones").clear();
    QCOMPARE(lista.currentIndex().row(), 1);

    auto &persona = En<QComboBox>(pagina, "cboPersonaDelHistorial");
    persona.setCurrentIndex(persona.findText(motor::Segun("(desconocido)", "postgres")));
    QTRY_VERIFY(!Celdas(pagina, 2).contains(Sesion::Actual().Operador()));
    QCOMPARE(Celdas(pagina, 3).value(0), "Fuera de Quorvex");
    persona.setCurrentIndex(0);
    auto &plan = En<QComboBox>(pagina, "cboPlanDelHistorial");
    QVERIFY(!En<QLineEdit>(pagina, "txtParteDelHistorial").isEnabled());
    plan.setCurrentIndex(plan.findData("0902"));
    QTRY_COMPARE(Celdas(pagina, 5).value(0), "0902");
    plan.setCurrentIndex(plan.findData("0900"));
    En<QLineEdit>(pagina, "txtFolioDelHistorial").setText("1");
    QTRY_COMPARE(Celdas(pagina, 3).value(0), "Servicio cambiado");
    QVERIFY(!Celdas(pagina, 3).contains("Parte nueva"));
    En<QLineEdit>(pagina, "txtFolioDelHistorial").clear();
    plan.setCurrentIndex(0);
    auto &periodo = En<QComboBox>(pagina, "cboPeriodoDelHistorial");
    periodo.setCurrentIndex(4);
    auto &hasta = En<QDateEdit>(pagina, "fecHastaDelHistorial");
    const QDate dia = QDate::fromString(Ultima().fecha.left(10), Qt::ISODate);
    En<QDateEdit>(pagina, "fecDesdeDelHistorial").setDate(dia.addDays(-9));
    hasta.setDate(dia.addDays(-1));
    QTRY_COMPARE(cuenta.text(), "0 operaciones");
    QVERIFY(!En<QPushButton>(pagina, "cmdDeshacerOperacion").isEnabled());
    hasta.setDate(dia);
    QTRY_COMPARE(clases(), todas);

    // From the page, an undo and its way back.
    lista.setCurrentIndex(lista.model()->index(2, 0));
    const QString numero = Celdas(pagina, 0).at(2);
    const auto aceptar = [](QWidget &dialogo) { En<QPushButton>(dialogo, "cmdAceptar").click(); };
    EnElDialogo(aceptar);
    En<QPushButton>(pagina, "cmdDeshacerOperacion").click();
    QCOMPARE(Descripcion("0007"), "");
    QCOMPARE(Celdas(pagina, 9).mid(0, 4),
             (QStringList{"Deshace " + numero, "", "", "Deshecha por " + QString::number(Ultima().numero)}));
    QCOMPARE(En<QPushButton>(pagina, "cmdDeshacerOperacion").text(), "&Rehacer lo que deshizo…");
    EnElDialogo(aceptar);
    En<QPushButton>(pagina, "cmdDeshacerOperacion").click();
    QCOMPARE(Descripcion("0007"), "FLECHA");
    lista.setCurrentIndex(lista.model()->index(3, 0));
    EnElDialogo(aceptar);
    En<QPushButton>(pagina, "cmdDejarComoAntes").click();
    QCOMPARE(Descripcion("0007"), "FLECHA");
    QCOMPARE(escenario->Filas("SELECT Pm_Precio FROM Plan_Mantenimiento WHERE Pm_ID = '000001'"), QStringList{"1000"});
    En<QAction>(*principal, "mnuPagina1").trigger();
    QVERIFY(Arbol().Contains("N0007"));
}

// From the screen's tree and list, and from the page of services.
void PrHistorial::deLoElegido()
{
    CambiarServicio("N0002", "000001", "1099.95");
    GuardarParte("N0005", "Editar", "MOTOR DOS");
    Mensajes();
    const auto principal = Abrir();
    const auto historial = [&](const QString &orden) {
        En<QAction>(*principal, orden).trigger();
        const auto &pagina = En<QWidget>(*principal, "PaginaHistorial");
        return Celdas(pagina, 3).value(0) + '/' + En<QLineEdit>(pagina, "txtParteDelHistorial").text() + '/'
               + En<QLineEdit>(pagina, "txtFolioDelHistorial").text();
    };
    En<QAction>(*principal, "mnuHistorialDeParte").trigger();
    QVERIFY(Mensajes().join(' ').contains("Elija primero una parte"));
    QVERIFY(principal->MostrarEnPlan("0900", "0002", "000001"));
    QCOMPARE(historial("mnuHistorialDeServicio"), "Servicio cambiado//000001");
    En<QAction>(*principal, "mnuPagina1").trigger();
    ElegirNodo(Arbol(), "N0005");
    QCOMPARE(historial("mnuHistorialDeParte"), "Parte cambiada/0005/");
    En<QAction>(*principal, "mnuPaginaServicios").trigger();
    auto &tabla = En<QTreeView>(*principal, "lvServiciosDelPlan");
    tabla.setCurrentIndex(tabla.model()->index(0, 0));
    QCOMPARE(historial("accHistorialDeServicio"), "Servicio cambiado//000001");
    En<QAction>(*principal, "mnuPaginaServicios").trigger();
    QCOMPARE(historial("mnuHistorialDeServicio"), "Servicio cambiado//000001");
}

// The last thing that one did, with what it changes shown first; in a box the keys are the text's.
void PrHistorial::teclas()
{
    const auto principal = Abrir();
    GuardarParte("N0005", "Editar", "MOTOR DOS");
    escenario->Correr("UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'DE OTRO' WHERE Tep_ID = '0001' AND "
                      "Te_Cve_Tipo_Equipo = '0900'");
    Mensajes();
    const auto pulsar = [&](QWidget &donde, Qt::Key tecla) {
        principal->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(principal.get()));
        donde.setFocus();
        QTest::keyClick(&donde, tecla, Qt::ControlModifier);
    };
    QString dicho;
    const auto aceptar = [&](QWidget &dialogo) {
        dicho = En<QLabel>(dialogo, "lblExplicacion").text() + En<QLabel>(dialogo, "lblResumenDeDeshacer").text();
        QCOMPARE(Descripcion("0005"), dicho.startsWith("Se deshace") ? "MOTOR DOS" : "MOTOR"); // only rehearsed
        En<QPushButton>(dialogo, "cmdAceptar").click();
    };
    EnElDialogo(aceptar);
    pulsar(Arbol(), Qt::Key_Z);
    QVERIFY2(dicho.contains("«Parte cambiada», Parte 0005")
                 && dicho.contains("Cambia el plan del tipo de equipo 0900."),
             qPrintable(dicho));
    QCOMPARE(Descripcion("0005") + Arbol().Item("N0005")->Text(), "MOTOR0005 - MOTOR");
    pulsar(Arbol(), Qt::Key_Z); // what others did is not mine
    QVERIFY(Mensajes().join(' ').contains("ERR-ID:1000165|No hay nada suyo que deshacer"));
    EnElDialogo(aceptar);
    pulsar(Arbol(), Qt::Key_Y);
    QCOMPARE(Descripcion("0005") + Arbol().Item("N0005")->Text(), "MOTOR DOS0005 - MOTOR DOS");
    pulsar(Arbol(), Qt::Key_Y);
    QVERIFY(Mensajes().join(' ').contains("ERR-ID:1000165|No hay nada suyo que rehacer"));

    const qint64 ultima = Ultima().numero;
    En<QAction>(*principal, "mnuPaginaServicios").trigger();
    auto &caja = En<QLineEdit>(*principal, "txtBuscarServicios");
    caja.setFocus();
    QTest::keyClicks(&caja, "abc");
    pulsar(caja, Qt::Key_Z);
    QCOMPARE(caja.text(), "");
    pulsar(caja, Qt::Key_Y);
    QCOMPARE(caja.text(), "abc");
    // A label that is being written, and a form that is open.
    En<QAction>(*principal, "mnuPagina1").trigger();
    ElegirNodo(Arbol(), "N0005");
    Arbol().setFocus();
    Arbol().editItem(Arbol().Item("N0005"));
    QTRY_VERIFY(qobject_cast<QLineEdit *>(QApplication::focusWidget()));
    En<QAction>(*principal, "mnuDeshacerOperacion").trigger();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EnLaParte("N0002", "Editar", [&](QWidget &) { En<QAction>(*principal, "mnuDeshacerOperacion").trigger(); });
    Base().BeginTrans();
    En<QAction>(*principal, "mnuDeshacerOperacion").trigger();
    Base().RollbackTrans();
    QCOMPARE(Ultima().numero, ultima);
    QCOMPARE(Mensajes(), QStringList());
}

// What is in the way, and the ways around it: nothing is done before one of them is chosen and was shown.
void PrHistorial::opciones()
{
    GuardarParte("N0005", "Nuevo", "FLECHA");
    GuardarParte("N0007", "Editar", "FLECHA DOS");
    const qint64 cambio = Ultima().numero;
    GuardarParte("N0007", "Editar", "FLECHA TRES");
    Mandar("N0007", "B1", 7500047);
    const qint64 eliminada = Ultima().numero;
    GuardarParte("N0001", "Nuevo", "CUÑA");
    Mensajes();
    const QStringList antes = escenario->Tablas();
    DialogoDeshacer otraClave({historial::Peticion::Que::Deshacer, eliminada, {}}, nullptr);
    otraClave.show();
    auto &opcion = En<QRadioButton>(otraClave, "optOtraClave");
    QVERIFY(opcion.isVisible() && !En<QPushButton>(otraClave, "cmdAceptar").isEnabled());
    QCOMPARE(En<QListWidget>(otraClave, "lvReparos").count(), 1);
    opcion.setChecked(true);
    QVERIFY(En<QLabel>(otraClave, "lblResumenDeDeshacer").text().contains("Parte 0007: ahora 0008"));
    QCOMPARE(escenario->Tablas(), antes);
    En<QPushButton>(otraClave, "cmdAceptar").click();
    QCOMPARE(Descripcion("0007") + '/' + Descripcion("0008"), "CUÑA/FLECHA TRES");

    DialogoDeshacer posteriores({historial::Peticion::Que::Deshacer, cambio, {}}, nullptr);
    posteriores.show();
    QVERIFY(En<QListWidget>(posteriores, "lvReparos").isVisible());
    auto &tambien = En<QRadioButton>(posteriores, "optPosteriores");
    QVERIFY(tambien.isVisible());
    tambien.setChecked(true);
    QVERIFY(En<QPushButton>(posteriores, "cmdAceptar").isEnabled());
    QVERIFY(En<QLabel>(posteriores, "lblResumenDeDeshacer").text().contains("Se deshacen "));
    En<QPushButton>(posteriores, "cmdAceptar").click();
    QCOMPARE(Descripcion("0007") + '/' + Descripcion("0008"), "FLECHA/");
}

// What somebody does while the preview is looked at is not taken along unseen.
void PrHistorial::entretanto()
{
    GuardarParte("N0005", "Editar", "UNO");
    const qint64 cambio = Ultima().numero;
    GuardarParte("N0005", "Editar", "DOS");
    Mensajes();
    const QString deOtro = "UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = '%1' WHERE Tep_ID = '0005' AND "
                           "Te_Cve_Tipo_Equipo = '0900'";
    DialogoDeshacer posteriores({historial::Peticion::Que::Deshacer, cambio, {}}, nullptr);
    posteriores.show();
    En<QRadioButton>(posteriores, "optPosteriores").setChecked(true);
    escenario->Correr(deOtro.arg("DE OTRO"));
    En<QPushButton>(posteriores, "cmdAceptar").click();
    QVERIFY(posteriores.isVisible() && En<QListWidget>(posteriores, "lvReparos").isVisible());
    QCOMPARE(Descripcion("0005"), "DE OTRO");

    DialogoDeshacer todo({historial::Peticion::Que::DejarComoAntes, cambio, "0900"}, nullptr);
    todo.show();
    if (!motor::EsPostgres())
        QTest::qWait(1100); // the next second is another operation
    escenario->Correr(deOtro.arg("OTRA VEZ"));
    En<QPushButton>(todo, "cmdAceptar").click();
    QVERIFY(Mensajes().join(' ').contains("Mientras tanto se cambió el plan otra vez."));
    QCOMPARE(Descripcion("0005"), "OTRA VEZ");
    En<QPushButton>(todo, "cmdAceptar").click(); // now that it was seen
    QCOMPARE(Descripcion("0005"), "MOTOR");
}

// Whoever may only look is offered nothing else.
void PrHistorial::lectores()
{
    GuardarParte("N0005", "Editar", "UNO");
    Mensajes();
    escenario->Correr("DROP VIEW Derecho"); // and those of a reader in its place
    escenario->Correr("CREATE VIEW Derecho AS SELECT 0 AS De_Planes, 0 AS De_Catalogos");
    if (motor::EsPostgres())
        escenario->Correr("GRANT SELECT ON Derecho TO PUBLIC");
    const auto principal = Abrir();
    auto &deshacer = En<QAction>(*principal, "mnuDeshacerOperacion");
    Q_EMIT En<QMenu>(*principal, "mnuEdicion").aboutToShow();
    QVERIFY(!deshacer.isEnabled() && !En<QAction>(*principal, "mnuRehacerOperacion").isEnabled());
    En<QAction>(*principal, "mnuPaginaHistorial").trigger();
    QTRY_VERIFY(!Celdas(*principal, 0).isEmpty());
    QVERIFY(!En<QPushButton>(*principal, "cmdDeshacerOperacion").isEnabled());
    QVERIFY(!En<QPushButton>(*principal, "cmdDejarComoAntes").isEnabled());
}

void PrHistorial::malUso_data()
{
    const Tabla<QString, bool> fila("orden", "vale");
    fila("todo", "--historial", true);
    fila("de un plan", "--historial 900 --operacion 3", true);
    fila("dos planes", "--historial 900 901", false);
    fila("operación sola", "--operacion 3", false);
    fila("sin número", "--deshacer", false);
    fila("que no lo es", "--deshacer 3x", false);
    fila("cero", "--rehacer 0 --si", false);
    fila("de más", "--deshacer 3 4", false);
    fila("si de más", "--historial --si", false);
    fila("las dos", "--deshacer 3 --rehacer 4", false);
    fila("con otra", "--historial --revisar", false);
    fila("con importar", "--deshacer 3 --importar x.xml", false);
    fila("rehacer", "--rehacer 3 --si", true);
    fila("depurar", "--historial-depurar 90", true);
    fila("depurar nada", "--historial-depurar 0", false);
}

void PrHistorial::malUso()
{
    QFETCH(const QString, orden);
    QFETCH(const bool, vale);
    const auto argumentos = Argumentos::Leer(("quorvex " + orden).split(' '));
    QVERIFY2(argumentos.error.isEmpty() == vale, qPrintable(argumentos.error));
}

void PrHistorial::sinVentana()
{
    GuardarParte("N0005", "Editar", "UNO");
    const qint64 cambio = Ultima().numero;
    GuardarParte("N0005", "Editar", "DOS");
    Mensajes();
    const QStringList tablas = escenario->Tablas();
    const auto correr = [&](const QString &orden) {
        return Quorvex(
            QString(orden).replace("%1", QString::number(cambio)).replace("%2", QString::number(cambio + 1)).split(' ')
            + escenario->Base().Argumentos());
    };
    QString dicho = correr("--historial 900");
    QVERIFY2(dicho.startsWith("0") && dicho.contains("Parte cambiada  ") && dicho.contains(" ocupa "),
             qPrintable(dicho));
    dicho = correr("--historial --operacion %1");
    QVERIFY2(dicho.contains("Parte 0005 UNO: cambia") && dicho.contains("«MOTOR» → «UNO»"), qPrintable(dicho));
    QVERIFY(correr("--historial 902 --operacion %1").startsWith("1"));
    dicho = correr("--deshacer %1");
    QVERIFY2(dicho.startsWith("1") && dicho.contains("La parte 0005 del tipo de equipo 0900 cambió después"),
             qPrintable(dicho));
    dicho = correr("--deshacer %2");
    QVERIFY2(dicho.startsWith("0") && dicho.contains("«DOS» → «UNO»") && dicho.contains("dé también --si"),
             qPrintable(dicho));
    QVERIFY(correr("--deshacer %1 --si").startsWith("1"));
    QVERIFY(correr("--rehacer %2").startsWith("1"));
    QCOMPARE(escenario->Tablas(), tablas);
    dicho = correr("--deshacer %2 --si");
    QVERIFY2(dicho.startsWith("0") && dicho.contains("Hecho: es la operación"), qPrintable(dicho));
    QCOMPARE(Descripcion("0005"), "UNO");
    QVERIFY(correr("--deshacer %2 --si").startsWith("1")); // it is already
    QVERIFY(correr("--rehacer " + QString::number(Ultima().numero) + " --si").startsWith("0"));
    QCOMPARE(Descripcion("0005"), "DOS");
    // On a server nobody but its owner deletes.
    if (!motor::EsPostgres())
        escenario->Correr("DROP TRIGGER Op_Fija");
    escenario->Correr("UPDATE Operacion SET Op_Fecha = '2020-01-01 00:00:00' WHERE Op_ID <= "
                      + QString::number(cambio));
    const auto cuantas = qvx::LeerOperaciones(Base(), {}).size();
    dicho = correr("--historial-depurar 90");
    if (motor::EsPostgres()) {
        QVERIFY2(dicho.startsWith("1") && dicho.contains("no tiene permiso"), qPrintable(dicho));
        QCOMPARE(qvx::LeerOperaciones(Base(), {}).size(), cuantas);
        dicho = Quorvex(
            {"--historial-depurar", "90", "--servidor", cluster::Direccion("postgres", escenario->Base().Archivo())});
    }
    QVERIFY2(dicho.startsWith("0") && dicho.contains("Se borraron de la historia ") && dicho.contains(" ocupa "),
             qPrintable(dicho));
    QVERIFY(qvx::LeerOperaciones(Base(), {}).size() < cuantas);
    QCOMPARE(qvx::LeerOperaciones(Base(), {}).constLast().numero, cambio + 1);
    QVERIFY(correr("--deshacer %1").startsWith("1"));
}

PRUEBA(PrHistorial)
#include "pr_historial.moc"
