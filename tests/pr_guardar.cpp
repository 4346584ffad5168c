#include "controls/Comunes.h"
#include "controls/Controles.h"
#include "support/Averia.h"
#include "support/PruebaEditor.h"

#include <QGroupBox>
#include <QLineEdit>

// The accept of the service editor: validation and saving.
class PrGuardar : public PruebaEditor
{
    Q_OBJECT

private Q_SLOTS:
    void validaciones_data();
    void validaciones();
    void guardarNuevo();
    void guardarCambio();
    void guardarFallido_data();
    void guardarFallido();
    void borradoPorOtro();
    void movidoPorOtro();
    void comillas();
    void desbordamiento();
};

// 7500064 and 7500065 cannot be reached: the counter of lines is shared, and labour has one by then.
void PrGuardar::validaciones_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("celda");
    QTest::addColumn<QString>("valor");
    QTest::addColumn<QString>("mensaje");
    QTest::addColumn<QString>("enfocado");
    QTest::addColumn<int>("pagina");
    const auto caja = [](int id, const char *control, const char *valor, const char *mensaje, const char *foco = "") {
        QTest::newRow(qPrintable(QString::number(id) + " " + control))
            << control << "" << valor << QString("ERR-ID:%1|%2").arg(id).arg(mensaje) << foco << 0;
    };
    caja(7500052, "txtNTipoEquipo", "", "No se ha especificado un tipo de equipo");
    caja(7500053, "txtParte", "", "No se ha especificado una parte");
    caja(7500054, "txtTipoServicio", "9009", "El tipo de servicio no es válido", "txtTipoServicio");
    caja(7500055, "txtTiempoEstimado", "", "No se ha especificado un tiempo", "txtTiempoEstimado");
    caja(7500056, "txtTiempoParo", "", "Indiquie las horas para el tiempo de paro", "txtTiempoParo");
    caja(7500057, "txtTiempoParo", "10", // as texts, "10" would not be greater than "8.5"
         "Las horas para el tiempo de paro no pueden ser mayor a las horas estimadas", "txtTiempoParo");
    caja(7500058, "txtPrioridad", "1234", "No se ha especificado la prioridad", "txtPrioridad");
    caja(7500059, "txtDias", "", "Debe indicar un tipo de frecuencia", "txtDias");
    caja(7500060, "txtLectura", "5", "Indique la unidad de medida de la lectura", "txtUnidad");
    caja(7500061, "txtUnidad", "NADA", "Indique una unidad de medida válida", "txtUnidad");

    const auto celda = [](int id, const char *grid, const char *columna, const char *valor, const char *mensaje,
                          int pagina) {
        QTest::newRow(qPrintable(QString("%1 %2 %3").arg(id).arg(grid, columna)))
            << grid << columna << valor << QString("ERR-ID:%1|%2").arg(id).arg(mensaje) << "" << pagina;
    };
    celda(7500062, "ssManoObra", "-", "", "Debe especificar una mano de obra", 1);
    celda(7500063, "ssManoObra", "Descripción", "", "Debe especificar una mano de obra", 1);
    celda(7500066, "ssManoObra", "+", "9999", "Debe especificar una mano de obra válida", 1);
    celda(7500067, "ssManoObra", "Producto", "9000000009",
          "La mano de onbra: MECÁNICO no se puede registrar porque está dada de baja", 1);
    celda(7500068, "ssManoObra", "Cantidad", "0", "Debe especificar una cantidad para la mano de obra", 1);
    celda(7500069, "ssManoObra", "=", "", "La mano de obra MECÁNICO ya ha sido ingresada!", 1);
    celda(7500070, "ssRefacciones", "Descripción", "", "Debe especificar una refacción válida", 2);
    celda(7500073, "ssRefacciones", "DESCRIPCIONTG", "", "Debe especificar un tipo de gasto válido", 2);
    celda(7500071, "ssRefacciones", "Producto", "9000000009",
          "La refacción: SELLO no se puede registrar porque está dada de baja", 2);
    celda(7500072, "ssRefacciones", "Cantidad", "", "Debe especificar una cantidad para la refacción", 2);
    celda(7500074, "ssRefacciones", "Gasto", "9009",
          "El tipo de gasto: CONSUMO no se puede registrar porque está dado de baja", 2);
    celda(7500075, "ssRefacciones", "=", "", "La refacción SELLO ya ha sido ingresada!", 2);
    celda(7500076, "ssHerramientas", "Descripción", "", "Debe especificar una herramienta válida", 3);
    celda(7500077, "ssHerramientas", "Producto", "9000000009",
          "La herramienta: LLAVE no se puede registrar porque está dada de baja", 3);
    celda(7500078, "ssHerramientas", "Cantidad", "0", "Debe especificar una cantidad para la herramienta", 3);
    celda(7500079, "ssHerramientas", "=", "", "La herramienta LLAVE ya ha sido ingresada!", 3);
}

