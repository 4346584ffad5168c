#pragma once

#include <QKeySequence>
#include <QList>
#include <QWidget>
#include <functional>

class QAction;
class QHBoxLayout;
class QMenu;
class QPushButton;

// The commands of a page: their keys, their place in the menu of its list, and a row of buttons. Those that find no
// room there stand in the menu of a last one.
class FilaDeAcciones : public QWidget
{
    Q_OBJECT

public:
    // The keys are those of the page; a click with the other button on the list has the commands too.
    FilaDeAcciones(QWidget &pagina, QWidget &lista);

    // nombre: behind "acc", and of its button behind "cmd".
    QAction *Accion(const QString &nombre, const QString &texto, const QKeySequence &tecla,
                    const std::function<void()> &hacer);
    QAction *ConBoton(const QString &nombre, const QString &texto, const QKeySequence &tecla,
                      const std::function<void()> &hacer);
    // What comes after it stands at the other end.
    void Separar();
    // A button with a menu, which always has its room.
    QMenu *ConMenu(const QString &nombre, const QString &texto);

    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *evento) override;

private:
    void Acomodar();
    // All that there is from left to right, as wide as it wants to be.
    int Ancho(const QList<QWidget *> &cuales) const;

    QWidget &pagina;
    QWidget &lista;
    QHBoxLayout *fila;
    QPushButton *mas;
    QList<QPair<QPushButton *, QAction *>> botones;
    QList<QWidget *> fijos;
};
