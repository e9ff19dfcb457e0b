# What every target of this project compiles with. Names such as GSTATE$ are the game's own, so
# Clang's remark about '$' is switched off. Newer ones also remark on what GCC's library deprecates
# and goes on using (std::stable_sort's buffer); GCC itself tells of deprecated names that we use.
#
# Who packages the game has a compiler that nobody here has tried, and a warning of its must not stop
# them; the presets, which developers and the gate build by, make errors of warnings.
option(KAVO_WARNINGS_ARE_ERRORS "Stop at a warning of the compiler's" OFF)

add_library(kavo_options INTERFACE)
target_include_directories(kavo_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(
  kavo_options
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wconversion
            -Wno-sign-conversion
            $<$<BOOL:${KAVO_WARNINGS_ARE_ERRORS}>:-Werror>
            "$<$<CXX_COMPILER_ID:Clang>:-Wno-dollar-in-identifier-extension;-Wno-deprecated-declarations>"
            $<$<C_COMPILER_ID:Clang>:-Wno-dollar-in-identifier-extension>)

# The same numbers on every machine: a processor that multiplies and adds in one step rounds once
# where others round twice, and its compiler does so unasked when it optimises.
target_compile_options(kavo_options INTERFACE $<$<NOT:$<CONFIG:Debug>>:-ffp-contract=off>)

# 32-bit machines have an older file size and an older time, which ends in 2038, beside those of today.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  target_compile_definitions(kavo_options INTERFACE _FILE_OFFSET_BITS=64 _TIME_BITS=64)
endif()
