#include "Core/SvgStyle.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace DuiLib::Svg {

namespace {

struct NamedColour {
    std::wstring_view name;
    Rgb colour;
};

// Sorted by name.
constexpr std::array kNamedColours{
    NamedColour{L"aliceblue", 0xF0F8FF},
    NamedColour{L"antiquewhite", 0xFAEBD7},
    NamedColour{L"aqua", 0x00FFFF},
    NamedColour{L"aquamarine", 0x7FFFD4},
    NamedColour{L"azure", 0xF0FFFF},
    NamedColour{L"beige", 0xF5F5DC},
    NamedColour{L"bisque", 0xFFE4C4},
    NamedColour{L"black", 0x000000},
    NamedColour{L"blanchedalmond", 0xFFEBCD},
    NamedColour{L"blue", 0x0000FF},
    NamedColour{L"blueviolet", 0x8A2BE2},
    NamedColour{L"brown", 0xA52A2A},
    NamedColour{L"burlywood", 0xDEB887},
    NamedColour{L"cadetblue", 0x5F9EA0},
    NamedColour{L"chartreuse", 0x7FFF00},
    NamedColour{L"chocolate", 0xD2691E},
    NamedColour{L"coral", 0xFF7F50},
    NamedColour{L"cornflowerblue", 0x6495ED},
    NamedColour{L"cornsilk", 0xFFF8DC},
    NamedColour{L"crimson", 0xDC143C},
    NamedColour{L"cyan", 0x00FFFF},
    NamedColour{L"darkblue", 0x00008B},
    NamedColour{L"darkcyan", 0x008B8B},
    NamedColour{L"darkgoldenrod", 0xB8860B},
    NamedColour{L"darkgray", 0xA9A9A9},
    NamedColour{L"darkgreen", 0x006400},
    NamedColour{L"darkgrey", 0xA9A9A9},
    NamedColour{L"darkkhaki", 0xBDB76B},
    NamedColour{L"darkmagenta", 0x8B008B},
    NamedColour{L"darkolivegreen", 0x556B2F},
    NamedColour{L"darkorange", 0xFF8C00},
    NamedColour{L"darkorchid", 0x9932CC},
    NamedColour{L"darkred", 0x8B0000},
    NamedColour{L"darksalmon", 0xE9967A},
    NamedColour{L"darkseagreen", 0x8FBC8F},
    NamedColour{L"darkslateblue", 0x483D8B},
    NamedColour{L"darkslategray", 0x2F4F4F},
    NamedColour{L"darkslategrey", 0x2F4F4F},
    NamedColour{L"darkturquoise", 0x00CED1},
    NamedColour{L"darkviolet", 0x9400D3},
    NamedColour{L"deeppink", 0xFF1493},
    NamedColour{L"deepskyblue", 0x00BFFF},
    NamedColour{L"dimgray", 0x696969},
    NamedColour{L"dimgrey", 0x696969},
    NamedColour{L"dodgerblue", 0x1E90FF},
    NamedColour{L"firebrick", 0xB22222},
    NamedColour{L"floralwhite", 0xFFFAF0},
    NamedColour{L"forestgreen", 0x228B22},
    NamedColour{L"fuchsia", 0xFF00FF},
    NamedColour{L"gainsboro", 0xDCDCDC},
    NamedColour{L"ghostwhite", 0xF8F8FF},
    NamedColour{L"gold", 0xFFD700},
    NamedColour{L"goldenrod", 0xDAA520},
    NamedColour{L"gray", 0x808080},
    NamedColour{L"green", 0x008000},
    NamedColour{L"greenyellow", 0xADFF2F},
    NamedColour{L"grey", 0x808080},
    NamedColour{L"honeydew", 0xF0FFF0},
    NamedColour{L"hotpink", 0xFF69B4},
    NamedColour{L"indianred", 0xCD5C5C},
    NamedColour{L"indigo", 0x4B0082},
    NamedColour{L"ivory", 0xFFFFF0},
    NamedColour{L"khaki", 0xF0E68C},
    NamedColour{L"lavender", 0xE6E6FA},
    NamedColour{L"lavenderblush", 0xFFF0F5},
    NamedColour{L"lawngreen", 0x7CFC00},
    NamedColour{L"lemonchiffon", 0xFFFACD},
    NamedColour{L"lightblue", 0xADD8E6},
    NamedColour{L"lightcoral", 0xF08080},
    NamedColour{L"lightcyan", 0xE0FFFF},
    NamedColour{L"lightgoldenrodyellow", 0xFAFAD2},
    NamedColour{L"lightgray", 0xD3D3D3},
    NamedColour{L"lightgreen", 0x90EE90},
    NamedColour{L"lightgrey", 0xD3D3D3},
    NamedColour{L"lightpink", 0xFFB6C1},
    NamedColour{L"lightsalmon", 0xFFA07A},
    NamedColour{L"lightseagreen", 0x20B2AA},
    NamedColour{L"lightskyblue", 0x87CEFA},
    NamedColour{L"lightslategray", 0x778899},
    NamedColour{L"lightslategrey", 0x778899},
    NamedColour{L"lightsteelblue", 0xB0C4DE},
    NamedColour{L"lightyellow", 0xFFFFE0},
    NamedColour{L"lime", 0x00FF00},
    NamedColour{L"limegreen", 0x32CD32},
    NamedColour{L"linen", 0xFAF0E6},
    NamedColour{L"magenta", 0xFF00FF},
    NamedColour{L"maroon", 0x800000},
    NamedColour{L"mediumaquamarine", 0x66CDAA},
    NamedColour{L"mediumblue", 0x0000CD},
    NamedColour{L"mediumorchid", 0xBA55D3},
    NamedColour{L"mediumpurple", 0x9370DB},
    NamedColour{L"mediumseagreen", 0x3CB371},
    NamedColour{L"mediumslateblue", 0x7B68EE},
    NamedColour{L"mediumspringgreen", 0x00FA9A},
    NamedColour{L"mediumturquoise", 0x48D1CC},
    NamedColour{L"mediumvioletred", 0xC71585},
    NamedColour{L"midnightblue", 0x191970},
    NamedColour{L"mintcream", 0xF5FFFA},
    NamedColour{L"mistyrose", 0xFFE4E1},
    NamedColour{L"moccasin", 0xFFE4B5},
    NamedColour{L"navajowhite", 0xFFDEAD},
    NamedColour{L"navy", 0x000080},
    NamedColour{L"oldlace", 0xFDF5E6},
    NamedColour{L"olive", 0x808000},
    NamedColour{L"olivedrab", 0x6B8E23},
    NamedColour{L"orange", 0xFFA500},
    NamedColour{L"orangered", 0xFF4500},
    NamedColour{L"orchid", 0xDA70D6},
    NamedColour{L"palegoldenrod", 0xEEE8AA},
    NamedColour{L"palegreen", 0x98FB98},
    NamedColour{L"paleturquoise", 0xAFEEEE},
    NamedColour{L"palevioletred", 0xDB7093},
    NamedColour{L"papayawhip", 0xFFEFD5},
    NamedColour{L"peachpuff", 0xFFDAB9},
    NamedColour{L"peru", 0xCD853F},
    NamedColour{L"pink", 0xFFC0CB},
    NamedColour{L"plum", 0xDDA0DD},
    NamedColour{L"powderblue", 0xB0E0E6},
    NamedColour{L"purple", 0x800080},
    NamedColour{L"rebeccapurple", 0x663399},
    NamedColour{L"red", 0xFF0000},
    NamedColour{L"rosybrown", 0xBC8F8F},
    NamedColour{L"royalblue", 0x4169E1},
    NamedColour{L"saddlebrown", 0x8B4513},
    NamedColour{L"salmon", 0xFA8072},
    NamedColour{L"sandybrown", 0xF4A460},
    NamedColour{L"seagreen", 0x2E8B57},
    NamedColour{L"seashell", 0xFFF5EE},
    NamedColour{L"sienna", 0xA0522D},
    NamedColour{L"silver", 0xC0C0C0},
    NamedColour{L"skyblue", 0x87CEEB},
    NamedColour{L"slateblue", 0x6A5ACD},
    NamedColour{L"slategray", 0x708090},
    NamedColour{L"slategrey", 0x708090},
    NamedColour{L"snow", 0xFFFAFA},
    NamedColour{L"springgreen", 0x00FF7F},
    NamedColour{L"steelblue", 0x4682B4},
    NamedColour{L"tan", 0xD2B48C},
    NamedColour{L"teal", 0x008080},
    NamedColour{L"thistle", 0xD8BFD8},
    NamedColour{L"tomato", 0xFF6347},
    NamedColour{L"turquoise", 0x40E0D0},
    NamedColour{L"violet", 0xEE82EE},
    NamedColour{L"wheat", 0xF5DEB3},
    NamedColour{L"white", 0xFFFFFF},
    NamedColour{L"whitesmoke", 0xF5F5F5},
    NamedColour{L"yellow", 0xFFFF00},
    NamedColour{L"yellowgreen", 0x9ACD32},
};
static_assert(std::ranges::is_sorted(kNamedColours, {}, &NamedColour::name));

constexpr std::wstring_view kBlanks = L" \t\r\n\f";

std::wstring_view Trim(std::wstring_view text)
{
    const auto first = std::min(text.find_first_not_of(kBlanks), text.size());
    text.remove_prefix(first);
    const auto last = text.find_last_not_of(kBlanks);
    return text.substr(0, last == text.npos ? 0 : last + 1);
}

std::wstring Lower(std::wstring_view text)
{
    std::wstring lower(text);
    for (auto& character : lower) {
        if (character >= L'A' && character <= L'Z')
            character = static_cast<wchar_t>(character - L'A' + L'a');
    }
    return lower;
}

std::optional<Rgb> ParseHexadecimal(std::wstring_view digits)
{
    if (digits.size() != 3 && digits.size() != 6)
        return std::nullopt;
    const bool hexadecimal = digits.find_first_not_of(L"0123456789abcdefABCDEF") == digits.npos;
    if (!hexadecimal)
        return std::nullopt;
    const Rgb value = std::wcstoul(std::wstring(digits).c_str(), nullptr, 16);
    if (digits.size() == 6)
        return value;
    const Rgb red = value >> 8 & 0xF;
    const Rgb green = value >> 4 & 0xF;
    const Rgb blue = value & 0xF;
    return (red << 16 | green << 8 | blue) * 0x11;
}

std::optional<Rgb> ParseFunction(std::wstring_view arguments)
{
    Scanner scanner(arguments);
    Rgb colour = 0;
    for (int channel = 0; channel < 3; channel++) {
        double value = 0;
        if (!scanner.Number(value))
            return std::nullopt;
        if (scanner.Skip(L'%'))
            value = value * 255 / 100;
        colour = colour << 8 | static_cast<Rgb>(std::lround(std::clamp(value, 0.0, 255.0)));
    }
    if (!scanner.Skip(L')') || !scanner.AtEnd())
        return std::nullopt;
    return colour;
}

double ParseOpacity(std::wstring_view text, double otherwise)
{
    Scanner scanner(text);
    double value = 0;
    if (!scanner.Number(value))
        return otherwise;
    if (scanner.Skip(L'%'))
        value /= 100;
    return std::clamp(value, 0.0, 1.0);
}

// An element's style while its properties are collected.
struct Draft {
    Style& style;
    const Style parent;
    double diagonal;
    double ownOpacity = 1;
    std::wstring failure;

