#pragma once

#include "app/servicios/ColumnasDeServicio.h"

#include <QStringList>
#include <array>
#include <optional>

// Which services are shown: those that have every word searched for, in any order, without letter case and accents, and
// that meet what stands over each column. Over a column of numbers stands a condition (">100", "<=5", "10..20", "30");
// words otherwise.
class FiltroDeServicios
{
public:
    // servicios: they outlive the filter's use of them.
    void Poner(const QList<lectura::Servicio> *servicios);
    void Buscar(const QString &texto);
    void PonerEnColumna(int columna, const QString &texto);
    bool Admite(int servicio) const;

private:
    struct Intervalo {
        double desde;
        double hasta;
        bool sinDesde = false; // the bound itself is left out
        bool sinHasta = false;
    };
    struct Condicion {
        QStringList palabras;
        std::optional<Intervalo> intervalo;
    };
    static std::optional<Intervalo> LeerIntervalo(const QString &texto);
    void Plegar(int columna) const;
    void PlegarBuscados() const;

    const QList<lectura::Servicio> *lista = nullptr;
    QStringList palabras;
    std::array<Condicion, servicios::Columnas> condiciones;
    // Texts as they are compared, once they were: most columns are never filtered.
    mutable std::array<QStringList, servicios::Columnas> plegadas;
    mutable QStringList buscables;
};
