# The installed package: headers, DLLs, import libraries, documentation and a package config.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Quillet)
set(starter_skin_dir ${CMAKE_INSTALL_DATADIR}/quillet/starter-skin)

if(NOT QUILLET_DUILIB)
    install(TARGETS duilib EXPORT QuilletTargets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/duilib)
endif()
install(TARGETS quillet EXPORT QuilletTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
if(QUILLET_RUNTIME_DLLS)
    install(FILES ${QUILLET_RUNTIME_DLLS} DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

install(EXPORT QuilletTargets NAMESPACE Quillet:: DESTINATION ${package_dir})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/QuilletConfig.cmake.in
    ${PROJECT_BINARY_DIR}/QuilletConfig.cmake INSTALL_DESTINATION ${package_dir}
    PATH_VARS starter_skin_dir)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/QuilletConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/QuilletConfig.cmake
    ${PROJECT_BINARY_DIR}/QuilletConfigVersion.cmake
    DESTINATION ${package_dir})

# The skins that the library's windows name, for applications to begin with.
install(DIRECTORY gallery/skin/common gallery/skin/HomePageTools DESTINATION ${starter_skin_dir})
install(FILES
    gallery/skin/Loading.xml
    gallery/skin/MessageBox.xml
    gallery/skin/MessageBox02.xml
    gallery/skin/MessageBox03.xml
    gallery/skin/PromptWnd.xml
    gallery/skin/ViewContacts.xml
    DESTINATION ${starter_skin_dir})

install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR} PATTERN snippets EXCLUDE PATTERN tool EXCLUDE)
install(FILES README.md LICENSE CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
