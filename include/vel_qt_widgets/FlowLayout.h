#ifndef VEL_QT_WIDGETS_FLOWLAYOUT_H
#define VEL_QT_WIDGETS_FLOWLAYOUT_H

// The flow layout and its widget, one header each; this name stays for the
// forms and applications that include both at once.
#include "CMwQFlowLayout.h"
#include "CMwQFlowLayoutWidget.h"

#endif // VEL_QT_WIDGETS_FLOWLAYOUT_H
