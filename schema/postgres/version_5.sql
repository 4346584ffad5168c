-- Quorvex, shared server: from version 4 to version 5.

-- The hour that the database signs with: in the zone that its owner gave it, or else the server's own, since the
-- session's is the planner's to choose.

CREATE FUNCTION Hora_De_La_Base() RETURNS text
    LANGUAGE sql STABLE SET search_path = dbo, pg_temp
    AS $$
SELECT to_char(clock_timestamp() AT TIME ZONE coalesce(
        (SELECT substr(ajuste, length('TimeZone=') + 1)
           FROM pg_db_role_setting JOIN pg_database ON pg_database.oid = setdatabase, unnest(setconfig) AS ajuste
          WHERE datname = current_database() AND setrole = 0 AND ajuste ILIKE 'TimeZone=%'),
        current_setting('log_timezone')), 'YYYY-MM-DD HH24:MI:SS')
$$;

CREATE OR REPLACE FUNCTION Firmar_Registro() RETURNS trigger
    LANGUAGE plpgsql SET search_path = dbo, pg_temp
    AS $$
BEGIN
    IF TG_TABLE_NAME = 'bitacora' THEN
        NEW.Bi_Oper := session_user;
        NEW.Bi_Fecha := Hora_De_La_Base();
    ELSE
        NEW.Rc_Oper := session_user;
        NEW.Rc_Fecha := Hora_De_La_Base();
    END IF;
    RETURN NEW;
END
$$;

-- What was done to the plans: one row for each transaction that changed them, with a number that is never used again. A
-- transaction's number may come again in another server that a copy is restored to, and so its time goes along.

CREATE TABLE Operacion (
    Op_ID          bigint GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
    Op_Oper        Texto NOT NULL,
    Op_Fecha       Texto NOT NULL,
    Op_Clase       Texto NOT NULL,
    Op_Detalle     Texto NOT NULL DEFAULT '',
    Op_Programa    Texto NOT NULL DEFAULT '',
    Op_Transaccion bigint NOT NULL,
    Op_Comienzo    timestamptz NOT NULL
);
CREATE UNIQUE INDEX Op_Por_Transaccion ON Operacion (Op_Transaccion, Op_Comienzo);

-- The plans that an operation changed, and how many of their parts, services and lines.

CREATE TABLE Operacion_Plan (
    Te_Cve_Tipo_Equipo Clave NOT NULL,
    Op_ID        bigint NOT NULL,
    Ol_Partes    bigint,
    Ol_Servicios bigint,
    Ol_Lineas    bigint,
    PRIMARY KEY (Te_Cve_Tipo_Equipo, Op_ID)
);
CREATE INDEX Ol_Por_Operacion ON Operacion_Plan (Op_ID);

-- The operations that an operation takes back.

CREATE TABLE Operacion_Deshecha (
    Op_ID        bigint NOT NULL,
    Od_Operacion bigint NOT NULL,
    PRIMARY KEY (Op_ID, Od_Operacion)
);
CREATE INDEX Od_Por_Operacion ON Operacion_Deshecha (Od_Operacion);

-- Rows as they were before a change ('A') and as it left them ('D'), in the order in which it happened.

CREATE TABLE Historia_Parte (
    Hi_ID              bigint GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
    Op_ID              bigint NOT NULL,
    Hi_Lado            Texto NOT NULL,
    Te_Cve_Tipo_Equipo Clave,
    Tep_ID             Clave,
    Tep_Padre          Clave,
    Tep_Descripcion    Texto,
    Es_Cve_Estado      Clave,
    Oper_Alta          Texto,
    Fecha_Alta         Texto,
    Oper_Ult_Modif     Texto,
    Fecha_Ult_Modif    Texto,
    Oper_Baja          Texto,
    Fecha_Baja         Texto,
    Version            Texto,
    Version_Anterior   Texto,
    Oper_Anterior      Texto,
    Fecha_Anterior     Texto
);
CREATE INDEX Hp_Por_Operacion ON Historia_Parte (Op_ID);
CREATE INDEX Hp_Por_Clave ON Historia_Parte (Te_Cve_Tipo_Equipo, Tep_ID);

