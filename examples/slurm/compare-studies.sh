#!/bin/bash
#SBATCH --job-name=ormcompare
#SBATCH --cpus-per-task=1
#SBATCH --mem=2G
#SBATCH --time=00:30:00
# Compares the studies below a folder, one for each task of an array job: figure, plots, table and growth of each.
#
#     sbatch --array=1-200%20 compare-studies.sh STUDIES COMPARED [options of ormcompare, for example --rotate 90 --log]
#
# Afterwards one call sums up in COMPARED/all.csv and COMPARED/growth.csv, and makes what is missing:
#
#     sbatch --dependency=afterany:JOB --wrap 'ormcompare --study-per-folder STUDIES --out COMPARED [the same options]'
#
# Tasks beyond the number of studies end at once. ORMCOMPARE names the program where it is not installed. No display is needed.
set -euo pipefail

root=${1:?folder of the studies}
out=${2:?folder for what is made}
shift 2
task=${SLURM_ARRAY_TASK_ID:?to be started as an array job: sbatch --array=1-N}

studies=()
while IFS= read -r -d '' folder; do
    if [ -n "$(find -L "$folder" -name 'Sequence*.txt' -type f -print -quit)" ]; then
        studies+=("$folder")
    fi
done < <(find -L "$root" -mindepth 1 -maxdepth 1 -type d -print0 | LC_ALL=C sort -z)

if [ "$task" -gt "${#studies[@]}" ]; then
    echo "There are ${#studies[@]} studies: nothing to do for task $task."
    exit 0
fi
study=${studies[task - 1]}
exec "${ORMCOMPARE:-ormcompare}" "$@" --quiet --out "$out/${study##*/}" -- "$study"
