#include "app/programa/OrdenesDePrograma.h"

#include "app/Argumentos.h"
#include "app/Reporte.h"
#include "app/programa/HojasDePrograma.h"
#include "app/programa/LecturaDePedido.h"
#include "app/programa/PaqueteDelMes.h"
#include "data/ErrorEjecucion.h"
#include "plan/Planta.h"

namespace
{

// The rows of a month, of services that the line names, or all.
QList<int> FilasPedidas(const PedidoDePrograma &pedido, const LecturaDePedido &leido,
                        const programa::Programa &programado)
{
    const int mes = pedido.mes ? programado.meses.Lugar(*pedido.mes) : -1;
    if (pedido.mes && mes < 0)
        qvx::Rechazar("El mes " + pedido.mes->toString("yyyy-MM") + " no está en el programa, que va del "
                      + programa::Escrita(programado.horizonte.Desde()) + " al "
                      + programa::Escrita(programado.horizonte.Hasta()) + ".");
    QList<int> filas = pedido.mes ? programa::FilasDelMes(programado, mes) : programa::Todas(programado);
    if (!pedido.folios.isEmpty())
        filas.removeIf([&](int fila) {
            return !pedido.folios.contains(leido.medido.Servicio(programado.filas.at(fila)).leido.folio);
        });
    return filas;
}

// Without a day to count from there are sheets all the same, of each service one, to be dated by hand.
QList<programa::Labor> LaboresPedidas(const PedidoDePrograma &pedido, const LecturaDePedido &leido)
{
    const programa::Programa programado = programa::Programar(leido.medido.entradas, leido.datos);
    if (leido.conFecha)
        return programa::LaboresDe(leido.medido, programado, FilasPedidas(pedido, leido, programado));
    QList<programa::Labor> labores;
    for (int i = 0; i < leido.medido.entradas.size(); ++i) {
        const programa::Entrada &entrada = leido.medido.entradas.at(i);
        if (entrada.exclusion.isEmpty() && (pedido.folios.isEmpty() || pedido.folios.contains(entrada.folio)))
            labores.append({i, {}, programado.periodos.at(i).motivo, 1});
    }
    return labores;
}

impreso::Documento Pedido(const PedidoDePrograma &pedido, const LecturaDePedido &leido,
                          const programa::Encargo &encargo)
{
    using Reporte = PedidoDePrograma::Reporte;
    if (pedido.reporte == Reporte::Plan)
        return programa::ReporteDePlan(leido.medido, encargo);
    if (pedido.reporte == Reporte::Hojas)
        return programa::HojasDeTrabajo(leido.medido, LaboresPedidas(pedido, leido), encargo);
    if (pedido.unaRonda || !leido.conFecha)
        return programa::ReporteDeMateriales(leido.medido, programa::UnaRonda(leido.medido), "Materiales de una ronda",
                                             encargo);
    const programa::Programa programado = programa::Programar(leido.medido.entradas, leido.datos);
    return programa::ReporteDeMateriales(
        leido.medido, programa::VecesDe(leido.medido, programado, FilasPedidas(pedido, leido, programado)),
        pedido.mes ? "Materiales, " + programado.meses.Nombre(programado.meses.Lugar(*pedido.mes))
                   : "Materiales del " + programa::Escrita(programado.horizonte.Desde()) + " al "
                         + programa::Escrita(programado.horizonte.Hasta()),
        encargo);
}

} // namespace

int EscribirReporte(const Argumentos &argumentos)
{
    const PedidoDePrograma &pedido = argumentos.programa;
    const LecturaDePedido leido(argumentos);
    programa::Encargo encargo{qvx::NombreDePlanta(leido.sesion->Conexion()), leido.sesion->Operador(), leido.base,
                              leido.sesion->Ahora()};
    encargo.conCostos = pedido.conCostos;
    encargo.conLineas = pedido.conLineas;
    encargo.porParte = pedido.porParte;
    impreso::EscribirPdf(pedido.archivo, Pedido(pedido, leido, encargo),
                         pedido.a4 ? impreso::Papel::A4 : impreso::Papel::Carta, [](int, int) { return true; });
    return salida::Hecho;
}
