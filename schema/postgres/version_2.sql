-- Quorvex, shared server: schema, tables, indexes and host tables of the maintenance plan, in the oldest
-- version that programs still read. Later ones change it step by step, here and in databases of older programs alike.
-- Keys compare without their trailing blanks, as bpchar without a length does, and texts sort by their code points.
-- Services and parts are deliberately not tied by foreign keys: the screen leaves rows without a parent behind and
-- relies on being able to.
-- The _Numero columns are the number that a key stands for (0 for one that is no number): they find the highest key.

CREATE SCHEMA dbo;
CREATE DOMAIN Clave AS bpchar COLLATE "C";
CREATE DOMAIN Texto AS text COLLATE "C";

CREATE FUNCTION Numero_De_Clave(clave bpchar) RETURNS bigint
    LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE
    RETURN coalesce(substring(CAST(clave AS text) FROM '^[0-9]{1,18}'), '0')::bigint;

CREATE TABLE Esquema (
    Es_Version integer NOT NULL PRIMARY KEY
);

CREATE TABLE Tipo_Equipo (
    Te_Cve_Tipo_Equipo Clave NOT NULL PRIMARY KEY,
    Te_Descripcion     Texto NOT NULL,
    Es_Cve_Estado      Clave NOT NULL DEFAULT 'AC'
);

CREATE TABLE Producto (
    Pr_Cve_Producto    Clave NOT NULL PRIMARY KEY,
    Pr_Descripcion     Texto NOT NULL,
    Pr_Clase           Clave NOT NULL CHECK (Pr_Clase IN ('MO', 'RE', 'HE')),
    Pr_Unidad_Control_1 Clave NOT NULL,
    Pr_Costo_Estandar  numeric NOT NULL DEFAULT 0,
    Es_Cve_Estado      Clave NOT NULL DEFAULT 'AC'
);

CREATE TABLE Tipo_Gasto (
    Tg_Cve_Tipo_Gasto  Clave NOT NULL PRIMARY KEY,
    Tg_Descripcion     Texto NOT NULL,
    Es_Cve_Estado      Clave NOT NULL DEFAULT 'AC'
);

CREATE TABLE Tipo_Servicio (
    Ts_Cve_Tipo_Servicio Clave NOT NULL PRIMARY KEY,
    Ts_Descripcion     Texto NOT NULL,
    Es_Cve_Estado      Clave NOT NULL DEFAULT 'AC'
);

CREATE TABLE Prioridad_Servicio (
    Ps_Cve_Prioridad   Clave NOT NULL PRIMARY KEY,
    Ps_Descripcion     Texto NOT NULL,
    Es_Cve_Estado      Clave NOT NULL DEFAULT 'AC'
);

CREATE TABLE Unidad (
    Un_Cve_Unidad      Clave NOT NULL PRIMARY KEY,
    Un_Descripcion     Texto NOT NULL,
    Es_Cve_Estado      Clave NOT NULL DEFAULT 'AC'
);

CREATE TABLE Tipo_Equipo_Parte (
    Te_Cve_Tipo_Equipo Clave NOT NULL,
    Tep_ID             Clave NOT NULL,
    Tep_Padre          Clave NOT NULL,
    Tep_Descripcion    Texto NOT NULL,
    Es_Cve_Estado      Clave NOT NULL DEFAULT 'AC',
    Oper_Alta          Texto,
    Fecha_Alta         Texto,
    Oper_Ult_Modif     Texto,
    Fecha_Ult_Modif    Texto,
    Oper_Baja          Texto,
    Fecha_Baja         Texto,
    Version            Texto NOT NULL DEFAULT CAST(gen_random_uuid() AS text),
    Version_Anterior   Texto,
    Oper_Anterior      Texto,
    Fecha_Anterior     Texto,
    Tep_Numero         bigint GENERATED ALWAYS AS (Numero_De_Clave(Tep_ID)) STORED,
    PRIMARY KEY (Te_Cve_Tipo_Equipo, Tep_ID)
);
CREATE INDEX Tep_Por_Padre ON Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_Padre, Tep_ID);
CREATE INDEX Tep_Por_Numero ON Tipo_Equipo_Parte (Te_Cve_Tipo_Equipo, Tep_Numero);

