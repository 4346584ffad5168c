-- Quorvex, shared server: parts the three tables of the plan by their equipment type, whatever rows they hold, in one
-- transaction. For their owner, or a superuser, by hand; no step of the schema needs it, and none minds it:
--
--     psql -X -v particiones=16 -f particiones.sql postgresql://OWNER@HOST/DB
--
-- Run again with another number it parts them anew, with 0 it makes one table of each again. It waits 10 s for whoever
-- is saving and for whoever reads. The planners' rights end at the tables: who names a partition is refused, but for the
-- owner, whose changes there no trigger sees.

\set ON_ERROR_STOP on
\if :{?particiones}
\else
\set particiones 16
\endif

BEGIN;
SET LOCAL lock_timeout = '10s';
SET LOCAL search_path = dbo, pg_temp;
SET LOCAL quorvex.particiones = :'particiones';
-- What a superuser makes is the owner's all the same.
SELECT format('SET LOCAL ROLE %I', pg_get_userbyid(nspowner)) FROM pg_namespace WHERE nspname = 'dbo' \gexec
LOCK TABLE Esquema IN ACCESS EXCLUSIVE MODE;
LOCK TABLE Tipo_Equipo_Parte, Plan_Mantenimiento, Plan_Mantenimiento_Detalle IN ACCESS EXCLUSIVE MODE;

-- A new table takes the old one's place, with the same columns, rows, constraints, indexes, triggers and rights under the
-- same names. Something that hangs from the old one, a view of somebody's, ends it with the server's error that names it.

DO $$
DECLARE
    cuantas integer := current_setting('quorvex.particiones');
    tabla regclass;
    nombre text;
    columnas text;
    hacer text[];
    paso text;
BEGIN
    FOREACH tabla IN ARRAY ARRAY['Tipo_Equipo_Parte', 'Plan_Mantenimiento', 'Plan_Mantenimiento_Detalle']::regclass[] LOOP
        nombre := (SELECT relname FROM pg_class WHERE oid = tabla);
        columnas := (SELECT string_agg(quote_ident(attname), ', ' ORDER BY attnum) FROM pg_attribute
                      WHERE attrelid = tabla AND attnum > 0 AND NOT attisdropped AND attgenerated = '');
        -- Indexes once the rows are there, triggers when none of it would be taken for a change.
        SELECT array_agg(definicion ORDER BY orden, objeto) INTO hacer FROM (
            SELECT 1 AS orden, oid AS objeto,
                   format('ALTER TABLE %I ADD CONSTRAINT %I %s', nombre, conname, pg_get_constraintdef(oid)) AS definicion
              FROM pg_constraint WHERE conrelid = tabla AND contype <> 'c'
            UNION ALL
            SELECT 2, indexrelid, replace(pg_get_indexdef(indexrelid), ' ON ONLY ', ' ON ')
              FROM pg_index WHERE indrelid = tabla
               AND NOT EXISTS (SELECT FROM pg_constraint WHERE conrelid = tabla AND conindid = indexrelid)
            UNION ALL
            SELECT 3, oid, pg_get_triggerdef(oid) FROM pg_trigger WHERE tgrelid = tabla AND NOT tgisinternal
            UNION ALL
            SELECT 4, grantee, format('GRANT %s%s ON %I TO %s%s', privilege_type, columna, nombre,
                                      CASE grantee WHEN 0 THEN 'PUBLIC' ELSE quote_ident(pg_get_userbyid(grantee)) END,
                                      CASE WHEN is_grantable THEN ' WITH GRANT OPTION' ELSE '' END)
              FROM (SELECT '' AS columna, relacl AS acl FROM pg_class WHERE oid = tabla
                    UNION ALL
                    SELECT format(' (%I)', attname), attacl FROM pg_attribute WHERE attrelid = tabla) derechos,
                   aclexplode(acl)) definiciones;

        FOR paso IN SELECT relname FROM pg_inherits JOIN pg_class ON pg_class.oid = inhrelid WHERE inhparent = tabla LOOP
            EXECUTE format('ALTER TABLE %I RENAME TO %I', paso, paso || '_anterior');
        END LOOP;
        EXECUTE format('ALTER TABLE %I RENAME TO %I', nombre, nombre || '_anterior');
        EXECUTE format('CREATE TABLE %I (LIKE %I INCLUDING ALL EXCLUDING INDEXES)', nombre, nombre || '_anterior')
                || CASE WHEN cuantas > 0 THEN ' PARTITION BY HASH (Te_Cve_Tipo_Equipo)' ELSE '' END;
        FOR parte IN 0 .. cuantas - 1 LOOP
            EXECUTE format('CREATE TABLE %I PARTITION OF %I FOR VALUES WITH (MODULUS %s, REMAINDER %s)',
                           nombre || '_p' || parte, nombre, cuantas, parte);
        END LOOP;
        EXECUTE format('INSERT INTO %I (%s) SELECT %2$s FROM %I', nombre, columnas, nombre || '_anterior');
        EXECUTE format('DROP TABLE %I', nombre || '_anterior');
        FOREACH paso IN ARRAY hacer LOOP
            EXECUTE paso;
        END LOOP;
    END LOOP;
END
$$;
COMMIT;

-- The server counts the rows of each partition by itself, but never those of a parted table.
ANALYZE dbo.Tipo_Equipo_Parte, dbo.Plan_Mantenimiento, dbo.Plan_Mantenimiento_Detalle;
