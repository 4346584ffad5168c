#include "app/lectura/Totales.h"

#include "plan/Claves.h"

#include <QSet>
#include <array>
#include <vector>

namespace lectura
{

namespace
{

constexpr double DiasDelAno = 365;

// Sums of many services, with digits to spare for what binary fractions leave behind.
class Sumador
{
public:
    void Agregar(const Servicio &servicio)
    {
        ++cuenta.servicios;
        unaVez.Agregar(servicio, 1);
        if (!servicio.Activo())
            ++cuenta.noActivos;
        else if (servicio.dias > 0)
            alAno.Agregar(servicio, DiasDelAno / servicio.dias);
        else if (servicio.lectura > 0)
            ++cuenta.soloPorLectura;
        else
            ++cuenta.sinFrecuencia;
    }
    void Agregar(const Sumador &otro)
    {
        cuenta.servicios += otro.cuenta.servicios;
        cuenta.noActivos += otro.cuenta.noActivos;
        cuenta.soloPorLectura += otro.cuenta.soloPorLectura;
        cuenta.sinFrecuencia += otro.cuenta.sinFrecuencia;
        unaVez.Agregar(otro.unaVez);
        alAno.Agregar(otro.alAno);
    }
    bool Vacia() const { return cuenta.servicios == 0; }
    Totales Resultado() const
    {
        Totales totales = cuenta;
        totales.unaVez = unaVez.Resultado();
        totales.alAno = alAno.Resultado();
        return totales;
    }

private:
    struct Sumas {
        std::array<long double, 7> sumas{};

        void Agregar(const Servicio &servicio, double veces)
        {
            const std::array<double, 7> sumandos{
                1,
                servicio.horas,
                servicio.conParo ? servicio.horasParo : 0,
                servicio.manoObra,
                servicio.refacciones,
                servicio.herramientas,
                servicio.precio,
            };
            for (std::size_t i = 0; i < sumas.size(); ++i)
                sumas.at(i) += static_cast<long double>(sumandos.at(i)) * static_cast<long double>(veces);
        }
        void Agregar(const Sumas &otras)
        {
            for (std::size_t i = 0; i < sumas.size(); ++i)
                sumas.at(i) += otras.sumas.at(i);
        }
        Totales::Importes Resultado() const
        {
            const auto valor = [](long double suma) { return static_cast<double>(suma); };
            Totales::Importes importes{
                valor(sumas[0]), valor(sumas[1]), valor(sumas[2]), valor(sumas[3]), valor(sumas[4]), valor(sumas[5]), 0,
                valor(sumas[6])};
            importes.costo = valor(sumas[3] + sumas[4]);
            importes.utilidad = valor(sumas[6] - sumas[3] - sumas[4]);
            importes.porcentaje = importes.precio == 0 ? 0 : importes.utilidad / importes.precio * 100;
            return importes;
        }
    };

    Totales cuenta;
    Sumas unaVez;
    Sumas alAno;
};

bool Llega(const qvx::Parte *parte)
{
    return parte && parte->alcance == qvx::Parte::Alcance::Llega;
}

// Sums of parts, which those of what is below them come to.
class Ramas
{
public:
    explicit Ramas(const qvx::Arbol &arbol)
    {
        for (const auto &[clave, parte] : arbol.Partes()) {
            lugares.insert(clave, static_cast<int>(ramas.size()));
            ramas.push_back({&parte, -1, {}, {}});
        }
        for (Rama &rama : ramas)
            rama.padre = lugares.value(rama.parte->padre, -1);
    }
    void Agregar(const Servicio &servicio)
    {
        const int lugar = lugares.value(servicio.leido.parte, -1);
        if (lugar >= 0)
            ramas[lugar].propia.Agregar(servicio);
        if (lugar < 0 || !Llega(ramas[lugar].parte))
            sueltos.Agregar(servicio);
    }
    QHash<QString, Totales> Resultado()
    {
        for (std::size_t i = 0; i < ramas.size(); ++i)
            Subir(i);
        QHash<QString, Totales> totales;
        for (const Rama &rama : ramas)
            if (!rama.suma.Vacia())
                totales.insert(rama.parte->clave, rama.suma.Resultado());
        totales.insert({}, sueltos.Resultado());
        return totales;
    }

private:
    struct Rama {
        const qvx::Parte *parte = nullptr;
        int padre = -1;
        Sumador propia;
        Sumador suma;
    };

    void Subir(std::size_t desde)
    {
        if (ramas[desde].propia.Vacia())
            return;
        QSet<int> vistas; // a ring ends where it is met again
        const bool puedeVolver = !Llega(ramas[desde].parte);
        for (int actual = static_cast<int>(desde); actual >= 0 && !vistas.contains(actual);
             actual = ramas[actual].padre) {
            if (puedeVolver)
                vistas.insert(actual);
            ramas[actual].suma.Agregar(ramas[desde].propia);
        }
    }

    std::vector<Rama> ramas;
    QHash<QString, int> lugares;
    Sumador sueltos;
};

} // namespace

Totales Sumar(const Plan &plan, const QList<int> &cuales)
{
    Sumador sumador;
    for (const int cual : cuales)
        sumador.Agregar(plan.servicios.at(cual));
    return sumador.Resultado();
}

QHash<QString, Totales> SumarPorParte(const Plan &plan)
{
    Ramas ramas(plan.arbol);
    for (const Servicio &servicio : plan.servicios)
        ramas.Agregar(servicio);
    return ramas.Resultado();
}

QList<int> ServiciosBajo(const Plan &plan, const QString &parte)
{
    const bool todos = qvx::claves::EsRaiz(parte);
    QHash<QString, bool> debajo; // of each part that was looked at
    const auto estaDebajo = [&](const QString &clave) {
        QStringList camino;
        bool esta = false;
        for (const qvx::Parte *actual = plan.arbol.Buscar(clave); actual && !camino.contains(actual->clave);
             actual = plan.arbol.Buscar(actual->padre)) {
            const auto sabido = debajo.constFind(actual->clave);
            esta = actual->clave == parte || (sabido != debajo.constEnd() && *sabido);
            if (esta || sabido != debajo.constEnd())
                break;
            camino.append(actual->clave);
        }
        for (const QString &vista : std::as_const(camino))
            debajo.insert(vista, esta);
        return esta;
    };
    QList<int> cuales;
    for (int i = 0; i < plan.servicios.size(); ++i) {
        const QString &suya = plan.servicios.at(i).leido.parte;
        if (todos || (parte.isEmpty() ? !Llega(plan.arbol.Buscar(suya)) : estaDebajo(suya)))
            cuales.append(i);
    }
    return cuales;
}

} // namespace lectura
