#include "Core/UIControl.h"

#include "Core/UIManager.h"
#include "win32/AttributeTable.h"
#include "win32/TextParse.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cwchar>
#include <optional>
#include <string>
#include <string_view>

namespace DuiLib {

namespace {

using namespace Quillet::Text;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

constexpr int kDeepestStyle = 16; // styles that name styles

struct NamedValue {
    std::wstring_view name;
    WORD value;
};

constexpr NamedValue kCursors[] = {
    {L"arrow", DUI_ARROW},   {L"ibeam", DUI_IBEAM},       {L"wait", DUI_WAIT},
    {L"cross", DUI_CROSS},   {L"uparrow", DUI_UPARROW},   {L"size", DUI_SIZE},
    {L"icon", DUI_ICON},     {L"sizenwse", DUI_SIZENWSE}, {L"sizenesw", DUI_SIZENESW},
    {L"sizewe", DUI_SIZEWE}, {L"sizens", DUI_SIZENS},     {L"sizeall", DUI_SIZEALL},
    {L"no", DUI_NO},         {L"hand", DUI_HAND},
};

std::optional<WORD> ToCursor(LPCTSTR text)
{
    for (const auto& cursor : kCursors) {
        if (EqualsNoCase(text, cursor.name))
            return cursor.value;
    }
    return std::nullopt;
}

// DT_* bits from words between commas and blanks; a later word of a direction wins.
UINT ToAlign(std::wstring_view text)
{
    UINT align = 0;
    const auto horizontal = [&align](UINT bits) {
        align = (align & ~(DT_CENTER | DT_RIGHT)) | bits;
    };
    const auto vertical = [&align](UINT bits) {
        align = (align & ~(DT_VCENTER | DT_BOTTOM)) | bits;
    };
    while (!text.empty()) {
        const auto end = std::min(text.find_first_of(L", "), text.size());
        const auto word = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (EqualsNoCase(word, L"null"))
            align = 0;
        else if (EqualsNoCase(word, L"left"))
            horizontal(DT_LEFT);
        else if (EqualsNoCase(word, L"center"))
            horizontal(DT_CENTER);
        else if (EqualsNoCase(word, L"right"))
            horizontal(DT_RIGHT);
        else if (EqualsNoCase(word, L"top"))
            vertical(DT_TOP);
        else if (EqualsNoCase(word, L"vcenter"))
            vertical(DT_VCENTER);
        else if (EqualsNoCase(word, L"bottom"))
            vertical(DT_BOTTOM);
    }
    return align;
}

// Four fractions, or nothing when the text is no such list.
std::optional<TPercentInfo> ToFractions(LPCTSTR text)
{
    if (std::wcschr(text, L',') == nullptr)
        return std::nullopt;
    std::array<double, 4> fractions{};
    for (double& fraction : fractions) {
        wchar_t* end = nullptr;
        fraction = std::wcstod(text, &end);
        text = *end != L'\0' ? end + 1 : end;
    }
    return TPercentInfo{fractions[0], fractions[1], fractions[2], fractions[3]};
}

int Distance(LONG from, LONG to)
{
    const auto distance = std::abs(static_cast<long long>(to) - from);
    return static_cast<int>(std::min<long long>(distance, INT_MAX));
}

void SetPreset(CControlUI& control, const RECT& preset)
{
    control.SetFixedXY({preset.left >= 0 ? preset.left : preset.right,
                        preset.top >= 0 ? preset.top : preset.bottom});
    control.SetFixedWidth(Distance(preset.left, preset.right));
    control.SetFixedHeight(Distance(preset.top, preset.bottom));
}

void SetBorder(CControlUI& control, LPCTSTR value)
{
    if (std::wcschr(value, L',') != nullptr) {
        control.SetBorderSize(ToRect(value));
        return;
    }
    control.SetBorderSize(RECT{});
    control.SetBorderSize(ToInt(value));
}

void SetFloating(CControlUI& control, LPCTSTR value)
{
    const auto fractions = ToFractions(value);
    if (fractions)
        control.SetFloatPercent(*fractions);
    control.SetFloat(fractions || IsTrue(value));
}

// A text that may be changed in place; short ones cost no heap.
class Scratch {
public:
    explicit Scratch(LPCTSTR text)
    {
        const std::size_t size = std::wcslen(text) + 1;
        if (size > m_short.size()) {
            m_long.assign(text, size);
            m_text = m_long.data();
        } else {
            std::copy_n(text, size, m_short.data());
        }
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    wchar_t* Text() { return m_text; }

private:
    std::array<wchar_t, 512> m_short;
    std::wstring m_long;
    wchar_t* m_text = m_short.data();
};

void DecodeQuotes(wchar_t* text)
{
    constexpr std::wstring_view kQuote = L"&quot;";
    wchar_t* read = std::wcschr(text, L'&');
    if (read == nullptr)
        return;
    wchar_t* write = read;
    while (*read != L'\0') {
        if (std::wcsncmp(read, kQuote.data(), kQuote.size()) == 0) {
            *write++ = L'"';
            read += kQuote.size();
        } else {
            *write++ = *read++;
        }
    }
    *write = L'\0';
}

bool IsBetweenPairs(wchar_t ch)
{
    return ch != L'\0' && (ch <= L' ' || ch == L',');
}

// Reads one pair `name="value"` and ends both texts with a zero. False when there is none.
bool ReadPair(wchar_t*& at, LPCTSTR& name, LPCTSTR& value)
{
    while (IsBetweenPairs(*at))
        ++at;
    name = at;
    wchar_t* const equals = std::wcschr(at, L'=');
    if (equals == nullptr || equals == at || equals[1] != L'"')
        return false;
    wchar_t* const end = std::wcschr(equals + 2, L'"');
    if (end == nullptr)
        return false;
    value = equals + 2;
    *equals = L'\0';
    *end = L'\0';
    at = end + 1;
    return true;
}

// Counts styles within styles, so that one that leads back to itself ends.
class StyleDepth {
public:
    StyleDepth() { ++s_depth; }
    ~StyleDepth() { --s_depth; }
    StyleDepth(const StyleDepth&) = delete;
    StyleDepth& operator=(const StyleDepth&) = delete;

