#include "data/Aclaracion.h"

namespace qvx
{

QString Aclaracion(ClaseDeFallo clase)
{
    switch (clase) {
    case ClaseDeFallo::Ocupada:
        return "Otra persona está guardando en la base de datos. Espere un momento y repita la orden.";
    case ClaseDeFallo::SoloLectura:
        return "La base de datos no se puede cambiar: su archivo, su carpeta o su servidor son de solo lectura. Avise "
               "a "
               "quien la administra.";
    case ClaseDeFallo::DiscoLleno:
        return "No queda espacio en el disco de la base de datos: no se guardó nada. Libere espacio y repita la orden.";
    case ClaseDeFallo::Disco:
        return "No se pudo leer o escribir el archivo de la base de datos: revise el disco y su espacio libre.";
    case ClaseDeFallo::Danada:
        return "El archivo de la base de datos está dañado o no es de Quorvex. Avise a quien la administra.";
    case ClaseDeFallo::ClaveRepetida:
        return "Ya hay un registro con esa clave; tal vez otra persona acaba de crearlo. Use otra clave.";
    case ClaseDeFallo::DatoInvalido:
        return "Falta un dato, o uno no es de los que admite la base de datos. Revise lo que escribió.";
    case ClaseDeFallo::Apostrofo:
        return "Un texto lleva un apóstrofo ('), que no se admite. Quítelo y repita la orden.";
    case ClaseDeFallo::SinTablas:
        return "A la base de datos le falta una tabla o una columna. Avise a quien la administra.";
    case ClaseDeFallo::Otra:
        break;
    }
    return {};
}

} // namespace qvx
