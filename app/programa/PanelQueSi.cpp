#include "app/programa/PanelQueSi.h"

#include "app/Rotulo.h"
#include "app/Textos.h"
#include "controls/ModeloTabla.h"
#include "controls/VistaTabla.h"
#include "data/ErrorEjecucion.h"

#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>
#include <cmath>

namespace
{

constexpr int MilisegundosDeReposo = 120;
constexpr int PasosDelDeslizador = 240;
constexpr double HorasDelDia = 24;

using ClaseDeMedida = qvx::ColumnaDeTabla::Clase;

QVariantList FilaDe(const QString &de, const programa::Cantidad &antes, const programa::Cantidad &despues)
{
    return {de, antes.Redondeada(2).Numero(), despues.Redondeada(2).Numero(), (despues - antes).Redondeada(2).Numero()};
}

} // namespace

PanelQueSi::PanelQueSi(QWidget *padre)
    : QWidget(padre)
    , lblFechas(RotuloLargo("lblFechasQueSi"))
    , modelo(new qvx::ModeloTabla({{"En el año"},
                                   {"Con los datos del programa", ClaseDeMedida::Numero},
                                   {"Con lo supuesto", ClaseDeMedida::Numero},
                                   {"Diferencia", ClaseDeMedida::Numero}},
                                  0, this))
    , lvQueSi(new qvx::VistaTabla("lvQueSi", "Diferencias con lo supuesto"))
    , cmdTomar(new QPushButton("&Usar estos datos…"))
    , cmdVolver(new QPushButton("Vo&lver a los del programa"))
{
    setObjectName("PanelQueSi");
    auto *disposicion = new QVBoxLayout(this);
    auto *nota = new QLabel("Mueva el uso por día o el número de equipos: lo de abajo dice qué cambiaría en el año. "
                            "Nada se guarda mientras no los use y los guarde.");
    nota->setWordWrap(true);
    disposicion->addWidget(nota);
    lvQueSi->Poner(modelo, 0, -1);
    lvQueSi->header()->setSectionsClickable(false);
    disposicion->addWidget(lblFechas);
    disposicion->addWidget(lvQueSi, 1);
    auto *botones = new QHBoxLayout;
    cmdTomar->setObjectName("cmdTomarSupuesto");
    cmdVolver->setObjectName("cmdVolverAlPrograma");
    for (QPushButton *boton : {cmdTomar, cmdVolver}) {
        boton->setAutoDefault(false);
        botones->addWidget(boton);
    }
    botones->addStretch();
    disposicion->addLayout(botones);
    connect(cmdTomar, &QPushButton::clicked, this, [this] { Q_EMIT Tomado(supuesto); });
    connect(cmdVolver, &QPushButton::clicked, this, [this] { Poner(medido, guardado); });
    espera.setSingleShot(true);
    espera.setInterval(MilisegundosDeReposo);
    connect(&espera, &QTimer::timeout, this, &PanelQueSi::Calcular);
}

void PanelQueSi::Poner(const programa::PlanMedido *medido_, const programa::Programa *guardado_)
{
    medido = medido_;
    guardado = guardado_;
    setEnabled(guardado);
    if (!guardado)
        return;
    supuesto = guardado->datos;
    PonerPerillas();
    Calcular();
}

// A slider, whose steps are coarse, and a box for any number, which is what counts.
QWidget *PanelQueSi::Perilla(const QString &nombre, const QString &titulo, double maximo, int decimales, double valor,
                             const std::function<void(double)> &mover)
{
    auto *deslizador = new QSlider(Qt::Horizontal);
    deslizador->setObjectName("sld" + nombre);
    deslizador->setAccessibleName(titulo);
    const double paso =
        decimales == 0 ? std::max(1.0, std::ceil(maximo / PasosDelDeslizador)) : maximo / PasosDelDeslizador;
    deslizador->setRange(decimales == 0 ? 1 : 0, static_cast<int>(std::lround(maximo / paso)));
    deslizador->setValue(static_cast<int>(std::lround(valor / paso)));
    auto *caja = new QDoubleSpinBox;
    caja->setObjectName("spnSi" + nombre);
    caja->setAccessibleName(titulo);
    caja->setLocale(QLocale::c());
    caja->setDecimals(decimales);
    caja->setRange(decimales == 0 ? 1 : 0, std::max(maximo, valor));
    caja->setValue(valor);
    connect(deslizador, &QSlider::valueChanged, caja, [=](int cual) { caja->setValue(cual * paso); });
    connect(caja, &QDoubleSpinBox::valueChanged, this, [=, this](double numero) {
        const QSignalBlocker callado(deslizador);
        deslizador->setValue(static_cast<int>(std::lround(numero / paso)));
        mover(numero);
        espera.start();
    });
    auto *perilla = new QWidget;
    auto *fila = new QHBoxLayout(perilla);
    fila->setContentsMargins(0, 0, 0, 0);
    auto *rotulo = new QLabel(titulo + ":");
    rotulo->setMinimumWidth(fontMetrics().horizontalAdvance("Uso por día en UNIDAD:"));
    fila->addWidget(rotulo);
    fila->addWidget(deslizador, 1);
    fila->addWidget(caja);
    return perilla;
}

