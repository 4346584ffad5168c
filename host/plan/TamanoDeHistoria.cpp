#include "plan/TamanoDeHistoria.h"

#include "data/Conexion.h"
#include "data/Momento.h"
#include "plan/Formas.h"

namespace qvx
{

namespace
{

const QString Tablas = "('Operacion', 'Operacion_Plan', 'Operacion_Deshecha', 'Historia_Parte', 'Historia_Servicio', "
                       "'Historia_Linea')";

qint64 Numero(Conexion &conexion, const QString &sentencia)
{
    return conexion.Execute(sentencia, {}).Valor(0).toLongLong();
}

// What a row takes with its share of the indexes, of texts as plans have them.
qint64 Contado(Conexion &conexion)
{
    constexpr qint64 DeOperacion = 200;
    constexpr qint64 DeParte = 240;
    constexpr qint64 DeServicio = 270;
    constexpr qint64 DeLinea = 110;
    return DeOperacion * Numero(conexion, "SELECT count(*) AS Cuantas FROM Operacion")
           + DeParte * Numero(conexion, "SELECT count(*) AS Cuantas FROM Historia_Parte")
           + DeServicio * Numero(conexion, "SELECT count(*) AS Cuantas FROM Historia_Servicio")
           + DeLinea * Numero(conexion, "SELECT count(*) AS Cuantas FROM Historia_Linea");
}

} // namespace

TamanoDeHistoria LeerTamanoDeHistoria(Conexion &conexion)
{
    const Momento momento(conexion);
    TamanoDeHistoria tamano;
    tamano.operaciones = Numero(conexion, "SELECT count(*) AS Cuantas FROM Operacion");
    if (Formas::EnCurso(conexion).DeMotor() == Motor::Servidor) {
        tamano.octetos = Numero(conexion, "SELECT sum(pg_total_relation_size(c.oid))::bigint AS Octetos FROM pg_class "
                                          "c WHERE c.relnamespace = 'dbo'::regnamespace AND c.relkind = 'r' AND "
                                          "c.relname IN "
                                              + Tablas.toLower());
        return tamano;
    }
    // Not every build of the engine counts its pages.
    tamano.estimado = Numero(conexion, "SELECT count(*) AS Hay FROM pragma_module_list WHERE name = 'dbstat'") == 0;
    tamano.octetos = tamano.estimado
                         ? Contado(conexion)
                         : Numero(conexion, "SELECT sum(pgsize) AS Octetos FROM dbstat WHERE aggregate = TRUE AND name "
                                            "IN (SELECT name FROM sqlite_master WHERE tbl_name IN "
                                                + Tablas + ")");
    return tamano;
}

} // namespace qvx
