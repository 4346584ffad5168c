#pragma once

#include <QTimer>
#include <QWidget>

class QComboBox;
class QListWidget;

// Of which equipment types a dialog is about: the one on the screen, all on offer, or several with a tick each.
class SelectorDePlanes : public QWidget
{
    Q_OBJECT

public:
    explicit SelectorDePlanes(QWidget *padre);

    // Reads the types on offer; actual: the one on the screen, "" for none. Raises data errors.
    void Ofrecer(const QString &actual);
    // The keys chosen; none when no type has its tick.
    QStringList Tipos() const;

Q_SIGNALS:
    void Cambio();

private:
    enum Alcance { DeLaPantalla, Todos, Varios };

    QString enPantalla;
    QComboBox *cboPlanes;
    QListWidget *lstTipos;
    QTimer espera; // several ticks, one reading
};
