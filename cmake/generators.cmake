# Programs of one source each that make a header of a file, and run on the machine that builds.
#   kavo_generate(<header> FROM <file> BY <name> SOURCE <source> MODULE <what pkg-config calls its library>)
# The target run_<name> does so.
# When the game is built for another machine, the building machine's own compiler makes the program.
function(kavo_generate header)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "FROM;BY;SOURCE;MODULE" "")
  set(source ${CMAKE_CURRENT_SOURCE_DIR}/${arg_SOURCE})
  if(CMAKE_CROSSCOMPILING)
    set(program ${CMAKE_CURRENT_BINARY_DIR}/${arg_BY})
    find_program(KAVO_BUILD_CXX NAMES c++ g++ clang++ NO_CMAKE_FIND_ROOT_PATH
                 DOC "C++ compiler for this machine" REQUIRED)
    set(pkg_config "env -u PKG_CONFIG_PATH -u PKG_CONFIG_LIBDIR -u PKG_CONFIG_SYSROOT_DIR pkg-config")
    add_custom_command(
      OUTPUT ${program}
      COMMAND sh -c "${KAVO_BUILD_CXX} -std=c++20 -O1 -o '${program}' '${source}' $(${pkg_config} --cflags --libs ${arg_MODULE})"
      DEPENDS ${source}
      VERBATIM)
  else()
    set(program ${arg_BY})
    add_executable(${arg_BY} ${source})
    target_link_libraries(${arg_BY} PRIVATE kavo_options PkgConfig::${arg_MODULE})
    set_target_properties(${arg_BY} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
  endif()
  get_filename_component(folder ${header} DIRECTORY)
  add_custom_command(
    OUTPUT ${header}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
    COMMAND ${program} ${arg_FROM} ${header}
    DEPENDS ${program} ${arg_FROM}
    VERBATIM)
  add_custom_target(run_${arg_BY} DEPENDS ${header})
endfunction()
