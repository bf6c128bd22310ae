// SPDX-License-Identifier: MIT
// ExivTagSource: an image file (JPEG, TIFF, the common RAW formats, PNG,
// WebP, HEIF/AVIF as the installed exiv2 supports them) read with libexiv2,
// delivering its standard Exif, TIFF and GPS tags under the library's item
// IDs. Maker notes are not read, so the file kind is unknown (GetFileKind
// fails) and maker-specific items stay without values. The mapping is
// tabled at the top of ExivTagSource.cpp.
#ifndef QEL_EXIV_TAG_SOURCE_H
#define QEL_EXIV_TAG_SOURCE_H

#include "TagTable.h"

#include <memory>
#include <string>

namespace qel {

class ExivTagSource : public TagTable {
public:
    // Throws TagSourceError when the file is missing, unreadable, not an
    // image or too damaged to read.
    static std::unique_ptr<ExivTagSource> FromFile(const std::string& path);
    // The same for an image held in memory (read from a pipe).
    static std::unique_ptr<ExivTagSource> FromMemory(const std::string& bytes);

    // Whether exiv2 knows the format of the file from its first bytes, the
    // way it picks a reader; false for anything it cannot open.
    static bool IsImage(const std::string& path);

    // An image without tags; FromFile fills one.
    ExivTagSource() = default;

private:
    std::string FileKindUnknownReason() const override;
};

}  // namespace qel

#endif
