#pragma once

#include "system/Exporta.h"

#include <QFont>
#include <QList>
#include <QPair>
#include <QString>
#include <qwindowdefs.h>

class QWidget;

namespace QVX_EXPORTA qvx
{

// What a message box is asked to show: the six arguments of Sistema::Mensaje and, below them, details that can be
// copied (empty: none).
struct Aviso {
    QString texto;
    int estilo = 0;
    QString titulo;
    WId ventana = 0;
    QString modulo;
    QString identificador;
    QString detalles;
};

// What a file dialog is asked to show.
struct PeticionArchivo {
    QString titulo;
    QString filtro;  // "Archivo XML|*.xml"
    QString archivo; // proposed: a name or a path, "" for none
    QString carpeta; // where it opens, "" for anywhere
    bool paraGuardar = false;
};

// Numbers of message styles and answers.
namespace mensaje
{
constexpr int Critico = 16;
constexpr int Pregunta = 32;
constexpr int Exclamacion = 48;
constexpr int Informacion = 64;
constexpr int AceptarCancelar = 1;
constexpr int SiNo = 4;
constexpr int SegundoBoton = 256;
constexpr int Aceptar = 1;
constexpr int Cancelar = 2;
constexpr int Si = 6;
constexpr int No = 7;
} // namespace mensaje

// Everything that asks or tells a person something goes through here.
class Interaccion
{
public:
    virtual ~Interaccion() = default;

    // Shows the message and gives the number of the button chosen (1 OK, 2 Cancel, 6 Yes, 7 No).
    virtual int Mensaje(const Aviso &aviso) = 0;

    // Lets the person choose a key of a catalogue; "" when nothing was chosen. maximo: rows shown at once, 0 for all.
    // duena: the box or the form that asks, which may hold a key already.
    virtual QString BuscarEnCatalogo(const QString &catalogo, int maximo, const QString &filtro, const QFont &fuente,
                                     QWidget *duena) = 0;

    // Lets the person choose a file to write or an existing one to read: its full path, "" when cancelled.
    virtual QString ElegirArchivo(const PeticionArchivo &peticion, QWidget *duena) = 0;

    // Shows who created and last changed a record: captions and values, in order.
    virtual void InformacionRegistro(const QList<QPair<QString, QString>> &datos, QWidget *duena) = 0;
};

} // namespace qvx
