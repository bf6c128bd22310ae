// SPDX-License-Identifier: MIT
// The files the benchmarks read: one per kind of device a photo manager
// meets, held in memory so that a benchmark measures the library and not
// the disk. A counting wrapper tells how many reads found no tag, so a
// figure for "every tag present" can be checked rather than trusted.
#ifndef QEL_BENCH_SOURCES_H
#define QEL_BENCH_SOURCES_H

#include "IQelImgInfo.h"
#include "IVandelTagControl.h"

#include <memory>
#include <string>
#include <vector>

namespace qelbench {

enum class Device { kSLR, kCompact, kScanner, kOtherMaker };

// Forwards every call to the file's tags and counts the reads that failed.
class CountingSource : public IVandelTagControl {
public:
    explicit CountingSource(std::unique_ptr<IVandelTagControl> tags) : m_tags(std::move(tags)) {}

    UInt32 GetTagInfo(UInt32 tagID, UInt32 index) override;
    UInt32 GetTagSize(UInt32 tagID, UInt32 index) override;
    ITagError* GetTagValue(UInt32 tagID, UInt32 valueType, UInt32 bufferSize, void* buffer,
                           UInt32 index) override;
    ITagError* GetFileKind(SInt32* fileKind) override;

    UInt32 Reads() const { return m_reads; }
    UInt32 FailedReads() const { return m_failedReads; }
    // Tag IDs whose read failed, each once, in the order they were asked.
    const std::vector<UInt32>& AbsentTags() const { return m_absent; }
    void ResetCounts();

private:
    std::unique_ptr<IVandelTagControl> m_tags;
    UInt32 m_reads = 0;
    UInt32 m_failedReads = 0;
    std::vector<UInt32> m_absent;
};

struct InfoDestroyer {
    void operator()(IQelImgInfo* info) const { info->Destroy(); }
};
using InfoHolder = std::unique_ptr<IQelImgInfo, InfoDestroyer>;

// A new object, as a host makes one when it opens a folder.
InfoHolder NewInfo();

// The in-memory tags of the device's sample file; throws when a sample is
// missing or malformed.
std::unique_ptr<CountingSource> OpenDeviceFile(Device device);

}  // namespace qelbench

#endif
