#pragma once

#include "system/Exporta.h"

#include <Qt>

namespace QVX_EXPORTA comunesQVX
{

// Codes of the keys that the controls' events tell.
namespace tecla
{
constexpr int Enter = 13;
constexpr int Supr = 46;
constexpr int F2 = 113;
constexpr int F5 = 116;
} // namespace tecla

// The code of a key of the toolkit, 0 for a key without one.
constexpr int CodigoTecla(int teclaQt)
{
    switch (teclaQt) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return tecla::Enter;
    case Qt::Key_Delete:
        return tecla::Supr;
    case Qt::Key_F2:
        return tecla::F2;
    case Qt::Key_F5:
        return tecla::F5;
    default:
        return 0;
    }
}

// Whether a key moves in a list, also from the box that narrows it.
constexpr bool MueveLaLista(int teclaQt)
{
    return teclaQt == Qt::Key_Up || teclaQt == Qt::Key_Down || teclaQt == Qt::Key_PageUp || teclaQt == Qt::Key_PageDown;
}

} // namespace comunesQVX
