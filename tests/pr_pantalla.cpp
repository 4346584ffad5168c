#include "support/PruebaPantalla.h"

using comunesQVX::Nodo;

// The main screen: choice of equipment type, tree of parts, list of services.
class PrPantalla : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void apertura();
    void tipos_data();
    void tipos();
    void reactivacion();
    void nodos();
    void tamanos();
    void etiqueta_data();
    void etiqueta();
    void teclas();
    void lista();
    void editorSinServicio();
    void eliminarServicio();
    void trampas_data();
    void trampas();

private:
    static QString Dibujo(const Nodo *nodo, int hondo = 0);
    void ElegirServicio(int fila)
    {
        QTest::mouseClick(Lista().viewport(), Qt::LeftButton, {},
                          Lista().visualItemRect(Lista().topLevelItem(fila)).center());
    }
};

// The tree as text: a line per node, its depth in dots, its picture's number.
QString PrPantalla::Dibujo(const Nodo *nodo, int hondo)
{
    QString dibujo = QString(hondo, QLatin1Char('.')) + nodo->Key() + " " + nodo->Text() + " "
                     + QString::number(nodo->Image()) + "\n";
    for (int i = 0; i < nodo->childCount(); ++i)
        dibujo += Dibujo(static_cast<Nodo *>(nodo->child(i)), hondo + 1);
    return dibujo;
}

void PrPantalla::apertura()
{
    QCOMPARE(escenario->De<txtQVX>("txtNTipoEquipo").Text(), "BOMBA DE PRUEBA");
    QCOMPARE(Dibujo(Arbol().Primero()), "N0000 RAIZ 1\n"
                                        ".N0001 0001 - CUERPO 1\n"
                                        "..N0002 0002 - IMPULSOR 1\n"
                                        "..N0003 0003 - SELLO 3\n"
                                        "...N0004 0004 - RESORTE 1\n"
                                        ".N0005 0005 - MOTOR 1\n");
    QVERIFY(Arbol().Primero()->isExpanded() && Arbol().Primero()->Tag == 1 && !Arbol().SelectedItem());
    QCOMPARE(Barras(), "00000|Exportar XML|Importar XML|Copiar plan");
    // One query per part, depth first, and one for the root.
    const QStringList traza = escenario->Traza().filter("Tipo_Equipo_Parte");
    QCOMPARE(traza.size(), 6);
    QCOMPARE(traza.constFirst(), "2\tSELECT * FROM Tipo_Equipo_Parte WHERE Tep_Padre = '0000' and Te_Cve_Tipo_Equipo = "
                                 "'0900' ORDER BY Te_Cve_Tipo_Equipo, Tep_ID ASC");
    QVERIFY(traza.at(4).contains("Tep_Padre = '0004'"));

    escenario->CerrarPantalla();
    escenario->Pantalla(); // without a type
    QCOMPARE(Barras(), "00000||Importar XML|");
    QVERIFY(Tipo().findChild<QLineEdit *>()->hasFocus());
    QCOMPARE(Arbol().Count(), 0);
    QTest::keyClick(&Lista(), Qt::Key_Delete);
    QTest::mouseDClick(Lista().viewport(), Qt::LeftButton, {}, QPoint(20, 20));
}

void PrPantalla::tipos_data()
{
    const Tabla<QString, QString, QString, int, QString> fila("clave", "forma", "descripcion", "nodos", "barra");
    const QString nada = "00000||Importar XML|";
    fila("otro tipo", "902", "0902", "AJENA", 2, "00000|Exportar XML|Importar XML|Copiar plan");
    fila("sin partes", "0901", "0901", "SIN PLAN", 1, nada + "Copiar plan");
    fila("cancelada", "0903", "0903", "", 0, nada);
    fila("con comilla", "x'y", "X'Y", "", 0, nada);
    fila("vacía", "", "", "", 0, nada);
}

// A node was selected: nothing of the first type's plan or commands outlives the choice.
void PrPantalla::tipos()
{
    QFETCH(QString, clave);
    ElegirNodo(Arbol(), "N0002");
    QTest::keyClick(Tipo().findChild<QLineEdit *>(), Qt::Key_A);
    QCOMPARE(Arbol().Count() + Lista().Count(), 0); // emptied at once
    Escribir(Tipo(), clave);
    QTEST(Tipo().Text(), "forma");
    QTEST(escenario->De<txtQVX>("txtNTipoEquipo").Text(), "descripcion");
    QTEST(Arbol().Count(), "nodos");
    QTEST(Barras(), "barra");
}

// Coming back to the screen keeps the planner's choice; showing it again applies the host's.
void PrPantalla::reactivacion()
{
    Escribir(Tipo(), "0902");
    QEvent activada(QEvent::WindowActivate);
    QCoreApplication::sendEvent(pantalla, &activada);
    QCOMPARE(Tipo().Text(), "0902");
    pantalla->hide();
    pantalla->show();
    QCOMPARE(Tipo().Text(), "0900");
}

