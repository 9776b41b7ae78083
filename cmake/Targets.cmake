# Settings for all targets of the project: warnings, sanitizers, hardening and the include root.

add_library(vintrace_common INTERFACE)
target_include_directories(vintrace_common INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(vintrace_common INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wformat=2)
if(VINTRACE_WERROR)
  target_compile_options(vintrace_common INTERFACE -Werror)
endif()
if(VINTRACE_FUZZ)
  target_compile_options(vintrace_common INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(VINTRACE_SANITIZE)
  set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_options(vintrace_common INTERFACE ${sanitizers})
  target_link_options(vintrace_common INTERFACE ${sanitizers})
endif()

# Releases are hardened as the distribution hardens its packages.
find_program(DPKG_BUILDFLAGS dpkg-buildflags)
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND DPKG_BUILDFLAGS)
  foreach(kind CPPFLAGS CXXFLAGS LDFLAGS)
    execute_process(
      COMMAND ${CMAKE_COMMAND} -E env DEB_BUILD_MAINT_OPTIONS=hardening=+all
              "DEB_CXXFLAGS_STRIP=-g -O2 -Werror=format-security" ${DPKG_BUILDFLAGS} --get ${kind}
      OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    separate_arguments(${kind} UNIX_COMMAND "${flags}")
  endforeach()
  target_compile_options(vintrace_common INTERFACE ${CPPFLAGS} ${CXXFLAGS})
  target_link_options(vintrace_common INTERFACE ${LDFLAGS})
endif()

# vintrace_library(NAME SOURCES file… [LINKS target…]): a folder of src/ as a static library.
function(vintrace_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC vintrace_common ${arg_LINKS})
endfunction()

# vintrace_backend(NAME SOURCES file… LINKS target…): a folder that implements headers of its parent
# with POSIX or Qt. Only executables link it, so that targets do not link each other in a cycle.
function(vintrace_backend name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
  add_library(${name} OBJECT ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC vintrace_common ${arg_LINKS})
endfunction()

# vintrace_executable(NAME SOURCES file… [LINKS target…])
function(vintrace_executable name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE vintrace_common ${arg_LINKS})
endfunction()

# The backends of the program, also for tests of the whole program.
set(VINTRACE_BACKENDS vintrace_files_posix vintrace_process_posix vintrace_network vintrace_ui_qt
    vintrace_ui_widgets)
if(NOT CMAKE_SYSTEM_NAME STREQUAL "Linux")
  list(APPEND VINTRACE_BACKENDS vintrace_net_qt)
endif()
