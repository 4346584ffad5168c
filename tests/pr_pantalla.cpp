#include "controls/Comunes.h"
#include "controls/Controles.h"
#include "controls/txtQVX.h"
#include "support/Averia.h"
#include "support/Plan.h"

#include <QLineEdit>

using comunesQVX::ListView;
using comunesQVX::Nodo;
using comunesQVX::TreeView;
using textoQVX::txtQVX;
using toolbarQVX::Controles;

// The main screen: choice of equipment type, tree of parts, list of services.
class PrPantalla : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void apertura();
    void vacia();
    void tipos_data();
    void tipos();
    void reactivacion();
    void nodos_data();
    void nodos();
    void tamanos();
    void etiqueta_data();
    void etiqueta();
    void teclas();
    void informacion();
    void lista();
    void editorSinServicio();
    void eliminarServicio();
    void eliminarFallido_data();
    void eliminarFallido();
    void trampas_data();
    void trampas();

private:
    TreeView &Arbol() { return escenario->De<TreeView>("tvPartes"); }
    ListView &Lista() { return escenario->De<ListView>("lvServicios"); }
    Controles &Barra() { return escenario->De<Controles>("Controles"); }
    QString Dibujo(const Nodo *nodo, int hondo = 0);
    QString Barras();
    QStringList Mensajes() { return escenario->Personas().Tomar(); }

    std::unique_ptr<Escenario> escenario;
};

void PrPantalla::init()
{
    escenario = std::make_unique<Escenario>();
    SembrarPlan(*escenario);
}

void PrPantalla::cleanup()
{
    QCOMPARE(Mensajes(), QStringList());
    escenario.reset();
}

// The tree as text: a line per node, its depth in dots, its picture's number.
QString PrPantalla::Dibujo(const Nodo *nodo, int hondo)
{
    QString dibujo = QString(hondo, QLatin1Char('.')) + nodo->Key() + " " + nodo->Text() + " "
                     + QString::number(nodo->Image()) + "\n";
    for (int i = 0; i < nodo->childCount(); ++i)
        dibujo += Dibujo(static_cast<Nodo *>(nodo->child(i)), hondo + 1);
    return dibujo;
}

// The toolbar as text: flags New, Edit, Delete, Reactivate, Extras, then the captions.
QString PrPantalla::Barras()
{
    const Controles &barra = Barra();
    QString texto;
    for (bool valor : {barra.NuevoDisponible(), barra.EditarDisponible(), barra.EliminarDisponible(),
                       barra.ReactivarDisponible(), barra.ExtrasDisponibles()})
        texto += valor ? "1" : "0";
    return texto + "|" + barra.Titulo1() + "|" + barra.Titulo2() + "|" + barra.Titulo3();
}

void PrPantalla::apertura()
{
    escenario->Traza();
    escenario->Pantalla("0900");
    QCOMPARE(escenario->De<txtQVX>("txtNTipoEquipo").Text(), "BOMBA DE PRUEBA");
    QCOMPARE(Dibujo(Arbol().Primero()), "N0000 RAIZ 1\n"
                                        ".N0001 0001 - CUERPO 1\n"
                                        "..N0002 0002 - IMPULSOR 1\n"
                                        "..N0003 0003 - SELLO 3\n"
                                        "...N0004 0004 - RESORTE 1\n"
                                        ".N0005 0005 - MOTOR 1\n");
    QVERIFY(Arbol().Primero()->isExpanded() && Arbol().Primero()->Tag == 1);
    QVERIFY(!Arbol().SelectedItem());
    QCOMPARE(Lista().Count(), 0);
    QCOMPARE(Barras(), "00000|Exportar XML|Importar XML|Copiar plan");
    // One query per part, depth first, and one for the root.
    QStringList traza = escenario->Traza().filter("Tipo_Equipo_Parte");
    QCOMPARE(traza.size(), 6);
    QCOMPARE(traza.constFirst(), "2\tSELECT * FROM Tipo_Equipo_Parte WHERE Tep_Padre = '0000' and Te_Cve_Tipo_Equipo = "
                                 "'0900' ORDER BY Te_Cve_Tipo_Equipo, Tep_ID ASC");
    QVERIFY(traza.at(4).contains("Tep_Padre = '0004'"));
}

void PrPantalla::vacia()
{
    escenario->Pantalla();
    QCOMPARE(Barras(), "00000||Importar XML|");
    QVERIFY(escenario->De<txtQVX>("txtTipoEquipo").findChild<QLineEdit *>()->hasFocus());
    QCOMPARE(Arbol().Count(), 0);
    QTest::keyClick(&Lista(), Qt::Key_Delete);
    QTest::mouseDClick(Lista().viewport(), Qt::LeftButton, {}, QPoint(20, 20));
}

