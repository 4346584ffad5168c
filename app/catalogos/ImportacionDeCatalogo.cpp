#include "app/catalogos/ImportacionDeCatalogo.h"

#include "app/catalogos/Nombres.h"
#include "data/Texto.h"
#include "plan/Catalogos.h"

#include <QRegularExpression>
#include <algorithm>

namespace
{

using Clase = FilaImportada::Clase;
using ClaseDeColumna = qvx::ColumnaDeCatalogo::Clase;

// "U. M.", "um" and "UM" are one.
QString Esencia(const QString &titulo)
{
    QString letras = qvx::Plegado(titulo);
    letras.removeIf([](QChar letra) { return !letra.isLetterOrNumber(); });
    return letras;
}

// The codes by the words that stand for them in spreadsheets.
QHash<QString, QString> Codigos(const QList<QPair<QString, QString>> &palabras)
{
    QHash<QString, QString> codigos;
    for (const auto &[codigo, palabra] : palabras) {
        codigos.insert(Esencia(codigo), codigo);
        codigos.insert(Esencia(palabra), codigo);
    }
    return codigos;
}

QHash<QString, QString> CodigosDeClase()
{
    return Codigos(nombres::ClasesDeProducto()
                   + QList<QPair<QString, QString>>{{"RE", "Refacciones"}, {"HE", "Herramientas"}});
}

QHash<QString, QString> CodigosDeEstado()
{
    QList<QPair<QString, QString>> palabras;
    for (const QString &codigo : {qvx::estado::Activo, qvx::estado::Baja, qvx::estado::Cancelado})
        palabras.append({codigo, nombres::Estado(codigo)});
    for (const QString palabra : {"Baja", "Dada de baja", "Inactivo", "Inactiva"})
        palabras.append({qvx::estado::Baja, palabra});
    return Codigos(palabras << std::pair{qvx::estado::Activo, QString("Activa")}
                            << std::pair{qvx::estado::Cancelado, QString("Cancelada")});
}

// Where a heading stands that none of the columns has taken yet, -1 for nowhere.
int Buscar(const QStringList &esencias, const QString &titulo, const QMap<int, int> &tomadas)
{
    const QString buscada = Esencia(titulo);
    for (int i = 0; i < esencias.size(); ++i)
        if (!buscada.isEmpty() && esencias.at(i) == buscada && !tomadas.values().contains(i))
            return i;
    return -1;
}

// The surer names of all columns come before the less sure of any.
QMap<int, int> PorTitulos(const QList<ColumnaDeImportacion> &columnas, const QStringList &titulos,
                          const QMap<QString, QString> &recordados)
{
    QStringList esencias;
    for (const QString &titulo : titulos)
        esencias.append(Esencia(titulo));
    QMap<int, int> halladas;
    const auto tomar = [&](int columna, const QString &titulo) {
        if (const int lugar = halladas.contains(columna) ? -1 : Buscar(esencias, titulo, halladas); lugar >= 0)
            halladas.insert(columna, lugar);
    };
    for (int i = 0; i < columnas.size(); ++i)
        tomar(i, recordados.value(columnas.at(i).nombre));
    for (int i = 0; i < columnas.size(); ++i)
        for (const QString &titulo : {columnas.at(i).titulo, columnas.at(i).nombre})
            tomar(i, titulo);
    for (int i = 0; i < columnas.size(); ++i)
        for (const QString &titulo : columnas.at(i).sinonimos)
            tomar(i, titulo);
    return halladas;
}

// A spreadsheet shows a long key like this, and loses its digits.
bool EstaAbreviada(const QString &clave)
{
    static const QRegularExpression forma("^[0-9]+([.,][0-9]+)?[eE][+-][0-9]+$");
    return forma.match(clave).hasMatch();
}

class Juez
{
public:
    Juez(const qvx::TablaDeCatalogo &tabla_, const qvx::SituacionDeCatalogo &situacion_, const HojaLeida &hoja_,
         csv::Decimal decimal_)
        : tabla(tabla_)
        , situacion(situacion_)
        , hoja(hoja_)
        , decimal(decimal_)
        , columnas(ColumnasDeImportacion(tabla_))
        , cifras(CifrasDe(tabla_, hoja_))
    {
    }

