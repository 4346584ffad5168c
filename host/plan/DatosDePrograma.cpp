#include "plan/DatosDePrograma.h"

#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "data/Transaccion.h"
#include "plan/Catalogos.h"

#include <algorithm>

namespace qvx
{

namespace
{

constexpr int MaximoDeEquipos = 100000;
constexpr double MaximoDeUso = 1000000; // a day
constexpr double HorasDelDia = 24;
constexpr double MaximoDeLectura = 1e12;
constexpr double MaximoDeHoras = 10000000; // of a month
constexpr int PrimerAno = 1900;
constexpr int UltimoAno = 9000;
constexpr qsizetype MaximoDeFestivos = 5000;
const QStringList Inicios{"HECHO", "ARRANQUE", "LECTURA"}; // as the row has them
const QStringList Descansos{"", "DO", "SADO"};
const QString DelTipo = " WHERE Te_Cve_Tipo_Equipo = ?";
const QStringList Listas{"Programa_Uso", "Programa_Festivo", "Programa_Incluido", "Programa_Capacidad"};

bool EsFecha(const QDate &fecha)
{
    return fecha.isValid() && fecha.year() >= PrimerAno && fecha.year() <= UltimoAno;
}

// Negated, so that what is no number is outside too.
bool Fuera(double numero, double maximo)
{
    return !(numero >= 0 && numero <= maximo);
}

QString ObjetarUsos(const QMap<QString, UsoDeUnidad> &usos)
{
    for (auto uso = usos.cbegin(); uso != usos.cend(); ++uso) {
        const bool horas = uso.key() == "HR" || uso.key() == "HRS";
        const double maximo = horas ? HorasDelDia : MaximoDeUso;
        if (uso.key().trimmed().isEmpty())
            return "Un uso por día no dice su unidad: escriba, por ejemplo, HR.";
        if (Fuera(uso->porDia, maximo))
            return "El uso por día en " + uso.key() + " es " + NumeroATexto(uso->porDia) + " y va de 0 a "
                   + NumeroATexto(maximo) + (horas ? ": un día no tiene más horas." : ".");
        if (Fuera(uso->acumulado, MaximoDeLectura))
            return "La lectura acumulada en " + uso.key() + " es " + NumeroATexto(uso->acumulado)
                   + " y va de 0 a 1,000,000,000,000.";
    }
    return {};
}

QString ObjetarIncluidos(const QList<QPair<QString, QString>> &incluidos)
{
    for (const auto &[incluido, en] : incluidos)
        if (incluido == en || incluidos.contains(qMakePair(en, incluido)))
            return "El servicio " + incluido + " no puede estar incluido en el " + en
                   + " y al revés: quite una de las dos marcas.";
    return {};
}

// Whoever kept others meanwhile is told by name.
void RevisarSello(Conexion &conexion, const DatosDePrograma &datos)
{
    const auto fila = conexion.Execute(
        "SELECT Version AS Sello, Oper_Ult_Modif, Fecha_Ult_Modif FROM Programa_Tipo" + DelTipo, {datos.tipoEquipo});
    const QString sello = fila.Eof() ? QString() : fila["Sello"];
    if (sello == datos.sello)
        return;
    if (fila.Eof())
        Rechazar("Los datos del programa del tipo de equipo " + datos.tipoEquipo
                 + " ya no existen: otra persona eliminó el tipo. No se guardó nada.");
    Rechazar("Los datos del programa del tipo de equipo " + datos.tipoEquipo + ": " + fila["Oper_Ult_Modif"]
             + " los cambió el " + fila["Fecha_Ult_Modif"]
             + ", después de que usted los leyó. No se guardó nada: actualice con F5 y vuelva a cambiarlos.");
}

void EscribirFila(Conexion &conexion, const Firmante &firmante, const DatosDePrograma &datos)
{
    const QString fecha = firmante.fecha();
    const QVariantList valores{datos.diaCero.toString(Qt::ISODate),
                               datos.diasSemana,
                               datos.equipos,
                               Inicios.at(static_cast<int>(datos.inicio)),
                               Descansos.at(static_cast<int>(datos.descanso)),
                               firmante.operador,
                               fecha};
    if (datos.sello.isEmpty())
        conexion.Execute("INSERT INTO Programa_Tipo (Pt_Dia_Cero, Pt_Dias_Semana, Pt_Equipos, Pt_Inicio, Pt_Descanso, "
                         "Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Alta, Fecha_Alta, Te_Cve_Tipo_Equipo) VALUES (?, ?, ?, "
                         "?, ?, ?, ?, ?, ?, ?)",
                         valores + QVariantList{firmante.operador, fecha, datos.tipoEquipo});
    else
        conexion.Execute("UPDATE Programa_Tipo SET Pt_Dia_Cero = ?, Pt_Dias_Semana = ?, Pt_Equipos = ?, Pt_Inicio = ?, "
                         "Pt_Descanso = ?, Oper_Ult_Modif = ?, Fecha_Ult_Modif = ?"
                             + DelTipo,
                         valores + QVariantList{datos.tipoEquipo});
}

void EscribirListas(Conexion &conexion, const DatosDePrograma &datos)
{
    for (const QString &lista : Listas)
        conexion.Execute("DELETE FROM " + lista + DelTipo, {datos.tipoEquipo});
    for (auto uso = datos.usos.cbegin(); uso != datos.usos.cend(); ++uso)
        conexion.Execute(
            "INSERT INTO Programa_Uso (Te_Cve_Tipo_Equipo, Pu_Unidad, Pu_Uso, Pu_Acumulado) VALUES (?, ?, ?, ?)",
            {datos.tipoEquipo, uso.key(), uso->porDia, uso->acumulado});
    for (const QDate &festivo : datos.festivos)
        conexion.Execute("INSERT INTO Programa_Festivo (Te_Cve_Tipo_Equipo, Pf_Fecha) VALUES (?, ?)",
                         {datos.tipoEquipo, festivo.toString(Qt::ISODate)});
    for (const auto &[incluido, en] : datos.incluidos)
        conexion.Execute("INSERT INTO Programa_Incluido (Te_Cve_Tipo_Equipo, Pi_Incluido, Pi_En) VALUES (?, ?, ?)",
                         {datos.tipoEquipo, incluido, en});
    for (auto mes = datos.capacidad.cbegin(); mes != datos.capacidad.cend(); ++mes)
        conexion.Execute("INSERT INTO Programa_Capacidad (Te_Cve_Tipo_Equipo, Pc_Mes, Pc_Horas) VALUES (?, ?, ?)",
                         {datos.tipoEquipo, mes.key(), mes.value()});
}

void LeerListas(Conexion &conexion, DatosDePrograma &datos)
{
    for (auto filas =
             conexion.Execute("SELECT Pu_Unidad, Pu_Uso, Pu_Acumulado FROM Programa_Uso" + DelTipo, {datos.tipoEquipo});
         !filas.Eof(); filas.MoveNext())
        datos.usos.insert(SinBlancosAlFinal(filas.Texto(0)), {filas.Numero(1), filas.Numero(2)});
    for (auto filas = conexion.Execute("SELECT Pf_Fecha FROM Programa_Festivo" + DelTipo + " ORDER BY Pf_Fecha",
                                       {datos.tipoEquipo});
         !filas.Eof(); filas.MoveNext())
        datos.festivos.append(QDate::fromString(filas.Texto(0), Qt::ISODate));
    for (auto filas = conexion.Execute("SELECT Pi_Incluido, Pi_En FROM Programa_Incluido" + DelTipo
                                           + " ORDER BY Pi_Incluido, Pi_En",
                                       {datos.tipoEquipo});
         !filas.Eof(); filas.MoveNext())
        datos.incluidos.append({SinBlancosAlFinal(filas.Texto(0)), SinBlancosAlFinal(filas.Texto(1))});
    for (auto filas = conexion.Execute("SELECT Pc_Mes, Pc_Horas FROM Programa_Capacidad" + DelTipo, {datos.tipoEquipo});
         !filas.Eof(); filas.MoveNext())
        datos.capacidad.insert(static_cast<int>(filas.Numero(0)), filas.Numero(1));
}

} // namespace

QString Objetar(const DatosDePrograma &datos)
{
    if (!EsFecha(datos.diaCero))
        return "El día cero no es una fecha de calendario: escríbalo como 2026-12-31.";
    if (!(datos.diasSemana > 0 && datos.diasSemana <= 7))
        return "Los días de uso por semana son " + NumeroATexto(datos.diasSemana) + " y van de más de 0 a 7.";
    if (datos.equipos < 1 || datos.equipos > MaximoDeEquipos)
        return QString("El número de equipos es %1 y va de 1 a 100,000.").arg(datos.equipos);
    if (const QString objecion = ObjetarUsos(datos.usos); !objecion.isEmpty())
        return objecion;
    if (datos.festivos.size() > MaximoDeFestivos)
        return "La lista de días festivos pasa de 5,000 fechas.";
    if (!std::all_of(datos.festivos.begin(), datos.festivos.end(), &EsFecha))
        return "Un día festivo no es una fecha de calendario: escríbalos como 2026-12-25.";
    for (auto mes = datos.capacidad.cbegin(); mes != datos.capacidad.cend(); ++mes)
        if (Fuera(mes.value(), MaximoDeHoras))
            return "La capacidad de un mes es " + NumeroATexto(mes.value()) + " HR y va de 0 a 10,000,000.";
    return ObjetarIncluidos(datos.incluidos);
}

std::optional<DatosDePrograma> LeerDatosDePrograma(Conexion &conexion, const QString &tipoEquipo)
{
    const auto fila = conexion.Execute("SELECT Pt_Dia_Cero, Pt_Dias_Semana, Pt_Equipos, Pt_Inicio, Pt_Descanso, "
                                       "Version AS Sello FROM Programa_Tipo"
                                           + DelTipo,
                                       {tipoEquipo});
    if (fila.Eof())
        return std::nullopt;
    DatosDePrograma datos;
    datos.tipoEquipo = SinBlancosAlFinal(tipoEquipo);
    datos.diaCero = QDate::fromString(fila.Texto(0), Qt::ISODate);
    datos.diasSemana = fila.Numero(1);
    datos.equipos = static_cast<int>(fila.Numero(2));
    datos.inicio = static_cast<DatosDePrograma::Inicio>(qMax(0, Inicios.indexOf(fila.Texto(3))));
    datos.descanso = static_cast<DatosDePrograma::Descanso>(qMax(0, Descansos.indexOf(fila.Texto(4))));
    datos.sello = fila.Texto(5);
    LeerListas(conexion, datos);
    return datos;
}

void GuardarDatosDePrograma(Conexion &conexion, const Firmante &firmante, const DatosDePrograma &datos)
{
    if (const QString objecion = Objetar(datos); !objecion.isEmpty())
        Rechazar(objecion + " No se guardó nada.");
    Transaccion transaccion(conexion);
    RevisarSello(conexion, datos); // the first statement holds the plan
    if (DescripcionDeCatalogo(conexion, "TIPO_EQUIPO", datos.tipoEquipo).isEmpty())
        Rechazar("El tipo de equipo " + datos.tipoEquipo + " no existe o está dado de baja. No se guardó nada.");
    const Firmante ahora{firmante.operador, [fecha = firmante.fecha()] { return fecha; }};
    EscribirFila(conexion, ahora, datos);
    EscribirListas(conexion, datos);
    AnotarCambio(conexion, ahora, "Programa_Tipo", datos.tipoEquipo);
    transaccion.Confirmar();
}

} // namespace qvx
