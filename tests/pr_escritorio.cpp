#include "app/Acceso.h"
#include "app/Ajustes.h"
#include "app/Escritorio.h"
#include "app/InteraccionDelEscritorio.h"
#include "app/Paginas.h"
#include "app/VentanaDelManual.h"
#include "app/VentanaPrincipal.h"
#include "app/VentanaSinBase.h"
#include "app/buscar/DialogoBuscar.h"
#include "controls/VistaTabla.h"
#include "plan/Guion.h"
#include "support/PruebaPantalla.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSettings>
#include <QTextBrowser>

// The window around the pages: all equipment types, the screen as the other pages use it, what is remembered, another
// database, the manual.
class PrEscritorio : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void tipos();
    void enPlan();
    void ocupada();
    void memoria();
    void otraBase();
    void perdida();
    void manual();

private:
    static QStringList Renglones(const QWidget &pagina);
    static void Pagina(const QWidget &ventana, const char *orden) { En<QAction>(ventana, orden).trigger(); }
    static QString Abierta(const QWidget &ventana) { return En<Paginas>(ventana, "tabPaginas").Actual().nombre; }
    static QString Letra(const QString &texto) { return texto.section('&', 1).left(1).toUpper(); }
    static bool ConSesion() { return qstrcmp(QTest::currentTestFunction(), "otraBase") != 0; }

    std::unique_ptr<QTemporaryDir> carpeta;
};

void PrEscritorio::init()
{
    carpeta = std::make_unique<QTemporaryDir>();
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, carpeta->path());
    if (ConSesion())
        PruebaPantalla::init();
}

void PrEscritorio::cleanup()
{
    if (ConSesion())
        PruebaPantalla::cleanup();
}

QStringList PrEscritorio::Renglones(const QWidget &pagina)
{
    QStringList renglones;
    const auto &modelo = *En<qvx::VistaTabla>(pagina, "lvTipos").model();
    for (int fila = 0; fila < modelo.rowCount(); ++fila) {
        QStringList celdas;
        for (int columna = 0; columna < modelo.columnCount(); ++columna)
            celdas.append(modelo.index(fila, columna).data().toString());
        if (celdas.constFirst().startsWith("09")) // not of the examples
            renglones.append(celdas.join('|'));
    }
    return renglones;
}

// What is carried out counts: not what is retired or hangs from nothing, but what a retired part is above of. A price
// that is the cost but for a binary fraction is no loss.
void PrEscritorio::tipos()
{
    const QString servicio = "INSERT INTO Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Ts_Cve_Tipo_Servicio, Tep_ID, Pm_ID, "
                             "Pm_Frecuencia, Pm_Precio, Pm_Tiempo_Estimado, Es_Cve_Estado, Oper_Ult_Modif, "
                             "Fecha_Ult_Modif) VALUES ('0900', '9001', ";
    const QString linea =
        "INSERT INTO Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, "
        "Pr_Cve_Producto, Pmd_Importe) VALUES ('0900', ";
    const QString firma = ", 'ana', '2026-01-01 10:00:00');";
    Preparar("UPDATE Plan_Mantenimiento SET Pm_Precio = 420.65 WHERE Pm_ID = '000001';" // its cost
             + servicio + "'0005', '000004', 0, 1, 3, 'AC'" + firma + linea
             + "'0005', '000004', '000101', '02', '9', 2);" + servicio + "'0004', '000005', 365, 0.3, 1, 'AC'" + firma
             + linea + "'0004', '000005', '000102', '01', '9', 0.1);" + linea
             + "'0004', '000005', '000103', '02', '9', 0.2);" + linea + "'0004', '000005', '000104', '03', '9', 50);"
             + servicio + "'0006', '000006', 1, 0, 9, 'AC'" + firma + servicio + "'0005', '000007', 1, 0, 9, 'BA'"
             + firma);
    VentanaPrincipal principal(pantalla, "", "mlopez", "prueba");
    principal.show();
    QVERIFY(QTest::qWaitForWindowActive(&principal));
    escenario->Traza(true);
    Pagina(principal, "mnuPaginaTipos");
    QTRY_VERIFY2(Renglones(principal).value(0).contains('$'), qPrintable(Mensajes().join('|')));
    const QStringList sentencias = escenario->Traza(true);
    QVERIFY2(sentencias.size() <= 3, qPrintable(sentencias.join('\n')));
    const QStringList todos{
        "0900|BOMBA DE PRUEBA|Activo|5|1|6|1|1|1|$5,118.21|104.4|1|2026-01-01 10:00 ana",
        "0901|SIN PLAN|Activo|0|0|0|0|0|0|$0.00|0|0|",
        "0902|AJENA|Activo|1|0|1|0|0|0|$0.00|52.1|0|2025-01-02 03:04 jcruz",
        "0903|CANCELADA|Cancelado|0|0|0|0|0|0|$0.00|0|0|",
    };
    QCOMPARE(Renglones(principal), todos);

    auto &filtro = En<QLineEdit>(principal, "txtFiltroTipos");
    QTest::keyClicks(&filtro, "PRUEBA bomba");
    QCOMPARE(Renglones(principal), todos.mid(0, 1));
    filtro.setText("cancel");
    QTest::keyClick(&filtro, Qt::Key_Return);
    QCOMPARE(Mensajes().join('|').section('|', 3, 3), "ERR-ID:1000060");
    QCOMPARE(Abierta(principal), "Tipos");

    // What somebody else changes meanwhile is seen when the page is shown again.
    Pagina(principal, "mnuPagina1");
    escenario->Correr("UPDATE Plan_Mantenimiento SET Pm_Precio = 20, Oper_Ult_Modif = 'luis', Fecha_Ult_Modif = "
                      "'2026-02-02 10:00:00' WHERE Pm_ID = '000001'");
    Pagina(principal, "mnuPaginaTipos");
    filtro.setText("prueba");
    QTRY_COMPARE(Renglones(principal).constFirst(),
                 "0900|BOMBA DE PRUEBA|Activo|5|1|6|1|1|2|$5,118.21|104.4|1|2026-02-02 10:00 luis");
    QTest::keyClick(&filtro, Qt::Key_Return);
    QCOMPARE(Abierta(principal), "Plan");
    QCOMPARE(principal.TipoEnPantalla(), "0900");
}

