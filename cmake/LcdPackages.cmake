# Debian packages: "cpack -G DEB" in a finished build directory writes one package for each component of the
# installation, and one with the debug symbols of each that has programs or libraries.

set(LCD_PACKAGE_RELEASE 1)
set(LCD_PACKAGE_CONTACT "The lcdfactorymode developers <maintainers@lcdfactorymode.invalid>")
add_subdirectory(packaging)

# lcd_package_documents(<component> <package>): copyright and changelog of a package.
function(lcd_package_documents component package)
    set(directory "${CMAKE_BINARY_DIR}/packaging/${package}")
    file(MAKE_DIRECTORY "${directory}")
    set(LCD_PACKAGE "${package}")
    configure_file("${CMAKE_SOURCE_DIR}/packaging/changelog.in" "${directory}/changelog.Debian" @ONLY)
    execute_process(COMMAND gzip -9nf "${directory}/changelog.Debian" COMMAND_ERROR_IS_FATAL ANY)
    install(FILES "${directory}/changelog.Debian.gz" DESTINATION share/doc/${package} COMPONENT ${component})
    install(FILES "${CMAKE_SOURCE_DIR}/packaging/copyright" DESTINATION share/doc/${package} COMPONENT ${component})
endfunction()

# lcd_package(<component> <package> SECTION <section> SUMMARY <line> DESCRIPTION <text> [DEPENDS <packages>]
#     [RECOMMENDS <packages>] [BINARIES] [SCRIPTS <files...>])
# Declares the package of an installed component. BINARIES: its dependencies are found from the programs and libraries in
# it, and its debug symbols are in a package of their own.
macro(lcd_package component package)
    cmake_parse_arguments(PACKAGE "BINARIES" "SECTION;SUMMARY;DESCRIPTION;DEPENDS;RECOMMENDS" "SCRIPTS" ${ARGN})
    string(TOUPPER "${component}" upper)
    list(APPEND CPACK_COMPONENTS_ALL ${component})
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME "${package}")
    set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION "${PACKAGE_SECTION}")
    set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${PACKAGE_DEPENDS}")
    set(CPACK_DEBIAN_${upper}_PACKAGE_RECOMMENDS "${PACKAGE_RECOMMENDS}")
    set(CPACK_DEBIAN_${upper}_DESCRIPTION "${PACKAGE_SUMMARY}\n${PACKAGE_DESCRIPTION}")
    set(CPACK_DEBIAN_${upper}_PACKAGE_SHLIBDEPS ${PACKAGE_BINARIES})
    set(CPACK_DEBIAN_${upper}_DEBUGINFO_PACKAGE ${PACKAGE_BINARIES})
    set(CPACK_DEBIAN_${upper}_PACKAGE_CONTROL_EXTRA "${PACKAGE_SCRIPTS}")
    lcd_package_documents(${component} ${package})
endmacro()

set(CPACK_COMPONENTS_ALL "")
set(same_version "(= ${PROJECT_VERSION}-${LCD_PACKAGE_RELEASE})")
lcd_package(LcdFactoryMode liblcdfactorymode1 BINARIES SECTION libs
    SUMMARY "factory mode of a video device's front panel"
    DESCRIPTION "The component that a device loads: a factory menu read from XML,
seven hardware tests, an aging test and a complete machine test. The package
has the component's library and its two configuration files with their
schemas."
    DEPENDS "liblcdsdk1 ${same_version}")
if(NOT LCD_SDK_DIR)
    lcd_package(LcdSdkLibraries liblcdsdk1 BINARIES SECTION libs
        SUMMARY "reference SDK of the front panel: libraries"
        DESCRIPTION "The widgets and the translations that the factory mode uses. On a device,
the device's own libraries take their place."
        RECOMMENDS "fonts-dejavu-core, fonts-noto-cjk")
    lcd_package(LcdSdk liblcdsdk-dev SECTION libdevel
        SUMMARY "reference SDK of the front panel: headers and CMake package"
        DESCRIPTION "What it takes to build a host of the factory mode, or a page for its menu:
the headers, and the CMake package LcdSdk."
        DEPENDS "liblcdsdk1 ${same_version}, qtbase5-dev, libqt5svg5-dev")
endif()
if(LCD_BUILD_HOST)
    lcd_package(PanelHost panelhost BINARIES SECTION electronics
        SUMMARY "host with a simulated device for the factory mode"
        DESCRIPTION "Runs the factory mode of a front panel in a window with a simulated
device, on a real Linux board, or without a display from scenarios. It
records sessions, saves what was tested with which result, and writes
reports."
        DEPENDS "liblcdfactorymode1 ${same_version}, liblcdsdk1 ${same_version}, adduser, fonts-dejavu-core, libqt5sql5-sqlite"
        RECOMMENDS "fonts-noto-cjk, libqt5sql5-psql, qttranslations5-l10n"
        SCRIPTS "${CMAKE_SOURCE_DIR}/packaging/postinst;${CMAKE_SOURCE_DIR}/packaging/postrm")
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR "The lcdfactorymode developers")
set(CPACK_PACKAGE_CONTACT "${LCD_PACKAGE_CONTACT}")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_OUTPUT_FILE_PREFIX "${CMAKE_BINARY_DIR}/packages")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${LCD_PACKAGE_RELEASE})
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Our own libraries are in packages that this run only makes.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_BINARY_DIR}/lib")
set(CPACK_BUILD_SOURCE_DIRS "${CMAKE_SOURCE_DIR};${CMAKE_BINARY_DIR}")
set(CPACK_POST_BUILD_SCRIPTS "${CMAKE_SOURCE_DIR}/packaging/finishdebugpackages.cmake")
if(CMAKE_CROSSCOMPILING AND CMAKE_SYSTEM_PROCESSOR STREQUAL "aarch64")
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE arm64)
endif()
include(CPack)
