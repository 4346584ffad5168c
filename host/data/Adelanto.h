#pragma once

#include "data/Familia.h"
#include "data/Recordset.h"

#include <QHash>
#include <QSet>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace qvx
{

// What a connection has read before it was asked for. After the second statement of a family the whole of it is read,
// and those that follow are answered from memory: from far away each one would cost the way to the server and back.
// Whoever owns it drops it when what was read is no longer what the engine would say.
class Adelanto
{
public:
    // Runs a statement of the family's own. The fields are the members', and then those of the loose literals.
    using Lector = std::function<Recordset(const QString &texto, const QVariantList &valores)>;

    // The answer to a member of the family with these literals; nothing when it must be run by itself.
    std::optional<Recordset> Responder(const Familia &familia, const QVariantList &valores, const Lector &leer);
    // What the engine answered to it.
    void Anotar(const Familia &familia, const QVariantList &valores, const Recordset &respuesta);

    // All but what does not change while a session lasts.
    void Olvidar();
    // All of a table, in small letters; of every table for "".
    void Olvidar(const QString &tabla);

private:
    // Rows with their first loose column in a range, each member's together. The range is closed; one without an end
    // goes on to the last row there is.
    struct Pieza {
        QByteArray desde;
        std::optional<QByteArray> hasta;
        Recordset filas;
        std::shared_ptr<const QStringList> campos;                    // the members'
        QHash<QString, std::pair<std::size_t, std::size_t>> miembros; // their rows, from and to
    };
    struct Estante {
        QString tabla;
        bool fijo = false;
        QHash<QString, Recordset> sueltas; // by the loose literals
        std::vector<Pieza> piezas;
        QSet<QByteArray> imposibles; // first loose literals that no piece holds
        int aciertos = 0;            // of the piece that was read last
    };

    static std::optional<Recordset> Buscar(Estante &estante, const Familia &familia, const QVariantList &valores);
    static bool Conviene(const Estante &estante, const QByteArray &primera);
    void Leer(Estante &estante, const Familia &familia, const QVariantList &valores, const Lector &leer);
    static Recordset Trozo(const Pieza &pieza, const QString &miembro);
    static std::optional<Pieza> Acomodar(const Recordset &filas, const Familia &familia, bool cortada);

    QHash<QString, Estante> estantes; // by shape and fixed literals
    QSet<QString> grandes;            // shapes of catalogues that are too large to be read whole
};

} // namespace qvx
