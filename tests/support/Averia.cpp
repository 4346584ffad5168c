#include "support/Averia.h"

#include <QRegularExpression>

Averia::Averia(const Escenario &escenario_, const QString &nombre_) : escenario(escenario_), nombre(nombre_)
{
    static const QRegularExpression suceso(
        "^(?:(BEFORE|AFTER|sin efecto) )?((?:INSERT|UPDATE|DELETE) ON \\w+)(?: WHEN (.*))?$");
    const auto hallado = suceso.match(nombre);
    const ::Motor &base = escenario.Base();
    const QString cuando = hallado.captured(1) == "AFTER" ? "AFTER" : "BEFORE";
    if (nombre == "disco")
        disco = std::make_unique<DiscoLleno>();
    else if (!nombre.isEmpty())
        Correr(nombre == "ocupada"        ? base.Ocupacion()
               : nombre == "confirmación" ? base.SinConfirmacion()
               : hallado.hasMatch()
                   ? base.Falla(cuando, hallado.captured(2), hallado.captured(3), hallado.captured(1) == "sin efecto")
                   : QStringList{nombre});
}

void Averia::Correr(const QStringList &sentencias)
{
    otro = escenario.Base().Otro();
    for (const QString &sentencia : sentencias)
        otro->Correr(sentencia).next();
}

void Averia::Reparar()
{
    static const QRegularExpression renombrada("^ALTER TABLE (\\w+ RENAME COLUMN )?(\\w+) (?:RENAME )?TO (\\w+)$");
    disco.reset();
    otro.reset();
    Correr(escenario.Base().SinFalla());
    if (const auto hallada = renombrada.match(nombre); hallada.hasMatch())
        otro->Correr("ALTER TABLE " + hallada.captured(1) + hallada.captured(3)
                     + (hallada.captured(1).isEmpty() ? " RENAME TO " : " TO ") + hallada.captured(2));
    otro.reset();
}

namespace motor
{

bool EsPostgres()
{
    return Motor::EnServidor();
}

QString Segun(const QString &incrustado, const QString &servidor)
{
    return EsPostgres() ? servidor : incrustado;
}

QString NoHayTabla(const QString &tabla)
{
    return Segun("no such table: " + tabla, "relation \"" + tabla.toLower() + "\" does not exist");
}

QString NoHayColumna(const QString &columna)
{
    return Segun("no such column: " + columna, "column \"" + columna.toLower() + "\" does not exist");
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

QString Ocupada(const QString &tipoEquipo)
{
    return Segun("database is locked", "postgres está cambiando el plan del tipo de equipo " + tipoEquipo
                                           + " y no terminó en 10 segundos. Inténtelo de nuevo más tarde.");
}

QString NoConfirma()
{
    return Segun("database is locked", "falla");
}

QString Inicio()
{
    return Segun("-\tBEGIN IMMEDIATE", "-\tBEGIN");
}

} // namespace motor
