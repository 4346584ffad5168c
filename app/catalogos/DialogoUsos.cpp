#include "app/catalogos/DialogoUsos.h"

#include "app/Ajustes.h"
#include "app/Rotulo.h"
#include "app/Trampas.h"
#include "app/catalogos/Nombres.h"
#include "controls/Formulario.h"
#include "controls/ModeloTabla.h"
#include "controls/VistaTabla.h"
#include "controls/colorQVX.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using qvx::RegistroDeCatalogo;
using qvx::Sesion;
using qvx::Uso;

namespace
{

const QList<qvx::ColumnaDeTabla> ColumnasDeUso{
    {"Tipo de equipo"}, {"Parte"}, {"Folio"}, {"Servicio"}, {"Cómo"}, {"Cantidad", qvx::ColumnaDeTabla::Clase::Numero},
    {"Unidad"},         {"Estado"}};
constexpr int ColumnaParte = 1;
constexpr auto ListaDeUsos = "usos";

QString Como(const Uso &uso)
{
    switch (uso.donde) {
    case Uso::Donde::Renglon:
        return uso.servicio.sello.isEmpty() ? QString("Renglón sin servicio") : nombres::ClaseDeRenglon(uso.clase);
    case Uso::Donde::Producto:
        return "Producto " + uso.renglon;
    case Uso::Donde::Parte:
        return "Parte";
    case Uso::Donde::Servicio:
        break;
    }
    return uso.columna == "Pm_Unidad_Lectura" ? "Lectura del servicio" : "Servicio";
}

QVariantList Fila(const Uso &uso)
{
    const bool producto = uso.donde == Uso::Donde::Producto;
    const QString tipo = producto ? QString("Catálogo") : uso.servicio.tipoEquipo + " " + uso.nombreTipo;
    return {
        tipo,       producto ? uso.nombreTipo : uso.ruta, uso.servicio.folio, uso.tipoServicio, Como(uso), uso.cantidad,
        uso.unidad, nombres::Estado(uso.estado)};
}

QString CuantosUsos(qsizetype usos)
{
    return usos == 1 ? QString("1 uso") : QString("%1 usos").arg(usos);
}

} // namespace

void DialogoUsos::Mostrar(QWidget *duena, const qvx::TablaDeCatalogo &tabla, const RegistroDeCatalogo &registro)
{
    DialogoUsos dialogo(duena, tabla, registro);
    dialogo.lblExplicacion->setText(
        registro.clave + " " + registro.Descripcion() + ": "
        + (dialogo.usos.isEmpty() ? "no se usa en ningún plan." : CuantosUsos(dialogo.usos.size()) + "."));
    dialogo.exec();
}

DialogoUsos::Respuesta DialogoUsos::PreguntarBaja(QWidget *duena, const qvx::TablaDeCatalogo &tabla,
                                                  const RegistroDeCatalogo &registro)
{
    DialogoUsos dialogo(duena, tabla, registro);
    if (dialogo.usos.isEmpty())
        return Respuesta::Baja;
    dialogo.OfrecerBaja();
    dialogo.exec();
    return dialogo.respuesta;
}

bool DialogoUsos::Reemplazar(QWidget *duena, const qvx::TablaDeCatalogo &tabla, const RegistroDeCatalogo &registro,
                             const RegistroDeCatalogo &nuevo)
{
    DialogoUsos dialogo(duena, tabla, registro);
    dialogo.OfrecerReemplazo(nuevo);
    return dialogo.exec() == QDialog::Accepted;
}

DialogoUsos::DialogoUsos(QWidget *duena, const qvx::TablaDeCatalogo &tabla_, const RegistroDeCatalogo &registro_)
    : QDialog(duena)
    , tabla(tabla_)
    , registro(registro_)
    , usos(qvx::UsosDe(Base(), tabla, registro.clave))
    , modelo(new qvx::ModeloTabla(ColumnasDeUso, 0, this))
    , lblExplicacion(RotuloLargo("lblExplicacion"))
    , lvUsos(new qvx::VistaTabla("lvUsos", "Usos", this))
    , botones(new QDialogButtonBox(this))
{
    coloresQVX::colorQVX::AplicarA(*this);
    setWindowTitle("¿Dónde se usa?");
    QList<QVariantList> filas;
    for (const Uso &uso : usos)
        filas.append(Fila(uso));
    modelo->Llenar(filas);
    Disponer();
}

DialogoUsos::~DialogoUsos()
{
    ajustes::RecordarColumnas(ListaDeUsos, *lvUsos);
}

void DialogoUsos::Disponer()
{
    lvUsos->setTextElideMode(Qt::ElideMiddle); // a path says most at its ends
    lvUsos->Poner(modelo, ColumnaParte, -1);
    ajustes::ReponerColumnas(ListaDeUsos, *lvUsos);
    QPushButton *cerrar = botones->addButton("&Cerrar", QDialogButtonBox::RejectRole);
    cerrar->setObjectName("cmdCerrar");
    connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *disposicion = new QVBoxLayout(this);
    disposicion->setContentsMargins(14, 14, 14, 12);
    disposicion->addWidget(lblExplicacion);
    disposicion->addWidget(lvUsos);
    disposicion->addWidget(botones);
    resize(qvx::Formulario::Cabida(*this, {1120, 480}));
}

void DialogoUsos::OfrecerBaja()
{
    setWindowTitle("Dar de baja");
    lblExplicacion->setText(
        "«" + registro.clave + " " + registro.Descripcion() + "» tiene " + CuantosUsos(usos.size())
        + ". Mientras esté de baja, estos servicios no se podrán guardar de nuevo. Puede reemplazar "
          "la clave por otra en todos ellos.");
    QPushButton *baja = botones->addButton("Dar de &baja", QDialogButtonBox::ActionRole);
    baja->setObjectName("cmdBaja");
    QPushButton *otra = botones->addButton("&Reemplazar por…", QDialogButtonBox::ActionRole);
    otra->setObjectName("cmdReemplazar");
    otra->setVisible(tabla.nombre != "Tipo_Equipo");
    connect(baja, &QPushButton::clicked, this, [this] {
        respuesta = Respuesta::Baja;
        accept();
    });
    connect(otra, &QPushButton::clicked, this, [this] {
        respuesta = Respuesta::Reemplazar;
        accept();
    });
}

void DialogoUsos::OfrecerReemplazo(const RegistroDeCatalogo &nuevo)
{
    setWindowTitle("Reemplazar");
    lblExplicacion->setText("En " + CuantosUsos(usos.size()) + ", «" + registro.clave + " " + registro.Descripcion()
                            + "» pasará a ser «" + nuevo.clave + " " + nuevo.Descripcion()
                            + "». Cantidades, costos e importes quedan como están.");
    QPushButton *hacer = botones->addButton("&Reemplazar", QDialogButtonBox::AcceptRole);
    hacer->setObjectName("cmdReemplazar");
    hacer->setEnabled(!usos.isEmpty());
    connect(hacer, &QPushButton::clicked, this, [this, nuevo] {
        ConTrampa(*this, 1000008, [&] {
            qvx::Reemplazar(Base(), Sesion::Actual().Firmante(), tabla, registro, nuevo, usos);
            accept();
        });
    });
}
