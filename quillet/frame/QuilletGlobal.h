#pragma once

#include <UIlib.h>

#include "quillet/Export.h"

namespace DuiLib {

// What the whole process knows: which thread runs the user interface.
//
// An application sets it first of all, on that thread, before anything touches UIMainQueue.
class QUILLET_API QuilletGlobal {
public:
    // Published: the name is spelled so. Made at first use, safe on any thread.
    static QuilletGlobal& GetInstatnce();

    // A Win32 thread id; 0 until it is set. Not locked: set it before other threads ask.
    DWORD GetMainThreadId();
    void SetMainThreadId(DWORD id);

private:
    QuilletGlobal() = default;

    DWORD m_dwMainThreadId = 0;
};

} // namespace DuiLib
