#pragma once

#include <QObject>
#include <QString>

// While nothing can be changed, the screen and its forms offer no command that changes: their bars, the drag. What is
// asked for all the same, by a key or in a label of the tree, the connection refuses.
class ModoLectura : public QObject
{
public:
    explicit ModoLectura(QObject *padre);

protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;
};

// Who may only look, as sentences begin: the person's user, or whatever he is, this session.
QString QuienMira();
