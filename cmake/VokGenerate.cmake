# vok_generate(): turns definition files into the sources of a target. It serves this project's own
# build and, installed with the package, the definition files of other projects.
include_guard( GLOBAL )

# vok_generate( <target> MODULE_FILES <file.vok>... [IMPORT_PATHS <dir>...] )
#
# Runs vokgen on each definition file and adds what it makes to <target>, which must exist in the
# calling directory. For a file `<dir>/<Module>.vok`, <dir> being relative to the project's source
# directory, it makes in `<project's build directory>/gen/<dir>/`:
#
#   <Module>.h             the types, to be included as "<dir>/<Module>.h"
#   <Module>.cpp           what their functions do
#   <Module>.reflect.cpp   the reflection records of the module
#   <Module>.md            its reference page
#
# The two sources are compiled as one, <Module>.all.cpp: what both need is parsed and instantiated
# once, which is a third of the time. It stays by itself where the target is a unity build.
#
# A definition file may `use` the modules of this package, those of the project and those below
# IMPORT_PATHS, whose headers are included by their path from there. A file is generated again when
# it, a module that it uses or vokgen itself is newer.
function( vok_generate target )
   cmake_parse_arguments( PARSE_ARGV 1 arg "" "" "MODULE_FILES;IMPORT_PATHS" )
   if( arg_UNPARSED_ARGUMENTS OR NOT arg_MODULE_FILES )
      message( FATAL_ERROR
         "vok_generate( <target> MODULE_FILES <file>... [IMPORT_PATHS <dir>...] )" )
   endif()

   get_property( imports GLOBAL PROPERTY VOK_IMPORT_PATHS )
   list( APPEND imports ${arg_IMPORT_PATHS} "${PROJECT_SOURCE_DIR}" )
   list( REMOVE_DUPLICATES imports )
   list( TRANSFORM imports PREPEND "--import;" )
   set( gen "${PROJECT_BINARY_DIR}/gen" )

   foreach( file IN LISTS arg_MODULE_FILES )
      cmake_path( ABSOLUTE_PATH file NORMALIZE )
      cmake_path( GET file STEM LAST_ONLY module )
      cmake_path( GET file PARENT_PATH room )
      cmake_path( RELATIVE_PATH room BASE_DIRECTORY "${PROJECT_SOURCE_DIR}" )
      set( out "${gen}/${room}/${module}" )
      cmake_path( NORMAL_PATH out )
      file( MAKE_DIRECTORY "${gen}/${room}" )
      add_custom_command(
         OUTPUT "${out}.h" "${out}.cpp" "${out}.reflect.cpp" "${out}.md"
         COMMAND Vok::vokgen --out "${gen}/${room}" ${imports} --depfile "${out}.d" "${file}"
         DEPENDS "${file}" Vok::vokgen
         DEPFILE "${out}.d"
         COMMENT "vokgen ${room}/${module}"
         COMMAND_EXPAND_LISTS
         VERBATIM )
      file( CONFIGURE OUTPUT "${out}.all.cpp" CONTENT
"// Made by vok_generate. Do not edit.
#include \"${module}.cpp\"
#include \"${module}.reflect.cpp\"
" )
      set_source_files_properties( "${out}.all.cpp" PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON )
      set_source_files_properties( "${out}.cpp" "${out}.reflect.cpp"
         PROPERTIES HEADER_FILE_ONLY ON )
      target_sources( ${target} PRIVATE
         "${out}.h" "${out}.cpp" "${out}.reflect.cpp" "${out}.all.cpp" )
   endforeach()
   target_include_directories( ${target} PUBLIC "$<BUILD_INTERFACE:${gen}>" )
endfunction()
