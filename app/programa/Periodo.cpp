#include "app/programa/Periodo.h"

#include "data/Texto.h"

namespace programa
{

namespace
{

constexpr int Decimales = 2; // of what a person reads

QString Dias(const Fraccion &dias)
{
    const QString texto = dias.Texto(Decimales);
    return texto + (texto == "1" ? " día" : " días");
}

QString Lectura(const Frecuencia &frecuencia)
{
    return Fraccion::De(frecuencia.lectura).Texto(Decimales) + " " + frecuencia.unidad;
}

// "a 8 HR/día", and on how many days of a week where it is not every one.
QString Ritmo(const Frecuencia &frecuencia, const qvx::DatosDePrograma &datos)
{
    const QString uso = Fraccion::De(datos.usos.value(frecuencia.unidad).porDia).Texto(Decimales);
    const QString semana = datos.diasSemana == 7 ? QString()
                                                 : ", " + Fraccion::De(datos.diasSemana).Texto(Decimales)
                                                       + (datos.diasSemana == 1 ? " día" : " días") + " por semana,";
    return "a " + uso + " " + frecuencia.unidad + "/día" + semana;
}

// Use a day over the whole week, 0 where none is given.
Fraccion UsoEfectivo(const Frecuencia &frecuencia, const qvx::DatosDePrograma &datos)
{
    return Fraccion::De(datos.usos.value(frecuencia.unidad).porDia) * Fraccion::De(datos.diasSemana) / Fraccion(7);
}

Periodo SinLectura(const Frecuencia &frecuencia)
{
    Periodo periodo;
    if (frecuencia.dias > 0)
        periodo.dias = Fraccion::De(frecuencia.dias);
    if (frecuencia.lectura > 0)
        periodo.motivo = "sin uso por día en " + (frecuencia.unidad.isEmpty() ? "su unidad" : frecuencia.unidad) + ", "
                         + Lectura(frecuencia).trimmed() + " no cuenta";
    if (periodo.dias)
        periodo.motivo = "cada " + Dias(*periodo.dias) + (periodo.motivo.isEmpty() ? "" : "; " + periodo.motivo);
    else if (periodo.motivo.isEmpty())
        periodo.motivo = "sin frecuencia: ni días ni lectura";
    return periodo;
}

} // namespace

Periodo CalcularPeriodo(const Frecuencia &frecuencia, const qvx::DatosDePrograma &datos)
{
    const Fraccion uso = UsoEfectivo(frecuencia, datos);
    const bool conDias = frecuencia.dias > 0;
    Periodo periodo;
    if (!(frecuencia.lectura > 0) || !uso.Positiva()) {
        periodo = SinLectura(frecuencia);
    } else {
        const Fraccion porLectura = Fraccion::De(frecuencia.lectura) / uso;
        const QString texto = "cada " + Lectura(frecuencia) + " " + Ritmo(frecuencia, datos) + " = " + Dias(porLectura);
        if (!conDias) {
            periodo = {porLectura, texto, true, {}};
        } else {
            const Fraccion dias = Fraccion::De(frecuencia.dias);
            if (porLectura < dias)
                periodo = {porLectura, texto + "; antes que " + Dias(dias), true, {}};
            else if (porLectura == dias)
                periodo = {dias, texto + ", igual que " + Dias(dias), true, {}};
            else
                periodo = {dias, "cada " + Dias(dias) + "; antes que " + texto.mid(5), false, {}};
        }
    }
    if (conDias && frecuencia.lectura > 0)
        periodo.umbral = Fraccion::De(frecuencia.lectura) * Fraccion(7)
                         / (Fraccion::De(frecuencia.dias) * Fraccion::De(datos.diasSemana));
    return periodo;
}

Fraccion PrimerDia(const Frecuencia &frecuencia, const Periodo &periodo, const qvx::DatosDePrograma &datos)
{
    using Inicio = qvx::DatosDePrograma::Inicio;
    if (datos.inicio == Inicio::Arranque)
        return {};
    const Fraccion uso = UsoEfectivo(frecuencia, datos);
    if (datos.inicio == Inicio::Hecho || !(frecuencia.lectura > 0) || !uso.Positiva())
        return *periodo.dias;
    const Fraccion lectura = Fraccion::De(frecuencia.lectura);
    const Fraccion falta = (lectura - Fraccion::De(datos.usos.value(frecuencia.unidad).acumulado).Resto(lectura)) / uso;
    return frecuencia.dias > 0 && Fraccion::De(frecuencia.dias) < falta ? Fraccion::De(frecuencia.dias) : falta;
}

} // namespace programa
