# Installing the product modules: archives, public headers, one CMake package (Tovi) with a
# component per module, and a pkg-config file per module for hosts that build without CMake.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(TOVI_CMAKE_INSTALL_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Tovi)

# What each library a module links becomes in a pkg-config file: another module's file (found
# through its target), a pkg-config module, or plain linker flags. libcurl is named by flag: its
# own static dependency list names libraries that Debian ships only as shared objects or not
# at all, so `pkg-config --static` through it would break every host's link.
set(tovi_pc_Threads::Threads "-pthread")
set(tovi_pc_ICU::uc "icu-uc")
set(tovi_pc_ICU::i18n "icu-i18n")
set(tovi_pc_CURL::libcurl "-lcurl")
set(tovi_pc_fmt::fmt "fmt")
set(tovi_pc_PkgConfig::TOVI_UUID "uuid")
set(tovi_pc_PkgConfig::TOVI_HTTPLIB "cpp-httplib")

# tovi_pc_fields(<deps> <requires-var> <libs-var>): the pkg-config Requires and Libs fields for
# a list of link dependencies; build-only ones ($<BUILD_INTERFACE:...>) have none.
function(tovi_pc_fields deps requires_var libs_var)
  set(requires "")
  set(libs "")
  foreach(dep IN LISTS deps)
    if(dep MATCHES "^\\$<BUILD_INTERFACE:")
      continue()
    elseif(TARGET ${dep} AND NOT DEFINED tovi_pc_${dep})
      get_target_property(file ${dep} OUTPUT_NAME)
      if(NOT file)
        message(FATAL_ERROR "${dep} is linked by an installed module but is not installed itself")
      endif()
      list(APPEND requires ${file})
    elseif(tovi_pc_${dep} MATCHES "^-")
      list(APPEND libs ${tovi_pc_${dep}})
    elseif(DEFINED tovi_pc_${dep})
      list(APPEND requires ${tovi_pc_${dep}})
    else()
      message(FATAL_ERROR "No pkg-config name for ${dep}: add one to cmake/ToviInstall.cmake")
    endif()
  endforeach()
  list(REMOVE_DUPLICATES requires)
  list(JOIN requires " " requires)
  list(JOIN libs " " libs)
  set(${requires_var} "${requires}" PARENT_SCOPE)
  set(${libs_var} "${libs}" PARENT_SCOPE)
endfunction()

# tovi_install_module(<target> <ExportName> <file-name> <public-deps> <private-deps> <excluded>):
# installs the archive as lib<file-name>.a, exported as Tovi::<ExportName>, its include/ folder
# without the subfolders named in <excluded>, and <file-name>.pc.
function(tovi_install_module target export_name file_name public_deps private_deps excluded)
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${export_name} OUTPUT_NAME ${file_name})
  install(TARGETS ${target} EXPORT ToviTargets
          ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
          INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
  set(patterns "")
  foreach(folder IN LISTS excluded)
    list(APPEND patterns PATTERN ${folder} EXCLUDE)
  endforeach()
  install(DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} ${patterns})

  tovi_pc_fields("${public_deps}" pc_requires pc_libs)
  tovi_pc_fields("${private_deps}" pc_requires_private pc_libs_private)
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "STATIC_LIBRARY")
    set(pc_libs "-L\${libdir} -l${file_name} ${pc_libs}")
  endif()
  set(pc_name ${export_name})
  # The prefix relative to the file itself, so that `cmake --install --prefix` anywhere works.
  file(RELATIVE_PATH pc_up /root/${CMAKE_INSTALL_LIBDIR}/pkgconfig /root)
  set(pc_file ${CMAKE_CURRENT_BINARY_DIR}/${file_name}.pc)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/tovi.pc.in ${pc_file} @ONLY)
  install(FILES ${pc_file} DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()

# The package files; called once, after every module.
function(tovi_install_package)
  install(EXPORT ToviTargets NAMESPACE Tovi:: DESTINATION ${TOVI_CMAKE_INSTALL_DIR})
  configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ToviConfig.cmake.in
                                ${PROJECT_BINARY_DIR}/ToviConfig.cmake
                                INSTALL_DESTINATION ${TOVI_CMAKE_INSTALL_DIR})
  # 0.x releases may break their interface with every minor release.
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/ToviConfigVersion.cmake
                                   COMPATIBILITY SameMinorVersion)
  install(FILES ${PROJECT_BINARY_DIR}/ToviConfig.cmake ${PROJECT_BINARY_DIR}/ToviConfigVersion.cmake
                ${PROJECT_SOURCE_DIR}/cmake/ToviDependencies.cmake
          DESTINATION ${TOVI_CMAKE_INSTALL_DIR})
endfunction()
