#pragma once

#include "Core/UIPlatform.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace DuiLib::Svg {

struct Attribute {
    std::wstring_view name;
    std::wstring value;
};

// Reads the XML of drawings piece by piece, into no tree. Unlike CMarkup it knows what drawing
// programs write: hyphens in names, single quotes, numeric character references, CDATA.
class MarkupReader {
public:
    enum class Piece { Open, Close, Text, End, Mistake };

    explicit MarkupReader(std::wstring_view text);

    // An element without content is an Open and a Close.
    Piece Next();

    std::wstring_view Name() const { return m_name; } // after Open
    const std::vector<Attribute>& Attributes() const { return m_attributes; }
    const std::wstring& Text() const { return m_text; }

    // "line 3, column 7: the reason", about the piece that was read last.
    std::wstring At(std::wstring_view reason) const;
    const std::wstring& Mistake() const { return m_mistake; }

private:
    Piece Fail(std::wstring_view reason);
    Piece ReadText();
    Piece ReadTag();
    Piece ReadClosing();
    bool SkipPast(std::wstring_view closing);
    bool SkipDeclaration();
    bool ReadAttribute();
    std::wstring_view ReadName();
    void SkipBlanks();
    bool Starts(std::wstring_view with) const;
    std::wstring_view Rest() const { return m_all.substr(m_at); }

    std::wstring_view m_all;
    std::size_t m_at = 0;
    std::size_t m_piece = 0;
    std::vector<std::wstring_view> m_open;
    bool m_closing = false; // the element that was opened last is empty
    bool m_rooted = false;

    std::wstring_view m_name;
    std::vector<Attribute> m_attributes;
    std::wstring m_text;
    std::wstring m_mistake;
};

// UTF-8, or UTF-16 with a byte-order mark.
std::optional<std::wstring> DecodeText(std::span<const BYTE> data);

} // namespace DuiLib::Svg
