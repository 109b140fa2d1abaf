#include "Control/UIMenu.h"

#include "Control/ListRow.h"
#include "Control/PopupGlyphs.h"
#include "Core/UIDefine.h"
#include "Core/UIManager.h"
#include "Core/UIRender.h"
#include "win32/AttributeTable.h"
#include "win32/TextParse.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace DuiLib {

namespace {

using namespace Quillet::Text;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

using Row = ListRow<CListContainerElementUI>;

constexpr UINT kHoverTimer = 0x4D45; // the mouse rests on the element
constexpr LONG kUnlimited = 0xFFFFF; // device pixels; no text is wider
constexpr int kTextEnd = 12;         // design pixels, right of the text
constexpr DWORD kMarkColor = 0xFF5A6472;
constexpr int kMarkThickness = 2;   // design pixels
constexpr int kArrowHalfHeight = 4; // design pixels

UINT HoverDelay()
{
    UINT delay = 400;
    ::SystemParametersInfoW(SPI_GETMENUSHOWDELAY, 0, &delay, 0);
    return std::max<UINT>(delay, 1);
}

MenuItemInfo* FindInfo(LPCTSTR name)
{
    const CStdStringPtrMap* const states =
        CMenuWnd::GetGlobalContextMenuObserver().GetMenuCheckInfo();
    if (states == nullptr || name == nullptr || *name == L'\0')
        return nullptr;
    return static_cast<MenuItemInfo*>(states->Find(name));
}

CMenuElementUI* AsElement(CControlUI* control)
{
    return control != nullptr
               ? static_cast<CMenuElementUI*>(control->GetInterface(DUI_CTR_MENUELEMENT))
               : nullptr;
}

template <std::size_t size>
void CopyCut(TCHAR (&target)[size], LPCTSTR text)
{
    const auto length = std::min(std::wstring_view(text).size(), size - 1);
    std::copy_n(text, length, target);
    target[length] = L'\0';
}

} // namespace

CControlUI* CMenuElementUI::CreateControl()
{
    return new CMenuElementUI;
}

CMenuElementUI::CMenuElementUI()
    : m_pWindow(nullptr),
      m_szIcon{ITEM_DEFAULT_ICON_SIZE, ITEM_DEFAULT_ICON_SIZE},
      m_bLine(false),
      m_dwLineColor(DEFAULT_LINE_COLOR),
      m_rcLinePadding{DEFAULT_LINE_LEFT_INSET, 0, DEFAULT_LINE_RIGHT_INSET, 0},
      m_bCheckItem(false),
      m_bChecked(false),
      m_bCheckWanted(false),
      m_bShowExpland(true),
      m_bInitialised(false)
{
    m_cxyFixed.cy = ITEM_DEFAULT_HEIGHT;
    SetChildVAlign(DT_VCENTER);
}

CMenuElementUI::~CMenuElementUI()
{
    CloseSubMenu();
    for (CMenuElementUI* const element : m_subElements)
        delete element;
}

CMenuWnd* CMenuElementUI::GetMenuWnd()
{
    return m_pWindow;
}

void CMenuElementUI::CreateMenuWnd()
{
    if (m_pWindow != nullptr || !HasSubMenu() || OwnerWindow() == nullptr)
        return;
    auto& observer = CMenuWnd::GetGlobalContextMenuObserver();
    observer.RBroadcast({2, OwnerWindow()->GetHWND()});
    m_pWindow = new CMenuWnd;
    m_pWindow->Init(this, STRINGorID(L""), POINT{}, observer.GetManager(), nullptr,
                    OwnerWindow()->m_dwAlignment);
}

// The elements of an open sub-menu come back at once.
void CMenuElementUI::CloseSubMenu()
{
    if (m_pWindow == nullptr)
        return;
    CMenuWnd* const window = m_pWindow;
    window->ReturnElements();
    window->Close();
}

