// SPDX-License-Identifier: MIT
// Tag files: what a reader of the tag source receives, and how a broken tag
// file is reported.
#include "JsonTagSource.h"
#include "QelinfoTestSupport.h"
#include "TagSourceError.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace {

using qel::JsonTagSource;
using Bytes = std::vector<UInt8>;

std::unique_ptr<JsonTagSource> Source(const std::string& tags, const std::string& fileKind = "1028")
{
    return JsonTagSource::FromText(R"({"fileKind": )" + fileKind + R"(, "tags": [)" + tags + "]}");
}

// One read: the tag in the file, what is asked, what lands in the buffer.
struct ReadCase {
    const char* name;
    std::string tag;
    UInt32 valueType;
    UInt32 bufferSize;
    std::optional<Bytes> buffer;   // nullopt: the read fails
    UInt32 errorCode = 0;
};

class TagFileRead : public ::testing::TestWithParam<ReadCase> {};

TEST_P(TagFileRead, FillsTheBufferOrFails)
{
    const ReadCase& c = GetParam();
    auto source = Source(c.tag);
    Bytes buffer(c.bufferSize, 0xAA);  // stale bytes that must not survive
    ITagError* error = source->GetTagValue(0x110, c.valueType, c.bufferSize, buffer.data(), 0);
    if (c.buffer) {
        EXPECT_EQ(error, nullptr);
        EXPECT_EQ(buffer, *c.buffer);
    } else {
        ASSERT_NE(error, nullptr);
        EXPECT_EQ(error->GetErrorCode(), c.errorCode);
        EXPECT_EQ(source->OutstandingErrors(), 1u);
        error->Release();
    }
    EXPECT_EQ(source->OutstandingErrors(), 0u);
}

const char* const kModel = R"({"id": "0x110", "type": 2, "text": "Q77"})";

INSTANTIATE_TEST_SUITE_P(
    Reads, TagFileRead,
    ::testing::Values(
        ReadCase{"TextZeroFilled", kModel, 2, 6, Bytes{'Q', '7', '7', 0, 0, 0}},
        ReadCase{"TextCutAndTerminated", kModel, 2, 3, Bytes{'Q', '7', 0}},
        ReadCase{"TextExactFit", kModel, 2, 4, Bytes{'Q', '7', '7', 0}},
        ReadCase{"TextOneByteBuffer", kModel, 2, 1, Bytes{0}},
        ReadCase{"IntsTruncatedWithoutTerminator", R"({"id": 272, "type": 3, "ints": [-2, 7]})", 3,
                 6, [] { Bytes b = qel::HostBytes(std::vector<SInt32>{-2, 7}); b.resize(6); return b; }()},
        ReadCase{"IntsZeroFilled", R"({"id": 272, "type": 3, "ints": [5000]})", 3, 8,
                 qel::HostBytes(std::vector<SInt32>{5000, 0})},
        ReadCase{"U16Record", R"({"id": 272, "type": 260, "u16": [32777, 200]})", 260, 4,
                 qel::HostBytes(std::vector<UInt16>{32777, 200})},
        ReadCase{"ValueStep", R"({"id": 272, "type": 17, "valueStep": [-4, 1, 6]})", 17, 6,
                 qel::HostBytes(std::vector<SInt16>{-4, 1, 6})},
        ReadCase{"DoublesToTypeNineteen", R"({"id": 272, "type": 19, "doubles": [1, 0, 2.5]})",
                 19, 24, qel::HostBytes(std::vector<double>{1, 0, 2.5})},
        ReadCase{"HexWithBlanks", R"({"id": 272, "type": 279, "hex": "3031 3030 01 00"})", 279, 8,
                 Bytes{'0', '1', '0', '0', 1, 0, 0, 0}},
        ReadCase{"TextTaggedWithAnotherType", R"({"id": 272, "type": 7, "text": "ab"})", 7, 4, Bytes{'a', 'b', 0, 0}},
        ReadCase{"OtherTypeFails", kModel, 3, 4, std::nullopt, qel::kTagTypeMismatch},
        ReadCase{"AbsentFails", R"({"id": 271, "type": 2, "text": "TALVO"})", 2, 4, std::nullopt, qel::kTagAbsent}),
    [](const auto& info) { return std::string(info.param.name); });

struct SizeCase {
    const char* name;
    std::string tag;
    UInt32 size;
};

class TagFileSize : public ::testing::TestWithParam<SizeCase> {};

TEST_P(TagFileSize, DefaultsToThePayloadLength)
{
    auto source = Source(GetParam().tag);
    EXPECT_EQ(source->GetTagSize(272, 0), GetParam().size);
    EXPECT_EQ(source->GetTagSize(273, 0), 0u);
    EXPECT_EQ(source->GetTagInfo(273, 0), 0u);
}

