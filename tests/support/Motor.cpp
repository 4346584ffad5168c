#include "support/Motor.h"

namespace motor
{

bool EsPostgres()
{
    return qEnvironmentVariable("QVX_PRUEBA_MOTOR") == "postgres";
}

QString Segun(const QString &incrustado, const QString &servidor)
{
    return EsPostgres() ? servidor : incrustado;
}

QString NoHayTabla(const QString &tabla)
{
    return Segun("no such table: " + tabla, "relation \"" + tabla.toLower() + "\" does not exist");
}

QString Sintaxis(const QString &cerca)
{
    return Segun("near \"" + cerca + "\": syntax error", "syntax error at or near \"" + cerca + "\"");
}

QString ParteRepetida()
{
    return Segun("UNIQUE constraint failed: Tipo_Equipo_Parte.Te_Cve_Tipo_Equipo, Tipo_Equipo_Parte.Tep_ID",
                 "duplicate key value violates unique constraint \"tipo_equipo_parte_pkey\"");
}

} // namespace motor
