#include "app/programa/DialogoDeReporte.h"

#include "app/Ajustes.h"
#include "app/RutaParaGuardar.h"
#include "app/Trampas.h"
#include "controls/Formulario.h"
#include "controls/colorQVX.h"
#include "data/ErrorEjecucion.h"
#include "plan/Planta.h"
#include "session/Interaccion.h"
#include "session/Sistema.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QFormLayout>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QProgressDialog>
#include <QPushButton>

namespace
{

constexpr auto AjusteDelPapel = "reportes/papelA4";
constexpr int MilisegundosSinDecir = 200;
constexpr int MilisegundosEntreAvances = 100;
constexpr QSize TamanoDeVista(1100, 760);

} // namespace

struct AvanceDeReporte::Cuadro {
    QProgressDialog dialogo;
    QElapsedTimer reloj;
    qint64 siguiente = MilisegundosSinDecir;
};

AvanceDeReporte::AvanceDeReporte(QWidget &duena, const QString &titulo)
    : cuadro(new Cuadro{{"Se prepara: " + titulo, "&Cancelar", 0, 1000, &duena}, {}})
{
    cuadro->dialogo.setObjectName("prgReporte");
    cuadro->dialogo.setWindowTitle("Quorvex");
    cuadro->dialogo.setWindowModality(Qt::WindowModal);
    cuadro->dialogo.setMinimumDuration(MilisegundosSinDecir);
    cuadro->dialogo.setAutoClose(false);
    coloresQVX::colorQVX::AplicarA(cuadro->dialogo);
    cuadro->reloj.start();
}

AvanceDeReporte::~AvanceDeReporte() = default;

bool AvanceDeReporte::operator()(int hecho, int todo)
{
    if (cuadro->reloj.elapsed() < cuadro->siguiente)
        return true;
    cuadro->siguiente = cuadro->reloj.elapsed() + MilisegundosEntreAvances;
    cuadro->dialogo.setValue(static_cast<int>(qint64(hecho) * 999 / std::max(1, todo)));
    QCoreApplication::processEvents();
    return !cuadro->dialogo.wasCanceled();
}

DialogoDeReporte::DialogoDeReporte(const Oferta &oferta_, const programa::Encargo &encargo_, Hacer hacer_,
                                   QWidget *duena)
    : QDialog(duena)
    , oferta(oferta_)
    , encargo(encargo_)
    , hacer(std::move(hacer_))
    , txtPlanta(new QLineEdit(encargo.planta))
    , cboPapel(new QComboBox)
    , cboAlcance(new QComboBox)
    , chkCostos(new QCheckBox("Con &costos"))
    , chkLineas(new QCheckBox("Con los &renglones de cada servicio"))
    , chkPorParte(new QCheckBox("Por p&arte, en el orden del árbol"))
{
    setObjectName("DialogoDeReporte");
    setWindowTitle(oferta.nombre);
    txtPlanta->setObjectName("txtPlanta");
    txtPlanta->setMaxLength(100);
    txtPlanta->setPlaceholderText("Nombre de la planta, como sale en los reportes");
    txtPlanta->setReadOnly(!oferta.puede);
    cboPapel->setObjectName("cboPapel");
    cboPapel->addItems({"Carta", "A4"}); // as the values have them
    cboPapel->setCurrentIndex(int(PapelRecordado()));
    cboAlcance->setObjectName("cboAlcance");
    cboAlcance->addItems(oferta.alcances);
    chkCostos->setObjectName("chkConCostos");
    chkLineas->setObjectName("chkConRenglones");
    chkPorParte->setObjectName("chkPorParte");
    auto *forma = new QFormLayout;
    forma->addRow("P&lanta:", txtPlanta);
    forma->addRow("&Hoja:", cboPapel);
    if (oferta.alcances.size() > 1)
        forma->addRow("&Qué:", cboAlcance);
    else
        cboAlcance->setParent(this);
    cboAlcance->setVisible(oferta.alcances.size() > 1);
    const QHash<Clase, QCheckBox *> suya{
        {Clase::Hojas, chkCostos}, {Clase::Plan, chkLineas}, {Clase::Materiales, chkPorParte}};
    for (QCheckBox *marca : {chkCostos, chkLineas, chkPorParte})
        if (marca == suya.value(oferta.clase))
            forma->addRow(marca);
        else {
            marca->setParent(this);
            marca->hide();
        }
    auto *botones = new QDialogButtonBox;
    const auto boton = [&](const QString &nombre, const QString &texto, void (DialogoDeReporte::*mandar)()) {
        auto *nuevo = botones->addButton(texto, QDialogButtonBox::ActionRole);
        nuevo->setObjectName(nombre);
        connect(nuevo, &QPushButton::clicked, this, mandar);
        return nuevo;
    };
    boton("cmdVistaPrevia", "&Vista previa…", &DialogoDeReporte::VerAntes)->setDefault(true);
    boton("cmdPdf", "&PDF…", &DialogoDeReporte::HacerPdf);
    boton("cmdImprimir", "&Imprimir…", &DialogoDeReporte::Imprimir);
    botones->addButton("C&errar", QDialogButtonBox::RejectRole)->setObjectName("cmdCerrarReporte");
    connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *disposicion = new QVBoxLayout(this);
    disposicion->addLayout(forma);
    disposicion->addWidget(botones);
    coloresQVX::colorQVX::AplicarA(*this);
}

