#ifndef DECLARATIONHANDLER_EXPORT_H
#define DECLARATIONHANDLER_EXPORT_H

#include <QtGlobal>

/// Marks what hosts may use of the library; everything else stays hidden. DECLARATIONHANDLER_STATIC
/// is for builds that link everything into one binary, DECLARATIONHANDLER_BUILD for building the
/// library itself.
#if defined(DECLARATIONHANDLER_STATIC)
#define DECLARATIONHANDLER_EXPORT
#elif defined(DECLARATIONHANDLER_BUILD)
#define DECLARATIONHANDLER_EXPORT Q_DECL_EXPORT
#else
#define DECLARATIONHANDLER_EXPORT Q_DECL_IMPORT
#endif

#endif
