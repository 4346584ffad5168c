-- Quorvex, shared server: who may do what, in whole: it is run after the steps, and again whenever the owner asks for it.
-- Planners have what the statements of the screen need, who keeps the catalogues writes these, readers may look. All are
-- roles of the whole server: they may be there already for another database of it.

DO $$
DECLARE
    rol text;
    funcion regprocedure;
BEGIN
    FOREACH rol IN ARRAY ARRAY['quorvex_planificadores', 'quorvex_catalogos', 'quorvex_lectores'] LOOP
        CONTINUE WHEN EXISTS (SELECT FROM pg_roles WHERE rolname = rol);
        BEGIN
            EXECUTE format('CREATE ROLE %I NOLOGIN', rol);
        EXCEPTION WHEN duplicate_object OR unique_violation THEN
            NULL; -- by another database's administrator, at the same time
        END;
    END LOOP;
    EXECUTE format('REVOKE CONNECT, CREATE, TEMPORARY ON DATABASE %I FROM PUBLIC', current_database());
    EXECUTE format('GRANT CONNECT ON DATABASE %I TO quorvex_planificadores, quorvex_lectores, '
                   'quorvex_catalogos', current_database());
    IF to_regnamespace('public') IS NOT NULL THEN
        REVOKE CREATE ON SCHEMA public FROM PUBLIC;
    END IF;
    -- Only the owner takes rights away; from anybody else the server keeps them with a warning.
    IF has_database_privilege('public', current_database(), 'CONNECT') THEN
        RAISE insufficient_privilege USING MESSAGE = 'everybody could still connect to the database';
    END IF;
    FOREACH rol IN ARRAY ARRAY['quorvex_planificadores', 'quorvex_catalogos', 'quorvex_lectores'] LOOP
        IF has_database_privilege(rol, current_database(), 'CREATE, TEMPORARY')
           OR has_schema_privilege(rol, to_regnamespace('public'), 'CREATE') THEN
            RAISE insufficient_privilege USING MESSAGE = 'role ' || rol || ' could create tables of its own';
        END IF;
    END LOOP;
    -- Whoever may sign in, were it to look, could fill the disk with large objects, or with the temporary files of one
    -- statement, and take so many advisory locks that nobody else signs in to the whole server. These are the server's
    -- own, so that only a superuser takes them away.
    IF (SELECT rolsuper FROM pg_roles WHERE rolname = current_user) THEN
        FOR funcion IN SELECT oid FROM pg_proc
                        WHERE pronamespace = 'pg_catalog'::regnamespace
                          AND (proname LIKE 'pg\_%advisory%lock%' OR proname IN
                               ('lo_creat', 'lo_create', 'lo_from_bytea', 'lo_import', 'lo_put', 'lowrite')) LOOP
            EXECUTE format('REVOKE EXECUTE ON FUNCTION %s FROM PUBLIC', funcion);
        END LOOP;
        IF current_setting('temp_file_limit') = '-1' THEN
            EXECUTE format('ALTER DATABASE %I SET temp_file_limit = ''2GB''', current_database());
        END IF;
    END IF;
END
$$;

REVOKE ALL ON SCHEMA dbo FROM PUBLIC;
REVOKE ALL ON ALL FUNCTIONS IN SCHEMA dbo FROM PUBLIC, quorvex_planificadores, quorvex_catalogos, quorvex_lectores;
REVOKE ALL ON ALL TABLES IN SCHEMA dbo FROM PUBLIC, quorvex_planificadores, quorvex_catalogos, quorvex_lectores;

GRANT USAGE ON SCHEMA dbo TO quorvex_planificadores, quorvex_lectores, quorvex_catalogos;
GRANT EXECUTE ON FUNCTION Get_Ruta_Parte_Tipo_Equipo(bpchar, bpchar), Numero_De_Clave(bpchar)
    TO quorvex_planificadores, quorvex_catalogos, quorvex_lectores;
GRANT EXECUTE ON FUNCTION Reservar_Plan(bpchar, boolean), Hora_De_La_Base() TO quorvex_planificadores, quorvex_catalogos;
GRANT EXECUTE ON FUNCTION Nombrar_Operacion(text, text, text, text) TO quorvex_planificadores;
GRANT SELECT ON Esquema, Tipo_Equipo, Producto, Tipo_Gasto, Tipo_Servicio, Prioridad_Servicio, Unidad, Catalogo_Cambio, Derecho,
    Formato_Clave, Consulta, Tipo_Equipo_Parte, Plan_Mantenimiento, Plan_Mantenimiento_Detalle,
    Programa_Tipo, Programa_Uso, Programa_Festivo, Programa_Incluido, Programa_Capacidad, Ajuste_Planta
    TO quorvex_planificadores, quorvex_catalogos, quorvex_lectores;
