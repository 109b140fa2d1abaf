#include "Control/NativeEdit.h"

#include "Control/UIEdit.h"
#include "Core/UIManager.h"
#include "Core/UIRender.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <utility>

namespace DuiLib {

namespace {

// Messages that the parent window sends back.
constexpr UINT kReflected = WM_USER + 0x1C00;

constexpr UINT kLongestText = 0x7FFFFFFE;
constexpr wchar_t kSelectAllCharacter = 0x01;  // Ctrl+A
constexpr wchar_t kDeleteWordCharacter = 0x7F; // Ctrl+Backspace

COLORREF ToColorRef(DWORD argb)
{
    return RGB(argb >> 16 & 0xFF, argb >> 8 & 0xFF, argb & 0xFF);
}

// Characters of keys that mean nothing in a single line, and would make a noise or a box.
bool IsNoText(WPARAM character)
{
    switch (character) {
    case L'\r':
    case L'\n':
    case L'\t':
    case VK_ESCAPE:
    case kSelectAllCharacter:
    case kDeleteWordCharacter:
        return true;
    default:
        return false;
    }
}

bool IsSelectAll(WPARAM key)
{
    return key == 'A' && ::GetKeyState(VK_CONTROL) < 0 && ::GetKeyState(VK_MENU) >= 0;
}

// The digits of the text on the clipboard; nothing when there is no text.
std::optional<std::wstring> DigitsOnClipboard(HWND window)
{
    if (!::OpenClipboard(window))
        return std::nullopt;
    std::optional<std::wstring> digits;
    if (const HANDLE data = ::GetClipboardData(CF_UNICODETEXT)) {
        if (const auto* const text = static_cast<const wchar_t*>(::GlobalLock(data))) {
            digits.emplace();
            for (const wchar_t* at = text; *at != L'\0'; ++at) {
                if (*at >= L'0' && *at <= L'9')
                    digits->push_back(*at);
            }
            ::GlobalUnlock(data);
        }
    }
    ::CloseClipboard();
    return digits;
}

DWORD AlignmentStyle(UINT textStyle)
{
    if ((textStyle & DT_CENTER) != 0)
        return ES_CENTER;
    return (textStyle & DT_RIGHT) != 0 ? ES_RIGHT : ES_LEFT;
}

} // namespace

CNativeEdit* CNativeEdit::Open(CEditUI& owner)
{
    CPaintManagerUI* const manager = owner.GetManager();
    const HWND parent = manager ? manager->GetPaintWindow() : NULL;
    if (!::IsWindow(parent))
        return nullptr;

    auto* const edit = new CNativeEdit(owner);
    const Use use(*edit);
    const DWORD style = WS_CHILD | ES_AUTOHSCROLL | AlignmentStyle(owner.GetTextStyle()) |
                        static_cast<DWORD>(owner.GetWindowStyls()) |
                        (owner.IsPasswordMode() ? ES_PASSWORD : 0);
    if (!edit->Create(parent, owner.GetText(), style, 0, RECT{})) {
        edit->m_bEnded = true;
        return nullptr;
    }
    edit->m_bLayered = manager->IsLayered();
    if (edit->m_bLayered)
        manager->AddNativeWindow(&owner, edit->m_hWnd);
    edit->m_bWasEmpty = ::GetWindowTextLengthW(edit->m_hWnd) == 0;
    edit->FollowLook();
    edit->FollowSettings();
    if (owner.IsAutoSelAll())
        edit->Select(0, -1);
    else
        edit->Select(owner.m_nSelectionStart, owner.m_nSelectionEnd);
    ::ShowWindow(edit->m_hWnd, SW_SHOWNA);
    edit->m_bQuiet = false;
    edit->m_bUntouched = true;
    return edit;
}

CNativeEdit::CNativeEdit(CEditUI& owner)
    : m_pOwner(&owner),
      m_LogFont{},
      m_clrBrush(0),
      m_rcPlace{},
      m_rcVisible{},
      m_nUses(0),
      m_bEnded(false),
      m_bCloseAsked(false),
      m_bQuiet(true),
      m_bChanged(false),
      m_bWasEmpty(false),
      m_bUntouched(false),
      m_bPressed(false),
      m_bLayered(false)
{
}

// The last one out ends what is to end.
void CNativeEdit::EndUse()
{
    if (--m_nUses > 0)
        return;
    if (m_bEnded)
        delete this;
    else if (std::exchange(m_bCloseAsked, false))
        ::DestroyWindow(m_hWnd);
}

void CNativeEdit::Close()
{
    const Use use(*this);
    if (!std::exchange(m_bCloseAsked, true) && ::GetFocus() == m_hWnd)
        ::SetFocus(::GetParent(m_hWnd));
    if (!m_bEnded && std::exchange(m_bChanged, false) && m_pOwner)
        m_pOwner->TakeNativeText();
    LetGoOfOwner(m_hWnd);
    if (!m_bEnded)
        ::ShowWindow(m_hWnd, SW_HIDE);
}

void CNativeEdit::LetGoOfOwner(HWND window)
{
    CEditUI* const owner = std::exchange(m_pOwner, nullptr);
    if (!owner)
        return;
    if (!m_bEnded)
        GetSelection(owner->m_nSelectionStart, owner->m_nSelectionEnd);
    if (owner->GetManager() && m_bLayered)
        owner->GetManager()->RemoveNativeWindow(window);
    owner->m_Native.pWindow = nullptr;
}

void CNativeEdit::TakeKeyboard()
{
    if (IsOpen() && ::GetFocus() == ::GetParent(m_hWnd))
        ::SetFocus(m_hWnd);
}

void CNativeEdit::FollowLook()
{
    if (!m_pOwner || !m_pOwner->GetManager())
        return;
    FollowFont();
    FollowPlace();
}

void CNativeEdit::FollowFont()
{
    LOGFONT wanted{};
    ::GetObject(m_pOwner->GetManager()->GetFont(m_pOwner->GetFont()), sizeof(wanted), &wanted);
    if (m_pFont && std::memcmp(&wanted, &m_LogFont, sizeof(wanted)) == 0)
        return;
    Quillet::UniqueFont font(::CreateFontIndirect(&wanted));
    if (!font)
        return;
    m_LogFont = wanted;
    SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
    SendMessage(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
    m_pFont = std::move(font);
}

void CNativeEdit::FollowPlace()
{
    const RECT place = m_pOwner->NativePlace();
    const RECT before = m_rcPlace;
    if (!::EqualRect(&place, &before)) {
        m_rcPlace = place;
        ::SetWindowPos(m_hWnd, NULL, place.left, place.top, place.right - place.left,
                       place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
    }

    // Hiding it would cost it the keyboard; a region leaves it that.
    RECT visible = m_pOwner->VisiblePart(place);
    if (!::IsRectEmpty(&visible))
        ::OffsetRect(&visible, -place.left, -place.top);
    const RECT whole{0, 0, place.right - place.left, place.bottom - place.top};
    const bool isSized =
        whole.right != before.right - before.left || whole.bottom != before.bottom - before.top;
    if (!isSized && ::EqualRect(&visible, &m_rcVisible))
        return;
    m_rcVisible = visible;
    Quillet::UniqueRegion region;
    if (!::EqualRect(&visible, &whole))
        region.reset(::CreateRectRgnIndirect(&visible));
    if (::SetWindowRgn(m_hWnd, region.get(), TRUE))
        region.release();
}

void CNativeEdit::FollowSettings()
{
    const UINT limit = m_pOwner->GetMaxChar();
    SendMessage(EM_SETLIMITTEXT, limit < kLongestText ? limit : kLongestText);
    SendMessage(EM_SETREADONLY, m_pOwner->IsReadOnly());
    SendMessage(EM_SETPASSWORDCHAR, m_pOwner->IsPasswordMode() ? m_pOwner->GetPasswordChar() : 0);
    const LONG_PTR style = ::GetWindowLongPtr(m_hWnd, GWL_STYLE);
    const LONG_PTR wanted =
        (style & ~static_cast<LONG_PTR>(ES_NUMBER)) | m_pOwner->GetWindowStyls();
    if (wanted != style)
        ::SetWindowLongPtr(m_hWnd, GWL_STYLE, wanted);
    ::InvalidateRect(m_hWnd, nullptr, TRUE);
}

void CNativeEdit::ShowText(LPCTSTR text)
{
    if (Text() == text)
        return;
    const Use use(*this);
    long start = 0;
    long end = 0;
    GetSelection(start, end);
    const bool wasQuiet = std::exchange(m_bQuiet, true);
    SendMessage(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
    Select(start, end);
    m_bQuiet = wasQuiet;
}

void CNativeEdit::Select(long start, long end)
{
    const long length = ::GetWindowTextLength(m_hWnd);
    if (end < 0 || end > length)
        end = length;
    if (start < 0 || start > length)
        start = end;
    SendMessage(EM_SETSEL, static_cast<WPARAM>(start), end);
    SendMessage(EM_SCROLLCARET);
}

void CNativeEdit::ReplaceSelection(LPCTSTR text)
{
    const Use use(*this);
    const bool wasQuiet = std::exchange(m_bQuiet, true);
    SendMessage(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text));
    m_bQuiet = wasQuiet;
}

CDuiString CNativeEdit::Text() const
{
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(m_hWnd)), L'\0');
    text.resize(static_cast<std::size_t>(
        ::GetWindowTextW(m_hWnd, text.data(), static_cast<int>(text.size()) + 1)));
    return CDuiString(text.c_str(), static_cast<int>(text.size()));
}

void CNativeEdit::GetSelection(long& start, long& end) const
{
    DWORD first = 0;
    DWORD last = 0;
    ::SendMessageW(m_hWnd, EM_GETSEL, reinterpret_cast<WPARAM>(&first),
                   reinterpret_cast<LPARAM>(&last));
    start = static_cast<long>(first);
    end = static_cast<long>(last);
}

// A point of the parent. The line is lower than the control, so the nearest point of it counts.
LPARAM CNativeEdit::ToClient(POINT point) const
{
    const LONG lowest = (std::max)(m_rcPlace.top, m_rcPlace.bottom - 1);
    const LONG y = std::clamp(point.y, m_rcPlace.top, lowest) - m_rcPlace.top;
    return MAKELPARAM(point.x - m_rcPlace.left, y);
}

bool CNativeEdit::Press(UINT message, WPARAM keys, POINT point)
{
    const bool keepsSelection =
        std::exchange(m_bUntouched, false) && m_pOwner && m_pOwner->IsAutoSelAll();
    if (keepsSelection)
        return false;
    m_bPressed = true;
    SendMessage(message, keys, ToClient(point));
    return true;
}

void CNativeEdit::Drag(WPARAM keys, POINT point)
{
    if (m_bPressed)
        SendMessage(WM_MOUSEMOVE, keys, ToClient(point));
}

void CNativeEdit::Release(POINT point)
{
    if (std::exchange(m_bPressed, false))
        SendMessage(WM_LBUTTONUP, 0, ToClient(point));
}

// The parent window, which got the press, is owed the release.
void CNativeEdit::GiveBackMouse()
{
    if (!m_bPressed || ::GetCapture() == m_hWnd)
        return;
    m_bPressed = false;
    const HWND parent = ::GetParent(m_hWnd);
    POINT point{};
    ::GetCursorPos(&point);
    ::ScreenToClient(parent, &point);
    ::SendMessageW(parent, WM_LBUTTONUP, 0, MAKELPARAM(point.x, point.y));
}

LPCTSTR CNativeEdit::GetWindowClassName() const
{
    return L"DuiLib.NativeEdit";
}

LPCTSTR CNativeEdit::GetSuperClassName() const
{
    return WC_EDIT;
}

LRESULT CNativeEdit::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    const Use use(*this);
    const LRESULT result = Respond(message, wParam, lParam);
    if (m_nUses == 1 && !m_bEnded)
        AfterMessage(message);
    return result;
}

