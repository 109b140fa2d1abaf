#include "Core/UIControl.h"

#include "Core/UIManager.h"
#include "win32/Handles.h"
#include "win32/TextParse.h"

#include <algorithm>

namespace DuiLib {

namespace {

using Quillet::Text::EqualsNoCase;
using Quillet::Text::View;

constexpr int kLargestLength = 1'000'000;   // design pixels
constexpr LONG kFarthestEdge = 100'000'000; // device pixels
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
        m_pFormerManager->ForgetDying(this);
    if (m_pManager != nullptr && (!m_bCopied || lives(m_pManager)))
        m_pManager->ForgetDying(this);
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
        const Quillet::AtScopeEnd told([this] { m_bSetPos = false; });
        OnSize(this);
    }
    if (!invalidate || m_pManager == nullptr || !IsVisible())
        return;
    RECT changed;
    ::UnionRect(&changed, &old, &m_rcItem);
    if (CutByParents(changed))
        m_pManager->Invalidate(changed);
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

bool CControlUI::IsFocused() const
{
    return m_bFocused;
}

void CControlUI::SetFocus()
{
    if (m_pManager != nullptr)
        m_pManager->SetFocus(this);
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

bool CControlUI::SetTimer(UINT id, UINT milliseconds)
{
    return m_pManager != nullptr && m_pManager->SetTimer(this, id, milliseconds);
}

void CControlUI::KillTimer(UINT id)
{
    if (m_pManager != nullptr)
        m_pManager->KillTimer(this, id);
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

void CControlUI::ChildNeedsLayout(CControlUI*) {}

void CControlUI::NeedParentUpdate()
{
    CControlUI* parent = GetParent();
    CControlUI* const outdated = parent != nullptr ? parent : this;
    outdated->ChildNeedsLayout(this);
    outdated->NeedUpdate();
    outdated->Invalidate();
    if (m_pManager != nullptr)
        m_pManager->NeedUpdate();
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
