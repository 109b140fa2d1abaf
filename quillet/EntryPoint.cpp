#include <windows.h>

// The singletons build themselves at first use, so loading the library does nothing else. A runtime
// that needs thread notifications refuses the call; the library is right either way.
BOOL APIENTRY DllMain(HMODULE module, DWORD reason, LPVOID)
{
    if (reason == DLL_PROCESS_ATTACH)
        ::DisableThreadLibraryCalls(module);
    return TRUE;
}
