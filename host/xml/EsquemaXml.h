#pragma once

#include "system/Exporta.h"
#include "xml/Documento.h"

#include <QHash>
#include <QStringList>

struct _xmlSchema;

namespace QVX_EXPORTA qvx
{

// A schema for documents without a namespace. Beyond what a schema can say, attributes must stand in the order in which
// it declares them: they are read by position.
class EsquemaXml
{
public:
    // Raises an error when the file cannot be read or is no schema.
    explicit EsquemaXml(const QString &archivo);
    ~EsquemaXml();
    EsquemaXml(const EsquemaXml &) = delete;
    EsquemaXml &operator=(const EsquemaXml &) = delete;

    // Everything that is wrong with the document, in its order, up to MaximoErrores; nothing: it satisfies the schema.
    QList<ErrorXml> Validar(const Documento &documento) const;

    static constexpr int MaximoErrores = 1000;

private:
    void LeerOrden(const _xmlNode *nodo);
    QStringList AtributosDe(const _xmlNode *declaracion) const;
    void RevisarOrden(const _xmlNode *nodo, QList<ErrorXml> &errores) const;

    Documento::Arbol arbol; // outlives the schema, which points into it
    _xmlSchema *esquema = nullptr;
    QHash<QString, QStringList> orden; // attributes by element
};

} // namespace qvx
