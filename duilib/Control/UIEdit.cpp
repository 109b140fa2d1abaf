#include "Control/UIEdit.h"

#include "Control/NativeEdit.h"
#include "Core/UIDefine.h"
#include "Core/UIManager.h"
#include "Core/UIRender.h"
#include "win32/AttributeTable.h"
#include "win32/TextParse.h"

#include <algorithm>
#include <climits>
#include <string>

namespace DuiLib {

namespace {

namespace Text = Quillet::Text;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

constexpr RECT kTextPadding{4, 3, 4, 3}; // design pixels
constexpr DWORD kWhite = 0xFFFFFFFF;
constexpr DWORD kTipColor = 0xFFBAC0C5;
constexpr DWORD kOpaque = 0xFF000000;
constexpr UINT kMostCharacters = 255;
constexpr TCHAR kPasswordCharacter = L'*';

bool IsMouseEvent(const TEventUI& event)
{
    return event.Type > UIEVENT__MOUSEBEGIN && event.Type < UIEVENT__MOUSEEND;
}

} // namespace

CEditUI::NativeLink& CEditUI::NativeLink::operator=(const NativeLink& other)
{
    if (this != &other && pWindow)
        pWindow->Close();
    return *this;
}

CControlUI* CEditUI::CreateControl()
{
    return new CEditUI;
}

CEditUI::CEditUI()
    : m_uButtonState(0),
      m_uMaxChar(kMostCharacters),
      m_bReadOnly(false),
      m_bPasswordMode(false),
      m_bAutoSelAll(false),
      m_cPasswordChar(kPasswordCharacter),
      m_iWindowStyls(0),
      m_dwTipValueColor(kTipColor),
      m_dwEditBkColor(0),
      m_dwEditTextColor(0),
      m_nSelectionStart(LONG_MAX),
      m_nSelectionEnd(LONG_MAX)
{
    m_rcTextPadding = kTextPadding;
    m_dwBackColor = kWhite;
}

CEditUI::~CEditUI()
{
    m_Native.bBarred = true;
    CloseNative();
}

LPCTSTR CEditUI::GetClass() const
{
    return L"EditUI";
}

LPVOID CEditUI::GetInterface(LPCTSTR name)
{
    if (name && Text::EqualsNoCase(name, DUI_CTR_EDIT))
        return static_cast<CEditUI*>(this);
    return CLabelUI::GetInterface(name);
}

UINT CEditUI::GetControlFlags() const
{
    if (!IsEnabled())
        return CLabelUI::GetControlFlags();
    return UIFLAG_SETCURSOR | (IsKeyboardEnabled() ? UIFLAG_TABSTOP : 0);
}

void CEditUI::SetMaxChar(UINT max)
{
    m_uMaxChar = max;
    if (m_Native.pWindow)
        m_Native.pWindow->FollowSettings();
}

UINT CEditUI::GetMaxChar()
{
    return m_uMaxChar;
}

void CEditUI::SetReadOnly(bool readOnly)
{
    if (m_bReadOnly == readOnly)
        return;
    m_bReadOnly = readOnly;
    if (m_Native.pWindow)
        m_Native.pWindow->FollowSettings();
    Invalidate();
}

bool CEditUI::IsReadOnly() const
{
    return m_bReadOnly;
}

void CEditUI::SetPasswordMode(bool password)
{
    if (m_bPasswordMode == password)
        return;
    m_bPasswordMode = password;
    if (m_Native.pWindow)
        m_Native.pWindow->FollowSettings();
    Invalidate();
}

bool CEditUI::IsPasswordMode() const
{
    return m_bPasswordMode;
}

// Without a character the native window would show the password.
void CEditUI::SetPasswordChar(TCHAR character)
{
    if (m_cPasswordChar == character || character == L'\0')
        return;
    m_cPasswordChar = character;
    if (m_Native.pWindow)
        m_Native.pWindow->FollowSettings();
    Invalidate();
}

TCHAR CEditUI::GetPasswordChar() const
{
    return m_cPasswordChar;
}

void CEditUI::SetNumberOnly(bool numberOnly)
{
    m_iWindowStyls = numberOnly ? m_iWindowStyls | ES_NUMBER : m_iWindowStyls & ~ES_NUMBER;
    if (m_Native.pWindow)
        m_Native.pWindow->FollowSettings();
}

bool CEditUI::IsNumberOnly() const
{
    return (m_iWindowStyls & ES_NUMBER) != 0;
}

int CEditUI::GetWindowStyls() const
{
    return m_iWindowStyls;
}

void CEditUI::SetImage(CDuiString& member, LPCTSTR image)
{
    if (member == image)
        return;
    member = image;
    Invalidate();
}

LPCTSTR CEditUI::GetNormalImage()
{
    return m_sNormalImage;
}

void CEditUI::SetNormalImage(LPCTSTR image)
{
    SetImage(m_sNormalImage, image);
}

LPCTSTR CEditUI::GetHotImage()
{
    return m_sHotImage;
}

void CEditUI::SetHotImage(LPCTSTR image)
{
    SetImage(m_sHotImage, image);
}

LPCTSTR CEditUI::GetFocusedImage()
{
    return m_sFocusedImage;
}

void CEditUI::SetFocusedImage(LPCTSTR image)
{
    SetImage(m_sFocusedImage, image);
}

LPCTSTR CEditUI::GetDisabledImage()
{
    return m_sDisabledImage;
}

void CEditUI::SetDisabledImage(LPCTSTR image)
{
    SetImage(m_sDisabledImage, image);
}

void CEditUI::SetNativeEditBkColor(DWORD color)
{
    m_dwEditBkColor = color;
    if (m_Native.pWindow)
        ::InvalidateRect(GetHWND(), nullptr, TRUE);
}

DWORD CEditUI::GetNativeEditBkColor() const
{
    if (m_dwEditBkColor != 0)
        return m_dwEditBkColor;
    return (m_dwBackColor & kOpaque) == kOpaque ? m_dwBackColor : kWhite;
}

void CEditUI::SetNativeEditTextColor(LPCTSTR color)
{
    m_dwEditTextColor = Text::ToColour(color);
    if (m_Native.pWindow)
        ::InvalidateRect(GetHWND(), nullptr, TRUE);
}

DWORD CEditUI::GetNativeEditTextColor() const
{
    return m_dwEditTextColor;
}

bool CEditUI::IsAutoSelAll()
{
    return m_bAutoSelAll;
}

void CEditUI::SetAutoSelAll(bool autoSelect)
{
    m_bAutoSelAll = autoSelect;
}

void CEditUI::SetSel(long start, long end)
{
    if (m_Native.pWindow) {
        m_Native.pWindow->Select(start, end);
        return;
    }
    m_nSelectionEnd = end < 0 ? LONG_MAX : end;
    m_nSelectionStart = start < 0 ? m_nSelectionEnd : start;
}

void CEditUI::SetSelAll()
{
    SetSel(0, -1);
}

void CEditUI::SetReplaceSel(LPCTSTR text)
{
    if (!text)
        text = L"";
    CDuiString whole;
    if (m_Native.pWindow) {
        m_Native.pWindow->ReplaceSelection(text);
        whole = m_Native.pWindow->Text();
    } else {
        const CDuiString old = GetText();
        const long length = old.GetLength();
        const long first = std::min({m_nSelectionStart, m_nSelectionEnd, length});
        const long last = std::min(std::max(m_nSelectionStart, m_nSelectionEnd), length);
        whole = old.Left(first) + text + old.Mid(last);
        m_nSelectionStart = m_nSelectionEnd =
            first + static_cast<long>(std::char_traits<TCHAR>::length(text));
    }
    StoreText(whole);
    if (m_Native.pWindow)
        m_Native.pWindow->ShowText(whole);
}

void CEditUI::SetTipValue(LPCTSTR text)
{
    if (m_sTipValue == text)
        return;
    m_sTipValue = text;
    if (m_Native.pWindow)
        ::InvalidateRect(GetHWND(), nullptr, TRUE);
    Invalidate();
}

LPCTSTR CEditUI::GetTipValue()
{
    return m_sTipValue;
}

void CEditUI::SetTipValueColor(LPCTSTR color)
{
    m_dwTipValueColor = Text::ToColour(color);
    if (m_Native.pWindow)
        ::InvalidateRect(GetHWND(), nullptr, TRUE);
    Invalidate();
}

DWORD CEditUI::GetTipValueColor()
{
    return m_dwTipValueColor;
}

HWND CEditUI::GetHWND()
{
    return m_Native.pWindow ? m_Native.pWindow->GetHWND() : NULL;
}

void CEditUI::SetManager(CPaintManagerUI* manager, CControlUI* parent, bool init)
{
    CloseNative();
    CLabelUI::SetManager(manager, parent, init);
}

void CEditUI::SetText(LPCTSTR text)
{
    CLabelUI::SetText(text);
    if (m_Native.pWindow)
        m_Native.pWindow->ShowText(GetText());
}

void CEditUI::SetEnabled(bool enable)
{
    CLabelUI::SetEnabled(enable);
    if (!IsEnabled()) {
        m_uButtonState &= ~UISTATE_HOT;
        CloseNative();
    } else if (m_pManager && m_pManager->GetFocus() == this) {
        OpenNative();
    }
}

void CEditUI::SetPos(RECT rect, bool invalidate)
{
    CLabelUI::SetPos(rect, invalidate);
    FollowLook();
}

void CEditUI::Move(SIZE offset, bool invalidate)
{
    CLabelUI::Move(offset, invalidate);
    FollowLook();
}

void CEditUI::SetVisible(bool visible)
{
    CLabelUI::SetVisible(visible);
    if (!IsVisible())
        CloseNative();
}

void CEditUI::SetInternVisible(bool visible)
{
    CLabelUI::SetInternVisible(visible);
    if (!IsVisible())
        CloseNative();
}

SIZE CEditUI::EstimateSize(SIZE available)
{
    return CLabelUI::EstimateSize(available);
}

void CEditUI::OpenNative()
{
    if (m_Native.bBarred || !IsEnabled() || !IsVisible())
        return;
    if (!m_Native.pWindow)
        m_Native.pWindow = CNativeEdit::Open(*this);
    if (m_Native.pWindow)
        m_Native.pWindow->TakeKeyboard();
}

void CEditUI::CloseNative()
{
    if (m_Native.pWindow)
        m_Native.pWindow->Close();
}

void CEditUI::FollowLook()
{
    if (m_Native.pWindow)
        m_Native.pWindow->FollowLook();
}

void CEditUI::DoEvent(TEventUI& event)
{
    if (!IsMouseEnabled() && IsMouseEvent(event)) {
        if (m_pParent)
            m_pParent->DoEvent(event);
        return;
    }
    switch (event.Type) {
    case UIEVENT_SETFOCUS:
        CLabelUI::DoEvent(event);
        OpenNative();
        return;
    case UIEVENT_KILLFOCUS:
        CLabelUI::DoEvent(event);
        CloseNative();
        return;
    case UIEVENT_BUTTONDOWN:
    case UIEVENT_DBLCLICK:
        Press(event);
        return;
    case UIEVENT_MOUSEMOVE:
        if (m_Native.pWindow)
            m_Native.pWindow->Drag(event.wParam, event.ptMouse);
        return;
    case UIEVENT_BUTTONUP:
        if (m_Native.pWindow)
            m_Native.pWindow->Release(event.ptMouse);
        return;
    case UIEVENT_MOUSEENTER:
        if (IsEnabled()) {
            m_uButtonState |= UISTATE_HOT;
            Invalidate();
        }
        return;
    case UIEVENT_MOUSELEAVE:
        m_uButtonState &= ~UISTATE_HOT;
        Invalidate();
        return;
    case UIEVENT_SETCURSOR:
        if (GetCursor() != 0 || !IsEnabled())
            break;
        ::SetCursor(::LoadCursor(NULL, IDC_IBEAM));
        return;
    // The parent window has the keyboard when it was given it by somebody who does not know the
    // native one.
    case UIEVENT_KEYDOWN:
    case UIEVENT_CHAR:
        if (!m_Native.pWindow)
            break;
        m_Native.pWindow->SendMessage(event.Type == UIEVENT_KEYDOWN ? WM_KEYDOWN : WM_CHAR,
                                      event.wParam, event.lParam);
        return;
    default:
        break;
    }
    CLabelUI::DoEvent(event);
}

// The press that brought the focus places the caret as well.
void CEditUI::Press(const TEventUI& event)
{
    if (!m_Native.pWindow)
        return;
    const UINT message = event.Type == UIEVENT_DBLCLICK ? WM_LBUTTONDBLCLK : WM_LBUTTONDOWN;
    const bool taken = m_Native.pWindow->Press(message, event.wParam, event.ptMouse);
    if (!taken && m_pManager)
        m_pManager->SetCapture(); // lost when the native window opened
}

void CEditUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    static constexpr auto kAttributes = MakeAttributeTable<NameMatch::NoCase, CEditUI>({
        {L"readonly", AttributeKind::Boolean,
         [](CEditUI& self, LPCTSTR on) { self.SetReadOnly(Text::IsTrue(on)); }},
        {L"numberonly", AttributeKind::Boolean,
         [](CEditUI& self, LPCTSTR on) { self.SetNumberOnly(Text::IsTrue(on)); }},
        {L"autoselall", AttributeKind::Boolean,
         [](CEditUI& self, LPCTSTR on) { self.SetAutoSelAll(Text::IsTrue(on)); }},
        {L"password", AttributeKind::Boolean,
         [](CEditUI& self, LPCTSTR on) { self.SetPasswordMode(Text::IsTrue(on)); }},
        {L"passwordchar", AttributeKind::Text,
         [](CEditUI& self, LPCTSTR text) { self.SetPasswordChar(text ? *text : L'\0'); }},
        {L"maxchar", AttributeKind::Number,
         [](CEditUI& self, LPCTSTR number) {
             self.SetMaxChar(static_cast<UINT>(std::max(Text::ToInt(number), 0)));
         }},
        {L"normalimage", AttributeKind::Image,
         [](CEditUI& self, LPCTSTR image) { self.SetNormalImage(image); }},
        {L"hotimage", AttributeKind::Image,
         [](CEditUI& self, LPCTSTR image) { self.SetHotImage(image); }},
        {L"focusedimage", AttributeKind::Image,
         [](CEditUI& self, LPCTSTR image) { self.SetFocusedImage(image); }},
        {L"disabledimage", AttributeKind::Image,
         [](CEditUI& self, LPCTSTR image) { self.SetDisabledImage(image); }},
        {L"tipvalue", AttributeKind::Text,
         [](CEditUI& self, LPCTSTR text) { self.SetTipValue(text); }},
        {L"tipvaluecolor", AttributeKind::Colour,
         [](CEditUI& self, LPCTSTR color) { self.SetTipValueColor(color); }},
        {L"nativetextcolor", AttributeKind::Colour,
         [](CEditUI& self, LPCTSTR color) { self.SetNativeEditTextColor(color); }},
        {L"nativebkcolor", AttributeKind::Colour,
         [](CEditUI& self, LPCTSTR color) { self.SetNativeEditBkColor(Text::ToColour(color)); }},
    });
    if (!kAttributes.Apply(*this, name, value))
        CLabelUI::SetAttribute(name, value);
}

