#include "bench/DocumentoCrudo.h"

#include <QFile>
#include <libxml/parser.h>
#include <libxml/xmlreader.h>
#include <libxml/xmlschemas.h>
#include <libxml/xmlwriter.h>

namespace
{

const xmlChar *Octetos(const QByteArray &texto)
{
    return reinterpret_cast<const xmlChar *>(texto.constData());
}

QByteArray Texto(const xmlChar *octetos)
{
    return QByteArray(reinterpret_cast<const char *>(octetos));
}

} // namespace

DocumentoCrudo::DocumentoCrudo(const QString &archivo)
{
    xmlTextReader *lector = xmlReaderForFile(QFile::encodeName(archivo).constData(), nullptr, 0);
    while (lector && xmlTextReaderRead(lector) == 1) {
        if (xmlTextReaderNodeType(lector) == XML_READER_TYPE_ELEMENT) {
            Pieza pieza{Texto(xmlTextReaderConstName(lector)), {}};
            const bool vacio = xmlTextReaderIsEmptyElement(lector) == 1;
            while (xmlTextReaderMoveToNextAttribute(lector) == 1)
                pieza.atributos.emplace_back(Texto(xmlTextReaderConstName(lector)),
                                             Texto(xmlTextReaderConstValue(lector)));
            piezas.push_back(std::move(pieza));
            if (!vacio)
                continue;
        } else if (xmlTextReaderNodeType(lector) != XML_READER_TYPE_END_ELEMENT) {
            continue;
        }
        piezas.push_back({});
    }
    xmlFreeTextReader(lector);
    if (piezas.empty())
        qFatal("No se pudo leer %s", qPrintable(archivo));
}

void DocumentoCrudo::Escribir(const QString &archivo) const
{
    xmlTextWriter *escritor = xmlNewTextWriterFilename(QFile::encodeName(archivo).constData(), 0);
    if (!escritor)
        qFatal("No se pudo escribir %s", qPrintable(archivo));
    xmlTextWriterStartDocument(escritor, nullptr, "UTF-8", nullptr);
    for (const Pieza &pieza : piezas) {
        if (pieza.nombre.isEmpty()) {
            xmlTextWriterEndElement(escritor);
            continue;
        }
        xmlTextWriterStartElement(escritor, Octetos(pieza.nombre));
        for (const auto &[nombre, valor] : pieza.atributos)
            xmlTextWriterWriteAttribute(escritor, Octetos(nombre), Octetos(valor));
    }
    xmlTextWriterEndDocument(escritor);
    xmlFreeTextWriter(escritor);
}

void DocumentoCrudo::Validar(const QString &archivo, const QString &esquema)
{
    xmlDoc *documento = xmlReadFile(QFile::encodeName(archivo).constData(), nullptr, XML_PARSE_NONET);
    xmlSchemaParserCtxt *lector = xmlSchemaNewParserCtxt(QFile::encodeName(esquema).constData());
    xmlSchema *leido = xmlSchemaParse(lector);
    xmlSchemaFreeParserCtxt(lector);
    xmlSchemaValidCtxt *validador = xmlSchemaNewValidCtxt(leido);
    if (!documento || xmlSchemaValidateDoc(validador, documento) != 0)
        qFatal("El documento no es válido");
    xmlSchemaFreeValidCtxt(validador);
    xmlSchemaFree(leido);
    xmlFreeDoc(documento);
}
