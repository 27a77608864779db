#ifndef VEL_QT_WIDGETS_PUSHBUTTONS_H
#define VEL_QT_WIDGETS_PUSHBUTTONS_H

// The push buttons, one header each; this name stays for the forms and
// applications that include them all at once.
#include "CMwIconFitButton.h"
#include "CMwPickerPushButton.h"
#include "CMwSizedPushButtonMd.h"
#include "CMwTextPushButton.h"

#endif // VEL_QT_WIDGETS_PUSHBUTTONS_H
