#include "support/PruebaPantalla.h"

// Adding a part and changing one: the two commands of the screen and their dialog.
class PrPartes : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void nuevo_data();
    void nuevo();
    void editar_data();
    void editar();
    void sinGuardar();
    void validaciones_data();
    void validaciones();
    void rechazos_data();
    void rechazos();
    void sinParte_data();
    void sinParte();

private:
    QString Campos(QWidget &dialogo);
    QString Fila(const QString &parte) const;
};

QString PrPartes::Campos(QWidget &dialogo)
{
    QStringList textos;
    for (const char *nombre : {"txtTipoEquipo", "txtNTipoEquipo", "txtPadre", "txtNPadre", "txtClave", "txtTexto"})
        textos.append(Caja(dialogo, nombre).Text());
    return textos.join("|");
}

QString PrPartes::Fila(const QString &parte) const
{
    return Partes("Tep_Padre || '|' || Tep_Descripcion || '|' || Es_Cve_Estado || '|' || Oper_Alta || '|' || "
                  "Fecha_Alta || '|' || Oper_Ult_Modif || '|' || Fecha_Ult_Modif || '|' || coalesce(Oper_Baja, '')",
                  "Tep_ID = '" + parte + "'");
}

void PrPartes::nuevo_data()
{
    const Tabla<QString, QString, QString, QString> fila("nodo", "ruta", "escrita", "clave");
    fila("en la raíz", "N0000", "RAIZ", "", "0007");
    fila("bajo una baja", "N0004", "CUERPO / SELLO / RESORTE", "", "0007");
    fila("clave propia", "N0005", "MOTOR", "12", "0012");
}

void PrPartes::nuevo()
{
    QFETCH(QString, nodo);
    QFETCH(QString, ruta);
    QFETCH(QString, escrita);
    QFETCH(QString, clave);
    const QString padre = nodo.mid(1);
    EnLaParte("Nuevo", nodo, [&](QWidget &dialogo) {
        QCOMPARE(Campos(dialogo), "0900|BOMBA DE PRUEBA|" + padre + "|" + ruta + "|0007|");
        QVERIFY(Caja(dialogo, "txtTexto").findChild<QLineEdit *>()->hasFocus());
        QCOMPARE(dialogo.parentWidget(), pantalla->window());
        if (!escrita.isEmpty())
            Escribir(Caja(dialogo, "txtClave"), escrita);
        Caja(dialogo, "txtTexto").setText("Válvula (alta)");
        escenario->Traza();
        QTest::keyClick(&dialogo, Qt::Key_F4);
    });
    EnOrden(escenario->Traza(), {motor::Inicio(),
                                 "1\tINSERT INTO Tipo_Equipo_Parte (   Tep_Padre,    Tep_ID,    Te_Cve_Tipo_Equipo,    "
                                 "Tep_Descripcion,    Oper_Alta,   Fecha_Alta,   Oper_Ult_Modif,   Fecha_Ult_Modif) "
                                 "VALUES('"
                                     + padre + "', '" + clave
                                     + "', '0900', 'Válvula (alta)', 'mlopez','2026-03-14 09:26:53','mlopez',"
                                       "'2026-03-14 09:26:53')",
                                 "-\tCOMMIT"});
    QCOMPARE(Fila(clave), padre + "|Válvula (alta)|AC|mlopez|2026-03-14 09:26:53|mlopez|2026-03-14 09:26:53|");
    QCOMPARE(escenario->Filas("SELECT Rc_Tabla, Rc_Clave, Rc_Oper FROM Registro_Cambio"),
             QStringList{"Tipo_Equipo_Parte|" + clave + "|0900|mlopez"});
    QCOMPARE(Arbol().Item("N" + clave)->Text(), clave + " - Válvula (alta)");
    QCOMPARE(Arbol().Item("N" + clave)->Parent()->Key(), nodo);
    QCOMPARE(Arbol().SelectedItem()->Key(), nodo);
    QVERIFY(!Arbol().visualItemRect(Arbol().Item("N" + clave)).isEmpty());
}

void PrPartes::editar_data()
{
    const Tabla<QString, QString, QString> fila("nodo", "campos", "texto");
    fila("de una parte", "N0004", "0003|CUERPO / SELLO / RESORTE|0004|RESORTE", "Resorte - A");
    fila("larga, con clave de otro tipo", "N0001", "0000|RAIZ|0001|CUERPO", QString(400, QLatin1Char('x')));
}