// The plan, its part and its service, and the screen read again; what the planner chose stays chosen.
void PrEscritorio::enPlan()
{
    VentanaPrincipal principal(pantalla, "0902", "mlopez", "prueba");
    principal.show();
    QVERIFY(QTest::qWaitForWindowActive(&principal));
    QVERIFY(principal.MostrarEnPlan("0900", "0002", "000002"));
    const auto elegido = [&] {
        const auto *nodo = Arbol().SelectedItem();
        return (nodo ? nodo->Key() : "-") + '/' + (Lista().HaySeleccion() ? Lista().TextoSeleccionado() : "-");
    };
    QCOMPARE(elegido(), "N0002/000002");
    QVERIFY(!principal.MostrarEnPlan("0900", "0002", "000099"));
    QVERIFY(!principal.MostrarEnPlan("0900", "0099", ""));
    QVERIFY(principal.MostrarEnPlan("0900", "0002", "000002"));
    Arbol().Item("N0003")->setExpanded(true);
    escenario->Correr("INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) VALUES "
                      "('0900', '0050', '0003', 'NUEVA')");
    principal.PlanCambiado();
    QVERIFY(Arbol().Contains("N0050") && Arbol().Item("N0003")->isExpanded() && Arbol().Item("N0001")->isExpanded());
    QCOMPARE(elegido(), "N0002/000002");
    // The type that it opened on does not come back.
    Pagina(principal, "mnuPagina2");
    Pagina(principal, "mnuPagina1");
    QCOMPARE(principal.TipoEnPantalla(), "0900");
    QCOMPARE(elegido(), "N0002/000002");
    QVERIFY(!principal.MostrarEnPlan("0903"));
}

// While a form of the screen is open, or a transaction, no command of the window runs.
void PrEscritorio::ocupada()
{
    VentanaPrincipal principal(pantalla, "", "mlopez", "prueba");
    principal.show();
    QVERIFY(QTest::qWaitForWindowActive(&principal));
    ElegirTipo("0900");
    bool abierta = false;
    EnElDialogo([&](QWidget &) {
        abierta = true;
        for (QAction *orden :
             principal.findChildren<QAction *>(QRegularExpression("^mnu(Pagina|Manual|Abrir|Revisar)")))
            orden->trigger();
        QVERIFY(!principal.MostrarEnPlan("0902"));
    });
    ElegirNodo(Arbol(), "N0002");
    En<QAction>(*pantalla, "Editar").trigger();
    QVERIFY(abierta);
    auto &conexion = qvx::Sesion::Actual().Conexion();
    conexion.BeginTrans();
    Pagina(principal, "mnuPaginaTipos");
    conexion.RollbackTrans();
    QCOMPARE(Abierta(principal), "Plan");
    QCOMPARE(principal.TipoEnPantalla(), "0900");
    QVERIFY(!principal.findChild<VentanaDelManual *>());
}

