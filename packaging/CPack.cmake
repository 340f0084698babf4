# Debian packages: cpack, in the build folder.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ormelle)
set(CPACK_PACKAGE_VENDOR "The Ormelle developers")
set(CPACK_PACKAGE_CONTACT "The Ormelle developers <maintainers@ormelle.invalid>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ormelle)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ormelle-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "ormelle (= ${PROJECT_VERSION}), qtbase5-dev, libqt5opengl5-dev, libgl-dev, libglu1-mesa-dev")
# What the libraries need of the system is read from them; those of Ormelle itself lie in the same package.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS "fonts-dejavu-core, libgl1-mesa-dri, qttranslations5-l10n, xvfb")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
    "compare tomography results of a subject over time
Ormelle is a preclinical optical imaging application. A mouse that was imaged
at several time points leaves saved tomography results in many sequences;
Ormelle shows them side by side, at one scale, one rotation and one colour
scale per kind of result, measures the flux of a chosen region across all of
them, plots it over time and exports figures and tables.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "headers for tools of the imaging application Ormelle
Whoever builds a tool for Ormelle links these libraries and installs the tool
into Ormelle's plug-in folder. An example is included.")
include(CPack)
