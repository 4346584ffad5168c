#pragma once

#include "system/Exporta.h"

#include <QPointer>
#include <QWidget>

namespace QVX_EXPORTA qvx
{

// Whoever waited for a person finds his form closed or destroyed: his procedure has nothing more to do, and nothing to
// report. No error of the system's, so that no report catches it; it must not leave the handler of an event.
class Q_DECL_EXPORT FormularioIdo
{
};

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
    // Shows the form over its owner and returns when it is hidden or unloaded; raises FormularioIdo when it was
    // destroyed meanwhile.
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

// Watches over a form while its procedure waits for a person: its host may close it or destroy it meanwhile.
class Vigia
{
public:
    explicit Vigia(const Formulario &formulario_) : formulario(&formulario_), cargado(formulario_.Cargado()) {}
    // Raises FormularioIdo.
    void Revisar() const
    {
        if (!formulario || (cargado && !formulario->Cargado()))
            throw FormularioIdo();
    }

private:
    QPointer<const Formulario> formulario;
    bool cargado;
};

} // namespace qvx
