#!/usr/bin/env bash
# scripts/house-style of $repository, against small repositories that break one rule each.
# shellcheck source=tests/support/cases.sh
. "$(dirname "${BASH_SOURCE[0]}")/../support/cases.sh"
: "${repository:?}"

# A repository in the current folder in which everything is as it should be.
init_repository() {
  git init -q .
  mkdir -p game host runtime tests/fuzz bench
  printf '// What it holds.\n#pragma once\n#include <cstddef>\n' >game/board.h
  printf '#pragma once\nclass [[nodiscard]] Out;\n' >game/routine.h
  printf '#ifdef __linux__\n#endif\nnamespace {\nsize_t count;\n}\nnamespace kavo::host {\n' >host/board.cpp
  printf 'template<typename T>\nclass Board;\nnamespace fs = std::filesystem;\n' >host/template.cpp
  printf 'namespace qor {\n' >runtime/board.cpp
  printf 'namespace kavo::test {\nTEST_F(Board, IsThere) {}\n' >tests/board_test.cpp
  printf 'int LLVMFuzzerTestOneInput(const uint8_t*, size_t);\n' >tests/fuzz/fuzz_board.cpp
  printf 'return kavo::bench::run(argc, argv);\n' >bench/board_bench.cpp
}

# expect_broken <file> <text>: with this text in this file that is named, and nothing else.
expect_broken() {
  local found
  init_repository
  printf '%b' "$2" >"$1"
  git add .
  if found=$("$repository/scripts/house-style" .); then fail "nothing was said of $1: $2"; fi
  expect_equal "what is named" "$1" "$(awk -F '[: ]' '{ print $1 }' <<<"$found" | sort -u)"
}

ASoundRepositoryIsPassed() {
  init_repository
  git add .
  expect_equal "what is named" "" "$("$repository/scripts/house-style" .)"
}

AHeaderWithAGuardOfNames() {
  expect_broken game/guard.h '#ifndef GUARD_H\n#define GUARD_H\n#endif\n'
}
AHeaderWithoutAGuard() {
  expect_broken game/guard.h 'int rows();\n'
}
AHeaderWhoseGuardComesLate() {
  expect_broken game/guard.h '#include <vector>\n#pragma once\n'
}
ASizeWithStd() {
  expect_broken host/size.cpp 'std::size_t rows;\n'
}
AnIntegerWithStd() {
  expect_broken host/size.cpp 'std::vector<std::int64_t> rows;\n'
}
ATemplateOfAClass() {
  expect_broken game/row.h '#pragma once\ntemplate<class T>\n'
}
ATemplateWhoseSecondIsAClass() {
  expect_broken game/row.h '#pragma once\ntemplate<int n, class T>\n'
}
NodiscardElsewhere() {
  expect_broken game/row.h '#pragma once\n[[nodiscard]] int row();\n'
}
ATestsNamespaceOfItsOwn() {
  expect_broken tests/row_test.cpp 'namespace testing {\n'
}
ANamespaceThatOnlyBeginsLikeOurs() {
  expect_broken bench/row.cpp 'namespace kavo_bench {\n'
}
FoldersOfTheGameInACircle() {
  local found
  init_repository
  mkdir game/board game/sky game/stars
  printf '#include "game/sky/sun.h"\n#include "game/board/row.h"\n' >game/board/board.cpp
  printf '#include "game/stars/star.h"\n' >game/sky/sky.cpp
  git add .
  expect_equal "what is named without a circle" "" "$("$repository/scripts/house-style" .)"
  printf '#include "game/board/board.h"\n' >game/stars/stars.cpp
  git add .
  if found=$("$repository/scripts/house-style" .); then fail "nothing was said of the circle"; fi
  expect_equal "what is named" "$(printf 'game/%s\n' board sky stars)" "$(awk '{ print $1 }' <<<"$found" | sort)"
}
AFileInCapitals() {
  expect_broken game/Row.cpp 'int row;\n'
}
ATestInAnotherFile() {
  expect_broken tests/row_tests.cpp 'TEST(Row, IsThere) {}\n'
}
AFuzzerInAnotherFile() {
  expect_broken tests/fuzz/row.cpp 'int LLVMFuzzerTestOneInput(int);\n'
}
ABenchmarkInAnotherFile() {
  expect_broken bench/row.cpp 'return kavo::bench::run(argc, argv);\n'
}

run_case "$@"
