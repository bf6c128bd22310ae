// SPDX-License-Identifier: MIT
// JsonTagSource: a tag file, the tags of one (real or imagined) camera file
// written out as JSON, served as a tag source. Tag files let a host show what
// the library makes of maker tags that no image reader delivers.
//
//   { "fileKind": 1028,
//     "tags": [ {"id": "0x110", "type": 2, "text": "TALVO Q77"},
//               {"id": 33434, "type": 4, "doubles": [0.004]},
//               {"id": "0x8000D", "type": 17, "valueStep": [3, 1, 6]},
//               {"id": 306, "type": 2, "text": "2005:07:14 10:22:05", "size": 20} ] }
//
// `id` is a number or a "0x" hex string, unique in the file. `type` is the
// value type the tag is delivered as. Each tag carries exactly one payload:
// `text` (UTF-8, delivered zero-terminated), `ints` (signed 32-bit), `u16`,
// `doubles` (64-bit), `valueStep` (three signed 16-bit fields), `bytes`, or
// `hex` (raw bytes; blanks between digits are ignored). Numbers are delivered
// in host byte order. `size` is what GetTagSize answers; by default the
// payload's byte length (for a text its length plus the terminating zero).
// An optional `name` on a tag and `description` at the top are for readers
// and are ignored. `fileKind` absent or null: GetFileKind fails.
#ifndef QEL_JSON_TAG_SOURCE_H
#define QEL_JSON_TAG_SOURCE_H

#include "TagTable.h"

#include <memory>
#include <string>

namespace qel {

class JsonTagSource : public TagTable {
public:
    // Both throw TagSourceError: line and column for a syntax error, the tag
    // for a bad tag.
    static std::unique_ptr<JsonTagSource> FromFile(const std::string& path);
    static std::unique_ptr<JsonTagSource> FromText(const std::string& text);

    // An empty tag file; the factories above fill one.
    JsonTagSource() = default;

private:
    std::string FileKindUnknownReason() const override;
};

}  // namespace qel

#endif