void PrEscritorio::memoria()
{
    const QSize sitio = QGuiApplication::primaryScreen()->availableSize();
    const auto abrir = [&](const QString &tipo, const auto &pasos) {
        pantalla = &escenario->Pantalla();
        VentanaPrincipal principal(pantalla, tipo, "mlopez", "prueba");
        principal.Retomar("/una/base.db", false);
        principal.show();
        QVERIFY(QTest::qWaitForWindowActive(&principal));
        pasos(principal);
        principal.close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        principal.close(); // as the end of the program does
    };
    escenario->CerrarPantalla();
    abrir("", [&](VentanaPrincipal &principal) {
        QCOMPARE(Abierta(principal), "Tipos"); // no plan was open
        QHeaderView &titulos = *En<qvx::VistaTabla>(principal, "lvTipos").header();
        QTest::mouseClick(titulos.viewport(), Qt::LeftButton, {},
                          QPoint(titulos.sectionViewportPosition(1) + 20, titulos.height() / 2));
        titulos.moveSection(2, 0);
        principal.MostrarEnPlan("0900");
        Pagina(principal, "mnuPagina2");
        principal.resize(sitio * 2);
    });
    escenario->CerrarPantalla();
    abrir("", [&](VentanaPrincipal &principal) {
        QCOMPARE(Abierta(principal), "Catalogos");
        QCOMPARE(principal.size().boundedTo(sitio.expandedTo(principal.minimumSizeHint())), principal.size());
        Pagina(principal, "mnuPagina1");
        QTRY_COMPARE(principal.TipoEnPantalla(), "0900");
        Pagina(principal, "mnuPaginaTipos");
        const QHeaderView &titulos = *En<qvx::VistaTabla>(principal, "lvTipos").header();
        QCOMPARE(titulos.visualIndex(2), 0);
        QCOMPARE(Renglones(principal).value(0).left(4), "0902"); // by description
        En<QAction>(*pantalla, "Cerrar").trigger();              // the screen's own way out
        QVERIFY(!principal.isVisible());
    });
    QCOMPARE(ajustes::PlanDe("/una/base.db"), "0900");
    escenario->CerrarPantalla();
    abrir("0902", [&](VentanaPrincipal &principal) {
        QCOMPARE(Abierta(principal), "Plan");
        QTRY_COMPARE(principal.TipoEnPantalla(), "0902");
    });
    QCOMPARE(ajustes::PlanDe("/una/base.db"), "0902");
    QCOMPARE(ajustes::Recientes(), QStringList{"/una/base.db"});
}

