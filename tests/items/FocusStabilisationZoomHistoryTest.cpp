// SPDX-License-Identifier: MIT
// Focus mode with preset distance, lens stabilisation, digital zoom, picture
// processing and the edit history.
#include "TestImgInfo.h"

#include <array>
#include <functional>

namespace {

using namespace QelItem;
using Expected = std::optional<std::string>;

Tags Focus(SInt32 mode, std::optional<double> distance)
{
    return [=](MemoryTagSource& t) { t.Int32(kAutoFocusMode, mode).Double(0x80085, distance); };
}

// A stabilisation record (version, state, mode), optionally the compact setting.
Tags Stabiliser(const char* version, UInt8 state, UInt8 mode, std::optional<SInt32> compact = {})
{
    return [=](MemoryTagSource& t) {
        if (version)
            t.Record(kStabilisation, kQelValueStabilisation,
                     std::array<char, 8>{version[0], version[1], version[2], version[3],
                                         static_cast<char>(state), 0, static_cast<char>(mode)});
        t.Int32(0x800AC, compact);
    };
}

Tags Processing(char minor, SInt32 kind, SInt32 count, SInt32 gain)
{
    struct Record { char version[4]; SInt32 kind, count, gain; };
    return [=](MemoryTagSource& t) {
        t.Record(kPictureProcessing, kQelValuePictureProcessing,
                 Record{{'0', minor, '0', '0'}, kind, count, gain});
    };
}

TEST(FocusStabilisationZoom, Values)
{
    const auto focus = &CQelImgInfo::GetAutoFocusMode, stab = &CQelImgInfo::GetQVControlInfo;
    const std::string manual = L("IDS_QEL_AUTO_FOCUS_MODE_M"), on = L("IDS_QEL_QV_CONTROL_INFO_ON");
    const std::string active = on + " " + L("IDS_QEL_QV_CONTROL_INFO_ACTIVE");
    ExpectItems({
        {"preset infinity", focus, kAutoFocusMode, Focus(0, -1.0), manual + L("IDS_QEL_PRESET_FOCUS_INF")},
        {"preset 2.5 m", focus, kAutoFocusMode, Focus(0, 2.5), manual + LF("IDS_QEL_PRESET_FOCUS_METRIC", 2.5)},
        {"no preset", focus, kAutoFocusMode, Focus(0, 0.0), manual},
        {"unknown mode", focus, kAutoFocusMode, Focus(19, 2.5), ""},
        {"active", stab, kStabilisation, Stabiliser("0100", 1, 2), active, kDeviceSLR, 1028},
        {"kind 263 hides active", stab, kStabilisation, Stabiliser("0100", 1, 2), on, kDeviceSLR, 263},
        {"version 0101, no fallback", stab, kStabilisation, Stabiliser("0101", 1, 2, 3), {}},
        {"compact active", stab, kStabilisation, Stabiliser(nullptr, 0, 0, 3), active, kDeviceSLR, 263},
        {"zoom 0 is 1x", &CQelImgInfo::GetDigitalZoomRatio, kDigitalZoom, Dbl(kDigitalZoom, 0.0), "1.00"},
    });
}

// Picture processing stores a title only for what it knows.
TEST(PictureProcessing, TitleAndValue)
{
    const struct { Tags tags; const char* title; Expected value; } cases[] = {
        {Processing('1', 1, 3, 2), "IDS_QEL_MULTI_EXPOSURE",
         LF("IDS_QEL_MULTI_EXPOSURE_UNIT", 3) + " " + L("IDS_QEL_MULTI_EXPOSURE_AUTO_GAIN")},
        {Processing('1', 2, 0, 0), "IDS_QEL_IMAGE_OVERLAY", L("IDS_QEL_IMAGE_OVERLAY_ON")},
        {Processing('1', 3, 2, 2), nullptr, {}},
    };
    for (const auto& c : cases) {
        MemoryTagSource tags;
        c.tags(tags);
        TestImgInfo info;
        info.GetPicProcInfo(&tags);
        EXPECT_EQ(info.Title(kPictureProcessing), Shown(c.title));
        EXPECT_EQ(info.Value(kPictureProcessing), c.value);
    }
}

TEST(EditHistory, EntriesKeepTheirPositions)
{
    const Expected trim = L("IDS_QEL_EDIT_HISTORY_TRIMMING");
    const Expected lighten = L("IDS_QEL_EDIT_HISTORY_LUMERA");
    const struct {
        const char* name;
        std::vector<SInt32> entries;
        std::optional<UInt32> claimedSize;  // GetTagSize's answer if not the entries' size
        std::vector<Expected> values;       // from 0x7009E; later items hold nothing
    } cases[] = {
        {"gaps", {5, 0, 7, 0, 0, 0, 0, 0, 0, 0}, {}, {trim, {}, lighten}},
        {"tenth kept, eleventh not", {0, 0, 0, 0, 0, 0, 0, 0, 14, 5, 5}, {},
         {{}, {}, {}, {}, {}, {}, {}, {}, {}, trim}},
        {"short history reads zeros", {5, 7}, 4, {trim}},
        {"size no camera writes", {5, 7}, 0xFFFFFFFF, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        MemoryTagSource tags;
        tags.Int32s(0x8009E, c.entries, c.claimedSize);
        TestImgInfo info;
        info.GetEditHistory(&tags);
        for (UInt32 index = 0; index < 11; ++index) {
            const Expected value = index < c.values.size() ? c.values[index] : Expected{};
            const Expected title = index == 0 ? L("IDS_QEL_EDIT_HISTORY")
                                   : value    ? Expected{" "}
                                              : Expected{};
            EXPECT_EQ(info.Value(kEditHistoryFirst + index), value) << index;
            EXPECT_EQ(info.Title(kEditHistoryFirst + index), title) << index;
        }
        EXPECT_TRUE(tags.EveryErrorReleasedOnce());
    }
}

}  // namespace
