#pragma once

#include "system/Exporta.h"

#include <QLabel>

namespace QVX_EXPORTA LabelQvx
{

// The host's label. Its buddy is the control it names: set in the form, with a mnemonic in the caption.
class Etiqueta : public QLabel
{
    Q_OBJECT

public:
    explicit Etiqueta(QWidget *padre = nullptr) : QLabel(padre) {}
};

} // namespace LabelQvx
