# What is installed: libraries, headers, the generator, the definition files, a CMake package and a
# pkg-config file. The folders below one prefix may be moved together.
include_guard( GLOBAL )
include( CMakePackageConfigHelpers )

set( packageName FlowTrackingConfigStatus )
set( packageIncludeDir "${CMAKE_INSTALL_INCLUDEDIR}/${packageName}" )
set( packageConfigDir "${CMAKE_INSTALL_LIBDIR}/cmake/${packageName}" )
set( packageVokDir "${CMAKE_INSTALL_DATADIR}/${packageName}/vok" )
set( packageDocDir "${CMAKE_INSTALL_DATADIR}/${packageName}/reference" )

# Libraries and the generator, and the targets under which a package user finds them.
install( TARGETS Vok VokStore FlowTrackingConfigStatus EXPORT FlowTrackingTargets
   LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
   INCLUDES DESTINATION "${packageIncludeDir}" )
install( TARGETS vokgen EXPORT VokgenTargets
   RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" )
if( TARGET VokStoreNet )
   install( TARGETS VokStoreNet EXPORT FlowTrackingTargets
      LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
      INCLUDES DESTINATION "${packageIncludeDir}" )
endif()
if( TARGET VokStoreSqlite )
   install( TARGETS VokStoreSqlite EXPORT FlowTrackingTargets
      LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
      INCLUDES DESTINATION "${packageIncludeDir}" )
endif()
install( EXPORT FlowTrackingTargets DESTINATION "${packageConfigDir}" NAMESPACE FlowTracking:: )
install( EXPORT VokgenTargets DESTINATION "${packageConfigDir}" NAMESPACE Vok:: )

# Headers: clients write "Vok/Vok.h", "FlowTracker/ApplicationId.h", "Wyre/IntfId.h".
# What stands on libuv or SQLite is no client's business.
install( DIRECTORY Vok store
   DESTINATION "${packageIncludeDir}" FILES_MATCHING PATTERN "*.h"
   PATTERN "uv" EXCLUDE REGEX "/store/sqlite/detail" EXCLUDE )
install( DIRECTORY "${PROJECT_SOURCE_DIR}/Platform/" "${PROJECT_BINARY_DIR}/gen/Platform/"
   DESTINATION "${packageIncludeDir}" FILES_MATCHING PATTERN "*.h" )
install( DIRECTORY "${PROJECT_BINARY_DIR}/gen/FlowTracker"
   DESTINATION "${packageIncludeDir}" FILES_MATCHING PATTERN "*.h" )

# Definition files, for the modules of other projects to use, and the reference pages.
install( DIRECTORY FlowTracker "${PROJECT_SOURCE_DIR}/Platform/"
   DESTINATION "${packageVokDir}" FILES_MATCHING PATTERN "*.vok" )
install( DIRECTORY "${PROJECT_BINARY_DIR}/gen/FlowTracker" "${PROJECT_BINARY_DIR}/gen/Platform/"
   DESTINATION "${packageDocDir}" FILES_MATCHING PATTERN "*.md" )

# The CMake package.
configure_package_config_file(
   "${PROJECT_SOURCE_DIR}/cmake/${packageName}Config.cmake.in"
   "${PROJECT_BINARY_DIR}/${packageName}Config.cmake"
   INSTALL_DESTINATION "${packageConfigDir}"
   PATH_VARS packageVokDir )
write_basic_package_version_file(
   "${PROJECT_BINARY_DIR}/${packageName}ConfigVersion.cmake" COMPATIBILITY SameMajorVersion )
install( FILES
   "${PROJECT_BINARY_DIR}/${packageName}Config.cmake"
   "${PROJECT_BINARY_DIR}/${packageName}ConfigVersion.cmake"
   "${PROJECT_SOURCE_DIR}/cmake/VokGenerate.cmake"
   DESTINATION "${packageConfigDir}" )

# pkg-config: the prefix is found from where the file lies, so that it may be moved too.
set( pkgConfigDir "${CMAKE_INSTALL_LIBDIR}/pkgconfig" )
cmake_path( SET prefixFromPkgConfig "${CMAKE_INSTALL_PREFIX}" )
cmake_path( ABSOLUTE_PATH pkgConfigDir BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}"
   OUTPUT_VARIABLE pkgConfigFullDir )
cmake_path( RELATIVE_PATH prefixFromPkgConfig BASE_DIRECTORY "${pkgConfigFullDir}" )
# An absolute folder stands for itself: appending it to the prefix replaces the prefix.
cmake_path( APPEND pkgConfigLibDir "\${prefix}" "${CMAKE_INSTALL_LIBDIR}" )
cmake_path( APPEND pkgConfigIncludeDir "\${prefix}" "${packageIncludeDir}" )
configure_file(
   "${PROJECT_SOURCE_DIR}/cmake/${packageName}.pc.in"
   "${PROJECT_BINARY_DIR}/${packageName}.pc" @ONLY )
install( FILES "${PROJECT_BINARY_DIR}/${packageName}.pc" DESTINATION "${pkgConfigDir}" )