void PrGuardar::validaciones()
{
    QFETCH(QString, control);
    QFETCH(QString, celda);
    QFETCH(QString, valor);
    QFETCH(QString, mensaje);
    QFETCH(QString, enfocado);
    QFETCH(int, pagina);
    const QStringList antes = escenario->Tablas();
    Abrir(0, [&](QWidget &editor) {
        if (celda.isEmpty()) {
            Caja(editor, qPrintable(control)).setText(valor);
        } else {
            auto &grid = Grid(editor, qPrintable(control));
            if (celda == "-")
                grid.RemoveAll();
            else if (celda == "+")
                grid.setCelda(grid.AddItem(), "Producto", valor);
            else if (celda == "=")
                for (int fila = grid.AddItem(), i = 0; i < grid.columnCount(); ++i)
                    grid.setCelda(fila, grid.NombreColumna(i), grid.Celda(0, grid.NombreColumna(i)));
            else
                grid.setCelda(0, celda, valor);
        }
        Aceptar(editor);
        QCOMPARE(escenario->Personas().ventanas, QList<WId>{editor.winId()});
        QCOMPARE(Mensajes(), QStringList{"48|Quorvex|KT580|" + mensaje});
        QVERIFY(editor.isVisible());
        QCOMPARE(Fichas(editor).Tab(), pagina);
        if (!enfocado.isEmpty())
            QVERIFY(Caja(editor, qPrintable(enfocado)).findChild<QLineEdit *>()->hasFocus());
    });
    QCOMPARE(escenario->Tablas(), antes);
}

void PrGuardar::guardarNuevo()
{
    escenario->Traza();
    Abrir(-1, [&](QWidget &editor) {
        QCOMPARE(Caja(editor, "txtID").Text(), "000004"); // numbered within the type
        LlenarNuevo(editor);
        EscribirCelda(Grid(editor, "ssHerramientas"), 1, "Cantidad", "7"); // no line: no description
        escenario->Traza();
        QTest::keyClick(&editor, Qt::Key_F4);
        QVERIFY(!editor.isVisible());
    });
    QStringList traza = escenario->Traza();
    traza = traza.mid(traza.indexOf(motor::Inicio()));
    traza = traza.mid(0, traza.indexOf("-\tCOMMIT") + 1);
    const QString firma = "'mlopez', '2026-03-14 09:26:53', 'mlopez', '2026-03-14 09:26:53'";
    const QString linea =
        "1\tINSERT INTO Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, "
        "Pr_Cve_Producto, ";
    const QStringList esperada{
        motor::Inicio(),
        "1\tINSERT INTO Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio, Pm_Frecuencia, "
        "Pm_Lectura, Pm_Unidad_Lectura, Pm_Precio, Pm_Tiempo_Estimado, Pm_Prioridad, Pm_Requiere_Paro, Pm_Tiempo_Paro, "
        "Oper_Alta, Fecha_Alta, Oper_Ult_Modif, Fecha_Ult_Modif) VALUES ('0900', '0002', '000004', '9001', 30, 0, '', "
        "1000.5, 2.5, '9001', 'NO', 0, "
            + firma + ")",
        "1\tSELECT Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Version_Anterior, Oper_Anterior, Fecha_Anterior FROM "
        "Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = '0900' AND Pm_ID = '000004' AND Tep_ID = '0002'",
        "1\tINSERT INTO Registro_Cambio (Rc_Tabla, Rc_Clave, Rc_Oper, Rc_Fecha) VALUES ('Plan_Mantenimiento', "
        "'0900|000004|0002', 'mlopez', '2026-03-14 09:26:53')",
        "0\tDELETE FROM Plan_Mantenimiento_Detalle WHERE Te_Cve_Tipo_Equipo = '0900' AND Tep_ID = '0002' AND Pm_ID = "
        "'000004' ",
        linea
            + "Pmd_Cantidad, Pmd_Unidad, Pmd_Costo, Pmd_Importe ) VALUES ('0900', '0002', '000004', '000005', '01', "
              "'9000000001', 2, 'HR', 150.25, 300.5) ",
        linea
            + "Pmd_Cantidad, Pmd_Unidad, Pmd_Costo, Pmd_Importe, Pmd_Tipo_Gasto ) VALUES ('0900', '0002', '000004', "
              "'000006', '02', '9000000002', 1.5, 'PZA', 80.1, 120.14999999999999, '9001') ",
        linea
            + "Pmd_Costo, Pmd_Cantidad, Pmd_Importe, Pmd_Unidad ) VALUES ('0900', '0002', '000004', '000007', '03', "
              "'9000000003', 0, 1, 0, 'PZA') ",
        "-\tCOMMIT"};
    QCOMPARE(traza, esperada);
    QCOMPARE(escenario->De<comunesQVX::ListView>("lvServicios").Count(), 3);
    QVERIFY(!escenario->De<toolbarQVX::Controles>("Controles").NuevoDisponible());
    QVERIFY(escenario->De<toolbarQVX::Controles>("Controles").ExtrasDisponibles());
}

