#ifndef VEL_QT_WIDGETS_CMWQSLIDERACCESSIBLEFACTORY_P_H
#define VEL_QT_WIDGETS_CMWQSLIDERACCESSIBLEFACTORY_P_H

// The interfaces that assistive technology gets for the sliders, handed to
// QAccessible by a factory registered when the application starts.
namespace CMwQSliderAccessibleFactory {

// Registers the interface factory with QAccessible (once per application).
void install();

} // namespace CMwQSliderAccessibleFactory

#endif // VEL_QT_WIDGETS_CMWQSLIDERACCESSIBLEFACTORY_P_H