void PrPantalla::tipos_data()
{
    QTest::addColumn<QString>("clave");
    QTest::addColumn<QString>("forma");
    QTest::addColumn<QString>("descripcion");
    QTest::addColumn<int>("nodos");
    QTest::addColumn<QString>("barra");
    QTest::newRow("otro tipo") << "902"
                               << "0902"
                               << "AJENA" << 2 << "00000|Exportar XML|Importar XML|Copiar plan";
    QTest::newRow("sin partes") << "0901"
                                << "0901"
                                << "SIN PLAN" << 1 << "00000||Importar XML|Copiar plan";
    QTest::newRow("desconocida") << "777"
                                 << "0777"
                                 << "" << 0 << "00000||Importar XML|";
    QTest::newRow("cancelada") << "0903"
                               << "0903"
                               << "" << 0 << "00000||Importar XML|";
    QTest::newRow("con comilla") << "x'y"
                                 << "X'Y"
                                 << "" << 0 << "00000||Importar XML|";
    QTest::newRow("vacía") << ""
                           << ""
                           << "" << 0 << "00000||Importar XML|";
}

// A node was selected: nothing of the first type's plan or commands outlives the choice.
void PrPantalla::tipos()
{
    QFETCH(QString, clave);
    escenario->Pantalla("0900");
    ElegirNodo(Arbol(), "N0002");
    auto &caja = escenario->De<txtQVX>("txtTipoEquipo");
    QTest::keyClick(caja.findChild<QLineEdit *>(), Qt::Key_A);
    QCOMPARE(Arbol().Count(), 0); // emptied at once
    QCOMPARE(Lista().Count(), 0);
    Escribir(caja, clave);
    QTEST(caja.Text(), "forma");
    QTEST(escenario->De<txtQVX>("txtNTipoEquipo").Text(), "descripcion");
    QTEST(Arbol().Count(), "nodos");
    QTEST(Barras(), "barra");
}

// Coming back to the screen keeps the planner's choice; showing it again applies the host's.
void PrPantalla::reactivacion()
{
    QWidget &pantalla = escenario->Pantalla("0900");
    Escribir(escenario->De<txtQVX>("txtTipoEquipo"), "0902");
    QEvent activada(QEvent::WindowActivate);
    QCoreApplication::sendEvent(&pantalla, &activada);
    QCOMPARE(escenario->De<txtQVX>("txtTipoEquipo").Text(), "0902");
    pantalla.hide();
    pantalla.show();
    QCOMPARE(escenario->De<txtQVX>("txtTipoEquipo").Text(), "0900");
}

void PrPantalla::nodos_data()
{
    QTest::addColumn<QString>("nodo");
    QTest::addColumn<QString>("barra");
    QTest::addColumn<int>("servicios");
    QTest::newRow("raíz") << "N0000"
                          << "10000|Exportar XML|Importar XML|Copiar plan" << 0;
    QTest::newRow("activa") << "N0002"
                            << "11101|Eliminar parte|Agregar servicio|Copiar plan" << 2;
    QTest::newRow("dada de baja") << "N0003"
                                  << "00011|Exportar XML|Importar XML|Copiar plan" << 1;
    QTest::newRow("activa bajo una baja") << "N0004"
                                          << "11101|Eliminar parte|Agregar servicio|Copiar plan" << 0;
}

void PrPantalla::nodos()
{
    QFETCH(QString, nodo);
    QFETCH(int, servicios);
    escenario->Pantalla("0900");
    ElegirNodo(Arbol(), nodo);
    QTEST(Barras(), "barra");
    QCOMPARE(Lista().Count(), servicios);
    const bool seElimina = servicios > 0 && nodo != "N0003";
    QCOMPARE(Lista().toolTip(), seElimina ? "Presione Supr para eliminar un servicio" : "");
}