void PrPantalla::nodos()
{
    const QString parte = "11101|Eliminar parte|Agregar servicio|Copiar plan";
    const auto probar = [&](const QString &nodo, const QString &barras, int servicios, const QString &ayuda) {
        ElegirNodo(Arbol(), nodo);
        QCOMPARE(Barras(), barras);
        QCOMPARE(Lista().Count(), servicios);
        QCOMPARE(Lista().toolTip(), ayuda);
    };
    probar("N0000", "10000|Exportar XML|Importar XML|Copiar plan", 0, "");
    probar("N0002", parte, 2, "Presione Supr para eliminar un servicio");
    probar("N0003", "00011|Exportar XML|Importar XML|Copiar plan", 1, "");
    probar("N0004", parte, 0, "");
}

// In twips: 100 below the tree, 500 between tree and list, the same margin left and right; never below zero.
void PrPantalla::tamanos()
{
    const auto twips = [&](int pixeles) { return pixeles * 1440 / pantalla->logicalDpiX(); };
    pantalla->window()->resize(900, 500);
    QCOMPARE(Arbol().height(), Lista().height());
    QVERIFY(qAbs(twips(pantalla->height() - Arbol().y() - Arbol().height()) - 100) < 30);
    QVERIFY(qAbs(twips(Lista().x() - Arbol().geometry().right() - 1) - 500) < 30);
    QVERIFY(qAbs(pantalla->width() - Lista().geometry().right() - 1 - Arbol().x()) <= 2);
    pantalla->setMinimumSize(0, 0);
    pantalla->window()->setMinimumSize(0, 0);
    pantalla->resize(100, 60);
    QCOMPARE(Arbol().height() + Lista().width(), 0);
}

void PrPantalla::etiqueta_data()
{
    const Tabla<QString, QString, QString> fila("texto", "guardado", "mensaje");
    fila("el guion se pierde", "0002 - Motor-Eléctrico", "MOTORELÉCTRICO", "");
    fila("vacía", "", "IMPULSOR", "");
    fila("comilla", "0002 - O'Higgins", "IMPULSOR", "16|Quorvex|QVX|ERR-ID:1000000|" + motor::Sintaxis("HIGGINS"));
}

void PrPantalla::etiqueta()
{
    QFETCH(QString, texto);
    QFETCH(QString, guardado);
    QFETCH(QString, mensaje);
    const QStringList antes = escenario->Tablas();
    ElegirNodo(Arbol(), "N0002");
    escenario->Traza();
    QTest::keyClick(&Arbol(), Qt::Key_F2);
    auto *editor = Arbol().viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    editor->setText(texto);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    QCOMPARE(Mensajes().join(""), mensaje);
    QCOMPARE(Arbol().SelectedItem()->Text(), "0002 - " + guardado);
    if (guardado == "IMPULSOR") {
        QCOMPARE(escenario->Tablas(), antes);
        return;
    }
    QCOMPARE(escenario->Traza().constFirst(),
             "1\tUPDATE Tipo_Equipo_Parte SET    Tep_Descripcion = '" + guardado
                 + "',    Oper_Ult_Modif = 'mlopez',    Fecha_Ult_Modif = '2026-03-14 09:26:53'WHERE Tep_ID = '0002' "
                   "and Te_Cve_Tipo_Equipo = '0900'");
    QCOMPARE(Partes("Tep_Descripcion", "Tep_ID = '0002'"), guardado);
}

void PrPantalla::teclas()
{
    ElegirNodo(Arbol(), "N0001");
    Arbol().expandAll();
    QTest::keyClick(&Arbol(), Qt::Key_Down);
    QCOMPARE(Arbol().SelectedItem()->Key(), "N0002");
    QCOMPARE(Lista().Count(), 2); // moving by keyboard counts as a click
    Preparar("UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'CAMBIADA' WHERE Tep_ID = '0005'");
    QCOMPARE(Arbol().Item("N0005")->Text(), "0005 - CAMBIADA");
    QTest::keyClick(&Arbol(), Qt::Key_Return);
    QCoreApplication::processEvents();
    QVERIFY(Lista().hasFocus());

    Mandar("Info", "N0002");
    QCOMPARE(escenario->Personas().informacion.value(0), qMakePair(QString("Creado por"), QString("jcruz")));
    escenario->Motor("DELETE FROM Tipo_Equipo_Parte WHERE Tep_ID = '0002'");
    Mandar("Info");
    QCOMPARE(Mensajes(), QStringList{"16|Controles_Info()|KT580|ERR-ID:7500035|El registro ya no existe"});
}

void PrPantalla::lista()
{
    ElegirNodo(Arbol(), "N0002");
    QStringList renglones(3);
    for (int i = 0; i < Lista().columnCount(); ++i) {
        renglones[0] += "|" + Lista().headerItem()->text(i);
        renglones[1] += "|" + Lista().Texto(0, i);
        renglones[2] += "|" + Lista().Texto(1, i);
    }
    QCOMPARE(renglones, (QStringList{"|Folio|Servicio|Descripción|Días|Lectura|Tiempo estimado|Requiere paro|Prioridad",
                                     "|000001|9001|REVISIÓN|30||8.5|Sí|URGENTE DE PRUEBA",
                                     "|000002|9001|REVISIÓN||1250.5 HRS|2|No|URGENTE DE PRUEBA"}));
    // Without a selected node a double click empties the list.
    Arbol().setSelectedItem(nullptr);
    QTest::mouseDClick(Lista().viewport(), Qt::LeftButton, {},
                       Lista().visualItemRect(Lista().topLevelItem(0)).center());
    QCOMPARE(Lista().Count(), 0);
}

