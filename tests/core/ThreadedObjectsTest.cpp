// SPDX-License-Identifier: MIT
// A photo manager reads thumbnails on worker threads, one object per thread:
// every thread must see exactly what one thread alone sees for the same files.
#include "TestImgInfo.h"
#include "Utf8.h"

#include <memory>
#include <thread>

namespace {

using namespace QelItem;

constexpr UInt32 kMake = 0x10F;
constexpr int kThreads = 4;
constexpr int kFilesPerRound = 7;
constexpr int kRounds = 40;

// One file of each device kind; the data format tells a movie clip.
struct Device {
    const char* make;
    const char* model;
    SInt32 dataFormat;
    SInt32 fileKind;
};
constexpr Device kDevices[] = {
    {"TALVO", "MERIVAX E42", 2, 515},    {"TALVO", "TALVO Q77", 0, 1028},
    {"TALVO", "S37", 64, 516},           {"TALVO", "LS SCAN 9130", 0, 0},
    {"Other Corp", "E1234", 1, 0},
};

// The file a thread reads at a position: its device and settings follow
// from both, so the four threads read different values in different orders.
std::unique_ptr<MemoryTagSource> FileFor(int thread, int position)
{
    const int seed = thread * 11 + position * 5;
    const Device& device = kDevices[(thread + position) % std::size(kDevices)];
    struct { UInt32 mode; SInt32 temperature; } whiteBalance{UInt32(seed % 10), 5000};
    struct { UInt16 mode, number; } iso{0, UInt16(100 + seed)};
    auto file = std::make_unique<MemoryTagSource>(device.fileKind);
    file->Text(kMake, device.make).Text(kModel, device.model).Int32(kDataFormat, device.dataFormat);
    file->ValueStep(kExposureComp, SInt16(seed % 13 - 6), 1, 3)
        .ValueStep(kExposureDiff, SInt16(seed % 7 - 3), 1, 6)
        .Record(kWhiteBalance, kQelValueWhiteBalance, whiteBalance)
        .Record(kISOSensitivity, kQelValueISO, iso)
        .Int32(kSharpening, seed % 6).Int32(kToneTable, seed % 7).Int32(kColorMode, seed % 6 + 1)
        .Int32(kSaturationAdjust, seed % 4).Int32(kMeteringMode, seed % 7)
        .Int32(kScanFilmType, seed % 2 ? 3 : 0x100).Int32(kScanBitDepth, 8 + seed % 9)
        .Double(kFocalLength, 18.0 + seed).Double(kExposureTime, 1.0 / (seed + 2))
        .Double(kScanGainMaster, seed * 0.25 - 2.0)
        .Text(kShootingDate, "2004:09:0" + std::to_string(1 + seed % 9) + " 14:07:51");
    return file;
}

// A copied text as UTF-8, released.
std::string Text(CFStringRef text)
{
    std::string shown = Utf8(text);
    if (text)
        CFRelease(text);
    return shown;
}

// Everything a host can ask of the object after one read, as one text.
std::string Shown(IQelImgInfo& info)
{
    std::string shown;
    for (UInt32 column = 0; column < info.GetLayoutCols(); ++column)
        for (UInt32 row = 0; row < info.GetLayoutRows(); ++row)
            shown += Text(info.CopyLayoutCFString(row, column)) + "\n";
    for (UInt32 item : kQelAllItemIDs)
        shown += Text(info.CopyInfoTitleCFString(item)) + "|" +
                 Text(info.CopyInfoValueCFString(item)) + "\n";
    for (UInt32 item : kQelValueListItemIDs) {
        shown += std::to_string(info.GetInfoValueListCurrentIndex(item)) + ":";
        for (UInt32 index = 0; index < info.GetInfoValueListCount(item); ++index) {
            UInt32 raw = 0;
            shown += Text(info.CopyInfoValueListItemCFString(item, index, &raw));
            shown += "=" + std::to_string(raw) + ";";
        }
        shown += "\n";
    }
    return shown;
}

// What one object shows after each file of a thread's sequence.
std::vector<std::string> ReadSequence(int thread, int rounds)
{
    IQelImgInfo* info = IQelImgInfo::CreateImageInfo();
    std::vector<std::string> seen;
    for (int round = 0; round < rounds; ++round) {
        for (int position = 0; position < kFilesPerRound; ++position) {
            info->ReadFileTags(FileFor(thread, position).get());
            seen.push_back(Shown(*info));
        }
    }
    info->Destroy();
    return seen;
}

TEST(ThreadedObjects, OneObjectPerThreadShowsWhatOneThreadShows)
{
    std::vector<std::vector<std::string>> alone;
    for (int thread = 0; thread < kThreads; ++thread)
        alone.push_back(ReadSequence(thread, kRounds));

    std::vector<std::vector<std::string>> together(kThreads);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread)
        threads.emplace_back([&together, thread] { together[thread] = ReadSequence(thread, kRounds); });
    for (std::thread& thread : threads)
        thread.join();

    for (int thread = 0; thread < kThreads; ++thread) {
        ASSERT_EQ(together[thread].size(), alone[thread].size());
        for (size_t read = 0; read < alone[thread].size(); ++read)
            ASSERT_EQ(together[thread][read], alone[thread][read])
                << "thread " << thread << ", read " << read;
    }
}

}  // namespace
