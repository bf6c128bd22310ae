// SPDX-License-Identifier: MIT
#include "TestImgInfo.h"

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

const std::string k300(300, 'S');
const ClassificationCase kCases[] = {
    {"TALVO CORP", "TALVO Q7 TALVO", {}, {}, 2, "Talvo Q7 TALVO"},  // first one only
    {"Talvo", "Q77", {}, 1, 2, "Q77"},                              // SLR names are not cut
    {"Talvo", "E1234", 1, {}, 1, "Talvo Merivax1234"},
    {"TALVO", "MERIVAX K42", 0, {}, 1, "Talvo Merivax K42"},
    {"TALVO", "MERIVAX E42", 0, {}, 1, "Talvo Merivax42"},
    {"TALVO", "MERIVAXE42", 0, {}, 1, "Talvo Merivax42"},
    {"TALVO", "Q MERIVAX", 0, {}, 1, "Talvo Merivax Q MERIVAX"},
    // Movie data formats run from 64 to 69.
    {"TALVO", "S37", 64, {}, 3, "Talvo Merivax S37"}, {"TALVO", "S37", 69, {}, 3, "Talvo Merivax S37"},
    {"TALVO", "S37", 70, {}, 1, "Talvo Merivax S37"}, {"TALVO", "S37", 63, {}, 1, "Talvo Merivax S37"},
    {"TALVO", "L62", {}, {}, 0, "Talvo Merivax L62"},  // data format unreadable
    {"TALVO", "P815 ZOOM", 0, 4, 1, "Talvo Merivax P815"},
    {"TALVO", "P815", 0, 0, 1, "Talvo Merivax "},
    {"TALVO", "P815", 0, 0xFFFFFFFF, 1, "Talvo Merivax P815"},
    {"TALVO", k300, 0, 300, 1, "Talvo Merivax " + k300.substr(0, 255)},
    {"TALVO", "LS SCAN 9130", {}, {}, 4, "LS SCAN 9130"},
    {"talvo", "TALVO Q77", {}, {}, 5, "TALVO Q77"},
};

TEST(Classification, KindAndModelName)
{
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.model);
        MemoryTagSource tags;
        tags.Text(kMake, c.make).Text(kModel, c.model, c.modelSize);
        tags.Int32(kDataFormat, c.dataFormat);
        TestImgInfo info;
        SInt32 kind = -1;
        info.GetMakeAndModel(&tags, &kind);
        EXPECT_EQ(kind, c.kind);
        EXPECT_EQ(info.Value(kModel), c.shown);
        EXPECT_TRUE(tags.EveryErrorReleasedOnce());
    }
}

// Fills every byte it is offered with the Model text, without a terminator.
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
    for (UInt32 size : {256u, 100000u}) {
        UnterminatedModel tags;
        tags.Text(kMake, "TALVO").Text(kModel, "", size).Int32(kDataFormat, 2);
        TestImgInfo info;
        SInt32 kind = 0;
        info.GetMakeAndModel(&tags, &kind);
        EXPECT_EQ(kind, kDeviceCompact);
        EXPECT_EQ(info.Value(kModel), "Talvo Merivax " + std::string(256, 'S')) << size;
    }
}

TEST(ClassificationLimits, FailedMakeOrModelLeavesTitleOnly)
{
    for (bool makePresent : {false, true}) {
        MemoryTagSource tags;
        if (makePresent)
            tags.Text(kMake, "TALVO");
        else
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
}

}  // namespace
