// SPDX-License-Identifier: MIT
// Without a tag source or with a failed read, a formatter stores its title
// alone (most of them) and releases every error it was handed.
#include "TestImgInfo.h"

#include <array>
#include <functional>

namespace {

using namespace QelItem;
using Formatter = void (CQelImgInfo::*)(IVandelTagControl*);

TEST(MissingTags, LeaveTheTitleAlone)
{
    const struct {
        Formatter formatter;
        UInt32 item;
        const char* title;  // null: not even a title
        std::function<void(MemoryTagSource&)> tags;  // null: no tag source at all
        int errors = 0;
    } cases[] = {
        {&CQelImgInfo::GetDataFormat, kDataFormat, "IDS_QEL_DATA_FORMAT", nullptr},
        {&CQelImgInfo::GetImageSize, kImageSize, "IDS_QEL_IMAGE_SIZE", nullptr},
        {&CQelImgInfo::GetImageSize, kImageSize, "IDS_QEL_IMAGE_SIZE",
         [](auto& t) { t.Int32(kImageSize, 3008); }, 1},
        {&CQelImgInfo::GetImageSize, kImageSize, "IDS_QEL_IMAGE_SIZE",
         [](auto& t) { t.Int32(0x10001, 2000); }, 1},
        {&CQelImgInfo::GetLensInfo, kLensInfo, "IDS_QEL_LENS_INFO", nullptr},
        {&CQelImgInfo::GetLensInfo, kLensInfo, "IDS_QEL_LENS_INFO",
         [](auto& t) { t.Record(0x80083, 261, std::array<UInt8, 8>{1, 0, 0, 1, 1}); }, 1},
        {&CQelImgInfo::GetFocalLength, kFocalLength, "IDS_QEL_FOCAL_LENGTH", [](auto&) {}, 1},
        // Delivered in the wrong type: a failed read.
        {&CQelImgInfo::GetISOSensitivity, kISOSensitivity, "IDS_QEL_ISO_SENSITIVITY",
         [](auto& t) { t.Int32(kISOSensitivity, 0); }, 1},
        {&CQelImgInfo::GetMeteringMode, kMeteringMode, "IDS_QEL_METERING_MODE", nullptr},
        {&CQelImgInfo::GetExposureMode, kExposureMode, nullptr, nullptr},
        {&CQelImgInfo::GetFlashSyncMode, kFlashSyncMode, "IDS_QEL_FLASH_SYNC_MODE", nullptr},
        {&CQelImgInfo::GetMixedQBInfo, kFlashMode, "IDS_QEL_AUTO_FLASH_MODE", nullptr},
        {&CQelImgInfo::GetAutoFlashComp, kFlashComp, "IDS_QEL_AUTO_FLASH_COMP", nullptr},
        {&CQelImgInfo::GetFlashAutoMode, kFlashMode, nullptr, nullptr},
        // Colour space and saturation store a value for a failed read, not without a source.
        {&CQelImgInfo::GetColorSpace, kColorSpace, "IDS_QEL_COLOR_SPACE", nullptr},
        {&CQelImgInfo::GetSaturationComp, kSaturationComp, "IDS_QEL_SATURATION_COMP", nullptr},
        {&CQelImgInfo::GetHueAdjustment, kHueAdjustment, "IDS_QEL_HUE_ADJUSTMENT", nullptr},
        {&CQelImgInfo::GetGammaTable, kToneTable, "IDS_QEL_GAMMA_TABLE", nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << std::hex << c.item << (c.tags ? " failed read" : ""));
        MemoryTagSource tags;
        if (c.tags)
            c.tags(tags);
        TestImgInfo info;
        (info.Kinds(kDeviceSLR, 1030).*c.formatter)(c.tags ? &tags : nullptr);
        EXPECT_EQ(info.Title(c.item), Shown(c.title));
        EXPECT_EQ(info.Dictionary().GetValueCount(), 0u);
        EXPECT_EQ(tags.ErrorsIssued(), c.errors);
        EXPECT_TRUE(tags.EveryErrorReleasedOnce());
    }
}

}  // namespace
