#include "MemoryTagSource.h"
#include "QelItemIDs.h"
#include "TestImgInfo.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using namespace QelItem;
constexpr CFStringEncoding kASCII = kCFStringEncodingASCII;

TEST(ImageInfoObject, FreshObjectAnswersEveryQueryAsEmpty)
{
    IQelImgInfo* info = IQelImgInfo::CreateImageInfo();
    ASSERT_NE(info, nullptr);
    char buffer[8];
    std::memset(buffer, 'x', sizeof buffer);
    EXPECT_EQ(info->GetInfoString(kModel, buffer, sizeof buffer, kASCII), 0u);
    EXPECT_EQ(std::string(buffer, sizeof buffer), std::string(sizeof buffer, '\0'));
    EXPECT_EQ(info->CopyInfoCFString(kModel), nullptr);
    EXPECT_EQ(info->GetLayoutRows(), 0u);
    EXPECT_EQ(info->GetLayoutCols(), 0u);
    for (UInt32 item : kQelValueListItemIDs)
        EXPECT_EQ(info->GetInfoValueListCurrentIndex(item), -1);
    info->Destroy();
}

TEST(ImageInfoObject, TagSourceFailingEveryReadLeavesTitlesOnly)
{
    MemoryTagSource tags(std::nullopt);
    TestImgInfo info;
    info.Kinds(kDeviceSLR, 0x203);
    const UInt32 values = info.ReadFileTags(&tags);
    EXPECT_EQ(info.FileKind(), 0);
    EXPECT_EQ(info.DeviceKind(), kDeviceUnknown);
    EXPECT_EQ(info.Title(kModel), L("IDS_QEL_MODEL"));
    EXPECT_EQ(info.Value(kModel), std::nullopt);
    // Only items that show a text for missing data (the shooting date's
    // "unknown") have a value, and each of them has its title.
    EXPECT_EQ(values, info.Dictionary().GetValueCount());
    EXPECT_LE(values, 1u);
    for (const auto& entry : info.Dictionary().Values())
        EXPECT_TRUE(info.Title(entry.first).has_value()) << std::hex << entry.first;
    EXPECT_GE(tags.ErrorsIssued(), 2);  // the file kind and the Make at least
    EXPECT_TRUE(tags.EveryErrorReleasedOnce());
    EXPECT_EQ(info.GetLayoutRows(), 0u);
}

TEST(ImageInfoObject, ReadStartsFromAnEmptyStoreAndTakesTheFileKind)
{
    MemoryTagSource slr(0x203);
    slr.Text(271, "TALVO").Text(272, "TALVO Q77");
    TestImgInfo info;
    info.ReadFileTags(&slr);
    EXPECT_EQ(info.FileKind(), 0x203);
    EXPECT_EQ(info.DeviceKind(), kDeviceSLR);
    EXPECT_EQ(info.Value(kModel), "Talvo Q77");
    info.m_infoDict.SetValue(0x12345, CQelString("stale", kASCII));

    MemoryTagSource other(0x105);
    other.Text(271, "Other").Text(272, "X1");
    info.ReadFileTags(&other);
    EXPECT_EQ(info.FileKind(), 0x105);
    EXPECT_EQ(info.DeviceKind(), kDeviceOtherMaker);
    EXPECT_EQ(info.Value(0x12345), std::nullopt);
    EXPECT_EQ(info.Value(kModel), "X1");
    EXPECT_TRUE(slr.EveryErrorReleasedOnce());
    EXPECT_TRUE(other.EveryErrorReleasedOnce());
}

TEST(ImageInfoObject, AssignmentCopiesStoreKindsAndListIndexes)
{
    TestImgInfo source;
    source.Kinds(kDeviceScanner, 0x401);
    source.m_wbListIndex = 1;
    source.m_sharpeningListIndex = 2;
    source.m_brtcntListIndex = 3;
    source.m_gammaListIndex = 4;
    source.m_colorModeListIndex = 5;
    source.m_saturationListIndex = 6;
    source.m_infoDict.SetTitle(kModel, CQelString("Model", kASCII));
    source.m_infoDict.SetValue(kModel, CQelString("LS SCAN", kASCII));

    TestImgInfo target;
    target.m_infoDict.SetValue(kWhiteBalance, CQelString("dropped", kASCII));
    target = source;
    source.m_infoDict.SetValue(kModel, CQelString("changed later", kASCII));

    EXPECT_EQ(target.DeviceKind(), kDeviceScanner);
    EXPECT_EQ(target.FileKind(), 0x401);
    SInt32 expected = 1;
    for (UInt32 item : {kWhiteBalance, kSharpening, kBrightnessContrast, kToneTable, kColorMode,
                        kSaturationAdjust})
        EXPECT_EQ(target.GetInfoValueListCurrentIndex(item), expected++);
    EXPECT_EQ(target.Title(kModel), "Model");
    EXPECT_EQ(target.Value(kModel), "LS SCAN");
    EXPECT_EQ(target.Value(kWhiteBalance), std::nullopt);

    const CQelImgInfo& same = target;
    static_cast<CQelImgInfo&>(target) = same;
    EXPECT_EQ(target.Value(kModel), "LS SCAN");
    EXPECT_EQ(target.GetInfoValueListCurrentIndex(kSaturationAdjust), 6);
}

TEST(ImageInfoObject, TextsComeFromTheFrameworksOwnTable)
{
    EXPECT_EQ(L("IDS_QEL_MODEL"), "Model");
}

TEST(ImageInfoObject, StoringHelpersLoadKeysAndEmptyKeysStoreEmptyValues)
{
    struct Probe : TestImgInfo {
        using CQelImgInfo::StoreTitle;
        using CQelImgInfo::StoreValueKey;
    } info;
    info.StoreTitle(kWhiteBalance, "IDS_QEL_MODEL");
    info.StoreValueKey(kWhiteBalance, "");
    info.StoreValueKey(kSharpening, nullptr);
    info.StoreValueKey(kColorMode, "IDS_QEL_MODEL");
    EXPECT_EQ(info.Title(kWhiteBalance), L("IDS_QEL_MODEL"));
    EXPECT_EQ(info.Value(kWhiteBalance), "");
    EXPECT_EQ(info.Value(kSharpening), "");
    EXPECT_EQ(info.Value(kColorMode), L("IDS_QEL_MODEL"));
}

}  // namespace
