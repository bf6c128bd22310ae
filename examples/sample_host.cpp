// SPDX-License-Identifier: MIT
// A minimal host of QelImgInfo: it hands the library an in-memory tag source
// describing one SLR photo, prints the display grid column by column and
// releases the object. It uses only the library's public headers.
#include "SampleTagSource.h"

#include <cstdio>
#include <vector>

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
