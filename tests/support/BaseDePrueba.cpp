#include "support/BaseDePrueba.h"

#include "plan/EsquemaServidor.h"
#include "plan/Instalador.h"
#include "support/Cluster.h"
#include "support/Motor.h"

#include <QSqlError>
#include <QSqlRecord>

OtroPrograma::~OtroPrograma()
{
    qvx::BaseAbierta::Soltar(base);
}

QSqlQuery OtroPrograma::Correr(const QString &sql) const
{
    QSqlQuery consulta(base);
    if (!consulta.exec(sql))
        qFatal("%s: %s", qPrintable(sql), qPrintable(consulta.lastError().text()));
    return consulta;
}

QStringList OtroPrograma::Filas(const QString &sql) const
{
    QStringList filas;
    QSqlQuery consulta = Correr(sql);
    const int columnas = consulta.record().count();
    while (consulta.next()) {
        QStringList valores;
        for (int i = 0; i < columnas; ++i)
            valores.append(consulta.value(i).toString());
        filas.append(valores.join(QLatin1Char('|')));
    }
    return filas;
}

namespace
{

void Detenerse(const QSqlError &error)
{
    qFatal("%s", qPrintable(error.text()));
}

std::unique_ptr<OtroPrograma> Super(const QString &base)
{
    qvx::BaseAbierta abierta(qvx::Servidor(cluster::Direccion("postgres", base)).Controlador(), Detenerse);
    return std::make_unique<OtroPrograma>(abierta.Entregar());
}

// Leaves the catalogues. With the history, which tests read whole again and again.
void VaciarPlanes(const OtroPrograma &otro)
{
    for (const char *tabla : {"Plan_Mantenimiento_Detalle", "Plan_Mantenimiento", "Tipo_Equipo_Parte", "Operacion",
                              "Operacion_Plan", "Historia_Parte", "Historia_Servicio", "Historia_Linea"})
        otro.Correr(QString("DELETE FROM ") + tabla);
    if (!motor::EsPostgres()) // what follows within this second is another operation
        otro.Correr("DELETE FROM Operacion_En_Curso");
}

void HacerPlantilla(const OtroPrograma &servidor, const QString &plantilla, bool conEjemplos)
{
    servidor.Correr("DROP DATABASE IF EXISTS en_obra");
    servidor.Correr("CREATE DATABASE en_obra");
    qvx::CrearEsquema(qvx::Servidor(cluster::Direccion("postgres", "en_obra")), true);
    if (!conEjemplos)
        VaciarPlanes(*Super("en_obra"));
    servidor.Correr("ALTER DATABASE en_obra RENAME TO " + plantilla);
    servidor.Correr("DO $$ BEGIN CREATE ROLE mlopez LOGIN IN ROLE quorvex_planificadores; "
                    "EXCEPTION WHEN duplicate_object THEN NULL; END $$");
}

} // namespace

BaseDePrueba::BaseDePrueba(bool conEjemplos) : nombre(carpeta.filePath("prueba.db")), propia(motor::EsPostgres())
{
    if (propia)
        HacerEnServidor(conEjemplos);
    else
        qvx::AbrirBaseDeDatos(nombre, true);
    if (!propia && !conEjemplos)
        VaciarPlanes(*Otro());
}

// A copy of a template, which is made once. As files: after a crash the other way to copy gives numbers of a sequence
// again that were taken since.
void BaseDePrueba::HacerEnServidor(bool conEjemplos)
{
    nombre = cluster::NombreNuevo("prueba");
    const auto servidor = Super("postgres");
    const QString plantilla = conEjemplos ? "quorvex_ejemplos" : "quorvex_vacia";
    servidor->Correr("SELECT pg_advisory_lock(1)");
    if (!servidor->Correr("SELECT 1 FROM pg_database WHERE datname = '" + plantilla + "'").next())
        HacerPlantilla(*servidor, plantilla, conEjemplos);
    servidor->Correr("SELECT pg_advisory_unlock(1)");
    servidor->Correr("CREATE DATABASE " + nombre + " TEMPLATE " + plantilla + " STRATEGY file_copy");
}

BaseDePrueba::~BaseDePrueba()
{
    testigo.reset();
    if (propia)
        Super("postgres")->Correr("DROP DATABASE " + nombre + " WITH (FORCE)");
}

std::unique_ptr<qvx::Conexion> BaseDePrueba::Abrir() const
{
    if (motor::EsPostgres())
        return qvx::AbrirServidor(qvx::Servidor(cluster::Direccion("mlopez", nombre)));
    return qvx::AbrirBaseDeDatos(nombre, false);
}

std::unique_ptr<OtroPrograma> BaseDePrueba::Otro() const
{
    if (motor::EsPostgres())
        return Super(nombre);
    qvx::BaseAbierta abierta(
        "QSQLITE", [this](QSqlDatabase &nueva) { nueva.setDatabaseName(nombre); }, Detenerse);
    return std::make_unique<OtroPrograma>(abierta.Entregar());
}

const OtroPrograma &BaseDePrueba::Testigo() const
{
    if (!motor::EsPostgres() || !testigo || !testigo->Puede("SELECT 1"))
        testigo = Otro();
    return *testigo;
}

QStringList BaseDePrueba::Argumentos() const
{
    if (motor::EsPostgres())
        return {"--servidor", cluster::Direccion("mlopez", nombre)};
    return {"--base-datos", nombre, "--operador", "mlopez"};
}
