// SPDX-License-Identifier: MIT
// Another CoreFoundation in the host process, reduced to three functions
// under their plain names, each counting its calls.
#ifndef QEL_TEST_FOREIGN_COREFOUNDATION_H
#define QEL_TEST_FOREIGN_COREFOUNDATION_H

struct ForeignCalls {
    long create = 0, length = 0, release = 0;
};

// The stand-in's own caller: creates a string from text, measures it and
// releases it, all through the stand-in.
long ForeignStringLength(const char* text);
ForeignCalls ForeignCallCounts();

#endif