CREATE TABLE Plan_Mantenimiento (
    Te_Cve_Tipo_Equipo Clave NOT NULL,
    Tep_ID             Clave NOT NULL,
    Pm_ID              Clave NOT NULL,
    Ts_Cve_Tipo_Servicio Clave NOT NULL,
    Pm_Frecuencia      numeric NOT NULL DEFAULT 0,
    Pm_Lectura         numeric NOT NULL DEFAULT 0,
    Pm_Unidad_Lectura  Clave NOT NULL DEFAULT '',
    Pm_Precio          numeric NOT NULL DEFAULT 0,
    Pm_Tiempo_Estimado numeric NOT NULL DEFAULT 0,
    Pm_Prioridad       Clave NOT NULL DEFAULT '',
    Pm_Requiere_Paro   Clave NOT NULL DEFAULT 'NO',
    Pm_Tiempo_Paro     numeric NOT NULL DEFAULT 0,
    Es_Cve_Estado      Clave NOT NULL DEFAULT 'AC',
    Oper_Alta          Texto,
    Fecha_Alta         Texto,
    Oper_Ult_Modif     Texto,
    Fecha_Ult_Modif    Texto,
    Oper_Baja          Texto,
    Fecha_Baja         Texto,
    Version            Texto NOT NULL DEFAULT CAST(gen_random_uuid() AS text),
    Version_Anterior   Texto,
    Oper_Anterior      Texto,
    Fecha_Anterior     Texto,
    Pm_Numero          bigint GENERATED ALWAYS AS (Numero_De_Clave(Pm_ID)) STORED,
    PRIMARY KEY (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID)
);
CREATE UNIQUE INDEX Pm_Por_Folio ON Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Pm_ID);
CREATE INDEX Pm_Por_Numero ON Plan_Mantenimiento (Te_Cve_Tipo_Equipo, Pm_Numero);

CREATE TABLE Plan_Mantenimiento_Detalle (
    Te_Cve_Tipo_Equipo Clave NOT NULL,
    Tep_ID             Clave NOT NULL,
    Pm_ID              Clave NOT NULL,
    Pmd_ID             Clave NOT NULL,
    Pmd_Tipo           Clave NOT NULL,
    Pr_Cve_Producto    Clave NOT NULL,
    Pmd_Cantidad       numeric NOT NULL DEFAULT 0,
    Pmd_Unidad         Clave NOT NULL DEFAULT '',
    Pmd_Costo          numeric NOT NULL DEFAULT 0,
    Pmd_Importe        numeric NOT NULL DEFAULT 0,
    Pmd_Tipo_Gasto     Clave NOT NULL DEFAULT '',
    Pmd_Numero         bigint GENERATED ALWAYS AS (Numero_De_Clave(Pmd_ID)) STORED,
    PRIMARY KEY (Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID)
);
CREATE INDEX Pmd_Por_Numero ON Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Pmd_Numero);
CREATE INDEX Pmd_Por_Servicio ON Plan_Mantenimiento_Detalle (Te_Cve_Tipo_Equipo, Pm_ID, Pmd_Numero);

-- A row's version, new with each change, and whose work the last change was made on.

CREATE FUNCTION Sellar_Version() RETURNS trigger
    LANGUAGE plpgsql SET search_path = dbo, pg_temp
    AS $$
BEGIN
    NEW.Version := CAST(gen_random_uuid() AS text);
    NEW.Version_Anterior := OLD.Version;
    NEW.Oper_Anterior := OLD.Oper_Ult_Modif;
    NEW.Fecha_Anterior := OLD.Fecha_Ult_Modif;
    RETURN NEW;
END
$$;
CREATE TRIGGER Tep_Version BEFORE UPDATE ON Tipo_Equipo_Parte FOR EACH ROW EXECUTE FUNCTION Sellar_Version();
CREATE TRIGGER Pm_Version BEFORE UPDATE ON Plan_Mantenimiento FOR EACH ROW EXECUTE FUNCTION Sellar_Version();

-- The host's own: masks of keys, stored queries, logs of changes and of states.

CREATE TABLE Formato_Clave (
    Fc_Codigo  Texto NOT NULL PRIMARY KEY,
    Fc_Mascara Texto NOT NULL
);

CREATE TABLE Consulta (
    Co_Nombre Texto NOT NULL PRIMARY KEY,
    Co_Texto  Texto NOT NULL
);

CREATE TABLE Registro_Cambio (
    Rc_ID      bigint GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
    Rc_Tabla   Texto NOT NULL,
    Rc_Clave   Texto NOT NULL,
    Rc_Oper    Texto NOT NULL,
    Rc_Fecha   Texto NOT NULL
);
CREATE INDEX Rc_Por_Clave ON Registro_Cambio (Rc_Tabla, Rc_Clave, Rc_ID);

CREATE TABLE Bitacora (
    Bi_ID      bigint GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
    Bi_Tabla   Texto NOT NULL,
    Bi_Clave   Texto NOT NULL,
    Bi_Accion  Texto NOT NULL,
    Bi_Oper    Texto NOT NULL,
    Bi_Fecha   Texto NOT NULL
);
CREATE INDEX Bi_Por_Clave ON Bitacora (Bi_Tabla, Bi_Clave, Bi_ID);
