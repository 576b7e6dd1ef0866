# Warnings, hardening and instrumentation of one of our targets. Nothing is set globally.
function(kestrum_target target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  target_compile_options(
    ${target}
    PRIVATE -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wconversion
            -Wsign-conversion
            -Wold-style-cast
            -Wnon-virtual-dtor
            -Woverloaded-virtual
            -Wimplicit-fallthrough
            -Werror
            # Readings are rounded after every operation, on processors that could fuse two of them too.
            -ffp-contract=off)
  # GCC 12 sees overlapping copies in every "literal" + string (its bug 105651).
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
  if(CMAKE_BUILD_TYPE STREQUAL "Release")
    target_compile_options(${target} PRIVATE -fstack-protector-strong -fcf-protection=full -U_FORTIFY_SOURCE
                                             -D_FORTIFY_SOURCE=2)
    target_link_options(${target} PRIVATE -Wl,-z,relro,-z,now)
  endif()
  if(KESTRUM_COVERAGE)
    target_compile_options(${target} PRIVATE --coverage)
    target_link_options(${target} PUBLIC --coverage)
  endif()
endfunction()
