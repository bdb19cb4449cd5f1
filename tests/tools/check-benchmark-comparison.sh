#!/usr/bin/env bash
# check-benchmark-comparison.sh SOURCE DIRECTORY: tools/compare-benchmarks accepts a result that is as good as the
# baseline, finds one that is worse by more than a quarter, and rejects incomplete results. Works in DIRECTORY.
set -euo pipefail
compare=$1/tools/compare-benchmarks
rm -rf "$2" && mkdir -p "$2" && cd "$2"
command -v python3 >/dev/null || { echo "skipped, python3 is missing (tools/setup installs it)"; exit 77; }

# run NAME REPETITION NANOSECONDS: one result of Google Benchmark.
run() {
    printf '{"run_name": "%s", "run_type": "iteration", "repetition_index": %d, "cpu_time": %s, "real_time": 9, "time_unit": "ns"}' "$@"
}

# result FILE RUN...
result() {
    local file=$1
    shift
    (IFS=,; echo "{\"benchmarks\": [$*]}") >"$file"
}

# expect STATUS TEXT: what compare-benchmarks says of baseline.csv and result.json.
expect() {
    local status=0
    "$compare" baseline.csv result.json >message.txt 2>&1 || status=$?
    [ "$status" -eq "$1" ] && grep -qE "$2" message.txt && return
    echo "expected status $1 and '$2', but the status is $status:"
    cat message.txt
    exit 1
}

# One repetition on a busy machine: the ratio is 2 nevertheless.
result result.json "$(run row/component/10 0 200)" "$(run row/bare/10 0 100)" "$(run row/component/10 1 900)" \
    "$(run row/bare/10 1 450)" "$(run row/component/1000 0 20000)" "$(run row/bare/1000 0 10000)"
printf 'row,size,ratio,target,MiB\nrow,10,2.0,,\nrow,1000,1.7,15 us,\n' >baseline.csv
expect 0 'row +1000 +20 us +10 us +2.00 +1.70 +15 us +0.78'
printf 'row,size,ratio,target,MiB\nrow,10,2.0,,\nrow,1000,1.5,1.0,\n' >baseline.csv
expect 1 'row 1000: 2.00, before 1.50'
printf 'row,size,ratio,target,MiB\nrow,10,2.0,,\n' >baseline.csv
expect 1 'row 1000: not in baseline.csv'
# Other programs slow down one side in most repetitions, but not in all.
result disturbed.json "$(run row/component/10 0 300)" "$(run row/bare/10 0 100)" "$(run row/component/10 1 310)" \
    "$(run row/bare/10 1 100)" "$(run row/component/10 2 205)" "$(run row/bare/10 2 100)"
printf 'row,size,ratio,target,MiB\nrow,10,2.0,,\n' >baseline.csv
"$compare" baseline.csv disturbed.json | grep -qE 'row +10 .* 3\.00 +2\.00' || { echo "disturbed: not accepted"; exit 1; }
"$compare" --update baseline.csv result.json >/dev/null
expect 0 row
printf 'row,size,ratio,target,MiB\nrow,10,2.0,1.5,70\nother,0,3.0,,\n' >baseline.csv
"$compare" --update baseline.csv result.json >/dev/null
diff - baseline.csv <<'EOF' || { echo "the baseline has lost something"; exit 1; }
row,size,ratio,target,MiB
other,0,3,,
row,10,2,1.5,70
row,1000,2,,
EOF
printf 'row,size,ratio\nrow,10,2.0\n' >baseline.csv
expect 1 'baseline.csv: expected the columns row, size, ratio, target and MiB'
# memory MIB MIB: the results of a row with two sizes that needs so much memory.
memory() {
    result result.json "$(run row/component/300 0 9 | sed "s/}/, \"MiB\": $1}/")" "$(run row/bare/300 0 9)" \
        "$(run row/component/1000 0 9 | sed "s/}/, \"MiB\": $2}/")" "$(run row/bare/1000 0 9)"
}
printf 'row,size,ratio,target,MiB\nrow,300,1,,\nrow,1000,1,,60\n' >baseline.csv
memory 70 74
expect 0 'row +1000 .* 74'
memory 70 76
expect 1 '^row 1000: 76 MiB, the target is 60 MiB'
memory 30 32
expect 0 row
memory 30 34
expect 1 '^row 1000: 34 MiB, with 300 only 30 MiB'
rm baseline.csv
result result.json "$(run row/component/10 0 200)"
expect 1 'row: one side is missing'
result result.json '{"run_name": "row/bare", "error_occurred": true, "error_message": "no file"}'
expect 1 'row/bare: no file'
result result.json
expect 1 'there are no results'
