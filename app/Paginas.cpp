#include "app/Paginas.h"

#include <QScrollArea>
#include <QTabBar>

namespace
{

// A page that needs more room than the screen has can be moved about.
QScrollArea *Marco()
{
    auto *marco = new QScrollArea;
    marco->setObjectName("marco");
    marco->setFrameShape(QFrame::NoFrame);
    marco->setWidgetResizable(true);
    marco->setFocusPolicy(Qt::NoFocus);
    return marco;
}

} // namespace

Paginas::Paginas(QWidget *padre) : QTabWidget(padre)
{
    setObjectName("tabPaginas");
    setAccessibleName("Páginas");
    setDocumentMode(true);
    tabBar()->setDrawBase(false); // a white line, on a dark desktop too
    connect(this, &QTabWidget::currentChanged, this, &Paginas::AlCambiar);
}

void Paginas::Agregar(const Pagina &pagina)
{
    paginas.append(pagina);
    hechas.append(nullptr);
    const QSignalBlocker callada(this); // the first one would be shown at once
    addTab(Marco(), QString(pagina.titulo).remove(QLatin1Char('&')));
}

void Paginas::Mostrar(const QString &nombre)
{
    const int lugar = Lugar(nombre);
    if (lugar == currentIndex())
        AlCambiar(lugar);
    else if (lugar >= 0)
        setCurrentIndex(lugar);
}

QWidget *Paginas::Hecha(const QString &nombre) const
{
    const int lugar = Lugar(nombre);
    return lugar < 0 ? nullptr : hechas.at(lugar);
}

int Paginas::Lugar(const QString &nombre) const
{
    for (int lugar = 0; lugar < paginas.size(); ++lugar)
        if (paginas.at(lugar).nombre == nombre)
            return lugar;
    return -1;
}

void Paginas::AlCambiar(int lugar)
{
    if (lugar < 0)
        return;
    QWidget *foco = widget(lugar)->focusWidget(); // where it was left
    if (!hechas.at(lugar)) {
        QWidget *hecha = paginas.at(lugar).hacer();
        auto *marco = static_cast<QScrollArea *>(widget(lugar));
        marco->setWidget(hecha);
        hecha->setAutoFillBackground(false);
        if (isVisible()) // the frame would do so later, and whoever asked for the page uses it now
            hecha->show();
        widget(lugar)->setFocusProxy(hecha);
        hechas[lugar] = hecha;
    }
    (foco ? foco : widget(lugar))->setFocus();
    Q_EMIT Mostrada(paginas.at(lugar).nombre);
}
