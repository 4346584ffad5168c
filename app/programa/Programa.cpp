#include "app/programa/Programa.h"

#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "plan/Claves.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace programa
{

namespace
{

constexpr int VecesAlDia = 24;
constexpr int NombresDeUnError = 5;
constexpr qint64 UltimoDia = 3'700'000; // days, past the year 9999 from anywhere

// Of each part the nearest retired one, itself or above it, nullptr for none; each part is looked at once.
class Retiradas
{
public:
    explicit Retiradas(const qvx::Arbol &arbol_) : arbol(arbol_) {}

    const qvx::Parte *De(const QString &clave)
    {
        QStringList camino;
        const qvx::Parte *parte = arbol.Buscar(clave);
        for (; parte && parte->activa && !vistas.contains(parte->clave); parte = arbol.Buscar(parte->padre))
            camino.append(parte->clave);
        const qvx::Parte *retirada = parte && parte->activa ? vistas.value(parte->clave) : parte;
        for (const QString &vista : std::as_const(camino))
            vistas.insert(vista, retirada);
        return retirada;
    }

private:
    const qvx::Arbol &arbol;
    QHash<QString, const qvx::Parte *> vistas;
};

// Why a service is out of force: what is above its part counts too.
QString ExclusionDe(const lectura::Servicio &servicio, Retiradas &retiradas)
{
    using lectura::Situacion;
    if (servicio.situacion == Situacion::SinParte)
        return "huérfano: su parte " + servicio.leido.parte + " no existe";
    if (servicio.situacion == Situacion::FueraDelArbol)
        return "huérfano: su parte " + servicio.leido.parte + " no cuelga del árbol";
    if (const qvx::Parte *parte = retiradas.De(servicio.leido.parte))
        return (parte->clave == servicio.leido.parte ? "su parte " : "de baja arriba: la parte ") + parte->clave + " "
               + parte->descripcion + (parte->clave == servicio.leido.parte ? " está de baja" : "");
    return servicio.Activo() ? QString() : QString("el servicio está dado de baja");
}

Horizonte HorizonteDe(const qvx::DatosDePrograma &datos)
{
    using Inicio = qvx::DatosDePrograma::Inicio;
    const int dias = static_cast<int>(datos.diaCero.daysTo(datos.diaCero.addYears(1)));
    return {datos.diaCero, datos.inicio == Inicio::Hecho ? 1 : 0, datos.inicio == Inicio::Arranque ? dias - 1 : dias};
}

Calendario CalendarioDe(const qvx::DatosDePrograma &datos)
{
    using Descanso = qvx::DatosDePrograma::Descanso;
    return {datos.descanso == Descanso::SabadoYDomingo, datos.descanso != Descanso::Ninguno,
            QSet<QDate>(datos.festivos.begin(), datos.festivos.end())};
}

// The days ⌊a + k·P⌋ of one service, over one denominator.
class Fechas
{
public:
    Fechas(const Fraccion &primero, const Fraccion &periodo)
    {
        const Fraccion cociente = primero / periodo; // its denominator makes both whole
        const Fraccion unidad = periodo / Fraccion(cociente.Denominador());
        inicio = Multiplicados(cociente.Numerador(), unidad.Numerador());
        paso = Multiplicados(periodo.Numerador(), unidad.Denominador() / periodo.Denominador());
        divisor = unidad.Denominador();
    }
    Entero Dia(Entero k) const { return Cociente(Sumados(inicio, Multiplicados(paso, k)), divisor); }
    // The first k whose day is not before this one.
    Entero Desde(Entero dia) const
    {
        const Entero falta = Sumados(Multiplicados(dia, divisor), -inicio);
        return falta <= 0 ? 0 : -Cociente(-falta, paso);
    }

private:
    Entero inicio = 0;
    Entero paso = 1;
    Entero divisor = 1;
};

class Programador
{
public:
    Programador(const QList<Entrada> &entradas_, const qvx::DatosDePrograma &datos) : entradas(entradas_)
    {
        programa.datos = datos;
        programa.horizonte = HorizonteDe(datos);
        calendario = CalendarioDe(datos);
        for (int i = 0; i < entradas.size(); ++i)
            lugares.insert(entradas.at(i).folio, i);
    }

    Programa Hacer()
    {
        programa.periodos.reserve(entradas.size());
        for (int i = 0; i < entradas.size(); ++i)
            Agregar(i);
        if (!excesivos.isEmpty())
            RechazarExcesivos();
        Incluir();
        std::stable_sort(programa.filas.begin(), programa.filas.end(),
                         [](const Fila &una, const Fila &otra) { return una.programado < otra.programado; });
        programa.conciliacion.todos = static_cast<int>(entradas.size());
        QDate hasta = programa.horizonte.Hasta();
        if (!programa.filas.isEmpty())
            hasta = std::max(hasta, programa.Fecha(programa.filas.constLast().programado));
        programa.meses = Meses(programa.horizonte.Desde(), hasta);
        for (QDate dia = programa.horizonte.diaCero; dia <= hasta; dia = dia.addDays(1))
            programa.mesDeDia.append(programa.meses.Lugar(dia));
        return std::move(programa);
    }

private:
    void Agregar(int servicio)
    {
        const Entrada &entrada = entradas.at(servicio);
        Conciliacion &cuenta = programa.conciliacion;
        const Periodo &periodo = programa.periodos.emplaceBack(CalcularPeriodo(entrada.frecuencia, programa.datos));
        if (!entrada.exclusion.isEmpty()) {
            ++cuenta.excluidos;
            programa.aparte.append({Aparte::Clase::Excluido, servicio, entrada.exclusion, {}});
            return;
        }
        if (!periodo.dias) {
            ++cuenta.sinFecha;
            programa.aparte.append({Aparte::Clase::SinFecha, servicio, periodo.motivo, {}});
            return;
        }
        if (*periodo.dias < Fraccion(1, VecesAlDia)) {
            excesivos.append(entrada.nombre + " (" + periodo.motivo + ")");
            return;
        }
        Fechar(servicio, Fechas(PrimerDia(entrada.frecuencia, periodo, programa.datos), *periodo.dias));
    }

    void Fechar(int servicio, const Fechas &fechas)
    {
        const Horizonte &horizonte = programa.horizonte;
        const int primera = programa.datos.inicio == qvx::DatosDePrograma::Inicio::Arranque ? 0 : 1; // the n of k = 0
        const auto antes = programa.filas.size();
        Entero k = fechas.Desde(horizonte.primero);
        Entero dia = fechas.Dia(k);
        while (dia <= horizonte.ultimo) {
            Fila fila;
            fila.servicio = servicio;
            fila.n = static_cast<int>(k) + primera;
            fila.teorico = static_cast<int>(dia);
            for (dia = fechas.Dia(++k); dia == fila.teorico; dia = fechas.Dia(++k))
                ++fila.veces;
            fila.programado = Programado(fila.teorico);
            programa.filas.append(fila);
        }
        if (programa.filas.size() > antes) {
            ++programa.conciliacion.programados;
            return;
        }
        ++programa.conciliacion.despues;
        const QDate primeraFecha = dia < UltimoDia ? horizonte.diaCero.addDays(static_cast<qint64>(dia)) : QDate();
        const bool escribible = primeraFecha.isValid() && primeraFecha.year() <= 9999;
        programa.aparte.append({Aparte::Clase::Despues, servicio, programa.periodos.at(servicio).motivo,
                                escribible ? primeraFecha : QDate()});
    }

    // Asked once for each day of the year.
    int Programado(int teorico)
    {
        const auto visto = programados.constFind(teorico);
        if (visto != programados.constEnd())
            return *visto;
        const QDate dia = calendario.Programada(programa.Fecha(teorico), programa.horizonte.diaCero);
        return *programados.insert(teorico, static_cast<int>(programa.horizonte.diaCero.daysTo(dia)));
    }

    // Rows are still those of one service after the other, by date.
    void Incluir()
    {
        QHash<int, QPair<qsizetype, qsizetype>> tramos; // of each service that a pair names
        for (const auto &[incluido, en] : std::as_const(programa.datos.incluidos))
            for (const QString &folio : {incluido, en})
                tramos.insert(lugares.value(folio, -1), {0, 0});
        if (tramos.isEmpty())
            return;
        for (qsizetype i = 0; i < programa.filas.size(); ++i)
            if (const auto tramo = tramos.find(programa.filas.at(i).servicio); tramo != tramos.end()) {
                tramo->first = tramo->second == 0 ? i : tramo->first;
                tramo->second = i + 1;
            }
        for (const auto &[incluido, en] : std::as_const(programa.datos.incluidos))
            IncluirUno(lugares.value(incluido, -1), lugares.value(en, -1), tramos);
    }

    // What contains another comes less often; so no two can contain each other.
    void IncluirUno(int incluido, int en, const QHash<int, QPair<qsizetype, qsizetype>> &tramos)
    {
        if (incluido < 0 || en < 0)
            return;
        const auto &periodo = programa.periodos.at(incluido).dias;
        const auto &mayor = programa.periodos.at(en).dias;
        if (!periodo || !mayor || *mayor <= *periodo)
            return;
        QHash<int, int> veces;
        for (qsizetype i = tramos[en].first; i < tramos[en].second; ++i)
            veces.insert(programa.filas.at(i).teorico, programa.filas.at(i).veces);
        for (qsizetype i = tramos[incluido].first; i < tramos[incluido].second; ++i) {
            Fila &fila = programa.filas[i];
            const int mas = std::min(fila.Cuentan(), veces.value(fila.teorico, 0));
            if (mas > 0 && fila.en < 0)
                fila.en = en;
            fila.incluidas += mas;
        }
    }

    [[noreturn]] void RechazarExcesivos() const
    {
        const QString mas = excesivos.size() > NombresDeUnError
                                ? QString(" y %1 más").arg(excesivos.size() - NombresDeUnError)
                                : QString();
        qvx::Rechazar("No hay programa: tocaría más de 24 veces al día " + excesivos.mid(0, NombresDeUnError).join("; ")
                      + mas + ". Corrija su frecuencia o el uso por día.");
    }

    const QList<Entrada> &entradas;
    Programa programa;
    Calendario calendario;
    QHash<QString, int> lugares;
    QHash<int, int> programados;
    QStringList excesivos;
};

// The day of each service and n, in this order.
std::vector<std::pair<quint64, int>> Dias(const Programa &programa)
{
    std::vector<std::pair<quint64, int>> dias;
    dias.reserve(programa.filas.size());
    for (const Fila &fila : programa.filas)
        for (int vez = 0; vez < fila.veces; ++vez)
            dias.emplace_back(static_cast<quint64>(fila.servicio) << 32U | static_cast<quint64>(fila.n + vez),
                              fila.programado);
    std::sort(dias.begin(), dias.end());
    return dias;
}

} // namespace

QList<Entrada> EntradasDe(const lectura::Plan &plan)
{
    QList<Entrada> entradas;
    Retiradas retiradas(plan.arbol);
    entradas.reserve(plan.servicios.size());
    for (const lectura::Servicio &servicio : plan.servicios)
        entradas.append({servicio.leido.folio,
                         servicio.leido.folio + " " + servicio.nombreServicio,
                         servicio.leido.parte + "|" + servicio.tipoServicio,
                         {servicio.dias, servicio.lectura, servicio.unidad},
                         ExclusionDe(servicio, retiradas)});
    return entradas;
}

QString Programa::Motivo(const Fila &fila, const QList<Entrada> &entradas) const
{
    if (fila.en < 0)
        return periodos.at(fila.servicio).motivo;
    const QString en = "incluido en " + entradas.at(fila.en).folio;
    if (fila.Cuentan() == 0)
        return en;
    return QString("%1 de %2 %3; ").arg(fila.incluidas).arg(fila.veces).arg(en) + periodos.at(fila.servicio).motivo;
}

Programa Programar(const QList<Entrada> &entradas, const qvx::DatosDePrograma &datos)
{
    if (const QString objecion = qvx::Objetar(datos); !objecion.isEmpty())
        qvx::Rechazar(objecion);
    return Programador(entradas, datos).Hacer();
}

QList<QPair<int, int>> ParesPosibles(const QList<Entrada> &entradas, const Programa &programa)
{
    QHash<QString, QList<int>> grupos;
    for (int i = 0; i < entradas.size(); ++i)
        if (entradas.at(i).exclusion.isEmpty() && programa.periodos.at(i).dias)
            grupos[entradas.at(i).grupo].append(i);
    QList<QPair<int, int>> pares;
    for (const QList<int> &grupo : std::as_const(grupos))
        for (const int menor : grupo)
            for (const int mayor : grupo) {
                const Fraccion veces = *programa.periodos.at(mayor).dias / *programa.periodos.at(menor).dias;
                if (veces.Denominador() == 1 && veces > Fraccion(1))
                    pares.append({menor, mayor});
            }
    std::sort(pares.begin(), pares.end());
    return pares;
}

QString Texto(const Conciliacion &conciliacion)
{
    return QString("Programados %1 + más adelante %2 + sin fecha %3 + excluidos %4 = %5 servicios")
        .arg(conciliacion.programados)
        .arg(conciliacion.despues)
        .arg(conciliacion.sinFecha)
        .arg(conciliacion.excluidos)
        .arg(conciliacion.todos);
}

QString Nombre(Aparte::Clase clase)
{
    switch (clase) {
    case Aparte::Clase::Despues:
        return "Más adelante";
    case Aparte::Clase::SinFecha:
        return "Sin fecha";
    case Aparte::Clase::Excluido:
        break;
    }
    return "Excluido";
}

Diferencia Comparar(const Programa &antes, const Programa &despues)
{
    const auto viejos = Dias(antes);
    const auto nuevos = Dias(despues);
    Diferencia diferencia;
    auto viejo = viejos.begin();
    auto nuevo = nuevos.begin();
    while (viejo != viejos.end() || nuevo != nuevos.end()) {
        if (nuevo == nuevos.end() || (viejo != viejos.end() && viejo->first < nuevo->first)) {
            ++diferencia.perdidas;
            ++viejo;
        } else if (viejo == viejos.end() || nuevo->first < viejo->first) {
            ++diferencia.nuevas;
            ++nuevo;
        } else {
            diferencia.movidas += viejo++->second == nuevo++->second ? 0 : 1;
        }
    }
    return diferencia;
}

} // namespace programa
