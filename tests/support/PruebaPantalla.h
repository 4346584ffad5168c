#pragma once

#include "support/Averia.h"
#include "support/Planificador.h"
#include "support/Tabla.h"

#include <QLineEdit>

// A test at the screen, with the plan of SembrarPlan and its type 0900 chosen. Whoever causes a message takes it.
class PruebaPantalla : public QObject, protected Planificador
{
    Q_OBJECT

protected:
    QStringList Mensajes() const { return escenario->Personas().Tomar(); }
    QStringList Dichos() const; // without the questions
    // Changes the tables as another program does, and reads the tree again.
    void Preparar(const QString &sentencias) const;
    // The parts of the type on the screen, each as these columns.
    QString Partes(const QString &columnas, const QString &condicion = "1 = 1") const;

    QWidget *pantalla = nullptr;

protected Q_SLOTS:
    void init();
    void cleanup();

private:
    std::unique_ptr<Escenario> propio;
};
