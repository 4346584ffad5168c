#include "app/DialogoIntegridad.h"

#include "app/Textos.h"
#include "app/Trampas.h"
#include "controls/colorQVX.h"
#include "data/Conexion.h"
#include "plan/Claves.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"
#include "session/Sistema.h"
#include "ui_DialogoIntegridad.h"

#include <algorithm>

namespace
{

constexpr int ColumnaDestino = 5;

bool EsServicio(const qvx::Correccion &fila)
{
    return fila.suelto.clase == qvx::Suelto::Clase::Servicio;
}

// Where what is told here is corrected.
QString Destino(const qvx::Suelto &suelto)
{
    if (!suelto.SeCorrige())
        return "(en el servicio)";
    return suelto.clase == qvx::Suelto::Clase::Parte ? qvx::claves::TextoRaiz : "(elija una parte)";
}

QString PartesYServicios(int partes, int servicios)
{
    QStringList texto;
    if (partes > 0)
        texto.append(Cuantos(partes, "parte", "partes"));
    if (servicios > 0)
        texto.append(Cuantos(servicios, "servicio", "servicios"));
    return texto.isEmpty() ? QString("nada") : texto.join(" y ");
}

} // namespace

DialogoIntegridad::DialogoIntegridad(QWidget *duena) : QDialog(duena), ui(std::make_unique<Ui::DialogoIntegridad>())
{
    ui->setupUi(this);
    coloresQVX::colorQVX::AplicarA(*this);
    ui->lvSueltos->ensurePolished(); // rows measured before the first show would keep the height of another look
    connect(ui->lvSueltos, &QTreeWidget::itemSelectionChanged, this,
            [this] { ConTrampa(*this, 1000222, [this] { AlSeleccionar(); }); });
    connect(ui->cboParte, &QComboBox::activated, this,
            [this] { ConTrampa(*this, 1000223, [this] { AlElegirParte(); }); });
    connect(ui->cmdCorregir, &QPushButton::clicked, this,
            [this] { ConTrampa(*this, 1000004, [this] { Corregir(); }); });
    connect(ui->cmdCerrar, &QPushButton::clicked, this, &QDialog::reject);
    columnas.emplace("integridad", *ui->lvSueltos);
    Buscar();
}

DialogoIntegridad::~DialogoIntegridad() = default;

void DialogoIntegridad::Buscar()
{
    filas.clear(); // before the rows, which tell that the selection changes
    ui->lvSueltos->clear();
    const auto sueltos = qvx::BuscarSueltos(Base());
    QList<QTreeWidgetItem *> renglones;
    for (const qvx::Suelto &suelto : sueltos) {
        filas.append({suelto, {}});
        const bool parte = suelto.clase == qvx::Suelto::Clase::Parte;
        renglones.append(new QTreeWidgetItem({suelto.tipoEquipo, parte ? "Parte" : "Servicio", suelto.clave,
                                              suelto.descripcion, suelto.motivo, Destino(suelto)}));
        if (!suelto.SeCorrige())
            renglones.constLast()->setFlags(Qt::ItemIsEnabled);
    }
    ui->lvSueltos->addTopLevelItems(renglones);
    for (int columna = 0; columna < ColumnaDestino && !columnas->Propias(); ++columna)
        ui->lvSueltos->resizeColumnToContents(columna);
    ui->lblAviso->setText(filas.isEmpty() ? "No se encontró nada que corregir."
                                          : "Se encontraron: " + Cuantos(filas.size(), "renglón.", "renglones."));
    AlSeleccionar();
}

QList<int> DialogoIntegridad::Seleccionadas() const
{
    QList<int> seleccionadas;
    for (int fila = 0; fila < filas.size(); ++fila)
        if (ui->lvSueltos->topLevelItem(fila)->isSelected())
            seleccionadas.append(fila);
    return seleccionadas;
}

void DialogoIntegridad::AlSeleccionar()
{
    const QList<int> seleccionadas = Seleccionadas();
    QList<int> servicios;
    bool completas = !seleccionadas.isEmpty();
    for (const int fila : seleccionadas) {
        if (!EsServicio(filas.at(fila)))
            continue;
        servicios.append(fila);
        completas = completas && !filas.at(fila).destino.isEmpty();
    }
    OfrecerPartes(servicios);
    ui->cmdCorregir->setEnabled(completas);
}

// Services of one equipment type at a time are given a part.
void DialogoIntegridad::OfrecerPartes(const QList<int> &servicios)
{
    const QString tipo = servicios.isEmpty() ? QString() : filas.at(servicios.first()).suelto.tipoEquipo;
    const QString destino = servicios.isEmpty() ? QString() : filas.at(servicios.first()).destino;
    const bool unTipo = std::all_of(servicios.begin(), servicios.end(),
                                    [&](int fila) { return filas.at(fila).suelto.tipoEquipo == tipo; });
    if (unTipo && tipo != tipoOfrecido) {
        ui->cboParte->clear();
        for (const auto &[clave, descripcion] : qvx::PartesParaServicios(Base(), tipo))
            ui->cboParte->addItem(clave + " - " + descripcion, clave);
        tipoOfrecido = tipo;
    }
    const bool unDestino =
        std::all_of(servicios.begin(), servicios.end(), [&](int fila) { return filas.at(fila).destino == destino; });
    ui->cboParte->setCurrentIndex(unTipo && unDestino && !destino.isEmpty() ? ui->cboParte->findData(destino) : -1);
    ui->cboParte->setEnabled(!servicios.isEmpty() && unTipo && ui->cboParte->count() > 0);
}

void DialogoIntegridad::AlElegirParte()
{
    for (const int fila : Seleccionadas()) {
        if (!EsServicio(filas.at(fila)))
            continue;
        filas[fila].destino = ui->cboParte->currentData().toString();
        ui->lvSueltos->topLevelItem(fila)->setText(ColumnaDestino, ui->cboParte->currentText());
    }
    AlSeleccionar();
}

bool DialogoIntegridad::Consiente(const QList<int> &seleccionadas)
{
    const auto servicios = static_cast<int>(std::count_if(seleccionadas.begin(), seleccionadas.end(),
                                                          [&](int fila) { return EsServicio(filas.at(fila)); }));
    const auto partes = static_cast<int>(seleccionadas.size()) - servicios;
    return qvx::Sistema().Mensaje("Se corregirán " + PartesYServicios(partes, servicios) + ". ¿Desea continuar?",
                                  qvx::mensaje::SiNo + qvx::mensaje::Pregunta + qvx::mensaje::SegundoBoton, "Quorvex",
                                  winId(), "QVX", "ERR-ID:1000003")
           == qvx::mensaje::Si;
}

void DialogoIntegridad::Corregir()
{
    const QList<int> seleccionadas = Seleccionadas();
    if (!Consiente(seleccionadas))
        return;
    QList<qvx::Correccion> correcciones;
    for (const int fila : seleccionadas)
        correcciones.append(filas.at(fila));
    const qvx::Corregidos corregidos = qvx::CorregirSueltos(Base(), qvx::Sesion::Actual().Firmante(), correcciones);
    huboCambios = huboCambios || corregidos.partes + corregidos.servicios > 0;
    tipoOfrecido.clear(); // a corrected part is offered from now on
    Buscar();
    ui->lblAviso->setText("Se corrigió: " + PartesYServicios(corregidos.partes, corregidos.servicios) + ". "
                          + ui->lblAviso->text());
}
