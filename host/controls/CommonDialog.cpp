#include "controls/CommonDialog.h"

#include "controls/Formulario.h"
#include "data/ErrorEjecucion.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"

#include <QFileInfo>
#include <QPointer>

namespace comunesQVX
{

QString CommonDialog::FileTitle() const
{
    return QFileInfo(archivo).fileName();
}

void CommonDialog::Mostrar(bool paraGuardar)
{
    const QPointer<CommonDialog> vivo = this;
    const QString elegido =
        qvx::Sesion::Actual().Interaccion().ElegirArchivo({titulo, filtro, archivo, carpeta, paraGuardar}, window());
    if (!vivo)
        throw qvx::FormularioIdo();
    if (!elegido.isEmpty())
        archivo = elegido;
    else if (errorAlCancelar)
        throw qvx::ErrorEjecucion(qvx::errores::DialogoCancelado, "Se canceló el diálogo");
}

} // namespace comunesQVX
