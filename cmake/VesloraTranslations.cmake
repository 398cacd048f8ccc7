# SPDX-License-Identifier: MIT
# Compiles the texts of every language and puts them into the program's resources.

find_program(VESLORA_LRELEASE lrelease HINTS ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS} /usr/lib/qt6/bin NO_CACHE)
if(NOT VESLORA_LRELEASE)
    message(FATAL_ERROR "Qt's lrelease, which compiles the translations, was not found; on Debian the package "
                        "qt6-l10n-tools brings it, and tools/setup installs all that a build needs.")
endif()

# Adds the languages of ${CMAKE_SOURCE_DIR}/translations to the target, as ":/translations/veslora_de.qm".
function(veslora_translations target)
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/translations/*.ts)
    foreach(source ${sources})
        get_filename_component(name ${source} NAME_WLE)
        set(compiled ${CMAKE_CURRENT_BINARY_DIR}/translations/${name}.qm)
        add_custom_command(
            OUTPUT ${compiled}
            COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_CURRENT_BINARY_DIR}/translations
            COMMAND ${VESLORA_LRELEASE} -silent -nounfinished -removeidentical ${source} -qm ${compiled}
            DEPENDS ${source}
            VERBATIM)
        list(APPEND all ${compiled})
    endforeach()
    # Uncompressed, a translation is read where the program lies in memory, without a copy.
    qt_add_resources(${target} translations PREFIX / BASE ${CMAKE_CURRENT_BINARY_DIR} OPTIONS -no-compress FILES ${all})
endfunction()
