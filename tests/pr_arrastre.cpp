#include "support/PruebaPantalla.h"

#include <QDragEnterEvent>
#include <QMimeData>

// Moving services by dropping them on the tree, through the events that the tree's view gets from the window system.
class PrArrastre : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void mover();
    void soltar();

private:
    QPoint Centro(const QString &nodo)
    {
        Arbol().expandAll();
        return Arbol().visualItemRect(Arbol().Item(nodo)).center();
    }
    QPoint Fuera() { return Arbol().viewport()->rect().bottomLeft() - QPoint(-5, 5); } // below the nodes
    QString Folios();
    template <class Evento>
    bool Enviar(const QPoint &punto, const QMimeData &datos);
    bool Soltar(const QString &texto, const QPoint &punto);
    QStringList Servicios();
};

// What a drag of the selected rows carries.
QString PrArrastre::Folios()
{
    QString texto;
    Q_EMIT Lista().OLEStartDrag(texto);
    return texto;
}

template <class Evento>
bool PrArrastre::Enviar(const QPoint &punto, const QMimeData &datos)
{
    Evento evento(punto, Qt::CopyAction, &datos, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(Arbol().viewport(), &evento);
    return evento.isAccepted();
}

bool PrArrastre::Soltar(const QString &texto, const QPoint &punto)
{
    QMimeData datos;
    datos.setText(texto);
    const bool tomado = Enviar<QDragEnterEvent>(punto, datos) && Enviar<QDragMoveEvent>(punto, datos)
                        && Enviar<QDropEvent>(punto, datos);
    QCoreApplication::processEvents();
    return tomado;
}

// Where the services and their lines are, and who changed them last.
QStringList PrArrastre::Servicios()
{
    return escenario->Filas("SELECT Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Oper_Ult_Modif, Fecha_Ult_Modif, "
                            "(SELECT count(*) FROM Plan_Mantenimiento_Detalle d WHERE d.Te_Cve_Tipo_Equipo = "
                            "s.Te_Cve_Tipo_Equipo AND d.Tep_ID = s.Tep_ID AND d.Pm_ID = s.Pm_ID) "
                            "FROM Plan_Mantenimiento s ORDER BY Pm_ID");
}

void PrArrastre::mover()
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
    Lista().topLevelItem(0)->setSelected(true);
    QVERIFY(Soltar(Folios(), Centro("N0002")));
    QCOMPARE(Servicios().constFirst(), "0900|0002 |000001|mlopez|2026-03-14 09:26:53|3");
}

// A drop moves one service of the selected part or changes nothing, with the right words.
void PrArrastre::soltar()
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

PRUEBA_MAIN(PrArrastre)
#include "pr_arrastre.moc"
