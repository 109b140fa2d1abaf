#include "fuzz/engine/GuardedText.h"

#include <algorithm>
#include <cstring>

namespace fuzz {

namespace {

constexpr wchar_t kLoneSurrogate = 0xDC00;

struct Form {
    unsigned char mask;
    unsigned char lead;
    std::size_t length;
    unsigned smallest;
};
constexpr Form kForms[] = {
    {0x80, 0x00, 1, 0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}};

// The length of the character at a place, 0 when there is none.
std::size_t Decode(ByteView bytes, std::size_t at, unsigned& code)
{
    const auto lead = std::to_integer<unsigned char>(bytes[at]);
    const auto* const form = std::find_if(std::begin(kForms), std::end(kForms), [lead](auto& form) {
        return (lead & form.mask) == form.lead;
    });
    if (form == std::end(kForms) || at + form->length > bytes.size())
        return 0;
    code = lead & static_cast<unsigned char>(~form->mask);
    for (std::size_t i = 1; i < form->length; ++i) {
        const auto next = std::to_integer<unsigned char>(bytes[at + i]);
        if ((next & 0xC0) != 0x80)
            return 0;
        code = code << 6 | (next & 0x3F);
    }
    return code >= form->smallest && code < 0x110000 ? form->length : 0;
}

} // namespace

std::wstring Widen(ByteView bytes)
{
    std::wstring text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        unsigned code = 0;
        const std::size_t length = Decode(bytes, at, code);
        if (length == 0) {
            text +=
                static_cast<wchar_t>(kLoneSurrogate + std::to_integer<unsigned char>(bytes[at++]));
            continue;
        }
        if (code < 0x10000) {
            text += static_cast<wchar_t>(code);
        } else {
            text += static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10));
            text += static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
        }
        at += length;
    }
    return text;
}

const wchar_t* GuardedText::Place(std::wstring_view text)
{
    text = text.substr(0, text.find(L'\0'));
    std::byte* place = m_region.Last((text.size() + 1) * sizeof(wchar_t));
    while (place == nullptr) {
        text.remove_suffix(text.size() / 2);
        place = m_region.Last((text.size() + 1) * sizeof(wchar_t));
    }
    auto* const copy = reinterpret_cast<wchar_t*>(place);
    std::copy(text.begin(), text.end(), copy);
    copy[text.size()] = L'\0';
    return copy;
}

} // namespace fuzz
