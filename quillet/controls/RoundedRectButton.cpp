#include "quillet/controls/RoundedRectButton.h"

#include <cerrno>
#include <cwchar>
#include <limits>
#include <map>
#include <stdexcept>

#include "quillet/resources/SaturatingCast.h"
#include "quillet/resources/Utils.h"
#include "win32/AttributeTable.h"
#include "win32/TextParse.h"

namespace DuiLib {

namespace {

using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

constexpr int kHeight = 40; // design pixels
constexpr DWORD kTextColour = 0xFFFFFFFF;
constexpr DWORD kDisabledTextColour = 0xFFFDFDFD;

constexpr wchar_t kNormalImage[] = L"drawable/corvane_common/btn_blue_round_normal.png";
constexpr wchar_t kPushedImage[] = L"drawable/corvane_common/btn_blue_round_press.png";
constexpr wchar_t kHotImage[] = L"drawable/corvane_common/btn_blue_round_hover.png";
constexpr wchar_t kDisabledImage[] = L"drawable/corvane_common/btn_blue_round_disable.png";

template <class Value>
using PerState = std::map<CRoundedRectButtonUI::StateRole, Value>;

template <class Value>
Value ValueOf(const PerState<Value>& values, CRoundedRectButtonUI::StateRole role)
{
    const auto found = values.find(role);
    return found != values.end() ? found->second : Value{};
}

// Published: a text that is no number raises the standard errors, which applications catch.
int ParseNumber(const wchar_t* text)
{
    wchar_t* end = nullptr;
    errno = 0;
    const long long number = std::wcstoll(text, &end, 10);
    if (end == text)
        throw std::invalid_argument("invalid stoi argument");
    using Limits = std::numeric_limits<int>;
    if (errno == ERANGE || number < Limits::min() || number > Limits::max())
        throw std::out_of_range("stoi argument out of range");
    return static_cast<int>(number);
}

} // namespace

// What the application reads; painting uses the pictures and the label's text colour only.
struct CRoundedRectButtonUI::State {
    PerState<DWORD> textColours;
    PerState<DWORD> backgroundColours;
    PerState<DWORD> borderColours;
    PerState<CDuiString> texts;
    bool checked = false;
    bool checkable = false;
    int roundedWidth = 0; // device pixels
};

CControlUI* CRoundedRectButtonUI::CreateControl()
{
    return new CRoundedRectButtonUI;
}

CRoundedRectButtonUI::CRoundedRectButtonUI()
    : m_sNotifyType(DUI_MSGTYPE_CLICK), m_pState(std::make_unique<State>())
{
    SetFixedHeight(kHeight);
    SetMouseEnabled(true);
    SetCursor(DUI_HAND);
    // Published: the width starts at -1, scaled like any other.
    SetRoundedWidth(-1);

    SetNormalImage(kNormalImage);
    SetPushedImage(kPushedImage);
    SetHotImage(kHotImage);
    SetDisabledImage(kDisabledImage);

    SetTextColor(kTextColour, Normal);
    SetDisabledTextColor(kDisabledTextColour);
}

CRoundedRectButtonUI::~CRoundedRectButtonUI() = default;

void CRoundedRectButtonUI::SetText(const CDuiString& text, StateRole role)
{
    m_pState->texts[role] = text;
    if (role == Normal)
        CButtonUI::SetText(text);
    Invalidate();
}

void CRoundedRectButtonUI::SetTextColor(DWORD colour, StateRole role)
{
    // Published: the button's text takes the colour whatever the state is.
    CButtonUI::SetTextColor(colour);
    m_pState->textColours[role] = colour;
    Invalidate();
}

void CRoundedRectButtonUI::SetBackgroundColor(DWORD colour, StateRole role)
{
    // Published: kept for the application; painting does not look at it.
    m_pState->backgroundColours[role] = colour;
    Invalidate();
}

void CRoundedRectButtonUI::SetBorderColor(DWORD colour, StateRole role)
{
    // Published: kept for the application; painting does not look at it.
    m_pState->borderColours[role] = colour;
    Invalidate();
}

CDuiString CRoundedRectButtonUI::GetText(StateRole role) const
{
    return ValueOf(m_pState->texts, role);
}

DWORD CRoundedRectButtonUI::GetTextColor(StateRole role) const
{
    return ValueOf(m_pState->textColours, role);
}

DWORD CRoundedRectButtonUI::GetBackgroundColor(StateRole role) const
{
    return ValueOf(m_pState->backgroundColours, role);
}

DWORD CRoundedRectButtonUI::GetBorderColor(StateRole role) const
{
    return ValueOf(m_pState->borderColours, role);
}

void CRoundedRectButtonUI::SetRoundedWidth(int width)
{
    bool ok = false;
    DWORD error = ERROR_SUCCESS;
    m_pState->roundedWidth = Quillet::SaturateToInt(width * Utils::GetDPIFactor(ok, error));
    Invalidate();
}

int CRoundedRectButtonUI::GetRoundedWidth() const
{
    return m_pState->roundedWidth;
}

void CRoundedRectButtonUI::SetCheckable(bool checkable)
{
    m_pState->checkable = checkable;
}

bool CRoundedRectButtonUI::IsCheckable() const
{
    return m_pState->checkable;
}

void CRoundedRectButtonUI::SetChecked(bool checked)
{
    m_pState->checked = checked;
}

bool CRoundedRectButtonUI::IsChecked() const
{
    return m_pState->checked;
}

LPCTSTR CRoundedRectButtonUI::GetClass() const
{
    return L"RoundedRectButtonUI";
}

LPVOID CRoundedRectButtonUI::GetInterface(LPCTSTR name)
{
    if (name && Quillet::Text::EqualsNoCase(name, L"RoundedRectButton"))
        return this;
    // Published: the interfaces of button and label are not answered.
    return CControlUI::GetInterface(name);
}

UINT CRoundedRectButtonUI::GetControlFlags() const
{
    return UIFLAG_TABSTOP | UIFLAG_SETCURSOR;
}

void CRoundedRectButtonUI::SetEnabled(bool enable)
{
    SetCursor(enable ? DUI_HAND : DUI_ARROW);
    CButtonUI::SetEnabled(enable);
    Invalidate();
}

void CRoundedRectButtonUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    using Self = CRoundedRectButtonUI;
    static constexpr auto kTable = MakeAttributeTable<NameMatch::NoCase, Self>({
        {L"text", AttributeKind::Text,
         [](Self& self, LPCTSTR text) { self.SetText(text, Normal); }},
        {L"roundwidth", AttributeKind::Number,
         [](Self& self, LPCTSTR text) { self.SetRoundedWidth(ParseNumber(text)); }},
    });
    kTable.Apply(*this, name, value);
    // Published: the button gets every attribute, also those taken here, so a text is set twice.
    CButtonUI::SetAttribute(name, value);
}

void CRoundedRectButtonUI::DoEvent(TEventUI& event)
{
    CButtonUI::DoEvent(event);
}

bool CRoundedRectButtonUI::DoPaint(HDC dc, const RECT& dirty, CControlUI* stopAt)
{
    CControlUI::DoPaint(dc, dirty, stopAt);
    return true;
}

} // namespace DuiLib
