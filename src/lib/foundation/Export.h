#ifndef FOUNDATION_EXPORT_H
#define FOUNDATION_EXPORT_H

#include <QtGlobal>

#ifdef ORVEX_LIBRARY
#define ORVEX_EXPORT Q_DECL_EXPORT
#else
#define ORVEX_EXPORT Q_DECL_IMPORT
#endif

#endif
