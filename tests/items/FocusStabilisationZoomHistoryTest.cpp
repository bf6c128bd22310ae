// SPDX-License-Identifier: MIT
// Focus mode with preset distance, lens stabilisation, digital zoom, picture
// processing and the edit history.
#include "TestImgInfo.h"

#include <array>
#include <functional>

namespace {

using namespace QelItem;
using Expected = std::optional<std::string>;

std::function<void(MemoryTagSource&)> Focus(SInt32 mode, std::optional<double> distance)
{
    return [=](MemoryTagSource& t) { t.Int32(kAutoFocusMode, mode).Double(0x80085, distance); };
}

// A stabilisation record (version, state, mode), optionally the compact setting.
std::function<void(MemoryTagSource&)> Stabiliser(const char* version, UInt8 state, UInt8 mode,
                                                 std::optional<SInt32> compact = {})
{
    return [=](MemoryTagSource& t) {
        if (version)
            t.Record(kStabilisation, kQelValueStabilisation,
                     std::array<char, 8>{version[0], version[1], version[2], version[3],
                                         static_cast<char>(state), 0, static_cast<char>(mode)});
        t.Int32(0x800AC, compact);
    };
}

std::function<void(MemoryTagSource&)> Processing(char minor, SInt32 kind, SInt32 count,
                                                 SInt32 gain)
{
    struct Record { char version[4]; SInt32 kind, count, gain; };
    return [=](MemoryTagSource& t) {
        t.Record(kPictureProcessing, kQelValuePictureProcessing,
                 Record{{'0', minor, '0', '0'}, kind, count, gain});
    };
}

TEST(FocusStabilisationZoomProcessing, Values)
{
    const auto focus = &CQelImgInfo::GetAutoFocusMode, stab = &CQelImgInfo::GetQVControlInfo,
               zoom = &CQelImgInfo::GetDigitalZoomRatio, proc = &CQelImgInfo::GetPicProcInfo;
    const std::string manual = L("IDS_QEL_AUTO_FOCUS_MODE_M");
    const std::string on = L("IDS_QEL_QV_CONTROL_INFO_ON");
    const std::string active = on + " " + L("IDS_QEL_QV_CONTROL_INFO_ACTIVE");
    const struct {
        const char* name;
        std::function<void(MemoryTagSource&)> tags;
        void (CQelImgInfo::*formatter)(IVandelTagControl*);
        SInt32 fileKind;
        Expected value;
        const char* processingTitle = nullptr;  // picture processing: the title key, if any
    } cases[] = {
        {"preset infinity", Focus(0, -1.0), focus, 0, manual + L("IDS_QEL_PRESET_FOCUS_INF")},
        {"preset 2.5 m", Focus(0, 2.5), focus, 0,
         manual + LF("IDS_QEL_PRESET_FOCUS_METRIC", 2.5)},
        {"no preset", Focus(0, 0.0), focus, 0, manual},
        {"preset unreadable", Focus(0, {}), focus, 0, manual},
        {"unknown mode", Focus(19, 2.5), focus, 0, ""},
        {"active", Stabiliser("0100", 1, 2), stab, 1028, active},
        {"kind 263 hides active", Stabiliser("0100", 1, 2), stab, 263, on},
        {"off", Stabiliser("0100", 2, 2), stab, 0, L("IDS_QEL_QV_CONTROL_INFO_OFF")},
        {"version 0101, no fallback", Stabiliser("0101", 1, 2, 3), stab, 0, {}},
        {"compact active", Stabiliser(nullptr, 0, 0, 3), stab, 263, active},
        {"compact unknown", Stabiliser(nullptr, 0, 0, 0), stab, 0, {}},
        {"zoom 0 is 1x", [](auto& t) { t.Double(kDigitalZoom, 0.0); }, zoom, 0, "1.00"},
        {"multiple exposure", Processing('1', 1, 3, 2), proc, 0,
         LF("IDS_QEL_MULTI_EXPOSURE_UNIT", 3) + " " + L("IDS_QEL_MULTI_EXPOSURE_AUTO_GAIN"),
         "IDS_QEL_MULTI_EXPOSURE"},
        {"overlay", Processing('1', 2, 0, 0), proc, 0, L("IDS_QEL_IMAGE_OVERLAY_ON"),
         "IDS_QEL_IMAGE_OVERLAY"},
        {"unknown processing", Processing('1', 3, 2, 2), proc, 0, {}},
        {"processing version 0200", Processing('2', 1, 2, 2), proc, 0, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        MemoryTagSource tags;
        c.tags(tags);
        TestImgInfo info;
        (info.Kinds(kDeviceSLR, c.fileKind).*c.formatter)(&tags);
        const UInt32 item = c.formatter == focus  ? kAutoFocusMode
                            : c.formatter == stab ? kStabilisation
                            : c.formatter == zoom ? kDigitalZoom : kPictureProcessing;
        // Picture processing alone stores no title for what it does not know.
        EXPECT_EQ(c.formatter == proc ? info.Title(item) : std::nullopt, Shown(c.processingTitle));
        EXPECT_TRUE(c.formatter == proc || info.Title(item));
        EXPECT_EQ(info.Value(item), c.value);
        EXPECT_TRUE(tags.EveryErrorReleasedOnce());
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
        tags.Int32s(0x8009E, c.entries);
        if (c.claimedSize)
            tags.Size(0x8009E, *c.claimedSize);
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
