# Settings that every target of the tree shares, and how its libraries are declared.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

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
  if(BUILD_SHARED_LIBS)
    # Our own exported functions are taken to be the ones that are called; what a host may define
    # itself is weak and stays its own.
    target_compile_options(${name} PRIVATE -fno-semantic-interposition)
    set(exports ${PROJECT_SOURCE_DIR}/cmake/exports.map)
    set_target_properties(${name} PROPERTIES LINK_DEPENDS ${exports})
    target_link_options(${name} PRIVATE LINKER:--version-script=${exports})
    # Stays when it has been loaded: each time that they are unloaded, libsoup, ICU and libxml2
    # leave memory behind.
    target_link_options(${name} PRIVATE LINKER:-z,nodelete)
    # What a sanitizer or a fuzzer needs comes with the program.
    if(NOT NIMBREL_SANITIZE AND NOT NIMBREL_BUILD_FUZZ)
      target_link_options(${name} PRIVATE LINKER:-z,defs)
    endif()
  endif()
endfunction()
