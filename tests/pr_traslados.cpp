#include "support/PruebaPantalla.h"

#include <QDragEnterEvent>
#include <QMimeData>

namespace
{

const QString Pregunta = "292|Quorvex|KT580|ERR-ID:7500049|El tipo de equipo seleccionado ya tiene un plan de de "
                         "mantenimiento, ¿Desea reemplazarlo?";
const QString ColumnasParte = "Tep_ID,Tep_Descripcion,Tep_Padre,Oper_Alta,Fecha_Alta,Oper_Baja,Fecha_Baja,"
                              "Oper_Ult_Modif,Fecha_Ult_Modif,Es_Cve_Estado ";
const QString ColumnasServicio =
    "Tep_ID,Pm_ID,Ts_Cve_Tipo_Servicio,Pm_Frecuencia,Pm_Lectura,Pm_Unidad_Lectura,Pm_Precio,Pm_Tiempo_Estimado,"
    "Pm_Prioridad,Pm_Requiere_Paro,Pm_Tiempo_Paro,Oper_Alta,Fecha_Alta,Oper_Baja,Fecha_Baja,Oper_Ult_Modif,"
    "Fecha_Ult_Modif,Es_Cve_Estado ";
const QString ColumnasLinea =
    "Tep_ID,Pm_ID,Pmd_ID,Pmd_Tipo,Pr_Cve_Producto,Pmd_Cantidad,Pmd_Unidad,Pmd_Costo,Pmd_Importe ";

} // namespace

// Moving a service by dropping it on another part of the tree, through the events that the view gets from the window
// system; and copying the plan of the type on the screen, 0900, to another one.
class PrTraslados : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void mover();
    void soltar();
    void sinCopia();
    void copia();

private:
    QPoint Centro(const QString &nodo)
    {
        Arbol().expandAll();
        return Arbol().visualItemRect(Arbol().Item(nodo)).center();
    }
    QPoint Fuera() { return Arbol().viewport()->rect().bottomLeft() - QPoint(-5, 5); } // below the nodes
    QString Folios();
    bool Soltar(const QString &texto, const QPoint &punto);
    QStringList Servicios();
    QStringList Plan(const QString &tipo);
};

// What a drag of the selected rows carries.
QString PrTraslados::Folios()
{
    QString texto;
    Q_EMIT Lista().OLEStartDrag(texto);
    return texto;
}

bool PrTraslados::Soltar(const QString &texto, const QPoint &punto)
{
    QMimeData datos;
    datos.setText(texto);
    QDragEnterEvent entra(punto, Qt::CopyAction, &datos, Qt::LeftButton, Qt::NoModifier);
    QDragMoveEvent pasa(punto, Qt::CopyAction, &datos, Qt::LeftButton, Qt::NoModifier);
    QDropEvent cae(punto, Qt::CopyAction, &datos, Qt::LeftButton, Qt::NoModifier);
    bool tomado = true;
    for (QDropEvent *evento : {static_cast<QDropEvent *>(&entra), static_cast<QDropEvent *>(&pasa), &cae}) {
        QCoreApplication::sendEvent(Arbol().viewport(), evento);
        tomado = tomado && evento->isAccepted();
    }
    QCoreApplication::processEvents();
    return tomado;
}

// Where the services and their lines are, and who changed them last.
QStringList PrTraslados::Servicios()
{
    return escenario->Filas("SELECT Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Oper_Ult_Modif, Fecha_Ult_Modif, "
                            "(SELECT count(*) FROM Plan_Mantenimiento_Detalle d WHERE d.Te_Cve_Tipo_Equipo = "
                            "s.Te_Cve_Tipo_Equipo AND d.Tep_ID = s.Tep_ID AND d.Pm_ID = s.Pm_ID) "
                            "FROM Plan_Mantenimiento s ORDER BY Pm_ID");
}

