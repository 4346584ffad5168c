#include "xml/Documento.h"

#include "data/ErrorEjecucion.h"
#include "system/ArchivoEntero.h"
#include "xml/EsquemaXml.h"
#include "xml/TextoXml.h"

#include <QFile>
#include <QFileInfo>
#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>
#include <libxml/xmlsave.h>
#include <optional>

namespace qvx
{

namespace
{

// The reader takes 256 levels; what is written stays below by more than what hangs from a service.
constexpr int NivelesAlEscribir = 250;
// The parser compares each attribute of an element with the others. No element of ours has ten.
constexpr int MaximoAtributos = 64;
// Elements and attributes, each of which the parser keeps apart: a whole plan of the size that is read has fewer.
constexpr qint64 MaximoCosas = 4'000'000;
// From one start of an element to the next: the longest text that a box takes, all of it escaped, and some more. What
// the parser has compared before it tells of an element is in there.
constexpr qint64 MaximoElemento = 256LL * 1024;

const xmlChar *Octetos(const QByteArray &texto)
{
    return reinterpret_cast<const xmlChar *>(texto.constData());
}

int Nivel(const xmlNode *nodo)
{
    int nivel = 0;
    for (; nodo && nodo->type == XML_ELEMENT_NODE; nodo = nodo->parent)
        ++nivel;
    return nivel;
}

// The first character that XML cannot hold. A surrogate without its other half is one.
std::optional<uint> CaracterProhibido(const QString &texto)
{
    for (qsizetype i = 0; i < texto.size(); ++i) {
        uint c = texto.at(i).unicode();
        if (texto.at(i).isHighSurrogate() && i + 1 < texto.size() && texto.at(i + 1).isLowSurrogate())
            c = QChar::surrogateToUcs4(texto.at(i), texto.at(i + 1));
        if (!xmlIsCharQ(c))
            return c;
        if (c > 0xFFFF)
            ++i;
    }
    return std::nullopt;
}

// The library reports some errors past the reader, and those of writing, on the standard error: its answer has them
// too.
class SinVoz
{
public:
    SinVoz() : antes(xmlStructuredError), contexto(xmlStructuredErrorContext)
    {
        xmlSetStructuredErrorFunc(nullptr, [](void *, xmlError *) {});
    }
    ~SinVoz() { xmlSetStructuredErrorFunc(contexto, antes); }
    SinVoz(const SinVoz &) = delete;
    SinVoz &operator=(const SinVoz &) = delete;

private:
    xmlStructuredErrorFunc antes;
    void *contexto;
};

struct Lectura {
    QFile archivo;
    qint64 leidos = 0;
    qint64 alElemento = 0; // of these, when the last element began
    qint64 cosas = 0;      // elements and attributes
    bool conTipo = false;  // the document has a document type
    ErrorXml falla;
};

QString DemasiadoGrande()
{
    return QString("El archivo pasa de %1 MB").arg(Documento::TamanoMaximo / 1024 / 1024);
}

// A file that grows meanwhile is no longer than one that was looked at before.
int LeerMas(void *contexto, char *destino, int cuantos)
{
    auto &lectura = *static_cast<Lectura *>(contexto);
    const qint64 leidos = lectura.archivo.read(destino, cuantos);
    if (leidos < 0)
        lectura.falla.motivo = "No se pudo leer el archivo: " + lectura.archivo.errorString();
    lectura.leidos += qMax<qint64>(leidos, 0);
    if (lectura.leidos > Documento::TamanoMaximo)
        lectura.falla.motivo = DemasiadoGrande();
    else if (lectura.leidos - lectura.alElemento > MaximoElemento)
        lectura.falla.motivo = QString("Un elemento ocupa más de %1 KB").arg(MaximoElemento / 1024);
    return lectura.falla.motivo.isEmpty() ? static_cast<int>(leidos) : -1;
}

void AlEmpezarElemento(void *contexto, const xmlChar *nombre, const xmlChar *prefijo, const xmlChar *uri,
                       int cuantosEspacios, const xmlChar **espacios, int cuantosAtributos, int supuestos,
                       const xmlChar **atributos)
{
    auto *lector = static_cast<xmlParserCtxt *>(contexto);
    auto &lectura = *static_cast<Lectura *>(lector->_private);
    lectura.alElemento = lectura.leidos;
    if (!lectura.falla.motivo.isEmpty()) // what was read until then is told all the same
        return;
    const int atributosDeEste = cuantosEspacios + cuantosAtributos;
    lectura.cosas += 1 + atributosDeEste;
    if (atributosDeEste > MaximoAtributos)
        lectura.falla = {static_cast<int>(xmlSAX2GetLineNumber(lector)), Texto(nombre),
                         QString("lleva más de %1 atributos").arg(MaximoAtributos)};
    else if (lectura.cosas > MaximoCosas)
        lectura.falla.motivo =
            QString("El documento tiene más de %1 millones de elementos y atributos").arg(MaximoCosas / 1'000'000);
    if (!lectura.falla.motivo.isEmpty()) {
        xmlStopParser(lector);
        return;
    }
    xmlSAX2StartElementNs(contexto, nombre, prefijo, uri, cuantosEspacios, espacios, cuantosAtributos, supuestos,
                          atributos);
}

// Called before anything of the document type is looked at: nothing that it declares comes to be.
void RechazarTipo(void *contexto, const xmlChar *, const xmlChar *, const xmlChar *)
{
    auto *lector = static_cast<xmlParserCtxt *>(contexto);
    static_cast<Lectura *>(lector->_private)->conTipo = true;
    xmlStopParser(lector);
}

// The parser speaks English. What stands for many faults of hand-made documents, by its code; "" for what is rarer.
QString EnEspanol(const xmlError &error)
{
    switch (error.code) {
    case XML_ERR_NO_MEMORY:
        return "no hay memoria para leerlo";
    case XML_ERR_DOCUMENT_EMPTY:
        return "está vacío o no empieza con un elemento";
    case XML_ERR_DOCUMENT_END:
        return "sigue algo después de su último elemento";
    case XML_ERR_INVALID_CHAR:
    case XML_ERR_INVALID_CHARREF:
        return "lleva un carácter que XML no admite";
    case XML_ERR_UNDECLARED_ENTITY:
        return "nombra una entidad que XML no tiene";
    case XML_ERR_UNKNOWN_ENCODING:
    case XML_ERR_UNSUPPORTED_ENCODING:
    case XML_ERR_INVALID_ENCODING:
        return "sus letras no están en la codificación que dice";
    case XML_ERR_ATTRIBUTE_REDEFINED:
        return "un elemento repite un atributo";
    case XML_ERR_ATTRIBUTE_NOT_STARTED:
    case XML_ERR_ATTRIBUTE_NOT_FINISHED:
    case XML_ERR_LT_IN_ATTRIBUTE:
        return "el valor de un atributo no está bien entre comillas";
    case XML_ERR_GT_REQUIRED:
    case XML_ERR_LTSLASH_REQUIRED:
    case XML_ERR_TAG_NAME_MISMATCH:
    case XML_ERR_TAG_NOT_FINISHED:
        return "un elemento no se cierra, o se cierra otro";
    default:
        return {};
    }
}

ErrorXml Falla(const Lectura &lectura, const xmlError *error)
{
    const int renglon = error ? error->line : 0;
    if (!lectura.falla.motivo.isEmpty())
        return lectura.falla;
    if (lectura.conTipo)
        return {renglon, {}, "El documento trae una declaración DOCTYPE, que este formato no admite"};
    if (!error || !error->message)
        return {renglon, {}, "El documento no está bien formado"};
    const QString ingles = QString::fromUtf8(error->message).trimmed();
    if (ingles.startsWith("Excessive depth")) // has no code of its own
        return {renglon, {}, QString("El documento tiene más de %1 niveles").arg(xmlParserMaxDepth)};
    const QString espanol = EnEspanol(*error);
    return {renglon,
            {},
            "El documento no está bien formado: " + (espanol.isEmpty() ? ingles : espanol + " (" + ingles + ")")};
}

int EscribirMas(void *contexto, const char *origen, int cuantos)
{
    return static_cast<QFile *>(contexto)->write(origen, cuantos) == cuantos ? cuantos : -1;
}

} // namespace

QString ErrorXml::Texto() const
{
    QStringList lugar;
    if (renglon > 0)
        lugar.append("Renglón " + QString::number(renglon));
    if (!elemento.isEmpty())
        lugar.append(elemento);
    return lugar.isEmpty() ? motivo : lugar.join(", ") + ": " + motivo;
}

QString Elemento::Nombre() const
{
    return qvx::Texto(nodo->name);
}

Elemento Elemento::Crear(const QString &nombre) const
{
    if (Nivel(nodo) >= NivelesAlEscribir)
        Rechazar(QString("El documento tendría más de %1 niveles").arg(NivelesAlEscribir));
    return Elemento(xmlNewChild(nodo, nullptr, Octetos(nombre.toUtf8()), nullptr));
}

void Elemento::setAtributo(const QString &nombre, const QString &valor, const QString &duenio) const
{
    if (const auto prohibido = CaracterProhibido(valor))
        Rechazar(QString("%1: \"%2\" lleva un carácter que XML no admite (U+%3)")
                     .arg(duenio, nombre, QString("%1").arg(*prohibido, 4, 16, QLatin1Char('0')).toUpper()));
    xmlNewProp(nodo, Octetos(nombre.toUtf8()), Octetos(valor.toUtf8()));
}

QString Elemento::Atributo(int posicion) const
{
    const xmlAttr *atributo = nodo->properties;
    for (; atributo && posicion > 0; --posicion)
        atributo = atributo->next;
    if (!atributo)
        throw ErrorEjecucion(errores::ElementoNoEncontrado, "Al elemento " + Nombre() + " le falta un atributo");
    xmlChar *valor = xmlNodeListGetString(nodo->doc, atributo->children, 1);
    const QString texto = valor ? qvx::Texto(valor) : QString("");
    xmlFree(valor);
    return texto;
}

std::vector<Elemento> Elemento::Hijos() const
{
    std::vector<Elemento> hijos;
    for (xmlNode *hijo = xmlFirstElementChild(nodo); hijo; hijo = xmlNextElementSibling(hijo))
        hijos.push_back(Elemento(hijo));
    return hijos;
}

void Documento::Liberar::operator()(_xmlDoc *libre) const
{
    xmlFreeDoc(libre);
}

Documento::Documento() : arbol(xmlNewDoc(nullptr)) {}

Documento::~Documento() = default;

Elemento Documento::CrearRaiz(const QString &nombre)
{
    xmlNode *raiz = xmlNewDocNode(arbol.get(), nullptr, Octetos(nombre.toUtf8()), nullptr);
    xmlDocSetRootElement(arbol.get(), raiz);
    return Elemento(raiz);
}

Elemento Documento::Buscar(const QList<QString> &ruta) const
{
    xmlNode *nodo = nullptr;
    for (const QString &nombre : ruta) {
        nodo = nodo ? xmlFirstElementChild(nodo) : xmlDocGetRootElement(arbol.get());
        while (nodo && qvx::Texto(nodo->name) != nombre)
            nodo = xmlNextElementSibling(nodo);
        if (!nodo)
            break;
    }
    return Elemento(nodo);
}

void Documento::Guardar(const QString &archivo) const
{
    ArchivoEntero destino(archivo);
    QFile &salida = destino.Salida();
    const SinVoz callada;
    salida.write("<?xml version='1.0'?>\n");
    xmlSaveCtxt *escritor = xmlSaveToIO(&EscribirMas, nullptr, &salida, "UTF-8", XML_SAVE_NO_DECL | XML_SAVE_AS_XML);
    if (!escritor)
        Rechazar("No hay memoria para guardar el documento");
    xmlSaveDoc(escritor, arbol.get());
    xmlSaveClose(escritor);
    destino.Terminar();
}

Documento::Arbol Documento::Leer(const QString &archivo, QList<ErrorXml> &errores)
{
    Lectura lectura;
    lectura.archivo.setFileName(archivo);
    if (!QFileInfo(archivo).isFile() || !lectura.archivo.open(QIODevice::ReadOnly)) {
        errores.append({0, {}, "No se pudo abrir el archivo " + archivo});
        return nullptr;
    }
    if (lectura.archivo.size() > TamanoMaximo) {
        errores.append({0, {}, DemasiadoGrande()});
        return nullptr;
    }
    const std::unique_ptr<xmlParserCtxt, void (*)(xmlParserCtxt *)> lector(xmlNewParserCtxt(), &xmlFreeParserCtxt);
    if (!lector)
        Rechazar("No hay memoria para leer el documento");
    lector->_private = &lectura;
    lector->sax->internalSubset = &RechazarTipo;
    lector->sax->startElementNs = &AlEmpezarElemento;
    constexpr int opciones =
        XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_COMPACT | XML_PARSE_BIG_LINES;
    const SinVoz callada;
    Arbol leido(xmlCtxtReadIO(lector.get(), &LeerMas, nullptr, &lectura, nullptr, nullptr, opciones));
    if (!leido || lectura.conTipo || !lectura.falla.motivo.isEmpty()) {
        errores.append(Falla(lectura, xmlCtxtGetLastError(lector.get())));
        return nullptr;
    }
    return leido;
}

QString VersionDeXml()
{
    return LIBXML_DOTTED_VERSION;
}

bool Documento::Cargar(const QString &archivo, const EsquemaXml &esquema)
{
    fallas.clear();
    arbol = Leer(archivo, fallas);
    if (arbol)
        fallas = esquema.Validar(*this);
    if (!fallas.isEmpty())
        arbol.reset(xmlNewDoc(nullptr));
    return fallas.isEmpty();
}

} // namespace qvx
