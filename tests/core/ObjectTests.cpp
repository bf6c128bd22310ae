// SPDX-License-Identifier: MIT
#include "TestImgInfo.h"

namespace {

using namespace QelItem;
constexpr CFStringEncoding kASCII = kCFStringEncodingASCII;

TEST(ImageInfoObject, FreshObjectIsEmptyAndTextsComeFromTheFramework)
{
    IQelImgInfo* info = IQelImgInfo::CreateImageInfo();
    char buffer[8] = "xxxxxxx";
    EXPECT_EQ(info->GetInfoString(kModel, buffer, sizeof buffer, kASCII), 0u);
    EXPECT_EQ(std::string(buffer, sizeof buffer), std::string(sizeof buffer, '\0'));
    EXPECT_EQ(info->CopyInfoCFString(kModel), nullptr);
    EXPECT_EQ(info->GetLayoutRows(), 0u);
    EXPECT_EQ(info->GetInfoValueListCurrentIndex(kWhiteBalance), -1);
    info->Destroy();
    EXPECT_EQ(L("IDS_QEL_MODEL"), "Model");  // the framework's table, not the key
}

// A file whose every read fails: kinds reset, titles kept, every error
// released once; only the shooting date's "unknown" is a value.
TEST(ImageInfoObject, TagSourceFailingEveryReadLeavesTitles)
{
    MemoryTagSource tags(std::nullopt);
    TestImgInfo info;
    info.Kinds(kDeviceSLR, 0x203);
    EXPECT_EQ(info.ReadFileTags(&tags), 1u);
    EXPECT_EQ(info.FileKind(), 0);
    EXPECT_EQ(info.DeviceKind(), kDeviceUnknown);
    EXPECT_EQ(info.Title(kModel), L("IDS_QEL_MODEL"));
    EXPECT_EQ(info.Value(kShootingDate), L("IDS_QEL_DATE_TIME_UNKNOWN"));
    EXPECT_TRUE(tags.EveryErrorReleasedOnce());
}

TEST(ImageInfoObject, AssignmentCopiesStoreKindsAndListIndexes)
{
    TestImgInfo source, target;
    source.Kinds(kDeviceScanner, 0x401);
    source.m_wbListIndex = 1;
    source.m_saturationListIndex = 6;
    source.m_infoDict.SetValue(kModel, CQelString("VX SCAN", kASCII));
    target.m_infoDict.SetValue(kWhiteBalance, CQelString("dropped", kASCII));
    target = source;
    source.m_infoDict.SetValue(kModel, CQelString("changed later", kASCII));
    const CQelImgInfo& same = target;
    static_cast<CQelImgInfo&>(target) = same;

    EXPECT_EQ(target.DeviceKind(), kDeviceScanner);
    EXPECT_EQ(target.FileKind(), 0x401);
    EXPECT_EQ(target.GetInfoValueListCurrentIndex(kWhiteBalance), 1);
    EXPECT_EQ(target.GetInfoValueListCurrentIndex(kSaturationAdjust), 6);
    EXPECT_EQ(target.Value(kModel), "VX SCAN");
    EXPECT_EQ(target.Value(kWhiteBalance), std::nullopt);
}

}  // namespace
