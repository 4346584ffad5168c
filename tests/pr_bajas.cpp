#include "controls/Comunes.h"
#include "controls/Controles.h"
#include "controls/txtQVX.h"
#include "support/Averia.h"
#include "support/Plan.h"

#include <QRegularExpression>

using comunesQVX::ListView;
using comunesQVX::TreeView;
using toolbarQVX::Controles;

// Retiring parts and bringing them back, and every way in which that or a deletion fails. Commands by their names on
// the toolbar: Eliminar retires, B1 deletes for good.
class PrBajas : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void estados_data();
    void estados();
    void sentencias();
    void raiz_data();
    void raiz();
    void fallas_data();
    void fallas();
    void eliminadaPorOtro();
    void ramaHonda();
    void parteAncha();

private:
    TreeView &Arbol() { return escenario->De<TreeView>("tvPartes"); }
    Controles &Barra() { return escenario->De<Controles>("Controles"); }
    QStringList Mensajes() { return escenario->Personas().Tomar(); }
    void Preparar(const QString &sql);
    QString Lista(const QString &columnas, const QString &condicion = "1 = 1");
    void Vuelta();
    void Cambiar(const QString &comando);

    std::unique_ptr<Escenario> escenario;
    QWidget *pantalla = nullptr;
};

namespace
{

const QString Retiradas = "UPDATE Tipo_Equipo_Parte SET Es_Cve_Estado = 'BA', Oper_Baja = 'jcruz', Fecha_Baja = "
                          "'2025-05-05 05:05:05' WHERE Te_Cve_Tipo_Equipo = '0900' AND Tep_ID IN ";
const QString PreguntaReactivar = "321|Quorvex|KT580|ERR-ID:7500045|Se reactivará la parte y la subparte seleccionada";
const QString PreguntaHoja = "292|Quorvex|KT580|ERR-ID:7500047|¿Desea eliminar la parte?";

// The trace in short, up to the reload: U and u a part updated by its own call and by its parent's loop, B an entry in
// the log of states, S the children read, R the change registered, and the transaction's orders.
QString EnCorto(const QStringList &traza)
{
    static const QRegularExpression cambio("UPDATE Tipo_Equipo_Parte .*WHERE( +)Tep_ID = '(\\w+)'");
    static const QRegularExpression estado("INTO Bitacora .*VALUES \\('Tipo_Equipo_Parte', '0900(\\w+)', '(\\w)");
    static const QRegularExpression hijos("SELECT Tep_ID FROM .*Tep_Padre = '(\\w+)'");
    QStringList corto;
    for (const QString &renglon : traza) {
        if (const auto hallado = cambio.match(renglon); hallado.hasMatch())
            corto.append((hallado.captured(1).size() == 1 ? "U" : "u") + hallado.captured(2));
        else if (const auto bitacora = estado.match(renglon); bitacora.hasMatch())
            corto.append("B" + bitacora.captured(1));
        else if (const auto lectura = hijos.match(renglon); lectura.hasMatch())
            corto.append("S" + lectura.captured(1));
        else if (renglon.contains("INTO Registro_Cambio"))
            corto.append("R");
        else if (renglon.startsWith("-\t"))
            corto.append(renglon.mid(2).section(' ', 0, 0));
    }
    return corto.join(' ');
}

} // namespace

void PrBajas::init()
{
    escenario = std::make_unique<Escenario>();
    SembrarPlan(*escenario);
    pantalla = &escenario->Pantalla("0900");
}

void PrBajas::cleanup()
{
    QCOMPARE(Mensajes(), QStringList());
    escenario.reset();
}

// Changes the tables as another program does, and reads the tree again.
void PrBajas::Preparar(const QString &sql)
{
    for (const QString &sentencia : sql.split(';', Qt::SkipEmptyParts))
        escenario->Motor(sentencia);
    QTest::keyClick(&Arbol(), Qt::Key_F5);
}

// Parts of the first type, each as these columns.
QString PrBajas::Lista(const QString &columnas, const QString &condicion)
{
    return escenario
        ->Filas("SELECT " + columnas + " FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' AND (" + condicion
                + ") ORDER BY Tep_ID")
        .join(' ');
}

