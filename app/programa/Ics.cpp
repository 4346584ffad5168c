#include "app/programa/Ics.h"

#include "system/ArchivoEntero.h"

#include <QCryptographicHash>
#include <QDateTime>

namespace programa
{

namespace
{

constexpr qsizetype OctetosPorLinea = 75;

bool EnMedioDeLetra(char octeto)
{
    return (static_cast<unsigned char>(octeto) & 0xC0U) == 0x80U;
}

QByteArray Uid(const QStringList &partes)
{
    return QCryptographicHash::hash(partes.join(QLatin1Char('\n')).toUtf8(), QCryptographicHash::Sha256)
               .toHex()
               .left(40)
           + "@quorvex";
}

} // namespace

QByteArray Doblado(const QByteArray &linea)
{
    QByteArray doblada;
    qsizetype desde = 0;
    qsizetype cabe = OctetosPorLinea;
    while (linea.size() - desde > cabe) {
        qsizetype hasta = desde + cabe;
        while (EnMedioDeLetra(linea.at(hasta)))
            --hasta;
        doblada += linea.mid(desde, hasta - desde) + "\r\n ";
        desde = hasta;
        cabe = OctetosPorLinea - 1; // the blank counts
    }
    return doblada + linea.mid(desde) + "\r\n";
}

QByteArray Escapado(const QString &texto)
{
    QByteArray escapado;
    for (const char octeto : texto.toUtf8())
        switch (octeto) {
        case '\\':
        case ';':
        case ',':
            escapado += '\\';
            escapado += octeto;
            break;
        case '\n':
            escapado += "\\n";
            break;
        default:
            if (static_cast<unsigned char>(octeto) >= ' ') // other control characters are not allowed
                escapado += octeto;
        }
    return escapado;
}

QByteArray Ics(const PlanMedido &medido, const Programa &programa, const QString &base, const QDateTime &sello,
               const QList<int> &cuales)
{
    QByteArray calendario;
    const auto linea = [&](const QByteArray &contenido) { calendario += Doblado(contenido); };
    const QString tipo = medido.plan.tipoEquipo + " " + medido.plan.nombreTipo;
    linea("BEGIN:VCALENDAR");
    linea("VERSION:2.0");
    linea("PRODID:-//Quorvex//Plan de mantenimiento " QVX_VERSION "//ES");
    linea("CALSCALE:GREGORIAN");
    linea("METHOD:PUBLISH");
    linea("X-WR-CALNAME:" + Escapado("Mantenimiento " + tipo));
    const QByteArray escrito = sello.toUTC().toString("yyyyMMdd'T'HHmmss'Z'").toLatin1();
    for (const int cual : cuales) {
        const Fila &fila = programa.filas.at(cual);
        if (fila.Cuentan() == 0)
            continue;
        const lectura::Servicio &servicio = medido.Servicio(fila);
        const Medida medida = MedidaDe(programa, fila, medido.medidas);
        const QDate dia = programa.Fecha(fila.programado);
        linea("BEGIN:VEVENT");
        linea("UID:"
              + Uid({base, medido.plan.tipoEquipo, servicio.leido.folio, Escrita(programa.datos.diaCero),
                     QString::number(fila.n)}));
        linea("DTSTAMP:" + escrito);
        linea("DTSTART;VALUE=DATE:" + dia.toString("yyyyMMdd").toLatin1());
        linea("DTEND;VALUE=DATE:" + dia.addDays(1).toString("yyyyMMdd").toLatin1());
        linea("SUMMARY:"
              + Escapado(servicio.nombreServicio + ", " + servicio.ruta + " (" + servicio.leido.folio + ")"
                         + (fila.Cuentan() > 1 ? QString(" × %1").arg(fila.Cuentan()) : QString())));
        linea("DESCRIPTION:"
              + Escapado(QStringList{"Tipo de equipo: " + tipo, QString("Equipos: %1").arg(programa.datos.equipos),
                                     "Parte: " + servicio.leido.parte + " " + servicio.ruta,
                                     "Motivo: " + programa.Motivo(fila, medido.entradas),
                                     "Fecha teórica: " + Escrita(programa.Fecha(fila.teorico)),
                                     "Mano de obra: " + medida.manoObra.Texto(2) + " HR",
                                     "Paro: " + medida.paro.Texto(2) + " HR"}
                             .join(QLatin1Char('\n'))));
        linea("CATEGORIES:MANTENIMIENTO");
        linea("TRANSP:TRANSPARENT");
        linea("END:VEVENT");
    }
    linea("END:VCALENDAR");
    return calendario;
}

void EscribirIcs(const QString &ruta, const QByteArray &calendario)
{
    qvx::ArchivoEntero archivo(ruta);
    archivo.Salida().write(calendario);
    archivo.Terminar();
}

} // namespace programa
