-- Quorvex, embedded engine: from version 4 to version 5.

-- What was done to the plans: one row for each transaction that changed them, with a number that is never used again.

CREATE TABLE Operacion (
    Op_ID       INTEGER PRIMARY KEY AUTOINCREMENT,
    Op_Oper     TEXT NOT NULL,
    Op_Fecha    TEXT NOT NULL DEFAULT (datetime('now', 'localtime')),
    Op_Clase    TEXT NOT NULL,
    Op_Detalle  TEXT NOT NULL DEFAULT '',
    Op_Programa TEXT NOT NULL DEFAULT ''
);

-- The operation that is under way. This system puts its own in, and takes it out before it commits. Other programs do
-- not: what they do within one second is one operation, and Oc_Hora is that second.

CREATE TABLE Operacion_En_Curso (
    Op_ID   INTEGER NOT NULL,
    Oc_Hora TEXT
);

-- The plans that an operation changed, and how many of their parts, services and lines. What other programs did is not
-- counted.

CREATE TABLE Operacion_Plan (
    Te_Cve_Tipo_Equipo TEXT COLLATE RTRIM NOT NULL,
    Op_ID        INTEGER NOT NULL,
    Ol_Partes    INTEGER,
    Ol_Servicios INTEGER,
    Ol_Lineas    INTEGER,
    PRIMARY KEY (Te_Cve_Tipo_Equipo, Op_ID)
) WITHOUT ROWID;
CREATE INDEX Ol_Por_Operacion ON Operacion_Plan (Op_ID);

-- The operations that an operation takes back.

CREATE TABLE Operacion_Deshecha (
    Op_ID        INTEGER NOT NULL,
    Od_Operacion INTEGER NOT NULL,
    PRIMARY KEY (Op_ID, Od_Operacion)
) WITHOUT ROWID;
CREATE INDEX Od_Por_Operacion ON Operacion_Deshecha (Od_Operacion);

-- Rows as they were before a change ('A') and as it left them ('D'), in the order in which it happened. 'R' is a row
-- that a new one would replace: it becomes an 'A' when it did.

CREATE TABLE Historia_Parte (
    Hi_ID              INTEGER PRIMARY KEY,
    Op_ID              INTEGER NOT NULL,
    Hi_Lado            TEXT NOT NULL,
    Te_Cve_Tipo_Equipo TEXT COLLATE RTRIM,
    Tep_ID             TEXT COLLATE RTRIM,
    Tep_Padre          TEXT COLLATE RTRIM,
    Tep_Descripcion    TEXT,
    Es_Cve_Estado      TEXT COLLATE RTRIM,
    Oper_Alta          TEXT,
    Fecha_Alta         TEXT,
    Oper_Ult_Modif     TEXT,
    Fecha_Ult_Modif    TEXT,
    Oper_Baja          TEXT,
    Fecha_Baja         TEXT,
    Version            TEXT,
    Version_Anterior   TEXT,
    Oper_Anterior      TEXT,
    Fecha_Anterior     TEXT
);
CREATE INDEX Hp_Por_Operacion ON Historia_Parte (Op_ID);
CREATE INDEX Hp_Por_Clave ON Historia_Parte (Te_Cve_Tipo_Equipo, Tep_ID);
CREATE INDEX Hp_Reemplazadas ON Historia_Parte (Op_ID) WHERE Hi_Lado = 'R';

