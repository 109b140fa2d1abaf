#include "quillet/frame/MainQueue.h"

#include <thread>

#include "quillet/frame/QuilletGlobal.h"

namespace DuiLib {

namespace {

constexpr UINT kWakeUp = WM_USER + 4;

} // namespace

UIMainQueue& UIMainQueue::getInstance()
{
    static UIMainQueue queue;
    return queue;
}

// Published: the id is read once; a later SetMainThreadId does not reach the queue.
UIMainQueue::UIMainQueue() : m_dwThreadId(QuilletGlobal::GetInstatnce().GetMainThreadId()) {}

UIMainQueue::~UIMainQueue()
{
    // At the end of the process the other threads have been ended already, maybe one of them inside
    // the lock: waiting for it would be for ever.
    const std::unique_lock lock(m_lock, std::try_to_lock);
    m_bClosed = true;
    Tasks().swap(m_tasks);
}

bool UIMainQueue::dispatch(const std::function<void()>& task, HWND wnd)
{
    {
        const std::lock_guard lock(m_lock);
        if (!m_bClosed)
            m_tasks.push_back(task);
    }
    if (wnd)
        ::PostMessageW(wnd, kWakeUp, 0, 0);
    else
        ::PostThreadMessageW(m_dwThreadId, kWakeUp, 0, 0);
    return true;
}

bool UIMainQueue::finish()
{
    Tasks batch;
    {
        const std::lock_guard lock(m_lock);
        batch.swap(m_tasks);
    }
    for (const auto& task : batch) {
        if (!task)
            continue;
        task();
        // Published: other threads get a chance after every task that ran.
        std::this_thread::yield();
    }
    return true;
}

void UIMainQueue::over()
{
    // Published: the tasks are destroyed inside the lock, which their destructors may take again.
    const std::lock_guard lock(m_lock);
    Tasks dropped;
    dropped.swap(m_tasks);
    m_bClosed = true;
    dropped.clear();
}

void UIMainQueue::SetUIMainThread(DWORD id)
{
    m_dwThreadId = id;
}

} // namespace DuiLib
