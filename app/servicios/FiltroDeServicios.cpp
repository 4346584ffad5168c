#include "app/servicios/FiltroDeServicios.h"

#include "data/ErrorEjecucion.h"
#include "data/Texto.h"
#include "plan/Catalogos.h"

#include <QRegularExpression>
#include <algorithm>
#include <limits>

namespace
{

constexpr double SinLimite = std::numeric_limits<double>::infinity();
const QList<int> Buscadas{servicios::Ruta,      servicios::Folio,  servicios::Nombre, servicios::Lectura,
                          servicios::Prioridad, servicios::Estado, servicios::Paro};

QStringList PalabrasDe(const QString &texto)
{
    return qvx::Plegado(texto).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

bool TieneTodas(const QString &texto, const QStringList &palabras)
{
    return std::all_of(palabras.cbegin(), palabras.cend(),
                       [&](const QString &palabra) { return texto.contains(palabra); });
}

std::optional<double> NumeroDe(QString texto)
{
    try {
        return qvx::TextoANumero(texto.remove(QLatin1Char('$')).trimmed());
    } catch (const qvx::ErrorEjecucion &) { // too large: no service has it
        return {};
    }
}

} // namespace

void FiltroDeServicios::Poner(const QList<lectura::Servicio> *servicios)
{
    lista = servicios;
    plegadas.fill({});
    buscables.clear();
}

void FiltroDeServicios::Buscar(const QString &texto)
{
    palabras = PalabrasDe(texto);
}

void FiltroDeServicios::PonerEnColumna(int columna, const QString &texto)
{
    condiciones.at(columna) = {PalabrasDe(texto), servicios::ClaseDe(columna) == servicios::Clase::Texto
                                                      ? std::nullopt
                                                      : LeerIntervalo(texto.trimmed())};
}

std::optional<FiltroDeServicios::Intervalo> FiltroDeServicios::LeerIntervalo(const QString &texto)
{
    if (const auto lugar = texto.indexOf(".."); lugar > 0) {
        const auto desde = NumeroDe(texto.left(lugar));
        const auto hasta = NumeroDe(texto.mid(lugar + 2));
        return desde && hasta ? std::optional(Intervalo{*desde, *hasta}) : std::nullopt;
    }
    static const QRegularExpression comparacion("^(>=|<=|>|<|=)?(.+)$");
    const auto hallada = comparacion.match(texto);
    const auto numero = NumeroDe(hallada.captured(2));
    if (!numero)
        return {};
    const QString signo = hallada.captured(1);
    if (signo.startsWith(QLatin1Char('>')))
        return Intervalo{*numero, SinLimite, signo == ">", false};
    if (signo.startsWith(QLatin1Char('<')))
        return Intervalo{-SinLimite, *numero, false, signo == "<"};
    return Intervalo{*numero, *numero};
}

void FiltroDeServicios::Plegar(int columna) const
{
    QStringList &textos = plegadas.at(columna);
    if (!textos.isEmpty())
        return;
    textos.reserve(lista->size());
    for (const lectura::Servicio &servicio : *lista)
        textos.append(qvx::Plegado(servicios::Texto(servicio, columna)));
}

void FiltroDeServicios::PlegarBuscados() const
{
    if (!buscables.isEmpty())
        return;
    buscables.reserve(lista->size());
    for (const lectura::Servicio &servicio : *lista) {
        QStringList textos;
        for (const int columna : Buscadas)
            textos.append(servicios::Texto(servicio, columna));
        buscables.append(qvx::Plegado(textos.join(QLatin1Char('\n'))));
    }
}

bool FiltroDeServicios::Admite(int servicio) const
{
    if (!palabras.isEmpty()) {
        PlegarBuscados();
        if (!TieneTodas(buscables.at(servicio), palabras))
            return false;
    }
    for (int columna = 0; columna < servicios::Columnas; ++columna) {
        const auto &[buscadas, intervalo] = condiciones.at(columna);
        if (intervalo) {
            const double numero = servicios::Numero(lista->at(servicio), columna);
            if (numero < intervalo->desde || (intervalo->sinDesde && numero == intervalo->desde)
                || numero > intervalo->hasta || (intervalo->sinHasta && numero == intervalo->hasta))
                return false;
        } else if (!buscadas.isEmpty()) {
            Plegar(columna);
            if (!TieneTodas(plegadas.at(columna).at(servicio), buscadas))
                return false;
        }
    }
    return true;
}
