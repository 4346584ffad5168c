#pragma once

// The schema of the exchange document, where every host of the component keeps it.
namespace KT580
{

constexpr const char *RutaEsquema = "C:\\inetpub\\wwwroot\\Quorvex\\qvx\\include\\XSD\\PlanMantenimiento.xsd";

} // namespace KT580
