#pragma once

class QWidget;

// Finds the component's library: an installed program's own, or in a build's folder the registered one (registering the
// library beside this program when there is none or it is of another build). Loads it, and gives its main screen, not
// shown. Raises an ErrorEjecucion in Spanish.
QWidget *CrearPantalla();
