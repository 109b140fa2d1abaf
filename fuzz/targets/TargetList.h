#pragma once

#include "fuzz/engine/Target.h"

namespace fuzz {

// Each in a source of its own.
extern const Target kAttributesTarget;
extern const Target kHtmlTextTarget;
extern const Target kImageAttributeTarget;
extern const Target kImageStringTarget;
extern const Target kMarkupTarget;
extern const Target kSkinTarget;
extern const Target kSvgTarget;
extern const Target kZipTarget;

} // namespace fuzz
