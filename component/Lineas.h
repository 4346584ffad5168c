#pragma once

#include <array>

// The kinds of a service's lines, in the order in which they are shown, stored and exchanged.
struct ClaseDeLinea {
    const char *tipo;     // in Pmd_Tipo
    const char *grupo;    // in the document: the element that holds them,
    const char *elemento; // and that of each
    const char *catalogo; // of their products
    bool conCosto;        // they have a cost and an amount
    bool conGasto;        // they have an expense type
};

inline constexpr std::array ClasesDeLinea{
    ClaseDeLinea{"01", "ManoObra", "Servicio", "PRODUCTO_MANO_OBRA", true, false},
    ClaseDeLinea{"02", "Refacciones", "Refaccion", "PRODUCTO_REFACCION", true, true},
    ClaseDeLinea{"03", "Herramientas", "Herramienta", "PRODUCTO_HERRAMIENTA", false, false},
};