// What stands in the way of the editor: the root, and parts and services that someone else has just deleted.
void PrPantalla::editorSinServicio()
{
    ElegirNodo(Arbol(), "N0002");
    Arbol().setSelectedItem(Arbol().Item("N0000")); // in code: the caption stays
    Mandar("B2");
    QCOMPARE(escenario->Personas().ventanas, QList<WId>{pantalla->winId()});
    QCOMPARE(Mensajes(), QStringList{"48|Quorvex|KT580|ERR-ID:7500028|No se puede crear un serviciop de la raíz"});

    ElegirNodo(Arbol(), "N0002");
    ElegirServicio(0);
    escenario->Motor("DELETE FROM Plan_Mantenimiento WHERE Pm_ID = '000001'");
    QTest::keyClick(&Lista(), Qt::Key_Return);
    QCOMPARE(Mensajes(), QStringList{"16|ERROR|KT580|ERR-ID:7500091|Editar_Servicios() - \r\nEl servicio 000001 ya no "
                                     "existe: otra persona lo eliminó o lo movió."});
    QCOMPARE(Lista().Count(), 1); // read again

    escenario->Motor("DELETE FROM Tipo_Equipo_Parte WHERE Tep_ID = '0002'");
    Mandar("B2");
    QCOMPARE(Mensajes(), QStringList{"48|Quorvex|KT580|ERR-ID:7500029|No se encontró la ruta de la parte"});
    ElegirServicio(0);
    QTest::keyClick(&Lista(), Qt::Key_Return);
    QCOMPARE(Mensajes(), QStringList{"48|Quorvex|KT580|ERR-ID:7500030|No se encontró la ruta de la parte"});
}

void PrPantalla::eliminarServicio()
{
    const auto suprimir = [&](const QString &nodo) {
        ElegirNodo(Arbol(), nodo);
        ElegirServicio(0);
        QTest::keyClick(&Lista(), Qt::Key_Delete);
    };
    const QStringList antes = escenario->Tablas();
    suprimir("N0003"); // of a retired part: nothing, and nothing asked
    escenario->Personas().Responder(7500050, qvx::mensaje::No);
    suprimir("N0002");
    QCOMPARE(escenario->Tablas(), antes);
    QCOMPARE(Mensajes(), QStringList{"36|Quorvex|KT580|ERR-ID:7500050|¿Desea eliminar el servicio?"});

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

// The traps of the screen's procedures. 7500001 is out of reach: all that CargarPartes does to the database it does
// through AddSubParte, whose own trap comes first.
void PrPantalla::trampas_data()
{
    const Tabla<QString, QString, QString> fila("falla", "comando", "mensaje");
    const QString sinPartes = "ALTER TABLE Tipo_Equipo_Parte RENAME TO Guardada";
    const QString sinTabla = motor::NoHayTabla("Tipo_Equipo_Parte");
    fila("árbol", sinPartes, "F5", "16|AddSubParte()|KT580|ERR-ID:7500002|" + sinTabla);
    fila("lista", "ALTER TABLE Prioridad_Servicio RENAME TO Guardada", "N0005",
         "16|Llenar servicios|KT580|ERR-ID:7500020|" + motor::NoHayTabla("Prioridad_Servicio"));
    fila("consulta", "DELETE FROM Consulta", "N0005",
         "16|AgregarItemLv()|KT580|ERR-ID:7500021|No existe la consulta PLAN_MANTENIMIENTO");
    fila("nuevo servicio", sinPartes, "B2", "16|Controles_B2Click()|KT580|ERR-ID:7500022|" + sinTabla);
    fila("numerar servicio", "ALTER TABLE Plan_Mantenimiento RENAME COLUMN Pm_Numero TO Otro", "B2",
         "16|ERROR|KT580|ERR-ID:7500085|Form_Load() - \r\n" + motor::NoHayColumna("Pm_Numero"));
    fila("abrir servicio", sinPartes, "Entrar", "16|lvServicios_DblClick()|KT580|ERR-ID:7500031|" + sinTabla);
}

void PrPantalla::trampas()
{
    QFETCH(QString, falla);
    QFETCH(QString, comando);
    ElegirNodo(Arbol(), "N0002");
    Lista().topLevelItem(0)->setSelected(true);
    escenario->Motor(falla);
    if (comando == "F5")
        QTest::keyClick(&Arbol(), Qt::Key_F5);
    else if (comando == "B2")
        Mandar("B2");
    else if (comando == "Entrar")
        QTest::keyClick(&Lista(), Qt::Key_Return);
    else
        ElegirNodo(Arbol(), comando);
    QTEST(Mensajes().value(0), "mensaje");
}

PRUEBA_MAIN(PrPantalla)
#include "pr_pantalla.moc"
