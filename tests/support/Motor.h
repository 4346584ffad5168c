#pragma once

#include "data/Conexion.h"

#include <QObject>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStringList>
#include <memory>

// Another program's connection to the same database, with every right.
class OtroPrograma : public QObject
{
public:
    explicit OtroPrograma(const QSqlDatabase &abierta) : base(abierta) {}
    ~OtroPrograma() override;
    QSqlQuery Correr(const QString &sql) const;
    // Each as its values joined by "|".
    QStringList Filas(const QString &sql) const;

private:
    QSqlDatabase base;
};

// A database of a test's own, on the engine that QVX_PRUEBA_MOTOR names ("postgres"; the embedded one without it).
class Motor
{
public:
    static std::unique_ptr<Motor> Nuevo(bool conEjemplos);
    static bool EnServidor();
    // One that another process made: its file, or the name of the database on the server.
    static std::unique_ptr<Motor> DeArchivo(const QString &archivo);
    virtual ~Motor() = default;

    // As the application opens it, signed in as mlopez.
    virtual std::unique_ptr<qvx::Conexion> Abrir() const = 0;
    virtual std::unique_ptr<OtroPrograma> Otro() const = 0;
    // What "quorvex" is told on its command line to open it.
    virtual QStringList Argumentos() const = 0;
    virtual bool EsPostgres() const = 0;
    // The embedded engine's file, "" on the server.
    virtual QString Archivo() const { return {}; }

    // Statements of the engine's own: one that makes the event ("INSERT ON Producto", "BEFORE" it) fail with the text
    // "falla" where the condition on NEW and OLD holds; or, when it is to be omitted, pass over the row without a word.
    virtual QStringList Falla(const QString &cuando, const QString &suceso, const QString &condicion,
                              bool omitida) const = 0;
    virtual QStringList SinFalla() const = 0;
    // Holds every plan, as one in the middle of a change does.
    virtual QStringList Ocupacion() const = 0;
    // Lets every change of a plan through, and keeps it from being committed while the connection is there or until
    // SinFalla.
    virtual QStringList SinConfirmacion() const = 0;
    // The query that answers how a statement would find its rows.
    virtual QStringList Examen(const QString &sql) const = 0;
};
