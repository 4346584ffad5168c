#include "support/PruebaPantalla.h"

// The parts: adding and changing one in its dialog, retiring a branch and bringing it back, deleting one for good.
// Commands by their names on the toolbar: Eliminar retires, B1 deletes.
class PrPartes : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void nuevo();
    void editar();
    void rechazos();
    void estados();
    void eliminar();

private:
    QString Campos(QWidget &dialogo);
    QString Fila(const QString &parte) const
    {
        return Partes("Tep_Padre || '|' || Tep_Descripcion || '|' || Es_Cve_Estado || '|' || Oper_Alta || '|' || "
                      "Fecha_Alta || '|' || Oper_Ult_Modif || '|' || Fecha_Ult_Modif",
                      "Tep_ID = '" + parte + "'");
    }
};

QString PrPartes::Campos(QWidget &dialogo)
{
    QStringList textos;
    for (const char *nombre : {"txtTipoEquipo", "txtNTipoEquipo", "txtPadre", "txtNPadre", "txtClave", "txtTexto"})
        textos.append(Caja(dialogo, nombre).Text());
    return textos.join("|");
}

void PrPartes::nuevo()
{
    EnLaParte("Nuevo", "N0004", [&](QWidget &dialogo) {
        QCOMPARE(Campos(dialogo), "0900|BOMBA DE PRUEBA|0004|CUERPO / SELLO / RESORTE|0007|");
        Escribir(Caja(dialogo, "txtTexto"), "NADA");
        QTest::keyClick(&dialogo, Qt::Key_Escape);
        QVERIFY(!dialogo.isVisible());
    });
    QCOMPARE(Arbol().Count(), 6);
    EnLaParte("Nuevo", "N0000", [&](QWidget &dialogo) {
        QCOMPARE(Campos(dialogo), "0900|BOMBA DE PRUEBA|0000|RAIZ|0007|");
        QVERIFY(Caja(dialogo, "txtTexto").findChild<QLineEdit *>()->hasFocus());
        Caja(dialogo, "txtTexto").setText("Válvula (alta)");
        escenario->Traza();
        QTest::keyClick(&dialogo, Qt::Key_F4);
    });
    EnOrden(escenario->Traza(), {motor::Inicio(),
                                 "1\tINSERT INTO Tipo_Equipo_Parte (   Tep_Padre,    Tep_ID,    Te_Cve_Tipo_Equipo,    "
                                 "Tep_Descripcion,    Oper_Alta,   Fecha_Alta,   Oper_Ult_Modif,   Fecha_Ult_Modif) "
                                 "VALUES('0000', '0007', '0900', 'Válvula (alta)', 'mlopez','2026-03-14 "
                                 "09:26:53','mlopez','2026-03-14 09:26:53')",
                                 "-\tCOMMIT"});
    QCOMPARE(Fila("0007"), "0000|Válvula (alta)|AC|mlopez|2026-03-14 09:26:53|mlopez|2026-03-14 09:26:53");
    QCOMPARE(escenario->Filas("SELECT Rc_Tabla, Rc_Clave, Rc_Oper FROM Registro_Cambio"),
             QStringList{"Tipo_Equipo_Parte|0007|0900|mlopez"});
    // The new part shows, and the next one would go beside it.
    auto *nueva = Arbol().Item("N0007");
    QCOMPARE(nueva->Text(), "0007 - Válvula (alta)");
    QCOMPARE(nueva->Parent()->Key(), "N0000");
    QCOMPARE(Arbol().SelectedItem()->Key(), "N0000");
    QVERIFY(!Arbol().visualItemRect(nueva).isEmpty());
}

