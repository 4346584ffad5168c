#include "support/Averia.h"
#include "support/Plan.h"

// The query plans of every statement that the screen and the host send.
class PrIndices : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase() { escenario.reset(); }
    void indices_data();
    void indices();

private:
    std::unique_ptr<Escenario> escenario;
};

void PrIndices::initTestCase()
{
    escenario = std::make_unique<Escenario>();
    if (!motor::EsPostgres())
        return;
    // The server chooses among indexes by its statistics.
    for (const char *tipo : {"0904", "0905", "0906"})
        SembrarGrande(*escenario, tipo, 1000);
    escenario->Motor("ANALYZE");
}

void PrIndices::indices_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("indice");
    const QString te = "Te_Cve_Tipo_Equipo = '0904'";
    const auto llave = [](const QString &nombre) {
        return motor::Segun("sqlite_autoindex_" + nombre + "_1", nombre + "_pkey");
    };
    QTest::newRow("árbol") << "SELECT * FROM Tipo_Equipo_Parte WHERE Tep_Padre = '00900' and " + te
                                  + " ORDER BY Te_Cve_Tipo_Equipo, Tep_ID ASC"
                           << "Tep_Por_Padre";
    QTest::newRow("padre") << "SELECT Tep_Padre FROM Tipo_Equipo_Parte WHERE Tep_ID = '00900' and " + te
                           << llave("Tipo_Equipo_Parte");
    QTest::newRow("hijos") << "SELECT Tep_ID FROM Tipo_Equipo_Parte WHERE Tep_Padre = '00900' AND " + te
                           << "Tep_Por_Padre";
    QTest::newRow("hijo") << "UPDATE Tipo_Equipo_Parte SET Es_Cve_Estado = 'BA' WHERE Tep_ID = '00950' AND " + te
                                 + " AND Tep_Padre = '00900'"
                          << "";
    QTest::newRow("servicios") << "SELECT * FROM Plan_Mantenimiento WHERE Plan_Mantenimiento." + te
                                      + " AND Plan_Mantenimiento.Tep_ID = '00900' ORDER BY Pm_ID ASC"
                               << llave("Plan_Mantenimiento");
    QTest::newRow("servicio") << "SELECT * FROM Plan_Mantenimiento WHERE  Pm_ID = '001800' AND Tep_ID = '00900' AND "
                                     + te
                              << "";
    const QString version = ", Version_Anterior, Oper_Anterior, Fecha_Anterior FROM ";
    QTest::newRow("registro de servicio") << "SELECT Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID" + version
                                                 + "Plan_Mantenimiento WHERE " + te + " AND Pm_ID = '001800'"
                                          << "Pm_Por_Folio";
    QTest::newRow("registro de parte") << "SELECT Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre" + version
                                              + "Tipo_Equipo_Parte WHERE Tep_ID = '00900' AND " + te
                                       << llave("Tipo_Equipo_Parte");
    QTest::newRow("parte de la que cuelga")
        << "SELECT 1 AS Hay FROM Tipo_Equipo_Parte WHERE " + te + " AND Tep_ID = '00900'" << llave("Tipo_Equipo_Parte");
    QTest::newRow("líneas") << "SELECT * FROM Plan_Mantenimiento_Detalle WHERE " + te
                                   + " AND Tep_ID = '00900' AND Pm_ID = '001800'"
                            << llave("Plan_Mantenimiento_Detalle");
    QTest::newRow("borrar plan") << "DELETE FROM Plan_Mantenimiento_Detalle WHERE " + te << "";
    QTest::newRow("copiar") << "INSERT INTO Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion) "
                               "SELECT 'U', Tep_ID, Tep_Padre, Tep_Descripcion FROM Tipo_Equipo_Parte WHERE "
                                   + te
                            << "";
    QTest::newRow("número de parte") << "SELECT MAX(Tep_Numero) AS Ultimo FROM Tipo_Equipo_Parte WHERE " + te
                                     << "Tep_Por_Numero";
    QTest::newRow("número de servicio") << "SELECT MAX(Pm_Numero) AS Ultimo FROM Plan_Mantenimiento WHERE " + te
                                        << "Pm_Por_Numero";
    QTest::newRow("número de línea") << "SELECT MAX(Pmd_Numero) AS Ultimo FROM Plan_Mantenimiento_Detalle WHERE " + te
                                     << "Pmd_Por_Numero";
    QTest::newRow("número de línea del servicio")
        << "SELECT MAX(Pmd_Numero) AS Ultimo FROM Plan_Mantenimiento_Detalle WHERE " + te + " AND Pm_ID = '001800'"
        << "Pmd_Por_Servicio";
    QTest::newRow("producto") << "SELECT * FROM Producto WHERE  Pr_Cve_Producto  = 'X' AND Es_Cve_Estado <> 'BA'"
                              << llave("Producto");
    QTest::newRow("tipo de equipo") << "SELECT * FROM Tipo_Equipo WHERE " + te + " AND Es_Cve_Estado <> 'CA'"
                                    << llave("Tipo_Equipo");
}

// Every statement is answered from an index, on the embedded engine without statistics: none walks a table or sorts the
// tree.
void PrIndices::indices()
{
    QFETCH(QString, sql);
    QFETCH(QString, indice);
    const QString plan = escenario->PlanDe(sql);
    QVERIFY2(escenario->SoloPorIndice(plan) && plan.contains(indice, Qt::CaseInsensitive), qPrintable(plan));
}

PRUEBA_MAIN(PrIndices)
#include "pr_indices.moc"
