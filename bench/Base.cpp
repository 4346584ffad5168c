#include "bench/Base.h"

#include "bench/Lejania.h"
#include "bench/Siembra.h"
#include "data/Conexion.h"
#include "data/Servidor.h"
#include "plan/EsquemaServidor.h"
#include "plan/Guion.h"
#include "plan/Instalador.h"

#include <QUuid>

namespace
{

class EnArchivo : public Base
{
public:
    explicit EnArchivo(const Tamano &tamano) : archivo(carpeta.filePath("banco.db"))
    {
        qvx::AbrirBaseDeDatos(archivo, false);
        Sembrar(*CrudoSqlite(archivo), tamano);
    }

    std::unique_ptr<qvx::Conexion> Abrir() const override { return qvx::AbrirBaseDeDatos(archivo, false); }
    std::unique_ptr<Crudo> AbrirCrudo() const override
    {
        auto crudo = CrudoSqlite(archivo);
        // The real connection makes the engine prepare on the file as it is; a new one would still read its schema.
        crudo->Correr("SELECT count(*) FROM Tipo_Equipo");
        return crudo;
    }
    bool EnServidor() const override { return false; }

private:
    QTemporaryDir carpeta;
    QString archivo;
};

class DelServidor : public Base
{
public:
    explicit DelServidor(const Tamano &tamano, int vuelta = 0)
        : nombre("banco_" + QUuid::createUuid().toString(QUuid::Id128))
    {
        CrudoPostgres(DeDuenio("postgres"))->Correr("CREATE DATABASE " + nombre.toLatin1());
        qvx::CrearEsquema(qvx::Servidor(DeDuenio(nombre)), false);
        const auto duenio = CrudoPostgres(DeDuenio(nombre));
        const QByteArray contrasena = QUuid::createUuid().toByteArray(QUuid::Id128);
        duenio->Correr("DO $$ BEGIN CREATE ROLE banco LOGIN IN ROLE quorvex_planificadores; "
                       "EXCEPTION WHEN duplicate_object THEN NULL; END $$");
        duenio->Correr("ALTER ROLE banco PASSWORD '" + contrasena + "'");
        qputenv("PGPASSWORD", contrasena);
        Sembrar(*duenio, tamano);
        duenio->Correr("VACUUM ANALYZE");
        if (vuelta > 0)
            red = std::make_unique<Lejania>(qEnvironmentVariableIntValue("QVX_PRUEBA_PUERTO"), vuelta);
    }
    ~DelServidor() override
    {
        CrudoPostgres(DeDuenio("postgres"))->Correr("DROP DATABASE " + nombre.toLatin1() + " WITH (FORCE)");
    }
    DelServidor(const DelServidor &) = delete;
    DelServidor &operator=(const DelServidor &) = delete;

    std::unique_ptr<qvx::Conexion> Abrir() const override
    {
        return qvx::AbrirServidor(qvx::Servidor(DePlanificador()));
    }
    std::unique_ptr<Crudo> AbrirCrudo() const override { return CrudoPostgres(DePlanificador()); }
    bool EnServidor() const override { return true; }

private:
    // By the socket, where everybody who can reach it is trusted.
    static QString DeDuenio(const QString &base)
    {
        const QString carpeta = qEnvironmentVariable("QVX_PRUEBA_SERVIDOR");
        if (carpeta.isEmpty())
            qFatal("Sin servidor: bench/medir lo pone");
        return QString("postgresql://postgres@%1:%2/%3")
            .arg(QString(carpeta).replace(QLatin1Char('/'), "%2F"), qEnvironmentVariable("QVX_PRUEBA_PUERTO"), base);
    }
    QString DePlanificador() const
    {
        return QString("postgresql://banco@127.0.0.1:%1/%2?sslmode=disable")
                   .arg(red ? QString::number(red->Puerto()) : qEnvironmentVariable("QVX_PRUEBA_PUERTO"), nombre)
               + "&options=-c%20quorvex.esquema%3D" + QString::number(qvx::VersionEsquema);
    }

    QString nombre;
    std::unique_ptr<Lejania> red;
};

} // namespace

std::unique_ptr<Base> BaseEnArchivo(const Tamano &tamano)
{
    return std::make_unique<EnArchivo>(tamano);
}

std::unique_ptr<Base> BaseEnServidor(const Tamano &tamano)
{
    return std::make_unique<DelServidor>(tamano);
}

std::unique_ptr<Base> BaseLejana(const Tamano &tamano, int vuelta)
{
    return std::make_unique<DelServidor>(tamano, vuelta);
}
