#pragma once

#include <QDialog>

class QListWidget;
class QTextBrowser;

// The manual, with its pictures, beside the window: nothing in it leads out of it.
class VentanaDelManual : public QDialog
{
    Q_OBJECT

public:
    explicit VentanaDelManual(QWidget *duena);

    // Shows the chapter with this heading, the beginning when there is none.
    void Abrir(const QString &capitulo);

private:
    void PonerTablas();
    void PonerIndice();
    void IrA(int bloque);
    void Seguir(const QUrl &enlace);

    QListWidget *lstCapitulos;
    QTextBrowser *txtManual;
};
