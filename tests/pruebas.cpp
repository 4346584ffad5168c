#include "support/Prueba.h"

#include <QFileInfo>
#include <QMap>
#include <cstdio>

static QMap<QString, pruebas::Correr> &Anotadas()
{
    static QMap<QString, pruebas::Correr> anotadas;
    return anotadas;
}

bool pruebas::Anotar(const char *archivo, Correr correr)
{
    Anotadas().insert(QFileInfo(archivo).baseName(), correr);
    return true;
}

// pruebas FILE [options of the toolkit's tests]
int main(int argc, char **argv)
{
    const pruebas::Correr correr = argc > 1 ? Anotadas().value(argv[1]) : nullptr;
    if (!correr) {
        std::fprintf(stderr, "%s\n", qPrintable(QStringList(Anotadas().keys()).join('\n')));
        return 2;
    }
    std::swap(argv[0], argv[1]);
    return correr(argc - 1, argv + 1);
}