INSTANTIATE_TEST_SUITE_P(
    Sizes, TagFileSize,
    ::testing::Values(SizeCase{"TextCountsItsTerminator", kModel, 4},
                      SizeCase{"Utf8TextCountsBytes", R"({"id": 272, "type": 2, "text": "Grüße"})", 8},
                      SizeCase{"GivenSizeWins", R"({"id": 272, "type": 2, "text": "Q77", "size": 20})", 20},
                      SizeCase{"EmptyBytes", R"({"id": 272, "type": 261, "bytes": []})", 0}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(TagFileKind, AbsentOrNullFailsWithAnErrorObject)
{
    const std::pair<const char*, SInt32> kinds[] = {{"1028", 1028}, {"\"0x404\"", 1028}, {"-1", -1}, {"null", 7}};
    for (const auto& [kind, expected] : kinds) {
        auto source = Source(kModel, kind);
        SInt32 fileKind = 7;
        ITagError* error = source->GetFileKind(&fileKind);
        EXPECT_EQ(error != nullptr, std::string(kind) == "null") << kind;
        EXPECT_EQ(fileKind, expected) << kind;
        if (error)
            error->Release();
        EXPECT_EQ(source->OutstandingErrors(), 0u);
    }
    auto withoutKind = JsonTagSource::FromText(R"({"tags": []})");
    SInt32 fileKind = 0;
    ITagError* error = withoutKind->GetFileKind(&fileKind);
    ASSERT_NE(error, nullptr);
    error->Release();
}

TEST(TagFileErrors, ReleasedErrorObjectsAreReusedNotLeaked)
{
    auto source = Source(kModel);
    char buffer[4];
    for (int i = 0; i < 100; ++i)
        source->GetTagValue(999, 2, sizeof buffer, buffer, 0)->Release();
    ITagError* first = source->GetTagValue(999, 2, sizeof buffer, buffer, 0);
    ITagError* second = source->GetTagValue(998, 2, sizeof buffer, buffer, 0);
    EXPECT_NE(first, second);  // both outstanding: two objects
    EXPECT_EQ(source->OutstandingErrors(), 2u);
    first->Release();
    second->Release();
    EXPECT_EQ(source->OutstandingErrors(), 0u);
}

// A broken tag file and the words its message must contain.
struct MalformedCase {
    const char* name;
    std::string text;
    std::vector<std::string> mentions;
};

class MalformedTagFile : public ::testing::TestWithParam<MalformedCase> {};

TEST_P(MalformedTagFile, IsRefusedWithAReasonThatPointsAtTheFault)
{
    try {
        JsonTagSource::FromText(GetParam().text);
        FAIL() << "accepted";
    } catch (const qel::TagSourceError& error) {
        for (const std::string& mention : GetParam().mentions)
            EXPECT_NE(std::string(error.what()).find(mention), std::string::npos)
                << error.what() << " lacks " << mention;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Files, MalformedTagFile,
    ::testing::Values(
        MalformedCase{"MissingColon", "{\n  \"tags\": [\n    {\"id\" 1}\n]}", {"line 3, column 11", "syntax"}},
        MalformedCase{"NoTags", R"({"fileKind": 1})", {"\"tags\""}},
        MalformedCase{"UnknownTopKey", R"({"tags": [], "filekind": 1})", {"filekind"}},
        MalformedCase{"DuplicateID", R"({"tags": [{"id": 272, "type": 2, "text": "a"},
                                                  {"id": "0x110", "type": 2, "text": "b"}]})",
                      {"0x110", "twice"}},
        MalformedCase{"IDMissing", R"({"tags": [{"type": 2, "text": "a"}]})", {"tag #1", "\"id\""}},
        MalformedCase{"IDBeyond32Bits", R"({"tags": [{"id": "0x100000000", "type": 2, "text": "a"}]})", {"\"id\""}},
        MalformedCase{"TypeMissing", R"({"tags": [{"id": 272, "text": "a"}]})", {"tag 0x110", "\"type\""}},
        MalformedCase{"NoPayload", R"({"tags": [{"id": 272, "type": 3}]})", {"tag 0x110", "no payload"}},
        MalformedCase{"UnknownTagKey", R"({"tags": [{"id": 272, "type": 3, "int": [1]}]})", {"tag 0x110", "\"int\""}},
        MalformedCase{"IntBeyond32Bits", R"({"tags": [{"id": "0x80005", "type": 266, "ints": [1, 2147483648]}]})",
                      {"tag 0x80005", "\"ints\" element 1"}},
        MalformedCase{"ByteTooLarge", R"({"tags": [{"id": 272, "type": 261, "bytes": [256]}]})", {"tag 0x110", "\"bytes\""}},
        MalformedCase{"ValueStepOfTwo", R"({"tags": [{"id": "0x9204", "type": 17, "valueStep": [1, 3]}]})",
                      {"tag 0x9204", "\"valueStep\""}},
        MalformedCase{"HexOdd", R"({"tags": [{"id": 272, "type": 271, "hex": "303"}]})", {"tag 0x110", "odd"}},
        MalformedCase{"TagNotObject", R"({"tags": [{"id": 271, "type": 2, "text": "a"}, 5]})", {"tag #2"}}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
