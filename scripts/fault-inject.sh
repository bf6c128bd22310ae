#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Checks that the test suite has teeth: applies small deliberate faults to
# the library one at a time, rebuilds the test programs, runs them, and
# reports each fault as caught (some test failed) or missed; the faulty file
# is restored from git after each run.
#
#   scripts/fault-inject.sh [build-dir] [pattern]   (build-faults; faults whose line matches)
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:-build-faults}
only=${2:-}
targets=(qel_library_tests qel_platform_tests qelinfo_tests qel_string_table_tests
         qel_robustness_tests)
# The texts the tests compare with are the English ones.
export LANGUAGE=en LC_ALL=C

# file <TAB> sed expression <TAB> the fault
faults=$(cat <<'EOF'
Items/MeteringAndSensitivity.cpp	s/{3, "IDS_QEL_METERING_MODE_SPOT"}/{7, "IDS_QEL_METERING_MODE_SPOT"}/	metering row: raw number changed
Items/MeteringAndSensitivity.cpp	s/"IDS_QEL_METERING_MODE_UNKNOWN"/qel::kEmptyValue/	metering fallback: empty instead of unknown
Items/MeteringAndSensitivity.cpp	s/kISOModeAuto = 0x8009/kISOModeAuto = 0x8008/	ISO auto mode code changed
Items/MeteringAndSensitivity.cpp	s/kISO800FileKinds\[\] = {259, 261, 263}/kISO800FileKinds[] = {259, 261}/	ISO 800 file kinds: one dropped
Items/ExposureCompensation.cpp	s/number, 1, true);/number, 2, true);/	exposure offset: two decimals
Items/ExposureCompensation.cpp	s/whole < 0 || product < 0 ?/whole < 0 ?/	exposure offset: sign lost under one step
Items/WhiteBalance.cpp	s/kLastPresetSlot = 4/kLastPresetSlot = 3/	preset slot: last slot moved by one
Items/WhiteBalance.cpp	s/263, 1028}/263}/	preset dash naming: a file kind dropped
Items/WhiteBalance.cpp	s/" %+ld"/" %ld"/	fine-tuning: sign dropped
Items/WhiteBalance.cpp	s/kUnknownMode = "?"/kUnknownMode = ""/	white balance fallback emptied
Items/ScannerItems.cpp	s/{0x101, "IDS_QEL_SCAN_FILM_TYPE_NEGA_MONO"}/{0x103, "IDS_QEL_SCAN_FILM_TYPE_NEGA_MONO"}/	film type row: raw number changed
Items/ScannerItems.cpp	s/ || std::isnan(record->enabled)//	filter intensity: NaN flag taken as on
Items/ScannerItems.cpp	s/CFSTR("%+.2lf "), gain/CFSTR("%.2lf "), gain/	analog gain: sign dropped
Items/ScannerItems.cpp	s/i < 3; ++i)/i < 2; ++i)/	analog gain: blue channel lost
Items/ExposureTime.cpp	s/>= kSecondsThreshold/> kSecondsThreshold/	exposure time: one-second boundary moved
Items/ExposureTime.cpp	s/(denominator + 0.05)/(denominator + 0.04)/	exposure time: ties rounded down
Items/ShootingDate.cpp	s/{QelItem::kShootingDate, kTagDateTime}/{QelItem::kShootingDate}/	shooting date: file-date fallback removed
Items/ShootingDate.cpp	s#"%.4d/%.2d/%.2d"#"%.4d-%.2d-%.2d"#	shooting date: format changed
Items/ToneAndColorItems.cpp	s/kLowHighToneFileKinds\[\] = {1026, 1027}/kLowHighToneFileKinds[] = {1026}/	tone ends: a file kind dropped
Items/ToneAndColorItems.cpp	s/{0xFFFF, "IDS_QEL_HIGH_SENSITIVITY_NR_ON"}/{0xFFFE, "IDS_QEL_HIGH_SENSITIVITY_NR_ON"}/	high-sensitivity NR row: raw number changed
Items/ToneAndColorItems.cpp	s/kHighestUnsetSaturationComp = -3/kHighestUnsetSaturationComp = -2/	saturation step: unset boundary moved
Items/FlashModes.cpp	s/{13, "IDS_QEL_AUTO_FLASH_MODE_COMMANDER_M"}/{13, "IDS_QEL_AUTO_FLASH_MODE_COMMANDER_AA"}/	legacy flash mode row: key changed
Items/FlashModes.cpp	s/"IDS_QEL_AUTO_FLASH_MODE_M", Appended::kGuideNumber/"IDS_QEL_AUTO_FLASH_MODE_M", Appended::kOutputLevel/	flash mode row: appended number changed
Items/FocusStabilisationZoomHistory.cpp	s/kFileKindsWithoutActiveMode\[\] = {261, 263}/kFileKindsWithoutActiveMode[] = {261}/	stabiliser: a file kind dropped
Items/FocusStabilisationZoomHistory.cpp	s/\*ratio == 0.0 ? 1.0 : \*ratio/*ratio/	digital zoom: zero-ratio fallback removed
Items/ImageComment.cpp	s/kCommentShownLength = 41/kCommentShownLength = 40/	image comment: shown length off by one
Items/SharpeningEffectsColorMode.cpp	s/kFilterSeparator\[\] = ", "/kFilterSeparator[] = " "/	colour mode: filter separator changed
ImgInfo/MakeAndModel.cpp	s/kMovieFormatCount = 6/kMovieFormatCount = 5/	movie data formats: last code dropped
ImgInfo/MakeAndModel.cpp	s/{'S', 'L', 'P', 'E'}/{'S', 'L', 'P'}/	compact line: classification letter dropped
ImgInfo/MakeAndModel.cpp	s/number + 2);/number + 1);/	compact model name: cut one place early
ImgInfo/ReadDriver.cpp	s/error->Release();//	file kind: error object not released
ImgInfo/TagReads.cpp	s/error->Release();//	tag read: error object not released
ImgInfo/LayoutGrids.cpp	s/^    0x9003, 0x8822, 0x80007, 0x80094,$/    0x9003, 0x8822, 0x80094, 0x80007,/	compact grid: two cells swapped
ImgInfo/LayoutGrids.cpp	s/kSLRGrid, 10, 8}/kSLRGrid, 9, 8}/;/^    0, 0, 0, 0, 0, 0, 0x700A7, 0,$/d	SLR grid: last row dropped
ImgInfo/ValueLists.cpp	s/ || m_deviceKind == kDeviceCompactMovie;/;/	sharpening list: movies get the SLR list
ImgInfo/ValueListTables.h	s/{5, "IDS_QEL_SHARPENING_MEDIUM_HIGH", nullptr}/{6, "IDS_QEL_SHARPENING_MEDIUM_HIGH", nullptr}/	sharpening list row: raw number changed
ImgInfo/StringExport.cpp	s/line.Append(CFSTR(" "));/line.Append(CFSTR(": "));/	exported line: separator changed
ImgInfo/StringExport.cpp	s/kFlashGroupC,      kEditHistoryFirst/kEditHistoryFirst/	value-required items: a flash group dropped
String/CQelString.cpp	s/kTerminatorSlack = 2/kTerminatorSlack = 1/	text export: length formula off by one
String/CQelString.cpp	s/kCFCompareCaseInsensitive, &found))/kCFCompareCaseInsensitive, \&found) \&\& false)/	ampersands: never unescaped
Dictionary/CQelInfoDictionary.cpp	s/stored->second = text;/(void)stored;/	store: a rewrite keeps the old text
Platform/src/StringsFile.cpp	s/case u't': out += u'\\t';/case u't': out += u't';/	strings file: tab escape lost
Platform/src/CFStringEncoding.cpp	s/if (bytes\[i\] > 0x7F)/if (bytes[i] > 0x80)/	ASCII decode: boundary moved by one
Platform/src/CFBundle.cpp	s/end = name.find_last_of("_-", end - 1))/end = std::string::npos)/	language: region-less fallback removed
EOF
)

if ! git diff --quiet -- Items ImgInfo String Dictionary Platform/src; then
  echo "fault-inject: the library has uncommitted changes; commit or set them aside first" >&2
  exit 2
fi
launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)
cmake -S . -B "$build" "${launcher[@]}" >/dev/null
build_tests() { cmake --build "$build" -j2 --target "${targets[@]}" >"$build/fault.log" 2>&1; }
# The slow builds-in-a-build (install, subproject, package, symbols, viewer)
# and the fuzz corpora do not exercise what a fault changes.
slow='install_and_consume|build_as_subproject|debian_packages|two_corefoundations|exported_symbols|qelview|_corpus'
run_tests() { ctest --test-dir "$build" -j2 -E "$slow" >>"$build/fault.log" 2>&1; }
build_tests && run_tests || { echo "fault-inject: the suite fails without faults" >&2; exit 2; }

caught=0 missed=0 skipped=0
restore() { git checkout -- "$file"; }
while IFS=$'\t' read -r file expression what; do
  [ -z "$only" ] || [[ "$file $what" == *$only* ]] || continue
  sed -i "$expression" "$file"
  trap restore EXIT
  if git diff --quiet -- "$file"; then
    result="skipped (line not found)"; skipped=$((skipped + 1))
  elif ! build_tests; then
    result="skipped (does not build)"; skipped=$((skipped + 1))
  elif run_tests; then
    result=MISSED; missed=$((missed + 1))
  else
    result=caught; caught=$((caught + 1))
  fi
  restore
  trap - EXIT
  printf '%-24s %-40s %s\n' "$result" "$file" "$what"
done <<<"$faults"
build_tests  # leave the build as the tree is
echo "faults caught: $caught, missed: $missed, not applied: $skipped"
[ "$missed" -eq 0 ]
