// SPDX-License-Identifier: MIT
// Test access to an image-information object: its kinds and list indexes
// can be set before a formatter runs, and stored texts read back as UTF-8.
#ifndef QEL_TEST_IMG_INFO_H
#define QEL_TEST_IMG_INFO_H

#include "CQelImgInfo.h"
#include "CQelString.h"
#include "MemoryTagSource.h"
#include "QelItemIDs.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

class TestImgInfo : public CQelImgInfo {
public:
    using CQelImgInfo::m_brtcntListIndex;
    using CQelImgInfo::m_colorModeListIndex;
    using CQelImgInfo::m_deviceKind;
    using CQelImgInfo::m_fileKind;
    using CQelImgInfo::m_gammaListIndex;
    using CQelImgInfo::m_infoDict;
    using CQelImgInfo::m_saturationListIndex;
    using CQelImgInfo::m_sharpeningListIndex;
    using CQelImgInfo::m_wbListIndex;

    TestImgInfo& Kinds(SInt32 deviceKind, SInt32 fileKind)
    {
        m_deviceKind = deviceKind;
        m_fileKind = fileKind;
        return *this;
    }
    std::optional<std::string> Title(UInt32 itemID) const { return Text(m_infoDict.FindTitle(itemID)); }
    std::optional<std::string> Value(UInt32 itemID) const { return Text(m_infoDict.FindValue(itemID)); }
    static std::optional<std::string> Text(const CQelString* text)
    {
        return text ? std::optional(text->ToUTF8()) : std::nullopt;
    }
};

// The localized text of a key, as the library's bundle gives it, with the
// arguments applied to it as a format.
template <class... Arguments>
std::string LF(const char* key, Arguments... arguments)
{
    CQelString text;
    if constexpr (sizeof...(arguments) == 0)
        text.LoadString(key);
    else
        text.LoadStringWithFormat(key, arguments...);
    return text.ToUTF8();
}
inline std::string L(const char* key) { return LF(key); }

// An expected value: null for none, a key for its text, anything else literal.
inline std::optional<std::string> Shown(const char* text)
{
    if (!text)
        return std::nullopt;
    return std::string(text).rfind("IDS_", 0) == 0 ? L(text) : text;
}

// Runs a formatter on `tags` and checks the title and value it stores for the
// item, and that every error the tags handed out was released exactly once.
inline void ExpectFormatted(TestImgInfo& info, void (CQelImgInfo::*formatter)(IVandelTagControl*),
                            MemoryTagSource& tags, UInt32 item,
                            const std::optional<std::string>& title,
                            const std::optional<std::string>& value)
{
    (info.*formatter)(&tags);
    EXPECT_EQ(info.Title(item), title);
    EXPECT_EQ(info.Value(item), value);
    EXPECT_TRUE(tags.EveryErrorReleasedOnce());
}

using Tags = std::function<void(MemoryTagSource&)>;
inline Tags Int(UInt32 id, std::optional<SInt32> v) { return [=](MemoryTagSource& t) { t.Int32(id, v); }; }
inline Tags Dbl(UInt32 id, std::optional<double> v) { return [=](MemoryTagSource& t) { t.Double(id, v); }; }

// One formatter run on one file's tags.
struct ItemCase {
    const char* name;
    std::function<void(CQelImgInfo&, IVandelTagControl*)> formatter;
    UInt32 item;
    Tags tags;                                // null: no tag source at all
    std::optional<std::string> value;         // nullopt: the title alone
    SInt32 deviceKind = kDeviceSLR, fileKind = 0;
};

// Runs each case on a fresh object: the item has its title and the expected
// value, and every error the tags handed out was released exactly once.
inline void ExpectItems(const std::vector<ItemCase>& cases)
{
    for (const ItemCase& c : cases) {
        SCOPED_TRACE(c.name);
        MemoryTagSource tags;
        if (c.tags)
            c.tags(tags);
        TestImgInfo info;
        c.formatter(info.Kinds(c.deviceKind, c.fileKind), c.tags ? &tags : nullptr);
        EXPECT_TRUE(info.Title(c.item).has_value());
        EXPECT_EQ(info.Value(c.item), c.value);
        EXPECT_TRUE(tags.EveryErrorReleasedOnce());
    }
}

#endif
