// SPDX-License-Identifier: MIT
// The floor under qelinfo's image path: opens each file with libexiv2 and
// reads its metadata, nothing else, with the log muted.
//
//   qel_exiv2_floor FILE...
//
// scripts/compare-exiv2.sh times qelinfo against it over one folder.
#include <exiv2/exiv2.hpp>

#include <cstdio>

int main(int argc, char** argv)
{
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    int unread = 0;
    for (int i = 1; i < argc; ++i) {
        try {
            Exiv2::Image::AutoPtr image = Exiv2::ImageFactory::open(argv[i]);
            image->readMetadata();
        } catch (const Exiv2::AnyError&) {
            ++unread;
        }
    }
    if (unread > 0)
        std::fprintf(stderr, "files not read: %d\n", unread);
    return unread > 0 ? 1 : 0;
}
