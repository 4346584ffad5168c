#pragma once

#include "data/Conexion.h"

#include <QObject>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>

// Another program's connection to the same database, with every right.
class OtroPrograma : public QObject
{
public:
    explicit OtroPrograma(const QSqlDatabase &abierta) : base(abierta) {}
    ~OtroPrograma() override;
    QSqlQuery Correr(const QString &sql) const;
    // Whether the engine carries a statement out.
    bool Puede(const QString &sql) const { return QSqlQuery(base).exec(sql); }
    // Each as its values joined by "|".
    QStringList Filas(const QString &sql) const;

private:
    QSqlDatabase base;
};

// A database of a test's own, on the engine under test.
class BaseDePrueba
{
public:
    explicit BaseDePrueba(bool conEjemplos);
    // The database of that name on the server, which another process made.
    explicit BaseDePrueba(const QString &ajena) : nombre(ajena) {}
    ~BaseDePrueba();
    BaseDePrueba(const BaseDePrueba &) = delete;
    BaseDePrueba &operator=(const BaseDePrueba &) = delete;

    // As the application opens it, signed in as mlopez.
    std::unique_ptr<qvx::Conexion> Abrir() const;
    std::unique_ptr<OtroPrograma> Otro() const;
    // The same each time where the server's sign-in costs more than what is asked, as long as it answers.
    const OtroPrograma &Testigo() const;
    // What "quorvex" is told on its command line to open it.
    QStringList Argumentos() const;
    // The embedded engine's file.
    QString Archivo() const { return nombre; }

private:
    void HacerEnServidor(bool conEjemplos);

    QTemporaryDir carpeta;
    QString nombre; // of the file, or of the database on the server
    mutable std::unique_ptr<OtroPrograma> testigo;
    bool propia = false;
};
