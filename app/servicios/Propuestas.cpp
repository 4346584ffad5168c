#include "app/servicios/Propuestas.h"

#include "app/servicios/ColumnasDeServicio.h"
#include "plan/Claves.h"
#include "plan/ReglasDeLote.h"

#include <algorithm>
#include <cmath>

namespace propuestas
{

namespace
{

Fila FilaDe(const lectura::Plan &plan, const lectura::Servicio &servicio)
{
    Fila fila;
    fila.clave = servicio.leido.folio;
    fila.nombre = servicios::Texto(servicio, servicios::Nombre);
    fila.motivo = plan.tipoActivo ? qvx::ObjecionAlServicio(plan.arbol, servicio.leido.parte, servicio.estado)
                                  : QString("El tipo de equipo está dado de baja.");
    return fila;
}

double ADecimales(double numero, int decimales)
{
    const double escala = std::pow(10.0, decimales);
    return std::round(numero * escala) / escala;
}

double Nuevo(double actual, const Peticion &peticion, int decimales)
{
    return peticion.porCiento ? ADecimales(actual * (1 + peticion.numero / 100), decimales) : peticion.numero;
}

qvx::ValoresDeServicio ValoresDe(const lectura::Servicio &servicio)
{
    return {servicio.tipoServicio, servicio.prioridad, servicio.dias,
            servicio.lectura,      servicio.unidad,    servicio.precio};
}

void Aplicar(qvx::ValoresDeServicio &valores, const Peticion &peticion)
{
    constexpr int Centavos = 2;
    switch (peticion.que) {
    case Peticion::Que::Precio:
        valores.precio = Nuevo(valores.precio, peticion, Centavos);
        break;
    case Peticion::Que::Dias:
        valores.dias = valores.dias > 0 && peticion.porCiento ? std::max(1.0, Nuevo(valores.dias, peticion, 0))
                                                              : Nuevo(valores.dias, peticion, 0);
        break;
    case Peticion::Que::Lectura:
        valores.lectura = Nuevo(valores.lectura, peticion, Centavos);
        if (!peticion.clave.isEmpty())
            valores.unidad = peticion.clave;
        break;
    case Peticion::Que::Prioridad:
        valores.prioridad = peticion.clave;
        break;
    case Peticion::Que::TipoServicio:
        valores.tipoServicio = peticion.clave;
        break;
    }
}

void Mostrar(Fila &fila, const lectura::Servicio &servicio, const qvx::CambioDeServicio &cambio,
             const Peticion &peticion, const QString &nombre)
{
    switch (peticion.que) {
    case Peticion::Que::Precio:
        fila.antes = servicios::Dinero(cambio.antes.precio);
        fila.despues = servicios::Dinero(cambio.despues.precio);
        break;
    case Peticion::Que::Dias:
    case Peticion::Que::Lectura:
        fila.antes = servicios::Frecuencia(cambio.antes.dias, cambio.antes.lectura, cambio.antes.unidad);
        fila.despues = servicios::Frecuencia(cambio.despues.dias, cambio.despues.lectura, cambio.despues.unidad);
        break;
    case Peticion::Que::Prioridad:
        fila.antes = servicios::Texto(servicio, servicios::Prioridad);
        fila.despues = nombre;
        break;
    case Peticion::Que::TipoServicio:
        fila.antes = servicios::Texto(servicio, servicios::Nombre);
        fila.despues = nombre;
        break;
    }
}

} // namespace

int Propuesta::Cuantos() const
{
    if (!objecion.isEmpty())
        return 0;
    return static_cast<int>(
        std::count_if(filas.begin(), filas.end(), [](const Fila &fila) { return fila.motivo.isEmpty(); }));
}

DeTraslado Trasladar(const lectura::Plan &plan, const QList<int> &cuales, const QString &destino, bool copia)
{
    DeTraslado propuesta;
    propuesta.objecion =
        destino.isEmpty() ? QString("Elija la parte a la que van.") : qvx::ObjecionAlDestino(plan.arbol, destino);
    const QString ruta = propuesta.objecion.isEmpty() ? plan.arbol.Ruta(destino) : QString();
    for (const int cual : cuales) {
        const lectura::Servicio &servicio = plan.servicios.at(cual);
        Fila fila = FilaDe(plan, servicio);
        fila.antes = servicios::Texto(servicio, servicios::Ruta);
        fila.despues = ruta;
        if (fila.motivo.isEmpty() && !copia && servicio.leido.parte == destino)
            fila.motivo = "Ya está en esa parte.";
        if (fila.motivo.isEmpty())
            propuesta.traslados.append({servicio.leido, destino});
        propuesta.filas.append(fila);
    }
    return propuesta;
}

DeEliminacion Eliminar(const lectura::Plan &plan, const QList<int> &cuales)
{
    DeEliminacion propuesta;
    for (const int cual : cuales) {
        const lectura::Servicio &servicio = plan.servicios.at(cual);
        Fila fila = FilaDe(plan, servicio);
        fila.antes = servicios::Texto(servicio, servicios::Ruta);
        fila.despues = fila.motivo.isEmpty() ? QString("(se elimina)") : QString();
        if (fila.motivo.isEmpty())
            propuesta.servicios.append(servicio.leido);
        propuesta.filas.append(fila);
    }
    return propuesta;
}

DeCambio Cambiar(const lectura::Plan &plan, const QList<int> &cuales, const Peticion &peticion, const QString &nombre)
{
    DeCambio propuesta;
    for (const int cual : cuales) {
        const lectura::Servicio &servicio = plan.servicios.at(cual);
        Fila fila = FilaDe(plan, servicio);
        qvx::CambioDeServicio cambio{servicio.leido, ValoresDe(servicio), ValoresDe(servicio)};
        Aplicar(cambio.despues, peticion);
        Mostrar(fila, servicio, cambio, peticion, nombre);
        if (fila.motivo.isEmpty())
            fila.motivo = qvx::ObjecionAlCambio(cambio);
        if (fila.motivo.isEmpty()) {
            propuesta.importe += cambio.antes.precio;
            propuesta.importeNuevo += cambio.despues.precio;
            propuesta.cambios.append(cambio);
        }
        propuesta.filas.append(fila);
    }
    return propuesta;
}

DeParte MoverParte(const lectura::Plan &plan, const QString &parte, const QString &nuevoPadre)
{
    DeParte propuesta;
    const qvx::Parte *movida = plan.arbol.Buscar(parte);
    propuesta.traslado = {plan.tipoEquipo, parte, movida ? movida->sello : QString(), nuevoPadre};
    if (!plan.tipoActivo)
        propuesta.objecion = "El tipo de equipo está dado de baja.";
    else if (nuevoPadre.isEmpty())
        propuesta.objecion = "Elija la parte de la que colgará.";
    else
        propuesta.objecion = qvx::ObjecionAlTraslado(plan.arbol, parte, nuevoPadre);
    if (!movida || movida->alcance != qvx::Parte::Alcance::Llega)
        return propuesta;
    const QString vieja = plan.arbol.Ruta(parte);
    const QString nueva = propuesta.objecion.isEmpty() && !qvx::claves::EsRaiz(nuevoPadre)
                              ? plan.arbol.Ruta(nuevoPadre) + " / " + movida->descripcion
                              : movida->descripcion;
    for (const auto &[clave, otra] : plan.arbol.Partes()) {
        bool debajo = false;
        for (const qvx::Parte *actual = otra.alcance == qvx::Parte::Alcance::Llega ? &otra : nullptr; actual && !debajo;
             actual = plan.arbol.Buscar(actual->padre))
            debajo = actual == movida;
        if (!debajo)
            continue;
        const QString ruta = plan.arbol.Ruta(clave);
        propuesta.filas.append({clave,
                                otra.descripcion,
                                ruta,
                                propuesta.objecion.isEmpty() ? nueva + ruta.mid(vieja.size()) : QString(),
                                {}});
    }
    return propuesta;
}

} // namespace propuestas
