#include "support/Plan.h"

void SembrarPlan(const Escenario &escenario)
{
    const auto otro = escenario.Base().Otro();
    const QString firma = ", 'jcruz', '2025-01-02 03:04:05', 'jcruz', '2025-01-02 03:04:05')";
    const auto sembrar = [&](const QString &tabla, const QString &filas) { // each row ends with "}" for its signature
        otro->Correr("INSERT INTO " + tabla + " VALUES " + QString(filas).replace("}", firma));
    };
    sembrar("Tipo_Equipo", "('0900', 'BOMBA DE PRUEBA', 'AC'), ('0901', 'SIN PLAN', 'AC'), ('0902', 'AJENA', 'AC'), "
                           "('0903', 'CANCELADA', 'CA')");
    sembrar("Producto", "('9000000001', 'MECÁNICO', 'MO', 'HR', 150.25, 'AC'), ('9000000002', 'SELLO', 'RE', 'PZA', "
                        "80.1, 'AC'), ('9000000003', 'LLAVE', 'HE', 'PZA', 5, 'AC'), ('9000000004', 'JUNTA', 'RE', "
                        "'PZA', 10, 'AC'), ('9000000009', 'RETIRADO', 'MO', 'HR', 1, 'BA')");
    sembrar("Tipo_Gasto", "('9001', 'CONSUMO', 'AC'), ('9009', 'ANTIGUO', 'BA')");
    sembrar("Tipo_Servicio", "('9001', 'REVISIÓN', 'AC'), ('9009', 'OLVIDADO', 'BA')");
    sembrar("Prioridad_Servicio", "('9001', 'URGENTE DE PRUEBA', 'AC')");
    sembrar("Unidad", "('HRS', 'HORAS DE PRUEBA', 'AC')");
    sembrar("Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion, Es_Cve_Estado, Oper_Alta, "
            "Fecha_Alta, Oper_Ult_Modif, Fecha_Ult_Modif)",
            "('0900', '0001', '0000', 'CUERPO', 'AC'}, ('0900', '0002', '0001', 'IMPULSOR', 'AC'}, ('0900', '0003', "
            "'0001', 'SELLO', 'BA'}, ('0900', '0004', '0003', 'RESORTE', 'AC'}, ('0900', '0005', '0000', 'MOTOR', "
            "'AC'}, ('0900', '0006', '7777', 'SUELTA', 'AC'}, ('0902', '0001', '0000', 'AJENA', 'AC'}");
    sembrar("Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Ts_Cve_Tipo_Servicio, Pm_Prioridad, Tep_ID, Pm_ID, Pm_Frecuencia, "
            "Pm_Lectura, Pm_Unidad_Lectura, Pm_Precio, Pm_Tiempo_Estimado, Pm_Requiere_Paro, Pm_Tiempo_Paro, "
            "Oper_Alta, Fecha_Alta, Oper_Ult_Modif, Fecha_Ult_Modif)",
            "('0900', '9001', '9001', '0002', '000001', 30, 0, '', 1000, 8.5, 'SI', 4}, ('0900', '9001', '9001', "
            "'0002', '000002', 0, 1250.5, 'HRS', 500, 2, 'NO', 0}, ('0900', '9001', '9001', '0003', '000003', 90, 500, "
            "'HRS', 100, 1, 'si', 0}, ('0902', '9001', '9001', '0001', '000077', 7, 0, '', 70, 1, 'NO', 0}");
    sembrar("Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, Pr_Cve_Producto, "
            "Pmd_Cantidad, Pmd_Unidad, Pmd_Costo, Pmd_Importe, Pmd_Tipo_Gasto)",
            "('0900', '0002', '000001', '000001', '01', '9000000001', 2, 'HR', 150.25, 300.5, ''), ('0900', '0002', "
            "'000001', '000002', '02', '9000000002', 1.5, 'PZA', 80.1, 120.15, '9001'), ('0900', '0002', '000001', "
            "'000003', '03', '9000000003', 1, 'PZA', 0, 0, ''), ('0900', '0003', '000003', '000004', '01', "
            "'9000000001', 1, 'HR', 150.25, 150.25, ''), ('0900', '0002', '000002', '000005', '02', '9000000004', 3, "
            "'PZA', 10, 30, '9009'), ('0902', '0001', '000077', '000077', '03', '9000000003', 1, 'PZA', 0, 0, '')");
}

void SembrarGrande(const Escenario &escenario, const QString &tipo, int partes)
{
    const auto clave = [](const QString &numero, int cifras) {
        return QString("substr(CAST(1%1 + %2 AS text), 2)").arg(QString(cifras, QLatin1Char('0')), numero);
    };
    const auto sembrar = [&](const QString &tabla, const QString &columnas, int cuantos, const QString &valores) {
        escenario.Correr(QString("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) INSERT "
                                 "INTO %2 (Te_Cve_Tipo_Equipo, %3) SELECT '%4', %5 FROM n")
                             .arg(QString::number(cuantos), tabla, columnas, tipo, valores));
    };
    escenario.Correr("INSERT INTO Tipo_Equipo VALUES ('" + tipo + "', 'GRANDE', 'AC')");
    sembrar("Tipo_Equipo_Parte", "Tep_ID, Tep_Padre, Tep_Descripcion, Oper_Alta", partes,
            clave("i", 5) + ", CASE WHEN i < 10 THEN '0000' ELSE " + clave("i / 10", 5) + " END, 'PARTE ' || i, '"
                + tipo + "'");
    sembrar("Plan_Mantenimiento", "Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio, Pm_Frecuencia, Oper_Alta", 2 * partes,
            clave("(i + 1) / 2", 5) + ", " + clave("i", 6) + ", '9001', i, '" + tipo + "'");
    sembrar("Plan_Mantenimiento_Detalle",
            "Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, Pr_Cve_Producto, Pmd_Cantidad, Pmd_Costo, Pmd_Importe", 10 * partes,
            clave("(i + 9) / 10", 5) + ", " + clave("(i + 4) / 5", 6) + ", " + clave("i", 6)
                + ", '02', '9000000002', i, " + tipo + ", i * " + tipo);
}
