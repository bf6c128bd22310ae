// SPDX-License-Identifier: MIT
// Reads one in-memory file of the maker's SLR through the installed library
// and checks that the model line and its localized title come back.
#include <QelImgInfo/IQelImgInfo.h>

#include <cstdio>
#include <cstring>
#include <string>

namespace {

struct NoError : ITagError {
    void Release() override {}
};

class TwoTags : public IVandelTagControl {
public:
    UInt32 GetTagInfo(UInt32, UInt32) override { return 2; }
    UInt32 GetTagSize(UInt32 tagID, UInt32) override { return Text(tagID) ? 1 + static_cast<UInt32>(std::strlen(Text(tagID))) : 0; }
    ITagError* GetTagValue(UInt32 tagID, UInt32 type, UInt32 size, void* buffer, UInt32) override
    {
        const char* text = Text(tagID);
        if (!text || type != 2 || size == 0)
            return &m_error;
        std::snprintf(static_cast<char*>(buffer), size, "%s", text);
        return nullptr;
    }
    ITagError* GetFileKind(SInt32* kind) override { *kind = 1028; return nullptr; }

private:
    static const char* Text(UInt32 tagID)
    {
        return tagID == 271 ? "TALVO CORPORATION" : tagID == 272 ? "TALVO Q77" : nullptr;
    }
    NoError m_error;
};

std::string UTF8(CFStringRef text)
{
    if (!text)
        return "(null)";
    char buffer[256] = {};
    CFStringGetCString(text, buffer, sizeof buffer, kCFStringEncodingUTF8);
    CFRelease(text);
    return buffer;
}

}  // namespace

int main()
{
    TwoTags tags;
    IQelImgInfo* info = IQelImgInfo::CreateImageInfo();
    info->ReadFileTags(&tags);
    std::string line = UTF8(info->CopyInfoCFString(QelItem::kModel));
    std::string title = UTF8(info->CopyInfoTitleCFString(QelItem::kModel));
    UInt32 rows = info->GetLayoutRows();
    info->Destroy();
    std::printf("%s | %s | %u rows\n", title.c_str(), line.c_str(), rows);
    // The title must come from the installed bundle, not fall back to the key.
    return line == "Talvo Q77" && title != "IDS_QEL_MODEL" && rows == 10 ? 0 : 1;
}
