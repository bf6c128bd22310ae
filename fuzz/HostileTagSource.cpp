// SPDX-License-Identifier: MIT
#include "HostileTagSource.h"

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace qel_fuzz {

namespace {

[[noreturn]] void Breach(const char* what)
{
    std::fprintf(stderr, "tag source contract broken by the library: %s\n", what);
    std::abort();
}

// Makes and models that reach every kind of device, the texts the date,
// GPS and scanner items look for, and a few that no camera writes.
constexpr const char* kTexts[] = {
    "TALVO", "Talvo", "TALVO CORPORATION", "Talvo Corp.", "OTHER MAKER", "talvo", "",
    "MERIVAX", "MERIVAX E7310", "MERIVAX K42", "MERIVAXE", "MERIVAX E", "M", "ME", "MERIVA",
    "E", "E1234", "E7310", "S37", "L1", "P5", "SCAN", "FILMSCAN F40", "TALVO FILMSCAN",
    "TALVO Q77", "Q77 TALVO TALVO", "X TALVO",
    "2005:07:14 10:22:05", "2005/07/14", "::::: :::::", "99999:99999:99999 99999:99999:99999",
    "-1:-1:-1 -1:-1:-1", "2147483648:4294967296:1 1:1:1", "123", "99999999999999999999",
    "0", ".5", "N", "S", "E", "W", "T", "M", "TM", "ON", "OFF", "On", "Off", "1", "4", "16",
    "%s%n%d%f%ls", "&&&&", "\xff\xfe\x80", "\xe6\x97\xa5\xe6\x9c\xac",
};

constexpr double kDoubles[] = {
    std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::quiet_NaN(),
    std::numeric_limits<double>::signaling_NaN(), std::numeric_limits<double>::infinity(),
    -std::numeric_limits<double>::infinity(), DBL_MAX, -DBL_MAX, DBL_MIN,
    std::numeric_limits<double>::denorm_min(), 0.0, -0.0, 0.5, 1.0, -1.0, 1.0 / 3.0, 2.5,
    59.999999, 60.0, 3600.0, 1e-300, 1e300, 2147483647.5, 2147483648.0, -2147483649.0,
    4294967296.0, 9.3e18, 1e20, 0.0001, 999.95, -0.05,
};

constexpr SInt32 kIntegers[] = {
    INT32_MIN, INT32_MIN + 1, -2, -1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 16, 17, 63, 64, 65,
    69, 70, 100, 127, 128, 255, 256, 0x7FFF, 0x8000, 0xFFFF, 0x10000, INT32_MAX,
};

constexpr SInt16 kShorts[] = {INT16_MIN, -3, -1, 0, 1, 2, 3, 6, 10, 100, INT16_MAX};

// Record versions: the known ones, their neighbours and broken ones.
constexpr const char* kVersions[] = {"0100", "0101", "0102", "0103", "0099", "9999", "01"};

constexpr UInt32 kSizes[] = {
    0, 1, 2, 3, 4, 5, 7, 8, 16, 24, 28, 40, 41, 42, 44, 56, 255, 256, 257, 4096, 65535, 65536,
    1u << 20, (1u << 20) + 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFE, 0xFFFFFFFF,
};

constexpr UInt32 kValueTypes[] = {0,   1,   2,   3,   4,   17,  19,  256, 257,
                                  259, 260, 261, 266, 271, 277, 279, 0xFFFFFFFF};

constexpr SInt32 kFileKinds[] = {
    0, 1, 0x102, 0x103, 0x104, 0x105, 0x106, 0x107, 0x108, 0x200, 0x201, 0x202, 0x203, 0x204,
    0x205, 0x206, 0x207, 0x400, 0x401, 0x402, 0x403, 0x404, 0x405, 0x406, 0x407, -1,
    INT32_MIN, INT32_MAX,
};

enum class Answer : UInt8 {
    kFail,              // an error object
    kNatural,           // what the value type asks for, from the palettes
    kRawBytes,          // input bytes, whatever the type
    kText,              // a text of the dictionary, zero-terminated
    kUnterminatedText,  // a text repeated over the whole buffer, no zero
    kDoubles,
    kIntegers,
    kVersioned,         // a record version, then input bytes
    kZeros,
    kLast = kZeros,
};

template <class T, size_t N>
T PickFrom(FuzzedDataProvider& input, const T (&table)[N])
{
    return table[input.ConsumeIntegralInRange<size_t>(0, N - 1)];
}

// Fills `size` bytes with copies of `unit`, the last one cut short.
void Repeat(UInt8* buffer, UInt32 size, const void* unit, size_t unitSize)
{
    for (size_t at = 0; at < size; at += unitSize)
        std::memcpy(buffer + at, unit, std::min<size_t>(unitSize, size - at));
}

}  // namespace

class HostileTagSource::CountingError final : public ITagError {
public:
    void Release() override
    {
        if (++m_releases > 1)
            Breach("an error object was released twice");
    }
    int Releases() const { return m_releases; }

private:
    int m_releases = 0;
};

HostileTagSource::HostileTagSource(FuzzedDataProvider& input) : m_input(input) {}
HostileTagSource::~HostileTagSource() = default;

ITagError* HostileTagSource::NewError()
{
    m_errors.push_back(std::make_unique<CountingError>());
    return m_errors.back().get();
}

void HostileTagSource::RequireEveryErrorReleasedOnce() const
{
    for (const auto& error : m_errors)
        if (error->Releases() != 1)
            Breach("an error object was not released");
}

UInt32 HostileTagSource::GetTagInfo(UInt32, UInt32 index)
{
    if (index != 0)
        Breach("GetTagInfo with an index other than 0");
    return m_input.ConsumeBool() ? m_input.ConsumeIntegral<UInt32>() : PickFrom(m_input, kValueTypes);
}

UInt32 HostileTagSource::GetTagSize(UInt32 tagID, UInt32 index)
{
    if (index != 0)
        Breach("GetTagSize with an index other than 0");
    switch (m_input.ConsumeIntegralInRange<int>(0, 2)) {
    case 0:
        return PickFrom(m_input, kSizes);
    case 1: {
        // Exact, one short or one over (wrapping below 0 on purpose).
        auto delivered = m_delivered.find(tagID);
        UInt32 exact = delivered == m_delivered.end() ? 0 : delivered->second;
        return exact + static_cast<UInt32>(m_input.ConsumeIntegralInRange<int>(-1, 1));
    }
    default:
        return m_input.ConsumeIntegral<UInt32>();
    }
}

ITagError* HostileTagSource::GetTagValue(UInt32 tagID, UInt32 valueType, UInt32 bufferSize,
                                         void* buffer, UInt32 index)
{
    if (index != 0)
        Breach("GetTagValue with an index other than 0");
    if (!buffer && bufferSize > 0)
        Breach("GetTagValue without a buffer for a non-zero size");
    // Every byte the library says it owns is written, so a size larger
    // than the real buffer shows up as an overflow in the library's frame.
    auto answer = static_cast<Answer>(
        m_input.ConsumeIntegralInRange<UInt8>(0, static_cast<UInt8>(Answer::kLast)));
    if (answer == Answer::kFail)
        return NewError();
    auto* bytes = static_cast<UInt8*>(buffer);
    std::memset(bytes, 0, bufferSize);
    UInt32 delivered = bufferSize;
    switch (answer) {
    case Answer::kNatural:
        delivered = Fill(valueType, bytes, bufferSize);
        break;
    case Answer::kRawBytes: {
        std::vector<UInt8> raw = m_input.ConsumeBytes<UInt8>(bufferSize);
        std::copy(raw.begin(), raw.end(), bytes);
        std::fill(bytes + raw.size(), bytes + bufferSize, m_input.ConsumeIntegral<UInt8>());
        break;
    }
    case Answer::kText:
        delivered = Fill(kQelValueText, bytes, bufferSize);
        break;
    case Answer::kUnterminatedText: {
        const char* text = PickFrom(m_input, kTexts);
        if (*text == '\0')
            text = "A";
        Repeat(bytes, bufferSize, text, std::strlen(text));
        break;
    }
    case Answer::kDoubles:
        Fill(kQelValueDouble, bytes, bufferSize);
        break;
    case Answer::kIntegers:
        Fill(kQelValueInt32, bytes, bufferSize);
        break;
    case Answer::kVersioned:
        Fill(kQelValueMixedFlash, bytes, bufferSize);
        break;
    case Answer::kFail:
    case Answer::kZeros:
        break;
    }
    m_delivered[tagID] = delivered;
    return nullptr;
}

UInt32 HostileTagSource::Fill(UInt32 valueType, UInt8* buffer, UInt32 size)
{
    switch (valueType) {
    case kQelValueText: {
        const char* text = PickFrom(m_input, kTexts);
        const size_t length = std::strlen(text);
        std::memcpy(buffer, text, std::min<size_t>(length, size));
        return static_cast<UInt32>(length + 1);
    }
    case kQelValueInt32:
        for (UInt32 at = 0; at < size; at += sizeof(SInt32)) {
            SInt32 number = m_input.ConsumeBool() ? m_input.ConsumeIntegral<SInt32>()
                                                  : PickFrom(m_input, kIntegers);
            Repeat(buffer + at, std::min<UInt32>(sizeof number, size - at), &number, sizeof number);
        }
        break;
    case kQelValueDouble:
        for (UInt32 at = 0; at < size; at += sizeof(double)) {
            double number = PickFrom(m_input, kDoubles);
            Repeat(buffer + at, std::min<UInt32>(sizeof number, size - at), &number, sizeof number);
        }
        break;
    case kQelValueStep:
        for (UInt32 at = 0; at < size; at += sizeof(SInt16)) {
            SInt16 number = PickFrom(m_input, kShorts);
            Repeat(buffer + at, std::min<UInt32>(sizeof number, size - at), &number, sizeof number);
        }
        break;
    case kQelValueMixedFlash:
    case kQelValuePictureProcessing:
    case kQelValueStabilisation: {
        const char* version = PickFrom(m_input, kVersions);
        size_t length = std::min<size_t>(std::strlen(version), size);
        std::memcpy(buffer, version, length);
        std::vector<UInt8> rest = m_input.ConsumeBytes<UInt8>(size - length);
        std::copy(rest.begin(), rest.end(), buffer + length);
        break;
    }
    default: {
        std::vector<UInt8> raw = m_input.ConsumeBytes<UInt8>(size);
        std::copy(raw.begin(), raw.end(), buffer);
        break;
    }
    }
    return size;
}

ITagError* HostileTagSource::GetFileKind(SInt32* fileKind)
{
    if (!fileKind)
        Breach("GetFileKind without a place for the answer");
    switch (m_input.ConsumeIntegralInRange<int>(0, 2)) {
    case 0:
        return NewError();
    case 1:
        *fileKind = PickFrom(m_input, kFileKinds);
        return nullptr;
    default:
        *fileKind = m_input.ConsumeIntegral<SInt32>();
        return nullptr;
    }
}

}  // namespace qel_fuzz
