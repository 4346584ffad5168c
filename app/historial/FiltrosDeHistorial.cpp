#include "app/historial/FiltrosDeHistorial.h"

#include "data/Conexion.h"
#include "data/Momento.h"
#include "data/Texto.h"
#include "plan/Claves.h"
#include "session/Sesion.h"

#include <QComboBox>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

namespace
{

enum Periodo { Siempre, Hoy, SieteDias, TreintaDias, EntreFechas };

constexpr int EsperaDeFiltros = 250; // milliseconds
constexpr int AnchoDeClave = 9;      // characters
constexpr int AnchoDePlan = 24;

// The values under an entry, and its text; what was chosen stays chosen, the first entry where it is gone.
void Llenar(QComboBox &lista, const QList<QPair<QVariant, QString>> &entradas)
{
    const QSignalBlocker callada(&lista);
    const QVariant elegida = lista.currentData();
    while (lista.count() > 1)
        lista.removeItem(1);
    for (const auto &[valor, texto] : entradas)
        lista.addItem(texto, valor);
    lista.setCurrentIndex(qMax(0, elegida.isValid() ? lista.findData(elegida) : 0));
}

} // namespace

FiltrosDeHistorial::FiltrosDeHistorial(QWidget *padre)
    : QWidget(padre)
    , cboPlan(Lista("cboPlanDelHistorial", "Plan", "Todos los planes"))
    , cboPersona(Lista("cboPersonaDelHistorial", "Persona", "Todas las personas"))
    , cboPeriodo(Lista("cboPeriodoDelHistorial", "Fechas", "Cualquier fecha"))
    , fecDesde(Fecha("fecDesdeDelHistorial", "Desde"))
    , fecHasta(Fecha("fecHastaDelHistorial", "Hasta"))
    , txtParte(Caja("txtParteDelHistorial", "Clave de la parte", "Parte"))
    , txtFolio(Caja("txtFolioDelHistorial", "Folio del servicio", "Servicio"))
{
    setObjectName("FiltrosDeHistorial");
    cboPeriodo->addItems({"Hoy", "Últimos 7 días", "Últimos 30 días", "Entre dos fechas"}); // as Periodo has them
    cboPlan->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cboPlan->setMinimumContentsLength(AnchoDePlan);
    espera.setSingleShot(true);
    connect(&espera, &QTimer::timeout, this, &FiltrosDeHistorial::Cambio);
    auto *fila = new QHBoxLayout(this);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->addWidget(cboPlan, 1);
    fila->addWidget(txtParte);
    fila->addWidget(txtFolio);
    fila->addWidget(cboPersona);
    fila->addWidget(cboPeriodo);
    fila->addWidget(fecDesde);
    fila->addWidget(fecHasta);
    PonerEstado();
}

QComboBox *FiltrosDeHistorial::Lista(const QString &nombre, const QString &titulo, const QString &todos)
{
    auto *lista = new QComboBox;
    lista->setObjectName(nombre);
    lista->setAccessibleName(titulo);
    lista->addItem(todos);
    connect(lista, &QComboBox::currentIndexChanged, this, [this] {
        PonerEstado();
        espera.start(0);
    });
    return lista;
}

QLineEdit *FiltrosDeHistorial::Caja(const QString &nombre, const QString &titulo, const QString &sugerencia)
{
    auto *caja = new QLineEdit;
    caja->setObjectName(nombre);
    caja->setAccessibleName(titulo);
    caja->setPlaceholderText(sugerencia);
    caja->setClearButtonEnabled(true);
    caja->setFixedWidth(caja->fontMetrics().averageCharWidth() * (AnchoDeClave + 8));
    connect(caja, &QLineEdit::textChanged, this, [this] { espera.start(EsperaDeFiltros); });
    return caja;
}

QDateEdit *FiltrosDeHistorial::Fecha(const QString &nombre, const QString &titulo)
{
    auto *fecha = new QDateEdit(QDate::currentDate());
    fecha->setObjectName(nombre);
    fecha->setAccessibleName(titulo);
    fecha->setToolTip(titulo);
    fecha->setDisplayFormat("yyyy-MM-dd");
    fecha->setCalendarPopup(true);
    connect(fecha, &QDateEdit::dateChanged, this, [this] { espera.start(EsperaDeFiltros); });
    return fecha;
}

