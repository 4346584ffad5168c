#pragma once

#include "system/Exporta.h"

#include <QDialog>
#include <functional>

class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace QVX_EXPORTA qvx
{

class ModeloTabla;
class VistaTabla;

// The host's search dialog over a catalogue: what is typed narrows the list, the arrows move in it, Enter accepts.
class DialogoCatalogo : public QDialog
{
    Q_OBJECT

public:
    // Makes an entry of a catalogue with the person; gives its key, "" for none. escrito: what he was looking for.
    using Alta = std::function<QString(const QString &catalogo, const QString &escrito, QWidget *duena)>;

    // The key chosen, "" for none. maximo: rows shown at once, 0 for all; filtro: a further condition in SQL. duena:
    // the box, or the form with the grid, that asks; the key that it holds is the one chosen at first. alta: where a
    // new entry can be made from here; it is then the one chosen. Raises data errors.
    static QString Elegir(const QString &catalogo, int maximo, const QString &filtro, const QFont &fuente,
                          QWidget *duena, const Alta &alta);

protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;
    void showEvent(QShowEvent *evento) override;

private:
    DialogoCatalogo(const QString &catalogo, int maximo, const QString &filtro, QWidget *duena);
    void Leer(const QString &catalogo, const QString &filtro);
    void Disponer();
    void OfrecerAlta(const QString &catalogo, const Alta &alta);
    void Filtrar();
    void Avisar();
    void ElegirFila(int fila);
    QString ClaveElegida() const;

    int maximo;
    QString presente;
    ModeloTabla *modelo;
    QLineEdit *txtBuscar;
    VistaTabla *lvEntradas;
    QLabel *aviso;
    QDialogButtonBox *botones = nullptr;
    QPushButton *cmdAceptar = nullptr;
    QString creada;
};

} // namespace qvx
