# The options of the OpenSSF Compiler Options Hardening Guide that the compiler and the linker accept.
# scripts/check-hardening checks the built program.
include(CheckCXXCompilerFlag)
include(CheckLinkerFlag)

function(orskapp_harden_compile)
  foreach(flag IN LISTS ARGN)
    string(MAKE_C_IDENTIFIER "takes${flag}" result)
    set(CMAKE_REQUIRED_FLAGS "-Werror -Wformat")
    check_cxx_compiler_flag(${flag} ${result})
    if(${result})
      add_compile_options($<$<COMPILE_LANGUAGE:CXX>:${flag}>)
    endif()
  endforeach()
endfunction()

function(orskapp_harden_link)
  foreach(flag IN LISTS ARGN)
    string(MAKE_C_IDENTIFIER "links${flag}" result)
    check_linker_flag(CXX "LINKER:${flag}" ${result})
    if(${result})
      add_link_options(LINKER:${flag})
    endif()
  endforeach()
endfunction()

orskapp_harden_compile(
  -Wtrampolines -Wimplicit-fallthrough -Werror=format-security
  -fstack-protector-strong -fstack-clash-protection -fcf-protection=full
  -fno-delete-null-pointer-checks -fno-strict-overflow -fno-strict-aliasing
  -ftrivial-auto-var-init=zero)
add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3 -D_GLIBCXX_ASSERTIONS)
orskapp_harden_link(-z,relro -z,now -z,noexecstack --as-needed --no-copy-dt-needed-entries)

include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
