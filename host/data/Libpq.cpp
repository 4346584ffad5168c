#include "data/Libpq.h"

#include "data/ErrorEjecucion.h"

#include <QLibrary>

namespace qvx
{

namespace
{

template <class Funcion>
void Resolver(QLibrary &libreria, const char *nombre, Funcion &funcion)
{
    funcion = reinterpret_cast<Funcion>(libreria.resolve(nombre));
    if (!funcion)
        throw ErrorEjecucion(errores::Datos, "No se pudo cargar libpq: " + libreria.errorString());
}

Libpq Cargar()
{
    constexpr int Version = 5; // of its interface, the same since PostgreSQL 8
    QLibrary libreria("pq", Version);
    Libpq funciones;
#define QVX_FUNCION(nombre) Resolver(libreria, #nombre, funciones.nombre);
    QVX_FUNCIONES_LIBPQ(QVX_FUNCION)
#undef QVX_FUNCION
    return funciones;
}

} // namespace

const Libpq &LibreriaPq()
{
    static const Libpq funciones = Cargar();
    return funciones;
}

} // namespace qvx
