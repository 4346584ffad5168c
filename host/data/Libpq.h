#pragma once

#include <libpq-fe.h>

namespace qvx
{

// The server's client library, loaded when a server is first spoken of: it brings two dozen others along, which would
// make every start on the embedded engine slower by a tenth.
#define QVX_FUNCIONES_LIBPQ(F)                                                                                         \
    F(PQclear)                                                                                                         \
    F(PQconndefaults)                                                                                                  \
    F(PQconnectdbParams)                                                                                               \
    F(PQconnectionNeedsPassword)                                                                                       \
    F(PQconnectionUsedPassword)                                                                                        \
    F(PQconninfoFree)                                                                                                  \
    F(PQconninfoParse)                                                                                                 \
    F(PQconsumeInput)                                                                                                  \
    F(PQerrorMessage)                                                                                                  \
    F(PQfinish)                                                                                                        \
    F(PQfreemem)                                                                                                       \
    F(PQprepare)                                                                                                       \
    F(PQresultErrorField)                                                                                              \
    F(PQresultErrorMessage)                                                                                            \
    F(PQresultStatus)                                                                                                  \
    F(PQsocket)                                                                                                        \
    F(PQstatus)                                                                                                        \
    F(PQtransactionStatus)

struct Libpq {
#define QVX_FUNCION(nombre) decltype(&::nombre) nombre = nullptr; // NOLINT(bugprone-macro-parentheses): a name
    QVX_FUNCIONES_LIBPQ(QVX_FUNCION)
#undef QVX_FUNCION
};

// Raises an ErrorEjecucion when it is not installed.
const Libpq &LibreriaPq();

} // namespace qvx