CREATE TABLE Historia_Servicio (
    Hi_ID              INTEGER PRIMARY KEY,
    Op_ID              INTEGER NOT NULL,
    Hi_Lado            TEXT NOT NULL,
    Te_Cve_Tipo_Equipo TEXT COLLATE RTRIM,
    Tep_ID             TEXT COLLATE RTRIM,
    Pm_ID              TEXT COLLATE RTRIM,
    Ts_Cve_Tipo_Servicio TEXT COLLATE RTRIM,
    Pm_Frecuencia      NUMERIC,
    Pm_Lectura         NUMERIC,
    Pm_Unidad_Lectura  TEXT COLLATE RTRIM,
    Pm_Precio          NUMERIC,
    Pm_Tiempo_Estimado NUMERIC,
    Pm_Prioridad       TEXT COLLATE RTRIM,
    Pm_Requiere_Paro   TEXT COLLATE RTRIM,
    Pm_Tiempo_Paro     NUMERIC,
    Es_Cve_Estado      TEXT COLLATE RTRIM,
    Oper_Alta          TEXT,
    Fecha_Alta         TEXT,
    Oper_Ult_Modif     TEXT,
    Fecha_Ult_Modif    TEXT,
    Oper_Baja          TEXT,
    Fecha_Baja         TEXT,
    Version            TEXT,
    Version_Anterior   TEXT,
    Oper_Anterior      TEXT,
    Fecha_Anterior     TEXT
);
CREATE INDEX Hs_Por_Operacion ON Historia_Servicio (Op_ID);
CREATE INDEX Hs_Por_Clave ON Historia_Servicio (Te_Cve_Tipo_Equipo, Pm_ID);
CREATE INDEX Hs_Reemplazadas ON Historia_Servicio (Op_ID) WHERE Hi_Lado = 'R';

CREATE TABLE Historia_Linea (
    Hi_ID              INTEGER PRIMARY KEY,
    Op_ID              INTEGER NOT NULL,
    Hi_Lado            TEXT NOT NULL,
    Te_Cve_Tipo_Equipo TEXT COLLATE RTRIM,
    Tep_ID             TEXT COLLATE RTRIM,
    Pm_ID              TEXT COLLATE RTRIM,
    Pmd_ID             TEXT COLLATE RTRIM,
    Pmd_Tipo           TEXT COLLATE RTRIM,
    Pr_Cve_Producto    TEXT COLLATE RTRIM,
    Pmd_Cantidad       NUMERIC,
    Pmd_Unidad         TEXT COLLATE RTRIM,
    Pmd_Costo          NUMERIC,
    Pmd_Importe        NUMERIC,
    Pmd_Tipo_Gasto     TEXT COLLATE RTRIM
);
CREATE INDEX Hl_Por_Operacion ON Historia_Linea (Op_ID);
CREATE INDEX Hl_Reemplazadas ON Historia_Linea (Op_ID) WHERE Hi_Lado = 'R';

-- What is noted of a change by another program, whose equipment type it is given. Who did it, a file does not know.

CREATE VIEW Cambio_De_Fuera AS SELECT '' AS Te_Cve_Tipo_Equipo;

CREATE TRIGGER Cambio_De_Fuera_Nuevo INSTEAD OF INSERT ON Cambio_De_Fuera BEGIN
    DELETE FROM Operacion_En_Curso WHERE Oc_Hora <> datetime('now', 'localtime');
    INSERT INTO Operacion (Op_Oper, Op_Clase)
        SELECT '', 'Fuera de Quorvex' WHERE NOT EXISTS (SELECT 1 FROM Operacion_En_Curso);
    INSERT INTO Operacion_En_Curso
        SELECT max(Op_ID), datetime('now', 'localtime') FROM Operacion
        HAVING NOT EXISTS (SELECT 1 FROM Operacion_En_Curso);
    INSERT INTO Operacion_Plan (Te_Cve_Tipo_Equipo, Op_ID)
        SELECT NEW.Te_Cve_Tipo_Equipo, Op_ID FROM Operacion_En_Curso
         WHERE NOT EXISTS (SELECT 1 FROM Operacion_Plan
                            WHERE Te_Cve_Tipo_Equipo = NEW.Te_Cve_Tipo_Equipo
                              AND Op_ID = Operacion_En_Curso.Op_ID);
END;

-- A change of a part or a service is followed by the one that stamps its version: the row as it was is noted with the
-- first, the row as it became with the second. A row that takes another's place does not tell of its deletion.

CREATE TRIGGER Hp_Alta_De_Fuera BEFORE INSERT ON Tipo_Equipo_Parte WHEN NOT EXISTS (SELECT 1 FROM Operacion_En_Curso WHERE Oc_Hora IS NULL) BEGIN
    INSERT INTO Cambio_De_Fuera VALUES (NEW.Te_Cve_Tipo_Equipo); END;

CREATE TRIGGER Hp_Baja_De_Fuera BEFORE DELETE ON Tipo_Equipo_Parte WHEN NOT EXISTS (SELECT 1 FROM Operacion_En_Curso WHERE Oc_Hora IS NULL) BEGIN
    INSERT INTO Cambio_De_Fuera VALUES (OLD.Te_Cve_Tipo_Equipo); END;

