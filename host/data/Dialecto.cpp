#include "data/Dialecto.h"

#include "data/EnlaceSqlite.h"
#include "data/ErrorEjecucion.h"

#include <QFile>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <sqlite3.h>

namespace qvx
{

namespace
{

// Index of the parenthesis that closes the one at abre, -1 when none does.
qsizetype Cierre(const QString &forma, qsizetype abre)
{
    int hondo = 0;
    for (auto i = abre; i < forma.size(); ++i) {
        if (forma.at(i) == QLatin1Char('('))
            ++hondo;
        else if (forma.at(i) == QLatin1Char(')') && --hondo == 0)
            return i;
    }
    return -1;
}

// "DELETE tabla" is "DELETE FROM tabla".
QString BorradoConFrom(QString forma)
{
    static const QRegularExpression borrado("^DELETE\\s+(?!FROM\\b)", QRegularExpression::CaseInsensitiveOption);
    return forma.replace(borrado, "DELETE FROM ");
}

// "alias = (SELECT ...)" in a select list is "(SELECT ...) AS alias".
QString AliasDespues(QString forma)
{
    static const QRegularExpression alias("^(SELECT\\s[^()]*?[\\s,])(\\w+)\\s*=\\s*(?=\\(\\s*SELECT\\b)",
                                          QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression origen("\\bFROM\\b", QRegularExpression::CaseInsensitiveOption);
    const auto hallado = alias.match(forma);
    if (!hallado.hasMatch() || hallado.captured(1).contains(origen))
        return forma;
    const auto cierre = Cierre(forma, hallado.capturedEnd());
    if (cierre < 0)
        return forma;
    const QString consulta = forma.mid(hallado.capturedEnd(), cierre + 1 - hallado.capturedEnd());
    return hallado.captured(1) + consulta + " AS " + hallado.captured(2) + forma.mid(cierre + 1);
}

class Sqlite : public Dialecto
{
public:
    QString Reescribir(const QString &forma) const override { return FuncionComoConsulta(ReescribirComun(forma)); }

    // Takes the write lock at once: keys numbered inside the transaction stay free until it ends.
    QString InicioDeTransaccion() const override { return "BEGIN IMMEDIATE"; }
    bool ComienzaConLaPrimera() const override { return true; }

    // Also spares every statement its own locking of the file.
    QString InicioDeLectura() const override { return "BEGIN"; }

    QString TablaPropia(const QString &nombre, const QString &columnas) const override
    {
        return "CREATE TEMP TABLE IF NOT EXISTS " + nombre + " (" + columnas + ")";
    }

    // What was prepared is prepared anew by the engine, with triggers or without.
    bool Disparadores(const QSqlDatabase &base, bool activos) const override
    {
        sqlite3 *enlace = EnlaceSqlite(base);
        return enlace && (activos || EsElMismoMotor(base))
               && sqlite3_db_config(enlace, SQLITE_DBCONFIG_ENABLE_TRIGGER, activos ? 1 : 0, nullptr) == SQLITE_OK;
    }

    bool Tomar(const QSqlDatabase &base, const QSqlQuery &consulta, std::vector<QVariant> &valores,
               QSqlError &error) const override
    {
        if (!EsElMismoMotor(base))
            return false;
        error = FilasDe(consulta, valores);
        return true;
    }

    // By the low byte of the code, which the longer codes specify.
    ClaseDeFallo Clasificar(const QSqlError &error) const override
    {
        const QString texto = error.databaseText();
        switch (error.nativeErrorCode().toInt() & 0xFF) {
        case 1:
            return texto.startsWith("no such") ? ClaseDeFallo::SinTablas : ClaseDeFallo::Apostrofo;
        case 5:
        case 6:
            return ClaseDeFallo::Ocupada;
        case 8:
            return ClaseDeFallo::SoloLectura;
        case 10:
        case 14:
            return ClaseDeFallo::Disco;
        case 11:
        case 26:
            return ClaseDeFallo::Danada;
        case 13:
            return ClaseDeFallo::DiscoLleno;
        case 19:
            return texto.startsWith("UNIQUE") ? ClaseDeFallo::ClaveRepetida : ClaseDeFallo::DatoInvalido;
        default:
            return ClaseDeFallo::Otra;
        }
    }

private:
    // "SELECT dbo.funcion(a, b) AS alias": the engine has no such functions; the function's query stands in for it,
    // and gives no row where the function gives nothing.
    static QString FuncionComoConsulta(const QString &forma)
    {
        static const QRegularExpression llamada(
            "^SELECT\\s+dbo\\.(\\w+)\\s*\\(([^(),]*),([^(),]*)\\)\\s*AS\\s+(\\w+)\\s*$",
            QRegularExpression::CaseInsensitiveOption);
        const auto hallada = llamada.match(forma);
        if (!hallada.hasMatch())
            return forma;
        QFile cuerpo(":/schema/sqlite/" + hallada.captured(1) + ".sql");
        if (!cuerpo.open(QIODevice::ReadOnly))
            throw ErrorEjecucion(errores::Datos, "No existe la función dbo." + hallada.captured(1), forma);
        QString consulta = QString::fromUtf8(cuerpo.readAll());
        consulta.replace("{1}", hallada.captured(2)).replace("{2}", hallada.captured(3));
        return "SELECT valor AS " + hallada.captured(4) + " FROM (" + consulta + ")";
    }
};

} // namespace

QString Dialecto::Explicar(const QSqlError &error) const
{
    return error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
}

QSqlError Dialecto::Examinar(QSqlDatabase &base, const QString &sql) const
{
    QSqlQuery consulta(base);
    return consulta.prepare(sql) ? QSqlError() : consulta.lastError();
}

bool Dialecto::Aplazar(const QSqlQuery & /*preparada*/, const QVariantList & /*valores*/,
                       QList<int> & /*afectadas*/) const
{
    return false;
}

QSqlError Dialecto::Asentar(const QSqlDatabase & /*base*/, QList<int> & /*afectadas*/) const
{
    return {};
}

bool Dialecto::TerminarLectura(const QSqlDatabase &base) const
{
    return QSqlQuery(base).exec("ROLLBACK");
}

QSqlError Dialecto::Confirmar(const QSqlDatabase &base, const QString & /*constancia*/, QString & /*aviso*/) const
{
    QSqlQuery consulta(base);
    return consulta.exec("COMMIT") ? QSqlError() : consulta.lastError();
}

QStringList Dialecto::Funciones() const
{
    return {"MAX", "MIN", "COUNT", "SUM", "COALESCE", "NULLIF", "CAST", "UPPER", "LOWER", "TRIM", "RTRIM", "ROUND"};
}

bool Dialecto::SigueAbierta(const QSqlDatabase &base) const
{
    return base.isOpen();
}

bool Dialecto::SigueEnTransaccion(const QSqlDatabase & /*base*/) const
{
    return true;
}

QString ReescribirComun(QString forma)
{
    return AliasDespues(BorradoConFrom(std::move(forma)));
}

std::unique_ptr<Dialecto> DialectoSqlite()
{
    return std::make_unique<Sqlite>();
}

} // namespace qvx
