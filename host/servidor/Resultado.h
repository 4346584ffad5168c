#pragma once

#include "servidor/Controlador.h"

#include <QSqlResult>

namespace qvx
{

// What one statement answered, whole. It stands on nothing of the connection, which may end before it.
class ResultadoPq : public QSqlResult
{
public:
    explicit ResultadoPq(const ControladorPq &controlador) : QSqlResult(&controlador) {}

    // Sends it with these values and does not wait; false when it has to be run.
    bool Aplazar(const QVariantList &valores, QList<int> &afectadas) const
    {
        return SuEnlace().Aplazar(preparado, valores, afectadas);
    }

protected:
    bool prepare(const QString &sql) override;
    bool exec() override;
    bool reset(const QString &sql) override;
    QVariant data(int columna) override;
    bool isNull(int columna) override;
    bool fetch(int fila) override;
    bool fetchFirst() override { return fetch(0); }
    bool fetchLast() override { return fetch(size() - 1); }
    int size() override;
    int numRowsAffected() override;
    QSqlRecord record() const override;
    void detachFromResultSet() override { respuesta.reset(); }

private:
    Enlace &SuEnlace() const { return static_cast<const ControladorPq *>(driver())->SuEnlace(); }
    bool Tomar(Respuesta nueva);

    QByteArray preparado;
    Respuesta respuesta{nullptr, PQclear};
};

} // namespace qvx
