#ifndef DATALAYER_EXPORT_H
#define DATALAYER_EXPORT_H

#include <QtGlobal>

/// Marks what crosses the boundary of the data layer library. DATALAYER_STATIC is for builds that
/// link everything into one binary, DATALAYER_BUILD for building the library itself.
#if defined(DATALAYER_STATIC)
#define DATALAYER_EXPORT
#elif defined(DATALAYER_BUILD)
#define DATALAYER_EXPORT Q_DECL_EXPORT
#else
#define DATALAYER_EXPORT Q_DECL_IMPORT
#endif

#endif