// Part 0001: another type has one of this key too.
void PrPartes::editar()
{
    const QStringList ajena = escenario->Tablas().filter("AJENA");
    EnLaParte("Editar", "N0001", [&](QWidget &dialogo) {
        QCOMPARE(Campos(dialogo), "0900|BOMBA DE PRUEBA|0000|RAIZ|0001|CUERPO");
        Escribir(Caja(dialogo, "txtClave"), "99"); // locked
        Escribir(Caja(dialogo, "txtTexto"), "Cuerpo - A");
        escenario->Traza();
        Aceptar(dialogo);
    });
    EnOrden(escenario->Traza(),
            {motor::Inicio(),
             "1\tUPDATE Tipo_Equipo_Parte SET    Tep_Descripcion = 'Cuerpo - A',    Te_Cve_Tipo_Equipo = '0900',    "
             "Oper_Ult_Modif = 'mlopez',   Fecha_Ult_Modif= '2026-03-14 09:26:53'WHERE Tep_ID = '0001' and "
             "Te_Cve_Tipo_Equipo = '0900' ",
             "-\tCOMMIT"});
    QCOMPARE(Fila("0001"), "0000|Cuerpo - A|AC|jcruz|2025-01-02 03:04:05|mlopez|2026-03-14 09:26:53");
    QCOMPARE(escenario->Tablas().filter("AJENA"), ajena);
    QCOMPARE(Arbol().SelectedItem()->Text(), "0001 - Cuerpo - A");
    QCOMPARE(pantalla->window()->focusWidget(), &Arbol());
}

// Nothing is written, the dialog stays with what was typed, and takes something better.
void PrPartes::rechazos()
{
    const QStringList antes = escenario->Tablas();
    EnLaParte("Nuevo", "N0005", [&](QWidget &dialogo) {
        const auto probar = [&](const char *clave, const char *texto, const QString &mensaje) {
            Escribir(Caja(dialogo, "txtClave"), clave);
            Escribir(Caja(dialogo, "txtTexto"), texto);
            const QString campos = Campos(dialogo);
            Aceptar(dialogo);
            QCOMPARE(escenario->Personas().ventanas, QList<WId>{dialogo.winId()});
            QCOMPARE(Mensajes(), QStringList{mensaje});
            QCOMPARE(Campos(dialogo), campos);
            QCOMPARE(escenario->Tablas(), antes);
        };
        const QString aviso = "48|Quorvex|KT580|ERR-ID:75000";
        probar("", "BRIDA", aviso + "94|Debe especificar una clave para el parte");
        probar("7", "", aviso + "95|Debe especificar una descripción");
        probar("0", "BRIDA", aviso + "96|La clave 0000 está reservada para la raíz del árbol.");
        probar("2", "BRIDA", "16|cmdAceptar()|KT580|ERR-ID:7500097|" + motor::ParteRepetida());
        Escribir(Caja(dialogo, "txtClave"), "7");
        Aceptar(dialogo);
        QVERIFY(!dialogo.isVisible());
    });
    QCOMPARE(Partes("Tep_Descripcion", "Tep_ID = '0007'"), "BRIDA");
}

