-- Quorvex: catalogues. Keys follow the masks of Formato_Clave; state BA is retired, CA cancelled.

INSERT INTO Tipo_Equipo (Te_Cve_Tipo_Equipo, Te_Descripcion, Es_Cve_Estado) VALUES
    ('0001', 'MONTACARGAS ELÉCTRICO',             'AC'),
    ('0002', 'COMPRESOR DE TORNILLO',             'AC'),
    ('0003', 'BOMBA CENTRÍFUGA',                  'AC'),
    ('0004', 'TORNO CNC',                         'AC'),
    ('0005', 'BANDA TRANSPORTADORA',              'AC'),
    ('0006', 'CALDERA PIROTUBULAR',               'AC'),
    ('0007', 'CHILLER ENFRIADO POR AIRE',         'AC'),
    ('0008', 'MONTACARGAS DE COMBUSTIÓN INTERNA', 'CA'),
    ('0009', 'GRÚA VIAJERA',                      'AC');

INSERT INTO Tipo_Servicio (Ts_Cve_Tipo_Servicio, Ts_Descripcion, Es_Cve_Estado) VALUES
    ('0001', 'INSPECCIÓN VISUAL',            'AC'),
    ('0002', 'LUBRICACIÓN',                  'AC'),
    ('0003', 'CAMBIO DE ACEITE',             'AC'),
    ('0004', 'CAMBIO DE FILTROS',            'AC'),
    ('0005', 'CALIBRACIÓN',                  'AC'),
    ('0006', 'LIMPIEZA',                     'AC'),
    ('0007', 'AJUSTE Y REAPRIETE',           'AC'),
    ('0008', 'ANÁLISIS DE VIBRACIONES',      'AC'),
    ('0009', 'TERMOGRAFÍA',                  'AC'),
    ('0010', 'CAMBIO DE PIEZAS DE DESGASTE', 'AC'),
    ('0011', 'PRUEBA DE FUNCIONAMIENTO',     'AC'),
    ('0012', 'PINTURA GENERAL',              'BA');

INSERT INTO Prioridad_Servicio (Ps_Cve_Prioridad, Ps_Descripcion, Es_Cve_Estado) VALUES
    ('0001', 'URGENTE', 'AC'),
    ('0002', 'ALTA',    'AC'),
    ('0003', 'MEDIA',   'AC'),
    ('0004', 'BAJA',    'AC');

INSERT INTO Tipo_Gasto (Tg_Cve_Tipo_Gasto, Tg_Descripcion, Es_Cve_Estado) VALUES
    ('0001', 'REFACCIONES DE MANTENIMIENTO', 'AC'),
    ('0002', 'LUBRICANTES Y GRASAS',         'AC'),
    ('0003', 'CONSUMIBLES',                  'AC'),
    ('0004', 'MATERIAL ELÉCTRICO',           'AC'),
    ('0005', 'COMPONENTES MAYORES',          'AC'),
    ('0006', 'SEGURIDAD INDUSTRIAL',         'AC'),
    ('0007', 'REFACCIONES DE IMPORTACIÓN',   'BA'),
    ('0008', 'QUÍMICOS Y REFRIGERANTES',     'AC');

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

-- Products: labour (from 0000000001), cost per hour.
INSERT INTO Producto (
    Pr_Cve_Producto, Pr_Descripcion, Pr_Clase, Pr_Unidad_Control_1, Pr_Costo_Estandar, Es_Cve_Estado
) VALUES
    ('0000000001', 'MECÁNICO INDUSTRIAL',            'MO', 'HR',   118.50, 'AC'),
    ('0000000002', 'ELECTRICISTA INDUSTRIAL',        'MO', 'HR',   124.75, 'AC'),
    ('0000000003', 'LUBRICADOR',                     'MO', 'HR',  86.3125, 'AC'),
    ('0000000004', 'INSTRUMENTISTA',                 'MO', 'HR',   152.40, 'AC'),
    ('0000000005', 'SOLDADOR',                       'MO', 'HR',   131.25, 'AC'),
    ('0000000006', 'AYUDANTE GENERAL',               'MO', 'HR',   62.875, 'AC'),
    ('0000000007', 'TÉCNICO EN REFRIGERACIÓN',       'MO', 'HR',   146.00, 'AC'),
    ('0000000008', 'TÉCNICO EN ANÁLISIS PREDICTIVO', 'MO', 'HR',   185.60, 'AC'),
    ('0000000009', 'TÉCNICO EN CONTROL NUMÉRICO',    'MO', 'HR', 198.4375, 'AC'),
    ('0000000010', 'TÉCNICO EN HIDRÁULICA',          'MO', 'HR',   142.35, 'AC');

