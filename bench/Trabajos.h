#pragma once

#include "bench/DocumentoCrudo.h"
#include "bench/Medicion.h"
#include "bench/Taller.h"

#include <optional>

// The jobs that are measured, on two databases with the same plan: one for the component, one for the baselines.
class Trabajos
{
public:
    Trabajos(const Base &nuestra, const Base &ajena, const Tamano &tamano);
    // The component alone: no baselines, and no counts of statements.
    Trabajos(const Base &nuestra, const Tamano &tamano);

    static QStringList Nombres();
    // Prepares one: runs it once with the trace, which gives the statements of its baseline.
    Trabajo Preparar(const QString &nombre);

private:
    Trabajo Arbol();
    Trabajo ArbolConControl();
    Trabajo Lista();
    Trabajo Abrir();
    Trabajo Guardar();
    Trabajo Exportar();
    Trabajo Importar();
    Trabajo Copiar();

    // Writes down what the component runs during the steps (unless they did), and makes it ready to be measured.
    void Grabar(const std::function<void()> &antes, const std::function<void()> &pasos);
    int Refacciones();
    double EnElEditor(const std::function<void(QWidget &editor)> &pasos);

    const Base &nuestra;
    const Base &ajena;
    Tamano tamano;
    bool solo = false;
    QTemporaryDir carpeta;
    std::unique_ptr<Crudo> crudo;
    std::unique_ptr<Taller> taller;
    std::vector<QByteArray> textos;
    std::optional<DocumentoCrudo> documento;
};
