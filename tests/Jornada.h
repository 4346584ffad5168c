#pragma once

#include "support/Planificador.h"

#include <QElapsedTimer>
#include <QFile>
#include <random>

constexpr int Planificadores = 8;
// Everybody's equipment type. 110n, 120n and 130n are planner n's own, for everything, for copies and for imports.
inline const QString Compartido = "1000";
enum class Serie { Propia = 11, Copias = 12, Importaciones = 13 };
QString Tipo(Serie serie, int numero);
// How long the planners work.
int Segundos();

// One planner's work, in a process with a screen of its own: commands at random, as long as it lasts. What was
// reported as saved, and every message, goes to the journal, one per line with its fields between tabs.
//
// A service belongs to the planner who made it: its price is a number that no other service has, and nobody else
// changes it. Everybody changes everybody's parts.
class Jornada : public QObject
{
    Q_OBJECT

public:
    // argumentos: database, number, seed, journal, and the two files of Encontrarse.
    explicit Jornada(const QStringList &argumentos);

private Q_SLOTS:
    void trabajar();

private:
    struct Servicio {
        QString parte;
        QString precio;
    };
    using Mando = void (Jornada::*)();

    int Al(qsizetype cuantos) { return std::uniform_int_distribution<>(0, static_cast<int>(cuantos) - 1)(azar); }
    QString Uno(const QStringList &lista) { return lista.isEmpty() ? QString() : lista.at(Al(lista.size())); }
    QString Activa() { return Uno(planificador->Nodos(false)); }
    QString Propia();         // an active part that this planner made
    QStringList Mios() const; // services, in active parts of the tree
    void Escribir(const QStringList &campos);
    void Apuntar(const QString &folio, const Servicio &servicio);
    bool Hecho();
    void Hacer(const QString &nombre, Mando mando);
    qint64 Sentencias();

    void ParteNueva();
    void ParteEditada();
    void Etiqueta();
    void Baja();
    void Reactivacion();
    void ParteEliminada();
    void ServicioNuevo();
    void ServicioCambiado();
    void ServicioMovido();
    void ServicioEliminado();
    void Copia();
    void Exportacion();
    void Importacion();

    QString base;
    int numero;
    std::mt19937 azar;
    QFile diario;
    QString listo;
    QString seguir;
    std::unique_ptr<Escenario> escenario;
    std::unique_ptr<Planificador> planificador;
    QElapsedTimer reloj;
    qint64 esperado = 0;
    qint64 leidoDeTraza = 0;
    int precios = 0;
    QString tipo;
    QStringList propias; // parts of this planner's, as "type|node"
    QHash<QString, QHash<QString, Servicio>> servicios;
    QStringList dichos;
};
