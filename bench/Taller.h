#pragma once

#include "bench/Base.h"
#include "controls/ListView.h"
#include "controls/TreeView.h"
#include "session/Interaccion.h"
#include "tests/support/Manos.h"

#include <QTemporaryDir>
#include <QWidget>
#include <functional>
#include <memory>

namespace qvx
{
class Sesion;
}

// Answers Yes, chooses what it was told to, and ends the program when something failed.
class Respuestas : public qvx::Interaccion
{
public:
    QString clave;   // of the next search
    QString archivo; // of the next file dialog

    int Mensaje(const qvx::Aviso &aviso) override;
    QString BuscarEnCatalogo(const QString &catalogo, int maximo, const QString &filtro, const QFont &fuente,
                             QWidget *duena) override;
    QString ElegirArchivo(const qvx::PeticionArchivo &peticion, QWidget *duena) override;
    void InformacionRegistro(const QList<QPair<QString, QString>> &datos, QWidget *duena) override;
};

// The real component in the real host's window, on a database of the benchmark.
class Taller
{
public:
    // conTraza: writes down every statement, which costs time.
    Taller(const Base &base, bool conTraza);
    ~Taller();
    Taller(const Taller &) = delete;
    Taller &operator=(const Taller &) = delete;

    Respuestas &Persona() { return *respuestas; }
    template <class Control>
    Control &De(const QString &nombre) const
    {
        return En<Control>(*ventana, nombre);
    }

    // Puts an equipment type on the screen, with its tree.
    void Elegir(const QString &tipoEquipo) const;
    void ElegirNodo(const QString &clave) const;
    void Pulsar(const QString &boton) const;
    // As the application hears of what a person does: what the steps read is of one moment.
    static void EnUnEvento(const std::function<void()> &pasos);
    // Lays out and paints a window whole, at once: left to itself it waits for some milliseconds.
    static void Pintar(QWidget &ventana);
    void Pintar() const { Pintar(*ventana); }
    // Until nothing is left to do for the windows.
    static void Asentar();

    // The statements since the last call as the engine's library takes them, the transaction marks among them.
    std::vector<QByteArray> Textos();

private:
    QTemporaryDir carpeta;
    Respuestas *respuestas;
    bool enServidor;
    std::unique_ptr<qvx::Sesion> sesion;
    std::unique_ptr<QWidget> ventana;
    qint64 leido = 0;
};