void PrGuardar::guardarCambio()
{
    Abrir(1, [&](QWidget &editor) { // due by reading only, and without lines
        Escribir(Caja(editor, "txtPrecio"), "750.25");
        Paro(editor).setChecked(true);
        Fichas(editor).setTab(1);
        EscribirCelda(Grid(editor, "ssManoObra"), 0, "Producto", "9000000001");
        EscribirCelda(Grid(editor, "ssManoObra"), 0, "Cantidad", "1");
        escenario->Traza();
        Aceptar(editor);
        QVERIFY(!editor.isVisible());
    });
    QVERIFY(escenario->Traza().contains(
        "1\tUPDATE Plan_Mantenimiento SET    Ts_Cve_Tipo_Servicio = '9001',   Pm_Frecuencia = 0,   Pm_Lectura = "
        "1250.5,   "
        "Pm_Unidad_Lectura = 'HRS',   Pm_Precio = 750.25,   Pm_Tiempo_Estimado = 2,   Pm_Prioridad = '9001',   "
        "Pm_Requiere_Paro = 'SI',   Pm_Tiempo_Paro = 2,   Oper_Ult_Modif = 'mlopez',   Fecha_Ult_Modif= '2026-03-14 "
        "09:26:53'WHERE Pm_ID = '000002' and Te_Cve_Tipo_Equipo = '0900' and Tep_ID = '0002' "));
    QCOMPARE(
        escenario->Filas("SELECT Pm_Frecuencia, Pm_Lectura, Pm_Unidad_Lectura, Pm_Precio, Pm_Requiere_Paro, "
                         "Pm_Tiempo_Paro, Oper_Alta, Oper_Ult_Modif FROM Plan_Mantenimiento WHERE Pm_ID = '000002'"),
        QStringList{"0|1250.5|HRS|750.25|SI|2|jcruz|mlopez"});
    QCOMPARE(escenario->Filas("SELECT Pmd_ID, Pmd_Importe FROM Plan_Mantenimiento_Detalle WHERE Pm_ID = '000002'"),
             QStringList{"000005|150.25"});
}

void PrGuardar::guardarFallido_data()
{
    QTest::addColumn<QString>("falla");
    QTest::addColumn<int>("fila");
    QTest::addColumn<QString>("mensaje");
    const auto fila = [](const char *nombre, const QString &falla, int renglon, int identificador,
                         const QString &motivo = "falla") {
        QTest::newRow(nombre) << falla << renglon
                              << QString("16|ERROR|KT580|ERR-ID:%1|cmdAceptar() - \r\n").arg(identificador) + motivo;
    };
    const QString lineas = "INSERT ON Plan_Mantenimiento_Detalle WHEN NEW.Pmd_Tipo = ";
    fila("alta", "INSERT ON Plan_Mantenimiento", -1, 7500080);
    fila("cambio", "UPDATE ON Plan_Mantenimiento", 0, 7500080);
    QTest::newRow("registro") << "INSERT ON Registro_Cambio" << 0 << "16|ERROR|KT580|ERR-ID:7500080|ERROR";
    fila("borrar líneas", "DELETE ON Plan_Mantenimiento_Detalle", 0, 7500084);
    fila("mano de obra", lineas + "'01'", 0, 7500081);
    fila("refacción", lineas + "'02'", -1, 7500082);
    fila("herramienta", lineas + "'03'", -1, 7500083);
    if (!motor::EsPostgres())
        fila("disco lleno", "disco", 0, 7500080, "disk I/O error");
    fila("confirmación", "confirmación", 0, 7500084, motor::NoConfirma());
}