// What the screen looks like after each of the commands: read again, nothing selected, nothing on offer.
void PrBajas::Vuelta()
{
    QVERIFY(!Arbol().SelectedItem());
    QVERIFY(Arbol().Primero()->isExpanded());
    QCOMPARE(escenario->De<ListView>("lvServicios").Count(), 0);
    const Controles &barra = Barra();
    QVERIFY(!barra.NuevoDisponible() && !barra.EditarDisponible() && !barra.EliminarDisponible());
    QVERIFY(!barra.ReactivarDisponible() && !barra.ExtrasDisponibles());
    QVERIFY(barra.Titulo1() != "Eliminar parte" && barra.Titulo2() != "Agregar servicio");
}

void PrBajas::estados_data()
{
    QTest::addColumn<QString>("preparacion");
    QTest::addColumn<QString>("nodo");
    QTest::addColumn<int>("respuesta"); // 0: nothing is asked
    QTest::addColumn<QString>("traza");
    QTest::addColumn<QString>("estados");
    QTest::addColumn<QString>("bajas"); // parts that carry a retirement's signature
    const auto fila = [](const char *nombre, const QString &preparacion, const QString &nodo, int respuesta,
                         const QString &traza, const QString &estados, const QString &bajas) {
        QTest::newRow(nombre) << preparacion << nodo << respuesta << traza << estados << bajas;
    };
    const QString todas = Retiradas + "('0001', '0002', '0003', '0004', '0005')";
    fila("baja de una hoja", "", "N0005", 0, "S0005 BEGIN U0005 B0005 S0005 R COMMIT",
         "0001AC 0002AC 0003BA 0004AC 0005BA 0006AC", "0005");
    fila("baja de una rama", "", "N0001", 0,
         "S0001 BEGIN U0001 B0001 S0001 u0002 B0002 U0002 B0002 S0002 "
         "u0003 B0003 U0003 B0003 S0003 u0004 B0004 U0004 B0004 S0004 R COMMIT",
         "0001BA 0002BA 0003BA 0004BA 0005AC 0006AC", "0001 0002 0003 0004");
    fila("reactivación bajo una activa", Retiradas + "('0003', '0004')", "N0003", 0,
         "S0003 BEGIN U0003 B0003 S0003 u0004 B0004 U0004 B0004 S0004 R COMMIT",
         "0001AC 0002AC 0003AC 0004AC 0005AC 0006AC", "0003 0004");
    fila("reactivación bajo la raíz", Retiradas + "('0005')", "N0005", 0, "S0005 BEGIN U0005 B0005 S0005 R COMMIT",
         "0001AC 0002AC 0003BA 0004AC 0005AC 0006AC", "0005");
    fila("reactivación con la de arriba, no más", todas, "N0004", qvx::mensaje::Aceptar,
         "S0004 BEGIN U0003 B0003 U0004 B0004 S0004 R COMMIT", "0001BA 0002BA 0003AC 0004AC 0005BA 0006AC",
         "0001 0002 0003 0004 0005");
    fila("reactivación sin la de arriba", todas, "N0003", qvx::mensaje::Cancelar,
         "S0003 BEGIN U0003 B0003 S0003 u0004 B0004 U0004 B0004 S0004 R COMMIT",
         "0001BA 0002BA 0003AC 0004AC 0005BA 0006AC", "0001 0002 0003 0004 0005");
}

