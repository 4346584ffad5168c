#include "app/programa/DialogoDatosDePrograma.h"

#include "app/ModoLectura.h"
#include "app/Rotulo.h"
#include "app/Trampas.h"
#include "controls/colorQVX.h"
#include "data/ErrorEjecucion.h"
#include "plan/DatosDePrograma.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace
{

constexpr int MesesDelAno = 12;
constexpr int PapelDelPar = Qt::UserRole; // two folios
const QStringList NombresDeMes{"Enero", "Febrero", "Marzo",      "Abril",   "Mayo",      "Junio",
                               "Julio", "Agosto",  "Septiembre", "Octubre", "Noviembre", "Diciembre"};

QDoubleSpinBox *Caja(const QString &nombre, const QString &dicho, double maximo, int decimales, double valor)
{
    auto *caja = new QDoubleSpinBox;
    caja->setObjectName(nombre);
    caja->setAccessibleName(dicho);
    caja->setLocale(QLocale::c()); // a point, as everywhere in the program
    caja->setDecimals(decimales);
    caja->setRange(0, maximo);
    caja->setValue(valor);
    return caja;
}

QLabel *Nota(const QString &texto)
{
    auto *nota = new QLabel(texto);
    nota->setWordWrap(true);
    return nota;
}

} // namespace

DialogoDatosDePrograma::DialogoDatosDePrograma(const programa::PlanMedido &medido_, const qvx::DatosDePrograma &datos_,
                                               bool puede, QWidget *duena)
    : QDialog(duena)
    , medido(medido_)
    , datos(datos_)
    , fichas(new QTabWidget)
    , fecDiaCero(new QDateEdit)
    , spnEquipos(new QSpinBox)
    , spnDiasSemana(new QDoubleSpinBox)
    , cboInicio(new QComboBox)
    , cboDescanso(new QComboBox)
    , txtFestivos(new QPlainTextEdit)
    , chkCapacidad(new QCheckBox("Comparar la mano de &obra con una capacidad"))
    , lstIncluidos(new QListWidget)
    , lblObjecion(RotuloLargo("lblObjecionDeDatos"))
{
    setObjectName("DialogoDatosDePrograma");
    setWindowTitle("Datos del programa · " + (medido.plan.tipoEquipo + " " + medido.plan.nombreTipo).trimmed());
    fichas->setObjectName("tabDatosDePrograma");
    fichas->addTab(FichaDeUso(), "&Uso");
    fichas->addTab(FichaDeDescanso(), "&Descanso");
    fichas->addTab(FichaDeCapacidad(), "&Capacidad");
    fichas->addTab(FichaDeIncluidos(), "&Incluidos");
    // The periods that make a pair possible follow the use.
    connect(fichas, &QTabWidget::currentChanged, this, [this](int cual) {
        if (cual == fichas->count() - 1)
            LlenarIncluidos();
    });
    lblObjecion->hide();
    auto *botones = new QDialogButtonBox;
    cmdGuardar = botones->addButton("&Guardar", QDialogButtonBox::AcceptRole);
    cmdGuardar->setObjectName("cmdGuardarDatos");
    cmdGuardar->setEnabled(puede);
    cmdGuardar->setToolTip(puede ? QString("Quedan en la base de datos, para todos")
                                 : QuienMira() + " puede mirar, no guardar");
    auto *usar = botones->addButton("Usar &sin guardar", QDialogButtonBox::ActionRole);
    usar->setObjectName("cmdUsarDatos");
    botones->addButton("Cancelar", QDialogButtonBox::RejectRole)->setObjectName("cmdCancelarDatos");
    connect(cmdGuardar, &QPushButton::clicked, this, &DialogoDatosDePrograma::Guardar);
    connect(usar, &QPushButton::clicked, this, &DialogoDatosDePrograma::Usar);
    connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *disposicion = new QVBoxLayout(this);
    disposicion->addWidget(fichas, 1);
    disposicion->addWidget(lblObjecion);
    disposicion->addWidget(botones);
    coloresQVX::colorQVX::AplicarA(*this);
}

