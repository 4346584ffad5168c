#pragma once

#include "system/Exporta.h"

#include <QWidget>

namespace QVX_EXPORTA comunesQVX
{

// The file dialog, placed invisibly on a form. Chooses a name; opens and writes nothing.
class CommonDialog : public QWidget
{
    Q_OBJECT

public:
    explicit CommonDialog(QWidget *padre = nullptr) : QWidget(padre) { hide(); }

    void setDialogTitle(const QString &texto) { titulo = texto; }
    // Description and pattern, "Archivo XML|*.xml".
    void setFilter(const QString &texto) { filtro = texto; }
    // The name proposed, or the full path last chosen.
    QString FileName() const { return archivo; }
    void setFileName(const QString &nombre) { archivo = nombre; }
    // The part of FileName behind its folder.
    QString FileTitle() const;
    void setInitDir(const QString &ruta) { carpeta = ruta; }
    void setCancelError(bool valor) { errorAlCancelar = valor; }

    // Ask for a file to write, for an existing one to read. Cancelled: FileName stays, and DialogoCancelado is raised
    // if CancelError is on.
    void ShowSave() { Mostrar(true); }
    void ShowOpen() { Mostrar(false); }

private:
    void Mostrar(bool paraGuardar);

    QString titulo;
    QString filtro;
    QString archivo;
    QString carpeta;
    bool errorAlCancelar = false;
};

} // namespace comunesQVX