CREATE TRIGGER Hp_Alta AFTER INSERT ON Tipo_Equipo_Parte BEGIN
    INSERT INTO Historia_Parte (Op_ID, Hi_Lado,
        Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion, Es_Cve_Estado, Oper_Alta, Fecha_Alta,
        Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja, Version, Version_Anterior, Oper_Anterior,
        Fecha_Anterior)
        VALUES ((SELECT Op_ID FROM Operacion_En_Curso), 'D',
        NEW.Te_Cve_Tipo_Equipo, NEW.Tep_ID, NEW.Tep_Padre, NEW.Tep_Descripcion, NEW.Es_Cve_Estado, NEW.Oper_Alta,
        NEW.Fecha_Alta, NEW.Oper_Ult_Modif, NEW.Fecha_Ult_Modif, NEW.Oper_Baja, NEW.Fecha_Baja, NEW.Version,
        NEW.Version_Anterior, NEW.Oper_Anterior, NEW.Fecha_Anterior);
END;

CREATE TRIGGER Hp_Cambio_Antes BEFORE UPDATE ON Tipo_Equipo_Parte
    WHEN NOT (NEW.Version <> OLD.Version AND NEW.Version_Anterior IS OLD.Version) BEGIN
    INSERT INTO Cambio_De_Fuera SELECT OLD.Te_Cve_Tipo_Equipo WHERE NOT EXISTS (SELECT 1 FROM Operacion_En_Curso WHERE Oc_Hora IS NULL);
    INSERT INTO Historia_Parte (Op_ID, Hi_Lado,
        Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion, Es_Cve_Estado, Oper_Alta, Fecha_Alta,
        Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja, Version, Version_Anterior, Oper_Anterior,
        Fecha_Anterior)
        VALUES ((SELECT Op_ID FROM Operacion_En_Curso), 'A',
        OLD.Te_Cve_Tipo_Equipo, OLD.Tep_ID, OLD.Tep_Padre, OLD.Tep_Descripcion, OLD.Es_Cve_Estado, OLD.Oper_Alta,
        OLD.Fecha_Alta, OLD.Oper_Ult_Modif, OLD.Fecha_Ult_Modif, OLD.Oper_Baja, OLD.Fecha_Baja, OLD.Version,
        OLD.Version_Anterior, OLD.Oper_Anterior, OLD.Fecha_Anterior);
END;

CREATE TRIGGER Hp_Cambio AFTER UPDATE ON Tipo_Equipo_Parte
    WHEN NEW.Version <> OLD.Version AND NEW.Version_Anterior IS OLD.Version BEGIN
    INSERT INTO Historia_Parte (Op_ID, Hi_Lado,
        Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion, Es_Cve_Estado, Oper_Alta, Fecha_Alta,
        Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja, Version, Version_Anterior, Oper_Anterior,
        Fecha_Anterior)
        VALUES ((SELECT Op_ID FROM Operacion_En_Curso), 'D',
        NEW.Te_Cve_Tipo_Equipo, NEW.Tep_ID, NEW.Tep_Padre, NEW.Tep_Descripcion, NEW.Es_Cve_Estado, NEW.Oper_Alta,
        NEW.Fecha_Alta, NEW.Oper_Ult_Modif, NEW.Fecha_Ult_Modif, NEW.Oper_Baja, NEW.Fecha_Baja, NEW.Version,
        NEW.Version_Anterior, NEW.Oper_Anterior, NEW.Fecha_Anterior);
END;

CREATE TRIGGER Hp_Baja AFTER DELETE ON Tipo_Equipo_Parte BEGIN
    INSERT INTO Historia_Parte (Op_ID, Hi_Lado,
        Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion, Es_Cve_Estado, Oper_Alta, Fecha_Alta,
        Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja, Version, Version_Anterior, Oper_Anterior,
        Fecha_Anterior)
        VALUES ((SELECT Op_ID FROM Operacion_En_Curso), 'A',
        OLD.Te_Cve_Tipo_Equipo, OLD.Tep_ID, OLD.Tep_Padre, OLD.Tep_Descripcion, OLD.Es_Cve_Estado, OLD.Oper_Alta,
        OLD.Fecha_Alta, OLD.Oper_Ult_Modif, OLD.Fecha_Ult_Modif, OLD.Oper_Baja, OLD.Fecha_Baja, OLD.Version,
        OLD.Version_Anterior, OLD.Oper_Anterior, OLD.Fecha_Anterior);
