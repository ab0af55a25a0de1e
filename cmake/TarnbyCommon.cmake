# Settings every Tarnby target shares: language level, warnings, Qt's safety defines.
add_library(tarnby_common INTERFACE)
add_library(Tarnby::Common ALIAS tarnby_common)
target_compile_features(tarnby_common INTERFACE cxx_std_20)
target_compile_options(tarnby_common INTERFACE -Wall -Wextra)
if(TARNBY_WERROR)
  target_compile_options(tarnby_common INTERFACE -Werror)
endif()
target_compile_definitions(tarnby_common INTERFACE
  QT_NO_URL_CAST_FROM_STRING
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
  QT_NO_FOREACH
  TARNBY_VERSION="${PROJECT_VERSION}")
target_include_directories(tarnby_common INTERFACE ${PROJECT_SOURCE_DIR})

# tarnby_add_library(<name> SOURCES ... LIBS ...): one library per folder, named
# tarnby_<name> with the alias Tarnby::<Name>.
function(tarnby_add_library name alias)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_library(tarnby_${name} STATIC ${ARG_SOURCES})
  add_library(Tarnby::${alias} ALIAS tarnby_${name})
  target_link_libraries(tarnby_${name} PUBLIC Tarnby::Common ${ARG_LIBS})
endfunction()
