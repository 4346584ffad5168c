-- Quorvex, embedded engine: tables, indexes and host tables of the maintenance plan, in the oldest version that
-- programs still read. Later ones change it step by step, here and in files of older programs alike.
-- Keys compare without their trailing blanks (RTRIM). Services and parts are deliberately not tied by foreign
-- keys: the screen leaves rows without a parent behind and relies on being able to.
-- Row ids stay: without them, and without statistics, the engine walks the primary key for the tree's statement.
-- The _Numero columns are the number that a key stands for (0 for one that is no number): they find the highest key.

CREATE TABLE Tipo_Equipo (
    Te_Cve_Tipo_Equipo TEXT COLLATE RTRIM NOT NULL PRIMARY KEY,
    Te_Descripcion     TEXT NOT NULL,
    Es_Cve_Estado      TEXT COLLATE RTRIM NOT NULL DEFAULT 'AC'
);

CREATE TABLE Producto (
    Pr_Cve_Producto    TEXT COLLATE RTRIM NOT NULL PRIMARY KEY,
    Pr_Descripcion     TEXT NOT NULL,
    Pr_Clase           TEXT COLLATE RTRIM NOT NULL CHECK (Pr_Clase IN ('MO', 'RE', 'HE')),
    Pr_Unidad_Control_1 TEXT COLLATE RTRIM NOT NULL,
    Pr_Costo_Estandar  NUMERIC NOT NULL DEFAULT 0 CHECK (typeof(Pr_Costo_Estandar) IN ('integer', 'real')),
    Es_Cve_Estado      TEXT COLLATE RTRIM NOT NULL DEFAULT 'AC'
);

CREATE TABLE Tipo_Gasto (
    Tg_Cve_Tipo_Gasto  TEXT COLLATE RTRIM NOT NULL PRIMARY KEY,
    Tg_Descripcion     TEXT NOT NULL,
    Es_Cve_Estado      TEXT COLLATE RTRIM NOT NULL DEFAULT 'AC'
);

CREATE TABLE Tipo_Servicio (
    Ts_Cve_Tipo_Servicio TEXT COLLATE RTRIM NOT NULL PRIMARY KEY,
    Ts_Descripcion     TEXT NOT NULL,
    Es_Cve_Estado      TEXT COLLATE RTRIM NOT NULL DEFAULT 'AC'
);

CREATE TABLE Prioridad_Servicio (
    Ps_Cve_Prioridad   TEXT COLLATE RTRIM NOT NULL PRIMARY KEY,
    Ps_Descripcion     TEXT NOT NULL,
    Es_Cve_Estado      TEXT COLLATE RTRIM NOT NULL DEFAULT 'AC'
);

CREATE TABLE Unidad (
    Un_Cve_Unidad      TEXT COLLATE RTRIM NOT NULL PRIMARY KEY,
    Un_Descripcion     TEXT NOT NULL,
    Es_Cve_Estado      TEXT COLLATE RTRIM NOT NULL DEFAULT 'AC'
);

CREATE TABLE Tipo_Equipo_Parte (
    Te_Cve_Tipo_Equipo TEXT COLLATE RTRIM NOT NULL,
    Tep_ID             TEXT COLLATE RTRIM NOT NULL,
    Tep_Padre          TEXT COLLATE RTRIM NOT NULL,
    Tep_Descripcion    TEXT NOT NULL,
    Es_Cve_Estado      TEXT COLLATE RTRIM NOT NULL DEFAULT 'AC',
    Oper_Alta          TEXT,
    Fecha_Alta         TEXT,
    Oper_Ult_Modif     TEXT,
    Fecha_Ult_Modif    TEXT,
    Oper_Baja          TEXT,
    Fecha_Baja         TEXT,
    Version            TEXT NOT NULL DEFAULT (lower(hex(randomblob(16)))),
    Version_Anterior   TEXT,
    Oper_Anterior      TEXT,
    Fecha_Anterior     TEXT,
    Tep_Numero         INTEGER GENERATED ALWAYS AS (CAST(Tep_ID AS INTEGER)) VIRTUAL,
    PRIMARY KEY (Te_Cve_Tipo_Equipo, Tep_ID)
);
CREATE INDEX Tep_Por_Padre ON Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_Padre, Tep_ID);
CREATE INDEX Tep_Por_Numero ON Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_Numero);

