#include "support/Planificador.h"
#include "support/Procesos.h"

#include <QDeadlineTimer>
#include <QTextStream>

// Some planners on one plan of the server at the same time, each with a screen in a process of its own.
class PrPlanificadores : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void juntos();
};

namespace
{

constexpr int Planificadores = 3;

// Makes services, each with a price that no other has, changes, moves and deletes them, and makes parts, for four
// seconds. Prints what it was told is saved, and every message.
void Trabajar(const QStringList &argumentos)
{
    Escenario escenario(argumentos.at(0));
    escenario.Pantalla("0900");
    Planificador planificador(&escenario);
    const int numero = argumentos.at(1).toInt();
    QTextStream salida(stdout);
    Encontrarse(argumentos.at(2), argumentos.at(3));
    int vuelta = 0;
    for (const QDeadlineTimer fin(4000); !fin.hasExpired(); ++vuelta) {
        const QString precio = QString::number(100000 * (numero + 1) + vuelta);
        const QString folio = planificador.NuevoServicio("N0005", precio);
        planificador.CambiarServicio("N0005", folio, precio + ".5");
        if (vuelta % 3 == 1)
            planificador.Mover("N0005", folio, "N0001");
        if (vuelta % 3 == 2)
            planificador.EliminarServicio("N0005", folio);
        else
            salida << "servicio|" << folio << '|' << (vuelta % 3 == 1 ? "0001" : "0005") << '|' << precio << ".500|3\n";
        salida << "parte|" << planificador.GuardarParte("N0001", "Nuevo", "DE " + precio) << "|DE " << precio << '\n';
    }
    for (const QString &mensaje : escenario.Personas().Tomar())
        if ((mensaje.section('|', 0, 0).toInt() & 0xF) == 0)
            salida << mensaje.simplified() << '\n';
}

} // namespace

// Nobody is refused, and what each was told is saved is there, with its lines, and nothing else.
void PrPlanificadores::juntos()
{
    qputenv("QVX_PRUEBA_MOTOR", "postgres");
    const Escenario escenario;
    SembrarPlan(escenario);
    QStringList dichos =
        CorrerJuntos(escenario, Planificadores, {"--planificador"}).join(QString()).split('\n', Qt::SkipEmptyParts);
    dichos.sort();
    QStringList hay = escenario.Filas(
        "SELECT 'servicio', rtrim(Pm_ID), rtrim(Tep_ID), CAST(round(Pm_Precio, 3) AS text), count(DISTINCT Pmd_ID) "
        "FROM Plan_Mantenimiento LEFT JOIN Plan_Mantenimiento_Detalle USING (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID) WHERE "
        "Te_Cve_Tipo_Equipo = '0900' AND Pm_Precio >= 100000 GROUP BY 1, 2, 3, 4");
    hay += escenario.Filas("SELECT 'parte', rtrim(Tep_ID), Tep_Descripcion FROM Tipo_Equipo_Parte WHERE "
                           "Tep_Descripcion LIKE 'DE %'");
    hay.sort();
    QCOMPARE(dichos, hay);
    QVERIFY(dichos.size() >= Planificadores);
}

int main(int argc, char **argv)
{
    qvx::Aplicacion aplicacion(argc, argv);
    const QStringList argumentos = QCoreApplication::arguments();
    if (argumentos.value(1) == "--planificador") {
        Trabajar(argumentos.mid(2));
        return 0;
    }
    PrPlanificadores prueba;
    return QTest::qExec(&prueba, argc, argv);
}
#include "pr_planificadores.moc"