void CNativeEdit::OnFinalMessage(HWND window)
{
    const Use use(*this);
    m_bEnded = true;
    LetGoOfOwner(window);
}

LRESULT CNativeEdit::PassOn(UINT message, WPARAM wParam, LPARAM lParam)
{
    return m_bEnded ? 0 : CWindowWnd::HandleMessage(message, wParam, lParam);
}

LRESULT CNativeEdit::Respond(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case kReflected + WM_CTLCOLOREDIT:
    case kReflected + WM_CTLCOLORSTATIC:
        return m_pOwner ? GiveColours(reinterpret_cast<HDC>(wParam)) : 0;
    case kReflected + WM_COMMAND:
        if (HIWORD(wParam) == EN_CHANGE)
            NoteChange();
        return 0;
    case WM_KEYDOWN:
        m_bUntouched = false;
        return PressKey(wParam, lParam);
    case WM_CHAR:
        m_bUntouched = false;
        return IsNoText(wParam) ? 0 : PassOn(message, wParam, lParam);
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
        m_bUntouched = false;
        break;
    case WM_PASTE:
        if (!m_pOwner || !m_pOwner->IsNumberOnly())
            break;
        PasteDigits();
        return 0;
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL:
        return ::SendMessageW(::GetParent(m_hWnd), message, wParam, lParam);
    case WM_CONTEXTMENU:
        if (!m_pOwner || !m_pOwner->IsContextMenuUsed())
            break;
        m_pOwner->OpenOwnMenu();
        return 0;
    case WM_SETCURSOR:
        if (!m_pOwner || LOWORD(lParam) != HTCLIENT || m_pOwner->GetCursor() == 0)
            break;
        ::SetCursor(::LoadCursor(NULL, MAKEINTRESOURCE(m_pOwner->GetCursor())));
        return TRUE;
    case WM_PAINT: {
        const LRESULT result = PassOn(message, wParam, lParam);
        if (ShowsTip()) {
            const Quillet::WindowDc dc(m_hWnd);
            ::HideCaret(m_hWnd);
            PaintTip(dc.get());
            ::ShowCaret(m_hWnd);
        }
        return result;
    }
    case WM_PRINTCLIENT: {
        const LRESULT result = PassOn(message, wParam, lParam);
        if (ShowsTip())
            PaintTip(reinterpret_cast<HDC>(wParam));
        PrintCaret(reinterpret_cast<HDC>(wParam));
        return result;
    }
    default:
        break;
    }
    return PassOn(message, wParam, lParam);
}