    FilaImportada Juzgar(const csv::Fila &leida) const
    {
        FilaImportada fila;
        fila.renglon = leida.renglon;
        fila.conAcentos = csv::ConAcentos(leida);
        for (int i = 0; i < columnas.size(); ++i)
            fila.escritos.append(hoja.correspondencia.contains(i)
                                     ? csv::SinResguardo(leida.celdas.value(hoja.correspondencia.value(i)))
                                     : QString());
        RevisarAncho(fila, leida);
        fila.clave = Clave(fila);
        if (fila.clave.isEmpty())
            return fila;
        const qvx::CambioDeCatalogo cambio = Cambio(fila);
        if (cambio.antes != cambio.despues)
            if (const auto objecion = qvx::Objetar(tabla, situacion, cambio))
                Objetar(fila, Lugar(objecion->columna), objecion->motivo);
        if (!fila.fallas.isEmpty())
            return fila;
        fila.cambio = cambio;
        fila.clase = !cambio.antes ? Clase::Nueva : cambio.antes == cambio.despues ? Clase::Igual : Clase::Cambiada;
        if (fila.clase == Clase::Cambiada && cambio.antes->estado == cambio.despues->estado
            && cambio.despues->estado != qvx::estado::Activo)
            fila.aviso = "Está dado de baja.";
        return fila;
    }

    void Fallar(FilaImportada &fila, int columna, const QString &motivo) const
    {
        fila.fallas.append({fila.renglon, columnas.at(columna).titulo, fila.escritos.at(columna), motivo});
    }

private:
    // Among columnas, of what is objected to.
    int Lugar(int objetada) const
    {
        return objetada == qvx::ObjecionDeEstado ? static_cast<int>(columnas.size()) - 1 : objetada + 1;
    }

    // Beside what is known to be wrong there.
    void Objetar(FilaImportada &fila, int columna, const QString &motivo) const
    {
        if (std::none_of(fila.fallas.begin(), fila.fallas.end(),
                         [&](const FallaDeImportacion &falla) { return falla.columna == columnas.at(columna).titulo; }))
            Fallar(fila, columna, motivo);
    }

    // A delimiter inside a cell that has no quotes moves all that follows to the right.
    void RevisarAncho(FilaImportada &fila, const csv::Fila &leida) const
    {
        const auto sobrantes = leida.celdas.mid(hoja.titulos.size());
        if (std::all_of(sobrantes.begin(), sobrantes.end(), [](const QString &celda) { return celda.isEmpty(); }))
            return;
        fila.fallas.append({fila.renglon, "", sobrantes.join(QLatin1Char(' ')),
                            QString("La fila tiene %1 celdas y se esperaban %2: una celda que lleva el delimitador va "
                                    "entre comillas.")
                                .arg(leida.celdas.size())
                                .arg(hoja.titulos.size())});
    }

    // "" when it is wrong. A key that is there as it is written stays so, mask or not.
    QString Clave(FilaImportada &fila) const
    {
        const QString escrita = qvx::SinBlancosAlFinal(fila.escritos.constFirst());
        if (!escrita.isEmpty() && situacion.registros.contains(escrita))
            return escrita;
        if (escrita.trimmed().isEmpty())
            Fallar(fila, 0, "Falta la clave.");
        else if (EstaAbreviada(escrita.trimmed()))
            Fallar(fila, 0,
                   "La hoja de cálculo abrevió esta clave: dé a la columna formato de texto y escríbala entera.");
        else
            return qvx::ClaveConFormato(escrita, situacion.mascara);
        return {};
    }

    qvx::CambioDeCatalogo Cambio(FilaImportada &fila) const
    {
        const auto hallado = situacion.registros.constFind(fila.clave);
        const bool nuevo = hallado == situacion.registros.constEnd();
        qvx::CambioDeCatalogo cambio;
        if (!nuevo)
            cambio.antes = *hallado;
        cambio.despues = nuevo ? qvx::RegistroDeCatalogo{fila.clave, {}, qvx::estado::Activo} : *hallado;
        for (int i = 0; i < tabla.columnas.size(); ++i) {
            const qvx::ColumnaDeCatalogo &columna = tabla.columnas.at(i);
            if (nuevo)
                cambio.despues->valores.append(columna.clase == ClaseDeColumna::Numero ? "0" : "");
            QString &valor = cambio.despues->valores[i];
            if (const QString escrito = fila.escritos.at(i + 1).trimmed(); !escrito.isEmpty())
                valor = valor.trimmed() == escrito ? valor : Valor(fila, i, escrito, valor);
            else if (nuevo && valor.isEmpty())
                Fallar(fila, i + 1, "Falta la " + columna.titulo.toLower() + ".");
        }
        if (const QString escrito = fila.escritos.constLast().trimmed(); !escrito.isEmpty())
            cambio.despues->estado = Estado(fila, escrito, cambio.despues->estado);
        return cambio;
    }

