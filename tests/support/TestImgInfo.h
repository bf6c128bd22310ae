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
    std::optional<std::string> Title(UInt32 itemID) const
    {
        CQelString text;
        return m_infoDict.GetTitle(itemID, &text) ? std::optional(text.ToUTF8()) : std::nullopt;
    }
    std::optional<std::string> Value(UInt32 itemID) const
    {
        CQelString text;
        return m_infoDict.GetValue(itemID, &text) ? std::optional(text.ToUTF8()) : std::nullopt;
    }
};

// The localized text of a key, as the library's bundle gives it.
inline std::string L(const char* key)
{
    CQelString text;
    text.LoadString(key);
    return text.ToUTF8();
}

// The localized format of a key applied to the arguments.
template <class... Arguments>
std::string LF(const char* key, Arguments... arguments)
{
    CQelString text;
    text.LoadStringWithFormat(key, arguments...);
    return text.ToUTF8();
}

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

#endif