CMenuUI* CMenuElementUI::OwnerMenu() const
{
    return m_pOwner != nullptr && m_pOwner->GetListType() == LT_MENU
               ? static_cast<CMenuUI*>(m_pOwner)
               : nullptr;
}

CMenuWnd* CMenuElementUI::OwnerWindow() const
{
    const CMenuUI* const menu = OwnerMenu();
    return menu != nullptr ? menu->m_pWindow : nullptr;
}

bool CMenuElementUI::HasSubMenu() const
{
    return !m_subElements.empty();
}

void CMenuElementUI::SetLineType()
{
    m_bLine = true;
    if (m_cxyFixed.cy == ITEM_DEFAULT_HEIGHT)
        SetFixedHeight(DEFAULT_LINE_HEIGHT);
    SetMouseChildEnabled(false);
    SetMouseEnabled(false);
    SetEnabled(false);
}

void CMenuElementUI::SetLineColor(DWORD color)
{
    m_dwLineColor = color;
    Invalidate();
}

DWORD CMenuElementUI::GetLineColor() const
{
    return m_dwLineColor;
}

void CMenuElementUI::SetLinePadding(RECT padding)
{
    m_rcLinePadding = ClampLength(padding);
    Invalidate();
}

RECT CMenuElementUI::GetLinePadding() const
{
    return ScaleLength(m_rcLinePadding);
}

void CMenuElementUI::SetIcon(LPCTSTR image)
{
    m_sIcon = image;
    Invalidate();
}

void CMenuElementUI::SetIconSize(LONG width, LONG height)
{
    m_szIcon = ClampLength(SIZE{width, height});
    Invalidate();
}

SIZE CMenuElementUI::GetIconSize()
{
    return ScaleLength(m_szIcon);
}

void CMenuElementUI::SetChecked(bool checked)
{
    m_bChecked = checked;
    SetItemInfo(m_sName, checked);
    Invalidate();
}

bool CMenuElementUI::GetChecked() const
{
    const MenuItemInfo* const shared = FindInfo(m_sName);
    return shared != nullptr ? shared->bChecked : m_bChecked;
}

void CMenuElementUI::SetCheckItem(bool checkItem)
{
    m_bCheckItem = checkItem;
    Invalidate();
}

bool CMenuElementUI::GetCheckItem() const
{
    return m_bCheckItem;
}

void CMenuElementUI::SetShowExplandIcon(bool show)
{
    m_bShowExpland = show;
    Invalidate();
}

MenuItemInfo* CMenuElementUI::GetItemInfo(LPCTSTR name)
{
    return FindInfo(name);
}

MenuItemInfo* CMenuElementUI::SetItemInfo(LPCTSTR name, bool checked)
{
    return CMenuWnd::SetMenuItemInfo(name, checked);
}

CControlUI* CMenuElementUI::GetItemAt(int index) const
{
    if (index < m_items.GetSize())
        return CListContainerElementUI::GetItemAt(index);
    const auto place = static_cast<std::size_t>(index - m_items.GetSize());
    return place < m_subElements.size() ? m_subElements[place] : nullptr;
}

int CMenuElementUI::GetItemIndex(CControlUI* control) const
{
    const auto found = std::ranges::find(m_subElements, control);
    return found == m_subElements.end()
               ? CListContainerElementUI::GetItemIndex(control)
               : m_items.GetSize() + static_cast<int>(found - m_subElements.begin());
}

bool CMenuElementUI::SetItemIndex(CControlUI* control, int index)
{
    const auto found = std::ranges::find(m_subElements, control);
    if (found == m_subElements.end())
        return CListContainerElementUI::SetItemIndex(control, index);
    const int place = index - m_items.GetSize();
    if (place < 0 || place >= static_cast<int>(m_subElements.size()))
        return false;
    CloseSubMenu();
    CMenuElementUI* const element = *found;
    m_subElements.erase(found);
    m_subElements.insert(m_subElements.begin() + place, element);
    return true;
}

