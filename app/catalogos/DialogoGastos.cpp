#include "app/catalogos/DialogoGastos.h"

#include "app/ModoLectura.h"
#include "app/Trampas.h"
#include "app/catalogos/FiltroDeLista.h"
#include "app/catalogos/ListaDePlan.h"
#include "app/catalogos/ModeloGastos.h"
#include "app/catalogos/TextosDeCostos.h"
#include "controls/Formulario.h"
#include "controls/colorQVX.h"
#include "data/Conexion.h"
#include "plan/RegistrosDeCatalogo.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"
#include "session/Sistema.h"
#include "ui_DialogoGastos.h"

#include <QSet>

namespace
{

constexpr QSize TamanoDeGastos{1240, 600};

} // namespace

DialogoGastos::DialogoGastos(const QString &tipoEquipo, QWidget *duena)
    : QDialog(duena)
    , ui(std::make_unique<Ui::DialogoGastos>())
    , modelo(new ModeloGastos(this))
    , lista(new FiltroDeLista(modelo, ModeloGastos::PapelOrden, ModeloGastos::PapelBusqueda, this))
{
    ui->setupUi(this);
    coloresQVX::colorQVX::AplicarA(*this);
    ui->lvGastos->setModel(lista);
    ui->lvGastos->sortByColumn(ModeloGastos::Folio, Qt::AscendingOrder);
    ui->lvGastos->ensurePolished(); // rows measured before the first show would keep the height of another look
    connect(ui->txtBuscar, &QLineEdit::textChanged, lista, &FiltroDeLista::Buscar);
    connect(ui->selPlanes, &SelectorDePlanes::Cambio, this, [this] { ConTrampa(*this, 1000043, [this] { Leer(); }); });
    connect(ui->lvGastos->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &DialogoGastos::AlSeleccionar);
    connect(ui->cboGasto, &QComboBox::activated, this, &DialogoGastos::AlElegir);
    connect(ui->cmdCompletar, &QPushButton::clicked, this,
            [this] { ConTrampa(*this, 1000225, [this] { Completar(); }); });
    connect(ui->cmdCerrar, &QPushButton::clicked, this, &QDialog::reject);
    puede = qvx::LeerDerechos(Base()).planes;
    ui->selPlanes->Ofrecer(tipoEquipo);
    Leer();
    columnas.emplace("gastos", *ui->lvGastos);
    if (!columnas->Propias())
        AjustarColumnas(*ui->lvGastos);
    ui->lvGastos->setFocus();
    resize(qvx::Formulario::Cabida(*this, TamanoDeGastos));
}

DialogoGastos::~DialogoGastos() = default;

void DialogoGastos::Leer()
{
    const QStringList tipos = ui->selPlanes->Tipos();
    modelo->Poner(tipos.isEmpty() ? qvx::RefaccionesSinGasto() : qvx::LeerSinGasto(Base(), tipos));
    Ofrecer();
    Contar();
    AlSeleccionar();
}

void DialogoGastos::Ofrecer()
{
    ui->cboGasto->clear();
    ui->cboGasto->addItem("(dejar como está)", "");
    for (const auto &[clave, descripcion] : modelo->Refacciones().gastos)
        ui->cboGasto->addItem(clave + " " + descripcion, clave);
}

void DialogoGastos::Contar()
{
    const auto sinElegir = modelo->Elegidos().count(QString());
    const QString aparte = TextoDeAparte(modelo->Refacciones().aparte);
    if (ui->selPlanes->Tipos().isEmpty())
        ui->lblAviso->setText("Marque los tipos de equipo cuyos planes quiera ver.");
    else if (modelo->rowCount() == 0)
        ui->lblAviso->setText("Todas las refacciones tienen tipo de gasto." + aparte);
    else
        ui->lblAviso->setText(Cuantos(modelo->rowCount(), "refacción", "refacciones")
                              + "; sin elegir: " + QString::number(sinElegir) + "."
                              + (puede ? QString() : ' ' + QuienMira() + " puede mirar, no cambiar.") + aparte);
    ui->cmdCompletar->setEnabled(puede && sinElegir < modelo->rowCount());
}

QList<int> DialogoGastos::Seleccionadas() const
{
    QList<int> filas;
    for (const QModelIndex &indice : ui->lvGastos->selectionModel()->selectedRows())
        filas.append(lista->mapToSource(indice).row());
    return filas;
}

// The box shows what all that is selected has in common.
void DialogoGastos::AlSeleccionar()
{
    QSet<QString> gastos;
    for (const int fila : Seleccionadas())
        gastos.insert(modelo->Elegidos().at(fila));
    ui->cboGasto->setEnabled(!gastos.isEmpty());
    const bool uno = gastos.size() == 1 && !gastos.constBegin()->isEmpty();
    ui->cboGasto->setCurrentIndex(uno ? ui->cboGasto->findData(*gastos.constBegin()) : -1);
}

void DialogoGastos::AlElegir()
{
    QList<int> filas = Seleccionadas();
    if (ui->chkMismoProducto->isChecked()) {
        const auto &lineas = modelo->Refacciones().lineas;
        QSet<QString> productos;
        for (const int fila : filas)
            productos.insert(lineas.at(fila).producto);
        filas.clear();
        for (int fila = 0; fila < lineas.size(); ++fila)
            if (productos.contains(lineas.at(fila).producto))
                filas.append(fila);
    }
    modelo->Elegir(filas, ui->cboGasto->currentData().toString());
    Contar();
}

void DialogoGastos::Completar()
{
    const auto cuantas = modelo->rowCount() - modelo->Elegidos().count(QString());
    if (qvx::Sistema().Mensaje("Recibirán tipo de gasto " + Cuantos(cuantas, "refacción", "refacciones")
                                   + ". ¿Desea continuar?",
                               qvx::mensaje::SiNo + qvx::mensaje::Pregunta + qvx::mensaje::SegundoBoton, "Quorvex",
                               winId(), "QVX", "ERR-ID:1000044")
        != qvx::mensaje::Si)
        return;
    const int escritas =
        qvx::CompletarGastos(Base(), qvx::Sesion::Actual().Firmante(), modelo->Refacciones(), modelo->Elegidos());
    huboCambios = huboCambios || escritas > 0;
    modelo->Olvidar();
    Leer();
    ui->lblAviso->setText("Recibieron tipo de gasto " + Cuantos(escritas, "refacción", "refacciones") + ". "
                          + ui->lblAviso->text());
}