bool CEditUI::DrawStateImage(HDC dc, LPCTSTR image)
{
    return image && *image && DrawImage(dc, image);
}

void CEditUI::PaintStatusImage(HDC dc)
{
    LPCTSTR image = GetNormalImage();
    if (!IsEnabled())
        image = GetDisabledImage();
    else if (IsFocused())
        image = GetFocusedImage();
    else if ((m_uButtonState & UISTATE_HOT) != 0)
        image = GetHotImage();

    if (!DrawStateImage(dc, image) && image != GetNormalImage())
        DrawStateImage(dc, GetNormalImage());
}

// One line, aligned as the label, with every character as it is.
UINT CEditUI::LineStyle() const
{
    constexpr UINT kKept = DT_CENTER | DT_RIGHT | DT_VCENTER | DT_BOTTOM | DT_END_ELLIPSIS;
    return (m_uTextStyle & kKept) | DT_SINGLELINE | DT_NOPREFIX;
}

void CEditUI::PaintText(HDC dc)
{
    if (!m_pManager)
        return;

    // A setter of the label, or a parent that draws over its child windows.
    if (m_Native.pWindow) {
        FollowLook();
        const auto style = ::GetWindowLongPtr(m_pManager->GetPaintWindow(), GWL_STYLE);
        if ((style & WS_CLIPCHILDREN) == 0)
            ::InvalidateRect(GetHWND(), nullptr, TRUE);
    }

    CDuiString text = GetText();
    if (text.IsEmpty()) {
        DrawTip(dc, TextRect());
        return;
    }
    if (m_bPasswordMode) {
        for (int index = text.GetLength() - 1; index >= 0; --index)
            text.SetAt(index, m_cPasswordChar);
    }
    RECT room = TextRect();
    CRenderEngine::DrawText(dc, m_pManager, room, text, GetAdjustColor(LabelTextColor()), m_iFont,
                            LineStyle());
}

