#pragma once

#include "session/Aplicacion.h"

#include <QTest>

// All tests are one program, which is compiled and linked once; each run of it is one file's, by the file's name.
namespace pruebas
{

using Correr = int (*)(int argc, char **argv);

// Notes a file's test, and returns true.
bool Anotar(const char *archivo, Correr correr);

template <class Clase>
int ConAplicacion(int argc, char **argv)
{
    const qvx::Aplicacion aplicacion(argc, argv);
    Clase prueba;
    return QTest::qExec(&prueba, argc, argv);
}

} // namespace pruebas

#define PRUEBA(Clase) static const bool anotada##Clase = pruebas::Anotar(__FILE__, pruebas::ConAplicacion<Clase>);
