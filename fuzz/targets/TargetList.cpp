#include "fuzz/targets/TargetList.h"

#include <algorithm>
#include <array>

namespace fuzz {

std::span<const Target> Targets()
{
    static const std::array kTargets{kAttributesTarget,  kHtmlTextTarget, kImageAttributeTarget,
                                     kImageStringTarget, kMarkupTarget,   kSkinTarget,
                                     kSvgTarget,         kZipTarget};
    return kTargets;
}

const Target* FindTarget(std::string_view name)
{
    const auto all = Targets();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [name](const Target& target) { return target.name == name; });
    return found != all.end() ? &*found : nullptr;
}

} // namespace fuzz