QWidget *DialogoDatosDePrograma::FichaDeUso()
{
    fecDiaCero->setObjectName("fecDiaCero");
    fecDiaCero->setAccessibleName("Día cero");
    fecDiaCero->setDisplayFormat("yyyy-MM-dd");
    fecDiaCero->setCalendarPopup(true);
    fecDiaCero->setDateRange(QDate(1900, 1, 1), QDate(9000, 12, 31));
    fecDiaCero->setDate(datos.diaCero);
    spnEquipos->setObjectName("spnEquipos");
    spnEquipos->setRange(1, 100000);
    spnEquipos->setValue(datos.equipos);
    spnDiasSemana->setObjectName("spnDiasSemana");
    spnDiasSemana->setLocale(QLocale::c());
    spnDiasSemana->setDecimals(2);
    spnDiasSemana->setRange(0.01, 7);
    spnDiasSemana->setValue(datos.diasSemana);
    cboInicio->setObjectName("cboInicio");
    cboInicio->addItems({"Todo está recién hecho el día cero", "Todo toca al arrancar, el día cero",
                         "Según la lectura acumulada el día cero"}); // as the values have them
    cboInicio->setCurrentIndex(static_cast<int>(datos.inicio));
    auto *ficha = new QWidget;
    auto *forma = new QFormLayout(ficha);
    forma->addRow("Día c&ero:", fecDiaCero);
    forma->addRow("E&quipos de este tipo:", spnEquipos);
    forma->addRow("Días de uso por se&mana:", spnDiasSemana);
    forma->addRow("&Primera fecha:", cboInicio);
    QStringList unidades = medido.Unidades();
    for (const QString &unidad : datos.usos.keys())
        if (!unidades.contains(unidad))
            unidades.append(unidad);
    auto *cuadro = new QGridLayout;
    cuadro->addWidget(new QLabel("Uso por día"), 0, 1);
    cuadro->addWidget(new QLabel("Lectura acumulada el día cero"), 0, 2);
    for (const QString &unidad : std::as_const(unidades)) {
        const qvx::UsoDeUnidad uso = datos.usos.value(unidad);
        const double maximo = unidad == programa::Horas ? 24 : 1000000;
        const CajasDeUso cajas{Caja("spnUso" + unidad, "Uso por día en " + unidad, maximo, 4, uso.porDia),
                               Caja("spnLectura" + unidad, "Lectura acumulada en " + unidad, 1e12, 2, uso.acumulado)};
        const int fila = cuadro->rowCount();
        cuadro->addWidget(new QLabel(unidad), fila, 0);
        cuadro->addWidget(cajas.porDia, fila, 1);
        cuadro->addWidget(cajas.acumulado, fila, 2);
        usos.insert(unidad, cajas);
    }
    cuadro->setColumnStretch(3, 1);
    if (unidades.isEmpty())
        forma->addRow(Nota("Ningún servicio de este plan va por lectura: no hace falta decir cuánto se usa."));
    else
        forma->addRow(cuadro);
    forma->addRow(Nota("Con 0 la lectura no cuenta y queda la frecuencia en días. Los días de uso por semana reparten "
                       "el uso: 8 HR por día cinco días son 8 × 5 / 7 en cada día del calendario."));
    return ficha;
}