-- The history is everybody's to read, and only the database's to write.
GRANT SELECT ON Operacion, Operacion_Plan, Operacion_Deshecha, Historia_Parte, Historia_Servicio, Historia_Linea
    TO quorvex_planificadores, quorvex_catalogos, quorvex_lectores;
GRANT SELECT ON Plan_Reserva TO quorvex_planificadores, quorvex_catalogos;
GRANT INSERT, UPDATE, DELETE ON Tipo_Equipo_Parte, Plan_Mantenimiento, Plan_Mantenimiento_Detalle
    TO quorvex_planificadores;
GRANT INSERT, UPDATE ON Programa_Tipo, Ajuste_Planta TO quorvex_planificadores;
GRANT INSERT, DELETE ON Programa_Uso, Programa_Festivo, Programa_Incluido, Programa_Capacidad TO quorvex_planificadores;
-- A key is never changed.
GRANT INSERT, DELETE ON Tipo_Equipo, Producto, Tipo_Gasto, Tipo_Servicio, Prioridad_Servicio, Unidad TO quorvex_catalogos;
GRANT UPDATE (Te_Descripcion, Es_Cve_Estado) ON Tipo_Equipo TO quorvex_catalogos;
GRANT UPDATE (Pr_Descripcion, Pr_Clase, Pr_Unidad_Control_1, Pr_Costo_Estandar, Es_Cve_Estado) ON Producto
    TO quorvex_catalogos;
GRANT UPDATE (Tg_Descripcion, Es_Cve_Estado) ON Tipo_Gasto TO quorvex_catalogos;
GRANT UPDATE (Ts_Descripcion, Es_Cve_Estado) ON Tipo_Servicio TO quorvex_catalogos;
GRANT UPDATE (Ps_Descripcion, Es_Cve_Estado) ON Prioridad_Servicio TO quorvex_catalogos;
GRANT UPDATE (Un_Descripcion, Es_Cve_Estado) ON Unidad TO quorvex_catalogos;
GRANT UPDATE (Ca_Cambios) ON Catalogo_Cambio TO quorvex_catalogos;
-- The numbers of the logs are the database's. Who keeps the catalogues is told who changed a row before him.
GRANT INSERT (Rc_Tabla, Rc_Clave, Rc_Oper, Rc_Fecha) ON Registro_Cambio TO quorvex_planificadores, quorvex_catalogos;
GRANT INSERT (Bi_Tabla, Bi_Clave, Bi_Accion, Bi_Oper, Bi_Fecha) ON Bitacora TO quorvex_planificadores, quorvex_catalogos;
GRANT SELECT ON Registro_Cambio TO quorvex_catalogos;
GRANT INSERT (Ds_Ficha) ON Desenlace TO quorvex_planificadores, quorvex_catalogos;

CREATE OR REPLACE TRIGGER Tep_Programa BEFORE INSERT OR UPDATE OR DELETE ON Tipo_Equipo_Parte FOR EACH STATEMENT
    WHEN (current_setting('quorvex.esquema', true) IS DISTINCT FROM '{version}') EXECUTE FUNCTION Rechazar_Programa();
CREATE OR REPLACE TRIGGER Pm_Programa BEFORE INSERT OR UPDATE OR DELETE ON Plan_Mantenimiento FOR EACH STATEMENT
    WHEN (current_setting('quorvex.esquema', true) IS DISTINCT FROM '{version}') EXECUTE FUNCTION Rechazar_Programa();
CREATE OR REPLACE TRIGGER Pmd_Programa BEFORE INSERT OR UPDATE OR DELETE ON Plan_Mantenimiento_Detalle FOR EACH STATEMENT
    WHEN (current_setting('quorvex.esquema', true) IS DISTINCT FROM '{version}') EXECUTE FUNCTION Rechazar_Programa();
CREATE OR REPLACE TRIGGER Pt_Programa BEFORE INSERT OR UPDATE OR DELETE ON Programa_Tipo FOR EACH STATEMENT
    WHEN (current_setting('quorvex.esquema', true) IS DISTINCT FROM '{version}') EXECUTE FUNCTION Rechazar_Programa();
