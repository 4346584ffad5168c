#include "support/PruebaPantalla.h"

// Adding a part and changing one: the two commands of the screen and their dialog.
class PrPartes : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void nuevo();
    void editar();
    void rechazos();
    void sinParte();

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

// What ends the commands before their dialog.
void PrPartes::sinParte()
{
    const auto probar = [&](const QString &comando, const QString &mensaje) {
        Mandar(comando);
        QCOMPARE(Mensajes().join('\n'), mensaje);
    };
    ElegirNodo(Arbol(), "N0002");
    Arbol().setSelectedItem(Arbol().Item("N0000")); // in code: the command stays on offer
    probar("Editar", "48|Quorvex|KT580|ERR-ID:7500005|La parte no es válido para esta operación!");
    ElegirNodo(Arbol(), "N0002");
    escenario->Motor("DELETE FROM Tipo_Equipo_Parte WHERE Tep_ID = '0002'");
    probar("Nuevo", "48|Quorvex|KT580|ERR-ID:7500003|No se encontró la ruta de la parte");
    probar("Editar", "48|Quorvex|KT580|ERR-ID:7500006|No se encontró la ruta de la parte");
    escenario->Motor("ALTER TABLE Tipo_Equipo_Parte RENAME TO Guardada");
    probar("Editar", "16|Controles_Editar()|KT580|ERR-ID:7500007|" + motor::NoHayTabla("Tipo_Equipo_Parte"));
}

PRUEBA_MAIN(PrPartes)
#include "pr_partes.moc"
