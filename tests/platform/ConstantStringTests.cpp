// Constant strings are interned by their text: the same text always gives
// the same object, from any buffer, any place naming it and any thread, and
// a buffer that now holds another text gives that text's constant.
#include "PlatformTestSupport.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <thread>

namespace {

TEST(ConstantStrings, FollowTheTextNotTheBuffer)
{
    const char* texts[] = {"IDS_QEL_WB", "IDS_QEL_WB_CLOUDY", "IDS_QEL_WB", "", "IDS_QEL_MODEL",
                           "IDS_QEL_WB_CLOUDY"};
    char buffer[32];
    for (const char* text : texts) {
        // One buffer rewritten in place, as a host formatting its keys would.
        std::strcpy(buffer, text);
        CFStringRef fromBuffer = __CFStringMakeConstantString(buffer);
        EXPECT_EQ(Utf8(fromBuffer), text);
        EXPECT_EQ(fromBuffer, __CFStringMakeConstantString(text)) << text;
        EXPECT_EQ(fromBuffer, __CFStringMakeConstantString(std::string(text).c_str())) << text;
    }
}

TEST(ConstantStrings, EveryPlaceNamingATextGetsItsOneConstant)
{
    auto named = [] { return CFSTR("IDS_QEL_WB"); };
    for (int call = 0; call < 3; ++call) {
        EXPECT_EQ(named(), CFSTR("IDS_QEL_WB")) << call;
        EXPECT_EQ(named(), __CFStringMakeConstantString("IDS_QEL_WB")) << call;
    }
    EXPECT_NE(CFSTR("IDS_QEL_WB"), CFSTR("IDS_QEL_WB_CLOUDY"));
    EXPECT_EQ(Utf8(CFSTR("IDS_QEL_WB_CLOUDY")), "IDS_QEL_WB_CLOUDY");
}

TEST(ConstantStrings, AreTheSameObjectInEveryThread)
{
    CFStringRef here = __CFStringMakeConstantString("IDS_QEL_SHARPENING");
    CFStringRef there = nullptr;
    std::thread([&there] { there = __CFStringMakeConstantString("IDS_QEL_SHARPENING"); }).join();
    EXPECT_EQ(here, there);
}

}  // namespace
