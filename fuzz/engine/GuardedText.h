#pragma once

#include "fuzz/engine/Bytes.h"
#include "fuzz/engine/GuardedRegion.h"

#include "win32/Windows.h"

#include <string>

namespace fuzz {

// UTF-16 of bytes that should be UTF-8. What is none becomes a lone surrogate, so that broken text
// of both encodings can be had by mutation. A zero is kept.
std::wstring Widen(ByteView bytes);

// A text whose final zero is the last thing before an inaccessible page.
class GuardedText {
public:
    explicit GuardedText(std::size_t longest) : m_region((longest + 1) * sizeof(wchar_t)) {}

    // The text up to its first zero, cut to the longest. Valid until the next call.
    const wchar_t* Place(std::wstring_view text);

private:
    GuardedRegion m_region;
};

} // namespace fuzz
