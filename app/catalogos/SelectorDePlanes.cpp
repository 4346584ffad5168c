#include "app/catalogos/SelectorDePlanes.h"

#include "app/Trampas.h"
#include "data/Texto.h"
#include "plan/Catalogos.h"

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

namespace
{

constexpr int EsperaDeMarcas = 400; // milliseconds
constexpr int RenglonesALaVista = 5;
constexpr int AnchoEnLetras = 40;

} // namespace

SelectorDePlanes::SelectorDePlanes(QWidget *padre)
    : QWidget(padre), cboPlanes(new QComboBox(this)), lstTipos(new QListWidget(this))
{
    cboPlanes->setObjectName("cboPlanes");
    cboPlanes->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cboPlanes->setMinimumContentsLength(AnchoEnLetras);
    lstTipos->setObjectName("lstTipos");
    lstTipos->setAccessibleName("Tipos de equipo");
    lstTipos->hide();
    auto *rotulo = new QLabel("P&lanes", this);
    rotulo->setBuddy(cboPlanes);
    auto *fila = new QHBoxLayout;
    fila->addWidget(rotulo);
    fila->addWidget(cboPlanes, 1);
    auto *columna = new QVBoxLayout(this);
    columna->setContentsMargins(0, 0, 0, 0);
    columna->addLayout(fila);
    columna->addWidget(lstTipos);
    espera.setSingleShot(true);
    espera.setInterval(EsperaDeMarcas);
    connect(&espera, &QTimer::timeout, this, &SelectorDePlanes::Cambio);
    connect(lstTipos, &QListWidget::itemChanged, &espera, qOverload<>(&QTimer::start));
    connect(cboPlanes, &QComboBox::activated, this, [this] {
        lstTipos->setVisible(cboPlanes->currentData().toInt() == Varios);
        espera.stop();
        Q_EMIT Cambio();
    });
}

void SelectorDePlanes::Ofrecer(const QString &actual)
{
    enPantalla = qvx::SinBlancosAlFinal(actual);
    for (const qvx::EntradaCatalogo &tipo : qvx::LeerEntradas(Base(), "TIPO_EQUIPO", "")) {
        const QString clave = qvx::SinBlancosAlFinal(tipo.clave);
        auto *renglon = new QListWidgetItem(tipo.clave + " " + tipo.descripcion, lstTipos);
        renglon->setData(Qt::UserRole, clave);
        renglon->setFlags(renglon->flags() | Qt::ItemIsUserCheckable);
        renglon->setCheckState(clave == enPantalla ? Qt::Checked : Qt::Unchecked);
        if (clave == enPantalla)
            cboPlanes->addItem("En pantalla: " + renglon->text(), DeLaPantalla);
    }
    cboPlanes->addItem("Los de todos los tipos de equipo", Todos);
    cboPlanes->addItem("Los de varios tipos de equipo…", Varios);
    lstTipos->ensurePolished();
    lstTipos->setFixedHeight(RenglonesALaVista * lstTipos->sizeHintForRow(0) + 2 * lstTipos->frameWidth());
    espera.stop(); // filling it ticked them
}

QStringList SelectorDePlanes::Tipos() const
{
    const int alcance = cboPlanes->currentData().toInt();
    QStringList tipos;
    for (int i = 0; i < lstTipos->count(); ++i) {
        const QListWidgetItem *renglon = lstTipos->item(i);
        const QString clave = renglon->data(Qt::UserRole).toString();
        if (alcance == Todos || (alcance == Varios && renglon->checkState() == Qt::Checked)
            || (alcance == DeLaPantalla && clave == enPantalla))
            tipos.append(clave);
    }
    return tipos;
}
