// Takes the pictures of the documents from the real screen, on the example plans: capturas FOLDER.

#include "app/DialogoEntrada.h"
#include "app/buscar/DialogoBuscar.h"
#include "app/catalogos/DialogoCostos.h"
#include "app/catalogos/DialogoGastos.h"
#include "app/catalogos/DialogoImportarCatalogo.h"
#include "app/catalogos/PaginaCatalogos.h"
#include "app/historial/PaginaHistorial.h"
#include "app/programa/PaginaPrograma.h"
#include "app/servicios/PaginaServicios.h"
#include "app/tipos/PaginaTipos.h"
#include "controls/Controles.h"
#include "controls/InteraccionQt.h"
#include "controls/ListView.h"
#include "controls/SSOleDBGrid.h"
#include "controls/TreeView.h"
#include "controls/colorQVX.h"
#include "controls/ssTbQvx.h"
#include "plan/LotesDeServicios.h"
#include "plan/MoverParte.h"
#include "support/Plan.h"

#include <QAction>
#include <QCursor>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <QTreeView>

using comunesQVX::ListView;
using comunesQVX::TreeView;

namespace
{

QDir carpeta;

void Guardar(QWidget &ventana, const QString &nombre)
{
    QCoreApplication::processEvents();
    if (!ventana.grab().save(carpeta.filePath(nombre + ".png")))
        qFatal("No se pudo guardar %s", qPrintable(nombre));
}

// Answers No to the next question with this identifier, after taking its picture from the host's own message box.
void RetratarPregunta(const Escenario &escenario, QWidget &pantalla, int identificador, const QString &nombre)
{
    escenario.Personas().Responder(identificador, qvx::mensaje::No, [&, nombre] {
        const QStringList partes = escenario.Personas().Tomar().constLast().split(QLatin1Char('|'));
        QTimer::singleShot(0, [nombre] {
            QWidget *caja = QApplication::activeModalWidget();
            Guardar(*caja, nombre);
            caja->close();
        });
        qvx::InteraccionQt().Mensaje(
            {partes.at(4), partes.at(0).toInt(), partes.at(1), pantalla.winId(), partes.at(2), partes.at(3), {}});
    });
}

// Renaming in the tree, and the two questions about parts.
void RetratarPartes(const Escenario &escenario, QWidget &pantalla)
{
    auto &arbol = escenario.De<TreeView>("tvPartes");
    auto &barra = escenario.De<QWidget>("Controles");
    pantalla.window()->activateWindow(); // after the last question, as a window manager does
    if (!QTest::qWaitForWindowActive(pantalla.window()))
        qFatal("La ventana no se activó");
    ElegirNodo(arbol, "N0010");
    QTest::keyClick(&arbol, Qt::Key_F2);
    Guardar(arbol, "renombrar");
    QTest::keyClick(arbol.viewport()->findChild<QLineEdit *>(), Qt::Key_Escape);

    ElegirNodo(arbol, "N0025");
    Guardar(pantalla, "baja");
    RetratarPregunta(escenario, pantalla, 7500045, "pregunta_reactivar");
    Pulsar(barra, "Reactivar");

    arbol.expandAll();
    escenario.Correr("DELETE FROM Plan_Mantenimiento WHERE Tep_ID = '0020'");
    ElegirNodo(arbol, "N0020");
    RetratarPregunta(escenario, pantalla, 7500046, "pregunta_eliminar");
    Pulsar(barra, "B1");
}

// A service over the part that it would be dropped on, the copy's search and question, the exchange as XML.
void RetratarPlan(const Escenario &escenario, QWidget &pantalla)
{
    auto &arbol = escenario.De<TreeView>("tvPartes");
    auto &barra = escenario.De<QWidget>("Controles");
    arbol.setDropHighlight(arbol.Item("N0008"));
    Guardar(pantalla, "arrastre");
    arbol.setDropHighlight(nullptr);

    EnElDialogo([](QWidget &catalogo) { Guardar(catalogo, "catalogo"); });
    qvx::InteraccionQt().BuscarEnCatalogo("TIPO_EQUIPO", 100, "", QFont(), &pantalla);
    escenario.Personas().Elegir("TIPO_EQUIPO", "0006");
    RetratarPregunta(escenario, pantalla, 7500049, "pregunta_copiar");
    Pulsar(barra, "B3");

    ElegirNodo(arbol, "N0024"); // retired: its extra buttons are the plan's
    Guardar(barra, "botones_xml");
    const QString archivo = QDir::tempPath() + "/PlanMantenimiento_0001.xml";
    escenario.Personas().DarArchivo(archivo);
    Pulsar(barra, "B1");
    escenario.Personas().Tomar();
    escenario.Personas().DarArchivo(archivo);
    RetratarPregunta(escenario, pantalla, 7500048, "pregunta_importar");
    Pulsar(barra, "B2");
    QFile::remove(archivo);
}

// The sign-in at a server, and one that was refused.
void RetratarEntrada()
{
    qvx::Servidor servidor("postgresql://mlopez@servidor.taller.example:5432/mantenimiento?sslmode=verify-full");
    const QList<QPair<QString, QString>> entradas{
        {"entrada", ""},
        {"entrada_rechazada", "connection to server at \"servidor.taller.example\" (192.0.2.7), port 5432 failed: "
                              "FATAL:  password authentication failed for user \"mlopez\""}};
    for (const auto &[nombre, motivo] : entradas) {
        DialogoEntrada dialogo(servidor, motivo);
        dialogo.show();
        if (!QTest::qWaitForWindowActive(&dialogo))
            qFatal("La ventana no se activó");
        Guardar(dialogo, nombre);
    }
}

// The lists of what a plan's lines have otherwise than the catalogue, after wages rose and a type's spare parts lost
// their expense types.
void RetratarCostos(const Escenario &escenario)
{
    for (const char *cambio :
         {"UPDATE Producto SET Pr_Costo_Estandar = Pr_Costo_Estandar * 1.2 WHERE Pr_Cve_Producto = '0000000003'",
          "UPDATE Producto SET Pr_Costo_Estandar = 0 WHERE Pr_Cve_Producto = '0000001062'",
          "UPDATE Plan_Mantenimiento SET Pm_Precio = (SELECT SUM(Pmd_Importe) + 5 FROM Plan_Mantenimiento_Detalle d "
          "WHERE d.Te_Cve_Tipo_Equipo = '0001' AND d.Pm_ID = '000011') WHERE Te_Cve_Tipo_Equipo = '0001' AND Pm_ID = "
          "'000011'",
          "UPDATE Plan_Mantenimiento_Detalle SET Pmd_Tipo_Gasto = '' WHERE Te_Cve_Tipo_Equipo = '0002'"})
        escenario.Correr(cambio);
    constexpr QSize Tamano{1280, 460};
    const auto retratar = [&](QDialog &dialogo, const QString &lista, const QString &nombre) {
        dialogo.resize(Tamano);
        dialogo.show();
        if (!QTest::qWaitForWindowActive(&dialogo))
            qFatal("La ventana no se activó");
        auto &renglones = En<QTreeView>(dialogo, lista);
        renglones.setCurrentIndex(renglones.model()->index(1, 0));
        Guardar(dialogo, nombre);
    };
    DialogoCostos costos("0001", nullptr);
    retratar(costos, "lvCostos", "actualizar_costos");
    DialogoGastos gastos("0002", nullptr);
    retratar(gastos, "lvGastos", "completar_gastos");
}

void RetratarTipos()
{
    PaginaTipos pagina(true);
    coloresQVX::colorQVX::AplicarA(pagina);
    pagina.resize(1366, 420);
    pagina.show();
    if (!QTest::qWaitForWindowActive(&pagina))
        qFatal("La ventana no se activó");
    QTest::qWait(200); // the figures
    Guardar(pagina, "tipos");
}

void RetratarBusqueda()
{
    DialogoBuscar dialogo("", nullptr);
    coloresQVX::colorQVX::AplicarA(dialogo);
    dialogo.show();
    if (!QTest::qWaitForWindowActive(&dialogo))
        qFatal("La ventana no se activó");
    QTest::keyClicks(&En<QLineEdit>(dialogo, "txtBuscar"), "aceite hidraulico");
    QTest::qWait(800); // services and products too
    Guardar(dialogo, "buscar");
}

// The page of the catalogues, a row of it, where it is used, and what a spreadsheet would make of it.
void RetratarCatalogos()
{
    PaginaCatalogos pagina;
    coloresQVX::colorQVX::AplicarA(pagina);
    pagina.resize(1180, 620);
    pagina.show();
    if (!QTest::qWaitForWindowActive(&pagina))
        qFatal("La ventana no se activó");
    En<QListWidget>(pagina, "lstCatalogos").setCurrentRow(1);
    QTest::keyClicks(&En<QLineEdit>(pagina, "txtBuscar"), "iso aceite");
    Guardar(pagina, "catalogos");
    const QList<QPair<QString, QString>> dialogos{{"accEditar", "registro"}, {"accUsos", "usos"}};
    for (const auto &[accion, nombre] : dialogos) {
        EnElDialogo([nombre = nombre](QWidget &dialogo) { Guardar(dialogo, nombre); });
        En<QAction>(pagina, accion).trigger();
    }
    DialogoImportarCatalogo hoja(nullptr, *qvx::TablaDeCatalogoPorNombre("Producto"),
                                 "Clave\tDescripción\tClase\tUnidad\tCosto\n1001\tACEITE HIDRÁULICO ISO VG 46\tRE\tLT\t"
                                 "71.20\n1001500\tBANDA DENTADA\tRE\tPZA\t245.50\n1001501\tBUJE DE BRONCE\tRE\tPIEZA\t"
                                 "38.75\n1005\tACEITE PARA REDUCTOR ISO VG 220\tRE\tLT\t96.1875\n",
                                 "Lo copiado de una hoja de cálculo");
    hoja.show();
    if (!QTest::qWaitForWindowActive(&hoja))
        qFatal("La ventana no se activó");
    Guardar(hoja, "importar_catalogo");
}

// All services of a plan, and what would become of those of a part that are moved.
void RetratarServicios()
{
    PaginaServicios pagina;
    coloresQVX::colorQVX::AplicarA(pagina);
    pagina.PonerTipo("0001");
    pagina.resize(1280, 700);
    pagina.show();
    if (!QTest::qWaitForWindowActive(&pagina))
        qFatal("La ventana no se activó");
    auto &partes = En<QTreeView>(pagina, "tvPartesDelPlan");
    partes.setCurrentIndex(partes.model()->index(0, 0, partes.model()->index(0, 0)));
    auto &tabla = En<QTreeView>(pagina, "lvServiciosDelPlan");
    tabla.selectAll();
    Guardar(pagina, "servicios");
    EnElDialogo([](QWidget &dialogo) {
        auto &destinos = En<QTreeView>(dialogo, "lvDestinos");
        destinos.setCurrentIndex(destinos.model()->index(1, 0));
        Guardar(dialogo, "mover_servicios");
    });
    En<QAction>(pagina, "accMoverServicios").trigger();
}

// What was done to a plan, and what one of the operations changed.
void RetratarHistorial()
{
    auto &base = qvx::Sesion::Actual().Conexion();
    const auto quien = qvx::Sesion::Actual().Firmante();
    const auto leer = [&] { return lectura::LeerPlan(base, "0002"); };
    const lectura::Plan plan = leer();
    qvx::MoverServicios(base, quien, {{plan.servicios.at(1).leido, "0005"}, {plan.servicios.at(2).leido, "0005"}});
    qvx::CambioDeServicio cambio{leer().servicios.at(4).leido, {}, {}};
    cambio.antes = {"0001", "0001", 365, 0, "", 0};
    cambio.despues = cambio.antes;
    cambio.despues.dias = 180;
    qvx::CambiarServicios(base, quien, {cambio});
    qvx::EliminarServicios(base, quien, {leer().servicios.at(6).leido});
    qvx::MoverParte(base, quien, {"0002", "0004", leer().arbol.Buscar("0004")->sello, "0001"});
    PaginaHistorial pagina;
    coloresQVX::colorQVX::AplicarA(pagina);
    pagina.resize(1280, 700);
    pagina.show();
    if (!QTest::qWaitForWindowActive(&pagina))
        qFatal("La ventana no se activó");
    auto &lista = En<QTreeView>(pagina, "lvOperaciones");
    lista.setCurrentIndex(lista.model()->index(2, 0));
    QTest::qWait(500); // the detail is read by a timer
    Guardar(pagina, "historial");
}

// The year of the forklifts: its dates, its load, and a job sheet as it will be printed.
void RetratarPrograma()
{
    qvx::DatosDePrograma datos;
    datos.tipoEquipo = "0001";
    datos.diaCero = QDate(2026, 12, 31);
    datos.usos = {{"HR", {8, 0}}, {"KM", {12, 0}}};
    datos.equipos = 4;
    datos.descanso = qvx::DatosDePrograma::Descanso::SabadoYDomingo;
    for (int mes = 1; mes <= 12; ++mes)
        datos.capacidad[mes] = mes == 7 || mes == 12 ? 40 : 80;
    auto &sesion = qvx::Sesion::Actual();
    qvx::GuardarDatosDePrograma(sesion.Conexion(), sesion.Firmante(), datos);
    PaginaPrograma pagina("quorvex.db");
    coloresQVX::colorQVX::AplicarA(pagina);
    pagina.PonerTipo("0001");
    pagina.resize(1366, 700);
    pagina.show();
    if (!QTest::qWaitForWindowActive(&pagina))
        qFatal("La ventana no se activó");
    Guardar(pagina, "programa");
    En<QTabWidget>(pagina, "tabPrograma").setCurrentIndex(1);
    Guardar(pagina, "carga");
    EnElDialogo([](QWidget &dialogo) {
        // Its own progress is a dialog over it at first.
        QTimer espera;
        QObject::connect(&espera, &QTimer::timeout, &dialogo, [&] {
            QWidget *vista = QApplication::activeModalWidget();
            if (!vista || vista->objectName() != "VistaPrevia")
                return;
            espera.stop();
            QTest::qWait(500); // it lays its pages out by a timer
            Guardar(*vista, "hoja_de_trabajo");
            vista->close();
        });
        espera.start(200);
        En<QPushButton>(dialogo, "cmdVistaPrevia").click();
        dialogo.close();
    });
    En<QAction>(pagina, "accImprimirHojas").trigger();
}

} // namespace

