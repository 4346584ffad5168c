#include "plan/Formas.h"

#include "data/Conexion.h"
#include "data/ErrorEjecucion.h"
#include "data/Lexico.h"
#include "data/Texto.h"
#include "plan/EsquemaServidor.h"

#include <QHash>
#include <QRegularExpression>

namespace qvx
{

namespace
{

const QStringList FuncionesPropias{"dbo.Get_Ruta_Parte_Tipo_Equipo"};

bool CambioPermitido(const QString &forma)
{
    static const QRegularExpression permitida(QRegularExpression::anchoredPattern(
                                                  R"((?xi)
        INSERT\s+INTO\s+ \w+ \s*\( [\w\s,]+ \)\s*
          (?: VALUES \s*\( \s*-?\s*\? (?: \s*,\s* -?\s*\? )* \s*\)
            | SELECT\s [\w\s,?]+ \sFROM\s+ \w+ \s+WHERE\s+ \w+\s*=\s*\? ) \s*
        | UPDATE\s+ \w+ \s+SET\s+
          (?: Tep_Descripcion\s*=\s*\?\s*, (?: \s*Te_Cve_Tipo_Equipo\s*=\s*\?\s*, )?
              \s*Oper_Ult_Modif\s*=\s*\?\s*, \s*Fecha_Ult_Modif\s*=\s*\?
            | (?! Tep_Descripcion\b ) \w+\s*=\s*-?\s*\? (?: \s*,\s* \w+\s*=\s*-?\s*\? )* )
          \s*WHERE\s+ \w+\s*=\s*\? (?: \s*AND\s+ \w+\s*=\s*\? )* \s*
        | DELETE\s+ (?:FROM\s+)? \w+ \s+WHERE\s+ \w+\s*=\s*\? (?: \s*AND\s+ \w+\s*=\s*\? )* \s*
        )"),
                                              QRegularExpression::DotMatchesEverythingOption);
    return permitida.match(forma).hasMatch();
}

bool NombraElPlan(const QString &forma)
{
    static const QRegularExpression plan("\\b(Tipo_Equipo_Parte|Plan_Mantenimiento|Programa_)",
                                         QRegularExpression::CaseInsensitiveOption);
    return forma.contains(plan);
}

// Where a column is set to, or compared with, an equipment type.
QList<int> TiposIgualados(const QString &forma)
{
    static const QRegularExpression igualado("\\bTe_Cve_Tipo_Equipo\\s*=\\s*\\?",
                                             QRegularExpression::CaseInsensitiveOption);
    QList<int> lugares;
    for (auto hallados = igualado.globalMatch(forma); hallados.hasNext();)
        lugares.append(LiteralEn(forma, hallados.next().capturedEnd() - 1));
    return lugares;
}

} // namespace

Conocida Formas::Conocer(const QString &forma, const QStringList &funciones) const
{
    Conocida conocida;
    conocida.permitida =
        forma.startsWith("SELECT") ? SoloLlamaA(forma, funciones + FuncionesPropias) : CambioPermitido(forma);
    // What a function of the database's own reads is not seen here.
    conocida.ajena = forma.startsWith("SELECT") && SoloLlamaA(forma, funciones) && !NombraElPlan(forma);
    conocida.hora = forma == PreguntaDeHora;
    conocida.iguales = TiposIgualados(forma);
    conocida.cambio = OperacionEnCurso::Cambio(forma);
    conocida.claves = OperacionEnCurso::Claves(forma, conocida.cambio);
    if (conocida.ajena)
        return conocida;
    conocida.reservas = conocida.iguales;
    if (const int lugar = LiteralDelAlta(forma, "Te_Cve_Tipo_Equipo"); lugar >= 0) {
        conocida.reservas.append(lugar);
        conocida.renglon = conocida.permitida;
    }
    return conocida;
}

// Only what a screen asks for one by one.
std::optional<TablaConocida> Formas::Tabla(const QString &nombre) const
{
    const auto catalogo = [](const char *clave, const QStringList &otras = {}) {
        return TablaConocida{{clave}, QStringList{clave, "Es_Cve_Estado"} + otras, {}, {}, true, false};
    };
    static const QHash<QString, TablaConocida> tablas{
        {"tipo_equipo_parte",
         {{"Te_Cve_Tipo_Equipo", "Tep_ID"},
          {"Te_Cve_Tipo_Equipo", "Tep_ID", "Tep_Padre"},
          {},
          {{"Tep_Numero", "Tep_ID"}},
          false,
          false}},
        {"plan_mantenimiento",
         {{"Te_Cve_Tipo_Equipo", "Tep_ID", "Pm_ID"},
          {"Te_Cve_Tipo_Equipo", "Tep_ID", "Pm_ID"},
          {},
          {{"Pm_Numero", "Pm_ID"}},
          false,
          false}},
        {"plan_mantenimiento_detalle",
         {{"Te_Cve_Tipo_Equipo", "Tep_ID", "Pm_ID", "Pmd_ID"},
          {"Te_Cve_Tipo_Equipo", "Tep_ID", "Pm_ID", "Pmd_ID"},
          {},
          {{"Pmd_Numero", "Pmd_ID"}},
          false,
          false}},
        {"producto", catalogo("Pr_Cve_Producto", {"Pr_Clase"})},
        {"tipo_equipo", catalogo("Te_Cve_Tipo_Equipo")},
        {"tipo_gasto", catalogo("Tg_Cve_Tipo_Gasto")},
        {"tipo_servicio", catalogo("Ts_Cve_Tipo_Servicio")},
        {"prioridad_servicio", catalogo("Ps_Cve_Prioridad")},
        {"unidad", catalogo("Un_Cve_Unidad")},
        {"consulta", {{"Co_Nombre"}, {}, {"Co_Nombre"}, {}, true, false}},
        {"formato_clave", {{"Fc_Codigo"}, {}, {"Fc_Codigo"}, {}, true, true}},
    };
    const auto tabla = tablas.constFind(nombre.toLower());
    return tabla == tablas.constEnd() ? std::nullopt : std::optional(*tabla);
}

void Formas::RevisarIguales(const Conocida &conocida, const Sentencia &sentencia, const QString &texto) const
{
    const auto clave = [&](int lugar) { return SinBlancosAlFinal(sentencia.valores.value(lugar).toString()); };
    for (const int lugar : conocida.iguales)
        if (clave(lugar) != clave(conocida.iguales.constFirst()))
            throw ErrorEjecucion(errores::Datos, "La sentencia cambiaría el tipo de equipo de un registro", texto);
}

QString Formas::Ocupado(const QString &usuario, const QString &clave) const
{
    return QString("%1 está cambiando el plan del tipo de equipo %2 y no terminó en %3 segundos. Inténtelo de nuevo "
                   "más tarde.")
        .arg(usuario, clave, QString::number(SegundosDeEspera));
}

const Versiones &Formas::Leidas(const Conexion &conexion)
{
    return dynamic_cast<const Formas &>(conexion.Conocedor()).leidas;
}

OperacionEnCurso &Formas::EnCurso(Conexion &conexion)
{
    return dynamic_cast<Formas &>(conexion.Conocedor()).enCurso;
}

} // namespace qvx