void PrBajas::estados()
{
    QFETCH(QString, preparacion);
    QFETCH(QString, nodo);
    QFETCH(int, respuesta);
    Preparar(preparacion);
    ElegirNodo(Arbol(), nodo);
    const bool retira = Barra().EliminarDisponible();
    const QStringList antes = escenario->Tablas();
    const QString ajena = antes.filter("AJENA").join("\n");
    if (respuesta != 0) // while it is asked, other programs read the plan as it was
        escenario->Personas().Responder(7500045, respuesta, [&] { QCOMPARE(escenario->Tablas(), antes); });
    escenario->Traza();
    Pulsar(Barra(), retira ? "Eliminar" : "Reactivar");
    QStringList traza = escenario->Traza();
    QCOMPARE(Mensajes(), respuesta != 0 ? QStringList{PreguntaReactivar} : QStringList());

    QTEST(EnCorto(traza), "traza");
    QTEST(Lista("Tep_ID || Es_Cve_Estado"), "estados");
    const QString baja = retira ? "mlopez2026-03-14 09:26:53" : "jcruz2025-05-05 05:05:05"; // kept by a reactivation
    QTEST(Lista("Tep_ID", "Oper_Baja || Fecha_Baja = '" + baja + "'"), "bajas");
    QCOMPARE(escenario->Tablas().filter("AJENA").join("\n"), ajena);
    // Each write is signed and logged, in the order of the writes.
    QStringList escritas;
    for (const QString &paso : EnCorto(traza).split(' '))
        if (paso.startsWith('U') || paso.startsWith('u'))
            escritas.append(paso.mid(1));
    const QString firma = "mlopez|2026-03-14 09:26:53";
    QStringList entradas;
    for (const QString &parte : escritas)
        entradas.append("Tipo_Equipo_Parte|0900" + parte + "|" + (retira ? "Baja" : "Reactivación") + "|" + firma);
    QCOMPARE(escenario->Filas("SELECT Bi_Tabla, Bi_Clave, Bi_Accion, Bi_Oper, Bi_Fecha FROM Bitacora ORDER BY Bi_ID"),
             entradas);
    escritas.removeDuplicates();
    escritas.sort();
    QCOMPARE(Lista("Tep_ID", "Oper_Ult_Modif || '|' || Fecha_Ult_Modif = '" + firma + "'"), escritas.join(' '));
    QCOMPARE(escenario->Filas("SELECT Rc_Tabla, Rc_Clave FROM Registro_Cambio"),
             QStringList{"Tipo_Equipo_Parte|" + nodo.mid(1) + "|0900"});
    Vuelta();
    QCOMPARE(Arbol().Item(nodo)->Image(), retira ? 3 : 1);
    QCOMPARE(Arbol().Count(), 6);
}

// The texts of the statements, blanks included.
void PrBajas::sentencias()
{
    const QString firma = "   Oper_Ult_Modif = 'mlopez',    Fecha_Ult_Modif = '2026-03-14 09:26:53', ";
    const QString baja = "   Oper_Baja = 'mlopez',    Fecha_Baja = '2026-03-14 09:26:53', ";
    ElegirNodo(Arbol(), "N0001");
    escenario->Traza();
    Pulsar(Barra(), "Eliminar");
    QStringList traza = escenario->Traza();
    const QString hijos = "2\tSELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Tep_Padre = '0001' AND Te_Cve_Tipo_Equipo = "
                          "'0900' ";
    QCOMPARE(traza.value(0), hijos);
    QCOMPARE(traza.value(2), "1\tUPDATE Tipo_Equipo_Parte SET" + firma + baja
                                 + "   Es_Cve_Estado = 'BA' WHERE Tep_ID = '0001' AND Te_Cve_Tipo_Equipo = '0900' ");
    QCOMPARE(traza.value(4), hijos);
    QCOMPARE(traza.value(5), "1\tUPDATE Tipo_Equipo_Parte SET" + firma + baja
                                 + "   Es_Cve_Estado = 'BA' WHERE    Tep_ID = '0002'    AND Te_Cve_Tipo_Equipo = "
                                   "'0900'    AND Tep_Padre = '0001' ");

    ElegirNodo(Arbol(), "N0003");
    escenario->Personas().Responder(7500045, qvx::mensaje::Aceptar);
    escenario->Traza();
    Pulsar(Barra(), "Reactivar");
    Mensajes();
    traza = escenario->Traza();
    QCOMPARE(traza.value(0), "1\tSELECT Tep_Padre FROM Tipo_Equipo_Parte WHERE Tep_ID = '0003' and Te_Cve_Tipo_Equipo "
                             "= '0900' ");
    QCOMPARE(traza.value(1), "1\tSELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Tep_Padre = '0003' and Te_Cve_Tipo_Equipo "
                             "= '0900' ");
    QCOMPARE(traza.value(2),
             "1\tSELECT Tep_Padre,    Es_Cve_Estado = (SELECT Es_Cve_Estado FROM Tipo_Equipo_Parte WHERE Tep_ID =  "
             "'0001' AND Te_Cve_Tipo_Equipo = '0900' ) FROM Tipo_Equipo_Parte WHERE Tep_ID =  '0003' AND "
             "Te_Cve_Tipo_Equipo = '0900' ");
    const QString activar = "1\tUPDATE Tipo_Equipo_Parte SET" + firma + "   Es_Cve_Estado = 'AC' WHERE ";
    QCOMPARE(traza.value(4), activar + "Tep_ID = '0001' AND Te_Cve_Tipo_Equipo = '0900' ");
    QCOMPARE(traza.value(6), activar + "Tep_ID = '0003' AND Te_Cve_Tipo_Equipo = '0900' ");
    QCOMPARE(traza.value(9), activar
                                 + "   Tep_ID = '0004'    AND Te_Cve_Tipo_Equipo = '0900'    AND Tep_Padre = "
                                   "'0003' ");
}

