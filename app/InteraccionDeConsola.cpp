#include "app/InteraccionDeConsola.h"

#include <QTextStream>

namespace
{

// Unknown products: the rest of the plan was imported.
constexpr const char *ImportadoSinProductos = "ERR-ID:7500024";

} // namespace

InteraccionDeConsola::InteraccionDeConsola(QString archivo_, bool si_) : archivo(std::move(archivo_)), si(si_) {}

int InteraccionDeConsola::Mensaje(const qvx::Aviso &aviso)
{
    QTextStream salida(stderr);
    salida << aviso.texto << Qt::endl;
    if (!aviso.detalles.isEmpty())
        salida << aviso.detalles << Qt::endl;
    if ((aviso.estilo & 0xF) != 0) {
        if (si)
            return qvx::mensaje::Si;
        salida << "No se hizo: la pregunta se contesta que sí con --si." << Qt::endl;
        rechazado = true;
        return qvx::mensaje::No;
    }
    rechazado = rechazado
                || ((aviso.estilo & 0xF0) != qvx::mensaje::Informacion && aviso.identificador != ImportadoSinProductos);
    return qvx::mensaje::Aceptar;
}

QString InteraccionDeConsola::ElegirArchivo(const qvx::PeticionArchivo & /*peticion*/, QWidget * /*duena*/)
{
    return archivo;
}

// The exchange asks for neither of these; a screen that did would get no answer.
QString InteraccionDeConsola::BuscarEnCatalogo(const QString & /*catalogo*/, int /*maximo*/, const QString & /*filtro*/,
                                               const QFont & /*fuente*/, QWidget * /*duena*/)
{
    rechazado = true;
    return {};
}

void InteraccionDeConsola::InformacionRegistro(const QList<QPair<QString, QString>> & /*datos*/, QWidget * /*duena*/)
{
    rechazado = true;
}
