#!/bin/bash
# Runs every benchmark program (bench_*.exe) of a build under Wine and prints its output.
# Exits non-zero when a benchmark fails or none is built. Usage: tools/bench.sh [build-dir]
set -u
build="${1:-build}"
root="$(cd "$(dirname "$0")/.." && pwd)"
case "$build" in /*) ;; *) build="$root/$build" ;; esac
export KXUI_WINEPREFIX="$build/wineprefix"
run() { "$root/cmake/wine-run.sh" "$@"; }

shopt -s nullglob
programs=("$build"/bin/bench_*.exe)
if [ ${#programs[@]} -eq 0 ]; then
    echo "bench: no benchmark programs in $build/bin" >&2
    exit 1
fi

status=0
for exe in "${programs[@]}"; do
    name="$(basename "$exe" .exe)"
    echo "== $name"
    if ! run "$exe"; then
        echo "bench: $name failed" >&2
        status=1
    fi
    echo
done
# The long forms of the random stress runs the suites keep short.
if [ -x "$build/bin/edits_tests.exe" ]; then
    echo "== edits stress (long form)"
    if ! KXUI_EDIT_STRESS_STEPS="${KXUI_EDIT_STRESS_STEPS:-20000}" \
        run "$build/bin/edits_tests.exe" --gtest_brief=1 --gtest_filter='OXEditProperty.*'; then
        echo "bench: edits stress failed" >&2
        status=1
    fi
    echo
fi
run --stop
exit $status
