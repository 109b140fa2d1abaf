#pragma once

#include "Core/UIPlatform.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace DuiLib {

constexpr UINT kNoElement = ~0u;
constexpr UINT kMostAttributes = 64;

// Names and values point into the text of the document.
struct MarkupAttribute {
    LPCTSTR name;
    LPCTSTR value;
};

struct MarkupElement {
    LPCTSTR name;
    LPCTSTR value;
    UINT parent;
    UINT firstChild;
    UINT lastChild;
    UINT next;
    UINT firstAttribute;
    UINT attributeCount;
    UINT offset; // of the '<' in the text as it was read
};

struct MarkupPosition {
    UINT line; // both from 1
    UINT column;
};

// A parsed text: its elements in document order, the root first.
struct MarkupDocument {
    std::wstring source; // what failures call it
    std::unique_ptr<wchar_t[]> text;
    std::vector<MarkupElement> elements;
    std::vector<MarkupAttribute> attributes;
    std::vector<UINT> lineStarts;

    std::wstring remark; // a readable line about what was left out of a valid text
    std::wstring reason; // why it is not valid
    std::wstring location;

    bool IsValid() const { return reason.empty() && !elements.empty(); }
    MarkupPosition PositionOf(UINT offset) const;

    // "source(line,column): what" for the place of an element.
    std::wstring At(UINT element, std::wstring_view what) const;
};

// Parses `text`, which has `length` characters and a final zero, into the document, which keeps it.
// One pass over the text, no recursion; names and values are cut and unescaped in place. A failure
// leaves reason and location.
bool ParseMarkup(MarkupDocument& document, std::unique_ptr<wchar_t[]> text, std::size_t length,
                 bool preserveWhitespace);

} // namespace DuiLib
