// The library that writes workbooks, as the program sees it.

#include "app/reportes/EscritorXlsx.h"

#include "data/ErrorEjecucion.h"
#include "system/ArchivoEntero.h"

#include <QDateTime>
#include <QTemporaryDir>
#include <algorithm>
#include <fcntl.h>
#include <memory>
#include <vector>
#include <xlsxwriter.h>

namespace
{

constexpr int LetrasPorCelda = 32767; // the format takes no more
constexpr qsizetype AnchoMenor = 8;   // of a column, in letters
constexpr qsizetype AnchoMayor = 60;
constexpr qsizetype Margen = 3; // that the filter's button takes of a heading

constexpr int CifrasDelTotal = 15; // binary fractions leave something behind them

constexpr qint64 SitioDelLibro = 64LL * 1024;
constexpr qint64 SitioPorCelda = 200;
constexpr qint64 SitioPorLetra = 12; // escaped, in a part and again in the workbook

[[noreturn]] void RechazarLibro(const QString &motivo)
{
    throw qvx::ErrorEjecucion(qvx::errores::Datos, "No se pudo escribir el libro: " + motivo);
}

void Revisar(lxw_error error)
{
    if (error == LXW_ERROR_MAX_STRING_LENGTH_EXCEEDED)
        RechazarLibro(QString("una celda pasa de %1 caracteres. Expórtelo como CSV.").arg(LetrasPorCelda));
    if (error == LXW_ERROR_WORKSHEET_INDEX_OUT_OF_RANGE)
        RechazarLibro(QString("una hoja tiene a lo más %1 filas. Expórtelo como CSV.").arg(LXW_ROW_MAX));
    if (error != LXW_NO_ERROR)
        RechazarLibro(lxw_strerror(error));
}

// The workbook as the library makes it, in a folder of its own: it cannot write into an open file.
class Libro
{
public:
    Libro(const QString &ruta, QByteArray carpeta_) : carpeta(std::move(carpeta_))
    {
        lxw_workbook_options opciones{};
        opciones.tmpdir = carpeta.data();
        libro.reset(workbook_new_opt(QFile::encodeName(ruta).constData(), &opciones));
        if (!libro)
            RechazarLibro("falta memoria.");
    }

    void Llenar(const Hoja &contenido)
    {
        hoja = workbook_add_worksheet(libro.get(), contenido.nombre.toUtf8().constData());
        if (!hoja)
            RechazarLibro("«" + contenido.nombre + "» no puede ser el nombre de una hoja.");
        PonerColumnas(contenido);
        lxw_row_t fila = 0;
        for (const QVariantList &valores : contenido.filas) {
            ++fila;
            for (qsizetype columna = 0; columna < contenido.columnas.size(); ++columna)
                Poner(fila, Columna(columna), valores.at(columna), contenido.columnas.at(columna).clase);
        }
        PonerTotales(contenido, fila);
        worksheet_freeze_panes(hoja, 1, 0);
        Revisar(worksheet_autofilter(hoja, 0, 0, fila, Columna(contenido.columnas.size() - 1)));
    }

    void Terminar() { Revisar(workbook_close(libro.release())); }

private:
    struct Soltar {
        void operator()(lxw_workbook *otro) const { lxw_workbook_free(otro); }
    };

    static lxw_col_t Columna(qsizetype columna) { return static_cast<lxw_col_t>(columna); }

    // As wide as what they hold.
    void PonerColumnas(const Hoja &contenido)
    {
        lxw_format *titulo = workbook_add_format(libro.get());
        format_set_bold(titulo);
        for (qsizetype columna = 0; columna < contenido.columnas.size(); ++columna) {
            const ColumnaDeHoja &definida = contenido.columnas.at(columna);
            formatos.push_back(FormatoDe(definida.clase));
            qsizetype ancho = std::max(AnchoMenor, definida.titulo.size() + Margen);
            for (const QVariantList &valores : contenido.filas)
                ancho = std::max(ancho, valores.at(columna).toString().size() + 1);
            Revisar(worksheet_set_column(hoja, Columna(columna), Columna(columna),
                                         static_cast<double>(std::min(ancho, AnchoMayor)), formatos.back()));
            Revisar(worksheet_write_string(hoja, 0, Columna(columna), definida.titulo.toUtf8().constData(), titulo));
        }
    }

