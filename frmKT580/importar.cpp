// Replacing the whole plan of an equipment type by an XML document's, in one transaction: a document that is refused,
// and an import that fails, leave the present plan as it was.

#include "component/Esquema.h"
#include "component/PunteroReloj.h"
#include "component/Trampa.h"
#include "controls/CommonDialog.h"
#include "controls/TreeView.h"
#include "controls/txtQVX.h"
#include "data/Conexion.h"
#include "data/Texto.h"
#include "frmKT580/Ordenes.h"
#include "frmKT580/frmKT580.h"
#include "system/UnidadC.h"
#include "ui_frmKT580.h"
#include "xml/EsquemaXml.h"

#include <cmath>

using namespace Publico;
using qvx::Elemento;

namespace
{

constexpr int ErroresEnDetalles = 50;

// Values stand unescaped between quotes, and literals says how many pairs the statement has by itself. One stray quote
// breaks its statement, as everywhere; an even number of them would let a document write parts of the statement.
qvx::Recordset Ejecutar(int literales)
{
    const auto comillas = strSQL.count(QLatin1Char('\''));
    if (comillas % 2 == 0 && comillas != 2LL * literales)
        throw qvx::ErrorEjecucion(qvx::errores::Datos, "Un valor del documento lleva comillas", strSQL);
    return Sistema->Conexion().Execute(strSQL);
}

double Numero(const QString &texto)
{
    const auto numero = qvx::TextoANumero(texto);
    if (!numero)
        throw qvx::ErrorEjecucion(qvx::errores::TiposNoCoinciden, "No coinciden los tipos: \"" + texto + "\"");
    return *numero;
}

QString Importe(double numero)
{
    if (!std::isfinite(numero))
        throw qvx::ErrorEjecucion(qvx::errores::Desbordamiento, "Desbordamiento");
    return qvx::NumeroATexto(numero);
}

QString Citado(const QString &valor)
{
    return "   '" + valor + "', ";
}

QString Suelto(double numero)
{
    return "   " + qvx::NumeroATexto(numero) + ", ";
}

QString Detalles(const QList<qvx::ErrorXml> &errores)
{
    QStringList renglones;
    for (const qvx::ErrorXml &error : errores.first(qMin<qsizetype>(errores.size(), ErroresEnDetalles)))
        renglones.append(error.Texto());
    if (errores.size() > ErroresEnDetalles)
        renglones.append(QString("… y %1 errores más").arg(errores.size() - ErroresEnDetalles));
    return renglones.join(QLatin1Char('\n'));
}

} // namespace

void frmKT580::B2Importar()
{
    textoError.clear(); // collects unknown products: what another command left there is none
    const bool hecho = Importar_xml();
    if (!textoError.isEmpty() && !hecho)
        Mensaje(textoError, qvx::mensaje::Critico, "Controles_B2Click()", 7500023);
    else if (!textoError.isEmpty())
        Mensaje("Los productos: " + textoError
                    + " no están registrados en la base de datos, no se agregaron al servicio",
                qvx::mensaje::Exclamacion, ordenes::ImportarXml.titulo, 7500024);
    textoError.clear();
}

bool frmKT580::Importar_xml()
{
    try {
        comunesQVX::CommonDialog &dialogo = *ui->CommonDialogXML;
        dialogo.setDialogTitle("ABRIR XML");
        dialogo.setFilter("Archivo XML|*.xml");
        dialogo.setCancelError(true);
        dialogo.ShowOpen();
        const QString ruta = dialogo.FileName();
        dialogo.setInitDir(ruta.left(ruta.size() - dialogo.FileTitle().size() - 1));
        Sistema->Conexion().BeginTrans();
        return Importar_Documento(ruta);
    } catch (const qvx::ErrorEjecucion &error) {
        if (error.Numero() == qvx::errores::DialogoCancelado)
            return true;
        Sistema->Conexion().RollbackTrans();
        textoError = error.Descripcion();
        return false;
    }
}

