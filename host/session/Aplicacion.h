#pragma once

#include <QApplication>

namespace qvx
{

// The host's application. Every event passes through notify: a transaction that was not open when an event began and
// is open when it ends was abandoned, and is taken back. A run-time error that no trap caught ends here as a message.
class Aplicacion : public QApplication
{
    Q_OBJECT

public:
    Aplicacion(int &argc, char **argv);

    bool notify(QObject *receptor, QEvent *evento) override;
};

} // namespace qvx