CREATE TABLE Plan_Mantenimiento (
    Te_Cve_Tipo_Equipo TEXT COLLATE RTRIM NOT NULL,
    Tep_ID             TEXT COLLATE RTRIM NOT NULL,
    Pm_ID              TEXT COLLATE RTRIM NOT NULL,
    Ts_Cve_Tipo_Servicio TEXT COLLATE RTRIM NOT NULL,
    Pm_Frecuencia      NUMERIC NOT NULL DEFAULT 0 CHECK (typeof(Pm_Frecuencia) IN ('integer', 'real')),
    Pm_Lectura         NUMERIC NOT NULL DEFAULT 0 CHECK (typeof(Pm_Lectura) IN ('integer', 'real')),
    Pm_Unidad_Lectura  TEXT COLLATE RTRIM NOT NULL DEFAULT '',
    Pm_Precio          NUMERIC NOT NULL DEFAULT 0 CHECK (typeof(Pm_Precio) IN ('integer', 'real')),
    Pm_Tiempo_Estimado NUMERIC NOT NULL DEFAULT 0 CHECK (typeof(Pm_Tiempo_Estimado) IN ('integer', 'real')),
    Pm_Prioridad       TEXT COLLATE RTRIM NOT NULL DEFAULT '',
    Pm_Requiere_Paro   TEXT COLLATE RTRIM NOT NULL DEFAULT 'NO',
    Pm_Tiempo_Paro     NUMERIC NOT NULL DEFAULT 0 CHECK (typeof(Pm_Tiempo_Paro) IN ('integer', 'real')),
    Es_Cve_Estado      TEXT COLLATE RTRIM NOT NULL DEFAULT 'AC',
    Oper_Alta          TEXT,
    Fecha_Alta         TEXT,
    Oper_Ult_Modif     TEXT,
    Fecha_Ult_Modif    TEXT,
    Oper_Baja          TEXT,
    Fecha_Baja         TEXT,
    Version            TEXT NOT NULL DEFAULT (lower(hex(randomblob(16)))),
    Version_Anterior   TEXT,
    Oper_Anterior      TEXT,
    Fecha_Anterior     TEXT,
    Pm_Numero          INTEGER GENERATED ALWAYS AS (CAST(Pm_ID AS INTEGER)) VIRTUAL,
    PRIMARY KEY (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID)
);
CREATE UNIQUE INDEX Pm_Por_Folio ON Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Pm_ID);
CREATE INDEX Pm_Por_Numero ON Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Pm_Numero);

CREATE TABLE Plan_Mantenimiento_Detalle (
    Te_Cve_Tipo_Equipo TEXT COLLATE RTRIM NOT NULL,
    Tep_ID             TEXT COLLATE RTRIM NOT NULL,
    Pm_ID              TEXT COLLATE RTRIM NOT NULL,
    Pmd_ID             TEXT COLLATE RTRIM NOT NULL,
    Pmd_Tipo           TEXT COLLATE RTRIM NOT NULL,
    Pr_Cve_Producto    TEXT COLLATE RTRIM NOT NULL,
    Pmd_Cantidad       NUMERIC NOT NULL DEFAULT 0 CHECK (typeof(Pmd_Cantidad) IN ('integer', 'real')),
    Pmd_Unidad         TEXT COLLATE RTRIM NOT NULL DEFAULT '',
    Pmd_Costo          NUMERIC NOT NULL DEFAULT 0 CHECK (typeof(Pmd_Costo) IN ('integer', 'real')),
    Pmd_Importe        NUMERIC NOT NULL DEFAULT 0 CHECK (typeof(Pmd_Importe) IN ('integer', 'real')),
    Pmd_Tipo_Gasto     TEXT COLLATE RTRIM NOT NULL DEFAULT '',
    Pmd_Numero         INTEGER GENERATED ALWAYS AS (CAST(Pmd_ID AS INTEGER)) VIRTUAL,
    PRIMARY KEY (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID)
);
CREATE INDEX Pmd_Por_Numero ON Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Pmd_Numero);
CREATE INDEX Pmd_Por_Servicio ON Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Pm_ID, Pmd_Numero);

-- A row's version, new with each change, and whose work the last change was made on.

CREATE TRIGGER Tep_Version AFTER UPDATE ON Tipo_Equipo_Parte BEGIN
    UPDATE Tipo_Equipo_Parte
       SET Version = lower(hex(randomblob(16))), Version_Anterior = OLD.Version,
           Oper_Anterior = OLD.Oper_Ult_Modif, Fecha_Anterior = OLD.Fecha_Ult_Modif
     WHERE rowid = NEW.rowid; END;

CREATE TRIGGER Pm_Version AFTER UPDATE ON Plan_Mantenimiento BEGIN
    UPDATE Plan_Mantenimiento
       SET Version = lower(hex(randomblob(16))), Version_Anterior = OLD.Version,
           Oper_Anterior = OLD.Oper_Ult_Modif, Fecha_Anterior = OLD.Fecha_Ult_Modif
     WHERE rowid = NEW.rowid; END;

-- The host's own: masks of keys, stored queries, logs of changes and of states.

CREATE TABLE Formato_Clave (
    Fc_Codigo  TEXT NOT NULL PRIMARY KEY,
    Fc_Mascara TEXT NOT NULL
);

CREATE TABLE Consulta (
    Co_Nombre TEXT NOT NULL PRIMARY KEY,
    Co_Texto  TEXT NOT NULL
);

CREATE TABLE Registro_Cambio (
    Rc_ID      INTEGER PRIMARY KEY,
    Rc_Tabla   TEXT NOT NULL,
    Rc_Clave   TEXT NOT NULL,
    Rc_Oper    TEXT NOT NULL,
    Rc_Fecha   TEXT NOT NULL
);
CREATE INDEX Rc_Por_Clave ON Registro_Cambio (Rc_Tabla, Rc_Clave, Rc_ID);

CREATE TABLE Bitacora (
    Bi_ID      INTEGER PRIMARY KEY,
    Bi_Tabla   TEXT NOT NULL,
    Bi_Clave   TEXT NOT NULL,
    Bi_Accion  TEXT NOT NULL,
    Bi_Oper    TEXT NOT NULL,
    Bi_Fecha   TEXT NOT NULL
);
CREATE INDEX Bi_Por_Clave ON Bitacora (Bi_Tabla, Bi_Clave, Bi_ID);
