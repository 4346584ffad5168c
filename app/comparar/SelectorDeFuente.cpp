#include "app/comparar/SelectorDeFuente.h"

#include "data/ErrorEjecucion.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"

#include <QComboBox>
#include <QDate>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>

using comparar::Fuente;

SelectorDeFuente::SelectorDeFuente(const QString &nombre, const QString &titulo,
                                   const QList<QPair<QString, QString>> &tipos, QWidget *padre)
    : QWidget(padre)
    , cboPlan(new QComboBox)
    , cboCuando(new QComboBox)
    , txtCual(new QLineEdit)
    , cmdArchivo(new QPushButton("Buscar…"))
{
    const auto nombrar = [&](QWidget &control, const QString &cual, const QString &accesible) {
        control.setObjectName(cual + nombre);
        control.setAccessibleName(titulo + ": " + accesible);
    };
    nombrar(*cboPlan, "cboPlan", "plan");
    nombrar(*cboCuando, "cboCuando", "de cuándo");
    nombrar(*txtCual, "txtCual", "operación, día o archivo");
    nombrar(*cmdArchivo, "cmdArchivo", "buscar el archivo");
    cmdArchivo->setAutoDefault(false);
    for (const auto &[clave, descripcion] : tipos)
        cboPlan->addItem(clave + " " + descripcion, clave);
    cboPlan->addItem("Un documento XML");
    cboPlan->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cboPlan->setMinimumContentsLength(32);
    for (const char *cuando : {"como está hoy", "antes de la operación", "al terminar el día"})
        cboCuando->addItem(QString::fromUtf8(cuando));
    setFocusProxy(cboPlan);
    auto *fila = new QHBoxLayout(this);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->addWidget(cboPlan, 3);
    fila->addWidget(cboCuando);
    fila->addWidget(txtCual, 2);
    fila->addWidget(cmdArchivo);
    connect(cboPlan, &QComboBox::currentIndexChanged, this, &SelectorDeFuente::AlCambiar);
    connect(cboCuando, &QComboBox::currentIndexChanged, this, &SelectorDeFuente::AlCambiar);
    connect(cmdArchivo, &QPushButton::clicked, this, &SelectorDeFuente::BuscarArchivo);
    AlCambiar();
}

bool SelectorDeFuente::EsDocumento() const
{
    return cboPlan->currentIndex() == cboPlan->count() - 1;
}

void SelectorDeFuente::AlCambiar()
{
    const bool documento = EsDocumento();
    const auto cuando = static_cast<Fuente::Clase>(cboCuando->currentIndex());
    cboCuando->setVisible(!documento);
    cmdArchivo->setVisible(documento);
    txtCual->setVisible(documento || cuando != Fuente::Clase::Hoy);
    txtCual->setPlaceholderText(documento                          ? "Archivo XML"
                                : cuando == Fuente::Clase::AntesDe ? "Número de la operación"
                                                                   : "2026-03-14");
}

void SelectorDeFuente::BuscarArchivo()
{
    const QString archivo = qvx::Sesion::Actual().Interaccion().ElegirArchivo(
        {"Elegir un documento", "Archivo XML|*.xml", {}, {}, false}, this);
    if (!archivo.isEmpty())
        txtCual->setText(archivo);
}

void SelectorDeFuente::Elegir(const Fuente &fuente)
{
    const bool documento = fuente.clase == Fuente::Clase::Documento;
    const int lugar = cboPlan->findData(fuente.tipoEquipo);
    if (documento || lugar >= 0)
        cboPlan->setCurrentIndex(documento ? cboPlan->count() - 1 : lugar);
    if (!documento)
        cboCuando->setCurrentIndex(static_cast<int>(fuente.clase));
    txtCual->setText(documento                                ? fuente.archivo
                     : fuente.clase == Fuente::Clase::AntesDe ? QString::number(fuente.operacion)
                                                              : fuente.dia);
}

Fuente SelectorDeFuente::Elegida() const
{
    const QString cual = txtCual->text().trimmed();
    Fuente fuente;
    if (EsDocumento()) {
        if (cual.isEmpty())
            qvx::Rechazar("Falta el archivo del documento.");
        fuente.clase = Fuente::Clase::Documento;
        fuente.archivo = cual;
        return fuente;
    }
    fuente.tipoEquipo = cboPlan->currentData().toString();
    fuente.clase = static_cast<Fuente::Clase>(cboCuando->currentIndex());
    bool numero = false;
    fuente.operacion = cual.toLongLong(&numero);
    fuente.dia = cual;
    if (fuente.clase == Fuente::Clase::AntesDe && !numero)
        qvx::Rechazar("Falta el número de la operación: está en la página de la historia.");
    if (fuente.clase == Fuente::Clase::AlFinDe && !QDate::fromString(cual, Qt::ISODate).isValid())
        qvx::Rechazar("El día se escribe como 2026-03-14.");
    return fuente;
}
