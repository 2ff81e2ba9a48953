# flowtracking_target( name ): what every target of this project is compiled and linked with:
# C++20, hidden visibility, the project's warnings, and the hardening that the OpenSSF compiler
# guide advises, as far as this compiler and this linker know the flags.
include_guard( GLOBAL )
include( CheckCXXCompilerFlag )
include( CheckCXXSourceCompiles )
include( CheckPIESupported )

option( FLOWTRACKING_WERROR "Warnings end the build" OFF )
set( FLOWTRACKING_SANITIZE "" CACHE STRING "Sanitizers, as -fsanitize= takes them" )
option( FLOWTRACKING_COUNT_STEPS
   "Tests count the steps of the code and hold them to budgets: with clang and a sanitizer" OFF )

check_pie_supported( LANGUAGES CXX )

# Appends each flag of ARGN that the compiler takes to the list named by `out`.
function( flowtracking_compiler_flags out )
   foreach( flag IN LISTS ARGN )
      string( MAKE_C_IDENTIFIER "flowtrackingCompiler${flag}" known )
      check_cxx_compiler_flag( "${flag}" ${known} )
      if( ${known} )
         list( APPEND ${out} "${flag}" )
      endif()
   endforeach()
   set( ${out} "${${out}}" PARENT_SCOPE )
endfunction()

# The same for the linker, which only warns about a `-z` keyword that it does not know.
function( flowtracking_linker_flags out )
   foreach( flag IN LISTS ARGN )
      string( MAKE_C_IDENTIFIER "flowtrackingLinker${flag}" known )
      set( CMAKE_REQUIRED_LINK_OPTIONS "LINKER:--fatal-warnings" "${flag}" )
      check_cxx_source_compiles( "int main() {}" ${known} )
      if( ${known} )
         list( APPEND ${out} "${flag}" )
      endif()
   endforeach()
   set( ${out} "${${out}}" PARENT_SCOPE )
endfunction()

set( warningFlags )
flowtracking_compiler_flags( warningFlags
   -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
   -Wnon-virtual-dtor -Woverloaded-virtual -Wformat=2
   -Wimplicit-fallthrough -Wtrampolines -Wbidi-chars=any )
list( APPEND warningFlags -Werror=format-security ) # needs -Wformat, so it has no check alone
if( CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13 )
   # At -O3 that compiler sees overlapping copies inside std::string where there are none
   # (GCC bugs 105329 and 105651).
   list( APPEND warningFlags -Wno-restrict )
endif()
if( FLOWTRACKING_WERROR )
   list( APPEND warningFlags -Werror )
endif()

# Beside the guards at run time: variables start as zero, and no check is optimised away because
# what it checks for were undefined behaviour.
set( hardeningFlags )
flowtracking_compiler_flags( hardeningFlags
   -fstack-protector-strong -fstack-clash-protection -fstrict-flex-arrays=3
   -ftrivial-auto-var-init=zero
   -fno-delete-null-pointer-checks -fno-strict-overflow -fno-strict-aliasing )
if( CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64)$" )
   flowtracking_compiler_flags( hardeningFlags -fcf-protection=full )
elseif( CMAKE_SYSTEM_PROCESSOR MATCHES "^(aarch64|arm64)$" )
   flowtracking_compiler_flags( hardeningFlags -mbranch-protection=standard )
endif()

set( linkFlags )
flowtracking_linker_flags( linkFlags
   "LINKER:-z,relro" "LINKER:-z,now" "LINKER:-z,noexecstack" "LINKER:--as-needed"
   "LINKER:-z,pack-relative-relocs" )