// States with who retired the part, who stays there when it is brought back.
void PrPartes::estados()
{
    const auto probar = [&](const QString &nodo, int respuesta, const QString &escritas, const QString &estados) {
        ElegirNodo(Arbol(), nodo);
        const bool retira = Barra().Ofrecido().eliminar;
        const QString ultima = escenario->Motor("SELECT coalesce(max(Bi_ID), 0) FROM Bitacora").toString();
        const QStringList antes = escenario->Tablas();
        escenario->Traza();
        if (respuesta != 0) // while it is asked, other programs read the plan as it was
            escenario->Personas().Responder(7500045, respuesta, [&] { QCOMPARE(escenario->Tablas(), antes); });
        Mandar(retira ? "Eliminar" : "Reactivar");
        QCOMPARE(Mensajes().join('\n'),
                 respuesta == 0 ? ""
                                : "321|Quorvex|KT580|ERR-ID:7500045|Se reactivará la parte y la subparte seleccionada");
        QCOMPARE(Partes("Tep_ID || Es_Cve_Estado || coalesce(Oper_Baja, '')"), estados);
        QCOMPARE(escenario->Tablas().filter("AJENA"), antes.filter("AJENA"));
        // Every write is logged, a child's by its parent's loop and by its own call; the command is registered once.
        QStringList entradas;
        for (const QString &parte : escritas.split(' '))
            entradas.append("Tipo_Equipo_Parte|0900" + parte + (retira ? "|Baja" : "|Reactivación")
                            + "|mlopez|2026-03-14 09:26:53");
        // The server puts its own time.
        QCOMPARE(escenario->Filas("SELECT Bi_Tabla, Bi_Clave, Bi_Accion, Bi_Oper, "
                                  + motor::Segun("Bi_Fecha", "'2026-03-14 09:26:53'") + " FROM Bitacora WHERE Bi_ID > "
                                  + ultima + " ORDER BY Bi_ID"),
                 entradas);
        QCOMPARE(escenario->Filas("SELECT Rc_Tabla, Rc_Clave FROM Registro_Cambio ORDER BY Rc_ID").constLast(),
                 "Tipo_Equipo_Parte|" + nodo.mid(1) + "|0900");
        // Read again, nothing selected, nothing on offer.
        QCOMPARE(Arbol().Item(nodo)->Image(), retira ? 3 : 1);
        QVERIFY(!Arbol().SelectedItem() && Lista().Count() == 0);
        QVERIFY(Barras().startsWith("00000|"));
    };
    const QString firma = "   Oper_Ult_Modif = 'mlopez',    Fecha_Ult_Modif = '2026-03-14 09:26:53', ";
    probar("N0001", 0, "0001 0002 0002 0003 0003 0004 0004",
           "0001BAmlopez 0002BAmlopez 0003BAmlopez 0004BAmlopez 0005AC 0006AC");
    const QString baja = "1\tUPDATE Tipo_Equipo_Parte SET" + firma
                         + "   Oper_Baja = 'mlopez',    Fecha_Baja = '2026-03-14 09:26:53',    Es_Cve_Estado = 'BA' "
                           "WHERE ";
    EnOrden(escenario->Traza(),
            {motor::Inicio(), baja + "Tep_ID = '0001' AND Te_Cve_Tipo_Equipo = '0900' ",
             "2\tSELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Tep_Padre = '0001' AND Te_Cve_Tipo_Equipo = '0900' ",
             baja + "   Tep_ID = '0002'    AND Te_Cve_Tipo_Equipo = '0900'    AND Tep_Padre = '0001' ", "-\tCOMMIT"});

    // Cancel spares the parent only; of the retired parents, only the next one comes back too.
    probar("N0003", qvx::mensaje::Cancelar, "0003 0004 0004",
           "0001BAmlopez 0002BAmlopez 0003ACmlopez 0004ACmlopez 0005AC 0006AC");
    probar("N0003", 0, "0003 0004 0004", "0001BAmlopez 0002BAmlopez 0003BAmlopez 0004BAmlopez 0005AC 0006AC");
    probar("N0004", qvx::mensaje::Aceptar, "0003 0004",
           "0001BAmlopez 0002BAmlopez 0003ACmlopez 0004ACmlopez 0005AC 0006AC");
    EnOrden(escenario->Traza(),
            {"1\tSELECT Tep_Padre,    Es_Cve_Estado = (SELECT Es_Cve_Estado FROM Tipo_Equipo_Parte WHERE Tep_ID =  "
             "'0003' AND Te_Cve_Tipo_Equipo = '0900' ) FROM Tipo_Equipo_Parte WHERE Tep_ID =  '0004' AND "
             "Te_Cve_Tipo_Equipo = '0900' ",
             "1\tUPDATE Tipo_Equipo_Parte SET" + firma
                 + "   Es_Cve_Estado = 'AC' WHERE Tep_ID = '0003' AND Te_Cve_Tipo_Equipo = '0900' ",
             "-\tCOMMIT"});
    // Right under the root, and under an active part: not asked.
    probar("N0001", 0, "0001 0002 0002 0003 0003 0004 0004",
           "0001ACmlopez 0002ACmlopez 0003ACmlopez 0004ACmlopez 0005AC 0006AC");
    probar("N0004", 0, "0004", "0001ACmlopez 0002ACmlopez 0003ACmlopez 0004BAmlopez 0005AC 0006AC");
    probar("N0004", 0, "0004", "0001ACmlopez 0002ACmlopez 0003ACmlopez 0004ACmlopez 0005AC 0006AC");
    QCOMPARE(Partes("Tep_ID", "Oper_Ult_Modif || Fecha_Ult_Modif = 'mlopez2026-03-14 09:26:53'"),
             "0001 0002 0003 0004");
}

