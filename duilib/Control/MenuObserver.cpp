#include "Control/UIMenu.h"

#include <algorithm>

namespace DuiLib {

MenuMenuReceiverImplBase::~MenuMenuReceiverImplBase() = default;

MenuMenuObserverImplBase::~MenuMenuObserverImplBase() = default;

MenuObserverImpl::Iterator::Iterator(MenuObserverImpl& observer)
    : m_pObserver(&observer), m_pOuter(observer.m_pIterators)
{
    observer.m_pIterators = this;
}

MenuObserverImpl::Iterator::~Iterator()
{
    if (m_pObserver != nullptr)
        m_pObserver->m_pIterators = m_pOuter;
}

MenuMenuReceiverImplBase* MenuObserverImpl::Iterator::next()
{
    if (m_pObserver == nullptr || m_nNext >= m_pObserver->m_receivers.size())
        return nullptr;
    return m_pObserver->m_receivers[m_nNext++];
}

MenuObserverImpl::MenuObserverImpl()
    : m_pManager(nullptr), m_pCheckInfo(nullptr), m_pIterators(nullptr)
{
}

// The states in a map of its own are freed here; those of the application by DestroyMenu.
MenuObserverImpl::~MenuObserverImpl()
{
    if (m_pOwnCheckInfo) {
        for (int i = 0; i < m_pOwnCheckInfo->GetSize(); ++i)
            delete static_cast<MenuItemInfo*>(
                m_pOwnCheckInfo->Find(m_pOwnCheckInfo->GetAt(i), false));
    }
    for (Iterator* iterator = m_pIterators; iterator != nullptr; iterator = iterator->m_pOuter)
        iterator->m_pObserver = nullptr;
}

void MenuObserverImpl::SetManger(CPaintManagerUI* manager)
{
    m_pManager = manager;
}

CPaintManagerUI* MenuObserverImpl::GetManager() const
{
    const bool lives = CPaintManagerUI::GetPaintManagers()->Find(m_pManager) >= 0;
    return lives ? m_pManager : nullptr;
}

void MenuObserverImpl::SetMenuCheckInfo(CStdStringPtrMap* checkInfo)
{
    m_pCheckInfo = checkInfo;
    if (checkInfo == nullptr && !m_pOwnCheckInfo)
        m_pOwnCheckInfo = std::make_unique<CStdStringPtrMap>();
}

CStdStringPtrMap* MenuObserverImpl::GetMenuCheckInfo() const
{
    return m_pCheckInfo != nullptr ? m_pCheckInfo : m_pOwnCheckInfo.get();
}

void MenuObserverImpl::AddReceiver(MenuMenuReceiverImplBase* receiver)
{
    if (receiver != nullptr && std::ranges::find(m_receivers, receiver) == m_receivers.end())
        m_receivers.push_back(receiver);
}

void MenuObserverImpl::RemoveReceiver(MenuMenuReceiverImplBase* receiver)
{
    const auto found = std::ranges::find(m_receivers, receiver);
    if (found == m_receivers.end())
        return;
    const auto index = static_cast<std::size_t>(found - m_receivers.begin());
    m_receivers.erase(found);
    for (Iterator* iterator = m_pIterators; iterator != nullptr; iterator = iterator->m_pOuter) {
        if (index < iterator->m_nNext)
            --iterator->m_nNext;
    }
}

BOOL MenuObserverImpl::RBroadcast(ContextMenuParam param)
{
    BOOL heard = FALSE;
    for (Iterator receivers(*this); MenuMenuReceiverImplBase* const receiver = receivers.next();) {
        receiver->Receive(param);
        heard = TRUE;
    }
    return heard;
}

MenuReceiverImpl::MenuReceiverImpl() : m_pObserver(nullptr) {}

MenuReceiverImpl::~MenuReceiverImpl()
{
    MenuReceiverImpl::RemoveObserver();
}

void MenuReceiverImpl::AddObserver(MenuMenuObserverImplBase* observer)
{
    RemoveObserver();
    m_pObserver = observer;
    if (observer != nullptr)
        observer->AddReceiver(this);
}

void MenuReceiverImpl::RemoveObserver()
{
    if (m_pObserver != nullptr)
        m_pObserver->RemoveReceiver(this);
    m_pObserver = nullptr;
}

BOOL MenuReceiverImpl::Receive(ContextMenuParam)
{
    return TRUE;
}

} // namespace DuiLib
