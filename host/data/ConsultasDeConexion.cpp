// What a connection keeps of a shape, and where the rows of a query come from: the engine, or what was read ahead.

#include "data/Adelanto.h"
#include "data/Conexion.h"
#include "data/Lexico.h"
#include "data/Numeracion.h"

#include <QSqlError>
#include <QSqlRecord>

namespace qvx
{

namespace
{

constexpr int MaximoPreparadas = 256;

} // namespace

std::shared_ptr<Conexion::Preparada> Conexion::Preparar(const Sentencia &sentencia, const QString &sql)
{
    // Whatever is typed, its shape never finds what only the host's own texts may be.
    const QString clave = sentencia.propia ? QLatin1Char('=') + sentencia.forma : sentencia.forma;
    const auto hallada = preparadas.find(clave);
    if (hallada != preparadas.end())
        return *hallada;
    const Conocida conocida = reglas->Conocer(sentencia.forma, dialecto->Funciones());
    if (!conocida.permitida && !sentencia.propia)
        MostrarAlMotor(sql);
    if (preparadas.size() >= MaximoPreparadas)
        preparadas.clear();
    auto nueva = std::make_shared<Preparada>(Preparada{QSqlQuery(base), nullptr, conocida, nullptr, nullptr});
    if (const auto familia = FamiliaDe(sentencia.forma, conocida.iguales, *reglas))
        nueva->familia = std::make_shared<const Familia>(*familia);
    if (auto pregunta = PreguntaDeNumeroDe(sentencia.forma, conocida.iguales, *reglas))
        nueva->pregunta = std::make_shared<const PreguntaDeNumero>(*std::move(pregunta));
    nueva->consulta.setForwardOnly(true);
    if (!nueva->consulta.prepare(dialecto->Reescribir(nueva->familia ? nueva->familia->forma : sentencia.forma)))
        Rechazar(nueva->consulta.lastError(), sql);
    preparadas.insert(clave, nueva);
    return nueva;
}

Recordset Conexion::Leer(Preparada &preparada, const QString &sql)
{
    Recordset resultado;
    QSqlQuery &consulta = preparada.consulta;
    if (!consulta.isSelect()) {
        resultado.afectadas = consulta.numRowsAffected();
        Anotar(QString::number(resultado.afectadas), sql);
        consulta.finish();
        return resultado;
    }
    return Dar(Tomar(preparada, sql), sql);
}

// The rows of a query that ran.
Recordset Conexion::Tomar(Preparada &preparada, const QString &sql)
{
    Recordset resultado;
    QSqlQuery &consulta = preparada.consulta;
    if (!preparada.campos) {
        QStringList campos;
        const QSqlRecord registro = consulta.record();
        for (int i = 0; i < registro.count(); ++i)
            campos.append(registro.fieldName(i));
        preparada.campos = std::make_shared<const QStringList>(std::move(campos));
    }
    const int columnas = static_cast<int>(preparada.campos->size());
    std::vector<QVariant> valores;
    QSqlError error;
    if (!dialecto->Tomar(base, consulta, valores, error)) {
        valores.reserve(static_cast<std::size_t>(columnas) * static_cast<std::size_t>(qMax(consulta.size(), 0)));
        while (consulta.next())
            for (int i = 0; i < columnas; ++i)
                valores.push_back(consulta.value(i));
        error = consulta.lastError();
    }
    consulta.finish();
    if (error.isValid())
        Rechazar(error, sql);
    resultado.campos = preparada.campos;
    resultado.valores = std::make_shared<const std::vector<QVariant>>(std::move(valores));
    return resultado;
}

// Wherever they come from, only rows that were asked for are told.
Recordset Conexion::Dar(const Recordset &filas, const QString &sql)
{
    const auto columnas = static_cast<std::size_t>(filas.campos->size());
    Anotar(QString::number(columnas == 0 ? 0 : filas.valores->size() / columnas), sql);
    reglas->AlLeer(filas);
    return filas;
}

// What one event reads is of one moment. A transaction sees what others save meanwhile, but for what it keeps to
// itself: a catalogue it reads once.
bool Conexion::PuedeAdelantar(const Preparada &preparada) const
{
    if (!adelanto || !preparada.familia || (preparada.familia->catalogo && !dialecto->EstaLejos()))
        return false;
    const bool deUnMomento = leyendo || (estado == Estado::Abierta && !sola && !porComenzar);
    return (preparada.familia->fija || deUnMomento) && !cambiadas.contains(preparada.familia->tabla)
           && !cambiadas.contains(QString());
}

// What is known already of what a query asks for.
std::optional<Recordset> Conexion::Saber(const Preparada &preparada, const Sentencia &sentencia, const QString &sql)
{
    const auto leer = [&](const QString &texto, const QVariantList &valores) {
        return LeerFamilia(texto, valores, sql);
    };
    if (PuedeAdelantar(preparada))
        return adelanto->Responder(*preparada.familia, sentencia.valores, leer);
    if (preparada.pregunta && PuedeContar())
        return numeracion->Responder(*preparada.pregunta, sentencia.valores, leer);
    return preparada.conocida.hora && adelanto ? HoraSabida() : std::nullopt;
}

// The numbers of what a transaction keeps to itself are nobody else's.
bool Conexion::PuedeContar() const
{
    return numeracion && estado == Estado::Abierta && !sola && !reservadas.isEmpty();
}

// What the engine answered, and what it changed.
void Conexion::AlContestar(const Preparada &preparada, const Sentencia &sentencia, const Recordset &respuesta)
{
    if (PuedeAdelantar(preparada))
        adelanto->Anotar(*preparada.familia, sentencia.valores, respuesta);
    else if (preparada.pregunta && PuedeContar())
        numeracion->Anotar(*preparada.pregunta, sentencia.valores, respuesta);
    else if (preparada.conocida.hora)
        AnotarHora(respuesta);
}

void Conexion::OlvidarLoCambiado(const Preparada &preparada, const Sentencia &sentencia)
{
    if (!adelanto || sentencia.lectura)
        return;
    const QString tabla = TablaQueCambia(sentencia.forma);
    adelanto->Olvidar(tabla);
    cambiadas.insert(tabla);
    if (numeracion)
        numeracion->AlCambiar(sentencia.forma, sentencia.valores, preparada.conocida.renglon);
}

void Conexion::AnotarHora(const Recordset &respuesta)
{
    hora = respuesta;
    horaPropia = QDateTime::currentDateTimeUtc();
    desdeLaHora.start();
}

// The engine's clock goes on as this machine's does, whose two clocks must agree: it may have slept, or been set.
std::optional<Recordset> Conexion::HoraSabida() const
{
    constexpr qint64 Vigencia = 60000;
    constexpr qint64 Holgura = 500;
    constexpr qint64 Mil = 1000;
    const qint64 pasados = desdeLaHora.isValid() ? desdeLaHora.elapsed() : Vigencia;
    if (pasados >= Vigencia || hora.Columnas() != 1
        || qAbs(horaPropia.msecsTo(QDateTime::currentDateTimeUtc()) - pasados) > Holgura)
        return std::nullopt;
    Recordset ahora = hora;
    ahora.valores =
        std::make_shared<const std::vector<QVariant>>(1, QVariant(hora.Valor(0).toDateTime().addSecs(pasados / Mil)));
    return ahora;
}

Recordset Conexion::LeerFamilia(const QString &texto, const QVariantList &valores, const QString &sql)
{
    Asentar();
    auto &preparada = preparadas[QLatin1Char('+') + texto];
    if (!preparada) {
        preparada = std::make_shared<Preparada>(Preparada{QSqlQuery(base), nullptr, {}, nullptr, nullptr});
        preparada->consulta.setForwardOnly(true);
        if (!preparada->consulta.prepare(dialecto->Reescribir(texto))) {
            const QSqlError error = preparada->consulta.lastError();
            preparadas.remove(QLatin1Char('+') + texto);
            Rechazar(error, sql);
        }
    }
    for (int i = 0; i < valores.size(); ++i)
        preparada->consulta.bindValue(i, valores.at(i));
    if (!preparada->consulta.exec())
        Rechazar(preparada->consulta.lastError(), sql);
    return Tomar(*preparada, sql);
}

void Conexion::OlvidarLoLeido()
{
    if (adelanto)
        adelanto->Olvidar();
    if (numeracion)
        numeracion->Olvidar();
    cambiadas.clear();
}

} // namespace qvx
