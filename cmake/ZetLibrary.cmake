# The shared library, and the same objects as a static form for tests of internals.

function(zet_check_unit_order units)
  set(stems "")
  foreach(unit IN LISTS units)
    get_filename_component(stem ${unit} NAME)
    list(APPEND stems ${stem})
  endforeach()
  set(sorted ${stems})
  list(SORT sorted COMPARE STRING)
  if(NOT "${sorted}" STREQUAL "${stems}")
    message(FATAL_ERROR "cmake/ZetUnits.cmake is not sorted by class name; the order should be: ${sorted}")
  endif()
endfunction()

zet_check_unit_order("${ZET_UNITS}")

set(ZET_SOURCES "")
foreach(unit IN LISTS ZET_UNITS ZET_LAST_UNIT)
  list(APPEND ZET_SOURCES src/${unit}.cpp)
endforeach()

file(GLOB ZET_PUBLIC_HEADERS CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/inc/zet/*)

add_library(zet_objects OBJECT ${ZET_SOURCES})
target_compile_features(zet_objects PUBLIC cxx_std_20)
target_include_directories(zet_objects
  PUBLIC ${PROJECT_SOURCE_DIR}/inc
  PRIVATE ${PROJECT_SOURCE_DIR}/src)
target_link_libraries(zet_objects PRIVATE $<BUILD_INTERFACE:zet_warnings>)
set_target_properties(zet_objects PROPERTIES
  POSITION_INDEPENDENT_CODE ON
  CXX_VISIBILITY_PRESET hidden
  VISIBILITY_INLINES_HIDDEN ON)
# Results are those of the written operations, one rounding each.
target_compile_options(zet_objects PRIVATE -ffp-contract=off)
# Nobody replaces one function of the library by another, so its own calls may be inlined.
target_compile_options(zet_objects PRIVATE -fno-semantic-interposition)

include(cmake/ZetGrammar.cmake OPTIONAL)
include(cmake/ZetKernels.cmake OPTIONAL)

add_library(zetw_no_tbb SHARED $<TARGET_OBJECTS:zet_objects>)
add_library(zet::zetw ALIAS zetw_no_tbb)
target_compile_features(zetw_no_tbb INTERFACE cxx_std_17)
target_sources(zetw_no_tbb INTERFACE FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR}/inc FILES ${ZET_PUBLIC_HEADERS})
set_target_properties(zetw_no_tbb PROPERTIES
  EXPORT_NAME zetw
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR}
  LINKER_LANGUAGE CXX)
target_link_options(zetw_no_tbb PRIVATE -Wl,--no-undefined)
if(ZET_SANITIZE)
  target_link_options(zetw_no_tbb PRIVATE LINKER:-z,undefs)
endif()

# For tests of what callers never see.
add_library(zet_internals STATIC EXCLUDE_FROM_ALL $<TARGET_OBJECTS:zet_objects>)
target_include_directories(zet_internals PUBLIC ${PROJECT_SOURCE_DIR}/inc ${PROJECT_SOURCE_DIR}/src)
