#pragma once

#include "session/Sesion.h"
#include "support/BaseDePrueba.h"
#include "support/Manos.h"
#include "support/Motor.h"
#include "support/PersonasDePrueba.h"
#include "support/Prueba.h"

#include <QTemporaryDir>
#include <QWidget>
#include <memory>
#include <sys/resource.h>

// A signed-in session on a real database of its own, with a person and a clock of the test, and the component's screen
// as a host gets it. The same on each engine.
class Escenario
{
public:
    explicit Escenario(bool conEjemplos = false);
    // On a database of the server that another process's test made.
    explicit Escenario(const QString &baseAjena);
    ~Escenario();

    // A file beside the database's own.
    QString Ruta(const QString &nombre) const { return carpeta.filePath(nombre); }
    const BaseDePrueba &Base() const { return base; }
    PersonasDePrueba &Personas() const { return *personas; }
    QDateTime ahora = QDateTime(QDate(2026, 3, 14), QTime(9, 26, 53));

    // Runs SQL of the engine's own on a connection of another program; the first column of the first row.
    QVariant Correr(const QString &sql) const;
    // The rows of a query, each as its values joined by "|", on that other connection: only what is committed.
    QStringList Filas(const QString &sql) const;
    // Every table and its rows, behind its name: equal texts, equal tables.
    QStringList Tablas() const;
    // The rows of the plan's three tables without what the host adds to them.
    QStringList Plan() const;

    // The screen as the application makes it, its parent an object with these properties, shown in a window.
    QWidget &Pantalla(const QString &parametros = {});
    void CerrarPantalla();
    bool HayPantalla() const { return pantalla; }
    // As a host that has no more use for it.
    void DestruirVentana() { delete ventana.release(); }
    template <class Control>
    Control &De(const QString &nombre) const
    {
        return En<Control>(*pantalla, nombre);
    }

    // The statements since the last call, with their marks ("-" transaction, "!" failed, else the rows); the host's own
    // look-ups only in the whole trace.
    QStringList Traza(bool entera = false);

private:
    void Entrar();

    QTemporaryDir carpeta;
    BaseDePrueba base;
    PersonasDePrueba *personas;
    std::unique_ptr<qvx::Sesion> sesion;
    std::unique_ptr<QWidget> ventana;
    QObject padre;
    QPointer<QWidget> pantalla;
    qint64 leido = 0;
};

// While it lives, no file of this process grows past so many bytes: the engine meets the refusal of a full disk.
class DiscoLleno
{
public:
    explicit DiscoLleno(rlim_t tope = 1000);
    ~DiscoLleno();

private:
    rlimit anterior{};
    void (*senal)(int);
};
