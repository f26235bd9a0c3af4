# The libraries the installed modules link. Found by the build (REQUIRED) and again, from the
# same list, by a host's find_package(Tovi): the modules are static archives, so even the
# libraries they use privately (ICU, libcurl, fmt, libuuid, cpp-httplib) end up on the host's
# link line. Only Threads is a usage requirement of a public header.
#
# The pkg-config names are prefixed so that they do not collide with a host's own UUID_* or
# HTTPLIB_* variables and targets.
set(tovi_dependency_targets Threads::Threads ICU::uc ICU::i18n CURL::libcurl fmt::fmt PkgConfig::TOVI_UUID
                            PkgConfig::TOVI_HTTPLIB)

macro(tovi_find_dependencies)
  find_package(Threads ${ARGN})
  find_package(ICU 72 ${ARGN} COMPONENTS uc i18n)
  find_package(CURL ${ARGN})
  find_package(fmt ${ARGN})
  find_package(PkgConfig ${ARGN})
  if(PKG_CONFIG_FOUND)
    pkg_check_modules(TOVI_UUID ${ARGN} IMPORTED_TARGET uuid)
    pkg_check_modules(TOVI_HTTPLIB ${ARGN} IMPORTED_TARGET cpp-httplib)
  endif()
endmacro()
