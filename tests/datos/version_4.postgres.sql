SET statement_timeout = 0;
SET lock_timeout = 0;
SET idle_in_transaction_session_timeout = 0;
SET client_encoding = 'UTF8';
SET standard_conforming_strings = on;
SELECT pg_catalog.set_config('search_path', '', false);
SET check_function_bodies = false;
SET xmloption = content;
SET client_min_messages = warning;
SET row_security = off;
CREATE SCHEMA dbo;
ALTER SCHEMA dbo OWNER TO postgres;
CREATE DOMAIN dbo.clave AS bpchar COLLATE pg_catalog."C";
ALTER DOMAIN dbo.clave OWNER TO postgres;
CREATE DOMAIN dbo.texto AS text COLLATE pg_catalog."C";
ALTER DOMAIN dbo.texto OWNER TO postgres;
CREATE FUNCTION dbo.firmar_registro() RETURNS trigger
    LANGUAGE plpgsql
    SET search_path TO 'dbo', 'pg_temp'
    AS $$
DECLARE
    zona text := coalesce(
        (SELECT substr(ajuste, length('TimeZone=') + 1)
           FROM pg_db_role_setting JOIN pg_database ON pg_database.oid = setdatabase, unnest(setconfig) AS ajuste
          WHERE datname = current_database() AND setrole = 0 AND ajuste ILIKE 'TimeZone=%'),
        current_setting('log_timezone'));
    hora text := to_char(clock_timestamp() AT TIME ZONE zona, 'YYYY-MM-DD HH24:MI:SS');
BEGIN
    IF TG_TABLE_NAME = 'bitacora' THEN
        NEW.Bi_Oper := session_user;
        NEW.Bi_Fecha := hora;
    ELSE
        NEW.Rc_Oper := session_user;
        NEW.Rc_Fecha := hora;
    END IF;
    RETURN NEW;
END
$$;
ALTER FUNCTION dbo.firmar_registro() OWNER TO postgres;
CREATE FUNCTION dbo.get_ruta_parte_tipo_equipo(tipo character, parte character) RETURNS SETOF text
    LANGUAGE sql STABLE
    SET search_path TO 'dbo', 'pg_temp'
    AS $_$
-- dbo.Get_Ruta_Parte_Tipo_Equipo($1 equipment type, $2 part): the descriptions from the top part down to the part.
-- No row when there is no such part. The root "0000" has no row of its own and gives its name. The level ends rings.
WITH RECURSIVE argumentos (tipo, parte) AS (VALUES ($1, $2)),
ruta (tipo, padre, texto, nivel) AS (
    SELECT p.Te_Cve_Tipo_Equipo, p.Tep_Padre, CAST(p.Tep_Descripcion AS text), 1
      FROM argumentos
      JOIN Tipo_Equipo_Parte p ON p.Te_Cve_Tipo_Equipo = argumentos.tipo AND p.Tep_ID = argumentos.parte
    UNION ALL
    SELECT p.Te_Cve_Tipo_Equipo, p.Tep_Padre, p.Tep_Descripcion || ' / ' || ruta.texto, ruta.nivel + 1
      FROM ruta
      JOIN Tipo_Equipo_Parte p ON p.Te_Cve_Tipo_Equipo = ruta.tipo AND p.Tep_ID = ruta.padre
     WHERE ruta.nivel < 500
)
SELECT 'RAIZ' AS valor FROM argumentos WHERE rtrim(parte) = '0000'
UNION ALL
SELECT texto FROM ruta WHERE nivel = (SELECT max(nivel) FROM ruta)
$_$;
ALTER FUNCTION dbo.get_ruta_parte_tipo_equipo(tipo character, parte character) OWNER TO postgres;
CREATE FUNCTION dbo.numero_de_clave(clave character) RETURNS bigint
    LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE
    RETURN (COALESCE("substring"((clave)::text, '^[0-9]{1,18}'::text), '0'::text))::bigint;
ALTER FUNCTION dbo.numero_de_clave(clave character) OWNER TO postgres;
CREATE FUNCTION dbo.proteger_raiz() RETURNS trigger
    LANGUAGE plpgsql
    SET search_path TO 'dbo', 'pg_temp'
    AS $$
BEGIN
    RAISE check_violation USING MESSAGE = 'La clave 0000 está reservada para la raíz del árbol.';
END
$$;
ALTER FUNCTION dbo.proteger_raiz() OWNER TO postgres;
CREATE FUNCTION dbo.rechazar_programa() RETURNS trigger
    LANGUAGE plpgsql
    SET search_path TO 'dbo', 'pg_temp'
    AS $$
BEGIN
    IF NOT pg_has_role(session_user, (SELECT nspowner FROM pg_namespace WHERE nspname = 'dbo'), 'MEMBER') THEN
        RAISE object_not_in_prerequisite_state USING MESSAGE =
            'La base de datos es ahora de otra versión de Quorvex: cierre el programa y abra el de esa versión. '
            'No se guardó nada.';
    END IF;
    RETURN NULL;
END
$$;
ALTER FUNCTION dbo.rechazar_programa() OWNER TO postgres;
CREATE FUNCTION dbo.reservar_plan(tipo character, esperar boolean) RETURNS boolean
    LANGUAGE plpgsql SECURITY DEFINER
    SET search_path TO 'dbo', 'pg_temp'
    AS $$
BEGIN
    LOOP
        IF esperar THEN
            PERFORM FROM Plan_Reserva WHERE Te_Cve_Tipo_Equipo = tipo FOR UPDATE;
        ELSE
            PERFORM FROM Plan_Reserva WHERE Te_Cve_Tipo_Equipo = tipo FOR UPDATE SKIP LOCKED;
        END IF;
        IF FOUND THEN
            RETURN true;
        END IF;
        IF EXISTS (SELECT FROM Plan_Reserva WHERE Te_Cve_Tipo_Equipo = tipo) THEN
            RETURN false;
        END IF;
        IF NOT EXISTS (SELECT FROM Tipo_Equipo_Parte WHERE Te_Cve_Tipo_Equipo = tipo)
           AND NOT EXISTS (SELECT FROM Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = tipo)
           AND NOT EXISTS (SELECT FROM Plan_Mantenimiento_Detalle WHERE Te_Cve_Tipo_Equipo = tipo) THEN
            RETURN true;
        END IF;
        INSERT INTO Plan_Reserva VALUES (tipo) ON CONFLICT DO NOTHING;
    END LOOP;
END
$$;
ALTER FUNCTION dbo.reservar_plan(tipo character, esperar boolean) OWNER TO postgres;
CREATE FUNCTION dbo.reservar_plan_nuevo() RETURNS trigger
    LANGUAGE plpgsql SECURITY DEFINER
    SET search_path TO 'dbo', 'pg_temp'
    AS $$
BEGIN
    INSERT INTO Plan_Reserva VALUES (NEW.Te_Cve_Tipo_Equipo) ON CONFLICT DO NOTHING;
    RETURN NULL;
END
$$;
ALTER FUNCTION dbo.reservar_plan_nuevo() OWNER TO postgres;
CREATE FUNCTION dbo.sellar_version() RETURNS trigger
    LANGUAGE plpgsql
    SET search_path TO 'dbo', 'pg_temp'
    AS $$
BEGIN
    NEW.Version := CAST(gen_random_uuid() AS text);
    NEW.Version_Anterior := OLD.Version;
    NEW.Oper_Anterior := OLD.Oper_Ult_Modif;
    NEW.Fecha_Anterior := OLD.Fecha_Ult_Modif;
    RETURN NEW;
END
$$;
ALTER FUNCTION dbo.sellar_version() OWNER TO postgres;
SET default_tablespace = '';
SET default_table_access_method = heap;
CREATE TABLE dbo.bitacora (
    bi_id bigint NOT NULL,
    bi_tabla dbo.texto NOT NULL,
    bi_clave dbo.texto NOT NULL,
    bi_accion dbo.texto NOT NULL,
    bi_oper dbo.texto NOT NULL,
    bi_fecha dbo.texto NOT NULL
);
ALTER TABLE dbo.bitacora OWNER TO postgres;
ALTER TABLE dbo.bitacora ALTER COLUMN bi_id ADD GENERATED ALWAYS AS IDENTITY (
    SEQUENCE NAME dbo.bitacora_bi_id_seq
    START WITH 1
    INCREMENT BY 1
    NO MINVALUE
    NO MAXVALUE
    CACHE 1
);
CREATE TABLE dbo.catalogo_cambio (
    ca_tabla dbo.texto NOT NULL,
    ca_cambios bigint DEFAULT 0 NOT NULL
);
ALTER TABLE dbo.catalogo_cambio OWNER TO postgres;
CREATE TABLE dbo.consulta (
    co_nombre dbo.texto NOT NULL,
    co_texto dbo.texto NOT NULL
);
ALTER TABLE dbo.consulta OWNER TO postgres;
CREATE VIEW dbo.derecho AS
 SELECT (has_table_privilege('dbo.Plan_Mantenimiento'::text, 'UPDATE'::text))::integer AS de_planes,
    (has_table_privilege('dbo.Producto'::text, 'INSERT'::text))::integer AS de_catalogos;