// The owner learns of a change when the system's procedure is through with it.
void CNativeEdit::NoteChange()
{
    if (!m_bQuiet)
        m_bChanged = true;
    const bool isEmpty = ::GetWindowTextLengthW(m_hWnd) == 0;
    if (isEmpty != std::exchange(m_bWasEmpty, isEmpty))
        ::InvalidateRect(m_hWnd, nullptr, TRUE); // the hint comes or goes
}

// The system's procedure is through with the message: now handlers may do anything.
void CNativeEdit::AfterMessage(UINT message)
{
    GiveBackMouse();
    if (m_bEnded)
        return;
    ShowInLayeredWindow(message);

    // A handler may make the user's next change.
    while (m_pOwner && !m_bEnded && std::exchange(m_bChanged, false))
        m_pOwner->TakeNativeText();
}

// A key is told before it has its effect; that is lost when the handler ends the window.
LRESULT CNativeEdit::PressKey(WPARAM key, LPARAM lParam)
{
    if (IsOpen())
        m_pOwner->SendKey(key);
    if (!IsOpen() || m_bEnded)
        return 0;
    if (IsSelectAll(key)) {
        Select(0, -1);
        return 0;
    }
    return PassOn(WM_KEYDOWN, key, lParam);
}

LRESULT CNativeEdit::GiveColours(HDC dc)
{
    const COLORREF back = ToColorRef(m_pOwner->GetAdjustColor(m_pOwner->GetNativeEditBkColor()));
    ::SetTextColor(dc, ToColorRef(m_pOwner->NativeTextColor()));
    ::SetBkColor(dc, back);
    if (!m_pBrush || back != m_clrBrush) {
        m_pBrush.reset(::CreateSolidBrush(back));
        m_clrBrush = back;
    }
    return reinterpret_cast<LRESULT>(m_pBrush.get());
}

