#include "support/PruebaPantalla.h"

// Copying the plan of the type on the screen, 0900, to another one.
class PrCopiar : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void sinCopia();
    void copia();

private:
    QStringList Plan(const QString &tipo);
};

namespace
{

const QString Pregunta = "292|Quorvex|KT580|ERR-ID:7500049|El tipo de equipo seleccionado ya tiene un plan de de "
                         "mantenimiento, ¿Desea reemplazarlo?";
const QString ColumnasParte = "Tep_ID,Tep_Descripcion,Tep_Padre,Oper_Alta,Fecha_Alta,Oper_Baja,Fecha_Baja,"
                              "Oper_Ult_Modif,Fecha_Ult_Modif,Es_Cve_Estado ";
const QString ColumnasServicio =
    "Tep_ID,Pm_ID,Ts_Cve_Tipo_Servicio,Pm_Frecuencia,Pm_Lectura,Pm_Unidad_Lectura,Pm_Precio,Pm_Tiempo_Estimado,"
    "Pm_Prioridad,Pm_Requiere_Paro,Pm_Tiempo_Paro,Oper_Alta,Fecha_Alta,Oper_Baja,Fecha_Baja,Oper_Ult_Modif,"
    "Fecha_Ult_Modif,Es_Cve_Estado ";
const QString ColumnasLinea =
    "Tep_ID,Pm_ID,Pmd_ID,Pmd_Tipo,Pr_Cve_Producto,Pmd_Cantidad,Pmd_Unidad,Pmd_Costo,Pmd_Importe ";

} // namespace

// Everything of a type's plan but the type's key and the expense types.
QStringList PrCopiar::Plan(const QString &tipo)
{
    QStringList filas;
    for (const QString &consulta :
         {ColumnasParte + "FROM Tipo_Equipo_Parte", ColumnasServicio + "FROM Plan_Mantenimiento",
          ColumnasLinea + "FROM Plan_Mantenimiento_Detalle"})
        filas += escenario->Filas("SELECT " + consulta + " WHERE Te_Cve_Tipo_Equipo = '" + tipo + "' ORDER BY 1, 2, 3");
    return filas;
}

void PrCopiar::sinCopia()
{
    const QStringList antes = escenario->Tablas();
    const auto probar = [&](const QString &destino, const QString &mensaje) {
        escenario->Personas().Elegir("TIPO_EQUIPO", destino);
        Mandar("B3");
        QCOMPARE(Mensajes().join('\n'), mensaje);
        QCOMPARE(escenario->Tablas(), antes);
        QCOMPARE(Tipo().Text(), "0900");
    };
    probar("", "");
    probar("0900 ", "48|Quorvex|KT580|ERR-ID:7500033|El tipo de equipo seleccionado es igual al actual");
    escenario->Personas().Responder(7500049, qvx::mensaje::No);
    probar("0901", Pregunta); // which has no plan: asked all the same
}

void PrCopiar::copia()
{
    Preparar("INSERT INTO Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio) VALUES "
             "('0902', '0001', '000077', '9001');INSERT INTO Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Tep_ID, "
             "Pm_ID, Pmd_ID, Pmd_Tipo, Pr_Cve_Producto) VALUES ('0902', '0001', '000077', '000077', '03', "
             "'9000000003')");
    ElegirNodo(Arbol(), "N0005");
    const auto copiar = [&] {
        escenario->Personas().Elegir("TIPO_EQUIPO", "0902");
        escenario->Personas().Responder(7500049, qvx::mensaje::Si);
        escenario->Traza();
        Mandar("B3");
        QCOMPARE(Mensajes(), QStringList{Pregunta});
    };
    copiar();
    const QString borrada = "1\tDELETE FROM %1 WHERE Te_Cve_Tipo_Equipo = '0902' ";
    const QString copiada = "%1\tinsert into %2(Te_Cve_Tipo_Equipo,%3) SELECT '0902',%3%4WHERE Te_Cve_Tipo_Equipo = "
                            "'0900'  ";
    EnOrden(escenario->Traza(),
            {motor::Inicio(), borrada.arg("Plan_Mantenimiento_Detalle"), borrada.arg("Plan_Mantenimiento"),
             borrada.arg("Tipo_Equipo_Parte"),
             copiada.arg("6", "Tipo_Equipo_Parte", ColumnasParte, "from Tipo_Equipo_Parte "),
             copiada.arg("3", "Plan_Mantenimiento", ColumnasServicio, "FROM Plan_Mantenimiento  "),
             copiada.arg("4", "Plan_Mantenimiento_Detalle", ColumnasLinea, "FROM Plan_Mantenimiento_Detalle "),
             "-\tCOMMIT"});
    const QStringList plan = Plan("0900");
    QCOMPARE(plan.size(), 13);
    QCOMPARE(Plan("0902"), plan);
    QCOMPARE(escenario->Filas("SELECT Te_Cve_Tipo_Equipo FROM Plan_Mantenimiento_Detalle WHERE Pmd_Tipo_Gasto <> ''"),
             QStringList{"0900"});

    // The screen shows the target.
    QCOMPARE(Tipo().Text() + escenario->De<txtQVX>("txtNTipoEquipo").Text(), "0902AJENA");
    QVERIFY(Tipo().findChild<QLineEdit *>()->hasFocus());
    QCOMPARE(Arbol().Count(), 6);
    QCOMPARE(Barras(), "00000|Exportar XML|Importar XML|Copiar plan");

    // A plan without parts is copied too.
    Escribir(Tipo(), "0901");
    copiar();
    QCOMPARE(Plan("0902"), QStringList());
    QCOMPARE(Arbol().Count(), 1);
    QCOMPARE(Plan("0900"), plan);
}

PRUEBA_MAIN(PrCopiar)
#include "pr_copiar.moc"
