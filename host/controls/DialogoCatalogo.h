#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;

namespace qvx
{

// The host's search dialog over a catalogue: what is typed narrows the list, the arrows move in it, Enter accepts.
class DialogoCatalogo : public QDialog
{
    Q_OBJECT

public:
    // The key chosen, "" for none. maximo: rows shown at once, 0 for all; filtro: a further condition in SQL. Raises
    // data errors of the first search.
    static QString Elegir(const QString &catalogo, int maximo, const QString &filtro, const QFont &fuente,
                          QWidget *duena);

protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;

private:
    DialogoCatalogo(QString codigo, int maximo, QString filtro, QWidget *duena);
    void Llenar();
    void AlEscribir();
    QString ClaveElegida() const;

    QString catalogo;
    int maximo;
    QString filtro;
    QLineEdit *txtBuscar;
    QTreeWidget *lvEntradas;
    QLabel *aviso;
    QPushButton *cmdAceptar;
};

} // namespace qvx