    // Apart from the rows, which the filter would take it for.
    void PonerTotales(const Hoja &contenido, lxw_row_t ultima)
    {
        const lxw_row_t fila = ultima + 2;
        for (qsizetype columna = 0; columna < contenido.columnas.size() && ultima > 0; ++columna) {
            const ColumnaDeHoja &definida = contenido.columnas.at(columna);
            if (!definida.seSuma)
                continue;
            double total = 0;
            for (const QVariantList &valores : contenido.filas)
                total += valores.at(columna).toDouble();
            const QByteArray letra = Letra(columna);
            const QByteArray formula = "=SUBTOTAL(109," + letra + "2:" + letra + QByteArray::number(ultima + 1) + ")";
            lxw_format *formato = FormatoDe(definida.clase, true);
            Revisar(worksheet_write_formula_num(hoja, fila, Columna(columna), formula.constData(), formato,
                                                QString::number(total, 'g', CifrasDelTotal).toDouble()));
        }
    }

    // "A", …, "Z", "AA", …
    static QByteArray Letra(qsizetype columna)
    {
        QByteArray letras;
        for (++columna; columna > 0; columna = (columna - 1) / 26)
            letras.prepend(static_cast<char>('A' + (columna - 1) % 26));
        return letras;
    }

    lxw_format *FormatoDe(ColumnaDeHoja::Clase clase, bool negrita = false)
    {
        const char *forma = nullptr;
        switch (clase) {
        case ColumnaDeHoja::Clase::Texto:
            forma = "@"; // what is typed there later is a text too
            break;
        case ColumnaDeHoja::Clase::Numero:
            if (!negrita)
                return nullptr;
            forma = "General";
            break;
        case ColumnaDeHoja::Clase::Dinero:
            forma = "#,##0.00######";
            break;
        case ColumnaDeHoja::Clase::Fecha:
            forma = "yyyy-mm-dd";
            break;
        }
        lxw_format *formato = workbook_add_format(libro.get());
        format_set_num_format(formato, forma);
        if (negrita)
            format_set_bold(formato);
        return formato;
    }

    void Poner(lxw_row_t fila, lxw_col_t columna, const QVariant &valor, ColumnaDeHoja::Clase clase)
    {
        lxw_format *formato = formatos.at(columna);
        if (!valor.isValid())
            return;
        if (clase == ColumnaDeHoja::Clase::Texto) {
            Revisar(worksheet_write_string(hoja, fila, columna, valor.toString().toUtf8().constData(), formato));
        } else if (clase == ColumnaDeHoja::Clase::Fecha) {
            const QDate dia = valor.toDate();
            lxw_datetime fecha{dia.year(), dia.month(), dia.day(), 0, 0, 0};
            Revisar(worksheet_write_datetime(hoja, fila, columna, &fecha, formato));
        } else {
            Revisar(worksheet_write_number(hoja, fila, columna, valor.toDouble(), formato));
        }
    }

    QByteArray carpeta; // lives as long as the workbook, which keeps no copy
    std::unique_ptr<lxw_workbook, Soltar> libro;
    lxw_worksheet *hoja = nullptr;
    std::vector<lxw_format *> formatos;
};

// Bytes at most that the workbook's parts take, and the workbook itself.
qint64 Sitio(const Hoja &hoja)
{
    qint64 sitio = SitioDelLibro;
    for (const QVariantList &valores : hoja.filas)
        for (const QVariant &valor : valores)
            sitio += SitioPorCelda + SitioPorLetra * valor.toString().size();
    return sitio;
}

// The library does not notice that a part was cut short in its temporary file: that there is room for them is found out
// first.
void AsegurarSitio(const QTemporaryDir &carpeta, const Hoja &hoja)
{
    QFile prueba(carpeta.filePath("sitio"));
    if (!prueba.open(QIODevice::WriteOnly))
        RechazarLibro(prueba.errorString());
    if (const int error = posix_fallocate(prueba.handle(), 0, Sitio(hoja)); error != 0)
        RechazarLibro("no cabe en la carpeta " + carpeta.path() + ": " + qt_error_string(error));
    prueba.remove();
}

class EscritorReal : public EscritorXlsx
{
public:
    void Escribir(const QString &ruta, const Hoja &hoja) const override
    {
        qvx::ArchivoEntero archivo(ruta);
        const QTemporaryDir carpeta;
        if (!carpeta.isValid())
            RechazarLibro(carpeta.errorString());
        AsegurarSitio(carpeta, hoja);
        QFile hecho(carpeta.filePath("libro.xlsx"));
        Libro libro(hecho.fileName(), QFile::encodeName(carpeta.path()));
        libro.Llenar(hoja);
        libro.Terminar();
        if (!hecho.open(QIODevice::ReadOnly))
            RechazarLibro(hecho.errorString());
        const QByteArray octetos = hecho.readAll();
        if (hecho.error() != QFileDevice::NoError)
            RechazarLibro(hecho.errorString());
        archivo.Salida().write(octetos);
        archivo.Terminar();
    }

    QString Version() const override { return lxw_version(); }
};

} // namespace

extern "C" Q_DECL_EXPORT const EscritorXlsx *qvx_escritor_xlsx()
{
    static const EscritorReal escritor;
    return &escritor;
}
