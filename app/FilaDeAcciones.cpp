#include "app/FilaDeAcciones.h"

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QPushButton>

FilaDeAcciones::FilaDeAcciones(QWidget &pagina_, QWidget &lista_)
    : pagina(pagina_), lista(lista_), fila(new QHBoxLayout(this)), mas(new QPushButton("Más"))
{
    fila->setContentsMargins(0, 0, 0, 0);
    fila->setSizeConstraint(QLayout::SetNoConstraint);
    mas->setObjectName("cmdMas");
    mas->setAccessibleName("Más órdenes");
    mas->setVisible(false);
    auto *menu = new QMenu(mas);
    mas->setMenu(menu);
    connect(menu, &QMenu::aboutToShow, this, [this, menu] {
        menu->clear();
        for (const auto &[boton, accion] : std::as_const(botones))
            if (boton->isHidden())
                menu->addAction(accion);
    });
    fila->addWidget(mas);
}

QAction *FilaDeAcciones::Accion(const QString &nombre, const QString &texto, const QKeySequence &tecla,
                                const std::function<void()> &hacer)
{
    auto *accion = new QAction(texto, &pagina);
    accion->setObjectName("acc" + nombre);
    accion->setShortcut(tecla);
    accion->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(accion, &QAction::triggered, &pagina, hacer);
    pagina.addAction(accion);
    lista.addAction(accion);
    return accion;
}

QAction *FilaDeAcciones::ConBoton(const QString &nombre, const QString &texto, const QKeySequence &tecla,
                                  const std::function<void()> &hacer)
{
    QAction *accion = Accion(nombre, texto, tecla, hacer);
    auto *boton = new QPushButton(texto);
    boton->setObjectName("cmd" + nombre);
    boton->setAutoDefault(false);
    if (!tecla.isEmpty())
        boton->setToolTip(tecla.toString(QKeySequence::NativeText));
    connect(boton, &QPushButton::clicked, accion, &QAction::trigger);
    connect(accion, &QAction::enabledChanged, boton, &QWidget::setEnabled);
    fila->insertWidget(fila->indexOf(mas), boton);
    botones.append({boton, accion});
    return accion;
}

void FilaDeAcciones::Separar()
{
    fila->insertStretch(fila->indexOf(mas));
}

QMenu *FilaDeAcciones::ConMenu(const QString &nombre, const QString &texto)
{
    auto *boton = new QPushButton(texto);
    boton->setObjectName("cmd" + nombre);
    auto *menu = new QMenu(boton);
    boton->setMenu(menu);
    fila->addWidget(boton);
    fijos.append(boton);
    return menu;
}

int FilaDeAcciones::Ancho(const QList<QWidget *> &cuales) const
{
    int ancho = 0;
    for (const QWidget *boton : cuales)
        ancho += boton->sizeHint().width() + fila->spacing();
    return ancho;
}

QSize FilaDeAcciones::minimumSizeHint() const
{
    return {Ancho(fijos + QList<QWidget *>{mas}), fila->minimumSize().height()};
}

bool FilaDeAcciones::event(QEvent *evento)
{
    const bool resultado = QWidget::event(evento);
    if (evento->type() == QEvent::Resize || evento->type() == QEvent::LayoutRequest || evento->type() == QEvent::Show)
        Acomodar();
    return resultado;
}

// The last ones give way first.
void FilaDeAcciones::Acomodar()
{
    QList<QWidget *> todos = fijos;
    for (const auto &par : std::as_const(botones))
        todos.append(par.first);
    qsizetype caben = botones.size();
    if (Ancho(todos) > width() + fila->spacing()) {
        todos.append(mas);
        while (caben > 0 && Ancho(todos) > width() + fila->spacing())
            todos.removeOne(botones.at(--caben).first);
    }
    mas->setVisible(caben < botones.size());
    for (qsizetype i = 0; i < botones.size(); ++i)
        botones.at(i).first->setVisible(i < caben);
}
