#include "app/catalogos/DialogoCostos.h"

#include "app/ModoLectura.h"
#include "app/Trampas.h"
#include "app/catalogos/FiltroDeLista.h"
#include "app/catalogos/ListaDePlan.h"
#include "app/catalogos/ModeloCostos.h"
#include "app/catalogos/TextosDeCostos.h"
#include "controls/Formulario.h"
#include "controls/colorQVX.h"
#include "data/Conexion.h"
#include "plan/RegistrosDeCatalogo.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"
#include "session/Sistema.h"
#include "ui_DialogoCostos.h"

#include <QKeyEvent>

namespace
{

constexpr QSize TamanoDeCostos{1240, 640};

} // namespace

DialogoCostos::DialogoCostos(const QString &tipoEquipo, QWidget *duena)
    : QDialog(duena)
    , ui(std::make_unique<Ui::DialogoCostos>())
    , modelo(new ModeloCostos(this))
    , lista(new FiltroDeLista(modelo, ModeloCostos::PapelOrden, ModeloCostos::PapelBusqueda, this))
{
    ui->setupUi(this);
    coloresQVX::colorQVX::AplicarA(*this);
    ui->lvCostos->setModel(lista);
    ui->lvCostos->sortByColumn(ModeloCostos::Folio, Qt::AscendingOrder);
    ui->lvCostos->ensurePolished(); // rows measured before the first show would keep the height of another look
    ui->lvCostos->installEventFilter(this);
    connect(modelo, &QAbstractItemModel::dataChanged, this, &DialogoCostos::Sumar);
    connect(ui->txtBuscar, &QLineEdit::textChanged, this, [this](const QString &texto) {
        lista->Buscar(texto);
        Sumar();
    });
    connect(ui->selPlanes, &SelectorDePlanes::Cambio, this, [this] { ConTrampa(*this, 1000040, [this] { Leer(); }); });
    connect(ui->cmdTodo, &QPushButton::clicked, this, [this] { Marcar(true); });
    connect(ui->cmdNada, &QPushButton::clicked, this, [this] { Marcar(false); });
    connect(ui->cmdActualizar, &QPushButton::clicked, this,
            [this] { ConTrampa(*this, 1000224, [this] { Actualizar(); }); });
    connect(ui->cmdCerrar, &QPushButton::clicked, this, &QDialog::reject);
    puede = qvx::LeerDerechos(Base()).planes;
    ui->selPlanes->Ofrecer(tipoEquipo);
    Leer();
    columnas.emplace("costos", *ui->lvCostos);
    if (!columnas->Propias())
        AjustarColumnas(*ui->lvCostos);
    ui->lvCostos->setFocus();
    resize(qvx::Formulario::Cabida(*this, TamanoDeCostos));
}

DialogoCostos::~DialogoCostos() = default;

void DialogoCostos::Leer()
{
    const QStringList tipos = ui->selPlanes->Tipos();
    modelo->Poner(tipos.isEmpty() ? qvx::DiferenciasDeCostos() : qvx::LeerDiferencias(Base(), tipos));
    if (tipos.isEmpty())
        ui->lblAviso->setText("Marque los tipos de equipo cuyos planes quiera ver.");
    else if (modelo->rowCount() == 0)
        ui->lblAviso->setText("Todos los costos están al día." + TextoDeAparte(modelo->Diferencias().aparte));
    else
        ui->lblAviso->setText(((puede ? QString() : QuienMira() + " puede mirar, no cambiar.")
                               + TextoDeAparte(modelo->Diferencias().aparte))
                                  .trimmed());
    Sumar();
}

// What is ticked, shown or not.
void DialogoCostos::Sumar()
{
    const qvx::ResumenDeCostos resumen = qvx::Resumir(modelo->Diferencias(), modelo->Marcadas());
    const int ocultos = modelo->rowCount() - lista->rowCount();
    QString texto = "Marcados: " + Cuantos(resumen.lineas, "renglón", "renglones") + " de "
                    + Cuantos(modelo->rowCount(), "", "").trimmed() + ", en "
                    + Cuantos(resumen.servicios, "servicio", "servicios")
                    + ". Importes: " + TextoDeImporte(resumen.importe) + " → " + TextoDeImporte(resumen.importeNuevo)
                    + " (" + TextoDeCambio(resumen.cambio) + ").";
    if (resumen.perdidas > 0)
        texto += " PÉRDIDAS NUEVAS: " + Cuantos(resumen.perdidas, "servicio.", "servicios.");
    if (ocultos > 0)
        texto += " La búsqueda oculta " + Cuantos(ocultos, "renglón.", "renglones.");
    ui->lblTotal->setText(texto);
    ui->cmdActualizar->setEnabled(puede && resumen.lineas > 0);
}

// Of what is shown.
void DialogoCostos::Marcar(bool marcar)
{
    modelo->Marcar(lista->Mostradas(), marcar);
}

void DialogoCostos::AlternarSeleccion()
{
    const QModelIndex actual = lista->mapToSource(ui->lvCostos->currentIndex());
    if (!actual.isValid())
        return;
    QList<int> filas;
    for (const QModelIndex &indice : ui->lvCostos->selectionModel()->selectedRows())
        filas.append(lista->mapToSource(indice).row());
    modelo->Marcar(filas, !modelo->Marcadas().at(actual.row()));
}

bool DialogoCostos::Consiente()
{
    const qvx::ResumenDeCostos resumen = qvx::Resumir(modelo->Diferencias(), modelo->Marcadas());
    QString pregunta = "Se actualizará el costo de " + Cuantos(resumen.lineas, "renglón", "renglones") + " de "
                       + Cuantos(resumen.servicios, "servicio", "servicios") + " en "
                       + Cuantos(resumen.planes, "plan", "planes") + ", por " + TextoDeCambio(resumen.cambio)
                       + " en total.";
    if (resumen.conReparo > 0)
        pregunta += " Piden revisión: " + Cuantos(resumen.conReparo, "renglón.", "renglones.");
    if (resumen.perdidas > 0)
        pregunta += " Pasarán a dar pérdida: " + Cuantos(resumen.perdidas, "servicio.", "servicios.");
    return qvx::Sistema().Mensaje(pregunta + " ¿Desea continuar?",
                                  qvx::mensaje::SiNo + qvx::mensaje::Pregunta + qvx::mensaje::SegundoBoton, "Quorvex",
                                  winId(), "QVX", "ERR-ID:1000041")
           == qvx::mensaje::Si;
}

void DialogoCostos::Actualizar()
{
    if (!Consiente())
        return;
    const auto escritos =
        qvx::ActualizarCostos(Base(), qvx::Sesion::Actual().Firmante(), modelo->Diferencias(), modelo->Marcadas());
    huboCambios = huboCambios || !escritos.hechos.isEmpty();
    const QString dicho = TextoDeEscritos(escritos);
    if (!escritos.fallido.isEmpty())
        qvx::Sistema().Mensaje(dicho, qvx::mensaje::Exclamacion, "Quorvex", winId(), "QVX", "ERR-ID:1000042");
    else
        modelo->Olvidar();
    Leer();
    ui->lblAviso->setText(dicho.section('\n', 0, 0) + " " + ui->lblAviso->text());
}

bool DialogoCostos::eventFilter(QObject *objeto, QEvent *evento)
{
    if (evento->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(evento)->key() == Qt::Key_Space) {
        AlternarSeleccion();
        return true;
    }
    return QDialog::eventFilter(objeto, evento);
}
