#include "controls/Comunes.h"
#include "controls/Controles.h"
#include "support/Averia.h"
#include "support/Plan.h"

using comunesQVX::ListView;
using comunesQVX::TreeView;
using toolbarQVX::Controles;

// Deleting a part for good: the question is asked after the statements, inside their transaction.
class PrEliminar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void eliminar_data();
    void eliminar();
    void sentencias();

private:
    TreeView &Arbol() { return escenario->De<TreeView>("tvPartes"); }
    Controles &Barra() { return escenario->De<Controles>("Controles"); }
    QStringList Mensajes() { return escenario->Personas().Tomar(); }
    QString Lista(const QString &condicion = "1 = 1");

    std::unique_ptr<Escenario> escenario;
    QWidget *pantalla = nullptr;
};

namespace
{

const QString Reactivada = "UPDATE Tipo_Equipo_Parte SET Es_Cve_Estado = 'AC' WHERE Tep_ID = '0003'";
const QString SinServicios = "DELETE FROM Plan_Mantenimiento";
const QString PreguntaHoja = "292|Quorvex|KT580|ERR-ID:7500047|¿Desea eliminar la parte?";
const QString PreguntaRama = "292|Quorvex|KT580|ERR-ID:7500046|¿Desea eliminar la parte y subpartes?";

} // namespace

void PrEliminar::init()
{
    escenario = std::make_unique<Escenario>();
    SembrarPlan(*escenario);
    pantalla = &escenario->Pantalla("0900");
}

void PrEliminar::cleanup()
{
    QCOMPARE(Mensajes(), QStringList());
    escenario.reset();
}

// The keys of the first type's parts.
QString PrEliminar::Lista(const QString &condicion)
{
    return escenario
        ->Filas("SELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' AND (" + condicion
                + ") ORDER BY Tep_ID")
        .join(' ');
}

void PrEliminar::eliminar_data()
{
    QTest::addColumn<QString>("preparacion");
    QTest::addColumn<QString>("nodo");
    QTest::addColumn<int>("respuesta");
    QTest::addColumn<QString>("mensaje");
    QTest::addColumn<QString>("quedan");   // in the table
    QTest::addColumn<int>("nodos");        // in the tree
    QTest::addColumn<QString>("selladas"); // signed anew
    const auto fila = [](const char *nombre, const QString &preparacion, const QString &nodo, int respuesta,
                         const QString &mensaje, const QString &quedan, int nodos, const QString &selladas) {
        QTest::newRow(nombre) << preparacion << nodo << respuesta << mensaje << quedan << nodos << selladas;
    };
    constexpr int Si = qvx::mensaje::Si;
    constexpr int No = qvx::mensaje::No;
    const QString todas = "0001 0002 0003 0004 0005 0006";
    fila("último hijo", "", "N0004", Si, PreguntaHoja, "0001 0002 0003 0005 0006", 5, "0003");
    fila("con hermana", SinServicios, "N0002", Si, PreguntaHoja, "0001 0003 0004 0005 0006", 5, "");
    fila("de la raíz", "", "N0005", Si, PreguntaHoja, "0001 0002 0003 0004 0006", 5, "");
    fila("con subpartes", "", "N0001", Si, PreguntaRama, "0002 0003 0004 0005 0006", 2, "");
    fila("en medio de la rama", SinServicios + ";" + Reactivada, "N0003", Si, PreguntaRama, "0001 0002 0004 0005 0006",
         4, "");
    fila("renglones sueltos", "UPDATE Plan_Mantenimiento_Detalle SET Tep_ID = '0004'", "N0004", Si, PreguntaHoja,
         "0001 0002 0003 0005 0006", 5, "0003");
    fila("hoja, No", "", "N0004", No, PreguntaHoja, todas, 6, "");
    fila("rama, No", "", "N0001", No, PreguntaRama, todas, 6, "");
    fila("con servicios", "", "N0002", 0,
         "48|Quorvex|KT580|ERR-ID:7500044|La parte seleccionada tiene un plan de mantenimiento, imposible eliminar",
         todas, 6, "");
}

