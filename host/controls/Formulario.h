#pragma once

#include <QPointer>
#include <QWidget>

namespace qvx
{

// Base of every form: load, activate, resize and unload as events; twips; modal showing.
class Formulario : public QWidget
{
    Q_OBJECT

public:
    // Docked: the host gives it its place.
    Formulario() = default;
    // For MostrarModal, over its owner's window. Known from the beginning: in a window that gets another parent the
    // toolkit styles every control again, and it would open half as fast.
    explicit Formulario(const QWidget *duena);

    // Runs the load once; showing a form that is not loaded loads it first.
    void Cargar();
    bool Cargado() const { return cargado; }
    // Shows the form over its owner and returns when it is hidden or unloaded.
    void MostrarModal();
    // Ends the form: Form_Unload, hidden. It is destroyed by whoever created it, or by its own Form_Unload.
    void Descargar();

    // Handle that messages are owned by.
    WId hWnd() const { return winId(); }

    // Sizes of the inside, and any pixel size, in twips (1/1440 inch at the screen's logical resolution).
    int ScaleWidth() const { return Twips(width()); }
    int ScaleHeight() const { return Twips(height()); }
    int Twips(int pixeles) const;
    int Pixeles(int twips) const;
    // The size wished for a window, no larger than its screen has room for.
    static QSize Cabida(const QWidget &ventana, const QSize &deseada);

Q_SIGNALS:
    void Descargado();
    void Oculto();

protected:
    virtual void Form_Load() {}
    virtual void Form_Activate() {}
    virtual void Form_Resize() {}
    virtual void Form_Unload() {}

    bool event(QEvent *evento) override;
    void showEvent(QShowEvent *evento) override;
    void resizeEvent(QResizeEvent *evento) override;
    void closeEvent(QCloseEvent *evento) override;
    void hideEvent(QHideEvent *evento) override;

private:
    bool cargado = false;
};

} // namespace qvx