// In twips: 100 below the tree, 500 between tree and list, the same margin left and right; never below zero.
void PrPantalla::tamanos()
{
    QWidget &pantalla = escenario->Pantalla();
    const auto twips = [&](int pixeles) { return pixeles * 1440 / pantalla.logicalDpiX(); };
    for (const QSize &tamano : {QSize(1280, 760), QSize(900, 500)}) {
        pantalla.window()->resize(tamano);
        QCOMPARE(Arbol().height(), Lista().height());
        QVERIFY(qAbs(twips(pantalla.height() - Arbol().y() - Arbol().height()) - 100) < 30);
        QVERIFY(qAbs(twips(Lista().x() - Arbol().geometry().right() - 1) - 500) < 30);
        QVERIFY(qAbs(pantalla.width() - Lista().geometry().right() - 1 - Arbol().x()) <= 2);
    }
    pantalla.setMinimumSize(0, 0);
    pantalla.window()->setMinimumSize(0, 0);
    pantalla.resize(100, 60);
    QCOMPARE(Arbol().height(), 0);
    QCOMPARE(Lista().width(), 0);
}

void PrPantalla::etiqueta_data()
{
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QString>("guardado");
    QTest::addColumn<QString>("mensaje");
    QTest::newRow("con clave") << "0002 - Bomba de agua"
                               << "BOMBA DE AGUA"
                               << "";
    QTest::newRow("el guion se pierde") << "0002 - Motor-Eléctrico"
                                        << "MOTORELÉCTRICO"
                                        << "";
    QTest::newRow("vacía") << ""
                           << "IMPULSOR"
                           << "";
    QTest::newRow("comilla") << "0002 - O'Higgins"
                             << "IMPULSOR"
                             << "16|Quorvex|QVX|ERR-ID:1000000|" + motor::Sintaxis("HIGGINS");
}

void PrPantalla::etiqueta()
{
    QFETCH(QString, texto);
    QFETCH(QString, guardado);
    QFETCH(QString, mensaje);
    escenario->Pantalla("0900");
    ElegirNodo(Arbol(), "N0002");
    escenario->Traza();
    QTest::keyClick(&Arbol(), Qt::Key_F2);
    auto *editor = Arbol().viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    editor->setText(texto);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    QCOMPARE(escenario
                 ->Motor("SELECT Tep_Descripcion FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' AND "
                         "Tep_ID = '0002'")
                 .toString(),
             guardado);
    QCOMPARE(Mensajes().join(""), mensaje);
    QCOMPARE(Arbol().SelectedItem()->Text(), "0002 - " + guardado);
    if (!mensaje.isEmpty() || texto.isEmpty())
        return;
    QCOMPARE(escenario->Traza().constFirst(),
             "1\tUPDATE Tipo_Equipo_Parte SET    Tep_Descripcion = '" + guardado
                 + "',    Oper_Ult_Modif = 'mlopez',    Fecha_Ult_Modif = '2026-03-14 09:26:53'WHERE Tep_ID = '0002' "
                   "and Te_Cve_Tipo_Equipo = '0900'");
    QCOMPARE(Arbol().SelectedItem()->Text(), "0002 - " + guardado);
    QCOMPARE(
        escenario->Motor("SELECT Tep_Descripcion FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0902'").toString(),
        "AJENA");
}

void PrPantalla::teclas()
{
    escenario->Pantalla("0900");
    ElegirNodo(Arbol(), "N0001");
    Arbol().expandAll();
    QTest::keyClick(&Arbol(), Qt::Key_Down);
    QCOMPARE(Arbol().SelectedItem()->Key(), "N0002");
    QCOMPARE(Lista().Count(), 2); // moving by keyboard counts as a click
    escenario->Motor("UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'CAMBIADA' WHERE Tep_ID = '0005'");
    QTest::keyClick(&Arbol(), Qt::Key_F5);
    QCOMPARE(Arbol().Item("N0005")->Text(), "0005 - CAMBIADA");
    QTest::keyClick(&Arbol(), Qt::Key_Return);
    QCoreApplication::processEvents();
    QVERIFY(Lista().hasFocus());
}

void PrPantalla::informacion()
{
    escenario->Pantalla("0900");
    ElegirNodo(Arbol(), "N0002");
    Pulsar(Barra(), "Info");
    QCOMPARE(escenario->Personas().informacion.value(0), qMakePair(QString("Creado por"), QString("jcruz")));
    escenario->Motor("DELETE FROM Tipo_Equipo_Parte WHERE Tep_ID = '0002'");
    Pulsar(Barra(), "Info");
    QCOMPARE(Mensajes(), QStringList{"16|Controles_Info()|KT580|ERR-ID:7500035|El registro ya no existe"});
}