void PrTraslados::mover()
{
    ElegirNodo(Arbol(), "N0002");
    Lista().topLevelItem(0)->setSelected(true);
    escenario->Traza();
    QVERIFY(Soltar(Folios(), Centro("N0005")));
    const QString elServicio = " Te_Cve_Tipo_Equipo = '0900'   AND Tep_ID = '0002'   AND Pm_ID = '000001' ";
    EnOrden(escenario->Traza(),
            {motor::Inicio(),
             "1\tSELECT * FROM Plan_Mantenimiento WHERE  Pm_ID = '000001'    AND Tep_ID = '0002'    AND "
             "Te_Cve_Tipo_Equipo = '0900' ",
             "1\tUPDATE Plan_Mantenimiento SET Tep_ID = '0005 ', Oper_Ult_Modif = 'mlopez', Fecha_Ult_Modif = "
             "'2026-03-14 09:26:53' WHERE"
                 + elServicio,
             "3\tUPDATE Plan_Mantenimiento_Detalle SET Tep_ID = '0005 ' WHERE" + elServicio,
             "1\tINSERT INTO Registro_Cambio (Rc_Tabla, Rc_Clave, Rc_Oper, Rc_Fecha) VALUES ('Plan_Mantenimiento', "
             "'0900|000001', 'mlopez', '2026-03-14 09:26:53')",
             "-\tCOMMIT"});
    QCOMPARE(Servicios(), (QStringList{"0900|0005 |000001|mlopez|2026-03-14 09:26:53|3",
                                       "0900|0002|000002|jcruz|2025-01-02 03:04:05|0",
                                       "0900|0003|000003|jcruz|2025-01-02 03:04:05|1"}));
    // The source part stays selected, without the service; the tree is as after a load and has the focus.
    QCOMPARE(Arbol().SelectedItem()->Key(), "N0002");
    QVERIFY(Arbol().Primero()->isExpanded() && Arbol().hasFocus());
    QCOMPARE(Lista().Count(), 1);
    QCOMPARE(Lista().Texto(0), "000002");
    ElegirNodo(Arbol(), "N0005"); // the blank does not count
    QCOMPARE(Lista().Texto(0), "000001");
}

// A drop moves one service of the selected part or changes nothing, with the right words.
void PrTraslados::soltar()
{
    const auto probar = [&](const QString &folio, const QString &destino, const QString &mensaje) {
        const QStringList antes = escenario->Tablas();
        QVERIFY(Soltar(folio, destino.isEmpty() ? Fuera() : Centro(destino)));
        QVERIFY(!Arbol().DropHighlight());
        QCOMPARE(Mensajes().join('\n'), mensaje);
        QCOMPARE(escenario->Tablas(), antes);
        escenario->Motor("UPDATE Producto SET Pr_Descripcion = Pr_Descripcion"); // nothing is left open
    };
    probar("000001", "N0005", "16|tvPartes_OLEDragDrop|KT580|ERR-ID:7500040|No hay una parte seleccionada en el árbol");
    ElegirNodo(Arbol(), "N0003");
    probar("000003", "N0003",
           "48|Quorvex|KT580|ERR-ID:7500038|El servicio seleccionado es de una parte dada de baja, no se puede copiar");
    ElegirNodo(Arbol(), "N0002");
    probar("000001", "N0003",
           "48|Quorvex|KT580|ERR-ID:7500039|No se puede copiar el servicio, la parte está dada de baja");
    Lista().topLevelItem(1)->setSelected(true);
    Lista().topLevelItem(0)->setSelected(true);
    QCOMPARE(Folios(), "000001\r\n000002");
    probar(Folios(), "N0005", ""); // two rows, which match no service
    probar("000001", "", "");      // below the nodes
    probar("000003", "N0005", ""); // of another part
    probar("x' OR '1'='1", "N0005",
           "16|Copiar_Servicio|KT580|ERR-ID:7500043|La sentencia contiene un carácter inesperado");
    QVERIFY(Soltar("000001", Centro("N0000"))); // meant so
    QCOMPARE(Servicios().constFirst(), "0900|RAIZ|000001|mlopez|2026-03-14 09:26:53|3");
}

