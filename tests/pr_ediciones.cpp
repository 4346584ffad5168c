#include "support/PruebaPantalla.h"

// Two planners on one plan: what the second one saves never covers the first one's work without a word, and nobody
// loses what was typed.
class PrEdiciones : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void formas_data();
    void formas();
    void mando();
    void propia();
    void claveTomada();
    void soltada();

private:
    // What another planner does meanwhile, with that planner's signature.
    void Ajeno(const QString &cambio) const;
    // Why the editor's save was refused: the message is only "ERROR", its details say more.
    QString Rechazo();
};

namespace
{

const QString ElServicio = "WHERE Te_Cve_Tipo_Equipo = '0900' AND Pm_ID = '000001'";
const QString BorrarParte = "DELETE FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = '0900' AND Tep_ID = ";
const QString Motivo =
    "jcruz cambió este registro el 2026-03-14 09:20:00, después de que esta pantalla lo leyó. No se "
    "guardó nada, y lo escrito sigue en la pantalla. Para ver cómo quedó, ábralo de nuevo o actualice "
    "el árbol con F5.";
const QString YaNoEsta = "El registro ya no existe: otra persona lo eliminó o lo cambió de lugar.";
const QString SinParte = "La parte del servicio ya no existe: otra persona la eliminó.";
const QString ParteAjena = "INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) "
                           "VALUES ('0900', '%1', '0000', 'AJENA')";

} // namespace

void PrEdiciones::Ajeno(const QString &cambio) const
{
    for (const QString &sentencia : cambio.split(QLatin1Char(';')))
        escenario->Correr(QString(sentencia).replace(
            "{FIRMA}", ", Oper_Ult_Modif = 'jcruz', Fecha_Ult_Modif = '2026-03-14 09:20:00' "));
}

QString PrEdiciones::Rechazo()
{
    const QString motivo = escenario->Personas().detalles.join(QString());
    const QString mensaje = Mensajes().join(QLatin1Char('\n'));
    return mensaje == "16|ERROR|KT580|ERR-ID:7500080|ERROR" ? motivo : mensaje;
}

void PrEdiciones::formas_data()
{
    const Tabla<QString, QString, QString> fila("comando", "ajeno", "motivo"); // none: a service is edited
    const QString cambiarParte = "UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'AJENA'{FIRMA}WHERE Tep_ID = '0002'";
    const QString borrarParte = BorrarParte + "'0002'";
    const QString alGuardar = "48|Quorvex|KT580|ERR-ID:7500096|";
    fila("servicio cambiado dos veces", "",
         "UPDATE Plan_Mantenimiento SET Pm_Precio = 7{FIRMA}" + ElServicio
             + ";UPDATE Plan_Mantenimiento SET Pm_Precio = 1000 " + ElServicio,
         Motivo);
    // An import or a copy of a plan writes every row anew.
    fila("servicio escrito de nuevo", "",
         "DELETE FROM Plan_Mantenimiento " + ElServicio
             + ";INSERT INTO Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio, "
               "Oper_Ult_Modif, Fecha_Ult_Modif) VALUES ('0900', '0002', '000001', '9001', 'jcruz', '2026-03-14 "
               "09:20:00')",
         Motivo);
    fila("servicio movido", "", "UPDATE Plan_Mantenimiento SET Tep_ID = '0005'{FIRMA}" + ElServicio, YaNoEsta);
    fila("servicio sin su parte", "", borrarParte, SinParte);
    fila("servicio nuevo sin su parte", "B2", borrarParte, SinParte);
    fila("parte cambiada", "Editar", cambiarParte, alGuardar + Motivo);
    fila("parte eliminada", "Editar", borrarParte, alGuardar + YaNoEsta);
    fila("parte sin padre", "Nuevo", borrarParte,
         alGuardar + "La parte superior ya no existe: otra persona la eliminó.");
}

// Nothing is written, however often the planner insists, and what was typed stays.
void PrEdiciones::formas()
{
    QFETCH(QString, comando);
    QFETCH(QString, ajeno);
    QFETCH(QString, motivo);
    const auto pasos = [&](QWidget &forma) {
        if (comando == "B2")
            LlenarServicio(forma);
        txtQVX &caja = Caja(forma, motivo.startsWith("48|") ? "txtTexto" : "txtPrecio");
        Escribir(caja, "1234.5");
        const QString escrito = caja.Text();
        Ajeno(ajeno);
        const QStringList antes = escenario->Tablas();
        for (int vez = 0; vez < 2; ++vez) {
            Aceptar(forma);
            QCOMPARE(Rechazo(), motivo);
            QCOMPARE(escenario->Tablas(), antes);
        }
        QVERIFY(forma.isVisible());
        QCOMPARE(caja.Text(), escrito);
    };
    if (comando.isEmpty())
        EnElServicio("N0002", "000001", pasos);
    else
        EnLaParte("N0002", comando, pasos);
}

