#!/bin/sh
# SPDX-License-Identifier: MIT
# A folder of 200 mixed captures, three of them damaged, is measured, converted and drawn. Arguments: the folder of the
# programs, a folder to work in, which is emptied. docs/captures-as-data.md shows what is printed.
set -u
bin=$1
work=$2
rm -rf "$work"
mkdir -p "$work/captures"
cd "$work" || exit 1
failed=0
complain() {
    echo "$*"
    failed=1
}
# Runs a command and expects the first argument as its exit code.
ends() {
    expected=$1
    shift
    code=0
    "$@" >out 2>err || code=$?
    [ "$code" = "$expected" ] || complain "$* ended with $code instead of $expected: $(cat err)"
}
lines() { [ "$(wc -l <"$2")" = "$1" ] || complain "$2 has $(wc -l <"$2") lines instead of $1"; }
holds() { [ "$(find "$2" -type f | wc -l)" = "$1" ] || complain "$2 holds $(find "$2" -type f | wc -l) files instead of $1"; }
says_nothing() { [ ! -s err ] || complain "standard error says \"$(cat err)\""; }
says() { printf '%s\n' "$1" | cmp -s - err || complain "instead of \"$1\" standard error says \"$(cat err)\""; }
kqx="$bin/kqx"

# Twelve scenes in six forms, repeated with other noise until there are 200 captures. Eight scenes have one channel, three
# have six and one has none: 156 channels in 72 files, and 116 in the 56 of the third round, which ends in scan-d.
number=0
for seed in 1 2 3; do
    for scene in sine square ramp noise six full scan-a scan-b scan-c scan-d lengths empty; do
        for form in bin V01 W01 V11 W11 V10; do
            number=$((number + 1))
            [ "$number" -gt 200 ] && continue
            "$bin/sixtrace-instrument" --write "$(printf 'captures/c%03d.bin' "$number")" --scene "$scene" --form "$form" \
                --seed "$seed" || complain "capture $number is missing"
        done
    done
done
holds 200 captures

# Three damaged captures: a sine that is cut, six traces with an unknown tag, and a sine whose sample count is the greatest
# possible number.
truncate -s 700 captures/c001.bin
printf V12 | dd of=captures/c100.bin bs=1 seek=3 conv=notrunc 2>/dev/null
printf '\377\377\377\177' | dd of=captures/c150.bin bs=1 seek=21 conv=notrunc 2>/dev/null
cut='kqx: captures/c001.bin: at byte 700: ch1: the file ends after sample 321 of 1200'
tag='kqx: captures/c100.bin: at byte 3: unknown version tag "V12"'
lengths='kqx: captures/c150.bin: at byte 21: ch1: SampleCount is 2147483647, a channel holds 0 to 10231 samples
kqx: captures/c150.bin: at byte 2461: ch1: the file ends after sample 1200 of 2147483647'
faults="$cut
$tag
$lengths"

# 2 x 156 + 116 channels, minus the six with the unknown tag. One more line is the header.
ends 1 "$kqx" measure --csv captures/*.bin
says "$faults"
lines 423 out
ends 1 "$kqx" measure --json captures/*.bin
says "$faults"
lines 200 out
[ "$(grep -c '"error":' out)" = 1 ] || complain "one file is no capture"
[ "$(grep -vc '"faults":\[\]' out)" = 3 ] || complain "three files are damaged"
sed -n 1p out | grep -q '"file":"captures/c001.bin".*"samples":321,' || complain "a cut file is measured as far as it goes"
[ "$(sed -n 100p out)" = '{"file":"captures/c100.bin","error":"unknown version tag \"V12\""}' ] ||
    complain "the line of what is no capture: $(sed -n 100p out)"

# A capture that cannot be read gives no file. All others give one; a damaged one gives the samples that it holds.
mkdir npz csv pictures thumbnails sessions
ends 1 "$kqx" convert --to npz --out-dir npz captures/*.bin
says "$faults"
holds 199 npz
ends 1 "$kqx" convert --to csv --out-dir csv captures/*.bin
says "$faults"
holds 199 csv
lines 322 csv/c001.csv # a head and 321 samples
ends 1 "$kqx" convert --no-clobber --to csv --out-dir csv captures/c002.bin
says 'kqx: csv/c002.csv: File already exists'

# Sine, square, ramp and noise make a session, three times six each; other scenes have a rate that is no whole number of
# hertz, channels that differ in rate or length, or no channel.
ends 1 "$kqx" convert --to sr --out-dir sessions captures/*.bin
holds 72 sessions
lines 131 err # one for each of the 128 files without a session, and three for the faults of c001 and c150, which have one

ends 1 "$kqx" screen --out-dir pictures captures/*.bin
says "$faults"
holds 199 pictures
ends 1 "$kqx" screen --thumbnail 128 --out-dir thumbnails captures/*.bin
says "$faults"
holds 197 thumbnails # none of a damaged file

# Without the three damaged captures the command prints nothing.
rm captures/c001.bin captures/c100.bin captures/c150.bin
ends 0 "$kqx" measure --csv captures/*.bin
says_nothing
lines 421 out # two channels less
find captures -name '*.bin' -print0 | sort -z >names
ends 0 "$kqx" info --json --null --files-from names
says_nothing
lines 197 out
exit "$failed"
