// What the Qt library shows of itself.
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/qglobal.h>

#if defined(PIXVANE_QT_BUILD)
#define PIXVANE_QT_API Q_DECL_EXPORT
#else
#define PIXVANE_QT_API Q_DECL_IMPORT
#endif
