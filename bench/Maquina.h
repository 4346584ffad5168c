#pragma once

#include <QString>

// What a measurement depends on: the day, the processor, memory, system, toolkit and kind of build.
QString Maquina();