bool CNativeEdit::ShowsTip() const
{
    return m_pOwner && !m_bEnded && ::GetWindowTextLengthW(m_hWnd) == 0;
}

void CNativeEdit::PaintTip(HDC dc)
{
    RECT room{};
    ::GetClientRect(m_hWnd, &room);
    m_pOwner->DrawTip(dc, room);
}

// What a window with per-pixel transparency shows is the picture that its manager puts together.
void CNativeEdit::ShowInLayeredWindow(UINT message)
{
    if (!m_bLayered || !m_pOwner)
        return;
    const bool changesLook = message == WM_PAINT || message == WM_SETFOCUS ||
                             message == WM_KILLFOCUS || message == WM_CHAR ||
                             (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) ||
                             message == WM_KEYDOWN || message == EM_SETSEL;
    if (changesLook)
        m_pOwner->Invalidate();
}

void CNativeEdit::PrintCaret(HDC dc)
{
    POINT at{};
    if (!m_bLayered || !m_pOwner || ::GetFocus() != m_hWnd || !::GetCaretPos(&at))
        return;
    const RECT caret{at.x, at.y, at.x + 1, m_rcPlace.bottom - m_rcPlace.top};
    CRenderEngine::DrawColor(dc, caret, 0xFF000000 | m_pOwner->NativeTextColor());
}

void CNativeEdit::PasteDigits()
{
    const auto digits = DigitsOnClipboard(m_hWnd);
    if (digits && !m_pOwner->IsReadOnly())
        SendMessage(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(digits->c_str()));
}

} // namespace DuiLib
