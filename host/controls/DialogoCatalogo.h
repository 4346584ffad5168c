#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;
class QTreeView;

namespace qvx
{

class ModeloCatalogo;

// The host's search dialog over a catalogue: what is typed narrows the list, the arrows move in it, Enter accepts.
class DialogoCatalogo : public QDialog
{
    Q_OBJECT

public:
    // The key chosen, "" for none. maximo: rows shown at once, 0 for all; filtro: a further condition in SQL. duena:
    // the box, or the form with the grid, that asks; the key that it holds is the one chosen at first. Raises data
    // errors.
    static QString Elegir(const QString &catalogo, int maximo, const QString &filtro, const QFont &fuente,
                          QWidget *duena);

protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;
    void showEvent(QShowEvent *evento) override;

private:
    DialogoCatalogo(const QString &catalogo, int maximo, const QString &filtro, QWidget *duena);
    void Disponer();
    void PonerColumnas();
    void Filtrar();
    void Avisar();
    void ElegirFila(int fila);
    QString ClaveElegida() const;

    int maximo;
    QString presente;
    ModeloCatalogo *modelo;
    QLineEdit *txtBuscar;
    QTreeView *lvEntradas;
    QLabel *aviso;
    QPushButton *cmdAceptar = nullptr;
};

} // namespace qvx
