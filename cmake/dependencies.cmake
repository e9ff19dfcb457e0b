# Every library comes from the distribution; scripts/setup installs them.
if(KAVO_HOST)
  find_package(PkgConfig)
  if(NOT PKG_CONFIG_FOUND)
    message(FATAL_ERROR "pkg-config is missing: run scripts/setup, which installs what the build needs")
  endif()

  set(modules sdl2 libpng inih)
  if(NOT CMAKE_CROSSCOMPILING) # else only what runs on this machine needs it: see generators.cmake
    list(APPEND modules freetype2)
  endif()
  foreach(module IN LISTS modules)
    pkg_check_modules(${module} IMPORTED_TARGET ${module})
    if(NOT ${module}_FOUND)
      message(FATAL_ERROR "${module} is missing: run scripts/setup, which installs what the build needs")
    endif()
  endforeach()
endif()

if(KAVO_TESTS AND CMAKE_CROSSCOMPILING)
  # Debian has it built for this machine only, and as a source for all others.
  add_subdirectory(/usr/src/googletest/googletest ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
elseif(KAVO_TESTS)
  find_package(GTest REQUIRED)
endif()
if(KAVO_BENCHMARKS)
  find_package(benchmark REQUIRED)
  pkg_check_modules(cairo REQUIRED IMPORTED_TARGET cairo)
endif()