// Inside the transaction of Importar_xml, which it ends. Refusals are told after it was taken back; the question is
// asked while it is open.
bool frmKT580::Importar_Documento(const QString &ruta)
{
    const auto rechazar = [&](const QString &texto, int identificador) {
        Sistema->Conexion().RollbackTrans();
        Advertir(texto, identificador);
    };
    const QString sinFormato = "El archivo xml que se cargo no cumple con el formato del mantenimiento";
    const qvx::EsquemaXml esquema(qvx::RutaEnUnidadC(KT580::RutaEsquema));
    qvx::Documento documento;
    if (!documento.Cargar(ruta, esquema)) {
        Sistema->Detallar(Detalles(documento.Errores()));
        rechazar(sinFormato, 7500025);
        return false;
    }
    const Elemento tipo = documento.Buscar({"PlanMantenimiento", "TipoEquipo"});
    if (!tipo) {
        rechazar(sinFormato, 7500026);
        return false;
    }
    const QString clave = tipo.Atributo(0);
    strSQL = " SELECT * FROM Tipo_Equipo WHERE Te_Cve_Tipo_Equipo = '" + clave + "' AND Es_Cve_Estado <> 'CA' ";
    if (Ejecutar(2).Eof()) {
        rechazar("No existe el tipo de equipo '" + clave + "' en la bas de datos", 7500027);
        return true;
    }
    if (Mensaje("Se reemplazará el plan de mantenimiento actual del tipo de equipo" + clave + ", ¿DESEA CONTINUAR?",
                qvx::mensaje::Pregunta + qvx::mensaje::SiNo, "Importar_xml()", 7500048)
        != qvx::mensaje::Si) {
        Sistema->Conexion().RollbackTrans();
        return true;
    }

    const PunteroReloj reloj;
    strSQL = "DELETE FROM Plan_Mantenimiento_Detalle ";
    strSQL += "WHERE ";
    strSQL += "   Te_Cve_Tipo_Equipo = '" + clave + "' ";
    Ejecutar(1);
    strSQL = "DELETE FROM Plan_Mantenimiento ";
    strSQL += "WHERE ";
    strSQL += "   Te_Cve_Tipo_Equipo = '" + clave + "' ";
    Ejecutar(1);
    strSQL = "DELETE FROM Tipo_Equipo_Parte ";
    strSQL += "WHERE Te_Cve_Tipo_Equipo = '" + clave + "' ";
    Ejecutar(1);
    if (!Importar_Partes(tipo, clave, ClaveRaiz)) {
        Sistema->Conexion().RollbackTrans();
        return false;
    }
    Sistema->Conexion().CommitTrans();

    ui->txtTipoEquipo->setText(clave);
    VaciarServicios();
    CargarPartes();
    txtTipoEquipo_Seleccion(); // no part is selected any more: the commands on it go off
    if (ui->tvPartes->Count() > 1)
        ui->Controles->Ofrecer({.extras = ordenes::ConPlan});
    return true;
}

// Inserts what stands under an element: services with their lines, and parts with all that they hold.
bool frmKT580::Importar_Partes(const Elemento &elemento, const QString &tipoEquipo, const QString &padre)
{
    const auto hijos = elemento.Hijos();
    if (hijos.empty())
        return true;
    const QString operador = Sistema->UsuarioActual();
    const QString fecha = Utilerias->TextoFecha(Utilerias->FechaServidor());
    return Trampa::guardando(textoError, [&] {
        for (const Elemento &hijo : hijos) {
            // Right under the equipment type this is the type's own key, on purpose.
            if (hijo.Nombre() == "TipoServicio")
                Importar_Servicio(hijo, tipoEquipo, elemento.Atributo(0), operador, fecha);
            if (hijo.Nombre() == "Parte") {
                strSQL = "INSERT INTO Tipo_Equipo_Parte (";
                strSQL += "       Te_Cve_Tipo_Equipo, ";
                strSQL += "       Tep_ID, ";
                strSQL += "       Tep_Descripcion, ";
                strSQL += "       Tep_Padre, ";
                strSQL += "       Oper_Alta, ";
                strSQL += "       Fecha_Alta, ";
                strSQL += "       Oper_Ult_Modif, ";
                strSQL += "       Fecha_Ult_Modif ";
                strSQL += ") VALUES (";
                for (const QString &valor :
                     {tipoEquipo, hijo.Atributo(0), hijo.Atributo(1), padre, operador, fecha, operador})
                    strSQL += "'" + valor + "', ";
                strSQL += "'" + fecha + "' )";
                Ejecutar(8);
                if (!Importar_Partes(hijo, tipoEquipo, hijo.Atributo(0)))
                    return false;
            }
        }
        return true;
    });
}