    // What a cell says; presente where it says nothing that can be understood.
    QString Valor(FilaImportada &fila, int columna, const QString &escrito, const QString &presente) const
    {
        switch (tabla.columnas.at(columna).clase) {
        case ClaseDeColumna::Numero: {
            const csv::NumeroLeido leido = csv::LeerNumero(escrito, decimal, cifras);
            if (!leido.numero)
                Fallar(fila, columna + 1, leido.motivo);
            return leido.numero ? qvx::NumeroATexto(*leido.numero) : presente;
        }
        case ClaseDeColumna::ClaseDeProducto:
            return clases.value(Esencia(escrito), escrito);
        case ClaseDeColumna::Unidad:
            return !situacion.unidades.contains(escrito) && situacion.unidades.contains(escrito.toUpper())
                       ? escrito.toUpper()
                       : escrito;
        default:
            return escrito;
        }
    }

    QString Estado(FilaImportada &fila, const QString &escrito, const QString &presente) const
    {
        const auto hallado = estados.constFind(Esencia(escrito));
        if (hallado != estados.constEnd())
            return *hallado;
        Fallar(fila, static_cast<int>(columnas.size()) - 1, "Se esperaba Activo o Dado de baja.");
        return presente;
    }

    const qvx::TablaDeCatalogo &tabla;
    const qvx::SituacionDeCatalogo &situacion;
    const HojaLeida &hoja;
    csv::Decimal decimal;
    QList<ColumnaDeImportacion> columnas;
    csv::Cifras cifras;
    QHash<QString, QString> estados = CodigosDeEstado();
    QHash<QString, QString> clases = CodigosDeClase();
};

// Rows of one key: equal ones are one, unequal ones are all wrong.
void JuzgarRepetidas(const Juez &juez, QList<FilaImportada> &filas)
{
    QHash<QString, QList<qsizetype>> porClave;
    for (qsizetype i = 0; i < filas.size(); ++i)
        if (!filas.at(i).clave.isEmpty())
            porClave[filas.at(i).clave].append(i);
    for (const QList<qsizetype> &lugares : std::as_const(porClave)) {
        const FilaImportada primera = filas.at(lugares.constFirst());
        const bool iguales = std::all_of(lugares.begin(), lugares.end(), [&](qsizetype i) {
            return filas.at(i).clase != Clase::Erronea && filas.at(i).cambio.despues == primera.cambio.despues;
        });
        for (const qsizetype i : lugares) {
            const int otro = filas.at(lugares.at(i == lugares.constFirst() ? lugares.size() - 1 : 0)).renglon;
            if (lugares.size() == 1 || (iguales && i == lugares.constFirst()))
                continue;
            if (iguales) {
                filas[i].clase = Clase::Repetida;
                filas[i].aviso = QString("Repite el renglón %1.").arg(otro);
            } else {
                filas[i].clase = Clase::Erronea;
                juez.Fallar(filas[i], 0,
                            QString("La clave %1 está también en el renglón %2, con otros datos: deje uno de los dos.")
                                .arg(primera.clave)
                                .arg(otro));
            }
        }
    }
}

} // namespace

QList<ColumnaDeImportacion> ColumnasDeImportacion(const qvx::TablaDeCatalogo &tabla)
{
    QList<ColumnaDeImportacion> columnas{{tabla.columnaClave, "Clave", tabla.sinonimosDeClave}};
    for (const qvx::ColumnaDeCatalogo &columna : tabla.columnas)
        columnas.append({columna.nombre, columna.titulo, columna.sinonimos});
    columnas.append({"Es_Cve_Estado", "Estado", {"Situación", "Estatus", "Status"}});
    return columnas;
}

QStringList EnPalabras(const qvx::TablaDeCatalogo &tabla, const qvx::RegistroDeCatalogo &registro)
{
    QStringList palabras{registro.clave};
    for (int i = 0; i < tabla.columnas.size(); ++i)
        palabras.append(tabla.columnas.at(i).clase == ClaseDeColumna::ClaseDeProducto
                            ? nombres::ClaseDeProducto(registro.valores.at(i))
                            : registro.valores.at(i));
    return palabras << nombres::Estado(registro.estado);
}

