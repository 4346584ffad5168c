#pragma once

#include <QRegularExpression>
#include <QValidator>

namespace qvx
{

// What may be typed where a number is expected: digits, one decimal mark, thousands separators before it. A paste that
// holds anything else, or is too long, is refused as a whole: a number that lost its last digits would be another one.
class ValidadorNumero : public QValidator
{
public:
    using QValidator::QValidator;

    void setLargo(int maximo) { largo = maximo; }
    // A negative number that was put in code can be corrected; a sign cannot be typed otherwise.
    void setConSigno(bool valor) { conSigno = valor; }

    State validate(QString &texto, int & /*posicion*/) const override
    {
        static const QRegularExpression forma("^(-?)(?:[0-9][0-9,]*)?\\.?[0-9]*$");
        const auto hallado = forma.match(texto);
        const bool cabe = texto.size() <= largo;
        const bool signoVale = conSigno || hallado.capturedLength(1) == 0;
        return hallado.hasMatch() && cabe && signoVale ? Acceptable : Invalid;
    }

private:
    int largo = 32767;
    bool conSigno = false;
};

} // namespace qvx
