// What the page of the catalogues does with them.

#include "app/Trampas.h"
#include "app/catalogos/DialogoExportarCatalogo.h"
#include "app/catalogos/DialogoImportarCatalogo.h"
#include "app/catalogos/DialogoRegistro.h"
#include "app/catalogos/DialogoUsos.h"
#include "app/catalogos/ExportacionDeCatalogo.h"
#include "app/catalogos/PaginaCatalogos.h"
#include "controls/ModeloTabla.h"
#include "data/Texto.h"
#include "plan/Catalogos.h"
#include "session/Interaccion.h"
#include "session/Sesion.h"
#include "session/Sistema.h"
#include "session/Utilerias.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>

using qvx::RegistroDeCatalogo;
using qvx::Sesion;
using qvx::TablaDeCatalogo;
using ClaseDeColumna = qvx::ColumnaDeCatalogo::Clase;

namespace
{

// The code under which the search dialog shows the entries that can stand for one.
QString CodigoDeBusqueda(const TablaDeCatalogo &tabla, const RegistroDeCatalogo &registro)
{
    const int clase = tabla.Lugar(ClaseDeColumna::ClaseDeProducto);
    return qvx::CodigoDeCatalogo(tabla.nombre, clase < 0 ? QString() : registro.valores.at(clase));
}

} // namespace

// The row is shown whatever the filter says.
void PaginaCatalogos::Terminar(const QString &clave)
{
    Leer();
    if (modelo->VisibleConClave(clave) < 0)
        txtBuscar->clear();
    Elegir(clave);
    Q_EMIT Cambiado();
}

void PaginaCatalogos::Nuevo()
{
    ConTrampa(*this, 1000009, [this] {
        const auto hecho = DialogoRegistro::Preguntar(this, Tabla(), {});
        if (hecho.clave.isEmpty())
            return;
        Terminar(hecho.clave);
        if (!hecho.copiarDe.isEmpty())
            Q_EMIT CopiaPedida(hecho.clave, hecho.copiarDe);
    });
}

void PaginaCatalogos::Editar()
{
    if (!Elegido() || !puedeCambiar)
        return;
    ConTrampa(*this, 1000213, [this] {
        const QString clave = DialogoRegistro::Preguntar(this, Tabla(), *Elegido()).clave;
        if (!clave.isEmpty())
            Terminar(clave);
    });
}

void PaginaCatalogos::DarDeBaja()
{
    ConTrampa(*this, 1000214, [this] {
        const RegistroDeCatalogo registro = *Elegido();
        const auto respuesta = DialogoUsos::PreguntarBaja(this, Tabla(), registro);
        if (respuesta == DialogoUsos::Respuesta::Reemplazar)
            return Reemplazar();
        if (respuesta != DialogoUsos::Respuesta::Baja)
            return;
        RegistroDeCatalogo despues = registro;
        despues.estado = qvx::estado::Baja;
        qvx::EscribirCambios(Base(), Sesion::Actual().Firmante(), Tabla(), {{registro, despues}});
        Terminar(registro.clave);
    });
}

void PaginaCatalogos::Reactivar()
{
    ConTrampa(*this, 1000215, [this] {
        const RegistroDeCatalogo registro = *Elegido();
        RegistroDeCatalogo despues = registro;
        despues.estado = qvx::estado::Activo;
        qvx::EscribirCambios(Base(), Sesion::Actual().Firmante(), Tabla(), {{registro, despues}});
        Terminar(registro.clave);
    });
}

