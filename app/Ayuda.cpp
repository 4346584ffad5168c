#include "app/Argumentos.h"

QString Argumentos::Ayuda()
{
    return "Uso: quorvex [opciones]\n"
           "\n"
           "Plan de mantenimiento por tipo de equipo.\n"
           "\n"
           "  --base-datos ARCHIVO  Base de datos que se abre; si no existe, se crea.\n"
           "                        Sin esta opción: "
           + BaseDelUsuario()
           + "\n"
             "  --servidor DIRECCIÓN  En su lugar, la base de datos de un servidor:\n"
             "                        postgresql://USUARIO@EQUIPO:PUERTO/BASE[?sslmode=verify-full]\n"
             "                        La contraseña se pide, o se toma de PGPASSWORD o del archivo de contraseñas.\n"
             "                        Firma los cambios el usuario del servidor.\n"
             "  --tipo-equipo CLAVE   Abre la pantalla en este tipo de equipo.\n"
             "  --operador NOMBRE     Quién firma los cambios. Sin esta opción: el usuario del sistema.\n"
             "  --sin-ejemplos        Al crear la base de datos, deja los planes vacíos.\n"
             "  --crear-esquema       Con --servidor: crea el esquema y sus roles, si faltan, sin ventana.\n"
             "  --con-ejemplos        Con --crear-esquema: agrega planes de ejemplo.\n"
             "  --exportar CLAVE ARCHIVO\n"
             "                        Escribe el plan de un tipo de equipo en un archivo XML, sin ventana.\n"
             "  --importar ARCHIVO    Reemplaza un plan por el del archivo XML, sin ventana. Sin --si, solo lo "
             "revisa.\n"
             "  --si                  Contesta que sí a la pregunta de --importar.\n"
             "  --validar ARCHIVO     Dice renglón por renglón en qué no cumple un archivo XML con el formato.\n"
             "  --revisar             Dice qué partes y servicios no se ven en el árbol, sin ventana y sin cambiar "
             "nada.\n"
             "  --ayuda               Muestra este texto.\n"
             "  --version             Muestra la versión.\n";
}
