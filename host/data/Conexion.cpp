#include "data/Conexion.h"

#include "data/ErrorEjecucion.h"
#include "data/Lexico.h"
#include "data/Texto.h"

#include <QLoggingCategory>
#include <QSqlError>
#include <QSqlRecord>

namespace qvx
{

Q_LOGGING_CATEGORY(registroDatos, "quorvex.datos")

namespace
{

constexpr int MaximoPreparadas = 256;

QString TextoDelMotor(const QSqlError &error)
{
    return error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
}

QString EnUnRenglon(QString sql)
{
    return sql.replace(QLatin1Char('\\'), "\\\\").replace(QLatin1Char('\n'), "\\n").replace(QLatin1Char('\r'), "\\r");
}

} // namespace

void Recordset::MoveNext()
{
    if (Eof())
        throw ErrorEjecucion(errores::SinRegistroActual, "No hay un registro actual");
    ++actual;
}

void Recordset::Close()
{
    filas.reset();
}

const QVariant &Recordset::Valor(int columna) const
{
    if (Eof())
        throw ErrorEjecucion(errores::SinRegistroActual, "No hay un registro actual");
    return filas->at(actual).at(columna);
}

int Recordset::Columna(const QString &campo) const
{
    const int columna = campos ? campos->lugares.value(campo.toLower(), -1) : -1;
    if (columna < 0)
        throw ErrorEjecucion(errores::ElementoNoEncontrado, "La consulta no tiene el campo " + campo);
    return columna;
}

QString Recordset::Texto(int columna) const
{
    const QVariant &valor = Valor(columna);
    return valor.typeId() == QMetaType::Double ? NumeroATexto(valor.toDouble()) : valor.toString();
}

double Recordset::Numero(const QString &campo) const
{
    const QVariant &valor = Valor(Columna(campo));
    bool es = valor.isNull();
    const double numero = valor.isNull() ? 0 : valor.toDouble(&es);
    if (!es)
        throw ErrorEjecucion(errores::TiposNoCoinciden, "El campo " + campo + " no es un número");
    return numero;
}

Conexion::Conexion(const QSqlDatabase &base_, std::unique_ptr<Dialecto> dialecto_, const QString &archivoTraza)
    : base(base_), dialecto(std::move(dialecto_))
{
    if (archivoTraza.isEmpty())
        return;
    traza.setFileName(archivoTraza);
    if (!traza.open(QIODevice::Append) || !traza.setPermissions(QFile::ReadOwner | QFile::WriteOwner))
        throw ErrorEjecucion(errores::Datos, "No se puede escribir la traza: " + traza.errorString());
}

Conexion::~Conexion()
{
    if (estado == Estado::Abierta)
        Deshacer();
    preparadas.clear();
    const QString nombre = base.connectionName();
    base.close();
    base = QSqlDatabase();
    QSqlDatabase::removeDatabase(nombre);
}

Recordset Conexion::Execute(const QString &sql)
{
    if (estado == Estado::Condenada)
        throw ErrorEjecucion(errores::Datos, "La transacción falló y debe deshacerse: " + motivoCondena, sql);
    try {
        const Sentencia sentencia = Analizar(sql);
        if (sentencia.sinCerrar)
            MostrarAlMotor(sql);
        const auto preparada = Preparar(sentencia.forma, sql);
        for (int i = 0; i < sentencia.valores.size(); ++i)
            preparada->consulta.bindValue(i, sentencia.valores.at(i));
        if (!preparada->consulta.exec())
            Fallar(preparada->consulta.lastError(), sql);
        return Leer(*preparada, sql);
    } catch (const ErrorEjecucion &error) {
        Anotar("!", sql + "  <" + error.Descripcion() + ">");
        if (estado == Estado::Abierta) {
            Deshacer();
            estado = Estado::Condenada;
            motivoCondena = error.Descripcion();
        }
        throw;
    }
}

std::shared_ptr<Conexion::Preparada> Conexion::Preparar(const QString &forma, const QString &sql)
{
    const auto hallada = preparadas.find(forma);
    if (hallada != preparadas.end())
        return *hallada;
    if (preparadas.size() >= MaximoPreparadas)
        preparadas.clear();
    auto nueva = std::make_shared<Preparada>(Preparada{QSqlQuery(base), nullptr});
    nueva->consulta.setForwardOnly(true);
    if (!nueva->consulta.prepare(dialecto->Reescribir(forma)))
        Fallar(nueva->consulta.lastError(), sql);
    preparadas.insert(forma, nueva);
    return nueva;
}

Recordset Conexion::Leer(Preparada &preparada, const QString &sql)
{
    Recordset resultado;
    QSqlQuery &consulta = preparada.consulta;
    if (!consulta.isSelect()) {
        Anotar(QString::number(consulta.numRowsAffected()), sql);
        consulta.finish();
        return resultado;
    }
    if (!preparada.campos) {
        Recordset::Campos campos;
        const QSqlRecord registro = consulta.record();
        campos.cuantos = registro.count();
        for (int i = 0; i < campos.cuantos; ++i)
            campos.lugares.insert(registro.fieldName(i).toLower(), i);
        preparada.campos = std::make_shared<const Recordset::Campos>(std::move(campos));
    }
    const int columnas = preparada.campos->cuantos;
    std::vector<QVariantList> filas;
    while (consulta.next()) {
        QVariantList fila;
        fila.reserve(columnas);
        for (int i = 0; i < columnas; ++i)
            fila.append(consulta.value(i));
        filas.push_back(std::move(fila));
    }
    const QSqlError error = consulta.lastError();
    consulta.finish();
    if (error.isValid())
        Fallar(error, sql);
    Anotar(QString::number(filas.size()), sql);
    resultado.campos = preparada.campos;
    resultado.filas = std::make_shared<const std::vector<QVariantList>>(std::move(filas));
    return resultado;
}

// A text that is no statement never runs; the engine is only asked what is wrong with it.
void Conexion::MostrarAlMotor(const QString &sql)
{
    QSqlQuery consulta(base);
    if (!consulta.prepare(sql))
        Fallar(consulta.lastError(), sql);
    throw ErrorEjecucion(errores::Datos, "La sentencia contiene un carácter inesperado", sql);
}

void Conexion::BeginTrans()
{
    if (estado != Estado::Libre)
        throw ErrorEjecucion(errores::Datos, "Ya hay una transacción abierta");
    Ordenar(dialecto->InicioDeTransaccion());
    estado = Estado::Abierta;
}

void Conexion::CommitTrans()
{
    if (estado == Estado::Libre)
        throw ErrorEjecucion(errores::Datos, "No hay una transacción abierta");
    if (estado == Estado::Condenada)
        throw ErrorEjecucion(errores::Datos, "La transacción falló y debe deshacerse: " + motivoCondena);
    try {
        Ordenar("COMMIT");
        estado = Estado::Libre;
    } catch (const ErrorEjecucion &error) {
        Deshacer();
        estado = Estado::Condenada;
        motivoCondena = error.Descripcion();
        throw;
    }
}

void Conexion::RollbackTrans()
{
    if (estado == Estado::Abierta)
        Deshacer();
    estado = Estado::Libre;
}

void Conexion::CerrarAbandonada()
{
    qCWarning(registroDatos) << "Se deshizo una transacción que su evento dejó abierta";
    Anotar("-", "ABANDONADA");
    RollbackTrans();
}

void Conexion::Ordenar(const QString &orden)
{
    QSqlQuery consulta(base);
    if (!consulta.exec(orden)) {
        Anotar("!", orden + "  <" + TextoDelMotor(consulta.lastError()) + ">");
        Fallar(consulta.lastError(), orden);
    }
    Anotar("-", orden);
}

// The engine may have taken the transaction back by itself (a full disk does that); reopening ends whatever is left.
void Conexion::Deshacer()
{
    QSqlQuery consulta(base);
    Anotar("-", "ROLLBACK");
    if (consulta.exec("ROLLBACK"))
        return;
    preparadas.clear();
    base.close();
    if (!base.open())
        qCWarning(registroDatos) << "No se pudo volver a abrir la base de datos:" << base.lastError().text();
}

void Conexion::Fallar(const QSqlError &error, const QString &sql)
{
    throw ErrorEjecucion(errores::Datos, TextoDelMotor(error), sql, error.nativeErrorCode());
}

void Conexion::Anotar(const QString &marca, const QString &sql)
{
    if (!traza.isOpen())
        return;
    traza.write((marca + "\t" + EnUnRenglon(sql) + "\n").toUtf8());
    traza.flush();
}

} // namespace qvx
