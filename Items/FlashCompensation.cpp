// SPDX-License-Identifier: MIT
// Flash compensation: the sum of up to three compensation tags. Which of
// them count depends on the camera family (file kind), the flash control
// mode, a flag in the compensation selector record and, for one family,
// on whether an external unit wrote a multi-flash record.
#include "CQelImgInfo.h"
#include "NumberStyle.h"
#include "MixedFlashRecord.h"
#include "QelItemIDs.h"
#include "TagReads.h"

#include <cstdio>
#include <initializer_list>

using namespace qel;

namespace {

constexpr UInt32 kTagBaseComp = 0x80012;
constexpr UInt32 kTagFirstAddedComp = 0x80017;
constexpr UInt32 kTagSecondAddedComp = 0x80018;
constexpr UInt32 kTagCompSelector = 0x80089;  // byte 4 == 1 switches in the second one

// When one compensation tag takes part.
enum class When {
    kNever,
    kAlways,
    kModeIn,              // the flash control mode is one of `modes`
    kModeInWithSecondFlash,  // the second flash flag is 1 and the mode is one of `modes`
    kSelectorFlag,        // the compensation selector record says so
};

struct Rule {
    When when;
    UInt32 modes;  // bit n: flash control mode n
};

constexpr UInt32 Modes(std::initializer_list<unsigned> modes)
{
    UInt32 bits = 0;
    for (unsigned mode : modes)
        bits |= UInt32{1} << mode;
    return bits;
}

constexpr Rule kNever{When::kNever, 0};
constexpr Rule kAlways{When::kAlways, 0};
constexpr Rule kSelector{When::kSelectorFlag, 0};
constexpr Rule ModeIn(std::initializer_list<unsigned> modes)
{
    return {When::kModeIn, Modes(modes)};
}

struct FamilyRules {
    SInt32 fileKind;
    Rule base, firstAdded, secondAdded;
    // Without an external unit's "0100" record the family follows the rules
    // of this file kind instead (0: it has no such condition).
    SInt32 withoutExternalUnit;
};

// Each family's bodies number their flash modes differently: 7..9 for 0x105
// and 0x107, 7..8 elsewhere, and mode 11 counts only for 0x404..0x406. A failed
// mode read matches no mode, so 0x406 then selects nothing at all.
constexpr FamilyRules kFamilies[] = {
    {0x104, kAlways, kNever, kNever, 0},
    {0x401, kAlways, kNever, kNever, 0},
    {0x105, kNever, ModeIn({7, 8, 9}), kSelector, 0},
    {0x107, kNever, ModeIn({7, 8, 9}), kSelector, 0},
    {0x106, kNever, {When::kModeInWithSecondFlash, Modes({0, 3, 4})}, kAlways, 0x105},
    {0x402, kAlways, ModeIn({7, 8}), kAlways, 0},
    {0x403, ModeIn({5, 7, 8}), ModeIn({7, 8}), kSelector, 0},
    {0x404, ModeIn({5, 7, 8, 11}), ModeIn({7, 8}), kSelector, 0},
    {0x405, ModeIn({5, 7, 8, 11}), ModeIn({7, 8}), kSelector, 0},
    {0x406, ModeIn({5, 7, 8, 11}), ModeIn({7, 8}), kNever, 0},
};

const FamilyRules* FindFamily(SInt32 fileKind)
{
    return FindRow(kFamilies, &FamilyRules::fileKind, fileKind);
}

// The inputs of the rules, each read from the tag source at most once and
// only when a rule asks for it.
class RuleInputs {
public:
    RuleInputs(IVandelTagControl* tags, FlashState flash) : m_tags(tags), m_flash(flash) {}

    bool Applies(const Rule& rule)
    {
        switch (rule.when) {
        case When::kNever:
            return false;
        case When::kAlways:
            return true;
        case When::kModeIn:
            return ModeMatches(rule.modes);
        case When::kModeInWithSecondFlash:
            return m_flash.second == 1 && ModeMatches(rule.modes);
        case When::kSelectorFlag:
            return SelectorFlag();
        }
        return false;
    }

private:
    bool ModeMatches(UInt32 modes)
    {
        if (!m_mode)
            m_mode = ReadInt32(m_tags, QelItem::kFlashMode);
        if (!*m_mode)
            return false;  // the mode could not be read
        const auto mode = static_cast<UInt32>(**m_mode);
        return mode < 32 && ((modes >> mode) & 1) != 0;
    }
    bool SelectorFlag()
    {
        if (!m_selector) {
            const auto record = ReadBytes<16>(m_tags, kTagCompSelector, kQelValueFlashCompSelector);
            m_selector = record && (*record)[4] == 1;
        }
        return *m_selector;
    }

    IVandelTagControl* m_tags;
    FlashState m_flash;
    std::optional<std::optional<SInt32>> m_mode;
    std::optional<bool> m_selector;
};

bool HasExternalUnitRecord(IVandelTagControl* tags)
{
    const auto record = ReadMixedFlash(tags);
    return record && VersionOf(*record) == MixedFlashVersion::k0100;
}

}  // namespace

void CQelImgInfo::GetAutoFlashComp(IVandelTagControl* tags)
{
    StoreTitle(QelItem::kFlashComp, "IDS_QEL_AUTO_FLASH_COMP");
    if (!tags)
        return;
    const auto flash = ReadFlashState(tags);
    const FamilyRules* family = nullptr;
    if (flash && flash->used == 1) {  // only 1 means the flash fired
        family = FindFamily(m_fileKind);
        if (family && family->withoutExternalUnit != 0 && !HasExternalUnitRecord(tags))
            family = FindFamily(family->withoutExternalUnit);
    }
    if (!family) {
        StoreValue(QelItem::kFlashComp, FlashBlank());
        return;
    }

    RuleInputs inputs(tags, *flash);
    const bool selected[] = {inputs.Applies(family->base), inputs.Applies(family->firstAdded),
                             inputs.Applies(family->secondAdded)};
    const UInt32 sources[] = {kTagBaseComp, kTagFirstAddedComp, kTagSecondAddedComp};
    double sum = 0.0;
    bool haveValue = false;
    for (size_t i = 0; i < 3; ++i) {
        if (!selected[i])
            continue;
        if (const auto step = ReadValueStep(tags, sources[i])) {
            sum += ValueStepToDouble(&*step);
            haveValue = true;
        }
    }
    if (!haveValue) {
        StoreValue(QelItem::kFlashComp, FlashBlank());
        return;
    }
    char number[32];
    // A zero sum, and a NaN, which is neither below nor above zero, show as
    // a bare "0".
    if (!(sum < 0.0 || sum > 0.0))
        std::snprintf(number, sizeof number, "0");
    else
        qel::PrintFixed(number, sizeof number, sum, 1, true);
    CQelString value;
    value.LoadStringWithFormat("IDS_QEL_AUTO_FLASH_COMP_UNIT", number);
    StoreValue(QelItem::kFlashComp, value);
}