void PrPartes::editar()
{
    QFETCH(QString, nodo);
    QFETCH(QString, campos);
    QFETCH(QString, texto);
    const QString parte = nodo.mid(1);
    const QStringList ajena = escenario->Tablas().filter("AJENA");
    EnLaParte("Editar", nodo, [&](QWidget &dialogo) {
        QCOMPARE(Campos(dialogo), "0900|BOMBA DE PRUEBA|" + campos);
        Escribir(Caja(dialogo, "txtClave"), "99"); // locked
        Escribir(Caja(dialogo, "txtTexto"), texto);
        escenario->Traza();
        Aceptar(dialogo);
    });
    EnOrden(escenario->Traza(), {motor::Inicio(),
                                 "1\tUPDATE Tipo_Equipo_Parte SET    Tep_Descripcion = '" + texto
                                     + "',    Te_Cve_Tipo_Equipo = '0900',    Oper_Ult_Modif = 'mlopez',   "
                                       "Fecha_Ult_Modif= '2026-03-14 09:26:53'WHERE Tep_ID = '"
                                     + parte + "' and Te_Cve_Tipo_Equipo = '0900' ",
                                 "-\tCOMMIT"});
    QCOMPARE(Fila(parte), campos.left(4) + "|" + texto + "|AC|jcruz|2025-01-02 03:04:05|mlopez|2026-03-14 09:26:53|");
    QCOMPARE(escenario->Tablas().filter("AJENA"), ajena);
    QCOMPARE(Arbol().SelectedItem()->Text(), parte + " - " + texto);
    QCOMPARE(pantalla->window()->focusWidget(), &Arbol());
    // Opened again without a change, it keeps the whole text.
    EnLaParte("Editar", nodo, [&](QWidget &dialogo) { Aceptar(dialogo); });
    QVERIFY(Fila(parte).contains("|" + texto + "|"));
}

void PrPartes::sinGuardar()
{
    const QStringList antes = escenario->Tablas();
    for (const char *comando : {"Nuevo", "Editar"}) {
        for (int modo = 0; modo < 3; ++modo)
            EnLaParte(comando, "N0002", [&](QWidget &dialogo) {
                Escribir(Caja(dialogo, "txtTexto"), "Nada");
                if (modo == 0)
                    Pulsar(escenario->En<Controles>(dialogo, "Controles"), "Cancelar");
                else if (modo == 1)
                    QTest::keyClick(&dialogo, Qt::Key_Escape);
                else
                    dialogo.close();
                QVERIFY(!dialogo.isVisible());
            });
        QCOMPARE(escenario->Tablas(), antes);
        QCOMPARE(Arbol().SelectedItem()->Key(), "N0002");
    }
}

void PrPartes::validaciones_data()
{
    const Tabla<QString, QString, QString> fila("preparacion", "vacio", "mensaje");
    const QString aviso = "48|Quorvex|KT580|ERR-ID:";
    // A planner never meets it: without a description there is no tree to press the command in.
    fila("tipo", "", "txtNTipoEquipo", aviso + "7500092|Se debe especificar un tipo de equipo válido");
    fila("parte superior sin descripción", "UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = '' WHERE Tep_ID = '0005'",
         "txtTexto", aviso + "7500093|Debe especificar una parte válida");
    fila("clave", "", "txtClave", aviso + "7500094|Debe especificar una clave para el parte");
    fila("descripción", "", "txtTexto", aviso + "7500095|Debe especificar una descripción");
}

void PrPartes::validaciones()
{
    QFETCH(QString, preparacion);
    QFETCH(QString, vacio);
    QFETCH(QString, mensaje);
    if (!preparacion.isEmpty())
        escenario->Motor(preparacion);
    const QStringList antes = escenario->Tablas();
    EnLaParte("Nuevo", "N0005", [&](QWidget &dialogo) {
        Escribir(Caja(dialogo, "txtTexto"), "BRIDA");
        Caja(dialogo, vacio).setText("");
        const QString campos = Campos(dialogo);
        escenario->Traza();
        Aceptar(dialogo);
        QCOMPARE(escenario->Personas().ventanas, QList<WId>{dialogo.winId()});
        QCOMPARE(Mensajes(), QStringList{mensaje});
        QVERIFY(dialogo.isVisible());
        QCOMPARE(Campos(dialogo), campos);
        QCOMPARE(escenario->Traza(), QStringList());
    });
    QCOMPARE(escenario->Tablas(), antes);
}

