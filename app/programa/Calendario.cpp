#include "app/programa/Calendario.h"

#include <QStringList>
#include <algorithm>

namespace programa
{

bool Calendario::Libre(QDate dia) const
{
    return (sabado && dia.dayOfWeek() == Qt::Saturday) || (domingo && dia.dayOfWeek() == Qt::Sunday)
           || festivos.contains(dia);
}

QDate Calendario::Programada(QDate teorica, QDate diaCero) const
{
    if (!Libre(teorica))
        return teorica;
    QDate dia = teorica;
    while (dia > diaCero && Libre(dia))
        dia = dia.addDays(-1);
    if (dia > diaCero)
        return dia;
    for (dia = teorica; Libre(dia);)
        dia = dia.addDays(1);
    return dia;
}

Meses::Meses(QDate desde_, QDate hasta)
    : desde(desde_.year(), desde_.month(), 1)
    , cuantos((hasta.year() - desde_.year()) * 12 + hasta.month() - desde_.month() + 1)
{
}

int Meses::Lugar(QDate dia) const
{
    const int lugar = (dia.year() - desde.year()) * 12 + dia.month() - desde.month();
    return lugar >= 0 && lugar < cuantos ? lugar : -1;
}

QString Meses::Nombre(int mes) const
{
    static const QStringList nombres{"ene", "feb", "mar", "abr", "may", "jun",
                                     "jul", "ago", "sep", "oct", "nov", "dic"};
    const QDate primero = Primero(mes);
    return nombres.at(primero.month() - 1) + " " + QString::number(primero.year());
}

Festivos LeerFestivos(const QString &texto)
{
    Festivos festivos;
    const QStringList renglones = texto.split(QLatin1Char('\n'));
    for (qsizetype i = 0; i < renglones.size(); ++i) {
        const QString escrito = renglones.at(i).section(QLatin1Char('#'), 0, 0).trimmed();
        const QDate fecha = QDate::fromString(escrito, "yyyy-MM-dd");
        if (escrito.isEmpty())
            continue;
        if (!fecha.isValid())
            return {{},
                    QString("Días festivos, renglón %1: «%2» no es una fecha. Escríbala como 2027-01-01.")
                        .arg(i + 1)
                        .arg(escrito.left(40))};
        festivos.fechas.append(fecha);
    }
    std::sort(festivos.fechas.begin(), festivos.fechas.end());
    festivos.fechas.erase(std::unique(festivos.fechas.begin(), festivos.fechas.end()), festivos.fechas.end());
    return festivos;
}

QString Escrita(QDate fecha)
{
    return fecha.toString(Qt::ISODate);
}

} // namespace programa
