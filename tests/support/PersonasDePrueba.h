#pragma once

#include "session/Interaccion.h"

#include <QList>
#include <QStringList>
#include <functional>
#include <memory>

// Stands for the person: records every message, answers questions and searches from a script. A question that was not
// foreseen, and an answer that nobody asked for, fail the test.
class PersonasDePrueba : public qvx::Interaccion
{
public:
    int Mensaje(const qvx::Aviso &aviso) override;
    QString BuscarEnCatalogo(const QString &catalogo, int maximo, const QString &filtro, const QFont &fuente,
                             QWidget *duena) override;
    QString ElegirArchivo(const qvx::PeticionArchivo &peticion, QWidget *duena) override;
    void InformacionRegistro(const QList<QPair<QString, QString>> &datos, QWidget *duena) override;

    // The next question with this identifier gets this answer; antes runs while it is shown.
    void Responder(int identificador, int respuesta, const std::function<void()> &antes = {});
    void Elegir(const QString &catalogo, const QString &clave);
    // The next file dialog gets this path; "" cancels it.
    void DarArchivo(const QString &ruta) { archivos.append(ruta); }

    // The messages so far, as "estilo|título|módulo|identificador|texto", and forgets them.
    QStringList Tomar();
    QStringList detalles; // of these messages

    // When it is set, it asks and tells in this one's place.
    std::unique_ptr<qvx::Interaccion> real;

    // Forgets the answers that were not used.
    void Descartar();
    // Fails the test when an answer was not used.
    void Revisar() const;

private:
    struct Respuesta {
        QString identificador;
        int boton;
        std::function<void()> antes;
    };
    QStringList avisos;
    QList<Respuesta> respuestas;
    QList<QPair<QString, QString>> elecciones;
    QStringList archivos;
};