void PrBajas::raiz_data()
{
    QTest::addColumn<QString>("nodo");
    QTest::addColumn<QString>("comando");
    QTest::addColumn<QString>("mensaje");
    const auto fila = [](const char *nodo, const char *comando, const char *mensaje) {
        QTest::newRow(comando) << nodo << comando << QString::fromUtf8("48|Quorvex|KT580|ERR-ID:") + mensaje;
    };
    fila("N0005", "Eliminar", "7500008|La parte del equipo no es válido para esta operación");
    fila("N0003", "Reactivar", "7500012|La parte del equipo no es válido para está operación");
    fila("N0005", "B1", "7500019|No se puede eliminar la raíz");
}

// Selected in code, the root leaves on offer what the node before it had.
void PrBajas::raiz()
{
    QFETCH(QString, nodo);
    QFETCH(QString, comando);
    ElegirNodo(Arbol(), nodo);
    Arbol().setSelectedItem(Arbol().Item("N0000"));
    escenario->Traza();
    Pulsar(Barra(), comando);
    QCOMPARE(escenario->Personas().ventanas, QList<WId>{pantalla->winId()});
    QTEST(Mensajes().join("\n"), "mensaje");
    Arbol().setSelectedItem(nullptr);
    Pulsar(Barra(), comando);
    QCOMPARE(escenario->Traza(), QStringList());
}

