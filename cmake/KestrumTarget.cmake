# Warnings, hardening and instrumentation of one of our targets. Nothing is set globally.
function(kestrum_target target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  if(NOT MSVC)
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
              # Readings are rounded after every operation, on processors that could fuse two of them too.
              -ffp-contract=off)
  endif()
  # Errors for us; a newer compiler must not fail the build of a user.
  if(KESTRUM_WARNINGS_AS_ERRORS)
    set_target_properties(${target} PROPERTIES COMPILE_WARNING_AS_ERROR ON)
  endif()
  if(KESTRUM_PCH)
    kestrum_precompile(${target})
  endif()
  # GCC 12 sees overlapping copies in every "literal" + string (its bug 105651).
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
  if(WIN32)
    # Windows 10; and of its headers only what is asked for, without macros called min and max.
    target_compile_definitions(${target} PRIVATE _WIN32_WINNT=0x0A00 WIN32_LEAN_AND_MEAN NOMINMAX UNICODE _UNICODE)
  elseif(CMAKE_BUILD_TYPE STREQUAL "Release")
    target_compile_options(${target} PRIVATE -fstack-protector-strong -fcf-protection=full -U_FORTIFY_SOURCE
                                             -D_FORTIFY_SOURCE=2)
    target_link_options(${target} PRIVATE -Wl,-z,relro,-z,now)
  endif()
  if(KESTRUM_COVERAGE)
    target_compile_options(${target} PRIVATE --coverage)
    target_link_options(${target} PUBLIC --coverage)
  endif()
endfunction()

# The large headers of a target's libraries, parsed once a target. Sources include what they need all the same:
# lint sees them without.
function(kestrum_precompile target)
  get_target_property(sources ${target} SOURCES)
  list(LENGTH sources count)
  if(count LESS 4)
    return()
  endif()
  get_target_property(libraries ${target} LINK_LIBRARIES)
  get_target_property(interface ${target} INTERFACE_LINK_LIBRARIES)
  set(headers <algorithm> <chrono> <functional> <map> <string> <vector>)
  if("${libraries};${interface}" MATCHES "GTest|kestrum_test_support")
    list(APPEND headers <gmock/gmock.h> <gtest/gtest.h>)
  endif()
  if("${libraries};${interface}" MATCHES "Qt6::Widgets|kestrum_desktop|posdex_parts|rigbridge_window|orvandi_window")
    list(APPEND headers <QtWidgets>)
  endif()
  target_precompile_headers(${target} PRIVATE ${headers})
endfunction()