programa::Encargo DialogoDeReporte::Elegido() const
{
    programa::Encargo elegido = encargo;
    elegido.planta = txtPlanta->text().trimmed();
    elegido.conCostos = chkCostos->isChecked();
    elegido.conLineas = chkLineas->isChecked();
    elegido.porParte = chkPorParte->isChecked();
    return elegido;
}

impreso::Papel DialogoDeReporte::PapelElegido() const
{
    return cboPapel->currentIndex() == 1 ? impreso::Papel::A4 : impreso::Papel::Carta;
}

impreso::Documento DialogoDeReporte::Documento() const
{
    return hacer(Elegido(), std::max(0, cboAlcance->currentIndex()));
}

impreso::Papel DialogoDeReporte::PapelRecordado()
{
    return ajustes::Abrir().value(AjusteDelPapel).toBool() ? impreso::Papel::A4 : impreso::Papel::Carta;
}

// The plant's name is everybody's; the paper is the person's.
void DialogoDeReporte::Recordar()
{
    ajustes::Abrir().setValue(AjusteDelPapel, PapelElegido() == impreso::Papel::A4);
    const QString planta = txtPlanta->text().trimmed();
    if (!oferta.puede || planta == encargo.planta)
        return;
    qvx::GuardarNombreDePlanta(Base(), qvx::Sesion::Actual().Firmante(), encargo.planta, planta);
    encargo.planta = planta;
}

bool DialogoDeReporte::Mandar(QPrinter &impresora, const impreso::Documento &documento)
{
    AvanceDeReporte avance(*this, oferta.nombre);
    return impreso::Imprimir(impresora, documento, [&](int hecho, int todo) { return avance(hecho, todo); });
}

void DialogoDeReporte::VerAntes()
{
    ConTrampa(*this, 1000204, [this] {
        Recordar();
        const impreso::Documento documento = Documento();
        QPrinter impresora(QPrinter::HighResolution);
        impresora.setPageLayout(impreso::Disposicion(documento, PapelElegido()));
        impresora.setDocName(documento.titulo);
        QPrintPreviewDialog vista(&impresora, this);
        vista.setObjectName("VistaPrevia");
        vista.setWindowTitle("Vista previa · " + oferta.nombre);
        vista.resize(qvx::Formulario::Cabida(*this, TamanoDeVista));
        connect(&vista, &QPrintPreviewDialog::paintRequested, this,
                [&](QPrinter *hoja) { ConTrampa(*this, 1000205, [&] { Mandar(*hoja, documento); }); });
        vista.exec();
    });
}

void DialogoDeReporte::HacerPdf()
{
    ConTrampa(*this, 1000206, [this] {
        Recordar();
        const QString ruta = RutaParaGuardar(*this, oferta.nombre, "Documento PDF|*.pdf", oferta.nombre);
        if (ruta.isEmpty())
            return;
        AvanceDeReporte avance(*this, oferta.nombre);
        const bool hecho = impreso::EscribirPdf(ruta, Documento(), PapelElegido(),
                                                [&](int listo, int todo) { return avance(listo, todo); });
        if (hecho)
            accept();
    });
}

void DialogoDeReporte::Imprimir()
{
    ConTrampa(*this, 1000207, [this] {
        Recordar();
        const impreso::Documento documento = Documento();
        QPrinter impresora(QPrinter::HighResolution);
        impresora.setPageLayout(impreso::Disposicion(documento, PapelElegido()));
        impresora.setDocName(documento.titulo);
        QPrintDialog dialogo(&impresora, this);
        dialogo.setOption(QAbstractPrintDialog::PrintPageRange, false);
        if (dialogo.exec() == QDialog::Accepted && Mandar(impresora, documento))
            accept();
    });
}