void PrBajas::fallas_data()
{
    QTest::addColumn<QString>("comando");
    QTest::addColumn<QString>("falla");
    QTest::addColumn<int>("preguntas"); // before it fails
    QTest::addColumn<QString>("mensaje");
    const auto fila = [](const char *nombre, const QString &comando, const QString &falla, int preguntas,
                         const QString &mensaje) { QTest::newRow(nombre) << comando << falla << preguntas << mensaje; };
    const QString sinTabla = "ALTER TABLE Tipo_Equipo_Parte RENAME TO Guardada";
    const auto parte = [](const QString &clave) {
        return "UPDATE ON Tipo_Equipo_Parte WHEN NEW.Tep_ID = '" + clave + "'";
    };
    const auto bitacora = [](const QString &clave) {
        return "INSERT ON Bitacora WHEN NEW.Bi_Clave = '0900" + clave + "'";
    };
    const auto segunda = [](const QString &clave) {
        return "INSERT ON Bitacora WHEN NEW.Bi_Clave = '0900" + clave
               + "' AND (SELECT count(*) FROM Bitacora WHERE Bi_Clave = NEW.Bi_Clave) = 1";
    };
    const QString registro = "INSERT ON Registro_Cambio";

    // Retires 0001 with 0002, 0003 and 0004 below it.
    const QString baja = "48|Quorvex|KT580|ERR-ID:7500009|Error al dar de baja la parte del equipo";
    const QString trampaBaja = "16|Controles_Eliminar()|KT580|ERR-ID:7500011|";
    const QString avisoBaja = "48|Quorvex|KT580|ERR-ID:7500010|";
    fila("baja: lectura", "Eliminar", sinTabla, 0, trampaBaja + motor::NoHayTabla("Tipo_Equipo_Parte"));
    fila("baja: inicio", "Eliminar", "ocupada", 0, motor::Segun(trampaBaja + motor::Ocupada(), baja));
    fila("baja: la parte", "Eliminar", parte("0001"), 0, baja);
    fila("baja: su bitácora", "Eliminar", bitacora("0001"), 0, baja);
    fila("baja: un hijo", "Eliminar", parte("0002"), 0, baja);
    fila("baja: bitácora de un hijo", "Eliminar", bitacora("0002"), 0, baja);
    fila("baja: un hijo en su llamada", "Eliminar", segunda("0002"), 0, baja);
    // What the last call of all answers is not passed on: the transaction that it doomed refuses the registration.
    fila("baja: el último en su llamada", "Eliminar", segunda("0004"), 0,
         avisoBaja + "La transacción falló y debe deshacerse: falla");
    fila("baja: registro", "Eliminar", registro, 0, avisoBaja + "falla");
    fila("baja: confirmación", "Eliminar", "confirmación", 0, trampaBaja + motor::NoConfirma());

    // Reactivates 0003, with 0004 below it, under a retired 0001.
    const QString reactivar = "48|Quorvex|KT580|ERR-ID:7500013|Error al reactivar la parte del equipo";
    const QString trampaReactivar = "16|Controles_Reactivar()|KT580|ERR-ID:7500015|";
    fila("reactivar: lectura", "Reactivar", sinTabla, 0, trampaReactivar + motor::NoHayTabla("Tipo_Equipo_Parte"));
    fila("reactivar: la de arriba", "Reactivar", parte("0001"), 1, trampaReactivar + "falla");
    fila("reactivar: bitácora de la de arriba", "Reactivar", bitacora("0001"), 1, trampaReactivar + "falla");
    fila("reactivar: la parte", "Reactivar", parte("0003"), 1, reactivar);
    fila("reactivar: un hijo", "Reactivar", parte("0004"), 1, reactivar);
    fila("reactivar: registro", "Reactivar", registro, 1, "48|Quorvex|KT580|ERR-ID:7500014|falla");

    // Deletes 0004, the only child of 0003. There is no row of Plan_Mantenimiento whose deletion could fail: a part
    // with one is refused before.
    const QString trampaEliminar = "16|Controles_B1Click()|KT580|ERR-ID:7500016|";
    fila("eliminar: lectura", "B1", sinTabla, 0, trampaEliminar + motor::NoHayTabla("Tipo_Equipo_Parte"));
    fila("eliminar: consulta", "B1", "ALTER TABLE Prioridad_Servicio RENAME TO Guardada", 0,
         trampaEliminar + motor::NoHayTabla("Prioridad_Servicio"));
    fila("eliminar: renglones", "B1", "DELETE ON Plan_Mantenimiento_Detalle", 0, trampaEliminar + "falla");
    fila("eliminar: la parte", "B1", "DELETE ON Tipo_Equipo_Parte", 0, trampaEliminar + "falla");
    fila("eliminar: sello", "B1", parte("0003"), 1, trampaEliminar + "falla");
    fila("eliminar: confirmación", "B1", "confirmación", 1, trampaEliminar + motor::NoConfirma());
}

// Whatever fails: the tables are as before and unlocked, the node is still chosen, and the same command then succeeds.
void PrBajas::fallas()
{
    QFETCH(QString, comando);
    QFETCH(QString, falla);
    QFETCH(int, preguntas);
    if (comando == "Reactivar")
        Preparar(Retiradas + "('0001')");
    else if (comando == "B1")
        Preparar("UPDATE Plan_Mantenimiento_Detalle SET Tep_ID = '0004' WHERE Tep_ID = '0003'");
    ElegirNodo(Arbol(), comando == "Eliminar" ? "N0001" : comando == "Reactivar" ? "N0003" : "N0004");
    const auto responder = [&] {
        if (comando == "Reactivar")
            escenario->Personas().Responder(7500045, qvx::mensaje::Aceptar);
        else if (comando == "B1")
            escenario->Personas().Responder(7500047, qvx::mensaje::Si);
    };
    const QStringList antes = escenario->Tablas();
    Averia averia(*escenario, falla);
    if (preguntas > 0)
        responder();
    escenario->Traza();
    Pulsar(Barra(), comando);
    averia.Reparar();
    QCOMPARE(escenario->Personas().ventanas.constLast(), pantalla->winId());
    const QStringList mensajes = Mensajes();
    QCOMPARE(mensajes.size(), preguntas + 1);
    QTEST(mensajes.constLast(), "mensaje");
    if (mensajes.constLast().startsWith("48")) // a refusal takes its transaction back by itself
        QVERIFY(!escenario->Traza().contains("-\tABANDONADA"));

    QCOMPARE(escenario->Tablas(), antes);
    QVERIFY(Arbol().SelectedItem());
    responder();
    Pulsar(Barra(), comando);
    QVERIFY(Mensajes().filter(QRegularExpression("^(16|48)\\|")).isEmpty());
    QVERIFY(escenario->Tablas() != antes);
    Vuelta();
}

