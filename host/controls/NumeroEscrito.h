#pragma once

#include "system/Exporta.h"

#include <QString>

class QLineEdit;

// Numbers that a person types: nothing is refused key by key, since a number that lost a key is another number.
namespace QVX_EXPORTA qvx
{

// More characters than any number that can be shown has; with so few of them none is too large for a number.
constexpr int LargoEscrito = 300;

// What is wrong with a text where a number is expected, for the person; "" for a number, and for no text at all.
// largo: the characters that the field takes. conSigno: a negative number will do.
QString ReparoDeNumero(const QString &texto, int largo, bool conSigno);

// Gives the cursor back to a field whose text cannot be taken, with a word beside it that stays until the text changes.
// The field's page of the tabs is shown. Nothing waits for an answer; screen readers read the word as the field's
// description.
void Rechazar(QLineEdit &campo, const QString &reparo);

} // namespace qvx
