#pragma once

#include "controls/Controles.h"

// The commands of the toolbar's extra buttons.
namespace ordenes
{

inline const toolbarQVX::Extra Ninguna;
inline const toolbarQVX::Extra ExportarXml{"Exportar XML", ":/controls/exportar.svg"};
inline const toolbarQVX::Extra ImportarXml{"Importar XML", ":/controls/importar.svg"};
inline const toolbarQVX::Extra EliminarParte{"Eliminar parte", ":/controls/parte_borrar.svg"};
inline const toolbarQVX::Extra AgregarServicio{"Agregar servicio", ":/controls/servicio_nuevo.svg"};
inline const toolbarQVX::Extra CopiarPlan{"Copiar plan", ":/controls/copiar.svg"};

// While no active part is selected: without a plan, and with one.
inline const std::array SinPlan{Ninguna, ImportarXml, Ninguna};
inline const std::array ConPlan{ExportarXml, ImportarXml, CopiarPlan};

} // namespace ordenes
