#include "support/Averia.h"
#include "support/Plan.h"

// The query plans of the statements that the screen and the host send.
class PrIndices : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void indices();
};

// Each is answered from an index, on the embedded engine without statistics: none walks a table or sorts the tree.
void PrIndices::indices()
{
    Escenario escenario;
    if (motor::EsPostgres()) { // the server chooses among indexes by its statistics
        for (const char *tipo : {"0904", "0905", "0906"})
            SembrarGrande(escenario, tipo, 1000);
        escenario.Correr("ANALYZE");
    }
    const auto probar = [&](const QString &sentencia, const QString &indice) {
        const QString plan = escenario.PlanDe(QString(sentencia).replace("{T}", "Te_Cve_Tipo_Equipo = '0904'"));
        QVERIFY2(escenario.SoloPorIndice(plan) && plan.contains(indice, Qt::CaseInsensitive),
                 qPrintable(sentencia + "\n" + plan));
    };
    probar("SELECT * FROM Tipo_Equipo_Parte WHERE Tep_Padre = '00900' and {T} ORDER BY Te_Cve_Tipo_Equipo, Tep_ID ASC",
           "Tep_Por_Padre");
    probar("SELECT * FROM Plan_Mantenimiento WHERE Plan_Mantenimiento.{T} AND Plan_Mantenimiento.Tep_ID = '00900' "
           "ORDER BY Pm_ID ASC",
           "Plan_Mantenimiento_");
    probar("SELECT Te_Cve_Tipo_Equipo, Version_Anterior FROM Plan_Mantenimiento WHERE {T} AND Pm_ID = '001800'",
           "Pm_Por_Folio");
    probar("SELECT * FROM Plan_Mantenimiento_Detalle WHERE {T} AND Tep_ID = '00900' AND Pm_ID = '001800'",
           "Plan_Mantenimiento_Detalle_");
    probar("SELECT MAX(Tep_Numero) AS Ultimo FROM Tipo_Equipo_Parte WHERE {T}", "Tep_Por_Numero");
    probar("SELECT MAX(Pm_Numero) AS Ultimo FROM Plan_Mantenimiento WHERE {T}", "Pm_Por_Numero");
    probar("SELECT MAX(Pmd_Numero) AS Ultimo FROM Plan_Mantenimiento_Detalle WHERE {T}", "Pmd_Por_Numero");
    probar("SELECT MAX(Pmd_Numero) AS Ultimo FROM Plan_Mantenimiento_Detalle WHERE {T} AND Pm_ID = '001800'",
           "Pmd_Por_Servicio");
}

PRUEBA_MAIN(PrIndices)
#include "pr_indices.moc"
