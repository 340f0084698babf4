# Targets with a level. A target may link only targets of a lower level, so that the libraries stay
# one way downwards without a cycle; configuring stops on a link that goes up or sideways.

include(${CMAKE_CURRENT_LIST_DIR}/OrmInstall.cmake)

set(ORM_WARNINGS -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)

function(_orm_setup target level)
    set_target_properties(${target} PROPERTIES ORM_LEVEL ${level})
    target_compile_options(${target} PRIVATE ${ORM_WARNINGS})
    target_compile_definitions(${target} PRIVATE QT_DEPRECATED_WARNINGS GL_GLEXT_PROTOTYPES)
    if(ORM_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=address,undefined -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=address,undefined)
    endif()
endfunction()

# Links targets of this project (checked by level) and libraries from outside (not checked).
function(_orm_link target scope level)
    foreach(dep IN LISTS ARGN)
        if(TARGET ${dep})
            get_target_property(depLevel ${dep} ORM_LEVEL)
            if(NOT depLevel STREQUAL "depLevel-NOTFOUND" AND NOT depLevel LESS level)
                message(FATAL_ERROR "${target} (level ${level}) must not link ${dep} (level ${depLevel}): links go downwards only")
            endif()
        elseif(dep MATCHES "^orm|^longitudinalstudy")
            message(FATAL_ERROR "${target} links ${dep}, which is not known yet: libraries are added from the bottom up")
        endif()
        target_link_libraries(${target} ${scope} ${dep})
    endforeach()
endfunction()

# orm_add_library(name LEVEL n [STATIC] DEPENDS ... [PRIVATE_DEPENDS ...] [DIRS folder...])
# takes include/*.h, src/*.cpp, src/*.h and *.qrc of the current folder, or *.cpp and *.h of DIRS.
function(orm_add_library name)
    cmake_parse_arguments(ARG "STATIC" "LEVEL" "DEPENDS;PRIVATE_DEPENDS;DIRS" ${ARGN})
    if(ARG_DIRS)
        set(includes "")
        set(sources "")
        foreach(dir IN LISTS ARG_DIRS)
            file(GLOB found CONFIGURE_DEPENDS ${dir}/*.cpp ${dir}/*.h ${dir}/*.qrc ${dir}/*.ui)
            list(APPEND sources ${found})
            list(APPEND includes ${CMAKE_CURRENT_SOURCE_DIR}/${dir})
        endforeach()
    else()
        file(GLOB sources CONFIGURE_DEPENDS src/*.cpp src/*.h include/*.h src/*.qrc)
        set(includes ${CMAKE_CURRENT_SOURCE_DIR}/include)
    endif()
    if(ARG_STATIC)
        add_library(${name} STATIC ${sources})
    else()
        add_library(${name} SHARED ${sources})
        orm_install_library(${name})
    endif()
    target_include_directories(${name} PUBLIC "$<BUILD_INTERFACE:${includes}>" "$<INSTALL_INTERFACE:${ORM_HEADER_DIR}/${name}>"
        PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/src)
    _orm_setup(${name} ${ARG_LEVEL})
    _orm_link(${name} PUBLIC ${ARG_LEVEL} ${ARG_DEPENDS})
    _orm_link(${name} PRIVATE ${ARG_LEVEL} ${ARG_PRIVATE_DEPENDS})
endfunction()

# orm_add_program(name LEVEL n SUMMARY text DEPENDS ...) takes *.cpp and *.h of the current folder and of src/. The summary, a few words
# without a full stop, heads the program's manual page.
function(orm_add_program name)
    cmake_parse_arguments(ARG "" "LEVEL;SUMMARY" "DEPENDS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h *.qrc src/*.cpp src/*.h src/*.qrc)
    add_executable(${name} ${sources})
    target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR}/src)
    _orm_setup(${name} ${ARG_LEVEL})
    _orm_link(${name} PRIVATE ${ARG_LEVEL} ${ARG_DEPENDS})
    if(NOT ARG_SUMMARY)
        message(FATAL_ERROR "${name}: say in a few words what it does (SUMMARY)")
    endif()
    set_target_properties(${name} PROPERTIES ORM_SUMMARY "${ARG_SUMMARY}")
    orm_install_program(${name})
endfunction()

# orm_add_tests(area DEPENDS ... [TIMEOUT s]) makes one program and one test of each tst_*.cpp of the current folder.
# The tests see a home of their own, never the user's, and English. An unexpected warning fails a test.
function(orm_add_tests area)
    cmake_parse_arguments(ARG "" "TIMEOUT" "DEPENDS" ${ARGN})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 240)
    endif()
    file(GLOB tests CONFIGURE_DEPENDS tst_*.cpp)
    foreach(test IN LISTS tests)
        get_filename_component(name ${test} NAME_WE)
        add_executable(${name} ${test})
        set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
        _orm_setup(${name} 100)
        target_compile_definitions(${name} PRIVATE ORM_SOURCE_DIR="${CMAKE_SOURCE_DIR}" ORM_BINARY_DIR="${CMAKE_BINARY_DIR}")
        target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests/support)
        _orm_link(${name} PRIVATE 100 ${ARG_DEPENDS} Qt5::Test)
        add_test(NAME ${area}.${name} COMMAND ${name})
        # Who looks at the screen must have it alone: the windows of other tests would lie before its own.
        file(STRINGS ${test} looksAtScreen REGEX "grabWindow")
        if(looksAtScreen)
            set_tests_properties(${area}.${name} PROPERTIES RUN_SERIAL ON)
        endif()
        set(home ${CMAKE_BINARY_DIR}/testhome/${name})
        file(MAKE_DIRECTORY ${home}/run)
        file(CHMOD ${home}/run PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
        set_tests_properties(${area}.${name} PROPERTIES
            TIMEOUT ${ARG_TIMEOUT}
            FAIL_REGULAR_EXPRESSION "QWARN|QCRITICAL"
            ENVIRONMENT "LANGUAGE=en;HOME=${home};XDG_CONFIG_HOME=${home}/config;XDG_DATA_HOME=${home}/data;XDG_CACHE_HOME=${home}/cache;XDG_RUNTIME_DIR=${home}/run;LIBGL_ALWAYS_SOFTWARE=1;QT_LOGGING_RULES=qt.*=false;UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1;ASAN_OPTIONS=detect_leaks=0:allocator_may_return_null=1")
    endforeach()
endfunction()

# orm_add_scaled_tests(area test...) runs tests of orm_add_tests(area ...) once more with every pixel of a widget as one and a half and as
# two of the display, as a user of a fine display has them. The display is one of their own, on which windows of that size have room.
function(orm_add_scaled_tests area)
    foreach(name IN LISTS ARGN)
        get_property(environment TEST ${area}.${name} PROPERTY ENVIRONMENT)
        get_property(timeout TEST ${area}.${name} PROPERTY TIMEOUT)
        get_property(failure TEST ${area}.${name} PROPERTY FAIL_REGULAR_EXPRESSION)
        foreach(factor 1.5 2)
            set(scaled ${area}.${name}_scaled_${factor})
            add_test(NAME ${scaled} COMMAND xvfb-run -a -s "-screen 0 3200x2400x24" $<TARGET_FILE:${name}>)
            set_tests_properties(${scaled} PROPERTIES TIMEOUT ${timeout} FAIL_REGULAR_EXPRESSION "${failure}"
                ENVIRONMENT "${environment};QT_SCALE_FACTOR=${factor}")
        endforeach()
    endforeach()
endfunction()
