# zet_export_only(target file)
#
# Keeps all but the classes that the file lists, one a line, and the flag _ZETLaserLoaded out of the shared library's
# symbol table. Hidden visibility alone doesn't: instances of templates of the standard library stay visible with it.
function(zet_export_only target file)
    if(NOT CMAKE_SYSTEM_NAME STREQUAL "Linux")
        return()
    endif()
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${file}")
    file(STRINGS "${file}" classes)
    set(patterns "")
    foreach(class IN LISTS classes)
        string(APPEND patterns "        ${class}::*;\n")
        foreach(prefix "vtable for" "typeinfo for" "typeinfo name for" "guard variable for"
                "non-virtual thunk to" "virtual thunk to" "covariant return thunk to")
            # A blank is written as ?, because the classic linker reads only quoted names with blanks, and those
            # literally.
            string(REPLACE " " "?" prefix "${prefix}")
            string(APPEND patterns "        ${prefix}?${class};\n        ${prefix}?${class}::*;\n")
        endforeach()
    endforeach()
    set(script "${CMAKE_CURRENT_BINARY_DIR}/${target}.version")
    file(CONFIGURE OUTPUT "${script}" @ONLY
        CONTENT "{\n    global:\n    _ZETLaserLoaded;\n    extern \"C++\" {\n@patterns@    };\n    local: *;\n};\n")
    target_link_options(${target} PRIVATE "LINKER:--version-script=${script}")
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${script}")
endfunction()
