include(CMakePackageConfigHelpers)

set(ZELVOR_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/ZelvorDataType)

install(TARGETS ZelvorBase ZelvorSerializationStreams ZelvorSerialization ZelvorDataType
        ZelvorInterop
    EXPORT ZelvorDataTypeTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# Installed, the libraries find each other in their own folder and the tool finds them
# in the prefix's library folder, by run paths relative to themselves: a prefix works
# from any folder, moved or not, with nothing on the loader's path.
set_target_properties(ZelvorBase ZelvorSerialization ZelvorDataType ZelvorInterop PROPERTIES
    INSTALL_RPATH "$ORIGIN")
if(TARGET zelvor)
    set_target_properties(zelvor PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
    install(TARGETS zelvor RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

# The formatters go in an export set of their own, which the package loads only where
# fmt is found, so that the rest of the package never asks for fmt.
install(TARGETS ZelvorFormat EXPORT ZelvorFormatTargets)
install(EXPORT ZelvorFormatTargets
    NAMESPACE Zelvor::
    DESTINATION ${ZELVOR_CMAKE_DIR})

install(DIRECTORY base/include/ZelvorBase
                  serialization/include/ZelvorSerialization
                  datatype/include/ZelvorDataType
                  interop/include/ZelvorInterop
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

install(EXPORT ZelvorDataTypeTargets
    NAMESPACE Zelvor::
    DESTINATION ${ZELVOR_CMAKE_DIR})

configure_package_config_file(cmake/ZelvorDataTypeConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/ZelvorDataTypeConfig.cmake
    INSTALL_DESTINATION ${ZELVOR_CMAKE_DIR})
write_basic_package_version_file(
    ${CMAKE_CURRENT_BINARY_DIR}/ZelvorDataTypeConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ZelvorDataTypeConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/ZelvorDataTypeConfigVersion.cmake
        DESTINATION ${ZELVOR_CMAKE_DIR})
