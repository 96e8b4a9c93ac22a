# kq_add_part(NAME FOLDER): the sources of one folder as the object library kq_part_NAME.
# kq_add_library(): all parts together as the shared library kq_pdt and, for tests, benchmarks and fuzz targets that
# use more than the public headers, as the static library kq_pdt_internal.
set_property(GLOBAL PROPERTY KQ_PARTS "")

function(kq_add_part name folder)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_library(kq_part_${name} OBJECT ${sources})
  target_include_directories(kq_part_${name} PUBLIC ${CMAKE_SOURCE_DIR})
  target_link_libraries(kq_part_${name} PRIVATE kq_warnings)
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    # Files above 2 GiB can be read and sized, and inode numbers above 32 bits are no error.
    target_compile_definitions(kq_part_${name} PRIVATE _FILE_OFFSET_BITS=64)
  endif()
  set_property(GLOBAL APPEND PROPERTY KQ_PARTS kq_part_${name})
endfunction()

function(kq_add_library)
  get_property(parts GLOBAL PROPERTY KQ_PARTS)
  set(objects "")
  foreach(part IN LISTS parts)
    list(APPEND objects $<TARGET_OBJECTS:${part}>)
  endforeach()
  add_library(kq_pdt SHARED ${objects})
  add_library(kq_pdt::kq_pdt ALIAS kq_pdt)
  set_target_properties(kq_pdt PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  target_include_directories(kq_pdt PUBLIC $<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}>
                                           $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/kq_pdt>)
  target_compile_features(kq_pdt PUBLIC cxx_std_20)
  target_link_libraries(kq_pdt PRIVATE ${CMAKE_DL_LIBS})
  set(map ${CMAKE_SOURCE_DIR}/cmake/kq_pdt.map)
  target_link_options(kq_pdt PRIVATE LINKER:--version-script=${map})
  set_property(TARGET kq_pdt PROPERTY LINK_DEPENDS ${map})
  if(NOT KQ_SANITIZE)
    # It needs nothing but the standard library. Clang leaves the sanitizers' own names open in shared libraries.
    target_link_options(kq_pdt PRIVATE LINKER:--no-undefined)
  endif()
  add_library(kq_pdt_internal STATIC ${objects})
  target_include_directories(kq_pdt_internal PUBLIC ${CMAKE_SOURCE_DIR})
  target_compile_features(kq_pdt_internal PUBLIC cxx_std_20)
endfunction()
