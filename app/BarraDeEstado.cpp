#include "app/BarraDeEstado.h"

#include "app/Textos.h"
#include "session/Aplicacion.h"

#include <QLabel>

namespace
{

// Names are no markup.
QLabel *Rotulo(const QString &texto)
{
    auto *rotulo = new QLabel(texto);
    rotulo->setTextFormat(Qt::PlainText);
    return rotulo;
}

} // namespace

BarraDeEstado::BarraDeEstado(const QString &operador, const QString &baseDatos, QWidget *padre) : QStatusBar(padre)
{
    addWidget(Rotulo("Operador: " + operador));
    sugerencia = Entre("lblSugerencia");
    PonerAvance();
    QLabel *base = Rotulo(baseDatos);
    base->setObjectName("lblBaseDatos");
    addPermanentWidget(base);
}

void BarraDeEstado::Sugerir(const QString &que)
{
    sugerencia->setText(que);
}

// A label that takes the room between the operator and the database, whatever it says.
QLabel *BarraDeEstado::Entre(const QString &nombre)
{
    QLabel *rotulo = Rotulo({});
    rotulo->setObjectName(nombre);
    rotulo->setIndent(24);
    rotulo->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    addWidget(rotulo, 1);
    return rotulo;
}

// While a job runs, how far it is stands in the place of what to do next.
void BarraDeEstado::PonerAvance()
{
    QLabel *avance = Entre("lblAvance");
    avance->hide();
    const auto *aplicacion = qobject_cast<qvx::Aplicacion *>(QCoreApplication::instance());
    if (!aplicacion)
        return;
    connect(aplicacion, &qvx::Aplicacion::Avance, avance, [this, avance](int sentencias) {
        avance->setText("Trabajando… " + Cuantos(sentencias, "sentencia", "sentencias"));
        sugerencia->hide();
        avance->show();
    });
    connect(aplicacion, &qvx::Aplicacion::Reposo, avance, [this, avance] {
        avance->clear();
        avance->hide();
        sugerencia->show();
    });
}
