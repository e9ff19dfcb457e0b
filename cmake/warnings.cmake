# What every target of this project compiles with. Warnings are errors; names such as
# GSTATE$ are the game's own, so Clang's remark about '$' is switched off.
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
            -Werror
            $<$<CXX_COMPILER_ID:Clang>:-Wno-dollar-in-identifier-extension>
            $<$<C_COMPILER_ID:Clang>:-Wno-dollar-in-identifier-extension>)
