#include "Core/ManagerState.h"

namespace DuiLib {

bool CPaintManagerUI::AddNotifier(INotifyUI* notifier)
{
    return m_pState->notifiers.Add(notifier);
}

bool CPaintManagerUI::RemoveNotifier(INotifyUI* notifier)
{
    return m_pState->notifiers.Remove(notifier);
}

bool CPaintManagerUI::AddPreMessageFilter(IMessageFilterUI* filter)
{
    return m_pState->preFilters.Add(filter);
}

bool CPaintManagerUI::RemovePreMessageFilter(IMessageFilterUI* filter)
{
    return m_pState->preFilters.Remove(filter);
}

bool CPaintManagerUI::AddMessageFilter(IMessageFilterUI* filter)
{
    return m_pState->filters.Add(filter);
}

bool CPaintManagerUI::RemoveMessageFilter(IMessageFilterUI* filter)
{
    return m_pState->filters.Remove(filter);
}

bool CPaintManagerUI::AddTranslateAccelerator(ITranslateAccelerator* accelerator)
{
    return m_pState->accelerators.Add(accelerator);
}

bool CPaintManagerUI::RemoveTranslateAccelerator(ITranslateAccelerator* accelerator)
{
    return m_pState->accelerators.Remove(accelerator);
}

bool CPaintManagerUI::TranslateAccelerator(LPMSG message)
{
    return m_pState->accelerators.Walk([message](ITranslateAccelerator* accelerator) {
        return accelerator->TranslateAccelerator(message) == S_OK;
    });
}

void CPaintManagerUI::SendNotify(CControlUI* control, LPCTSTR type, WPARAM wParam, LPARAM lParam,
                                 bool async)
{
    TNotifyUI notification;
    notification.sType = type;
    notification.pSender = control;
    notification.dwTimestamp = 0;
    notification.ptMouse = {};
    notification.wParam = wParam;
    notification.lParam = lParam;
    SendNotify(notification, async);
}

void CPaintManagerUI::SendNotify(TNotifyUI& notification, bool async)
{
    auto& state = *m_pState;
    notification.ptMouse = state.mouse;
    notification.dwTimestamp = ::GetTickCount();
    if (state.useVirtualWindows && notification.pSender)
        notification.sVirtualWnd = notification.pSender->GetVirtualWnd();
    if (async) {
        state.queue.push_back({++state.queuedCount, notification});
        state.PostDeferredWork();
    } else {
        state.Deliver(notification);
    }
}

void CPaintManagerUI::State::Deliver(TNotifyUI& notification)
{
    CControlUI* const control = notification.pSender;
    const bool own = control && control->GetManager() == &manager;
    const Watch sender(*this, own ? control : nullptr);
    if (control && control->OnNotify)
        control->OnNotify(&notification);
    if (!sender.ManagerLives())
        return;
    notifiers.Walk([&](INotifyUI* notifier) {
        if (own && !sender.Lives())
            return true;
        notifier->Notify(notification);
        return false;
    });
}

// What is queued meanwhile waits for the next message.
void CPaintManagerUI::State::DeliverQueued()
{
    const Watch watch(*this);
    const std::uint64_t last = queuedCount;
    while (watch.ManagerLives() && !queue.empty() && queue.front().number <= last) {
        TNotifyUI notification = std::move(queue.front().notification);
        queue.pop_front();
        Deliver(notification);
    }
}

} // namespace DuiLib
