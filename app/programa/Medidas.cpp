#include "app/programa/Medidas.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <tuple>

namespace programa
{

namespace
{

constexpr int DiasDelAno = 365;
constexpr int LugaresDelLargoPlazo = 12; // thirds leave something behind the 18th

// How often each service of the plan is done in each month on all machines.
class VecesPorMes
{
public:
    explicit VecesPorMes(const Programa &programa)
        : meses(programa.meses.Cuantos()), veces(programa.periodos.size() * meses, 0)
    {
        for (const Fila &fila : programa.filas)
            veces[fila.servicio * meses + programa.Mes(fila)] += qint64(fila.Cuentan()) * programa.datos.equipos;
    }
    qint64 De(int servicio, int mes) const { return veces.at(servicio * meses + mes); }

private:
    qsizetype meses;
    QList<qint64> veces;
};

using LlaveDeSerie = std::tuple<QString, QString, QString>; // expense type, product, unit

void AgregarASerie(Serie &serie, const lectura::Linea &linea, double costoDeHoy, const VecesPorMes &veces, int meses)
{
    if (serie.porMes.isEmpty())
        serie.porMes.resize(meses);
    const Cantidad cantidad = Cantidad::De(linea.cantidad);
    qint64 todas = 0;
    for (int mes = 0; mes < meses; ++mes) {
        const qint64 deEste = veces.De(linea.servicio, mes);
        if (deEste != 0)
            serie.porMes[mes] += cantidad * deEste;
        todas += deEste;
    }
    serie.total += cantidad * todas;
    serie.costo += Cantidad::De(linea.importe) * todas;
    serie.costoHoy += cantidad * Cantidad::De(costoDeHoy) * todas;
}

QList<Serie> Series(const Programa &programa, const lectura::Lineas &lineas, lectura::Linea::Clase clase)
{
    const VecesPorMes veces(programa);
    const int meses = programa.meses.Cuantos();
    std::map<LlaveDeSerie, Serie> series;
    for (const lectura::Linea &linea : lineas.lineas) {
        if (linea.clase != clase)
            continue;
        bool sale = false;
        for (int mes = 0; mes < meses && !sale; ++mes)
            sale = veces.De(linea.servicio, mes) != 0;
        if (!sale)
            continue;
        const lectura::Producto &producto = lineas.productos.at(linea.producto);
        const QString gasto = clase == lectura::Linea::Clase::Refaccion ? linea.gasto : QString();
        Serie &serie = series[{gasto, producto.clave, linea.unidad}];
        serie.producto = linea.producto;
        serie.unidad = linea.unidad;
        serie.gasto = gasto;
        AgregarASerie(serie, linea, producto.costo, veces, meses);
    }
    QList<Serie> lista;
    for (auto &[llave, serie] : series)
        lista.append(std::move(serie));
    return lista;
}

// A month that the year cuts has its days' part of the hours.
QList<Cantidad> CapacidadDe(const Programa &programa)
{
    QList<Cantidad> capacidad;
    if (programa.datos.capacidad.isEmpty())
        return capacidad;
    for (int mes = 0; mes < programa.meses.Cuantos(); ++mes) {
        const QDate primero = programa.meses.Primero(mes);
        const QDate desde = std::max(primero, programa.horizonte.Desde());
        const QDate hasta = std::min(primero.addMonths(1).addDays(-1), programa.horizonte.Hasta());
        const Fraccion parte(std::max<qint64>(0, desde.daysTo(hasta) + 1), primero.daysInMonth());
        capacidad.append(Cantidad::De(Fraccion::De(programa.datos.capacidad.value(primero.month())) * parte));
    }
    return capacidad;
}

} // namespace

Medida &Medida::operator+=(const Medida &otra)
{
    manoObra += otra.manoObra;
    paro += otra.paro;
    costo += otra.costo;
    costoHoy += otra.costoHoy;
    precio += otra.precio;
    return *this;
}

Medida operator-(const Medida &una, const Medida &otra)
{
    return {una.manoObra - otra.manoObra, una.paro - otra.paro, una.costo - otra.costo, una.costoHoy - otra.costoHoy,
            una.precio - otra.precio};
}

Medida operator*(const Medida &una, qint64 veces)
{
    return {una.manoObra * veces, una.paro * veces, una.costo * veces, una.costoHoy * veces, una.precio * veces};
}

QList<Medida> Medir(const lectura::Plan &plan, const lectura::Lineas &lineas)
{
    QList<Medida> medidas(plan.servicios.size());
    for (int i = 0; i < plan.servicios.size(); ++i) {
        const lectura::Servicio &servicio = plan.servicios.at(i);
        medidas[i].precio = Cantidad::De(servicio.precio);
        if (servicio.conParo)
            medidas[i].paro = Cantidad::De(servicio.horasParo);
    }
    QList<Cantidad> costosDeHoy;
    costosDeHoy.reserve(lineas.productos.size());
    for (const lectura::Producto &producto : lineas.productos)
        costosDeHoy.append(Cantidad::De(producto.costo));
    for (const lectura::Linea &linea : lineas.lineas) {
        if (linea.clase == lectura::Linea::Clase::Herramienta) // adds to no service's cost
            continue;
        Medida &medida = medidas[linea.servicio];
        const Cantidad cantidad = Cantidad::De(linea.cantidad);
        if (linea.clase == lectura::Linea::Clase::ManoDeObra && linea.unidad == Horas)
            medida.manoObra += cantidad;
        medida.costo += Cantidad::De(linea.importe);
        medida.costoHoy += cantidad * costosDeHoy.at(linea.producto);
    }
    return medidas;
}

Medida MedidaDe(const Programa &programa, const Fila &fila, const QList<Medida> &medidas)
{
    return medidas.at(fila.servicio) * (qint64(fila.Cuentan()) * programa.datos.equipos);
}

Medida Total(const Programa &programa, const QList<Medida> &medidas)
{
    QList<int> todas(programa.filas.size());
    std::iota(todas.begin(), todas.end(), 0);
    return Total(programa, todas, medidas);
}

// A service's times first: it has many dates, and amounts take longer to multiply than numbers to add.
Medida Total(const Programa &programa, const QList<int> &filas, const QList<Medida> &medidas)
{
    QList<qint64> veces(programa.periodos.size(), 0);
    for (const int i : filas) {
        const Fila &fila = programa.filas.at(i);
        veces[fila.servicio] += fila.Cuentan();
    }
    Medida total;
    for (int servicio = 0; servicio < veces.size(); ++servicio)
        if (veces.at(servicio) != 0)
            total += medidas.at(servicio) * (veces.at(servicio) * programa.datos.equipos);
    return total;
}

QList<Medida> PorMes(const Programa &programa, const QList<Medida> &medidas)
{
    QList<Medida> meses(programa.meses.Cuantos());
    for (const Fila &fila : programa.filas)
        meses[programa.Mes(fila)] += MedidaDe(programa, fila, medidas);
    return meses;
}

Medida ALargoPlazo(const Programa &programa, const QList<Medida> &medidas)
{
    QSet<int> excluidos;
    for (const Aparte &aparte : programa.aparte)
        if (aparte.clase == Aparte::Clase::Excluido)
            excluidos.insert(aparte.servicio);
    Medida total;
    for (int i = 0; i < programa.periodos.size(); ++i) {
        const auto &periodo = programa.periodos.at(i).dias;
        if (!periodo || excluidos.contains(i))
            continue;
        const Fraccion veces = Fraccion(Entero(DiasDelAno) * programa.datos.equipos) / *periodo;
        const Medida &una = medidas.at(i);
        total += {una.manoObra.Por(veces), una.paro.Por(veces), una.costo.Por(veces), una.costoHoy.Por(veces),
                  una.precio.Por(veces)};
    }
    const auto entera = [](const Cantidad &cantidad) { return cantidad.Redondeada(LugaresDelLargoPlazo); };
    return {entera(total.manoObra), entera(total.paro), entera(total.costo), entera(total.costoHoy),
            entera(total.precio)};
}

Carga CalcularCarga(const Programa &programa, const lectura::Lineas &lineas)
{
    Carga carga;
    carga.porMes.resize(programa.meses.Cuantos());
    for (Serie &serie : Series(programa, lineas, lectura::Linea::Clase::ManoDeObra)) {
        if (serie.unidad != Horas) {
            carga.otras.append(std::move(serie));
            continue;
        }
        for (int mes = 0; mes < carga.porMes.size(); ++mes)
            carga.porMes[mes] += serie.porMes.at(mes);
        carga.oficios.append(std::move(serie));
    }
    carga.capacidad = CapacidadDe(programa);
    return carga;
}

QList<Serie> CalcularRefacciones(const Programa &programa, const lectura::Lineas &lineas)
{
    return Series(programa, lineas, lectura::Linea::Clase::Refaccion);
}

QList<ParoDelDia> CalcularParos(const Programa &programa, const QList<Medida> &medidas)
{
    QList<ParoDelDia> paros;
    for (const Fila &fila : programa.filas) {
        const Cantidad horas = medidas.at(fila.servicio).paro * fila.Cuentan();
        if (horas.EsCero())
            continue;
        if (paros.isEmpty() || paros.constLast().dia != fila.programado)
            paros.append({fila.programado, 0, {}, {}});
        ParoDelDia &paro = paros.last();
        ++paro.servicios;
        paro.sumado += horas;
        paro.compartido = std::max(paro.compartido, horas);
    }
    for (ParoDelDia &paro : paros) {
        paro.sumado = paro.sumado * programa.datos.equipos;
        paro.compartido = paro.compartido * programa.datos.equipos;
    }
    return paros;
}

QList<ParosJuntos> Juntar(const QList<ParoDelDia> &paros, int dias)
{
    QList<ParosJuntos> grupos;
    for (const ParoDelDia &paro : paros) {
        if (grupos.isEmpty() || paro.dia - grupos.constLast().desde > dias)
            grupos.append({paro.dia, paro.dia, 0, {}, {}});
        ParosJuntos &grupo = grupos.last();
        grupo.hasta = paro.dia;
        ++grupo.fechas;
        grupo.separados += paro.compartido;
        grupo.juntos = std::max(grupo.juntos, paro.compartido);
    }
    grupos.removeIf([](const ParosJuntos &grupo) { return grupo.fechas < 2; });
    return grupos;
}

} // namespace programa