int CMenuElementUI::GetCount() const
{
    return m_items.GetSize() + static_cast<int>(m_subElements.size());
}

bool CMenuElementUI::Add(CControlUI* control)
{
    return AddAt(control, AsElement(control) != nullptr ? GetCount() : m_items.GetSize());
}

bool CMenuElementUI::AddAt(CControlUI* control, int index)
{
    CMenuElementUI* const element = AsElement(control);
    if (element == nullptr)
        return CListContainerElementUI::AddAt(control, std::min(index, m_items.GetSize()));
    if (element == this || index < 0 || index > GetCount() || GetItemIndex(element) >= 0)
        return false;

    CloseSubMenu();
    m_subElements.insert(m_subElements.begin() + std::max(index - m_items.GetSize(), 0), element);
    if (m_pManager != nullptr)
        m_pManager->InitControls(element, this);
    else
        element->SetManager(nullptr, this, false);
    NeedParentUpdate();
    return true;
}

bool CMenuElementUI::Remove(CControlUI* control)
{
    const auto found = std::ranges::find(m_subElements, control);
    if (found == m_subElements.end())
        return CListContainerElementUI::Remove(control);
    CloseSubMenu();
    CMenuElementUI* const element = *found;
    m_subElements.erase(found);
    NeedParentUpdate();
    LetGoOf(element);
    return true;
}

bool CMenuElementUI::RemoveAt(int index)
{
    CControlUI* const control = GetItemAt(index);
    return control != nullptr && Remove(control);
}

void CMenuElementUI::RemoveAll()
{
    CloseSubMenu();
    const RowWitness witness(static_cast<CListContainerElementUI*>(this));
    const auto elements = std::exchange(m_subElements, {});
    const bool destroy = m_bAutoDestroy;
    for (CMenuElementUI* const element : elements) {
        if (witness.RowLives())
            LetGoOf(element);
        else if (destroy)
            delete element;
    }
    if (witness.RowLives())
        CListContainerElementUI::RemoveAll();
}

void CMenuElementUI::LetGoOf(CMenuElementUI* element)
{
    if (!m_bAutoDestroy)
        element->SetManager(nullptr, nullptr, false);
    else if (m_bDelayedDestroy && m_pManager != nullptr)
        m_pManager->AddDelayedCleanup(element);
    else
        delete element;
}

LPCTSTR CMenuElementUI::GetClass() const
{
    return L"MenuElementUI";
}

LPVOID CMenuElementUI::GetInterface(LPCTSTR name)
{
    if (EqualsNoCase(View(name), DUI_CTR_MENUELEMENT))
        return static_cast<CMenuElementUI*>(this);
    return CListContainerElementUI::GetInterface(name);
}

bool CMenuElementUI::Activate()
{
    // One that was taken out of its menu may be about to die.
    if (!CHorizontalLayoutUI::Activate() || m_pParent == nullptr || OwnerWindow() == nullptr)
        return false;
    if (HasSubMenu())
        CreateMenuWnd();
    else
        Choose();
    return true;
}

// An element is initialised once, however often its sub-menu opens.
void CMenuElementUI::SetManager(CPaintManagerUI* manager, CControlUI* parent, bool init)
{
    if (manager != m_pManager || parent != m_pParent)
        CloseSubMenu();
    const RowWitness witness(static_cast<CListContainerElementUI*>(this));
    const bool first = init && parent != nullptr && !m_bInitialised;
    m_bInitialised = m_bInitialised || first;
    for (std::size_t i = 0; witness.RowLives() && i < m_subElements.size(); ++i)
        m_subElements[i]->SetManager(manager, this, init);
    if (witness.RowLives())
        CListContainerElementUI::SetManager(manager, parent, first);
}

// The skin's check state is the one to begin with.
void CMenuElementUI::DoInit()
{
    CListContainerElementUI::DoInit();
    if (m_bCheckWanted && FindInfo(m_sName) == nullptr)
        SetItemInfo(m_sName, m_bChecked);
}

