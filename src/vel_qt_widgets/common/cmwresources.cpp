#include <QtCore/QtGlobal>

// The icon set and the translation catalogues are linked in as static
// libraries; their resources must be registered explicitly, and this is done
// when the shared library is loaded so that the paths work from the start.
static void velRegisterResources()
{
    Q_INIT_RESOURCE(w32_commonres);
    Q_INIT_RESOURCE(vel_qt_widgets_translations);
}

Q_CONSTRUCTOR_FUNCTION(velRegisterResources)
