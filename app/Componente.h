#pragma once

class QWidget;

// Finds the component's class in the registry (registering the library beside this program when it is not there or is
// of another version), loads the library, and gives its main screen, not shown. Raises an ErrorEjecucion in Spanish.
QWidget *CrearPantalla();
