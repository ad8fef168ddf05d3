#ifndef BOARD_EXPORT_H
#define BOARD_EXPORT_H

#include <QtGlobal>

#ifdef BOARD_LIBRARY
#define BOARD_EXPORT Q_DECL_EXPORT
#else
#define BOARD_EXPORT Q_DECL_IMPORT
#endif

#endif
