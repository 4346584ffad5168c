#pragma once

#include "data/Recordset.h"
#include "data/Reglas.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QVariantList>
#include <functional>
#include <optional>

namespace qvx
{

// The queries of one shape that ask for the highest number of a table's keys, among the rows that have certain values.
struct PreguntaDeNumero {
    QString forma;
    QString tabla; // in small letters
    QString numero;
    QString clave;        // the column of texts that the number is made of
    QStringList columnas; // those that are compared, by the places of their literals
    int fijo = -1;        // the place of the literal that all share whose numbers may be read at once; -1 for none

    // Of those that share it, the number of each, no more than so many: the others' columns, then the number.
    QString Texto(int renglones) const;
};

// fijos: the places that no two queries may differ in. Nothing for a shape that asks for something else.
std::optional<PreguntaDeNumero> PreguntaDeNumeroDe(const QString &forma, const QList<int> &fijos, const Reglas &reglas);

// The highest numbers that a transaction knows of what it keeps to itself: the engine's answer, and what it adds since
// then. Whoever owns it drops what it changes otherwise.
class Numeracion
{
public:
    using Lector = std::function<Recordset(const QString &texto, const QVariantList &valores)>;

    // Nothing when the query must be run. leer: runs the text of many.
    std::optional<Recordset> Responder(const PreguntaDeNumero &pregunta, const QVariantList &valores,
                                       const Lector &leer);
    // What the engine answered to it.
    void Anotar(const PreguntaDeNumero &pregunta, const QVariantList &valores, const Recordset &respuesta);
    // A change. renglon: it adds one row of values, whose number is counted; after any other one they are forgotten.
    void AlCambiar(const QString &forma, const QVariantList &valores, bool renglon);
    void Olvidar() { conocidas.clear(); }

private:
    struct Conocidas {
        PreguntaDeNumero pregunta;
        Recordset muestra;                                 // an answer
        QHash<QString, std::optional<qulonglong>> ultimos; // by all literals; nothing where there is no row
        QSet<QString> preguntadas;                         // fixed literals
        QSet<QString> todas;                               // of which the others are all known
        QSet<QString> demasiadas;
    };

    static bool Contar(Conocidas &estas, const QString &forma, const QVariantList &valores);
    static Recordset Respuesta(const Conocidas &estas, const std::optional<qulonglong> &ultimo);
    static void LeerTodas(Conocidas &estas, const QVariantList &valores, const Lector &leer);

    QHash<QString, Conocidas> conocidas; // by shape
};

} // namespace qvx
