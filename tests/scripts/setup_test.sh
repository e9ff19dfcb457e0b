#!/usr/bin/env bash
# scripts/setup of $repository, with a package database of the test's own and nothing that installs.
# shellcheck source=tests/support/cases.sh
. "$(dirname "${BASH_SOURCE[0]}")/../support/cases.sh"
: "${repository:?}"

# setup <task>: what it would install.
setup() {
  mkdir -p stubs database
  touch database/status
  printf '#!/bin/sh\nexit 0\n' | tee stubs/apt-get >stubs/apt-cache
  printf '#!/bin/sh\nexec "$@"\n' >stubs/sudo
  chmod +x stubs/*
  PATH=$PWD/stubs:$PATH DPKG_ADMINDIR=$PWD/database "$repository/scripts/setup" "$@" 2>&1 |
    sed -n 's/^scripts\/setup: installing //p'
}

# have <package> <architecture>: is installed.
have() {
  mkdir -p database
  printf '%s\n' "Package: $1" 'Status: install ok installed' 'Maintainer: nobody' "Architecture: $2" \
    'Version: 1' 'Description: none' '' >>database/status
}

EveryPackageIsMissingFromAnEmptySystem() {
  expect_contains "what is installed" libpng-dev "$(setup play)"
}

NothingIsInstalledTwice() {
  local package
  for package in $(setup play); do have "$package" "$(dpkg --print-architecture)"; done
  expect_equal "what is installed" "" "$(setup play)"
}

APackageForAllMachinesCounts() {
  have fonts-terminus-otb all
  expect_equal "fonts" "" "$(setup play | grep -o fonts-terminus-otb || true)"
}

APackageOfAnotherMachinesDoesNotCount() {
  local package other=i386
  [ "$(dpkg --print-architecture)" != i386 ] || other=amd64
  for package in $(setup play); do have "$package" "$(dpkg --print-architecture)"; done
  sed -i "/^Package: libpng-dev$/,/^$/s/^Architecture: .*/Architecture: $other/" database/status
  echo "$other" >database/arch
  expect_equal "what is installed" libpng-dev "$(setup play)"
}

run_case "$@"
