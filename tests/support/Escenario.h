#pragma once

#include "data/Conexion.h"
#include "session/Aplicacion.h"
#include "session/Sesion.h"
#include "support/PersonasDePrueba.h"

#include <QTemporaryDir>
#include <QTest>
#include <QWidget>
#include <memory>

// A signed-in session on a real database of its own, with a person and a clock of the test, and the component's screen
// as a host gets it.
class Escenario
{
public:
    explicit Escenario(bool conEjemplos = false);
    ~Escenario();

    QString Archivo() const { return carpeta.filePath("prueba.db"); }
    PersonasDePrueba &Personas() const { return *personas; }
    QDateTime ahora = QDateTime(QDate(2026, 3, 14), QTime(9, 26, 53));

    // Runs SQL of the engine's own on a connection of another program; the first column of the first row.
    QVariant Motor(const QString &sql) const;
    // The rows of a query, each as its values joined by "|", on that other connection: only what is committed.
    QStringList Filas(const QString &sql) const;
    // Everything the plan's tables hold: equal texts, equal tables.
    QStringList Tablas() const;
    // A second connection that holds the database's write lock until it is destroyed.
    std::unique_ptr<QObject> Ocupar() const;
    // Likewise one that is in the middle of reading.
    std::unique_ptr<QObject> Leyendo() const;

    // The screen from the component's entry points, its parent an object with these properties, shown in a window.
    QWidget &Pantalla(const QString &parametros = {});
    void CerrarPantalla();
    template <class Control>
    Control &En(QWidget &forma, const QString &nombre) const
    {
        auto *control = forma.findChild<Control *>(nombre);
        if (!control)
            qFatal("No existe el control %s", qPrintable(nombre));
        return *control;
    }
    template <class Control>
    Control &De(const QString &nombre) const
    {
        return En<Control>(*pantalla, nombre);
    }

    // The statements since the last call, with their marks ("-" transaction, "!" failed, else the rows), without the
    // host's own look-ups.
    QStringList Traza();

private:
    QTemporaryDir carpeta;
    PersonasDePrueba *personas;
    std::unique_ptr<qvx::Sesion> sesion;
    std::unique_ptr<QWidget> ventana;
    QObject padre;
    QPointer<QWidget> pantalla;
    qint64 leido = 0;
};

// Does something in the next modal form, as soon as it is active, and closes it if the steps did not.
void EnElDialogo(const std::function<void(QWidget &)> &pasos);

#define PRUEBA_MAIN(Clase)                                                                                             \
    int main(int argc, char **argv)                                                                                    \
    {                                                                                                                  \
        qvx::Aplicacion aplicacion(argc, argv);                                                                        \
        Clase prueba;                                                                                                  \
        return QTest::qExec(&prueba, argc, argv);                                                                      \
    }
