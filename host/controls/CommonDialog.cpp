#include "controls/CommonDialog.h"

#include "data/ErrorEjecucion.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"

#include <QFileInfo>

namespace comunesQVX
{

QString CommonDialog::FileTitle() const
{
    return QFileInfo(archivo).fileName();
}

void CommonDialog::Mostrar(bool paraGuardar)
{
    const QString elegido =
        qvx::Sesion::Actual().Interaccion().ElegirArchivo({titulo, filtro, archivo, carpeta, paraGuardar}, window());
    if (!elegido.isEmpty())
        archivo = elegido;
    else if (errorAlCancelar)
        throw qvx::ErrorEjecucion(qvx::errores::DialogoCancelado, "Se canceló el diálogo");
}

} // namespace comunesQVX
