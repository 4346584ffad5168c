#include "app/servicios/ColumnasDeServicio.h"

#include "data/Texto.h"

#include <array>

namespace servicios
{

namespace
{

struct Definicion {
    const char *titulo;
    Clase clase;
};

constexpr std::array<Definicion, Columnas> Definiciones{{
    {"Parte", Clase::Texto},
    {"Folio", Clase::Texto},
    {"Servicio", Clase::Texto},
    {"Días", Clase::Numero},
    {"Lectura", Clase::Numero},
    {"Horas", Clase::Numero},
    {"Paro", Clase::Numero},
    {"Prioridad", Clase::Texto},
    {"Mano de obra", Clase::Dinero},
    {"Refacciones", Clase::Dinero},
    {"Herramientas", Clase::Dinero},
    {"Costo", Clase::Dinero},
    {"Precio", Clase::Dinero},
    {"Utilidad", Clase::Dinero},
    {"% utilidad", Clase::Numero},
    {"Estado", Clase::Texto},
}};

constexpr double SinParo = -1; // sorts before a stop of no hours

} // namespace

QString Titulo(int columna)
{
    return QString::fromUtf8(Definiciones.at(columna).titulo);
}

Clase ClaseDe(int columna)
{
    return Definiciones.at(columna).clase;
}

QString Dinero(double importe)
{
    return qvx::NumeroConFormato(importe, "$#,##0.00#######");
}

QString Cifra(double numero)
{
    return qvx::NumeroConFormato(numero, "#,##0.########");
}

QString Frecuencia(double dias, double lectura, const QString &unidad)
{
    QStringList frecuencias;
    if (dias > 0)
        frecuencias.append(Cifra(dias) + (dias == 1 ? " día" : " días"));
    if (lectura > 0)
        frecuencias.append((Cifra(lectura) + " " + unidad).trimmed());
    return frecuencias.isEmpty() ? QString("Sin frecuencia") : frecuencias.join(", ");
}

QString NombreDe(lectura::Situacion situacion)
{
    using lectura::Situacion;
    switch (situacion) {
    case Situacion::Activo:
        return "Activo";
    case Situacion::ServicioDeBaja:
        return "Servicio de baja";
    case Situacion::ParteDeBaja:
        return "Parte de baja";
    case Situacion::FueraDelArbol:
        return "Fuera del árbol";
    case Situacion::SinParte:
        break;
    }
    return "Sin parte";
}

double Numero(const lectura::Servicio &servicio, int columna)
{
    switch (columna) {
    case Dias:
        return servicio.dias;
    case Lectura:
        return servicio.lectura;
    case Horas:
        return servicio.horas;
    case Paro:
        return servicio.conParo ? servicio.horasParo : SinParo;
    case ManoObra:
        return servicio.manoObra;
    case Refacciones:
        return servicio.refacciones;
    case Herramientas:
        return servicio.herramientas;
    case Costo:
        return servicio.costo;
    case Precio:
        return servicio.precio;
    case Utilidad:
        return servicio.utilidad;
    case Porcentaje:
        return servicio.porcentaje;
    default:
        return 0;
    }
}

QString Texto(const lectura::Servicio &servicio, int columna)
{
    switch (columna) {
    case Ruta:
        return servicio.ruta.isEmpty() ? "(no existe: " + servicio.leido.parte + ")" : servicio.ruta;
    case Folio:
        return servicio.leido.folio;
    case Nombre:
        return servicio.nombreServicio.isEmpty() ? servicio.tipoServicio : servicio.nombreServicio;
    case Dias:
        return servicio.dias > 0 ? Cifra(servicio.dias) : QString();
    case Lectura:
        return servicio.lectura > 0 ? Cifra(servicio.lectura) + " " + servicio.unidad : QString();
    case Paro:
        return servicio.conParo ? Cifra(servicio.horasParo) + " h" : QString("No");
    case Prioridad:
        return servicio.nombrePrioridad.isEmpty() ? servicio.prioridad : servicio.nombrePrioridad;
    case Porcentaje:
        return qvx::NumeroConFormato(servicio.porcentaje, "#,##0.00") + " %";
    case Estado:
        return NombreDe(servicio.situacion);
    default:
        return ClaseDe(columna) == Clase::Dinero ? Dinero(Numero(servicio, columna)) : Cifra(Numero(servicio, columna));
    }
}

} // namespace servicios
