# Shared by fuzz/run and fuzz/prove: the targets, and the limits within which each input must be done with.
# shellcheck shell=bash

fuzz_targets() {
    sed -n 's/^set(targets \(.*\))$/\1/p' "$ORM_TOP/fuzz/CMakeLists.txt"
}

# found_inputs TARGET: puts the folder of its inputs that once failed into the array "found", where there are any.
found_inputs() {
    found=()
    [ ! -d "$ORM_TOP/fuzz/found/$1" ] || found=("$ORM_TOP/fuzz/found/$1")
}

# fuzz_target FOLDER TARGET [libFuzzer options and folders...]: no input may take ten seconds, no allocation 48 MB, the process 1 GB.
fuzz_target() {
    local folder=$1 target=$2 dictionary=result.dict
    shift 2
    case $target in
    settingstext | infofiles | exportnames) dictionary=settings.dict ;;
    hextext) dictionary=number.dict ;;
    surfaces | volumes) dictionary=format.dict ;;
    esac
    ASAN_OPTIONS=detect_leaks=1:quarantine_size_mb=16:allocator_may_return_null=1 \
        LSAN_OPTIONS="suppressions=$ORM_TOP/fuzz/leaks.supp:print_suppressions=0" UBSAN_OPTIONS=print_stacktrace=1 \
        "$folder/fuzz_$target" -timeout=10 -malloc_limit_mb=48 -rss_limit_mb=1024 -max_len=32768 -print_final_stats=0 \
        "-dict=$ORM_TOP/fuzz/$dictionary" "$@"
}