// The one that is open stays until the other is; each with its own session.
void PrEscritorio::otraBase()
{
    const BaseDePrueba una(true);
    const BaseDePrueba otra(true);
    otra.Otro()->Correr("INSERT INTO Tipo_Equipo VALUES ('0777', 'DE LA OTRA', 'AC')");
    const Argumentos argumentos = Argumentos::Leer(QStringList{"quorvex"} + una.Argumentos());
    Escritorio escritorio;
    escritorio.Empezar(argumentos, AbrirBase(argumentos), std::make_unique<InteraccionDelEscritorio>());
    QVERIFY(QTest::qWaitForWindowActive(escritorio.Ventana()));
    escritorio.Ventana()->MostrarEnPlan("0001");
    QPointer<VentanaPrincipal> anterior = escritorio.Ventana();
    const QStringList malas = motor::EsPostgres() ? QStringList{"postgresql://mlopez@127.0.0.1:1/nada", "postgresql://"}
                                                  : QStringList{"/no/hay.db", carpeta->filePath("ajena.db")};
    QFile ajena(carpeta->filePath("ajena.db"));
    QVERIFY(ajena.open(QIODevice::WriteOnly) && ajena.write("no es una base") > 0);
    ajena.close();
    for (const QString &mala : malas) {
        QString dicho;
        EnElDialogo([&](QWidget &mensaje) { dicho = dynamic_cast<QMessageBox &>(mensaje).text(); });
        Q_EMIT escritorio.Ventana()->BasePedida(mala);
        QTRY_VERIFY2(dicho.startsWith("No se abrió la otra base de datos"), qPrintable(mala));
        QCOMPARE(escritorio.Ventana(), anterior.data());
        QCOMPARE(qvx::Sesion::Actual()
                     .Conexion()
                     .Execute("SELECT * FROM Tipo_Equipo WHERE Te_Cve_Tipo_Equipo = '0777'")
                     .Eof(),
                 true);
    }
    const QString direccion = otra.Argumentos().at(1);
    Q_EMIT escritorio.Ventana()->BasePedida(direccion);
    QTRY_VERIFY(!anterior);
    QVERIFY(QTest::qWaitForWindowActive(escritorio.Ventana()));
    QVERIFY(escritorio.Ventana()->MostrarEnPlan("0777"));
    QCOMPARE(qvx::Sesion::Actual().Operador(), "mlopez");
    QCOMPARE(ajustes::Recientes(), QStringList{una.Argumentos().at(1)}); // the other one is open
    QCOMPARE(ajustes::PlanDe(una.Argumentos().at(1)), "0001");

    // Closed, there is a window to open another from, and no session.
    Q_EMIT escritorio.Ventana()->CierrePedido();
    QTRY_VERIFY(escritorio.SinBase() && !escritorio.Ventana());
    QVERIFY(QTest::qWaitForWindowActive(escritorio.SinBase()));
    QCOMPARE(ajustes::Recientes().value(0), direccion);
    for (const QAction *menu : escritorio.SinBase()->menuBar()->actions())
        QCOMPARE(menu->isEnabled(), menu->text() == "&Archivo" || menu->text() == "A&yuda");
    QVERIFY(!En<QAction>(*escritorio.SinBase(), "mnuCerrarBase").isEnabled());
    QString dicho;
    EnElDialogo([&](QWidget &mensaje) { dicho = dynamic_cast<QMessageBox &>(mensaje).text(); });
    Q_EMIT escritorio.SinBase()->BasePedida(malas.constFirst());
    QTRY_VERIFY(dicho.startsWith("No se abrió la base de datos"));
    Q_EMIT escritorio.SinBase()->BasePedida(direccion);
    QTRY_VERIFY(escritorio.Ventana() && !escritorio.SinBase());
    QFile guardado(QSettings("quorvex", "quorvex").fileName());
    QVERIFY(guardado.open(QIODevice::ReadOnly));
    QVERIFY(!guardado.readAll().contains("password"));
}

// What cannot be read anew stays, and says so; a search that fails does not say that nothing was found.
void PrEscritorio::perdida()
{
    VentanaPrincipal principal(pantalla, "", "mlopez", "prueba");
    principal.show();
    QVERIFY(QTest::qWaitForWindowActive(&principal));
    const QList<QPair<const char *, const char *>> paginas{{"mnuPaginaTipos", "lblAvisoDeTipos"},
                                                           {"mnuPagina2", "lblAvisoDelCatalogo"}};
    for (const auto &[orden, nombre] : paginas)
        Pagina(principal, orden);
    const auto filas = [&](const char *lista) { return En<qvx::VistaTabla>(principal, lista).model()->rowCount(); };
    const int tipos = filas("lvTipos");
    QVERIFY(tipos > 3 && filas("lvRegistros") > 3);
    escenario->Correr("ALTER TABLE Tipo_Equipo RENAME TO Perdida");
    for (const auto &[orden, nombre] : paginas) {
        Pagina(principal, orden);
        QVERIFY(En<QLabel>(principal, nombre).isVisible());
        QVERIFY(En<QLabel>(principal, nombre).text().startsWith("NO ES ACTUAL: esto se leyó a las "));
    }
    QCOMPARE(filas("lvTipos"), tipos);
    QVERIFY(filas("lvRegistros") > 3);
    Mensajes(); // were told
    DialogoBuscar dialogo({}, &principal);
    dialogo.show();
    En<QLineEdit>(dialogo, "txtBuscar").setText("bomba");
    QTRY_VERIFY(En<QLabel>(dialogo, "lblCuenta").text().startsWith("No se pudo buscar"));
    QCOMPARE(Mensajes().size(), 1);
    escenario->Correr("ALTER TABLE Perdida RENAME TO Tipo_Equipo");
    for (const auto &[orden, nombre] : paginas) {
        Pagina(principal, orden);
        QVERIFY(!En<QLabel>(principal, nombre).isVisible());
    }
    QTest::keyClick(&En<QLineEdit>(dialogo, "txtBuscar"), Qt::Key_Return);
    QTRY_VERIFY(En<QLabel>(dialogo, "lblCuenta").text().endsWith("hallazgos."));
}