-- Products: spare parts (from 0000001001).
INSERT INTO Producto (
    Pr_Cve_Producto, Pr_Descripcion, Pr_Clase, Pr_Unidad_Control_1, Pr_Costo_Estandar, Es_Cve_Estado
) VALUES
    ('0000001001', 'ACEITE HIDRÁULICO ISO VG 46',          'RE', 'LT',    68.425, 'AC'),
    ('0000001002', 'ACEITE PARA ENGRANES SAE 80W90',       'RE', 'LT',     92.75, 'AC'),
    ('0000001003', 'ACEITE SINTÉTICO PARA COMPRESOR',      'RE', 'LT',  214.6375, 'AC'),
    ('0000001004', 'ACEITE PARA GUÍAS ISO VG 68',          'RE', 'LT',     84.90, 'AC'),
    ('0000001005', 'ACEITE PARA REDUCTOR ISO VG 220',      'RE', 'LT',   96.1875, 'AC'),
    ('0000001006', 'ACEITE PARA TURBINA ISO VG 68',        'RE', 'LT',     78.35, 'AC'),
    ('0000001007', 'GRASA DE LITIO EP 2',                  'RE', 'KG',    148.50, 'AC'),
    ('0000001008', 'GRASA DE POLIUREA PARA MOTOR',         'RE', 'KG',   236.825, 'AC'),
    ('0000001009', 'GRASA DE CALCIO MULTIUSOS',            'RE', 'KG',     96.40, 'BA'),
    ('0000001010', 'LUBRICANTE PARA CADENAS',              'RE', 'LT',    187.25, 'AC'),
    ('0000001011', 'LÍQUIDO PARA FRENOS',                  'RE', 'LT',    139.50, 'AC'),
    ('0000001012', 'REFRIGERANTE SOLUBLE PARA CORTE',      'RE', 'LT',    112.40, 'AC'),
    ('0000001013', 'GAS REFRIGERANTE R 134A',              'RE', 'KG',  268.4125, 'AC'),
    ('0000001014', 'AGUA DESTILADA',                       'RE', 'LT',     14.25, 'AC'),
    ('0000001015', 'BICARBONATO DE SODIO',                 'RE', 'KG',     27.80, 'AC'),
    ('0000001016', 'DESENGRASANTE DIELÉCTRICO',            'RE', 'LT',   163.905, 'AC'),
    ('0000001017', 'LIMPIADOR DE CONTACTOS EN AEROSOL',    'RE', 'PZA',   128.60, 'AC'),
    ('0000001018', 'TRAPO INDUSTRIAL',                     'RE', 'KG',     38.75, 'AC'),
    ('0000001019', 'FIJADOR DE ROSCAS',                    'RE', 'PZA',   184.30, 'AC'),
    ('0000001020', 'SELLADOR DE SILICÓN',                  'RE', 'PZA',    96.40, 'AC'),
    ('0000001021', 'CINTA DE PTFE',                        'RE', 'PZA',    18.65, 'AC'),
    ('0000001022', 'FILTRO HIDRÁULICO DE RETORNO',         'RE', 'PZA',   486.30, 'AC'),
    ('0000001023', 'COLADOR DE SUCCIÓN HIDRÁULICO',        'RE', 'PZA',   362.10, 'AC'),
    ('0000001024', 'FILTRO RESPIRADERO',                   'RE', 'PZA',   154.75, 'AC'),
    ('0000001025', 'FILTRO DE AIRE PARA COMPRESOR',        'RE', 'PZA',  1284.50, 'AC'),
    ('0000001026', 'PREFILTRO DE PANEL',                   'RE', 'PZA',   286.15, 'AC'),
    ('0000001027', 'FILTRO DE ACEITE PARA COMPRESOR',      'RE', 'PZA',   742.85, 'AC'),
    ('0000001028', 'ELEMENTO SEPARADOR AIRE ACEITE',       'RE', 'PZA',  3968.40, 'AC'),
    ('0000001029', 'ELEMENTO COALESCENTE DE LÍNEA',        'RE', 'PZA',  1125.60, 'AC'),
    ('0000001030', 'FILTRO DE BOMBA DE REFRIGERANTE',      'RE', 'PZA',   248.90, 'AC'),
    ('0000001031', 'FILTRO DE LUBRICACIÓN CENTRALIZADA',   'RE', 'PZA',   318.45, 'AC'),
    ('0000001032', 'FILTRO DE VENTILADOR DE GABINETE',     'RE', 'PZA',    72.65, 'AC'),
    ('0000001033', 'RODAMIENTO 6205 2RS C3',               'RE', 'PZA',   142.35, 'AC'),
    ('0000001034', 'RODAMIENTO 6308 2Z C3',                'RE', 'PZA',   398.70, 'AC'),
    ('0000001035', 'RODAMIENTO 6310 C3',                   'RE', 'PZA',   586.90, 'AC'),
    ('0000001036', 'RODAMIENTO DE CONTACTO ANGULAR 7309',  'RE', 'PZA',  1146.25, 'AC'),
    ('0000001037', 'RODAMIENTO DE RODILLOS NU 310',        'RE', 'PZA', 1684.375, 'AC'),
    ('0000001038', 'RODAMIENTOS DE PRECISIÓN DE HUSILLO',  'RE', 'JGO', 18640.00, 'AC'),
    ('0000001039', 'CHUMACERA DE PARED UCF 210',           'RE', 'PZA',   512.40, 'AC'),
    ('0000001040', 'RODILLO GUÍA DE MÁSTIL',               'RE', 'PZA',   876.50, 'AC'),
    ('0000001041', 'SELLO MECÁNICO DE CARTUCHO 45 MM',     'RE', 'PZA',  6485.00, 'AC'),
    ('0000001042', 'ANILLOS O DE NITRILO',                 'RE', 'JGO',   156.20, 'AC'),
    ('0000001043', 'RETÉN DE LABIO 50 X 72 X 8',           'RE', 'PZA',    88.45, 'AC'),
    ('0000001044', 'SELLOS PARA CILINDRO HIDRÁULICO',      'RE', 'JGO',   924.75, 'AC'),
    ('0000001045', 'EMPAQUE DE CARCASA DE BOMBA',          'RE', 'PZA',   214.60, 'AC'),
    ('0000001046', 'ANILLO DE DESGASTE DE BRONCE',         'RE', 'PZA',  1284.70, 'AC'),
    ('0000001047', 'CAMISA DE FLECHA DE ACERO INOXIDABLE', 'RE', 'PZA',   968.40, 'AC'),
    ('0000001048', 'INSERTO ELÁSTICO PARA COPLE',          'RE', 'PZA',   268.50, 'AC'),
    ('0000001049', 'BANDA TRAPEZOIDAL B 68',               'RE', 'PZA',   186.30, 'AC'),
    ('0000001050', 'BANDA DENTADA DE HUSILLO',             'RE', 'PZA',   864.35, 'AC'),
    ('0000001051', 'BANDA DE HULE 3 CAPAS 24 PULGADAS',    'RE', 'MT',   1468.50, 'AC'),
    ('0000001052', 'GRAPAS PARA EMPALME DE BANDA',         'RE', 'JGO',   642.80, 'AC'),
    ('0000001053', 'RODILLO DE CARGA 24 PULGADAS',         'RE', 'PZA',   428.90, 'AC'),
    ('0000001054', 'RODILLO DE RETORNO 24 PULGADAS',       'RE', 'PZA',   396.40, 'AC'),
    ('0000001055', 'CUCHILLA DE RASPADOR DE POLIURETANO',  'RE', 'PZA',  1246.30, 'AC'),
    ('0000001056', 'HULE PARA FALDÓN',                     'RE', 'MT',    214.75, 'AC'),
    ('0000001057', 'FUSIBLE DE POTENCIA 355 A',            'RE', 'PZA',   468.90, 'AC'),
    ('0000001058', 'FUSIBLE DE CONTROL 10 A',              'RE', 'PZA',    24.65, 'AC'),
    ('0000001059', 'CONTACTOR 48 VCD 400 A',               'RE', 'PZA',  2846.00, 'AC'),
    ('0000001060', 'CONTACTOR TRIFÁSICO 40 A',             'RE', 'PZA',  1268.30, 'AC'),
    ('0000001061', 'CONTACTOS DE REPUESTO',                'RE', 'JGO',   986.40, 'AC'),
    ('0000001062', 'ESCOBILLAS DE CARBÓN',                 'RE', 'JGO',   412.65, 'AC'),
    ('0000001063', 'TERMINAL DE COBRE CALIBRE 2/0',        'RE', 'PZA',    46.20, 'AC'),
    ('0000001064', 'CABLE FLEXIBLE CALIBRE 2/0',           'RE', 'MT',    318.45, 'AC'),
    ('0000001065', 'CONECTOR DE BATERÍA 350 A',            'RE', 'PZA',  1386.75, 'AC'),
    ('0000001066', 'BATERÍA DE LITIO 3.6 V PARA CONTROL',  'RE', 'PZA',   246.50, 'AC'),
    ('0000001067', 'SENSOR DE PROXIMIDAD INDUCTIVO M12',   'RE', 'PZA',   412.35, 'AC'),
    ('0000001068', 'BALATAS DE FRENO',                     'RE', 'JGO',  1348.60, 'AC'),
    ('0000001069', 'LLANTA SÓLIDA MOTRIZ',                 'RE', 'PZA',  3684.50, 'AC'),
    ('0000001070', 'LLANTA SÓLIDA DE DIRECCIÓN',           'RE', 'PZA',  2765.25, 'AC'),
    ('0000001071', 'CADENA DE CARGA DE ESLABÓN DE PLACA',  'RE', 'MT',    648.90, 'AC'),
    ('0000001072', 'PERNOS DE ANCLAJE DE CADENA',          'RE', 'JGO',   428.00, 'AC'),
    ('0000001073', 'PLACAS DESLIZANTES DE MÁSTIL',         'RE', 'JGO',   568.45, 'AC'),
    ('0000001074', 'REPUESTOS DE VÁLVULA DE ADMISIÓN',     'RE', 'JGO',  2468.90, 'AC'),
    ('0000001075', 'VÁLVULA TERMOSTÁTICA DE ACEITE',       'RE', 'PZA',  1864.30, 'AC'),
    ('0000001076', 'MORDAZAS BLANDAS PARA PLATO',          'RE', 'JGO',   684.50, 'AC'),
    ('0000001077', 'LIMPIADORES DE GUÍAS',                 'RE', 'JGO',  1246.80, 'AC'),
    ('0000001078', 'LAINA DE ACERO INOXIDABLE',            'RE', 'JGO',   342.90, 'AC');

