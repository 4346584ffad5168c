#include "support/PruebaPantalla.h"

#include <QRegularExpression>

// Retiring parts, bringing them back and deleting them for good. Commands by their names on the toolbar: Eliminar
// retires, B1 deletes.
class PrBajas : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void estados_data();
    void estados();
    void eliminar_data();
    void eliminar();
    void sentencias();
    void raiz_data();
    void raiz();
    void eliminadaPorOtro();
    void ramaHonda();

private:
    void Vuelta();
};

namespace
{

constexpr int Si = qvx::mensaje::Si;
constexpr int No = qvx::mensaje::No;
const QString Retiradas = "UPDATE Tipo_Equipo_Parte SET Es_Cve_Estado = 'BA', Oper_Baja = 'jcruz' WHERE "
                          "Te_Cve_Tipo_Equipo = '0900' AND Tep_ID IN ";
const QString PreguntaReactivar = "321|Quorvex|KT580|ERR-ID:7500045|Se reactivará la parte y la subparte seleccionada";
const QString PreguntaHoja = "292|Quorvex|KT580|ERR-ID:7500047|¿Desea eliminar la parte?";
const QString PreguntaRama = "292|Quorvex|KT580|ERR-ID:7500046|¿Desea eliminar la parte y subpartes?";

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

// What the screen looks like after each of the commands: read again, nothing selected, nothing on offer.
void PrBajas::Vuelta()
{
    QVERIFY(!Arbol().SelectedItem() && Arbol().Primero()->isExpanded());
    QCOMPARE(Lista().Count(), 0);
    QVERIFY(Barras().startsWith("00000|") && !Barras().contains("Eliminar parte"));
}

void PrBajas::estados_data()
{
    // estados: key, state, and who retired it, who stays there when it is brought back
    const Tabla<QString, QString, int, QString, QString> fila("preparacion", "nodo", "respuesta", "traza", "estados");
    fila("baja de una rama", "", "N0001", 0,
         "S0001 BEGIN U0001 B0001 S0001 u0002 B0002 U0002 B0002 S0002 "
         "u0003 B0003 U0003 B0003 S0003 u0004 B0004 U0004 B0004 S0004 R COMMIT",
         "0001BAmlopez 0002BAmlopez 0003BAmlopez 0004BAmlopez 0005AC 0006AC");
    fila("reactivación bajo una activa", Retiradas + "('0003', '0004')", "N0003", 0,
         "S0003 BEGIN U0003 B0003 S0003 u0004 B0004 U0004 B0004 S0004 R COMMIT",
         "0001AC 0002AC 0003ACjcruz 0004ACjcruz 0005AC 0006AC");
    const QString todas = Retiradas + "('0001', '0002', '0003', '0004')";
    fila("reactivación con la de arriba, no más", todas, "N0004", qvx::mensaje::Aceptar,
         "S0004 BEGIN U0003 B0003 U0004 B0004 S0004 R COMMIT",
         "0001BAjcruz 0002BAjcruz 0003ACjcruz 0004ACjcruz 0005AC 0006AC");
    fila("reactivación sin la de arriba", todas, "N0003", qvx::mensaje::Cancelar,
         "S0003 BEGIN U0003 B0003 S0003 u0004 B0004 U0004 B0004 S0004 R COMMIT",
         "0001BAjcruz 0002BAjcruz 0003ACjcruz 0004ACjcruz 0005AC 0006AC");
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
    if (respuesta != 0) // while it is asked, other programs read the plan as it was
        escenario->Personas().Responder(7500045, respuesta, [&] { QCOMPARE(escenario->Tablas(), antes); });
    escenario->Traza();
    Mandar(retira ? "Eliminar" : "Reactivar");
    const QString corto = EnCorto(escenario->Traza());
    QCOMPARE(Mensajes(), respuesta != 0 ? QStringList{PreguntaReactivar} : QStringList());
    QTEST(corto, "traza");
    QTEST(Partes("Tep_ID || Es_Cve_Estado || coalesce(Oper_Baja, '')"), "estados");
    QCOMPARE(escenario->Tablas().filter("AJENA"), antes.filter("AJENA"));
    // Each write is signed and logged, in the order of the writes.
    const QString firma = "mlopez|2026-03-14 09:26:53";
    QStringList escritas =
        corto.split(' ').filter(QRegularExpression("^[Uu]")).replaceInStrings(QRegularExpression("^."), "");
    QStringList entradas;
    for (const QString &parte : escritas)
        entradas.append("Tipo_Equipo_Parte|0900" + parte + "|" + (retira ? "Baja" : "Reactivación") + "|" + firma);
    QCOMPARE(escenario->Filas("SELECT Bi_Tabla, Bi_Clave, Bi_Accion, Bi_Oper, Bi_Fecha FROM Bitacora ORDER BY Bi_ID"),
             entradas);
    escritas.removeDuplicates();
    escritas.sort();
    QCOMPARE(Partes("Tep_ID", "Oper_Ult_Modif || '|' || Fecha_Ult_Modif = '" + firma + "'"), escritas.join(' '));
    QCOMPARE(escenario->Filas("SELECT Rc_Tabla, Rc_Clave FROM Registro_Cambio"),
             QStringList{"Tipo_Equipo_Parte|" + nodo.mid(1) + "|0900"});
    Vuelta();
    QCOMPARE(Arbol().Item(nodo)->Image(), retira ? 3 : 1);
}

void PrBajas::eliminar_data()
{
    const Tabla<QString, QString, int, QString, QString, QString> fila("preparacion", "nodo", "respuesta", "mensaje",
                                                                       "quedan", "selladas");
    const QString todas = "0001 0002 0003 0004 0005 0006";
    fila("último hijo", "UPDATE Plan_Mantenimiento_Detalle SET Tep_ID = '0004'", "N0004", Si, PreguntaHoja,
         "0001 0002 0003 0005 0006", "0003");
    fila("de la raíz", "", "N0005", Si, PreguntaHoja, "0001 0002 0003 0004 0006", "");
    fila("en medio de la rama",
         "DELETE FROM Plan_Mantenimiento;UPDATE Tipo_Equipo_Parte SET Es_Cve_Estado = 'AC' WHERE Tep_ID = '0003'",
         "N0003", Si, PreguntaRama, "0001 0002 0004 0005 0006", "");
    fila("hoja, No", "", "N0004", No, PreguntaHoja, todas, "");
    fila("rama, No", "", "N0001", No, PreguntaRama, todas, "");
    fila("con servicios", "", "N0002", 0,
         "48|Quorvex|KT580|ERR-ID:7500044|La parte seleccionada tiene un plan de mantenimiento, imposible eliminar",
         todas, "");
}

// The statements run before the question: until it is answered with Yes, nobody else sees anything of them.
void PrBajas::eliminar()
{
    QFETCH(QString, preparacion);
    QFETCH(QString, nodo);
    QFETCH(int, respuesta);
    QFETCH(QString, mensaje);
    Preparar(preparacion);
    const QStringList antes = escenario->Tablas();
    if (respuesta != 0)
        escenario->Personas().Responder(mensaje == PreguntaHoja ? 7500047 : 7500046, respuesta,
                                        [&] { QCOMPARE(escenario->Tablas(), antes); });
    escenario->Traza();
    Mandar("B1", nodo);
    const QStringList traza = escenario->Traza();
    QCOMPARE(escenario->Personas().ventanas, QList<WId>{pantalla->winId()});
    QCOMPARE(Mensajes(), QStringList{mensaje});
    QTEST(Partes("Tep_ID"), "quedan");
    QTEST(Partes("Tep_ID", "Oper_Ult_Modif || Fecha_Ult_Modif = 'mlopez2026-03-14 09:26:53'"), "selladas");
    const QStringList despues = escenario->Tablas();
    if (respuesta == Si) {
        Vuelta();
        QVERIFY(despues.filter("Detalle|0900|" + nodo.mid(1)).isEmpty());
        QCOMPARE(despues.filter("AJENA"), antes.filter("AJENA"));
        return;
    }
    QCOMPARE(despues, antes);
    QVERIFY(traza.contains("-\tROLLBACK") && !traza.contains("-\tABANDONADA"));
    QCOMPARE(Arbol().SelectedItem()->Key(), nodo);
}

// The texts of the statements, blanks included.
void PrBajas::sentencias()
{
    const QString firma = "   Oper_Ult_Modif = 'mlopez',    Fecha_Ult_Modif = '2026-03-14 09:26:53', ";
    const QString baja = "1\tUPDATE Tipo_Equipo_Parte SET" + firma
                         + "   Oper_Baja = 'mlopez',    Fecha_Baja = '2026-03-14 09:26:53',    Es_Cve_Estado = 'BA' "
                           "WHERE ";
    const QString hijos = "2\tSELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Tep_Padre = '0001' AND Te_Cve_Tipo_Equipo = "
                          "'0900' ";
    escenario->Traza();
    Mandar("Eliminar", "N0001");
    EnOrden(escenario->Traza(),
            {hijos, baja + "Tep_ID = '0001' AND Te_Cve_Tipo_Equipo = '0900' ", hijos,
             baja + "   Tep_ID = '0002'    AND Te_Cve_Tipo_Equipo = '0900'    AND Tep_Padre = '0001' "});

    escenario->Personas().Responder(7500045, qvx::mensaje::Aceptar);
    Mandar("Reactivar", "N0003");
    QCOMPARE(Mensajes(), QStringList{PreguntaReactivar});
    const QString activar = "1\tUPDATE Tipo_Equipo_Parte SET" + firma + "   Es_Cve_Estado = 'AC' WHERE ";
    EnOrden(escenario->Traza(),
            {"1\tSELECT Tep_Padre FROM Tipo_Equipo_Parte WHERE Tep_ID = '0003' and Te_Cve_Tipo_Equipo = '0900' ",
             "1\tSELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Tep_Padre = '0003' and Te_Cve_Tipo_Equipo = '0900' ",
             "1\tSELECT Tep_Padre,    Es_Cve_Estado = (SELECT Es_Cve_Estado FROM Tipo_Equipo_Parte WHERE Tep_ID =  "
             "'0001' AND Te_Cve_Tipo_Equipo = '0900' ) FROM Tipo_Equipo_Parte WHERE Tep_ID =  '0003' AND "
             "Te_Cve_Tipo_Equipo = '0900' ",
             activar + "Tep_ID = '0001' AND Te_Cve_Tipo_Equipo = '0900' ",
             activar + "Tep_ID = '0003' AND Te_Cve_Tipo_Equipo = '0900' ",
             activar + "   Tep_ID = '0004'    AND Te_Cve_Tipo_Equipo = '0900'    AND Tep_Padre = '0003' "});

    escenario->Personas().Responder(7500047, Si);
    Mandar("B1", "N0004");
    QCOMPARE(Mensajes(), QStringList{PreguntaHoja});
    const QString dela = "WHERE Te_Cve_Tipo_Equipo = '0900'    AND Tep_ID = '0004' ";
    const QString borrar = "\tDELETE FROM Tipo_Equipo_Parte WHERE Tep_ID = '0004' and Te_Cve_Tipo_Equipo = '0900'";
    EnOrden(escenario->Traza(),
            {"0\tSELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Tep_Padre = '0004' AND Te_Cve_Tipo_Equipo = '0900'  ",
             motor::Inicio(), "0\tDELETE FROM Plan_Mantenimiento_Detalle " + dela,
             "0\tDELETE FROM Plan_Mantenimiento " + dela,
             "1\tSELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Tep_ID = '0004' and Te_Cve_Tipo_Equipo = '0900' ORDER BY "
             "Tep_ID ",
             "1" + borrar, "0" + borrar, // the nested call meets the same key, already gone
             "0\tSELECT * FROM Tipo_Equipo_Parte WHERE Tep_Padre = '0003' and Te_Cve_Tipo_Equipo = '0900' ",
             "1\tUPDATE Tipo_Equipo_Parte SET    Oper_Ult_Modif = 'mlopez',   Fecha_Ult_Modif = '2026-03-14 "
             "09:26:53'WHERE Tep_ID = '0003' and Te_Cve_Tipo_Equipo = '0900' ",
             "-\tCOMMIT"});
}

void PrBajas::raiz_data()
{
    const Tabla<QString, QString> fila("nodo", "mensaje");
    const QString aviso = "48|Quorvex|KT580|ERR-ID:";
    fila("Eliminar", "N0005", aviso + "7500008|La parte del equipo no es válido para esta operación");
    fila("Reactivar", "N0003", aviso + "7500012|La parte del equipo no es válido para está operación");
    fila("B1", "N0005", aviso + "7500019|No se puede eliminar la raíz");
}

// Selected in code, the root leaves on offer what the node before it had.
void PrBajas::raiz()
{
    QFETCH(QString, nodo);
    const QString comando = QTest::currentDataTag();
    ElegirNodo(Arbol(), nodo);
    Arbol().setSelectedItem(Arbol().Item("N0000"));
    escenario->Traza();
    Mandar(comando);
    QCOMPARE(escenario->Personas().ventanas, QList<WId>{pantalla->winId()});
    QTEST(Mensajes().join("\n"), "mensaje");
    Arbol().setSelectedItem(nullptr);
    Mandar(comando);
    QCOMPARE(escenario->Traza(), QStringList());
}

// The part is still in the tree, and no longer in the table.
void PrBajas::eliminadaPorOtro()
{
    const auto probar = [&](const QString &nodo, const QString &comando, const QStringList &mensajes) {
        ElegirNodo(Arbol(), nodo);
        escenario->Motor("DELETE FROM Tipo_Equipo_Parte WHERE Tep_ID = '" + nodo.mid(1) + "'");
        const QStringList antes = escenario->Tablas();
        Mandar(comando);
        QCOMPARE(Mensajes(), mensajes);
        QCOMPARE(escenario->Tablas(), antes);
    };
    probar("N0005", "Eliminar",
           {"48|Quorvex|KT580|ERR-ID:7500010|El registro ya no existe: otra persona lo eliminó o lo cambió de lugar."});
    probar("N0003", "Reactivar", {});
    escenario->Personas().Responder(7500047, Si);
    probar("N0004", "B1", {PreguntaHoja});
}

void PrBajas::ramaHonda()
{
    escenario->Motor("INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) WITH "
                     "RECURSIVE n (i) AS (VALUES (1) UNION ALL SELECT i + 1 FROM n WHERE i < 200) SELECT '0901', "
                     + ClaveDe("i", 4) + ", " + ClaveDe("i - 1", 4) + ", 'NIVEL ' || i FROM n");
    Escribir(Tipo(), "0901");
    const QString retiradas = "SELECT count(*) FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0901' AND "
                              "Es_Cve_Estado = 'BA' AND Oper_Baja = 'mlopez'";
    Mandar("Eliminar", "N0001");
    QCOMPARE(escenario->Motor(retiradas).toInt(), 200);
    QCOMPARE(escenario->Motor("SELECT count(*) FROM Bitacora").toInt(), 399);
    QCOMPARE(Arbol().Item("N0200")->Image(), 3);
    Mandar("Reactivar", "N0001");
    QCOMPARE(escenario->Motor(retiradas).toInt(), 0);
    QCOMPARE(Arbol().Item("N0200")->Parent()->Key(), "N0199");
}

PRUEBA_MAIN(PrBajas)
#include "pr_bajas.moc"
