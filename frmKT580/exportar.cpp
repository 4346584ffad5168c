// Writing the plan of the equipment type on the screen as an XML document. Changes nothing in the database.

#include "component/Lineas.h"
#include "component/Trampa.h"
#include "controls/CommonDialog.h"
#include "controls/TreeView.h"
#include "controls/txtQVX.h"
#include "data/Conexion.h"
#include "frmKT580/PlanXml.h"
#include "frmKT580/frmKT580.h"
#include "ui_frmKT580.h"

using namespace Publico;
using qvx::Elemento;

bool frmKT580::Exportar_xml()
{
    if (!TipoValido() || ui->tvPartes->Count() <= 1)
        return true;
    try {
        const QString tipoEquipo = ui->txtTipoEquipo->Text();
        qvx::Documento documento;
        const Elemento tipo = documento.CrearRaiz("PlanMantenimiento").Crear("TipoEquipo");
        tipo.setAtributo("Id", tipoEquipo, "Tipo de equipo " + tipoEquipo);
        if (!Exportar_Partes(tipo, ClaveRaiz))
            return false;

        comunesQVX::CommonDialog &dialogo = *ui->CommonDialogXML;
        dialogo.setDialogTitle("GUARDAR XML");
        dialogo.setFilter("Archivo XML|*.xml");
        dialogo.setFileName("PlanMantenimiento_" + tipoEquipo);
        dialogo.setCancelError(true);
        dialogo.ShowSave();
        const QString ruta = dialogo.FileName();
        dialogo.setInitDir(ruta.left(ruta.size() - dialogo.FileTitle().size() - 1));
        documento.Guardar(ruta);
        // No blank before the path, on purpose.
        Mensaje("Se generó el archivo" + ruta, qvx::mensaje::Informacion, "Quorvex", 7500018);
        return true;
    } catch (const qvx::ErrorEjecucion &error) {
        if (error.Numero() == qvx::errores::DialogoCancelado)
            return true;
        textoError = error.Descripcion();
        return false;
    }
}

// Adds what a part holds: its services, then the parts below it, with all that they hold.
bool frmKT580::Exportar_Partes(const Elemento &padre, const QString &parte)
{
    return Trampa::guardando(textoError, [&] {
        const QString tipoEquipo = ui->txtTipoEquipo->Text();
        strSQL = "SELECT Tep_ID, Tep_Descripcion FROM Tipo_Equipo_Parte WHERE Tep_Padre = '" + parte
                 + "' and Te_Cve_Tipo_Equipo = '" + tipoEquipo + "' ORDER BY Tep_Descripcion ASC";
        auto partes = Sistema->Conexion().Execute(strSQL);

        strSQL = "SELECT * FROM Plan_Mantenimiento WHERE Tep_ID = '" + parte + "' AND Te_Cve_Tipo_Equipo = '"
                 + tipoEquipo + "' ORDER BY Pm_ID ASC";
        for (auto servicios = Sistema->Conexion().Execute(strSQL); !servicios.Eof(); servicios.MoveNext()) {
            const QString pmId = servicios["Pm_ID"];
            const Elemento servicio = padre.Crear("TipoServicio");
            for (const auto &[atributo, campo] : planXml::ColumnasServicio)
                servicio.setAtributo(atributo, servicios[campo], "Parte " + parte + ", servicio " + pmId);
            Exportar_Lineas(servicio, parte, pmId);
        }
        for (; !partes.Eof(); partes.MoveNext()) {
            const QString hija = partes["Tep_ID"];
            const Elemento elemento = padre.Crear("Parte");
            elemento.setAtributo("Id", hija, "Parte " + hija);
            elemento.setAtributo("Descripción", partes["Tep_Descripcion"], "Parte " + hija);
            if (!Exportar_Partes(elemento, hija))
                return false;
        }
        return true;
    });
}

// Adds a group of lines for each kind, empty ones too. Lines of any other kind are left out.
void frmKT580::Exportar_Lineas(const Elemento &servicio, const QString &parte, const QString &pmId)
{
    strSQL = "Select * FROM Plan_Mantenimiento_Detalle WHERE Tep_ID = '" + parte + "' AND Pm_ID = '" + pmId
             + "' AND Te_Cve_Tipo_Equipo = '" + ui->txtTipoEquipo->Text() + "' ORDER BY Pm_ID ASC";
    auto lineas = Sistema->Conexion().Execute(strSQL);
    std::vector<Elemento> grupos;
    grupos.reserve(ClasesDeLinea.size());
    for (const ClaseDeLinea &clase : ClasesDeLinea)
        grupos.push_back(servicio.Crear(clase.grupo));
    const QString duenio = "Parte " + parte + ", servicio " + pmId;
    for (; !lineas.Eof(); lineas.MoveNext())
        for (std::size_t i = 0; i < grupos.size(); ++i) {
            const ClaseDeLinea &clase = ClasesDeLinea.at(i);
            if (lineas["Pmd_Tipo"] != clase.tipo)
                continue;
            const Elemento linea = grupos.at(i).Crear(clase.elemento);
            linea.setAtributo("Id", lineas["Pr_Cve_Producto"], duenio);
            linea.setAtributo("Cantidad", lineas["Pmd_Cantidad"], duenio);
            if (clase.conGasto)
                linea.setAtributo("TipoGasto", "", ""); // never exported, on purpose
        }
}
