// What the page of all services does with those chosen.

#include "app/Trampas.h"
#include "app/catalogos/DialogoExportarCatalogo.h"
#include "app/servicios/HojaDeServicios.h"
#include "app/servicios/ModeloServicios.h"
#include "app/servicios/PaginaServicios.h"
#include "plan/ReglasDeLote.h"
#include "session/Interaccion.h"
#include "session/Sistema.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>
#include <QSet>
#include <QTreeView>

// Once something was written, or could not be because of somebody else, what is shown is read again.
void PaginaServicios::Mandar(int identificador, const std::function<ordenes::Desenlace()> &orden)
{
    ConTrampa(*this, identificador, [&] {
        const QPointer<PaginaServicios> viva(this);
        const ordenes::Desenlace desenlace = orden();
        if (!viva || desenlace == ordenes::Desenlace::Dejado)
            return;
        alDia = false;
        Avisar();
        if (desenlace == ordenes::Desenlace::Fallido)
            return;
        Q_EMIT PlanCambiado(Plan().tipoEquipo);
        Leer();
    });
}

void PaginaServicios::Abrir()
{
    const int servicio = modelo->Servicio(lvServicios->currentIndex());
    if (servicio < 0)
        return;
    const qvx::ServicioLeido leido = Plan().servicios.at(servicio).leido;
    Q_EMIT ServicioPedido(leido.tipoEquipo, leido.parte, leido.folio);
}

void PaginaServicios::Mover()
{
    Mandar(1000082, [this] { return ordenes::MoverServicios(this, Plan(), Elegidos(), {}); });
}

void PaginaServicios::Duplicar()
{
    Mandar(1000083, [this] { return ordenes::DuplicarServicios(this, Plan(), Elegidos(), {}); });
}

void PaginaServicios::Cambiar()
{
    Mandar(1000084, [this] { return ordenes::CambiarServicios(this, Plan(), Elegidos()); });
}

void PaginaServicios::Eliminar()
{
    Mandar(1000085, [this] { return ordenes::EliminarServicios(this, Plan(), Elegidos()); });
}

void PaginaServicios::MoverParte()
{
    Mandar(1000086, [this] { return ordenes::MoverParte(this, Plan(), ParteElegida(), {}); });
}

// Where it was dropped is only proposed: the preview asks.
void PaginaServicios::AlSoltarServicios(const QString &parte, bool copiar)
{
    if (const QString objecion = qvx::ObjecionAlDestino(Plan().arbol, parte); !objecion.isEmpty())
        return Objetar(objecion);
    Mandar(1000087, [&] {
        return copiar ? ordenes::DuplicarServicios(this, Plan(), Elegidos(), parte)
                      : ordenes::MoverServicios(this, Plan(), Elegidos(), parte);
    });
}

void PaginaServicios::AlSoltarParte(const QString &parte, const QString &nuevoPadre)
{
    if (parte == nuevoPadre) // let go where it was taken
        return;
    if (const QString objecion = qvx::ObjecionAlTraslado(Plan().arbol, parte, nuevoPadre); !objecion.isEmpty())
        return Objetar(objecion);
    Mandar(1000088, [&] { return ordenes::MoverParte(this, Plan(), parte, nuevoPadre); });
}

void PaginaServicios::Objetar(const QString &objecion)
{
    qvx::Sistema().Mensaje(objecion + " No se movió nada.", qvx::mensaje::Exclamacion, "Quorvex", window()->winId(),
                           "QVX", "ERR-ID:1000089");
}

// The services chosen; all that are shown where none is.
void PaginaServicios::Copiar()
{
    const QList<int> elegidos = Elegidos();
    QGuiApplication::clipboard()->setText(
        csv::ParaPegar(EnHoja(Plan(), elegidos.isEmpty() ? modelo->Mostrados() : EnOrden(elegidos))));
}

QList<int> PaginaServicios::EnOrden(const QList<int> &cuales) const
{
    const QSet<int> buscados(cuales.begin(), cuales.end());
    QList<int> ordenados = modelo->Mostrados();
    ordenados.removeIf([&](int servicio) { return !buscados.contains(servicio); });
    return ordenados;
}

void PaginaServicios::ExportarCsv()
{
    DialogoExportarCatalogo::Exportar(this, EnHoja(Plan(), modelo->Mostrados()), false);
}

void PaginaServicios::ExportarXlsx()
{
    DialogoExportarCatalogo::Exportar(this, EnHoja(Plan(), modelo->Mostrados()), true);
}