    void SetPaint(std::optional<Rgb>& paint, const std::optional<Rgb>& inherited,
                  std::wstring_view text)
    {
        const auto lower = Lower(text);
        if (lower == L"none" || lower == L"transparent") {
            paint.reset();
        } else if (lower == L"inherit") {
            paint = inherited;
        } else if (lower == L"currentcolor") {
            paint = style.colour;
        } else if (lower.starts_with(L"url(")) {
            // What stands behind the reference is drawn instead.
            const auto end = std::min(text.find(L')'), text.size() - 1);
            const auto fallback = Trim(text.substr(end + 1));
            if (fallback.empty())
                failure = L"only solid colours can be drawn, not " + std::wstring(text);
            else
                SetPaint(paint, inherited, fallback);
        } else if (const auto colour = ParseColour(text)) {
            paint = colour;
        }
    }
};

struct Property {
    std::wstring_view name;
    void (*apply)(Draft& draft, std::wstring_view value);
};

constexpr std::array kProperties{
    Property{L"color",
             [](Draft& draft, std::wstring_view value) {
                 draft.style.colour = ParseColour(value).value_or(draft.style.colour);
             }},
    Property{L"fill",
             [](Draft& draft, std::wstring_view value) {
                 draft.SetPaint(draft.style.fill, draft.parent.fill, value);
             }},
    Property{L"stroke",
             [](Draft& draft, std::wstring_view value) {
                 draft.SetPaint(draft.style.stroke, draft.parent.stroke, value);
             }},
    Property{
        L"fill-rule",
        [](Draft& draft, std::wstring_view value) { draft.style.evenOdd = value == L"evenodd"; }},
    Property{L"fill-opacity",
             [](Draft& draft, std::wstring_view value) {
                 draft.style.fillOpacity = ParseOpacity(value, draft.style.fillOpacity);
             }},
    Property{L"stroke-opacity",
             [](Draft& draft, std::wstring_view value) {
                 draft.style.strokeOpacity = ParseOpacity(value, draft.style.strokeOpacity);
             }},
    Property{L"opacity",
             [](Draft& draft, std::wstring_view value) {
                 draft.ownOpacity = ParseOpacity(value, draft.ownOpacity);
             }},
    Property{L"stroke-width",
             [](Draft& draft, std::wstring_view value) {
                 double width = 0;
                 if (ParseLength(value, draft.diagonal, width) && width >= 0)
                     draft.style.pen.width = width;
             }},
    Property{L"stroke-linecap",
             [](Draft& draft, std::wstring_view value) {
                 draft.style.pen.cap = value == L"round"    ? LineCap::Round
                                       : value == L"square" ? LineCap::Square
                                                            : LineCap::Butt;
             }},
    Property{L"stroke-linejoin",
             [](Draft& draft, std::wstring_view value) {
                 draft.style.pen.join = value == L"round"   ? LineJoin::Round
                                        : value == L"bevel" ? LineJoin::Bevel
                                                            : LineJoin::Miter;
             }},
    Property{L"stroke-miterlimit",
             [](Draft& draft, std::wstring_view value) {
                 double limit = 0;
                 if (ParseLength(value, 0, limit) && limit >= 1)
                     draft.style.pen.miterLimit = limit;
             }},
    Property{L"visibility",
             [](Draft& draft, std::wstring_view value) {
                 draft.style.visible = value != L"hidden" && value != L"collapse";
             }},
    Property{L"display", [](Draft& draft,
                            std::wstring_view value) { draft.style.displayed = value != L"none"; }},
};

void ApplyProperty(Draft& draft, std::wstring_view name, std::wstring_view value)
{
    const auto property = std::ranges::find(kProperties, name, &Property::name);
    if (property != kProperties.end() &&
        (value != L"inherit" || name == L"fill" || name == L"stroke"))
        property->apply(draft, value);
}

void ApplyDeclarations(Draft& draft, std::wstring_view text)
{
    while (!text.empty()) {
        const auto end = std::min(text.find(L';'), text.size());
        const auto declaration = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));

