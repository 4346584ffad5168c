// Replacing the whole plan of an equipment type by an XML document's, in one transaction: a document that is refused,
// and an import that fails, leave the present plan as it was.

#include "component/Esquema.h"
#include "component/Lineas.h"
#include "component/PunteroReloj.h"
#include "component/Trampa.h"
#include "controls/CommonDialog.h"
#include "controls/TreeView.h"
#include "controls/txtQVX.h"
#include "data/Conexion.h"
#include "data/Texto.h"
#include "frmKT580/Ordenes.h"
#include "frmKT580/PlanXml.h"
#include "frmKT580/frmKT580.h"
#include "plan/Claves.h"
#include "system/UnidadC.h"
#include "ui_frmKT580.h"
#include "xml/EsquemaXml.h"

#include <algorithm>
#include <cmath>

using namespace Publico;
using qvx::Elemento;

namespace
{

constexpr int ErroresEnDetalles = 50;

// The statement that is built in strSQL. Values stand in it unescaped between quotes: one stray quote breaks it, as
// everywhere; an even number of them would let a document write parts of the statement.
class Sentencia
{
public:
    Sentencia() { strSQL.clear(); }
    Sentencia &operator<<(const char *propio)
    {
        strSQL += QString::fromUtf8(propio);
        return *this;
    }
    Sentencia &operator<<(const QString &valor)
    {
        comillas += valor.count(QLatin1Char('\''));
        strSQL += valor;
        return *this;
    }
    Sentencia &Citado(const QString &valor) { return *this << "   '" << valor << "', "; }
    Sentencia &Suelto(const QString &numero) { return *this << "   " << numero << ", "; }

