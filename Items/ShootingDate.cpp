// SPDX-License-Identifier: MIT
// Shooting date and time: the date text the camera wrote, cut into numbers
// and printed again as "2005/07/14 10:22:05", with tenths of a second when
// the file records sub-seconds.
#include "CQelImgInfo.h"
#include "QelItemIDs.h"
#include "TagReads.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <optional>
#include <string>

namespace {

constexpr UInt32 kTagDateTime = 0x132;  // when the file was last written
constexpr UInt32 kTagSubSecTimeOriginal = 0x9290;

constexpr size_t kTagTextSize = 256;
using DateText = qel::TagText<kTagTextSize>;

constexpr size_t kPartSize = 32;
constexpr const char* kDateDelimiters = " ,.:/";
constexpr const char* kSubSecondDigits = "1234567890";

// The original shooting date, or the file's date when the camera wrote no
// original one. A date tag that reads but is empty counts as no date at all.
std::optional<DateText> ReadDateText(IVandelTagControl* tagControl)
{
    for (UInt32 tagID : {QelItem::kShootingDate, kTagDateTime}) {
        auto text = qel::ReadText<kTagTextSize>(tagControl, tagID);
        if (!text)
            continue;
        if (tagControl->GetTagSize(tagID, 0) == 0)
            return std::nullopt;
        return text;
    }
    return std::nullopt;
}

// A number as the 32-bit platform's atoi read it: strtol saturated to the
// 32-bit range. Dates keep the low 16 bits of it, so "70000" reads as 4464.
SInt32 AtoiAsThePlatform(const char* text)
{
    long number = std::strtol(text, nullptr, 10);
    if (number > INT32_MAX)
        return INT32_MAX;
    if (number < INT32_MIN)
        return INT32_MIN;
    return static_cast<SInt32>(number);
}

// The numbers of a date text in order; 0 once the text has run out.
class DateNumbers {
public:
    explicit DateNumbers(char* text) : m_text(text) {}

    UInt16 Next()
    {
        const char* token = strtok_r(m_text, kDateDelimiters, &m_rest);
        m_text = nullptr;
        return token ? static_cast<UInt16>(AtoiAsThePlatform(token)) : 0;
    }

private:
    char* m_text;
    char* m_rest = nullptr;
};

// Milliseconds from the sub-second text, of which two digits count. With a
// leading full stop the text is a fraction (".5" is 500 ms, stray letters
// dropped); without it a single digit counts as hundredths ("5" is 50 ms).
// Files carry both forms, so each is read as its writer meant it.
UInt32 ReadSubSeconds(IVandelTagControl* tagControl)
{
    auto text = qel::ReadText<kTagTextSize>(tagControl, kTagSubSecTimeOriginal);
    if (!text)
        return 0;
    std::string digits = text->c_str();
    if (!digits.empty() && digits[0] == '.') {
        digits.erase(0, 1);
        for (size_t stray; (stray = digits.find_last_not_of(kSubSecondDigits)) != std::string::npos;)
            digits.erase(stray, 1);
        if (digits.size() < 3)
            digits.append(3 - digits.size(), '0');
    }
    if (digits.size() >= 3)
        digits.resize(2);
    else if (digits.size() == 1)
        digits.insert(0, 1, '0');
    // At most two characters: the product cannot overflow.
    return static_cast<UInt32>(AtoiAsThePlatform(digits.c_str()) * 10);
}

size_t Room(int size)
{
    return size > 0 ? static_cast<size_t>(size) : 0;
}

}  // namespace

void CQelImgInfo::GetShootingDate(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kShootingDate, "IDS_QEL_DATE_TIME");
    if (!tagControl)
        return;

    CQelString value;
    if (auto text = ReadDateText(tagControl)) {
        DateNumbers numbers(text->text);
        tagVxTESKDateTime when{};
        when.year = numbers.Next();
        when.month = numbers.Next();
        when.day = numbers.Next();
        char date[kPartSize] = {};
        if (DateToString(&when, date, sizeof date) != -1) {
            value.Append(date, kCFStringEncodingASCII);
            value.Append(" ", kCFStringEncodingASCII);
        }
        when.hour = numbers.Next();
        when.minute = numbers.Next();
        when.second = numbers.Next();
        // Also when the date came from the file's date rather than the original one.
        when.millisecond = ReadSubSeconds(tagControl);
        char time[kPartSize] = {};
        if (TimeToString(&when, time, sizeof time) != -1)
            value.Append(time, kCFStringEncodingASCII);
    } else {
        value.LoadString("IDS_QEL_DATE_TIME_UNKNOWN");
    }
    StoreValue(QelItem::kShootingDate, value);
}

int CQelImgInfo::DateToString(const tagVxTESKDateTime* dateTime, char* out, int size)
{
    if (!dateTime || !out)
        return -1;
    return std::snprintf(out, Room(size), "%.4d/%.2d/%.2d", dateTime->year, dateTime->month,
                         dateTime->day);
}

int CQelImgInfo::TimeToString(const tagVxTESKDateTime* dateTime, char* out, int size)
{
    if (!dateTime || !out)
        return -1;
    if (dateTime->millisecond == 0)
        return std::snprintf(out, Room(size), "%.2d:%.2d:%.2d", dateTime->hour,
                             dateTime->minute, dateTime->second);
    // Any sub-second count shows a digit, that of its hundreds: 50 ms is ".0".
    return std::snprintf(out, Room(size), "%.2d:%.2d:%.2d.%ld", dateTime->hour, dateTime->minute,
                         dateTime->second, static_cast<long>(dateTime->millisecond / 100));
}
