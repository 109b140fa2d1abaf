#include "Demonstration.h"

using namespace DuiLib;

namespace {

constexpr UINT kPeriod = 10;       // milliseconds
constexpr UINT kPatience = 60'000; // milliseconds

HWND Mask()
{
    return CResourceManagerEx::GetInstance()->GetVeskaMaskHWND();
}

bool IsMasked(HWND page)
{
    RECT covered{}, mask{};
    ::GetWindowRect(page, &covered);
    ::GetWindowRect(Mask(), &mask);
    return ::IsWindowVisible(Mask()) && ::EqualRect(&covered, &mask);
}

// A control of the visible window that the mask owns.
CControlUI* DialogControl(LPCTSTR name)
{
    const CStdPtrArray& managers = *CPaintManagerUI::GetPaintManagers();
    for (int i = 0; i < managers.GetSize(); ++i) {
        const auto& manager = *static_cast<CPaintManagerUI*>(managers.GetAt(i));
        const HWND window = manager.GetPaintWindow();
        if (::IsWindowVisible(window) && ::GetWindow(window, GW_OWNER) == Mask())
            return manager.FindControl(name);
    }
    return nullptr;
}

} // namespace

void Demonstration::OnInit()
{
    m_found = GetControl(L"found")->GetText();
    UIMainQueue::getInstance().dispatch([this] { GetControl(L"start")->Activate(); });
    SetTimer(kPeriod, [this] { TakeStep(); });
    SetTimer(kPatience, [this] { OnCloseX(0); });
}

void Demonstration::TakeStep()
{
    switch (m_step) {
    case Step::AskToStop:
        if (HasProgressed()) {
            m_step = Step::Answer;
            GetControl(L"stop")->Activate(); // comes back when the dialog has been closed
        }
        break;
    case Step::Answer:
        if (CControlUI* const stop = DialogControl(L"stop");
            stop && IsMasked(GetHwnd()) && HasProgressed()) {
            m_step = Step::Close;
            stop->Activate();
        }
        break;
    case Step::Close:
        if (!::IsWindow(Mask()) && GetControl(L"start")->IsEnabled()) {
            m_step = Step::Done;
            OnCloseX(0);
        }
        break;
    case Step::Done:
        break;
    }
}

// Whether bar and text have moved on since the last time.
bool Demonstration::HasProgressed()
{
    const int percent = static_cast<CProgressUI*>(GetControl(L"progress"))->GetValue();
    const CDuiString found = GetControl(L"found")->GetText();
    if (percent <= m_percent || found == m_found)
        return false;
    m_percent = percent;
    m_found = found;
    return true;
}