    static bool IsTooDeep() { return s_depth >= kDeepestStyle; }

private:
    static inline thread_local int s_depth = 0;
};

} // namespace

void CControlUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    using Self = CControlUI;
    static constexpr auto kTable = MakeAttributeTable<NameMatch::NoCase, Self>({
        // A style that nobody has defined is kept as a custom attribute.
        {L"style", AttributeKind::Text,
            [](Self& self, LPCTSTR v) {
                if (!self.ApplyStyle(v))
                    self.AddCustomAttribute(L"style", v);
            }},
        {L"innerstyle", AttributeKind::Text,
            [](Self& self, LPCTSTR v) { self.ApplyAttributeList(v); }},
        {L"name", AttributeKind::Text, [](Self& self, LPCTSTR v) { self.SetName(v); }},
        {L"text", AttributeKind::Text, [](Self& self, LPCTSTR v) { self.SetText(v); }},
        {L"tooltip", AttributeKind::Text, [](Self& self, LPCTSTR v) { self.SetToolTip(v); }},
        {L"userdata", AttributeKind::Text, [](Self& self, LPCTSTR v) { self.SetUserData(v); }},
        {L"virtualwnd", AttributeKind::Text, [](Self& self, LPCTSTR v) { self.SetVirtualWnd(v); }},
        {L"pos", AttributeKind::Rectangle,
            [](Self& self, LPCTSTR v) { SetPreset(self, ToRect(v)); }},
        {L"width", AttributeKind::Number,
            [](Self& self, LPCTSTR v) { self.SetFixedWidth(ToInt(v)); }},
        {L"height", AttributeKind::Number,
            [](Self& self, LPCTSTR v) { self.SetFixedHeight(ToInt(v)); }},
        {L"minwidth", AttributeKind::Number,
            [](Self& self, LPCTSTR v) { self.SetMinWidth(ToInt(v)); }},
        {L"minheight", AttributeKind::Number,
            [](Self& self, LPCTSTR v) { self.SetMinHeight(ToInt(v)); }},
        {L"maxwidth", AttributeKind::Number,
            [](Self& self, LPCTSTR v) { self.SetMaxWidth(ToInt(v)); }},
        {L"maxheight", AttributeKind::Number,
            [](Self& self, LPCTSTR v) { self.SetMaxHeight(ToInt(v)); }},
        {L"padding", AttributeKind::Rectangle,
            [](Self& self, LPCTSTR v) { self.SetPadding(ToRect(v)); }},
        {L"float", AttributeKind::Choice, [](Self& self, LPCTSTR v) { SetFloating(self, v); }},
        {L"floatalign", AttributeKind::Choice,
            [](Self& self, LPCTSTR v) { self.SetFloatAlign(ToAlign(v)); }},
        {L"bkcolor", AttributeKind::Colour,
            [](Self& self, LPCTSTR v) { self.SetBkColor(ToColour(v)); }},
        {L"bkcolor1", AttributeKind::Colour,
            [](Self& self, LPCTSTR v) { self.SetBkColor(ToColour(v)); }},
        {L"bkcolor2", AttributeKind::Colour,
            [](Self& self, LPCTSTR v) { self.SetBkColor2(ToColour(v)); }},
        {L"bkcolor3", AttributeKind::Colour,
            [](Self& self, LPCTSTR v) { self.SetBkColor3(ToColour(v)); }},
        {L"forecolor", AttributeKind::Colour,
            [](Self& self, LPCTSTR v) { self.SetForeColor(ToColour(v)); }},
        {L"bordercolor", AttributeKind::Colour,
            [](Self& self, LPCTSTR v) { self.SetBorderColor(ToColour(v)); }},
        {L"focusbordercolor", AttributeKind::Colour,
            [](Self& self, LPCTSTR v) { self.SetFocusBorderColor(ToColour(v)); }},
        {L"colorhsl", AttributeKind::Boolean,
            [](Self& self, LPCTSTR v) { self.SetColorHSL(IsTrue(v)); }},
        {L"gradient", AttributeKind::Text, [](Self& self, LPCTSTR v) { self.SetGradient(v); }},
        {L"bordersize", AttributeKind::Rectangle,
            [](Self& self, LPCTSTR v) { SetBorder(self, v); }},
        {L"leftbordersize", AttributeKind::Number,
            [](Self& self, LPCTSTR v) { self.SetLeftBorderSize(ToInt(v)); }},
        {L"topbordersize", AttributeKind::Number,
            [](Self& self, LPCTSTR v) { self.SetTopBorderSize(ToInt(v)); }},
        {L"rightbordersize", AttributeKind::Number,
            [](Self& self, LPCTSTR v) { self.SetRightBorderSize(ToInt(v)); }},
        {L"bottombordersize", AttributeKind::Number,
            [](Self& self, LPCTSTR v) { self.SetBottomBorderSize(ToInt(v)); }},
        {L"borderstyle", AttributeKind::Number,
            [](Self& self, LPCTSTR v) { self.SetBorderStyle(ToInt(v)); }},
        {L"borderround", AttributeKind::Size,
            [](Self& self, LPCTSTR v) { self.SetBorderRound(ToSize(v)); }},
        {L"bkimage", AttributeKind::Image, [](Self& self, LPCTSTR v) { self.SetBkImage(v); }},
        {L"foreimage", AttributeKind::Image, [](Self& self, LPCTSTR v) { self.SetForeImage(v); }},
        {L"enabled", AttributeKind::Boolean,
            [](Self& self, LPCTSTR v) { self.SetEnabled(IsTrue(v)); }},
        {L"mouse", AttributeKind::Boolean,
            [](Self& self, LPCTSTR v) { self.SetMouseEnabled(IsTrue(v)); }},
        {L"keyboard", AttributeKind::Boolean,
            [](Self& self, LPCTSTR v) { self.SetKeyboardEnabled(IsTrue(v)); }},
        {L"visible", AttributeKind::Boolean,
            [](Self& self, LPCTSTR v) { self.SetVisible(IsTrue(v)); }},
        {L"menu", AttributeKind::Boolean,
            [](Self& self, LPCTSTR v) { self.SetContextMenuUsed(IsTrue(v)); }},
        {L"drag", AttributeKind::Boolean,
            [](Self& self, LPCTSTR v) { self.SetDragEnable(IsTrue(v)); }},
        {L"drop", AttributeKind::Boolean,
            [](Self& self, LPCTSTR v) { self.SetDropEnable(IsTrue(v)); }},
        {L"resourcetext", AttributeKind::Boolean,
            [](Self& self, LPCTSTR v) { self.SetResourceText(IsTrue(v)); }},
        {L"richevent", AttributeKind::Boolean,
            [](Self& self, LPCTSTR v) { self.SetRichEvent(IsTrue(v)); }},
        {L"shortcut", AttributeKind::Text, [](Self& self, LPCTSTR v) { self.SetShortcut(v[0]); }},
        {L"cursor", AttributeKind::Choice,
            [](Self& self, LPCTSTR v) {
                if (const auto cursor = ToCursor(v))
                    self.SetCursor(*cursor);
            }},
    });