        const auto colon = declaration.find(L':');
        if (colon == declaration.npos)
            continue;
        auto value = Trim(declaration.substr(colon + 1));
        constexpr std::wstring_view kImportant = L"!important";
        if (value.ends_with(kImportant))
            value = Trim(value.substr(0, value.size() - kImportant.size()));
        ApplyProperty(draft, Trim(declaration.substr(0, colon)), value);
    }
}

std::wstring_view ValueOf(const std::vector<Attribute>& attributes, std::wstring_view name)
{
    const auto found = std::ranges::find(attributes, name, &Attribute::name);
    return found == attributes.end() ? std::wstring_view() : std::wstring_view(found->value);
}

bool HasWord(std::wstring_view words, std::wstring_view word)
{
    while (!words.empty()) {
        const auto end = std::min(words.find_first_of(kBlanks), words.size());
        if (words.substr(0, end) == word)
            return true;
        words.remove_prefix(std::min(end + 1, words.size()));
    }
    return false;
}

bool Selects(std::wstring_view selector, std::wstring_view element,
             const std::vector<Attribute>& attributes)
{
    if (selector.starts_with(L"."))
        return HasWord(ValueOf(attributes, L"class"), selector.substr(1));
    if (selector.starts_with(L"#"))
        return ValueOf(attributes, L"id") == selector.substr(1);
    return selector == element || selector == L"*";
}

