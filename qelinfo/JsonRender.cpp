#include "JsonRender.h"

#include <nlohmann/json.hpp>

namespace qelinfo {

namespace {

// Keys in the order a reader expects them, not sorted.
using Json = nlohmann::ordered_json;

Json TextOrNull(const std::optional<std::string>& text)
{
    return text ? Json(*text) : Json(nullptr);
}

// File names need not be UTF-8; anything else must come out as valid JSON.
std::string Dump(const Json& object)
{
    return object.dump(-1, ' ', false, nlohmann::detail::error_handler_t::replace);
}

}  // namespace

std::string JsonLine(const std::string& file, const FileInfo& info)
{
    Json items = Json::array();
    for (const ItemText& item : info.items)
        items.push_back({{"id", item.id},
                         {"title", TextOrNull(item.title)},
                         {"value", TextOrNull(item.value)},
                         {"line", TextOrNull(item.line)}});

    Json cells = Json::array();
    for (const auto& row : info.grid) {
        Json ids = Json::array();
        for (const GridCell& cell : row)
            ids.push_back(cell.id);
        cells.push_back(std::move(ids));
    }

    Json lists = Json::array();
    for (const ValueList& list : info.lists) {
        Json entries = Json::array();
        for (const ListEntry& entry : list.entries)
            entries.push_back({{"raw", entry.raw}, {"text", TextOrNull(entry.text)}});
        lists.push_back({{"id", list.id},
                         {"count", list.entries.size()},
                         {"current", list.current},
                         {"entries", std::move(entries)}});
    }

    Json object = {{"file", file},
                   {"values", info.values},
                   {"items", std::move(items)},
                   {"grid", {{"rows", info.rows}, {"cols", info.cols}, {"cells", std::move(cells)}}},
                   {"lists", std::move(lists)}};
    return Dump(object);
}

std::string JsonErrorLine(const std::string& file, const std::string& reason)
{
    return Dump(Json{{"file", file}, {"error", reason}});
}

}  // namespace qelinfo
