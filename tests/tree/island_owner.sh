#!/bin/sh
# Fails for a file outside src/island that names IslandWriter, whom alone the store lets change the
# island's mode and view.
set -eu
cd "$1/src"
grep -qw 'class IslandWriter' island/IslandWriter.h
! grep -rnw IslandWriter --include='*.h' --include='*.cpp' . | grep -v -e '^./island/' -e '^./core/AppState.h:'
