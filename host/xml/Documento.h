#pragma once

#include "system/Exporta.h"

#include <QList>
#include <QString>
#include <memory>
#include <vector>

struct _xmlDoc;
struct _xmlNode;

namespace QVX_EXPORTA qvx
{

class EsquemaXml;

// Of the library that reads and writes documents: "2.9.14".
QString VersionDeXml();

// What is wrong with a document, and where: line (0: unknown) and element ("" : the document itself).
struct ErrorXml {
    int renglon = 0;
    QString elemento;
    QString motivo;

    QString Texto() const; // "Renglón 3, Parte: ..."
};

// An element of a document, valid while the document lives.
class Elemento
{
public:
    explicit operator bool() const { return nodo != nullptr; }
    QString Nombre() const;

    // Adds an element after the last child. Raises an error at a depth that no reader of ours takes.
    Elemento Crear(const QString &nombre) const;
    // Adds an attribute after the last one. Raises an error for a character that XML cannot hold; duenio is what that
    // error names.
    void setAtributo(const QString &nombre, const QString &valor, const QString &duenio) const;

    // The value of the attribute at this position, from 0; raises ElementoNoEncontrado when there is none.
    QString Atributo(int posicion) const;
    // The elements directly under this one, in document order.
    std::vector<Elemento> Hijos() const;

private:
    friend class Documento;
    explicit Elemento(_xmlNode *nodo_) : nodo(nodo_) {}
    _xmlNode *nodo;
};

// An XML document. Nothing outside its own file is ever read for it: a document with a document type is refused, and so
// its entities are; addresses in it are not followed.
class Documento
{
public:
    // Some 50,000 parts with two services each. The tree takes 12 to 20 times as much memory.
    static constexpr qint64 TamanoMaximo = 50LL * 1024 * 1024;

    Documento();
    ~Documento();
    Documento(const Documento &) = delete;
    Documento &operator=(const Documento &) = delete;

    Elemento CrearRaiz(const QString &nombre);
    // The elements' names from the root down; a null one when the document has no such element.
    Elemento Buscar(const QList<QString> &ruta) const;

    // Writes the file whole or not at all: what was there before stays until the new one is complete. Raises an error.
    void Guardar(const QString &archivo) const;
    // Replaces the document by a file's. False when it cannot be read, is not well formed, or does not satisfy the
    // schema: Errores says why, and the document is empty.
    bool Cargar(const QString &archivo, const EsquemaXml &esquema);
    const QList<ErrorXml> &Errores() const { return fallas; }

private:
    friend class EsquemaXml;
    struct Liberar {
        void operator()(_xmlDoc *libre) const;
    };
    using Arbol = std::unique_ptr<_xmlDoc, Liberar>;
    static Arbol Leer(const QString &archivo, QList<ErrorXml> &errores);

    Arbol arbol;
    QList<ErrorXml> fallas;
};

} // namespace qvx
