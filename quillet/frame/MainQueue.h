#pragma once

#include <UIlib.h>

#include <deque>
#include <functional>
#include <mutex>

#include "quillet/Export.h"

namespace DuiLib {

// Hands work from any thread to the user-interface thread.
//
// The queue stores tasks and wakes the user-interface thread with WM_USER + 4, a number that is
// used for nothing else. The application's message loop, or its window procedure, calls finish for
// each of them. A loop that is not the application's own (a modal window's, a menu's) drops
// messages of the thread, so a task that must run meanwhile is dispatched with a window.
//
//     UIMainQueue::getInstance().dispatch([=] { label->SetText(result.c_str()); }, window);
class QUILLET_API UIMainQueue {
public:
    // Made at first use, safe on any thread. It takes the thread id from QuilletGlobal then, once;
    // SetUIMainThread tells it of a later one.
    static UIMainQueue& getInstance();
    UIMainQueue(const UIMainQueue&) = delete;
    UIMainQueue& operator=(const UIMainQueue&) = delete;

    // Any thread. Stores a copy of the task and posts the wake-up to the window, or to the
    // user-interface thread when there is none. Always true; raises std::system_error when the
    // lock fails.
    //
    // Published: every call posts one wake-up, also when the queue is closed and stores nothing.
    // A wake-up that cannot be posted is lost and its task waits for the next one.
    bool dispatch(const std::function<void()>& task, HWND wnd = nullptr);

    // User-interface thread. Runs what is queued, in order; what a task dispatches waits for the
    // next call. An empty task is skipped. Always true.
    //
    // A task that throws ends the call: the rest of its batch is destroyed without running.
    bool finish();

    // Any thread. Destroys what is queued without running it; from then on nothing is stored.
    void over();

    // Not locked: before other threads dispatch.
    void SetUIMainThread(DWORD id);

private:
    UIMainQueue();
    ~UIMainQueue();

    using Tasks = std::deque<std::function<void()>>;

    DWORD m_dwThreadId;
    std::recursive_mutex m_lock;
    Tasks m_tasks;
    bool m_bClosed = false;
};

} // namespace DuiLib
