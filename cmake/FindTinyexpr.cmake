# Finds tinyexpr, the library that evaluates calibration expressions, as the target Tinyexpr::tinyexpr:
# on the system or below CMAKE_PREFIX_PATH first, else where scripts/install-dependencies puts it.

set(_Tinyexpr_own_prefix "${PROJECT_SOURCE_DIR}/.deps/tinyexpr")
find_path(Tinyexpr_INCLUDE_DIR tinyexpr.h PATHS "${_Tinyexpr_own_prefix}/include")
find_library(Tinyexpr_LIBRARY tinyexpr PATHS "${_Tinyexpr_own_prefix}/lib")
mark_as_advanced(Tinyexpr_INCLUDE_DIR Tinyexpr_LIBRARY)

if(Tinyexpr_INCLUDE_DIR AND Tinyexpr_LIBRARY)
  set(Tinyexpr_FOUND TRUE)
elseif(Tinyexpr_FIND_REQUIRED)
  message(FATAL_ERROR
    "tinyexpr (header tinyexpr.h, library tinyexpr) is neither on the system, nor below CMAKE_PREFIX_PATH, "
    "nor in ${_Tinyexpr_own_prefix}. Run scripts/install-dependencies, then configure again.")
endif()

if(Tinyexpr_FOUND AND NOT TARGET Tinyexpr::tinyexpr)
  # Its header guards itself with extern "C"; an imported target's headers are system headers.
  add_library(Tinyexpr::tinyexpr UNKNOWN IMPORTED)
  set_target_properties(Tinyexpr::tinyexpr PROPERTIES
    IMPORTED_LOCATION "${Tinyexpr_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${Tinyexpr_INCLUDE_DIR}"
    INTERFACE_LINK_LIBRARIES m)
endif()
