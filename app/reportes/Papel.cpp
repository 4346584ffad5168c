#include "app/reportes/Papel.h"

#include "data/ErrorEjecucion.h"
#include "system/ArchivoEntero.h"

#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>

namespace impreso
{

namespace
{

constexpr int Resolucion = 600;
constexpr double MargenDePagina = 14;  // millimetres
constexpr double MargenIzquierdo = 18; // punched

// Page after page. revisar: raises an error where the device has given up.
bool Recorrer(const Documento &documento, QPagedPaintDevice &hoja, const Avance &avance,
              const std::function<void(const QString &donde)> &revisar)
{
    Paginador paginador(documento, hoja);
    if (!paginador.Repartir(avance))
        return false;
    QPainter pintor(&hoja);
    if (!pintor.isActive())
        qvx::Rechazar("No se pudo imprimir: la impresora no empieza. Revise que esté encendida y en línea.");
    const int paginas = paginador.Paginas();
    for (int pagina = 0; pagina < paginas; ++pagina) {
        if (!avance(paginas + pagina, paginas * 2))
            return false;
        const QString donde = "en la página " + QString::number(pagina + 1);
        const bool otra = pagina == 0 || hoja.newPage();
        revisar(donde);
        if (!otra)
            qvx::Rechazar("No se pudo imprimir: la impresora dejó de recibir " + donde + ".");
        paginador.Pintar(pintor, pagina);
        revisar(donde);
    }
    const bool entero = pintor.end();
    revisar("al terminar");
    if (!entero)
        qvx::Rechazar("El reporte no se pudo terminar. Repítalo, o pruebe con otra impresora u otro archivo.");
    return true;
}

} // namespace

QPageLayout Disposicion(const Documento &documento, Papel papel)
{
    return {QPageSize(papel == Papel::A4 ? QPageSize::A4 : QPageSize::Letter), documento.orientacion,
            QMarginsF(MargenIzquierdo, MargenDePagina, MargenDePagina, MargenDePagina), QPageLayout::Millimeter};
}

bool EscribirPdf(const QString &ruta, const Documento &documento, Papel papel, const Avance &avance)
{
    return EscribirPdf(ruta, documento, Disposicion(documento, papel), avance);
}

bool EscribirPdf(const QString &ruta, const Documento &documento, const QPageLayout &disposicion, const Avance &avance)
{
    qvx::ArchivoEntero archivo(ruta);
    {
        QPdfWriter hoja(&archivo.Salida());
        hoja.setResolution(Resolucion);
        hoja.setPageLayout(disposicion);
        hoja.setTitle(documento.titulo + " · " + documento.tipo);
        hoja.setCreator("Quorvex");
        if (!Recorrer(documento, hoja, avance, [&](const QString &) {
                if (archivo.Salida().error() != QFileDevice::NoError)
                    archivo.Terminar(); // which says of what file, and why
            }))
            return false;
    }
    archivo.Terminar();
    return true;
}

bool Imprimir(QPrinter &impresora, const Documento &documento, const Avance &avance)
{
    // A file that is chosen among the printers: the toolkit's own would not tell of a disk that is full.
    if (impresora.outputFormat() == QPrinter::PdfFormat && !impresora.outputFileName().isEmpty())
        return EscribirPdf(impresora.outputFileName(), documento, impresora.pageLayout(), avance);
    const bool hecho = Recorrer(documento, impresora, avance, [&](const QString &donde) {
        if (impresora.printerState() == QPrinter::Error)
            qvx::Rechazar("No se pudo imprimir: la impresora falló " + donde + ".");
    });
    if (!hecho)
        impresora.abort();
    return hecho;
}

} // namespace impreso
