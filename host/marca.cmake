# The mark of a build: of what a component and the host's library must have alike, or one would call the other wrongly.
# Takes SALIDA (the header to write), SEMILLA (compiler, options and libraries) and CABECERAS (files, separated by ";").
set(huellas "${SEMILLA}")
foreach(cabecera IN LISTS CABECERAS)
  file(SHA256 "${cabecera}" huella)
  string(APPEND huellas " ${huella}")
endforeach()
string(SHA256 marca "${huellas}")
string(SUBSTRING "${marca}" 0 32 marca)
# Leaves a header alone that says the same already.
file(CONFIGURE OUTPUT "${SALIDA}" CONTENT "#define QVX_MARCA \"${marca}\"\n")
