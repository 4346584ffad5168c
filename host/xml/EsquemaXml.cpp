#include "xml/EsquemaXml.h"

#include "data/ErrorEjecucion.h"
#include "xml/TextoXml.h"

#include <QRegularExpression>
#include <libxml/tree.h>
#include <libxml/xmlschemas.h>

namespace qvx
{

namespace
{

QString Valor(const xmlNode *nodo, const char *atributo)
{
    xmlChar *valor = xmlGetNoNsProp(nodo, reinterpret_cast<const xmlChar *>(atributo));
    const QString texto = valor ? Texto(valor) : QString();
    xmlFree(valor);
    return texto;
}

void Anotar(QList<ErrorXml> &errores, const xmlNode *nodo, const QString &motivo)
{
    if (errores.size() < EsquemaXml::MaximoErrores)
        errores.append({static_cast<int>(xmlGetLineNo(nodo)), Texto(nodo->name), motivo});
}

// The validator speaks English; these are the faults that a document of ours can have.
QString EnEspanol(const QString &mensaje)
{
    struct Frase {
        QRegularExpression ingles;
        QString espanol;
    };
    static const QList<Frase> frases{
        {QRegularExpression("The attribute '(.*)' is required but missing"), "falta el atributo \"\\1\""},
        {QRegularExpression("attribute '(.*)': The attribute '.*' is not allowed"),
         "el atributo \"\\1\" no es del formato"},
        {QRegularExpression("This element is not expected. Expected is (?:one of )?\\( (.*) \\)"),
         "el elemento no va en este lugar; aquí se espera: \\1"},
        {QRegularExpression("This element is not expected"), "el elemento no va en este lugar"},
        {QRegularExpression("Missing child element\\(s\\). Expected is (?:one of )?\\( (.*) \\)"),
         "le falta un elemento: \\1"},
        {QRegularExpression("No matching global declaration available"), "no es la raíz de un plan de mantenimiento"},
        {QRegularExpression("[Cc]haracter content"), "lleva texto, y solo puede llevar elementos"},
        {QRegularExpression("attribute '(.*)': .*The value '(.*)' (?:is not accepted by|has a length)",
                            QRegularExpression::DotMatchesEverythingOption),
         "el valor \"\\2\" no es válido para el atributo \"\\1\""},
    };
    for (const Frase &frase : frases) {
        const auto hallada = frase.ingles.match(mensaje);
        if (!hallada.hasMatch())
            continue;
        QString texto = frase.espanol;
        for (int i = hallada.lastCapturedIndex(); i > 0; --i)
            texto.replace("\\" + QString::number(i), hallada.captured(i));
        return texto;
    }
    return mensaje;
}

void AlFallar(void *destino, xmlError *error)
{
    auto &errores = *static_cast<QList<ErrorXml> *>(destino);
    const QString mensaje = QString::fromUtf8(error->message).trimmed();
    if (error->node)
        Anotar(errores, static_cast<const xmlNode *>(error->node), EnEspanol(mensaje));
    else
        errores.append({error->line, {}, EnEspanol(mensaje)});
}

// The next element in document order that stands under raiz, or null after the last.
const xmlNode *Siguiente(const xmlNode *nodo, const xmlNode *raiz)
{
    if (xmlNode *hijo = xmlFirstElementChild(const_cast<xmlNode *>(nodo)))
        return hijo;
    for (; nodo != raiz; nodo = nodo->parent)
        if (xmlNode *hermano = xmlNextElementSibling(const_cast<xmlNode *>(nodo)))
            return hermano;
    return nullptr;
}

} // namespace

EsquemaXml::EsquemaXml(const QString &archivo)
{
    QList<ErrorXml> errores;
    arbol = Documento::Leer(archivo, errores);
    if (arbol) {
        xmlSchemaParserCtxt *lector = xmlSchemaNewDocParserCtxt(arbol.get());
        xmlSchemaSetParserStructuredErrors(lector, &AlFallar, &errores);
        esquema = xmlSchemaParse(lector);
        xmlSchemaFreeParserCtxt(lector);
    }
    if (!esquema)
        throw ErrorEjecucion(errores::Datos, "No se pudo usar el esquema " + archivo + ": "
                                                 + (errores.isEmpty() ? QString() : errores.constFirst().Texto()));
    LeerOrden(xmlDocGetRootElement(arbol.get()));
}

EsquemaXml::~EsquemaXml()
{
    xmlSchemaFree(esquema);
}

// Elements of one name have one type in our schemas.
void EsquemaXml::LeerOrden(const xmlNode *raiz)
{
    for (const xmlNode *nodo = raiz; nodo; nodo = Siguiente(nodo, raiz)) {
        const QString nombre = Valor(nodo, "name");
        if (Texto(nodo->name) != "element" || nombre.isEmpty())
            continue;
        const QString tipo = Valor(nodo, "type");
        const xmlNode *declaracion = xmlFirstElementChild(const_cast<xmlNode *>(nodo));
        for (const xmlNode *otro = raiz; !tipo.isEmpty() && otro; otro = Siguiente(otro, raiz))
            if (Texto(otro->name) == "complexType" && Valor(otro, "name") == tipo)
                declaracion = otro;
        orden.insert(nombre, declaracion ? AtributosDe(declaracion) : QStringList());
    }
}

QStringList EsquemaXml::AtributosDe(const xmlNode *declaracion) const
{
    QStringList nombres;
    for (xmlNode *hijo = xmlFirstElementChild(const_cast<xmlNode *>(declaracion)); hijo;
         hijo = xmlNextElementSibling(hijo))
        if (Texto(hijo->name) == "attribute")
            nombres.append(Valor(hijo, "name"));
    return nombres;
}

QList<ErrorXml> EsquemaXml::Validar(const Documento &documento) const
{
    QList<ErrorXml> errores;
    const xmlNode *raiz = xmlDocGetRootElement(documento.arbol.get());
    // An attribute of a namespace is none of ours, and some of them would send the validator to other files.
    for (const xmlNode *nodo = raiz; nodo; nodo = Siguiente(nodo, raiz))
        for (const xmlAttr *atributo = nodo->properties; atributo; atributo = atributo->next)
            if (atributo->ns)
                Anotar(errores, nodo, "el atributo \"" + Texto(atributo->name) + "\" no es del formato");
    if (!errores.isEmpty())
        return errores;

    xmlSchemaValidCtxt *validador = xmlSchemaNewValidCtxt(esquema);
    xmlSchemaSetValidStructuredErrors(validador, &AlFallar, &errores);
    const int resultado = xmlSchemaValidateDoc(validador, documento.arbol.get());
    xmlSchemaFreeValidCtxt(validador);
    if (resultado != 0 && errores.isEmpty())
        errores.append({0, {}, "No se pudo comparar el documento con su esquema"});
    if (errores.isEmpty())
        for (const xmlNode *nodo = raiz; nodo; nodo = Siguiente(nodo, raiz))
            RevisarOrden(nodo, errores);
    return errores;
}

void EsquemaXml::RevisarOrden(const xmlNode *nodo, QList<ErrorXml> &errores) const
{
    QStringList nombres;
    for (const xmlAttr *atributo = nodo->properties; atributo; atributo = atributo->next)
        nombres.append(Texto(atributo->name));
    const QStringList debidos = orden.value(Texto(nodo->name));
    if (nombres != debidos)
        Anotar(errores, nodo, "los atributos deben ir en este orden: " + debidos.join(", "));
}

} // namespace qvx
