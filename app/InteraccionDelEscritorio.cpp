#include "app/InteraccionDelEscritorio.h"

#include "app/Trampas.h"
#include "app/catalogos/PaginaCatalogos.h"

#include <utility>

QString InteraccionDelEscritorio::ElegirArchivo(const qvx::PeticionArchivo &peticion, QWidget *duena)
{
    const QString archivo = std::exchange(archivoAnticipado, {});
    return archivo.isEmpty() ? InteraccionQt::ElegirArchivo(peticion, duena) : archivo;
}

QString InteraccionDelEscritorio::BuscarEnCatalogo(const QString &catalogo, int maximo, const QString &filtro,
                                                   const QFont &fuente, QWidget *duena)
{
    const auto [esperado, clave] = std::exchange(anticipada, {});
    if (!clave.isEmpty() && esperado == catalogo)
        return clave;
    const bool puede = qvx::LeerDerechos(Base()).catalogos;
    OfrecerAlta(puede ? &PaginaCatalogos::CrearDesdeBusqueda : qvx::DialogoCatalogo::Alta());
    return InteraccionQt::BuscarEnCatalogo(catalogo, maximo, filtro, fuente, duena);
}