END;

CREATE TRIGGER Hp_Por_Reemplazar BEFORE INSERT ON Tipo_Equipo_Parte
    WHEN EXISTS (SELECT 1 FROM Tipo_Equipo_Parte
                  WHERE Te_Cve_Tipo_Equipo = NEW.Te_Cve_Tipo_Equipo AND Tep_ID = NEW.Tep_ID) BEGIN
    INSERT INTO Cambio_De_Fuera SELECT NEW.Te_Cve_Tipo_Equipo WHERE NOT EXISTS (SELECT 1 FROM Operacion_En_Curso WHERE Oc_Hora IS NULL);
    INSERT INTO Historia_Parte (Op_ID, Hi_Lado,
        Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion, Es_Cve_Estado, Oper_Alta, Fecha_Alta,
        Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja, Version, Version_Anterior, Oper_Anterior,
        Fecha_Anterior)
        SELECT (SELECT Op_ID FROM Operacion_En_Curso), 'R',
        Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion, Es_Cve_Estado, Oper_Alta, Fecha_Alta,
        Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja, Version, Version_Anterior, Oper_Anterior,
        Fecha_Anterior
        FROM Tipo_Equipo_Parte
        WHERE Te_Cve_Tipo_Equipo = NEW.Te_Cve_Tipo_Equipo AND Tep_ID = NEW.Tep_ID;
END;

CREATE TRIGGER Hp_Reemplazada AFTER INSERT ON Tipo_Equipo_Parte
    WHEN EXISTS (SELECT 1 FROM Historia_Parte
                  WHERE Hi_Lado = 'R' AND Op_ID = (SELECT Op_ID FROM Operacion_En_Curso)) BEGIN
    UPDATE Historia_Parte SET Hi_Lado = 'A' WHERE Hi_Lado = 'R' AND Op_ID = (SELECT Op_ID FROM Operacion_En_Curso); END;

CREATE TRIGGER Hs_Alta_De_Fuera BEFORE INSERT ON Plan_Mantenimiento WHEN NOT EXISTS (SELECT 1 FROM Operacion_En_Curso WHERE Oc_Hora IS NULL) BEGIN
    INSERT INTO Cambio_De_Fuera VALUES (NEW.Te_Cve_Tipo_Equipo); END;

CREATE TRIGGER Hs_Baja_De_Fuera BEFORE DELETE ON Plan_Mantenimiento WHEN NOT EXISTS (SELECT 1 FROM Operacion_En_Curso WHERE Oc_Hora IS NULL) BEGIN
    INSERT INTO Cambio_De_Fuera VALUES (OLD.Te_Cve_Tipo_Equipo); END;

CREATE TRIGGER Hs_Alta AFTER INSERT ON Plan_Mantenimiento BEGIN
    INSERT INTO Historia_Servicio (Op_ID, Hi_Lado,
        Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio, Pm_Frecuencia, Pm_Lectura, Pm_Unidad_Lectura,
        Pm_Precio, Pm_Tiempo_Estimado, Pm_Prioridad, Pm_Requiere_Paro, Pm_Tiempo_Paro, Es_Cve_Estado, Oper_Alta,
        Fecha_Alta, Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja, Version, Version_Anterior,
        Oper_Anterior, Fecha_Anterior)
        VALUES ((SELECT Op_ID FROM Operacion_En_Curso), 'D',
        NEW.Te_Cve_Tipo_Equipo, NEW.Tep_ID, NEW.Pm_ID, NEW.Ts_Cve_Tipo_Servicio, NEW.Pm_Frecuencia, NEW.Pm_Lectura,
        NEW.Pm_Unidad_Lectura, NEW.Pm_Precio, NEW.Pm_Tiempo_Estimado, NEW.Pm_Prioridad, NEW.Pm_Requiere_Paro,
        NEW.Pm_Tiempo_Paro, NEW.Es_Cve_Estado, NEW.Oper_Alta, NEW.Fecha_Alta, NEW.Oper_Ult_Modif,
        NEW.Fecha_Ult_Modif, NEW.Oper_Baja, NEW.Fecha_Baja, NEW.Version, NEW.Version_Anterior, NEW.Oper_Anterior,
        NEW.Fecha_Anterior);
