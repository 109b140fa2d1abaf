#include "Core/Diagnostics.h"
#include "Core/ManagerState.h"

#include <algorithm>
#include <new>

namespace DuiLib {

namespace {

using Quillet::Text::EqualsNoCase;
using Quillet::Text::View;

bool IsBelow(const CControlUI* control, const CControlUI* ancestor)
{
    for (; control; control = control->GetParent()) {
        if (control == ancestor)
            return true;
    }
    return false;
}

CControlUI* CALLBACK MatchPoint(CControlUI* control, LPVOID data)
{
    const POINT point = *static_cast<const POINT*>(data);
    return ::PtInRect(&control->GetPos(), point) ? control : nullptr;
}

CControlUI* CALLBACK MatchName(CControlUI* control, LPVOID data)
{
    const CDuiString name = control->GetName();
    return EqualsNoCase(View(name), *static_cast<const std::wstring_view*>(data)) ? control
                                                                                  : nullptr;
}

// Controls of one class, or of all.
struct ClassSearch {
    std::wstring_view wanted;
    int skip = 0;                // matches to leave out
    CStdPtrArray* all = nullptr; // where to put every match

    static CControlUI* CALLBACK Match(CControlUI* control, LPVOID data)
    {
        auto& self = *static_cast<ClassSearch*>(data);
        if (self.wanted != L"*" && View(control->GetClass()) != self.wanted)
            return nullptr;
        if (self.all) {
            self.all->Add(control);
            return nullptr;
        }
        return self.skip-- == 0 ? control : nullptr;
    }
};

void Clear(CControlUI*& place, const CControlUI* control)
{
    if (place == control)
        place = nullptr;
}

} // namespace

CControlUI* CPaintManagerUI::GetRoot() const
{
    return m_pState->root;
}

bool CPaintManagerUI::AttachDialog(CControlUI* root)
{
    auto& state = *m_pState;
    if (!root)
        return false;
    const State::Watch watch(state, root);
    SetFocus(nullptr);
    if (!watch.Lives())
        return false;
    state.HideTip();
    if (CControlUI* const old = state.root; old != root) {
        state.root = root;
        if (old)
            AddDelayedCleanup(old);
    }
    state.rootIsOfEarlierWindow = false;
    state.mouseLeave.Clear();
    state.hover = state.pressed = state.rightClicked = state.keyReceiver = nullptr;
    state.layoutNeeded = true;
    state.firstLayout = true;
    state.focusOwed = true;
    state.owedFocus = nullptr;
    if (!InitControls(root) || !watch.Lives())
        return false;
    root->NeedUpdate();
    Invalidate();
    return true;
}

bool CPaintManagerUI::InitControls(CControlUI* control, CControlUI* parent)
{
    auto& state = *m_pState;
    if (!control)
        return false;
    const State::Watch watch(state, control);
    control->SetManager(this, parent ? parent : control->GetParent(), true);
    if (!watch.Lives())
        return false;
    const auto registerName = [](CControlUI* named, LPVOID data) -> CControlUI* {
        static_cast<State*>(data)->RegisterName(named);
        return nullptr;
    };
    control->FindControl(registerName, &state, UIFIND_ALL | UIFIND_ME_FIRST);
    return true;
}

// A control stands in the table under one name; a later one takes the entry.
void CPaintManagerUI::State::RegisterName(CControlUI* control)
{
    const CDuiString text = control->GetName();
    const std::wstring_view wanted = View(text);
    if (const auto known = registeredNames.find(control);
        known != registeredNames.end() && *known->second == wanted)
        return;
    ForgetName(control);
    if (wanted.empty())
        return;
    auto entry = names.find(wanted);
    if (entry == names.end())
        entry = names.emplace(wanted, nullptr).first;
    else
        registeredNames.erase(entry->second);
    entry->second = control;
    registeredNames[control] = &entry->first;
}

void CPaintManagerUI::State::ForgetName(const CControlUI* control)
{
    const auto known = registeredNames.find(control);
    if (known == registeredNames.end())
        return;
    names.erase(names.find(*known->second));
    registeredNames.erase(known);
}

void CPaintManagerUI::ReapObjects(CControlUI* control)
{
    auto& state = *m_pState;
    if (!control)
        return;
    state.Forget(control);
    for (State::Watch* watch = state.life->watches; watch; watch = watch->Next())
        watch->Forget(control);
    std::erase_if(state.queue, [control](const State::Queued& queued) {
        return queued.notification.pSender == control;
    });
}

void CPaintManagerUI::ForgetDying(CControlUI* control)
{
    auto& state = *m_pState;
    ReapObjects(control);
    state.delayed.erase(control);
    if (state.root == control)
        state.root = nullptr;
}

void CPaintManagerUI::State::Forget(CControlUI* control)
{
    Clear(hover, control);
    Clear(pressed, control);
    Clear(rightClicked, control);
    Clear(keyReceiver, control);
    Clear(focus, control);
    Clear(owedFocus, control);
    std::replace(layoutQueue.begin(), layoutQueue.end(), control,
                 static_cast<CControlUI*>(nullptr));
    manager.KillTimer(control);
    ForgetName(control);
    postPaint.Remove(control);
    mouseLeave.Remove(control);
    std::erase_if(nativeWindows, [control](const auto& entry) { return entry.second == control; });
}

void CPaintManagerUI::State::ForgetSubtree(CControlUI* control)
{
    const auto forget = [](CControlUI* each, LPVOID data) -> CControlUI* {
        static_cast<State*>(data)->Forget(each);
        return nullptr;
    };
    control->FindControl(forget, this, UIFIND_ALL | UIFIND_ME_FIRST);
}

void CPaintManagerUI::AddDelayedCleanup(CControlUI* control)
{
    auto& state = *m_pState;
    if (!control || state.delayed.contains(control))
        return;
    state.ForgetSubtree(control);
    if (state.root == control)
        state.root = nullptr;
    control->SetManager(this, nullptr, false);
    try {
        state.delayed.insert(control);
    } catch (const std::bad_alloc&) {
        // It cannot be remembered, so it ends now, unless one of its handlers runs.
        ReportOutOfMemory();
        if (!state.IsBeingCalled(control))
            delete control;
        return;
    }
    state.PostDeferredWork();
}

void CPaintManagerUI::State::PostDeferredWork()
{
    if (!workPosted && HasWindow())
        workPosted = ::PostMessageW(window, kDeferredWorkMessage, 0, 0) != FALSE;
}

// True while a handler of the control, or of one below it, has not returned yet.
bool CPaintManagerUI::State::IsBeingCalled(const CControlUI* control) const
{
    for (const Watch* watch = life->watches; watch; watch = watch->Next()) {
        if (IsBelow(watch->Control(), control))
            return true;
    }
    return false;
}

void CPaintManagerUI::State::DeleteDelayed()
{
    const Watch watch(*this);
    while (watch.ManagerLives()) {
        // A handler that runs a message loop of its own still needs its control.
        const auto next = std::find_if(delayed.begin(), delayed.end(),
                                       [this](auto* control) { return !IsBeingCalled(control); });
        if (next == delayed.end()) {
            life->cleanupDeferred = life->cleanupDeferred || !delayed.empty();
            return;
        }
        CControlUI* const control = *next;
        delayed.erase(next);
        delete control;
    }
}

bool CPaintManagerUI::AddOptionGroup(LPCTSTR group, CControlUI* control)
{
    const auto name = View(group);
    if (name.empty() || !control)
        return false;
    auto& members = m_pState->optionGroups.try_emplace(std::wstring(name)).first->second;
    return members.Find(control) < 0 && members.Add(control);
}

CStdPtrArray* CPaintManagerUI::GetOptionGroup(LPCTSTR group)
{
    const auto found = m_pState->optionGroups.find(View(group));
    return found == m_pState->optionGroups.end() ? nullptr : &found->second;
}

void CPaintManagerUI::RemoveOptionGroup(LPCTSTR group, CControlUI* control)
{
    const auto found = m_pState->optionGroups.find(View(group));
    if (found == m_pState->optionGroups.end())
        return;
    found->second.Remove(found->second.Find(control));
    if (found->second.IsEmpty())
        m_pState->optionGroups.erase(found);
}

void CPaintManagerUI::RemoveAllOptionGroups()
{
    m_pState->optionGroups.clear();
}

int CPaintManagerUI::GetPostPaintCount() const
{
    return m_pState->postPaint.Count();
}

bool CPaintManagerUI::IsPostPaint(CControlUI* control)
{
    return m_pState->postPaint.Contains(control);
}

bool CPaintManagerUI::AddPostPaint(CControlUI* control)
{
    return m_pState->postPaint.Add(control);
}

bool CPaintManagerUI::RemovePostPaint(CControlUI* control)
{
    return m_pState->postPaint.Remove(control);
}

bool CPaintManagerUI::SetPostPaintIndex(CControlUI* control, int index)
{
    return m_pState->postPaint.Move(control, index);
}

int CPaintManagerUI::GetNativeWindowCount() const
{
    return static_cast<int>(m_pState->nativeWindows.size());
}

RECT CPaintManagerUI::GetNativeWindowRect(HWND child)
{
    RECT place{};
    if (m_pState->HasWindow() && m_pState->nativeWindows.contains(child) &&
        ::GetWindowRect(child, &place)) {
        ::MapWindowPoints(HWND_DESKTOP, m_pState->window, reinterpret_cast<POINT*>(&place), 2);
    }
    return place;
}

bool CPaintManagerUI::AddNativeWindow(CControlUI* control, HWND child)
{
    return control && child && m_pState->nativeWindows.emplace(child, control).second;
}

bool CPaintManagerUI::RemoveNativeWindow(HWND child)
{
    return m_pState->nativeWindows.erase(child) > 0;
}

void CPaintManagerUI::AddMouseLeaveNeeded(CControlUI* control)
{
    m_pState->mouseLeave.Add(control);
}

bool CPaintManagerUI::RemoveMouseLeaveNeeded(CControlUI* control)
{
    return m_pState->mouseLeave.Remove(control);
}

CControlUI* CPaintManagerUI::FindControl(POINT point) const
{
    return FindSubControlByPoint(nullptr, point);
}

CControlUI* CPaintManagerUI::FindControl(LPCTSTR name) const
{
    if (!m_pState->root)
        return nullptr;
    const auto found = m_pState->names.find(View(name));
    return found == m_pState->names.end() ? nullptr : found->second;
}

CControlUI* CPaintManagerUI::FindSubControlByPoint(CControlUI* parent, POINT point) const
{
    CControlUI* const top = parent ? parent : m_pState->root;
    return top ? top->FindControl(&MatchPoint, &point,
                                  UIFIND_VISIBLE | UIFIND_HITTEST | UIFIND_TOP_FIRST)
               : nullptr;
}

CControlUI* CPaintManagerUI::FindSubControlByName(CControlUI* parent, LPCTSTR name) const
{
    CControlUI* const top = parent ? parent : m_pState->root;
    std::wstring_view wanted = View(name);
    return top && !wanted.empty() ? top->FindControl(&MatchName, &wanted, UIFIND_ALL) : nullptr;
}

CControlUI* CPaintManagerUI::FindSubControlByClass(CControlUI* parent, LPCTSTR className, int index)
{
    CControlUI* const top = parent ? parent : m_pState->root;
    ClassSearch search{View(className), index};
    return top && index >= 0 ? top->FindControl(&ClassSearch::Match, &search, UIFIND_ALL) : nullptr;
}

CStdPtrArray* CPaintManagerUI::FindSubControlsByClass(CControlUI* parent, LPCTSTR className)
{
    CControlUI* const top = parent ? parent : m_pState->root;
    auto& found = m_pState->found;
    found.Empty();
    ClassSearch search{View(className), 0, &found};
    if (top)
        top->FindControl(&ClassSearch::Match, &search, UIFIND_ALL);
    return &found;
}

} // namespace DuiLib