void CEditUI::DrawTip(HDC dc, RECT room)
{
    if (m_pManager && !m_sTipValue.IsEmpty())
        CRenderEngine::DrawText(dc, m_pManager, room, m_sTipValue,
                                GetAdjustColor(m_dwTipValueColor), m_iFont, LineStyle());
}

// The native window is as high as a line, and where the control would draw it.
RECT CEditUI::NativePlace() const
{
    RECT place = TextRect();
    place.right = std::max(place.left, place.right);
    place.bottom = std::max(place.top, place.bottom);
    const LONG room = place.bottom - place.top;
    const LONG line = std::min(m_pManager->GetFontInfo(m_iFont)->tm.tmHeight, room);
    if ((m_uTextStyle & DT_BOTTOM) != 0)
        place.top = place.bottom - line;
    else if ((m_uTextStyle & DT_VCENTER) != 0)
        place.top += (room - line) / 2;
    place.bottom = place.top + line;
    return place;
}

RECT CEditUI::VisiblePart(RECT part) const
{
    const CControlUI* child = this;
    for (const CControlUI* parent = GetParent(); parent; parent = parent->GetParent()) {
        const RECT room = child->IsFloat() ? parent->GetPos() : parent->GetClientPos();
        if (!::IntersectRect(&part, &part, &room))
            return {};
        child = parent;
    }
    return part;
}

