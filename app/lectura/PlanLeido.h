#pragma once

#include "plan/Arbol.h"
#include "plan/Cambios.h"

#include <QHash>
#include <QList>

// A plan in memory, read once and shared by the pages: values alone, no windows.
namespace lectura
{

// Why a service is in the plan and not in force.
enum class Situacion { Activo, ServicioDeBaja, ParteDeBaja, FueraDelArbol, SinParte };

// A service with the sums of its lines. Its cost and profit are those of the editor: tools add to no cost.
struct Servicio {
    qvx::ServicioLeido leido;
    QString ruta; // its part's, "" for one that is not there
    QString tipoServicio;
    QString nombreServicio;
    double dias = 0;
    double lectura = 0;
    QString unidad;
    double horas = 0;
    bool conParo = false;
    double horasParo = 0;
    QString prioridad;
    QString nombrePrioridad;
    double precio = 0;
    double manoObra = 0;
    double refacciones = 0;
    double herramientas = 0;
    double costo = 0;
    double utilidad = 0;
    double porcentaje = 0; // of the price
    QString estado;        // its row's own
    Situacion situacion = Situacion::Activo;

    bool Activo() const { return situacion == Situacion::Activo; }
};

struct Plan {
    QString tipoEquipo;
    QString nombreTipo;
    bool tipoActivo = false;
    qvx::Arbol arbol;
    QList<Servicio> servicios; // all of them, by folio
};

// The plan of an equipment type, in six statements of one moment. Lines are read as what they add up to: nobody looks
// at a hundred thousand of them. What is read counts for no screen as read. Raises data errors.
Plan LeerPlan(qvx::Conexion &conexion, const QString &tipoEquipo);

} // namespace lectura