CREATE TABLE Historia_Servicio (
    Hi_ID              bigint GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
    Op_ID              bigint NOT NULL,
    Hi_Lado            Texto NOT NULL,
    Te_Cve_Tipo_Equipo Clave,
    Tep_ID             Clave,
    Pm_ID              Clave,
    Ts_Cve_Tipo_Servicio Clave,
    Pm_Frecuencia      numeric,
    Pm_Lectura         numeric,
    Pm_Unidad_Lectura  Clave,
    Pm_Precio          numeric,
    Pm_Tiempo_Estimado numeric,
    Pm_Prioridad       Clave,
    Pm_Requiere_Paro   Clave,
    Pm_Tiempo_Paro     numeric,
    Es_Cve_Estado      Clave,
    Oper_Alta          Texto,
    Fecha_Alta         Texto,
    Oper_Ult_Modif     Texto,
    Fecha_Ult_Modif    Texto,
    Oper_Baja          Texto,
    Fecha_Baja         Texto,
    Version            Texto,
    Version_Anterior   Texto,
    Oper_Anterior      Texto,
    Fecha_Anterior     Texto
);
CREATE INDEX Hs_Por_Operacion ON Historia_Servicio (Op_ID);
CREATE INDEX Hs_Por_Clave ON Historia_Servicio (Te_Cve_Tipo_Equipo, Pm_ID);

CREATE TABLE Historia_Linea (
    Hi_ID              bigint GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
    Op_ID              bigint NOT NULL,
    Hi_Lado            Texto NOT NULL,
    Te_Cve_Tipo_Equipo Clave,
    Tep_ID             Clave,
    Pm_ID              Clave,
    Pmd_ID             Clave,
    Pmd_Tipo           Clave,
    Pr_Cve_Producto    Clave,
    Pmd_Cantidad       numeric,
    Pmd_Unidad         Clave,
    Pmd_Costo          numeric,
    Pmd_Importe        numeric,
    Pmd_Tipo_Gasto     Clave
);
CREATE INDEX Hl_Por_Operacion ON Historia_Linea (Op_ID);

-- The operation of the transaction. What nobody names was done by another program, and the user is the real one.

CREATE FUNCTION Operacion_Actual() RETURNS bigint
    LANGUAGE plpgsql SECURITY DEFINER SET search_path = dbo, pg_temp
    AS $$
DECLARE
    transaccion bigint := CAST(CAST(pg_current_xact_id() AS text) AS bigint);
    numero bigint;
BEGIN
    SELECT Op_ID INTO numero FROM Operacion
     WHERE Op_Transaccion = transaccion AND Op_Comienzo = transaction_timestamp();
    IF NOT FOUND THEN
        INSERT INTO Operacion (Op_Oper, Op_Fecha, Op_Clase, Op_Programa, Op_Transaccion, Op_Comienzo)
        VALUES (session_user, Hora_De_La_Base(), 'Fuera de Quorvex', current_setting('application_name'), transaccion,
                transaction_timestamp())
        RETURNING Op_ID INTO numero;
    END IF;
    RETURN numero;
END
$$;

-- Says what the transaction's operation is, and which ones it takes back (their numbers, with commas between). Does
-- nothing when the transaction changed no plan.

CREATE FUNCTION Nombrar_Operacion(clase text, detalle text, programa text, deshechas text) RETURNS void
    LANGUAGE plpgsql SECURITY DEFINER SET search_path = dbo, pg_temp
    AS $$
DECLARE
    numero bigint;
BEGIN
    UPDATE Operacion SET Op_Clase = clase, Op_Detalle = detalle, Op_Programa = programa
     WHERE Op_Transaccion = CAST(CAST(pg_current_xact_id() AS text) AS bigint)
       AND Op_Comienzo = transaction_timestamp()
    RETURNING Op_ID INTO numero;
    INSERT INTO Operacion_Deshecha (Op_ID, Od_Operacion)
    SELECT numero, Op_ID FROM Operacion
     WHERE Op_ID = ANY (CAST(string_to_array(deshechas, ',') AS bigint[])) AND Op_ID <> numero;
END
$$;

-- Counts at the end of the transaction, whoever made it.

CREATE FUNCTION Contar_Operacion() RETURNS trigger
    LANGUAGE plpgsql SECURITY DEFINER SET search_path = dbo, pg_temp
    AS $$
BEGIN
    INSERT INTO Operacion_Plan (Te_Cve_Tipo_Equipo, Op_ID, Ol_Partes, Ol_Servicios, Ol_Lineas)
    SELECT Te_Cve_Tipo_Equipo, NEW.Op_ID, sum(Partes), sum(Servicios), sum(Lineas)
      FROM (SELECT Te_Cve_Tipo_Equipo, count(DISTINCT Tep_ID) AS Partes, 0 AS Servicios, 0 AS Lineas
              FROM Historia_Parte WHERE Op_ID = NEW.Op_ID GROUP BY Te_Cve_Tipo_Equipo
            UNION ALL
            SELECT Te_Cve_Tipo_Equipo, 0, count(DISTINCT Pm_ID), 0
              FROM Historia_Servicio WHERE Op_ID = NEW.Op_ID GROUP BY Te_Cve_Tipo_Equipo
            UNION ALL
            SELECT Te_Cve_Tipo_Equipo, 0, 0, greatest(count(*) FILTER (WHERE Hi_Lado = 'A'),
                                                      count(*) FILTER (WHERE Hi_Lado = 'D'))
              FROM Historia_Linea WHERE Op_ID = NEW.Op_ID GROUP BY Te_Cve_Tipo_Equipo) AS cuenta
     GROUP BY Te_Cve_Tipo_Equipo;
    RETURN NULL;