set( sanitizeFlags )
if( FLOWTRACKING_SANITIZE )
   set( sanitizeFlags
      -fsanitize=${FLOWTRACKING_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer )
endif()

set( stepFlags )
if( FLOWTRACKING_COUNT_STEPS )
   set( stepFlags -fsanitize-coverage=trace-pc-guard )
endif()

# Kept as global properties: functions are called in directories that do not see these variables.
set_property( GLOBAL PROPERTY FLOWTRACKING_COMPILE_OPTIONS
   ${warningFlags} ${hardeningFlags} ${sanitizeFlags} ${stepFlags} )
set_property( GLOBAL PROPERTY FLOWTRACKING_LINK_OPTIONS ${linkFlags} ${sanitizeFlags} )

function( flowtracking_target name )
   get_property( compileOptions GLOBAL PROPERTY FLOWTRACKING_COMPILE_OPTIONS )
   get_property( linkOptions GLOBAL PROPERTY FLOWTRACKING_LINK_OPTIONS )
   set_target_properties( ${name} PROPERTIES
      CXX_EXTENSIONS OFF
      CXX_VISIBILITY_PRESET hidden
      VISIBILITY_INLINES_HIDDEN ON
      POSITION_INDEPENDENT_CODE ON )
   target_compile_features( ${name} PUBLIC cxx_std_20 )
   target_compile_options( ${name} PRIVATE ${compileOptions} )
   target_compile_definitions( ${name} PRIVATE _GLIBCXX_ASSERTIONS )
   target_link_options( ${name} PRIVATE ${linkOptions} )
   # Fortified libc calls need an optimiser, and hide from a sanitizer what it should see.
   if( NOT FLOWTRACKING_SANITIZE )
      target_compile_options( ${name} PRIVATE
         $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE>
         $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=3> )
   endif()
endfunction()

# flowtracking_uncounted( <file>... ): what counts steps must not count itself.
function( flowtracking_uncounted )
   set( flags )
   if( FLOWTRACKING_COUNT_STEPS )
      set( flags -fno-sanitize-coverage=trace-pc-guard )
      if( FLOWTRACKING_SANITIZE MATCHES fuzzer )
         list( APPEND flags -fno-sanitize=fuzzer-no-link )
      endif()
   endif()
   set_source_files_properties( ${ARGN} PROPERTIES COMPILE_OPTIONS "${flags}" )
endfunction()

# flowtracking_precompile( <name> [PROGRAM] <header>... ): headers that most files of a target
# include are parsed once. Where g++ 12 optimises, it forgets of precompiled headers that they are
# the system's, and warns of what it imagines in std::string. There a library is compiled without
# them, and every file of it shows that it includes what it uses; what is only part of a program is
# compiled without the warnings.
function( flowtracking_precompile name )
   cmake_parse_arguments( PARSE_ARGV 1 arg "PROGRAM" "" "" )
   if( CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13
         AND NOT CMAKE_BUILD_TYPE STREQUAL Debug )
      if( NOT arg_PROGRAM )
         return()
      endif()
      target_compile_options( ${name} PRIVATE
         -Wno-array-bounds -Wno-free-nonheap-object -Wno-maybe-uninitialized -Wno-nonnull
         -Wno-stringop-overflow -Wno-stringop-overread )
   endif()
   if( CMAKE_CXX_COMPILER_ID MATCHES Clang ) # the same bytes each time, which compiler caches want
      target_compile_options( ${name} PRIVATE "SHELL:-Xclang -fno-pch-timestamp" )
   endif()
   target_precompile_headers( ${name} PRIVATE ${arg_UNPARSED_ARGUMENTS} )
endfunction()

# A shared library that other programs install: versioned, found beside the libraries that it
# needs, never unloaded (its modules stay registered), complete at link time. `map` says which of
# its visible symbols it offers.
function( flowtracking_shared_library name map )
   flowtracking_target( ${name} )
   set_target_properties( ${name} PROPERTIES
      VERSION ${PROJECT_VERSION}
      SOVERSION ${PROJECT_VERSION_MAJOR}
      INSTALL_RPATH "$ORIGIN"
      LINK_DEPENDS "${map}" )
   target_link_options( ${name} PRIVATE
      "LINKER:-z,nodelete" "LINKER:--version-script,${map}" )
   # The library's own functions are called without being looked up by name when it is loaded.
   set( symbolFlags )
   flowtracking_linker_flags( symbolFlags "LINKER:-Bsymbolic-functions" )
   target_link_options( ${name} PRIVATE ${symbolFlags} )
   # The runtime of a sanitizer is linked into the program only.
   if( NOT FLOWTRACKING_SANITIZE )
      target_link_options( ${name} PRIVATE "LINKER:-z,defs" )
   endif()
endfunction()
