-- Quorvex, shared server: from version 5 to version 6.

-- What a planner assumes of an equipment type to make its programme of the year: day zero, use, machines, days off.

CREATE TABLE Programa_Tipo (
    Te_Cve_Tipo_Equipo Clave NOT NULL PRIMARY KEY,
    Pt_Dia_Cero        Texto NOT NULL,
    Pt_Dias_Semana     numeric NOT NULL DEFAULT 7,
    Pt_Equipos         integer NOT NULL DEFAULT 1,
    Pt_Inicio          Texto NOT NULL DEFAULT 'HECHO' CHECK (Pt_Inicio IN ('HECHO', 'ARRANQUE', 'LECTURA')),
    Pt_Descanso        Texto NOT NULL DEFAULT '' CHECK (Pt_Descanso IN ('', 'DO', 'SADO')),
    Oper_Alta          Texto,
    Fecha_Alta         Texto,
    Oper_Ult_Modif     Texto,
    Fecha_Ult_Modif    Texto,
    Version            Texto NOT NULL DEFAULT CAST(gen_random_uuid() AS text),
    Version_Anterior   Texto,
    Oper_Anterior      Texto,
    Fecha_Anterior     Texto
);
CREATE TRIGGER Pt_Version BEFORE UPDATE ON Programa_Tipo FOR EACH ROW EXECUTE FUNCTION Sellar_Version();

CREATE TABLE Programa_Uso (
    Te_Cve_Tipo_Equipo Clave NOT NULL,
    Pu_Unidad          Clave NOT NULL,
    Pu_Uso             numeric NOT NULL DEFAULT 0,
    Pu_Acumulado       numeric NOT NULL DEFAULT 0,
    PRIMARY KEY (Te_Cve_Tipo_Equipo, Pu_Unidad)
);

CREATE TABLE Programa_Festivo (
    Te_Cve_Tipo_Equipo Clave NOT NULL,
    Pf_Fecha           Texto NOT NULL,
    PRIMARY KEY (Te_Cve_Tipo_Equipo, Pf_Fecha)
);

-- Of a service that another one of the same day contains.
CREATE TABLE Programa_Incluido (
    Te_Cve_Tipo_Equipo Clave NOT NULL,
    Pi_Incluido        Clave NOT NULL,
    Pi_En              Clave NOT NULL,
    PRIMARY KEY (Te_Cve_Tipo_Equipo, Pi_Incluido, Pi_En)
);

-- Hours of labour that there are in a month of the year.
CREATE TABLE Programa_Capacidad (
    Te_Cve_Tipo_Equipo Clave NOT NULL,
    Pc_Mes             integer NOT NULL CHECK (Pc_Mes BETWEEN 1 AND 12),
    Pc_Horas           numeric NOT NULL DEFAULT 0,
    PRIMARY KEY (Te_Cve_Tipo_Equipo, Pc_Mes)
);

-- The plant's own, such as the name that stands on reports.
CREATE TABLE Ajuste_Planta (
    Aj_Nombre Texto NOT NULL PRIMARY KEY,
    Aj_Valor  Texto NOT NULL
);

-- An equipment type that goes takes its programme along: one of the same key would begin with it. Who keeps the
-- catalogues does not write programmes.

CREATE FUNCTION Quitar_Programa() RETURNS trigger
    LANGUAGE plpgsql SECURITY DEFINER SET search_path = dbo, pg_temp
    AS $$
BEGIN
    DELETE FROM Programa_Tipo WHERE Te_Cve_Tipo_Equipo = OLD.Te_Cve_Tipo_Equipo;
    DELETE FROM Programa_Uso WHERE Te_Cve_Tipo_Equipo = OLD.Te_Cve_Tipo_Equipo;
    DELETE FROM Programa_Festivo WHERE Te_Cve_Tipo_Equipo = OLD.Te_Cve_Tipo_Equipo;
    DELETE FROM Programa_Incluido WHERE Te_Cve_Tipo_Equipo = OLD.Te_Cve_Tipo_Equipo;
    DELETE FROM Programa_Capacidad WHERE Te_Cve_Tipo_Equipo = OLD.Te_Cve_Tipo_Equipo;
    RETURN NULL;
END
$$;
CREATE TRIGGER Te_Sin_Programa AFTER DELETE ON Tipo_Equipo FOR EACH ROW EXECUTE FUNCTION Quitar_Programa();