int main(int argc, char **argv)
{
    qvx::Aplicacion aplicacion(argc, argv);
    if (argc != 2 || !QDir().mkpath(QString::fromLocal8Bit(argv[1])))
        qFatal("Uso: capturas CARPETA");
    carpeta.setPath(QString::fromLocal8Bit(argv[1]));

    QCursor::setPos(640, 740); // over no button
    RetratarEntrada();
    Escenario escenario(true);
    QWidget &pantalla = escenario.Pantalla("0001");
    auto &arbol = escenario.De<TreeView>("tvPartes");
    auto &lista = escenario.De<ListView>("lvServicios");
    arbol.expandAll();
    const QString parte = "N"
                          + escenario
                                .Correr("SELECT Tep_ID FROM Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = '0001' "
                                        "GROUP BY Tep_ID ORDER BY count(*) DESC LIMIT 1")
                                .toString();
    ElegirNodo(arbol, parte);
    QTest::mouseClick(lista.viewport(), Qt::LeftButton, {}, lista.visualItemRect(lista.topLevelItem(2)).center());
    Guardar(*pantalla.window(), "pantalla");

    EnElDialogo([&](QWidget &editor) {
        auto &fichas = En<ssTabQvx::ssTbQvx>(editor, "ssTabQvx");
        const char *nombres[] = {"servicio", "mano_de_obra", "refacciones", "herramientas_y_costos"};
        for (int pagina = 0; pagina < 4; ++pagina) {
            fichas.setTab(pagina);
            Guardar(editor, nombres[pagina]);
        }
    });
    QTest::keyClick(&lista, Qt::Key_Return);

    EnElDialogo([&](QWidget &dialogo) { Guardar(dialogo, "parte"); });
    Pulsar(escenario.De<QWidget>("Controles"), "Nuevo");

    RetratarPlan(escenario, pantalla);
    RetratarPartes(escenario, pantalla);
    escenario.CerrarPantalla();
    RetratarTipos();
    RetratarServicios();
    RetratarHistorial();
    RetratarPrograma();
    RetratarBusqueda();
    RetratarCatalogos();
    RetratarCostos(escenario);
    return 0;
}
