#include "support/PruebaPantalla.h"

// Copying the plan of the type on the screen, 0900, to another one.
class PrCopiar : public PruebaPantalla
{
    Q_OBJECT

private Q_SLOTS:
    void preguntas_data();
    void preguntas();
    void copia();

private:
    void Copiar(const QString &destino);
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
// What the target has before.
const QString Ajeno = "INSERT INTO Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio) VALUES "
                      "('0902', '0001', '000077', '9001');INSERT INTO Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, "
                      "Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, Pr_Cve_Producto) VALUES ('0902', '0001', '000077', '000077', "
                      "'03', '9000000003')";

} // namespace

// Presses "Copiar plan" and answers the question with Yes.
void PrCopiar::Copiar(const QString &destino)
{
    escenario->Personas().Elegir("TIPO_EQUIPO", destino);
    escenario->Personas().Responder(7500049, qvx::mensaje::Si);
    Mandar("B3");
}

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

void PrCopiar::preguntas_data()
{
    const Tabla<QString, QString, QString> fila("origen", "destino", "mensaje");
    fila("sin tipo", "", "no se busca",
         "48|Quorvex|KT580|ERR-ID:7500032|Seleccione un tipo de equipo para copiar el plan de mantenimiento");
    fila("el mismo, con blanco", "0900", "0900 ",
         "48|Quorvex|KT580|ERR-ID:7500033|El tipo de equipo seleccionado es igual al actual");
    fila("sin elegir", "0900", "", "");
    fila("no, sin plan que reemplazar", "0900", "0901", Pregunta);
    fila("no, sin plan que copiar", "0901", "0902", Pregunta);
}

// What ends the command before it changes anything.
void PrCopiar::preguntas()
{
    QFETCH(QString, origen);
    QFETCH(QString, destino);
    QFETCH(QString, mensaje);
    Escribir(Tipo(), origen);
    const QStringList antes = escenario->Tablas();
    escenario->Traza();
    if (!origen.isEmpty())
        escenario->Personas().Elegir("TIPO_EQUIPO", destino);
    QStringList traza;
    if (mensaje == Pregunta) {
        escenario->Personas().Responder(7500049, qvx::mensaje::No);
        traza.append("0\tSELECT Te_Cve_Tipo_Equipo FROM Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = '" + destino
                     + "' ");
    }
    Q_EMIT Barra().B3Click(); // without a type the button is hidden
    QCOMPARE(escenario->Personas().ventanas, QList<WId>(mensaje.isEmpty() ? 0 : 1, pantalla->winId()));
    QCOMPARE(Mensajes().join('\n'), mensaje);
    QCOMPARE(escenario->Traza(), traza);
    QCOMPARE(escenario->Tablas(), antes);
    QCOMPARE(Tipo().Text(), origen);
}

void PrCopiar::copia()
{
    Preparar(Ajeno);
    ElegirNodo(Arbol(), "N0005");
    escenario->Traza();
    Copiar("0902");
    QCOMPARE(Mensajes(), QStringList{Pregunta});
    const auto borrar = [](const QString &tabla) {
        return QString("1\tDELETE FROM %1 WHERE Te_Cve_Tipo_Equipo = '0902' ").arg(tabla);
    };
    const auto copiar = [](const QString &filas, const QString &tabla, const QString &columnas, const QString &desde) {
        return QString("%1\tinsert into %2(Te_Cve_Tipo_Equipo,%3) SELECT '0902',%3%4WHERE Te_Cve_Tipo_Equipo = "
                       "'0900'  ")
            .arg(filas, tabla, columnas, desde);
    };
    QCOMPARE(escenario->Traza().mid(1, 8),
             (QStringList{motor::Inicio(), borrar("Plan_Mantenimiento_Detalle"), borrar("Plan_Mantenimiento"),
                          borrar("Tipo_Equipo_Parte"),
                          copiar("6", "Tipo_Equipo_Parte", ColumnasParte, "from Tipo_Equipo_Parte "),
                          copiar("3", "Plan_Mantenimiento", ColumnasServicio, "FROM Plan_Mantenimiento  "),
                          copiar("4", "Plan_Mantenimiento_Detalle", ColumnasLinea, "FROM Plan_Mantenimiento_Detalle "),
                          "-\tCOMMIT"}));
    const QStringList plan = Plan("0900");
    QCOMPARE(plan.size(), 13);
    QCOMPARE(Plan("0902"), plan);
    QCOMPARE(escenario->Filas("SELECT DISTINCT Te_Cve_Tipo_Equipo, Pmd_Tipo_Gasto FROM Plan_Mantenimiento_Detalle "
                              "WHERE Pmd_Tipo = '02' ORDER BY 1"),
             (QStringList{"0900|9001", "0902|"}));

    // The screen shows the target.
    QCOMPARE(Tipo().Text() + escenario->De<txtQVX>("txtNTipoEquipo").Text(), "0902AJENA");
    QVERIFY(Tipo().findChild<QLineEdit *>()->hasFocus());
    QCOMPARE(Arbol().Count(), 6);
    QCOMPARE(Arbol().Item("N0003")->Image(), 3);
    QCOMPARE(Barra().Titulo3(), "Copiar plan");

    // A plan without parts is copied too.
    Escribir(Tipo(), "0901");
    Copiar("0902");
    QCOMPARE(Mensajes(), QStringList{Pregunta});
    QCOMPARE(Plan("0902"), QStringList());
    QCOMPARE(Arbol().Count(), 1);
    QCOMPARE(Plan("0900"), plan);
}

PRUEBA_MAIN(PrCopiar)
#include "pr_copiar.moc"
