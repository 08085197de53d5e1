#!/bin/sh
# Fails when a binary lacks what keeps a fault in it from being used: a random place in memory, tables
# that are read-only once it runs, guarded stacks, checked calls and containers.
set -eu
export LC_ALL=C
binary=$1
status=0

expect() { # WHAT PATTERN OPTIONS...
    what=$1
    pattern=$2
    shift 2
    if ! readelf --wide "$@" "$binary" | grep -q -e "$pattern"; then
        echo "$binary has no $what" >&2
        status=1
    fi
}

expect "random place in memory" "Type: *DYN" --file-header
expect "read-only relocations" GNU_RELRO --segments
expect "immediate binding" "Flags:.* NOW" --dynamic
expect "guarded stacks" __stack_chk_fail --dyn-syms
expect "checked calls" '__[a-z]*_chk\b' --dyn-syms
expect "checked containers" __glibcxx_assert_fail --dyn-syms
expect "stack that can't be run" 'GNU_STACK.* RW ' --segments
exit $status
