# Three packages come of this tree, so that each can be had alone:
#   ZETHostHeaders  what the library asks of a host; for whoever writes one
#   ZETHost         the open host, unless the host came from elsewhere
#   ZETLaser        the library

include(CMakePackageConfigHelpers)

function(zet_install_package package)
    set(folder "${CMAKE_INSTALL_LIBDIR}/cmake/${package}")
    configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/${package}Config.cmake.in"
        "${PROJECT_BINARY_DIR}/packages/${package}Config.cmake"
        INSTALL_DESTINATION "${folder}"
        NO_SET_AND_CHECK_MACRO)
    write_basic_package_version_file("${PROJECT_BINARY_DIR}/packages/${package}ConfigVersion.cmake"
        COMPATIBILITY SameMinorVersion)
    install(FILES
        "${PROJECT_BINARY_DIR}/packages/${package}Config.cmake"
        "${PROJECT_BINARY_DIR}/packages/${package}ConfigVersion.cmake"
        DESTINATION "${folder}")
endfunction()

set_target_properties(ZETHostHeaders PROPERTIES EXPORT_NAME Headers)
install(TARGETS ZETHostHeaders EXPORT ZETHostHeadersTargets
    FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/zetlaser/host")
install(EXPORT ZETHostHeadersTargets NAMESPACE ZETHost:: DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/ZETHostHeaders")
zet_install_package(ZETHostHeaders)

if(ZETLASER_HOST STREQUAL "open")
    install(TARGETS ZETOpenHost EXPORT ZETHostTargets)
    install(EXPORT ZETHostTargets NAMESPACE ZETHost:: DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/ZETHost")
    zet_install_package(ZETHost)
endif()

install(TARGETS ZETLaser EXPORT ZETLaserTargets)
install(EXPORT ZETLaserTargets NAMESPACE ZETLaser:: DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/ZETLaser")
zet_install_package(ZETLaser)

# The headers of the exported classes, and those that they stand on.
install(FILES
    "${PROJECT_SOURCE_DIR}/laser/ZETLaserGlobal.h"
    "${PROJECT_SOURCE_DIR}/laser/ZETLaserOutline.h"
    DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/zetlaser/laser")
file(STRINGS "${PROJECT_SOURCE_DIR}/laser/exported-classes.txt" classes)
foreach(class IN LISTS classes)
    foreach(folder IN ITEMS laser features writers)
        if(EXISTS "${PROJECT_SOURCE_DIR}/${folder}/${class}.h")
            install(FILES "${PROJECT_SOURCE_DIR}/${folder}/${class}.h"
                DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/zetlaser/${folder}")
        endif()
    endforeach()
endforeach()
