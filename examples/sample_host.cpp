// A minimal host of QelImgInfo: it hands the library an in-memory tag source
// describing one SLR photo, prints the display grid column by column and
// releases the object. It uses only the library's public headers.
#include <IQelImgInfo.h>
#include <QelItemIDs.h>

#include <cstdio>
#include <cstring>
#include <map>
#include <vector>

namespace {

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

void FillSLRPhoto(SampleTagSource& tags)
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

}  // namespace

int main()
{
    SampleTagSource tags;
    FillSLRPhoto(tags);

    IQelImgInfo* info = IQelImgInfo::CreateImageInfo();
    const UInt32 values = info->ReadFileTags(&tags);
    std::printf("%u items with a value; grid of %u rows x %u columns\n", values,
                info->GetLayoutRows(), info->GetLayoutCols());

    // The reported length is an upper bound; a text whose encoded form takes
    // the whole maximum needs one byte more, so reserve it.
    for (UInt32 col = 0; col < info->GetLayoutCols(); ++col) {
        for (UInt32 row = 0; row < info->GetLayoutRows(); ++row) {
            const UInt32 size = info->GetLayoutStringLength(row, col, kCFStringEncodingUTF8) + 1;
            std::vector<char> line(size);
            if (info->GetLayoutString(row, col, line.data(), size, kCFStringEncodingUTF8) > 0)
                std::printf("[%u,%u] %s\n", row, col, line.data());
        }
    }

    const SInt32 current = info->GetInfoValueListCurrentIndex(QelItem::kWhiteBalance);
    if (current >= 0) {
        const UInt32 index = static_cast<UInt32>(current);
        const UInt32 size = info->GetInfoValueListItemStringLength(
                                QelItem::kWhiteBalance, index, kCFStringEncodingUTF8) + 1;
        std::vector<char> text(size);
        UInt32 raw = 0;
        info->GetInfoValueListItemString(QelItem::kWhiteBalance, index, &raw, text.data(), size,
                                         kCFStringEncodingUTF8);
        std::printf("white balance: choice %u of %u, \"%s\" (tag value %u)\n", index + 1,
                    info->GetInfoValueListCount(QelItem::kWhiteBalance), text.data(), raw);
    }
    info->Destroy();
    return 0;
}
