#pragma once

class QMenu;
class VentanaPrincipal;

// Puts the commands that compare plans into a menu: "Comparar", and the import of a document that is shown before it is
// done.
void PonerComparacion(QMenu &menu, VentanaPrincipal &ventana);
