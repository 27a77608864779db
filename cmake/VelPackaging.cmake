# Debian packages: `cpack -G DEB` in a build configured for /usr
# (`cmake --preset deb`, build dir build-deb; for Qt 6 `cmake --preset
# qt6-deb`, build dir build-qt6-deb). One package per install component (see
# src/CMakeLists.txt):
#
#   Qt 5                            Qt 6                                component
#   libvel-qt-widgets0              libvel-qt-widgets-qt6-0             widgets
#   libvel-system0                  libvel-system-qt6-0                 system
#   libvel-qt-widgets-dev           libvel-qt-widgets-qt6-dev           dev
#   vel-qt-widgets-designer-plugin  vel-qt-widgets-qt6-designer-plugin  designer
#   vel-qt-widgets-l10n             vel-qt-widgets-qt6-l10n             translations
#
# The names come from the libraries' file names and SONAME versions, as
# Debian names library packages, so the Qt 6 build, whose libraries carry
# "-qt6", packages under its own names, and the two sets install side by
# side (packaging/check-debs.sh tries that).

set(CPACK_PACKAGE_NAME vel-qt-widgets)
set(CPACK_PACKAGE_VENDOR "vel_qt_widgets")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
# Each package has its own description (first line: the synopsis); no
# package-wide summary, which CPack would put in front of every one.
set(VEL_PACKAGE_MAINTAINER "vel_qt_widgets maintainers <maintainers@vel-qt-widgets.invalid>"
    CACHE STRING "Maintainer field of the Debian packages (\"Name <address>\")")
set(CPACK_PACKAGE_CONTACT "${VEL_PACKAGE_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${VEL_PACKAGE_MAINTAINER}")

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL widgets system dev designer translations)
# Install with DESTDIR into the staging folder, so the install rules see the
# real prefix (the run-path and plug-in-link rules depend on it).
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(CPACK_PACKAGING_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Depends computed from the libraries each package holds; the libraries'
# own shlibs files (and with them the ldconfig triggers) are generated too.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
# dpkg-shlibdeps must find vel_system, which no installed package provides
# yet; the dependency on its package is stated below.
get_target_property(vel_system_build_dir vel_system BINARY_DIR)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${vel_system_build_dir})

# Debian's name for a library package: lib<name><soversion>, with a dash
# before the version when the name ends in a digit.
function(vel_debian_library_package_name out target)
    get_target_property(name ${target} OUTPUT_NAME)
    if(NOT name)
        set(name ${target})
    endif()
    get_target_property(soversion ${target} SOVERSION)
    string(REPLACE "_" "-" name "lib${name}")
    if(name MATCHES "[0-9]$")
        string(APPEND name "-")
    endif()
    set(${out} "${name}${soversion}" PARENT_SCOPE)
endfunction()

vel_debian_library_package_name(vel_widgets_package vel_qt_widgets)
vel_debian_library_package_name(vel_system_package vel_system)
get_target_property(vel_base_name vel_qt_widgets OUTPUT_NAME)
if(NOT vel_base_name)
    set(vel_base_name vel_qt_widgets)
endif()
string(REPLACE "_" "-" vel_base_name "${vel_base_name}")
set(vel_exact_version "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")

set(CPACK_DEBIAN_WIDGETS_PACKAGE_NAME ${vel_widgets_package})
set(CPACK_DEBIAN_WIDGETS_PACKAGE_SECTION libs)
# The library links no QtSvg, but its toolbar and picker icons are SVG files
# that only Qt's SVG icon-engine plug-in draws; shlibdeps cannot see that.
if(VEL_QT_MAJOR EQUAL 5)
    set(vel_svg_plugin_package libqt5svg5)
else()
    set(vel_svg_plugin_package libqt6svg6)
endif()
set(VEL_SVG_PLUGIN_PACKAGE ${vel_svg_plugin_package} CACHE STRING
    "Debian package holding Qt's SVG icon-engine plug-in of the Qt major built against")
# A build folder reconfigured for the other major keeps its cache: Debian's
# package of the other major follows the switch, a value someone chose stays.
if(VEL_SVG_PLUGIN_PACKAGE MATCHES "^(libqt5svg5|libqt6svg6)$")
    set_property(CACHE VEL_SVG_PLUGIN_PACKAGE PROPERTY VALUE ${vel_svg_plugin_package})
