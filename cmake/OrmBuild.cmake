# ORM_BUILD: what git calls the state of the sources, for the version texts; "unknown" outside a git work tree of this project.
set(ORM_BUILD unknown)
find_package(Git QUIET)
if(GIT_FOUND AND EXISTS ${CMAKE_SOURCE_DIR}/.git)
    execute_process(COMMAND ${GIT_EXECUTABLE} describe --always --tags --dirty
        WORKING_DIRECTORY ${CMAKE_SOURCE_DIR} RESULT_VARIABLE result OUTPUT_VARIABLE described
        OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    if(result EQUAL 0 AND described MATCHES "^[A-Za-z0-9._+-]+$")
        set(ORM_BUILD ${described})
    endif()
endif()
