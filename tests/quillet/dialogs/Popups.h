#pragma once

#include "support/ImportHook.h"
#include "tests/quillet/dialogs/DialogHost.h"

#include <new>
#include <string>
#include <vector>

namespace test {

inline constexpr DWORD kLongestWait = 60000; // milliseconds; reached by failures only

// The C run-time as the library imports it.
#ifdef _MSC_VER
inline constexpr char kClockLibrary[] = "api-ms-win-crt-time-l1-1-0.dll";
#else
inline constexpr char kClockLibrary[] = "msvcrt.dll";
#endif

// Dispatches messages until the condition holds; false when it never did.
template <class Condition>
bool PumpUntil(Condition condition)
{
    const ULONGLONG end = ::GetTickCount64() + kLongestWait;
    for (;;) {
        Pump();
        if (condition())
            return true;
        if (::GetTickCount64() > end)
            return false;
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
}

inline std::wstring ClassOf(HWND window)
{
    wchar_t name[512]{};
    ::GetClassNameW(window, name, 512);
    return name;
}

inline RECT PlaceOf(HWND window)
{
    RECT place{};
    ::GetWindowRect(window, &place);
    return place;
}

// The top-level window of this thread and that class; null when there is none.
inline HWND FindPopup(const wchar_t* className)
{
    struct Search {
        const wchar_t* className;
        HWND found;
    } search{className, nullptr};
    ::EnumThreadWindows(
        ::GetCurrentThreadId(),
        [](HWND window, LPARAM parameter) -> BOOL {
            auto& search = *reinterpret_cast<Search*>(parameter);
            if (ClassOf(window) != search.className)
                return TRUE;
            search.found = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

// Objects of a derived class are out of reach when they have been deleted: any further use of one
// ends the process.
class OutOfReachWhenDeleted {
public:
    static void* operator new(std::size_t size)
    {
        void* const memory =
            ::VirtualAlloc(nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
        if (!memory)
            throw std::bad_alloc();
        return memory;
    }
    static void operator delete(void* memory, std::size_t size)
    {
        DWORD before = 0;
        ::VirtualProtect(memory, size, PAGE_NOACCESS, &before);
    }
};

// A window as it was asked for.
struct Creation {
    std::wstring className;
    std::wstring title;
    DWORD style;
    DWORD exStyle;
    RECT place; // left, top, width, height
    HWND owner;
};

// Notes the windows that the toolkit creates, without children.
class Creations {
public:
    Creations() : m_hook(L"DuiLib.dll", "USER32.dll", "CreateWindowExW", &Creations::Create)
    {
        All().clear();
    }
    static std::vector<Creation>& All()
    {
        static std::vector<Creation> all;
        return all;
    }

private:
    static HWND WINAPI Create(DWORD exStyle, LPCWSTR name, LPCWSTR title, DWORD style, int x, int y,
                              int width, int height, HWND owner, HMENU menu, HINSTANCE instance,
                              LPVOID parameter)
    {
        if (!(style & WS_CHILD) && !IS_INTRESOURCE(name))
            All().push_back(
                {name, title ? title : L"", style, exStyle, RECT{x, y, width, height}, owner});
        return ::CreateWindowExW(exStyle, name, title, style, x, y, width, height, owner, menu,
                                 instance, parameter);
    }

    ImportHook m_hook;
};

// Dialogs over an owner.
class PopupTest : public WindowTest {
protected:
    ~PopupTest() override { Pump(); }

    DialogSkins skins;
    LoopActions actions;
    DialogParent owner;
};

inline std::wstring TextOf(HWND window, const wchar_t* name)
{
    const DuiLib::CControlUI* const control = ControlOf(window, name);
    return control ? control->GetText().GetData() : L"(no control)";
}

} // namespace test