QWidget *DialogoDatosDePrograma::FichaDeDescanso()
{
    cboDescanso->setObjectName("cboDescanso");
    cboDescanso->setAccessibleName("Días en que no se hace nada");
    cboDescanso->addItems({"Se trabaja toda la semana", "No se trabaja el domingo",
                           "No se trabaja sábado ni domingo"}); // as the values have them
    cboDescanso->setCurrentIndex(static_cast<int>(datos.descanso));
    txtFestivos->setObjectName("txtFestivos");
    txtFestivos->setAccessibleName("Días festivos, uno por renglón");
    QStringList fechas;
    for (const QDate &festivo : datos.festivos)
        fechas.append(programa::Escrita(festivo));
    txtFestivos->setPlainText(fechas.join(QLatin1Char('\n')));
    txtFestivos->setPlaceholderText("2027-01-01\n2027-02-01");
    txtFestivos->setTabChangesFocus(true);
    auto *ficha = new QWidget;
    auto *disposicion = new QVBoxLayout(ficha);
    disposicion->addWidget(cboDescanso);
    auto *titulo = new QLabel("Días &festivos, uno por renglón, como 2027-01-01:");
    titulo->setBuddy(txtFestivos);
    disposicion->addWidget(titulo);
    disposicion->addWidget(txtFestivos, 1);
    disposicion->addWidget(Nota("Lo que cae en uno de estos días se hace el día hábil anterior, nunca antes del "
                                "primer día del programa. El siguiente se cuenta desde la fecha teórica."));
    return ficha;
}

QWidget *DialogoDatosDePrograma::FichaDeCapacidad()
{
    chkCapacidad->setObjectName("chkCapacidad");
    chkCapacidad->setChecked(!datos.capacidad.isEmpty());
    auto *cuadro = new QGridLayout;
    for (int mes = 1; mes <= MesesDelAno; ++mes) {
        const QString &nombre = NombresDeMes.at(mes - 1);
        auto *caja = Caja(QString("spnCapacidad%1").arg(mes), "Capacidad de " + nombre.toLower(), 10000000, 2,
                          datos.capacidad.value(mes));
        caja->setSuffix(" HR");
        caja->setEnabled(chkCapacidad->isChecked());
        connect(chkCapacidad, &QCheckBox::toggled, caja, &QWidget::setEnabled);
        const int fila = (mes - 1) % 6;
        const int columna = (mes - 1) / 6 * 2;
        cuadro->addWidget(new QLabel(nombre), fila, columna);
        cuadro->addWidget(caja, fila, columna + 1);
        capacidad.append(caja);
    }
    cuadro->setColumnStretch(4, 1);
    auto *iguales = new QPushButton("Todos como e&nero");
    iguales->setObjectName("cmdCapacidadIgual");
    iguales->setAutoDefault(false);
    iguales->setEnabled(chkCapacidad->isChecked());
    connect(chkCapacidad, &QCheckBox::toggled, iguales, &QWidget::setEnabled);
    connect(iguales, &QPushButton::clicked, this, [this] {
        for (QDoubleSpinBox *caja : std::as_const(capacidad))
            caja->setValue(capacidad.constFirst()->value());
    });
    auto *ficha = new QWidget;
    auto *disposicion = new QVBoxLayout(ficha);
    disposicion->addWidget(chkCapacidad);
    disposicion->addLayout(cuadro);
    disposicion->addWidget(iguales, 0, Qt::AlignLeft);
    disposicion->addWidget(Nota("Horas de mano de obra que hay para todos los equipos de este tipo. Un mes que el "
                                "programa corta cuenta con la parte de sus días."));
    disposicion->addStretch();
    return ficha;
}

QWidget *DialogoDatosDePrograma::FichaDeIncluidos()
{
    lstIncluidos->setObjectName("lstIncluidos");
    lstIncluidos->setAccessibleName("Servicios incluidos en otros");
    auto *ficha = new QWidget;
    auto *disposicion = new QVBoxLayout(ficha);
    disposicion->addWidget(Nota("Cuando dos servicios caen el mismo día, los dos se suman. Marque los que ya se hacen "
                                "dentro de otro: ese día cuentan 0. Se proponen los de la misma parte y el mismo tipo "
                                "de servicio cuando uno toca un número exacto de veces por cada vez del otro."));
    disposicion->addWidget(lstIncluidos, 1);
    return ficha;
}

