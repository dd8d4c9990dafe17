#!/bin/bash
# Runs everything under test: style and static analysis, the tests in an optimised build, under the sanitizers and as
# Windows programs under Wine, Debian's own hosts, and a short run of the benchmarks. Installs the Debian packages that
# this needs. A stage is skipped when nothing that it depends on has changed since it last passed.
#
# usage: ./test.sh [--again] [STAGE...]
#     --again   also runs stages that passed with the very same files
#     STAGE     lint, release, asan, tsan, windows, bench; all of them without one
#
# Ends with 0 only if all passed. The last line is the sum of the tests of all stages.
set -uo pipefail
cd "$(dirname "$(realpath "${BASH_SOURCE[0]}")")" || exit 1
# shellcheck source=scripts/packages.sh
. scripts/packages.sh
# shellcheck source=scripts/steps.sh
. scripts/steps.sh
# shellcheck source=scripts/folders.sh
. scripts/folders.sh

all_stages=(lint release asan tsan windows bench)
declare -A titles=(
    [lint]="style, static analysis, shell scripts"
    [release]="optimised build with g++, all tests, Debian's hosts, packages"
    [asan]="clang++ with the address and undefined-behaviour sanitizers, all tests"
    [tsan]="clang++ with the thread sanitizer, the tests of thread safety"
    [windows]="Windows build with mingw-w64, all tests under Wine, comparison of renders"
    [bench]="benchmarks, one short run of each"
)
# Files that a stage does not depend on.
declare -A unrelated=(
    [lint]='\.md$|^examples/'
    [release]='^bench/'
    [asan]='\.md$|^bench/'
    [tsan]='\.md$|^bench/'
    [windows]='^bench/'
    [bench]='\.md$|^tests/'
)

again=no
stages=()
for argument in "$@"; do
    case $argument in
    --again) again=yes ;;
    -h | --help)
        sed -n '2,/^set/s/^# \{0,1\}//p' "$0"
        exit 0
        ;;
    *)
        if [ -z "${titles[$argument]:-}" ]; then
            echo "There is no stage \"$argument\", only: ${all_stages[*]}" >&2
            exit 2
        fi
        stages+=("$argument")
        ;;
    esac
done
[ "${#stages[@]}" -gt 0 ] || stages=("${all_stages[@]}")

jobs=$(nproc)
logs=build/logs
stamps=build/stamps
mkdir -p "$logs" "$stamps"
exec 8>build/test.lock
if ! flock -n 8; then
    echo "Another test run is going on in this folder" >&2
    exit 2
fi

# Tests of the stage that runs.
passed=0
failed=0

# The files that count, by what is in them: those that git knows or would know.
source_files() {
    if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
        git ls-files -z --cached --others --exclude-standard
    else
        find . -path ./build -prune -o -path ./out -prune -o -type f -printf '%P\0'
    fi
}
digest() {
    {
        dpkg-query -W "${packages_for_tests[@]}"
        source_files | grep -zvE "${unrelated[$1]}" | sort -zu | xargs -0 sha256sum 2>/dev/null
    } | sha256sum | cut -d ' ' -f 1
}

# count_tests JUNIT-FILE: adds what ctest counted. A test that did not run has not passed.
count_tests() {
    local file=$1 head total wrong=0 count kind
    head=$(tr '\n\t' '  ' <"$file" 2>/dev/null | grep -o '<testsuite [^>]*>' | head -n 1)
    total=$(grep -o ' tests="[0-9]*"' <<<"$head" | tr -dc 0-9)
    for kind in failures disabled skipped; do
        count=$(grep -o " $kind=\"[0-9]*\"" <<<"$head" | tr -dc 0-9)
        wrong=$((wrong + ${count:-0}))
    done
    if [ "${total:-0}" -eq 0 ]; then
        echo "    no test was run"
        return 1
    fi
    passed=$((passed + total - wrong))
    failed=$((failed + wrong))
    echo "    $((total - wrong)) of $total tests passed"
    [ "$wrong" -eq 0 ]
}

# build_and_test PRESET [WRAPPER...]: configures, builds, tests.
build_and_test() {
    local preset=$1 junit=$PWD/$logs/$1-tests.xml status=0
    shift
    step "configure" "$logs/$preset-configure.log" "$@" cmake --preset "$preset" || return 1
    step "build" "$logs/$preset-build.log" "$@" cmake --build --preset "$preset" --parallel "$jobs" || return 1
    rm -f "$junit"
    step "test" "$logs/$preset-tests.log" \
        "$@" ctest --preset "$preset" --parallel "$jobs" --output-junit "$junit" || status=1
    count_tests "$junit" || status=1
    return "$status"
}

