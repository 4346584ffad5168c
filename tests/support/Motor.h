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

// A database of a test's own, on the engine that QVX_PRUEBA_MOTOR names ("postgres"; the embedded one without it).
class Motor
{
public:
    explicit Motor(bool conEjemplos);
    // The database of that name on the server, which another process made.
    explicit Motor(const QString &ajena) : nombre(ajena) {}
    ~Motor();
    Motor(const Motor &) = delete;
    Motor &operator=(const Motor &) = delete;

    // As the application opens it, signed in as mlopez.
    std::unique_ptr<qvx::Conexion> Abrir() const;
    std::unique_ptr<OtroPrograma> Otro() const;
    // What "quorvex" is told on its command line to open it.
    QStringList Argumentos() const;
    static bool EnServidor();
    // The embedded engine's file.
    QString Archivo() const { return nombre; }

private:
    void HacerEnServidor(bool conEjemplos);

    QTemporaryDir carpeta;
    QString nombre; // of the file, or of the database on the server
    bool propia = false;
};
