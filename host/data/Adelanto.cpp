#include "data/Adelanto.h"

#include "data/Texto.h"

#include <algorithm>
#include <utility>

namespace qvx
{

namespace
{

constexpr int RenglonesDePieza = 50000;
constexpr int RenglonesDeCatalogo = 20000;
constexpr std::size_t BytesDePieza = std::size_t{64} * 1024 * 1024;
constexpr std::size_t PiezasALaVez = 4;
// What a piece must have answered before the next one is worth its reading: asked for backwards, each would begin just
// before the last one.
constexpr int AciertosDePieza = 50;
// So many pieces that hold nothing, and no other is tried.
constexpr qsizetype ImposiblesDeEstante = 4;

bool SonTextos(const QVariantList &valores)
{
    return std::all_of(valores.begin(), valores.end(), [](const QVariant &valor) {
        return valor.typeId() == QMetaType::QString && !valor.toString().isNull();
    });
}

QString ComoSeCompara(const QString &texto, bool clave)
{
    return clave ? SinBlancosAlFinal(texto) : texto;
}

QString EstanteDe(const Familia &familia, const QVariantList &valores)
{
    QString estante = familia.forma;
    for (const int lugar : familia.fijos)
        estante += QChar::Null + SinBlancosAlFinal(valores.at(lugar).toString());
    return estante;
}

QString MiembroDe(const Familia &familia, const QVariantList &valores)
{
    QString miembro;
    for (const auto &[literal, clave] : familia.sueltos)
        miembro += ComoSeCompara(valores.at(literal).toString(), clave) + QChar::Null;
    return miembro;
}

QByteArray PrimeraDe(const Familia &familia, const QVariantList &valores)
{
    const auto &[literal, clave] = familia.sueltos.constFirst();
    return ComoSeCompara(valores.at(literal).toString(), clave).toUtf8();
}

std::size_t Peso(const QVariant &valor)
{
    return sizeof(QVariant)
           + (valor.typeId() == QMetaType::QString ? static_cast<std::size_t>(valor.toString().size()) * sizeof(QChar)
                                                   : 0);
}

} // namespace

std::optional<Recordset> Adelanto::Responder(const Familia &familia, const QVariantList &valores, const Lector &leer)
{
    if (!SonTextos(valores) || grandes.contains(familia.forma))
        return std::nullopt;
    const auto hallado = estantes.find(EstanteDe(familia, valores));
    if (hallado == estantes.end() && !familia.fija)
        return std::nullopt;
    Estante &estante = hallado == estantes.end() ? estantes[EstanteDe(familia, valores)] : *hallado;
    estante.tabla = familia.tabla;
    estante.fijo = familia.fija;
    if (auto respuesta = Buscar(estante, familia, valores))
        return respuesta;
    if (Conviene(estante, PrimeraDe(familia, valores)))
        Leer(estante, familia, valores, leer);
    return Buscar(estante, familia, valores);
}

void Adelanto::Anotar(const Familia &familia, const QVariantList &valores, const Recordset &respuesta)
{
    if (!SonTextos(valores) || grandes.contains(familia.forma))
        return;
    Estante &estante = estantes[EstanteDe(familia, valores)];
    estante.tabla = familia.tabla;
    estante.fijo = familia.fija;
    estante.sueltas.insert(MiembroDe(familia, valores), respuesta);
}

bool Adelanto::Conviene(const Estante &estante, const QByteArray &primera)
{
    return !estante.imposibles.contains(primera) && estante.imposibles.size() < ImposiblesDeEstante
           && (estante.piezas.size() < 2 || estante.aciertos >= AciertosDePieza);
}

std::optional<Recordset> Adelanto::Buscar(Estante &estante, const Familia &familia, const QVariantList &valores)
{
    const QString miembro = MiembroDe(familia, valores);
    if (const auto suelta = estante.sueltas.constFind(miembro); suelta != estante.sueltas.constEnd())
        return *suelta;
    const QByteArray primera = PrimeraDe(familia, valores);
    for (const Pieza &pieza : estante.piezas)
        if (pieza.desde <= primera && (!pieza.hasta || primera <= *pieza.hasta)) {
            ++estante.aciertos;
            return Trozo(pieza, miembro);
        }
    return std::nullopt;
}

Recordset Adelanto::Trozo(const Pieza &pieza, const QString &miembro)
{
    const auto [desde, hasta] = pieza.miembros.value(miembro);
    const auto todas = static_cast<std::ptrdiff_t>(pieza.filas.campos->size());
    std::vector<QVariant> valores;
    valores.reserve((hasta - desde) * static_cast<std::size_t>(pieza.campos->size()));
    for (auto fila = static_cast<std::ptrdiff_t>(desde); fila < static_cast<std::ptrdiff_t>(hasta); ++fila) {
        const auto primera = pieza.filas.valores->begin() + fila * todas;
        valores.insert(valores.end(), primera, primera + pieza.campos->size());
    }
    Recordset trozo;
    trozo.campos = pieza.campos;
    trozo.valores = std::make_shared<const std::vector<QVariant>>(std::move(valores));
    return trozo;
}

// Whole, or where it does not fit the piece that begins with this member.
void Adelanto::Leer(Estante &estante, const Familia &familia, const QVariantList &valores, const Lector &leer)
{
    const int cabida = familia.catalogo ? RenglonesDeCatalogo : RenglonesDePieza;
    const bool entera = estante.piezas.empty() && estante.imposibles.isEmpty();
    QVariantList dados;
    for (const int lugar : familia.fijos)
        dados.append(valores.at(lugar));
    if (!entera)
        dados.append(valores.at(familia.sueltos.constFirst().literal));
    const Recordset filas = leer(familia.Texto(cabida + 1, !entera), dados);
    const bool cortada =
        filas.valores->size() > static_cast<std::size_t>(cabida) * static_cast<std::size_t>(filas.Columnas());
    if (familia.catalogo && cortada) {
        grandes.insert(familia.forma);
        return;
    }
    auto pieza = Acomodar(filas, familia, cortada);
    if (!pieza) {
        estante.imposibles.insert(PrimeraDe(familia, valores));
        return;
    }
    if (!entera)
        pieza->desde = PrimeraDe(familia, valores);
    if (estante.piezas.size() == PiezasALaVez)
        estante.piezas.erase(estante.piezas.begin());
    estante.piezas.push_back(*std::move(pieza));
    estante.aciertos = 0;
    if (!Buscar(estante, familia, valores)) // farther on than what was read of the whole
        Leer(estante, familia, valores, leer);
}

// Nothing when it cannot tell how the engine would compare, or when not even one value of the first column is complete.
std::optional<Adelanto::Pieza> Adelanto::Acomodar(const Recordset &filas, const Familia &familia, bool cortada)
{
    Pieza pieza;
    pieza.filas = filas;
    const int columnas = filas.Columnas();
    const int primera = columnas - static_cast<int>(familia.sueltos.size());
    pieza.campos = std::make_shared<const QStringList>(filas.campos->mid(0, primera));
    std::size_t peso = 0;
    std::size_t completas = 0; // rows before the present value of the first column
    std::optional<QByteArray> anterior;
    std::optional<QByteArray> ultimaEntera;
    std::size_t fila = 0;
    for (Recordset una = filas; !una.Eof() && peso <= BytesDePieza; una.MoveNext(), ++fila) {
        QString miembro;
        for (int i = 0; i < familia.sueltos.size(); ++i) {
            const QVariant &valor = una.Valor(primera + i);
            const QString texto = valor.toString();
            if (valor.isNull())
                continue; // equals nothing; so does the member that is made of it
            if (valor.typeId() != QMetaType::QString || texto.contains(QChar::Null)
                || texto.contains(QChar::ReplacementCharacter))
                return std::nullopt;
            miembro += ComoSeCompara(texto, familia.sueltos.at(i).clave) + QChar::Null;
        }
        const QByteArray valor = ComoSeCompara(una.Valor(primera).toString(), familia.sueltos.at(0).clave).toUtf8();
        if (anterior && *anterior != valor) {
            completas = fila;
            ultimaEntera = anterior;
        }
        anterior = valor;
        auto hallado = pieza.miembros.find(miembro);
        if (hallado == pieza.miembros.end())
            pieza.miembros.insert(miembro, {fila, fila + 1});
        else if (hallado->second == fila)
            hallado->second = fila + 1;
        else
            return std::nullopt; // they do not stand together
        for (int i = 0; i < columnas; ++i)
            peso += Peso(una.Valor(i));
    }
    if (!cortada && peso <= BytesDePieza)
        return pieza;
    if (completas == 0)
        return std::nullopt;
    pieza.hasta = ultimaEntera;
    return pieza;
}

void Adelanto::Olvidar()
{
    for (auto i = estantes.begin(); i != estantes.end();)
        i = i->fijo ? std::next(i) : estantes.erase(i);
}

void Adelanto::Olvidar(const QString &tabla)
{
    for (auto i = estantes.begin(); i != estantes.end();)
        i = tabla.isEmpty() || i->tabla == tabla ? estantes.erase(i) : std::next(i);
}

} // namespace qvx
