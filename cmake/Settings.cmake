# Settings that every target of the tree shares, and how its libraries are declared.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)  # what is built does not depend on the path

if(PROJECT_IS_TOP_LEVEL)
  add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion)
endif()
if(NIMBREL_WERROR)
  add_compile_options(-Werror)
endif()
if(NIMBREL_SANITIZE)
  add_compile_options(-fsanitize=${NIMBREL_SANITIZE} -fno-omit-frame-pointer
                      -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${NIMBREL_SANITIZE})
endif()

include(cmake/Hardening.cmake)

# nimbrel_library(NAME source...): a library with hidden symbols, Nimbrel::NAME in the tree.
function(nimbrel_library name)
  add_library(${name} ${ARGN})
  add_library(Nimbrel::${name} ALIAS ${name})
  set_target_properties(${name} PROPERTIES VERSION ${PROJECT_VERSION}
                        SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
  target_compile_features(${name} PUBLIC cxx_std_17)
  target_include_directories(${name} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/nimbrelconfig>)
  # Our own exported functions are taken to be the ones that are called; what a host may define itself
  # is weak and stays its own. Shared and static libraries are compiled alike, so that a compiler's
  # cache serves both.
  target_compile_options(${name} PRIVATE -fno-semantic-interposition)
  set_target_properties(${name} PROPERTIES DEFINE_SYMBOL "")
  # Where the build type optimises, each source is compiled alone, as for the benchmarks, also with CMAKE_UNITY_BUILD.
  if(CMAKE_BUILD_TYPE MATCHES "Rel")
    set_target_properties(${name} PROPERTIES UNITY_BUILD OFF)
  endif()
  if(BUILD_SHARED_LIBS)
    set(exports ${PROJECT_SOURCE_DIR}/cmake/exports.map)
    set(preemptible ${PROJECT_SOURCE_DIR}/cmake/preemptible.map)
    set_target_properties(${name} PROPERTIES LINK_DEPENDS "${exports};${preemptible}")
    target_link_options(${name} PRIVATE LINKER:--version-script=${exports}
                        LINKER:--dynamic-list=${preemptible})
    # Stays when it has been loaded: each time that they are unloaded, libsoup, ICU and libxml2
    # leave memory behind.
    target_link_options(${name} PRIVATE LINKER:-z,nodelete)
    # The dynamic linker looks for every symbol of libstdc++ in the libraries that a program names
    # before it: a process of this tree that names it first saves 4 % of its start. What is installed
    # does not ask for that, as not every tool that reads it understands such an option.
    if(NOT NIMBREL_SANITIZE)
      target_link_options(${name} INTERFACE
        $<BUILD_INTERFACE:LINKER:--push-state,--no-as-needed,-lstdc++,--pop-state>)
    endif()
    # What a sanitizer or a fuzzer needs comes with the program.
    if(NOT NIMBREL_SANITIZE AND NOT NIMBREL_BUILD_FUZZ)
      target_link_options(${name} PRIVATE LINKER:-z,defs)
    endif()
  endif()
endfunction()

# nimbrel_module(LIBRARY NAME OPENED_BY source SOURCES source... LIBS library...): a part of LIBRARY that
# links what most processes never need. It becomes a module that this source of LIBRARY opens by its run path
# when it has to, from a private folder beside it; both have the version in their names, so that two versions
# can be installed, and loaded. A static library is linked with all of it, and so is one for a sanitizer,
# whose runtime stands between LIBRARY and dlopen.
function(nimbrel_module library name)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "OPENED_BY" "SOURCES;LIBS")
  if(NOT BUILD_SHARED_LIBS OR NIMBREL_SANITIZE)
    add_library(${name} OBJECT ${arg_SOURCES})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE ${arg_LIBS})
    target_sources(${library} PRIVATE $<TARGET_OBJECTS:${name}>)
    if(BUILD_SHARED_LIBS)
      target_link_libraries(${library} PRIVATE ${arg_LIBS})
    else()
      # The other sources do not see these libraries: they are compiled as for a shared library, and a
      # compiler's cache serves both.
      target_link_libraries(${library} INTERFACE $<LINK_ONLY:${arg_LIBS}>)
    endif()
    return()
  endif()
  set(version ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
  set(folder ${library}-${version})
  add_library(${name} MODULE ${arg_SOURCES})
  set_target_properties(${name} PROPERTIES PREFIX "" OUTPUT_NAME ${name}-${version}
    LIBRARY_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${folder})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PRIVATE ${arg_LIBS})
  set(exports ${PROJECT_SOURCE_DIR}/cmake/module.map)
  set_target_properties(${name} PROPERTIES LINK_DEPENDS ${exports})
  target_link_options(${name} PRIVATE LINKER:--version-script=${exports} LINKER:-z,nodelete
                      LINKER:-z,defs)
  if(NIMBREL_INSTALL)
    install(TARGETS ${name} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/${folder}
            COMPONENT Runtime)
  endif()

  string(REGEX REPLACE "^nimbrel(.*)$" "NIMBREL_\\1_MODULE" macro ${library})
  string(TOUPPER ${macro} macro)
  set_property(SOURCE ${arg_OPENED_BY} APPEND PROPERTY COMPILE_DEFINITIONS
    ${macro}="${folder}/$<TARGET_FILE_NAME:${name}>")
  target_link_libraries(${library} PRIVATE ${CMAKE_DL_LIBS})
  # Not INSTALL_RPATH, which CMAKE_SKIP_INSTALL_RPATH switches off: nothing else finds the module.
  # Not target_link_options, which escapes "$" twice.
  set_property(TARGET ${library} APPEND_STRING PROPERTY LINK_FLAGS
    " -Wl,--enable-new-dtags,-rpath,'$ORIGIN/${folder}'")
  add_dependencies(${library} ${name})
endfunction()
