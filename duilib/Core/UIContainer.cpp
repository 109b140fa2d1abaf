#include "Core/UIContainer.h"

#include "Control/UIScrollBar.h"
#include "Core/UIManager.h"
#include "win32/AttributeTable.h"
#include "win32/TextParse.h"

#include <algorithm>
#include <new>
#include <utility>

namespace DuiLib {

namespace {

using namespace Quillet::Text;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

bool CanScroll(const CScrollBarUI* bar)
{
    return bar != nullptr && bar->IsVisible() && bar->IsEnabled();
}

UINT ToChildAlign(LPCTSTR text, UINT otherwise)
{
    if (EqualsNoCase(text, L"left"))
        return DT_LEFT;
    if (EqualsNoCase(text, L"center"))
        return DT_CENTER;
    if (EqualsNoCase(text, L"right"))
        return DT_RIGHT;
    return otherwise;
}

UINT ToChildVAlign(LPCTSTR text, UINT otherwise)
{
    if (EqualsNoCase(text, L"top"))
        return DT_TOP;
    if (EqualsNoCase(text, L"vcenter"))
        return DT_VCENTER;
    if (EqualsNoCase(text, L"bottom"))
        return DT_BOTTOM;
    return otherwise;
}

// What FindControl looks for by name, except the container itself.
struct NamedChild {
    LPCTSTR name;
    const CControlUI* container;
};

CControlUI* CALLBACK MatchName(CControlUI* control, LPVOID data)
{
    const auto& wanted = *static_cast<const NamedChild*>(data);
    if (control == wanted.container)
        return nullptr;
    return EqualsNoCase(control->GetName().GetData(), wanted.name) ? control : nullptr;
}

CControlUI* CALLBACK Forget(CControlUI* control, LPVOID data)
{
    auto& manager = *static_cast<CPaintManagerUI*>(data);
    if (auto* container = static_cast<CContainerUI*>(control->GetInterface(DUI_CTR_CONTAINER))) {
        if (container->GetVerticalScrollBar() != nullptr)
            manager.ReapObjects(container->GetVerticalScrollBar());
        if (container->GetHorizontalScrollBar() != nullptr)
            manager.ReapObjects(container->GetHorizontalScrollBar());
    }
    manager.ReapObjects(control);
    return nullptr;
}

// Nulls at the end, all of them or none.
void MakeRoom(CStdPtrArray& items, int count)
{
    const int before = items.GetSize();
    try {
        for (int i = 0; i < count; ++i)
            items.Add(nullptr);
    } catch (const std::bad_alloc&) {
        while (items.GetSize() > before)
            items.Remove(items.GetSize() - 1);
        throw;
    }
}

// Ends a control's part in the window.
void Release(CControlUI& control, CPaintManagerUI* manager)
{
    if (manager != nullptr)
        control.FindControl(&Forget, manager, UIFIND_ALL);
    control.SetManager(nullptr, nullptr, false);
}

} // namespace

CContainerUI::ChildWalk::ChildWalk(CContainerUI& container, int first)
    : m_pContainer(&container), m_pOuter(container.m_pWalks), m_nNext(first)
{
    container.m_pWalks = this;
}

CContainerUI::ChildWalk::~ChildWalk()
{
    if (m_pContainer != nullptr)
        m_pContainer->m_pWalks = m_pOuter;
}

CControlUI* CContainerUI::ChildWalk::Next()
{
    if (m_pContainer == nullptr || m_nNext >= m_pContainer->m_items.GetSize())
        return nullptr;
    return static_cast<CControlUI*>(m_pContainer->m_items[m_nNext++]);
}

CControlUI* CContainerUI::CreateControl()
{
    return new CContainerUI;
}

CContainerUI::CContainerUI()
    : m_rcInset{},
      m_iChildPadding(0),
      m_iChildAlign(DT_LEFT),
      m_iChildVAlign(DT_TOP),
      m_bAutoDestroy(true),
      m_bDelayedDestroy(true),
      m_bMouseChildEnabled(true),
      m_nScrollStepSize(0),
      m_bFixedScrollbar(false),
      m_bShowScrollbar(true),
      m_pVerticalScrollBar(nullptr),
      m_pHorizontalScrollBar(nullptr)
{
}

CContainerUI::~CContainerUI()
{
    m_bDelayedDestroy = false;
    // The first one goes first; nothing is copied, because an end needs no memory.
    std::reverse(m_items.GetData(), m_items.GetData() + m_items.GetSize());
    while (!m_items.IsEmpty()) {
        const int last = m_items.GetSize() - 1;
        CControlUI* const child = GetItemAt(last);
        m_items.Remove(last);
        LetGo(child);
    }
    for (ChildWalk* walk = m_pWalks; walk != nullptr; walk = walk->m_pOuter)
        walk->m_pContainer = nullptr;
    delete std::exchange(m_pVerticalScrollBar, nullptr);
    delete std::exchange(m_pHorizontalScrollBar, nullptr);
}

CControlUI* CContainerUI::GetItemAt(int index) const
{
    return static_cast<CControlUI*>(m_items.GetAt(index));
}

int CContainerUI::GetItemIndex(CControlUI* control) const
{
    return m_items.Find(control);
}

bool CContainerUI::SetItemIndex(CControlUI* control, int index)
{
    const int old = m_items.Find(control);
    if (old < 0 || index < 0 || index >= m_items.GetSize())
        return false;
    if (old == index)
        return true;
    m_items.Remove(old);
    WalkRemoved(old);
    ChildRemoved(old, control);
    m_items.InsertAt(index, control);
    WalkInserted(index);
    ChildInserted(index);
    NeedUpdate();
    return true;
}

int CContainerUI::GetCount() const
{
    return m_items.GetSize();
}

bool CContainerUI::Add(CControlUI* control)
{
    return Insert(control, m_items.GetSize());
}

bool CContainerUI::AddAt(CControlUI* control, int index)
{
    return Insert(control, index);
}

bool CContainerUI::Insert(CControlUI* control, int index)
{
    if (control == nullptr || control == this || index < 0 || index > m_items.GetSize())
        return false;
    // Only a child can have this parent already, so nothing is searched for a new one.
    if (control->GetParent() == this && m_items.Find(control) >= 0)
        return false;
    if (!m_items.InsertAt(index, control))
        return false;
    WalkInserted(index);

    const ChildWalk watch(*this);
    bool isCounted = false;
    try {
        ChildInserted(index);
        isCounted = true;
        if (m_pManager != nullptr)
            m_pManager->InitControls(control, this);
        else
            control->SetManager(nullptr, this, false);
    } catch (const std::bad_alloc&) {
        // It is the caller's again.
        const int place = watch.IsAlive() ? m_items.Find(control) : -1;
        if (place >= 0) {
            m_items.Remove(place);
            WalkRemoved(place);
            if (isCounted)
                ChildRemoved(place, control);
            Release(*control, m_pManager);
        }
        throw;
    }
    if (!watch.IsAlive())
        return true;
    if (IsVisible())
        NeedUpdate();
    else if (m_items.GetAt(index) == control || m_items.Find(control) >= 0)
        control->SetInternVisible(false);
    return true;
}

bool CContainerUI::Remove(CControlUI* control)
{
    return control != nullptr && Detach(m_items.Find(control));
}

bool CContainerUI::RemoveAt(int index)
{
    CControlUI* const control = GetItemAt(index);
    return control != nullptr && Remove(control);
}

// Ends the child at an index, which need not be searched for.

bool CContainerUI::Detach(int index)
{
    auto* const control = static_cast<CControlUI*>(m_items.GetAt(index));
    if (control == nullptr)
        return false;
    m_items.Remove(index);
    WalkRemoved(index);
    ChildRemoved(index, control);
    NeedUpdate();
    LetGo(control);
    return true;
}

void CContainerUI::RemoveAll()
{
    if (m_items.IsEmpty())
        return;
    // Handlers of the children see the container empty, and may fill it again.
    const CStdPtrArray removed = m_items;
    m_items.Empty();
    for (ChildWalk* walk = m_pWalks; walk != nullptr; walk = walk->m_pOuter)
        walk->m_nNext = 0;
    ChildrenRemoved();
    NeedUpdate();

    const ChildWalk watch(*this);
    const bool destroy = m_bAutoDestroy;
    for (int i = 0; i < removed.GetSize(); ++i) {
        auto* const control = static_cast<CControlUI*>(removed[i]);
        if (watch.IsAlive())
            LetGo(control);
        else if (destroy)
            delete control;
    }
}

void CContainerUI::InsertChildren(const CStdPtrArray& children, int index)
{
    const int count = children.GetSize();
    if (count == 0 || index < 0 || index > m_items.GetSize())
        return;
    const int following = m_items.GetSize() - index;
    MakeRoom(m_items, count);
    LPVOID* const place = m_items.GetData() + index;
    std::move_backward(place, place + following, place + following + count);
    for (int i = 0; i < count; ++i) {
        place[i] = children[i];
        WalkInserted(index);
    }
    bool areCounted = false;
    ChildWalk walk(*this, index);
    try {
        RangeInserted(index, count);
        areCounted = true;

        // A handler that runs for one of them may take others away again, or bring more.
        int left = count;
        for (CControlUI* child = walk.Next(); child != nullptr && left > 0; child = walk.Next()) {
            if (child->GetParent() == this)
                continue;
            --left;
            if (m_pManager != nullptr)
                m_pManager->InitControls(child, this);
            else
                child->SetManager(nullptr, this, false);
        }
    } catch (const std::bad_alloc&) {
        // They are the caller's again.
        if (walk.IsAlive() && m_items.GetAt(index) == children[0]) {
            for (int i = 0; i < count; ++i) {
                m_items.Remove(index);
                WalkRemoved(index);
                Release(*static_cast<CControlUI*>(children[i]), m_pManager);
            }
            if (areCounted)
                RangeRemoved(index, children);
        }
        throw;
    }
    if (!walk.IsAlive())
        return;
    if (IsVisible())
        NeedUpdate();
    else
        HandVisibilityDown();
}

void CContainerUI::RemoveChildren(int first, int count)
{
    if (first < 0 || count <= 0 || count > m_items.GetSize() - first)
        return;
    CStdPtrArray removed(count);
    for (int i = 0; i < count; ++i)
        removed.Add(m_items[first + i]);
    LPVOID* const place = m_items.GetData() + first;
    std::move(place + count, m_items.GetData() + m_items.GetSize(), place);
    for (int i = 0; i < count; ++i) {
        m_items.Remove(m_items.GetSize() - 1);
        WalkRemoved(first);
    }
    RangeRemoved(first, removed);
    NeedUpdate();

    const ChildWalk watch(*this);
    const bool destroy = m_bAutoDestroy;
    for (int i = 0; i < removed.GetSize(); ++i) {
        auto* const control = static_cast<CControlUI*>(removed[i]);
        if (watch.IsAlive())
            LetGo(control);
        else if (destroy)
            delete control;
    }
}

void CContainerUI::RangeInserted(int first, int count)
{
    for (int i = 0; i < count; ++i)
        ChildInserted(first + i);
}

void CContainerUI::RangeRemoved(int first, const CStdPtrArray& children)
{
    for (int i = 0; i < children.GetSize(); ++i)
        ChildRemoved(first, static_cast<CControlUI*>(children[i]));
}

void CContainerUI::ChildInserted(int) {}

void CContainerUI::ChildRemoved(int, CControlUI*) {}

void CContainerUI::ChildrenRemoved() {}

void CContainerUI::WalkInserted(int index)
{
    for (ChildWalk* walk = m_pWalks; walk != nullptr; walk = walk->m_pOuter) {
        if (index < walk->m_nNext)
            ++walk->m_nNext;
    }
}

void CContainerUI::WalkRemoved(int index)
{
    for (ChildWalk* walk = m_pWalks; walk != nullptr; walk = walk->m_pOuter) {
        if (index < walk->m_nNext)
            --walk->m_nNext;
    }
}

// Ends the life of a control that is no child any more, or its part in the window.
void CContainerUI::LetGo(CControlUI* control)
{
    if (m_bAutoDestroy) {
        if (m_bDelayedDestroy && m_pManager != nullptr)
            m_pManager->AddDelayedCleanup(control);
        else
            delete control;
        return;
    }
    Release(*control, m_pManager);
    if (!IsVisible())
        control->SetInternVisible(true);
}

RECT CContainerUI::GetInset() const
{
    return ScaleLength(m_rcInset);
}

void CContainerUI::SetInset(RECT inset)
{
    m_rcInset = ClampLength(inset);
    NeedUpdate();
}

int CContainerUI::GetChildPadding() const
{
    return ScaleLength(m_iChildPadding);
}

void CContainerUI::SetChildPadding(int padding)
{
    m_iChildPadding = ClampLength(padding);
    NeedUpdate();
}

UINT CContainerUI::GetChildAlign() const
{
    return m_iChildAlign;
}

void CContainerUI::SetChildAlign(UINT align)
{
    m_iChildAlign = align;
    NeedUpdate();
}

UINT CContainerUI::GetChildVAlign() const
{
    return m_iChildVAlign;
}

void CContainerUI::SetChildVAlign(UINT align)
{
    m_iChildVAlign = align;
    NeedUpdate();
}

bool CContainerUI::IsAutoDestroy() const
{
    return m_bAutoDestroy;
}

void CContainerUI::SetAutoDestroy(bool destroy)
{
    m_bAutoDestroy = destroy;
}

bool CContainerUI::IsDelayedDestroy() const
{
    return m_bDelayedDestroy;
}

void CContainerUI::SetDelayedDestroy(bool delayed)
{
    m_bDelayedDestroy = delayed;
}

bool CContainerUI::IsMouseChildEnabled() const
{
    return m_bMouseChildEnabled;
}

void CContainerUI::SetMouseChildEnabled(bool enable)
{
    m_bMouseChildEnabled = enable;
}

int CContainerUI::FindSelectable(int index, bool forward) const
{
    const int count = GetCount();
    if (count == 0)
        return -1;
    const auto isSelectable = [this](int at) {
        CControlUI* const item = GetItemAt(at);
        return item->GetInterface(DUI_CTR_LISTITEM) != nullptr && item->IsVisible() &&
               item->IsEnabled();
    };
    index = std::clamp(index, 0, count - 1);
    for (int at = index; at >= 0 && at < count; at += forward ? 1 : -1) {
        if (isSelectable(at))
            return at;
    }
    return -1;
}

bool CContainerUI::SetSubControlText(LPCTSTR name, LPCTSTR text)
{
    CControlUI* const control = FindSubControl(name);
    if (control != nullptr)
        control->SetText(text);
    return control != nullptr;
}

bool CContainerUI::SetSubControlFixedHeight(LPCTSTR name, int height)
{
    CControlUI* const control = FindSubControl(name);
    if (control != nullptr)
        control->SetFixedHeight(height);
    return control != nullptr;
}

bool CContainerUI::SetSubControlFixedWdith(LPCTSTR name, int width)
{
    CControlUI* const control = FindSubControl(name);
    if (control != nullptr)
        control->SetFixedWidth(width);
    return control != nullptr;
}

bool CContainerUI::SetSubControlUserData(LPCTSTR name, LPCTSTR data)
{
    CControlUI* const control = FindSubControl(name);
    if (control != nullptr)
        control->SetUserData(data);
    return control != nullptr;
}

CDuiString CContainerUI::GetSubControlText(LPCTSTR name)
{
    const CControlUI* const control = FindSubControl(name);
    return control != nullptr ? control->GetText() : CDuiString();
}

int CContainerUI::GetSubControlFixedHeight(LPCTSTR name)
{
    const CControlUI* const control = FindSubControl(name);
    return control != nullptr ? control->GetFixedHeight() : -1;
}

int CContainerUI::GetSubControlFixedWdith(LPCTSTR name)
{
    const CControlUI* const control = FindSubControl(name);
    return control != nullptr ? control->GetFixedWidth() : -1;
}

const CDuiString CContainerUI::GetSubControlUserData(LPCTSTR name)
{
    CControlUI* const control = FindSubControl(name);
    return control != nullptr ? control->GetUserData() : CDuiString();
}

CControlUI* CContainerUI::FindSubControl(LPCTSTR name)
{
    if (name == nullptr || *name == L'\0')
        return nullptr;
    NamedChild wanted{name, this};
    return FindControl(&MatchName, &wanted, UIFIND_ALL);
}

LPCTSTR CContainerUI::GetClass() const
{
    return L"ContainerUI";
}

LPVOID CContainerUI::GetInterface(LPCTSTR name)
{
    if (EqualsNoCase(View(name), DUI_CTR_CONTAINER))
        return this;
    if (EqualsNoCase(View(name), L"IContainer"))
        return static_cast<IContainerUI*>(this);
    return CControlUI::GetInterface(name);
}

void CContainerUI::DoEvent(TEventUI& event)
{
    const bool vertical = CanScroll(m_pVerticalScrollBar);
    const bool horizontal = CanScroll(m_pHorizontalScrollBar);
    if (!vertical && !horizontal) {
        CControlUI::DoEvent(event);
        return;
    }

    if (event.Type == UIEVENT_SCROLLWHEEL) {
        const bool up = LOWORD(event.wParam) == SB_LINEUP;
        if (vertical)
            up ? LineUp() : LineDown();
        else
            up ? LineLeft() : LineRight();
        return;
    }
    if (event.Type == UIEVENT_KEYDOWN && IsKeyboardEnabled() && ScrollByKey(event.chKey))
        return;
    CControlUI::DoEvent(event);
}

void CContainerUI::SetVisible(bool visible)
{
    if (m_bVisible == visible)
        return;
    CControlUI::SetVisible(visible);
    HandVisibilityDown();
}

void CContainerUI::SetInternVisible(bool visible)
{
    CControlUI::SetInternVisible(visible);
    HandVisibilityDown();
}

void CContainerUI::HandVisibilityDown()
{
    for (ChildWalk walk(*this); CControlUI* const child = walk.Next();)
        child->SetInternVisible(IsVisible());
}

void CContainerUI::SetEnabled(bool enable)
{
    CControlUI::SetEnabled(enable);
    if (m_pVerticalScrollBar != nullptr)
        m_pVerticalScrollBar->SetEnabled(enable);
    if (m_pHorizontalScrollBar != nullptr)
        m_pHorizontalScrollBar->SetEnabled(enable);
    for (ChildWalk walk(*this); CControlUI* const child = walk.Next();)
        child->SetEnabled(enable);
}

void CContainerUI::SetMouseEnabled(bool enable)
{
    if (m_pVerticalScrollBar != nullptr)
        m_pVerticalScrollBar->SetMouseEnabled(enable);
    if (m_pHorizontalScrollBar != nullptr)
        m_pHorizontalScrollBar->SetMouseEnabled(enable);
    CControlUI::SetMouseEnabled(enable);
}

RECT CContainerUI::GetClientPos() const
{
    return GetChildArea();
}

void CContainerUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    using Self = CContainerUI;
    static constexpr auto kTable = MakeAttributeTable<NameMatch::NoCase, Self>({
        {L"inset", AttributeKind::Rectangle,
         [](Self& self, LPCTSTR v) { self.SetInset(ToRect(v)); }},
        {L"mousechild", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetMouseChildEnabled(IsTrue(v)); }},
        {L"vscrollbar", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) {
             self.EnableScrollBar(IsTrue(v), self.GetHorizontalScrollBar() != nullptr);
         }},
        {L"hscrollbar", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) {
             self.EnableScrollBar(self.GetVerticalScrollBar() != nullptr, IsTrue(v));
         }},
        {L"vscrollbarstyle", AttributeKind::Text,
         [](Self& self, LPCTSTR v) {
             self.m_sVerticalScrollBarStyle = v;
             self.EnableScrollBar(true, self.GetHorizontalScrollBar() != nullptr);
             self.ApplyBarStyle(Direction::Vertical);
         }},
        {L"hscrollbarstyle", AttributeKind::Text,
         [](Self& self, LPCTSTR v) {
             self.m_sHorizontalScrollBarStyle = v;
             self.EnableScrollBar(self.GetVerticalScrollBar() != nullptr, true);
             self.ApplyBarStyle(Direction::Horizontal);
         }},
        {L"childpadding", AttributeKind::Number,
         [](Self& self, LPCTSTR v) { self.SetChildPadding(ToInt(v)); }},
        {L"childalign", AttributeKind::Choice,
         [](Self& self, LPCTSTR v) { self.SetChildAlign(ToChildAlign(v, self.GetChildAlign())); }},
        {L"childvalign", AttributeKind::Choice,
         [](Self& self, LPCTSTR v) {
             self.SetChildVAlign(ToChildVAlign(v, self.GetChildVAlign()));
         }},
        {L"scrollstepsize", AttributeKind::Number,
         [](Self& self, LPCTSTR v) { self.SetScrollStepSize(ToInt(v)); }},
        {L"fixedscrollbar", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetFixedScrollbar(IsTrue(v)); }},
        {L"showscrollbar", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetShowScrollbar(IsTrue(v)); }},
    });
    if (!kTable.Apply(*this, name, value))
        CControlUI::SetAttribute(name, value);
}

void CContainerUI::SetManager(CPaintManagerUI* manager, CControlUI* parent, bool init)
{
    ChildWalk walk(*this);
    while (CControlUI* const child = walk.Next())
        child->SetManager(manager, this, init);
    if (!walk.IsAlive())
        return;
    if (m_pVerticalScrollBar != nullptr)
        m_pVerticalScrollBar->SetManager(manager, this, init);
    if (m_pHorizontalScrollBar != nullptr)
        m_pHorizontalScrollBar->SetManager(manager, this, init);
    CControlUI::SetManager(manager, parent, init);
}

} // namespace DuiLib
