#pragma once

#include <QString>

// The tables of docs/rendimiento.md, of what medir and arranque wrote into the files of a folder: "arranque";
// "servidor"; "veces.1", ".2", ".4" and ".8" by the size of the plan; "memoria.1" and "memoria.4".
QString Informe(const QString &carpeta);
