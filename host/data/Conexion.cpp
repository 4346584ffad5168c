#include "data/Conexion.h"

#include "data/Adelanto.h"
#include "data/BaseAbierta.h"
#include "data/ErrorEjecucion.h"
#include "data/Lexico.h"
#include "data/Numeracion.h"
#include "data/Texto.h"

#include <QLoggingCategory>
#include <QSqlError>
#include <utility>

namespace qvx
{

Q_LOGGING_CATEGORY(registroDatos, "quorvex.datos")

namespace
{

// SQLSTATE of a transaction whose outcome is unknown; no engine says it by itself.
const QString DesenlaceDesconocido = "08007";

} // namespace

Conexion::Conexion(const QSqlDatabase &base_, std::unique_ptr<Dialecto> dialecto_, std::unique_ptr<Reglas> reglas_,
                   const QString &archivoTraza)
    : base(base_), dialecto(std::move(dialecto_)), reglas(std::move(reglas_))
{
    if (!archivoTraza.isEmpty())
        traza.emplace(archivoTraza);
    if (!qEnvironmentVariableIsSet("QVX_SIN_ADELANTO"))
        adelanto = std::make_unique<Adelanto>();
    if (adelanto && dialecto->EstaLejos())
        numeracion = std::make_unique<Numeracion>();
}

Conexion::~Conexion()
{
    RollbackTrans();
    preparadas.clear();
    BaseAbierta::Soltar(base);
}

Recordset Conexion::Execute(const QString &sql)
{
    return Correr(sql, [&] { return Analizar(sql); });
}

Recordset Conexion::Execute(const QString &sql, const QVariantList &valores)
{
    return Correr(EnUnRenglon(sql, valores), [&] { return Propia(sql, valores); });
}

Recordset Conexion::Correr(const QString &sql, const std::function<Sentencia()> &analizar)
{
    if (alEjecutar)
        alEjecutar();
    if (estado == Estado::Condenada)
        throw ErrorEjecucion(errores::Datos, "La transacción falló y debe deshacerse: " + motivoCondena, sql);
    if (porComenzar && PuedeEsperar(sql))
        AnotarComienzo();
    else if (porComenzar)
        Comenzar();
    try {
        const Sentencia sentencia = analizar();
        if (estado == Estado::Libre)
            Disponer(sentencia.lectura);
        if (estado == Estado::Libre && !sentencia.lectura && antesDeEscribir)
            antesDeEscribir();
        if (sentencia.sinCerrar)
            MostrarAlMotor(sql);
        const auto preparada = Preparar(sentencia, sql);
        if (!sentencia.lectura)
            reglas->RevisarIguales(preparada->conocida, sentencia, sql);
        if (estado == Estado::Libre && !sentencia.lectura && (preparada->conocida.cambio != 0 || reglas->ComoConstar()))
            EmpezarSola();
        haCambiado = haCambiado || !sentencia.lectura;
        if (estado == Estado::Abierta && reglas->ComoReservar())
            for (const int lugar : preparada->conocida.reservas)
                Reservar(SinBlancosAlFinal(sentencia.valores.value(lugar).toString()));
        if (preparada->conocida.cambio != 0)
            Registrar(preparada->conocida, sentencia);
        if (const auto filas = Saber(*preparada, sentencia, sql))
            return Dar(*filas, sql);
        OlvidarLoCambiado(*preparada, sentencia);
        if (Aplazar(*preparada, sentencia, sql))
            return UnRenglon();
        Asentar();
        for (int i = 0; i < sentencia.valores.size(); ++i)
            preparada->consulta.bindValue(i, sentencia.valores.at(i));
        if (!preparada->consulta.exec())
            Rechazar(preparada->consulta.lastError(), sql, estado == Estado::Libre && !sentencia.lectura);
        const Recordset resultado = Leer(*preparada, sql);
        AlContestar(*preparada, sentencia, resultado);
        TerminarSola();
        return resultado;
    } catch (const ErrorEjecucion &error) {
        if (estado == Estado::Condenada) // by one that went before, which is told
            throw;
        Anotar("!", sql + "  <" + error.Descripcion() + ">");
        CerrarLectura();
        if (sola) {
            Deshacer();
            sola = false;
            estado = Estado::Libre;
        } else if (estado == Estado::Abierta) {
            Condenar(error);
        }
        throw;
    }
}

// Before the transaction's change.
void Conexion::Registrar(const Conocida &conocida, const Sentencia &sentencia)
{
    if (!std::exchange(registrando, true))
        for (const SentenciaConValores &orden : reglas->Apertura())
            EjecutarOrden(orden);
    reglas->AlCambiar(conocida, sentencia);
}

// Before the commit.
void Conexion::Cerrar()
{
    if (std::exchange(registrando, false))
        for (const SentenciaConValores &orden : reglas->Cierre())
            EjecutarOrden(orden);
}

// Kept prepared: on a server each one is one crossing of the network.
void Conexion::EjecutarOrden(const SentenciaConValores &orden)
{
    Asentar();
    auto &preparada = preparadas[QLatin1Char('*') + orden.texto];
    if (!preparada) {
        preparada = std::make_shared<Preparada>(Preparada{QSqlQuery(base), nullptr, {}, nullptr, nullptr});
        if (!preparada->consulta.prepare(orden.texto)) {
            const QSqlError error = preparada->consulta.lastError();
            preparadas.remove(QLatin1Char('*') + orden.texto);
            Rechazar(error, orden.texto);
        }
    }
    for (int i = 0; i < orden.valores.size(); ++i)
        preparada->consulta.bindValue(i, orden.valores.at(i));
    if (!preparada->consulta.exec())
        Rechazar(preparada->consulta.lastError(), orden.texto);
    preparada->consulta.finish();
}

bool Conexion::TablaPropia(const QString &nombre, const QString &columnas)
{
    const QString orden = dialecto->TablaPropia(nombre, columnas);
    if (orden.isEmpty())
        return false;
    EjecutarOrden({orden, {}});
    EjecutarOrden({"DELETE FROM temp." + nombre, {}});
    return true;
}

// Outside a transaction: a connection that stands, and what is read and what is changed kept apart.
void Conexion::Disponer(bool lectura)
{
    if (!lectura)
        CerrarLectura();
    AsegurarAbierta();
    if (lectura)
        AbrirLectura();
}

void Conexion::AbrirLectura()
{
    const QString orden = dialecto->InicioDeLectura();
    if (leyendo || eventos == 0 || orden.isEmpty())
        return;
    QSqlQuery consulta(base);
    if (!consulta.exec(orden))
        Rechazar(consulta.lastError(), orden);
    leyendo = true;
    OlvidarLoLeido();
}

void Conexion::CerrarLectura()
{
    if (leyendo)
        OlvidarLoLeido();
    if (!std::exchange(leyendo, false) || !base.isOpen())
        return;
    if (!dialecto->TerminarLectura(base)) {
        preparadas.clear();
        base.close(); // the next statement opens it again, or says why not
    }
}

void Conexion::SalirDeEvento()
{
    if (eventos > 0) // the event in which a session began was not entered
        --eventos;
    if (momentos == 0)
        CerrarLectura();
}

void Conexion::EmpezarMomento()
{
    ++momentos;
    EntrarEnEvento();
}

void Conexion::TerminarMomento()
{
    --momentos;
    SalirDeEvento();
}

// A text that is no statement never runs; the engine is only asked what is wrong with it.
void Conexion::MostrarAlMotor(const QString &sql)
{
    Asentar();
    const QSqlError error = dialecto->Examinar(base, sql);
    if (error.isValid())
        Rechazar(error, sql);
    fallo = {"La sentencia contiene un carácter inesperado", Aclaracion(ClaseDeFallo::Apostrofo)};
    throw ErrorEjecucion(errores::Datos, fallo.texto, sql);
}

void Conexion::AsegurarAbierta()
{
    if (leyendo || dialecto->SigueAbierta(base))
        return;
    preparadas.clear();
    base.close();
    if (base.open()) {
        qCInfo(registroDatos) << "Se volvió a abrir la base de datos";
        return;
    }
    throw ErrorEjecucion(errores::Datos,
                         "No hay conexión con la base de datos: " + dialecto->Explicar(base.lastError()), {},
                         base.lastError().nativeErrorCode());
}

// desenlaceIncierto: what failed may have been done all the same if the answer was lost on its way.
void Conexion::Rechazar(const QSqlError &error, const QString &sql, bool desenlaceIncierto)
{
    const QString motivo = dialecto->Explicar(error);
    fallo = {motivo, Aclaracion(dialecto->Clasificar(error))};
    if (base.isOpen())
        throw ErrorEjecucion(errores::Datos, motivo, sql, error.nativeErrorCode()).Aclarado(fallo.aclaracion);
    if (desenlaceIncierto)
        throw ErrorEjecucion(errores::Datos,
                             "Se perdió la conexión con el servidor y no se sabe si el cambio quedó guardado. Revíselo "
                             "antes de repetirlo. ("
                                 + motivo + ")",
                             sql, DesenlaceDesconocido);
    const QString perdido = estado == Estado::Libre ? ". (" : ": no se guardó nada. (";
    throw ErrorEjecucion(errores::Datos, "Se perdió la conexión con el servidor" + perdido + motivo + ")", sql,
                         error.nativeErrorCode());
}

void Conexion::Anotar(const QString &marca, const QString &sql)
{
    if (!porSaber.empty())
        porSaber.push_back({marca, sql});
    else if (traza)
        traza->Anotar(marca, sql);
}

} // namespace qvx
