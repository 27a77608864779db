# Where the install puts things under the prefix, and how the installed
# binaries find each other there without LD_LIBRARY_PATH.
#
# Every path below is relative to the prefix and every run path is relative
# to the library ($ORIGIN), so an installed tree still works after it is
# copied or moved elsewhere.
include(GNUInstallDirs)

# The Qt 5 build keeps the names it always had. The Qt 6 build installs into
# the same prefix beside it, so every name of its own carries "-qt6": the
# libraries (libvel_qt_widgets-qt6.so, libvel_system-qt6.so), the CMake
# package (vel_qt_widgets-qt6), the header and translation folders and the
# plug-in folder. The exported target names stay the same in both.
if(VEL_QT_MAJOR EQUAL 5)
    set(VEL_NAME_SUFFIX "")
    # Headers directly below include/ (include/omni6/include/vel_qt_widgets).
    set(VEL_INSTALL_INCLUDE_BASE ${CMAKE_INSTALL_INCLUDEDIR})
else()
    set(VEL_NAME_SUFFIX "-qt${VEL_QT_MAJOR}")
    # Their own folder: the headers are the same text, but two packages must
    # not own one file, and uninstalling one build must keep the other's.
    set(VEL_INSTALL_INCLUDE_BASE ${CMAKE_INSTALL_INCLUDEDIR}/vel_qt_widgets${VEL_NAME_SUFFIX})
endif()
set(VEL_INSTALL_INCLUDE_ROOT ${VEL_INSTALL_INCLUDE_BASE}/omni6/include)
set(VEL_PACKAGE_NAME vel_qt_widgets${VEL_NAME_SUFFIX})
set(VEL_INSTALL_TRANSLATIONS_DIR ${CMAKE_INSTALL_DATADIR}/${VEL_PACKAGE_NAME}/translations)

# Qt looks for Designer plug-ins in <plugin path>/designer. With a prefix of
# /usr on Debian this is Qt's own folder (lib/<multiarch>/qt5/plugins, or
# qt6/plugins for Qt 6); for any other prefix,
# QT_PLUGIN_PATH=<prefix>/lib/qt5/plugins (qt6) makes Designer look there.
set(VEL_DESIGNER_PLUGIN_DIR ${CMAKE_INSTALL_LIBDIR}/qt${VEL_QT_MAJOR}/plugins/designer CACHE STRING
    "Where the Designer plug-in link is installed, relative to the prefix")

# Folders the dynamic loader searches by itself (the platform's library
# folders, their multiarch subfolders, and /usr/local's, which Debian's
# ld.so.conf lists). An install into one of them gets no run path: it would
# only repeat what the loader does anyway.
set(vel_default_system_libdirs ${CMAKE_PLATFORM_IMPLICIT_LINK_DIRECTORIES} /usr/local/lib)
if(CMAKE_LIBRARY_ARCHITECTURE)
    list(APPEND vel_default_system_libdirs
        /lib/${CMAKE_LIBRARY_ARCHITECTURE}
        /usr/lib/${CMAKE_LIBRARY_ARCHITECTURE}
        /usr/local/lib/${CMAKE_LIBRARY_ARCHITECTURE})
endif()
list(REMOVE_DUPLICATES vel_default_system_libdirs)
set(VEL_SYSTEM_LIBDIRS "${vel_default_system_libdirs}" CACHE STRING
    "Library folders the dynamic loader searches by itself; installs there carry no run path")
mark_as_advanced(VEL_SYSTEM_LIBDIRS)

# Gives an installed shared library of this project a run path that finds
# the project's other libraries in the same folder.
#
# The Designer plug-in folder holds a symbolic link to vel_qt_widgets. Qt's
# plug-in loader opens the link's target, so $ORIGIN is the library folder;
# but the dynamic loader takes $ORIGIN from the path it was given, without
# resolving links, so a program that dlopen()s the link itself gets the
# plug-in folder. The run path therefore also names the library folder as
# seen from the plug-in folder. (A link rather than a copy keeps one file, so
# an application that links the library and also loads the plug-in maps it
# once.)
#
# The prefix is only known for sure at install time (cmake --install
# --prefix, CPack), so the run path is set at build time and removed again by
# the install when the library lands in one of VEL_SYSTEM_LIBDIRS.
function(vel_set_install_rpath target component)
    set(rpath "$ORIGIN")
    if(NOT IS_ABSOLUTE "${VEL_DESIGNER_PLUGIN_DIR}")
        file(RELATIVE_PATH plugin_to_lib
            "/prefix/${VEL_DESIGNER_PLUGIN_DIR}" "/prefix/${CMAKE_INSTALL_LIBDIR}")
        string(REGEX REPLACE "/$" "" plugin_to_lib "${plugin_to_lib}")
        list(APPEND rpath "$ORIGIN/${plugin_to_lib}")
    endif()
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "${rpath}")

    install(CODE "
        get_filename_component(vel_libdir \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}\" ABSOLUTE)
        set(vel_system_libdirs \"${VEL_SYSTEM_LIBDIRS}\")
        list(FIND vel_system_libdirs \"\${vel_libdir}\" vel_system_index)
        if(vel_system_index GREATER -1)
            message(STATUS \"No run path (system library folder): \${vel_libdir}/$<TARGET_FILE_NAME:${target}>\")
            file(RPATH_REMOVE FILE \"\$ENV{DESTDIR}\${vel_libdir}/$<TARGET_FILE_NAME:${target}>\")
        endif()
        " COMPONENT ${component})
endfunction()
