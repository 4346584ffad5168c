#pragma once

#include "controls/DialogoCatalogo.h"
#include "session/Interaccion.h"
#include "system/Exporta.h"

#include <QList>
#include <QMessageBox>

namespace QVX_EXPORTA qvx
{

// A message's style number taken apart; buttons are given by the numbers of their answers.
struct EstiloMensaje {
    QMessageBox::Icon icono = QMessageBox::NoIcon;
    QList<int> botones;
    int predeterminado = mensaje::Aceptar;
    int escape = mensaje::Aceptar; // the answer of Esc, and of closing the box
};

EstiloMensaje DecodificarEstilo(int estilo);

// Speaks to the person with dialogs of the toolkit.
class InteraccionQt : public Interaccion
{
public:
    int Mensaje(const Aviso &aviso) override;
    QString BuscarEnCatalogo(const QString &catalogo, int maximo, const QString &filtro, const QFont &fuente,
                             QWidget *duena) override;
    QString ElegirArchivo(const PeticionArchivo &peticion, QWidget *duena) override;
    void InformacionRegistro(const QList<QPair<QString, QString>> &datos, QWidget *duena) override;

    // From then on the search in a catalogue offers to make a new entry; an empty one takes that away.
    void OfrecerAlta(DialogoCatalogo::Alta alta_) { alta = std::move(alta_); }

private:
    DialogoCatalogo::Alta alta;
};

} // namespace qvx
