#include "app/programa/HojasDePrograma.h"

#include <numeric>

namespace programa
{

namespace
{

using ClaseDeHoja = ColumnaDeHoja::Clase;

// A column of a number that its sheet adds up at its end.
ColumnaDeHoja Sumada(const QString &titulo, ClaseDeHoja clase = ClaseDeHoja::Numero)
{
    return {titulo, clase, true};
}

void AgregarMeses(Hoja &hoja, const Programa &programa)
{
    for (int mes = 0; mes < programa.meses.Cuantos(); ++mes)
        hoja.columnas.append(Sumada(programa.meses.Nombre(mes)));
}

// A month without any is left empty.
QVariantList Numeros(const QList<Cantidad> &cantidades)
{
    QVariantList numeros;
    for (const Cantidad &cantidad : cantidades)
        numeros.append(cantidad.EsCero() ? QVariant() : QVariant(cantidad.Numero()));
    return numeros;
}

} // namespace

QList<int> Todas(const Programa &programa)
{
    QList<int> todas(programa.filas.size());
    std::iota(todas.begin(), todas.end(), 0);
    return todas;
}

Hoja HojaDeFechas(const PlanMedido &medido, const Programa &programa, const QList<int> &cuales)
{
    Hoja hoja{"Programa",
              {{"Fecha", ClaseDeHoja::Fecha},
               {"Fecha teórica", ClaseDeHoja::Fecha},
               {"Parte"},
               {"Ruta"},
               {"Folio"},
               {"Servicio"},
               Sumada("Veces"),
               {"Motivo"},
               Sumada("Mano de obra"),
               Sumada("Paro"),
               Sumada("Costo", ClaseDeHoja::Dinero),
               Sumada("Precio", ClaseDeHoja::Dinero)},
              {}};
    hoja.filas.reserve(cuales.size());
    for (const int cual : cuales) {
        const Fila &fila = programa.filas.at(cual);
        const lectura::Servicio &servicio = medido.Servicio(fila);
        const Medida medida = MedidaDe(programa, fila, medido.medidas);
        hoja.filas.append({programa.Fecha(fila.programado), programa.Fecha(fila.teorico), servicio.leido.parte,
                           servicio.ruta, servicio.leido.folio, servicio.nombreServicio, double(fila.Cuentan()),
                           programa.Motivo(fila, medido.entradas), medida.manoObra.Numero(), medida.paro.Numero(),
                           medida.costo.Numero(), medida.precio.Numero()});
    }
    return hoja;
}

Hoja HojaDeApartes(const PlanMedido &medido, const Programa &programa)
{
    Hoja hoja{
        "Sin programar",
        {{"Por qué"}, {"Primera fecha", ClaseDeHoja::Fecha}, {"Parte"}, {"Ruta"}, {"Folio"}, {"Servicio"}, {"Motivo"}},
        {}};
    for (const Aparte &aparte : programa.aparte) {
        const lectura::Servicio &servicio = medido.plan.servicios.at(aparte.servicio);
        hoja.filas.append({Nombre(aparte.clase), aparte.primera.isValid() ? QVariant(aparte.primera) : QVariant(),
                           servicio.leido.parte, servicio.ruta, servicio.leido.folio, servicio.nombreServicio,
                           aparte.motivo});
    }
    return hoja;
}

Hoja HojaDeCarga(const PlanMedido &medido, const Programa &programa)
{
    Hoja hoja{"Carga", {{"Producto"}, {"Oficio"}, {"Unidad"}}, {}};
    AgregarMeses(hoja, programa);
    hoja.columnas.append(Sumada("Total"));
    for (ColumnaDeHoja &columna : hoja.columnas)
        columna.seSuma = false; // units are never mixed
    const Carga carga = CalcularCarga(programa, medido.lineas);
    const auto agregar = [&](const QString &clave, const QString &nombre, const QString &unidad,
                             const QList<Cantidad> &meses) {
        Cantidad total;
        for (const Cantidad &mes : meses)
            total += mes;
        hoja.filas.append(QVariantList{clave, nombre, unidad} + Numeros(meses) + QVariantList{total.Numero()});
    };
    for (const QList<Serie> &series : {carga.oficios, carga.otras})
        for (const Serie &serie : series) {
            const lectura::Producto &producto = medido.lineas.productos.at(serie.producto);
            agregar(producto.clave,
                    producto.descripcion + (producto.enCatalogo && !producto.activo ? " (de baja)" : ""), serie.unidad,
                    serie.porMes);
        }
    agregar({}, "TODOS LOS OFICIOS", Horas, carga.porMes);
    if (!carga.capacidad.isEmpty())
        agregar({}, "CAPACIDAD", Horas, carga.capacidad);
    return hoja;
}

Hoja HojaDeRefacciones(const PlanMedido &medido, const Programa &programa)
{
    Hoja hoja{"Refacciones",
              {{"Tipo de gasto"},
               {"Producto"},
               {"Descripción"},
               {"Estado"},
               {"Unidad"},
               {"Cantidad", ClaseDeHoja::Numero},
               Sumada("Costo", ClaseDeHoja::Dinero),
               Sumada("Costo de hoy", ClaseDeHoja::Dinero)},
              {}};
    const qsizetype meses = hoja.columnas.size(); // behind what is looked for first
    AgregarMeses(hoja, programa);
    for (qsizetype mes = meses; mes < hoja.columnas.size(); ++mes)
        hoja.columnas[mes].seSuma = false;
    for (const Serie &serie : CalcularRefacciones(programa, medido.lineas)) {
        const lectura::Producto &producto = medido.lineas.productos.at(serie.producto);
        hoja.filas.append(QVariantList{medido.lineas.NombreDeGasto(serie.gasto), producto.clave, producto.descripcion,
                                       producto.activo       ? ""
                                       : producto.enCatalogo ? "De baja"
                                                             : "Sin catálogo",
                                       serie.unidad, serie.total.Numero(), serie.costo.Numero(),
                                       serie.costoHoy.Numero()}
                          + Numeros(serie.porMes));
    }
    return hoja;
}

Hoja HojaDeCostos(const PlanMedido &medido, const Programa &programa)
{
    Hoja hoja{"Costos",
              {{"Mes"},
               Sumada("Mano de obra HR"),
               Sumada("Paro HR"),
               Sumada("Costo", ClaseDeHoja::Dinero),
               Sumada("Costo de hoy", ClaseDeHoja::Dinero),
               Sumada("Precio", ClaseDeHoja::Dinero),
               Sumada("Utilidad", ClaseDeHoja::Dinero)},
              {}};
    const QList<Medida> meses = PorMes(programa, medido.medidas);
    for (int mes = 0; mes < meses.size(); ++mes) {
        const Medida &medida = meses.at(mes);
        hoja.filas.append({programa.meses.Nombre(mes), medida.manoObra.Numero(), medida.paro.Numero(),
                           medida.costo.Numero(), medida.costoHoy.Numero(), medida.precio.Numero(),
                           (medida.precio - medida.costo).Numero()});
    }
    return hoja;
}

Hoja HojaDeParos(const PlanMedido &medido, const Programa &programa)
{
    Hoja hoja{
        "Paros",
        {{"Fecha", ClaseDeHoja::Fecha}, Sumada("Servicios"), Sumada("Paro sumado HR"), Sumada("Paro compartido HR")},
        {}};
    for (const ParoDelDia &paro : CalcularParos(programa, medido.medidas))
        hoja.filas.append(
            {programa.Fecha(paro.dia), double(paro.servicios), paro.sumado.Numero(), paro.compartido.Numero()});
    return hoja;
}

Hoja HojaDeParosJuntos(const PlanMedido &medido, const Programa &programa, int dias)
{
    Hoja hoja{"Paros juntos",
              {{"Desde", ClaseDeHoja::Fecha},
               {"Hasta", ClaseDeHoja::Fecha},
               Sumada("Fechas"),
               Sumada("Por separado HR"),
               Sumada("Juntos HR"),
               Sumada("Ahorro HR")},
              {}};
    for (const ParosJuntos &grupo : Juntar(CalcularParos(programa, medido.medidas), dias))
        hoja.filas.append({programa.Fecha(grupo.desde), programa.Fecha(grupo.hasta), double(grupo.fechas),
                           grupo.separados.Numero(), grupo.juntos.Numero(), grupo.Ahorro().Numero()});
    return hoja;
}

Hoja HojaDeUmbrales(const PlanMedido &medido, const Programa &programa)
{
    Hoja hoja{
        "Días o lectura", {{"Folio"}, {"Servicio"}, {"Ruta"}, {"Hoy manda"}, {"La lectura manda"}, {"Motivo"}}, {}};
    for (int i = 0; i < programa.periodos.size(); ++i) {
        const Periodo &periodo = programa.periodos.at(i);
        if (!periodo.umbral || !medido.entradas.at(i).exclusion.isEmpty())
            continue;
        const lectura::Servicio &servicio = medido.plan.servicios.at(i);
        hoja.filas.append({servicio.leido.folio, servicio.nombreServicio, servicio.ruta,
                           periodo.mandaLectura ? "la lectura" : "los días",
                           "desde " + periodo.umbral->Texto(2, true) + " " + servicio.unidad + "/día", periodo.motivo});
    }
    return hoja;
}

} // namespace programa