// What is used cannot go: where, is shown instead of a question.
void PaginaCatalogos::Eliminar()
{
    if (!Elegido())
        return;
    ConTrampa(*this, 1000216, [this] {
        const RegistroDeCatalogo registro = *Elegido();
        const qvx::CambioDeCatalogo cambio{registro, std::nullopt};
        const auto situacion = qvx::LeerSituacion(Base(), Tabla(), {registro.clave});
        const QString nombre = "«" + registro.clave + " " + registro.Descripcion() + "»";
        if (const auto objecion = qvx::Objetar(Tabla(), situacion, cambio)) {
            qvx::Sistema().Mensaje(nombre + ": " + objecion->motivo, qvx::mensaje::Exclamacion, "Quorvex",
                                   window()->winId(), "QVX", "ERR-ID:1000010");
            return DialogoUsos::Mostrar(this, Tabla(), registro);
        }
        if (qvx::Sistema().Mensaje("Se eliminará " + nombre + ", que no se usa en ningún plan. ¿Desea continuar?",
                                   qvx::mensaje::SiNo + qvx::mensaje::Pregunta + qvx::mensaje::SegundoBoton, "Quorvex",
                                   window()->winId(), "QVX", "ERR-ID:1000011")
            != qvx::mensaje::Si)
            return;
        qvx::EscribirCambios(Base(), Sesion::Actual().Firmante(), Tabla(), {cambio});
        Terminar({});
    });
}

void PaginaCatalogos::VerUsos()
{
    if (Elegido())
        ConTrampa(*this, 1000217, [this] { DialogoUsos::Mostrar(this, Tabla(), *Elegido()); });
}

void PaginaCatalogos::Reemplazar()
{
    ConTrampa(*this, 1000218, [this] {
        const RegistroDeCatalogo registro = *Elegido();
        const QString otra =
            qvx::Utilerias().BuscarEnCatalogo(CodigoDeBusqueda(Tabla(), registro), 0, {}, QFont(font()), this);
        if (otra.isEmpty())
            return;
        const auto nuevo = qvx::LeerSituacion(Base(), Tabla(), {otra}).registros.value(qvx::SinBlancosAlFinal(otra));
        if (const QString objecion = qvx::ObjecionAlReemplazo(Tabla(), registro, nuevo); !objecion.isEmpty()) {
            qvx::Sistema().Mensaje(objecion, qvx::mensaje::Exclamacion, "Quorvex", window()->winId(), "QVX",
                                   "ERR-ID:1000012");
            return;
        }
        if (DialogoUsos::Reemplazar(this, Tabla(), registro, nuevo))
            Terminar(registro.clave);
    });
}

void PaginaCatalogos::Importar()
{
    if (DialogoImportarCatalogo::ImportarArchivo(this, Tabla()))
        Terminar({});
}

// What a spreadsheet put on the clipboard: a text with a tab between its cells.
void PaginaCatalogos::Pegar()
{
    const QString texto = QGuiApplication::clipboard()->text();
    if (!texto.isEmpty()
        && DialogoImportarCatalogo::Importar(this, Tabla(), texto.toUtf8(), "Lo copiado de una hoja de cálculo"))
        Terminar({});
}

void PaginaCatalogos::ExportarCsv()
{
    Exportar(false);
}

void PaginaCatalogos::ExportarXlsx()
{
    Exportar(true);
}

// The whole catalogue, whatever is shown of it: it can then be imported anywhere.
void PaginaCatalogos::Exportar(bool libro)
{
    ConTrampa(*this, 1000219, [this, libro] {
        DialogoExportarCatalogo::Exportar(this, EnHoja(Tabla(), qvx::LeerRegistros(Base(), Tabla())), libro);
    });
}

QString PaginaCatalogos::CrearDesdeBusqueda(const QString &codigo, const QString &escrito, QWidget *duena)
{
    const qvx::Catalogo &catalogo = qvx::CatalogoPorCodigo(codigo);
    const TablaDeCatalogo &tabla = *qvx::TablaDeCatalogoPorNombre(catalogo.tabla);
    RegistroDeCatalogo registro{{}, QStringList(tabla.columnas.size()), qvx::estado::Activo};
    registro.valores[0] = escrito;
    if (const int clase = tabla.Lugar(ClaseDeColumna::ClaseDeProducto); clase >= 0)
        registro.valores[clase] = catalogo.clase;
    return DialogoRegistro::Preguntar(duena, tabla, registro).clave;
}