END;

CREATE TRIGGER Hs_Cambio_Antes BEFORE UPDATE ON Plan_Mantenimiento
    WHEN NOT (NEW.Version <> OLD.Version AND NEW.Version_Anterior IS OLD.Version) BEGIN
    INSERT INTO Cambio_De_Fuera SELECT OLD.Te_Cve_Tipo_Equipo WHERE NOT EXISTS (SELECT 1 FROM Operacion_En_Curso WHERE Oc_Hora IS NULL);
    INSERT INTO Historia_Servicio (Op_ID, Hi_Lado,
        Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio, Pm_Frecuencia, Pm_Lectura, Pm_Unidad_Lectura,
        Pm_Precio, Pm_Tiempo_Estimado, Pm_Prioridad, Pm_Requiere_Paro, Pm_Tiempo_Paro, Es_Cve_Estado, Oper_Alta,
        Fecha_Alta, Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja, Version, Version_Anterior,
        Oper_Anterior, Fecha_Anterior)
        VALUES ((SELECT Op_ID FROM Operacion_En_Curso), 'A',
        OLD.Te_Cve_Tipo_Equipo, OLD.Tep_ID, OLD.Pm_ID, OLD.Ts_Cve_Tipo_Servicio, OLD.Pm_Frecuencia, OLD.Pm_Lectura,
        OLD.Pm_Unidad_Lectura, OLD.Pm_Precio, OLD.Pm_Tiempo_Estimado, OLD.Pm_Prioridad, OLD.Pm_Requiere_Paro,
        OLD.Pm_Tiempo_Paro, OLD.Es_Cve_Estado, OLD.Oper_Alta, OLD.Fecha_Alta, OLD.Oper_Ult_Modif,
        OLD.Fecha_Ult_Modif, OLD.Oper_Baja, OLD.Fecha_Baja, OLD.Version, OLD.Version_Anterior, OLD.Oper_Anterior,
        OLD.Fecha_Anterior);
END;

CREATE TRIGGER Hs_Cambio AFTER UPDATE ON Plan_Mantenimiento
    WHEN NEW.Version <> OLD.Version AND NEW.Version_Anterior IS OLD.Version BEGIN
    INSERT INTO Historia_Servicio (Op_ID, Hi_Lado,
        Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio, Pm_Frecuencia, Pm_Lectura, Pm_Unidad_Lectura,
        Pm_Precio, Pm_Tiempo_Estimado, Pm_Prioridad, Pm_Requiere_Paro, Pm_Tiempo_Paro, Es_Cve_Estado, Oper_Alta,
        Fecha_Alta, Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja, Version, Version_Anterior,
        Oper_Anterior, Fecha_Anterior)
        VALUES ((SELECT Op_ID FROM Operacion_En_Curso), 'D',
        NEW.Te_Cve_Tipo_Equipo, NEW.Tep_ID, NEW.Pm_ID, NEW.Ts_Cve_Tipo_Servicio, NEW.Pm_Frecuencia, NEW.Pm_Lectura,
        NEW.Pm_Unidad_Lectura, NEW.Pm_Precio, NEW.Pm_Tiempo_Estimado, NEW.Pm_Prioridad, NEW.Pm_Requiere_Paro,
        NEW.Pm_Tiempo_Paro, NEW.Es_Cve_Estado, NEW.Oper_Alta, NEW.Fecha_Alta, NEW.Oper_Ult_Modif,
        NEW.Fecha_Ult_Modif, NEW.Oper_Baja, NEW.Fecha_Baja, NEW.Version, NEW.Version_Anterior, NEW.Oper_Anterior,
        NEW.Fecha_Anterior);
END;

