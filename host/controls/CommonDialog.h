#pragma once

#include <QWidget>

namespace comunesQVX
{

// The file dialog, placed invisibly on a form. Chooses a name; opens and writes nothing.
class CommonDialog : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString DialogTitle READ DialogTitle WRITE setDialogTitle)
    Q_PROPERTY(QString Filter READ Filter WRITE setFilter)
    Q_PROPERTY(QString FileName READ FileName WRITE setFileName)
    Q_PROPERTY(QString InitDir READ InitDir WRITE setInitDir)
    Q_PROPERTY(bool CancelError READ CancelError WRITE setCancelError)

public:
    explicit CommonDialog(QWidget *padre = nullptr) : QWidget(padre) { hide(); }

    QString DialogTitle() const { return titulo; }
    void setDialogTitle(const QString &texto) { titulo = texto; }
    // Description and pattern, "Archivo XML|*.xml".
    QString Filter() const { return filtro; }
    void setFilter(const QString &texto) { filtro = texto; }
    // The name proposed, or the full path last chosen.
    QString FileName() const { return archivo; }
    void setFileName(const QString &nombre) { archivo = nombre; }
    // The part of FileName behind its folder.
    QString FileTitle() const;
    QString InitDir() const { return carpeta; }
    void setInitDir(const QString &ruta) { carpeta = ruta; }
    bool CancelError() const { return errorAlCancelar; }
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
