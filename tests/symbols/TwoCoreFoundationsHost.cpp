// SPDX-License-Identifier: MIT
// Reads the sample SLR photo through the shared library and exports every
// grid cell, in a process that also holds another CoreFoundation under the
// plain names: the library's strings and the stand-in's must not mix.
#include "ForeignCoreFoundation.h"
#include "SampleTagSource.h"

#include <cstdio>
#include <string>
#include <vector>

namespace {

int failures = 0;

void Check(bool ok, const std::string& what)
{
    if (!ok) {
        std::fprintf(stderr, "FAILED: %s\n", what.c_str());
        ++failures;
    }
}

// A copied string as UTF-8, read with the library's functions, then released.
std::string AdoptUTF8(CFStringRef string)
{
    std::vector<char> text(static_cast<size_t>(CFStringGetLength(string)) * 4 + 1);
    CFStringGetCString(string, text.data(), static_cast<CFIndex>(text.size()),
                       kCFStringEncodingUTF8);
    CFRelease(string);
    return text.data();
}

}  // namespace

int main()
{
    SampleTagSource tags;
    FillSLRPhoto(tags);
    IQelImgInfo* info = IQelImgInfo::CreateImageInfo();
    info->ReadFileTags(&tags);

    std::vector<std::string> lines;
    for (UInt32 col = 0; col < info->GetLayoutCols(); ++col) {
        for (UInt32 row = 0; row < info->GetLayoutRows(); ++row) {
            CFStringRef copy = info->CopyLayoutCFString(row, col);
            if (!copy)
                continue;
            const std::string line = AdoptUTF8(copy);
            char buffer[256] = {};
            info->GetLayoutString(row, col, buffer, sizeof buffer, kCFStringEncodingUTF8);
            Check(line == buffer, "cell text differs from its buffer form: " + line);
            lines.push_back(line);
        }
    }
    info->Destroy();

    for (const char* expected : {"1/250 sec, f/8", "White Balance Cloudy -1", "Talvo Q77"}) {
        bool found = false;
        for (const std::string& line : lines)
            found = found || line == expected;
        Check(found, std::string("no cell reads ") + expected);
    }

    Check(ForeignStringLength("stand-in") == 8, "the stand-in measured its own string wrongly");
    const ForeignCalls calls = ForeignCallCounts();
    Check(calls.create == 1 && calls.length == 1 && calls.release == 1,
          "the library called the stand-in: " + std::to_string(calls.create) + " creates, " +
              std::to_string(calls.length) + " lengths, " + std::to_string(calls.release) +
              " releases");
    std::printf("%zu cells read; stand-in calls %ld/%ld/%ld\n", lines.size(), calls.create,
                calls.length, calls.release);
    return failures == 0 ? 0 : 1;
}
