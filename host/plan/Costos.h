#pragma once

#include "plan/ServiciosDelPlan.h"
#include "system/Exporta.h"

// What the plans' lines cost beside what the catalogue says that they cost now. Tools are left out: they add to no
// service's cost, and the editor stores them without one, whatever an import gave them.
namespace QVX_EXPORTA qvx
{

// The number without what binary fractions leave behind it.
double Redondeado(double numero);

// Of a service: what its lines cost, what its price leaves of it, and how much that is of the price, in percent.
struct Costeo {
    double costo = 0;
    double utilidad = 0;
    double porcentaje = 0;

    bool Pierde() const { return utilidad < 0; }
};
Costeo Costear(double precio, double costo);

// A line whose stored cost is not the standard cost of its product.
struct DiferenciaDeCosto {
    int servicio = 0; // where it stands among services
    QString linea;
    QString clase; // "01" labour, "02" spare part
    QString producto;
    QString descripcion;
    double cantidad = 0;
    QString unidad;
    QString unidadProducto;
    double costo = 0;
    double costoNuevo = 0;
    double importe = 0;
    double importeNuevo = 0;
    QString reparo; // why a person has to look before it is written, "" when nobody has to
};

struct DiferenciasDeCostos {
    QList<ServicioDelPlan> servicios;
    QList<double> costos;            // of each service, as its lines are stored
    QList<DiferenciaDeCosto> lineas; // by equipment type, service and line
    QList<QList<int>> deServicio;    // of each service: where its lines stand
    int aparte = 0;                  // lines that differ too, of services that a planner cannot change

    // Those that nobody has to look at before.
    QList<bool> MarcadasDeInicio() const;
    Costeo Antes(int servicio) const;
    // With the lines that are ticked.
    Costeo Despues(int servicio, const QList<bool> &marcadas) const;
    bool PerdidaNueva(int servicio, const QList<bool> &marcadas) const;
};

struct ResumenDeCostos {
    int planes = 0;
    int servicios = 0;
    int lineas = 0;
    int conReparo = 0;
    int perdidas = 0; // services that would lose from now on
    double importe = 0;
    double importeNuevo = 0;
    double cambio = 0;
};
// Of what is ticked.
ResumenDeCostos Resumir(const DiferenciasDeCostos &diferencias, const QList<bool> &marcadas);

// tipos: keys of equipment types, none for all. Raises data errors.
DiferenciasDeCostos LeerDiferencias(Conexion &conexion, const QStringList &tipos);

// What became of the plans, by the keys of their equipment types.
struct CostosEscritos {
    QStringList hechos;
    QString fallido; // stays as it was, "" for none
    QString motivo;
    QString aclaracion;     // of what the engine said, "" where it said nothing
    QStringList pendientes; // were not begun
    int lineas = 0;
};
// Writes cost and amount of the lines that are ticked, a transaction for each plan, whose services are signed. A plan
// in which something is not as it was read, or that cannot be written, is left as it was, and those after it are not
// begun.
CostosEscritos ActualizarCostos(Conexion &conexion, const Firmante &firmante, const DiferenciasDeCostos &diferencias,
                                const QList<bool> &marcadas);

} // namespace qvx