// Its chapters are the pages', all keys of the menus are in it, and nothing leads out of it.
void PrEscritorio::manual()
{
    VentanaPrincipal principal(pantalla, "", "mlopez", "prueba");
    principal.Retomar("/una/base.db", motor::EsPostgres());
    principal.show();
    QVERIFY(QTest::qWaitForWindowActive(&principal));
    Pagina(principal, "mnuAcercaDe");
    const QString acerca = Mensajes().join('|');
    QVERIFY2(QRegularExpression("Quorvex 1\\..*prueba\nVersión de su esquema: " + QString::number(qvx::VersionEsquema)
                                    + "\n.*Qt 6\\..*"
                                    + motor::Segun("fontconfig 2\\..*SQLite 3\\.", "libpq 15\\..*PostgreSQL 15\\."),
                                QRegularExpression::DotMatchesEverythingOption)
                 .match(acerca)
                 .hasMatch(),
             qPrintable(acerca));
    Pagina(principal, "mnuManual");
    auto &libro = *principal.findChild<VentanaDelManual *>();
    auto &capitulos = En<QListWidget>(libro, "lstCapitulos");
    auto &texto = En<QTextBrowser>(libro, "txtManual");
    const auto capitulo = [&] { return capitulos.currentItem()->text().trimmed(); };
    for (const ::Pagina &pagina : En<Paginas>(principal, "tabPaginas").Todas()) {
        En<Paginas>(principal, "tabPaginas").Mostrar(pagina.nombre);
        Pagina(principal, "mnuManual");
        QCOMPARE(capitulo(), pagina.capitulo);
        QString letras; // that Alt takes: none stands for two things
        for (const QAction *menu : principal.menuBar()->actions())
            letras += Letra(menu->text());
        for (const auto *boton : principal.findChildren<QPushButton *>())
            letras += boton->isVisible() ? Letra(boton->text()) : QString();
        QCOMPARE(QSet<QChar>(letras.cbegin(), letras.cend()).size(), letras.size());
    }
    QVERIFY(texto.verticalScrollBar()->value() > 0);
    QFile manual(":/manual/manual.md");
    QVERIFY(manual.open(QIODevice::ReadOnly));
    for (auto imagen = QRegularExpression("\\]\\((img/\\w+\\.png)\\)").globalMatch(QString::fromUtf8(manual.readAll()));
         imagen.hasNext();) {
        const QString nombre = imagen.next().captured(1);
        QVERIFY2(QFile::exists(":/manual/" + nombre), qPrintable(nombre));
    }
    Pagina(principal, "mnuTeclas");
    QCOMPARE(capitulo(), "Teclas");
    QString teclas = texto.toPlainText();
    teclas = teclas.mid(teclas.lastIndexOf("Abre este manual"));
    for (const QAction *orden : principal.findChildren<QAction *>(QRegularExpression("^mnu")))
        if (!orden->shortcut().isEmpty() && orden->shortcut() != QKeySequence(Qt::Key_F1))
            QVERIFY2(teclas.contains(orden->shortcut().toString()), qPrintable(orden->objectName()));
    for (const char *enlace : {"https://example.org/#partes", "file:///etc/passwd", "manual.md"})
        Q_EMIT texto.anchorClicked(QUrl(QString::fromLatin1(enlace)));
    QCOMPARE(capitulo(), "Teclas");
    QVERIFY(texto.source().isEmpty());
    Q_EMIT texto.anchorClicked(QUrl("#agregar-una-parte"));
    QCOMPARE(capitulo(), "Agregar una parte");
    for (const char *imagen : {"img/pantalla.png", "img/tipos.png"})
        QVERIFY(!texto.loadResource(QTextDocument::ImageResource, QUrl(QString::fromLatin1(imagen)))
                     .value<QImage>()
                     .isNull());
    QVERIFY(!texto.loadResource(QTextDocument::ImageResource, QUrl("file:///usr/share/x.png")).isValid());
}

PRUEBA(PrEscritorio)
#include "pr_escritorio.moc"
