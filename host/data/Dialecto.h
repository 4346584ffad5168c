#pragma once

#include "data/Aclaracion.h"
#include "system/Exporta.h"

#include <QString>
#include <QStringList>
#include <QVariantList>
#include <memory>
#include <optional>
#include <vector>

class QElapsedTimer;
class QSqlDatabase;
class QSqlError;
class QSqlQuery;

namespace QVX_EXPORTA qvx
{

// The screens write the dialect of the host's server. A dialect turns a statement's shape (no literals in it) into
// what its engine understands, and knows what else is the engine's own.
class Dialecto
{
public:
    virtual ~Dialecto() = default;
    virtual QString Reescribir(const QString &forma) const = 0;
    virtual QString InicioDeTransaccion() const = 0;
    // Whether that shuts out every other writer: then it waits for the transaction's first statement.
    virtual bool ComienzaConLaPrimera() const { return false; }
    // What makes all that is read from then on be of one moment, "" where nothing is needed for it.
    virtual QString InicioDeLectura() const { return {}; }
    // Ends that; false when it cannot be told whether it has ended.
    virtual bool TerminarLectura(const QSqlDatabase &base) const;
    // What an error of the engine is called in messages: its own text, or what it means to the person.
    virtual QString Explicar(const QSqlError &error) const;
    // What an error of the engine is to the person.
    virtual ClaseDeFallo Clasificar(const QSqlError &error) const = 0;
    // What the engine says against a text that is never run; an error without a type when it finds nothing wrong.
    virtual QSqlError Examinar(QSqlDatabase &base, const QString &sql) const;
    // Whether the connection still stands, as far as can be told without asking the engine.
    virtual bool SigueAbierta(const QSqlDatabase &base) const;
    // Whether the connection may only look, as far as can be told without asking the engine.
    virtual bool SoloLectura(const QSqlDatabase & /*base*/) const { return false; }
    // Whether the engine still has the transaction that was begun.
    virtual bool SigueEnTransaccion(const QSqlDatabase &base) const;
    // Ends the transaction for good, behind a statement of the owner's, "" for none; an error without a type when it is
    // done. aviso: what the engine says of what is done, "" for nothing.
    virtual QSqlError Confirmar(const QSqlDatabase &base, const QString &constancia, QString &aviso) const;
    // What became of a transaction whose commit was sent then and its connection lost: asks by the owner's statement
    // whichever server takes changes now. Nothing where none answers in time.
    virtual std::optional<bool> SeConfirmo(const QSqlDatabase & /*base*/, const QString & /*buscar*/,
                                           const QElapsedTimer & /*desde*/) const
    {
        return std::nullopt;
    }
    // The functions that a query may call: they only read what they are given. Others wait, hold locks, change the
    // session's settings, or never end.
    virtual QStringList Funciones() const;
    // Takes the rows of a query that ran, one behind the other; false where the toolkit has to give them. error:
    // without a type when all came.
    virtual bool Tomar(const QSqlDatabase & /*base*/, const QSqlQuery & /*consulta*/,
                       std::vector<QVariant> & /*valores*/, QSqlError & /*error*/) const
    {
        return false;
    }
    // Whether asking once more may take longer than reading a whole catalogue.
    virtual bool EstaLejos() const { return false; }
    // Sends a change that was run before, with other values, and waits for no answer; false when it has to be run.
    // afectadas: gains the rows that were changed by those whose answers have come since, in their order.
    virtual bool Aplazar(const QSqlQuery &preparada, const QVariantList &valores, QList<int> &afectadas) const;
    // Waits for the answers to all that were sent so, and gives the first failure, or an error without a type.
    // afectadas: likewise, up to that failure.
    virtual QSqlError Asentar(const QSqlDatabase &base, QList<int> &afectadas) const;
    // What makes a table that is the session's own, "" where sessions have none.
    virtual QString TablaPropia(const QString & /*nombre*/, const QString & /*columnas*/) const { return {}; }
    // Holds the triggers of all tables back, or lets them work again, in this session alone; false where it cannot.
    virtual bool Disparadores(const QSqlDatabase & /*base*/, bool /*activos*/) const { return false; }
    // Whether an error of the engine's is that a wait ran out.
    virtual bool SeAgotoLaEspera(const QString & /*codigo*/) const { return false; }
};

// The embedded engine.
std::unique_ptr<Dialecto> DialectoSqlite();
// The shared server. A session of it waits so long for a lock.
constexpr int SegundosDeEspera = 10;
std::unique_ptr<Dialecto> DialectoPostgres();
// The code of an answer that did not come in time. The connection is closed then; what was asked may have been done.
const QString CodigoNoResponde = "08R00";

// What all dialects rewrite: "DELETE tabla" and "alias = (SELECT ...)" in a select list.
QString ReescribirComun(QString forma);

} // namespace qvx
