#include "Core/UIControl.h"

#include "Core/UIManager.h"
#include "Core/UIResourceManager.h"
#include "win32/TextParse.h"

#include <algorithm>
#include <cmath>
#include <cwchar>

namespace DuiLib {

namespace {

using Quillet::Text::EqualsNoCase;
using Quillet::Text::View;

constexpr int kLargestLength = 1'000'000;   // design pixels
constexpr LONG kFarthestEdge = 100'000'000; // device pixels
constexpr double kLargestFraction = 100.0;  // of the container
constexpr int kDefaultMaxSize = 9999;       // design pixels
constexpr int kDefaultToolTipWidth = 300;   // design pixels

RECT Tidy(RECT rect)
{
    rect.left = std::clamp(rect.left, -kFarthestEdge, kFarthestEdge);
    rect.top = std::clamp(rect.top, -kFarthestEdge, kFarthestEdge);
    rect.right = std::clamp(rect.right, rect.left, kFarthestEdge);
    rect.bottom = std::clamp(rect.bottom, rect.top, kFarthestEdge);
    return rect;
}

double Tidy(double fraction)
{
    return std::isfinite(fraction) ? std::clamp(fraction, -kLargestFraction, kLargestFraction) : 0;
}

bool Equal(const SIZE& first, const SIZE& second)
{
    return first.cx == second.cx && first.cy == second.cy;
}

// The text with every `mark` replaced; most texts have none.
void AssignReplacing(CDuiString& target, LPCTSTR text, LPCTSTR mark, LPCTSTR replacement)
{
    target = text;
    if (std::wcsstr(target, mark) != nullptr)
        target.Replace(mark, replacement);
}

} // namespace

CControlUI* CControlUI::CreateControl()
{
    return new CControlUI;
}

CControlUI::CControlUI()
    : m_pManager(nullptr),
      m_pParent(nullptr),
      m_bUpdateNeeded(false),
      m_bMenuUsed(false),
      m_rcItem{},
      m_rcPadding{},
      m_cXY{},
      m_cxyFixed{},
      m_cxyMin{},
      m_cxyMax{kDefaultMaxSize, kDefaultMaxSize},
      m_bVisible(true),
      m_bInternVisible(true),
      m_bEnabled(true),
      m_bMouseEnabled(true),
      m_bKeyboardEnabled(true),
      m_bFocused(false),
      m_bFloat(false),
      m_piFloatPercent{},
      m_uFloatAlign(0),
      m_bSetPos(false),
      m_bRichEvent(false),
      m_bDragEnabled(false),
      m_bDropEnabled(false),
      m_bResourceText(false),
      m_chShortcut(0),
      m_pTag(0),
      m_dwBackColor(0),
      m_dwBackColor2(0),
      m_dwBackColor3(0),
      m_dwForeColor(0),
      m_dwBorderColor(0),
      m_dwFocusBorderColor(0),
      m_bColorHSL(false),
      m_nBorderSize(0),
      m_nBorderStyle(PS_SOLID),
      m_nTooltipWidth(kDefaultToolTipWidth),
      m_wCursor(0),
      m_cxyBorderRound{},
      m_rcPaint{},
      m_rcBorderSize{},
      m_instance(nullptr),
      m_pFormerManager(nullptr),
      m_bCopied(false)
{
}

CControlUI::CControlUI(const CControlUI& other) : CControlUI()
{
    m_pManager = other.m_pManager;
    m_pParent = other.m_pParent;
    m_bCopied = true;
    CopyFrom(other);
}

CControlUI& CControlUI::operator=(const CControlUI& other)
{
    if (this != &other)
        CopyFrom(other);
    return *this;
}

CControlUI::~CControlUI()
{
    OnDestroy(this);
    RemoveAllCustomAttribute();
    // A manager that was taken away may still have timers of this control. Like that of a copy, it
    // may be gone.
    const auto lives = [](CPaintManagerUI* manager) {
        return CPaintManagerUI::GetPaintManagers()->Find(manager) >= 0;
    };
    if (m_pFormerManager != nullptr && lives(m_pFormerManager))
        m_pFormerManager->ReapObjects(this);
    if (m_pManager != nullptr && (!m_bCopied || lives(m_pManager)))
        m_pManager->ReapObjects(this);
}

void CControlUI::CopyFrom(const CControlUI& other)
{
    OnInit = other.OnInit;
    OnDestroy = other.OnDestroy;
    OnSize = other.OnSize;
    OnEvent = other.OnEvent;
    OnNotify = other.OnNotify;
    m_sVirtualWnd = other.m_sVirtualWnd;
    m_sName = other.m_sName;
    m_bUpdateNeeded = other.m_bUpdateNeeded;
    m_bMenuUsed = other.m_bMenuUsed;
    m_rcItem = other.m_rcItem;
    m_rcPadding = other.m_rcPadding;
    m_cXY = other.m_cXY;
    m_cxyFixed = other.m_cxyFixed;
    m_cxyMin = other.m_cxyMin;
    m_cxyMax = other.m_cxyMax;
    m_bVisible = other.m_bVisible;
    m_bInternVisible = other.m_bInternVisible;
    m_bEnabled = other.m_bEnabled;
    m_bMouseEnabled = other.m_bMouseEnabled;
    m_bKeyboardEnabled = other.m_bKeyboardEnabled;
    m_bFocused = other.m_bFocused;
    m_bFloat = other.m_bFloat;
    m_piFloatPercent = other.m_piFloatPercent;
    m_uFloatAlign = other.m_uFloatAlign;
    m_bRichEvent = other.m_bRichEvent;
    m_bDragEnabled = other.m_bDragEnabled;
    m_bDropEnabled = other.m_bDropEnabled;
    m_bResourceText = other.m_bResourceText;
    m_sText = other.m_sText;
    m_sToolTip = other.m_sToolTip;
    m_chShortcut = other.m_chShortcut;
    m_sUserData = other.m_sUserData;
    m_pTag = other.m_pTag;
    m_sGradient = other.m_sGradient;
    m_dwBackColor = other.m_dwBackColor;
    m_dwBackColor2 = other.m_dwBackColor2;
    m_dwBackColor3 = other.m_dwBackColor3;
    m_dwForeColor = other.m_dwForeColor;
    m_sBkImage = other.m_sBkImage;
    m_sForeImage = other.m_sForeImage;
    m_dwBorderColor = other.m_dwBorderColor;
    m_dwFocusBorderColor = other.m_dwFocusBorderColor;
    m_bColorHSL = other.m_bColorHSL;
    m_nBorderSize = other.m_nBorderSize;
    m_nBorderStyle = other.m_nBorderStyle;
    m_nTooltipWidth = other.m_nTooltipWidth;
    m_wCursor = other.m_wCursor;
    m_cxyBorderRound = other.m_cxyBorderRound;
    m_rcPaint = other.m_rcPaint;
    m_rcBorderSize = other.m_rcBorderSize;
    m_instance = other.m_instance;
    m_mCustomAttrHash = other.m_mCustomAttrHash;
}

CDuiString CControlUI::GetName() const
{
    return m_sName;
}

void CControlUI::SetName(LPCTSTR name)
{
    m_sName = name;
}

LPCTSTR CControlUI::GetClass() const
{
    return L"ControlUI";
}

LPVOID CControlUI::GetInterface(LPCTSTR name)
{
    return EqualsNoCase(View(name), DUI_CTR_CONTROL) ? this : nullptr;
}

UINT CControlUI::GetControlFlags() const
{
    return 0;
}

bool CControlUI::Activate()
{
    return IsVisible() && IsEnabled();
}

CPaintManagerUI* CControlUI::GetManager() const
{
    return m_pManager;
}

void CControlUI::SetManager(CPaintManagerUI* manager, CControlUI* parent, bool init)
{
    if (m_pManager != nullptr && m_pManager != manager)
        m_pFormerManager = m_pManager;
    m_pManager = manager;
    m_pParent = parent;
    if (init && parent != nullptr)
        Init();
}

CControlUI* CControlUI::GetParent() const
{
    return m_pParent;
}

CDuiString CControlUI::GetText() const
{
    return m_bResourceText ? CResourceManager::GetInstance()->GetText(m_sText) : m_sText;
}

void CControlUI::SetText(LPCTSTR text)
{
    CDuiString converted;
    AssignReplacing(converted, text, L"{\\n}", L"\n");
    if (m_sText == converted)
        return;
    m_sText = std::move(converted);
    Invalidate();
}

bool CControlUI::IsResourceText() const
{
    return m_bResourceText;
}

void CControlUI::SetResourceText(bool resource)
{
    SetLook(m_bResourceText, resource);
}

bool CControlUI::IsDragEnabled() const
{
    return m_bDragEnabled;
}

void CControlUI::SetDragEnable(bool enable)
{
    m_bDragEnabled = enable;
}

bool CControlUI::IsDropEnabled() const
{
    return m_bDropEnabled;
}

void CControlUI::SetDropEnable(bool enable)
{
    m_bDropEnabled = enable;
}

bool CControlUI::IsRichEvent() const
{
    return m_bRichEvent;
}

void CControlUI::SetRichEvent(bool enable)
{
    m_bRichEvent = enable;
}

RECT CControlUI::GetRelativePos() const
{
    const CControlUI* parent = GetParent();
    if (parent == nullptr)
        return {};
    RECT rect = m_rcItem;
    const RECT& origin = parent->GetPos();
    ::OffsetRect(&rect, -origin.left, -origin.top);
    return rect;
}

RECT CControlUI::GetClientPos() const
{
    return m_rcItem;
}

const RECT& CControlUI::GetPos() const
{
    return m_rcItem;
}

void CControlUI::SetPos(RECT rect, bool invalidate)
{
    const RECT old = m_rcItem;
    m_rcItem = Tidy(rect);
    m_bUpdateNeeded = false;
    if (m_pManager == nullptr)
        return;

    if (!m_bSetPos && OnSize) {
        m_bSetPos = true;
        OnSize(this);
        m_bSetPos = false;
    }
    if (!invalidate || m_pManager == nullptr || !IsVisible())
        return;
    RECT changed;
    ::UnionRect(&changed, &old, &m_rcItem);
    if (CutByParents(changed))
        m_pManager->Invalidate(changed);
}

void CControlUI::Move(SIZE offset, bool invalidate)
{
    m_cXY.cx = ClampLength(m_cXY.cx + ClampLength(offset.cx));
    m_cXY.cy = ClampLength(m_cXY.cy + ClampLength(offset.cy));
    NeedParentUpdate();
    if (invalidate)
        Invalidate();
}

int CControlUI::GetWidth() const
{
    return m_rcItem.right - m_rcItem.left;
}

int CControlUI::GetHeight() const
{
    return m_rcItem.bottom - m_rcItem.top;
}

int CControlUI::GetX() const
{
    return m_rcItem.left;
}

int CControlUI::GetY() const
{
    return m_rcItem.top;
}

RECT CControlUI::GetPadding() const
{
    return ScaleLength(m_rcPadding);
}

void CControlUI::SetPadding(RECT padding)
{
    padding = ClampLength(padding);
    if (::EqualRect(&m_rcPadding, &padding))
        return;
    m_rcPadding = padding;
    NeedParentUpdate();
}

SIZE CControlUI::GetFixedXY() const
{
    return ScaleLength(m_cXY);
}

void CControlUI::SetFixedXY(SIZE position)
{
    position = ClampLength(position);
    if (Equal(m_cXY, position))
        return;
    m_cXY = position;
    NeedParentUpdate();
}

SIZE CControlUI::GetFixedSize() const
{
    return ScaleLength(m_cxyFixed);
}

int CControlUI::GetFixedWidth() const
{
    return ScaleLength(m_cxyFixed.cx);
}

void CControlUI::SetFixedWidth(int width)
{
    SetLength(m_cxyFixed.cx, width);
}

int CControlUI::GetFixedHeight() const
{
    return ScaleLength(m_cxyFixed.cy);
}

void CControlUI::SetFixedHeight(int height)
{
    SetLength(m_cxyFixed.cy, height);
}

int CControlUI::GetMinWidth() const
{
    return ScaleLength(m_cxyMin.cx);
}

void CControlUI::SetMinWidth(int width)
{
    SetLength(m_cxyMin.cx, width);
}

int CControlUI::GetMaxWidth() const
{
    return ScaleLength(m_cxyMax.cx);
}

void CControlUI::SetMaxWidth(int width)
{
    SetLength(m_cxyMax.cx, width);
}

int CControlUI::GetMinHeight() const
{
    return ScaleLength(m_cxyMin.cy);
}

void CControlUI::SetMinHeight(int height)
{
    SetLength(m_cxyMin.cy, height);
}

int CControlUI::GetMaxHeight() const
{
    return ScaleLength(m_cxyMax.cy);
}

void CControlUI::SetMaxHeight(int height)
{
    SetLength(m_cxyMax.cy, height);
}

TPercentInfo CControlUI::GetFloatPercent() const
{
    return m_piFloatPercent;
}

void CControlUI::SetFloatPercent(TPercentInfo percent)
{
    m_piFloatPercent = {Tidy(percent.left), Tidy(percent.top), Tidy(percent.right),
                        Tidy(percent.bottom)};
    NeedParentUpdate();
}

void CControlUI::SetFloatAlign(UINT align)
{
    m_uFloatAlign = align;
    NeedParentUpdate();
}

UINT CControlUI::GetFloatAlign() const
{
    return m_uFloatAlign;
}

CDuiString CControlUI::GetToolTip() const
{
    return m_sToolTip;
}

void CControlUI::SetToolTip(LPCTSTR text)
{
    AssignReplacing(m_sToolTip, text, L"<n>", L"\r\n");
}

void CControlUI::SetToolTipWidth(int width)
{
    m_nTooltipWidth = ClampLength(width);
}

int CControlUI::GetToolTipWidth(void)
{
    return ScaleLength(m_nTooltipWidth);
}

WORD CControlUI::GetCursor()
{
    return m_wCursor;
}

void CControlUI::SetCursor(WORD cursor)
{
    m_wCursor = cursor;
}

TCHAR CControlUI::GetShortcut() const
{
    return m_chShortcut;
}

void CControlUI::SetShortcut(TCHAR shortcut)
{
    m_chShortcut = shortcut;
}

bool CControlUI::IsContextMenuUsed() const
{
    return m_bMenuUsed;
}

void CControlUI::SetContextMenuUsed(bool use)
{
    m_bMenuUsed = use;
}

const CDuiString& CControlUI::GetUserData()
{
    return m_sUserData;
}

void CControlUI::SetUserData(LPCTSTR data)
{
    m_sUserData = data;
}

UINT_PTR CControlUI::GetTag() const
{
    return m_pTag;
}

void CControlUI::SetTag(UINT_PTR tag)
{
    m_pTag = tag;
}

bool CControlUI::IsVisible() const
{
    return m_bVisible && m_bInternVisible;
}

void CControlUI::SetVisible(bool visible)
{
    if (m_bVisible == visible)
        return;
    const bool wasVisible = IsVisible();
    m_bVisible = visible;
    if (!visible)
        DropFocus();
    if (IsVisible() != wasVisible)
        NeedParentUpdate();
}

void CControlUI::SetInternVisible(bool visible)
{
    m_bInternVisible = visible;
    if (!visible)
        DropFocus();
}

bool CControlUI::IsEnabled() const
{
    return m_bEnabled;
}

void CControlUI::SetEnabled(bool enable)
{
    SetLook(m_bEnabled, enable);
}

bool CControlUI::IsMouseEnabled() const
{
    return m_bMouseEnabled;
}

void CControlUI::SetMouseEnabled(bool enable)
{
    m_bMouseEnabled = enable;
}

bool CControlUI::IsKeyboardEnabled() const
{
    return m_bKeyboardEnabled;
}

void CControlUI::SetKeyboardEnabled(bool enable)
{
    m_bKeyboardEnabled = enable;
}

bool CControlUI::IsFocused() const
{
    return m_bFocused;
}

void CControlUI::SetFocus()
{
    if (m_pManager != nullptr)
        m_pManager->SetFocus(this);
}

bool CControlUI::IsFloat() const
{
    return m_bFloat;
}

void CControlUI::SetFloat(bool isFloat)
{
    if (m_bFloat == isFloat)
        return;
    m_bFloat = isFloat;
    NeedParentUpdate();
}

CControlUI* CControlUI::FindControl(FINDCONTROLPROC procedure, LPVOID data, UINT flags)
{
    if ((flags & UIFIND_VISIBLE) != 0 && !IsVisible())
        return nullptr;
    if ((flags & UIFIND_ENABLED) != 0 && !IsEnabled())
        return nullptr;
    if ((flags & UIFIND_HITTEST) != 0 &&
        (!IsMouseEnabled() || !::PtInRect(&m_rcItem, *static_cast<POINT*>(data))))
        return nullptr;
    if ((flags & UIFIND_UPDATETEST) != 0 && !IsUpdateNeeded())
        return nullptr;
    return procedure(this, data);
}

void CControlUI::Init()
{
    DoInit();
    OnInit(this);
}

void CControlUI::DoInit() {}

void CControlUI::Event(TEventUI& event)
{
    if (OnEvent(&event))
        DoEvent(event);
}

void CControlUI::DoEvent(TEventUI& event)
{
    switch (event.Type) {
    case UIEVENT_SETCURSOR: {
        const WORD cursor = GetCursor();
        ::SetCursor(::LoadCursorW(nullptr, MAKEINTRESOURCEW(cursor != 0 ? cursor : DUI_ARROW)));
        return;
    }
    case UIEVENT_SETFOCUS:
    case UIEVENT_KILLFOCUS:
        m_bFocused = event.Type == UIEVENT_SETFOCUS;
        Invalidate();
        return;
    case UIEVENT_TIMER:
        if (m_pManager != nullptr)
            m_pManager->SendNotify(this, DUI_MSGTYPE_TIMER, event.wParam, event.lParam);
        return;
    case UIEVENT_CONTEXTMENU:
        if (!IsContextMenuUsed())
            break;
        if (m_pManager != nullptr)
            m_pManager->SendNotify(this, DUI_MSGTYPE_MENU, event.wParam, event.lParam);
        return;
    default:
        break;
    }
    if (m_pParent != nullptr)
        m_pParent->DoEvent(event);
}

SIZE CControlUI::EstimateSize(SIZE)
{
    return ScaleLength(m_cxyFixed);
}

void CControlUI::setInstance(HINSTANCE instance)
{
    m_instance = instance;
}

bool CControlUI::SetTimer(UINT id, UINT milliseconds)
{
    return m_pManager != nullptr && m_pManager->SetTimer(this, id, milliseconds);
}

void CControlUI::KillTimer(UINT id)
{
    if (m_pManager != nullptr)
        m_pManager->KillTimer(this, id);
}

LPCTSTR CControlUI::GetGradient()
{
    return m_sGradient;
}

void CControlUI::SetGradient(LPCTSTR gradient)
{
    SetLook(m_sGradient, gradient);
}

DWORD CControlUI::GetBkColor() const
{
    return m_dwBackColor;
}

void CControlUI::SetBkColor(DWORD color)
{
    SetLook(m_dwBackColor, color);
}

DWORD CControlUI::GetBkColor2() const
{
    return m_dwBackColor2;
}

void CControlUI::SetBkColor2(DWORD color)
{
    SetLook(m_dwBackColor2, color);
}

DWORD CControlUI::GetBkColor3() const
{
    return m_dwBackColor3;
}

void CControlUI::SetBkColor3(DWORD color)
{
    SetLook(m_dwBackColor3, color);
}

DWORD CControlUI::GetForeColor() const
{
    return m_dwForeColor;
}

void CControlUI::SetForeColor(DWORD color)
{
    SetLook(m_dwForeColor, color);
}

LPCTSTR CControlUI::GetBkImage()
{
    return m_sBkImage;
}

void CControlUI::SetBkImage(LPCTSTR image)
{
    SetLook(m_sBkImage, image);
}

LPCTSTR CControlUI::GetForeImage() const
{
    return m_sForeImage;
}

void CControlUI::SetForeImage(LPCTSTR image)
{
    SetLook(m_sForeImage, image);
}

DWORD CControlUI::GetFocusBorderColor() const
{
    return m_dwFocusBorderColor;
}

void CControlUI::SetFocusBorderColor(DWORD color)
{
    SetLook(m_dwFocusBorderColor, color);
}

DWORD CControlUI::GetBorderColor() const
{
    return m_dwBorderColor;
}

void CControlUI::SetBorderColor(DWORD color)
{
    SetLook(m_dwBorderColor, color);
}

bool CControlUI::IsColorHSL() const
{
    return m_bColorHSL;
}

void CControlUI::SetColorHSL(bool enable)
{
    SetLook(m_bColorHSL, enable);
}

SIZE CControlUI::GetBorderRound() const
{
    return ScaleLength(m_cxyBorderRound);
}

void CControlUI::SetBorderRound(SIZE round)
{
    round = ClampLength(round);
    if (Equal(m_cxyBorderRound, round))
        return;
    m_cxyBorderRound = round;
    Invalidate();
}

int CControlUI::GetBorderSize() const
{
    return ScaleLength(m_nBorderSize);
}

void CControlUI::SetBorderSize(int size)
{
    SetLook(m_nBorderSize, ClampLength(size));
}

RECT CControlUI::GetBorderRectSize() const
{
    return {GetLeftBorderSize(), GetTopBorderSize(), GetRightBorderSize(), GetBottomBorderSize()};
}

void CControlUI::SetBorderSize(RECT sizes)
{
    sizes = ClampLength(sizes);
    if (::EqualRect(&m_rcBorderSize, &sizes))
        return;
    m_rcBorderSize = sizes;
    Invalidate();
}

int CControlUI::GetLeftBorderSize() const
{
    return ScaleLength(m_rcBorderSize.left);
}

void CControlUI::SetLeftBorderSize(int size)
{
    SetLook<LONG>(m_rcBorderSize.left, ClampLength(size));
}

int CControlUI::GetTopBorderSize() const
{
    return ScaleLength(m_rcBorderSize.top);
}

void CControlUI::SetTopBorderSize(int size)
{
    SetLook<LONG>(m_rcBorderSize.top, ClampLength(size));
}

int CControlUI::GetRightBorderSize() const
{
    return ScaleLength(m_rcBorderSize.right);
}

void CControlUI::SetRightBorderSize(int size)
{
    SetLook<LONG>(m_rcBorderSize.right, ClampLength(size));
}

int CControlUI::GetBottomBorderSize() const
{
    return ScaleLength(m_rcBorderSize.bottom);
}

void CControlUI::SetBottomBorderSize(int size)
{
    SetLook<LONG>(m_rcBorderSize.bottom, ClampLength(size));
}

int CControlUI::GetBorderStyle() const
{
    return m_nBorderStyle;
}

void CControlUI::SetBorderStyle(int style)
{
    SetLook(m_nBorderStyle, style);
}

void CControlUI::Invalidate()
{
    if (m_pManager == nullptr || !IsVisible())
        return;
    RECT rect = m_rcItem;
    if (CutByParents(rect))
        m_pManager->Invalidate(rect);
}

bool CControlUI::IsUpdateNeeded() const
{
    return m_bUpdateNeeded;
}

void CControlUI::NeedUpdate()
{
    if (!IsVisible())
        return;
    // Both flags together mean that the rectangle was invalidated and still waits for its paint.
    if (m_bUpdateNeeded && m_pManager != nullptr && m_pManager->IsUpdateNeeded())
        return;
    m_bUpdateNeeded = true;
    Invalidate();
    if (m_pManager != nullptr)
        m_pManager->NeedUpdate();
}

void CControlUI::NeedParentUpdate()
{
    CControlUI* parent = GetParent();
    CControlUI* const outdated = parent != nullptr ? parent : this;
    outdated->NeedUpdate();
    outdated->Invalidate();
    if (m_pManager != nullptr)
        m_pManager->NeedUpdate();
}

void CControlUI::SetVirtualWnd(LPCTSTR name)
{
    m_sVirtualWnd = name;
}

CDuiString CControlUI::GetVirtualWnd() const
{
    const CControlUI* control = this;
    while (control->m_sVirtualWnd.IsEmpty() && control->m_pParent != nullptr)
        control = control->m_pParent;
    return control->m_sVirtualWnd;
}

int CControlUI::ScaleLength(int length) const
{
    return m_pManager != nullptr ? m_pManager->GetDPIObj()->Scale(length) : length;
}

SIZE CControlUI::ScaleLength(SIZE size) const
{
    return m_pManager != nullptr ? m_pManager->GetDPIObj()->Scale(size) : size;
}

RECT CControlUI::ScaleLength(RECT rect) const
{
    return m_pManager != nullptr ? m_pManager->GetDPIObj()->Scale(rect) : rect;
}

int CControlUI::ClampLength(int length)
{
    return std::clamp(length, -kLargestLength, kLargestLength);
}

SIZE CControlUI::ClampLength(SIZE size)
{
    return {ClampLength(size.cx), ClampLength(size.cy)};
}

RECT CControlUI::ClampLength(RECT rect)
{
    return {ClampLength(rect.left), ClampLength(rect.top), ClampLength(rect.right),
            ClampLength(rect.bottom)};
}

template <class Value>
void CControlUI::SetLook(Value& member, Value value)
{
    if (member == value)
        return;
    member = value;
    Invalidate();
}

void CControlUI::SetLook(CDuiString& member, LPCTSTR value)
{
    if (member == value)
        return;
    member = value;
    Invalidate();
}

void CControlUI::SetLength(LONG& member, int length)
{
    if (length < 0)
        return;
    length = ClampLength(length);
    if (member == length)
        return;
    member = length;
    NeedParentUpdate();
}

void CControlUI::DropFocus()
{
    m_bFocused = false;
    if (m_pManager != nullptr && m_pManager->GetFocus() == this)
        m_pManager->SetFocus(nullptr);
}

// False when nothing of the rectangle can be seen.
bool CControlUI::CutByParents(RECT& rect) const
{
    if (::IsRectEmpty(&rect))
        return false;
    for (const CControlUI* parent = GetParent(); parent != nullptr; parent = parent->GetParent()) {
        if (!parent->IsVisible() || !::IntersectRect(&rect, &rect, &parent->GetPos()))
            return false;
    }
    return true;
}

CControlUI::CustomAttributes::CustomAttributes(const CustomAttributes& other)
    : m_pEntries(other.m_pEntries != nullptr ? std::make_unique<Entries>(*other.m_pEntries)
                                             : nullptr)
{
}

CControlUI::CustomAttributes& CControlUI::CustomAttributes::operator=(const CustomAttributes& other)
{
    m_pEntries =
        other.m_pEntries != nullptr ? std::make_unique<Entries>(*other.m_pEntries) : nullptr;
    return *this;
}

CControlUI::CustomAttributes::Entries& CControlUI::CustomAttributes::Use()
{
    if (m_pEntries == nullptr)
        m_pEntries = std::make_unique<Entries>();
    return *m_pEntries;
}

} // namespace DuiLib