CREATE TRIGGER Hs_Baja AFTER DELETE ON Plan_Mantenimiento BEGIN
    INSERT INTO Historia_Servicio (Op_ID, Hi_Lado,
        Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio, Pm_Frecuencia, Pm_Lectura, Pm_Unidad_Lectura,
        Pm_Precio, Pm_Tiempo_Estimado, Pm_Prioridad, Pm_Requiere_Paro, Pm_Tiempo_Paro, Es_Cve_Estado, Oper_Alta,
        Fecha_Alta, Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja, Version, Version_Anterior,
        Oper_Anterior, Fecha_Anterior)
        VALUES ((SELECT Op_ID FROM Operacion_En_Curso), 'A',
        OLD.Te_Cve_Tipo_Equipo, OLD.Tep_ID, OLD.Pm_ID, OLD.Ts_Cve_Tipo_Servicio, OLD.Pm_Frecuencia, OLD.Pm_Lectura,
        OLD.Pm_Unidad_Lectura, OLD.Pm_Precio, OLD.Pm_Tiempo_Estimado, OLD.Pm_Prioridad, OLD.Pm_Requiere_Paro,
        OLD.Pm_Tiempo_Paro, OLD.Es_Cve_Estado, OLD.Oper_Alta, OLD.Fecha_Alta, OLD.Oper_Ult_Modif,
        OLD.Fecha_Ult_Modif, OLD.Oper_Baja, OLD.Fecha_Baja, OLD.Version, OLD.Version_Anterior, OLD.Oper_Anterior,
        OLD.Fecha_Anterior);
END;

CREATE TRIGGER Hs_Por_Reemplazar BEFORE INSERT ON Plan_Mantenimiento
    WHEN EXISTS (SELECT 1 FROM Plan_Mantenimiento
                  WHERE Te_Cve_Tipo_Equipo = NEW.Te_Cve_Tipo_Equipo AND Pm_ID = NEW.Pm_ID) BEGIN
    INSERT INTO Cambio_De_Fuera SELECT NEW.Te_Cve_Tipo_Equipo WHERE NOT EXISTS (SELECT 1 FROM Operacion_En_Curso WHERE Oc_Hora IS NULL);
    INSERT INTO Historia_Servicio (Op_ID, Hi_Lado,
        Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio, Pm_Frecuencia, Pm_Lectura, Pm_Unidad_Lectura,
        Pm_Precio, Pm_Tiempo_Estimado, Pm_Prioridad, Pm_Requiere_Paro, Pm_Tiempo_Paro, Es_Cve_Estado, Oper_Alta,
        Fecha_Alta, Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja, Version, Version_Anterior,
        Oper_Anterior, Fecha_Anterior)
        SELECT (SELECT Op_ID FROM Operacion_En_Curso), 'R',
        Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio, Pm_Frecuencia, Pm_Lectura, Pm_Unidad_Lectura,
        Pm_Precio, Pm_Tiempo_Estimado, Pm_Prioridad, Pm_Requiere_Paro, Pm_Tiempo_Paro, Es_Cve_Estado, Oper_Alta,
        Fecha_Alta, Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja, Version, Version_Anterior,
        Oper_Anterior, Fecha_Anterior
        FROM Plan_Mantenimiento
        WHERE Te_Cve_Tipo_Equipo = NEW.Te_Cve_Tipo_Equipo AND Pm_ID = NEW.Pm_ID;
END;

CREATE TRIGGER Hs_Reemplazada AFTER INSERT ON Plan_Mantenimiento
    WHEN EXISTS (SELECT 1 FROM Historia_Servicio
                  WHERE Hi_Lado = 'R' AND Op_ID = (SELECT Op_ID FROM Operacion_En_Curso)) BEGIN
    UPDATE Historia_Servicio SET Hi_Lado = 'A' WHERE Hi_Lado = 'R' AND Op_ID = (SELECT Op_ID FROM Operacion_En_Curso); END;

CREATE TRIGGER Hl_Alta_De_Fuera BEFORE INSERT ON Plan_Mantenimiento_Detalle WHEN NOT EXISTS (SELECT 1 FROM Operacion_En_Curso WHERE Oc_Hora IS NULL) BEGIN
    INSERT INTO Cambio_De_Fuera VALUES (NEW.Te_Cve_Tipo_Equipo); END;

CREATE TRIGGER Hl_Baja_De_Fuera BEFORE DELETE ON Plan_Mantenimiento_Detalle WHEN NOT EXISTS (SELECT 1 FROM Operacion_En_Curso WHERE Oc_Hora IS NULL) BEGIN
    INSERT INTO Cambio_De_Fuera VALUES (OLD.Te_Cve_Tipo_Equipo); END;

