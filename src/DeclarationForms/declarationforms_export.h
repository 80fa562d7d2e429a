#ifndef DECLARATIONFORMS_EXPORT_H
#define DECLARATIONFORMS_EXPORT_H

#include <QtGlobal>

/// Marks what crosses the boundary of the forms library. DECLARATIONFORMS_STATIC is for builds that
/// link everything into one binary, DECLARATIONFORMS_BUILD for building the library itself.
#if defined(DECLARATIONFORMS_STATIC)
#define DECLARATIONFORMS_EXPORT
#elif defined(DECLARATIONFORMS_BUILD)
#define DECLARATIONFORMS_EXPORT Q_DECL_EXPORT
#else
#define DECLARATIONFORMS_EXPORT Q_DECL_IMPORT
#endif

#endif