void PrPartes::rechazos_data()
{
    const Tabla<QString, QString, QString, QString> fila("comando", "clave", "texto", "mensaje");
    const QString trampa = "16|cmdAceptar()|KT580|ERR-ID:7500097|";
    fila("clave de otra parte", "Nuevo", "2", "BRIDA", trampa + motor::ParteRepetida());
    fila("clave de la raíz", "Nuevo", "0", "BRIDA",
         "48|Quorvex|KT580|ERR-ID:7500096|La clave 0000 está reservada para la raíz del árbol.");
    fila("comilla en la nueva", "Nuevo", "9", "Toma d'aire", trampa + motor::Sintaxis("aire"));
    fila("comilla en la editada", "Editar", "", "Toma d'aire", trampa + motor::Sintaxis("aire"));
}

// Nothing is written or left locked, the dialog stays with what was typed, and takes a better text.
void PrPartes::rechazos()
{
    QFETCH(QString, comando);
    QFETCH(QString, clave);
    QFETCH(QString, texto);
    QFETCH(QString, mensaje);
    EnLaParte(comando, "N0005", [&](QWidget &dialogo) {
        const QStringList antes = escenario->Tablas();
        Escribir(Caja(dialogo, "txtClave"), clave);
        Escribir(Caja(dialogo, "txtTexto"), texto);
        const QString campos = Campos(dialogo);
        escenario->Traza();
        Aceptar(dialogo);
        // A refusal takes its transaction back by itself; a trap undoes nothing, which the host does after it.
        QCOMPARE(escenario->Traza().contains("-\tABANDONADA"), mensaje.startsWith("16"));
        QCOMPARE(escenario->Personas().ventanas, QList<WId>{dialogo.winId()});
        QCOMPARE(Mensajes(), QStringList{mensaje});
        QCOMPARE(Campos(dialogo), campos);
        QCOMPARE(escenario->Tablas(), antes);
        Escribir(Caja(dialogo, "txtClave"), "7");
        Escribir(Caja(dialogo, "txtTexto"), "BRIDA");
        Aceptar(dialogo);
        QVERIFY(!dialogo.isVisible());
    });
    QCOMPARE(Partes("Tep_Descripcion", comando == "Nuevo" ? "Tep_ID = '0007'" : "Tep_ID = '0005'"), "BRIDA");
}

void PrPartes::sinParte_data()
{
    const Tabla<QString, QString, QString> fila("falla", "comando", "mensaje");
    const QString eliminar = "DELETE FROM Tipo_Equipo_Parte WHERE Tep_ID = '0002'";
    const QString renombrar = "ALTER TABLE Tipo_Equipo_Parte RENAME TO Guardada";
    const QString sinTabla = motor::NoHayTabla("Tipo_Equipo_Parte");
    const QString aviso = "48|Quorvex|KT580|ERR-ID:";
    fila("nuevo, eliminada por otro", eliminar, "Nuevo", aviso + "7500003|No se encontró la ruta de la parte");
    fila("editar, eliminada por otro", eliminar, "Editar", aviso + "7500006|No se encontró la ruta de la parte");
    fila("editar, la raíz", "", "Editar", aviso + "7500005|La parte no es válido para esta operación!");
    fila("nuevo, trampa", renombrar, "Nuevo", "16|Controles_Nuevo()|KT580|ERR-ID:7500004|" + sinTabla);
    fila("editar, trampa", renombrar, "Editar", "16|Controles_Editar()|KT580|ERR-ID:7500007|" + sinTabla);
}

// The commands that open no dialog: the test would hang in one.
void PrPartes::sinParte()
{
    QFETCH(QString, falla);
    QFETCH(QString, comando);
    ElegirNodo(Arbol(), "N0002");
    if (falla.isEmpty())
        Arbol().setSelectedItem(Arbol().Item("N0000")); // in code: the command stays on offer
    else
        escenario->Motor(falla);
    Mandar(comando);
    QCOMPARE(escenario->Personas().ventanas, QList<WId>{pantalla->winId()});
    QTEST(Mensajes().value(0), "mensaje");
    Arbol().setSelectedItem(nullptr); // without a node the command does nothing
    Mandar(comando);
}

PRUEBA_MAIN(PrPartes)
#include "pr_partes.moc"