CREATE TRIGGER Hl_Alta AFTER INSERT ON Plan_Mantenimiento_Detalle BEGIN
    INSERT INTO Historia_Linea (Op_ID, Hi_Lado,
        Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, Pr_Cve_Producto, Pmd_Cantidad, Pmd_Unidad, Pmd_Costo,
        Pmd_Importe, Pmd_Tipo_Gasto)
        VALUES ((SELECT Op_ID FROM Operacion_En_Curso), 'D',
        NEW.Te_Cve_Tipo_Equipo, NEW.Tep_ID, NEW.Pm_ID, NEW.Pmd_ID, NEW.Pmd_Tipo, NEW.Pr_Cve_Producto,
        NEW.Pmd_Cantidad, NEW.Pmd_Unidad, NEW.Pmd_Costo, NEW.Pmd_Importe, NEW.Pmd_Tipo_Gasto);
END;

CREATE TRIGGER Hl_Cambio_Antes BEFORE UPDATE ON Plan_Mantenimiento_Detalle BEGIN
    INSERT INTO Cambio_De_Fuera SELECT OLD.Te_Cve_Tipo_Equipo WHERE NOT EXISTS (SELECT 1 FROM Operacion_En_Curso WHERE Oc_Hora IS NULL);
    INSERT INTO Historia_Linea (Op_ID, Hi_Lado,
        Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, Pr_Cve_Producto, Pmd_Cantidad, Pmd_Unidad, Pmd_Costo,
        Pmd_Importe, Pmd_Tipo_Gasto)
        VALUES ((SELECT Op_ID FROM Operacion_En_Curso), 'A',
        OLD.Te_Cve_Tipo_Equipo, OLD.Tep_ID, OLD.Pm_ID, OLD.Pmd_ID, OLD.Pmd_Tipo, OLD.Pr_Cve_Producto,
        OLD.Pmd_Cantidad, OLD.Pmd_Unidad, OLD.Pmd_Costo, OLD.Pmd_Importe, OLD.Pmd_Tipo_Gasto);
END;

CREATE TRIGGER Hl_Cambio AFTER UPDATE ON Plan_Mantenimiento_Detalle BEGIN
    INSERT INTO Historia_Linea (Op_ID, Hi_Lado,
        Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, Pr_Cve_Producto, Pmd_Cantidad, Pmd_Unidad, Pmd_Costo,
        Pmd_Importe, Pmd_Tipo_Gasto)
        VALUES ((SELECT Op_ID FROM Operacion_En_Curso), 'D',
        NEW.Te_Cve_Tipo_Equipo, NEW.Tep_ID, NEW.Pm_ID, NEW.Pmd_ID, NEW.Pmd_Tipo, NEW.Pr_Cve_Producto,
        NEW.Pmd_Cantidad, NEW.Pmd_Unidad, NEW.Pmd_Costo, NEW.Pmd_Importe, NEW.Pmd_Tipo_Gasto);
END;

CREATE TRIGGER Hl_Baja AFTER DELETE ON Plan_Mantenimiento_Detalle BEGIN
    INSERT INTO Historia_Linea (Op_ID, Hi_Lado,
        Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, Pr_Cve_Producto, Pmd_Cantidad, Pmd_Unidad, Pmd_Costo,
        Pmd_Importe, Pmd_Tipo_Gasto)
        VALUES ((SELECT Op_ID FROM Operacion_En_Curso), 'A',
        OLD.Te_Cve_Tipo_Equipo, OLD.Tep_ID, OLD.Pm_ID, OLD.Pmd_ID, OLD.Pmd_Tipo, OLD.Pr_Cve_Producto,
        OLD.Pmd_Cantidad, OLD.Pmd_Unidad, OLD.Pmd_Costo, OLD.Pmd_Importe, OLD.Pmd_Tipo_Gasto);
END;

