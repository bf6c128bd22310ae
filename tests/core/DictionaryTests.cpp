#include "CQelInfoDictionary.h"

#include <gtest/gtest.h>

namespace {

constexpr CFStringEncoding kASCII = kCFStringEncodingASCII;

CQelString Text(const char* text)
{
    return CQelString(text, kASCII);
}

std::string ValueOf(const CQelInfoDictionary& dict, UInt32 id)
{
    CQelString out("<absent>", kASCII);
    dict.GetValue(id, &out);
    return out.ToUTF8();
}

TEST(CQelInfoDictionaryTest, LastWriteWinsAndEmptyValuesCount)
{
    CQelInfoDictionary dict;
    dict.SetTitle(0x80005, Text("WB"));
    dict.SetTitle(0x80005, Text("White Balance"));
    dict.SetValue(0x80005, Text("Sunny"));
    dict.SetValue(0x80005, Text(""));
    EXPECT_EQ(dict.GetMapCount(&dict.Titles()), 1u);
    EXPECT_EQ(dict.GetValueCount(), 1u);
    EXPECT_EQ(dict.GetTitleByteLength(0x80005, kASCII), 15u);
    EXPECT_EQ(dict.GetValueByteLength(0x80005, kASCII), 2u);  // empty, yet present
    EXPECT_EQ(ValueOf(dict, 0x80005), "");

    dict.SetTitle(272, Text("Model"));
    EXPECT_EQ(ValueOf(dict, 272), "<absent>");  // output left as it was
    EXPECT_EQ(dict.GetValueByteLength(272, kASCII), 0u);
}

TEST(CQelInfoDictionaryTest, AssignmentCopiesBothMaps)
{
    CQelInfoDictionary source, target;
    source.SetTitle(1, Text("a"));
    source.SetValue(2, Text("b"));
    target.SetValue(3, Text("dropped"));
    target = source;
    source.SetValue(2, Text("changed later"));
    const CQelInfoDictionary& same = target;
    target = same;
    EXPECT_TRUE(target.GetTitle(1, nullptr));
    EXPECT_EQ(ValueOf(target, 2), "b");
    EXPECT_EQ(ValueOf(target, 3), "<absent>");

    target.Clear();
    EXPECT_EQ(target.GetValueCount(), 0u);
    EXPECT_FALSE(target.GetTitle(1, nullptr));
}

}  // namespace
