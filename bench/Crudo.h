#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

// An engine's own C library with nothing of ours: the baseline of every job. Each text is prepared, stepped to its end
// and finalised, and every value of every row is taken as text.
class Crudo
{
public:
    // The values of a row, null pointers where there are none; they last until the function returns.
    using Fila = std::function<void(const std::vector<const char *> &valores)>;

    virtual ~Crudo() = default;
    // Texts of one engine's dialect, transaction marks among them. A failure ends the program: there is nothing to
    // measure any more.
    virtual void Correr(const std::vector<QByteArray> &textos, const Fila &fila = {}) = 0;
    void Correr(const QByteArray &texto, const Fila &fila = {}) { Correr(std::vector<QByteArray>{texto}, fila); }
};

std::unique_ptr<Crudo> CrudoSqlite(const QString &archivo);
// direccion: as libpq takes it.
std::unique_ptr<Crudo> CrudoPostgres(const QString &direccion);
