-- Quorvex: what no database is without: priorities, units, and the masks of keys.

INSERT INTO Prioridad_Servicio (Ps_Cve_Prioridad, Ps_Descripcion, Es_Cve_Estado) VALUES
    ('0001', 'URGENTE', 'AC'),
    ('0002', 'ALTA',    'AC'),
    ('0003', 'MEDIA',   'AC'),
    ('0004', 'BAJA',    'AC');

-- HR, KM and CIC are also the units of meter readings.
INSERT INTO Unidad (Un_Cve_Unidad, Un_Descripcion, Es_Cve_Estado) VALUES
    ('HR',  'HORAS',      'AC'),
    ('KM',  'KILÓMETROS', 'AC'),
    ('CIC', 'CICLOS',     'AC'),
    ('PZA', 'PIEZAS',     'AC'),
    ('JGO', 'JUEGOS',     'AC'),
    ('PAR', 'PARES',      'AC'),
    ('LT',  'LITROS',     'AC'),
    ('GL',  'GALONES',    'AC'),
    ('KG',  'KILOGRAMOS', 'AC'),
    ('MT',  'METROS',     'AC');

-- Masks of keys.
INSERT INTO Formato_Clave VALUES
    ('FTO_TIPO_EQUIPO', '0000'), ('FTO_TIPO_EQUIPO_PARTE', '0000'), ('FTO_PRODUCTO', '0000000000'),
    ('FTO_TIPO_GASTO', '0000'), ('FTO_TIPO_SERVICIO', '0000'), ('FTO_PRIORIDAD_SERVICIO', '0000'),
    ('FTO_UNIDAD', '0000'), ('FTO_PLAN_MANTENIMIENTO', '000000'), ('FTO_PLAN_MANTENIMIENTO_DETALLE', '000000');
