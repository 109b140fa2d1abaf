#include "Core/PopupLink.h"

#include "Core/ManagerState.h"

namespace DuiLib {

void PopupLink::Borrow(CPaintManagerUI& popup, CPaintManagerUI& main)
{
    popup.m_pState->lender = main.m_pState->life;
    popup.GetDPIObj()->SetScale(main.GetDPIObj()->GetDPI());
}

void PopupLink::PassOn(CPaintManagerUI& main, TNotifyUI& notification)
{
    CControlUI* const control = notification.pSender;
    if (control == nullptr || control->GetManager() == nullptr)
        return;
    const CPaintManagerUI::State::Watch receivers(*main.m_pState);
    const CPaintManagerUI::State::Watch sender(*control->GetManager()->m_pState, control);
    main.m_pState->notifiers.Walk([&](INotifyUI* notifier) {
        notifier->Notify(notification);
        return !receivers.ManagerLives() || !sender.Lives();
    });
}

} // namespace DuiLib