END
$$;
CREATE CONSTRAINT TRIGGER Op_Cuenta AFTER INSERT ON Operacion
    DEFERRABLE INITIALLY DEFERRED FOR EACH ROW EXECUTE FUNCTION Contar_Operacion();

CREATE FUNCTION Anotar_Historia_Parte() RETURNS trigger
    LANGUAGE plpgsql SECURITY DEFINER SET search_path = dbo, pg_temp
    AS $$
BEGIN
    IF TG_OP <> 'INSERT' THEN
        INSERT INTO Historia_Parte (Op_ID, Hi_Lado,
            Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion, Es_Cve_Estado, Oper_Alta, Fecha_Alta,
            Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja, Version, Version_Anterior, Oper_Anterior,
            Fecha_Anterior)
        SELECT (SELECT Operacion_Actual()), 'A',
            Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion, Es_Cve_Estado, Oper_Alta, Fecha_Alta,
            Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja, Version, Version_Anterior, Oper_Anterior,
            Fecha_Anterior
          FROM antes;
    END IF;
    IF TG_OP <> 'DELETE' THEN
        INSERT INTO Historia_Parte (Op_ID, Hi_Lado,
            Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion, Es_Cve_Estado, Oper_Alta, Fecha_Alta,
            Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja, Version, Version_Anterior, Oper_Anterior,
            Fecha_Anterior)
        SELECT (SELECT Operacion_Actual()), 'D',
            Te_Cve_Tipo_Equipo, Tep_ID, Tep_Padre, Tep_Descripcion, Es_Cve_Estado, Oper_Alta, Fecha_Alta,
            Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja, Version, Version_Anterior, Oper_Anterior,
            Fecha_Anterior
          FROM despues;
    END IF;
    RETURN NULL;
END
$$;
CREATE TRIGGER Hp_Alta AFTER INSERT ON Tipo_Equipo_Parte REFERENCING NEW TABLE AS despues
    FOR EACH STATEMENT EXECUTE FUNCTION Anotar_Historia_Parte();
CREATE TRIGGER Hp_Cambio AFTER UPDATE ON Tipo_Equipo_Parte REFERENCING OLD TABLE AS antes NEW TABLE AS despues
    FOR EACH STATEMENT EXECUTE FUNCTION Anotar_Historia_Parte();
CREATE TRIGGER Hp_Baja AFTER DELETE ON Tipo_Equipo_Parte REFERENCING OLD TABLE AS antes
    FOR EACH STATEMENT EXECUTE FUNCTION Anotar_Historia_Parte();

CREATE FUNCTION Anotar_Historia_Servicio() RETURNS trigger
    LANGUAGE plpgsql SECURITY DEFINER SET search_path = dbo, pg_temp
    AS $$
BEGIN
    IF TG_OP <> 'INSERT' THEN
        INSERT INTO Historia_Servicio (Op_ID, Hi_Lado,
            Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio, Pm_Frecuencia, Pm_Lectura, Pm_Unidad_Lectura,
            Pm_Precio, Pm_Tiempo_Estimado, Pm_Prioridad, Pm_Requiere_Paro, Pm_Tiempo_Paro, Es_Cve_Estado, Oper_Alta,
            Fecha_Alta, Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja, Version, Version_Anterior,
            Oper_Anterior, Fecha_Anterior)
        SELECT (SELECT Operacion_Actual()), 'A',
            Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio, Pm_Frecuencia, Pm_Lectura, Pm_Unidad_Lectura,
            Pm_Precio, Pm_Tiempo_Estimado, Pm_Prioridad, Pm_Requiere_Paro, Pm_Tiempo_Paro, Es_Cve_Estado, Oper_Alta,
            Fecha_Alta, Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja, Version, Version_Anterior,
            Oper_Anterior, Fecha_Anterior
          FROM antes;
    END IF;
    IF TG_OP <> 'DELETE' THEN
        INSERT INTO Historia_Servicio (Op_ID, Hi_Lado,
            Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio, Pm_Frecuencia, Pm_Lectura, Pm_Unidad_Lectura,
            Pm_Precio, Pm_Tiempo_Estimado, Pm_Prioridad, Pm_Requiere_Paro, Pm_Tiempo_Paro, Es_Cve_Estado, Oper_Alta,
            Fecha_Alta, Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja, Version, Version_Anterior,
            Oper_Anterior, Fecha_Anterior)
        SELECT (SELECT Operacion_Actual()), 'D',
            Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Ts_Cve_Tipo_Servicio, Pm_Frecuencia, Pm_Lectura, Pm_Unidad_Lectura,
            Pm_Precio, Pm_Tiempo_Estimado, Pm_Prioridad, Pm_Requiere_Paro, Pm_Tiempo_Paro, Es_Cve_Estado, Oper_Alta,
            Fecha_Alta, Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja, Version, Version_Anterior,
            Oper_Anterior, Fecha_Anterior
          FROM despues;
    END IF;
    RETURN NULL;
