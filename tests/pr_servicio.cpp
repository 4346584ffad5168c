#include "support/PruebaPantalla.h"

// The service editor: loading, keys, grids and costing; its checks, and what a save writes.
class PrServicio : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void cargado();
    void bajaSoloSeMira();
    void celdas();
    void validaciones();
    void guardarNuevo();
    void guardarCambio();
};

void PrServicio::cargado()
{
    Abrir(0, [&](QWidget &editor) {
        const auto textos = [&](std::initializer_list<const char *> cajas) {
            QStringList partes;
            for (const char *caja : cajas)
                partes.append(Caja(editor, caja).Text());
            return partes.join('|');
        };
        QCOMPARE(textos({"txtTipoEquipo", "txtNTipoEquipo", "txtParte", "txtNParte", "txtID", "txtTipoServicio",
                         "txtNTiposervicio", "txtPrioridad", "txtNPrioridad", "txtDias", "txtLectura", "txtUnidad",
                         "txtPrecio", "txtTiempoEstimado", "txtTiempoParo"}),
                 "0900|BOMBA DE PRUEBA|0002|CUERPO / IMPULSOR|000001|9001|REVISIÓN|9001|URGENTE DE PRUEBA|30|||"
                 "1,000.00|8.5|4");
        QVERIFY(Paro(editor).isChecked() && Caja(editor, "txtTiempoParo").isEnabled());
        QCOMPARE(Fila(Grid(editor, "ssManoObra"), 0), "9000000001|MECÁNICO|2|HR|150.25|300.5");
        QCOMPARE(Fila(Grid(editor, "ssRefacciones"), 0), "9000000002|SELLO|1.5|PZA|80.1|120.15|9001|CONSUMO");
        QCOMPARE(Fila(Grid(editor, "ssHerramientas"), 0), "9000000003|LLAVE|1|PZA|");

        const auto resumen = [&] {
            return textos(
                {"txtManoObra", "txtRefacciones", "txtTotales", "txtPrecioTab", "txtUtilidad", "txtPorcentaje"});
        };
        Fichas(editor).setTab(3);
        QCOMPARE(resumen(), "$300.50|$120.15|$420.65|$1,000.00|$579.35|57.94");
        Escribir(Caja(editor, "txtPrecio"), "400");
        QCOMPARE(resumen(), "$300.50|$120.15|$420.65|$400.00|-$20.65|-5.16");
        Escribir(Caja(editor, "txtPrecio"), "0");
        Fichas(editor).setTab(1);
        EscribirCelda(Grid(editor, "ssManoObra"), 0, "Cantidad", "1");
        Fichas(editor).setTab(3);
        QCOMPARE(resumen(), "$150.25|$120.15|$270.40|$0.00|-$270.40|0.00");
    });
}

// "si" is not "SI": the box is cleared. Nothing can be changed or accepted.
void PrServicio::bajaSoloSeMira()
{
    const auto mirar = [&](QWidget &editor) {
        QVERIFY(!Paro(editor).isChecked());
        QVERIFY(!Caja(editor, "txtPrecio").isEnabled() && !Grid(editor, "ssManoObra").isEnabled());
        QTest::keyClick(&editor, Qt::Key_F4);
        QVERIFY(editor.isVisible());
    };
    Abrir(0, mirar, "N0003");
}

void PrServicio::celdas()
{
    Abrir(-1, [&](QWidget &editor) {
        auto &manoObra = Grid(editor, "ssManoObra");
        Fichas(editor).setTab(1);
        EscribirCelda(manoObra, 0, "Producto", "9000000001");
        EscribirCelda(manoObra, 0, "Cantidad", "1,000.5");
        EscribirCelda(manoObra, 0, "Producto", "9000000009"); // retired: the other cells stay
        QCOMPARE(Fila(manoObra, 0), "9000000009|MECÁNICO|1000.5|HR|150.25|150325.125");
        EscribirCelda(manoObra, 1, "Producto", "9999999"); // unknown; its quantity is left empty
        manoObra.ConfirmarEntrada();
        QCOMPARE(Fila(manoObra, 1), "0009999999||0|||0");

        // Chosen in the catalogue; and another product brings its cost, and the amount of that cost.
        auto &refacciones = Grid(editor, "ssRefacciones");
        Fichas(editor).setTab(2);
        const auto buscar = [&](const char *columna, const char *catalogo, const char *clave) {
            refacciones.setFocus();
            refacciones.setCurrentCell(0, refacciones.IndiceColumna(columna));
            escenario->Personas().Elegir(catalogo, clave);
            QTest::keyClick(&refacciones, Qt::Key_F3);
        };
        buscar("Producto", "PRODUCTO_REFACCION", "9000000002");
        EscribirCelda(refacciones, 0, "Cantidad", "3");
        QCOMPARE(Fila(refacciones, 0), "9000000002|SELLO|3|PZA|80.1|240.29999999999998||");
        EscribirCelda(refacciones, 0, "Producto", "9000000004");
        buscar("Gasto", "TIPO_GASTO", "9001");
        QCOMPARE(Fila(refacciones, 0), "9000000004|JUNTA|3|PZA|10|30|9001|CONSUMO");
    });
}