void PanelQueSi::PonerPerillas()
{
    delete perillas;
    perillas = new QWidget;
    auto *columna = new QVBoxLayout(perillas);
    columna->setContentsMargins(0, 0, 0, 0);
    for (const QString &unidad : medido->Unidades()) {
        const double uso = supuesto.usos.value(unidad).porDia;
        const double maximo = unidad == programa::Horas ? HorasDelDia : std::max(24.0, uso * 3);
        columna->addWidget(Perilla("Uso" + unidad, "Uso por día en " + unidad, maximo, 2, uso,
                                   [this, unidad](double porDia) { supuesto.usos[unidad].porDia = porDia; }));
    }
    columna->addWidget(Perilla("Equipos", "Equipos", std::max(20, supuesto.equipos * 3), 0, supuesto.equipos,
                               [this](double equipos) { supuesto.equipos = static_cast<int>(std::lround(equipos)); }));
    static_cast<QVBoxLayout *>(layout())->insertWidget(1, perillas);
}

Hoja PanelQueSi::Mostrada() const
{
    using Clase = ColumnaDeHoja::Clase;
    Hoja hoja{"Y si", {}, filas};
    for (int columna = 0; columna < modelo->columnCount(); ++columna)
        hoja.columnas.append({modelo->headerData(columna, Qt::Horizontal, Qt::DisplayRole).toString(),
                              columna == 0 ? Clase::Texto : Clase::Numero});
    return hoja;
}

void PanelQueSi::Calcular()
{
    try {
        const programa::Programa otro = programa::Programar(medido->entradas, supuesto);
        const programa::Diferencia diferencia = programa::Comparar(*guardado, otro);
        const programa::Medida antes = programa::Total(*guardado, medido->medidas);
        const programa::Medida despues = programa::Total(otro, medido->medidas);
        lblFechas->setText(supuesto == guardado->datos
                               ? QString("Es el programa tal como está.")
                               : "Se mueven " + Cuantos(diferencia.movidas, "fecha", "fechas") + ", aparecen "
                                     + Cuantos(diferencia.nuevas, "", "").trimmed() + " y desaparecen "
                                     + Cuantos(diferencia.perdidas, "", "").trimmed() + ". El costo cambia en $"
                                     + (despues.costo - antes.costo).Texto(2) + " y la mano de obra en "
                                     + (despues.manoObra - antes.manoObra).Texto(2) + " HR.");
        const auto veces = [](const programa::Programa &programa) {
            qint64 todas = 0;
            for (const programa::Fila &fila : programa.filas)
                todas += qint64(fila.Cuentan()) * programa.datos.equipos;
            return programa::Cantidad::De(todas);
        };
        filas = {FilaDe("Servicios hechos", veces(*guardado), veces(otro)),
                 FilaDe("Mano de obra, HR", antes.manoObra, despues.manoObra),
                 FilaDe("Paro sumado, HR", antes.paro, despues.paro),
                 FilaDe("Costo, $", antes.costo, despues.costo),
                 FilaDe("Costo de hoy, $", antes.costoHoy, despues.costoHoy),
                 FilaDe("Precio, $", antes.precio, despues.precio)};
        modelo->Llenar(filas);
        lvQueSi->AjustarColumnas();
    } catch (const qvx::ErrorEjecucion &error) {
        lblFechas->setText(error.Descripcion());
        filas.clear();
        modelo->Llenar(filas);
    }
    cmdVolver->setEnabled(supuesto != guardado->datos);
    cmdTomar->setEnabled(supuesto != guardado->datos);
}
