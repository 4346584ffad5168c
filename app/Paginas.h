#pragma once

#include <QKeySequence>
#include <QTabWidget>
#include <functional>

// A page of the window.
struct Pagina {
    QString nombre; // by which the others call it
    QString titulo; // with the letter that Alt takes in the menu
    QString orden;  // of its command in the menu "Ver"
    QKeySequence tecla;
    QString capitulo; // of the manual
    std::function<QWidget *()> hacer;
};

// The pages of the window, in their order; each is made when it is first shown.
class Paginas : public QTabWidget
{
    Q_OBJECT

public:
    explicit Paginas(QWidget *padre = nullptr);

    void Agregar(const Pagina &pagina);
    const QList<Pagina> &Todas() const { return paginas; }
    bool Hay(const QString &nombre) const { return Lugar(nombre) >= 0; }
    void Mostrar(const QString &nombre);
    const Pagina &Actual() const { return paginas.at(currentIndex()); }
    // nullptr before it was shown.
    QWidget *Hecha(const QString &nombre) const;

Q_SIGNALS:
    void Mostrada(const QString &nombre);

private:
    int Lugar(const QString &nombre) const;
    void AlCambiar(int lugar);

    QList<Pagina> paginas;
    QList<QWidget *> hechas;
};
