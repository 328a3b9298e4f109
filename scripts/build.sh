# Shared by ./run, ./test and .ci/run: building a preset quietly. Sourced, never run.
# shellcheck shell=bash

# How many compilers may run at once: one a processor, and no more than one for every 2 GB of memory.
build_jobs() {
    local processors memory_kb by_memory
    processors=$(nproc)
    memory_kb=$(awk '/^MemAvailable:/ { print $2 }' /proc/meminfo)
    by_memory=$((memory_kb / 2000000))
    ((by_memory < 1)) && by_memory=1
    echo $((processors < by_memory ? processors : by_memory))
}

# quietly LOG COMMAND...: runs a command with its output in a file, and shows the end of it if it fails.
quietly() {
    local log=$1 status=0
    shift
    mkdir -p "$(dirname "$log")"
    "$@" >"$log" 2>&1 </dev/null || status=$?
    if ((status)); then
        grep -nE -m 20 'error:|Error|FAILED' "$log" >&2 || true
        echo "--- the end of $log:" >&2
        tail -n 40 "$log" >&2
    fi
    return "$status"
}

# build_preset PRESET [TARGET...]: configures where that is needed, then builds what is out of date.
build_preset() {
    local preset=$1 tree=build/$1
    shift
    if [[ ! -f $tree/build.ninja || CMakePresets.json -nt $tree/build.ninja ]]; then
        echo "Building in $tree; the first time takes a few minutes."
        quietly "$tree/configure.log" cmake --preset "$preset" || return
    fi
    local targets=()
    (($#)) && targets=(--target "$@")
    quietly "$tree/build.log" cmake --build --preset "$preset" -j "$(build_jobs)" "${targets[@]}"
}