// Whatever statement fails: the tables are as before, the form as it was, and the same accept then succeeds.
void PrGuardar::guardarFallido()
{
    QFETCH(QString, falla);
    QFETCH(int, fila);
    QFETCH(QString, mensaje);
    Abrir(fila, [&](QWidget &editor) {
        if (fila < 0)
            LlenarNuevo(editor);
        const QStringList antes = escenario->Tablas();
        Averia averia(*escenario, falla);
        Aceptar(editor);
        averia.Reparar();
        QCOMPARE(Mensajes(), QStringList{mensaje});
        QVERIFY(editor.isVisible());
        QCOMPARE(escenario->Tablas(), antes);
        QCOMPARE(Grid(editor, "ssManoObra").Celda(0, "Cantidad"), "2");
        QCoreApplication::processEvents();
        Aceptar(editor);
        QVERIFY(!editor.isVisible());
        QVERIFY(escenario->Tablas() != antes);
    });
}

void PrGuardar::borradoPorOtro()
{
    Abrir(0, [&](QWidget &editor) {
        escenario->Motor("DELETE FROM Plan_Mantenimiento WHERE Pm_ID = '000001'");
        Aceptar(editor);
        QCOMPARE(escenario->Personas().detalles,
                 QStringList{"El registro ya no existe: otra persona lo eliminó o lo cambió de lugar."});
        QCOMPARE(Mensajes(), QStringList{"16|ERROR|KT580|ERR-ID:7500080|ERROR"});
        QVERIFY(editor.isVisible());
    });
    QCOMPARE(escenario->Motor("SELECT count(*) FROM Plan_Mantenimiento_Detalle WHERE Pm_ID = '000001'").toInt(), 3);
}

// The service was moved to another part meanwhile: no line may stay behind where it no longer is.
void PrGuardar::movidoPorOtro()
{
    QStringList antes;
    Abrir(0, [&](QWidget &editor) {
        escenario->Motor("UPDATE Plan_Mantenimiento SET Tep_ID = '0005' WHERE Pm_ID = '000001'");
        escenario->Motor("UPDATE Plan_Mantenimiento_Detalle SET Tep_ID = '0005' WHERE Pm_ID = '000001'");
        antes = escenario->Tablas();
        Aceptar(editor);
        QCOMPARE(Mensajes(), QStringList{"16|ERROR|KT580|ERR-ID:7500080|ERROR"});
    });
    QCOMPARE(escenario->Tablas(), antes);
}

// A quote reaches the statement as it is, and ends in the trap with the engine's own text.
void PrGuardar::comillas()
{
    const QStringList antes = escenario->Tablas();
    Abrir(0, [&](QWidget &editor) {
        Grid(editor, "ssManoObra").setCelda(0, "Producto", "x'y");
        Aceptar(editor);
        QCOMPARE(Mensajes(), QStringList{"16|ERROR|KT580|ERR-ID:7500081|cmdAceptar() - \r\n" + motor::Sintaxis("y")});
    });
    QCOMPARE(escenario->Tablas(), antes);
}

void PrGuardar::desbordamiento()
{
    const QStringList antes = escenario->Tablas();
    Abrir(0, [&](QWidget &editor) {
        auto &grid = Grid(editor, "ssManoObra");
        Fichas(editor).setTab(1);
        grid.setCelda(0, "COSTO", "1" + QString(308, QLatin1Char('0')));
        EscribirCelda(grid, 0, "Cantidad", "20"); // their product is no number any more
        QCOMPARE(Mensajes(),
                 QStringList{"16|ERROR|KT580|ERR-ID:7500087|ssManoObra_BeforeRowColChange() - \r\nDesbordamiento"});
        grid.setCelda(0, "Cantidad", "1");
        for (int fila = grid.Rows(); fila < 32768; ++fila)
            grid.setCelda(grid.AddItem(), "Importe", "1");
        Aceptar(editor);
        QCOMPARE(Mensajes(), QStringList{"16|ERROR|KT580|ERR-ID:7500084|cmdAceptar() - \r\nDesbordamiento"});
        Fichas(editor).setTab(3);
        QCOMPARE(Mensajes(), QStringList{"16|Quorvex|QVX|ERR-ID:1000000|Desbordamiento"});
    });
    QCOMPARE(escenario->Tablas(), antes);
}

PRUEBA_MAIN(PrGuardar)
#include "pr_guardar.moc"