// What was ticked stays, also where it is not proposed any more.
void DialogoDatosDePrograma::LlenarIncluidos()
{
    const auto leidos = Leidos();
    if (!leidos)
        return;
    QList<QPair<QString, QString>> pares = leidos->incluidos;
    QHash<QString, QString> nombres;
    try {
        const programa::Programa ahora = programa::Programar(medido.entradas, *leidos);
        for (const auto &[menor, mayor] : programa::ParesPosibles(medido.entradas, ahora)) {
            const QPair<QString, QString> par{medido.entradas.at(menor).folio, medido.entradas.at(mayor).folio};
            if (!pares.contains(par))
                pares.append(par);
        }
        for (int i = 0; i < medido.entradas.size(); ++i)
            nombres.insert(medido.entradas.at(i).folio,
                           medido.entradas.at(i).nombre + ", " + ahora.periodos.at(i).motivo);
    } catch (const qvx::ErrorEjecucion &error) {
        return Objetar(error.Descripcion());
    }
    std::sort(pares.begin(), pares.end());
    lstIncluidos->clear();
    for (const auto &[incluido, en] : std::as_const(pares)) {
        auto *renglon =
            new QListWidgetItem(nombres.value(incluido, incluido) + "  →  incluido en  " + nombres.value(en, en));
        renglon->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        renglon->setCheckState(leidos->incluidos.contains({incluido, en}) ? Qt::Checked : Qt::Unchecked);
        renglon->setData(PapelDelPar, QStringList{incluido, en});
        lstIncluidos->addItem(renglon);
    }
    datos.incluidos = leidos->incluidos;
}

void DialogoDatosDePrograma::Objetar(const QString &objecion)
{
    lblObjecion->setText(objecion);
    lblObjecion->setVisible(!objecion.isEmpty());
}

std::optional<qvx::DatosDePrograma> DialogoDatosDePrograma::Leidos()
{
    qvx::DatosDePrograma leidos = datos;
    leidos.diaCero = fecDiaCero->date();
    leidos.equipos = spnEquipos->value();
    leidos.diasSemana = spnDiasSemana->value();
    leidos.inicio = static_cast<qvx::DatosDePrograma::Inicio>(cboInicio->currentIndex());
    leidos.descanso = static_cast<qvx::DatosDePrograma::Descanso>(cboDescanso->currentIndex());
    leidos.usos.clear();
    for (auto caja = usos.cbegin(); caja != usos.cend(); ++caja)
        leidos.usos.insert(caja.key(), {caja->porDia->value(), caja->acumulado->value()});
    leidos.capacidad.clear();
    for (int mes = 1; mes <= MesesDelAno && chkCapacidad->isChecked(); ++mes)
        leidos.capacidad.insert(mes, capacidad.at(mes - 1)->value());
    if (lstIncluidos->count() > 0)
        leidos.incluidos.clear();
    for (int i = 0; i < lstIncluidos->count(); ++i) {
        const QStringList par = lstIncluidos->item(i)->data(PapelDelPar).toStringList();
        if (lstIncluidos->item(i)->checkState() == Qt::Checked)
            leidos.incluidos.append({par.at(0), par.at(1)});
    }
    const auto festivos = programa::LeerFestivos(txtFestivos->toPlainText());
    const QString objecion = festivos.objecion.isEmpty() ? qvx::Objetar(leidos) : festivos.objecion;
    Objetar(objecion);
    if (!objecion.isEmpty())
        return std::nullopt;
    leidos.festivos = festivos.fechas;
    return leidos;
}

void DialogoDatosDePrograma::Usar()
{
    if (const auto leidos = Leidos()) {
        datos = *leidos;
        accept();
    }
}

void DialogoDatosDePrograma::Guardar()
{
    const auto leidos = Leidos();
    if (!leidos)
        return;
    ConTrampa(*this, 1000200, [&] {
        qvx::GuardarDatosDePrograma(Base(), qvx::Sesion::Actual().Firmante(), *leidos);
        datos = *leidos;
        guardado = true;
        accept();
    });
}
