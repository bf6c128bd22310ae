// SPDX-License-Identifier: MIT
// Metering mode with its unknown fallback, and ISO sensitivity: normal,
// manual, automatic and the two extended ("HI") tables chosen by file kind.
#include "TestImgInfo.h"

namespace {

TEST(MeteringMode, MapsTheExifNumberWithUnknownForTheRest)
{
    struct Case {
        std::optional<SInt32> mode;
        const char* key;  // null: no value
    } const cases[] = {
        {1, "IDS_QEL_METERING_MODE_AVERAGE"}, {3, "IDS_QEL_METERING_MODE_SPOT"},
        {4, "IDS_QEL_METERING_MODE_MULTI_SPOT"}, {6, "IDS_QEL_METERING_MODE_PARTIAL"},
        {0, "IDS_QEL_METERING_MODE_UNKNOWN"}, {7, "IDS_QEL_METERING_MODE_UNKNOWN"},
        {255, "IDS_QEL_METERING_MODE_UNKNOWN"}, {{}, nullptr},
    };
    for (const Case& c : cases) {
        MemoryTagSource tags;
        tags.Int32(QelItem::kMeteringMode, c.mode);
        TestImgInfo info;
        ExpectFormatted(info, &CQelImgInfo::GetMeteringMode, tags, QelItem::kMeteringMode,
                        L("IDS_QEL_METERING_MODE"), Shown(c.key));
    }
}

struct ISOCase {
    SInt32 fileKind;
    UInt16 mode, number;
    const char* key;                 // null: an empty value
    std::optional<UInt32> argument;  // what the key's format receives
};

constexpr const char* kNormal = "IDS_QEL_ISO_SENSITIVITY_NORMAL";

const ISOCase kISOCases[] = {
    {1030, 0, 200, kNormal, 200u}, {261, 0, 65535, kNormal, 65535u},
    {1030, 0x8001, 400, "IDS_QEL_ISO_SENSITIVITY_MANUAL", {}},
    {261, 0x8009, 3200, "IDS_QEL_ISO_SENSITIVITY_AUTO", {}},
    // 259, 261 and 263 top out at ISO 800, the rest at 1600; 3200 differs.
    {261, 1, 3200, "IDS_QEL_ISO_SENSITIVITY_HI2", 800u},
    {1026, 1, 3200, "IDS_QEL_ISO_SENSITIVITY_HI1", 1600u},
    {259, 1, 1000, "IDS_QEL_ISO_SENSITIVITY_HI03", 800u},
    {263, 0x8002, 1250, "IDS_QEL_ISO_SENSITIVITY_HI07", 800u},
    {0, 0xFFFF, 2200, "IDS_QEL_ISO_SENSITIVITY_HI05", 1600u},
    {262, 1, 6400, "IDS_QEL_ISO_SENSITIVITY_HI2", 1600u},
    {0, 1, 1600, nullptr, {}}, {262, 1, 1000, nullptr, {}}, {261, 1, 6400, nullptr, {}},
};

TEST(ISOSensitivity, ShowsTheModeOrTheSensitivity)
{
    for (const ISOCase& c : kISOCases) {
        SCOPED_TRACE(testing::Message() << "case " << (&c - kISOCases));
        const struct { UInt16 mode, number; } record = {c.mode, c.number};
        MemoryTagSource tags;
        tags.Record(QelItem::kISOSensitivity, 260, record);
        TestImgInfo info;
        info.Kinds(2, c.fileKind).GetISOSensitivity(&tags);

        std::string expected;
        if (c.key) {
            EXPECT_NE(L(c.key), c.key);
            expected = c.argument ? LF(c.key, *c.argument) : L(c.key);
        }
        EXPECT_EQ(info.Title(QelItem::kISOSensitivity), L("IDS_QEL_ISO_SENSITIVITY"));
        EXPECT_EQ(info.Value(QelItem::kISOSensitivity), expected);
    }
}

}  // namespace
