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
    for (UInt32 item : kQelValueListItemIDs)
        EXPECT_EQ(info->GetInfoValueListCurrentIndex(item), -1);
    info->Destroy();
    EXPECT_EQ(L("IDS_QEL_MODEL"), "Model");  // the framework's table, not the key
}

TEST(ImageInfoObject, TagSourceFailingEveryReadLeavesTitles)
{
    MemoryTagSource tags(std::nullopt);
    TestImgInfo info;
    info.Kinds(kDeviceSLR, 0x203);
    const UInt32 values = info.ReadFileTags(&tags);
    EXPECT_EQ(info.FileKind(), 0);
    EXPECT_EQ(info.DeviceKind(), kDeviceUnknown);
    EXPECT_EQ(info.Title(kModel), L("IDS_QEL_MODEL"));
    // Only an item that shows missing data as text (the shooting date's
    // "unknown") has a value, and it has its title too.
    EXPECT_EQ(values, info.Dictionary().GetValueCount());
    EXPECT_LE(values, 1u);
    for (const auto& entry : info.Dictionary().Values())
        EXPECT_TRUE(info.Title(entry.first).has_value()) << std::hex << entry.first;
    EXPECT_TRUE(tags.EveryErrorReleasedOnce());
}

TEST(ImageInfoObject, AssignmentCopiesStoreKindsAndListIndexes)
{
    TestImgInfo source, target;
    source.Kinds(kDeviceScanner, 0x401);
    // In the order of kQelValueListItemIDs.
    SInt32 CQelImgInfo::*const indexes[] = {
        &TestImgInfo::m_wbListIndex,    &TestImgInfo::m_sharpeningListIndex,
        &TestImgInfo::m_brtcntListIndex, &TestImgInfo::m_gammaListIndex,
        &TestImgInfo::m_colorModeListIndex, &TestImgInfo::m_saturationListIndex};
    for (SInt32 i = 0; i < 6; ++i)
        source.*indexes[i] = i + 1;
    source.m_infoDict.SetValue(kModel, CQelString("VX SCAN", kASCII));
    target.m_infoDict.SetValue(kWhiteBalance, CQelString("dropped", kASCII));
    target = source;
    source.m_infoDict.SetValue(kModel, CQelString("changed later", kASCII));
    const CQelImgInfo& same = target;
    static_cast<CQelImgInfo&>(target) = same;

    EXPECT_EQ(target.DeviceKind(), kDeviceScanner);
    EXPECT_EQ(target.FileKind(), 0x401);
    for (SInt32 i = 0; i < 6; ++i)
        EXPECT_EQ(target.GetInfoValueListCurrentIndex(kQelValueListItemIDs[i]), i + 1);
    EXPECT_EQ(target.Value(kModel), "VX SCAN");
    EXPECT_EQ(target.Value(kWhiteBalance), std::nullopt);
}

}  // namespace