CREATE TRIGGER Hl_Por_Reemplazar BEFORE INSERT ON Plan_Mantenimiento_Detalle
    WHEN EXISTS (SELECT 1 FROM Plan_Mantenimiento_Detalle
                  WHERE Te_Cve_Tipo_Equipo = NEW.Te_Cve_Tipo_Equipo AND Tep_ID = NEW.Tep_ID AND Pm_ID = NEW.Pm_ID AND Pmd_ID = NEW.Pmd_ID) BEGIN
    INSERT INTO Cambio_De_Fuera SELECT NEW.Te_Cve_Tipo_Equipo WHERE NOT EXISTS (SELECT 1 FROM Operacion_En_Curso WHERE Oc_Hora IS NULL);
    INSERT INTO Historia_Linea (Op_ID, Hi_Lado,
        Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, Pr_Cve_Producto, Pmd_Cantidad, Pmd_Unidad, Pmd_Costo,
        Pmd_Importe, Pmd_Tipo_Gasto)
        SELECT (SELECT Op_ID FROM Operacion_En_Curso), 'R',
        Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, Pr_Cve_Producto, Pmd_Cantidad, Pmd_Unidad, Pmd_Costo,
        Pmd_Importe, Pmd_Tipo_Gasto
        FROM Plan_Mantenimiento_Detalle
        WHERE Te_Cve_Tipo_Equipo = NEW.Te_Cve_Tipo_Equipo AND Tep_ID = NEW.Tep_ID AND Pm_ID = NEW.Pm_ID AND Pmd_ID = NEW.Pmd_ID;
END;

CREATE TRIGGER Hl_Reemplazada AFTER INSERT ON Plan_Mantenimiento_Detalle
    WHEN EXISTS (SELECT 1 FROM Historia_Linea
                  WHERE Hi_Lado = 'R' AND Op_ID = (SELECT Op_ID FROM Operacion_En_Curso)) BEGIN
    UPDATE Historia_Linea SET Hi_Lado = 'A' WHERE Hi_Lado = 'R' AND Op_ID = (SELECT Op_ID FROM Operacion_En_Curso); END;

-- The history is not changed. It goes by whole operations, the oldest first: the operation, and then what it left.

CREATE TRIGGER Hp_Fijo BEFORE UPDATE ON Historia_Parte WHEN OLD.Hi_Lado <> 'R' BEGIN
    SELECT RAISE(ABORT, 'La historia no se cambia.'); END;
CREATE TRIGGER Hp_Guardado BEFORE DELETE ON Historia_Parte
    WHEN EXISTS (SELECT 1 FROM Operacion WHERE Op_ID = OLD.Op_ID) BEGIN
    SELECT RAISE(ABORT, 'La historia no se elimina.'); END;

CREATE TRIGGER Hs_Fijo BEFORE UPDATE ON Historia_Servicio WHEN OLD.Hi_Lado <> 'R' BEGIN
    SELECT RAISE(ABORT, 'La historia no se cambia.'); END;
CREATE TRIGGER Hs_Guardado BEFORE DELETE ON Historia_Servicio
    WHEN EXISTS (SELECT 1 FROM Operacion WHERE Op_ID = OLD.Op_ID) BEGIN
    SELECT RAISE(ABORT, 'La historia no se elimina.'); END;

CREATE TRIGGER Hl_Fijo BEFORE UPDATE ON Historia_Linea WHEN OLD.Hi_Lado <> 'R' BEGIN
    SELECT RAISE(ABORT, 'La historia no se cambia.'); END;
CREATE TRIGGER Hl_Guardado BEFORE DELETE ON Historia_Linea
    WHEN EXISTS (SELECT 1 FROM Operacion WHERE Op_ID = OLD.Op_ID) BEGIN
    SELECT RAISE(ABORT, 'La historia no se elimina.'); END;

CREATE TRIGGER Op_Fija BEFORE UPDATE ON Operacion
    WHEN OLD.Op_ID IS NOT (SELECT Op_ID FROM Operacion_En_Curso WHERE Oc_Hora IS NULL) BEGIN
    SELECT RAISE(ABORT, 'La historia no se cambia.'); END;
CREATE TRIGGER Op_Guardada BEFORE DELETE ON Operacion
    WHEN OLD.Op_ID IS NOT (SELECT Op_ID FROM Operacion_En_Curso WHERE Oc_Hora IS NULL)
         AND OLD.Op_ID <> (SELECT min(Op_ID) FROM Operacion) BEGIN
    SELECT RAISE(ABORT, 'La historia se depura desde la operación más antigua.'); END;
