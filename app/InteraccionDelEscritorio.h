#pragma once

#include "controls/InteraccionQt.h"

// The person at the desk: searches in catalogues offer to make new entries, where he may; and where nothing can be
// changed he is told so in place of a question whether it should be.
class InteraccionDelEscritorio : public qvx::InteraccionQt
{
public:
    int Mensaje(const qvx::Aviso &aviso) override;
    QString BuscarEnCatalogo(const QString &catalogo, int maximo, const QString &filtro, const QFont &fuente,
                             QWidget *duena) override;

    // The next search in this catalogue is answered: the person has chosen already.
    void Anticipar(const QString &catalogo, const QString &clave) { anticipada = {catalogo, clave}; }
    // The next question for a file is answered likewise.
    void AnticiparArchivo(const QString &archivo) { archivoAnticipado = archivo; }

    QString ElegirArchivo(const qvx::PeticionArchivo &peticion, QWidget *duena) override;

private:
    QString archivoAnticipado;
    QPair<QString, QString> anticipada;
};
