# Compiles the translations *.ts of a folder and puts them into a target as the resource ":/translations", so that nothing has to be
# installed beside it. The target's code calls Q_INIT_RESOURCE(translations).

get_target_property(_orm_qmake Qt5::qmake IMPORTED_LOCATION)
get_filename_component(_orm_qt_programs ${_orm_qmake} DIRECTORY)
# Beside Qt's own programs first: what stands in the path may be those of another Qt.
find_program(ORM_LRELEASE lrelease HINTS ${_orm_qt_programs} NO_DEFAULT_PATH)
find_program(ORM_LRELEASE NAMES lrelease-qt5 lrelease REQUIRED)
find_program(ORM_LUPDATE lupdate HINTS ${_orm_qt_programs} NO_DEFAULT_PATH)
find_program(ORM_LUPDATE NAMES lupdate-qt5 lupdate REQUIRED)

function(orm_add_translations target folder)
    file(GLOB sources CONFIGURE_DEPENDS ${folder}/*.ts)
    set(place ${CMAKE_CURRENT_BINARY_DIR}/translations)
    file(MAKE_DIRECTORY ${place})
    set(entries "")
    foreach(source IN LISTS sources)
        get_filename_component(name ${source} NAME_WE)
        add_custom_command(OUTPUT ${place}/${name}.qm
            COMMAND ${ORM_LRELEASE} -silent ${source} -qm ${place}/${name}.qm
            DEPENDS ${source} VERBATIM)
        string(APPEND entries "    <file>${name}.qm</file>\n")
    endforeach()
    file(CONFIGURE OUTPUT ${place}/translations.qrc @ONLY
        CONTENT "<RCC version=\"1.0\">\n  <qresource prefix=\"/translations\">\n@entries@  </qresource>\n</RCC>\n")
    qt5_add_resources(resource ${place}/translations.qrc)
    target_sources(${target} PRIVATE ${resource})
endfunction()