-- Products: tools (from 0000002001).
INSERT INTO Producto (
    Pr_Cve_Producto, Pr_Descripcion, Pr_Clase, Pr_Unidad_Control_1, Pr_Costo_Estandar, Es_Cve_Estado
) VALUES
    ('0000002001', 'JUEGO DE LLAVES COMBINADAS',         'HE', 'JGO',  1846.50, 'AC'),
    ('0000002002', 'JUEGO DE LLAVES HEXAGONALES',        'HE', 'JGO',   428.75, 'AC'),
    ('0000002003', 'JUEGO DE DADOS Y MATRACA',           'HE', 'JGO',  2364.00, 'AC'),
    ('0000002004', 'TORQUÍMETRO DE 20 A 200 NM',         'HE', 'PZA',  3248.60, 'AC'),
    ('0000002005', 'MULTÍMETRO DIGITAL',                 'HE', 'PZA',  2186.40, 'AC'),
    ('0000002006', 'PINZA AMPERIMÉTRICA',                'HE', 'PZA',  3465.25, 'AC'),
    ('0000002007', 'PROBADOR DE AISLAMIENTO 1000 V',     'HE', 'PZA',  9874.50, 'AC'),
    ('0000002008', 'CÁMARA TERMOGRÁFICA',                'HE', 'PZA', 38650.00, 'AC'),
    ('0000002009', 'ANALIZADOR DE VIBRACIONES',          'HE', 'PZA', 86420.00, 'AC'),
    ('0000002010', 'EXTRACTOR DE BALEROS',               'HE', 'PZA',  2748.90, 'AC'),
    ('0000002011', 'CALENTADOR DE RODAMIENTOS',          'HE', 'PZA', 21360.00, 'AC'),
    ('0000002012', 'PISTOLA ENGRASADORA',                'HE', 'PZA', 864.3125, 'AC'),
    ('0000002013', 'BOMBA DE TRASIEGO DE ACEITE',        'HE', 'PZA',  4286.70, 'AC'),
    ('0000002014', 'ALINEADOR LÁSER',                    'HE', 'PZA', 46840.00, 'AC'),
    ('0000002015', 'INDICADOR DE CARÁTULA CON BASE',     'HE', 'JGO',  1968.45, 'AC'),
    ('0000002016', 'CALIBRADOR PIE DE REY',              'HE', 'PZA',  1248.00, 'AC'),
    ('0000002017', 'NIVEL DE PRECISIÓN',                 'HE', 'PZA',  3864.20, 'AC'),
    ('0000002018', 'JUEGO DE MANÓMETROS DE PRUEBA',      'HE', 'JGO',  5468.00, 'AC'),
    ('0000002019', 'DENSÍMETRO PARA BATERÍA',            'HE', 'PZA',   386.40, 'AC'),
    ('0000002020', 'GATO HIDRÁULICO DE 5 TONELADAS',     'HE', 'PZA',  3946.80, 'AC'),
    ('0000002021', 'POLIPASTO DE CADENA DE 2 TONELADAS', 'HE', 'PZA',  7648.00, 'AC'),
    ('0000002022', 'LÁMPARA DE INSPECCIÓN',              'HE', 'PZA',   486.90, 'AC'),
    ('0000002023', 'TENSIÓMETRO PARA BANDAS',            'HE', 'PZA',  2864.35, 'AC'),
    ('0000002024', 'TACÓMETRO ÓPTICO',                   'HE', 'PZA',  2148.75, 'AC'),
    ('0000002025', 'HIDROLAVADORA',                      'HE', 'PZA',  6842.00, 'AC'),
    ('0000002026', 'TACÓMETRO DE CONTACTO',              'HE', 'PZA',  1648.00, 'BA');

-- Masks of keys.
INSERT INTO Formato_Clave VALUES
    ('FTO_TIPO_EQUIPO', '0000'), ('FTO_TIPO_EQUIPO_PARTE', '0000'), ('FTO_PRODUCTO', '0000000000'),
    ('FTO_TIPO_GASTO', '0000'), ('FTO_TIPO_SERVICIO', '0000'), ('FTO_PRIORIDAD_SERVICIO', '0000'),
    ('FTO_UNIDAD', '0000'), ('FTO_PLAN_MANTENIMIENTO', '000000'), ('FTO_PLAN_MANTENIMIENTO_DETALLE', '000000');