    qvx::Recordset Ejecutar() const
    {
        if (comillas > 0 && comillas % 2 == 0)
            throw qvx::ErrorEjecucion(qvx::errores::Datos, "Un valor del documento lleva comillas", strSQL);
        return Sistema->Conexion().Execute(strSQL);
    }

private:
    qsizetype comillas = 0; // of the values
};

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
    const QString clave = tipo.Atributo(planXml::Id);
    Sentencia sentencia;
    sentencia << " SELECT * FROM Tipo_Equipo WHERE Te_Cve_Tipo_Equipo = '" << clave << "' AND Es_Cve_Estado <> 'CA' ";
    if (sentencia.Ejecutar().Eof()) {
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
    for (const char *borrado : {"DELETE FROM Plan_Mantenimiento_Detalle WHERE    ",
                                "DELETE FROM Plan_Mantenimiento WHERE    ", "DELETE FROM Tipo_Equipo_Parte WHERE "})
        (Sentencia() << borrado << "Te_Cve_Tipo_Equipo = '" << clave << "' ").Ejecutar();
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
                Importar_Servicio(hijo, tipoEquipo, elemento.Atributo(planXml::Id), operador, fecha);
            if (hijo.Nombre() == "Parte") {
                const QString parte = hijo.Atributo(planXml::Id);
                if (!qvx::claves::DejaSiguiente(parte))
                    throw qvx::ErrorEjecucion(qvx::errores::Desbordamiento, "Después de la clave de la parte " + parte
                                                                                + " no queda número para otra parte");
                Sentencia sentencia;
                sentencia << "INSERT INTO Tipo_Equipo_Parte ("
                             "       Te_Cve_Tipo_Equipo, "
                             "       Tep_ID, "
                             "       Tep_Descripcion, "
                             "       Tep_Padre, "
                             "       Oper_Alta, "
                             "       Fecha_Alta, "
                             "       Oper_Ult_Modif, "
                             "       Fecha_Ult_Modif "
                             ") VALUES (";
                for (const QString &valor :
                     {tipoEquipo, parte, hijo.Atributo(planXml::Descripcion), padre, operador, fecha, operador})
                    sentencia << "'" << valor << "', ";
                sentencia << "'" << fecha << "' )";
                sentencia.Ejecutar();
                if (!Importar_Partes(hijo, tipoEquipo, parte))
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
    const auto valor = [&](const char *campo) { return planXml::Valor(servicio, campo); };
    const auto numero = [&](const char *campo) { return qvx::NumeroATexto(Numero(valor(campo))); };
    const QString duracion = numero("Pm_Tiempo_Estimado");
    const QString conParo = valor("Pm_Requiere_Paro");
    Sentencia sentencia;
    sentencia << "INSERT INTO Plan_Mantenimiento ("
                 "   Te_Cve_Tipo_Equipo, "
                 "   Tep_ID ,"
                 "   Pm_ID ,"
                 "   Ts_Cve_Tipo_Servicio ,"
                 "   Pm_Frecuencia ,"
                 "   Pm_Lectura , "
                 "   Pm_Unidad_Lectura ,"
                 "   Pm_Precio ,"
                 "   Pm_Tiempo_Estimado ,"
                 "   Pm_Prioridad ,"
                 "   Pm_Requiere_Paro ,"
                 "   Pm_Tiempo_Paro ,"
                 "   Oper_Alta ,"
                 "   Fecha_Alta ,"
                 "   Oper_Ult_Modif ,"
                 "   Fecha_Ult_Modif ) "
                 "VALUES (";
    sentencia.Citado(tipoEquipo).Citado(parte).Citado(pmId).Citado(valor("Ts_Cve_Tipo_Servicio"));
    sentencia.Suelto(numero("Pm_Frecuencia")).Suelto(numero("Pm_Lectura")).Citado(valor("Pm_Unidad_Lectura"));
    sentencia.Suelto(numero("Pm_Precio")).Suelto(duracion).Citado(valor("Pm_Prioridad")).Citado(conParo);
    // A service that stops the equipment is taken to stop it for its whole duration.
    sentencia.Suelto(conParo == "SI" ? duracion : "0");
    sentencia.Citado(operador).Citado(fecha).Citado(operador) << "   ' " << fecha << "' )"; // with that blank
    sentencia.Ejecutar();
    Importar_Lineas(servicio, tipoEquipo, parte, pmId);
}

// Unit and cost are the catalogue's, never the document's. A line of an unknown product is dropped and remembered.
void frmKT580::Importar_Lineas(const Elemento &servicio, const QString &tipoEquipo, const QString &parte,
                               const QString &pmId)
{
    for (const Elemento &grupo : servicio.Hijos()) {
        const auto *clase = std::find_if(ClasesDeLinea.begin(), ClasesDeLinea.end(),
                                         [&](const ClaseDeLinea &otra) { return grupo.Nombre() == otra.grupo; });
        if (clase == ClasesDeLinea.end()) // the schema knows none
            continue;
        for (const Elemento &linea : grupo.Hijos()) {
            const QString pmdId = Utilerias->SiguienteClaveTexto("Plan_Mantenimiento_Detalle", "Pmd_ID",
                                                                 "Te_Cve_Tipo_Equipo", tipoEquipo, "Pm_ID", pmId);
            const QString producto = linea.Atributo(planXml::Id);
            Sentencia consulta;
            consulta << " SELECT Pr_Unidad_Control_1 AS Unidad, Pr_Costo_Estandar AS Costo FROM Producto WHERE "
                        "Pr_Cve_Producto = '"
                     << producto << "' ";
            const auto catalogo = consulta.Ejecutar();
            if (catalogo.Eof()) {
                textoError += " ," + producto;
                continue;
            }
            const double cantidad = Numero(linea.Atributo(planXml::Cantidad));
            Sentencia sentencia;
            sentencia << "INSERT INTO Plan_Mantenimiento_Detalle ("
                         "   Te_Cve_Tipo_Equipo ,"
                         "   Tep_ID ,"
                         "   Pm_ID ,"
                         "   Pmd_ID ,"
                         "   Pmd_Tipo ,"
                         "   Pr_Cve_Producto ,"
                         "   Pmd_Cantidad ,"
                         "   Pmd_Unidad ,"
                         "   Pmd_Costo ,"
                         "   Pmd_Importe ";
            if (clase->conGasto)
                sentencia << "   , Pmd_Tipo_Gasto ";
            sentencia << " ) VALUES (";
            sentencia.Citado(tipoEquipo).Citado(parte).Citado(pmId).Citado(pmdId).Citado(clase->tipo).Citado(producto);
            sentencia.Suelto(qvx::NumeroATexto(cantidad)).Citado(catalogo["Unidad"]).Suelto(catalogo["Costo"]);
            sentencia << "   " << Importe(catalogo.Numero("Costo") * cantidad) << " ";
            if (clase->conGasto)
                sentencia << " ,  '" << linea.Atributo(planXml::TipoGasto) << "' ";
            sentencia << " ) ";
            sentencia.Ejecutar();
        }
    }
}