// The part is still in the tree, and no longer in the table.
void PrBajas::eliminadaPorOtro()
{
    const QString aviso =
        "48|Quorvex|KT580|ERR-ID:7500010|El registro ya no existe: otra persona lo eliminó o lo cambió "
        "de lugar.";
    const auto probar = [&](const QString &nodo, const QString &comando, const QStringList &mensajes) {
        ElegirNodo(Arbol(), nodo);
        escenario->Motor("DELETE FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' AND Tep_ID = '" + nodo.mid(1)
                         + "'");
        const QStringList antes = escenario->Tablas();
        Pulsar(Barra(), comando);
        QCOMPARE(Mensajes(), mensajes);
        QCOMPARE(escenario->Tablas(), antes);
    };
    probar("N0005", "Eliminar", {aviso});
    probar("N0003", "Reactivar", {});
    escenario->Personas().Responder(7500047, qvx::mensaje::Si);
    probar("N0004", "B1", {PreguntaHoja});
}

// Retires and brings back the first part of the type without a plan.
void PrBajas::Cambiar(const QString &comando)
{
    ElegirNodo(Arbol(), "N0001");
    Pulsar(Barra(), comando);
    QCOMPARE(Mensajes(), QStringList());
}

void PrBajas::ramaHonda()
{
    escenario->Motor("INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) "
                     "WITH RECURSIVE n (i) AS (VALUES (1) UNION ALL SELECT i + 1 FROM n WHERE i < 200) "
                     "SELECT '0901', "
                     + ClaveDe("i", 4) + ", " + ClaveDe("i - 1", 4) + ", 'NIVEL ' || i FROM n");
    Escribir(escenario->De<textoQVX::txtQVX>("txtTipoEquipo"), "0901");
    const QString retiradas = "SELECT count(*) FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0901' AND "
                              "Es_Cve_Estado = 'BA' AND Oper_Baja = 'mlopez'";
    Cambiar("Eliminar");
    QCOMPARE(escenario->Motor(retiradas).toInt(), 200);
    QCOMPARE(escenario->Motor("SELECT count(*) FROM Bitacora").toInt(), 399);
    QCOMPARE(Arbol().Count(), 201);
    QCOMPARE(Arbol().Item("N0200")->Image(), 3);
    Cambiar("Reactivar");
    QCOMPARE(escenario->Motor(retiradas).toInt(), 0);
    QCOMPARE(Arbol().Item("N0200")->Parent()->Key(), "N0199");
}

void PrBajas::parteAncha()
{
    escenario->Motor("INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) "
                     "WITH RECURSIVE n (i) AS (VALUES (1) UNION ALL SELECT i + 1 FROM n WHERE i < 5001) "
                     "SELECT '0901', "
                     + ClaveDe("i", 4)
                     + ", CASE i WHEN 1 THEN '0000' ELSE '0001' END, 'PIEZA ' || i "
                       "FROM n");
    Escribir(escenario->De<textoQVX::txtQVX>("txtTipoEquipo"), "0901");
    QCOMPARE(Arbol().Item("N0001")->childCount(), 5000);
    Cambiar("Eliminar");
    QCOMPARE(escenario
                 ->Motor("SELECT count(*) FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0901' AND "
                         "Es_Cve_Estado = 'BA'")
                 .toInt(),
             5001);
    QCOMPARE(escenario->Motor("SELECT count(*) FROM Bitacora").toInt(), 10001);
    QCOMPARE(Arbol().Item("N0001")->childCount(), 5000);
    QCOMPARE(Arbol().Item("N5001")->Image(), 3);
}

PRUEBA_MAIN(PrBajas)
#include "pr_bajas.moc"