void PrPantalla::lista()
{
    escenario->Pantalla("0900");
    ElegirNodo(Arbol(), "N0002");
    QStringList titulos;
    for (int i = 0; i < Lista().columnCount(); ++i)
        titulos.append(Lista().headerItem()->text(i));
    QCOMPARE(titulos, (QStringList{"Folio", "Servicio", "Descripción", "Días", "Lectura", "Tiempo estimado",
                                   "Requiere paro", "Prioridad"}));
    const auto fila = [&](int numero) {
        QStringList textos;
        for (int i = 0; i < Lista().columnCount(); ++i)
            textos.append(Lista().Texto(numero, i));
        return textos.join("|");
    };
    QCOMPARE(fila(0), "000001|9001|REVISIÓN|30||8.5|Sí|URGENTE DE PRUEBA");
    QCOMPARE(fila(1), "000002|9001|REVISIÓN||1250.5 HRS|2|No|URGENTE DE PRUEBA");
    // Without a selected node a double click empties the list.
    Arbol().setSelectedItem(nullptr);
    QTest::mouseDClick(Lista().viewport(), Qt::LeftButton, {},
                       Lista().visualItemRect(Lista().topLevelItem(0)).center());
    QCOMPARE(Lista().Count(), 0);
}

// What stands in the way of the editor: the root, and parts and services that someone else has just deleted.
void PrPantalla::editorSinServicio()
{
    QWidget &pantalla = escenario->Pantalla("0900");
    ElegirNodo(Arbol(), "N0002");
    Arbol().setSelectedItem(Arbol().Item("N0000")); // in code: the caption stays
    Pulsar(Barra(), "B2");
    QCOMPARE(escenario->Personas().ventanas, QList<WId>{pantalla.winId()});
    QCOMPARE(Mensajes(), QStringList{"48|Quorvex|KT580|ERR-ID:7500028|No se puede crear un serviciop de la raíz"});

    ElegirNodo(Arbol(), "N0002");
    const QPoint primera = Lista().visualItemRect(Lista().topLevelItem(0)).center();
    QTest::mouseClick(Lista().viewport(), Qt::LeftButton, {}, primera);
    escenario->Motor("DELETE FROM Plan_Mantenimiento WHERE Pm_ID = '000001'");
    QTest::mouseDClick(Lista().viewport(), Qt::LeftButton, {}, primera);
    QCOMPARE(Mensajes(), QStringList{"16|ERROR|KT580|ERR-ID:7500091|Editar_Servicios() - \r\nEl servicio 000001 ya no "
                                     "existe: otra persona lo eliminó o lo movió."});
    QCOMPARE(Lista().Count(), 1); // read again

    escenario->Motor("DELETE FROM Tipo_Equipo_Parte WHERE Tep_ID = '0002'");
    Pulsar(Barra(), "B2");
    QCOMPARE(Mensajes(), QStringList{"48|Quorvex|KT580|ERR-ID:7500029|No se encontró la ruta de la parte"});
    QTest::mouseClick(Lista().viewport(), Qt::LeftButton, {}, primera);
    QTest::mouseDClick(Lista().viewport(), Qt::LeftButton, {}, primera);
    QCOMPARE(Mensajes(), QStringList{"48|Quorvex|KT580|ERR-ID:7500030|No se encontró la ruta de la parte"});
}

void PrPantalla::eliminarServicio()
{
    escenario->Pantalla("0900");
    const auto suprimir = [&](const QString &nodo) {
        ElegirNodo(Arbol(), nodo);
        QTest::mouseClick(Lista().viewport(), Qt::LeftButton, {},
                          Lista().visualItemRect(Lista().topLevelItem(0)).center());
        QTest::keyClick(&Lista(), Qt::Key_Delete);
    };
    const QString pregunta = "36|Quorvex|KT580|ERR-ID:7500050|¿Desea eliminar el servicio?";
    const QStringList antes = escenario->Tablas();
    suprimir("N0003"); // of a retired part: nothing, and nothing asked
    escenario->Personas().Responder(7500050, qvx::mensaje::No);
    suprimir("N0002");
    QCOMPARE(escenario->Tablas(), antes);
    QCOMPARE(Mensajes(), QStringList{pregunta});

    escenario->Traza();
    escenario->Personas().Responder(7500050, qvx::mensaje::Si);
    suprimir("N0002");
    const QString donde = "WHERE Te_Cve_Tipo_Equipo = '0900' AND Tep_ID = '0002' AND Pm_ID = '000001'";
    QCOMPARE(escenario->Traza().mid(1, 4),
             (QStringList{motor::Inicio(), "3\tDELETE Plan_Mantenimiento_Detalle  " + donde,
                          "1\tDELETE Plan_Mantenimiento  " + donde, "-\tCOMMIT"}));
    QCOMPARE(escenario->Motor("SELECT count(*) FROM Plan_Mantenimiento_Detalle").toInt(), 1);
    QCOMPARE(Lista().Count(), 1);
    QCOMPARE(Barras(), "00000||Importar XML|");
    Mensajes();
}