// A part and a service are of a plan.
void FiltrosDeHistorial::PonerEstado()
{
    const bool deUnPlan = cboPlan->currentIndex() > 0;
    for (QLineEdit *caja : {txtParte, txtFolio}) {
        caja->setEnabled(deUnPlan);
        caja->setToolTip(deUnPlan ? caja->accessibleName() : QString("Elija primero un plan"));
    }
    for (QDateEdit *fecha : {fecDesde, fecHasta})
        fecha->setVisible(cboPeriodo->currentIndex() == EntreFechas);
}

void FiltrosDeHistorial::Ofrecer(qvx::Conexion &conexion)
{
    const qvx::Momento momento(conexion);
    QList<QPair<QVariant, QString>> planes;
    for (auto filas = conexion.Execute("SELECT p.Te_Cve_Tipo_Equipo, t.Te_Descripcion FROM (SELECT DISTINCT "
                                       "Te_Cve_Tipo_Equipo FROM Operacion_Plan) AS p LEFT JOIN Tipo_Equipo AS t ON "
                                       "t.Te_Cve_Tipo_Equipo = p.Te_Cve_Tipo_Equipo ORDER BY 1",
                                       {});
         !filas.Eof(); filas.MoveNext()) {
        const QString clave = qvx::SinBlancosAlFinal(filas.Texto(0));
        planes.append({clave, (clave + " " + filas.Texto(1)).trimmed()});
    }
    Llenar(*cboPlan, planes);
    QList<QPair<QVariant, QString>> personas;
    for (auto filas = conexion.Execute("SELECT DISTINCT Op_Oper FROM Operacion ORDER BY 1", {}); !filas.Eof();
         filas.MoveNext())
        personas.append({filas.Texto(0), filas.Texto(0).isEmpty() ? QString("(desconocido)") : filas.Texto(0)});
    Llenar(*cboPersona, personas);
    PonerEstado();
}

void FiltrosDeHistorial::Limitar(const QString &tipo, const QString &parte, const QString &folio)
{
    const QSignalBlocker callado(this);
    cboPersona->setCurrentIndex(0);
    cboPeriodo->setCurrentIndex(Siempre);
    const QString clave = qvx::SinBlancosAlFinal(tipo);
    if (cboPlan->findData(clave) < 0) // nothing has been done to it
        cboPlan->addItem(clave, clave);
    cboPlan->setCurrentIndex(cboPlan->findData(clave));
    txtParte->setText(parte);
    txtFolio->setText(folio);
    PonerEstado();
    espera.stop();
}

QString FiltrosDeHistorial::Tipo() const
{
    return cboPlan->currentData().toString();
}

bool FiltrosDeHistorial::Vacios() const
{
    return cboPlan->currentIndex() == 0 && cboPersona->currentIndex() == 0 && cboPeriodo->currentIndex() == Siempre;
}

// Keys as the screen fills them with zeros.
qvx::FiltroDeHistoria FiltrosDeHistorial::Filtro(qvx::Conexion &conexion) const
{
    constexpr int DiasDeSemana = 7;
    constexpr int DiasDeMes = 30;
    qvx::FiltroDeHistoria filtro;
    filtro.tipoEquipo = Tipo();
    filtro.operador = cboPersona->currentData().toString();
    filtro.desconocido = cboPersona->currentIndex() > 0 && filtro.operador.isEmpty();
    const auto clave = [&](const QLineEdit &caja, const QString &formato) {
        return caja.isEnabled() && !caja.text().trimmed().isEmpty()
                   ? qvx::ClaveConFormato(caja.text(), qvx::claves::Mascara(conexion, formato, qvx::claves::Raiz))
                   : QString();
    };
    filtro.parte = clave(*txtParte, "FTO_TIPO_EQUIPO_PARTE");
    filtro.folio = clave(*txtFolio, "FTO_PLAN_MANTENIMIENTO");
    const QDate hoy = qvx::Sesion::Actual().Ahora().date();
    const auto desdeHace = [&](int dias) { filtro.desde = hoy.addDays(1 - dias).toString(Qt::ISODate); };
    switch (cboPeriodo->currentIndex()) {
    case Hoy:
        desdeHace(1);
        break;
    case SieteDias:
        desdeHace(DiasDeSemana);
        break;
    case TreintaDias:
        desdeHace(DiasDeMes);
        break;
    case EntreFechas:
        filtro.desde = fecDesde->date().toString(Qt::ISODate);
        filtro.hasta = fecHasta->date().toString(Qt::ISODate);
        break;
    default:
        break;
    }
    return filtro;
}
