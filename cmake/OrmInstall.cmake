# Where things go when they are installed, in the usual folders of the system. What programs need of each other they find by
# relative paths, so that an installed tree can be moved as a whole.
include(GNUInstallDirs)

set(ORM_PRIVATE_DIR ${CMAKE_INSTALL_LIBDIR}/ormelle)                  # libraries that only Ormelle's programs and tools use
set(ORM_PLUGIN_DIR ${ORM_PRIVATE_DIR}/Plugins)
set(ORM_HEADER_DIR ${CMAKE_INSTALL_INCLUDEDIR}/ormelle)
set(ORM_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Ormelle)

# The host trusts its Plugins folder only if nobody but its owner can write to it, whatever the user's umask.
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# From the folder of the programs to the plug-ins, for programs that look for them.
file(RELATIVE_PATH ORM_PLUGINS_FROM_PROGRAMS /${CMAKE_INSTALL_BINDIR} /${ORM_PLUGIN_DIR})

# orm_install_library(name): a shared library with its headers, for programs, tools and whoever builds a tool.
function(orm_install_library name)
    set_target_properties(${name} PROPERTIES INSTALL_RPATH "$ORIGIN")
    install(TARGETS ${name} EXPORT OrmelleTargets LIBRARY DESTINATION ${ORM_PRIVATE_DIR} COMPONENT runtime)
    install(DIRECTORY include/ DESTINATION ${ORM_HEADER_DIR}/${name} COMPONENT development FILES_MATCHING PATTERN "*.h")
endfunction()

# orm_install_program(name)
function(orm_install_program name)
    file(RELATIVE_PATH toLibraries /${CMAKE_INSTALL_BINDIR} /${ORM_PRIVATE_DIR})
    set_target_properties(${name} PROPERTIES INSTALL_RPATH "$ORIGIN/${toLibraries}")
    install(TARGETS ${name} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
    set_property(GLOBAL APPEND PROPERTY ORM_PROGRAMS ${name}) # each gets a manual page and completion
endfunction()

# orm_install_plugin(name)
function(orm_install_plugin name)
    set_target_properties(${name} PROPERTIES INSTALL_RPATH "$ORIGIN/..")
    install(TARGETS ${name} LIBRARY DESTINATION ${ORM_PLUGIN_DIR} COMPONENT runtime
        PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
endfunction()