    if (!kTable.Apply(*this, name, value))
        AddCustomAttribute(name, value);
}

bool CControlUI::ApplyStyle(LPCTSTR name)
{
    if (m_pManager == nullptr || name == nullptr || *name == L'\0')
        return false;
    const LPCTSTR list = m_pManager->GetStyle(name);
    if (list == nullptr)
        return false;
    ApplyAttributeList(list);
    return true;
}

CControlUI* CControlUI::ApplyAttributeList(LPCTSTR list)
{
    if (list == nullptr || StyleDepth::IsTooDeep())
        return this;
    const StyleDepth depth;

    LPCTSTR const style = m_pManager != nullptr ? m_pManager->GetStyle(list) : nullptr;
    // A setter may remove the style that is being applied, so its text is copied.
    Scratch scratch(style != nullptr ? style : list);
    wchar_t* at = scratch.Text();
    DecodeQuotes(at);
    LPCTSTR name = nullptr;
    LPCTSTR value = nullptr;
    while (ReadPair(at, name, value))
        SetAttribute(name, value);
    return this;
}

void CControlUI::AddCustomAttribute(LPCTSTR name, LPCTSTR value)
{
    if (name == nullptr || *name == L'\0' || value == nullptr || GetCustomAttribute(name))
        return;
    m_mCustomAttrHash.Use().emplace_back(name, value);
}

LPCTSTR CControlUI::GetCustomAttribute(LPCTSTR name) const
{
    const auto* entries = m_mCustomAttrHash.Find();
    if (entries == nullptr || name == nullptr)
        return nullptr;
    for (const auto& [key, value] : *entries) {
        if (key == name)
            return value;
    }
    return nullptr;
}

bool CControlUI::RemoveCustomAttribute(LPCTSTR name)
{
    auto* entries = m_mCustomAttrHash.Find();
    if (entries == nullptr || name == nullptr)
        return false;
    const auto found = std::find_if(entries->begin(), entries->end(),
                                    [name](const auto& entry) { return entry.first == name; });
    if (found == entries->end())
        return false;
    entries->erase(found);
    return true;
}

void CControlUI::RemoveAllCustomAttribute()
{
    m_mCustomAttrHash.Clear();
}

} // namespace DuiLib
