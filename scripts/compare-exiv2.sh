#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Times qelinfo against exiv2's own tag printer over the same folder of JPEGs,
# both in one run, each as one process over the whole folder:
#   qelinfo --format json DIR/*.jpg     versus     exiv2 -pt DIR/*.jpg
# and then both against the floor, bench/ExivFloor.cpp (qel_exiv2_floor):
# libexiv2 opening each file and reading its metadata and nothing else. The
# three run interleaved FLOOR_RUNS times (default 11); the median ratio of
# CPU time (user + system) to the floor's is reported for each.
# The folder is made here with the exiv2 tool from the sample JPEG: three
# seeds (the maker's SLR with GPS, a compact camera, another maker's camera
# without GPS), copied COUNT times with exposure, aperture, ISO, focal
# length, compensation, light source, date and comment varied per copy.
#
#   scripts/compare-exiv2.sh [COUNT] [DIR]      (default 300, a folder in /tmp)
#
# With INSTRUCTIONS=1 the three are also counted in instructions under
# valgrind's callgrind, which machine load does not change.
#
# Uses hyperfine when it is installed (apt-get install hyperfine), else
# bash's `time` over ten runs each. Builds qelinfo and the floor in Release
# in build-bench.
set -euo pipefail
cd "$(dirname "$0")/.."
count=${1:-300}
dir=${2:-${TMPDIR:-/tmp}/qel-compare-jpegs}
build=build-bench
seed_image=samples/talvo-q77-harbour.jpg

command -v exiv2 >/dev/null || { echo "compare-exiv2.sh: needs the exiv2 tool" >&2; exit 2; }
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DQEL_BUILD_BENCHMARKS=ON >/dev/null
cmake --build "$build" -j"$(nproc)" --target qelinfo qel_exiv2_floor >/dev/null
qelinfo=$build/qelinfo
floor=$build/qel_exiv2_floor

# --- the seeds ---
# The folder is this script's own: an existing folder it did not make is
# left alone rather than emptied.
marker=.qel-compare-jpegs
if [ -e "$dir" ] && [ ! -e "$dir/$marker" ]; then
  echo "compare-exiv2.sh: $dir exists and was not made by this script; name another folder" >&2
  exit 2
fi
rm -rf "$dir"
mkdir -p "$dir/seeds"
touch "$dir/$marker"
cp "$seed_image" "$dir/seeds/slr.jpg"
cp "$seed_image" "$dir/seeds/compact.jpg"
exiv2 -q -M'set Exif.Image.Model MERIVAX E7310' -M'del Exif.GPSInfo.GPSLatitude' \
  -M'del Exif.GPSInfo.GPSLongitude' "$dir/seeds/compact.jpg"
cp "$seed_image" "$dir/seeds/other.jpg"
exiv2 -q -M'set Exif.Image.Make KESTREL IMAGING' -M'set Exif.Image.Model KX-20' \
  -M'del Exif.GPSInfo.GPSLatitudeRef' -M'del Exif.GPSInfo.GPSLatitude' \
  -M'del Exif.GPSInfo.GPSLongitudeRef' -M'del Exif.GPSInfo.GPSLongitude' \
  -M'del Exif.GPSInfo.GPSAltitude' -M'del Exif.GPSInfo.GPSTimeStamp' "$dir/seeds/other.jpg"
seeds=(slr compact other)

# --- the copies, each with its own settings ---
shutters=(1/8000 1/4000 1/1000 1/250 1/125 1/60 1/15 1/2 2/1 30/1)
apertures=(14/10 2/1 28/10 4/1 56/10 8/1 11/1 16/1 22/1)
isos=(100 200 400 800 1600 3200)
lengths=(18/1 24/1 35/1 50/1 85/1 135/1 200/1)
biases=(-2/1 -2/3 -1/3 0/1 1/3 2/3 1/1)
lights=(0 1 2 3 4 9 10 11 12 17 24)
echo "making $count JPEGs in $dir"
for ((i = 0; i < count; ++i)); do
  file=$(printf '%s/img%04d.jpg' "$dir" "$i")
  cp "$dir/seeds/${seeds[i % 3]}.jpg" "$file"
  exiv2 -q \
    -M"set Exif.Photo.ExposureTime Rational ${shutters[i % ${#shutters[@]}]}" \
    -M"set Exif.Photo.FNumber Rational ${apertures[i % ${#apertures[@]}]}" \
    -M"set Exif.Photo.ISOSpeedRatings Short ${isos[i % ${#isos[@]}]}" \
    -M"set Exif.Photo.FocalLength Rational ${lengths[i % ${#lengths[@]}]}" \
    -M"set Exif.Photo.ExposureBiasValue SRational ${biases[i % ${#biases[@]}]}" \
    -M"set Exif.Photo.LightSource Short ${lights[i % ${#lights[@]}]}" \
    -M"set Exif.Photo.WhiteBalance Short $((i % 2))" \
    -M"set Exif.Photo.DateTimeOriginal Ascii 2006:05:$(printf '%02d' $((1 + i % 28))) 1$((i % 10)):$(printf '%02d' $((i % 60))):07" \
    -M"set Exif.Photo.UserComment charset=Ascii Frame $i" \
    "$file"