CControlUI* CMenuElementUI::FindControl(FINDCONTROLPROC procedure, LPVOID data, UINT flags)
{
    constexpr UINT kShownOnly =
        UIFIND_VISIBLE | UIFIND_ENABLED | UIFIND_HITTEST | UIFIND_UPDATETEST;
    const RowWitness witness(static_cast<CListContainerElementUI*>(this));
    CControlUI* const found = CListContainerElementUI::FindControl(procedure, data, flags);
    if (found != nullptr || (flags & kShownOnly) != 0)
        return found;
    for (std::size_t i = 0; witness.RowLives() && i < m_subElements.size(); ++i) {
        if (CControlUI* const below = m_subElements[i]->FindControl(procedure, data, flags))
            return below;
    }
    return nullptr;
}

void CMenuElementUI::DoEvent(TEventUI& event)
{
    const bool isMouse = event.Type > UIEVENT__MOUSEBEGIN && event.Type < UIEVENT__MOUSEEND;
    if (OwnerMenu() == nullptr || (isMouse && !IsMouseEnabled())) {
        CListContainerElementUI::DoEvent(event);
        return;
    }
    switch (event.Type) {
    case UIEVENT_MOUSEENTER:
        Enter();
        return;
    case UIEVENT_MOUSELEAVE:
        Leave();
        return;
    case UIEVENT_BUTTONDOWN:
    case UIEVENT_DBLCLICK:
    case UIEVENT_MOUSEMOVE:
        return;
    case UIEVENT_BUTTONUP: {
        if (!IsEnabled() || m_pManager == nullptr || !::PtInRect(&GetPos(), event.ptMouse))
            return;
        const RowWitness witness(static_cast<CListContainerElementUI*>(this));
        m_pManager->SendNotify(this, DUI_MSGTYPE_ITEMCLICK);
        if (witness.RowLives())
            Activate();
        return;
    }
    case UIEVENT_TIMER:
        if (event.wParam == kHoverTimer) {
            Rest();
            return;
        }
        break;
    default:
        break;
    }
    CListContainerElementUI::DoEvent(event);
}

// The row under the mouse is the one that the keyboard goes on from.
void CMenuElementUI::Enter()
{
    if (m_bLine)
        return;
    SetTimer(kHoverTimer, HoverDelay());
    if (!IsEnabled())
        return;
    m_uButtonState |= UISTATE_HOT;
    Invalidate();
    OwnerMenu()->SelectItem(GetIndex());
}

void CMenuElementUI::Leave()
{
    KillTimer(kHoverTimer);
    m_uButtonState &= ~static_cast<UINT>(UISTATE_HOT);
    Invalidate();
    if (m_bSelected && m_pWindow == nullptr)
        Select(false);
}

// Opens the sub-menu of the row on which the mouse rests, and closes those beside it.
void CMenuElementUI::Rest()
{
    KillTimer(kHoverTimer);
    const CMenuWnd* const window = m_pWindow != nullptr ? m_pWindow : OwnerWindow();
    if (window == nullptr)
        return;
    CMenuWnd::GetGlobalContextMenuObserver().RBroadcast({2, window->GetHWND()});
    if (IsEnabled())
        CreateMenuWnd();
}

// The command is on its way before the menu closes, so that the element lives when it arrives.
void CMenuElementUI::Choose()
{
    auto& observer = CMenuWnd::GetGlobalContextMenuObserver();
    SetChecked(!GetChecked());
    if (CPaintManagerUI* const main = observer.GetManager())
        PostCommand(*main);
    observer.RBroadcast({1, nullptr});
}

bool CMenuElementUI::PostCommand(CPaintManagerUI& main)
{
    auto command = std::make_unique<MenuCmd>();
    CopyCut(command->szName, GetName());
    CopyCut(command->szUserData, GetUserData());
    CopyCut(command->szText, GetText());
    command->bChecked = GetChecked();
    if (!::PostMessageW(main.GetPaintWindow(), WM_MENUCLICK,
                        reinterpret_cast<WPARAM>(command.get()), reinterpret_cast<LPARAM>(this)))
        return false;
    command.release(); // the main window deletes it
    return true;
}

void CMenuElementUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    using Self = CMenuElementUI;
    static constexpr auto kTable = MakeAttributeTable<NameMatch::NoCase, Self>({
        {L"icon", AttributeKind::Image, [](Self& self, LPCTSTR v) { self.SetIcon(v); }},
        {L"iconsize", AttributeKind::Size,
         [](Self& self, LPCTSTR v) {
             const SIZE size = ToSize(v);
             self.SetIconSize(size.cx, size.cy);
         }},
        {L"checkitem", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetCheckItem(IsTrue(v)); }},
        {L"ischeck", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) {
             if (self.m_bInitialised) {
                 self.SetChecked(IsTrue(v));
                 return;
             }
             self.m_bChecked = IsTrue(v);
             self.m_bCheckWanted = true;
         }},
        {L"linetype", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) {
             if (IsTrue(v))
                 self.SetLineType();
         }},
        {L"expland", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetShowExplandIcon(IsTrue(v)); }},
        {L"linecolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetLineColor(ToColour(v)); }},
        {L"linepadding", AttributeKind::Rectangle,
         [](Self& self, LPCTSTR v) { self.SetLinePadding(ToRect(v)); }},
        {L"height", AttributeKind::Number,
         [](Self& self, LPCTSTR v) { self.SetFixedHeight(ToInt(v)); }},
    });
    if (!kTable.Apply(*this, name, value))
        CListContainerElementUI::SetAttribute(name, value);
}

// Room for the icon, the text and the arrow, and at least the usual width.
SIZE CMenuElementUI::EstimateSize(SIZE available)
{
    SIZE size = GetFixedSize();
    if (size.cx > 0 || m_bLine || m_pManager == nullptr)
        return size;

    const TListInfoUI* const info = Row::Info(*this);
    const RECT room = TextRect({0, 0, 0, 0});
    LONG width = room.left - room.right;
    const CDuiString text = GetText();
    if (info != nullptr && !text.IsEmpty()) {
        RECT extent{0, 0, kUnlimited, kUnlimited};
        const UINT style = (info->uTextStyle &
                            ~(DT_VCENTER | DT_BOTTOM | DT_CENTER | DT_RIGHT | DT_END_ELLIPSIS)) |
                           DT_CALCRECT;
        int links = 0;
        if (info->bShowHtml)
            CRenderEngine::DrawHtmlText(m_pManager->GetPaintDC(), m_pManager, extent, text, 0,
                                        nullptr, nullptr, links, info->nFont, style);
        else
            CRenderEngine::DrawText(m_pManager->GetPaintDC(), m_pManager, extent, text, 0,
                                    info->nFont, style);
        width += extent.right - extent.left;
    } else {
        width = 0;
    }

    // Controls stand beside the text.
    for (int i = 0; i < m_items.GetSize(); ++i) {
        auto& control = *static_cast<CControlUI*>(m_items.GetAt(i));
        const RECT padding = control.GetPadding();
        if (control.IsVisible() && !control.IsFloat())
            width += control.EstimateSize(available).cx + padding.left + padding.right;
    }
    size.cx = std::max<LONG>(width, ScaleLength(ITEM_DEFAULT_WIDTH));
    return size;
}

// Where the text of an element goes that has that rectangle.
RECT CMenuElementUI::TextRect(const RECT& item) const
{
    const TListInfoUI* const info = Row::Info(*this);
    const RECT padding = info != nullptr ? ScaleLength(info->rcTextPadding) : RECT{};
    RECT room{item.left + padding.left, item.top + padding.top, item.right - padding.right,
              item.bottom - padding.bottom};
    if (padding.left == 0)
        room.left += ScaleLength(ITEM_DEFAULT_ICON_WIDTH);
    room.right -= ScaleLength(HasSubMenu() && m_bShowExpland
                                  ? static_cast<int>(ITEM_DEFAULT_EXPLAND_ICON_WIDTH)
                                  : kTextEnd);
    return room;
}

