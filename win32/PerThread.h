#pragma once

#include "win32/Windows.h"

namespace Quillet {

// One object for each thread that asks for it, made at the first call and destroyed when its
// thread ends. For `thread_local` objects some runtimes free the memory first and then call the
// destructor; the system's own slots are exact on every thread.
template <class Object>
class PerThread {
public:
    PerThread() : m_slot(::FlsAlloc(&Destroy)) {}
    ~PerThread()
    {
        if (m_slot != FLS_OUT_OF_INDEXES)
            ::FlsFree(m_slot);
    }
    PerThread(const PerThread&) = delete;
    PerThread& operator=(const PerThread&) = delete;

    Object& Get()
    {
        if (void* const known = ::FlsGetValue(m_slot))
            return *static_cast<Object*>(known);
        auto* const made = new Object;
        if (::FlsSetValue(m_slot, made))
            return *made;
        delete made;
        static Object shared; // the process has no slot left
        return shared;
    }

private:
    static void WINAPI Destroy(void* object) { delete static_cast<Object*>(object); }

    DWORD m_slot;
};

} // namespace Quillet
