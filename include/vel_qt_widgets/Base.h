#ifndef VEL_QT_WIDGETS_BASE_H
#define VEL_QT_WIDGETS_BASE_H

// The name under which forms and applications include the base widget.
#include "CMwQWidget.h"

#endif // VEL_QT_WIDGETS_BASE_H