END
$$;
CREATE TRIGGER Hs_Alta AFTER INSERT ON Plan_Mantenimiento REFERENCING NEW TABLE AS despues
    FOR EACH STATEMENT EXECUTE FUNCTION Anotar_Historia_Servicio();
CREATE TRIGGER Hs_Cambio AFTER UPDATE ON Plan_Mantenimiento REFERENCING OLD TABLE AS antes NEW TABLE AS despues
    FOR EACH STATEMENT EXECUTE FUNCTION Anotar_Historia_Servicio();
CREATE TRIGGER Hs_Baja AFTER DELETE ON Plan_Mantenimiento REFERENCING OLD TABLE AS antes
    FOR EACH STATEMENT EXECUTE FUNCTION Anotar_Historia_Servicio();

CREATE FUNCTION Anotar_Historia_Linea() RETURNS trigger
    LANGUAGE plpgsql SECURITY DEFINER SET search_path = dbo, pg_temp
    AS $$
BEGIN
    IF TG_OP <> 'INSERT' THEN
        INSERT INTO Historia_Linea (Op_ID, Hi_Lado,
            Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, Pr_Cve_Producto, Pmd_Cantidad, Pmd_Unidad,
            Pmd_Costo, Pmd_Importe, Pmd_Tipo_Gasto)
        SELECT (SELECT Operacion_Actual()), 'A',
            Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, Pr_Cve_Producto, Pmd_Cantidad, Pmd_Unidad,
            Pmd_Costo, Pmd_Importe, Pmd_Tipo_Gasto
          FROM antes;
    END IF;
    IF TG_OP <> 'DELETE' THEN
        INSERT INTO Historia_Linea (Op_ID, Hi_Lado,
            Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, Pr_Cve_Producto, Pmd_Cantidad, Pmd_Unidad,
            Pmd_Costo, Pmd_Importe, Pmd_Tipo_Gasto)
        SELECT (SELECT Operacion_Actual()), 'D',
            Te_Cve_Tipo_Equipo, Tep_ID, Pm_ID, Pmd_ID, Pmd_Tipo, Pr_Cve_Producto, Pmd_Cantidad, Pmd_Unidad,
            Pmd_Costo, Pmd_Importe, Pmd_Tipo_Gasto
          FROM despues;
    END IF;
    RETURN NULL;
END
$$;
CREATE TRIGGER Hl_Alta AFTER INSERT ON Plan_Mantenimiento_Detalle REFERENCING NEW TABLE AS despues
    FOR EACH STATEMENT EXECUTE FUNCTION Anotar_Historia_Linea();
CREATE TRIGGER Hl_Cambio AFTER UPDATE ON Plan_Mantenimiento_Detalle REFERENCING OLD TABLE AS antes NEW TABLE AS despues
    FOR EACH STATEMENT EXECUTE FUNCTION Anotar_Historia_Linea();
CREATE TRIGGER Hl_Baja AFTER DELETE ON Plan_Mantenimiento_Detalle REFERENCING OLD TABLE AS antes
    FOR EACH STATEMENT EXECUTE FUNCTION Anotar_Historia_Linea();

-- A table that is emptied at one go tells no row of it.

CREATE FUNCTION Rechazar_Vaciado() RETURNS trigger
    LANGUAGE plpgsql SET search_path = dbo, pg_temp
    AS $$
BEGIN
    RAISE object_not_in_prerequisite_state USING MESSAGE =
        'La tabla no se vacía de una vez, porque no quedaría historia de sus filas: use DELETE.';
END
$$;
CREATE TRIGGER Hp_Vaciado BEFORE TRUNCATE ON Tipo_Equipo_Parte FOR EACH STATEMENT EXECUTE FUNCTION Rechazar_Vaciado();
CREATE TRIGGER Hs_Vaciado BEFORE TRUNCATE ON Plan_Mantenimiento FOR EACH STATEMENT EXECUTE FUNCTION Rechazar_Vaciado();
CREATE TRIGGER Hl_Vaciado BEFORE TRUNCATE ON Plan_Mantenimiento_Detalle FOR EACH STATEMENT EXECUTE FUNCTION Rechazar_Vaciado();
