// SPDX-License-Identifier: MIT
// The store and the export hand out stored texts without copying them more
// than once, and build lines and list entries in one buffer the object
// keeps: what the host receives must still be its own, whatever it asks for
// next, and rewriting an item with its own text must keep it.
#include "TestImgInfo.h"

#include <utility>

namespace {

using namespace QelItem;
using std::nullopt;
constexpr CFStringEncoding kASCII = kCFStringEncodingASCII;

CQelString Text(const char* text) { return CQelString(text, kASCII); }

// The text of a copy handed to the host, which is then released; nullopt for none.
std::optional<std::string> Owned(CFStringRef copy)
{
    if (!copy)
        return std::nullopt;
    const std::string text = CQelString(copy).ToUTF8();
    CFRelease(copy);
    return text;
}

std::string ValueOf(const CQelInfoDictionary& dict, UInt32 id)
{
    CQelString out("<absent>", kASCII);
    dict.GetValue(id, &out);
    return out.ToUTF8();
}

TEST(StoreReuse, LastWriteWinsAndAnItemRewrittenWithItsOwnTextKeepsIt)
{
    CQelInfoDictionary dict;
    dict.SetTitle(kWhiteBalance, Text("WB"));
    dict.SetTitle(kWhiteBalance, Text("White Balance"));
    dict.SetValue(kWhiteBalance, Text("Sunny"));
    dict.SetValue(kWhiteBalance, Text(""));
    EXPECT_EQ(dict.GetValueCount(), 1u);
    EXPECT_EQ(dict.GetTitleByteLength(kWhiteBalance, kASCII), 15u);
    EXPECT_EQ(dict.GetValueByteLength(kWhiteBalance, kASCII), 2u);  // empty, yet present
    EXPECT_EQ(ValueOf(dict, kModel), "<absent>");  // output left as it was

    dict.SetValue(kWhiteBalance, Text("Cloudy"));
    dict.SetTitle(kWhiteBalance, *dict.FindTitle(kWhiteBalance));
    dict.SetValue(kWhiteBalance, *dict.FindValue(kWhiteBalance));
    EXPECT_EQ(dict.FindTitle(kWhiteBalance)->ToUTF8(), "White Balance");
    EXPECT_EQ(ValueOf(dict, kWhiteBalance), "Cloudy");
    // The store keeps its own copy: the caller's text may change afterwards.
    CQelString caller = Text("Shade");
    dict.SetValue(kWhiteBalance, caller);
    caller.Append(" and more", kASCII);
    EXPECT_EQ(ValueOf(dict, kWhiteBalance), "Shade");
}

struct LineCase {
    UInt32 item;
    std::optional<std::string> title, value;
    std::optional<std::string> line;  // nullopt: the item shows nothing
    UInt32 length;                    // GetInfoStringLength in ASCII
};

const LineCase kLineCases[] = {
    // Value-only items.
    {kModel, "Model", "Talvo Q77", "Talvo Q77", 11}, {kModel, "Model", nullopt, nullopt, 0},
    // Value-required items; the length does not look at emptiness.
    {kGPSAltitude, "Altitude", "35 m", "Altitude 35 m", 17},
    {kGPSAltitude, "Altitude", "", nullopt, 13}, {kGPSAltitude, nullopt, "35 m", nullopt, 0},
    {kFlashGroupC, "Group C", "", nullopt, 12},
    // Title-first items.
    {kWhiteBalance, "White Balance", "Cloudy", "White Balance Cloudy", 24},
    {kWhiteBalance, "White Balance", "", "White Balance", 18},
    {kWhiteBalance, "White Balance", nullopt, "White Balance", 15},
    {kWhiteBalance, nullopt, "Cloudy", nullopt, 0}, {0, nullopt, nullopt, nullopt, 0},
};

// Each way a line is made: the line in every encoding, its length, and copies
// that stay the host's whatever the store and the export do next.
TEST(ExportedLines, LineLengthAndCopiesInEveryEncoding)
{
    for (const auto& c : kLineCases) {
        SCOPED_TRACE(testing::Message() << "case " << (&c - kLineCases));
        TestImgInfo info;
        if (c.title)
            info.m_infoDict.SetTitle(c.item, Text(c.title->c_str()));
        if (c.value)
            info.m_infoDict.SetValue(c.item, Text(c.value->c_str()));
        EXPECT_EQ(info.GetInfoStringLength(c.item, kASCII), c.length);
        for (CFStringEncoding encoding : {kCFStringEncodingASCII, kCFStringEncodingUTF16}) {
            char exported[128], direct[128] = {};
            std::memset(exported, 'x', sizeof exported);
            const UInt32 placed = info.GetInfoString(c.item, exported, sizeof exported, encoding);
            const UInt32 wanted =
                c.line ? Text(c.line->c_str()).GetCString(direct, sizeof direct, encoding) : 0;
            EXPECT_EQ(placed, wanted) << encoding;
            EXPECT_EQ(std::memcmp(exported, direct, wanted + 1), 0) << encoding;
        }
        CFStringRef line = info.CopyInfoCFString(c.item);
        CFStringRef title = info.CopyInfoTitleCFString(c.item);
        CFStringRef value = info.CopyInfoValueCFString(c.item);
        // Other items exported afterwards and the next file's texts must not show through.
        info.m_infoDict.SetTitle(kFlashMode, Text("Flash"));
        info.m_infoDict.SetValue(kFlashMode, Text("Fill-in flash, red-eye reduction"));
        CFRelease(info.CopyInfoCFString(kFlashMode));
        info.m_infoDict.SetValue(c.item, Text("Other value"));
        info.m_infoDict.Clear();
        EXPECT_EQ(Owned(line), c.line);
        EXPECT_EQ(Owned(title), c.title);
        EXPECT_EQ(Owned(value), c.value);
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
    std::memset(buffer, 'x', sizeof buffer);
    EXPECT_EQ(info.GetInfoValueString(0, buffer, sizeof buffer, kASCII), 0u);
    EXPECT_EQ(std::string(buffer, sizeof buffer), std::string(sizeof buffer, '\0'));
}

// Value-list entries are built in the same buffer as the lines: each
// answer is whole and the host's copies stay as they were.
TEST(ListReuse, EachEntryIsBuiltAfresh)
{
    TestImgInfo info, fresh;  // fresh: what an object that never built a text answers
    info.Kinds(kDeviceSLR, 0);
    fresh.Kinds(kDeviceSLR, 0);
    info.m_infoDict.SetTitle(kWhiteBalance, Text("White Balance"));
    info.m_infoDict.SetValue(kWhiteBalance, Text("Cloudy, fine-tuned -1"));
    UInt32 raw = 0;
    CFStringRef first = info.CopyInfoValueListItemCFString(kWhiteBalance, 0, &raw);
    ASSERT_NE(first, nullptr);
    const std::string firstText = CQelString(first).ToUTF8();

    const struct { UInt32 item, index; CFStringEncoding encoding; } asks[] = {
        {kWhiteBalance, 5, kASCII}, {kWhiteBalance, 99, kASCII},
        {kISOSensitivity, 0, kCFStringEncodingUTF16}, {kWhiteBalance, 0, kASCII}};
    for (const auto& ask : asks) {
        char buffer[64], freshBuffer[64];
        info.GetInfoString(kWhiteBalance, buffer, sizeof buffer, kASCII);
        EXPECT_EQ(info.GetInfoValueListItemString(ask.item, ask.index, &raw, buffer, sizeof buffer, ask.encoding),
                  fresh.GetInfoValueListItemString(ask.item, ask.index, &raw, freshBuffer,
                                                   sizeof freshBuffer, ask.encoding));
        EXPECT_EQ(std::memcmp(buffer, freshBuffer, sizeof buffer), 0) << ask.item << "/" << ask.index;
    }
    EXPECT_EQ(Owned(first), firstText);
}

}  // namespace
