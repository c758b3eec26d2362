# What distributions switch on for all that they build, for optimised builds of our own:
# scripts/check-hardening looks for it in what is installed.

include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

if(NOT NIMBREL_HARDENING OR NIMBREL_SANITIZE OR NIMBREL_BUILD_FUZZ)
  return()
endif()

set(optimised $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
# "None" takes its options from a packager.
set(hardened $<CONFIG:Release,RelWithDebInfo,MinSizeRel,None>)

# nimbrel_harden(FLAG): as far as the compiler has it for this processor.
function(nimbrel_harden flag)
  string(MAKE_C_IDENTIFIER "NIMBREL_HAS${flag}" known)
  check_cxx_compiler_flag(${flag} ${known})
  if(${known})
    add_compile_options($<${hardened}:${flag}>)
  endif()
endfunction()

add_compile_options(-Wformat -Werror=format-security)
nimbrel_harden(-fstack-protector-strong)
nimbrel_harden(-fcf-protection)               # x86
nimbrel_harden(-mbranch-protection=standard)  # AArch64
# A level that the builder chose stands.
if(NOT "${CMAKE_CXX_FLAGS} $ENV{CPPFLAGS}" MATCHES "_FORTIFY_SOURCE")
  add_compile_options($<${optimised}:-D_FORTIFY_SOURCE=2>)
endif()
add_link_options($<${hardened}:LINKER:-z,relro> $<${hardened}:LINKER:-z,now>)
