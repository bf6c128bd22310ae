// SPDX-License-Identifier: MIT
// An in-memory tag source describing one SLR photo, as a host would hand the
// library the tags of a file it opened.
#ifndef QEL_SAMPLE_TAG_SOURCE_H
#define QEL_SAMPLE_TAG_SOURCE_H

#include <QelImgInfo/IQelImgInfo.h>

#include <cstring>
#include <map>
#include <vector>

// Serves a fixed set of tags; any other request fails with an error object
// that the library releases.
class SampleTagSource : public IVandelTagControl {
public:
    template <class T>
    void Add(UInt32 tagID, UInt32 valueType, const T& value)
    {
        std::vector<UInt8> bytes(sizeof value);
        std::memcpy(bytes.data(), &value, sizeof value);
        m_tags[tagID] = {valueType, bytes};
    }
    void AddText(UInt32 tagID, const char* text)
    {
        const UInt8* begin = reinterpret_cast<const UInt8*>(text);
        m_tags[tagID] = {kQelValueText, std::vector<UInt8>(begin, begin + std::strlen(text) + 1)};
    }

    UInt32 GetTagInfo(UInt32 tagID, UInt32) override
    {
        auto it = m_tags.find(tagID);
        return it == m_tags.end() ? 0 : it->second.type;
    }
    UInt32 GetTagSize(UInt32 tagID, UInt32) override
    {
        auto it = m_tags.find(tagID);
        return it == m_tags.end() ? 0 : static_cast<UInt32>(it->second.bytes.size());
    }
    ITagError* GetTagValue(UInt32 tagID, UInt32 valueType, UInt32 bufferSize, void* buffer,
                           UInt32) override
    {
        auto it = m_tags.find(tagID);
        if (it == m_tags.end() || it->second.type != valueType || !buffer)
            return &m_error;
        const std::vector<UInt8>& bytes = it->second.bytes;
        const size_t n = bytes.size() < bufferSize ? bytes.size() : bufferSize;
        std::memset(buffer, 0, bufferSize);
        std::memcpy(buffer, bytes.data(), n);
        return nullptr;
    }
    ITagError* GetFileKind(SInt32* fileKind) override
    {
        *fileKind = 0x203;
        return nullptr;
    }

private:
    struct Tag {
        UInt32 type;
        std::vector<UInt8> bytes;
    };
    // The one error object; releasing it has nothing to free.
    struct NoTag : ITagError {
        void Release() override {}
    };

    std::map<UInt32, Tag> m_tags;
    NoTag m_error;
};

inline void FillSLRPhoto(SampleTagSource& tags)
{
    tags.AddText(271, "TALVO CORPORATION");
    tags.AddText(QelItem::kModel, "TALVO Q77");
    tags.AddText(QelItem::kShootingDate, "2009:05:17 14:32:08");
    tags.Add(QelItem::kExposureTime, kQelValueDouble, 1.0 / 250);
    tags.Add(33437, kQelValueDouble, 8.0);  // F-number
    tags.Add(QelItem::kFocalLength, kQelValueDouble, 50.0);
    tags.Add(QelItem::kExposureMode, kQelValueInt32, SInt32{3});
    tags.Add(QelItem::kMeteringMode, kQelValueInt32, SInt32{5});
    tags.Add(QelItem::kExposureComp, kQelValueStep,
             IVandelTagControl::tagStrValueStep{-2, 1, 3});
    const UInt32 cloudy[2] = {6, 0};
    tags.Add(QelItem::kWhiteBalance, kQelValueWhiteBalance, cloudy);
    tags.Add(0x8000B, kQelValueInt32, SInt32{-1});  // white-balance fine tuning
}

#endif