void PrPantalla::eliminarFallido_data()
{
    QTest::addColumn<QString>("falla");
    QTest::addColumn<QString>("mensaje");
    const QString trampa = "16|lvServicios_KeyDown()|KT580|ERR-ID:7500036|";
    QTest::newRow("líneas") << "DELETE ON Plan_Mantenimiento_Detalle" << trampa + "falla";
    QTest::newRow("servicio") << "DELETE ON Plan_Mantenimiento" << trampa + "falla";
    // The server lets a transaction begin, and its first statement wait.
    QTest::newRow("base ocupada") << "ocupada"
                                  << motor::Segun("16|lvServicios_KeyDown|KT580|ERR-ID:7500037|", trampa)
                                         + motor::Ocupada();
}

void PrPantalla::eliminarFallido()
{
    QFETCH(QString, falla);
    escenario->Pantalla("0900");
    ElegirNodo(Arbol(), "N0002");
    Lista().topLevelItem(0)->setSelected(true);
    std::unique_ptr<Averia> averia;
    const QStringList antes = escenario->Tablas();
    escenario->Personas().Responder(7500050, qvx::mensaje::Si,
                                    [&] { averia = std::make_unique<Averia>(*escenario, falla); });
    QTest::keyClick(&Lista(), Qt::Key_Delete);
    averia->Reparar();
    QTEST(Mensajes().value(1), "mensaje");
    QCOMPARE(escenario->Tablas(), antes);
    QCOMPARE(Lista().Count(), 2);

    escenario->Personas().Responder(7500050, qvx::mensaje::Si);
    QTest::keyClick(&Lista(), Qt::Key_Delete);
    QCOMPARE(Lista().Count(), 1); // the same command then succeeds
    Mensajes();
}

// The traps of the screen's procedures. 7500001 is out of reach: all that CargarPartes does to the database it does
// through AddSubParte, whose own trap comes first.
void PrPantalla::trampas_data()
{
    QTest::addColumn<QString>("falla");
    QTest::addColumn<QString>("comando");
    QTest::addColumn<QString>("mensaje");
    const QString sinPartes = "ALTER TABLE Tipo_Equipo_Parte RENAME TO Guardada";
    const QString sinTabla = motor::NoHayTabla("Tipo_Equipo_Parte");
    QTest::newRow("árbol") << sinPartes << "F5"
                           << "16|AddSubParte()|KT580|ERR-ID:7500002|" + sinTabla;
    QTest::newRow("lista") << "ALTER TABLE Prioridad_Servicio RENAME TO Guardada"
                           << "N0005"
                           << "16|Llenar servicios|KT580|ERR-ID:7500020|" + motor::NoHayTabla("Prioridad_Servicio");
    QTest::newRow("consulta") << "DELETE FROM Consulta"
                              << "N0005"
                              << "16|AgregarItemLv()|KT580|ERR-ID:7500021|No existe la consulta PLAN_MANTENIMIENTO";
    QTest::newRow("nuevo servicio") << sinPartes << "B2"
                                    << "16|Controles_B2Click()|KT580|ERR-ID:7500022|" + sinTabla;
    QTest::newRow("numerar servicio") << "ALTER TABLE Plan_Mantenimiento RENAME COLUMN Pm_Numero TO Otro"
                                      << "B2"
                                      << "16|ERROR|KT580|ERR-ID:7500085|Form_Load() - \r\n"
                                             + motor::NoHayColumna("Pm_Numero");
    QTest::newRow("abrir servicio") << sinPartes << "DblClick"
                                    << "16|lvServicios_DblClick()|KT580|ERR-ID:7500031|" + sinTabla;
}

void PrPantalla::trampas()
{
    QFETCH(QString, falla);
    QFETCH(QString, comando);
    escenario->Pantalla("0900");
    ElegirNodo(Arbol(), "N0002");
    Lista().topLevelItem(0)->setSelected(true);
    escenario->Motor(falla);
    if (comando == "F5")
        QTest::keyClick(&Arbol(), Qt::Key_F5);
    else if (comando == "B2")
        Pulsar(Barra(), "B2");
    else if (comando == "DblClick")
        QTest::keyClick(&Lista(), Qt::Key_Return);
    else
        ElegirNodo(Arbol(), comando);
    QTEST(Mensajes().value(0), "mensaje");
}

PRUEBA_MAIN(PrPantalla)
#include "pr_pantalla.moc"
