#ifndef DECLARATIONINSPECTOR_EXPORT_H
#define DECLARATIONINSPECTOR_EXPORT_H

#include <QtGlobal>

/// Marks what crosses the boundary of the inspector. DECLARATIONINSPECTOR_BUILD is for building the library itself.
#if defined(DECLARATIONINSPECTOR_BUILD)
#define DECLARATIONINSPECTOR_EXPORT Q_DECL_EXPORT
#else
#define DECLARATIONINSPECTOR_EXPORT Q_DECL_IMPORT
#endif

#endif
