#include "bench/Crudo.h"

#include <libpq-fe.h>
#include <sqlite3.h>

namespace
{

class Sqlite : public Crudo
{
public:
    explicit Sqlite(const QString &archivo)
    {
        if (sqlite3_open(archivo.toUtf8().constData(), &base) != SQLITE_OK)
            qFatal("%s", sqlite3_errmsg(base));
    }
    ~Sqlite() override { sqlite3_close(base); }
    Sqlite(const Sqlite &) = delete;
    Sqlite &operator=(const Sqlite &) = delete;

    void Correr(const std::vector<QByteArray> &textos, const Fila &fila) override
    {
        std::vector<const char *> valores;
        for (const QByteArray &texto : textos) {
            sqlite3_stmt *sentencia = nullptr;
            if (sqlite3_prepare_v2(base, texto.constData(), -1, &sentencia, nullptr) != SQLITE_OK)
                qFatal("%s: %s", texto.constData(), sqlite3_errmsg(base));
            int paso = SQLITE_ROW;
            while ((paso = sqlite3_step(sentencia)) == SQLITE_ROW) {
                valores.clear();
                for (int i = 0; i < sqlite3_column_count(sentencia); ++i)
                    valores.push_back(reinterpret_cast<const char *>(sqlite3_column_text(sentencia, i)));
                if (fila)
                    fila(valores);
            }
            if (paso != SQLITE_DONE)
                qFatal("%s: %s", texto.constData(), sqlite3_errmsg(base));
            sqlite3_finalize(sentencia);
        }
    }

private:
    sqlite3 *base = nullptr;
};

class Postgres : public Crudo
{
public:
    explicit Postgres(const QString &direccion) : enlace(PQconnectdb(direccion.toUtf8().constData()))
    {
        if (PQstatus(enlace) != CONNECTION_OK)
            qFatal("%s", PQerrorMessage(enlace));
        PQsetNoticeProcessor(
            enlace, [](void *, const char *) {}, nullptr);
        Postgres::Correr({"SET search_path = dbo, pg_temp"}, {});
    }
    ~Postgres() override { PQfinish(enlace); }
    Postgres(const Postgres &) = delete;
    Postgres &operator=(const Postgres &) = delete;

    void Correr(const std::vector<QByteArray> &textos, const Fila &fila) override
    {
        std::vector<const char *> valores;
        for (const QByteArray &texto : textos) {
            PGresult *resultado = PQexec(enlace, texto.constData());
            const auto estado = PQresultStatus(resultado);
            if (estado != PGRES_TUPLES_OK && estado != PGRES_COMMAND_OK)
                qFatal("%s: %s", texto.constData(), PQerrorMessage(enlace));
            for (int n = 0; n < PQntuples(resultado); ++n) {
                valores.clear();
                for (int i = 0; i < PQnfields(resultado); ++i)
                    valores.push_back(PQgetisnull(resultado, n, i) ? nullptr : PQgetvalue(resultado, n, i));
                if (fila)
                    fila(valores);
            }
            PQclear(resultado);
        }
    }

private:
    PGconn *enlace;
};

} // namespace

std::unique_ptr<Crudo> CrudoSqlite(const QString &archivo)
{
    return std::make_unique<Sqlite>(archivo);
}

std::unique_ptr<Crudo> CrudoPostgres(const QString &direccion)
{
    return std::make_unique<Postgres>(direccion);
}
