#include "MemoryTagSource.h"
#include "QelItemIDs.h"
#include "TestImgInfo.h"

#include <gtest/gtest.h>

#include <cstring>
#include <optional>
#include <string>

namespace {

constexpr UInt32 kMake = 271;
constexpr UInt32 kModel = QelItem::kModel;
constexpr UInt32 kDataFormat = QelItem::kDataFormat;

struct ClassificationCase {
    const char* make;
    std::string model;
    std::optional<SInt32> dataFormat;
    std::optional<UInt32> modelSize;  // what GetTagSize answers, if not the text's
    SInt32 kind;
    std::string shown;
};

class Classification : public testing::TestWithParam<ClassificationCase> {};

TEST_P(Classification, KindAndModelName)
{
    const ClassificationCase& c = GetParam();
    MemoryTagSource tags;
    tags.Text(kMake, c.make).Text(kModel, c.model, c.modelSize);
    if (c.dataFormat)
        tags.Int32(kDataFormat, *c.dataFormat);
    TestImgInfo info;
    SInt32 kind = -1;
    info.GetMakeAndModel(&tags, &kind);
    EXPECT_EQ(kind, c.kind);
    EXPECT_EQ(info.Value(kModel), c.shown);
    EXPECT_EQ(info.Title(kModel), L("IDS_QEL_MODEL"));
    EXPECT_TRUE(tags.EveryErrorReleasedOnce());
}

const std::string k300 = std::string(300, 'S');

INSTANTIATE_TEST_SUITE_P(
    MakeAndModel, Classification,
    testing::Values(
        // SLRs: the first capitalised maker name is written as in prose.
        ClassificationCase{"TALVO CORP", "TALVO Q77", {}, {}, 2, "Talvo Q77"},
        ClassificationCase{"Talvo", "TALVO Q7 TALVO", {}, {}, 2, "Talvo Q7 TALVO"},
        ClassificationCase{"TALVO", "Q77", {}, 1, 2, "Q77"},  // SLR names are never cut
        // Compact line.
        ClassificationCase{"Talvo", "E1234", 1, {}, 1, "Talvo Merivax1234"},
        ClassificationCase{"TALVO", "MERIVAX K42", 0, {}, 1, "Talvo Merivax K42"},
        ClassificationCase{"TALVO", "MERIVAX E42", 0, {}, 1, "Talvo Merivax42"},
        ClassificationCase{"TALVO", "MERIVAXE42", 0, {}, 1, "Talvo Merivax42"},
        ClassificationCase{"TALVO", "Q MERIVAX", 0, {}, 1, "Talvo Merivax Q MERIVAX"},
        ClassificationCase{"TALVO", "S9", 65, {}, 3, "Talvo Merivax S9"},
        ClassificationCase{"TALVO", "S9", 64, {}, 3, "Talvo Merivax S9"},
        ClassificationCase{"TALVO", "S9", 69, {}, 3, "Talvo Merivax S9"},
        ClassificationCase{"TALVO", "S9", 70, {}, 1, "Talvo Merivax S9"},
        ClassificationCase{"TALVO", "S9", 63, {}, 1, "Talvo Merivax S9"},
        ClassificationCase{"TALVO", "L5", {}, {}, 0, "Talvo Merivax L5"},  // no data format
        // Compact names are cut at the tag's byte length, never past the buffer.
        ClassificationCase{"TALVO", "P600 ZOOM", 0, 4, 1, "Talvo Merivax P600"},
        ClassificationCase{"TALVO", "P600", 0, 0, 1, "Talvo Merivax "},
        ClassificationCase{"TALVO", "P600", 0, 256, 1, "Talvo Merivax P600"},
        ClassificationCase{"TALVO", "P600", 0, 0xFFFFFFFF, 1, "Talvo Merivax P600"},
        // Scanners, other makers.
        ClassificationCase{"TALVO", "LS SCAN 5400", {}, {}, 4, "LS SCAN 5400"},
        ClassificationCase{"talvo", "TALVO Q77", {}, {}, 5, "TALVO Q77"},
        ClassificationCase{"Other Corp", "E1234", {}, {}, 5, "E1234"},
        // A model text filling the whole buffer without a terminator.
        ClassificationCase{"TALVO", k300, 0, 300, 1, "Talvo Merivax " + k300.substr(0, 255)}));

// A text that fills every byte it is offered, without a terminating zero.
class UnterminatedModel : public MemoryTagSource {
public:
    ITagError* GetTagValue(UInt32 tagID, UInt32 type, UInt32 size, void* buffer,
                           UInt32 index) override
    {
        if (tagID != kModel)
            return MemoryTagSource::GetTagValue(tagID, type, size, buffer, index);
        std::memset(buffer, 'S', size);
        return nullptr;
    }
};

TEST(ClassificationLimits, UnterminatedModelIsCutAtTheBufferEnd)
{
    for (UInt32 size : {256u, 257u, 100000u}) {
        UnterminatedModel tags;
        tags.Text(kMake, "TALVO").Text(kModel, "", size).Int32(kDataFormat, 2);
        TestImgInfo info;
        SInt32 kind = 0;
        info.GetMakeAndModel(&tags, &kind);
        EXPECT_EQ(kind, kDeviceCompact);
        EXPECT_EQ(info.Value(kModel), "Talvo Merivax " + std::string(256, 'S')) << size;
    }
}

TEST(ClassificationLimits, FailedReadsLeaveTitleOnlyAndReleaseEachErrorOnce)
{
    const struct {
        bool make, model;
    } cases[] = {{false, true}, {true, false}, {false, false}};
    for (const auto& c : cases) {
        MemoryTagSource tags;
        if (c.make)
            tags.Text(kMake, "TALVO");
        if (c.model)
            tags.Text(kModel, "TALVO Q77");
        TestImgInfo info;
        SInt32 kind = 5;
        info.GetMakeAndModel(&tags, &kind);
        EXPECT_EQ(kind, kDeviceUnknown);
        EXPECT_EQ(info.Value(kModel), std::nullopt);
        EXPECT_EQ(info.Title(kModel), L("IDS_QEL_MODEL"));
        EXPECT_EQ(tags.ErrorsIssued(), 1);
        EXPECT_TRUE(tags.EveryErrorReleasedOnce());
    }
    TestImgInfo info;
    SInt32 kind = 5;
    info.GetMakeAndModel(nullptr, &kind);
    EXPECT_EQ(kind, kDeviceUnknown);
    EXPECT_EQ(info.Title(kModel), L("IDS_QEL_MODEL"));
}

TEST(ClassificationLimits, MakeAndModelAreOfferedTheWholeTextBuffer)
{
    MemoryTagSource tags;
    tags.Text(kMake, "TALVO").Text(kModel, "TALVO Q77");
    TestImgInfo info;
    SInt32 kind = 0;
    info.GetMakeAndModel(&tags, &kind);
    ASSERT_EQ(tags.Reads().size(), 2u);
    EXPECT_EQ(tags.Reads()[0].tagID, kMake);
    EXPECT_EQ(tags.Reads()[1].tagID, kModel);
    for (const auto& read : tags.Reads()) {
        EXPECT_EQ(read.valueType, 2u);
        EXPECT_EQ(read.bufferSize, 256u);
    }
}

TEST(ClassificationLimits, OrientationReadChangesNothing)
{
    MemoryTagSource tags;
    TestImgInfo info;
    SInt32 width = 640, height = 480;
    info.SwapValueIfRotate(&tags, &width, &height);
    tags.Double(0x10005, 90.0);
    info.SwapValueIfRotate(&tags, &width, &height);
    EXPECT_EQ(width, 640);
    EXPECT_EQ(height, 480);
    EXPECT_EQ(tags.ErrorsIssued(), 1);
    EXPECT_TRUE(tags.EveryErrorReleasedOnce());
}

}  // namespace
