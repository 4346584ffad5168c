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

} // namespace motor
