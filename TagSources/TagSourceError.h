// Why a file could not be made into a tag source: missing, unreadable, not an
// image, corrupt, or a malformed tag file. The message says what is wrong
// without the file name; the host puts the name in front.
#ifndef QEL_TAG_SOURCE_ERROR_H
#define QEL_TAG_SOURCE_ERROR_H

#include <stdexcept>
#include <string>

namespace qel {

class TagSourceError : public std::runtime_error {
public:
    explicit TagSourceError(const std::string& what) : std::runtime_error(what) {}
};

}  // namespace qel

#endif