check_format() {
    source_files | grep -zE '\.(cpp|h)$' | xargs -0 clang-format --dry-run -Werror
}
check_shell() {
    local scripts
    mapfile -d '' scripts < <(source_files | grep -zE '(\.sh|^\.ci/run)$')
    for script in "${scripts[@]}"; do
        bash -n "$script" || return 1
    done
    shellcheck -x "${scripts[@]}"
}

stage_lint() {
    local status=0
    step "format" "$logs/lint-format.log" check_format || status=1
    step "shell scripts" "$logs/lint-shell.log" check_shell || status=1
    step "configure" "$logs/lint-configure.log" cmake --preset lint || return 1
    step "clang-tidy" "$logs/lint-tidy.log" tools/tidy.py build/lint "$THUDFORGE_CACHE/tidy" || status=1
    return "$status"
}
stage_release() { build_and_test release; }
stage_asan() { build_and_test asan; }
stage_tsan() {
    # The thread sanitizer wants its memory where it is without address randomisation.
    if setarch -R true 2>/dev/null; then
        build_and_test tsan setarch -R
    else
        build_and_test tsan
    fi
}
stage_windows() {
    step "libraries for Windows" "$logs/windows-libraries.log" scripts/windows-libraries.sh || return 1
    # The other side of the comparison.
    step "Linux program to compare with" "$logs/windows-release.log" build_release_program || return 1
    build_and_test windows
}
build_release_program() {
    { [ -f build/release/build.ninja ] || cmake --preset release; } &&
        cmake --build --preset release --parallel "$jobs" --target thudforge
}
stage_bench() {
    step "configure" "$logs/bench-configure.log" cmake --preset bench || return 1
    step "build" "$logs/bench-build.log" cmake --build --preset bench --parallel "$jobs" || return 1
    step "run" "$logs/bench-run.log" run_benchmarks || return 1
}
run_benchmarks() {
    local result=$logs/bench.json
    # The display must not start anew when a benchmark's last window is gone.
    xvfb-run -a -s "-screen 0 1400x1000x24 -noreset" build/bench/bench/thudforge_bench --benchmark_min_time=0.001 --benchmark_out="$result" \
        --benchmark_out_format=json || return 1
    # A benchmark that gave up says so in its entry only.
    python3 - "$result" <<'PYTHON'
import json, sys
runs = json.load(open(sys.argv[1], encoding="utf-8"))["benchmarks"]
faulty = [f"{run['name']}: {run.get('error_message', '')}" for run in runs if run.get("error_occurred")]
print("\n".join(faulty + [f"{len(runs)} benchmarks, {len(faulty)} gave up"]))
sys.exit(1 if faulty or not runs else 0)
PYTHON
}

if ! install_packages "for the tests, the sanitizers, the Windows build and Debian's own hosts" \
    "${packages_for_tests[@]}"; then
    echo "0 passed, 1 failed"
    exit 1
fi
use_compiler_cache

total_passed=0
total_failed=0
summary=()
number=0
for stage in "${stages[@]}"; do
    number=$((number + 1))
    echo "[$number/${#stages[@]}] $stage: ${titles[$stage]}"
    started=$SECONDS
    wanted=$(digest "$stage")
    known=
    [ "$again" = yes ] || [ ! -f "$stamps/$stage" ] || read -r known passed <"$stamps/$stage"
    if [ "$known" = "$wanted" ]; then
        echo "    unchanged since it passed, with $passed tests"
        summary+=("$(printf '%-8s passed before, unchanged  %5d tests' "$stage" "$passed")")
        total_passed=$((total_passed + passed))
        continue
    fi
    rm -f "$stamps/$stage"
    passed=0
    failed=0
    if "stage_$stage"; then
        verdict=passed
        echo "$wanted $passed" >"$stamps/$stage"
    else
        verdict=FAILED
        # A stage without tests, or one that did not come to them, counts as one failure.
        [ "$failed" -gt 0 ] || failed=1
    fi
    took=$((SECONDS - started))
    summary+=("$(printf '%-8s %s in %4d s  %5d tests, %d failed' "$stage" "$verdict" "$took" $((passed + failed)) "$failed")")
    total_passed=$((total_passed + passed))
    total_failed=$((total_failed + failed))
done

echo
printf '%s\n' "${summary[@]}"
echo "The whole run took $SECONDS s"
if [ "$total_passed" -eq 0 ] && [ "$total_failed" -eq 0 ]; then
    case " ${stages[*]} " in
    " lint " | " bench " | " lint bench " | " bench lint ") ;; # these count no tests
    *)
        echo "No test was run"
        total_failed=1
        ;;
    esac
fi
echo "$total_passed passed, $total_failed failed"
[ "$total_failed" -eq 0 ]
