#pragma once

#include "session/Interaccion.h"

// Stands for the person on the command line: tells on the standard error, and answers with what the line said.
class InteraccionDeConsola : public qvx::Interaccion
{
public:
    // archivo: answer of the file dialog, an absolute path; si: questions are answered Yes.
    InteraccionDeConsola(QString archivo, bool si);

    int Mensaje(const qvx::Aviso &aviso) override;
    QString BuscarEnCatalogo(const QString &catalogo, int maximo, const QString &filtro, const QFont &fuente,
                             QWidget *duena) override;
    QString ElegirArchivo(const qvx::PeticionArchivo &peticion, QWidget *duena) override;
    void InformacionRegistro(const QList<QPair<QString, QString>> &datos, QWidget *duena) override;

    // Something was refused or failed.
    bool Rechazado() const { return rechazado; }

private:
    QString archivo;
    bool si;
    bool rechazado = false;
};
