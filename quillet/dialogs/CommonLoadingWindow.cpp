#include "quillet/dialogs/CommonLoadingWindow.h"

#include <algorithm>
#include <ctime>
#include <mutex>
#include <thread>
#include <utility>

#include "quillet/dialogs/DialogStyle.h"

using namespace DuiLib;
using namespace Quillet::Dialogs;

namespace {

constexpr int kShortestTime = 1000; // milliseconds

using Events = std::vector<std::function<void()>>;

// The events end with this call, before anybody hears that the work is done.
void RunInOrder(Events events)
{
    for (const auto& event : events) {
        if (event)
            event();
    }
}

// So that the window never merely flickers. A clock that comes to its end answers -1.
void WaitOutTheShortestTime(std::clock_t start)
{
    const auto ticks = static_cast<long long>(std::clock()) - start;
    const auto elapsed = std::max(ticks * 1000 / CLOCKS_PER_SEC, 0ll);
    if (elapsed < kShortestTime)
        ::Sleep(static_cast<DWORD>(kShortestTime - elapsed));
}

} // namespace

// Between the object and its worker, which may outlive it.
class CommonLoadingWindow::Link {
public:
    explicit Link(CommonLoadingWindow& object) : m_object(&object) {}

    void Cut()
    {
        const std::scoped_lock lock(m_mutex);
        m_object = nullptr;
    }

    // The mask to close, which is then forgotten; null when there is none or no object any more.
    HWND TakeMask()
    {
        const std::scoped_lock lock(m_mutex);
        if (!m_object || !m_object->m_pMaskLayer)
            return nullptr;
        const HWND mask = m_object->m_pMaskLayer->GetHWND();
        if (!::IsWindow(mask))
            return nullptr;
        m_object->m_pMaskLayer = nullptr;
        return mask;
    }

private:
    std::mutex m_mutex;
    CommonLoadingWindow* m_object;
};

CommonLoadingWindow::CommonLoadingWindow(HWND parent, const std::wstring& message, bool flag)
    : m_strMessage(message),
      m_hParent(parent),
      m_bFlag(flag),
      m_pLink(std::make_shared<Link>(*this))
{
}

CommonLoadingWindow::~CommonLoadingWindow()
{
    m_pLink->Cut();
}

void CommonLoadingWindow::RegitsterWaitingEvent(const std::function<void()>& event)
{
    m_vWaitingEvents.push_back(event);
}

void CommonLoadingWindow::ShowWindow()
{
    CreateLMaskLayer();
    try {
        ExecuteWaitingEvent();
    } catch (...) {
        if (m_hWnd)
            ::DestroyWindow(m_hWnd);
        throw;
    }
    ShowWindowCore();
}

void CommonLoadingWindow::ShowWindowCore()
{
    if (!m_hWnd)
        return;
    CenterWindow();
    ShowModal();
}

void CommonLoadingWindow::CloseWindow()
{
    Close(IDCLOSE);
    CloseMaskLayer();
}

void CommonLoadingWindow::CreateLMaskLayer()
{
    const HWND owner = m_hMaskParent ? m_hMaskParent : m_hParent;
    Create(owner, m_strMessage.c_str(), kModalStyle, kModalExStyle, 0, 0, 0, 0);
}

void CommonLoadingWindow::CloseMaskLayer()
{
    if (const HWND mask = m_pLink->TakeMask())
        ::PostMessageW(mask, WM_CLOSE, 0, 0);
}

void CommonLoadingWindow::ExecuteWaitingEvent()
{
    // The window may be closed and the object end before the work does, so the worker knows the
    // object through the link alone.
    std::thread([link = m_pLink, window = m_hWnd, events = m_vWaitingEvents]() mutable {
        const std::clock_t start = std::clock();
        RunInOrder(std::move(events));
        WaitOutTheShortestTime(start);
        const HWND mask = link->TakeMask();
        if (::IsWindow(window))
            ::PostMessageW(window, WM_CLOSE, IDCLOSE, 0);
        if (mask)
            ::PostMessageW(mask, WM_CLOSE, 0, 0);
    }).detach();
}

LPCTSTR CommonLoadingWindow::GetWindowClassName() const
{
    return m_strMessage.c_str();
}

CDuiString CommonLoadingWindow::GetSkinFile()
{
    return L"common/Loading.xml";
}

void CommonLoadingWindow::InitWindow()
{
    if (CControlUI* const message = m_pm.FindControl(L"message"))
        message->SetText(m_strMessage.c_str());
}
