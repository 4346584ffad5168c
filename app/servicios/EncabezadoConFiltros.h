#pragma once

#include <QHeaderView>

class QLineEdit;

// Titles of columns with a box below each, in which what the column must meet is typed.
class EncabezadoConFiltros : public QHeaderView
{
    Q_OBJECT

public:
    explicit EncabezadoConFiltros(QWidget *padre);

    // Of each column the name of its box, and what it is for.
    void PonerFiltros(const QStringList &nombres, const QStringList &ayudas);
    void Vaciar();
    QSize sizeHint() const override;

Q_SIGNALS:
    void Filtrado(int columna, const QString &texto);
    // The box got the cursor: its column must be in sight.
    void Entrado(int columna);

protected:
    void updateGeometries() override;
    bool eventFilter(QObject *objeto, QEvent *evento) override;

private:
    void Colocar();

    QList<QLineEdit *> cajas;
};
