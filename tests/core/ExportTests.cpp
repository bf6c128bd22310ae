#include "TestImgInfo.h"

namespace {

using namespace QelItem;
using std::nullopt;
constexpr CFStringEncoding kASCII = kCFStringEncodingASCII;

struct LineCase {
    UInt32 item;
    std::optional<std::string> title, value;
    std::optional<std::string> line;  // nullopt: the item shows nothing
    UInt32 length;                    // GetInfoStringLength in ASCII
};

const LineCase kJoinedLineCases[] = {
    // Value-only items.
    {kModel, "Model", "Talvo Q77", "Talvo Q77", 11}, {kModel, "Model", "", "", 2},
    {kModel, "Model", nullopt, nullopt, 0}, {kBounceAndWidePanel, "Bounce", "Off", "Off", 5},
    // Value-required items; the length does not look at emptiness.
    {kGPSAltitude, "Altitude", "35 m", "Altitude 35 m", 17},
    {kGPSAltitude, "Altitude", nullopt, nullopt, 0}, {kGPSAltitude, "Altitude", "", nullopt, 13},
    {kGPSAltitude, nullopt, "35 m", nullopt, 0}, {kFlashGroupA, "Group A", "", nullopt, 12},
    {kEditHistoryFirst, "Edit", "", nullopt, 9},
    // Title-first items.
    {kWhiteBalance, "White Balance", "Cloudy", "White Balance Cloudy", 24},
    {kWhiteBalance, "White Balance", "", "White Balance", 18},
    {kWhiteBalance, "White Balance", nullopt, "White Balance", 15},
    {kWhiteBalance, nullopt, "Cloudy", nullopt, 0}, {0, nullopt, nullopt, nullopt, 0},
};

TEST(JoinedLine, LineCopyAndLength)
{
    for (const auto& c : kJoinedLineCases) {
        SCOPED_TRACE(testing::Message() << "case " << (&c - kJoinedLineCases));
        TestImgInfo info;
        if (c.title)
            info.m_infoDict.SetTitle(c.item, CQelString(c.title->c_str(), kASCII));
        if (c.value)
            info.m_infoDict.SetValue(c.item, CQelString(c.value->c_str(), kASCII));

        char buffer[64];
        std::memset(buffer, 'x', sizeof buffer);
        const UInt32 placed = info.GetInfoString(c.item, buffer, sizeof buffer, kASCII);
        EXPECT_EQ(std::string(buffer, placed), c.line.value_or(""));
        EXPECT_EQ(buffer[placed], 0);
        EXPECT_EQ(info.GetInfoStringLength(c.item, kASCII), c.length);

        CFStringRef copy = info.CopyInfoCFString(c.item);
        EXPECT_EQ(copy != nullptr, c.line.has_value());
        if (copy) {
            EXPECT_EQ(CQelString(copy).ToUTF8(), *c.line);
            CFRelease(copy);
        }
    }
}

TEST(TitleAndValueExport, StrictSizeTestNullBuffersAndItemZero)
{
    TestImgInfo info;
    info.m_infoDict.SetTitle(kWhiteBalance, CQelString("0123456789", kASCII));
    info.m_infoDict.SetValue(kWhiteBalance, CQelString("", kASCII));
    char buffer[16];
    EXPECT_EQ(info.GetInfoTitleStringLength(kWhiteBalance, kASCII), 12u);
    EXPECT_EQ(info.GetInfoTitleString(kWhiteBalance, buffer, 12, kASCII), 0u);
    EXPECT_EQ(info.GetInfoTitleString(kWhiteBalance, buffer, 13, kASCII), 10u);
    EXPECT_EQ(info.GetInfoString(kWhiteBalance, nullptr, 100, kASCII), 0u);
    EXPECT_EQ(info.GetInfoValueString(kWhiteBalance, nullptr, 100, kASCII), 0u);

    CFStringRef empty = info.CopyInfoValueCFString(kWhiteBalance);  // empty, not null
    ASSERT_NE(empty, nullptr);
    EXPECT_EQ(CFStringGetLength(empty), 0);
    CFRelease(empty);
    EXPECT_EQ(info.CopyInfoValueCFString(0), nullptr);
    std::memset(buffer, 'x', sizeof buffer);
    EXPECT_EQ(info.GetInfoValueString(0, buffer, sizeof buffer, kASCII), 0u);
    EXPECT_EQ(std::string(buffer, sizeof buffer), std::string(sizeof buffer, '\0'));
}

}  // namespace
