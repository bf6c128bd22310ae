// SPDX-License-Identifier: MIT
// Sharpening, picture effect and colour mode: the composed texts, which tags
// each reads, and the list positions they leave for the value lists.
#include "TestImgInfo.h"

namespace {

constexpr UInt32 kFilterTag = 0x800B3;
constexpr UInt32 kSpaceTag = 0x8001E;
// A list position nobody writes, to tell "unchanged" apart.
constexpr SInt32 kEarlier = 42;

// Keys become their localized text, anything else stays literal.
std::string Text(const std::vector<const char*>& parts)
{
    std::string text;
    for (const char* part : parts)
        text += std::string(part).rfind("IDS_", 0) == 0 ? L(part) : part;
    return text;
}

struct SharpeningCase { SInt32 deviceKind, level; const char* key; SInt32 index; };

TEST(SharpeningEffectsColorMode, SharpeningPositionDependsOnTheDevicesList)
{
    const SharpeningCase cases[] = {
        {kDeviceSLR, 2, "IDS_QEL_SHARPENING_MEDIUM", 3},
        {kDeviceScanner, 4, "IDS_QEL_SHARPENING_MEDIUM_LOW", 2},
        {kDeviceCompactMovie, 4, "IDS_QEL_SHARPENING_MEDIUM_LOW", kEarlier},
        {kDeviceSLR, 5, "IDS_QEL_SHARPENING_MEDIUM_HIGH", 4},
        {kDeviceSLR, 9, "IDS_QEL_SHARPENING_AUTO", kEarlier}, {kDeviceSLR, 7, "", kEarlier},
        {kDeviceCompact, -1, "", kEarlier},
    };
    for (const SharpeningCase& c : cases) {
        SCOPED_TRACE(testing::Message() << "device " << c.deviceKind << " level " << c.level);
        MemoryTagSource tags;
        tags.Int32(QelItem::kSharpening, c.level);
        TestImgInfo info;
        info.Kinds(c.deviceKind, 0).m_sharpeningListIndex = kEarlier;
        info.GetSharpening(&tags);
        EXPECT_EQ(info.Value(QelItem::kSharpening), Text({c.key}));
        EXPECT_EQ(info.m_sharpeningListIndex, c.index);
    }
}

struct EffectCase {
    SInt32 fileKind, program;
    std::optional<SInt32> filter;
    std::vector<const char*> text;
};

TEST(SharpeningEffectsColorMode, PictureEffectNamesAndMonochromeFilter)
{
    const EffectCase cases[] = {
        {1028, 6, {}, {"IDS_QEL_IMAGE_EFFECT_PROGRAM_PORTRAIT_K740"}},
        {1029, 6, {}, {"IDS_QEL_IMAGE_EFFECT_PROGRAM_PORTRAIT"}},
        {1028, 9, {}, {"IDS_QEL_IMAGE_EFFECT_PROGRAM_MORE_VIVID"}},
        {0, 10, 3,
         {"IDS_QEL_IMAGE_EFFECT_PROGRAM_BW", ", ", "IDS_QEL_MONOCHROME_FILTER_EFFECT_ORANGE"}},
        {0, 10, 1, {"IDS_QEL_IMAGE_EFFECT_PROGRAM_BW"}},
        {0, 10, {}, {"IDS_QEL_IMAGE_EFFECT_PROGRAM_BW"}}, {0, 11, 3, {}}, {1028, 0, {}, {}},
    };
    for (const EffectCase& c : cases) {
        SCOPED_TRACE(testing::Message() << "file " << c.fileKind << " program " << c.program);
        MemoryTagSource tags;
        tags.Int32(QelItem::kImageEffectProgram, c.program);
        tags.Int32(kFilterTag, c.filter);
        TestImgInfo info;
        info.Kinds(kDeviceSLR, c.fileKind).GetImageEffectProgram(&tags);
        EXPECT_EQ(info.Value(QelItem::kImageEffectProgram), Text(c.text));
        EXPECT_EQ(tags.WasRead(kFilterTag), c.program == 10);
        EXPECT_TRUE(tags.EveryErrorReleasedOnce());
    }
}

struct ColorModeCase {
    SInt32 fileKind;
    std::optional<SInt32> mode, color, space, filter;
    std::vector<const char*> text;  // empty: no value
    SInt32 index;
    bool readsSpace;
};

TEST(SharpeningEffectsColorMode, ColorModeByFileFamilyAndMonochrome)
{
    const char *bw = "IDS_QEL_COLOR_MODE_BW", *srgb = "IDS_QEL_COLOR_MODE_SRGB",
               *adobe = "IDS_QEL_COLOR_MODE_ADOBE_RGB";
    const ColorModeCase cases[] = {
        {0, 2, 0, 1, {}, {"IDS_QEL_COLOR_MODE_MODE2", " ", adobe}, 1, false},
        {260, 4, {}, 2, {}, {"IDS_QEL_COLOR_MODE_MODE1A", " ", srgb}, 3, false},
        {0, 0, 0, {}, {}, {"?"}, kEarlier, false}, {0, 0x20006, 0, {}, 2, {"?"}, kEarlier, false},
        {1028, 2, 0, 1, {}, {"IDS_QEL_COLOR_MODE_MODE2", " ", srgb}, 1, true},
        {263, 9, 0, 3, {}, {"?", " ", "IDS_QEL_COLOR_MODE_UNCALIBRATED"}, kEarlier, true},
        {261, 5, {}, {}, {}, {"IDS_QEL_COLOR_MODE_MODE3A"}, 4, true},
        {1028, 1, 1, 1, 5, {bw, ", ", "IDS_QEL_MONOCHROME_FILTER_EFFECT_GREEN"}, 9, false},
        {0, 6, {}, {}, {}, {bw}, 5, false},
        {263, 6, 0, 1, 2, {bw, ", ", "IDS_QEL_MONOCHROME_FILTER_EFFECT_YELLOW"}, 6, false},
        {0, 3, 1, {}, 0x10002, {bw}, 5, false},
        {1028, {}, 1, 1, 2, {}, kEarlier, false},
    };
    for (const ColorModeCase& c : cases) {
        SCOPED_TRACE(testing::Message() << "file " << c.fileKind << " mode "
                                        << c.mode.value_or(-99) << " colour "
                                        << c.color.value_or(-99));
        MemoryTagSource tags;
        tags.Int32(QelItem::kColorMode, c.mode);
        tags.Int32(QelItem::kColor, c.color);
        tags.Int32(kSpaceTag, c.space);
        tags.Int32(kFilterTag, c.filter);
        TestImgInfo info;
        info.Kinds(kDeviceSLR, c.fileKind).m_colorModeListIndex = kEarlier;
        info.GetColorMode(&tags);
        const std::optional<std::string> expected =
            c.text.size() ? std::optional<std::string>(Text(c.text)) : std::nullopt;
        EXPECT_EQ(info.Value(QelItem::kColorMode), expected);
        EXPECT_EQ(info.m_colorModeListIndex, c.index);
        EXPECT_EQ(tags.WasRead(kSpaceTag), c.readsSpace);
        EXPECT_TRUE(tags.EveryErrorReleasedOnce());
    }
}

}  // namespace
