#pragma once

#include "system/Exporta.h"

#include <QApplication>

namespace QVX_EXPORTA qvx
{

// The host's application. Every event passes through notify: a transaction that was not open when an event began and
// is open when it ends was abandoned, and is taken back. A run-time error that no trap caught ends here as a message.
// An event that a loop delivers is a job, of which the windows are told when it is a long one.
class Aplicacion : public QApplication
{
    Q_OBJECT

public:
    Aplicacion(int &argc, char **argv);

    bool notify(QObject *receptor, QEvent *evento) override;

Q_SIGNALS:
    // Of the running job, when it takes long: how many statements it has begun; and that it ended, or that the person
    // has the word.
    void Avance(int sentencias);
    void Reposo();

private:
    bool Entregar(QObject *receptor, QEvent *evento, QString &error);
};

} // namespace qvx
