# The flags of all targets of this project, in one place.

if(DECLARATIONHANDLER_IS_TOP AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE)
endif()

include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)

# declarationhandler_check_flags(<compiler|linker> <result> <flag>...): those of them that are understood. Hosts
# build with other compilers too.
function(declarationhandler_check_flags of result)
  foreach(flag IN LISTS ARGN)
    string(MAKE_C_IDENTIFIER "DECLARATIONHANDLER_HAS${flag}" name)
    if(of STREQUAL "compiler")
      check_cxx_compiler_flag(${flag} ${name})
    else()
      # Not by CheckLinkerFlag, which is newer than the CMake that this asks for.
      set(CMAKE_REQUIRED_LINK_OPTIONS ${flag})
      check_cxx_source_compiles("int main() { return 0; }" ${name})
    endif()
    if(${name})
      list(APPEND understood ${flag})
    endif()
  endforeach()
  set(${result} "${understood}" PARENT_SCOPE)
endfunction()

if(MSVC)
  # The sources are in UTF-8.
  set(declarationhandler_warnings /W4 /utf-8)
  set(declarationhandler_werror /WX)
else()
  set(declarationhandler_warnings -Wall -Wextra)
  set(declarationhandler_werror -Werror)
endif()

# Calls within a library need not go through the dynamic linker; nobody replaces its functions singly. Those
# into Qt, a dozen for each evaluation, go without a stub in between.
declarationhandler_check_flags(compiler declarationhandler_library_options -fno-semantic-interposition -fno-plt)
declarationhandler_check_flags(linker declarationhandler_library_link_options -Wl,-Bsymbolic-functions)
if(NOT DECLARATIONHANDLER_SANITIZE)
  # Every symbol must be found at link time; only the sanitizers' own come at run time.
  declarationhandler_check_flags(linker declarationhandler_all_symbols -Wl,--no-undefined)
  list(APPEND declarationhandler_library_link_options ${declarationhandler_all_symbols})
endif()

# declarationhandler_flags(<target>): warnings, sanitizers and instrumentation.
function(declarationhandler_flags target)
  target_compile_options(${target} PRIVATE ${declarationhandler_warnings})
  if(DECLARATIONHANDLER_WERROR)
    target_compile_options(${target} PRIVATE ${declarationhandler_werror})
  endif()
  if(DECLARATIONHANDLER_SANITIZE)
    set(sanitize -fsanitize=${DECLARATIONHANDLER_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_compile_options(${target} PRIVATE ${sanitize})
    target_link_options(${target} PRIVATE ${sanitize})
  endif()
  if(DECLARATIONHANDLER_FUZZ)
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
  if(DECLARATIONHANDLER_COVERAGE)
    target_compile_options(${target} PRIVATE --coverage -fprofile-update=atomic)
    target_link_options(${target} PRIVATE --coverage)
  endif()
endfunction()

# declarationhandler_library(<target> [INTERNAL_HEADERS <header>...]): in addition what holds for the code
# under src/. The internal headers are those that are not installed.
function(declarationhandler_library target)
  cmake_parse_arguments(library "" "" "INTERNAL_HEADERS" ${ARGN})
  declarationhandler_flags(${target})
  if(DECLARATIONHANDLER_COVERAGE)
    # Nothing here throws or catches; without exceptions the branches are those of the source.
    target_compile_options(${target} PRIVATE -fno-exceptions)
  endif()
  set_target_properties(${target} PROPERTIES
    CXX_STANDARD 11
    CXX_STANDARD_REQUIRED ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    OUTPUT_NAME ${target}${DECLARATIONHANDLER_SUFFIX}
    # A static one may become part of a host's shared library.
    POSITION_INDEPENDENT_CODE ON
    DECLARATIONHANDLER_INTERNAL_HEADERS "${library_INTERNAL_HEADERS}")
  string(TOUPPER ${target} upper)
  target_compile_definitions(${target}
    PRIVATE ${upper}_BUILD QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII
    PUBLIC $<$<STREQUAL:$<TARGET_PROPERTY:${target},TYPE>,STATIC_LIBRARY>:${upper}_STATIC>)
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>)
  target_compile_options(${target} PRIVATE ${declarationhandler_library_options})
  target_link_options(${target} PRIVATE ${declarationhandler_library_link_options})
endfunction()