ALTER TABLE dbo.derecho OWNER TO postgres;
CREATE TABLE dbo.esquema (
    es_version integer NOT NULL
);
ALTER TABLE dbo.esquema OWNER TO postgres;
CREATE TABLE dbo.formato_clave (
    fc_codigo dbo.texto NOT NULL,
    fc_mascara dbo.texto NOT NULL
);
ALTER TABLE dbo.formato_clave OWNER TO postgres;
CREATE TABLE dbo.plan_mantenimiento (
    te_cve_tipo_equipo dbo.clave NOT NULL,
    tep_id dbo.clave NOT NULL,
    pm_id dbo.clave NOT NULL,
    ts_cve_tipo_servicio dbo.clave NOT NULL,
    pm_frecuencia numeric DEFAULT 0 NOT NULL,
    pm_lectura numeric DEFAULT 0 NOT NULL,
    pm_unidad_lectura dbo.clave DEFAULT ''::bpchar NOT NULL,
    pm_precio numeric DEFAULT 0 NOT NULL,
    pm_tiempo_estimado numeric DEFAULT 0 NOT NULL,
    pm_prioridad dbo.clave DEFAULT ''::bpchar NOT NULL,
    pm_requiere_paro dbo.clave DEFAULT 'NO'::bpchar NOT NULL,
    pm_tiempo_paro numeric DEFAULT 0 NOT NULL,
    es_cve_estado dbo.clave DEFAULT 'AC'::bpchar NOT NULL,
    oper_alta dbo.texto,
    fecha_alta dbo.texto,
    oper_ult_modif dbo.texto,
    fecha_ult_modif dbo.texto,
    oper_baja dbo.texto,
    fecha_baja dbo.texto,
    version dbo.texto DEFAULT (gen_random_uuid())::text NOT NULL,
    version_anterior dbo.texto,
    oper_anterior dbo.texto,
    fecha_anterior dbo.texto,
    pm_numero bigint GENERATED ALWAYS AS (dbo.numero_de_clave((pm_id)::bpchar)) STORED
);
ALTER TABLE dbo.plan_mantenimiento OWNER TO postgres;
CREATE TABLE dbo.plan_mantenimiento_detalle (
    te_cve_tipo_equipo dbo.clave NOT NULL,
    tep_id dbo.clave NOT NULL,
    pm_id dbo.clave NOT NULL,
    pmd_id dbo.clave NOT NULL,
    pmd_tipo dbo.clave NOT NULL,
    pr_cve_producto dbo.clave NOT NULL,
    pmd_cantidad numeric DEFAULT 0 NOT NULL,
    pmd_unidad dbo.clave DEFAULT ''::bpchar NOT NULL,
    pmd_costo numeric DEFAULT 0 NOT NULL,
    pmd_importe numeric DEFAULT 0 NOT NULL,
    pmd_tipo_gasto dbo.clave DEFAULT ''::bpchar NOT NULL,
    pmd_numero bigint GENERATED ALWAYS AS (dbo.numero_de_clave((pmd_id)::bpchar)) STORED
);
ALTER TABLE dbo.plan_mantenimiento_detalle OWNER TO postgres;
CREATE TABLE dbo.plan_reserva (
    te_cve_tipo_equipo dbo.clave NOT NULL
);
ALTER TABLE dbo.plan_reserva OWNER TO postgres;
CREATE TABLE dbo.prioridad_servicio (
    ps_cve_prioridad dbo.clave NOT NULL,
    ps_descripcion dbo.texto NOT NULL,
    es_cve_estado dbo.clave DEFAULT 'AC'::bpchar NOT NULL
);
ALTER TABLE dbo.prioridad_servicio OWNER TO postgres;
CREATE TABLE dbo.producto (
    pr_cve_producto dbo.clave NOT NULL,
    pr_descripcion dbo.texto NOT NULL,
    pr_clase dbo.clave NOT NULL,
    pr_unidad_control_1 dbo.clave NOT NULL,
    pr_costo_estandar numeric DEFAULT 0 NOT NULL,
    es_cve_estado dbo.clave DEFAULT 'AC'::bpchar NOT NULL,
    CONSTRAINT producto_pr_clase_check CHECK (((pr_clase)::bpchar = ANY (ARRAY['MO'::bpchar, 'RE'::bpchar, 'HE'::bpchar])))
);
ALTER TABLE dbo.producto OWNER TO postgres;
CREATE TABLE dbo.registro_cambio (
    rc_id bigint NOT NULL,
    rc_tabla dbo.texto NOT NULL,
    rc_clave dbo.texto NOT NULL,
    rc_oper dbo.texto NOT NULL,
    rc_fecha dbo.texto NOT NULL
);
ALTER TABLE dbo.registro_cambio OWNER TO postgres;
ALTER TABLE dbo.registro_cambio ALTER COLUMN rc_id ADD GENERATED ALWAYS AS IDENTITY (
    SEQUENCE NAME dbo.registro_cambio_rc_id_seq
    START WITH 1
    INCREMENT BY 1
    NO MINVALUE
    NO MAXVALUE
    CACHE 1
);
CREATE TABLE dbo.tipo_equipo (
    te_cve_tipo_equipo dbo.clave NOT NULL,
    te_descripcion dbo.texto NOT NULL,
    es_cve_estado dbo.clave DEFAULT 'AC'::bpchar NOT NULL
);
ALTER TABLE dbo.tipo_equipo OWNER TO postgres;
CREATE TABLE dbo.tipo_equipo_parte (
    te_cve_tipo_equipo dbo.clave NOT NULL,
    tep_id dbo.clave NOT NULL,
    tep_padre dbo.clave NOT NULL,
    tep_descripcion dbo.texto NOT NULL,
    es_cve_estado dbo.clave DEFAULT 'AC'::bpchar NOT NULL,
    oper_alta dbo.texto,
    fecha_alta dbo.texto,
    oper_ult_modif dbo.texto,
    fecha_ult_modif dbo.texto,
    oper_baja dbo.texto,
    fecha_baja dbo.texto,
    version dbo.texto DEFAULT (gen_random_uuid())::text NOT NULL,
    version_anterior dbo.texto,
    oper_anterior dbo.texto,
    fecha_anterior dbo.texto,
    tep_numero bigint GENERATED ALWAYS AS (dbo.numero_de_clave((tep_id)::bpchar)) STORED
);
ALTER TABLE dbo.tipo_equipo_parte OWNER TO postgres;
CREATE TABLE dbo.tipo_gasto (
    tg_cve_tipo_gasto dbo.clave NOT NULL,
    tg_descripcion dbo.texto NOT NULL,
    es_cve_estado dbo.clave DEFAULT 'AC'::bpchar NOT NULL
);
ALTER TABLE dbo.tipo_gasto OWNER TO postgres;
CREATE TABLE dbo.tipo_servicio (
    ts_cve_tipo_servicio dbo.clave NOT NULL,
    ts_descripcion dbo.texto NOT NULL,
    es_cve_estado dbo.clave DEFAULT 'AC'::bpchar NOT NULL
);
ALTER TABLE dbo.tipo_servicio OWNER TO postgres;
CREATE TABLE dbo.unidad (
    un_cve_unidad dbo.clave NOT NULL,
    un_descripcion dbo.texto NOT NULL,
    es_cve_estado dbo.clave DEFAULT 'AC'::bpchar NOT NULL
);
ALTER TABLE dbo.unidad OWNER TO postgres;
INSERT INTO dbo.bitacora OVERRIDING SYSTEM VALUE VALUES (1, 'Tipo_Equipo_Parte', 'N10002', 'Baja', 'jefa', '2025-12-31 23:59:59');
INSERT INTO dbo.catalogo_cambio VALUES ('Tipo_Equipo', 0);
INSERT INTO dbo.catalogo_cambio VALUES ('Producto', 0);
INSERT INTO dbo.catalogo_cambio VALUES ('Tipo_Gasto', 0);
INSERT INTO dbo.catalogo_cambio VALUES ('Tipo_Servicio', 0);
INSERT INTO dbo.catalogo_cambio VALUES ('Prioridad_Servicio', 0);
INSERT INTO dbo.catalogo_cambio VALUES ('Unidad', 0);
INSERT INTO dbo.consulta VALUES ('SUYA', 'SELECT ''a'' -- de la casa');
INSERT INTO dbo.consulta VALUES ('PLAN_MANTENIMIENTO', 'SELECT Plan_Mantenimiento.Pm_ID AS Folio,
       Plan_Mantenimiento.Ts_Cve_Tipo_Servicio AS Servicio,
       Tipo_Servicio.Ts_Descripcion AS Descripcion,
       CASE WHEN Plan_Mantenimiento.Pm_Frecuencia = 0 THEN '''' ELSE CAST(trim_scale(Plan_Mantenimiento.Pm_Frecuencia) AS text) END AS Dias,
       CASE WHEN Plan_Mantenimiento.Pm_Lectura = 0 THEN ''''
            ELSE trim_scale(Plan_Mantenimiento.Pm_Lectura) || '' '' || Plan_Mantenimiento.Pm_Unidad_Lectura END AS Lectura,
       Plan_Mantenimiento.Pm_Tiempo_Estimado AS Tiempo_Estimado,
       CASE WHEN Plan_Mantenimiento.Pm_Requiere_Paro = ''SI'' THEN ''Sí'' ELSE ''No'' END AS Requiere_Paro,
       Prioridad_Servicio.Ps_Descripcion AS Prioridad
  FROM Plan_Mantenimiento
  LEFT JOIN Tipo_Servicio
    ON Tipo_Servicio.Ts_Cve_Tipo_Servicio = Plan_Mantenimiento.Ts_Cve_Tipo_Servicio
  LEFT JOIN Prioridad_Servicio
    ON Prioridad_Servicio.Ps_Cve_Prioridad = Plan_Mantenimiento.Pm_Prioridad
 WHERE {PARAMETROS}
 ORDER BY Plan_Mantenimiento.Pm_ID');
INSERT INTO dbo.esquema VALUES (4);
INSERT INTO dbo.formato_clave VALUES ('FTO_TIPO_EQUIPO', '0000');
INSERT INTO dbo.formato_clave VALUES ('FTO_TIPO_EQUIPO_PARTE', '0000');
INSERT INTO dbo.formato_clave VALUES ('FTO_PRODUCTO', '0000000000');
INSERT INTO dbo.formato_clave VALUES ('FTO_TIPO_GASTO', '0000');
INSERT INTO dbo.formato_clave VALUES ('FTO_TIPO_SERVICIO', '0000');
INSERT INTO dbo.formato_clave VALUES ('FTO_PRIORIDAD_SERVICIO', '0000');
INSERT INTO dbo.formato_clave VALUES ('FTO_UNIDAD', '0000');
INSERT INTO dbo.formato_clave VALUES ('FTO_PLAN_MANTENIMIENTO', '000000');
INSERT INTO dbo.formato_clave VALUES ('FTO_PLAN_MANTENIMIENTO_DETALLE', '000000');
INSERT INTO dbo.formato_clave VALUES ('FTO_SUYO', '0000 ');
INSERT INTO dbo.plan_mantenimiento VALUES ('0003', '0002', '000001', '0001', 30, 0, '', 78.00, 0.5, '0003', 'NO', 0, 'AC', 'rdiaz', '2025-04-08 11:46:24', 'rdiaz', '2025-04-08 11:46:24', NULL, NULL, 'db4fca2c-115b-4aa5-a816-6ad1782f4d19', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.plan_mantenimiento VALUES ('0003', '0003', '000002', '0010', 0, 16000, 'HR', 3410.00, 7, '0002', 'SI', 6, 'AC', 'rdiaz', '2025-04-08 12:10:52', 'rdiaz', '2025-04-08 12:10:52', NULL, NULL, '1415c667-d514-4fbc-856d-1686fb9709a1', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.plan_mantenimiento VALUES ('0003', '0004', '000003', '0001', 730, 8000, 'HR', 1190.00, 4, '0003', 'SI', 4, 'AC', 'rdiaz', '2025-04-08 12:21:48', 'rdiaz', '2025-04-08 12:21:48', NULL, NULL, '0f6d32bb-4a7e-4771-a6f1-909715d84d1e', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.plan_mantenimiento VALUES ('0003', '0004', '000004', '0010', 0, 16000, 'HR', 5170.00, 5, '0002', 'SI', 5, 'AC', 'rdiaz', '2025-04-08 12:28:56', 'rdiaz', '2025-04-08 12:28:56', NULL, NULL, '6a4f0e99-d6d3-4e76-806b-92c5639a360d', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.plan_mantenimiento VALUES ('0003', '0005', '000005', '0001', 15, 0, '', 35.50, 0.25, '0002', 'NO', 0, 'AC', 'rdiaz', '2025-04-08 12:43:39', 'rdiaz', '2025-04-08 12:43:39', NULL, NULL, '5bc42f24-115c-4858-99cc-1e8e19b1196f', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.plan_mantenimiento VALUES ('0003', '0005', '000006', '0010', 0, 8000, 'HR', 9850.00, 5, '0001', 'SI', 4, 'AC', 'rdiaz', '2025-04-08 12:59:05', 'rdiaz', '2025-04-08 12:59:05', NULL, NULL, '2904fd7d-5b43-4b87-8e94-10b0a8fa1374', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.plan_mantenimiento VALUES ('0003', '0006', '000007', '0003', 180, 2000, 'HR', 210.00, 0.75, '0002', 'SI', 0.75, 'AC', 'rdiaz', '2025-04-08 13:17:41', 'rdiaz', '2025-04-08 13:17:41', NULL, NULL, '92be549d-2a46-4604-b4e8-76d8cbef2490', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.plan_mantenimiento VALUES ('0003', '0006', '000008', '0008', 30, 0, '', 125.00, 0.5, '0002', 'NO', 0, 'AC', 'rdiaz', '2025-04-08 13:42:07', 'rdiaz', '2025-04-08 13:42:07', NULL, NULL, '48e5708a-6f7a-4af4-b616-84515644e6ea', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.plan_mantenimiento VALUES ('0003', '0007', '000009', '0010', 0, 16000, 'HR', 5170.00, 6, '0002', 'SI', 6, 'AC', 'rdiaz', '2025-04-08 13:58:50', 'rdiaz', '2025-04-08 13:58:50', NULL, NULL, '51ba1beb-4f6f-4236-88f0-1d623abef33c', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.plan_mantenimiento VALUES ('0003', '0008', '000010', '0007', 180, 4000, 'HR', 860.00, 2, '0002', 'SI', 1.5, 'AC', 'rdiaz', '2025-04-08 15:05:44', 'rdiaz', '2025-04-08 15:05:44', NULL, NULL, '0945e779-a145-40c3-be3b-e661299f9994', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.plan_mantenimiento VALUES ('0003', '0008', '000011', '0010', 0, 8000, 'HR', 570.00, 1.5, '0003', 'SI', 1.5, 'AC', 'rdiaz', '2025-04-08 15:17:28', 'rdiaz', '2025-04-08 15:17:28', NULL, NULL, '3f6f9eb7-6443-4627-97c2-e11bc91391ff', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.plan_mantenimiento VALUES ('0003', '0009', '000012', '0002', 90, 2000, 'HR', 84.00, 0.5, '0003', 'NO', 0, 'AC', 'rdiaz', '2025-04-08 15:41:25', 'rdiaz', '2025-04-08 15:41:25', NULL, NULL, 'cee289d7-4535-4a4b-a512-dfe8b00bc957', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.plan_mantenimiento VALUES ('0003', '0009', '000013', '0009', 180, 0, '', 114.50, 0.5, '0003', 'NO', 0, 'AC', 'rdiaz', '2025-04-08 15:51:10', 'rdiaz', '2025-04-08 15:51:10', NULL, NULL, '7395d6ed-8733-451b-bfb6-4d4c02badeb9', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.plan_mantenimiento VALUES ('0003', '0009', '000014', '0011', 365, 0, '', 245.00, 1.5, '0003', 'SI', 1.5, 'AC', 'rdiaz', '2025-04-08 16:15:27', 'rdiaz', '2025-04-08 16:15:27', NULL, NULL, '90fd352b-8359-4582-b26a-530dfccedbf8', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.plan_mantenimiento VALUES ('0003', '0010', '000015', '0007', 365, 0, '', 495.00, 0.75, '0003', 'SI', 0.75, 'AC', 'rdiaz', '2025-04-08 16:23:57', 'rdiaz', '2025-04-08 16:23:57', NULL, NULL, '65ea1bf7-f3de-4b28-899b-beee57f7bee4', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.plan_mantenimiento VALUES ('0003', '0011', '000016', '0007', 365, 0, '', 425.00, 1, '0004', 'SI', 1, 'AC', 'rdiaz', '2025-04-08 16:45:02', 'rdiaz', '2025-04-08 16:45:02', NULL, NULL, 'd658478b-d06d-43d7-b5fb-ebdd87521014', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.plan_mantenimiento VALUES ('N1', '0001', '000001', '0001', 30, 0.3, 'HR ', 0.0000001, 1234567.891, '', 'NO', 0, 'AC', NULL, NULL, NULL, NULL, NULL, NULL, 'v-11', 'v-10', '', NULL, DEFAULT);
INSERT INTO dbo.plan_mantenimiento VALUES ('N1', '0000', '000002', 'NOHAY', 0, 0, '', 0, 0, '0001', 'NO', 0, 'AC', NULL, NULL, NULL, NULL, NULL, NULL, 'v-12', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0002', '000001', '000001', '01', '0000000001', 0.5, 'HR', 118.50, 59.25, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0002', '000001', '000002', '03', '0000002022', 1, 'PZA', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0003', '000002', '000003', '01', '0000000001', 7, 'HR', 118.50, 829.50, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0003', '000002', '000004', '01', '0000000006', 7, 'HR', 62.875, 440.125, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0003', '000002', '000005', '02', '0000001047', 1, 'PZA', 968.40, 968.40, '0001', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0003', '000002', '000006', '02', '0000001045', 1, 'PZA', 214.60, 214.60, '0001', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0003', '000002', '000007', '02', '0000001018', 1, 'KG', 38.75, 38.75, '0003', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0003', '000002', '000008', '03', '0000002010', 1, 'PZA', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0003', '000002', '000009', '03', '0000002015', 1, 'JGO', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0003', '000002', '000010', '03', '0000002021', 1, 'PZA', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0004', '000003', '000011', '01', '0000000001', 4, 'HR', 118.50, 474.00, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0004', '000003', '000012', '01', '0000000006', 4, 'HR', 62.875, 251.50, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0004', '000003', '000013', '02', '0000001045', 1, 'PZA', 214.60, 214.60, '0001', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0004', '000003', '000014', '03', '0000002016', 1, 'PZA', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0004', '000003', '000015', '03', '0000002001', 1, 'JGO', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0004', '000004', '000016', '01', '0000000001', 5, 'HR', 118.50, 592.50, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0004', '000004', '000017', '01', '0000000006', 5, 'HR', 62.875, 314.375, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0004', '000004', '000018', '02', '0000001046', 2, 'PZA', 1284.70, 2569.40, '0001', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0004', '000004', '000019', '02', '0000001045', 1, 'PZA', 214.60, 214.60, '0001', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0004', '000004', '000020', '02', '0000001019', 1, 'PZA', 184.30, 184.30, '0003', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0004', '000004', '000021', '03', '0000002016', 1, 'PZA', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0004', '000004', '000022', '03', '0000002001', 1, 'JGO', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0005', '000005', '000023', '01', '0000000001', 0.25, 'HR', 118.50, 29.625, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0005', '000005', '000024', '03', '0000002022', 1, 'PZA', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0005', '000006', '000025', '01', '0000000001', 5, 'HR', 118.50, 592.50, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0005', '000006', '000026', '01', '0000000006', 5, 'HR', 62.875, 314.375, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0005', '000006', '000027', '02', '0000001041', 1, 'PZA', 6310.50, 6310.50, '0005', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0005', '000006', '000028', '02', '0000001045', 1, 'PZA', 214.60, 214.60, '0001', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0005', '000006', '000029', '02', '0000001042', 1, 'JGO', 156.20, 156.20, '0001', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0005', '000006', '000030', '03', '0000002015', 1, 'JGO', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0005', '000006', '000031', '03', '0000002001', 1, 'JGO', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0005', '000006', '000032', '03', '0000002004', 1, 'PZA', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0006', '000007', '000033', '01', '0000000003', 0.75, 'HR', 86.3125, 64.734375, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0006', '000007', '000034', '02', '0000001006', 1.2, 'LT', 78.35, 94.02, '0002', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0006', '000007', '000035', '02', '0000001018', 0.25, 'KG', 38.75, 9.6875, '0003', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0006', '000007', '000036', '03', '0000002013', 1, 'PZA', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0006', '000008', '000037', '01', '0000000008', 0.5, 'HR', 185.60, 92.80, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0006', '000008', '000038', '03', '0000002009', 1, 'PZA', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0007', '000009', '000039', '01', '0000000001', 6, 'HR', 118.50, 711.00, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0007', '000009', '000040', '01', '0000000006', 6, 'HR', 62.875, 377.25, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0007', '000009', '000041', '02', '0000001035', 1, 'PZA', 586.90, 586.90, '0001', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0007', '000009', '000042', '02', '0000001036', 2, 'PZA', 1146.25, 2292.50, '0001', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0007', '000009', '000043', '02', '0000001043', 2, 'PZA', 88.45, 176.90, '0001', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0007', '000009', '000044', '02', '0000001006', 1.2, 'LT', 78.35, 94.02, '0002', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0007', '000009', '000045', '03', '0000002010', 1, 'PZA', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0007', '000009', '000046', '03', '0000002011', 1, 'PZA', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0007', '000009', '000047', '03', '0000002015', 1, 'JGO', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0008', '000010', '000048', '01', '0000000001', 2, 'HR', 118.50, 237.00, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0008', '000010', '000049', '01', '0000000006', 2, 'HR', 62.875, 125.75, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0008', '000010', '000050', '02', '0000001078', 1, 'JGO', 342.90, 342.90, '0003', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0008', '000010', '000051', '03', '0000002014', 1, 'PZA', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0008', '000010', '000052', '03', '0000002001', 1, 'JGO', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0008', '000011', '000053', '01', '0000000001', 1.5, 'HR', 118.50, 177.75, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0008', '000011', '000054', '02', '0000001048', 1, 'PZA', 268.50, 268.50, '0001', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0008', '000011', '000055', '03', '0000002014', 1, 'PZA', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0008', '000011', '000056', '03', '0000002001', 1, 'JGO', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0009', '000012', '000057', '01', '0000000003', 0.5, 'HR', 86.3125, 43.15625, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0009', '000012', '000058', '02', '0000001008', 0.08, 'KG', 236.825, 18.946, '0002', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0009', '000012', '000059', '03', '0000002012', 1, 'PZA', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0009', '000013', '000060', '01', '0000000008', 0.5, 'HR', 185.60, 92.80, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0009', '000013', '000061', '03', '0000002008', 1, 'PZA', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0009', '000014', '000062', '01', '0000000002', 1.5, 'HR', 124.75, 187.125, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0009', '000014', '000063', '03', '0000002007', 1, 'PZA', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0009', '000014', '000064', '03', '0000002006', 1, 'PZA', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0010', '000015', '000065', '01', '0000000002', 0.75, 'HR', 124.75, 93.5625, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0010', '000015', '000066', '02', '0000001063', 3, 'PZA', 46.20, 138.60, '0004', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0010', '000015', '000067', '02', '0000001017', 1, 'PZA', 128.60, 128.60, '0003', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0010', '000015', '000068', '03', '0000002004', 1, 'PZA', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0010', '000015', '000069', '03', '0000002005', 1, 'PZA', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0011', '000016', '000070', '01', '0000000001', 1, 'HR', 118.50, 118.50, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0011', '000016', '000071', '01', '0000000006', 0.5, 'HR', 62.875, 31.4375, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0011', '000016', '000072', '02', '0000001019', 1, 'PZA', 184.30, 184.30, '0003', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0011', '000016', '000073', '03', '0000002004', 1, 'PZA', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('0003', '0011', '000016', '000074', '03', '0000002017', 1, 'PZA', 0, 0, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('N1', '0001', '000001', '000001', '01', '0000000001', 0.3, 'HR', 118.5, 35.55, '', DEFAULT);
INSERT INTO dbo.plan_mantenimiento_detalle VALUES ('N1', '9999', '000009', '000001', '02', '0000001001', 1, 'LT', 68.425, 68.425, '0002', DEFAULT);
INSERT INTO dbo.plan_reserva VALUES ('0001');
INSERT INTO dbo.plan_reserva VALUES ('0002');
INSERT INTO dbo.plan_reserva VALUES ('0003');
INSERT INTO dbo.plan_reserva VALUES ('0004');
INSERT INTO dbo.plan_reserva VALUES ('0005');
INSERT INTO dbo.plan_reserva VALUES ('0006');
INSERT INTO dbo.plan_reserva VALUES ('0007');
INSERT INTO dbo.plan_reserva VALUES ('0008');
INSERT INTO dbo.plan_reserva VALUES ('0009');
INSERT INTO dbo.plan_reserva VALUES ('N1 ');
INSERT INTO dbo.plan_reserva VALUES ('N2');
INSERT INTO dbo.prioridad_servicio VALUES ('0001', 'URGENTE', 'AC');
INSERT INTO dbo.prioridad_servicio VALUES ('0002', 'ALTA', 'AC');
INSERT INTO dbo.prioridad_servicio VALUES ('0003', 'MEDIA', 'AC');
INSERT INTO dbo.prioridad_servicio VALUES ('0004', 'BAJA', 'AC');
INSERT INTO dbo.producto VALUES ('0000000001', 'MECÁNICO INDUSTRIAL', 'MO', 'HR', 118.50, 'AC');
INSERT INTO dbo.producto VALUES ('0000000002', 'ELECTRICISTA INDUSTRIAL', 'MO', 'HR', 124.75, 'AC');
INSERT INTO dbo.producto VALUES ('0000000003', 'LUBRICADOR', 'MO', 'HR', 86.3125, 'AC');
INSERT INTO dbo.producto VALUES ('0000000006', 'AYUDANTE GENERAL', 'MO', 'HR', 62.875, 'AC');
INSERT INTO dbo.producto VALUES ('0000000008', 'TÉCNICO EN ANÁLISIS PREDICTIVO', 'MO', 'HR', 185.60, 'AC');
INSERT INTO dbo.producto VALUES ('0000001006', 'ACEITE PARA TURBINA ISO VG 68', 'RE', 'LT', 78.35, 'AC');
INSERT INTO dbo.producto VALUES ('0000001008', 'GRASA DE POLIUREA PARA MOTOR', 'RE', 'KG', 236.825, 'AC');
INSERT INTO dbo.producto VALUES ('0000001017', 'LIMPIADOR DE CONTACTOS EN AEROSOL', 'RE', 'PZA', 128.60, 'AC');
INSERT INTO dbo.producto VALUES ('0000001018', 'TRAPO INDUSTRIAL', 'RE', 'KG', 38.75, 'AC');
INSERT INTO dbo.producto VALUES ('0000001019', 'FIJADOR DE ROSCAS', 'RE', 'PZA', 184.30, 'AC');
INSERT INTO dbo.producto VALUES ('0000001035', 'RODAMIENTO 6310 C3', 'RE', 'PZA', 586.90, 'AC');
INSERT INTO dbo.producto VALUES ('0000001036', 'RODAMIENTO DE CONTACTO ANGULAR 7309', 'RE', 'PZA', 1146.25, 'AC');
INSERT INTO dbo.producto VALUES ('0000001041', 'SELLO MECÁNICO DE CARTUCHO 45 MM', 'RE', 'PZA', 6485.00, 'AC');
INSERT INTO dbo.producto VALUES ('0000001042', 'ANILLOS O DE NITRILO', 'RE', 'JGO', 156.20, 'AC');
INSERT INTO dbo.producto VALUES ('0000001043', 'RETÉN DE LABIO 50 X 72 X 8', 'RE', 'PZA', 88.45, 'AC');
INSERT INTO dbo.producto VALUES ('0000001045', 'EMPAQUE DE CARCASA DE BOMBA', 'RE', 'PZA', 214.60, 'AC');
INSERT INTO dbo.producto VALUES ('0000001046', 'ANILLO DE DESGASTE DE BRONCE', 'RE', 'PZA', 1284.70, 'AC');
INSERT INTO dbo.producto VALUES ('0000001047', 'CAMISA DE FLECHA DE ACERO INOXIDABLE', 'RE', 'PZA', 968.40, 'AC');
INSERT INTO dbo.producto VALUES ('0000001048', 'INSERTO ELÁSTICO PARA COPLE', 'RE', 'PZA', 268.50, 'AC');
INSERT INTO dbo.producto VALUES ('0000001063', 'TERMINAL DE COBRE CALIBRE 2/0', 'RE', 'PZA', 46.20, 'AC');
INSERT INTO dbo.producto VALUES ('0000001078', 'LAINA DE ACERO INOXIDABLE', 'RE', 'JGO', 342.90, 'AC');
INSERT INTO dbo.producto VALUES ('0000002001', 'JUEGO DE LLAVES COMBINADAS', 'HE', 'JGO', 1846.50, 'AC');
INSERT INTO dbo.producto VALUES ('0000002004', 'TORQUÍMETRO DE 20 A 200 NM', 'HE', 'PZA', 3248.60, 'AC');
INSERT INTO dbo.producto VALUES ('0000002005', 'MULTÍMETRO DIGITAL', 'HE', 'PZA', 2186.40, 'AC');
INSERT INTO dbo.producto VALUES ('0000002006', 'PINZA AMPERIMÉTRICA', 'HE', 'PZA', 3465.25, 'AC');
INSERT INTO dbo.producto VALUES ('0000002007', 'PROBADOR DE AISLAMIENTO 1000 V', 'HE', 'PZA', 9874.50, 'AC');
INSERT INTO dbo.producto VALUES ('0000002008', 'CÁMARA TERMOGRÁFICA', 'HE', 'PZA', 38650.00, 'AC');
INSERT INTO dbo.producto VALUES ('0000002009', 'ANALIZADOR DE VIBRACIONES', 'HE', 'PZA', 86420.00, 'AC');
INSERT INTO dbo.producto VALUES ('0000002010', 'EXTRACTOR DE BALEROS', 'HE', 'PZA', 2748.90, 'AC');
INSERT INTO dbo.producto VALUES ('0000002011', 'CALENTADOR DE RODAMIENTOS', 'HE', 'PZA', 21360.00, 'AC');
INSERT INTO dbo.producto VALUES ('0000002012', 'PISTOLA ENGRASADORA', 'HE', 'PZA', 864.3125, 'AC');
INSERT INTO dbo.producto VALUES ('0000002013', 'BOMBA DE TRASIEGO DE ACEITE', 'HE', 'PZA', 4286.70, 'AC');
INSERT INTO dbo.producto VALUES ('0000002014', 'ALINEADOR LÁSER', 'HE', 'PZA', 46840.00, 'AC');
INSERT INTO dbo.producto VALUES ('0000002015', 'INDICADOR DE CARÁTULA CON BASE', 'HE', 'JGO', 1968.45, 'AC');
INSERT INTO dbo.producto VALUES ('0000002016', 'CALIBRADOR PIE DE REY', 'HE', 'PZA', 1248.00, 'AC');
INSERT INTO dbo.producto VALUES ('0000002017', 'NIVEL DE PRECISIÓN', 'HE', 'PZA', 3864.20, 'AC');
INSERT INTO dbo.producto VALUES ('0000002021', 'POLIPASTO DE CADENA DE 2 TONELADAS', 'HE', 'PZA', 7648.00, 'AC');
INSERT INTO dbo.producto VALUES ('0000002022', 'LÁMPARA DE INSPECCIÓN', 'HE', 'PZA', 486.90, 'AC');
INSERT INTO dbo.registro_cambio OVERRIDING SYSTEM VALUE VALUES (1, 'Plan_Mantenimiento', 'N1', 'O-Brien', '2026-03-14 09:26:53');
INSERT INTO dbo.registro_cambio OVERRIDING SYSTEM VALUE VALUES (2, 'Tipo_Equipo_Parte', 'N1', 'mlopez', '');
INSERT INTO dbo.tipo_equipo VALUES ('0001', 'MONTACARGAS ELÉCTRICO', 'AC');
INSERT INTO dbo.tipo_equipo VALUES ('0002', 'COMPRESOR DE TORNILLO', 'AC');
INSERT INTO dbo.tipo_equipo VALUES ('0003', 'BOMBA CENTRÍFUGA', 'AC');
INSERT INTO dbo.tipo_equipo VALUES ('0004', 'TORNO CNC', 'AC');
INSERT INTO dbo.tipo_equipo VALUES ('0005', 'BANDA TRANSPORTADORA', 'AC');
INSERT INTO dbo.tipo_equipo VALUES ('0006', 'CALDERA PIROTUBULAR', 'AC');
INSERT INTO dbo.tipo_equipo VALUES ('0007', 'CHILLER ENFRIADO POR AIRE', 'AC');
INSERT INTO dbo.tipo_equipo VALUES ('0008', 'MONTACARGAS DE COMBUSTIÓN INTERNA', 'CA');
INSERT INTO dbo.tipo_equipo VALUES ('0009', 'GRÚA VIAJERA', 'AC');
INSERT INTO dbo.tipo_equipo VALUES ('N1 ', 'PRENSA «Ñandú» 3/4"', 'AC');
INSERT INTO dbo.tipo_equipo VALUES ('N2', '', 'CA');
INSERT INTO dbo.tipo_equipo_parte VALUES ('0003', '0001', '0000', 'CUERPO DE BOMBA', 'AC', 'rdiaz', '2025-04-07 10:20:37', 'rdiaz', '2025-04-07 10:20:37', NULL, NULL, '5417a3f9-32f0-446e-a521-ea73a44bc90e', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.tipo_equipo_parte VALUES ('0003', '0002', '0001', 'CARCASA', 'AC', 'rdiaz', '2025-04-07 10:28:35', 'rdiaz', '2025-04-07 10:28:35', NULL, NULL, 'ad86a817-7734-4e20-923e-1bce2e06d5cf', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.tipo_equipo_parte VALUES ('0003', '0003', '0001', 'IMPULSOR', 'AC', 'rdiaz', '2025-04-07 10:32:13', 'psoto', '2025-09-26 12:53:13', NULL, NULL, '0a5a407a-98ee-4bab-98c3-c220205a270a', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.tipo_equipo_parte VALUES ('0003', '0004', '0003', 'ANILLOS DE DESGASTE', 'AC', 'rdiaz', '2025-04-07 10:37:25', 'rdiaz', '2025-04-07 10:37:25', NULL, NULL, '743b699a-4908-4e45-b43c-6d5b022a34cc', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.tipo_equipo_parte VALUES ('0003', '0005', '0001', 'SELLO MECÁNICO', 'AC', 'rdiaz', '2025-04-07 10:46:59', 'rdiaz', '2025-04-07 10:46:59', NULL, NULL, '7b2ecf8a-2756-4b1f-917d-3fcb1b74f8ea', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.tipo_equipo_parte VALUES ('0003', '0006', '0000', 'CAJA DE RODAMIENTOS', 'AC', 'rdiaz', '2025-04-07 10:56:24', 'rdiaz', '2025-04-07 10:56:24', NULL, NULL, 'b06b82f1-78a8-401b-abfe-31262640f870', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.tipo_equipo_parte VALUES ('0003', '0007', '0006', 'RODAMIENTOS DE FLECHA', 'AC', 'rdiaz', '2025-04-07 11:00:38', 'rdiaz', '2025-04-07 11:00:38', NULL, NULL, '21d16c9d-c784-420e-908e-85584efde870', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.tipo_equipo_parte VALUES ('0003', '0008', '0000', 'COPLE FLEXIBLE', 'AC', 'rdiaz', '2025-04-07 11:09:25', 'mlopez', '2025-08-06 15:23:25', NULL, NULL, '30f6f954-d67c-4619-ac1f-3b45b8fd41a2', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.tipo_equipo_parte VALUES ('0003', '0009', '0000', 'MOTOR ELÉCTRICO', 'AC', 'rdiaz', '2025-04-07 11:11:44', 'rdiaz', '2025-04-07 11:11:44', NULL, NULL, '33e79a56-814a-454b-865c-de8d7a8af82e', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.tipo_equipo_parte VALUES ('0003', '0010', '0009', 'CAJA DE CONEXIONES', 'AC', 'rdiaz', '2025-04-07 11:18:14', 'rdiaz', '2025-04-07 11:18:14', NULL, NULL, '0000b656-428f-45f6-963b-34c29eca7197', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.tipo_equipo_parte VALUES ('0003', '0011', '0000', 'BASE Y ANCLAJES', 'AC', 'rdiaz', '2025-04-07 11:26:59', 'rdiaz', '2025-04-07 11:26:59', NULL, NULL, 'b2ac4c17-88bd-455b-a197-ef89bd91226b', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.tipo_equipo_parte VALUES ('N1', '0001', '0000', 'O''Higgins; "doble" \n ñ€ 𝛑', 'AC', '', NULL, 'mlopez', '2026-03-14 09:26:53', NULL, '', 'v-01', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.tipo_equipo_parte VALUES ('N1', '0002 ', '0001  ', '  con blancos  ', 'BA', NULL, NULL, NULL, NULL, 'jefa', '2025-12-31 23:59:59', 'v-02', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.tipo_equipo_parte VALUES ('N1', '0003', '7777', 'HUÉRFANA', 'AC', NULL, NULL, NULL, NULL, NULL, NULL, 'v-03', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.tipo_equipo_parte VALUES ('N1', '0004', '0005', 'ANILLO A', 'AC', NULL, NULL, NULL, NULL, NULL, NULL, 'v-04', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.tipo_equipo_parte VALUES ('N1', '0005', '0004', 'ANILLO B', 'AC', NULL, NULL, NULL, NULL, NULL, NULL, 'v-05', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.tipo_equipo_parte VALUES ('N1', 'K-9', '0000', '', 'AC', NULL, NULL, NULL, NULL, NULL, NULL, 'v-06', NULL, NULL, NULL, DEFAULT);
INSERT INTO dbo.tipo_gasto VALUES ('0001', 'REFACCIONES DE MANTENIMIENTO', 'AC');
INSERT INTO dbo.tipo_gasto VALUES ('0002', 'LUBRICANTES Y GRASAS', 'AC');
INSERT INTO dbo.tipo_gasto VALUES ('0003', 'CONSUMIBLES', 'AC');
INSERT INTO dbo.tipo_gasto VALUES ('0004', 'MATERIAL ELÉCTRICO', 'AC');
INSERT INTO dbo.tipo_gasto VALUES ('0005', 'COMPONENTES MAYORES', 'AC');
INSERT INTO dbo.tipo_gasto VALUES ('0006', 'SEGURIDAD INDUSTRIAL', 'AC');
INSERT INTO dbo.tipo_gasto VALUES ('0007', 'REFACCIONES DE IMPORTACIÓN', 'BA');
INSERT INTO dbo.tipo_gasto VALUES ('0008', 'QUÍMICOS Y REFRIGERANTES', 'AC');
INSERT INTO dbo.tipo_servicio VALUES ('0001', 'INSPECCIÓN VISUAL', 'AC');
INSERT INTO dbo.tipo_servicio VALUES ('0002', 'LUBRICACIÓN', 'AC');
INSERT INTO dbo.tipo_servicio VALUES ('0003', 'CAMBIO DE ACEITE', 'AC');
INSERT INTO dbo.tipo_servicio VALUES ('0004', 'CAMBIO DE FILTROS', 'AC');
INSERT INTO dbo.tipo_servicio VALUES ('0005', 'CALIBRACIÓN', 'AC');
INSERT INTO dbo.tipo_servicio VALUES ('0006', 'LIMPIEZA', 'AC');
INSERT INTO dbo.tipo_servicio VALUES ('0007', 'AJUSTE Y REAPRIETE', 'AC');
INSERT INTO dbo.tipo_servicio VALUES ('0008', 'ANÁLISIS DE VIBRACIONES', 'AC');
INSERT INTO dbo.tipo_servicio VALUES ('0009', 'TERMOGRAFÍA', 'AC');
INSERT INTO dbo.tipo_servicio VALUES ('0010', 'CAMBIO DE PIEZAS DE DESGASTE', 'AC');
INSERT INTO dbo.tipo_servicio VALUES ('0011', 'PRUEBA DE FUNCIONAMIENTO', 'AC');
INSERT INTO dbo.tipo_servicio VALUES ('0012', 'PINTURA GENERAL', 'BA');
INSERT INTO dbo.unidad VALUES ('HR', 'HORAS', 'AC');
INSERT INTO dbo.unidad VALUES ('KM', 'KILÓMETROS', 'AC');
INSERT INTO dbo.unidad VALUES ('CIC', 'CICLOS', 'AC');
INSERT INTO dbo.unidad VALUES ('PZA', 'PIEZAS', 'AC');
INSERT INTO dbo.unidad VALUES ('JGO', 'JUEGOS', 'AC');
INSERT INTO dbo.unidad VALUES ('PAR', 'PARES', 'AC');
INSERT INTO dbo.unidad VALUES ('LT', 'LITROS', 'AC');
INSERT INTO dbo.unidad VALUES ('GL', 'GALONES', 'AC');
INSERT INTO dbo.unidad VALUES ('KG', 'KILOGRAMOS', 'AC');
INSERT INTO dbo.unidad VALUES ('MT', 'METROS', 'AC');
SELECT pg_catalog.setval('dbo.bitacora_bi_id_seq', 1, true);
SELECT pg_catalog.setval('dbo.registro_cambio_rc_id_seq', 2, true);
ALTER TABLE ONLY dbo.bitacora
    ADD CONSTRAINT bitacora_pkey PRIMARY KEY (bi_id);
ALTER TABLE ONLY dbo.catalogo_cambio
    ADD CONSTRAINT catalogo_cambio_pkey PRIMARY KEY (ca_tabla);
ALTER TABLE ONLY dbo.consulta
    ADD CONSTRAINT consulta_pkey PRIMARY KEY (co_nombre);
ALTER TABLE ONLY dbo.esquema
    ADD CONSTRAINT esquema_pkey PRIMARY KEY (es_version);
ALTER TABLE ONLY dbo.formato_clave
    ADD CONSTRAINT formato_clave_pkey PRIMARY KEY (fc_codigo);
ALTER TABLE ONLY dbo.plan_mantenimiento_detalle
    ADD CONSTRAINT plan_mantenimiento_detalle_pkey PRIMARY KEY (te_cve_tipo_equipo, tep_id, pm_id, pmd_id);
ALTER TABLE ONLY dbo.plan_mantenimiento
    ADD CONSTRAINT plan_mantenimiento_pkey PRIMARY KEY (te_cve_tipo_equipo, tep_id, pm_id);
ALTER TABLE ONLY dbo.plan_reserva
    ADD CONSTRAINT plan_reserva_pkey PRIMARY KEY (te_cve_tipo_equipo);
ALTER TABLE ONLY dbo.prioridad_servicio
    ADD CONSTRAINT prioridad_servicio_pkey PRIMARY KEY (ps_cve_prioridad);
ALTER TABLE ONLY dbo.producto
    ADD CONSTRAINT producto_pkey PRIMARY KEY (pr_cve_producto);
ALTER TABLE ONLY dbo.registro_cambio
    ADD CONSTRAINT registro_cambio_pkey PRIMARY KEY (rc_id);
ALTER TABLE ONLY dbo.tipo_equipo_parte
    ADD CONSTRAINT tipo_equipo_parte_pkey PRIMARY KEY (te_cve_tipo_equipo, tep_id);
ALTER TABLE ONLY dbo.tipo_equipo
    ADD CONSTRAINT tipo_equipo_pkey PRIMARY KEY (te_cve_tipo_equipo);
ALTER TABLE ONLY dbo.tipo_gasto
    ADD CONSTRAINT tipo_gasto_pkey PRIMARY KEY (tg_cve_tipo_gasto);
ALTER TABLE ONLY dbo.tipo_servicio
    ADD CONSTRAINT tipo_servicio_pkey PRIMARY KEY (ts_cve_tipo_servicio);
ALTER TABLE ONLY dbo.unidad
    ADD CONSTRAINT unidad_pkey PRIMARY KEY (un_cve_unidad);
CREATE INDEX bi_por_clave ON dbo.bitacora USING btree (bi_tabla, bi_clave, bi_id);
CREATE UNIQUE INDEX pm_por_folio ON dbo.plan_mantenimiento USING btree (te_cve_tipo_equipo, pm_id);
CREATE INDEX pm_por_numero ON dbo.plan_mantenimiento USING btree (te_cve_tipo_equipo, pm_numero);
CREATE INDEX pmd_por_numero ON dbo.plan_mantenimiento_detalle USING btree (te_cve_tipo_equipo, pmd_numero);
CREATE INDEX pmd_por_producto ON dbo.plan_mantenimiento_detalle USING btree (pr_cve_producto);
CREATE INDEX pmd_por_servicio ON dbo.plan_mantenimiento_detalle USING btree (te_cve_tipo_equipo, pm_id, pmd_numero);
CREATE INDEX rc_por_clave ON dbo.registro_cambio USING btree (rc_tabla, rc_clave, rc_id);
CREATE INDEX tep_por_numero ON dbo.tipo_equipo_parte USING btree (te_cve_tipo_equipo, tep_numero);
CREATE INDEX tep_por_padre ON dbo.tipo_equipo_parte USING btree (te_cve_tipo_equipo, tep_padre, tep_id);
CREATE TRIGGER bi_firma BEFORE INSERT ON dbo.bitacora FOR EACH ROW EXECUTE FUNCTION dbo.firmar_registro();
CREATE TRIGGER pm_programa BEFORE INSERT OR DELETE OR UPDATE ON dbo.plan_mantenimiento FOR EACH STATEMENT WHEN ((current_setting('quorvex.esquema'::text, true) IS DISTINCT FROM '4'::text)) EXECUTE FUNCTION dbo.rechazar_programa();
CREATE TRIGGER pm_version BEFORE UPDATE ON dbo.plan_mantenimiento FOR EACH ROW EXECUTE FUNCTION dbo.sellar_version();
CREATE TRIGGER pmd_programa BEFORE INSERT OR DELETE OR UPDATE ON dbo.plan_mantenimiento_detalle FOR EACH STATEMENT WHEN ((current_setting('quorvex.esquema'::text, true) IS DISTINCT FROM '4'::text)) EXECUTE FUNCTION dbo.rechazar_programa();
CREATE TRIGGER rc_firma BEFORE INSERT ON dbo.registro_cambio FOR EACH ROW EXECUTE FUNCTION dbo.firmar_registro();
CREATE TRIGGER te_reserva AFTER INSERT OR UPDATE OF te_cve_tipo_equipo ON dbo.tipo_equipo FOR EACH ROW EXECUTE FUNCTION dbo.reservar_plan_nuevo();
CREATE TRIGGER tep_programa BEFORE INSERT OR DELETE OR UPDATE ON dbo.tipo_equipo_parte FOR EACH STATEMENT WHEN ((current_setting('quorvex.esquema'::text, true) IS DISTINCT FROM '4'::text)) EXECUTE FUNCTION dbo.rechazar_programa();
CREATE TRIGGER tep_raiz BEFORE INSERT OR UPDATE OF tep_id ON dbo.tipo_equipo_parte FOR EACH ROW WHEN (((new.tep_id)::bpchar = '0000'::bpchar)) EXECUTE FUNCTION dbo.proteger_raiz();
CREATE TRIGGER tep_version BEFORE UPDATE ON dbo.tipo_equipo_parte FOR EACH ROW EXECUTE FUNCTION dbo.sellar_version();
GRANT USAGE ON SCHEMA dbo TO quorvex_planificadores;
GRANT USAGE ON SCHEMA dbo TO quorvex_lectores;
GRANT USAGE ON SCHEMA dbo TO quorvex_catalogos;
REVOKE ALL ON FUNCTION dbo.firmar_registro() FROM PUBLIC;
REVOKE ALL ON FUNCTION dbo.get_ruta_parte_tipo_equipo(tipo character, parte character) FROM PUBLIC;
GRANT ALL ON FUNCTION dbo.get_ruta_parte_tipo_equipo(tipo character, parte character) TO quorvex_planificadores;
GRANT ALL ON FUNCTION dbo.get_ruta_parte_tipo_equipo(tipo character, parte character) TO quorvex_catalogos;
GRANT ALL ON FUNCTION dbo.get_ruta_parte_tipo_equipo(tipo character, parte character) TO quorvex_lectores;
REVOKE ALL ON FUNCTION dbo.numero_de_clave(clave character) FROM PUBLIC;
GRANT ALL ON FUNCTION dbo.numero_de_clave(clave character) TO quorvex_planificadores;
GRANT ALL ON FUNCTION dbo.numero_de_clave(clave character) TO quorvex_catalogos;
GRANT ALL ON FUNCTION dbo.numero_de_clave(clave character) TO quorvex_lectores;
REVOKE ALL ON FUNCTION dbo.proteger_raiz() FROM PUBLIC;
REVOKE ALL ON FUNCTION dbo.rechazar_programa() FROM PUBLIC;
REVOKE ALL ON FUNCTION dbo.reservar_plan(tipo character, esperar boolean) FROM PUBLIC;
GRANT ALL ON FUNCTION dbo.reservar_plan(tipo character, esperar boolean) TO quorvex_planificadores;
GRANT ALL ON FUNCTION dbo.reservar_plan(tipo character, esperar boolean) TO quorvex_catalogos;
REVOKE ALL ON FUNCTION dbo.reservar_plan_nuevo() FROM PUBLIC;
REVOKE ALL ON FUNCTION dbo.sellar_version() FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.lo_creat(integer) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.lo_create(oid) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.lo_from_bytea(oid, bytea) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.lo_put(oid, bigint, bytea) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.lowrite(integer, bytea) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.pg_advisory_lock(bigint) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.pg_advisory_lock(integer, integer) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.pg_advisory_lock_shared(bigint) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.pg_advisory_lock_shared(integer, integer) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.pg_advisory_unlock(bigint) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.pg_advisory_unlock(integer, integer) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.pg_advisory_unlock_all() FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.pg_advisory_unlock_shared(bigint) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.pg_advisory_unlock_shared(integer, integer) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.pg_advisory_xact_lock(bigint) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.pg_advisory_xact_lock(integer, integer) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.pg_advisory_xact_lock_shared(bigint) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.pg_advisory_xact_lock_shared(integer, integer) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.pg_try_advisory_lock(bigint) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.pg_try_advisory_lock(integer, integer) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.pg_try_advisory_lock_shared(bigint) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.pg_try_advisory_lock_shared(integer, integer) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.pg_try_advisory_xact_lock(bigint) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.pg_try_advisory_xact_lock(integer, integer) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.pg_try_advisory_xact_lock_shared(bigint) FROM PUBLIC;
REVOKE ALL ON FUNCTION pg_catalog.pg_try_advisory_xact_lock_shared(integer, integer) FROM PUBLIC;
GRANT INSERT(bi_tabla) ON TABLE dbo.bitacora TO quorvex_planificadores;
GRANT INSERT(bi_tabla) ON TABLE dbo.bitacora TO quorvex_catalogos;
GRANT INSERT(bi_clave) ON TABLE dbo.bitacora TO quorvex_planificadores;
GRANT INSERT(bi_clave) ON TABLE dbo.bitacora TO quorvex_catalogos;
GRANT INSERT(bi_accion) ON TABLE dbo.bitacora TO quorvex_planificadores;
GRANT INSERT(bi_accion) ON TABLE dbo.bitacora TO quorvex_catalogos;
GRANT INSERT(bi_oper) ON TABLE dbo.bitacora TO quorvex_planificadores;
GRANT INSERT(bi_oper) ON TABLE dbo.bitacora TO quorvex_catalogos;
GRANT INSERT(bi_fecha) ON TABLE dbo.bitacora TO quorvex_planificadores;
GRANT INSERT(bi_fecha) ON TABLE dbo.bitacora TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.catalogo_cambio TO quorvex_planificadores;
GRANT SELECT ON TABLE dbo.catalogo_cambio TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.catalogo_cambio TO quorvex_lectores;
GRANT UPDATE(ca_cambios) ON TABLE dbo.catalogo_cambio TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.consulta TO quorvex_planificadores;
GRANT SELECT ON TABLE dbo.consulta TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.consulta TO quorvex_lectores;
GRANT SELECT ON TABLE dbo.derecho TO quorvex_planificadores;
GRANT SELECT ON TABLE dbo.derecho TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.derecho TO quorvex_lectores;
GRANT SELECT ON TABLE dbo.esquema TO quorvex_planificadores;
GRANT SELECT ON TABLE dbo.esquema TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.esquema TO quorvex_lectores;
GRANT SELECT ON TABLE dbo.formato_clave TO quorvex_planificadores;
GRANT SELECT ON TABLE dbo.formato_clave TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.formato_clave TO quorvex_lectores;
GRANT SELECT,INSERT,DELETE,UPDATE ON TABLE dbo.plan_mantenimiento TO quorvex_planificadores;
GRANT SELECT ON TABLE dbo.plan_mantenimiento TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.plan_mantenimiento TO quorvex_lectores;
GRANT SELECT,INSERT,DELETE,UPDATE ON TABLE dbo.plan_mantenimiento_detalle TO quorvex_planificadores;
GRANT SELECT ON TABLE dbo.plan_mantenimiento_detalle TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.plan_mantenimiento_detalle TO quorvex_lectores;
GRANT SELECT ON TABLE dbo.plan_reserva TO quorvex_planificadores;
GRANT SELECT ON TABLE dbo.plan_reserva TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.prioridad_servicio TO quorvex_planificadores;
GRANT SELECT,INSERT,DELETE ON TABLE dbo.prioridad_servicio TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.prioridad_servicio TO quorvex_lectores;
GRANT UPDATE(ps_descripcion) ON TABLE dbo.prioridad_servicio TO quorvex_catalogos;
GRANT UPDATE(es_cve_estado) ON TABLE dbo.prioridad_servicio TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.producto TO quorvex_planificadores;
GRANT SELECT,INSERT,DELETE ON TABLE dbo.producto TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.producto TO quorvex_lectores;
GRANT UPDATE(pr_descripcion) ON TABLE dbo.producto TO quorvex_catalogos;
GRANT UPDATE(pr_clase) ON TABLE dbo.producto TO quorvex_catalogos;
GRANT UPDATE(pr_unidad_control_1) ON TABLE dbo.producto TO quorvex_catalogos;
GRANT UPDATE(pr_costo_estandar) ON TABLE dbo.producto TO quorvex_catalogos;
GRANT UPDATE(es_cve_estado) ON TABLE dbo.producto TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.registro_cambio TO quorvex_catalogos;
GRANT INSERT(rc_tabla) ON TABLE dbo.registro_cambio TO quorvex_planificadores;
GRANT INSERT(rc_tabla) ON TABLE dbo.registro_cambio TO quorvex_catalogos;
GRANT INSERT(rc_clave) ON TABLE dbo.registro_cambio TO quorvex_planificadores;
GRANT INSERT(rc_clave) ON TABLE dbo.registro_cambio TO quorvex_catalogos;
GRANT INSERT(rc_oper) ON TABLE dbo.registro_cambio TO quorvex_planificadores;
GRANT INSERT(rc_oper) ON TABLE dbo.registro_cambio TO quorvex_catalogos;
GRANT INSERT(rc_fecha) ON TABLE dbo.registro_cambio TO quorvex_planificadores;
GRANT INSERT(rc_fecha) ON TABLE dbo.registro_cambio TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.tipo_equipo TO quorvex_planificadores;
GRANT SELECT,INSERT,DELETE ON TABLE dbo.tipo_equipo TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.tipo_equipo TO quorvex_lectores;
GRANT UPDATE(te_descripcion) ON TABLE dbo.tipo_equipo TO quorvex_catalogos;
GRANT UPDATE(es_cve_estado) ON TABLE dbo.tipo_equipo TO quorvex_catalogos;
GRANT SELECT,INSERT,DELETE,UPDATE ON TABLE dbo.tipo_equipo_parte TO quorvex_planificadores;
GRANT SELECT ON TABLE dbo.tipo_equipo_parte TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.tipo_equipo_parte TO quorvex_lectores;
GRANT SELECT ON TABLE dbo.tipo_gasto TO quorvex_planificadores;
GRANT SELECT,INSERT,DELETE ON TABLE dbo.tipo_gasto TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.tipo_gasto TO quorvex_lectores;
GRANT UPDATE(tg_descripcion) ON TABLE dbo.tipo_gasto TO quorvex_catalogos;
GRANT UPDATE(es_cve_estado) ON TABLE dbo.tipo_gasto TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.tipo_servicio TO quorvex_planificadores;
GRANT SELECT,INSERT,DELETE ON TABLE dbo.tipo_servicio TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.tipo_servicio TO quorvex_lectores;
GRANT UPDATE(ts_descripcion) ON TABLE dbo.tipo_servicio TO quorvex_catalogos;
GRANT UPDATE(es_cve_estado) ON TABLE dbo.tipo_servicio TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.unidad TO quorvex_planificadores;
GRANT SELECT,INSERT,DELETE ON TABLE dbo.unidad TO quorvex_catalogos;
GRANT SELECT ON TABLE dbo.unidad TO quorvex_lectores;
GRANT UPDATE(un_descripcion) ON TABLE dbo.unidad TO quorvex_catalogos;
GRANT UPDATE(es_cve_estado) ON TABLE dbo.unidad TO quorvex_catalogos;
