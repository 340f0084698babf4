# Used by ./test --coverage: what the tests ran, by folder.
# shellcheck shell=bash

# coverage_collect DIR: from here on the programs built in DIR write what they run to DIR/profiles.
coverage_collect() {
    rm -rf "$1/profiles"
    mkdir -p "$1/profiles"
    # A file for each program and library, which all its runs add to.
    export LLVM_PROFILE_FILE=$PWD/$1/profiles/%m.profraw
}

# coverage_report DIR: prints lines and branches of each folder and writes the sources with their counts to DIR/html.
coverage_report() {
    local dir=$1 object objects=() profile=$1/all.profdata
    # A program that was killed may leave half a file: what can be read counts.
    llvm-profdata merge -sparse -failure-mode=all -o "$profile" "$dir"/profiles/*.profraw
    for object in "$dir"/lib/*.so "$dir"/bin/Plugins/*.so "$dir"/bin/orm*; do
        objects+=(-object "$object")
    done
    local sources=(-instr-profile="$profile" -ignore-filename-regex="_autogen/|^/usr/|/tests/|/fuzz/|/$dir/[^.]" "${objects[@]}")
    llvm-cov report "${sources[@]}" >"$dir/coverage.txt" 2>"$dir/coverage.log"
    llvm-cov show "${sources[@]}" -format=html -output-dir="$dir/html" 2>>"$dir/coverage.log"
    # The columns: file, then regions, functions, lines and branches, each with how many there are, how many were missed, and per cent.
    awk '
        NF == 13 && $1 ~ /\// {
            folder = $1
            sub(/\/[^\/]*$/, "", folder)
            lines[folder] += $8; missedLines[folder] += $9
            branches[folder] += $11; missedBranches[folder] += $12
        }
        function share(all, missed) { return all ? sprintf("%5.1f %%", 100 * (all - missed) / all) : "      -" }
        END {
            printf "%-62s %7s %8s %9s %8s\n", "Folder", "Lines", "run", "Branches", "taken"
            for (folder in lines)
                printf "%-62s %7d %8s %9d %8s\n", folder, lines[folder], share(lines[folder], missedLines[folder]),
                    branches[folder], share(branches[folder], missedBranches[folder]) | "sort"
        }' "$dir/coverage.txt"
    echo "Each file: $dir/coverage.txt; each line: $dir/html/index.html"
}
