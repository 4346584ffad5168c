#include "plan/PlanTomado.h"

#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "plan/Catalogos.h"
#include "plan/Claves.h"
#include "plan/OperacionEnCurso.h"
#include "plan/RegistrosDeCatalogo.h"
#include "plan/ReglasDeLote.h"

namespace qvx
{

namespace
{

const QString NadaGuardado = " No se guardó nada: actualice la página con F5.";

} // namespace

PlanTomado::PlanTomado(Conexion &conexion_, const Firmante &firmante_, const QString &tipoEquipo_)
    : conexion(conexion_)
    , firmante{firmante_.operador, [fecha = firmante_.fecha()] { return fecha; }}
    , tipoEquipo(SinBlancosAlFinal(tipoEquipo_))
    , transaccion(conexion)
    , arbol(ArbolDelPlan(conexion, tipoEquipo))
{
    if (DescripcionDeCatalogo(conexion, "TIPO_EQUIPO", tipoEquipo).isEmpty())
        Rechazar("El tipo de equipo " + tipoEquipo + " no existe o está dado de baja." + NadaGuardado);
    for (auto filas = conexion.Execute("SELECT Pm_ID FROM Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = ? AND "
                                       "Es_Cve_Estado <> ?",
                                       {tipoEquipo, estado::Activo});
         !filas.Eof(); filas.MoveNext())
        deBaja.insert(SinBlancosAlFinal(filas.Texto(0)));
}

// Who wrote the part last is most often who did what is in the way.
void PlanTomado::RechazarPorParte(const QString &parte, const QString &motivo) const
{
    const auto fila = conexion.Execute("SELECT Oper_Ult_Modif, Fecha_Ult_Modif FROM Tipo_Equipo_Parte WHERE "
                                       "Te_Cve_Tipo_Equipo = ? AND Tep_ID = ?",
                                       {tipoEquipo, parte});
    const QString quien = fila.Eof() || fila.Texto(0).isEmpty()
                              ? QString()
                              : " " + fila.Texto(0) + " la cambió el " + fila.Texto(1) + ".";
    Rechazar(motivo + quien + NadaGuardado);
}

void PlanTomado::RevisarDestino(const QString &parte) const
{
    if (const QString objecion = ObjecionAlDestino(arbol, parte); !objecion.isEmpty())
        RechazarPorParte(parte, objecion);
}

void PlanTomado::RevisarTraslado(const QString &parte, const QString &sello, const QString &nuevoPadre) const
{
    const Parte *movida = arbol.Buscar(parte);
    if (!movida)
        Rechazar("La parte «" + parte + "» ya no existe: otra persona la eliminó." + NadaGuardado);
    if (movida->sello != sello)
        RechazarPorParte(parte, "La parte «" + movida->clave + " " + movida->descripcion
                                    + "» ya no es como se leyó en esta página.");
    if (const QString objecion = ObjecionAlTraslado(arbol, parte, nuevoPadre); !objecion.isEmpty())
        RechazarPorParte(nuevoPadre, objecion);
}

void PlanTomado::Revisar(const ServicioLeido &servicio) const
{
    if (SinBlancosAlFinal(servicio.tipoEquipo) != tipoEquipo)
        Rechazar("El servicio " + servicio.folio + " es de otro plan." + NadaGuardado);
    const QString objecion = ObjecionAlServicio(
        arbol, servicio.parte, deBaja.contains(SinBlancosAlFinal(servicio.folio)) ? estado::Baja : estado::Activo);
    if (!objecion.isEmpty())
        RechazarPorParte(servicio.parte, "El servicio " + servicio.folio + " no se puede cambiar. " + objecion);
}

void PlanTomado::Firmar(const ServicioLeido &servicio) const
{
    Revisar(servicio);
    FirmarServicio(conexion, firmante, servicio);
}

QString PlanTomado::NombreDe(const QString &parte) const
{
    if (claves::EsRaiz(parte))
        return "la raíz";
    const Parte *hallada = arbol.Buscar(parte);
    return ("la parte " + parte + " " + (hallada ? hallada->descripcion : QString())).trimmed();
}

void PlanTomado::Confirmar(const QString &clase, const QString &detalle)
{
    NombrarOperacion(conexion, clase, detalle);
    transaccion.Confirmar();
}

void RevisarEscrito(const Recordset &cambio, const ServicioLeido &servicio)
{
    if (cambio.Afectadas() != 1)
        Rechazar("El servicio " + servicio.folio + " no se pudo escribir." + NadaGuardado);
}

} // namespace qvx