// Retiring and bringing back write the row that the tree was read from.
void PrEdiciones::mando()
{
    for (const auto &[nodo, comando] : {qMakePair("N0003", "Reactivar"), qMakePair("N0005", "Eliminar")}) {
        ElegirNodo(Arbol(), nodo);
        Ajeno("UPDATE Tipo_Equipo_Parte SET Tep_Descripcion = 'AJENA'{FIRMA}");
        const QStringList antes = escenario->Tablas();
        Pulsar(Barra(), comando);
        const QString mensaje = Mensajes().join('\n');
        QVERIFY2(mensaje.endsWith(Motivo), qPrintable(mensaje));
        QCOMPARE(escenario->Tablas(), antes);

        QTest::keyClick(&Arbol(), Qt::Key_F5); // seen, it may be done
        Mandar(nodo, comando);
        QCOMPARE(Mensajes(), QStringList());
        QVERIFY(escenario->Tablas() != antes);
    }
}

// The same planner's second window, or a save that was made although its answer was lost. Read anew, one's own changes
// are no obstacle.
void PrEdiciones::propia()
{
    EnElServicio("N0002", "000001", [&](QWidget &editor) {
        Ajeno("UPDATE Plan_Mantenimiento SET Pm_Precio = 7, Oper_Ult_Modif = 'mlopez', Fecha_Ult_Modif = '2026-03-14 "
              "09:20:00' "
              + ElServicio);
        Aceptar(editor);
        QVERIFY(Rechazo().startsWith("Usted mismo (mlopez) cambió este registro el 2026-03-14 09:20:00, "));
    });
    EnElServicio("N0002", "000001", [&](QWidget &editor) {
        Escribir(Caja(editor, "txtPrecio"), "2001");
        Aceptar(editor);
    });
    QCOMPARE(escenario->Correr("SELECT Pm_Precio FROM Plan_Mantenimiento " + ElServicio).toDouble(), 2001.0);
}

// The proposed keys of a part and of a service are taken while the planner types: the next ones are given without a
// word, and shown only once they are saved. One that is still free stays, although a lower one is too. A key that the
// planner chose is kept, and refused when it is taken.
void PrEdiciones::claveTomada()
{
    EnLaParte("N0001", "Nuevo", [&](QWidget &dialogo) {
        QCOMPARE(Caja(dialogo, "txtClave").Text(), "0007");
        Ajeno(ParteAjena.arg("0007") + ";" + ParteAjena.arg("0008"));
        Escribir(Caja(dialogo, "txtTexto"), "D'ARCY");
        Aceptar(dialogo);
        QCOMPARE(Mensajes().size(), 1);
        QCOMPARE(Caja(dialogo, "txtClave").Text(), "0007");
        Escribir(Caja(dialogo, "txtTexto"), "PROPIA");
        Aceptar(dialogo);
    });
    QCOMPARE(Partes("Tep_Descripcion", "Tep_ID = '0009'"), "PROPIA");
    EnLaParte("N0001", "Nuevo", [&](QWidget &dialogo) {
        Escribir(Caja(dialogo, "txtClave"), "20");
        Escribir(Caja(dialogo, "txtTexto"), "ELEGIDA");
        Ajeno(ParteAjena.arg("0020"));
        Aceptar(dialogo);
        QVERIFY(Mensajes().join(QString()).startsWith("16|cmdAceptar()|KT580|ERR-ID:7500097|"));
        QCOMPARE(Caja(dialogo, "txtTexto").Text(), "ELEGIDA");
    });
    EnElServicio("N0002", {}, [&](QWidget &editor) {
        QCOMPARE(Caja(editor, "txtID").Text(), "000004");
        Ajeno("INSERT INTO Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio) VALUES "
              "('0900', '0005', '000004', '9001')");
        LlenarServicio(editor);
        EscribirCelda(Grid(editor, "ssManoObra"), 0, "Producto", "9'1");
        Aceptar(editor);
        QCOMPARE(Mensajes().size(), 1);
        QCOMPARE(Caja(editor, "txtID").Text(), "000004");
        EscribirCelda(Grid(editor, "ssManoObra"), 0, "Producto", "9000000001");
        Aceptar(editor);
    });
    EnElServicio("N0002", {}, [&](QWidget &editor) {
        Ajeno("DELETE FROM Plan_Mantenimiento WHERE Pm_ID = '000005'");
        LlenarServicio(editor);
        Aceptar(editor);
    });
    QCOMPARE(escenario->Filas("SELECT Tep_ID, Pm_ID FROM Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = '0900' AND "
                              "Pm_ID > '000003' ORDER BY Pm_ID"),
             (QStringList{"0005|000004", "0002|000006"}));
}

// A service that is dropped there would be out of reach.
void PrEdiciones::soltada()
{
    Ajeno(BorrarParte + "'0005'");
    ElegirNodo(Arbol(), "N0002");
    Arbol().setDropHighlight(Arbol().Item("N0005"));
    Q_EMIT Arbol().OLEDragDrop("000001");
    QCOMPARE(Mensajes(), QStringList("48|Quorvex|KT580|ERR-ID:7500042|" + SinParte));
    QCOMPARE(escenario->Filas("SELECT * FROM Plan_Mantenimiento WHERE Tep_ID = '0005'"), QStringList());
}

PRUEBA(PrEdiciones)
#include "pr_ediciones.moc"
