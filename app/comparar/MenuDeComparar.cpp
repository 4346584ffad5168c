#include "app/comparar/MenuDeComparar.h"

#include "app/Espera.h"
#include "app/OrdenDeMenu.h"
#include "app/Trampas.h"
#include "app/VentanaPrincipal.h"
#include "app/comparar/DialogoComparar.h"
#include "app/comparar/DialogoPrevia.h"
#include "data/Conexion.h"
#include "session/Interaccion.h"

#include <optional>

namespace
{

// The screen's own import follows, with its question.
void ImportarConPrevia(VentanaPrincipal &ventana)
{
    const QString archivo = qvx::Sesion::Actual().Interaccion().ElegirArchivo(
        {"Importar con vista previa", "Archivo XML|*.xml", {}, {}, false}, &ventana);
    if (archivo.isEmpty())
        return;
    ConTrampa(ventana, 1000131, [&] {
        std::optional<Espera> espera(std::in_place);
        auto comparados = comparar::CompararConDocumento(Base(), archivo);
        espera.reset();
        DialogoPrevia previa(
            {"Importar con vista previa",
             "Así cambiaría el plan. Los servicios se numeran de nuevo, y todo queda firmado por quien "
             "importa. Nada se escribe hasta contestar que sí a la pregunta que sigue.",
             "&Importar…"},
            std::move(comparados), &ventana);
        if (previa.exec() == QDialog::Accepted)
            ventana.ImportarPlan(archivo);
    });
}

} // namespace

void PonerComparacion(QMenu &menu, VentanaPrincipal &ventana)
{
    AgregarOrden(menu, ventana, "mnuComparar", "C&omparar…", {}, [&ventana] {
        ConTrampa(ventana, 1000132, [&] { DialogoComparar(ventana.TipoEnPantalla(), &ventana).exec(); });
    });
    AgregarOrden(menu, ventana, "mnuImportarConPrevia", "&Importar con vista previa…", {},
                 [&ventana] { ImportarConPrevia(ventana); });
}
