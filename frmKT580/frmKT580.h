#pragma once

#include "component/FormularioConPadre.h"

#include <memory>
#include <optional>

namespace Ui
{
class frmKT580;
}

namespace comunesQVX
{
class Nodo;
}

namespace qvx
{
class Elemento;
}

class frmServicio;

// The main screen: equipment type, toolbar, tree of parts, list of services.
class frmKT580 : public FormularioConPadre
{
    Q_OBJECT

public:
    // The single instance, made (and loaded) when there is none; a closed screen counts as none.
    static frmKT580 &Instancia();
    ~frmKT580() override;

    // The parent key of a part, "" when there is no such part. No trap: data errors go to the caller.
    QString GetPartePadre(const QString &tipoEquipo, const QString &tepId);
    // Sets the state of a part and of every part below it ("BA" retires, "AC" reactivates). Inside the caller's
    // transaction; true when it ran to its end.
    bool Update_Partes(const QString &tipoEquipo, const QString &parte, const QString &estado);
    // Deletes the row of a part that has no services. Inside the caller's transaction; false when it has some, which
    // has been told, or when a statement failed.
    bool Eliminar_Partes(const QString &tipoEquipo, const QString &parte);
    // Moves a service of the selected part, with its lines, to the part that a tree node's text names.
    void Copia_Servicio(const QString &folio, const QString &textoDestino);

protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Resize() override;
    void Form_Unload() override;
    void hideEvent(QHideEvent *evento) override;

private:
    frmKT580();
    void ConectarEventos();

    // Main screen
    void txtTipoEquipo_Change();
    void txtTipoEquipo_Validate();
    void txtTipoEquipo_Seleccion();
    void Controles_Info();
    void Controles_B1Click();
    void Controles_B2Click();
    void Controles_B3Click();
    void ReemplazarPlan(const QString &origen, const QString &destino);
    void CopiarPlan(const QString &origen, const QString &destino);
    void LimpiarControles();
    void MostrarError(const QString &procedimiento, int identificador);
    bool TipoValido() const;

    // Tree of parts
    void CargarPartes();
    void AddSubParte(const QString &padre);
    // Raises an error below MaximoNiveles, and remembers it: who walks the parts stops wherever he is.
    void RevisarNivel();
    void tvPartes_AfterLabelEdit(bool &cancelar, QString &texto);
    void tvPartes_KeyDown(int codigo);
    void tvPartes_NodeClick(comunesQVX::Nodo *nodo);
    void tvPartes_Redibujar(comunesQVX::Nodo *nodo);
    static bool DadaDeBaja(const comunesQVX::Nodo *nodo);
    QString TomarParte();
    void SeleccionarParte(const QString &clave);

    // Parts
    void Controles_Nuevo();
    void Controles_Editar();
    std::optional<QString> Ruta(const QString &tipoEquipo, const QString &parte, int identificador);
    void SeleccionarPadreDe(const QString &clave);
    void Controles_Eliminar();
    void Controles_Reactivar();
    void ReactivarPadre(const QString &tipoEquipo, const QString &padre, const QString &operador, const QString &fecha);
    bool Eliminar_Parte();
    void SellarPadre(const QString &tipoEquipo, const QString &padre);

    // Drag and drop
    void lvServicios_OLEStartDrag(QString &texto);
    void tvPartes_OLEDragOver(const QPoint &posicion);
    void tvPartes_OLEDragDrop(const QString &texto);

    // List of services
    void LlenarServicios();
    void VaciarServicios();
    void lvServicios_DblClick();
    void lvServicios_KeyDown(int codigo);
    bool Eliminar_Servicio();
    bool Nuevo_Servicio();
    QString FiltroServicios(const QString &tipoEquipo, const QString &parte) const;
    void PrepararEditor(frmServicio &editor, const QString &ruta);

    // Exchange as XML
    bool Exportar_xml();
    bool Exportar_Partes(const qvx::Elemento &padre, const QString &parte);
    void Exportar_Lineas(const qvx::Elemento &servicio, const QString &parte, const QString &pmId);
    void B2Importar();
    bool Importar_xml();
    bool Importar_Documento(const QString &ruta);
    bool Importar_Partes(const qvx::Elemento &elemento, const QString &tipoEquipo, const QString &padre);
    void Importar_Servicio(const qvx::Elemento &servicio, const QString &tipoEquipo, const QString &parte,
                           const QString &operador, const QString &fecha);
    void Importar_Lineas(const qvx::Elemento &servicio, const QString &tipoEquipo, const QString &parte,
                         const QString &pmId);

    std::unique_ptr<Ui::frmKT580> ui;
    QString formatoParte;
    QString parteActual;
    // So many calls inside each other leave room on a stack of 8 MB, with the sanitizers too; 20,000 do not. No plan
    // has ten levels.
    static constexpr int MaximoNiveles = 500;
    int nivel = 0; // of the walk that is running
    bool demasiadoHondo = false;
    QString textoError;      // why a Boolean command function answered false, or products that an import did not know
    bool tipoValido = false; // when the type was last changed or confirmed
    bool activada = false;
};
