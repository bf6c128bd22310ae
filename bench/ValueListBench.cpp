// SPDX-License-Identifier: MIT
// The value-list operations a host calls to offer the choices of a setting,
// on the white-balance list of an SLR file.
#include "BenchSources.h"
#include "QelItemIDs.h"

#include <benchmark/benchmark.h>

namespace {

constexpr UInt32 kList = QelItem::kWhiteBalance;
constexpr UInt32 kEntry = 5;  // cloudy, the file's own setting

qelbench::InfoHolder ReadSLR()
{
    auto tags = qelbench::OpenDeviceFile(qelbench::Device::kSLR);
    auto info = qelbench::NewInfo();
    info->ReadFileTags(tags.get());
    return info;
}

void BM_ValueListCount(benchmark::State& state)
{
    auto info = ReadSLR();
    for (auto _ : state)
        benchmark::DoNotOptimize(info->GetInfoValueListCount(kList));
}
BENCHMARK(BM_ValueListCount);

void BM_ValueListCurrentIndex(benchmark::State& state)
{
    auto info = ReadSLR();
    for (auto _ : state)
        benchmark::DoNotOptimize(info->GetInfoValueListCurrentIndex(kList));
}
BENCHMARK(BM_ValueListCurrentIndex);

void BM_ValueListItemString(benchmark::State& state)
{
    auto info = ReadSLR();
    char buffer[256];
    UInt32 raw = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(info->GetInfoValueListItemString(kList, kEntry, &raw, buffer,
                                                                  sizeof buffer, kCFStringEncodingUTF8));
}
BENCHMARK(BM_ValueListItemString);

void BM_ValueListItemStringLength(benchmark::State& state)
{
    auto info = ReadSLR();
    for (auto _ : state)
        benchmark::DoNotOptimize(
            info->GetInfoValueListItemStringLength(kList, kEntry, kCFStringEncodingUTF8));
}
BENCHMARK(BM_ValueListItemStringLength);

void BM_CopyValueListItemCFString(benchmark::State& state)
{
    auto info = ReadSLR();
    UInt32 raw = 0;
    for (auto _ : state) {
        CFStringRef text = info->CopyInfoValueListItemCFString(kList, kEntry, &raw);
        benchmark::DoNotOptimize(text);
        if (text)
            CFRelease(text);
    }
}
BENCHMARK(BM_CopyValueListItemCFString);

}  // namespace
