#include "QelItemIDs.h"
#include "TestImgInfo.h"

#include <gtest/gtest.h>

#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace {

constexpr CFStringEncoding kASCII = kCFStringEncodingASCII;

std::string Utf8(CFStringRef text)
{
    std::string result = CQelString(text).ToUTF8();
    CFRelease(text);
    return result;
}

struct LineCase {
    UInt32 item;
    std::optional<std::string> title, value;
    std::optional<std::string> line;  // nullopt: the item shows nothing
    UInt32 length;                    // GetInfoStringLength in ASCII
    bool fitsInReportedLength;
};

class JoinedLine : public testing::TestWithParam<LineCase> {};

TEST_P(JoinedLine, LineCopyAndLength)
{
    const LineCase& c = GetParam();
    TestImgInfo info;
    if (c.title)
        info.m_infoDict.SetTitle(c.item, CQelString(c.title->c_str(), kASCII));
    if (c.value)
        info.m_infoDict.SetValue(c.item, CQelString(c.value->c_str(), kASCII));

    std::vector<char> buffer(64, 'x');
    const UInt32 placed = info.GetInfoString(c.item, buffer.data(), 64, kASCII);
    EXPECT_EQ(std::string(buffer.data(), placed), c.line.value_or(""));
    EXPECT_EQ(placed, c.line ? c.line->size() : 0u);
    EXPECT_EQ(buffer[placed], 0);

    CFStringRef copy = info.CopyInfoCFString(c.item);
    EXPECT_EQ(copy != nullptr, c.line.has_value());
    if (copy) {
        EXPECT_EQ(Utf8(copy), *c.line);
    }

    EXPECT_EQ(info.GetInfoStringLength(c.item, kASCII), c.length);
    if (c.line && !c.line->empty()) {
        EXPECT_EQ(info.GetInfoString(c.item, buffer.data(), c.length, kASCII) != 0,
                  c.fitsInReportedLength);
    }
}

using namespace QelItem;
using std::nullopt;

INSTANTIATE_TEST_SUITE_P(
    Export, JoinedLine,
    testing::Values(
        // Value-only items show the value, never the title.
        LineCase{kModel, "Model", "Talvo Q77", "Talvo Q77", 11, false},
        LineCase{kModel, "Model", "", "", 2, false},
        LineCase{kModel, "Model", nullopt, nullopt, 0, false},
        LineCase{kBounceAndWidePanel, "Bounce", "Off", "Off", 5, false},
        // Value-required items need a title and a non-empty value.
        LineCase{kGPSAltitude, "Altitude", "35 m", "Altitude 35 m", 17, true},
        LineCase{kGPSAltitude, "Altitude", nullopt, nullopt, 0, false},
        LineCase{kGPSAltitude, "Altitude", "", nullopt, 13, false},  // length ignores emptiness
        LineCase{kGPSAltitude, nullopt, "35 m", nullopt, 0, false},
        LineCase{kFlashGroupA, "Group A", "TTL", "Group A TTL", 15, true},
        LineCase{kEditHistoryFirst, "Edit", "", nullopt, 9, false},
        // Title-first items: the title, then a non-empty value.
        LineCase{kWhiteBalance, "White Balance", "Cloudy", "White Balance Cloudy", 24, true},
        LineCase{kWhiteBalance, "White Balance", "", "White Balance", 18, true},
        LineCase{kWhiteBalance, "White Balance", nullopt, "White Balance", 15, false},
        LineCase{kWhiteBalance, nullopt, "Cloudy", nullopt, 0, false},
        LineCase{0, nullopt, nullopt, nullopt, 0, false}));

TEST(TitleAndValueExport, StrictSizeTestAndItemZero)
{
    TestImgInfo info;
    info.m_infoDict.SetTitle(kWhiteBalance, CQelString("0123456789", kASCII));
    info.m_infoDict.SetValue(kWhiteBalance, CQelString("", kASCII));
    char buffer[16];
    const struct {
        UInt32 size, placed;
    } cases[] = {{12, 0}, {13, 10}, {16, 10}};
    EXPECT_EQ(info.GetInfoTitleStringLength(kWhiteBalance, kASCII), 12u);
    for (const auto& c : cases) {
        std::memset(buffer, 'x', sizeof buffer);
        EXPECT_EQ(info.GetInfoTitleString(kWhiteBalance, buffer, c.size, kASCII), c.placed);
        EXPECT_EQ(std::string(buffer, c.placed), std::string("0123456789", c.placed));
        for (UInt32 i = c.placed; i < c.size; ++i)
            ASSERT_EQ(buffer[i], 0);
    }
    // An existing empty value copies as an empty string, not as null.
    EXPECT_EQ(Utf8(info.CopyInfoValueCFString(kWhiteBalance)), "");
    EXPECT_EQ(info.GetInfoValueStringLength(kWhiteBalance, kASCII), 2u);
    EXPECT_EQ(info.CopyInfoValueCFString(0), nullptr);
    EXPECT_EQ(info.CopyInfoTitleCFString(kModel), nullptr);
    EXPECT_EQ(info.GetInfoValueStringLength(0, kASCII), 0u);
    std::memset(buffer, 'x', sizeof buffer);
    EXPECT_EQ(info.GetInfoValueString(0, buffer, sizeof buffer, kASCII), 0u);
    EXPECT_EQ(std::string(buffer, sizeof buffer), std::string(sizeof buffer, '\0'));
}

TEST(TitleAndValueExport, ValueWithoutTitleIsExportedAlone)
{
    TestImgInfo info;
    info.m_infoDict.SetValue(kWhiteBalance, CQelString("Cloudy", kASCII));
    char buffer[16];
    EXPECT_EQ(info.GetInfoString(kWhiteBalance, buffer, sizeof buffer, kASCII), 0u);
    EXPECT_EQ(info.GetInfoValueString(kWhiteBalance, buffer, sizeof buffer, kASCII), 6u);
    EXPECT_STREQ(buffer, "Cloudy");
    EXPECT_EQ(Utf8(info.CopyInfoValueCFString(kWhiteBalance)), "Cloudy");
}

TEST(TitleAndValueExport, NullBuffersAnswerNothing)
{
    TestImgInfo info;
    info.m_infoDict.SetTitle(kWhiteBalance, CQelString("White Balance", kASCII));
    EXPECT_EQ(info.GetInfoString(kWhiteBalance, nullptr, 100, kASCII), 0u);
    EXPECT_EQ(info.GetInfoTitleString(kWhiteBalance, nullptr, 100, kASCII), 0u);
    EXPECT_EQ(info.GetInfoValueString(kWhiteBalance, nullptr, 100, kASCII), 0u);
    EXPECT_EQ(info.GetInfoString(kWhiteBalance, nullptr, 0, kASCII), 0u);
}

}  // namespace