std::wstring WithoutComments(std::wstring_view text)
{
    std::wstring plain;
    while (!text.empty()) {
        const auto start = std::min(text.find(L"/*"), text.size());
        plain += text.substr(0, start);
        text.remove_prefix(start);
        const auto end = text.find(L"*/", 2);
        text.remove_prefix(end == text.npos ? text.size() : end + 2);
    }
    return plain;
}

} // namespace

std::optional<Rgb> ParseColour(std::wstring_view text)
{
    text = Trim(text);
    if (text.starts_with(L"#"))
        return ParseHexadecimal(text.substr(1));
    const auto lower = Lower(text);
    constexpr std::wstring_view kFunction = L"rgb(";
    if (lower.starts_with(kFunction))
        return ParseFunction(text.substr(kFunction.size()));
    const auto named =
        std::ranges::lower_bound(kNamedColours, std::wstring_view(lower), {}, &NamedColour::name);
    if (named == kNamedColours.end() || named->name != lower)
        return std::nullopt;
    return named->colour;
}

void StyleSheet::Add(std::wstring_view text)
{
    const auto plain = WithoutComments(text);
    std::wstring_view rest = plain;
    for (;;) {
        const auto open = rest.find(L'{');
        const auto close = rest.find(L'}', open == rest.npos ? 0 : open);
        if (open == rest.npos || close == rest.npos)
            return;
        auto selectors = rest.substr(0, open);
        const auto declarations = rest.substr(open + 1, close - open - 1);
        while (!selectors.empty()) {
            const auto end = std::min(selectors.find(L','), selectors.size());
            m_rules.push_back({.selector = std::wstring(Trim(selectors.substr(0, end))),
                               .declarations = std::wstring(declarations)});
            selectors.remove_prefix(std::min(end + 1, selectors.size()));
        }
        rest.remove_prefix(close + 1);
    }
}

std::wstring ApplyStyle(Style& style, std::wstring_view element,
                        const std::vector<Attribute>& attributes, const StyleContext& context)
{
    Draft draft{.style = style, .parent = style, .diagonal = context.diagonal, .failure = {}};

    // Paints may name the colour, so that comes first.
    ApplyProperty(draft, L"color", ValueOf(attributes, L"color"));
    for (const auto& attribute : attributes)
        ApplyProperty(draft, attribute.name, Trim(attribute.value));
    for (const auto& rule : context.sheet.Rules()) {
        if (Selects(rule.selector, element, attributes))
            ApplyDeclarations(draft, rule.declarations);
    }
    ApplyDeclarations(draft, ValueOf(attributes, L"style"));

    style.opacity = draft.parent.opacity * draft.ownOpacity;
    return draft.failure;
}

} // namespace DuiLib::Svg
