#include "quillet/drawing/FrameDecoder.h"

#include <utility>

#include "quillet/resources/Utils.h"

namespace Quillet {

void FrameDecoder::Start()
{
    m_stopRequested = false;
    // Published: a thread that was never stopped ends the process here.
    m_thread = std::thread([this] { Run(); });
    std::unique_lock lock(m_startMutex);
    m_startCondition.wait(lock, [this] { return m_started.load(); });
}

void FrameDecoder::Stop()
{
    {
        const std::scoped_lock lock(m_requestMutex);
        m_stopRequested = true;
        m_pendingName.clear();
    }
    m_requestCondition.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

void FrameDecoder::Ask(const std::wstring& name)
{
    {
        const std::scoped_lock lock(m_requestMutex);
        m_pendingName = name;
    }
    m_requestCondition.notify_one();
}

void FrameDecoder::Run()
{
    {
        const std::scoped_lock lock(m_startMutex);
        m_started = true;
    }
    m_startCondition.notify_one();

    std::wstring name;
    while (WaitForName(name)) {
        const DWORD begin = ::GetTickCount();
        UniqueBitmap bitmap(DuiLib::Utils::LoadBitmapFromDuiRes(name.c_str()));
        if (bitmap)
            m_latest = std::make_shared<const UniqueBitmap>(std::move(bitmap));
        const auto elapsed = static_cast<int>(::GetTickCount() - begin);
        const int shortestTime = m_shortestTime;
        if (elapsed < shortestTime)
            ::Sleep(static_cast<DWORD>(shortestTime - elapsed));
    }
    m_started = false;
}

// False when the thread shall end.
bool FrameDecoder::WaitForName(std::wstring& name)
{
    std::unique_lock lock(m_requestMutex);
    m_requestCondition.wait(lock, [this] { return m_stopRequested || !m_pendingName.empty(); });
    if (m_stopRequested)
        return false;
    name = std::exchange(m_pendingName, {});
    return true;
}

} // namespace Quillet
