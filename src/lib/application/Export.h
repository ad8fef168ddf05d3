#ifndef APPLICATION_EXPORT_H
#define APPLICATION_EXPORT_H

#include <QtGlobal>

#ifdef ZANDU_LIBRARY
#define ZANDU_EXPORT Q_DECL_EXPORT
#else
#define ZANDU_EXPORT Q_DECL_IMPORT
#endif

#endif
