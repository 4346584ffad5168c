#include "support/Averia.h"

#include <QRegularExpression>

Averia::Averia(const Escenario &escenario_, const QString &nombre_) : escenario(escenario_), nombre(nombre_)
{
    static const QRegularExpression suceso(
        "^(?:(BEFORE|AFTER|sin efecto) )?((?:INSERT|UPDATE|DELETE) ON \\w+)(?: WHEN (.*))?$");
    const auto hallado = suceso.match(nombre);
    if (nombre == "ocupada")
        otro = escenario.Ocupar();
    else if (nombre == "confirmación")
        otro = escenario.ImpedirConfirmacion();
    else if (nombre == "disco")
        disco = std::make_unique<DiscoLleno>();
    else if (hallado.captured(1) == "sin efecto")
        escenario.Omitir(hallado.captured(2));
    else if (hallado.hasMatch())
        escenario.Estropear(hallado.captured(2), hallado.captured(3),
                            hallado.captured(1).isEmpty() ? "BEFORE" : hallado.captured(1));
    else if (!nombre.isEmpty())
        escenario.Motor(nombre);
}

void Averia::Reparar()
{
    static const QRegularExpression renombrada("^ALTER TABLE (\\w+ RENAME COLUMN )?(\\w+) (?:RENAME )?TO (\\w+)$");
    otro.reset();
    disco.reset();
    escenario.Reparar();
    if (const auto hallada = renombrada.match(nombre); hallada.hasMatch())
        escenario.Motor("ALTER TABLE " + hallada.captured(1) + hallada.captured(3)
                        + (hallada.captured(1).isEmpty() ? " RENAME TO " : " TO ") + hallada.captured(2));
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
