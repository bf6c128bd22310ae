#include "CQelInfoDictionary.h"

#include <gtest/gtest.h>

namespace {

constexpr CFStringEncoding kASCII = kCFStringEncodingASCII;

CQelString Text(const char* text)
{
    return CQelString(text, kASCII);
}

std::string TitleOf(const CQelInfoDictionary& dict, UInt32 id)
{
    CQelString out("<absent>", kASCII);
    dict.GetTitle(id, &out);
    return out.ToUTF8();
}

std::string ValueOf(const CQelInfoDictionary& dict, UInt32 id)
{
    CQelString out("<absent>", kASCII);
    dict.GetValue(id, &out);
    return out.ToUTF8();
}

TEST(CQelInfoDictionaryTest, LastWriteWinsWithoutAddingEntries)
{
    CQelInfoDictionary dict;
    dict.SetTitle(0x80005, Text("WB"));
    dict.SetTitle(0x80005, Text("White Balance"));
    dict.SetValue(0x80005, Text("Sunny"));
    dict.SetValue(0x80005, Text("Shade"));
    EXPECT_EQ(dict.GetMapCount(&dict.Titles()), 1u);
    EXPECT_EQ(dict.GetValueCount(), 1u);
    EXPECT_EQ(TitleOf(dict, 0x80005), "White Balance");
    EXPECT_EQ(ValueOf(dict, 0x80005), "Shade");
}

TEST(CQelInfoDictionaryTest, TitleWithoutValueIsNormalAndEmptyValueCountsAsPresent)
{
    CQelInfoDictionary dict;
    dict.SetTitle(272, Text("Model"));
    dict.SetValue(0x9286, Text(""));
    EXPECT_FALSE(dict.GetValue(272, nullptr));
    EXPECT_EQ(ValueOf(dict, 272), "<absent>");  // output left as it was
    EXPECT_EQ(dict.GetValueByteLength(272, kASCII), 0u);
    EXPECT_EQ(dict.GetValueByteLength(0x9286, kASCII), 2u);
    EXPECT_EQ(dict.GetTitleByteLength(272, kASCII), 7u);
    EXPECT_EQ(dict.GetValueCount(), 1u);
    EXPECT_STREQ(dict.GetTitleCStringPtr(272, kASCII), "Model");
    EXPECT_EQ(dict.GetValueCStringPtr(272, kASCII), nullptr);
}

TEST(CQelInfoDictionaryTest, StoredTextsAreCopies)
{
    CQelInfoDictionary dict;
    CQelString text = Text("Cloudy");
    dict.SetValue(1, text);
    text.Append(" changed", kASCII);
    EXPECT_EQ(ValueOf(dict, 1), "Cloudy");
}

TEST(CQelInfoDictionaryTest, AssignmentCopiesBothMapsAndSelfAssignmentKeepsThem)
{
    CQelInfoDictionary source;
    source.SetTitle(1, Text("a"));
    source.SetValue(2, Text("b"));
    CQelInfoDictionary target;
    target.SetValue(3, Text("dropped"));
    target = source;
    source.SetValue(2, Text("changed later"));
    EXPECT_EQ(TitleOf(target, 1), "a");
    EXPECT_EQ(ValueOf(target, 2), "b");
    EXPECT_EQ(ValueOf(target, 3), "<absent>");

    const CQelInfoDictionary& same = target;
    target = same;
    EXPECT_EQ(ValueOf(target, 2), "b");
    EXPECT_EQ(target.GetValueCount(), 1u);

    target.Clear();
    EXPECT_EQ(target.GetValueCount(), 0u);
    EXPECT_EQ(TitleOf(target, 1), "<absent>");
}

TEST(CQelInfoDictionaryTest, CopyMapReplacesAndKeepsOtherEntries)
{
    CQelInfoDictionary::Map from, to;
    from.emplace(1, Text("new"));
    from.emplace(2, Text("added"));
    to.emplace(1, Text("old"));
    to.emplace(3, Text("kept"));
    CQelInfoDictionary dict;
    dict.CopyMap(&from, &to);
    dict.CopyMap(&to, &to);
    ASSERT_EQ(dict.GetMapSize(&to), 3u);
    EXPECT_EQ(to.at(1).ToUTF8(), "new");
    EXPECT_EQ(to.at(2).ToUTF8(), "added");
    EXPECT_EQ(to.at(3).ToUTF8(), "kept");
}

}  // namespace
