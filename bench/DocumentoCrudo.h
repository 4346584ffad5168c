#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

// The exchange's document through the document library alone.
class DocumentoCrudo
{
public:
    // Takes a document apart, to be written again.
    explicit DocumentoCrudo(const QString &archivo);
    void Escribir(const QString &archivo) const;
    // Parses the document, reads the schema, validates. Ends the program when it is not valid.
    static void Validar(const QString &archivo, const QString &esquema);

private:
    struct Pieza {
        QByteArray nombre; // "" closes the element
        std::vector<std::pair<QByteArray, QByteArray>> atributos;
    };
    std::vector<Pieza> piezas;
};
