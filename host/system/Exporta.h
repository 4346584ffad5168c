#pragma once

// Marks a namespace of a header whose names are used from outside the library: by the component, by the programs. All
// others stay within it.
#ifdef Q_MOC_RUN // which reads no attributes
#define QVX_EXPORTA
#else
#define QVX_EXPORTA [[gnu::visibility("default")]]
#endif