// The statements run before the question: until it is answered with Yes, nobody else sees anything of them.
void PrPartes::eliminar()
{
    const QString hoja = "292|Quorvex|KT580|ERR-ID:7500047|¿Desea eliminar la parte?";
    const QString rama = "292|Quorvex|KT580|ERR-ID:7500046|¿Desea eliminar la parte y subpartes?";
    const auto probar = [&](const QString &nodo, int respuesta, const QString &mensaje, const QString &quedan) {
        const QStringList antes = escenario->Tablas();
        if (respuesta != 0)
            escenario->Personas().Responder(mensaje == hoja ? 7500047 : 7500046, respuesta,
                                            [&] { QCOMPARE(escenario->Tablas(), antes); });
        escenario->Traza();
        Mandar("B1", nodo);
        QCOMPARE(Mensajes(), QStringList{mensaje});
        QCOMPARE(Partes("Tep_ID"), quedan);
        QCOMPARE(escenario->Tablas().filter("AJENA"), antes.filter("AJENA"));
        if (respuesta == qvx::mensaje::Si) {
            QVERIFY(!Arbol().SelectedItem() && !Arbol().Contains(nodo));
            QCOMPARE(Barras(), "00000|Exportar XML|Importar XML|Copiar plan");
            return;
        }
        QCOMPARE(escenario->Tablas(), antes);
        QVERIFY(!escenario->Traza().contains("-\tABANDONADA"));
        QCOMPARE(Arbol().SelectedItem()->Key(), nodo);
    };
    probar("N0002", 0,
           "48|Quorvex|KT580|ERR-ID:7500044|La parte seleccionada tiene un plan de mantenimiento, imposible eliminar",
           "0001 0002 0003 0004 0005 0006");
    probar("N0001", qvx::mensaje::No, rama, "0001 0002 0003 0004 0005 0006");
    probar("N0004", qvx::mensaje::Si, hoja, "0001 0002 0003 0005 0006");
    const QString dela = "WHERE Te_Cve_Tipo_Equipo = '0900'    AND Tep_ID = '0004' ";
    const QString borrar = "\tDELETE FROM Tipo_Equipo_Parte WHERE Tep_ID = '0004' and Te_Cve_Tipo_Equipo = '0900'";
    EnOrden(escenario->Traza(),
            {motor::Inicio(), "0\tDELETE FROM Plan_Mantenimiento_Detalle " + dela,
             "0\tDELETE FROM Plan_Mantenimiento " + dela,
             "1\tSELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Tep_ID = '0004' and Te_Cve_Tipo_Equipo = '0900' ORDER BY "
             "Tep_ID ",
             "1" + borrar, "0" + borrar, // the nested call meets the same key, already gone
             "1\tUPDATE Tipo_Equipo_Parte SET    Oper_Ult_Modif = 'mlopez',   Fecha_Ult_Modif = '2026-03-14 "
             "09:26:53'WHERE Tep_ID = '0003' and Te_Cve_Tipo_Equipo = '0900' ",
             "-\tCOMMIT"});
    // What hung from it stays, out of the tree's reach.
    probar("N0001", qvx::mensaje::Si, rama, "0002 0003 0005 0006");
    QCOMPARE(Arbol().Count(), 2);
    QCOMPARE(Partes("Tep_ID", "Oper_Ult_Modif || Fecha_Ult_Modif = 'mlopez2026-03-14 09:26:53'"), "0003");
}

PRUEBA_MAIN(PrPartes)
#include "pr_partes.moc"
