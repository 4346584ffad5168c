#include "app/comparar/DialogoComparar.h"

#include "app/Espera.h"
#include "app/Trampas.h"
#include "app/comparar/SelectorDeFuente.h"
#include "app/comparar/VistaComparacion.h"
#include "controls/Formulario.h"
#include "controls/colorQVX.h"
#include "data/Conexion.h"
#include "data/Texto.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace
{

constexpr QSize TamanoDeComparar{1040, 660};

// Retired ones too: their plans are compared as well.
QList<QPair<QString, QString>> TiposConPlan()
{
    QList<QPair<QString, QString>> tipos;
    for (auto filas = Base().Execute(
             "SELECT Te_Cve_Tipo_Equipo, Te_Descripcion FROM Tipo_Equipo ORDER BY Te_Cve_Tipo_Equipo", {});
         !filas.Eof(); filas.MoveNext())
        tipos.append({qvx::SinBlancosAlFinal(filas.Texto(0)), filas.Texto(1)});
    return tipos;
}

QLabel *RotuloDeLado(const QString &texto, QWidget *companero)
{
    auto *rotulo = new QLabel(texto);
    rotulo->setBuddy(companero);
    return rotulo;
}

} // namespace

DialogoComparar::DialogoComparar(const QString &actual, QWidget *duena) : QDialog(duena), vista(new VistaComparacion)
{
    setObjectName("DialogoComparar");
    setWindowTitle("Comparar planes");
    coloresQVX::colorQVX::AplicarA(*this);
    const auto tipos = TiposConPlan();
    una = new SelectorDeFuente("Antes", "Antes", tipos);
    otra = new SelectorDeFuente("Despues", "Después", tipos);
    comparar::Fuente enPantalla;
    enPantalla.tipoEquipo = actual;
    una->Elegir(enPantalla);
    otra->Elegir(enPantalla);
    auto *cmdComparar = new QPushButton("Co&mparar");
    cmdComparar->setObjectName("cmdComparar");
    cmdComparar->setDefault(true);
    auto *cmdCerrar = new QPushButton("&Cerrar");
    cmdCerrar->setObjectName("cmdCerrar");
    cmdCerrar->setAutoDefault(false);
    auto *disposicion = new QGridLayout(this);
    disposicion->setContentsMargins(14, 14, 14, 12);
    disposicion->setSpacing(8);
    disposicion->addWidget(RotuloDeLado("&Antes", una), 0, 0);
    disposicion->addWidget(una, 0, 1);
    disposicion->addWidget(RotuloDeLado("Des&pués", otra), 1, 0);
    disposicion->addWidget(otra, 1, 1);
    disposicion->addWidget(cmdComparar, 1, 2);
    disposicion->addWidget(vista, 2, 0, 1, 3);
    disposicion->addWidget(cmdCerrar, 3, 2);
    disposicion->setColumnStretch(1, 1);
    disposicion->setRowStretch(2, 1);
    connect(cmdComparar, &QPushButton::clicked, this, &DialogoComparar::Hacer);
    connect(cmdCerrar, &QPushButton::clicked, this, &QDialog::reject);
    resize(qvx::Formulario::Cabida(*this, TamanoDeComparar));
}

void DialogoComparar::Comparar(const comparar::Fuente &antes, const comparar::Fuente &despues)
{
    una->Elegir(antes);
    otra->Elegir(despues);
    Hacer();
}

void DialogoComparar::Hacer()
{
    ConTrampa(*this, 1000130, [this] {
        const Espera espera;
        vista->Mostrar(comparar::CompararFuentes(Base(), una->Elegida(), otra->Elegida()));
    });
}
