#include "app/programa/PartesDeReporte.h"
#include "app/programa/Reportes.h"

#include "app/servicios/ColumnasDeServicio.h"

#include <algorithm>

namespace programa
{

namespace
{

using ClaseDeBloque = impreso::Bloque::Clase;

const QString PorLlenar = "____________";
constexpr int RenglonesDeObservaciones = 5;

void PonerLineas(impreso::Documento &documento, const PlanMedido &medido, const Labor &labor, const Encargo &encargo)
{
    QList<impreso::Columna> columnas{{"Hecho", 8.5},  {"Clase", 14.5},          {"Producto", 36},
                                     {"Unidad", 9.5}, {"Planeada", 11.5, true}, {"Real", 13, true}};
    if (encargo.conCostos)
        columnas.append({"Costo", 12, true});
    documento.Agregar(ClaseDeBloque::Seccion, {"Mano de obra, refacciones y herramientas"});
    documento.AgregarTabla(columnas);
    bool hay = false;
    const QList<lectura::Linea> &lineas = medido.lineas.lineas; // those of a service stand together, in their order
    for (auto primera = std::lower_bound(lineas.begin(), lineas.end(), labor.servicio,
                                         [](const lectura::Linea &una, int cual) { return una.servicio < cual; });
         primera != lineas.end() && primera->servicio == labor.servicio; ++primera) {
        const lectura::Linea &linea = *primera;
        const lectura::Producto &producto = medido.lineas.productos.at(linea.producto);
        QStringList celdas{"",
                           ClaseDeLinea(linea.clase),
                           producto.clave + " " + producto.descripcion,
                           linea.unidad,
                           Cantidad::De(linea.cantidad).Texto(),
                           PorLlenar};
        if (encargo.conCostos)
            celdas.append(linea.clase == lectura::Linea::Clase::Herramienta ? QString()
                                                                            : Pesos(Cantidad::De(linea.importe)));
        documento.Fila(celdas).casilla = true;
        hay = true;
    }
    if (!hay)
        documento.Tramo("El servicio no tiene renglones.");
    for (int i = 0; i < 2; ++i) { // what was not planned
        QStringList celdas{"", "", "", "", "", PorLlenar};
        celdas.resize(columnas.size());
        documento.Fila(celdas).casilla = true;
    }
}

void PonerHoja(impreso::Documento &documento, const PlanMedido &medido, const Labor &labor, const Encargo &encargo)
{
    const lectura::Servicio &servicio = medido.plan.servicios.at(labor.servicio);
    const auto horas = [](double numero) { return servicios::Cifra(numero) + " HR"; };
    documento.Agregar(ClaseDeBloque::Titulo, {servicio.leido.folio + "  " + servicio.nombreServicio});
    documento.Agregar(ClaseDeBloque::Datos, {"Parte", servicio.leido.parte + " " + servicio.ruta});
    documento.Agregar(ClaseDeBloque::Datos,
                      {"Vence", labor.vence.isValid() ? Escrita(labor.vence) : "sin fecha", "Prioridad",
                       servicio.nombrePrioridad.isEmpty() ? servicio.prioridad : servicio.nombrePrioridad, "Equipos",
                       QString::number(labor.equipos)
                           + (labor.veces > 1 ? QString(", %1 veces cada uno").arg(labor.veces) : QString())});
    documento.Agregar(ClaseDeBloque::Datos, {"Motivo", labor.motivo});
    documento.Agregar(ClaseDeBloque::Datos, {"Duración estimada", horas(servicio.horas), "Paro del equipo",
                                             servicio.conParo ? "sí, " + horas(servicio.horasParo) : QString("no")});
    if (encargo.conCostos)
        documento.Agregar(ClaseDeBloque::Datos, {"Costo", Pesos(Cantidad::De(servicio.costo)), "Precio",
                                                 Pesos(Cantidad::De(servicio.precio))});
    documento.Agregar(ClaseDeBloque::Campos, {"Máquina", "Número de serie"});
    documento.Agregar(ClaseDeBloque::Campos, {"Lectura del medidor", "Fecha"});
    documento.Agregar(ClaseDeBloque::Campos, {"Inicio", "Fin", "Paro real"});
    PonerLineas(documento, medido, labor, encargo);
    documento.Agregar(ClaseDeBloque::Recuadro, {"Observaciones"});
    documento.bloques.last().renglones = RenglonesDeObservaciones;
    documento.bloques.last().conLoQueSigue = true; // who signs has read them
    documento.Agregar(ClaseDeBloque::Firmas, {"Realizó", "Revisó", "Recibió el equipo"});
}

} // namespace

QList<Labor> LaboresDe(const PlanMedido &medido, const Programa &programa, const QList<int> &filas)
{
    QList<Labor> labores;
    for (const int cual : filas) {
        const Fila &fila = programa.filas.at(cual);
        if (fila.Cuentan() > 0)
            labores.append({fila.servicio, programa.Fecha(fila.programado), programa.Motivo(fila, medido.entradas),
                            programa.datos.equipos, fila.Cuentan()});
    }
    return labores;
}

impreso::Documento HojasDeTrabajo(const PlanMedido &medido, const QList<Labor> &labores, const Encargo &encargo)
{
    impreso::Documento documento = DocumentoDe(medido, encargo, "Hoja de trabajo");
    for (const Labor &labor : labores) {
        documento.Salto();
        PonerHoja(documento, medido, labor, encargo);
    }
    if (labores.isEmpty())
        documento.Agregar(ClaseDeBloque::Parrafo, {"No hay servicios que hacer en lo que se eligió."});
    return documento;
}

} // namespace programa