HojaLeida Corresponder(const qvx::TablaDeCatalogo &tabla, const QList<csv::Fila> &filas,
                       const QMap<QString, QString> &recordados, std::optional<bool> conTitulos)
{
    const QList<ColumnaDeImportacion> columnas = ColumnasDeImportacion(tabla);
    HojaLeida hoja{false, filas.value(0).celdas, filas, {}};
    hoja.correspondencia = PorTitulos(columnas, hoja.titulos, recordados);
    hoja.conTitulos = conTitulos.value_or(!hoja.correspondencia.isEmpty());
    if (hoja.conTitulos) {
        hoja.filas.remove(0, qMin<qsizetype>(1, filas.size()));
        return hoja;
    }
    hoja.correspondencia.clear();
    for (int i = 0; i < hoja.titulos.size(); ++i) {
        hoja.titulos[i] = QString("Columna %1").arg(i + 1);
        if (i < columnas.size())
            hoja.correspondencia.insert(i, i);
    }
    return hoja;
}

QStringList TitulosSinUsar(const HojaLeida &hoja)
{
    QStringList titulos;
    const QList<int> usados = hoja.correspondencia.values();
    for (int columna = 0; hoja.conTitulos && columna < hoja.titulos.size(); ++columna)
        if (!usados.contains(columna) && !hoja.titulos.at(columna).trimmed().isEmpty())
            titulos.append(hoja.titulos.at(columna));
    return titulos;
}

csv::Cifras CifrasDe(const qvx::TablaDeCatalogo &tabla, const HojaLeida &hoja)
{
    QStringList numeros;
    for (int i = 0; i < tabla.columnas.size(); ++i)
        if (tabla.columnas.at(i).clase == ClaseDeColumna::Numero && hoja.correspondencia.contains(i + 1))
            for (const csv::Fila &fila : hoja.filas)
                numeros.append(fila.celdas.value(hoja.correspondencia.value(i + 1)));
    return csv::MirarCifras(numeros);
}

QString NombreDe(FilaImportada::Clase clase)
{
    static const QStringList nombres{"nueva", "cambiada", "igual", "repetida", "con error"};
    return nombres.at(static_cast<int>(clase));
}

int ImportacionDeCatalogo::Cuantas(FilaImportada::Clase clase) const
{
    return static_cast<int>(
        std::count_if(filas.begin(), filas.end(), [&](const FilaImportada &fila) { return fila.clase == clase; }));
}

QString ImportacionDeCatalogo::Cuentas() const
{
    return QString("Nuevas: %1. Cambiadas: %2. Iguales: %3. Repetidas: %4. Con error: %5.")
        .arg(Cuantas(Clase::Nueva))
        .arg(Cuantas(Clase::Cambiada))
        .arg(Cuantas(Clase::Igual))
        .arg(Cuantas(Clase::Repetida))
        .arg(Cuantas(Clase::Erronea));
}

QList<qvx::CambioDeCatalogo> ImportacionDeCatalogo::Cambios() const
{
    QList<qvx::CambioDeCatalogo> cambios;
    for (const FilaImportada &fila : filas)
        if (fila.clase == Clase::Nueva || fila.clase == Clase::Cambiada)
            cambios.append(fila.cambio);
    return cambios;
}

Hoja ImportacionDeCatalogo::Errores() const
{
    Hoja hoja{"Errores", {{"Renglón", ColumnaDeHoja::Clase::Numero}, {"Columna"}, {"Valor"}, {"Qué se esperaba"}}, {}};
    for (const FilaImportada &fila : filas)
        for (const FallaDeImportacion &falla : fila.fallas)
            hoja.filas.append({falla.renglon, falla.columna, falla.valor, falla.motivo});
    return hoja;
}

ImportacionDeCatalogo JuzgarImportacion(const qvx::TablaDeCatalogo &tabla, const qvx::SituacionDeCatalogo &situacion,
                                        const HojaLeida &hoja, csv::Decimal decimal)
{
    const Juez juez(tabla, situacion, hoja, decimal);
    ImportacionDeCatalogo importacion;
    importacion.filas.reserve(hoja.filas.size());
    for (const csv::Fila &fila : hoja.filas)
        importacion.filas.append(juez.Juzgar(fila));
    JuzgarRepetidas(juez, importacion.filas);
    return importacion;
}
