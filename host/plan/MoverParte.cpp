#include "plan/MoverParte.h"

#include "data/ErrorEjecucion.h"
#include "plan/PlanTomado.h"

namespace qvx
{

void MoverParte(Conexion &conexion, const Firmante &firmante, const TrasladoDeParte &traslado)
{
    PlanTomado plan(conexion, firmante, traslado.tipoEquipo);
    plan.RevisarTraslado(traslado.parte, traslado.sello, traslado.nuevoPadre);
    const int escritas =
        conexion
            .Execute("UPDATE Tipo_Equipo_Parte SET Tep_Padre = ?, Oper_Ult_Modif = ?, Fecha_Ult_Modif = ? WHERE "
                     "Te_Cve_Tipo_Equipo = ? AND Tep_ID = ?",
                     {traslado.nuevoPadre, plan.Quien().operador, plan.Quien().fecha(), plan.Tipo(), traslado.parte})
            .Afectadas();
    if (escritas != 1)
        Rechazar("La parte " + traslado.parte + " no se pudo escribir. No se guardó nada.");
    AnotarCambio(conexion, plan.Quien(), "Tipo_Equipo_Parte", traslado.parte + "|" + plan.Tipo());
    plan.Confirmar("Parte movida", "Parte " + traslado.parte + " a " + plan.NombreDe(traslado.nuevoPadre));
}

} // namespace qvx
