#pragma once

#include <QList>
#include <QString>
#include <memory>

class QSqlDatabase;
class QSqlError;

namespace qvx
{

// The screens write the dialect of the host's server. A dialect turns a statement's shape (no literals in it) into
// what its engine understands, and knows what else is the engine's own.
class Dialecto
{
public:
    virtual ~Dialecto() = default;
    virtual QString Reescribir(const QString &forma) const = 0;
    virtual QString InicioDeTransaccion() const = 0;
    // What makes all that is read from then on be of one moment, "" where nothing is needed for it.
    virtual QString InicioDeLectura() const { return {}; }
    // Whether rows are best read without going back to one.
    virtual bool SoloHaciaAdelante() const { return true; }
    // What an error of the engine is called in messages: its own text, or what it means to the person.
    virtual QString Explicar(const QSqlError &error) const;
    // What the engine says against a text that is never run; an error without a type when it finds nothing wrong.
    virtual QSqlError Examinar(QSqlDatabase &base, const QString &sql) const;
    // Whether the connection still stands, as far as can be told without asking the engine.
    virtual bool SigueAbierta(const QSqlDatabase &base) const;
    // Whether the engine still has the transaction that was begun.
    virtual bool SigueEnTransaccion(const QSqlDatabase &base) const;
    // Where among a shape's literals equipment types stand whose plan is held for this transaction alone; none where
    // the engine has one writer at a time anyway.
    virtual QList<int> TiposDeEquipo(const QString & /*forma*/) const { return {}; }
    // The statements that hold one, each with a place for its key: holding it if nobody does, who does, and waiting for
    // it as long as is reasonable.
    struct Apartado {
        QString intento;
        QString ocupante;
        QString espera;
    };
    virtual Apartado Apartar() const { return {}; }
};

// The embedded engine.
std::unique_ptr<Dialecto> DialectoSqlite();
// The shared server.
std::unique_ptr<Dialecto> DialectoPostgres();

// What all dialects rewrite: "DELETE tabla" and "alias = (SELECT ...)" in a select list.
QString ReescribirComun(QString forma);

} // namespace qvx