// A row has one highlight, whether the mouse, the keyboard or its open sub-menu gives it.
void CMenuElementUI::DrawItemBk(HDC dc, const RECT& item)
{
    if (m_bLine)
        return;
    const UINT state = m_uButtonState;
    const bool selected = std::exchange(m_bSelected, false);
    if (IsEnabled() && (selected || m_pWindow != nullptr))
        m_uButtonState |= UISTATE_HOT;
    CListContainerElementUI::DrawItemBk(dc, item);
    m_uButtonState = state;
    m_bSelected = selected;
}

void CMenuElementUI::DrawItemText(HDC dc, const RECT& item)
{
    const TListInfoUI* const info = Row::Info(*this);
    if (info == nullptr)
        return;
    const UINT state = m_uButtonState;
    const bool selected = std::exchange(m_bSelected, false);
    if (IsEnabled() && (selected || m_pWindow != nullptr))
        m_uButtonState |= UISTATE_HOT;
    const DWORD color = Row::TextColor(*this, *info);
    m_uButtonState = state;
    m_bSelected = selected;
    if (IsResourceText())
        Row::DrawText(*this, dc, TextRect(item), GetText(), color, *info);
    else
        Row::DrawText(*this, dc, TextRect(item), m_sText, color, *info);
}

void CMenuElementUI::PaintText(HDC dc)
{
    if (m_bLine) {
        DrawLine(dc, m_rcItem);
        return;
    }
    DrawItemText(dc, m_rcItem);
    DrawIcon(dc, m_rcItem);
    if (HasSubMenu() && m_bShowExpland)
        DrawExpland(dc, m_rcItem);
}

void CMenuElementUI::DrawIcon(HDC dc, const RECT& item)
{
    if (m_bCheckItem ? !GetChecked() : m_sIcon.IsEmpty())
        return;
    const SIZE size = GetIconSize();
    const LONG column = ScaleLength(ITEM_DEFAULT_ICON_WIDTH);
    RECT place{item.left + (column - size.cx) / 2,
               item.top + (item.bottom - item.top - size.cy) / 2, 0, 0};
    place.right = place.left + size.cx;
    place.bottom = place.top + size.cy;
    if (!m_sIcon.IsEmpty()) {
        CRenderEngine::DrawImageString(dc, m_pManager, place, m_rcPaint, m_sIcon, nullptr,
                                       m_instance);
        return;
    }
    ::InflateRect(&place, -ScaleLength(3), -ScaleLength(3));
    DrawTick(dc, place, ScaleLength(kMarkThickness),
             GetAdjustColor(IsEnabled() ? kMarkColor : m_pManager->GetDefaultDisabledColor()));
}

void CMenuElementUI::DrawExpland(HDC dc, const RECT& item)
{
    const RECT place{item.right - ScaleLength(ITEM_DEFAULT_EXPLAND_ICON_WIDTH), item.top,
                     item.right, item.bottom};
    DrawRightArrow(
        dc, place, ScaleLength(kArrowHalfHeight), ScaleLength(kMarkThickness),
        GetAdjustColor(IsEnabled() ? kMarkColor : m_pManager->GetDefaultDisabledColor()));
}

void CMenuElementUI::DrawLine(HDC dc, const RECT& item)
{
    const RECT padding = GetLinePadding();
    const LONG middle = (item.top + padding.top + item.bottom - padding.bottom) / 2;
    const RECT line{item.left + padding.left, middle, item.right - padding.right,
                    middle + ScaleLength(1)};
    if (line.right > line.left)
        CRenderEngine::DrawColor(dc, line, GetAdjustColor(m_dwLineColor));
}

} // namespace DuiLib
