// SPDX-License-Identifier: MIT
#include "OpenTagSource.h"

#include "ExivTagSource.h"
#include "JsonTagSource.h"

#include <algorithm>
#include <cctype>

namespace qel {

bool IsTagFileName(const std::string& path)
{
    static const std::string kExtension = ".json";
    if (path.size() < kExtension.size())
        return false;
    return std::equal(kExtension.begin(), kExtension.end(), path.end() - kExtension.size(),
                      [](char expected, char actual) {
                          return expected == std::tolower(static_cast<unsigned char>(actual));
                      });
}

std::unique_ptr<IVandelTagControl> OpenTagSource(const std::string& path)
{
    if (IsTagFileName(path))
        return JsonTagSource::FromFile(path);
    return ExivTagSource::FromFile(path);
}

std::unique_ptr<IVandelTagControl> OpenTagSourceFromContent(const std::string& content)
{
    const size_t first = content.find_first_not_of(" \t\r\n");
    if (first != std::string::npos && content[first] == '{')
        return JsonTagSource::FromText(content);
    return ExivTagSource::FromMemory(content);
}

}  // namespace qel
