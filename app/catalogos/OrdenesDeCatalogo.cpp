#include "app/catalogos/OrdenesDeCatalogo.h"

#include "app/Acceso.h"
#include "app/Argumentos.h"
#include "app/InteraccionDeConsola.h"
#include "app/Reporte.h"
#include "app/catalogos/ExportacionDeCatalogo.h"
#include "app/catalogos/ImportacionDeCatalogo.h"
#include "app/reportes/TextoDeArchivo.h"
#include "data/Momento.h"
#include "session/Sesion.h"

namespace
{

constexpr int RenglonesDeMuestra = 5;

// Whether a row of letters was read rightly only a person can see.
[[noreturn]] void PreguntarCodificacion(const QByteArray &octetos)
{
    QStringList muestra;
    for (const QString &renglon : csv::Texto(octetos, csv::Codificacion::Windows1252).split(QLatin1Char('\n')))
        if (muestra.size() < RenglonesDeMuestra && csv::ConAcentos({0, {renglon}}))
            muestra.append("  " + renglon.trimmed());
    qvx::Rechazar(
        "El archivo no está en UTF-8. En Windows-1252 se lee así:\n" + muestra.join(QLatin1Char('\n'))
        + "\nSi está bien, dé también --codificacion windows-1252; si no, guarde la hoja de cálculo como CSV UTF-8.");
}

QString LeerTexto(const Argumentos &argumentos)
{
    const QByteArray octetos = csv::LeerArchivo(argumentos.archivo);
    const auto propuesta = csv::ProponerCodificacion(octetos);
    if (!argumentos.codificacion && propuesta != csv::Codificacion::Utf8)
        PreguntarCodificacion(octetos);
    return csv::Texto(octetos, argumentos.codificacion.value_or(propuesta));
}

HojaLeida LeerHoja(const Argumentos &argumentos)
{
    const QString texto = LeerTexto(argumentos);
    const auto delimitador = argumentos.delimitador ? argumentos.delimitador : csv::ProponerDelimitador(texto);
    if (!delimitador)
        qvx::Rechazar("No se sabe qué separa las celdas del archivo: dígalo con --delimitador.");
    const HojaLeida hoja = Corresponder(*argumentos.catalogo, csv::Partir(texto, *delimitador));
    if (!hoja.conTitulos || !hoja.correspondencia.contains(0)) {
        QStringList titulos;
        for (const ColumnaDeImportacion &columna : ColumnasDeImportacion(*argumentos.catalogo))
            titulos.append(columna.titulo);
        qvx::Rechazar(
            "La primera fila del archivo no dice cuál es la columna de la clave. Se esperan estos títulos, los que "
            "haya: "
            + titulos.join(", ") + ".");
    }
    return hoja;
}

csv::Decimal LeerDecimal(const Argumentos &argumentos, const HojaLeida &hoja)
{
    if (argumentos.decimal)
        return *argumentos.decimal;
    const csv::Cifras cifras = CifrasDe(*argumentos.catalogo, hoja);
    if (!cifras.decimal)
        qvx::Rechazar("No se sabe si los números del archivo, como " + cifras.dudoso
                      + ", llevan decimales o miles: dígalo con --decimal punto o --decimal coma.");
    return *cifras.decimal;
}

QString DeDonde(const qvx::TablaDeCatalogo &tabla, const HojaLeida &hoja)
{
    const auto columnas = ColumnasDeImportacion(tabla);
    QStringList partes;
    for (auto i = hoja.correspondencia.begin(); i != hoja.correspondencia.end(); ++i)
        partes.append(columnas.at(i.key()).titulo + " de «" + hoja.titulos.at(i.value()).simplified() + "»");
    return tabla.titulo + ": " + partes.join(", ") + ".";
}

void Contar(const ImportacionDeCatalogo &importacion)
{
    for (const FilaImportada &fila : importacion.filas) {
        const QString renglon = QString("Renglón %1").arg(fila.renglon);
        if (!fila.aviso.isEmpty())
            Escribir(stdout, renglon + ", clave " + fila.clave + ": " + fila.aviso);
        for (const FallaDeImportacion &falla : fila.fallas)
            Escribir(stdout, (falla.columna.isEmpty() ? renglon : renglon + ", " + falla.columna) + " «"
                                 + falla.valor.simplified() + "»: " + falla.motivo);
    }
    Escribir(stdout, importacion.Cuentas());
}

std::unique_ptr<qvx::Sesion> Entrar(const Argumentos &argumentos)
{
    return IniciarSesion(argumentos, AbrirBase(argumentos),
                         std::make_unique<InteraccionDeConsola>(argumentos.archivo, argumentos.si));
}

} // namespace

int ImportarCatalogo(const Argumentos &argumentos)
{
    const HojaLeida hoja = LeerHoja(argumentos);
    const csv::Decimal decimal = LeerDecimal(argumentos, hoja);
    if (!argumentos.si)
        ExigirBase(argumentos);
    const auto sesion = Entrar(argumentos);
    const qvx::Momento momento(sesion->Conexion());
    const auto situacion = qvx::LeerSituacion(sesion->Conexion(), *argumentos.catalogo);
    const auto importacion = JuzgarImportacion(*argumentos.catalogo, situacion, hoja, decimal);
    Escribir(stdout, DeDonde(*argumentos.catalogo, hoja));
    Contar(importacion);
    if (importacion.Cuantas(FilaImportada::Clase::Erronea) > 0) {
        Escribir(stdout, "No se escribió nada: corrija los errores y repita la orden.");
        return salida::Fallido;
    }
    const auto cambios = importacion.Cambios();
    if (argumentos.si && !cambios.isEmpty())
        qvx::EscribirCambios(sesion->Conexion(), sesion->Firmante(), *argumentos.catalogo, cambios);
    Escribir(stdout, cambios.isEmpty() ? "No hay nada que cambiar."
                     : argumentos.si   ? "Quedó escrito."
                                       : "No se escribió nada: dé también --si para escribirlo.");
    return salida::Hecho;
}

int ExportarCatalogo(const Argumentos &argumentos)
{
    ExigirBase(argumentos);
    const auto sesion = Entrar(argumentos);
    const qvx::Momento momento(sesion->Conexion());
    ExportarCatalogo(
        *argumentos.catalogo, qvx::LeerRegistros(sesion->Conexion(), *argumentos.catalogo), argumentos.archivo,
        {argumentos.delimitador.value_or(QLatin1Char(';')), argumentos.decimal.value_or(csv::Decimal::Punto)});
    return salida::Hecho;
}