endif()
set(CPACK_DEBIAN_WIDGETS_PACKAGE_DEPENDS
    "${vel_system_package} (= ${vel_exact_version}), ${VEL_SVG_PLUGIN_PACKAGE}")
set(CPACK_DEBIAN_WIDGETS_PACKAGE_SUGGESTS "${vel_base_name}-designer-plugin, ${vel_base_name}-l10n")
set(CPACK_DEBIAN_WIDGETS_DESCRIPTION
    "Custom Qt ${VEL_QT_MAJOR} widgets for desktop applications
Tick-aware integer and floating-point sliders and range sliders with value
proxies, a hierarchical grid (multi-level header, grouped rows, statistics,
row filter), a filter editor and proxy model, a table picker, styleable push
buttons and a flow layout. The library is also a Qt Designer custom-widget
collection; the German catalogue is built in.")

set(CPACK_DEBIAN_SYSTEM_PACKAGE_NAME ${vel_system_package})
set(CPACK_DEBIAN_SYSTEM_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_SYSTEM_DESCRIPTION
    "Text translation function for the vel_qt_widgets library
MW_GetTranslation, through which the widgets of vel_qt_widgets look up
every text they show; this implementation asks the application's installed
Qt translators.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME lib${vel_base_name}-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
# The CMake package asks for Qt Core, Gui and Widgets of its major.
if(VEL_QT_MAJOR EQUAL 5)
    set(vel_qt_dev_package qtbase5-dev)
    set(vel_designer_package qttools5-dev-tools)
else()
    set(vel_qt_dev_package qt6-base-dev)
    set(vel_designer_package designer-qt6)
endif()
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS
    "${vel_widgets_package} (= ${vel_exact_version}), ${vel_system_package} (= ${vel_exact_version}), ${vel_qt_dev_package}")
set(CPACK_DEBIAN_DEV_DESCRIPTION
    "Development files for the vel_qt_widgets library (Qt ${VEL_QT_MAJOR})
Headers (under /usr/${VEL_INSTALL_INCLUDE_ROOT}/vel_qt_widgets, included as
<vel_qt_widgets/...> or <omni6/include/vel_qt_widgets/...>), the private-data
headers for subclasses, and the CMake package:
find_package(${VEL_PACKAGE_NAME} CONFIG) with the target
vel_qt_widgets::vel_qt_widgets.")

set(CPACK_DEBIAN_DESIGNER_PACKAGE_NAME ${vel_base_name}-designer-plugin)
set(CPACK_DEBIAN_DESIGNER_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_DESIGNER_PACKAGE_DEPENDS "${vel_widgets_package} (= ${vel_exact_version})")
set(CPACK_DEBIAN_DESIGNER_PACKAGE_ENHANCES "${vel_designer_package}")
set(CPACK_DEBIAN_DESIGNER_DESCRIPTION
    "Qt ${VEL_QT_MAJOR} Designer plug-in for the vel_qt_widgets library
Makes Qt Designer list ten widgets of vel_qt_widgets in the widget-box
group Zorvan Widgets, and adds style-sheet entries to the task menu of
every widget on a form.")

set(CPACK_DEBIAN_TRANSLATIONS_PACKAGE_NAME ${vel_base_name}-l10n)
set(CPACK_DEBIAN_TRANSLATIONS_PACKAGE_SECTION localization)
set(CPACK_DEBIAN_TRANSLATIONS_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_TRANSLATIONS_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_TRANSLATIONS_DESCRIPTION
    "Translations of the vel_qt_widgets library
The compiled Qt catalogues (.qm) of the widgets' texts, under
/usr/${VEL_INSTALL_TRANSLATIONS_DIR}, for applications that load them from
the file system rather than from the library's built-in resources.")

# Debian's layout (multiarch library folder, Qt's plug-in folder) follows
# from configuring for /usr; a package from a build for another prefix would
# install where neither the loader nor Designer look.
set(VEL_PACKAGE_PREFIX "${CMAKE_INSTALL_PREFIX}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/VelCPackOptions.cmake.in
    ${PROJECT_BINARY_DIR}/VelCPackOptions.cmake @ONLY)
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_BINARY_DIR}/VelCPackOptions.cmake)

include(CPack)
