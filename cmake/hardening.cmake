# What makes a fault harder to abuse, in everything that is installed by whatever way. Distributions have
# flags of their own for most of it, which come to the same.
#
# Sanitizers bring their own checks and do not go with these, and fortified functions need an optimiser:
# builds for debugging go without.
set(players_build $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
set(on_x86 $<STREQUAL:${CMAKE_SYSTEM_PROCESSOR},x86_64>)
set(on_arm64 $<STREQUAL:${CMAKE_SYSTEM_PROCESSOR},aarch64>)

# Programs at an address that is not known before.
include(CheckPIESupported)
check_pie_supported(LANGUAGES C CXX)

add_compile_options(
  $<${players_build}:-fstack-protector-strong>
  $<${players_build}:-fstack-clash-protection>
  $<$<AND:${players_build},${on_x86}>:-fcf-protection>
  $<$<AND:${players_build},${on_arm64}>:-mbranch-protection=standard>
  $<${players_build}:-U_FORTIFY_SOURCE>
  $<${players_build}:-D_FORTIFY_SOURCE=2>)
add_link_options($<${players_build}:-Wl,-z,relro,-z,now,-z,noexecstack>)
