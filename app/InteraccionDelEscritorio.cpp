#include "app/InteraccionDelEscritorio.h"

#include "app/Trampas.h"
#include "app/catalogos/PaginaCatalogos.h"
#include "data/Conexion.h"

#include <utility>

int InteraccionDelEscritorio::Mensaje(const qvx::Aviso &aviso)
{
    const bool deLaPantalla = aviso.identificador.startsWith("ERR-ID:75") && (aviso.estilo & qvx::mensaje::SiNo) != 0;
    if (!deLaPantalla || !qvx::Sesion::Abierta() || !Base().SoloLectura())
        return InteraccionQt::Mensaje(aviso);
    qvx::Aviso otro = aviso;
    otro.texto = "Esta sesión puede mirar, no cambiar: no se hizo nada.";
    otro.estilo = qvx::mensaje::Exclamacion;
    InteraccionQt::Mensaje(otro);
    return qvx::mensaje::No;
}

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