// Accepted again and again, with one correction each time: every check, in their order. A header's box that is refused
// has the focus, and is corrected there.
void PrServicio::validaciones()
{
    const QStringList antes = escenario->Tablas();
    Abrir(-1, [&](QWidget &editor) {
        int pagina = 0;
        const auto rechazo = [&](const QString &mensaje) {
            Aceptar(editor);
            QCOMPARE(Mensajes().join('\n'), "48|Quorvex|KT580|ERR-ID:75000" + mensaje);
            QVERIFY(editor.isVisible());
            QCOMPARE(Fichas(editor).Tab(), pagina);
        };
        const auto caja = [&](const QString &mensaje, const QString &correccion) {
            Fichas(editor).setTab(3);
            rechazo(mensaje);
            Escribir(*QApplication::focusWidget()->parentWidget(), correccion);
        };
        Escribir(Caja(editor, "txtTipoServicio"), "9009"); // retired
        caja("54|El tipo de servicio no es válido", "9001");
        caja("55|No se ha especificado un tiempo", "8.5");
        Paro(editor).setChecked(true);
        QCOMPARE(Caja(editor, "txtTiempoParo").Text(), "8.5");
        Escribir(Caja(editor, "txtTiempoParo"), "");
        caja("56|Indiquie las horas para el tiempo de paro", "10"); // as a text, not greater than "8.5"
        caja("57|Las horas para el tiempo de paro no pueden ser mayor a las horas estimadas", "8.5");
        caja("58|No se ha especificado la prioridad", "9001");
        caja("59|Debe indicar un tipo de frecuencia", "30");
        Escribir(Caja(editor, "txtLectura"), "5");
        caja("60|Indique la unidad de medida de la lectura", "NADA");
        caja("61|Indique una unidad de medida válida", "hrs");

        SSOleDBGrid *grid = nullptr;
        const auto celda = [&](int fila, const char *columna, const char *texto, const QString &mensaje = {}) {
            EscribirCelda(*grid, fila, columna, texto);
            if (!mensaje.isEmpty())
                rechazo(mensaje);
        };
        pagina = 1;
        grid = &Grid(editor, "ssManoObra");
        rechazo("62|Debe especificar una mano de obra");
        celda(0, "Producto", "9999", "63|Debe especificar una mano de obra");
        celda(1, "Producto", "9000000001", "66|Debe especificar una mano de obra válida");
        celda(0, "Producto", "9000000001", "68|Debe especificar una cantidad para la mano de obra");
        celda(0, "Cantidad", "2", "69|La mano de obra MECÁNICO ya ha sido ingresada!");
        celda(1, "Producto", "9000000009",
              "67|La mano de onbra: MECÁNICO no se puede registrar porque está dada de baja");
        celda(1, "Producto", "9000000003");
        celda(1, "Cantidad", "1");

        Fichas(editor).setTab(pagina = 2);
        grid = &Grid(editor, "ssRefacciones");
        celda(0, "Producto", "9999", "70|Debe especificar una refacción válida");
        celda(0, "Producto", "9000000002", "73|Debe especificar un tipo de gasto válido");
        celda(0, "Gasto", "9001", "72|Debe especificar una cantidad para la refacción");
        celda(0, "Cantidad", "3");
        celda(0, "Gasto", "9009", "74|El tipo de gasto: CONSUMO no se puede registrar porque está dado de baja");
        celda(0, "Gasto", "9001");
        celda(0, "Producto", "9000000009", "71|La refacción: SELLO no se puede registrar porque está dada de baja");
        celda(0, "Producto", "9000000002");
        celda(1, "Producto", "9000000002", "75|La refacción SELLO ya ha sido ingresada!");
        celda(1, "Producto", "9000000004");
        celda(1, "Gasto", "9001");
        celda(1, "Cantidad", "1");

        Fichas(editor).setTab(pagina = 3);
        grid = &Grid(editor, "ssHerramientas");
        celda(0, "Producto", "9999", "76|Debe especificar una herramienta válida");
        celda(0, "Producto", "9000000003", "78|Debe especificar una cantidad para la herramienta");
        celda(0, "Cantidad", "1");
        celda(0, "Producto", "9000000009", "77|La herramienta: LLAVE no se puede registrar porque está dada de baja");
        celda(0, "Producto", "9000000003");
        celda(1, "Producto", "9000000003", "79|La herramienta LLAVE ya ha sido ingresada!");
        celda(1, "Producto", "9000000001"); // labour too, which is no repetition
        celda(1, "Cantidad", "1");
        QCOMPARE(escenario->Tablas(), antes);
        Aceptar(editor);
        QVERIFY(!editor.isVisible());
    });
    QCOMPARE(escenario->Motor("SELECT count(*) FROM Plan_Mantenimiento_Detalle WHERE Pm_ID = '000004'").toInt(), 6);
}

