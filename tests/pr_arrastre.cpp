#include "support/PruebaPantalla.h"

#include <QDragEnterEvent>
#include <QMimeData>

// Moving services by dropping them on the tree, through the events that the tree's view gets from the window system.
class PrArrastre : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void mover();
    void resaltado();
    void textoDelArrastre();
    void soltar_data();
    void soltar();

private:
    QPoint Centro(const QString &nodo)
    {
        Arbol().expandAll();
        return Arbol().visualItemRect(Arbol().Item(nodo)).center();
    }
    QString Folios();
    template <class Evento>
    bool Enviar(const QPoint &punto, const QMimeData &datos, Qt::DropActions acciones = Qt::CopyAction);
    bool Soltar(const QString &texto, const QString &nodo);
    QStringList Servicios();
};

namespace
{

const QString DelServicio = " Te_Cve_Tipo_Equipo = '0900'   AND Tep_ID = '0002'   AND Pm_ID = '000001' ";
const QString NodoFuera = "fuera"; // a place of the tree below its nodes

} // namespace

// What a drag of the selected rows carries.
QString PrArrastre::Folios()
{
    QString texto;
    Q_EMIT Lista().OLEStartDrag(texto);
    return texto;
}

template <class Evento>
bool PrArrastre::Enviar(const QPoint &punto, const QMimeData &datos, Qt::DropActions acciones)
{
    Evento evento(punto, acciones, &datos, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(Arbol().viewport(), &evento);
    return evento.isAccepted() && evento.dropAction() == Qt::CopyAction;
}

bool PrArrastre::Soltar(const QString &texto, const QString &nodo)
{
    const QPoint punto = nodo == NodoFuera ? Arbol().viewport()->rect().bottomLeft() - QPoint(-5, 5) : Centro(nodo);
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
    QVERIFY(Soltar(Folios(), "N0005"));
    EnOrden(escenario->Traza(),
            {motor::Inicio(),
             "1\tSELECT * FROM Plan_Mantenimiento WHERE  Pm_ID = '000001'    AND Tep_ID = '0002'    AND "
             "Te_Cve_Tipo_Equipo = '0900' ",
             "1\tUPDATE Plan_Mantenimiento SET Tep_ID = '0005 ', Oper_Ult_Modif = 'mlopez', Fecha_Ult_Modif = "
             "'2026-03-14 09:26:53' WHERE"
                 + DelServicio,
             "3\tUPDATE Plan_Mantenimiento_Detalle SET Tep_ID = '0005 ' WHERE" + DelServicio,
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
    QVERIFY(Soltar(Folios(), "N0002"));
    QCOMPARE(Servicios().constFirst(), "0900|0002 |000001|mlopez|2026-03-14 09:26:53|3");
}

// The highlight follows the pointer, and goes with it; what is no text, or not to be copied, is not taken.
void PrArrastre::resaltado()
{
    QMimeData datos;
    datos.setText("000001");
    QVERIFY(Enviar<QDragEnterEvent>(Centro("N0001"), datos));
    for (const char *nodo : {"N0001", "N0003"}) {
        QVERIFY(Enviar<QDragMoveEvent>(Centro(nodo), datos));
        QCOMPARE(Arbol().DropHighlight(), Arbol().Item(nodo));
    }
    Enviar<QDragMoveEvent>(Arbol().viewport()->rect().bottomLeft(), datos);
    QVERIFY(!Arbol().DropHighlight());
    Enviar<QDragMoveEvent>(Centro("N0001"), datos);
    QDragLeaveEvent salida;
    QCoreApplication::sendEvent(Arbol().viewport(), &salida);
    QVERIFY(!Arbol().DropHighlight());
    QVERIFY(!Enviar<QDragEnterEvent>(Centro("N0001"), datos, Qt::MoveAction));
    QMimeData imagen;
    imagen.setData("image/png", "x");
    QVERIFY(!Enviar<QDragEnterEvent>(Centro("N0001"), imagen));
    QVERIFY(!Enviar<QDropEvent>(Centro("N0001"), imagen));
}

// The folios of the selected rows in the list's order. Several rows match no service: nothing happens, and nothing
// stays behind. A list that a 16-bit counter cannot walk drags nothing.
void PrArrastre::textoDelArrastre()
{
    ElegirNodo(Arbol(), "N0002");
    QCOMPARE(Folios(), "");
    Lista().topLevelItem(1)->setSelected(true);
    Lista().topLevelItem(0)->setSelected(true);
    QCOMPARE(Folios(), "000001\r\n000002");
    const QStringList antes = escenario->Tablas();
    escenario->Traza();
    QVERIFY(Soltar(Folios(), "N0005"));
    QCOMPARE(escenario->Traza(),
             (QStringList{motor::Inicio(),
                          "0\tSELECT * FROM Plan_Mantenimiento WHERE  Pm_ID = '000001\\r\\n000002'    AND Tep_ID = "
                          "'0002'    AND Te_Cve_Tipo_Equipo = '0900' ",
                          "-\tABANDONADA", "-\tROLLBACK"}));
    QCOMPARE(escenario->Tablas(), antes);
    for (int fila = Lista().Count(); fila < 32768; ++fila)
        Lista().AgregarFila({QString::number(fila)});
    QCOMPARE(Folios(), "");
    QCOMPARE(Mensajes(), QStringList{"16|Quorvex|QVX|ERR-ID:1000000|Desbordamiento"});
}

void PrArrastre::soltar_data()
{
    const Tabla<QString, QString, QString, QString, QString> fila("origen", "destino", "texto", "cambio", "mensaje");
    const QString aviso = "48|Quorvex|KT580|ERR-ID:";
    const QString trampa = "16|Copiar_Servicio|KT580|ERR-ID:7500043|";
    const QString firmada = "|000001|mlopez|2026-03-14 09:26:53|3";
    fila("de una de baja", "N0003", "N0005", "000003", "",
         aviso + "7500038|El servicio seleccionado es de una parte dada de baja, no se puede copiar");
    fila("a una de baja", "N0002", "N0003", "000001", "",
         aviso + "7500039|No se puede copiar el servicio, la parte está dada de baja");
    fila("a la clave 0000", "N0002", "N0000-1", "000001", "",
         aviso + "7500041|No se puede crear un servicio a la raíz");
    fila("a la raíz", "N0002", "N0000", "000001", "0900|RAIZ" + firmada, "");
    fila("a la misma", "N0002", "N0002", "000001", "0900|0002 " + firmada, "");
    fila("fuera", "N0002", NodoFuera, "000001", "", "");
    fila("sin parte", "", "N0005", "000001", "",
         "16|tvPartes_OLEDragDrop|KT580|ERR-ID:7500040|No hay una parte seleccionada en el árbol");
    fila("texto vacío", "N0002", "N0005", "", "", "");
    fila("folio de otra parte", "N0002", "N0005", "000003", "", "");
    fila("condición ajena", "N0002", "N0005", "x' OR '1'='1", "",
         trampa + "La sentencia contiene un carácter inesperado");
}

// A drop moves one service of the selected part or changes nothing, with the right words, on the screen's window.
void PrArrastre::soltar()
{
    QFETCH(QString, origen);
    QFETCH(QString, destino);
    QFETCH(QString, texto);
    QFETCH(QString, cambio);
    QFETCH(QString, mensaje);
    Preparar("INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) VALUES ('0900', "
             "'0000-1', '0000', 'CASI RAÍZ')");
    if (!origen.isEmpty())
        ElegirNodo(Arbol(), origen);
    QStringList esperados = Servicios();
    if (!cambio.isEmpty())
        esperados.replace(0, cambio);
    QVERIFY(Soltar(texto, destino));
    QVERIFY(!Arbol().DropHighlight());
    QCOMPARE(Servicios(), esperados);
    QCOMPARE(escenario->Personas().ventanas, QList<WId>(mensaje.isEmpty() ? 0 : 1, pantalla->winId()));
    QCOMPARE(Mensajes().join('\n'), mensaje);
    escenario->Motor("UPDATE Producto SET Pr_Descripcion = 'OTRO'"); // nothing is left open
}

PRUEBA_MAIN(PrArrastre)
#include "pr_arrastre.moc"