DWORD CEditUI::NativeTextColor()
{
    DWORD color = GetAdjustColor(m_dwEditTextColor != 0 ? m_dwEditTextColor : LabelTextColor());
    if (m_pManager && m_pManager->IsLayered())
        CRenderEngine::CheckAlphaColor(color);
    return color;
}

// May delete this.
void CEditUI::SendKey(WPARAM key)
{
    LPCTSTR type = nullptr;
    if (key == VK_RETURN)
        type = DUI_MSGTYPE_RETURN;
    else if (key == VK_BACK)
        type = DUI_MSGTYPE_VKBACK;
    else if (key == VK_ESCAPE)
        type = DUI_MSGTYPE_ESCAPE;
    if (type && m_pManager)
        m_pManager->SendNotify(this, type);
}

// As it is: not the id of a text, and nothing in it stands for something else.
void CEditUI::StoreText(const CDuiString& text)
{
    m_sText = text;
    m_bResourceText = false;
    TextChanged();
}

// May delete this.
void CEditUI::TakeNativeText()
{
    const CDuiString text = m_Native.pWindow->Text();
    if (text == GetText())
        return;
    StoreText(text);
    if (m_pManager && !m_Native.bBarred)
        m_pManager->SendNotify(this, DUI_MSGTYPE_TEXTCHANGED);
}

void CEditUI::OpenOwnMenu()
{
    TEventUI event{};
    event.Type = UIEVENT_CONTEXTMENU;
    event.pSender = this;
    event.dwTimestamp = ::GetTickCount();
    event.ptMouse = m_pManager ? m_pManager->GetMousePos() : POINT{};
    event.lParam = reinterpret_cast<LPARAM>(static_cast<CControlUI*>(this));
    Event(event);
}

} // namespace DuiLib
