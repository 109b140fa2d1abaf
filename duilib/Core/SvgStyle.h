#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Core/SvgGeometry.h"
#include "Core/SvgMarkup.h"

namespace DuiLib::Svg {

using Rgb = std::uint32_t;

// How an element is drawn. Children begin with the style of their parent.
struct Style {
    std::optional<Rgb> fill = 0;
    std::optional<Rgb> stroke;
    Rgb colour = 0; // what `currentColor` means
    bool evenOdd = false;
    double fillOpacity = 1;
    double strokeOpacity = 1;
    double opacity = 1; // with all parents'
    Pen pen;
    bool visible = true;
    bool displayed = true;
};

// #rgb, #rrggbb, rgb(), a name of CSS.
std::optional<Rgb> ParseColour(std::wstring_view text);

// The rules of a drawing's style sheets: selectors that are one class, one id or one element.
class StyleSheet {
public:
    void Add(std::wstring_view text);
    bool IsEmpty() const { return m_rules.empty(); }

    struct Rule {
        std::wstring selector;
        std::wstring declarations;
    };
    const std::vector<Rule>& Rules() const { return m_rules; }

private:
    std::vector<Rule> m_rules;
};

struct StyleContext {
    const StyleSheet& sheet;
    double diagonal; // what percents of a line width refer to
};

// Applies an element's attributes, the sheet's rules and its own `style`, in this order. The reason
// when the element asks for what cannot be drawn, else empty.
std::wstring ApplyStyle(Style& style, std::wstring_view element,
                        const std::vector<Attribute>& attributes, const StyleContext& context);

} // namespace DuiLib::Svg
