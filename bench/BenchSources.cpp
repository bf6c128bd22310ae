// SPDX-License-Identifier: MIT
#include "BenchSources.h"

#include "JsonTagSource.h"

#include <algorithm>

namespace qelbench {

namespace {

// A camera of another maker as a photo manager usually meets one: the
// standard Exif tags only, no maker tags, no file kind.
constexpr char kOtherMakerTags[] = R"({
  "tags": [
    {"id": "0x10F",   "type": 2, "text": "KESTREL IMAGING"},
    {"id": "0x110",   "type": 2, "text": "KX-20"},
    {"id": "0x132",   "type": 2, "text": "2019:04:27 18:03:44", "size": 20},
    {"id": "0x9003",  "type": 2, "text": "2019:04:27 18:03:44", "size": 20},
    {"id": "0x9290",  "type": 2, "text": "512"},
    {"id": "0x10000", "type": 3, "ints": [6000]},
    {"id": "0x10001", "type": 3, "ints": [4000]},
    {"id": "0x10005", "type": 4, "doubles": [1]},
    {"id": "0x920A",  "type": 4, "doubles": [35.0]},
    {"id": "0x8822",  "type": 3, "ints": [3]},
    {"id": "0x9207",  "type": 3, "ints": [5]},
    {"id": "0x829A",  "type": 4, "doubles": [0.002]},
    {"id": "0x829D",  "type": 4, "doubles": [2.8]},
    {"id": "0x9204",  "type": 17, "valueStep": [-1, 1, 3]},
    {"id": "0x80002", "type": 260, "u16": [0, 400]},
    {"id": "0x80005", "type": 266, "ints": [3, 0]}
  ]
})";

constexpr UInt32 kDigitalImageProgramTag = 0x800AB;

std::string SamplePath(const char* name)
{
    return std::string(QEL_SAMPLES_DIR) + "/" + name;
}

}  // namespace

UInt32 CountingSource::GetTagInfo(UInt32 tagID, UInt32 index)
{
    return m_tags->GetTagInfo(tagID, index);
}

UInt32 CountingSource::GetTagSize(UInt32 tagID, UInt32 index)
{
    return m_tags->GetTagSize(tagID, index);
}

ITagError* CountingSource::GetTagValue(UInt32 tagID, UInt32 valueType, UInt32 bufferSize,
                                       void* buffer, UInt32 index)
{
    ++m_reads;
    ITagError* error = m_tags->GetTagValue(tagID, valueType, bufferSize, buffer, index);
    if (error) {
        ++m_failedReads;
        if (std::find(m_absent.begin(), m_absent.end(), tagID) == m_absent.end())
            m_absent.push_back(tagID);
    }
    return error;
}

ITagError* CountingSource::GetFileKind(SInt32* fileKind)
{
    return m_tags->GetFileKind(fileKind);
}

void CountingSource::ResetCounts()
{
    m_reads = 0;
    m_failedReads = 0;
    m_absent.clear();
}

InfoHolder NewInfo()
{
    return InfoHolder(IQelImgInfo::CreateImageInfo());
}

std::unique_ptr<CountingSource> OpenDeviceFile(Device device)
{
    std::unique_ptr<IVandelTagControl> tags;
    switch (device) {
    case Device::kSLR: {
        auto slr = qel::JsonTagSource::FromFile(SamplePath("talvo-q77.json"));
        // The sample lacks only the compact line's scene-program tag; with it
        // (as "no scene program") every tag the SLR formatters ask for is
        // there and the exposure mode shows the plain program as before.
        slr->AddBytes(kDigitalImageProgramTag, kQelValueInt32, qel::HostBytes(SInt32{0}));
        tags = std::move(slr);
        break;
    }
    case Device::kCompact:
        tags = qel::JsonTagSource::FromFile(SamplePath("merivax-e7310.json"));
        break;
    case Device::kScanner:
        tags = qel::JsonTagSource::FromFile(SamplePath("talvo-filmscan-f40.json"));
        break;
    case Device::kOtherMaker:
        tags = qel::JsonTagSource::FromText(kOtherMakerTags);
        break;
    }
    return std::make_unique<CountingSource>(std::move(tags));
}

}  // namespace qelbench