// The statements run before the question: until it is answered with Yes, nobody else sees anything of them.
void PrEliminar::eliminar()
{
    QFETCH(QString, preparacion);
    QFETCH(QString, nodo);
    QFETCH(int, respuesta);
    QFETCH(QString, mensaje);
    for (const QString &sentencia : preparacion.split(';', Qt::SkipEmptyParts))
        escenario->Motor(sentencia);
    QTest::keyClick(&Arbol(), Qt::Key_F5);
    ElegirNodo(Arbol(), nodo);
    const QStringList antes = escenario->Tablas();
    if (respuesta != 0)
        escenario->Personas().Responder(mensaje == PreguntaHoja ? 7500047 : 7500046, respuesta,
                                        [&] { QCOMPARE(escenario->Tablas(), antes); });
    escenario->Traza();
    Pulsar(Barra(), "B1");
    const QStringList traza = escenario->Traza();
    QCOMPARE(escenario->Personas().ventanas, QList<WId>{pantalla->winId()});
    QCOMPARE(Mensajes(), QStringList{mensaje});
    QTEST(Lista(), "quedan");
    QTEST(Arbol().Count(), "nodos");
    QTEST(Lista("Oper_Ult_Modif || Fecha_Ult_Modif = 'mlopez2026-03-14 09:26:53'"), "selladas");
    if (respuesta == qvx::mensaje::Si) {
        QVERIFY(!Arbol().SelectedItem() && Arbol().Primero()->isExpanded());
        QCOMPARE(escenario->De<ListView>("lvServicios").Count(), 0);
        QVERIFY(!Barra().NuevoDisponible() && !Barra().ExtrasDisponibles() && Barra().Titulo1() != "Eliminar parte");
        QCOMPARE(
            escenario->Motor("SELECT count(*) FROM Plan_Mantenimiento_Detalle WHERE Tep_ID = '" + nodo.mid(1) + "'")
                .toInt(),
            0);
        QVERIFY(escenario->Tablas().filter("AJENA").size() == antes.filter("AJENA").size());
        return;
    }
    QCOMPARE(escenario->Tablas(), antes);
    QVERIFY(traza.contains("-\tROLLBACK") && !traza.contains("-\tABANDONADA"));
    QCOMPARE(Arbol().SelectedItem()->Key(), nodo);
}

void PrEliminar::sentencias()
{
    ElegirNodo(Arbol(), "N0004");
    escenario->Personas().Responder(7500047, qvx::mensaje::Si);
    escenario->Traza();
    Pulsar(Barra(), "B1");
    Mensajes();
    const QStringList traza = escenario->Traza();
    const QString dela = "WHERE Te_Cve_Tipo_Equipo = '0900'    AND Tep_ID = '0004' ";
    QCOMPARE(traza.value(1), "0\tSELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Tep_Padre = '0004' AND Te_Cve_Tipo_Equipo "
                             "= '0900'  ");
    QCOMPARE(traza.value(2), motor::Inicio());
    QVERIFY(traza.value(3).contains(
        "WHERE  Plan_Mantenimiento.Te_Cve_Tipo_Equipo = '0900'    AND Plan_Mantenimiento.Tep_ID = '0004'"));
    QCOMPARE(
        traza.mid(4, 4),
        (QStringList{"0\tDELETE FROM Plan_Mantenimiento_Detalle " + dela, "0\tDELETE FROM Plan_Mantenimiento " + dela,
                     "1\tSELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Tep_ID = '0004' and Te_Cve_Tipo_Equipo = "
                     "'0900' ORDER BY Tep_ID ",
                     "1\tDELETE FROM Tipo_Equipo_Parte WHERE Tep_ID = '0004' and Te_Cve_Tipo_Equipo = '0900'"}));
    // The nested call meets the same key, already gone.
    QCOMPARE(traza.value(12), "0\tDELETE FROM Tipo_Equipo_Parte WHERE Tep_ID = '0004' and Te_Cve_Tipo_Equipo = '0900'");
    QCOMPARE(
        traza.mid(13, 3),
        (QStringList{"0\tSELECT * FROM Tipo_Equipo_Parte WHERE Tep_Padre = '0003' and Te_Cve_Tipo_Equipo = '0900' ",
                     "1\tUPDATE Tipo_Equipo_Parte SET    Oper_Ult_Modif = 'mlopez',   Fecha_Ult_Modif = "
                     "'2026-03-14 09:26:53'WHERE Tep_ID = '0003' and Te_Cve_Tipo_Equipo = '0900' ",
                     "-\tCOMMIT"}));
}

PRUEBA_MAIN(PrEliminar)
#include "pr_eliminar.moc"
