#pragma once

#include "bench/DocumentoCrudo.h"
#include "bench/Medicion.h"
#include "bench/Taller.h"

#include <optional>

// The jobs that are measured, on two databases with the same plan: one for the component, one for the baselines.
class Tareas
{
public:
    Tareas(const Base &nuestra, const Base &ajena, const Tamano &tamano);
    // The component alone: no baselines, and no counts of statements.
    Tareas(const Base &nuestra, const Tamano &tamano);

    static QStringList Nombres();
    // Prepares one: runs it once with the trace, which gives the statements of its baseline.
    Tarea Preparar(const QString &nombre);

private:
    Tarea Arbol();
    Tarea ArbolConControl();
    Tarea Lista();
    Tarea Abrir();
    Tarea Guardar();
    Tarea Exportar();
    Tarea Importar();
    Tarea Copiar();

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
