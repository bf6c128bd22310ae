// SPDX-License-Identifier: MIT
// What a photo manager pays per thumbnail: one ReadFileTags, then the text of
// every grid cell, once into its own buffer and once as a CFString.
#include "BenchSources.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

namespace {

using qelbench::Device;

// Large enough for any cell in any encoding: a short buffer would make the
// export answer 0 without converting, and the figure would flatter.
constexpr UInt32 kCellBufferSize = 1024;

// Walks the grid as hosts do, column by column; answers the bytes exported
// so the work cannot be optimised away.
UInt32 ExportGrid(IQelImgInfo& info)
{
    char buffer[kCellBufferSize];
    UInt32 bytes = 0;
    const UInt32 rows = info.GetLayoutRows();
    const UInt32 columns = info.GetLayoutCols();
    for (UInt32 column = 0; column < columns; ++column) {
        for (UInt32 row = 0; row < rows; ++row) {
            bytes += info.GetLayoutString(row, column, buffer, sizeof buffer,
                                          kCFStringEncodingUTF8);
            if (CFStringRef line = info.CopyLayoutCFString(row, column))
                CFRelease(line);
        }
    }
    return bytes;
}

void ReportSource(benchmark::State& state, const qelbench::CountingSource& tags,
                  UInt32 values)
{
    state.counters["values"] = values;
    state.counters["reads"] = tags.Reads();
    state.counters["absent_tags"] = static_cast<double>(tags.AbsentTags().size());
    // Which tags the file lacks, so "every tag present" can be checked.
    std::string absent;
    for (UInt32 id : tags.AbsentTags()) {
        char hex[16];
        std::snprintf(hex, sizeof hex, "%s0x%X", absent.empty() ? "absent " : ",", id);
        absent += hex;
    }
    state.SetLabel(absent);
}

void BM_ReadFileTags(benchmark::State& state, Device device)
{
    auto tags = qelbench::OpenDeviceFile(device);
    auto info = qelbench::NewInfo();
    UInt32 values = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(values = info->ReadFileTags(tags.get()));
    tags->ResetCounts();
    ReportSource(state, *tags, info->ReadFileTags(tags.get()));
}

void BM_ExportGrid(benchmark::State& state, Device device)
{
    auto tags = qelbench::OpenDeviceFile(device);
    auto info = qelbench::NewInfo();
    info->ReadFileTags(tags.get());
    for (auto _ : state)
        benchmark::DoNotOptimize(ExportGrid(*info));
    state.counters["cells"] = info->GetLayoutRows() * info->GetLayoutCols();
}

// The figure a host sees per file.
void BM_ReadAndExportGrid(benchmark::State& state, Device device)
{
    auto tags = qelbench::OpenDeviceFile(device);
    auto info = qelbench::NewInfo();
    for (auto _ : state) {
        benchmark::DoNotOptimize(info->ReadFileTags(tags.get()));
        benchmark::DoNotOptimize(ExportGrid(*info));
    }
    tags->ResetCounts();
    ReportSource(state, *tags, info->ReadFileTags(tags.get()));
}

#define QEL_FOR_EVERY_DEVICE(bench)                              \
    BENCHMARK_CAPTURE(bench, SLR, Device::kSLR);                 \
    BENCHMARK_CAPTURE(bench, Compact, Device::kCompact);         \
    BENCHMARK_CAPTURE(bench, Scanner, Device::kScanner);         \
    BENCHMARK_CAPTURE(bench, OtherMaker, Device::kOtherMaker)

QEL_FOR_EVERY_DEVICE(BM_ReadFileTags);
QEL_FOR_EVERY_DEVICE(BM_ExportGrid);
QEL_FOR_EVERY_DEVICE(BM_ReadAndExportGrid);

}  // namespace
