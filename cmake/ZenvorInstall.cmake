# The CMake package: find_package(ZenvorSDK) gives Zenvor::Zenvor, and with COMPONENTS Widgets also
# Zenvor::Widgets.

include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ZenvorSDK)

install(TARGETS Zenvor EXPORT ZenvorSDKTargets
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/zenvor ${PROJECT_BINARY_DIR}/include/zenvor
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILES_MATCHING PATTERN "*.h")
install(FILES ${PROJECT_BINARY_DIR}/qml/Zenvor/qmldir ${PROJECT_BINARY_DIR}/qml/Zenvor/zenvor.qmltypes
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/qt6/qml/Zenvor)
install(EXPORT ZenvorSDKTargets NAMESPACE Zenvor:: DESTINATION ${package_dir})
if(ZENVOR_WITH_WIDGETS)
    install(TARGETS ZenvorWidgets EXPORT ZenvorSDKWidgetsTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(EXPORT ZenvorSDKWidgetsTargets NAMESPACE Zenvor:: DESTINATION ${package_dir})
endif()

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ZenvorSDKConfig.cmake.in
    ${PROJECT_BINARY_DIR}/ZenvorSDKConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZenvorSDKConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZenvorSDKConfig.cmake ${PROJECT_BINARY_DIR}/ZenvorSDKConfigVersion.cmake
    DESTINATION ${package_dir})
