// SPDX-License-Identifier: MIT
// A tag source that believes nothing it should: every answer comes from the
// fuzzer's input. Each call decides afresh whether the read fails, what
// GetTagSize, GetTagInfo and GetFileKind answer (0, small, exact, huge,
// 2^32-1) and what lands in the buffer (texts without a terminating zero,
// NaN and infinite doubles, extreme integers, arbitrary record bytes, record
// version texts, maker and model names that reach every kind of device).
//
// It keeps the host's side of the bargain, so a fault it provokes is the
// library's: it never writes beyond the buffer size it is given and fills
// the whole buffer on success. It checks the library's side and aborts on a
// breach: the index is always 0, a buffer is given for a non-zero size, and
// every error object is released exactly once (checked at Release and by
// RequireEveryErrorReleasedOnce).
#ifndef QEL_FUZZ_HOSTILE_TAG_SOURCE_H
#define QEL_FUZZ_HOSTILE_TAG_SOURCE_H

#include "IVandelTagControl.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <map>
#include <memory>
#include <vector>

namespace qel_fuzz {

class HostileTagSource final : public IVandelTagControl {
public:
    explicit HostileTagSource(FuzzedDataProvider& input);
    ~HostileTagSource() override;
    HostileTagSource(const HostileTagSource&) = delete;
    HostileTagSource& operator=(const HostileTagSource&) = delete;

    UInt32 GetTagInfo(UInt32 tagID, UInt32 index) override;
    UInt32 GetTagSize(UInt32 tagID, UInt32 index) override;
    ITagError* GetTagValue(UInt32 tagID, UInt32 valueType, UInt32 bufferSize, void* buffer,
                           UInt32 index) override;
    ITagError* GetFileKind(SInt32* fileKind) override;

    // Aborts unless every error object handed out so far was released once.
    void RequireEveryErrorReleasedOnce() const;

private:
    class CountingError;

    ITagError* NewError();
    // Fills the buffer as `valueType` asks; answers the data's byte length.
    UInt32 Fill(UInt32 valueType, UInt8* buffer, UInt32 size);

    FuzzedDataProvider& m_input;
    std::vector<std::unique_ptr<CountingError>> m_errors;
    // Bytes of data last delivered per tag (a text with its zero), so a
    // size can be answered exactly or one off.
    std::map<UInt32, UInt32> m_delivered;
};

}  // namespace qel_fuzz

#endif