done
rm -rf "$dir/seeds"

# Both must read every file before their times mean anything.
"$qelinfo" --format json "$dir"/*.jpg >/dev/null
exiv2 -pt "$dir"/*.jpg >/dev/null

echo "load average: $(cut -d' ' -f1-3 /proc/loadavg)"
qel_command="LANGUAGE=en $qelinfo --format json $dir/*.jpg"
exiv2_command="exiv2 -pt $dir/*.jpg"
if command -v hyperfine >/dev/null; then
  hyperfine --warmup 3 --runs "${RUNS:-20}" -n "qelinfo --format json" "$qel_command" \
    -n "exiv2 -pt" "$exiv2_command" ${HYPERFINE_EXPORT:+--export-markdown "$HYPERFINE_EXPORT"}
else
  for command in "$qel_command" "$exiv2_command"; do
    echo "$command (10 runs)"
    time (for run in 1 2 3 4 5 6 7 8 9 10; do bash -c "$command" >/dev/null; done)
  done
fi

# --- against the floor: interleaved runs, median ratio of CPU time ---
runs=${FLOOR_RUNS:-11}
cpu_seconds() {  # CPU seconds (user + system) of one run of the command
  local TIMEFORMAT='%3U %3S' times
  times=$( { time "$@" >/dev/null 2>&1; } 2>&1 )
  awk '{ printf "%.3f", $1 + $2 }' <<<"$times"
}
median() { sort -g | awk '{ v[NR] = $1 } END { print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }
floor_times=() qel_ratios=() exiv2_ratios=()
for ((run = 0; run < runs; ++run)); do
  f=$(cpu_seconds "$floor" "$dir"/*.jpg)
  q=$(LANGUAGE=en cpu_seconds "$qelinfo" --format json "$dir"/*.jpg)
  p=$(cpu_seconds exiv2 -pt "$dir"/*.jpg)
  floor_times+=("$f")
  qel_ratios+=("$(awk -v a="$q" -v b="$f" 'BEGIN { printf "%.3f", (b > 0 ? a / b : 0) }')")
  exiv2_ratios+=("$(awk -v a="$p" -v b="$f" 'BEGIN { printf "%.3f", (b > 0 ? a / b : 0) }')")
done
echo "floor (qel_exiv2_floor, open + readMetadata), $runs interleaved runs over $count files:"
echo "  floor CPU time, median:           $(printf '%s\n' "${floor_times[@]}" | median) s"
echo "  qelinfo --format json / floor:    $(printf '%s\n' "${qel_ratios[@]}" | median) (median ratio)"
echo "  exiv2 -pt / floor:                $(printf '%s\n' "${exiv2_ratios[@]}" | median) (median ratio)"

if [ -n "${INSTRUCTIONS:-}" ]; then
  command -v valgrind >/dev/null || { echo "compare-exiv2.sh: INSTRUCTIONS=1 needs valgrind" >&2; exit 2; }
  instructions() {  # instructions of one run of the command, whole process
    valgrind --tool=callgrind --callgrind-out-file=/dev/null "$@" 2>&1 >/dev/null |
      awk '/refs:/ { gsub(",", "", $NF); print $NF }'
  }
  fi=$(instructions "$floor" "$dir"/*.jpg)
  qi=$(LANGUAGE=en instructions "$qelinfo" --format json "$dir"/*.jpg)
  pi=$(instructions exiv2 -pt "$dir"/*.jpg)
  echo "instructions (callgrind) over $count files:"
  awk -v f="$fi" -v q="$qi" -v p="$pi" 'BEGIN {
    printf "  floor:                            %.1f M\n", f / 1e6
    printf "  qelinfo --format json:            %.1f M (%.3f of the floor)\n", q / 1e6, q / f
    printf "  exiv2 -pt:                        %.1f M (%.3f of the floor)\n", p / 1e6, p / f }'
fi