// Everything of a type's plan but the type's key and the expense types.
QStringList PrTraslados::Plan(const QString &tipo)
{
    QStringList filas;
    for (const QString &consulta :
         {ColumnasParte + "FROM Tipo_Equipo_Parte", ColumnasServicio + "FROM Plan_Mantenimiento",
          ColumnasLinea + "FROM Plan_Mantenimiento_Detalle"})
        filas += escenario->Filas("SELECT " + consulta + " WHERE Te_Cve_Tipo_Equipo = '" + tipo + "' ORDER BY 1, 2, 3");
    return filas;
}

void PrTraslados::sinCopia()
{
    const QStringList antes = escenario->Tablas();
    const auto probar = [&](const QString &destino, const QString &mensaje) {
        escenario->Personas().Elegir("TIPO_EQUIPO", destino);
        Mandar("B3");
        QCOMPARE(Mensajes().join('\n'), mensaje);
        QCOMPARE(escenario->Tablas(), antes);
        QCOMPARE(Tipo().Text(), "0900");
    };
    probar("", "");
    probar("0900 ", "48|Quorvex|KT580|ERR-ID:7500033|El tipo de equipo seleccionado es igual al actual");
    escenario->Personas().Responder(7500049, qvx::mensaje::No);
    probar("0901", Pregunta); // which has no plan: asked all the same
}

void PrTraslados::copia()
{
    Preparar("INSERT INTO Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio) VALUES "
             "('0902', '0001', '000077', '9001');INSERT INTO Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Tep_ID, "
             "Pm_ID, Pmd_ID, Pmd_Tipo, Pr_Cve_Producto) VALUES ('0902', '0001', '000077', '000077', '03', "
             "'9000000003')");
    ElegirNodo(Arbol(), "N0005");
    const auto copiar = [&] {
        escenario->Personas().Elegir("TIPO_EQUIPO", "0902");
        escenario->Personas().Responder(7500049, qvx::mensaje::Si);
        escenario->Traza();
        Mandar("B3");
        QCOMPARE(Mensajes(), QStringList{Pregunta});
    };
    copiar();
    const QString borrada = "1\tDELETE FROM %1 WHERE Te_Cve_Tipo_Equipo = '0902' ";
    const QString copiada = "%1\tinsert into %2(Te_Cve_Tipo_Equipo,%3) SELECT '0902',%3%4WHERE Te_Cve_Tipo_Equipo = "
                            "'0900'  ";
    EnOrden(escenario->Traza(),
            {motor::Inicio(), borrada.arg("Plan_Mantenimiento_Detalle"), borrada.arg("Plan_Mantenimiento"),
             borrada.arg("Tipo_Equipo_Parte"),
             copiada.arg("6", "Tipo_Equipo_Parte", ColumnasParte, "from Tipo_Equipo_Parte "),
             copiada.arg("3", "Plan_Mantenimiento", ColumnasServicio, "FROM Plan_Mantenimiento  "),
             copiada.arg("4", "Plan_Mantenimiento_Detalle", ColumnasLinea, "FROM Plan_Mantenimiento_Detalle "),
             "-\tCOMMIT"});
    const QStringList plan = Plan("0900");
    QCOMPARE(plan.size(), 13);
    QCOMPARE(Plan("0902"), plan);
    QCOMPARE(escenario->Filas("SELECT Te_Cve_Tipo_Equipo FROM Plan_Mantenimiento_Detalle WHERE Pmd_Tipo_Gasto <> ''"),
             QStringList{"0900"});

    // The screen shows the target.
    QCOMPARE(Tipo().Text() + escenario->De<txtQVX>("txtNTipoEquipo").Text(), "0902AJENA");
    QVERIFY(Tipo().findChild<QLineEdit *>()->hasFocus());
    QCOMPARE(Arbol().Count(), 6);
    QCOMPARE(Barras(), "00000|Exportar XML|Importar XML|Copiar plan");

    // A plan without parts leaves none.
    Escribir(Tipo(), "0901");
    copiar();
    QCOMPARE(Plan("0902"), QStringList());
    QCOMPARE(Arbol().Count(), 1);
    QCOMPARE(Plan("0900"), plan);
}

PRUEBA_MAIN(PrTraslados)
#include "pr_traslados.moc"
