#include "app/servicios/OrdenesDeServicios.h"

#include "app/Trampas.h"
#include "app/servicios/DialogoDeLote.h"
#include "app/servicios/PeticionDeCambio.h"
#include "app/servicios/SelectorDeParte.h"
#include "controls/DeAmbos.h"

namespace ordenes
{

namespace
{

qvx::Firmante Quien()
{
    return qvx::Sesion::Actual().Firmante();
}

// The owner may go while the dialog is open, and the dialog with it.
Desenlace Preguntar(const qvx::DeAmbos<DialogoDeLote> &dialogo)
{
    if (dialogo->Preguntar())
        return Desenlace::Escrito;
    return dialogo && dialogo->Fallo() ? Desenlace::Fallido : Desenlace::Dejado;
}

Desenlace Trasladar(QWidget *duena, const lectura::Plan &plan, const QList<int> &cuales, const QString &destino,
                    const DialogoDeLote::Textos &textos, bool copia)
{
    propuestas::DeTraslado propuesta;
    const qvx::DeAmbos<DialogoDeLote> dialogo(new DialogoDeLote(duena, textos, [&] {
        if (copia)
            qvx::DuplicarServicios(Base(), Quien(), propuesta.traslados);
        else
            qvx::MoverServicios(Base(), Quien(), propuesta.traslados);
    }));
    auto *selector = new SelectorDeParte(plan, {});
    const auto proponer = [&, selector] {
        propuesta = propuestas::Trasladar(plan, cuales, selector->Elegida(), copia);
        dialogo->Mostrar(propuesta);
    };
    QObject::connect(selector, &SelectorDeParte::Cambio, &*dialogo, proponer);
    dialogo->PonerArriba(selector, 2);
    selector->Elegir(destino);
    proponer();
    return Preguntar(dialogo);
}

} // namespace

Desenlace MoverServicios(QWidget *duena, const lectura::Plan &plan, const QList<int> &cuales, const QString &destino)
{
    return Trasladar(duena, plan, cuales, destino,
                     {"Mover servicios",
                      "Elija la parte a la que van los servicios. Conservan su folio y sus renglones.", "&Mover",
                      "servicio", "servicios", "Se moverán"},
                     false);
}

Desenlace DuplicarServicios(QWidget *duena, const lectura::Plan &plan, const QList<int> &cuales, const QString &destino)
{
    return Trasladar(duena, plan, cuales, destino,
                     {"Duplicar servicios",
                      "Elija la parte en la que se hace la copia. Las copias llevan los mismos renglones y folios "
                      "nuevos; los originales quedan como están.",
                      "&Duplicar", "servicio", "servicios", "Se duplicarán"},
                     true);
}

Desenlace EliminarServicios(QWidget *duena, const lectura::Plan &plan, const QList<int> &cuales)
{
    const auto propuesta = propuestas::Eliminar(plan, cuales);
    const qvx::DeAmbos<DialogoDeLote> dialogo(new DialogoDeLote(
        duena,
        {"Eliminar servicios",
         "Los servicios se eliminan con sus renglones. Se recuperan con Edición, Deshacer, o en la página Historial.",
         "E&liminar", "servicio", "servicios", "Se eliminarán"},
        [&] { qvx::EliminarServicios(Base(), Quien(), propuesta.servicios); }));
    dialogo->Mostrar(propuesta);
    return Preguntar(dialogo);
}

Desenlace CambiarServicios(QWidget *duena, const lectura::Plan &plan, const QList<int> &cuales)
{
    propuestas::DeCambio propuesta;
    const qvx::DeAmbos<DialogoDeLote> dialogo(new DialogoDeLote(
        duena,
        {"Cambiar servicios",
         "Elija qué cambia en todos los servicios seleccionados. Un por ciento se suma a lo que cada uno tiene: 10 "
         "sube una décima parte, -10 la baja; precios y lecturas se redondean a dos decimales y los días a enteros.",
         "Ca&mbiar", "servicio", "servicios", "Se cambiarán"},
        [&] { qvx::CambiarServicios(Base(), Quien(), propuesta.cambios); }));
    auto *peticion = new PeticionDeCambio;
    peticion->Ofrecer(Base());
    const auto proponer = [&, peticion] {
        const auto pedido = peticion->Pedido();
        propuesta =
            pedido ? propuestas::Cambiar(plan, cuales, *pedido, peticion->NombreElegido()) : propuestas::DeCambio();
        if (!pedido) {
            propuesta.objecion = peticion->Falta();
            propuesta.filas = propuestas::Eliminar(plan, cuales).filas;
            for (propuestas::Fila &fila : propuesta.filas)
                fila.antes = fila.despues = QString();
        }
        dialogo->Mostrar(propuesta);
    };
    QObject::connect(peticion, &PeticionDeCambio::Cambio, &*dialogo, proponer);
    dialogo->PonerArriba(peticion, 0);
    proponer();
    return Preguntar(dialogo);
}

Desenlace MoverParte(QWidget *duena, const lectura::Plan &plan, const QString &parte, const QString &nuevoPadre)
{
    propuestas::DeParte propuesta;
    const qvx::Parte *movida = plan.arbol.Buscar(parte);
    const qvx::DeAmbos<DialogoDeLote> dialogo(new DialogoDeLote(
        duena,
        {"Mover parte",
         "Elija la parte de la que colgará «" + parte + " " + (movida ? movida->descripcion : QString())
             + "», con todo lo que está debajo de ella. Ninguna clave cambia y los servicios siguen en sus partes.",
         "&Mover", "parte", "partes", "Se moverán"},
        [&] { qvx::MoverParte(Base(), Quien(), propuesta.traslado); }));
    auto *selector = new SelectorDeParte(plan, parte);
    const auto proponer = [&, selector] {
        propuesta = propuestas::MoverParte(plan, parte, selector->Elegida());
        dialogo->Mostrar(propuesta);
    };
    QObject::connect(selector, &SelectorDeParte::Cambio, &*dialogo, proponer);
    dialogo->PonerArriba(selector, 2);
    selector->Elegir(nuevoPadre);
    proponer();
    return Preguntar(dialogo);
}

} // namespace ordenes