void PrServicio::guardarNuevo()
{
    Abrir(-1, [&](QWidget &editor) {
        QCOMPARE(Caja(editor, "txtID").Text(), "000004"); // numbered within the type
        LlenarNuevo(editor);
        EscribirCelda(Grid(editor, "ssHerramientas"), 1, "Cantidad", "7"); // no line: no description
        Paro(editor).setChecked(true);
        Escribir(Caja(editor, "txtTiempoEstimado"), "2.5");
        Paro(editor).setChecked(false); // and with it the downtime
        escenario->Traza();
        QTest::keyClick(&editor, Qt::Key_F4);
        QVERIFY(!editor.isVisible());
    });
    const QString firma = "'mlopez', '2026-03-14 09:26:53', 'mlopez', '2026-03-14 09:26:53'";
    const QString linea =
        "1\tINSERT INTO Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, "
        "Pr_Cve_Producto, %1 ) VALUES ('0900', '0002', '000004', '00000%2) ";
    EnOrden(
        escenario->Traza(),
        {motor::Inicio(),
         "1\tINSERT INTO Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio, Pm_Frecuencia, "
         "Pm_Lectura, Pm_Unidad_Lectura, Pm_Precio, Pm_Tiempo_Estimado, Pm_Prioridad, Pm_Requiere_Paro, "
         "Pm_Tiempo_Paro, Oper_Alta, Fecha_Alta, Oper_Ult_Modif, Fecha_Ult_Modif) VALUES ('0900', '0002', '000004', "
         "'9001', 30, 0, '', 1000.5, 2.5, '9001', 'NO', 0, "
             + firma + ")",
         "1\tINSERT INTO Registro_Cambio (Rc_Tabla, Rc_Clave, Rc_Oper, Rc_Fecha) VALUES ('Plan_Mantenimiento', "
         "'0900|000004|0002', 'mlopez', '2026-03-14 09:26:53')",
         "0\tDELETE FROM Plan_Mantenimiento_Detalle WHERE Te_Cve_Tipo_Equipo = '0900' AND Tep_ID = '0002' AND Pm_ID = "
         "'000004' ",
         linea.arg("Pmd_Cantidad, Pmd_Unidad, Pmd_Costo, Pmd_Importe",
                   "5', '01', '9000000001', 2, 'HR', 150.25, 300.5"),
         linea.arg("Pmd_Cantidad, Pmd_Unidad, Pmd_Costo, Pmd_Importe, Pmd_Tipo_Gasto",
                   "6', '02', '9000000002', 1.5, 'PZA', 80.1, 120.14999999999999, '9001'"),
         linea.arg("Pmd_Costo, Pmd_Cantidad, Pmd_Importe, Pmd_Unidad", "7', '03', '9000000003', 0, 1, 0, 'PZA'"),
         "-\tCOMMIT"});
    QCOMPARE(escenario->Motor("SELECT count(*) FROM Plan_Mantenimiento_Detalle WHERE Pm_ID = '000004'").toInt(), 3);
    QCOMPARE(Lista().Count(), 3);
    QVERIFY(!Barra().Ofrecido().nuevo && Barra().Ofrecido().info);
}

// A line is taken out, another put in its place: the lines are written anew.
void PrServicio::guardarCambio()
{
    Abrir(0, [&](QWidget &editor) {
        Escribir(Caja(editor, "txtPrecio"), "750.25");
        Escribir(Caja(editor, "txtDias"), "");
        Escribir(Caja(editor, "txtLectura"), "1250.5");
        Escribir(Caja(editor, "txtUnidad"), "HRS");
        Grid(editor, "ssRefacciones").RemoveAll();
        Fichas(editor).setTab(1);
        EscribirCelda(Grid(editor, "ssManoObra"), 0, "Cantidad", "1");
        escenario->Traza();
        Aceptar(editor);
        QVERIFY(!editor.isVisible());
    });
    EnOrden(escenario->Traza(),
            {"1\tUPDATE Plan_Mantenimiento SET    Ts_Cve_Tipo_Servicio = '9001',   Pm_Frecuencia = 0,   Pm_Lectura = "
             "1250.5,   Pm_Unidad_Lectura = 'HRS',   Pm_Precio = 750.25,   Pm_Tiempo_Estimado = 8.5,   Pm_Prioridad = "
             "'9001',   Pm_Requiere_Paro = 'SI',   Pm_Tiempo_Paro = 4,   Oper_Ult_Modif = 'mlopez',   "
             "Fecha_Ult_Modif= '2026-03-14 09:26:53'WHERE Pm_ID = '000001' and Te_Cve_Tipo_Equipo = '0900' and Tep_ID "
             "= '0002' "});
    QCOMPARE(escenario->Filas("SELECT Oper_Alta, Oper_Ult_Modif FROM Plan_Mantenimiento ORDER BY Pm_ID"),
             (QStringList{"jcruz|mlopez", "jcruz|jcruz", "jcruz|jcruz"}));
    QCOMPARE(escenario->Filas("SELECT Pm_ID, Pmd_ID, Pmd_Tipo, Pmd_Importe FROM Plan_Mantenimiento_Detalle ORDER BY "
                              "Pmd_ID"),
             (QStringList{"000003|000004|01|150.25", "000001|000005|01|150.25", "000001|000006|03|0"}));
}

PRUEBA_MAIN(PrServicio)
#include "pr_servicio.moc"