void frmKT580::Importar_Servicio(const Elemento &servicio, const QString &tipoEquipo, const QString &parte,
                                 const QString &operador, const QString &fecha)
{
    const QString pmId =
        Utilerias->SiguienteClaveTexto("Plan_Mantenimiento", "Pm_ID", "Te_Cve_Tipo_Equipo", tipoEquipo, "", "");
    const double duracion = Numero(servicio.Atributo(5));
    strSQL = "INSERT INTO Plan_Mantenimiento (";
    strSQL += "   Te_Cve_Tipo_Equipo, ";
    strSQL += "   Tep_ID ,";
    strSQL += "   Pm_ID ,";
    strSQL += "   Ts_Cve_Tipo_Servicio ,";
    strSQL += "   Pm_Frecuencia ,";
    strSQL += "   Pm_Lectura , ";
    strSQL += "   Pm_Unidad_Lectura ,";
    strSQL += "   Pm_Precio ,";
    strSQL += "   Pm_Tiempo_Estimado ,";
    strSQL += "   Pm_Prioridad ,";
    strSQL += "   Pm_Requiere_Paro ,";
    strSQL += "   Pm_Tiempo_Paro ,";
    strSQL += "   Oper_Alta ,";
    strSQL += "   Fecha_Alta ,";
    strSQL += "   Oper_Ult_Modif ,";
    strSQL += "   Fecha_Ult_Modif ) ";
    strSQL += "VALUES (";
    strSQL += Citado(tipoEquipo);
    strSQL += Citado(parte);
    strSQL += Citado(pmId);
    strSQL += Citado(servicio.Atributo(0));
    strSQL += Suelto(Numero(servicio.Atributo(3)));
    strSQL += Suelto(Numero(servicio.Atributo(2)));
    strSQL += Citado(servicio.Atributo(1));
    strSQL += Suelto(Numero(servicio.Atributo(6)));
    strSQL += Suelto(duracion);
    strSQL += Citado(servicio.Atributo(7));
    strSQL += Citado(servicio.Atributo(4));
    // A service that stops the equipment is taken to stop it for its whole duration.
    strSQL += Suelto(servicio.Atributo(4) == "SI" ? duracion : 0);
    strSQL += Citado(operador);
    strSQL += Citado(fecha);
    strSQL += Citado(operador);
    strSQL += "   ' " + fecha + "' )"; // the blank after the quote is meant
    Ejecutar(11);
    Importar_Lineas(servicio, tipoEquipo, parte, pmId);
}

// Unit and cost are the catalogue's, never the document's. A line of an unknown product is dropped and remembered.
void frmKT580::Importar_Lineas(const Elemento &servicio, const QString &tipoEquipo, const QString &parte,
                               const QString &pmId)
{
    QString tipo;
    for (const Elemento &grupo : servicio.Hijos()) {
        const bool conGasto = grupo.Nombre() == "Refacciones";
        if (grupo.Nombre() == "ManoObra")
            tipo = "01";
        else if (conGasto)
            tipo = "02";
        else if (grupo.Nombre() == "Herramientas")
            tipo = "03";
        for (const Elemento &linea : grupo.Hijos()) {
            const QString pmdId = Utilerias->SiguienteClaveTexto("Plan_Mantenimiento_Detalle", "Pmd_ID",
                                                                 "Te_Cve_Tipo_Equipo", tipoEquipo, "Pm_ID", pmId);
            const QString producto = linea.Atributo(0);
            strSQL = " SELECT Pr_Unidad_Control_1 AS Unidad, Pr_Costo_Estandar AS Costo FROM Producto WHERE "
                     "Pr_Cve_Producto = '"
                     + producto + "' ";
            const auto catalogo = Ejecutar(1);
            if (catalogo.Eof()) {
                textoError += " ," + producto;
                continue;
            }
            const double cantidad = Numero(linea.Atributo(1));
            strSQL = "INSERT INTO Plan_Mantenimiento_Detalle (";
            strSQL += "   Te_Cve_Tipo_Equipo ,";
            strSQL += "   Tep_ID ,";
            strSQL += "   Pm_ID ,";
            strSQL += "   Pmd_ID ,";
            strSQL += "   Pmd_Tipo ,";
            strSQL += "   Pr_Cve_Producto ,";
            strSQL += "   Pmd_Cantidad ,";
            strSQL += "   Pmd_Unidad ,";
            strSQL += "   Pmd_Costo ,";
            strSQL += "   Pmd_Importe ";
            if (conGasto)
                strSQL += "   , Pmd_Tipo_Gasto ";
            strSQL += " ) ";
            strSQL += "VALUES (";
            for (const QString &valor : {tipoEquipo, parte, pmId, pmdId, tipo, producto})
                strSQL += Citado(valor);
            strSQL += Suelto(cantidad);
            strSQL += Citado(catalogo["Unidad"]);
            strSQL += "   " + catalogo["Costo"] + ", ";
            strSQL += "   " + Importe(catalogo.Numero("Costo") * cantidad) + " ";
            if (conGasto)
                strSQL += " ,  '" + linea.Atributo(2) + "' ";
            strSQL += " ) ";
            Ejecutar(conGasto ? 8 : 7);
        }
    }
}
