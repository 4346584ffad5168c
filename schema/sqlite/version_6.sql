-- Quorvex, embedded engine: from version 5 to version 6.

-- What a planner assumes of an equipment type to make its programme of the year: day zero, use, machines, days off.

CREATE TABLE Programa_Tipo (
    Te_Cve_Tipo_Equipo TEXT COLLATE RTRIM NOT NULL PRIMARY KEY,
    Pt_Dia_Cero        TEXT NOT NULL,
    Pt_Dias_Semana     NUMERIC NOT NULL DEFAULT 7 CHECK (typeof(Pt_Dias_Semana) IN ('integer', 'real')),
    Pt_Equipos         INTEGER NOT NULL DEFAULT 1 CHECK (typeof(Pt_Equipos) = 'integer'),
    Pt_Inicio          TEXT NOT NULL DEFAULT 'HECHO' CHECK (Pt_Inicio IN ('HECHO', 'ARRANQUE', 'LECTURA')),
    Pt_Descanso        TEXT NOT NULL DEFAULT '' CHECK (Pt_Descanso IN ('', 'DO', 'SADO')),
    Oper_Alta          TEXT,
    Fecha_Alta         TEXT,
    Oper_Ult_Modif     TEXT,
    Fecha_Ult_Modif    TEXT,
    Version            TEXT NOT NULL DEFAULT (lower(hex(randomblob(16)))),
    Version_Anterior   TEXT,
    Oper_Anterior      TEXT,
    Fecha_Anterior     TEXT
);

CREATE TRIGGER Pt_Version AFTER UPDATE ON Programa_Tipo BEGIN
    UPDATE Programa_Tipo
       SET Version = lower(hex(randomblob(16))), Version_Anterior = OLD.Version,
           Oper_Anterior = OLD.Oper_Ult_Modif, Fecha_Anterior = OLD.Fecha_Ult_Modif
     WHERE rowid = NEW.rowid; END;

CREATE TABLE Programa_Uso (
    Te_Cve_Tipo_Equipo TEXT COLLATE RTRIM NOT NULL,
    Pu_Unidad          TEXT COLLATE RTRIM NOT NULL,
    Pu_Uso             NUMERIC NOT NULL DEFAULT 0 CHECK (typeof(Pu_Uso) IN ('integer', 'real')),
    Pu_Acumulado       NUMERIC NOT NULL DEFAULT 0 CHECK (typeof(Pu_Acumulado) IN ('integer', 'real')),
    PRIMARY KEY (Te_Cve_Tipo_Equipo, Pu_Unidad)
);

CREATE TABLE Programa_Festivo (
    Te_Cve_Tipo_Equipo TEXT COLLATE RTRIM NOT NULL,
    Pf_Fecha           TEXT NOT NULL,
    PRIMARY KEY (Te_Cve_Tipo_Equipo, Pf_Fecha)
);

-- Of a service that another one of the same day contains.
CREATE TABLE Programa_Incluido (
    Te_Cve_Tipo_Equipo TEXT COLLATE RTRIM NOT NULL,
    Pi_Incluido        TEXT COLLATE RTRIM NOT NULL,
    Pi_En              TEXT COLLATE RTRIM NOT NULL,
    PRIMARY KEY (Te_Cve_Tipo_Equipo, Pi_Incluido, Pi_En)
);

-- Hours of labour that there are in a month of the year.
CREATE TABLE Programa_Capacidad (
    Te_Cve_Tipo_Equipo TEXT COLLATE RTRIM NOT NULL,
    Pc_Mes             INTEGER NOT NULL CHECK (Pc_Mes BETWEEN 1 AND 12),
    Pc_Horas           NUMERIC NOT NULL DEFAULT 0 CHECK (typeof(Pc_Horas) IN ('integer', 'real')),
    PRIMARY KEY (Te_Cve_Tipo_Equipo, Pc_Mes)
);

-- The plant's own, such as the name that stands on reports.
CREATE TABLE Ajuste_Planta (
    Aj_Nombre TEXT NOT NULL PRIMARY KEY,
    Aj_Valor  TEXT NOT NULL
);

-- An equipment type that goes takes its programme along: one of the same key would begin with it.
CREATE TRIGGER Te_Sin_Programa AFTER DELETE ON Tipo_Equipo BEGIN
    DELETE FROM Programa_Tipo WHERE Te_Cve_Tipo_Equipo = OLD.Te_Cve_Tipo_Equipo
    ; DELETE FROM Programa_Uso WHERE Te_Cve_Tipo_Equipo = OLD.Te_Cve_Tipo_Equipo
    ; DELETE FROM Programa_Festivo WHERE Te_Cve_Tipo_Equipo = OLD.Te_Cve_Tipo_Equipo
    ; DELETE FROM Programa_Incluido WHERE Te_Cve_Tipo_Equipo = OLD.Te_Cve_Tipo_Equipo
    ; DELETE FROM Programa_Capacidad WHERE Te_Cve_Tipo_Equipo = OLD.Te_Cve_Tipo_Equipo; END;
