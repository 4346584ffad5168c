#pragma once

#include "data/Recordset.h"
#include "system/Exporta.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace QVX_EXPORTA qvx
{

struct Sentencia;

// What the owner of the tables knows of a shape of statement.
struct Conocida {
    bool permitida = false;
    bool ajena = false;   // reads only what no transaction keeps to itself
    QList<int> iguales;   // where among its literals keys stand that must all be one
    QList<int> reservas;  // where keys stand of what a transaction keeps to itself until it ends
    int cambio = 0;       // what it changes of that which a history is kept of, by the owner's count; 0 for nothing
    QList<int> claves;    // where the keys stand that the history names the change by
    bool renglon = false; // adds one row of values
    bool hora = false;    // asks for nothing but the engine's time
};

// A statement of the owner's own, and its values.
struct SentenciaConValores {
    QString texto;
    QVariantList valores;
};

// What the owner tells of a table whose rows may be read before they are asked for.
struct TablaConocida {
    QStringList llave;  // no two rows are equal in these columns
    QStringList claves; // columns of texts that compare without trailing blanks
    QStringList textos; // and of those that are equal to the letter
    // Columns of numbers that the engine makes of these columns of texts, of all their digits.
    QHash<QString, QString> numeros;
    bool catalogo = false; // a few rows, of no key that a transaction keeps to itself
    bool fija = false;     // and the same ones as long as a session lasts
};

// The statements by which a transaction keeps what a key stands for to itself, each with a place for the key: keeping
// it if nobody does, who does, and waiting for it.
struct Reserva {
    QString intento;
    QString ocupante;
    QString espera;
};

// By which a transaction leaves word of itself, for whom the answer to its commit does not reach: a statement that runs
// before the commit, and one that finds out on another connection, and keeps that from happening any more. It changes
// no row where the transaction was committed. Each has a place for the transaction's name, a UUID.
struct Constancia {
    QString dejar;
    QString buscar;
};

// The owner of the tables: knows once of each shape what it may do and touch, and hears of what is read. The connection
// itself knows no table.
class Reglas
{
public:
    virtual ~Reglas() = default;

    // funciones: those of the engine that a query may call.
    virtual Conocida Conocer(const QString &forma, const QStringList &funciones) const = 0;
    // Raises a data error when the keys that must be one are several. texto: the statement.
    virtual void RevisarIguales(const Conocida &conocida, const Sentencia &sentencia, const QString &texto) const = 0;
    // The rows of a query that ran.
    virtual void AlLeer(const Recordset &filas) = 0;
    // What a person is told whose transaction did not get what another user keeps to himself.
    virtual QString Ocupado(const QString &usuario, const QString &clave) const = 0;
    // Nothing where the engine has one writer at a time anyway.
    virtual const std::optional<Reserva> &ComoReservar() const = 0;

    // Nothing where no answer can be lost.
    virtual const std::optional<Constancia> &ComoConstar() const = 0;

    // A history is kept of what transactions change. One begins; it changed something; and what runs in it, unseen by
    // the trace, before its first change and before its commit.
    virtual void AlEmpezar() = 0;
    virtual void AlCambiar(const Conocida &conocida, const Sentencia &sentencia) = 0;
    virtual QList<SentenciaConValores> Apertura() const = 0;
    virtual QList<SentenciaConValores> Cierre() const = 0;

    // Whether whoever gives the transaction its changes answers for all of them in one place: then this one need not be
    // waited for before the next.
    virtual bool PuedeAplazar(const Conocida & /*conocida*/) const { return false; }

    // Nothing of one whose rows are only read as they are asked for. nombre: in any letter case.
    virtual std::optional<TablaConocida> Tabla(const QString & /*nombre*/) const { return std::nullopt; }
};

} // namespace qvx
