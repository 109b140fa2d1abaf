#pragma once

#include "win32/Handles.h"

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace Quillet {

// Decodes pictures of the resources on a thread of its own, one at a time: the name that was asked
// for last. What it decoded last is kept.
class FrameDecoder {
public:
    FrameDecoder() = default;
    FrameDecoder(const FrameDecoder&) = delete;
    FrameDecoder& operator=(const FrameDecoder&) = delete;

    // Begins, and returns when the thread runs. Ends the process when the thread of an earlier
    // start was not stopped.
    void Start();
    void Stop(); // waits for the picture that is being decoded
    bool IsRunning() const { return m_started; }

    void Ask(const std::wstring& name);

    // What a picture takes at least, in milliseconds; also while the thread runs.
    void SetShortestTime(int ms) { m_shortestTime = ms; }

    // Null before the first one. Whoever holds it keeps it from being deleted.
    std::shared_ptr<const UniqueBitmap> Latest() const { return m_latest; }

private:
    void Run();
    bool WaitForName(std::wstring& name);

    std::mutex m_startMutex;
    std::condition_variable m_startCondition;
    std::atomic<bool> m_started{false};

    std::mutex m_requestMutex;
    std::condition_variable m_requestCondition;
    std::wstring m_pendingName;
    std::atomic<bool> m_stopRequested{false};
    std::atomic<int> m_shortestTime{0};

    std::atomic<std::shared_ptr<const UniqueBitmap>> m_latest;
    std::thread m_thread;
};

} // namespace Quillet
