#include "app/programa/OrdenesDePrograma.h"

#include "app/Acceso.h"
#include "app/Argumentos.h"
#include "app/InteraccionDeConsola.h"
#include "app/Reporte.h"
#include "app/programa/HojasDePrograma.h"
#include "app/programa/Ics.h"
#include "app/programa/LecturaDePedido.h"
#include "app/reportes/Csv.h"

#include <QDateTime>

namespace
{

QString EnUnRenglon(const programa::PlanMedido &medido, const programa::Aparte &aparte)
{
    const lectura::Servicio &servicio = medido.plan.servicios.at(aparte.servicio);
    const QString primera = aparte.clase != programa::Aparte::Clase::Despues ? QString()
                            : aparte.primera.isValid() ? ", primera fecha " + programa::Escrita(aparte.primera)
                                                       : QString(", después del año 9999");
    return programa::Nombre(aparte.clase) + primera + ": " + servicio.leido.folio + " " + servicio.nombreServicio
           + ", parte " + servicio.leido.parte + " " + servicio.ruta + ": " + aparte.motivo + ".";
}

} // namespace

int EscribirPrograma(const Argumentos &argumentos)
{
    const PedidoDePrograma &pedido = argumentos.programa;
    const LecturaDePedido leido(argumentos);
    const programa::Programa programado = programa::Programar(leido.medido.entradas, leido.datos);
    const QList<int> todas = programa::Todas(programado);
    csv::Escribir(pedido.archivo, programa::HojaDeFechas(leido.medido, programado, todas), {});
    if (!pedido.ics.isEmpty())
        programa::EscribirIcs(
            pedido.ics, programa::Ics(leido.medido, programado, leido.base, QDateTime::currentDateTimeUtc(), todas));
    for (const programa::Aparte &aparte : programado.aparte)
        Escribir(stdout, EnUnRenglon(leido.medido, aparte));
    Escribir(stdout, programa::Texto(programado.conciliacion) + ".");
    return salida::Hecho;
}
